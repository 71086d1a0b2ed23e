#pragma once

#include <QString>

// Everything that differs between Windows and the other systems. The
// implementation is chosen in CMake: platform_win.cpp or platform_unix.cpp.
namespace Platform {

// The downloader tool's file name in the executable's and the data folder.
QString toolFileName();

// ffmpeg's file name beside the tool.
QString ffmpegFileName();

// A plug-in library file: the base name plus the system's library suffix.
QString pluginFileName(const QString &baseName);

// Forcibly ends every running instance of the downloader tool and waits, at
// most timeoutMs, until they are gone. Returns false when that could not be
// done or waited for.
bool killTool(const QString &toolPath, int timeoutMs);

} // namespace Platform
