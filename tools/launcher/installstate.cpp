#include "installstate.h"

#include "platform.h"
#include "scratchfile.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace Launcher {

namespace {

const char stateFileName[] = "kestreldl2.state";
const std::string copiedFromKey = "copied-from:";
const std::string highestKey = "highest-tool-version:";
constexpr std::size_t maxStateBytes = 64 * 1024;
constexpr std::int64_t firstRetryWaitSeconds = 3600;
constexpr std::int64_t longestRetryWaitSeconds = 24 * 3600;

std::int64_t number(const std::string &text)
{
    char *end = nullptr;
    const long long value = std::strtoll(text.c_str(), &end, 10);
    return end && *end == '\0' && value > 0 ? std::int64_t(value) : 0;
}

std::int64_t retryWait(int failures)
{
    std::int64_t wait = firstRetryWaitSeconds;
    for (int i = 1; i < failures && wait < longestRetryWaitSeconds; ++i)
        wait *= 2;
    return std::min(wait, longestRetryWaitSeconds);
}

} // namespace

bool InstallState::mayAttempt(std::time_t now) const
{
    // A failure "in the future" means the clock was put back: no wait.
    return failures == 0 || lastFailure > now || now - lastFailure >= retryWait(failures);
}

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
        else if (key == "failures")
            state.failures = int(std::min<std::int64_t>(number(value), 1000));
        else if (key == "runtime-archive-sum")
            state.runtimeArchiveSum = value;
        else if (key == "tool-version")
            state.toolVersion = value;
        else if (key == "tool-channel")
            state.toolChannel = value;
        else if (key == "highest-tool-version")
            state.highestToolVersion["stable"] = value;
        else if (key.compare(0, highestKey.size(), highestKey) == 0)
            state.highestToolVersion[key.substr(highestKey.size())] = value;
        else if (key.compare(0, copiedFromKey.size(), copiedFromKey) == 0)
            state.copiedFrom[key.substr(copiedFromKey.size())] = value;
    }
    // An older launcher kept the time of the last failure but not the count.
    if (state.failures == 0 && state.lastFailure > 0)
        state.failures = 1;
    return state;
}

bool InstallState::save(const std::string &folder) const
{
    std::ostringstream text;
    text << "last-check " << lastCheck << '\n'
         << "last-failure " << lastFailure << '\n'
         << "failures " << failures << '\n'
         << "runtime-archive-sum " << runtimeArchiveSum << '\n'
         << "tool-version " << toolVersion << '\n'
         << "tool-channel " << toolChannel << '\n';
    for (const auto &[channel, version] : highestToolVersion)
        text << highestKey << channel << ' ' << version << '\n';
    for (const auto &[name, source] : copiedFrom)
        text << copiedFromKey << name << ' ' << source << '\n';
    ScratchFile file(folder, "state");
    return file.write(text.str()) && file.moveTo(folder + '/' + stateFileName);
}

} // namespace Launcher
