#pragma once

class KestrelDownloader;
class Plugins;
class VideoInfo;

// The one place that makes the program's single instances and hands them to
// whatever works with them. Each is made on first use and lives until the
// process ends; nothing outside the start-up code asks for them here.
namespace Composition {

// The record of the video being handled. Its first use, by the file set-up,
// opens the settings file.
VideoInfo &videoRecord();

// The driver of the downloader tool, working on videoRecord().
KestrelDownloader &driver();

// The optional plug-ins.
Plugins &plugins();

} // namespace Composition
