// Every way a tool run can end, with the real launcher and a yt-dlp stand-in
// that starts a child of its own (ffmpeg's place) and hangs where the test
// says: the outcome as the window shows it, and no process of the run's tree
// left two seconds later.
//
// The window's own end (closed, or the application killed) needs the
// application in a process of its own: this test program started again with
// "--stand-in", which drives the window to a running tool and then closes
// it or waits to be killed.

#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

#include "menudriver.h"
#include "modalcatcher.h"
#include "processprobe.h"
#include "testsandbox.h"
#include "windowdriver.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <unistd.h>

namespace {

const char fakeYtDlp[] = R"(#!/bin/bash
# The launcher's question about a flag: the option parser's answer.
if [ "${@: -1}" = --simulate ]; then
    echo 'yt-dlp: error: You must provide at least one URL.' >&2
    exit 2
fi
kind=download
for arg in "$@"; do
    case "$arg" in
        --get-title) kind=metadata ;;
        --list-formats) kind=formats ;;
    esac
done
echo $$ > "$TREE_DIR/$kind.pid.new" && mv "$TREE_DIR/$kind.pid.new" "$TREE_DIR/$kind.pid"
if [[ " $TREE_HANG " == *" $kind "* ]]; then
    sleep 300 &
    echo $! > "$TREE_DIR/$kind.child"
    wait
fi
case $kind in
    metadata) printf 'Tree Clip\n3:05\n' ;;
    formats) cat "$TREE_DIR/listing.txt" ;;
esac
)";

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool hasEnded(pid_t pid)
{
    return !ProcessProbe::isRunning(pid);
}

// Every running process whose executable is the data folder's launcher:
// launchers and their guardians.
QList<qint64> launcherProcesses()
{
    return ProcessProbe::runningProcessesOf(dataFolder() + QStringLiteral("/kestreldl2"));
}

QString treeFolder()
{
    return QString::fromLocal8Bit(qgetenv("TREE_DIR"));
}

pid_t recordedPid(const QString &name)
{
    return pid_t(readAll(treeFolder() + QLatin1Char('/') + name).trimmed().toInt());
}

// The tool of a hanging run of kind and its child, once both are running.
bool waitForHangingTool(const QString &kind, int timeoutMs = 20000)
{
    return QTest::qWaitFor(
        [&kind] {
            return recordedPid(kind + QStringLiteral(".pid")) > 0 && recordedPid(kind + QStringLiteral(".child")) > 0;
        },
        timeoutMs);
}

// Whether, within two seconds, no launcher and none of the recorded tools
// and children is left. What is left after that is killed, so that a
// failing test leaves nothing behind.
bool treeEndsWithinTwoSeconds()
{
    const QStringList names = QDir(treeFolder()).entryList({QStringLiteral("*.pid"), QStringLiteral("*.child")});
    QList<pid_t> recorded;
    for (const QString &name : names) {
        if (const pid_t pid = recordedPid(name); pid > 0)
            recorded << pid;
    }
    const auto allGone = [&recorded] {
        return launcherProcesses().isEmpty() && std::all_of(recorded.cbegin(), recorded.cend(), hasEnded);
    };
    const bool gone = QTest::qWaitFor(allGone, 2000);
    for (const qint64 pid : launcherProcesses())
        ::kill(pid_t(pid), SIGKILL);
    for (const pid_t pid : std::as_const(recorded))
        ::kill(pid, SIGKILL);
    return gone;
}

void setHanging(const QString &kinds)
{
    qputenv("TREE_HANG", kinds.toUtf8());
}

// The tool update of the menu, which the updater plug-in of this test
// starts at once (updateDone): the busy page, and the launcher's update run,
// whose feed never answers.
bool startHangingUpdate(WindowDriver &driver)
{
    {
        MenuDriver menu({QStringLiteral("Manually Update Software")});
        QWidget *button = driver.find<QWidget>("pushButton_Video");
        QTest::mousePress(button, Qt::RightButton, {}, button->rect().center());
    }
    const bool launched = QTest::qWaitFor([] { return !launcherProcesses().isEmpty(); }, 20000);
    return launched && driver.currentPage() == QStringLiteral("pageEmpty");
}

// The application stand-in: drives the window until a run of kind hangs,
// then closes the window ("close") or waits to be killed ("wait").
int runStandIn(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QString kind = QString::fromLocal8Bit(argv[2]);
    const QString end = QString::fromLocal8Bit(argv[3]);
    QTemporaryDir work;
    VideoInfo info;
    WindowDriver driver(work.path(), info);
    if (kind == QStringLiteral("update")) {
        if (!startHangingUpdate(driver))
            return 3;
    } else if (kind == QStringLiteral("download")) {
        if (!driver.reachFormats())
            return 3;
        driver.pickRow(0);
    } else {
        driver.enterAddress(QStringLiteral("https://www.youtube.com/watch?v=abc"));
    }
    if (kind != QStringLiteral("update") && !waitForHangingTool(kind))
        return 4;
    QFile ready(treeFolder() + QStringLiteral("/stand-in.ready"));
    if (!ready.open(QIODevice::WriteOnly))
        return 5;
    ready.close();
    if (end == QStringLiteral("close"))
        QTimer::singleShot(0, &driver.window(), &QWidget::close);
    return QApplication::exec();
}

} // namespace

