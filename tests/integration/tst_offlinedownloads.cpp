// The window end to end with the real tool: the built launcher as the data
// folder's kestreldl2, the system's yt-dlp behind it and ffmpeg for merging,
// all offline. The sample service of scripts/demo serves generated media on
// 127.0.0.1, and the demo's yt-dlp shim hands yt-dlp the sample info files
// instead of letting it extract anything from the network.
//
// What these tests find out that the fake tool cannot tell: that the real
// tool's output, exit codes, file names and child processes lead the window
// where the application's rules say they should.

#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "formats/formattablemodel.h"
#include "ui/navigation.h"

#include "modalcatcher.h"
#include "testsandbox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString python = QStringLiteral("/usr/bin/python3");
const QString realTool = QStringLiteral("/usr/bin/yt-dlp");
const QString ffmpeg = QStringLiteral("/usr/bin/ffmpeg");
const QString ffprobe = QStringLiteral("/usr/bin/ffprobe");
const QString scripts = QStringLiteral(KESTREL_DEMO_SCRIPTS);

// Slow enough for several progress steps and for the test to act during a
// download (the largest sample takes about four seconds), fast enough to keep
// the whole run short.
constexpr int throttleBytesPerSecond = 1024 * 1024;

// Every wait is bounded; these are generous for two busy cores.
constexpr int listingTimeoutMs = 30000;
constexpr int downloadTimeoutMs = 60000;

// The sample identifiers of make-info.py.
const QString demoId = QStringLiteral("Kestr3lDemo");
const QString unicodeId = QStringLiteral("Kestr3lUni0");
const QString missingId = QStringLiteral("Kestr3l404x");
const QString approxId = QStringLiteral("Kestr3lAprx");
const QString unknownId = QStringLiteral("unknown0000");

struct Finished
{
    bool ran = false;
    int exitCode = -1;
    QString output;
    QString errors;
};

Finished runHelper(const QString &program, const QStringList &arguments, int timeoutMs = 60000,
                   const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    Finished result;
    if (!process.waitForStarted(10000))
        return result;
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished(5000);
        return result;
    }
    result.ran = process.exitStatus() == QProcess::NormalExit;
    result.exitCode = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.errors = QString::fromUtf8(process.readAllStandardError());
    return result;
}

// The size as the tool prints it: two decimals in the largest binary unit
// below the number (yt-dlp's format_bytes).
QString toolSizeText(double bytes)
{
    static const char *const units[] = {"B", "KiB", "MiB", "GiB"};
    int unit = 0;
    while (unit < 3 && bytes >= 1024.0) {
        bytes /= 1024.0;
        ++unit;
    }
    return QString::asprintf("%.2f%s", bytes, units[unit]);
}

struct ToolProcess
{
    qint64 pid = 0;
    QStringList arguments;

    QString describe() const { return QStringLiteral("%1: %2").arg(pid).arg(arguments.join(QLatin1Char(' '))); }
};

// This user's processes, with their command lines.
QList<ToolProcess> ownProcesses()
{
    QList<ToolProcess> found;
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        bool isNumber = false;
        const qint64 pid = entry.toLongLong(&isNumber);
        if (!isNumber || pid == qint64(::getpid()))
            continue;
        struct stat owner;
        if (::stat(QFile::encodeName(QStringLiteral("/proc/") + entry).constData(), &owner) != 0 || owner.st_uid != ::getuid())
            continue;
        QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(entry));
        if (!commandLine.open(QIODevice::ReadOnly))
            continue;
        const QByteArray raw = commandLine.readAll();
        if (raw.isEmpty()) // a zombie or a kernel thread
            continue;
        ToolProcess process;
        process.pid = pid;
        for (const QByteArray &argument : raw.split('\0')) {
            if (!argument.isEmpty())
                process.arguments << QFile::decodeName(argument);
        }
        found << process;
    }
    return found;
}

class ProgressRecorder : public QObject
{
public:
    explicit ProgressRecorder(QProgressBar *bar)
    {
        // Connected after the window, so the bar already shows the value.
        connect(&KestrelDownloader::shared(), &KestrelDownloader::percent, this, [this, bar](int value) {
            signalled << value;
            if (bar->maximum() == 100)
                shown << bar->value();
        });
    }

