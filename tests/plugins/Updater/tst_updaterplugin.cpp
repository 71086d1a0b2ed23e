#include "plugins/updateinterface.h"

#include "localhttpserver.h"
#include "logcapture.h"
#include "testsandbox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCryptographicHash>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QMessageBox>
#include <QNetworkProxy>
#include <QPluginLoader>
#include <QProgressDialog>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

// Answers the updater's message boxes as a user would: each box that comes
// up is recorded and gets the next answer in the list. NoButton leaves a box
// open. A box beyond the list is recorded too and closed with its
// OK, No or Cancel button, so an unexpected box fails the test instead of
// blocking it.
class BoxAnswerer : public QObject
{
public:
    struct Seen
    {
        QMessageBox::Icon icon;
        QString title;
        QString text;
        Qt::TextFormat textFormat;
        QPointer<QWidget> parent;
    };

    explicit BoxAnswerer(const QList<QMessageBox::StandardButton> &answers = {})
        : m_answers(answers)
    {
        connect(&m_timer, &QTimer::timeout, this, &BoxAnswerer::poll);
        m_timer.start(10);
    }

    // Boxes that come up later are left to others.
    void stop() { m_timer.stop(); }

    QList<Seen> seen() const { return m_seen; }

private:
    void poll()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible() || box == m_held)
            return;
        m_seen.append({box->icon(), box->windowTitle(), box->text(), box->textFormat(), box->parentWidget()});
        const bool listed = !m_answers.isEmpty();
        const QMessageBox::StandardButton answer = listed ? m_answers.takeFirst() : QMessageBox::NoButton;
        if (listed && answer == QMessageBox::NoButton) {
            m_held = box;
            return;
        }
        QAbstractButton *button = box->button(answer);
        for (QMessageBox::StandardButton fallback : {QMessageBox::Ok, QMessageBox::No, QMessageBox::Cancel}) {
            if (!button)
                button = box->button(fallback);
        }
        if (button)
            button->click();
    }

    QTimer m_timer;
    QList<QMessageBox::StandardButton> m_answers;
    QList<Seen> m_seen;
    QPointer<QMessageBox> m_held;
};

QList<QWidget *> visibleDialogs()
{
    QList<QWidget *> dialogs;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->inherits("QDialog"))
            dialogs << window;
    }
    return dialogs;
}

// Restores the direct connection when a test that routed everything through
// a trap proxy ends, however it ends.
class ProxyTrap
{
public:
    explicit ProxyTrap(quint16 port)
    {
        QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), port));
    }
    ~ProxyTrap() { QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy)); }
};

QByteArray sha256Hex(const QByteArray &data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex();
}

// Not compressible and not repetitive, so a piece out of place changes the digest.
QByteArray makeInstaller(qsizetype size)
{
    QByteArray data;
    data.reserve(size);
    quint32 state = 2463534242u;
    while (data.size() < size) {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        data.append(static_cast<char>(state & 0xff));
    }
    return data;
}

// The feed offers the served installer under this system's entry, which the
// updater reads; the other system's entry names a file the server does not
// serve, so an updater that took the wrong one would fail the cases.
#if defined(Q_OS_WIN)
const QString thisSystem = QStringLiteral("windows");
const QString otherSystem = QStringLiteral("linux");
const QString installerPath = QStringLiteral("/files/KestrelDownloader-win64.exe");
const QString otherInstallerPath = QStringLiteral("/files/kestrel-downloader_amd64.deb");
#else
const QString thisSystem = QStringLiteral("linux");
const QString otherSystem = QStringLiteral("windows");
const QString installerPath = QStringLiteral("/files/kestrel-downloader_amd64.deb");
const QString otherInstallerPath = QStringLiteral("/files/KestrelD.exe");
#endif

} // namespace

class TestUpdaterPlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void loadsThroughThePluginLoader();
    void acceptedNewerBuildIsDownloadedVerifiedAndStarted();
    void declinedOfferDownloadsNothing();
    void manualUpdateConfirmsTheLatestVersion();
    void versionTextComparesReleaseNumbersOnly_data();
    void versionTextComparesReleaseNumbersOnly();
    void quietCheckWithTheLatestBuildShowsNothing();
    void damagedInstallerIsDeletedAndNeverStarted_data();
    void damagedInstallerIsDeletedAndNeverStarted();
    void feedFailuresAreReported_data();
    void feedFailuresAreReported();
    void newerBuildWithoutInstallerForThisSystemIsReported();
    void missingInstallerIsReported();
    void stallingFeedTimesOut();
    void stallingDownloadTimesOut();
    void plainHttpElsewhereIsRefusedWithoutContact_data();
    void plainHttpElsewhereIsRefusedWithoutContact();
    void refusedInstallerAddressIsNeverContacted();
    void redirectElsewhereIsRefused();
    void redirectsWithinAllowedAddressesAreFollowed();
    void finishDuringDownloadRemovesThePartialFile();
    void cancellingTheDownloadRemovesThePartialFile();
    void finishWhileAskingClosesTheQuestion();
    void secondRequestWhileOneRunsIsIgnored();
    void finishAndReservedWhenIdleAreHarmless();
    void staleFilesOfAnEarlierRunAreReplaced();
    void boxesAndProgressBelongToTheActiveWindow();
    void startUpCheckWaitsForTheFirstFrame();
    void finishCancelsAWaitingStartUpCheck();
    void manualRequestReplacesAWaitingStartUpCheck();
    void boxesWithoutAnyWindowHaveNoParent();
    void startedInstallationEndsFurtherRequests();

private:
    void writeSettings(const QString &feedUrl, int timeoutMs = 5000);
    QByteArray feed(int releaseNumber, const QString &version, const QString &buildDate, const QByteArray &sha256,
                    const QJsonValue &installerUrl = QJsonValue()) const;
    void serveFeed(int releaseNumber, const QString &version, const QString &buildDate);
    QString finalPath() const;
    QString partPath() const { return finalPath() + QStringLiteral(".part"); }
    QString launchLine() const;
    // The request lines the server got, without the feed's.
    QStringList installerRequests() const;

    QPluginLoader m_loader;
    UpdateInterface *m_updater = nullptr;
    std::unique_ptr<LocalHttpServer> m_server;
    std::unique_ptr<QSignalSpy> m_done;
    std::unique_ptr<QSignalSpy> m_error;
    QByteArray m_installer;
};

void TestUpdaterPlugin::initTestCase()
{
    // Nothing these tests download is ever started; the updater logs it instead.
    qputenv("KESTREL_UPDATER_NO_LAUNCH", "1");
    // The local server is reached directly, whatever proxy the machine names.
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));

    QVERIFY2(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation).startsWith(QDir::homePath()),
             "the download folder must lie in the test's private home");

    m_loader.setFileName(QStringLiteral(KESTREL_UPDATER_PLUGIN));
    m_installer = makeInstaller(300 * 1024);
}

// Each case gets a plug-in of its own, as each run of the application does:
// an installation started in one case is not carried into the next.
void TestUpdaterPlugin::init()
{
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    m_updater = qobject_cast<UpdateInterface *>(m_loader.instance());
    QVERIFY(m_updater);

    m_server = std::make_unique<LocalHttpServer>();
    QVERIFY(m_server->start());
    writeSettings(m_server->url(QStringLiteral("/feed.json")).toString());
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Whole, {}});

    QDir().mkpath(QFileInfo(finalPath()).absolutePath());
    QFile::remove(finalPath());
    QFile::remove(partPath());

    // By signature: the plug-in has its own copy of the interface's meta-object.
    m_done = std::make_unique<QSignalSpy>(m_updater, SIGNAL(updateDone()));
    m_error = std::make_unique<QSignalSpy>(m_updater, SIGNAL(updateError()));
    QVERIFY(m_done->isValid());
    QVERIFY(m_error->isValid());
}

void TestUpdaterPlugin::cleanup()
{
    m_updater->finish();
    QVERIFY2(visibleDialogs().isEmpty(), "finish() leaves no dialog on the screen");
    m_server.reset();
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));
    QFile::remove(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/settings.ini"));
    QFile::remove(finalPath());
    QFile::remove(partPath());

    // What finish() handed to deleteLater() goes before the plug-in's code does.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_done.reset();
    m_error.reset();
    QVERIFY(m_loader.unload());
    m_updater = nullptr;
}

