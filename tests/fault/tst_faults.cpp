#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

#include "appinstallation.h"
#include "logcapture.h"
#include "modalcatcher.h"
#include "processprobe.h"
#include "testsandbox.h"
#include "windowdriver.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QRandomGenerator>
#include <QSettings>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using FakeTool::Behaviour;

namespace {

QByteArray garbage(int size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

Behaviour crashing()
{
    Behaviour behaviour;
    behaviour.signal = SIGSEGV;
    return behaviour;
}

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // What the tool prints.
    void standardErrorFloodIsHarmless();
    void standardOutputFloodLosesNothing();
    void garbageOutput_data();
    void garbageOutput();
    void invalidUtf8Title();

    // How the tool ends.
    void crashInEveryRun_data();
    void crashInEveryRun();
    void hangingToolIsCancelled();
    void anotherInstancesToolSurvives();

    // The machine around the application.
    void blockedFolders_data();
    void blockedFolders();
    void damagedSettingsFile_data();
    void damagedSettingsFile();
    void truncatedPlugin();

private:
    QTemporaryDir m_work;
    VideoInfo m_info;
};

void TestFaults::initTestCase()
{
    WindowDriver::prepareTool(m_work.path());
}

void TestFaults::cleanup()
{
    ModalCatcher late;
    QVERIFY(WindowDriver::waitForRunsToEnd());
}

void TestFaults::standardErrorFloodIsHarmless()
{
    WindowDriver driver(m_work.path(), m_info);
    Behaviour flood = WindowDriver::printing(QStringLiteral("Flooded Title\n1:00\n"));
    flood.stderrBytes = 50 * 1024 * 1024;
    driver.play(FakeTool::Kind::metadata(), flood);
    driver.play(FakeTool::Kind::formats(), WindowDriver::printing(WindowDriver::sampleListing()));
    QVERIFY(driver.reachFormats());
    QCOMPARE(driver.find<QLabel>("labelTitle")->text(), QStringLiteral("Flooded Title"));
    QCOMPARE(driver.find<QTableView>("tableView")->model()->rowCount(), 3);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(KestrelDownloader::processObjectCount(), 0);
}

void TestFaults::standardOutputFloodLosesNothing()
{
    // The tool exits right after its last write: the largest format comes
    // after 200,000 other lines and must still be read.
    WindowDriver driver(m_work.path(), m_info);
    Behaviour flood = WindowDriver::printing(QStringLiteral("137 mp4 1920x1080 | 5.00GiB\n"));
    flood.stdoutLines = 200000;
    flood.stdoutLine = QStringLiteral("999 webm 16x16 | 1.00KiB | filler");
    driver.play(FakeTool::Kind::metadata(), WindowDriver::printing(QStringLiteral("T\n1\n")));
    driver.play(FakeTool::Kind::formats(), flood);
    QVERIFY(driver.reachFormats());
    auto *model = driver.find<QTableView>("tableView")->model();
    QCOMPARE(model->rowCount(), 2);
    QCOMPARE(model->index(0, 1).data().toUInt(), 137u);
    QCOMPARE(model->index(0, 3).data().toString(), QStringLiteral("5.00GiB"));
}

void TestFaults::garbageOutput_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<quint32>("seed");
    for (quint32 seed : {1u, 2u, 3u}) {
        QTest::newRow(qPrintable(QStringLiteral("metadata %1").arg(seed))) << FakeTool::Kind::metadata() << seed;
        QTest::newRow(qPrintable(QStringLiteral("formats %1").arg(seed))) << FakeTool::Kind::formats() << seed;
        QTest::newRow(qPrintable(QStringLiteral("download %1").arg(seed))) << FakeTool::Kind::download() << seed;
    }
}