    QList<int> signalled;
    QList<int> shown; // what the bar showed while it showed a percentage

    int distinctShown() const
    {
        QList<int> distinct;
        for (int value : shown) {
            if (!distinct.contains(value))
                distinct << value;
        }
        return int(distinct.size());
    }
};

QString joined(const QList<int> &values)
{
    QStringList text;
    for (int value : values)
        text << QString::number(value);
    return text.join(QLatin1Char(' '));
}

} // namespace

class TestOfflineDownloads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void addressToMergedFile();
    void hostileTitleIsCleanedAndFileWritten();
    void estimatedSizesFromTheTool();
    void cancelEndsEveryToolProcess();
    void missingFormatStillEndsCompleted();
    void serviceStoppedMidDownloadStillEndsCompleted();
    void unknownVideoReportsMetadataFailure();

private:
    bool startService(int port);
    void stopService();
    QJsonObject sampleInfo(const QString &id) const;
    QList<ToolProcess> toolProcesses() const;

    template <typename Widget>
    Widget *widget(const char *name) const;
    QString currentPage() const;
    void enterAddress(const QString &text);
    bool reachFormats(const QString &address);
    int rowOfFormat(quint32 id) const;
    void pickRow(int row);
    QStringList outputFiles() const;
    QStringList streamsOf(const QString &file) const;

    QTemporaryDir m_work;
    QString m_media;
    QString m_infoFolder;
    QString m_pidFile;
    QString m_portFile;
    QString m_serviceLog;
    int m_port = 0;
    qint64 m_servicePid = 0;
    std::unique_ptr<QProcess> m_service;
    std::unique_ptr<Navigation> m_window;
    std::unique_ptr<ModalCatcher> m_boxes;
};

void TestOfflineDownloads::initTestCase()
{
    // Missing tools fail the run: a skip would read as a pass in CI, which
    // installs them.
    for (const QString &needed : {realTool, ffmpeg, ffprobe, python}) {
        QVERIFY2(QFileInfo(needed).isExecutable(),
                 qPrintable(QStringLiteral("%1 is missing or not executable: install the Debian packages yt-dlp, ffmpeg and python3 "
                                           "(scripts/install-dependencies.sh)")
                                .arg(needed)));
    }
    const Finished version = runHelper(realTool, {QStringLiteral("--ignore-config"), QStringLiteral("--version")});
    QVERIFY2(version.ran && version.exitCode == 0, qPrintable(QStringLiteral("%1 --version failed: %2").arg(realTool, version.errors)));
    qInfo().noquote() << "yt-dlp" << version.output.trimmed();

    QVERIFY(m_work.isValid());
    m_media = QStringLiteral(KESTREL_SAMPLE_MEDIA);
    QProcessEnvironment withTools = QProcessEnvironment::systemEnvironment();
    withTools.insert(QStringLiteral("FFMPEG"), ffmpeg);
    const Finished media = runHelper(QStringLiteral("/bin/bash"), {scripts + QStringLiteral("/make-media.sh"), m_media}, 120000, withTools);
    QVERIFY2(media.ran && media.exitCode == 0, qPrintable(QStringLiteral("make-media.sh failed: %1").arg(media.errors)));

    m_pidFile = m_work.filePath(QStringLiteral("service.pid"));
    m_portFile = m_work.filePath(QStringLiteral("service.port"));
    m_serviceLog = m_work.filePath(QStringLiteral("service.log"));
    QVERIFY(startService(0));

    m_infoFolder = m_work.filePath(QStringLiteral("info"));
    const Finished info = runHelper(python, {scripts + QStringLiteral("/make-info.py"), QStringLiteral("--media"), m_media,
                                             QStringLiteral("--port"), QString::number(m_port), QStringLiteral("--out"),
                                             m_infoFolder, QStringLiteral("--ffprobe"), ffprobe});
    QVERIFY2(info.ran && info.exitCode == 0, qPrintable(QStringLiteral("make-info.py failed: %1").arg(info.errors)));

    // The launcher runs the shim in place of yt-dlp; the shim runs the real one.
    qputenv("KESTREL_YTDLP", QFile::encodeName(scripts + QStringLiteral("/ytdlp-shim")));
    qputenv("KESTREL_DEMO_INFO_DIR", QFile::encodeName(m_infoFolder));
    qputenv("KESTREL_DEMO_REAL_YTDLP", QFile::encodeName(realTool));

    // What the application's first start does: the tool and ffmpeg in the
    // data folder of the sandbox.
    prepareOutputDir();
    QVERIFY(outputFolder().startsWith(QDir::homePath() + QLatin1Char('/')));
    QVERIFY(QDir().mkpath(dataFolder()));
    QVERIFY(QFile::copy(QStringLiteral(KESTREL_LAUNCHER_PATH), dataFolder() + QStringLiteral("/kestreldl2")));
    QVERIFY(QFile::link(ffmpeg, dataFolder() + QStringLiteral("/ffmpeg")));
}

