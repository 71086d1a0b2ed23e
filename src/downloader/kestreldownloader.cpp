#include "kestreldownloader.h"

#include "base/log.h"
#include "base/platform.h"
#include "downloader/filesetup.h"
#include "downloader/videoinfo.h"
#include "formats/formatcatalogue.h"

#include <QMetaEnum>
#include <QRegularExpression>
#include <QUrlQuery>

#include <atomic>
#include <cmath>
#include <limits>

namespace {

const QString mainHost = QStringLiteral("youtube.com");
const QString shortLinkHost = QStringLiteral("youtu.be");

QString toolPath()
{
    return QStringLiteral("%1/%2").arg(dataFolder(), Platform::toolFileName());
}

const QRegularExpression &addressPattern()
{
    static const QRegularExpression pattern(
        QStringLiteral("^(https?://)?(www\\.)?(") + QRegularExpression::escape(mainHost)
            + QStringLiteral("/(watch\\?v=|shorts/)|") + QRegularExpression::escape(shortLinkHost)
            + QStringLiteral("/)[\\w\\-]+"),
        QRegularExpression::CaseInsensitiveOption);
    return pattern;
}

// The video identifier of an accepted address, or an empty string.
QString videoIdentifier(const QUrl &url, bool *onService)
{
    const QString host = url.host(QUrl::FullyDecoded).toLower();
    const QString path = url.path(QUrl::FullyDecoded);
    *onService = true;
    if (host.endsWith(mainHost)) {
        if (path == QStringLiteral("/watch"))
            return QUrlQuery(url).queryItemValue(QStringLiteral("v"), QUrl::FullyDecoded);
        if (path.startsWith(QStringLiteral("/shorts/")))
            return path.mid(8);
        return {};
    }
    if (host == shortLinkHost)
        return path.size() >= 2 ? path.mid(1) : QString();
    *onService = false;
    return {};
}

QUrl canonicalWatchAddress(const QString &identifier)
{
    QUrl url;
    url.setScheme(QStringLiteral("https"));
    url.setHost(QStringLiteral("www.") + mainHost);
    url.setPath(QStringLiteral("/watch"));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("v"), identifier);
    url.setQuery(query);
    return url;
}

std::atomic_int liveProcessObjects{0};

// One duration part: a decimal unsigned 32-bit number, anything else is 0.
quint32 durationPart(const QString &text)
{
    return text.toUInt(nullptr, 10);
}

} // namespace

KestrelDownloader::KestrelDownloader(VideoInfo &info, QObject *parent)
    : QObject(parent)
    , m_info(info)
{
    qRegisterMetaType<KestrelDownloader::errorType>("KestrelDownloader::errorType");
    connect(this, &KestrelDownloader::haveMetadata, this, &KestrelDownloader::requestFormats);
}

const QHash<quint32, FormatInfo> &KestrelDownloader::formats() const
{
    return m_formats;
}

const QList<quint32> &KestrelDownloader::viewOrder() const
{
    return m_viewOrder;
}

int KestrelDownloader::processObjectCount()
{
    return liveProcessObjects;
}

bool KestrelDownloader::setUrl(const QString &text)
{
    QUrl url(text, QUrl::TolerantMode);
    if (!url.isValid())
        return false;

    QUrlQuery query(url);
    if (query.hasQueryItem(QStringLiteral("ab_channel"))) {
        query.removeQueryItem(QStringLiteral("ab_channel"));
        url.setQuery(query);
    }

    if (!addressPattern().match(url.toString()).hasMatch())
        return false;
    m_info.url = url;
    return true;
}

KestrelDownloader::SharedProcess KestrelDownloader::createProcess(const QStringList &arguments) const
{
    // Released through the event loop: the last owner may be the process's own
    // signal handler.
    SharedProcess process(new QProcess, [](QProcess *finished) { finished->deleteLater(); });
    ++liveProcessObjects;
    connect(process.get(), &QObject::destroyed, process.get(), [] { --liveProcessObjects; });
    process->setArguments(arguments);
    process->setWorkingDirectory(dataFolder());
    process->setProgram(toolPath());
    return process;
}

void KestrelDownloader::startRun(const SharedProcess &process, const RunEnd &end)
{
    connect(process.get(), &QProcess::finished, this, [this, process, end](int, QProcess::ExitStatus status) {
        finishRun(*process, status, end);
        // Each run is answered once; dropping the connections releases the process.
        process->disconnect(this);
    });
    watchForStartFailure(process, [this, code = toolNotStarted] { emit somethingWrong(code); });
    process->start(QIODevice::ReadWrite);
}