void TestUpdaterPlugin::writeSettings(const QString &feedUrl, int timeoutMs)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(folder);
    QSettings settings(folder + QStringLiteral("/settings.ini"), QSettings::IniFormat);
    settings.setValue(QStringLiteral("Updater/FeedUrl"), feedUrl);
    settings.setValue(QStringLiteral("Updater/TimeoutMs"), timeoutMs);
    settings.sync();
}

QByteArray TestUpdaterPlugin::feed(int releaseNumber, const QString &version, const QString &buildDate,
                                   const QByteArray &sha256, const QJsonValue &installerUrl) const
{
    const QJsonObject thisEntry{
        {QStringLiteral("url"), installerUrl.isUndefined() || installerUrl.isNull() ? m_server->url(installerPath).toString() : installerUrl},
        {QStringLiteral("sha256"), QString::fromLatin1(sha256)},
    };
    const QJsonObject otherEntry{
        {QStringLiteral("url"), m_server->url(otherInstallerPath).toString()},
        {QStringLiteral("sha256"), QString::fromLatin1(sha256)},
    };
    const QJsonObject root{
        {QStringLiteral("releaseNumber"), releaseNumber},
        {QStringLiteral("version"), version},
        {QStringLiteral("buildDate"), buildDate},
        {QStringLiteral("installers"), QJsonObject{{thisSystem, thisEntry}, {otherSystem, otherEntry}}},
    };
    return QJsonDocument(root).toJson();
}

void TestUpdaterPlugin::serveFeed(int releaseNumber, const QString &version, const QString &buildDate)
{
    m_server->setRoute(QStringLiteral("/feed.json"),
                       {200, feed(releaseNumber, version, buildDate, sha256Hex(m_installer)), LocalHttpServer::Mode::Whole, {}});
}

QString TestUpdaterPlugin::finalPath() const
{
#if defined(Q_OS_WIN)
    const QString name = QStringLiteral("KestrelD.exe");
#else
    const QString name = QStringLiteral("KestrelD.deb");
#endif
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation)).filePath(name);
}

QString TestUpdaterPlugin::launchLine() const
{
    return QStringLiteral("[UPD] KESTREL_UPDATER_NO_LAUNCH is set; the installer is not started: %1").arg(finalPath());
}

QStringList TestUpdaterPlugin::installerRequests() const
{
    QStringList requests = m_server->requests();
    requests.removeAll(QStringLiteral("GET /feed.json"));
    return requests;
}

void TestUpdaterPlugin::loadsThroughThePluginLoader()
{
    QCOMPARE(m_loader.metaData().value(QStringLiteral("IID")).toString(), QStringLiteral(UpdateInterface_iid));
    QVERIFY(m_loader.isLoaded());
    QCOMPARE(QFileInfo(m_loader.fileName()).completeBaseName(), QStringLiteral("Updater"));
    const QMetaObject *meta = m_updater->metaObject();
    QVERIFY(meta->indexOfSignal("updateDone()") >= 0);
    QVERIFY(meta->indexOfSignal("updateError()") >= 0);
    QVERIFY(m_updater->inherits("UpdateInterface"));
}

void TestUpdaterPlugin::acceptedNewerBuildIsDownloadedVerifiedAndStarted()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::Yes});

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);

    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().icon, QMessageBox::Question);
    QCOMPARE(answerer.seen().first().title, QStringLiteral("Software Update"));
    // The version comes from the server; it is shown, never interpreted as markup.
    QCOMPARE(answerer.seen().first().textFormat, Qt::PlainText);
    QCOMPARE(answerer.seen().first().text,
             QStringLiteral("Version 2.0.024 (build 25.0901) of Kestrel Downloader is available.\n\n"
                            "Do you want to download and install it now?"));

    QFile installed(finalPath());
    QVERIFY(installed.open(QIODevice::ReadOnly));
    QVERIFY(installed.readAll() == m_installer);
    QVERIFY(!QFile::exists(partPath()));
    QCOMPARE(log.matching(launchLine()).size(), 1);
    QCOMPARE(m_server->requests(), (QStringList{QStringLiteral("GET /feed.json"), QStringLiteral("GET ") + installerPath}));
    QVERIFY(visibleDialogs().isEmpty());

    QTest::qWait(200);
    QCOMPARE(m_done->count(), 1);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterPlugin::declinedOfferDownloadsNothing()
{
    // Same release number, later build date: still an offer.
    serveFeed(2023, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::No});

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(log.matching(QStringLiteral("[UPD] the user declined version 2.0.024")).size(), 1);

    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().icon, QMessageBox::Question);
    QTest::qWait(200);
    QVERIFY(installerRequests().isEmpty());
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!QFile::exists(partPath()));
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
    QVERIFY(log.matching(launchLine()).isEmpty());
}

