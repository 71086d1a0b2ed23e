#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

#include "drivertest.h"
#include "logcapture.h"
#include "processprobe.h"
#include "testsandbox.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <csignal>

using FakeTool::Behaviour;

// The tool's self-update run, detached and attached.
class TestToolUpdateRun : public DriverTest
{
    Q_OBJECT

private slots:
    void detachedUpdateReportsNothing();
    void attachedUpdateReportsOnce_data();
    void attachedUpdateReportsOnce();
    void updateIgnoresCancelFlagAndKillsNothing();
    void updateRunsBesideADownload();
};

void TestToolUpdateRun::detachedUpdateReportsNothing()
{
    KestrelDownloader driver(info());
    QSignalSpy result(&driver, &KestrelDownloader::resultUpdateBinary);
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    LogCapture log;
    driver.updateBinary(true);
    waitForInvocations(1);
    // Once its process object is gone, the run has nothing left to report with.
    QTRY_COMPARE(KestrelDownloader::processObjectCount(), 0);
    QCOMPARE(result.size(), 0);
    QCOMPARE(failure.size(), 0);
    const FakeTool::Invocation run = invocations().first();
    QCOMPARE(run.arguments, QStringList{QStringLiteral("--update")});
    QCOMPARE(run.workingDirectory, QDir(dataFolder()).canonicalPath());
    QVERIFY(log.texts().first().endsWith(QStringLiteral("] void KestrelDownloader::updateBinary(bool) : detached: true")));
}

void TestToolUpdateRun::attachedUpdateReportsOnce_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QProcess::ExitStatus>("status");
    QTest::newRow("success") << 0 << 0 << QProcess::NormalExit;
    QTest::newRow("tool refuses to update itself") << 0 << 100 << QProcess::NormalExit;
    QTest::newRow("crash") << int(SIGSEGV) << 0 << QProcess::CrashExit;
}

void TestToolUpdateRun::attachedUpdateReportsOnce()
{
    QFETCH(int, signal);
    QFETCH(int, exitCode);
    QFETCH(QProcess::ExitStatus, status);
    Behaviour update;
    update.signal = signal;
    update.exitCode = exitCode;
    useScenario(FakeTool::Kind::update(), update);
    KestrelDownloader driver(info());
    QSignalSpy result(&driver, &KestrelDownloader::resultUpdateBinary);
    LogCapture log;
    driver.updateBinary(false);
    QVERIFY(result.wait());
    // Once its process object is gone, the run has nothing left to report with.
    QTRY_COMPARE(KestrelDownloader::processObjectCount(), 0);
    QCOMPARE(result.size(), 1);
    QCOMPARE(result.first().first().value<QProcess::ExitStatus>(), status);
    QCOMPARE(invocations().first().arguments, QStringList{QStringLiteral("--update")});
    QCOMPARE(log.matching(QStringLiteral("updateBinary::finished")).size(), 1);
    QCOMPARE(log.matching(QStringLiteral("!!! ERROR:")).size(), status == QProcess::CrashExit ? 1 : 0);
}

void TestToolUpdateRun::updateIgnoresCancelFlagAndKillsNothing()
{
    useScenario(FakeTool::Kind::metadata(), hanging());
    KestrelDownloader driver(info());
    info().url = QUrl(QStringLiteral("https://youtu.be/abc"));
    QSignalSpy result(&driver, &KestrelDownloader::resultUpdateBinary);
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    driver.requestMetadata();
    waitForInvocations(1);
    const qint64 hung = invocations().first().pid;

    driver.updateBinary(false);
    QVERIFY(result.wait());
    QVERIFY(ProcessProbe::exists(hung));

    driver.terminateTool(false);
    QVERIFY(failure.wait());
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::metadataCancelled);

    // An update run that ends while the flag is raised leaves it raised.
    driver.terminateTool(false);
    result.clear();
    driver.updateBinary(false);
    QVERIFY(result.wait());
    QCOMPARE(result.first().first().value<QProcess::ExitStatus>(), QProcess::NormalExit);
    useScenario(FakeTool::Kind::metadata(), printing(QStringLiteral("T\n1\n")));
    failure.clear();
    driver.requestMetadata();
    QVERIFY(failure.wait());
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::metadataCancelled);
}

void TestToolUpdateRun::updateRunsBesideADownload()
{
    Behaviour download;
    download.stdoutChunks = {QStringLiteral("[download]  10.0% of 1.00MiB"), QStringLiteral("\r[download]  60.0% of 1.00MiB"),
                             QStringLiteral("\r[download] 100% of 1.00MiB in 00:00:01\n")};
    download.pauseMs = 700;
    useScenario(FakeTool::Kind::download(), download);
    KestrelDownloader driver(info());
    info().target = QStringLiteral("abc");
    QSignalSpy percent(&driver, &KestrelDownloader::percent);
    QSignalSpy video(&driver, &KestrelDownloader::haveVideo);
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    QSignalSpy result(&driver, &KestrelDownloader::resultUpdateBinary);
    driver.requestVideo(22);
    QVERIFY(percent.wait());
    const qint64 downloading = invocationsOf(FakeTool::Kind::download()).first().pid;

    driver.updateBinary(false);
    QVERIFY(result.wait());
    QCOMPARE(result.first().first().value<QProcess::ExitStatus>(), QProcess::NormalExit);
    QCOMPARE(invocationsOf(FakeTool::Kind::update()).size(), 1);
    QCOMPARE(video.size(), 0);
    QVERIFY(ProcessProbe::exists(downloading));

    QVERIFY(video.wait());
    QCOMPARE(failure.size(), 0);
    QList<int> reported;
    for (const QList<QVariant> &arguments : std::as_const(percent))
        reported << arguments.first().toInt();
    QCOMPARE(reported, (QList<int>{10, 60, 100}));
}

KESTREL_TEST_MAIN(TestToolUpdateRun)
#include "tst_toolupdaterun.moc"