void TestOfflineDownloads::cleanupTestCase()
{
    m_window.reset();
    m_boxes.reset();
    KestrelDownloader::shared().terminateTool(true);
    stopService();
}

void TestOfflineDownloads::init()
{
    // A test that stopped the service and failed before starting it again
    // must not take the following ones down with it.
    if (!m_service || m_service->state() != QProcess::Running)
        QVERIFY(startService(m_port));
    QVERIFY(outputFiles().isEmpty());
    m_boxes = std::make_unique<ModalCatcher>();
    m_window = std::make_unique<Navigation>();
    m_window->showMainWindow();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestOfflineDownloads::cleanup()
{
    KestrelDownloader::shared().terminateTool(true);
    // A run killed just now may still report; its box is answered.
    QTest::qWait(100);
    m_window.reset();
    m_boxes.reset();
    QDir output(outputFolder());
    for (const QString &name : output.entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot))
        output.remove(name);
}

bool TestOfflineDownloads::startService(int port)
{
    QFile::remove(m_portFile);
    m_service = std::make_unique<QProcess>();
    m_service->setStandardOutputFile(QProcess::nullDevice());
    m_service->setStandardErrorFile(m_serviceLog, QIODevice::Append);
    // --exit-with-parent: should this test die, the service ends by itself.
    m_service->start(python, {scripts + QStringLiteral("/server.py"), QStringLiteral("--root"), m_media, QStringLiteral("--port"),
                              QString::number(port), QStringLiteral("--port-file"), m_portFile, QStringLiteral("--pid-file"),
                              m_pidFile, QStringLiteral("--throttle"), QString::number(throttleBytesPerSecond),
                              QStringLiteral("--lifetime"), QStringLiteral("300"), QStringLiteral("--exit-with-parent"),
                              QStringLiteral("--log"), m_serviceLog});
    if (!m_service->waitForStarted(10000)) {
        qWarning() << "the sample service did not start:" << m_service->errorString();
        return false;
    }
    // A port taken by another program since (after a restart) ends the
    // service; it does not hang.
    if (!QTest::qWaitFor([&] { return QFileInfo(m_portFile).size() > 0 || m_service->state() != QProcess::Running; }, 15000)
        || m_service->state() != QProcess::Running) {
        QFile log(m_serviceLog);
        log.open(QIODevice::ReadOnly);
        qWarning().noquote() << "the sample service did not report its port:" << log.readAll();
        return false;
    }
    QFile portFile(m_portFile);
    QFile pidFile(m_pidFile);
    if (!portFile.open(QIODevice::ReadOnly) || !pidFile.open(QIODevice::ReadOnly))
        return false;
    m_port = portFile.readAll().trimmed().toInt();
    m_servicePid = pidFile.readAll().trimmed().toLongLong();
    if (m_servicePid != m_service->processId()) {
        qWarning() << "the PID file names" << m_servicePid << "but the service is" << m_service->processId();
        return false;
    }
    return m_port > 0 && (port == 0 || m_port == port);
}

void TestOfflineDownloads::stopService()
{
    if (!m_service)
        return;
    if (m_service->state() == QProcess::Running && m_servicePid > 0) {
        ::kill(pid_t(m_servicePid), SIGTERM);
        if (!m_service->waitForFinished(10000)) {
            qWarning() << "the sample service ignored SIGTERM; killing it";
            ::kill(pid_t(m_servicePid), SIGKILL);
            m_service->waitForFinished(5000);
        }
    }
    m_service.reset();
    m_servicePid = 0;
}

