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

} // namespace Platform