void TestUpdaterPlugin::manualUpdateConfirmsTheLatestVersion()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    BoxAnswerer answerer({QMessageBox::Ok});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.seen().size(), 1);

    QCOMPARE(answerer.seen().first().icon, QMessageBox::Information);
    QCOMPARE(answerer.seen().first().text,
             QStringLiteral("You have the latest version of Kestrel Downloader.\n\n"
                            "The newest release on the update server is 2.0.023 (build 25.0826)."));
    QTRY_VERIFY(visibleDialogs().isEmpty());
    QTest::qWait(200);
    QVERIFY(installerRequests().isEmpty());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterPlugin::versionTextComparesReleaseNumbersOnly_data()
{
    QTest::addColumn<int>("releaseNumber");
    QTest::addColumn<bool>("offered");

    // The command line's forced update hands a version, not a build date:
    // a later build date of the same release is no reason to update then.
    QTest::newRow("same release, later build date") << 2023 << false;
    QTest::newRow("older release") << 2022 << true;
    QTest::newRow("unreadable --update-as reads as 0") << 0 << true;
}

void TestUpdaterPlugin::versionTextComparesReleaseNumbersOnly()
{
    QFETCH(int, releaseNumber);
    QFETCH(bool, offered);
    serveFeed(2023, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    BoxAnswerer answerer({offered ? QMessageBox::No : QMessageBox::Ok});

    m_updater->updateNow(releaseNumber, QStringLiteral("2.0.023"));
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().icon, offered ? QMessageBox::Question : QMessageBox::Information);
    QTRY_VERIFY(visibleDialogs().isEmpty());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterPlugin::quietCheckWithTheLatestBuildShowsNothing()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    BoxAnswerer answerer;

    m_updater->checkForUpdate(2024, QStringLiteral("25.0901"));
    QTRY_COMPARE(log.matching(QStringLiteral("[UPD] no newer build: the update server offers 2.0.024 (release 2024, build 25.0901)")).size(), 1);
    QTest::qWait(200);

    QVERIFY(answerer.seen().isEmpty());
    QVERIFY(visibleDialogs().isEmpty());
    QCOMPARE(m_server->requests(), QStringList{QStringLiteral("GET /feed.json")});
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterPlugin::damagedInstallerIsDeletedAndNeverStarted_data()
{
    QTest::addColumn<bool>("quiet");
    // After the user said yes, a quiet check reports its failures as well.
    QTest::newRow("quiet check") << true;
    QTest::newRow("manual update") << false;
}

void TestUpdaterPlugin::damagedInstallerIsDeletedAndNeverStarted()
{
    QFETCH(bool, quiet);
    QByteArray damaged = m_installer;
    damaged[damaged.size() / 2] = static_cast<char>(damaged.at(damaged.size() / 2) ^ 0x01);
    m_server->setRoute(QStringLiteral("/feed.json"),
                       {200, feed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"), sha256Hex(damaged)), LocalHttpServer::Mode::Whole, {}});
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::Yes, QMessageBox::Ok});

    if (quiet)
        m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    else
        m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_error->count(), 1, 10000);
    QTRY_COMPARE(answerer.seen().size(), 2);

    QCOMPARE(answerer.seen().at(1).icon, QMessageBox::Warning);
    QCOMPARE(answerer.seen().at(1).text, QStringLiteral("The downloaded installer is damaged (checksum mismatch) and was deleted."));
    QCOMPARE(installerRequests(), QStringList{QStringLiteral("GET ") + installerPath});
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(log.matching(launchLine()).isEmpty());
    QVERIFY(log.matching(QStringLiteral("installer verified")).isEmpty());
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterPlugin::feedFailuresAreReported_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("quiet");
    QTest::addColumn<QString>("message");

    const QString missing = QStringLiteral("Could not get the release information: the update server answered HTTP 404 Not Found.");
    const QByteArray truncated = R"({"releaseNumber": 2024, "version": )";
    const QString unreadable = QStringLiteral("The release information from the update server is not readable: not valid JSON (");
    const QByteArray textNumber = R"({"releaseNumber": "2024", "version": "2.0.024", "buildDate": "25.0901", "installers": {}})";
    const QString badNumber = QStringLiteral("The release information from the update server is not readable: \"releaseNumber\" is missing or not a number.");

    for (bool quiet : {true, false}) {
        const char *mode = quiet ? "quiet" : "manual";
        QTest::addRow("404, %s", mode) << 404 << QByteArray("gone") << quiet << missing;
        QTest::addRow("malformed JSON, %s", mode) << 200 << truncated << quiet << unreadable;
        QTest::addRow("release number as text, %s", mode) << 200 << textNumber << quiet << badNumber;
        QTest::addRow("server down, %s", mode) << 0 << QByteArray() << quiet
                                                << QStringLiteral("Could not reach the update server: Connection refused");
    }
}