QJsonObject TestOfflineDownloads::sampleInfo(const QString &id) const
{
    QFile file(QStringLiteral("%1/%2.info.json").arg(m_infoFolder, id));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no info file for %s", qPrintable(id));
    return QJsonDocument::fromJson(file.readAll()).object();
}

// The processes of a tool run of this test: the launcher in the sandbox's
// data folder, yt-dlp working on this test's files, and ffmpeg writing into
// the sandbox's output folder. Runs of other tests on the machine do not
// mention these folders.
QList<ToolProcess> TestOfflineDownloads::toolProcesses() const
{
    const QString launcher = dataFolder() + QStringLiteral("/kestreldl2");
    QList<ToolProcess> found;
    for (const ToolProcess &process : ownProcesses()) {
        const QString line = process.arguments.join(QLatin1Char('\n'));
        const bool isLauncher = process.arguments.value(0) == launcher;
        const bool isTool = process.arguments.contains(realTool)
                            && (line.contains(m_infoFolder) || line.contains(outputFolder()));
        const bool isMerger = QFileInfo(process.arguments.value(0)).fileName() == QStringLiteral("ffmpeg")
                              && line.contains(outputFolder());
        if (isLauncher || isTool || isMerger)
            found << process;
    }
    return found;
}

template <typename Widget>
Widget *TestOfflineDownloads::widget(const char *name) const
{
    auto *found = m_window->findChild<Widget *>(QLatin1String(name));
    if (!found)
        qFatal("no widget %s", name);
    return found;
}

QString TestOfflineDownloads::currentPage() const
{
    return widget<QStackedWidget>("stackedWidget")->currentWidget()->objectName();
}

