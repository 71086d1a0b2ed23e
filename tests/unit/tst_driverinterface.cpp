#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

#include "drivertest.h"
#include "testsandbox.h"

#include <QMetaType>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using FakeTool::Behaviour;

// The driver's fixed interface: its signals and slots, its failure codes, the
// address check and the progress reader.
class TestDriverInterface : public DriverTest
{
    Q_OBJECT

private slots:
    void signalsAndSlotsInDeclaredOrder();
    void errorTypeValuesAndMetaTypeName();
    void addressCheck_data();
    void addressCheck();
    void abChannelIsRemovedOtherItemsStay();
    void progressFromChunk_data();
    void progressFromChunk();
};

void TestDriverInterface::signalsAndSlotsInDeclaredOrder()
{
    const QMetaObject &meta = KestrelDownloader::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    QCOMPARE(methods, (QStringList{
                          QStringLiteral("haveMetadata()"),
                          QStringLiteral("haveFormats()"),
                          QStringLiteral("haveVideo()"),
                          QStringLiteral("percent(int)"),
                          QStringLiteral("somethingWrong(KestrelDownloader::errorType)"),
                          QStringLiteral("resultUpdateBinary(QProcess::ExitStatus)"),
                          QStringLiteral("requestMetadataFinished()"),
                          QStringLiteral("requestFormatsFinished()"),
                      }));
}

void TestDriverInterface::errorTypeValuesAndMetaTypeName()
{
    KestrelDownloader driver(info());
    QCOMPARE(int(KestrelDownloader::metadataTooFewLines), 69);
    QCOMPARE(int(KestrelDownloader::metadataBadDuration), 70);
    QCOMPARE(int(KestrelDownloader::metadataCancelled), 71);
    QCOMPARE(int(KestrelDownloader::metadataCrashed), 72);
    QCOMPARE(int(KestrelDownloader::formatsCancelled), 73);
    QCOMPARE(int(KestrelDownloader::formatsCrashed), 74);
    QCOMPARE(int(KestrelDownloader::downloadCancelled), 85);
    QCOMPARE(int(KestrelDownloader::downloadCrashed), 86);
    QCOMPARE(int(KestrelDownloader::formatCountError), 101);
    QCOMPARE(int(KestrelDownloader::toolNotStarted), 102);
    QCOMPARE(sizeof(KestrelDownloader::errorType), size_t(4));
    const QMetaType byName = QMetaType::fromName("KestrelDownloader::errorType");
    QVERIFY(byName.isValid());
    QCOMPARE(byName, QMetaType::fromType<KestrelDownloader::errorType>());
    QVERIFY(KestrelDownloader::staticMetaObject.indexOfEnumerator("errorType") < 0);
}

void TestDriverInterface::addressCheck_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("watch address") << QStringLiteral("https://www.youtube.com/watch?v=dQw4w9WgXcQ") << true;
    QTest::newRow("without www") << QStringLiteral("https://youtube.com/watch?v=abc") << true;
    QTest::newRow("plain http") << QStringLiteral("http://www.youtube.com/watch?v=abc") << true;
    QTest::newRow("no scheme") << QStringLiteral("www.youtube.com/watch?v=abc") << true;
    QTest::newRow("bare host, no scheme") << QStringLiteral("youtube.com/watch?v=abc") << true;
    QTest::newRow("shorts") << QStringLiteral("https://www.youtube.com/shorts/abc_DEF-1") << true;
    QTest::newRow("short link") << QStringLiteral("https://youtu.be/abc") << true;
    QTest::newRow("short link with time") << QStringLiteral("https://youtu.be/abc?t=42") << true;
    QTest::newRow("upper case") << QStringLiteral("HTTPS://WWW.YOUTUBE.COM/WATCH?V=abc") << true;
    QTest::newRow("identifier starting with dash") << QStringLiteral("https://www.youtube.com/watch?v=-abc") << true;
    QTest::newRow("identifier starting with underscore") << QStringLiteral("https://youtu.be/_abc") << true;
    QTest::newRow("anything may follow") << QStringLiteral("https://www.youtube.com/watch?v=abc&list=PL1&index=2") << true;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("blank") << QStringLiteral("   ") << false;
    QTest::newRow("other site") << QStringLiteral("https://vimeo.com/12345") << false;
    QTest::newRow("sub-domain") << QStringLiteral("https://m.youtube.com/watch?v=abc") << false;
    QTest::newRow("channel page") << QStringLiteral("https://www.youtube.com/@someone") << false;
    QTest::newRow("watch without identifier") << QStringLiteral("https://www.youtube.com/watch?v=") << false;
    QTest::newRow("identifier not first item") << QStringLiteral("https://www.youtube.com/watch?list=x&v=abc") << false;
    QTest::newRow("ftp scheme") << QStringLiteral("ftp://youtube.com/watch?v=abc") << false;
    QTest::newRow("look-alike host") << QStringLiteral("https://youtube.com.evil.example/watch?v=abc") << false;
    QTest::newRow("short link without identifier") << QStringLiteral("https://youtu.be/") << false;
    QTest::newRow("invalid address") << QStringLiteral("http://[::1") << false;
    QTest::newRow("text") << QStringLiteral("just some words") << false;
}