void KestrelDownloader::watchForStartFailure(const SharedProcess &process, const std::function<void()> &report)
{
    // Queued, so a tool that cannot start is reported after the request has
    // returned, like every other outcome.
    connect(
        process.get(), &QProcess::errorOccurred, this,
        [this, process, report](QProcess::ProcessError error) {
            if (error != QProcess::FailedToStart)
                return;
            // Logged under the run's start, where the failure belongs.
            LOG_ERROR_AS("void KestrelDownloader::startRun()") << process->errorString() << process->program();
            report();
            process->disconnect(this);
        },
        Qt::QueuedConnection);
}

void KestrelDownloader::finishRun(QProcess &process, QProcess::ExitStatus status, const RunEnd &end)
{
    {
        QDebug line = LOG_ENTRY_AS(end.handler);
        line << end.finishedText;
        if (end.logsArguments)
            line << process.arguments();
    }

    if (m_cancelRequested) {
        m_cancelRequested = false;
        emit somethingWrong(end.cancelCode);
        return;
    }
    if (status == QProcess::NormalExit) {
        // A non-zero exit code is not a failure here: what the tool printed decides.
        end.whenNormalExit(process);
        return;
    }
    LOG_ERROR_AS(end.handler) << process.errorString() << "[" << process.state() << process.error() << "]";
    emit somethingWrong(end.crashCode);
}

void KestrelDownloader::readRunOutput(QProcess &process)
{
    m_info.rawOutput = QString::fromUtf8(process.readAllStandardOutput());
}

void KestrelDownloader::requestMetadata()
{
    LOG_ENTRY("void KestrelDownloader::requestMetadata()") << m_info.url;

    bool onService = false;
    const QString identifier = videoIdentifier(m_info.url, &onService);
    QString target = m_info.url.toString();
    if (!onService) {
        LOG_WARNING("void KestrelDownloader::requestMetadata()") << "Not a YouTube URL";
    } else if (identifier.isEmpty()) {
        LOG_WARNING("void KestrelDownloader::requestMetadata()") << "No ID found";
    } else {
        m_info.url = canonicalWatchAddress(identifier);
        // An identifier that starts like an option is passed as a whole address.
        const bool looksLikeOption = identifier.startsWith(QLatin1Char('-')) || identifier.startsWith(QLatin1Char('_'));
        target = looksLikeOption ? m_info.url.toString() : identifier;
    }
    m_info.target = target;

    const SharedProcess process = createProcess(
        {QStringLiteral("--get-title"), QStringLiteral("--get-duration"), QStringLiteral("--no-warnings"), m_info.target});
    m_info.rawOutput.clear();
    startRun(process, {LOG_HANDLER_NAME("KestrelDownloader::requestMetadata()::<lambda(int, QProcess::ExitStatus)>", int, QProcess::ExitStatus),
                       "Metadata request::finished for :", true, metadataCancelled, metadataCrashed,
                       [this](QProcess &finished) {
                           readRunOutput(finished);
                           requestMetadataFinished();
                       }});
}

void KestrelDownloader::requestMetadataFinished()
{
    constexpr auto here = "void KestrelDownloader::requestMetadataFinished()";
    LOG_ENTRY(here);

    const QStringList lines = m_info.rawOutput.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (lines.size() < 2) {
        LOG_ERROR(here) << "Not enough valid lines in the input";
        emit somethingWrong(metadataTooFewLines);
        return;
    }

    const QStringList parts = lines.last().trimmed().split(QLatin1Char(':'), Qt::KeepEmptyParts);
    quint32 seconds = 0;
    switch (parts.size()) {
    case 1:
        seconds = durationPart(parts[0]);
        break;
    case 2:
        seconds = durationPart(parts[0]) * 60u + durationPart(parts[1]);
        break;
    case 3:
        seconds = durationPart(parts[0]) * 3600u + durationPart(parts[1]) * 60u + durationPart(parts[2]);
        break;
    default:
        LOG_ERROR(here) << "Invalid duration format";
        emit somethingWrong(metadataBadDuration);
        return;
    }

    // A time of day: lengths of 24 hours or more wrap around.
    m_info.duration = QTime(0, 0).addSecs(int(seconds % 86400u));
    m_info.title = lines.at(lines.size() - 2).trimmed();
    emit haveMetadata();
}

void KestrelDownloader::requestFormats()
{
    LOG_ENTRY("void KestrelDownloader::requestFormats()");

    const SharedProcess process =
        createProcess({QStringLiteral("--list-formats"), QStringLiteral("--no-warnings"), m_info.target});
    m_info.rawOutput.clear();
    // The format run's codes are crossed on purpose: a cancelled listing
    // reports 74, a crashed one 73.
    startRun(process, {LOG_HANDLER_NAME("KestrelDownloader::requestFormats()::<lambda(int, QProcess::ExitStatus)>", int, QProcess::ExitStatus),
                       "Formats request::finished", false, formatsCrashed, formatsCancelled,
                       [this](QProcess &finished) {
                           readRunOutput(finished);
                           requestFormatsFinished();
                       }});
}

