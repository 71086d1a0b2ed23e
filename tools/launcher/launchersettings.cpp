#include "launchersettings.h"

#include "platform.h"

#include <sstream>

namespace Launcher {

namespace {

constexpr std::size_t maxSettingsBytes = 64 * 1024;

std::string trimmed(const std::string &text)
{
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

} // namespace

LauncherSettings LauncherSettings::parse(const std::string &text)
{
    LauncherSettings settings;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        line = trimmed(line);
        if (line.empty() || line.front() == '#')
            continue;
        const std::size_t split = line.find_first_of(" \t=");
        const std::string key = line.substr(0, split);
        std::string value = split == std::string::npos ? std::string() : trimmed(line.substr(split + 1));
        if (!value.empty() && value.front() == '=')
            value = trimmed(value.substr(1));
        if (key == "tool-channel" && (value == "stable" || value == "nightly"))
            settings.toolChannel = value;
        else
            settings.problems.push_back("kestreldl2.conf: ignored \"" + line
                                        + "\" (tool-channel is stable or nightly; nothing else is known)");
    }
    return settings;
}

LauncherSettings LauncherSettings::load(const std::string &folder)
{
    const std::optional<std::string> text = readFile(folder + "/kestreldl2.conf", maxSettingsBytes);
    return text ? parse(*text) : LauncherSettings();
}

} // namespace Launcher
