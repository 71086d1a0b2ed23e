#pragma once

#include <set>
#include <string>
#include <vector>

namespace Launcher {

// One flag of the command lines the application gives the downloader tool.
struct ToolFlag
{
    const char *name;
    bool takesValue;
    // Set for a flag that some yt-dlp still shipped by distributions does
    // not know: the installed yt-dlp is asked about it before it is passed on,
    // because an unknown flag makes yt-dlp refuse the whole run.
    bool checkSupport;
    // What to give a checked flag that takes a value while asking about it:
    // any value that flag accepts.
    const char *trialValue;
};

const std::vector<ToolFlag> &toolFlags();

// The flag of toolFlags() called name, or nullptr.
const ToolFlag *findToolFlag(const std::string &name);

// The checked flags that occur in arguments, each once, in order of first
// occurrence.
std::vector<std::string> flagsToCheck(const std::vector<std::string> &arguments);

// One removed occurrence: the flag and the text it had on the command line,
// such as "--progress-delta 1".
struct DroppedFlag
{
    std::string flag;
    std::string text;
};

// arguments without every occurrence of the flags in unsupported, each with
// its value. Every other argument keeps its place and its bytes.
std::vector<std::string> dropFlags(const std::vector<std::string> &arguments,
                                   const std::set<std::string> &unsupported,
                                   std::vector<DroppedFlag> *dropped);

} // namespace Launcher
