#include "filesetup.h"

#include "base/identity.h"
#include "base/log.h"
#include "base/platform.h"
#include "base/settings.h"
#include "downloader/videoinfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace {

QString &outputFolderStorage()
{
    static QString folder;
    return folder;
}

QString downloadLocation()
{
    return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
}

void makeOutputFolder(const char *signature, int line)
{
    const QString &folder = outputFolderStorage();
    if (QDir().mkpath(folder))
        Log::ok("output dir", folder);
    else
        Log::error(signature, line) << "output dir" << folder;
}

} // namespace

const QString &outputFolder()
{
    return outputFolderStorage();
}

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

void checkAndSetupFiles(VideoInfo &info)
{
    // The log names the set-up as it was before it was handed the record.
    constexpr auto here = "void checkAndSetupFiles()";
    LOG_ENTRY_AS(here);

    const QString data = dataFolder();
    if (QDir().mkpath(data))
        Log::ok("data dir", data);
    else
        LOG_ERROR_AS(here) << "data dir" << data;
    // The tool's log, its state and the user's tool options live here, and
    // may name cookies, proxies and passwords: only the user may look in.
    QFile::setPermissions(data, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    QSettings &settings = info.settings();
    Settings::writeIfChanged(settings, Settings::versionNumberKey(), Identity::applicationVersion());
    Settings::writeIfChanged(settings, Settings::versionDateKey(), Identity::buildDate());

    // An existing copy is never replaced, whatever its version or size.
    for (const QString &tool : {Platform::toolFileName(), Platform::ffmpegFileName()}) {
        const QString destination = QStringLiteral("%1/%2").arg(data, tool);
        const QString source = QStringLiteral("%1/%2").arg(QCoreApplication::applicationDirPath(), tool);
        if (QFileInfo::exists(destination))
            continue;
        if (QFileInfo::exists(source)) {
            QFile::copy(source, destination);
            qDebug().noquote() << tool << "copy to:" << destination;
        } else {
            LOG_WARNING_AS(here) << "No file in:" << source;
        }
    }

    prepareOutputDir();
}

void prepareOutputDir()
{
    constexpr auto here = "void prepareOutputDir()";
    LOG_ENTRY(here);

    outputFolderStorage() = QStringLiteral("%1/%2").arg(downloadLocation(), QStringLiteral("KestrelD"));
    makeOutputFolder(here, __LINE__);

    // An installer of this product downloaded into the same folder would be
    // taken for a video later; it is renamed, or removed when that fails.
    const QString parent = QFileInfo(outputFolderStorage()).absolutePath();
    for (const QString &extension : {QStringLiteral("exe"), QStringLiteral("msi")}) {
        const QString installer = QStringLiteral("%1/%2").arg(parent, QStringLiteral("%1.%2").arg(QStringLiteral("KestrelD"), extension));
        if (!QFile::exists(installer))
            continue;
        const QString renamed = QStringLiteral("%1/%2").arg(parent, QStringLiteral("%1_Installer.%2").arg(QStringLiteral("KestrelD"), extension));
        if (QFile::rename(installer, renamed)) {
            LOG_INFO(here) << "Renamed" << installer << "to" << renamed;
            continue;
        }
        LOG_ERROR(here) << "Failed to rename" << installer;
        if (QFile::remove(installer))
            continue;
        LOG_ERROR(here) << "Failed to remove" << installer;
        outputFolderStorage() = QStringLiteral("%1/KestrelDownload").arg(downloadLocation());
        makeOutputFolder(here, __LINE__);
    }
}
