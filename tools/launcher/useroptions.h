#pragma once

#include <string>
#include <vector>

namespace Launcher {

// The user's own options for every tool run, from "tool-options.txt" in the
// data folder: one option per line, with its value after a space or "=",
// blank lines and lines starting with "#" left out. For a user behind
// YouTube's bot check: "--cookies-from-browser firefox".
//
// Only options that change how the tool reaches the service are taken
// (cookies, proxy, rate limit, IP version, headers, extractor arguments);
// anything else, in particular what changes the output the application
// reads (--print, -o, --get-*, --dump-json, --newline, ...), is refused.
struct UserOptions
{
    std::vector<std::string> arguments;
    // Each refused line and why, for the launcher's log.
    std::vector<std::string> refused;
};

UserOptions parseUserOptions(const std::string &text);

// The options of the file in folder; none when it is absent, unreadable or
// larger than a hand-written file could be.
UserOptions readUserOptions(const std::string &folder);

} // namespace Launcher
