#include "plugins/updateinterface.h"

#include "logcapture.h"
#include "modalcatcher.h"
#include "testsandbox.h"
#include "updaterfixture.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHostAddress>
#include <QMessageBox>
#include <QTcpServer>
#include <QTest>

// What goes wrong on the way, and what the user and the log are told: an
// unreadable or missing feed, a damaged or missing installer, a server that
// stalls.
class TestUpdaterFailures : public UpdaterFixture
{
    Q_OBJECT

private slots:
    void damagedInstallerIsDeletedAndNeverStarted_data();
    void damagedInstallerIsDeletedAndNeverStarted();
    void feedFailuresAreReported_data();
    void feedFailuresAreReported();
    void newerBuildWithoutInstallerForThisSystemIsReported();
    void missingInstallerIsReported();
    void stallingFeedTimesOut();
    void stallingDownloadTimesOut();
};

void TestUpdaterFailures::damagedInstallerIsDeletedAndNeverStarted_data()
{
    QTest::addColumn<bool>("quiet");
    // After the user said yes, a quiet check reports its failures as well.
    QTest::newRow("quiet check") << true;
    QTest::newRow("manual update") << false;
}

void TestUpdaterFailures::damagedInstallerIsDeletedAndNeverStarted()
{
    QFETCH(bool, quiet);
    QByteArray damaged = m_installer;
    damaged[damaged.size() / 2] = static_cast<char>(damaged.at(damaged.size() / 2) ^ 0x01);
    serveSignedFeed(feed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"), sha256Hex(damaged)));
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes, QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    if (quiet)
        m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    else
        m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_error->count(), 1, 10000);
    QTRY_COMPARE(answerer.boxes().size(), 2);

    QCOMPARE(answerer.boxes().at(1).icon, QMessageBox::Warning);
    QCOMPARE(answerer.boxes().at(1).text, QStringLiteral("The downloaded installer is damaged (checksum mismatch) and was deleted."));
    QCOMPARE(installerRequests(), QStringList{QStringLiteral("GET ") + installerPath});
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(log.matching(launchLine()).isEmpty());
    QVERIFY(log.matching(QStringLiteral("installer verified")).isEmpty());
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterFailures::feedFailuresAreReported_data()
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

void TestUpdaterFailures::feedFailuresAreReported()
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
    } else if (status == 200) {
        // Signed as it is: what fails is the feed itself, not its signature.
        serveSignedFeed(body);
    } else {
        m_server->setRoute(QStringLiteral("/feed.json"), {status, body, LocalHttpServer::Mode::Whole, {}});
    }
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    if (quiet)
        m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    else
        m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);

    const QStringList warnings = log.matching(QStringLiteral("[UPD] WARNING: ") + message);
    QCOMPARE(warnings.size(), 1);
    if (quiet) {
        QVERIFY(staysQuietFor(200));
        QVERIFY(answerer.boxes().isEmpty());
    } else {
        QTRY_COMPARE(answerer.boxes().size(), 1);
        QCOMPARE(answerer.boxes().first().icon, QMessageBox::Warning);
        QVERIFY2(answerer.boxes().first().text.startsWith(message), qPrintable(answerer.boxes().first().text));
    }
    QTRY_VERIFY(visibleDialogs().isEmpty());
    QVERIFY(installerRequests().isEmpty());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 1);
}

void TestUpdaterFailures::newerBuildWithoutInstallerForThisSystemIsReported()
{
    const QByteArray onlyOther = R"({"releaseNumber": 2024, "version": "2.0.024", "buildDate": "25.0901",
        "installers": {"plan9": {"url": "https://updates.kestrel-downloader.example/KestrelD", "sha256": "00"}}})";
    serveSignedFeed(onlyOther);
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.boxes().size(), 1);
    QCOMPARE(answerer.boxes().first().text,
             QStringLiteral("Version 2.0.024 of Kestrel Downloader is available, but the update server offers no installer for this system."));
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterFailures::missingInstallerIsReported()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(installerPath, {404, QByteArray("gone"), LocalHttpServer::Mode::Whole, {}});
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes, QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.boxes().size(), 2);

    QCOMPARE(answerer.boxes().at(1).text, QStringLiteral("The installer could not be downloaded: the server answered HTTP 404 Not Found."));
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(log.matching(launchLine()).isEmpty());
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterFailures::stallingFeedTimesOut()
{
    writeSettings(m_server->url(QStringLiteral("/feed.json")).toString(), 300);
    m_server->setRoute(QStringLiteral("/feed.json"), {200, QByteArray(), LocalHttpServer::Mode::Stall, {}});
    LogCapture log;
    ModalCatcher answerer({}, ModalCatcher::Reach::MessageBoxesOnly);
    QElapsedTimer clock;
    clock.start();

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_error->count(), 1, 5000);

    QVERIFY2(clock.elapsed() >= 250, "the request was given up only after the timeout");
    QCOMPARE(m_server->requests(), QStringList{QStringLiteral("GET /feed.json")});
    QCOMPARE(log.matching(QStringLiteral("[UPD] WARNING: The update server did not answer within 0.3 seconds.")).size(), 1);
    QVERIFY(answerer.boxes().isEmpty());
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterFailures::stallingDownloadTimesOut()
{
    writeSettings(m_server->url(QStringLiteral("/feed.json")).toString(), 300);
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Stall, {}});
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes, QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_error->count(), 1, 5000);
    QTRY_COMPARE(answerer.boxes().size(), 2);

    QCOMPARE(answerer.boxes().at(1).text, QStringLiteral("The installer download stalled: nothing arrived for 0.3 seconds."));
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(log.matching(launchLine()).isEmpty());
    QCOMPARE(m_done->count(), 0);
}

KESTREL_TEST_MAIN(TestUpdaterFailures)
#include "tst_updaterfailures.moc"
