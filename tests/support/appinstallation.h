#pragma once

#include "testsandbox.h"

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

// A private copy of the application executable in a folder of its own, where
// a test lays out plug-ins and tool files beside it, and runs it in a sandbox.
class AppInstallation
{
public:
    struct Run
    {
        int exitCode = -1;
        QProcess::ExitStatus exitStatus = QProcess::NormalExit;
        bool finished = false;
        QString standardOutput;
        QStringList logLines; // standard error, one entry per line
        QStringList calls;    // lines the recording plug-ins wrote

        QStringList logLinesContaining(const QString &text) const { return logLines.filter(text); }
    };

    AppInstallation();

    QString folder() const;

    // Copies a recording plug-in ("logging", "sysinfo", "updater", "about")
    // beside the executable under the given base name ("Updater").
    void addRecordingPlugin(const QString &kind, const QString &baseName);
    // The four recording plug-ins under their own names.
    void addAllRecordingPlugins();
    void addFile(const QString &name, const QByteArray &content);
    void addCopyOf(const QString &source, const QString &name);
    // The build's translation catalogues, in the folder beside the executable.
    void addTranslations();

    // Runs the application to its end.
    Run run(const TestSandbox &sandbox, const QStringList &arguments, const QStringList &fixtureActions = {},
            int timeoutMs = 20000) const;

    // Runs the application until its log holds a line with the given text,
    // lets it go on for settleMs more, then ends it (there is no plug-in to
    // end it by itself).
    Run runUntilLogged(const TestSandbox &sandbox, const QStringList &arguments, const QString &text,
                       int settleMs = 0, int timeoutMs = 20000) const;

private:
    Run execute(const TestSandbox &sandbox, const QStringList &arguments, const QStringList &fixtureActions,
                int timeoutMs, const std::function<bool(const QString &)> &stopWhen, int settleMs) const;

    QTemporaryDir m_folder;
    QTemporaryDir m_records;
};