void TestOfflineDownloads::enterAddress(const QString &text)
{
    QTest::mouseClick(widget<QPushButton>("pushButton_Video"), Qt::LeftButton);
    auto *edit = widget<QLineEdit>("editURL");
    edit->clear();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

bool TestOfflineDownloads::reachFormats(const QString &address)
{
    QSignalSpy formats(&KestrelDownloader::shared(), &KestrelDownloader::haveFormats);
    enterAddress(address);
    if (currentPage() != QStringLiteral("page_Formats"))
        return false;
    return formats.wait(listingTimeoutMs);
}

int TestOfflineDownloads::rowOfFormat(quint32 id) const
{
    QAbstractItemModel *model = widget<QTableView>("tableView")->model();
    for (int row = 0; model && row < model->rowCount(); ++row) {
        if (model->index(row, FormatTableModel::IdColumn).data().toUInt() == id)
            return row;
    }
    return -1;
}

void TestOfflineDownloads::pickRow(int row)
{
    auto *table = widget<QTableView>("tableView");
    const QRect cell = table->visualRect(table->model()->index(row, FormatTableModel::ResolutionColumn));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
}

QStringList TestOfflineDownloads::outputFiles() const
{
    return QDir(outputFolder()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

QStringList TestOfflineDownloads::streamsOf(const QString &file) const
{
    const Finished probe = runHelper(ffprobe, {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
                                               QStringLiteral("stream=codec_type"), QStringLiteral("-of"),
                                               QStringLiteral("csv=p=0"), file});
    if (!probe.ran || probe.exitCode != 0)
        return {QStringLiteral("ffprobe failed: ") + probe.errors};
    return probe.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void TestOfflineDownloads::addressToMergedFile()
{
    const QJsonObject info = sampleInfo(demoId);
    QVERIFY(reachFormats(QStringLiteral("https://www.youtube.com/watch?v=") + demoId));
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));

    // "Kestrel Demo Clip (720p)", 8 seconds long: the label keeps letters,
    // blanks and a few marks; a length under a minute is given in seconds.
    QCOMPARE(info.value(QStringLiteral("title")).toString(), QStringLiteral("Kestrel Demo Clip (720p)"));
    QCOMPARE(info.value(QStringLiteral("duration")).toInt(), 8);
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("Kestrel Demo Clip p"));
    QCOMPARE(widget<QLabel>("labelTime")->text(), QStringLiteral("| 8 sec."));
    QVERIFY(!widget<QProgressBar>("progressBar")->isVisible());

    // The formats with video, largest first, as the info file sizes them.
    struct Expected
    {
        quint32 id;
        qint64 size;
        QString resolution;
        bool videoOnly;
    };
    QList<Expected> expected;
    for (const QJsonValue &value : info.value(QStringLiteral("formats")).toArray()) {
        const QJsonObject format = value.toObject();
        bool numeric = false;
        const quint32 id = format.value(QStringLiteral("format_id")).toString().toUInt(&numeric);
        if (!numeric || format.value(QStringLiteral("vcodec")).toString() == QStringLiteral("none"))
            continue;
        expected << Expected{id, qint64(format.value(QStringLiteral("filesize")).toDouble()),
                             QStringLiteral("%1x%2").arg(format.value(QStringLiteral("width")).toInt()).arg(format.value(QStringLiteral("height")).toInt()),
                             format.value(QStringLiteral("acodec")).toString() == QStringLiteral("none")};
    }
    std::sort(expected.begin(), expected.end(), [](const Expected &a, const Expected &b) { return a.size > b.size; });
    QCOMPARE(expected.size(), 3);

    auto *table = widget<QTableView>("tableView");
    QAbstractItemModel *model = table->model();
    QVERIFY(model);
    QCOMPARE(model->rowCount(), int(expected.size()));
    for (int row = 0; row < expected.size(); ++row) {
        QCOMPARE(model->index(row, FormatTableModel::IdColumn).data().toUInt(), expected.at(row).id);
        QCOMPARE(model->index(row, FormatTableModel::SizeColumn).data().toString(), toolSizeText(double(expected.at(row).size)));
        QCOMPARE(model->index(row, FormatTableModel::ResolutionColumn).data().toString(), expected.at(row).resolution);
        QVERIFY(!table->isRowHidden(row));
    }
    QVERIFY2(expected.first().videoOnly, "the largest sample format should be video only");

    auto *bar = widget<QProgressBar>("progressBarDL");
    ProgressRecorder progress(bar);
    QSignalSpy video(&KestrelDownloader::shared(), &KestrelDownloader::haveVideo);
    QSignalSpy failure(&KestrelDownloader::shared(), &KestrelDownloader::somethingWrong);
    pickRow(0);
    QCOMPARE(currentPage(), QStringLiteral("page_Download"));
    QCOMPARE(widget<QLabel>("label_TitleDownload")->text(), QStringLiteral("Kestrel Demo Clip p"));
    QVERIFY(video.wait(downloadTimeoutMs));
    QCOMPARE(failure.size(), 0);

    qInfo().noquote() << "progress shown:" << joined(progress.shown);
    QVERIFY2(progress.distinctShown() >= 3, qPrintable(QStringLiteral("progress shown: ") + joined(progress.shown)));
    for (const char *shown : {"label_DL_OK", "btnStartOver", "btn_Back_Last", "btnOpenFolder"})
        QVERIFY2(widget<QWidget>(shown)->isVisible(), shown);
    for (const char *hidden : {"btnCancel", "progressBarDL", "label_TitleDownload", "label_DL"})
        QVERIFY2(!widget<QWidget>(hidden)->isVisible(), hidden);
    QCOMPARE(m_boxes->boxes().size(), 0);

    // One merged file named by the application's template, nothing left over.
    const QStringList files = outputFiles();
    QCOMPARE(files, QStringList{QStringLiteral("Kestrel Demo Clip (720p)_1280x720_Kestr3lDemo.mp4")});
    const QStringList streams = streamsOf(outputFolder() + QLatin1Char('/') + files.first());
    QVERIFY2(streams.contains(QStringLiteral("video")) && streams.contains(QStringLiteral("audio")), qPrintable(streams.join(QLatin1Char(','))));

    // One extraction for the three runs: the title run kept the tool's
    // information document, which the listing and the download loaded.
    const QStringList documents = QDir(dataFolder()).entryList({QStringLiteral("info-*.json")}, QDir::Files);
    QCOMPARE(documents.size(), 1);
    const QString document = dataFolder() + QLatin1Char('/') + documents.first();
    QFile kept(document);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(QJsonDocument::fromJson(kept.readAll()).object().value(QStringLiteral("id")).toString(), demoId);
    QFile log(dataFolder() + QStringLiteral("/kestreldl2.log"));
    QVERIFY(log.open(QIODevice::ReadOnly | QIODevice::Text));
    QStringList runs;
    for (const QString &line : QString::fromUtf8(log.readAll()).split(QLatin1Char('\n'))) {
        if (line.contains(QStringLiteral(" run ")) && line.contains(QStringLiteral("--no-warnings")))
            runs << line;
    }
    QVERIFY(runs.size() >= 3);
    runs = runs.mid(runs.size() - 3);
    QVERIFY2(runs.at(0).contains(QStringLiteral("--get-title --get-duration --no-warnings --print-to-file %()j ")), qPrintable(runs.at(0)));
    QVERIFY2(runs.at(1).endsWith(QStringLiteral("--list-formats --no-warnings --load-info-json ") + document), qPrintable(runs.at(1)));
    QVERIFY2(runs.at(2).endsWith(QStringLiteral("--load-info-json ") + document), qPrintable(runs.at(2)));
}

void TestOfflineDownloads::hostileTitleIsCleanedAndFileWritten()
{
    QCOMPARE(sampleInfo(unicodeId).value(QStringLiteral("title")).toString(),
             QStringLiteral("Ünïcødé: \"quotes\" / slash? <tag>|pipe* – 日本語 and a long tail to trim"));
    QVERIFY(reachFormats(QStringLiteral("https://youtu.be/") + unicodeId));
    const QString cleaned = QStringLiteral("ncd: quotes slash? tagpipe and a long tail to trim");
    QCOMPARE(widget<QLabel>("labelTitle")->text(), cleaned);

    // The smallest video-only format: the title, not the size, is the point.
    const int row = rowOfFormat(134);
    QVERIFY(row >= 0);
    QSignalSpy video(&KestrelDownloader::shared(), &KestrelDownloader::haveVideo);
    pickRow(row);
    QCOMPARE(widget<QLabel>("label_TitleDownload")->text(), cleaned);
    QVERIFY(video.wait(downloadTimeoutMs));
    QVERIFY(widget<QLabel>("label_DL_OK")->isVisible());
    QCOMPARE(m_boxes->boxes().size(), 0);

    const QStringList files = outputFiles();
    QCOMPARE(files.size(), 1);
    const QString name = files.first();
    QVERIFY2(name.endsWith(QStringLiteral(".mp4")), qPrintable(name));
    QVERIFY2(name.startsWith(QStringLiteral("Ünïcødé")), qPrintable(name));
    // The characters Windows refuses are replaced by look-alikes, and the
    // name is cut to the length limit.
    for (const QChar refused : QStringLiteral(":\"/\\?*<>|"))
        QVERIFY2(!name.contains(refused), qPrintable(name));
    QVERIFY2(name.contains(QChar(0xFF1A)), qPrintable(name)); // the full-width colon
    QVERIFY2(!name.contains(QStringLiteral("tail to trim")), qPrintable(name));
    const QStringList streams = streamsOf(outputFolder() + QLatin1Char('/') + name);
    QVERIFY2(streams.contains(QStringLiteral("video")) && streams.contains(QStringLiteral("audio")), qPrintable(streams.join(QLatin1Char(','))));
}

void TestOfflineDownloads::estimatedSizesFromTheTool()
{
    const QJsonObject info = sampleInfo(approxId);
    QVERIFY(reachFormats(QStringLiteral("https://www.youtube.com/watch?v=") + approxId));
    QAbstractItemModel *model = widget<QTableView>("tableView")->model();
    QVERIFY(model);
    QCOMPARE(model->rowCount(), 3);

    QJsonObject large;
    QJsonObject small;
    for (const QJsonValue &value : info.value(QStringLiteral("formats")).toArray()) {
        const QString id = value.toObject().value(QStringLiteral("format_id")).toString();
        if (id == QStringLiteral("136"))
            large = value.toObject();
        else if (id == QStringLiteral("134"))
            small = value.toObject();
    }
    // 136 has only an approximate size; 134 only a bit rate, from which the
    // tool estimates (kbit/s times seconds times 128 bytes); 18 has neither
    // and gets a blank size, so it comes last.
    QVERIFY(!large.contains(QStringLiteral("filesize")) && large.contains(QStringLiteral("filesize_approx")));
    QVERIFY(!small.contains(QStringLiteral("filesize")) && !small.contains(QStringLiteral("filesize_approx")));
    const double estimate = small.value(QStringLiteral("tbr")).toDouble() * info.value(QStringLiteral("duration")).toDouble() * 128.0;

    QCOMPARE(model->index(0, FormatTableModel::IdColumn).data().toUInt(), 136u);
    QCOMPARE(model->index(0, FormatTableModel::SizeColumn).data().toString(),
             toolSizeText(large.value(QStringLiteral("filesize_approx")).toDouble()));
    QCOMPARE(model->index(1, FormatTableModel::IdColumn).data().toUInt(), 134u);
    QCOMPARE(model->index(1, FormatTableModel::SizeColumn).data().toString(), toolSizeText(qint64(estimate)));
    QCOMPARE(model->index(2, FormatTableModel::IdColumn).data().toUInt(), 18u);
    QCOMPARE(model->index(2, FormatTableModel::SizeColumn).data().toString(), QString());
    QCOMPARE(m_boxes->boxes().size(), 0);
}

void TestOfflineDownloads::cancelEndsEveryToolProcess()
{
    // Any address gets the default sample: what a user of the demo sees.
    QVERIFY(reachFormats(QStringLiteral("https://www.youtube.com/watch?v=aBcDeFgHiJk")));
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("Kestrel Demo Clip p"));

    auto *bar = widget<QProgressBar>("progressBarDL");
    ProgressRecorder progress(bar);
    QSignalSpy failure(&KestrelDownloader::shared(), &KestrelDownloader::somethingWrong);
    QSignalSpy video(&KestrelDownloader::shared(), &KestrelDownloader::haveVideo);
    pickRow(0);
    // Under way: bytes are arriving.
    QVERIFY(QTest::qWaitFor([&] { return !progress.signalled.isEmpty() && progress.signalled.last() >= 1; }, listingTimeoutMs));
    QVERIFY2(progress.signalled.last() < 100, "the download ended before it could be cancelled");

    // The scan sees the running tool, so an empty scan later means something.
    const QList<ToolProcess> running = toolProcesses();
    QStringList described;
    for (const ToolProcess &process : running)
        described << process.describe();
    QVERIFY2(std::any_of(running.cbegin(), running.cend(),
                         [](const ToolProcess &process) { return process.arguments.contains(realTool); }),
             qPrintable(described.join(QLatin1Char('\n'))));
    QVERIFY2(std::any_of(running.cbegin(), running.cend(),
                         [](const ToolProcess &process) {
                             return process.arguments.value(0) == dataFolder() + QStringLiteral("/kestreldl2");
                         }),
             qPrintable(described.join(QLatin1Char('\n'))));

    QTest::mouseClick(widget<QPushButton>("btnCancel"), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(failure.size(), 1, 10000);
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::downloadCancelled);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));

    QTest::qWait(1000);
    QCOMPARE(m_boxes->boxes().size(), 0);
    QCOMPARE(video.size(), 0);
    described.clear();
    for (const ToolProcess &process : toolProcesses())
        described << process.describe();
    QVERIFY2(described.isEmpty(), qPrintable(QStringLiteral("still running:\n") + described.join(QLatin1Char('\n'))));
    // Nothing was merged; what the tool had written is only a partial file.
    for (const QString &name : outputFiles())
        QVERIFY2(name.endsWith(QStringLiteral(".part")), qPrintable(name));
}

