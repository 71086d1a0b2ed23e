#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

#include "drivertest.h"
#include "logcapture.h"
#include "testsandbox.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using FakeTool::Behaviour;

// The metadata run: its arguments, the parsing of title and duration, and
// its chaining into the format listing.
class TestMetadataRun : public DriverTest
{
    Q_OBJECT

private slots:
    void metadataRun_data();
    void metadataRun();
    void metadataRunClearsOutputAndUsesFreshProcess();
    void metadataParsing_data();
    void metadataParsing();
    void metadataFailureKeepsEarlierValues();
    void metadataChainsIntoFormats();
};

void TestMetadataRun::metadataRun_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("warning");
    const QString watch = QStringLiteral("https://www.youtube.com/watch?v=%1");
    QTest::newRow("watch") << watch.arg(QStringLiteral("abc")) << QStringLiteral("abc") << watch.arg(QStringLiteral("abc")) << QString();
    QTest::newRow("watch with time") << QStringLiteral("https://youtube.com/watch?v=abc&t=42") << QStringLiteral("abc")
                                     << watch.arg(QStringLiteral("abc")) << QString();
    QTest::newRow("shorts with a slash") << QStringLiteral("https://www.youtube.com/shorts/abc/def") << QStringLiteral("abc/def")
                                         << watch.arg(QStringLiteral("abc/def")) << QString();
    QTest::newRow("short link") << QStringLiteral("https://youtu.be/xyz") << QStringLiteral("xyz") << watch.arg(QStringLiteral("xyz"))
                                << QString();
    QTest::newRow("sub-domain") << QStringLiteral("https://m.youtube.com/watch?v=abc") << QStringLiteral("abc")
                                << watch.arg(QStringLiteral("abc")) << QString();
    QTest::newRow("music sub-domain, upper case") << QStringLiteral("https://MUSIC.YouTube.com/watch?v=Q1") << QStringLiteral("Q1")
                                                  << watch.arg(QStringLiteral("Q1")) << QString();
    QTest::newRow("identifier starting with dash") << watch.arg(QStringLiteral("-abc")) << watch.arg(QStringLiteral("-abc"))
                                                   << watch.arg(QStringLiteral("-abc")) << QString();
    QTest::newRow("identifier starting with underscore") << QStringLiteral("https://youtu.be/_abc") << watch.arg(QStringLiteral("_abc"))
                                                         << watch.arg(QStringLiteral("_abc")) << QString();
    QTest::newRow("no host") << QStringLiteral("youtube.com/watch?v=abc") << QStringLiteral("youtube.com/watch?v=abc")
                             << QStringLiteral("youtube.com/watch?v=abc") << QStringLiteral("Not a YouTube URL");
    QTest::newRow("other host") << QStringLiteral("https://example.com/watch?v=abc") << QStringLiteral("https://example.com/watch?v=abc")
                                << QStringLiteral("https://example.com/watch?v=abc") << QStringLiteral("Not a YouTube URL");
    QTest::newRow("feed page") << QStringLiteral("https://www.youtube.com/feed/trending")
                               << QStringLiteral("https://www.youtube.com/feed/trending")
                               << QStringLiteral("https://www.youtube.com/feed/trending") << QStringLiteral("No ID found");
    QTest::newRow("short link root") << QStringLiteral("https://youtu.be/") << QStringLiteral("https://youtu.be/")
                                     << QStringLiteral("https://youtu.be/") << QStringLiteral("No ID found");
}

void TestMetadataRun::metadataRun()
{
    QFETCH(QString, address);
    QFETCH(QString, target);
    QFETCH(QString, url);
    QFETCH(QString, warning);
    useScenario(FakeTool::Kind::metadata(), printing(QStringLiteral("Title\n3:05\n")));
    KestrelDownloader driver(info());
    info().url = QUrl(address, QUrl::TolerantMode);

    LogCapture log;
    driver.requestMetadata();
    QCOMPARE(info().target, target);
    QCOMPARE(info().url.toString(), url);
    QSignalSpy metadata(&driver, &KestrelDownloader::haveMetadata);
    QVERIFY(metadata.wait());

    const QList<FakeTool::Invocation> runs = invocationsOf(FakeTool::Kind::metadata());
    QCOMPARE(runs.size(), 1);
    QCOMPARE(runs.first().arguments, (QStringList{QStringLiteral("--get-title"), QStringLiteral("--get-duration"),
                                                  QStringLiteral("--no-warnings"), target}));
    QCOMPARE(runs.first().workingDirectory, QDir(dataFolder()).canonicalPath());
    // As the system passed it: QProcess gives Windows its native spelling.
    QCOMPARE(runs.first().program, QDir::toNativeSeparators(toolInDataFolder()));

    const QStringList warnings = log.matching(QStringLiteral("WARNING:"));
    if (warning.isEmpty()) {
        QCOMPARE(warnings, QStringList());
    } else {
        QCOMPARE(warnings.size(), 1);
        QVERIFY2(warnings.first().endsWith(QStringLiteral("void KestrelDownloader::requestMetadata() : WARNING: %1").arg(warning)),
                 qPrintable(warnings.first()));
    }
    QVERIFY(log.texts().first().startsWith(QStringLiteral("--> [")));
    QVERIFY(log.texts().first().contains(QStringLiteral("] void KestrelDownloader::requestMetadata() :")));
}