void TestUpdaterPlugin::feedFailuresAreReported()
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(bool, quiet);
    QFETCH(QString, message);

    if (status == 0) {
        // A port that was just free: nobody listens there.
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost, 0));
        const quint16 port = closed.serverPort();
        closed.close();
        writeSettings(QStringLiteral("http://127.0.0.1:%1/feed.json").arg(port));
    } else {
        m_server->setRoute(QStringLiteral("/feed.json"), {status, body, LocalHttpServer::Mode::Whole, {}});
    }
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::Ok});

    if (quiet)
        m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    else
        m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);

    const QStringList warnings = log.matching(QStringLiteral("[UPD] WARNING: ") + message);
    QCOMPARE(warnings.size(), 1);
    if (quiet) {
        QTest::qWait(200);
        QVERIFY(answerer.seen().isEmpty());
    } else {
        QTRY_COMPARE(answerer.seen().size(), 1);
        QCOMPARE(answerer.seen().first().icon, QMessageBox::Warning);
        QVERIFY2(answerer.seen().first().text.startsWith(message), qPrintable(answerer.seen().first().text));
    }
    QTRY_VERIFY(visibleDialogs().isEmpty());
    QVERIFY(installerRequests().isEmpty());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 1);
}

void TestUpdaterPlugin::newerBuildWithoutInstallerForThisSystemIsReported()
{
    const QByteArray onlyOther = R"({"releaseNumber": 2024, "version": "2.0.024", "buildDate": "25.0901",
        "installers": {"plan9": {"url": "https://updates.kestrel-downloader.example/KestrelD", "sha256": "00"}}})";
    m_server->setRoute(QStringLiteral("/feed.json"), {200, onlyOther, LocalHttpServer::Mode::Whole, {}});
    BoxAnswerer answerer({QMessageBox::Ok});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().text,
             QStringLiteral("Version 2.0.024 of Kestrel Downloader is available, but the update server offers no installer for this system."));
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterPlugin::missingInstallerIsReported()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(installerPath, {404, QByteArray("gone"), LocalHttpServer::Mode::Whole, {}});
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::Yes, QMessageBox::Ok});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.seen().size(), 2);

    QCOMPARE(answerer.seen().at(1).text, QStringLiteral("The installer could not be downloaded: the server answered HTTP 404 Not Found."));
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(log.matching(launchLine()).isEmpty());
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterPlugin::stallingFeedTimesOut()
{
    writeSettings(m_server->url(QStringLiteral("/feed.json")).toString(), 300);
    m_server->setRoute(QStringLiteral("/feed.json"), {200, QByteArray(), LocalHttpServer::Mode::Stall, {}});
    LogCapture log;
    BoxAnswerer answerer;
    QElapsedTimer clock;
    clock.start();

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_error->count(), 1, 5000);

    QVERIFY2(clock.elapsed() >= 250, "the request was given up only after the timeout");
    QCOMPARE(m_server->requests(), QStringList{QStringLiteral("GET /feed.json")});
    QCOMPARE(log.matching(QStringLiteral("[UPD] WARNING: The update server did not answer within 0.3 seconds.")).size(), 1);
    QVERIFY(answerer.seen().isEmpty());
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterPlugin::stallingDownloadTimesOut()
{
    writeSettings(m_server->url(QStringLiteral("/feed.json")).toString(), 300);
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Stall, {}});
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::Yes, QMessageBox::Ok});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_error->count(), 1, 5000);
    QTRY_COMPARE(answerer.seen().size(), 2);

    QCOMPARE(answerer.seen().at(1).text, QStringLiteral("The installer download stalled: nothing arrived for 0.3 seconds."));
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(log.matching(launchLine()).isEmpty());
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterPlugin::plainHttpElsewhereIsRefusedWithoutContact_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("message");

    const QString onlyHttps = QStringLiteral("The update address \"%1\" was refused: only secure https addresses are accepted.");
    // 192.0.2.0/24 is reserved for documentation and reaches nobody.
    QTest::newRow("another host") << QStringLiteral("http://192.0.2.1/feed.json") << onlyHttps;
    // The trap server's own port: were it contacted, it would count.
    QTest::newRow("localhost by name") << QStringLiteral("http://localhost:%1/feed.json") << onlyHttps;
    QTest::newRow("not http at all") << QStringLiteral("ftp://127.0.0.1:%1/feed.json") << onlyHttps;
    QTest::newRow("a local file") << QStringLiteral("file:///etc/hostname")
                                  << QStringLiteral("The update address \"%1\" is not a usable address.");
}