void TestFaults::garbageOutput()
{
    QFETCH(QString, kind);
    QFETCH(quint32, seed);
    WindowDriver driver(m_work.path(), m_info);
    Behaviour binary;
    binary.stdoutBinary = garbage(64 * 1024, seed) + "\n[download] \xff\xfe 12.5% of \xc3\n" + garbage(1024, seed + 7);
    driver.play(FakeTool::Kind::metadata(), WindowDriver::printing(QStringLiteral("T\n1\n")));
    driver.play(FakeTool::Kind::formats(), WindowDriver::printing(WindowDriver::sampleListing()));
    driver.play(kind, binary);

    ModalCatcher boxes;
    KestrelDownloader &tool = driver.driver();
    QSignalSpy formats(&tool, &KestrelDownloader::haveFormats);
    QSignalSpy failure(&tool, &KestrelDownloader::somethingWrong);
    QSignalSpy video(&tool, &KestrelDownloader::haveVideo);
    driver.enterAddress(QStringLiteral("https://youtu.be/abc"));
    QVERIFY(QTest::qWaitFor([&] { return formats.size() + failure.size() > 0; }, 10000));

    if (kind == FakeTool::Kind::metadata()) {
        // Garbage is either two lines with a readable duration or it is not.
        if (failure.size() > 0) {
            QVERIFY(boxes.waitForBoxes(1));
            QVERIFY(boxes.boxes().first().text.contains(QStringLiteral("Cannot request metadata")));
        } else {
            QVERIFY(!driver.find<QLabel>("labelTitle")->text().contains(QChar(0xFFFD)));
        }
        return;
    }
    QCOMPARE(failure.size(), 0);
    QVERIFY(driver.find<QTableView>("tableView")->model()->rowCount() <= 11);
    if (kind == FakeTool::Kind::download()) {
        driver.pickRow(0);
        QVERIFY(video.wait());
        QVERIFY(driver.find<QLabel>("label_DL_OK")->isVisible());
    }
    QCOMPARE(boxes.boxes().size(), 0);
}

void TestFaults::invalidUtf8Title()
{
    WindowDriver driver(m_work.path(), m_info);
    Behaviour metadata;
    metadata.stdoutBinary = QByteArray("\xff\xfeGood \xc3 Title\xed\xa0\x80\n1:00\n");
    driver.play(FakeTool::Kind::metadata(), metadata);
    driver.play(FakeTool::Kind::formats(), WindowDriver::printing(WindowDriver::sampleListing()));
    QVERIFY(driver.reachFormats());
    QCOMPARE(driver.find<QLabel>("labelTitle")->text(), QStringLiteral("Good Title"));
    QCOMPARE(driver.find<QLabel>("labelTime")->text(), QStringLiteral("| 1:00"));
}

void TestFaults::crashInEveryRun_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("page");
    QTest::newRow("metadata") << FakeTool::Kind::metadata()
                              << QStringLiteral("<h3>ERROR:</h3>crash exit on metadata request<hr><i>Code: #0x48</i>")
                              << QStringLiteral("page_Formats");
    // The format run's crash code is the silent one.
    QTest::newRow("formats") << FakeTool::Kind::formats() << QString() << QStringLiteral("page_URL");
    QTest::newRow("download") << FakeTool::Kind::download()
                              << QStringLiteral("<h3>ERROR:</h3>crash exit at downloading process<hr><i>Code: #0x56</i>")
                              << QStringLiteral("page_Download");
}

void TestFaults::crashInEveryRun()
{
    QFETCH(QString, kind);
    QFETCH(QString, box);
    QFETCH(QString, page);
    WindowDriver driver(m_work.path(), m_info);
    driver.play(FakeTool::Kind::metadata(), WindowDriver::printing(QStringLiteral("T\n1\n")));
    driver.play(FakeTool::Kind::formats(), WindowDriver::printing(WindowDriver::sampleListing()));
    driver.play(kind, crashing());
    ModalCatcher boxes;
    QSignalSpy failure(&driver.driver(), &KestrelDownloader::somethingWrong);
    if (kind == FakeTool::Kind::download()) {
        QVERIFY(driver.reachFormats());
        driver.pickRow(0);
    } else {
        driver.enterAddress(QStringLiteral("https://youtu.be/abc"));
    }
    QVERIFY(failure.wait());
    // The run's end is handled whole, box and page change included.
    QVERIFY(WindowDriver::waitForRunsToEnd());
    QCOMPARE(driver.currentPage(), page);
    if (box.isEmpty()) {
        QCOMPARE(boxes.boxes().size(), 0);
    } else {
        QCOMPARE(boxes.boxes().size(), 1);
        QCOMPARE(boxes.boxes().first().text, box);
    }
    QVERIFY(!driver.find<QProgressBar>("progressBar")->isVisibleTo(driver.find<QWidget>("page_Formats")));
}