void TestOfflineDownloads::missingFormatStillEndsCompleted()
{
    QVERIFY(reachFormats(QStringLiteral("https://www.youtube.com/watch?v=") + missingId));
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("Kestrel Missing Media"));
    QCOMPARE(rowOfFormat(136), 0);

    QSignalSpy video(&KestrelDownloader::shared(), &KestrelDownloader::haveVideo);
    QSignalSpy failure(&KestrelDownloader::shared(), &KestrelDownloader::somethingWrong);
    pickRow(0);
    // yt-dlp gives up with exit code 1; an ordinary end of the run is all
    // the application looks at, so the page says the download completed.
    QVERIFY(video.wait(downloadTimeoutMs));
    QCOMPARE(failure.size(), 0);
    QVERIFY(widget<QLabel>("label_DL_OK")->isVisible());
    QVERIFY(!widget<QPushButton>("btnCancel")->isVisible());
    QCOMPARE(m_boxes->boxes().size(), 0);

    // The tool did ask for the file, and nothing was written.
    QFile log(m_serviceLog);
    QVERIFY(log.open(QIODevice::ReadOnly));
    QVERIFY(log.readAll().contains("GET /missing/video-1280x720.mp4 HTTP/1.1\" 404"));
    QCOMPARE(outputFiles(), QStringList());
}

