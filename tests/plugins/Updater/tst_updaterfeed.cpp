#include "releasefeed.h"
#include "updatersettings.h"

#include "testsandbox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <QTranslator>

namespace {

const QByteArray digest = "0123456789abcdef0123456789ABCDEF0123456789abcdef0123456789abcdef";

QByteArray completeFeed()
{
    return R"({
        "releaseNumber": 2024,
        "version": "2.0.024",
        "buildDate": "25.0901",
        "installers": {
            "windows": {"url": "https://updates.kestrel-downloader.example/2.0.024/KestrelD.exe",
                        "sha256": "ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff"},
            "linux": {"url": "https://updates.kestrel-downloader.example/2.0.024/kestrel-downloader_2.0.024_amd64.deb",
                      "sha256": "0123456789abcdef0123456789ABCDEF0123456789abcdef0123456789abcdef"}
        }
    })";
}

// A complete feed with one member of the top level or of the Linux entry replaced.
QByteArray feedWith(const QByteArray &from, const QByteArray &to)
{
    QByteArray document = completeFeed();
    const qsizetype at = document.indexOf(from);
    if (at < 0)
        qFatal("no \"%s\" in the feed", from.constData());
    return document.replace(at, from.size(), to);
}

ReleaseFeed::Release release(int releaseNumber, const QString &buildDate)
{
    ReleaseFeed::Release result;
    result.releaseNumber = releaseNumber;
    result.version = QStringLiteral("2.0.024");
    result.buildDate = buildDate;
    return result;
}

QString settingsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/settings.ini");
}

} // namespace

class TestUpdaterFeed : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void completeFeedIsRead();
    void onlyThisSystemsInstallerIsTaken();
    void feedWithoutThisSystemHasNoInstaller();
    void faultyFeedsAreRejected_data();
    void faultyFeedsAreRejected();
    void newerBuild_data();
    void newerBuild();
    void buildDateShape_data();
    void buildDateShape();
    void addresses_data();
    void addresses();
    void installerNameSuitsTheSystem();
    void reasonsSpeakTheInstalledLanguage();

    void settingsDefaultToThePublishedFeed();
    void settingsOverrideFeedAndTimeout();
    void unusableTimeoutFallsBackToTheDefault_data();
    void unusableTimeoutFallsBackToTheDefault();
    void unusableFeedAddressIsKeptForTheCheck();
};

void TestUpdaterFeed::cleanup()
{
    QFile::remove(settingsPath());
}

void TestUpdaterFeed::completeFeedIsRead()
{
    QString error;
    const std::optional<ReleaseFeed::Release> read = ReleaseFeed::parse(completeFeed(), QStringLiteral("linux"), &error);
    QVERIFY2(read, qPrintable(error));
    QCOMPARE(read->releaseNumber, 2024);
    QCOMPARE(read->version, QStringLiteral("2.0.024"));
    QCOMPARE(read->buildDate, QStringLiteral("25.0901"));
    QVERIFY(read->installer);
    QCOMPARE(read->installer->url,
             QUrl(QStringLiteral("https://updates.kestrel-downloader.example/2.0.024/kestrel-downloader_2.0.024_amd64.deb")));
    QCOMPARE(read->installer->sha256, QByteArray::fromHex(digest));
    QCOMPARE(read->installer->sha256.size(), 32);
}

void TestUpdaterFeed::onlyThisSystemsInstallerIsTaken()
{
    const std::optional<ReleaseFeed::Release> read = ReleaseFeed::parse(completeFeed(), QStringLiteral("windows"), nullptr);
    QVERIFY(read && read->installer);
    QCOMPARE(read->installer->url, QUrl(QStringLiteral("https://updates.kestrel-downloader.example/2.0.024/KestrelD.exe")));
    QCOMPARE(read->installer->sha256, QByteArray(32, '\xff'));

    // Another system's broken entry is no concern of this one.
    const QByteArray brokenWindows = feedWith("\"windows\": {", "\"windows\": {\"nothing\": 1}, \"unused\": {");
    QVERIFY(ReleaseFeed::parse(brokenWindows, QStringLiteral("linux"), nullptr));
    QVERIFY(!ReleaseFeed::parse(brokenWindows, QStringLiteral("windows"), nullptr));
}