void TestFaults::hangingToolIsCancelled()
{
    WindowDriver driver(m_work.path(), m_info);
    driver.play(FakeTool::Kind::metadata(), WindowDriver::printing(QStringLiteral("T\n1\n")));
    driver.play(FakeTool::Kind::formats(), WindowDriver::printing(WindowDriver::sampleListing()));
    Behaviour hang;
    hang.hang = true;
    driver.play(FakeTool::Kind::download(), hang);
    QVERIFY(driver.reachFormats());
    driver.pickRow(0);
    QTRY_COMPARE(FakeTool::readRecord(driver.recordFile()).last().kind, FakeTool::Kind::download());
    const qint64 pid = FakeTool::readRecord(driver.recordFile()).last().pid;
    QVERIFY(ProcessProbe::isRunning(pid));

    ModalCatcher boxes;
    QSignalSpy failure(&driver.driver(), &KestrelDownloader::somethingWrong);
    QTest::mouseClick(driver.find<QWidget>("btnCancel"), Qt::LeftButton);
    QVERIFY(failure.wait());
    QCOMPARE(driver.currentPage(), QStringLiteral("page_Formats"));
    QCOMPARE(boxes.boxes().size(), 0);
    QVERIFY(!ProcessProbe::isRunning(pid));
}

void TestFaults::anotherInstancesToolSurvives()
{
    // Another copy of the application, of another profile, runs its own
    // tool file; cancelling here must not end it.
#ifdef Q_OS_WIN
    QSKIP("On Windows the kill rule, taskkill /IM kestreldl2.exe, ends every process of that name, another profile's too");
#endif
    QTemporaryDir otherProfile;
    const QString otherTool = otherProfile.filePath(QStringLiteral("kestreldl2"));
    QVERIFY(QFile::copy(FakeTool::builtToolPath(), otherTool));
    const QString otherScenario = otherProfile.filePath(QStringLiteral("scenario.json"));
    Behaviour hang;
    hang.hang = true;
    QVERIFY(FakeTool::Scenario().set(FakeTool::Kind::fallback(), hang).writeTo(otherScenario));
    QProcess other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(FakeTool::scenarioVariable()), otherScenario);
    other.setProcessEnvironment(environment);
    other.start(otherTool, {QStringLiteral("--no-warnings"), QStringLiteral("abc")});
    QVERIFY(other.waitForStarted());

    WindowDriver driver(m_work.path(), m_info);
    driver.play(FakeTool::Kind::metadata(), hang);
    driver.enterAddress(QStringLiteral("https://youtu.be/abc"));
    QTRY_COMPARE(FakeTool::readRecord(driver.recordFile()).size(), 1);
    const qint64 ours = FakeTool::readRecord(driver.recordFile()).first().pid;
    QSignalSpy failure(&driver.driver(), &KestrelDownloader::somethingWrong);
    driver.driver().terminateTool(false);
    QVERIFY(failure.wait());
    QVERIFY(!ProcessProbe::isRunning(ours));
    QCOMPARE(other.state(), QProcess::Running);
    other.kill();
    other.waitForFinished();
}

