#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

#include "drivertest.h"
#include "logcapture.h"
#include "processprobe.h"
#include "testsandbox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>
#endif

using FakeTool::Behaviour;

// What stopping the tool ends, and what it leaves alone.
class TestToolKillRule : public DriverTest
{
    Q_OBJECT

private slots:
    void toolElsewhereSurvivesTermination();
    void scriptToolAndItsChildrenAreKilled();
    void programThatNamesTheToolSurvives();
    void zombieToolCountsAsEnded();
    void terminationWithNothingRunning();
};

void TestToolKillRule::toolElsewhereSurvivesTermination()
{
#ifdef Q_OS_WIN
    QSKIP("On Windows the kill rule, taskkill /IM kestreldl2.exe, ends every process of that name, wherever its file lies");
#endif
    useScenario(FakeTool::Kind::download(), hanging());
    QProcess elsewhere;
    elsewhere.start(FakeTool::builtToolPath(), {QStringLiteral("elsewhere")});
    QVERIFY(elsewhere.waitForStarted());
    waitForInvocations(1);

    KestrelDownloader driver(info());
    driver.terminateTool(false);
    // The stop has ended whatever it ends by the time it returns.
    QVERIFY(ProcessProbe::isRunning(elsewhere.processId()));
    elsewhere.kill();
    elsewhere.waitForFinished();
}

void TestToolKillRule::scriptToolAndItsChildrenAreKilled()
{
#ifdef Q_OS_WIN
    QSKIP("Windows starts no script by its #! line, and there the launcher's job object, not the kill rule, ends what the tool started");
#else
    // A tool that is a script runs as its interpreter with the script's path
    // as an argument; what it starts goes with it.
    const QString childFile = workFolder() + QStringLiteral("/child.pid");
    QFile::remove(childFile);
    QFile::remove(toolInDataFolder());
    QFile script(toolInDataFolder());
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(QStringLiteral("#!/bin/sh\nsleep 1000 &\necho $! > '%1'\nwait\n").arg(childFile).toUtf8());
    script.close();
    QVERIFY(script.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));

    KestrelDownloader driver(info());
    info().url = QUrl(QStringLiteral("https://youtu.be/abc"));
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    driver.requestMetadata();
    QTRY_VERIFY(QFile::exists(childFile) && QFileInfo(childFile).size() > 0);
    QFile pidFile(childFile);
    QVERIFY(pidFile.open(QIODevice::ReadOnly));
    const qint64 child = pidFile.readAll().trimmed().toLongLong();
    QVERIFY(child > 0);
    QVERIFY(ProcessProbe::exists(child));

    driver.terminateTool(false);
    QVERIFY(failure.wait());
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::metadataCancelled);
    QTRY_VERIFY(!ProcessProbe::exists(child));
#endif
}

void TestToolKillRule::programThatNamesTheToolSurvives()
{
    // As "less kestreldl2" in the data folder would: the tool's path is its
    // first argument, but its executable is another program. On Windows a
    // command interpreter that names it and then waits for input.
    QProcess reader;
#ifdef Q_OS_WIN
    reader.start(QStringLiteral("cmd.exe"), {QStringLiteral("/k"), QStringLiteral("rem"), QDir::toNativeSeparators(toolInDataFolder())});
#else
    reader.start(QStringLiteral("tail"), {toolInDataFolder(), QStringLiteral("-f")});
#endif
    QVERIFY(reader.waitForStarted());

    KestrelDownloader driver(info());
    driver.terminateTool(true);
    // The stop has ended whatever it ends by the time it returns.
    QVERIFY(ProcessProbe::isRunning(reader.processId()));
    reader.kill();
    reader.waitForFinished();
}

void TestToolKillRule::zombieToolCountsAsEnded()
{
#ifdef Q_OS_WIN
    QSKIP("Windows has no zombies: an ended process leaves the list taskkill searches, whoever still holds its handle");
#else
    // A tool that has ended but was not reaped by its parent yet.
    useScenario(FakeTool::Kind::download(), FakeTool::Behaviour());
    const QByteArray tool = QFile::encodeName(toolInDataFolder());
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::execl(tool.constData(), tool.constData(), "zombie", static_cast<char *>(nullptr));
        ::_exit(127);
    }
    QVERIFY(pid > 0);
    QTRY_VERIFY(ProcessProbe::exists(pid) && !ProcessProbe::isRunning(pid));

    KestrelDownloader driver(info());
    LogCapture log;
    driver.terminateTool(true);
    QCOMPARE(log.matching(QStringLiteral("Failed to execute taskkill command")), QStringList());
    ::waitpid(pid, nullptr, 0);
#endif
}

void TestToolKillRule::terminationWithNothingRunning()
{
    KestrelDownloader driver(info());
    LogCapture log;
    driver.terminateTool(true);
    QCOMPARE(log.matching(QStringLiteral("Failed to execute taskkill command")), QStringList());
}

KESTREL_TEST_MAIN(TestToolKillRule)
#include "tst_toolkillrule.moc"
