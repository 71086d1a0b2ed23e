#pragma once

#include <string>
#include <vector>

namespace Launcher {

// The user's settings for the launcher itself, "kestreldl2.conf" in the data
// folder (written by hand; a missing file means the defaults): one
// "key value" (or "key = value") a line, "#" for comments.
//
//   tool-channel   "stable" (the default): the tool's releases;
//                  "nightly": its nightly builds, which follow changes of
//                  the service within a day. Both are verified the same way.
struct LauncherSettings
{
    std::string toolChannel = "stable";
    // Lines that were not understood, for the log.
    std::vector<std::string> problems;

    static LauncherSettings load(const std::string &folder);
    static LauncherSettings parse(const std::string &text);
};

} // namespace Launcher