void TestFaults::blockedFolders_data()
{
    QTest::addColumn<QString>("blocked");
    QTest::addColumn<QString>("expectedError");
    QTest::newRow("data folder") << QStringLiteral(".local/share/Halvard Software/Kestrel Downloader")
                                 << QStringLiteral("!!! ERROR: data dir");
    QTest::newRow("download folder") << QStringLiteral("Downloads") << QStringLiteral("!!! ERROR: output dir");
    QTest::newRow("settings file") << QStringLiteral(".local/share/Halvard Software/Kestrel Downloader/settings.ini/x")
                                   << QString();
}

void TestFaults::blockedFolders()
{
    // A file where a folder belongs cannot be created over, even by an
    // administrator; a folder where the settings file belongs cannot be written.
#ifdef Q_OS_WIN
    QSKIP("The blocked folders are Linux's; on Windows every sandbox is this test's own profile, whose data folder holds the fake tool");
#endif
    QFETCH(QString, blocked);
    QFETCH(QString, expectedError);
    TestSandbox sandbox;
    writeFile(QStringLiteral("%1/%2").arg(sandbox.home(), blocked), "in the way");
    AppInstallation app;
    app.addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("Updater"));
    app.addFile(QStringLiteral("kestreldl2"), "tool");
    app.addFile(QStringLiteral("ffmpeg"), "ffmpeg");
    const AppInstallation::Run run = app.run(sandbox, {}, {QStringLiteral("quit-on-check")});
    QVERIFY2(run.finished, qPrintable(run.logLines.join(QLatin1Char('\n'))));
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.calls.filter(QStringLiteral("Updater.window|Kestrel Downloader 2.0.023|shown")).size(), 1);
    if (!expectedError.isEmpty())
        QCOMPARE(run.logLinesContaining(expectedError).size(), 1);
}

void TestFaults::damagedSettingsFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("binary") << garbage(4096, 42);
    QTest::newRow("truncated") << QByteArray("[Version]\nNum=2.0.0");
    QTest::newRow("broken sections") << QByteArray("[Scale\nVal=\x01\x02\n[[[\n=\n");
    QTest::newRow("empty") << QByteArray();
}

void TestFaults::damagedSettingsFile()
{
    QFETCH(QByteArray, content);
    TestSandbox sandbox;
    writeFile(sandbox.settingsFile(), content);
    AppInstallation app;
    app.addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("Updater"));
    const AppInstallation::Run run = app.run(sandbox, {}, {QStringLiteral("quit-on-check")});
    QVERIFY2(run.finished, qPrintable(run.logLines.join(QLatin1Char('\n'))));
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.calls.filter(QStringLiteral("Updater.window|Kestrel Downloader 2.0.023|shown")).size(), 1);
    QVERIFY(QFile::exists(sandbox.settingsFile()));
}

void TestFaults::truncatedPlugin()
{
    // A download cut short: the library's header is there, its code is not.
#ifdef Q_OS_WIN
    QSKIP("On Windows the application is a GUI program: its messages go to the debugger's output, not to the standard error this test reads");
#endif
    TestSandbox sandbox;
    AppInstallation app;
    QFile whole(QStringLiteral("%1/recording_updater" KESTREL_MODULE_SUFFIX).arg(QStringLiteral(KESTREL_FIXTURE_PLUGIN_DIR)));
    QVERIFY(whole.open(QIODevice::ReadOnly));
    app.addFile(QStringLiteral("Updater" KESTREL_MODULE_SUFFIX), whole.read(8192));
    const AppInstallation::Run run = app.runUntilLogged(sandbox, {}, QStringLiteral("Updater" KESTREL_MODULE_SUFFIX "\" load error:"), 1000);
    QVERIFY2(!run.finished, qPrintable(run.logLines.join(QLatin1Char('\n'))));
    QCOMPARE(run.calls, QStringList());
    QCOMPARE(run.logLinesContaining(QStringLiteral("load error:")).size(), 3);
    QCOMPARE(run.logLinesContaining(QStringLiteral("OK: output dir")).size(), 1);
}

KESTREL_TEST_MAIN(TestFaults)
#include "tst_faults.moc"
