#pragma once

#include "localreleasefeed.h"
#include "testfiles.h"
#include "testsandbox.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// How one launcher run ended, and what it wrote. The notes the launcher
// writes on standard error of "--update" about the variables that point it
// at other feeds and keys are kept apart from the rest.
struct RunResult
{
    bool finished = false;
    QProcess::ExitStatus status = QProcess::NormalExit;
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
    QByteArrayList redirections;
    qint64 milliseconds = 0;

    bool crashed() const { return finished && status == QProcess::CrashExit; }
    bool succeeded() const { return finished && status == QProcess::NormalExit && exitCode == 0; }
};

// What the launcher wrote on standard error, without its notes on the
// variables that point it at other feeds and keys ("kestreldl2:
// KESTREL_TOOL_FEED is set: ..."), which go into *notes.
QByteArray withoutRedirectionNotes(const QByteArray &error, QByteArrayList *notes = nullptr);

// The launcher's managed copies, installed from a release feed on 127.0.0.1
// that the test makes and signs with a throw-away key. The "release" is a
// small script that answers --version with its version and records every
// other command line. The suites derive from this fixture: each case gets a
// fresh data folder with the built launcher, a system yt-dlp and an old
// system Node on PATH, and a feed with release 2026.11.01 and Deno 2.5.6.
class ToolInstallTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

protected slots:
    // A suite that needs more of its cases calls these from its own.
    void init();
    void cleanup();

protected:
    static constexpr char toolAsset[] = "yt-dlp_linux";

    static void writeFile(const QString &path, const QByteArray &content, bool executable = false);

    QString path(const QString &name) const { return m_root->filePath(name); }
    QString dataFolder() const { return path(QStringLiteral("data")); }
    QString launcher() const { return path(QStringLiteral("data/kestreldl2")); }
    QString fakeBin() const { return path(QStringLiteral("bin")); }
    QString recordPath() const { return path(QStringLiteral("record")); }
    void setSystemNode(const QByteArray &versionLine);

    QProcess *startLauncher(const QStringList &arguments, const QProcessEnvironment &environment);
    RunResult runLauncher(const QStringList &arguments, const QProcessEnvironment &environment);
    RunResult runLauncher(const QStringList &arguments) { return runLauncher(arguments, m_environment); }
    RunResult update() { return runLauncher({QStringLiteral("--update")}); }

    QStringList dataFiles() const;
    QStringList scratchFiles() const;
    QList<QStringList> recordedRuns() const;
    QByteArray installedTool() const { return TestFiles::readAll(dataFolder() + QLatin1Char('/') + QLatin1String(toolAsset)); }
    void installRelease(const QString &version);
    // With a runtime new enough on PATH: an update installs the tool alone,
    // and a run names that runtime, "node:/path/to/node".
    void verifySystemRuntimeIsUsed(const QString &runtimeFlag);
    // Makes the state say the feeds last answered at secondsSinceEpoch.
    void setLastCheck(qint64 secondsSinceEpoch);
    // The environment of a run that lasts until the refresh beside it has
    // installed release version, and crashes then when crash is set.
    QProcessEnvironment waitingForRelease(const QString &version, bool crash = false);

    TestSigningKeys &keys() { return m_keys; }
    LocalReleaseFeed &feed() { return *m_feed; }
    QProcessEnvironment &environment() { return m_environment; }

private:
    TestSandbox m_sandbox;
    TestSigningKeys m_keys;
    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<LocalReleaseFeed> m_feed;
    QProcessEnvironment m_environment;
};
