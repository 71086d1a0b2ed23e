#include "plugins/updateinterface.h"

#include "logcapture.h"
#include "modalcatcher.h"
#include "testsandbox.h"
#include "updaterfixture.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>

// An update that is stopped part way, by the application or by the user,
// and requests that arrive while one runs.
class TestUpdaterInterruptions : public UpdaterFixture
{
    Q_OBJECT

private slots:
    void finishDuringDownloadRemovesThePartialFile();
    void cancellingTheDownloadRemovesThePartialFile();
    void finishWhileAskingClosesTheQuestion();
    void secondRequestWhileOneRunsIsIgnored();
    void finishAndReservedWhenIdleAreHarmless();
};

void TestUpdaterInterruptions::finishDuringDownloadRemovesThePartialFile()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Trickle, {}});
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes}, ModalCatcher::Reach::MessageBoxesOnly);

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

    QVERIFY(staysQuietFor(400));
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(!QFile::exists(finalPath()));
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
    QVERIFY(log.matching(launchLine()).isEmpty());
    QCOMPARE(answerer.boxes().size(), 1);
}

void TestUpdaterInterruptions::cancellingTheDownloadRemovesThePartialFile()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Trickle, {}});
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes}, ModalCatcher::Reach::MessageBoxesOnly);

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
    QVERIFY(staysQuietFor(400));
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(!QFile::exists(finalPath()));
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
    QCOMPARE(answerer.boxes().size(), 1);
}

void TestUpdaterInterruptions::finishWhileAskingClosesTheQuestion()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    ModalCatcher answerer({QMessageBox::NoButton}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.boxes().size(), 1);
    QCOMPARE(visibleDialogs().size(), 1);

    m_updater->finish();
    QVERIFY(visibleDialogs().isEmpty());
    QVERIFY(staysQuietFor(200));
    QVERIFY(installerRequests().isEmpty());
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

void TestUpdaterInterruptions::secondRequestWhileOneRunsIsIgnored()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    ModalCatcher answerer({QMessageBox::NoButton}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    // Also while the feed is still on its way.
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.boxes().size(), 1);
    m_updater->updateNow(2023, QStringLiteral("25.0826"));

    QCOMPARE(log.matching(QStringLiteral("[UPD] an update is already under way; the new request is ignored")).size(), 2);
    QVERIFY(staysQuietFor(200));
    QCOMPARE(m_server->requests(), feedRequests());
    QCOMPARE(visibleDialogs().size(), 1);
    QCOMPARE(answerer.boxes().size(), 1);

    // Once it is over, the next request runs.
    answerer.stop();
    m_updater->finish();
    ModalCatcher next({QMessageBox::No}, ModalCatcher::Reach::MessageBoxesOnly);
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(next.boxes().size(), 1);
    QCOMPARE(m_server->requests(), feedRequests() + feedRequests());
}

void TestUpdaterInterruptions::finishAndReservedWhenIdleAreHarmless()
{
    LogCapture log;
    m_updater->finish();
    m_updater->finish();
    m_updater->reserved();
    QVERIFY(log.texts().isEmpty());
    QVERIFY(visibleDialogs().isEmpty());

    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.boxes().size(), 1);
    QCOMPARE(answerer.boxes().first().icon, QMessageBox::Information);
    QCOMPARE(m_done->count(), 0);
    QCOMPARE(m_error->count(), 0);
}

KESTREL_TEST_MAIN(TestUpdaterInterruptions)
#include "tst_updaterinterruptions.moc"
