#pragma once

#include <optional>
#include <string>

namespace Launcher {

// The environment variable that names the yt-dlp to run instead of the one
// found on PATH.
inline const char *toolVariable()
{
    return "KESTREL_YTDLP";
}

// The yt-dlp to run: the file KESTREL_YTDLP names when it is set, otherwise
// the first yt-dlp on PATH. Empty when there is none; *problem then says
// what was looked at.
std::string findTool(std::string *problem);

// The first executable file called name in a folder of PATH; empty if none.
// Only absolute folders are searched.
std::string findOnPath(const std::string &name);

// The folder of the application that started the launcher: the one
// KESTREL_APP_DIR names when it is the folder of the running program whose
// process KESTREL_APP_PID names, which the application sets for its
// children; nothing otherwise, so that an environment given to the launcher
// by anyone else cannot make another folder's files its own.
std::optional<std::string> applicationFolder();

// The folder the launcher runs from, which is the application's data
// folder once the application has copied it there; empty if unknown.
std::string ownFolder();

} // namespace Launcher