void TestOfflineDownloads::serviceStoppedMidDownloadStillEndsCompleted()
{
    QVERIFY(reachFormats(QStringLiteral("https://www.youtube.com/watch?v=") + demoId));
    auto *bar = widget<QProgressBar>("progressBarDL");
    ProgressRecorder progress(bar);
    QSignalSpy video(&KestrelDownloader::shared(), &KestrelDownloader::haveVideo);
    QSignalSpy failure(&KestrelDownloader::shared(), &KestrelDownloader::somethingWrong);
    pickRow(0);
    QVERIFY(QTest::qWaitFor([&] { return !progress.signalled.isEmpty() && progress.signalled.last() >= 1; }, listingTimeoutMs));
    QVERIFY2(progress.signalled.last() < 100, "the download ended before the service could be stopped");
    QVERIFY(video.isEmpty());

    const int port = m_port;
    stopService();
    // yt-dlp retries once, finds the port closed and gives up with exit
    // code 1: an ordinary end, so again the page says completed.
    QVERIFY(video.wait(downloadTimeoutMs));
    QCOMPARE(failure.size(), 0);
    QVERIFY(widget<QLabel>("label_DL_OK")->isVisible());
    QCOMPARE(m_boxes->boxes().size(), 0);
    const QStringList files = outputFiles();
    QVERIFY2(std::none_of(files.cbegin(), files.cend(), [](const QString &name) { return name.endsWith(QStringLiteral(".mp4")); }),
             qPrintable(files.join(QLatin1Char('\n'))));
    QVERIFY2(std::any_of(files.cbegin(), files.cend(), [](const QString &name) { return name.endsWith(QStringLiteral(".part")); }),
             qPrintable(files.join(QLatin1Char('\n'))));

    // Back on the same port, for the info files name it.
    QVERIFY(startService(port));
}

