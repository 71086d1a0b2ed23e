#include "plugins/updateinterface.h"

#include "modalcatcher.h"
#include "proxytrap.h"
#include "testsandbox.h"
#include "updaterfixture.h"

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QTest>

// Which addresses the updater contacts: plain http elsewhere and redirects
// elsewhere are refused before any contact, redirects within the allowed
// addresses are followed.
class TestUpdaterAddresses : public UpdaterFixture
{
    Q_OBJECT

private slots:
    void plainHttpElsewhereIsRefusedWithoutContact_data();
    void plainHttpElsewhereIsRefusedWithoutContact();
    void refusedInstallerAddressIsNeverContacted();
    void redirectElsewhereIsRefused();
    void redirectsWithinAllowedAddressesAreFollowed();
};

void TestUpdaterAddresses::plainHttpElsewhereIsRefusedWithoutContact_data()
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

void TestUpdaterAddresses::plainHttpElsewhereIsRefusedWithoutContact()
{
    QFETCH(QString, address);
    QFETCH(QString, message);
    if (address.contains(QLatin1String("%1")))
        address = address.arg(m_server->port());
    writeSettings(address);
    // Whatever the updater might send goes to the local server instead.
    ProxyTrap trap(m_server->port());
    ModalCatcher answerer({QMessageBox::Ok, QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    // Refused on the spot, before any request could exist.
    QCOMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.boxes().size(), 1);
    QCOMPARE(answerer.boxes().first().text, message.arg(address));
    QTRY_VERIFY(visibleDialogs().isEmpty());

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 2);
    QVERIFY(staysQuietFor(300));
    QCOMPARE(answerer.boxes().size(), 1); // the quiet check showed nothing
    QCOMPARE(m_server->connectionCount(), 0);
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterAddresses::refusedInstallerAddressIsNeverContacted()
{
    serveSignedFeed(feed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"), sha256Hex(m_installer),
                         QStringLiteral("http://192.0.2.1/KestrelD")));
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.boxes().size(), 1);

    // The feed is refused as a whole: the user is not even asked.
    QCOMPARE(answerer.boxes().first().text,
             QStringLiteral("The release information from the update server is not readable: installer for \"%1\": "
                            "\"http://192.0.2.1/KestrelD\" was refused: only secure https addresses are accepted.")
                 .arg(thisSystem));
    QCOMPARE(m_server->requests(), (QStringList{QStringLiteral("GET /feed.json"), QStringLiteral("GET /feed.json.sig")}));
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterAddresses::redirectElsewhereIsRefused()
{
    m_server->setRoute(QStringLiteral("/feed.json"), {302, QByteArray(), LocalHttpServer::Mode::Whole, "http://192.0.2.1/feed.json"});
    // Were the redirect followed, the request would reach the trap, not 192.0.2.1.
    ProxyTrap trap(m_server->port());
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);
    QTRY_COMPARE(answerer.boxes().size(), 1);

    QCOMPARE(answerer.boxes().first().text,
             QStringLiteral("The update server redirected to an address that is not allowed: "
                            "\"http://192.0.2.1/feed.json\" was refused: only secure https addresses are accepted."));
    QVERIFY(staysQuietFor(200));
    QCOMPARE(m_server->requests().size(), 1);
    QVERIFY(m_server->requests().first().endsWith(QLatin1String("/feed.json")));
    QVERIFY(!m_server->requests().first().contains(QLatin1String("192.0.2.1")));
}

void TestUpdaterAddresses::redirectsWithinAllowedAddressesAreFollowed()
{
    writeSettings(m_server->url(QStringLiteral("/old/feed.json")).toString());
    m_server->setRoute(QStringLiteral("/old/feed.json"),
                       {302, QByteArray(), LocalHttpServer::Mode::Whole, m_server->url(QStringLiteral("/feed.json")).toEncoded()});
    serveSignedFeed(feed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"), sha256Hex(m_installer),
                         m_server->url(QStringLiteral("/latest")).toString()));
    // The signature lies beside the configured address, and is redirected alike.
    m_server->setRoute(QStringLiteral("/old/feed.json.sig"),
                       {302, QByteArray(), LocalHttpServer::Mode::Whole, m_server->url(QStringLiteral("/feed.json.sig")).toEncoded()});
    m_server->setRoute(QStringLiteral("/latest"), {302, QByteArray(), LocalHttpServer::Mode::Whole, installerPath.toLatin1()});
    ModalCatcher answerer({QMessageBox::Yes}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);

    QCOMPARE(m_server->requests(), (QStringList{
                                       QStringLiteral("GET /old/feed.json"),
                                       QStringLiteral("GET /feed.json"),
                                       QStringLiteral("GET /old/feed.json.sig"),
                                       QStringLiteral("GET /feed.json.sig"),
                                       QStringLiteral("GET /latest"),
                                       QStringLiteral("GET ") + installerPath,
                                   }));
    QFile installed(finalPath());
    QVERIFY(installed.open(QIODevice::ReadOnly));
    QVERIFY(installed.readAll() == m_installer);
    QCOMPARE(m_error->count(), 0);
}

KESTREL_TEST_MAIN(TestUpdaterAddresses)
#include "tst_updateraddresses.moc"
