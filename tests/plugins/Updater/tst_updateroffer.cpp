#include "plugins/updateinterface.h"

#include "logcapture.h"
#include "modalcatcher.h"
#include "testsandbox.h"
#include "updaterfixture.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QProgressDialog>
#include <QTest>

// An offer of a newer build: the question, the download, its check and the
// installation; no offer when the build is the latest; whose window the
// boxes belong to.
class TestUpdaterOffer : public UpdaterFixture
{
    Q_OBJECT

private slots:
    void loadsThroughThePluginLoader();
    void acceptedNewerBuildIsDownloadedVerifiedAndStarted();
    void declinedOfferDownloadsNothing();
    void manualUpdateConfirmsTheLatestVersion();
    void versionTextComparesReleaseNumbersOnly_data();
    void versionTextComparesReleaseNumbersOnly();
    void quietCheckWithTheLatestBuildShowsNothing();
    void staleFilesOfAnEarlierRunAreReplaced();
    void boxesAndProgressBelongToTheActiveWindow();
    void boxesWithoutAnyWindowHaveNoParent();
    void startedInstallationEndsFurtherRequests();
};

void TestUpdaterOffer::loadsThroughThePluginLoader()
{
    QCOMPARE(m_loader.metaData().value(QStringLiteral("IID")).toString(), QStringLiteral(UpdateInterface_iid));
    QVERIFY(m_loader.isLoaded());
    QCOMPARE(QFileInfo(m_loader.fileName()).completeBaseName(), QStringLiteral("Updater"));
    const QMetaObject *meta = m_updater->metaObject();
    QVERIFY(meta->indexOfSignal("updateDone()") >= 0);
    QVERIFY(meta->indexOfSignal("updateError()") >= 0);
    QVERIFY(m_updater->inherits("UpdateInterface"));
}

void TestUpdaterOffer::acceptedNewerBuildIsDownloadedVerifiedAndStarted()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);

    QCOMPARE(answerer.boxes().size(), 1);
    QCOMPARE(answerer.boxes().first().icon, QMessageBox::Question);
    QCOMPARE(answerer.boxes().first().title, QStringLiteral("Software Update"));
    // The version comes from the server; it is shown, never interpreted as markup.
    QCOMPARE(answerer.boxes().first().textFormat, Qt::PlainText);
    QCOMPARE(answerer.boxes().first().text,
             QStringLiteral("Version 2.0.024 (build 25.0901) of Kestrel Downloader is available.\n\n"
                            "Do you want to download and install it now?"));

    QFile installed(finalPath());
    QVERIFY(installed.open(QIODevice::ReadOnly));
    QVERIFY(installed.readAll() == m_installer);
    QVERIFY(!QFile::exists(partPath()));
    QCOMPARE(log.matching(launchLine()).size(), 1);
    QCOMPARE(m_server->requests(), (feedRequests() + QStringList{QStringLiteral("GET ") + installerPath}));
    QVERIFY(visibleDialogs().isEmpty());

    QVERIFY(staysQuietFor(200));
    QCOMPARE(m_done->count(), 1);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterOffer::declinedOfferDownloadsNothing()
{
    // Same release number, later build date: still an offer.
    serveFeed(2023, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    ModalCatcher answerer({QMessageBox::No}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(log.matching(QStringLiteral("[UPD] the user declined version 2.0.024")).size(), 1);

    QCOMPARE(answerer.boxes().size(), 1);
    QCOMPARE(answerer.boxes().first().icon, QMessageBox::Question);
    QVERIFY(staysQuietFor(200));
    QVERIFY(installerRequests().isEmpty());
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!QFile::exists(partPath()));
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
    QVERIFY(log.matching(launchLine()).isEmpty());
}

void TestUpdaterOffer::manualUpdateConfirmsTheLatestVersion()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.boxes().size(), 1);

    QCOMPARE(answerer.boxes().first().icon, QMessageBox::Information);
    QCOMPARE(answerer.boxes().first().text,
             QStringLiteral("You have the latest version of Kestrel Downloader.\n\n"
                            "The newest release on the update server is 2.0.023 (build 25.0826)."));
    QTRY_VERIFY(visibleDialogs().isEmpty());
    QVERIFY(staysQuietFor(200));
    QVERIFY(installerRequests().isEmpty());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterOffer::versionTextComparesReleaseNumbersOnly_data()
{
    QTest::addColumn<int>("releaseNumber");
    QTest::addColumn<bool>("offered");

    // The command line's forced update hands a version, not a build date:
    // a later build date of the same release is no reason to update then.
    QTest::newRow("same release, later build date") << 2023 << false;
    QTest::newRow("older release") << 2022 << true;
    QTest::newRow("unreadable --update-as reads as 0") << 0 << true;
}

