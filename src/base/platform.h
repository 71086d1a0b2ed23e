#pragma once

#include <QString>
#include <QUrl>

// Everything that differs between Windows and the other systems. The
// implementation is chosen in CMake: platform_win.cpp or platform_posix.cpp.
namespace Platform {

// The downloader tool's file name in the executable's and the data folder.
QString toolFileName();

// ffmpeg's file name beside the tool.
QString ffmpegFileName();

// A plug-in library file: the base name plus the system's library suffix.
QString pluginFileName(const QString &baseName);

// The address under which the system's file manager opens a folder.
QUrl folderUrl(const QString &folder);

// Forcibly ends every running instance of the downloader tool and waits, at
// most timeoutMs, until they are gone. Returns false when that could not be
// done or waited for.
bool killTool(const QString &toolPath, int timeoutMs);

} // namespace Platform
