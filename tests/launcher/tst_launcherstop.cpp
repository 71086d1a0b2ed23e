// The launcher is copied into a folder of its own, as the application copies
// it into its data folder, and run with a fake yt-dlp named by KESTREL_YTDLP.
// How a run ends when it is stopped, killed, or outlived by the application.

#include "childprocess.h"
#include "commandline.h"
#include "flagcache.h"
#include "infocache.h"
#include "toolflags.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "launcherinstallation.h"
#include "launcherruns.h"
#include "processprobe.h"

using namespace LauncherRuns;

class TestLauncherStop : public QObject
{
    Q_OBJECT

private slots:
    void stopSignalIsPassedOn_data();
    void stopSignalIsPassedOn();
    void killedLauncherTakesToolAlong();
    void stopEndsTheWholeTreeWithExitCodeOne_data();
    void stopEndsTheWholeTreeWithExitCodeOne();
    void endOfTheApplicationEndsTheTree();
    void applicationAlreadyGoneRunsNothing();
};

void TestLauncherStop::stopSignalIsPassedOn_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << QStringLiteral("INT") << int(SIGINT);
    QTest::newRow("SIGHUP") << QStringLiteral("HUP") << int(SIGHUP);
}

void TestLauncherStop::stopSignalIsPassedOn()
{
    QFETCH(QString, name);
    QFETCH(int, signal);
    Installation installation;
    installation.environment().insert(QStringLiteral("FAKE_TRAP"), name);
    installation.environment().insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    QCOMPARE(::kill(run->pid(), signal), 0);
    // Well before the fake's sleep would end on its own.
    QVERIFY(run->wait(10000));

    // The fake caught the signal and ended with its own code, which the
    // launcher, still alive, passed on.
    QCOMPARE(run->exitCode(), 42);
    QVERIFY(readAll(installation.recordPath()).contains("caught " + name.toLatin1() + '\n'));
}

void TestLauncherStop::killedLauncherTakesToolAlong()
{
    Installation installation;
    installation.environment().insert(QStringLiteral("FAKE_SLEEP"), QStringLiteral("30"));
    installation.environment().insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());
    installation.environment().insert(QStringLiteral("FAKE_CHILD"), QStringLiteral("1"));

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    QCOMPARE(ProcessProbe::parentOf(tool), run->pid());
    QVERIFY(ProcessProbe::isRunning(tool));
    const pid_t grandchild = pid_t(readAll(installation.pidFile() + QStringLiteral(".child")).trimmed().toInt());
    QVERIFY(grandchild > 0);

    QCOMPARE(::kill(run->pid(), SIGKILL), 0);
    QVERIFY(run->wait());
    QCOMPARE(run->signal(), int(SIGKILL));
    // The tool and what it started, ffmpeg's place here.
    QVERIFY(waitUntilEnded({tool, grandchild}));
}

void TestLauncherStop::stopEndsTheWholeTreeWithExitCodeOne_data()
{
    QTest::addColumn<bool>("toolIgnoresStop");
    QTest::newRow("tool stops") << false;
    QTest::newRow("tool ignores SIGTERM") << true;
}

void TestLauncherStop::stopEndsTheWholeTreeWithExitCodeOne()
{
    QFETCH(bool, toolIgnoresStop);
    Installation installation;
    installation.environment().insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());
    installation.environment().insert(QStringLiteral("FAKE_CHILD"), QStringLiteral("1"));
    if (toolIgnoresStop)
        installation.environment().insert(QStringLiteral("FAKE_TRAP"), QStringLiteral("TERM"));
    else
        installation.environment().insert(QStringLiteral("FAKE_SLEEP"), QStringLiteral("30"));

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    const pid_t grandchild = pid_t(readAll(installation.pidFile() + QStringLiteral(".child")).trimmed().toInt());
    QVERIFY(grandchild > 0);

    // What the application's kill rule sends first.
    QCOMPARE(::kill(run->pid(), SIGTERM), 0);
    QVERIFY(run->wait(10000));
    // As a forced kill ends a run on Windows.
    QVERIFY(run->exited());
    QCOMPARE(run->exitCode(), 1);
    QVERIFY(waitUntilEnded({tool, grandchild}));
}

void TestLauncherStop::endOfTheApplicationEndsTheTree()
{
    Installation installation;
    installation.environment().insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());
    installation.environment().insert(QStringLiteral("FAKE_CHILD"), QStringLiteral("1"));
    installation.environment().insert(QStringLiteral("FAKE_SLEEP"), QStringLiteral("30"));
    // A stand-in for the application: it starts the launcher and is then
    // killed, as a crash or SIGKILL would end the application.
    const QString launcherPidFile = installation.path(QStringLiteral("launcher.pid"));
    QScopedPointer<RawRun> application(new RawRun(
        QStringLiteral("/bin/bash"),
        {QStringLiteral("-c"), QStringLiteral("\"$0\" \"$@\" & echo $! > '%1'; wait").arg(launcherPidFile),
         installation.launcher(), QStringLiteral("--no-warnings"), QStringLiteral("https://x.invalid/watch?v=k")},
        installation.environment(), installation.path(QString())));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    const pid_t launcher = pid_t(readAll(launcherPidFile).trimmed().toInt());
    const pid_t grandchild = pid_t(readAll(installation.pidFile() + QStringLiteral(".child")).trimmed().toInt());
    QVERIFY(launcher > 0 && grandchild > 0);

    QCOMPARE(::kill(application->pid(), SIGKILL), 0);
    QVERIFY(application->wait());
    QVERIFY(waitUntilEnded({launcher, tool, grandchild}));
}

void TestLauncherStop::applicationAlreadyGoneRunsNothing()
{
    Installation installation;
    // The application named itself, but the launcher's parent is another
    // process: the application ended before the launcher could tie its life
    // to it.
    installation.environment().insert(QStringLiteral("KESTREL_APP_PID"), QString::number(::getpid() + 1));
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QVERIFY(run->exited());
    QCOMPARE(run->exitCode(), 1);
    QVERIFY(installation.invocations().isEmpty());
}

QTEST_GUILESS_MAIN(TestLauncherStop)
#include "tst_launcherstop.moc"
