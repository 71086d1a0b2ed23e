#include "offlineservicetest.h"

#include "downloader/filesetup.h"
#include "formats/formattablemodel.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>

#include <csignal>
#include <unistd.h>

namespace {

const QString python = QStringLiteral("/usr/bin/python3");
const QString ffmpeg = QStringLiteral("/usr/bin/ffmpeg");
const QString ffprobe = QStringLiteral("/usr/bin/ffprobe");
const QString scripts = QStringLiteral(KESTREL_DEMO_SCRIPTS);

// Slow enough for several progress steps and for the test to act during a
// download (the largest sample takes about four seconds), fast enough to keep
// the whole run short.
constexpr int throttleBytesPerSecond = 1024 * 1024;

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

} // namespace

QString OfflineServiceTest::realTool()
{
    const QString named = qEnvironmentVariable("KESTREL_TEST_YTDLP");
    return named.isEmpty() ? QStringLiteral("/usr/bin/yt-dlp") : named;
}

QString OfflineServiceTest::toolSizeText(double bytes)
{
    static const char *const units[] = {"B", "KiB", "MiB", "GiB"};
    int unit = 0;
    while (unit < 3 && bytes >= 1024.0) {
        bytes /= 1024.0;
        ++unit;
    }
    return QString::asprintf("%.2f%s", bytes, units[unit]);
}

void OfflineServiceTest::initTestCase()
{
    // Missing tools fail the run: a skip would read as a pass in CI, which
    // installs them.
    for (const QString &needed : {realTool(), ffmpeg, ffprobe, python}) {
        QVERIFY2(QFileInfo(needed).isExecutable(),
                 qPrintable(QStringLiteral("%1 is missing or not executable: install the Debian packages yt-dlp, ffmpeg and python3 "
                                           "(scripts/install-dependencies.sh); the current yt-dlp comes from scripts/current-tool.sh")
                                .arg(needed)));
    }
    const Finished version = runHelper(realTool(), {QStringLiteral("--ignore-config"), QStringLiteral("--version")});
    QVERIFY2(version.ran && version.exitCode == 0, qPrintable(QStringLiteral("%1 --version failed: %2").arg(realTool(), version.errors)));
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
    qputenv("KESTREL_DEMO_REAL_YTDLP", QFile::encodeName(realTool()));

    // What the application's first start does: the tool and ffmpeg in the
    // data folder of the sandbox.
    prepareOutputDir();
    QVERIFY(outputFolder().startsWith(QDir::homePath() + QLatin1Char('/')));
    QVERIFY(QDir().mkpath(dataFolder()));
    QVERIFY(QFile::copy(QStringLiteral(KESTREL_LAUNCHER_PATH), dataFolder() + QStringLiteral("/kestreldl2")));
    QVERIFY(QFile::link(ffmpeg, dataFolder() + QStringLiteral("/ffmpeg")));
}

void OfflineServiceTest::cleanupTestCase()
{
    KestrelDownloader(m_info).terminateTool(true);
    stopService();
}

void OfflineServiceTest::init()
{
    // A test that stopped the service and failed before starting it again
    // must not take the following ones down with it.
    if (!m_service || m_service->state() != QProcess::Running)
        QVERIFY(startService(m_port));
    QVERIFY(outputFiles().isEmpty());
    m_boxes = std::make_unique<ModalCatcher>();
    m_window = std::make_unique<WindowDriver>(m_work.path(), m_info);
}

void OfflineServiceTest::cleanup()
{
    m_window->driver().terminateTool(true);
    // A run killed just now may still report; its box is answered.
    QVERIFY(WindowDriver::waitForRunsToEnd());
    m_window.reset();
    m_boxes.reset();
    QDir output(outputFolder());
    for (const QString &name : output.entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot))
        output.remove(name);
}

bool OfflineServiceTest::startService(int port)
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

void OfflineServiceTest::stopService()
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

QJsonObject OfflineServiceTest::sampleInfo(const QString &id) const
{
    QFile file(QStringLiteral("%1/%2.info.json").arg(m_infoFolder, id));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no info file for %s", qPrintable(id));
    return QJsonDocument::fromJson(file.readAll()).object();
}

// Runs of other tests on the machine do not mention this test's folders.
QList<ProcessProbe::UserProcess> OfflineServiceTest::toolProcesses() const
{
    const QString launcher = dataFolder() + QStringLiteral("/kestreldl2");
    QList<ProcessProbe::UserProcess> found;
    for (const ProcessProbe::UserProcess &process : ProcessProbe::processesOfThisUser()) {
        const QString line = process.arguments.join(QLatin1Char('\n'));
        const bool isLauncher = process.arguments.value(0) == launcher;
        const bool isTool = process.arguments.contains(realTool())
                            && (line.contains(m_infoFolder) || line.contains(outputFolder()));
        const bool isMerger = QFileInfo(process.arguments.value(0)).fileName() == QStringLiteral("ffmpeg")
                              && line.contains(outputFolder());
        if (isLauncher || isTool || isMerger)
            found << process;
    }
    return found;
}

bool OfflineServiceTest::reachFormats(const QString &address)
{
    return m_window->reachFormats(address, true, listingTimeoutMs) && currentPage() == QStringLiteral("page_Formats");
}

int OfflineServiceTest::rowOfFormat(quint32 id) const
{
    QAbstractItemModel *model = widget<QTableView>("tableView")->model();
    for (int row = 0; model && row < model->rowCount(); ++row) {
        if (model->index(row, FormatTableModel::IdColumn).data().toUInt() == id)
            return row;
    }
    return -1;
}

QStringList OfflineServiceTest::outputFiles() const
{
    return QDir(outputFolder()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

QString OfflineServiceTest::sizeTheToolLists(const QString &id, const QString &formatId) const
{
    const QString info = QStringLiteral("%1/%2.info.json").arg(m_infoFolder, id);
    const Finished listing = runHelper(realTool(), {QStringLiteral("--ignore-config"), QStringLiteral("--no-warnings"),
                                                    QStringLiteral("--load-info-json"), info, QStringLiteral("--list-formats")});
    if (!listing.ran || listing.exitCode != 0)
        return QStringLiteral("the tool's listing failed: ") + listing.errors;
    const QRegularExpression size(QStringLiteral("\\b(\\d+\\.\\d\\d[KMGT]?i?B)\\b"));
    for (const QString &line : listing.output.split(QLatin1Char('\n'))) {
        if (line.section(QLatin1Char(' '), 0, 0) == formatId)
            return size.match(line).captured(1);
    }
    return QStringLiteral("no row %1 in the tool's listing").arg(formatId);
}

QStringList OfflineServiceTest::streamsOf(const QString &file) const
{
    const Finished probe = runHelper(ffprobe, {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
                                               QStringLiteral("stream=codec_type"), QStringLiteral("-of"),
                                               QStringLiteral("csv=p=0"), file});
    if (!probe.ran || probe.exitCode != 0)
        return {QStringLiteral("ffprobe failed: ") + probe.errors};
    return probe.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