void TestUpdaterPlugin::plainHttpElsewhereIsRefusedWithoutContact()
{
    QFETCH(QString, address);
    QFETCH(QString, message);
    if (address.contains(QLatin1String("%1")))
        address = address.arg(m_server->port());
    writeSettings(address);
    // Whatever the updater might send goes to the local server instead.
    ProxyTrap trap(m_server->port());
    BoxAnswerer answerer({QMessageBox::Ok, QMessageBox::Ok});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    // Refused on the spot, before any request could exist.
    QCOMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().text, message.arg(address));
    QTRY_VERIFY(visibleDialogs().isEmpty());

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 2);
    QTest::qWait(300);
    QCOMPARE(answerer.seen().size(), 1); // the quiet check showed nothing
    QCOMPARE(m_server->connectionCount(), 0);
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterPlugin::refusedInstallerAddressIsNeverContacted()
{
    m_server->setRoute(QStringLiteral("/feed.json"),
                       {200,
                        feed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"), sha256Hex(m_installer),
                             QStringLiteral("http://192.0.2.1/KestrelD")),
                        LocalHttpServer::Mode::Whole,
                        {}});
    BoxAnswerer answerer({QMessageBox::Ok});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.seen().size(), 1);

    // The feed is refused as a whole: the user is not even asked.
    QCOMPARE(answerer.seen().first().text,
             QStringLiteral("The release information from the update server is not readable: installer for \"%1\": "
                            "\"http://192.0.2.1/KestrelD\" was refused: only secure https addresses are accepted.")
                 .arg(thisSystem));
    QCOMPARE(m_server->requests(), QStringList{QStringLiteral("GET /feed.json")});
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterPlugin::redirectElsewhereIsRefused()
{
    m_server->setRoute(QStringLiteral("/feed.json"), {302, QByteArray(), LocalHttpServer::Mode::Whole, "http://192.0.2.1/feed.json"});
    // Were the redirect followed, the request would reach the trap, not 192.0.2.1.
    ProxyTrap trap(m_server->port());
    BoxAnswerer answerer({QMessageBox::Ok});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.seen().size(), 1);

    QCOMPARE(answerer.seen().first().text,
             QStringLiteral("The update server redirected to an address that is not allowed: "
                            "\"http://192.0.2.1/feed.json\" was refused: only secure https addresses are accepted."));
    QTest::qWait(200);
    QCOMPARE(m_server->requests().size(), 1);
    QVERIFY(m_server->requests().first().endsWith(QLatin1String("/feed.json")));
    QVERIFY(!m_server->requests().first().contains(QLatin1String("192.0.2.1")));
}