class TestProcessTree : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void cancelledDownload();
    void backFromFormatsDuringMetadata();
    void backFromFormatsDuringListing();
    void newDownloadEndsTheOlderOne();
    void windowClosed_data();
    void windowClosed();
    void applicationKilled();

private:
    QTemporaryDir m_work;
    VideoInfo m_info;
    // A feed that takes connections and never answers them.
    QTcpServer m_silentFeed;
    std::unique_ptr<WindowDriver> m_driver;
};

void TestProcessTree::initTestCase()
{
    prepareOutputDir();
    QVERIFY(QDir().mkpath(dataFolder()));
    QVERIFY(QFile::copy(QStringLiteral(KESTREL_LAUNCHER_PATH), dataFolder() + QStringLiteral("/kestreldl2")));
    const QString fake = m_work.filePath(QStringLiteral("yt-dlp"));
    QFile script(fake);
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(fakeYtDlp);
    script.close();
    QVERIFY(script.setPermissions(script.permissions() | QFile::ExeOwner));
    qputenv("KESTREL_YTDLP", QFile::encodeName(fake));

    // An updater plug-in that reports updateDone as soon as it is asked to
    // update, so that the window starts the tool's update run.
    const QString updater = QCoreApplication::applicationDirPath() + QStringLiteral("/Updater.so");
    QFile::remove(updater);
    QVERIFY(QFile::copy(QStringLiteral(KESTREL_FIXTURE_PLUGIN_DIR "/recording_updater.so"), updater));
    qputenv("KESTREL_FIXTURE_RECORD", QFile::encodeName(m_work.filePath(QStringLiteral("calls.txt"))));
    qputenv("KESTREL_FIXTURE_ACTIONS", "done-on-update");
    QVERIFY(m_silentFeed.listen(QHostAddress::LocalHost));
    qputenv("KESTREL_TOOL_FEED", QStringLiteral("http://127.0.0.1:%1/").arg(m_silentFeed.serverPort()).toUtf8());
}

void TestProcessTree::cleanupTestCase()
{
    QFile::remove(QCoreApplication::applicationDirPath() + QStringLiteral("/Updater.so"));
}

void TestProcessTree::init()
{
    const QString tree = m_work.filePath(QStringLiteral("tree"));
    QDir(tree).removeRecursively();
    QVERIFY(QDir().mkpath(tree));
    QFile listing(tree + QStringLiteral("/listing.txt"));
    QVERIFY(listing.open(QIODevice::WriteOnly));
    listing.write(WindowDriver::sampleListing().toUtf8());
    listing.close();
    qputenv("TREE_DIR", QFile::encodeName(tree));
    setHanging(QString());
    m_driver.reset();
    m_driver = std::make_unique<WindowDriver>(m_work.path(), m_info);
}

void TestProcessTree::cleanup()
{
    m_driver.reset();
    QVERIFY(treeEndsWithinTwoSeconds());
}

void TestProcessTree::cancelledDownload()
{
    setHanging(QStringLiteral("download"));
    QVERIFY(m_driver->reachFormats());
    m_driver->pickRow(0);
    QVERIFY(waitForHangingTool(QStringLiteral("download")));

    ModalCatcher boxes;
    QSignalSpy failure(&m_driver->driver(), &KestrelDownloader::somethingWrong);
    QTest::mouseClick(m_driver->find<QPushButton>("btnCancel"), Qt::LeftButton);
    QVERIFY(failure.wait());
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::downloadCancelled);
    QCOMPARE(m_driver->currentPage(), QStringLiteral("page_Formats"));
    QVERIFY(treeEndsWithinTwoSeconds());
    QCOMPARE(boxes.boxes().size(), 0);
}

void TestProcessTree::backFromFormatsDuringMetadata()
{
    setHanging(QStringLiteral("metadata"));
    m_driver->enterAddress(QStringLiteral("https://www.youtube.com/watch?v=abc"));
    QVERIFY(waitForHangingTool(QStringLiteral("metadata")));

    ModalCatcher boxes;
    QTest::mouseClick(m_driver->find<QPushButton>("btn_Back_from_Formats"), Qt::LeftButton);
    QVERIFY(treeEndsWithinTwoSeconds());
    // Ended like a run that taskkill ends on Windows: exit code 1, nothing
    // printed.
    QVERIFY(boxes.waitForBoxes(1));
    QCOMPARE(boxes.boxes().first().text, QStringLiteral("<h3>ERROR:</h3>Cannot request metadata<hr><i>Code: #0x45</i>"));
    QCOMPARE(m_driver->currentPage(), QStringLiteral("page_URL"));
}

