#include "plugins/updateinterface.h"

#include "logcapture.h"
#include "modalcatcher.h"
#include "testsandbox.h"
#include "updaterfixture.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTest>

// The quiet check at start-up: it waits for the window's first frame, and
// finish() or a manual request takes its place.
class TestUpdaterStartUpCheck : public UpdaterFixture
{
    Q_OBJECT

private slots:
    void startUpCheckWaitsForTheFirstFrame();
    void finishCancelsAWaitingStartUpCheck();
    void manualRequestReplacesAWaitingStartUpCheck();
};

void TestUpdaterStartUpCheck::startUpCheckWaitsForTheFirstFrame()
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
    QTRY_VERIFY(!m_server->requests().isEmpty());
    QCOMPARE(m_server->requests().first(), QStringLiteral("GET /feed.json"));
    QVERIFY2(clock.elapsed() >= 200, qPrintable(QString::number(clock.elapsed())));
}

void TestUpdaterStartUpCheck::finishCancelsAWaitingStartUpCheck()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    m_updater->finish();
    QVERIFY(staysQuietFor(600));
    QVERIFY(m_server->requests().isEmpty());
}

void TestUpdaterStartUpCheck::manualRequestReplacesAWaitingStartUpCheck()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);
    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.boxes().size(), 1);
    QCOMPARE(answerer.boxes().first().icon, QMessageBox::Information);
    QVERIFY(staysQuietFor(600));
    QCOMPARE(m_server->requests(), feedRequests());
}

KESTREL_TEST_MAIN(TestUpdaterStartUpCheck)
#include "tst_updaterstartupcheck.moc"
