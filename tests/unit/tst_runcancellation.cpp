#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

#include "drivertest.h"
#include "logcapture.h"
#include "processprobe.h"
#include "testsandbox.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <csignal>

using FakeTool::Behaviour;

// How runs end when they are cancelled, crash or ignore the stop.
class TestRunCancellation : public DriverTest
{
    Q_OBJECT

private slots:
    void cancelAndCrashCodes_data();
    void cancelAndCrashCodes();
    void cancelFlagIsConsumedByNextRun();
    void toolThatIgnoresTheStopIsKilled();
    void downloadKillsOtherRunsQuietly();
};

void TestRunCancellation::cancelAndCrashCodes_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("cancel");
    QTest::addColumn<int>("code");
    QTest::newRow("metadata cancelled") << FakeTool::Kind::metadata() << true << 71;
    QTest::newRow("metadata crashed") << FakeTool::Kind::metadata() << false << 72;
    QTest::newRow("formats cancelled, crossed") << FakeTool::Kind::formats() << true << 74;
    QTest::newRow("formats crashed, crossed") << FakeTool::Kind::formats() << false << 73;
    QTest::newRow("download cancelled") << FakeTool::Kind::download() << true << 85;
    QTest::newRow("download crashed") << FakeTool::Kind::download() << false << 86;
}

void TestRunCancellation::cancelAndCrashCodes()
{
    QFETCH(QString, kind);
    QFETCH(bool, cancel);
    QFETCH(int, code);
    useScenario(kind, cancel ? hanging() : crashing());
    KestrelDownloader driver(info());
    info().url = QUrl(QStringLiteral("https://youtu.be/abc"));
    info().target = QStringLiteral("abc");
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    QSignalSpy metadata(&driver, &KestrelDownloader::haveMetadata);
    QSignalSpy formats(&driver, &KestrelDownloader::haveFormats);
    QSignalSpy video(&driver, &KestrelDownloader::haveVideo);
    LogCapture log;

    if (kind == FakeTool::Kind::metadata())
        driver.requestMetadata();
    else if (kind == FakeTool::Kind::formats())
        driver.requestFormats();
    else
        driver.requestVideo(18);

    if (cancel) {
        waitForInvocations(1);
        const qint64 pid = invocations().first().pid;
        QVERIFY(ProcessProbe::exists(pid));
        driver.terminateTool(false);
        // The stop waits for the tool to end.
        QVERIFY(!ProcessProbe::isRunning(pid));
    }
    QVERIFY(failure.wait());
    QCOMPARE(failure.size(), 1);
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::errorType(code));
    QCOMPARE(metadata.size() + formats.size() + video.size(), 0);
    if (!cancel) {
        const QStringList errors = log.matching(QStringLiteral("!!! ERROR:"));
        QCOMPARE(errors.size(), 1);
        QVERIFY2(errors.first().endsWith(QStringLiteral("[ QProcess::NotRunning QProcess::Crashed ]")), qPrintable(errors.first()));
    }

    // The flag was consumed: a further normal run succeeds.
    useScenario(kind, printing(QStringLiteral("Title\n1\n")));
    failure.clear();
    if (kind == FakeTool::Kind::download()) {
        driver.requestVideo(18);
        QVERIFY(video.wait());
    } else {
        driver.requestFormats();
        QVERIFY(formats.wait());
    }
    QCOMPARE(failure.size(), 0);
}

void TestRunCancellation::cancelFlagIsConsumedByNextRun()
{
    useScenario(FakeTool::Kind::metadata(), printing(QStringLiteral("Title\n3:05\n")));
    KestrelDownloader driver(info());
    info().url = QUrl(QStringLiteral("https://youtu.be/abc"));
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    QSignalSpy metadata(&driver, &KestrelDownloader::haveMetadata);

    driver.terminateTool(false); // nothing is running
    driver.requestMetadata();
    QVERIFY(failure.wait());
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::metadataCancelled);
    QCOMPARE(metadata.size(), 0);

    useScenario(FakeTool::Kind::metadata(), crashing(SIGABRT));
    failure.clear();
    driver.requestMetadata();
    QVERIFY(failure.wait());
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::metadataCrashed);
}

void TestRunCancellation::toolThatIgnoresTheStopIsKilled()
{
#ifdef Q_OS_WIN
    QSKIP("Windows has no stop to ignore: taskkill /F ends the tool at once (downloadKillsOtherRunsQuietly)");
#endif
    FakeTool::Behaviour stubborn = hanging();
    stubborn.ignoresStop = true;
    useScenario(FakeTool::Kind::metadata(), stubborn);
    KestrelDownloader driver(info());
    info().url = QUrl(QStringLiteral("https://youtu.be/abc"));
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    driver.requestMetadata();
    waitForInvocations(1);
    const qint64 hung = invocations().first().pid;

    driver.terminateTool(true);
    QVERIFY(failure.wait());
    // Only the kill that follows the stop ended it: a crash exit.
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::metadataCrashed);
    QVERIFY(!ProcessProbe::exists(hung));
}

void TestRunCancellation::downloadKillsOtherRunsQuietly()
{
    useScenario(FakeTool::Kind::metadata(), hanging());
    KestrelDownloader driver(info());
    info().url = QUrl(QStringLiteral("https://youtu.be/abc"));
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    QSignalSpy video(&driver, &KestrelDownloader::haveVideo);
    driver.requestMetadata();
    waitForInvocations(1);
    const qint64 hung = invocations().first().pid;

    driver.requestVideo(18);
    QVERIFY(failure.wait());
    // Killed without the cancel mark, the metadata run ends as on Windows:
    // exit code 1, a normal exit, having printed nothing, so too few lines.
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::metadataTooFewLines);
    // The download may already be done by now.
    QTRY_COMPARE(video.size(), 1);
    QVERIFY(!ProcessProbe::exists(hung));
}

KESTREL_TEST_MAIN(TestRunCancellation)
#include "tst_runcancellation.moc"