void TestUpdaterPlugin::redirectsWithinAllowedAddressesAreFollowed()
{
    writeSettings(m_server->url(QStringLiteral("/old/feed.json")).toString());
    m_server->setRoute(QStringLiteral("/old/feed.json"),
                       {302, QByteArray(), LocalHttpServer::Mode::Whole, m_server->url(QStringLiteral("/feed.json")).toEncoded()});
    m_server->setRoute(QStringLiteral("/feed.json"),
                       {200,
                        feed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"), sha256Hex(m_installer),
                             m_server->url(QStringLiteral("/latest")).toString()),
                        LocalHttpServer::Mode::Whole,
                        {}});
    m_server->setRoute(QStringLiteral("/latest"), {302, QByteArray(), LocalHttpServer::Mode::Whole, installerPath.toLatin1()});
    BoxAnswerer answerer({QMessageBox::Yes});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);

    QCOMPARE(m_server->requests(), (QStringList{
                                       QStringLiteral("GET /old/feed.json"),
                                       QStringLiteral("GET /feed.json"),
                                       QStringLiteral("GET /latest"),
                                       QStringLiteral("GET ") + installerPath,
                                   }));
    QFile installed(finalPath());
    QVERIFY(installed.open(QIODevice::ReadOnly));
    QVERIFY(installed.readAll() == m_installer);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterPlugin::finishDuringDownloadRemovesThePartialFile()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Trickle, {}});
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::Yes});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_VERIFY(QFileInfo(partPath()).size() > 0);

    // The progress shows the bytes so far out of the whole.
    QPointer<QProgressDialog> progress = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
    QVERIFY(progress);
    QCOMPARE(progress->windowTitle(), QStringLiteral("Software Update"));
    const QString total = QLocale().formattedDataSize(m_installer.size());
    QTRY_VERIFY2(progress->labelText().endsWith(QStringLiteral(" of ") + total), qPrintable(progress->labelText()));
    QVERIFY(progress->labelText().startsWith(QStringLiteral("Downloading Kestrel Downloader 2.0.024…\n")));
    QVERIFY(progress->value() > 0);

    m_updater->finish();
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!progress || !progress->isVisible());
    QVERIFY(visibleDialogs().isEmpty());
    QCOMPARE(log.matching(QStringLiteral("[UPD] the running update was stopped")).size(), 1);

    QTest::qWait(400);
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(!QFile::exists(finalPath()));
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
    QVERIFY(log.matching(launchLine()).isEmpty());
    QCOMPARE(answerer.seen().size(), 1);
}

void TestUpdaterPlugin::cancellingTheDownloadRemovesThePartialFile()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Trickle, {}});
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::Yes});

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_VERIFY(QFileInfo(partPath()).size() > 0);
    auto *progress = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
    QVERIFY(progress);
    auto *cancel = progress->findChild<QPushButton *>();
    QVERIFY(cancel);
    QCOMPARE(cancel->text(), QStringLiteral("Cancel"));
    cancel->click();

    QVERIFY(!QFile::exists(partPath()));
    QCOMPARE(log.matching(QStringLiteral("[UPD] the user cancelled the download")).size(), 1);
    QTRY_VERIFY(visibleDialogs().isEmpty());
    QTest::qWait(400);
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(!QFile::exists(finalPath()));
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
    QCOMPARE(answerer.seen().size(), 1);
}

void TestUpdaterPlugin::finishWhileAskingClosesTheQuestion()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    BoxAnswerer answerer({QMessageBox::NoButton});

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(visibleDialogs().size(), 1);

    m_updater->finish();
    QVERIFY(visibleDialogs().isEmpty());
    QTest::qWait(200);
    QVERIFY(installerRequests().isEmpty());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterPlugin::secondRequestWhileOneRunsIsIgnored()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::NoButton});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    // Also while the feed is still on its way.
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.seen().size(), 1);
    m_updater->updateNow(2023, QStringLiteral("25.0826"));

    QCOMPARE(log.matching(QStringLiteral("[UPD] an update is already under way; the new request is ignored")).size(), 2);
    QTest::qWait(200);
    QCOMPARE(m_server->requests(), QStringList{QStringLiteral("GET /feed.json")});
    QCOMPARE(visibleDialogs().size(), 1);
    QCOMPARE(answerer.seen().size(), 1);

    // Once it is over, the next request runs.
    answerer.stop();
    m_updater->finish();
    BoxAnswerer next({QMessageBox::No});
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(next.seen().size(), 1);
    QCOMPARE(m_server->requests().size(), 2);
}

