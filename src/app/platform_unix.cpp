#include "platform.h"

namespace Platform {

QString toolFileName()
{
    return QStringLiteral("kestreldl2");
}

QString ffmpegFileName()
{
    return QStringLiteral("ffmpeg");
}

QString pluginFileName(const QString &baseName)
{
    return baseName + QStringLiteral(".so");
}

} // namespace Platform
