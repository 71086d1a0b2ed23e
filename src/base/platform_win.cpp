#include "platform.h"

namespace Platform {

QString toolFileName()
{
    return QStringLiteral("kestreldl2.exe");
}

QString ffmpegFileName()
{
    return QStringLiteral("ffmpeg.exe");
}

QString pluginFileName(const QString &baseName)
{
    return baseName + QStringLiteral(".dll");
}

QUrl folderUrl(const QString &folder)
{
    return QUrl(folder, QUrl::TolerantMode);
}

} // namespace Platform

#include <QProcess>

namespace Platform {

// Every process with the tool's image name, whoever started it.
bool killTool(const QString &, int timeoutMs)
{
    QProcess taskkill;
    taskkill.start(QStringLiteral("taskkill"), {QStringLiteral("/IM"), toolFileName(), QStringLiteral("/F")},
                   QIODevice::ReadWrite);
    return taskkill.waitForFinished(timeoutMs);
}

} // namespace Platform