void TestOfflineDownloads::unknownVideoReportsMetadataFailure()
{
    QSignalSpy metadata(&KestrelDownloader::shared(), &KestrelDownloader::haveMetadata);
    QSignalSpy formats(&KestrelDownloader::shared(), &KestrelDownloader::haveFormats);
    enterAddress(QStringLiteral("https://www.youtube.com/watch?v=") + unknownId);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));

    // yt-dlp prints nothing on standard output and ends normally with exit
    // code 1: too few lines for a title and a duration.
    QVERIFY(m_boxes->waitForBoxes(1, listingTimeoutMs));
    const ModalCatcher::Box box = m_boxes->boxes().first();
    QCOMPARE(box.title, QStringLiteral("ERROR"));
    QCOMPARE(box.text, QStringLiteral("<h3>ERROR:</h3>Cannot request metadata<hr><i>Code: #0x45</i>"));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QVERIFY(!widget<QProgressBar>("progressBar")->isVisible());
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("Title"));

    // No format listing follows a failed metadata run.
    QTest::qWait(500);
    QCOMPARE(metadata.size(), 0);
    QCOMPARE(formats.size(), 0);
    QCOMPARE(widget<QTableView>("tableView")->model(), nullptr);
    QCOMPARE(m_boxes->boxes().size(), 1);
}

KESTREL_TEST_MAIN(TestOfflineDownloads)
#include "tst_offlinedownloads.moc"