void TestUpdaterOffer::versionTextComparesReleaseNumbersOnly()
{
    QFETCH(int, releaseNumber);
    QFETCH(bool, offered);
    serveFeed(2023, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    ModalCatcher answerer({offered ? QMessageBox::No : QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(releaseNumber, QStringLiteral("2.0.023"));
    QTRY_COMPARE(answerer.boxes().size(), 1);
    QCOMPARE(answerer.boxes().first().icon, offered ? QMessageBox::Question : QMessageBox::Information);
    QTRY_VERIFY(visibleDialogs().isEmpty());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterOffer::quietCheckWithTheLatestBuildShowsNothing()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    ModalCatcher answerer({}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->checkForUpdate(2024, QStringLiteral("25.0901"));
    QTRY_COMPARE(log.matching(QStringLiteral("[UPD] no newer build: the update server offers 2.0.024 (release 2024, build 25.0901)")).size(), 1);
    QVERIFY(staysQuietFor(200));

    QVERIFY(answerer.boxes().isEmpty());
    QVERIFY(visibleDialogs().isEmpty());
    QCOMPARE(m_server->requests(), feedRequests());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterOffer::staleFilesOfAnEarlierRunAreReplaced()
{
    for (const QString &path : {finalPath(), partPath()}) {
        QFile stale(path);
        QVERIFY(stale.open(QIODevice::WriteOnly));
        stale.write(QByteArray(1024 * 1024, 's'));
    }
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    ModalCatcher answerer({QMessageBox::Yes}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);

    QFile installed(finalPath());
    QVERIFY(installed.open(QIODevice::ReadOnly));
    QVERIFY(installed.readAll() == m_installer);
    QVERIFY(!QFile::exists(partPath()));
}

void TestUpdaterOffer::boxesAndProgressBelongToTheActiveWindow()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    // The download trickles, so its progress dialog stays up to be seen.
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Trickle, {}});
    QDialog window;
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    ModalCatcher answerer({QMessageBox::Yes}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.boxes().size(), 1);
    QCOMPARE(answerer.boxes().first().parent.data(), &window);

    // The question box was active when it was answered; the progress goes to
    // the window beneath it, not to the closing box.
    QTRY_VERIFY(window.findChild<QProgressDialog *>());
    QVERIFY(window.findChild<QProgressDialog *>()->isVisible());
}

void TestUpdaterOffer::boxesWithoutAnyWindowHaveNoParent()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.boxes().size(), 1);
    QCOMPARE(answerer.boxes().first().parent.data(), nullptr);
}

// The window answers each updateDone with a tool update behind its busy page;
// a second installation in the same run would only start another one.
void TestUpdaterOffer::startedInstallationEndsFurtherRequests()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes, QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.boxes().size(), 2);
    QTRY_COMPARE(log.matching(QStringLiteral("[UPD] version 2.0.024 is being installed; the new request is ignored")).size(), 2);

    QCOMPARE(answerer.boxes().last().icon, QMessageBox::Information);
    QCOMPARE(answerer.boxes().last().text,
             QStringLiteral("Version 2.0.024 of Kestrel Downloader is being installed.\n\n"
                            "Please restart Kestrel Downloader once its installer has finished."));
    QCOMPARE(log.matching(QStringLiteral("[UPD] version 2.0.024 is being installed; the new request is ignored")).size(), 2);
    QTRY_VERIFY(visibleDialogs().isEmpty());
    QVERIFY(staysQuietFor(200));
    QCOMPARE(m_server->requests(), (feedRequests() + QStringList{QStringLiteral("GET ") + installerPath}));
    QCOMPARE(m_done->count(), 1);
    QCOMPARE(m_error->count(), 0);
}

KESTREL_TEST_MAIN(TestUpdaterOffer)
#include "tst_updateroffer.moc"
