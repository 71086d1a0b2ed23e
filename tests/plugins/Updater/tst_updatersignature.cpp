#include "plugins/updateinterface.h"

#include "logcapture.h"
#include "modalcatcher.h"
#include "testsandbox.h"
#include "updaterfixture.h"

#include <QFile>
#include <QMessageBox>
#include <QTest>

// What is wrong with the signature a case serves.
enum class Defect { Unsigned, StrangersKey, OtherBytes, NotASignature };
Q_DECLARE_METATYPE(Defect)

// The feed counts only when the release key signed exactly the bytes that
// are read: an unsigned feed, a stranger's signature, a signature over other
// bytes and an older release are all turned away before the user is asked.
class TestUpdaterSignature : public UpdaterFixture
{
    Q_OBJECT

private slots:
    void refusedFeedsAreReported_data();
    void refusedFeedsAreReported();
    void addedKeyIsLoggedOnEveryCheck();
    void olderSignedReleaseIsNotOffered_data();
    void olderSignedReleaseIsNotOffered();
    void finishStopsAWaitingSignature();
};

void TestUpdaterSignature::refusedFeedsAreReported_data()
{
    QTest::addColumn<Defect>("defect");
    QTest::addColumn<bool>("quiet");
    QTest::addColumn<QString>("message");

    const QString refused = QStringLiteral("The release information from the update server was refused: ");
    for (const bool quiet : {true, false}) {
        const char *mode = quiet ? "quiet" : "manual";
        QTest::addRow("no signature, %s", mode)
            << Defect::Unsigned << quiet
            << refused + QStringLiteral("it is not signed (its signature %1 could not be fetched: HTTP 404 Not Found).");
        QTest::addRow("a stranger's signature, %s", mode)
            << Defect::StrangersKey << quiet << refused + QStringLiteral("it is signed by another key than the application's release key.");
        QTest::addRow("signature over other bytes, %s", mode)
            << Defect::OtherBytes << quiet << refused + QStringLiteral("its signature does not match its content.");
        QTest::addRow("not a signature, %s", mode)
            << Defect::NotASignature << quiet << refused + QStringLiteral("its signature is not a valid signature.");
    }
}

void TestUpdaterSignature::refusedFeedsAreReported()
{
    QFETCH(Defect, defect);
    QFETCH(bool, quiet);
    QFETCH(QString, message);
    message = message.arg(m_server->url(QStringLiteral("/feed.json.sig")).toString());

    const QByteArray document = feed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"), sha256Hex(m_installer));
    switch (defect) {
    case Defect::Unsigned:
        serveSignedFeed(document);
        m_server->setRoute(QStringLiteral("/feed.json.sig"), {404, QByteArray("no such file"), LocalHttpServer::Mode::Whole, {}});
        break;
    case Defect::StrangersKey:
        serveSignedFeed(document, FeedSigner::Key::Stranger);
        break;
    case Defect::OtherBytes: {
        // Signed, then one byte more: the same release to a parser, not to the signature.
        const QByteArray signature = m_signer->sign(document);
        QVERIFY(!signature.isEmpty());
        m_server->setRoute(QStringLiteral("/feed.json"), {200, document + ' ', LocalHttpServer::Mode::Whole, {}});
        m_server->setRoute(QStringLiteral("/feed.json.sig"), {200, signature, LocalHttpServer::Mode::Whole, {}});
        break;
    }
    case Defect::NotASignature:
        serveSignedFeed(document);
        m_server->setRoute(QStringLiteral("/feed.json.sig"), {200, QByteArray("signed, honestly"), LocalHttpServer::Mode::Whole, {}});
        break;
    }
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    if (quiet)
        m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    else
        m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_error->count(), 1);

    QCOMPARE(log.matching(QStringLiteral("[UPD] WARNING: ") + message).size(), 1);
    if (quiet) {
        QVERIFY(staysQuietFor(200));
        QVERIFY(answerer.boxes().isEmpty());
    } else {
        QTRY_COMPARE(answerer.boxes().size(), 1);
        QCOMPARE(answerer.boxes().first().icon, QMessageBox::Warning);
        QCOMPARE(answerer.boxes().first().text, message);
    }
    // Never offered, never downloaded.
    QVERIFY(log.matching(QStringLiteral("[UPD] newer build offered")).isEmpty());
    QCOMPARE(m_server->requests(), feedRequests());
    QVERIFY(!QFile::exists(finalPath()));
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 1);
}

void TestUpdaterSignature::addedKeyIsLoggedOnEveryCheck()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    LogCapture log;
    const QString line = QStringLiteral("[UPD] KESTREL_UPDATER_KEYRING is set: the keys in \"%1\" are accepted beside the release key for this check")
                             .arg(m_signer->releaseKeyFile());

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(log.matching(QStringLiteral("[UPD] no newer build")).size(), 1);
    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(log.matching(QStringLiteral("[UPD] no newer build")).size(), 2);

    QCOMPARE(log.matching(line).size(), 2);
    QCOMPARE(log.matching(QStringLiteral("[UPD] the release information is signed by the release key")).size(), 2);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterSignature::olderSignedReleaseIsNotOffered_data()
{
    QTest::addColumn<bool>("quiet");
    QTest::addColumn<QString>("text");
    QTest::newRow("quiet check") << true << QStringLiteral("25.0826");
    QTest::newRow("manual update") << false << QStringLiteral("25.0826");
    // The forced update's version text leaves the release numbers to decide.
    QTest::newRow("forced update") << false << QStringLiteral("2.0.023");
}

// A validly signed feed of an earlier release, replayed: no downgrade.
void TestUpdaterSignature::olderSignedReleaseIsNotOffered()
{
    QFETCH(bool, quiet);
    QFETCH(QString, text);
    serveFeed(2022, QStringLiteral("2.0.022"), QStringLiteral("25.0901"));
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes, QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    if (quiet)
        m_updater->checkForUpdate(2023, text);
    else
        m_updater->updateNow(2023, text);
    QTRY_COMPARE(log.matching(QStringLiteral("[UPD] no newer build: the update server offers 2.0.022 (release 2022, build 25.0901)")).size(), 1);

    if (quiet) {
        QVERIFY(staysQuietFor(200));
        QVERIFY(answerer.boxes().isEmpty());
    } else {
        QTRY_COMPARE(answerer.boxes().size(), 1);
        QCOMPARE(answerer.boxes().first().icon, QMessageBox::Information);
        QVERIFY(staysQuietFor(200));
    }
    QVERIFY(installerRequests().isEmpty());
    QVERIFY(!QFile::exists(finalPath()));
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterSignature::finishStopsAWaitingSignature()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(QStringLiteral("/feed.json.sig"), {200, QByteArray(), LocalHttpServer::Mode::Stall, {}});
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(m_server->requests(), feedRequests());
    m_updater->finish();

    QCOMPARE(log.matching(QStringLiteral("[UPD] the running update was stopped")).size(), 1);
    QVERIFY(staysQuietFor(300));
    QVERIFY(answerer.boxes().isEmpty());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

KESTREL_TEST_MAIN(TestUpdaterSignature)
#include "tst_updatersignature.moc"