void TestDriverInterface::addressCheck()
{
    QFETCH(QString, text);
    QFETCH(bool, accepted);
    KestrelDownloader driver(info());
    const QUrl before(QStringLiteral("https://www.youtube.com/watch?v=before"));
    info().url = before;
    QCOMPARE(driver.setUrl(text), accepted);
    if (accepted)
        QCOMPARE(info().url, QUrl(text, QUrl::TolerantMode));
    else
        QCOMPARE(info().url, before);
}

void TestDriverInterface::abChannelIsRemovedOtherItemsStay()
{
    KestrelDownloader driver(info());
    QVERIFY(driver.setUrl(QStringLiteral("https://www.youtube.com/watch?v=abc&ab_channel=Someone&t=42")));
    QCOMPARE(info().url.toString(), QStringLiteral("https://www.youtube.com/watch?v=abc&t=42"));

    // Only the first item of that name goes.
    QVERIFY(driver.setUrl(QStringLiteral("https://youtu.be/abc?ab_channel=A&ab_channel=B")));
    QCOMPARE(info().url.toString(), QStringLiteral("https://youtu.be/abc?ab_channel=B"));

    // The metadata request replaces the address with one that carries only "v".
    useScenario(FakeTool::Kind::metadata(), printing(QStringLiteral("T\n1\n")));
    QVERIFY(driver.setUrl(QStringLiteral("https://www.youtube.com/watch?v=abc&ab_channel=Someone&t=42")));
    QSignalSpy metadata(&driver, &KestrelDownloader::haveMetadata);
    driver.requestMetadata();
    QCOMPARE(info().url.toString(), QStringLiteral("https://www.youtube.com/watch?v=abc"));
    QVERIFY(metadata.wait());
}

void TestDriverInterface::progressFromChunk_data()
{
    QTest::addColumn<QString>("chunk");
    QTest::addColumn<int>("expected"); // -1: no report
    QTest::newRow("plain") << QStringLiteral("[download]  45.3% of 10.00MiB") << 45;
    QTest::newRow("merging has no progress") << QStringLiteral("[Merger] Merging formats into \"a.mp4\"") << -1;
    QTest::newRow("empty") << QString() << -1;
    QTest::newRow("only a percent sign") << QStringLiteral("%") << -1;
    QTest::newRow("number with garbage") << QStringLiteral("[download] 1e3% of x") << 100;
    QTest::newRow("negative") << QStringLiteral("[download] -5% of x") << -5;
    QTest::newRow("replacement characters") << QStringLiteral("[download] \uFFFD\uFFFD% of x") << 0;
    QTest::newRow("not a number") << QStringLiteral("[download] nan% of 10.00MiB") << 0;
    QTest::newRow("infinity") << QStringLiteral("[download] inf% of x") << 100;
    QTest::newRow("minus infinity") << QStringLiteral("[download] -inf% of x") << std::numeric_limits<int>::min();
    QTest::newRow("far below an int") << QStringLiteral("[download] -1e300% of x") << std::numeric_limits<int>::min();
}

void TestDriverInterface::progressFromChunk()
{
    QFETCH(QString, chunk);
    QFETCH(int, expected);
    const std::optional<int> value = KestrelDownloader::progressFromChunk(chunk);
    QCOMPARE(value.has_value(), expected != -1);
    if (value)
        QCOMPARE(*value, expected);
}

KESTREL_TEST_MAIN(TestDriverInterface)
#include "tst_driverinterface.moc"
