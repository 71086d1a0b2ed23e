#pragma once

#include "rawrun.h"
#include "testsandbox.h"

#include <QList>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// A copy of the launcher in a folder of its own, a fake yt-dlp, and the
// environment that connects them.
class Installation
{
public:
    Installation();

    QString path(const QString &name) const { return m_root.filePath(name); }
    QString dataFolder() const { return path(QStringLiteral("data")); }
    QString launcher() const { return path(QStringLiteral("data/kestreldl2")); }
    QString cacheFile() const { return path(QStringLiteral("data/kestreldl2.flags")); }
    QString fake() const { return path(QStringLiteral("fake/yt-dlp")); }
    QString runtimeFolder() const { return path(QStringLiteral("runtimes")); }
    QString recordPath() const { return path(QStringLiteral("record")); }
    QString pidFile() const { return path(QStringLiteral("tool.pid")); }

    // Every command line the fake was given, in order.
    QList<QStringList> invocations() const;

    // How many times the launcher asked the fake about itself rather than
    // for a download.
    qsizetype questions() const;

    // The last command line the fake was given without the launcher's own
    // flags in front and its "--" before the video, which is what the
    // application gave; as it is when those flags are not there, so that a
    // comparison shows it.
    QStringList lastInvocation() const;

    // Starts the launcher with arguments; the caller owns the run.
    RawRun *start(const QStringList &arguments) const;

    // What every run gets; a test adds the fake's FAKE_* settings here.
    QProcessEnvironment &environment() { return m_environment; }
    const QProcessEnvironment &environment() const { return m_environment; }

private:
    QProcessEnvironment m_environment;
    QTemporaryDir m_root;
    TestSandbox m_sandbox;
};