void TestMetadataRun::metadataRunClearsOutputAndUsesFreshProcess()
{
    useScenario(FakeTool::Kind::metadata(), printing(QStringLiteral("First\n1:00\n")));
    KestrelDownloader driver(info());
    info().url = QUrl(QStringLiteral("https://youtu.be/abc"));
    QSignalSpy metadata(&driver, &KestrelDownloader::haveMetadata);
    driver.requestMetadata();
    QVERIFY(metadata.wait());
    QCOMPARE(info().title, QStringLiteral("First"));

    useScenario(FakeTool::Kind::metadata(), printing(QStringLiteral("Second\n2:00\n")));
    info().rawOutput = QStringLiteral("output of an earlier run");
    driver.requestMetadata();
    QCOMPARE(info().rawOutput, QString());
    QVERIFY(metadata.wait());
    QCOMPARE(info().title, QStringLiteral("Second"));

    const QList<FakeTool::Invocation> runs = invocationsOf(FakeTool::Kind::metadata());
    QCOMPARE(runs.size(), 2);
    QVERIFY(runs.at(0).pid != runs.at(1).pid);
}

void TestMetadataRun::metadataParsing_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("code");
    QTest::newRow("minutes and seconds") << QStringLiteral("Title\n3:05\n") << 0 << QStringLiteral("Title") << 185 << 0;
    QTest::newRow("hours") << QStringLiteral("Title\n1:02:03") << 0 << QStringLiteral("Title") << 3723 << 0;
    QTest::newRow("empty lines dropped") << QStringLiteral("Title\n\n5") << 0 << QStringLiteral("Title") << 5 << 0;
    QTest::newRow("exit code 1 is success") << QStringLiteral("Title\n45\n") << 1 << QStringLiteral("Title") << 45 << 0;
    QTest::newRow("stray lines before") << QStringLiteral("[info] something\nReal Title  \n  4:05  \n") << 0
                                        << QStringLiteral("Real Title") << 245 << 0;
    QTest::newRow("carriage returns") << QStringLiteral("Title\r\n3:05\r\n") << 0 << QStringLiteral("Title") << 185 << 0;
    QTest::newRow("non-numeric part counts as 0") << QStringLiteral("Title\nx:10\n") << 0 << QStringLiteral("Title") << 10 << 0;
    QTest::newRow("empty part counts as 0") << QStringLiteral("Title\n:10\n") << 0 << QStringLiteral("Title") << 10 << 0;
    QTest::newRow("over 24 hours wraps") << QStringLiteral("Title\n25:00:00\n") << 0 << QStringLiteral("Title") << 3600 << 0;
    QTest::newRow("too large part counts as 0") << QStringLiteral("Title\n4294967296:07\n") << 0 << QStringLiteral("Title") << 7 << 0;
    QTest::newRow("non-Latin title") << QStringLiteral("日本語のタイトル\n1:00\n") << 0 << QStringLiteral("日本語のタイトル") << 60 << 0;
    QTest::newRow("one line") << QStringLiteral("Title only\n") << 0 << QString() << 0 << 69;
    QTest::newRow("nothing") << QString() << 0 << QString() << 0 << 69;
    QTest::newRow("nothing, exit code 1") << QString() << 1 << QString() << 0 << 69;
    QTest::newRow("four parts") << QStringLiteral("Title\n1:2:3:4\n") << 0 << QString() << 0 << 70;
}

void TestMetadataRun::metadataParsing()
{
    QFETCH(QString, output);
    QFETCH(int, exitCode);
    QFETCH(QString, title);
    QFETCH(int, seconds);
    QFETCH(int, code);
    useScenario(FakeTool::Kind::metadata(), printing(output, exitCode));
    KestrelDownloader driver(info());
    info().url = QUrl(QStringLiteral("https://youtu.be/abc"));
    QSignalSpy metadata(&driver, &KestrelDownloader::haveMetadata);
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    LogCapture log;
    driver.requestMetadata();
    QTRY_COMPARE(metadata.size() + failure.size(), 1);

    if (code == 0) {
        QCOMPARE(info().title, title);
        QCOMPARE(info().duration, QTime(0, 0).addSecs(seconds));
        QCOMPARE(failure.size(), 0);
        return;
    }
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::errorType(code));
    const QString expected = code == 69 ? QStringLiteral("!!! ERROR: Not enough valid lines in the input")
                                        : QStringLiteral("!!! ERROR: Invalid duration format");
    QCOMPARE(log.matching(expected).size(), 1);
    QVERIFY(log.matching(expected).first().contains(QStringLiteral("] void KestrelDownloader::requestMetadataFinished() : ")));
}

void TestMetadataRun::metadataFailureKeepsEarlierValues()
{
    KestrelDownloader driver(info());
    info().title = QStringLiteral("Earlier");
    info().duration = QTime(0, 1, 2);
    info().rawOutput = QStringLiteral("only one line");
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    driver.requestMetadataFinished();
    QCOMPARE(failure.size(), 1);
    QCOMPARE(info().title, QStringLiteral("Earlier"));
    QCOMPARE(info().duration, QTime(0, 1, 2));
}

void TestMetadataRun::metadataChainsIntoFormats()
{
    useScenario(FakeTool::Kind::metadata(), printing(QStringLiteral("Title\n1\n")));
    useScenario(FakeTool::Kind::formats(), printing(QStringLiteral("137 mp4 1920x1080 | 10.00MiB\n")));
    KestrelDownloader driver(info());
    info().url = QUrl(QStringLiteral("https://youtu.be/abc"));
    QSignalSpy formats(&driver, &KestrelDownloader::haveFormats);
    driver.requestMetadata();
    QVERIFY(formats.wait());
    const QList<FakeTool::Invocation> runs = invocations();
    QCOMPARE(runs.size(), 2);
    QCOMPARE(runs.at(1).arguments, (QStringList{QStringLiteral("--list-formats"), QStringLiteral("--no-warnings"), QStringLiteral("abc")}));
    QCOMPARE(driver.viewOrder(), QList<quint32>{137});
}

KESTREL_TEST_MAIN(TestMetadataRun)
#include "tst_metadatarun.moc"