void TestUpdaterFeed::feedWithoutThisSystemHasNoInstaller()
{
    QString error;
    const std::optional<ReleaseFeed::Release> read = ReleaseFeed::parse(completeFeed(), QStringLiteral("haiku"), &error);
    QVERIFY2(read, qPrintable(error));
    QVERIFY(!read->installer);
    const std::optional<ReleaseFeed::Release> unknownSystem = ReleaseFeed::parse(completeFeed(), QString(), &error);
    QVERIFY(unknownSystem);
    QVERIFY(!unknownSystem->installer);
}

void TestUpdaterFeed::faultyFeedsAreRejected_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("reason");

    QTest::newRow("empty") << QByteArray() << QStringLiteral("not valid JSON (");
    QTest::newRow("truncated") << completeFeed().left(60) << QStringLiteral("not valid JSON (");
    QTest::newRow("a list") << QByteArray("[2024]") << QStringLiteral("the document is not a JSON object");
    QTest::newRow("no release number") << feedWith("\"releaseNumber\"", "\"release\"")
                                       << QStringLiteral("\"releaseNumber\" is missing or not a number");
    QTest::newRow("release number as text") << feedWith("2024,", "\"2024\",")
                                            << QStringLiteral("\"releaseNumber\" is missing or not a number");
    QTest::newRow("fractional release number") << feedWith("2024,", "2024.5,")
                                               << QStringLiteral("\"releaseNumber\" is not a positive whole number");
    QTest::newRow("release number 0") << feedWith("2024,", "0,") << QStringLiteral("\"releaseNumber\" is not a positive whole number");
    QTest::newRow("negative release number") << feedWith("2024,", "-2024,")
                                             << QStringLiteral("\"releaseNumber\" is not a positive whole number");
    QTest::newRow("release number beyond int") << feedWith("2024,", "3000000000,")
                                               << QStringLiteral("\"releaseNumber\" is not a positive whole number");
    QTest::newRow("no version") << feedWith("\"version\"", "\"name\"") << QStringLiteral("\"version\" is missing or not a text");
    QTest::newRow("blank version") << feedWith("\"2.0.024\"", "\"  \"") << QStringLiteral("\"version\" is missing or not a text");
    QTest::newRow("endless version") << feedWith("\"2.0.024\"", '"' + QByteArray(65, '9') + '"') << QStringLiteral("\"version\" is too long");
    QTest::newRow("build date as a number") << feedWith("\"25.0901\"", "25.0901")
                                            << QStringLiteral("\"buildDate\" is missing or not a text");
    QTest::newRow("build date of another shape") << feedWith("\"25.0901\"", "\"2025-09-01\"")
                                                 << QStringLiteral("\"buildDate\" is not of the form NN.NNNN");
    QTest::newRow("no installers") << feedWith("\"installers\"", "\"downloads\"")
                                   << QStringLiteral("\"installers\" is missing or not an object");
    QTest::newRow("installers as a list") << QByteArray(R"({"releaseNumber": 2024, "version": "2.0.024", "buildDate": "25.0901", "installers": []})")
                                          << QStringLiteral("\"installers\" is missing or not an object");
    QTest::newRow("entry not an object") << QByteArray(R"({"releaseNumber": 2024, "version": "2.0.024", "buildDate": "25.0901", "installers": {"linux": "x"}})")
                                         << QStringLiteral("installer for \"linux\" is not an object");
    QTest::newRow("no address") << feedWith("\"url\": \"https://updates.kestrel-downloader.example/2.0.024/kestrel", "\"link\": \"x")
                                << QStringLiteral("installer for \"linux\": \"url\" is missing or not a text");
    QTest::newRow("no digest") << feedWith("\"sha256\": \"0123", "\"md5\": \"0123")
                               << QStringLiteral("installer for \"linux\": \"sha256\" is missing or not a text");
    QTest::newRow("short digest") << feedWith("0123456789abcdef0123456789ABCDEF", "")
                                  << QStringLiteral("installer for \"linux\": \"sha256\" is not 64 hexadecimal digits");
    QTest::newRow("digest with a non-hex digit") << feedWith("0123456789abcdef0123456789ABCDEF", "0123456789abcdef0123456789ABCDEg")
                                                 << QStringLiteral("installer for \"linux\": \"sha256\" is not 64 hexadecimal digits");
    QTest::newRow("plain http elsewhere") << feedWith("https://updates.kestrel-downloader.example/2.0.024/kestrel", "http://192.0.2.1/kestrel")
                                          << QStringLiteral("installer for \"linux\": \"http://192.0.2.1/kestrel-downloader_2.0.024_amd64.deb\" was refused");
    QTest::newRow("relative address") << feedWith("https://updates.kestrel-downloader.example/2.0.024/kestrel", "kestrel")
                                      << QStringLiteral("installer for \"linux\": \"kestrel-downloader_2.0.024_amd64.deb\" is not a usable address");
}

