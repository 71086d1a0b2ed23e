#include "plugins/updateinterface.h"

#include "logcapture.h"
#include "modalcatcher.h"
#include "scenario.h"
#include "testsandbox.h"
#include "updaterfixture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
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
    void startUpCheckReadiesTheTool();
    void manualRequestLeavesTheToolAlone();

private:
    // A launcher in the data folder that notes how it was started.
    QString placeRecordingLauncher();
};

QString TestUpdaterStartUpCheck::placeRecordingLauncher()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QString launcher = data + QStringLiteral("/kestreldl2" KESTREL_EXECUTABLE_SUFFIX);
    const QString record = data + QStringLiteral("/launcher-record.jsonl");
    const QString scenario = data + QStringLiteral("/launcher-scenario.json");
    QFile::remove(launcher);
    QFile::remove(record);
    if (!QDir().mkpath(data) || !QFile::copy(FakeTool::builtToolPath(), launcher)
        || !FakeTool::Scenario().record(record).writeTo(scenario))
        qFatal("cannot place the recording launcher");
    qputenv(FakeTool::scenarioVariable(), QFile::encodeName(scenario));
    return record;
}

void TestUpdaterStartUpCheck::startUpCheckReadiesTheTool()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    const QString record = placeRecordingLauncher();
    LogCapture log;
    m_updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(FakeTool::readRecord(record).size(), 1);
    QCOMPARE(FakeTool::readRecord(record).first().arguments, (QStringList{QStringLiteral("--update"), QStringLiteral("--background")}));
    QTRY_VERIFY(!log.texts().filter(QStringLiteral("[UPD] the downloader tool is ready")).isEmpty());
}

void TestUpdaterStartUpCheck::manualRequestLeavesTheToolAlone()
{
    serveFeed(2023, QStringLiteral("2.0.023"), QStringLiteral("25.0826"));
    const QString record = placeRecordingLauncher();
    ModalCatcher answerer({QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);
    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE(answerer.boxes().size(), 1);
    QVERIFY(staysQuietFor(600));
    QCOMPARE(FakeTool::readRecord(record).size(), 0);
}

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