void TestUpdaterPlugin::finishAndReservedWhenIdleAreHarmless()
{
    LogCapture log;
    m_updater->finish();
    m_updater->finish();
    m_updater->reserved();
    QVERIFY(log.texts().isEmpty());
    QVERIFY(visibleDialogs().isEmpty());

    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    BoxAnswerer answerer({QMessageBox::Ok});
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().icon, QMessageBox::Information);
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterPlugin::staleFilesOfAnEarlierRunAreReplaced()
{
    for (const QString &path : {finalPath(), partPath()}) {
        QFile stale(path);
        QVERIFY(stale.open(QIODevice::WriteOnly));
        stale.write(QByteArray(1024 * 1024, 's'));
    }
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    BoxAnswerer answerer({QMessageBox::Yes});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);

    QFile installed(finalPath());
    QVERIFY(installed.open(QIODevice::ReadOnly));
    QVERIFY(installed.readAll() == m_installer);
    QVERIFY(!QFile::exists(partPath()));
}

void TestUpdaterPlugin::boxesAndProgressBelongToTheActiveWindow()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    // The download trickles, so its progress dialog stays up to be seen.
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Trickle, {}});
    QDialog window;
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    BoxAnswerer answerer({QMessageBox::Yes});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().parent.data(), &window);

    // The question box was active when it was answered; the progress goes to
    // the window beneath it, not to the closing box.
    QTRY_VERIFY(window.findChild<QProgressDialog *>());
    QVERIFY(window.findChild<QProgressDialog *>()->isVisible());
}

void TestUpdaterPlugin::startUpCheckWaitsForTheFirstFrame()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    LogCapture log;
    QElapsedTimer clock;
    clock.start();
    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    // What the window's first frame needs of the event loop comes first.
    QCoreApplication::processEvents();
    QVERIFY(log.texts().filter(QStringLiteral("[UPD] quiet check")).isEmpty());
    QVERIFY(m_server->requests().isEmpty());
    QTRY_COMPARE(m_server->requests(), QStringList{QStringLiteral("GET /feed.json")});
    QVERIFY2(clock.elapsed() >= 200, qPrintable(QString::number(clock.elapsed())));
}

void TestUpdaterPlugin::finishCancelsAWaitingStartUpCheck()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    m_updater->finish();
    QTest::qWait(600);
    QVERIFY(m_server->requests().isEmpty());
}

void TestUpdaterPlugin::manualRequestReplacesAWaitingStartUpCheck()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    BoxAnswerer answerer({QMessageBox::Ok});
    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().icon, QMessageBox::Information);
    QTest::qWait(600);
    QCOMPARE(m_server->requests(), QStringList{QStringLiteral("GET /feed.json")});
}

void TestUpdaterPlugin::boxesWithoutAnyWindowHaveNoParent()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    BoxAnswerer answerer({QMessageBox::Ok});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().parent.data(), nullptr);
}

// The window answers each updateDone with a tool update behind its busy page;
// a second installation in the same run would only start another one.
void TestUpdaterPlugin::startedInstallationEndsFurtherRequests()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    BoxAnswerer answerer({QMessageBox::Yes, QMessageBox::Ok});

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.seen().size(), 2);
    QTRY_COMPARE(log.matching(QStringLiteral("[UPD] version 2.0.024 is being installed; the new request is ignored")).size(), 2);

    QCOMPARE(answerer.seen().last().icon, QMessageBox::Information);
    QCOMPARE(answerer.seen().last().text,
             QStringLiteral("Version 2.0.024 of Kestrel Downloader is being installed.\n\n"
                            "Please restart Kestrel Downloader once its installer has finished."));
    QCOMPARE(log.matching(QStringLiteral("[UPD] version 2.0.024 is being installed; the new request is ignored")).size(), 2);
    QTRY_VERIFY(visibleDialogs().isEmpty());
    QTest::qWait(200);
    QCOMPARE(m_server->requests(), (QStringList{QStringLiteral("GET /feed.json"), QStringLiteral("GET ") + installerPath}));
    QCOMPARE(m_done->count(), 1);
    QCOMPARE(m_error->count(), 0);
}

KESTREL_TEST_MAIN(TestUpdaterPlugin)
#include "tst_updaterplugin.moc"