void TestUpdaterFeed::faultyFeedsAreRejected()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, reason);

    QString error = QStringLiteral("unchanged");
    QVERIFY(!ReleaseFeed::parse(document, QStringLiteral("linux"), &error));
    QVERIFY2(error.startsWith(reason), qPrintable(error));
    QVERIFY(!ReleaseFeed::parse(document, QStringLiteral("linux"), nullptr));
}

void TestUpdaterFeed::newerBuild_data()
{
    QTest::addColumn<int>("feedNumber");
    QTest::addColumn<QString>("feedDate");
    QTest::addColumn<int>("runningNumber");
    QTest::addColumn<QString>("runningText");
    QTest::addColumn<bool>("newer");

    QTest::newRow("higher number") << 2024 << QStringLiteral("25.0901") << 2023 << QStringLiteral("25.0826") << true;
    QTest::newRow("higher number, earlier date") << 2024 << QStringLiteral("24.0101") << 2023 << QStringLiteral("25.0826") << true;
    QTest::newRow("lower number, later date") << 2022 << QStringLiteral("26.0101") << 2023 << QStringLiteral("25.0826") << false;
    QTest::newRow("same number, later date") << 2023 << QStringLiteral("25.0901") << 2023 << QStringLiteral("25.0826") << true;
    QTest::newRow("same number, same date") << 2023 << QStringLiteral("25.0826") << 2023 << QStringLiteral("25.0826") << false;
    QTest::newRow("same number, earlier date") << 2023 << QStringLiteral("25.0801") << 2023 << QStringLiteral("25.0826") << false;
    QTest::newRow("next year") << 2023 << QStringLiteral("26.0101") << 2023 << QStringLiteral("25.1231") << true;
    QTest::newRow("same number, version text") << 2023 << QStringLiteral("25.0901") << 2023 << QStringLiteral("2.0.023") << false;
    QTest::newRow("higher number, version text") << 2024 << QStringLiteral("25.0901") << 2023 << QStringLiteral("2.0.023") << true;
    QTest::newRow("same number, empty text") << 2023 << QStringLiteral("25.0901") << 2023 << QStringLiteral("") << false;
    QTest::newRow("forced from 0") << 1 << QStringLiteral("25.0901") << 0 << QStringLiteral("2.0.023") << true;
}

void TestUpdaterFeed::newerBuild()
{
    QFETCH(int, feedNumber);
    QFETCH(QString, feedDate);
    QFETCH(int, runningNumber);
    QFETCH(QString, runningText);
    QFETCH(bool, newer);

    QCOMPARE(ReleaseFeed::isNewer(release(feedNumber, feedDate), runningNumber, runningText), newer);
}

void TestUpdaterFeed::buildDateShape_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isBuildDate");

    QTest::newRow("build date") << QStringLiteral("25.0826") << true;
    QTest::newRow("version") << QStringLiteral("2.0.023") << false;
    QTest::newRow("one digit too many") << QStringLiteral("25.08261") << false;
    QTest::newRow("one digit too few") << QStringLiteral("25.826") << false;
    QTest::newRow("trailing line break") << QStringLiteral("25.0826\n") << false;
    QTest::newRow("comma") << QStringLiteral("25,0826") << false;
    QTest::newRow("letters") << QStringLiteral("ab.cdef") << false;
    QTest::newRow("other digits") << QStringLiteral("\u0662\u0665.\u0660\u0668\u0662\u0666") << false;
    QTest::newRow("empty") << QStringLiteral("") << false;
}

