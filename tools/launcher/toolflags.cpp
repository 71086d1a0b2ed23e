#include "toolflags.h"

#include <cstddef>

namespace Launcher {

namespace {

// Where one flag of the table occurs: count is 2 when its value is the next
// argument, 1 for a switch or a "--flag=value" argument.
struct Occurrence
{
    const ToolFlag *flag;
    std::size_t index;
    std::size_t count;
};

// Reads the arguments the way yt-dlp's option parser does as far as the
// application's flags go: a flag that takes a value swallows the next
// argument whatever it looks like (an output template may well read
// "--progress-delta"), and "--" ends the options.
std::vector<Occurrence> occurrences(const std::vector<std::string> &arguments)
{
    std::vector<Occurrence> found;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string &argument = arguments[i];
        if (argument == "--")
            break;
        const std::size_t equals = argument.find('=');
        const bool inlineValue = equals != std::string::npos && argument.compare(0, 2, "--") == 0;
        const ToolFlag *flag = findToolFlag(inlineValue ? argument.substr(0, equals) : argument);
        if (!flag)
            continue;
        const std::size_t count = (flag->takesValue && !inlineValue && i + 1 < arguments.size()) ? 2 : 1;
        found.push_back({flag, i, count});
        i += count - 1;
    }
    return found;
}

} // namespace

const std::vector<ToolFlag> &toolFlags()
{
    static const std::vector<ToolFlag> flags{
        {"--retries", true, false, nullptr},
        {"--concurrent-fragments", true, false, nullptr},
        {"--output-na-placeholder", true, false, nullptr},
        {"--trim-filenames", true, false, nullptr},
        // Added to yt-dlp after Debian bookworm's 2023.03.04.
        {"--progress-delta", true, true, "1"},
        {"--merge-output-format", true, false, nullptr},
        {"--format", true, false, nullptr},
        {"--ffmpeg-location", true, false, nullptr},
        {"--path", true, false, nullptr},
        {"--output", true, false, nullptr},
        {"--no-warnings", false, false, nullptr},
        {"--no-playlist", false, false, nullptr},
        {"--force-overwrites", false, false, nullptr},
        {"--windows-filenames", false, false, nullptr},
        {"--get-title", false, false, nullptr},
        {"--get-duration", false, false, nullptr},
        {"--list-formats", false, false, nullptr},
        {"--update", false, false, nullptr},
        // Given by the launcher itself to every run.
        {"--ignore-config", false, false, nullptr},
        {"--encoding", true, false, nullptr},
        // Added to yt-dlp in 2025.11.
        {"--no-js-runtimes", false, true, nullptr},
        {"--js-runtimes", true, true, "deno"},
    };
    return flags;
}

const ToolFlag *findToolFlag(const std::string &name)
{
    for (const ToolFlag &flag : toolFlags()) {
        if (name == flag.name)
            return &flag;
    }
    return nullptr;
}

std::vector<std::string> flagsToCheck(const std::vector<std::string> &arguments)
{
    std::vector<std::string> names;
    for (const Occurrence &occurrence : occurrences(arguments)) {
        if (!occurrence.flag->checkSupport)
            continue;
        bool seen = false;
        for (const std::string &name : names)
            seen = seen || name == occurrence.flag->name;
        if (!seen)
            names.emplace_back(occurrence.flag->name);
    }
    return names;
}

std::vector<std::string> dropFlags(const std::vector<std::string> &arguments,
                                   const std::set<std::string> &unsupported,
                                   std::vector<DroppedFlag> *dropped)
{
    std::vector<bool> keep(arguments.size(), true);
    for (const Occurrence &occurrence : occurrences(arguments)) {
        if (unsupported.count(occurrence.flag->name) == 0)
            continue;
        std::string text;
        for (std::size_t i = occurrence.index; i < occurrence.index + occurrence.count; ++i) {
            keep[i] = false;
            text += (text.empty() ? "" : " ") + arguments[i];
        }
        if (dropped)
            dropped->push_back({occurrence.flag->name, text});
    }

    std::vector<std::string> kept;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (keep[i])
            kept.push_back(arguments[i]);
    }
    return kept;
}

} // namespace Launcher
