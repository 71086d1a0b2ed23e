#include "installstate.h"

#include "platform.h"
#include "scratchfile.h"

#include <cstdlib>
#include <sstream>

namespace Launcher {

namespace {

const char stateFileName[] = "kestreldl2.state";
const std::string copiedFromKey = "copied-from:";
constexpr std::size_t maxStateBytes = 64 * 1024;

std::int64_t number(const std::string &text)
{
    char *end = nullptr;
    const long long value = std::strtoll(text.c_str(), &end, 10);
    return end && *end == '\0' && value > 0 ? std::int64_t(value) : 0;
}

} // namespace

InstallState InstallState::load(const std::string &folder)
{
    InstallState state;
    std::istringstream file(readFile(folder + '/' + stateFileName, maxStateBytes).value_or(std::string()));
    std::string line;
    while (std::getline(file, line)) {
        const std::size_t space = line.find(' ');
        if (space == std::string::npos)
            continue;
        const std::string key = line.substr(0, space);
        const std::string value = line.substr(space + 1);
        if (key == "last-check")
            state.lastCheck = number(value);
        else if (key == "last-failure")
            state.lastFailure = number(value);
        else if (key == "runtime-archive-sum")
            state.runtimeArchiveSum = value;
        else if (key == "tool-version")
            state.toolVersion = value;
        else if (key == "highest-tool-version")
            state.highestToolVersion = value;
        else if (key.compare(0, copiedFromKey.size(), copiedFromKey) == 0)
            state.copiedFrom[key.substr(copiedFromKey.size())] = value;
    }
    return state;
}

bool InstallState::save(const std::string &folder) const
{
    std::ostringstream text;
    text << "last-check " << lastCheck << '\n'
         << "last-failure " << lastFailure << '\n'
         << "runtime-archive-sum " << runtimeArchiveSum << '\n'
         << "tool-version " << toolVersion << '\n'
         << "highest-tool-version " << highestToolVersion << '\n';
    for (const auto &[name, source] : copiedFrom)
        text << copiedFromKey << name << ' ' << source << '\n';
    ScratchFile file(folder, "state");
    return file.write(text.str()) && file.moveTo(folder + '/' + stateFileName);
}

} // namespace Launcher