void TestUpdaterFeed::buildDateShape()
{
    QFETCH(QString, text);
    QFETCH(bool, isBuildDate);
    QCOMPARE(ReleaseFeed::looksLikeBuildDate(text), isBuildDate);
}

void TestUpdaterFeed::addresses_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("https") << QStringLiteral("https://updates.kestrel-downloader.example/feed.json") << true;
    QTest::newRow("https in capitals") << QStringLiteral("HTTPS://Updates.Kestrel-Downloader.example/feed.json") << true;
    QTest::newRow("https with a port") << QStringLiteral("https://updates.kestrel-downloader.example:8443/feed.json") << true;
    QTest::newRow("http to 127.0.0.1") << QStringLiteral("http://127.0.0.1:8080/feed.json") << true;
    QTest::newRow("http elsewhere") << QStringLiteral("http://192.0.2.1/feed.json") << false;
    QTest::newRow("http to localhost") << QStringLiteral("http://localhost/feed.json") << false;
    QTest::newRow("http to IPv6 loopback") << QStringLiteral("http://[::1]/feed.json") << false;
    QTest::newRow("http to a look-alike host") << QStringLiteral("http://127.0.0.1.example/feed.json") << false;
    QTest::newRow("http with 127.0.0.1 as user") << QStringLiteral("http://127.0.0.1@192.0.2.1/feed.json") << false;
    QTest::newRow("ftp") << QStringLiteral("ftp://127.0.0.1/feed.json") << false;
    QTest::newRow("local file") << QStringLiteral("file:///tmp/feed.json") << false;
    QTest::newRow("no host") << QStringLiteral("https:///feed.json") << false;
    QTest::newRow("relative") << QStringLiteral("feed.json") << false;
    QTest::newRow("empty") << QStringLiteral("") << false;
}

void TestUpdaterFeed::addresses()
{
    QFETCH(QString, address);
    QFETCH(bool, accepted);

    const QString refusal = ReleaseFeed::addressRefusal(QUrl(address, QUrl::StrictMode));
    QCOMPARE(refusal.isEmpty(), accepted);
    if (!accepted)
        QVERIFY2(refusal.contains(QLatin1String("was refused")) || refusal.contains(QLatin1String("is not a usable address")), qPrintable(refusal));
}

void TestUpdaterFeed::installerNameSuitsTheSystem()
{
#if defined(Q_OS_WIN)
    QCOMPARE(ReleaseFeed::platformKey(), QStringLiteral("windows"));
    QCOMPARE(ReleaseFeed::installerFileName(), QStringLiteral("KestrelD.exe"));
#elif defined(Q_OS_LINUX)
    QCOMPARE(ReleaseFeed::platformKey(), QStringLiteral("linux"));
    QCOMPARE(ReleaseFeed::installerFileName(), QStringLiteral("KestrelD.deb"));
#else
    QSKIP("no installer is published for this system");
#endif
}

// The reasons go into the plug-in's translated boxes ("The update address
// %1."), so they follow the catalogue the application installed, nested ones
// too, and are English again without it.
void TestUpdaterFeed::reasonsSpeakTheInstalledLanguage()
{
    const QUrl plainHttp(QStringLiteral("http://192.0.2.1/feed.json"));
    const QByteArray plainHttpInstaller
        = feedWith("https://updates.kestrel-downloader.example/2.0.024/kestrel", "http://192.0.2.1/kestrel");
    QString refusal;
    QString feedError;
    QString installerError;
    {
        QTranslator german;
        QVERIFY(german.load(QStringLiteral("kestrel_de"), QStringLiteral(KESTREL_CATALOGUE_FOLDER)));
        QVERIFY(QCoreApplication::installTranslator(&german));
        refusal = ReleaseFeed::addressRefusal(plainHttp);
        ReleaseFeed::parse(QByteArray("[2024]"), QStringLiteral("linux"), &feedError);
        ReleaseFeed::parse(plainHttpInstaller, QStringLiteral("linux"), &installerError);
        QCoreApplication::removeTranslator(&german);
    }
    QCOMPARE(refusal,
        QStringLiteral(
            "„http://192.0.2.1/feed.json“ wurde abgelehnt: Es werden nur sichere https-Adressen akzeptiert"));
    QCOMPARE(feedError, QStringLiteral("Das Dokument ist kein JSON-Objekt"));
    QCOMPARE(installerError,
        QStringLiteral("Installationsprogramm für „linux“: „http://192.0.2.1/kestrel-downloader_2.0.024_amd64.deb“ "
                       "wurde abgelehnt: Es werden nur sichere https-Adressen akzeptiert"));

    QCOMPARE(ReleaseFeed::addressRefusal(plainHttp),
        QStringLiteral("\"http://192.0.2.1/feed.json\" was refused: only secure https addresses are accepted"));
}