void KestrelDownloader::requestFormatsFinished()
{
    LOG_ENTRY("void KestrelDownloader::requestFormatsFinished()");

    FormatCatalogue::Result catalogue = FormatCatalogue::fromListing(m_info.rawOutput);
    m_formats = std::move(catalogue.formats);
    m_viewOrder = std::move(catalogue.viewOrder);
    emit haveFormats();
}

void KestrelDownloader::requestVideo(uint formatId)
{
    LOG_ENTRY("void KestrelDownloader::requestVideo(uint)") << "ID:" << formatId;
    m_info.formatId = formatId;

    const QString format = QStringLiteral("%1+bestaudio[ext=m4a]/%1+bestaudio/best[ext=mp4]/best[ext=mkv]").arg(formatId);
    const SharedProcess process = createProcess({
        QStringLiteral("--no-warnings"),
        QStringLiteral("--no-playlist"),
        QStringLiteral("--force-overwrites"),
        QStringLiteral("--retries"), QStringLiteral("1"),
        QStringLiteral("--concurrent-fragments"), QStringLiteral("4"),
        QStringLiteral("--output-na-placeholder"), QStringLiteral("KestrelD"),
        QStringLiteral("--trim-filenames"), QStringLiteral("55"),
        QStringLiteral("--progress-delta"), QStringLiteral("1"),
        QStringLiteral("--merge-output-format"), QStringLiteral("mp4"),
        QStringLiteral("--format"), format,
        QStringLiteral("--ffmpeg-location"), dataFolder(),
        QStringLiteral("--path"), outputFolder(),
        QStringLiteral("--output"), QStringLiteral("%(title)s_%(resolution)s_%(id)s.%(ext)s"),
        QStringLiteral("--windows-filenames"),
        m_info.target,
    });
    connect(process.get(), &QProcess::readyReadStandardOutput, this, [this, raw = process.get()] { reportProgress(*raw); });

    // A download always runs alone.
    terminateTool(true);
    startRun(process, {LOG_HANDLER_NAME("KestrelDownloader::requestVideo(uint)::<lambda(int, QProcess::ExitStatus)>", int, QProcess::ExitStatus),
                       "Video request::finished", false, downloadCancelled, downloadCrashed,
                       [this](QProcess &) { emit haveVideo(); }});
}

std::optional<int> KestrelDownloader::progressFromChunk(const QString &chunk)
{
    const QStringList lines = chunk.split(QLatin1Char('\n'), Qt::KeepEmptyParts);
    for (const QString &line : lines) {
        const QString simplified = line.simplified();
        if (!simplified.startsWith(QStringLiteral("[download]")) || !simplified.contains(QLatin1Char('%')))
            continue;
        QString number = simplified.section(QLatin1Char('%'), 0, 0);
        number.remove(QStringLiteral("[download]"));
        const double value = number.trimmed().toDouble();
        // "nan" and "-inf" read as numbers too; no int can hold them.
        if (std::isnan(value))
            return 0;
        if (value >= 99.0)
            return 100;
        return value <= double(std::numeric_limits<int>::min()) ? std::numeric_limits<int>::min() : int(value);
    }
    return std::nullopt;
}

void KestrelDownloader::reportProgress(QProcess &process)
{
    if (const std::optional<int> value = progressFromChunk(QString::fromUtf8(process.readAllStandardOutput())))
        emit percent(*value);
}

void KestrelDownloader::updateBinary(bool detached)
{
    constexpr auto here = "void KestrelDownloader::updateBinary(bool)";
    LOG_ENTRY(here) << "detached:" << (detached ? "true" : "false");

    const SharedProcess process = createProcess({QStringLiteral("--update")});
    if (detached) {
        process->startDetached();
        return;
    }

    connect(process.get(), &QProcess::finished, this, [this, process](int, QProcess::ExitStatus status) {
        constexpr auto handler = "KestrelDownloader::updateBinary(bool)::<lambda(int, QProcess::ExitStatus)>";
        LOG_ENTRY(handler) << "updateBinary::finished";
        if (status == QProcess::CrashExit)
            LOG_ERROR(handler) << process->errorString();
        emit resultUpdateBinary(status);
        process->disconnect(this);
    });
    watchForStartFailure(process, [this] { emit resultUpdateBinary(QProcess::CrashExit); });
    process->start(QIODevice::ReadWrite);
}

void KestrelDownloader::terminateTool(bool quiet)
{
    if (!quiet)
        m_cancelRequested = true;
    if (!Platform::killTool(toolPath(), 30000))
        LOG_WARNING("void KestrelDownloader::terminateTool(bool)") << "Failed to execute taskkill command";
}