void TestProcessTree::backFromFormatsDuringListing()
{
    setHanging(QStringLiteral("formats"));
    QSignalSpy formats(&m_driver->driver(), &KestrelDownloader::haveFormats);
    m_driver->enterAddress(QStringLiteral("https://www.youtube.com/watch?v=abc"));
    QVERIFY(waitForHangingTool(QStringLiteral("formats")));

    ModalCatcher boxes;
    QTest::mouseClick(m_driver->find<QPushButton>("btn_Back_from_Formats"), Qt::LeftButton);
    QVERIFY(treeEndsWithinTwoSeconds());
    // Exit code 1 with nothing printed: an empty list, which the window
    // shows as an empty table it never switches to.
    QVERIFY(formats.wait(5000));
    QCOMPARE(m_driver->currentPage(), QStringLiteral("page_URL"));
    QCOMPARE(boxes.boxes().size(), 0);
}

void TestProcessTree::newDownloadEndsTheOlderOne()
{
    setHanging(QStringLiteral("download"));
    QVERIFY(m_driver->reachFormats());
    m_driver->pickRow(0);
    QVERIFY(waitForHangingTool(QStringLiteral("download")));
    const pid_t olderTool = recordedPid(QStringLiteral("download.pid"));
    const pid_t olderChild = recordedPid(QStringLiteral("download.child"));

    QTest::mouseClick(m_driver->find<QPushButton>("btn_Back_Last"), Qt::LeftButton);
    QFile::remove(treeFolder() + QStringLiteral("/download.pid"));
    QFile::remove(treeFolder() + QStringLiteral("/download.child"));
    QSignalSpy video(&m_driver->driver(), &KestrelDownloader::haveVideo);
    m_driver->pickRow(1);
    QVERIFY(waitForHangingTool(QStringLiteral("download")));
    QVERIFY(hasEnded(olderTool));
    QVERIFY(hasEnded(olderChild));
    QVERIFY(!hasEnded(recordedPid(QStringLiteral("download.pid"))));
    // The older run ended with exit code 1, a normal exit: a download that
    // counts as done, as on Windows.
    QTRY_COMPARE(video.size(), 1);

    QTest::mouseClick(m_driver->find<QPushButton>("btnCancel"), Qt::LeftButton);
}

void TestProcessTree::windowClosed_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("formats page, title and duration") << "metadata";
    QTest::newRow("formats page, format listing") << "formats";
    QTest::newRow("download page") << "download";
    QTest::newRow("busy page, tool update") << "update";
}

void TestProcessTree::windowClosed()
{
    QFETCH(QString, kind);
    setHanging(kind);
    QProcess standIn;
    standIn.setProcessChannelMode(QProcess::ForwardedChannels);
    standIn.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--stand-in"), kind, QStringLiteral("close")});
    QVERIFY(standIn.waitForFinished(30000));
    QCOMPARE(standIn.exitStatus(), QProcess::NormalExit);
    QCOMPARE(standIn.exitCode(), 0);
    QVERIFY(QFileInfo::exists(treeFolder() + QStringLiteral("/stand-in.ready")));
    QVERIFY(treeEndsWithinTwoSeconds());
}

void TestProcessTree::applicationKilled()
{
    setHanging(QStringLiteral("download"));
    QProcess standIn;
    standIn.setProcessChannelMode(QProcess::ForwardedChannels);
    standIn.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--stand-in"), QStringLiteral("download"), QStringLiteral("wait")});
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(treeFolder() + QStringLiteral("/stand-in.ready")), 30000);
    QCOMPARE(::kill(pid_t(standIn.processId()), SIGKILL), 0);
    QVERIFY(standIn.waitForFinished());
    QVERIFY(treeEndsWithinTwoSeconds());
}

int main(int argc, char **argv)
{
    if (argc == 4 && qstrcmp(argv[1], "--stand-in") == 0) {
        // The sandbox and the tool are the test's, inherited.
        QCoreApplication::setApplicationName(QStringLiteral("Kestrel Downloader"));
        QCoreApplication::setOrganizationName(QStringLiteral("Halvard Software"));
        return runStandIn(argc, argv);
    }
    TestSandbox sandbox;
    sandbox.applyToThisProcess();
    QCoreApplication::setApplicationName(QStringLiteral("Kestrel Downloader"));
    QCoreApplication::setOrganizationName(QStringLiteral("Halvard Software"));
    QApplication application(argc, argv);
    TestProcessTree test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_processtree.moc"