void TestUpdaterFeed::settingsDefaultToThePublishedFeed()
{
    QVERIFY(!QFile::exists(settingsPath()));
    QCOMPARE(UpdaterSettings::filePath(), settingsPath());
    QVERIFY(UpdaterSettings::filePath().startsWith(QDir::homePath()));

    const UpdaterSettings settings = UpdaterSettings::load();
    QCOMPARE(settings.feedUrl, QUrl(QStringLiteral("https://updates.kestrel-downloader.example/feed.json")));
    QCOMPARE(settings.timeoutMs, 30000);
    QVERIFY(settings.problem.isEmpty());
    QVERIFY(ReleaseFeed::addressRefusal(settings.feedUrl).isEmpty());
}

void TestUpdaterFeed::settingsOverrideFeedAndTimeout()
{
    {
        QDir().mkpath(QFileInfo(settingsPath()).absolutePath());
        QSettings file(settingsPath(), QSettings::IniFormat);
        file.setValue(QStringLiteral("Updater/FeedUrl"), QStringLiteral(" http://127.0.0.1:4711/feed.json "));
        file.setValue(QStringLiteral("Updater/TimeoutMs"), 250);
    }
    const UpdaterSettings settings = UpdaterSettings::load();
    QCOMPARE(settings.feedUrl, QUrl(QStringLiteral("http://127.0.0.1:4711/feed.json")));
    QCOMPARE(settings.timeoutMs, 250);
    QVERIFY(settings.problem.isEmpty());
}

void TestUpdaterFeed::unusableTimeoutFallsBackToTheDefault_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("zero") << QStringLiteral("0");
    QTest::newRow("negative") << QStringLiteral("-5");
    QTest::newRow("words") << QStringLiteral("soon");
    QTest::newRow("empty") << QStringLiteral("");
}

void TestUpdaterFeed::unusableTimeoutFallsBackToTheDefault()
{
    QFETCH(QString, value);
    {
        QDir().mkpath(QFileInfo(settingsPath()).absolutePath());
        QSettings file(settingsPath(), QSettings::IniFormat);
        file.setValue(QStringLiteral("Updater/TimeoutMs"), value);
    }
    const UpdaterSettings settings = UpdaterSettings::load();
    QCOMPARE(settings.timeoutMs, 30000);
    QVERIFY2(settings.problem.startsWith(QStringLiteral("Updater/TimeoutMs \"%1\" is not a positive number").arg(value)),
             qPrintable(settings.problem));
}

void TestUpdaterFeed::unusableFeedAddressIsKeptForTheCheck()
{
    {
        QDir().mkpath(QFileInfo(settingsPath()).absolutePath());
        QSettings file(settingsPath(), QSettings::IniFormat);
        file.setValue(QStringLiteral("Updater/FeedUrl"), QStringLiteral("http://192.0.2.1/feed.json"));
    }
    // Not replaced by the default: the check refuses it and names it.
    const UpdaterSettings settings = UpdaterSettings::load();
    QCOMPARE(settings.feedUrl, QUrl(QStringLiteral("http://192.0.2.1/feed.json")));
    QVERIFY(!ReleaseFeed::addressRefusal(settings.feedUrl).isEmpty());
}

KESTREL_TEST_MAIN(TestUpdaterFeed)
#include "tst_updaterfeed.moc"
