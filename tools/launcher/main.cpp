// kestreldl2 on Linux: runs the system's yt-dlp with the arguments the
// application gives, as its child, and ends the way yt-dlp ended.
//
// The application stops a download by killing every process whose
// executable is this file, and judges a run by whether it ended by a signal,
// so the launcher must not outlive yt-dlp's purpose nor hide how it ended.
// It writes nothing to standard output: that is yt-dlp's, read by the
// application byte for byte.

#include "childprocess.h"
#include "flagcache.h"
#include "toolflags.h"
#include "toollocation.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

// Long enough for a cold Python start on a busy machine; a probe that takes
// longer proves nothing and the flag is then passed on unchanged.
constexpr int probeTimeoutMs = 20000;

const char cacheFileName[] = "kestreldl2.flags";

void note(const std::string &text)
{
    const std::string line = "kestreldl2: " + text + '\n';
    std::size_t written = 0;
    while (written < line.size()) {
        const ssize_t n = ::write(STDERR_FILENO, line.data() + written, line.size() - written);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return;
        written += std::size_t(n);
    }
}

// arguments without the checked flags that tool does not know. The answers
// are kept in a file beside the launcher; when that file cannot be read or
// written the tool is simply asked again next time.
std::vector<std::string> withoutUnknownFlags(const std::string &tool, const std::vector<std::string> &arguments,
                                             const std::vector<std::string> &checked)
{
    const std::string folder = Launcher::ownFolder();
    const std::string cachePath = folder.empty() ? std::string() : folder + '/' + cacheFileName;
    const std::optional<Launcher::ToolIdentity> identity = Launcher::identifyTool(tool);
    const bool canCache = identity && !cachePath.empty();
    Launcher::FlagCache cache = canCache ? Launcher::FlagCache::load(cachePath) : Launcher::FlagCache();
    bool learnt = false;

    std::set<std::string> unknown;
    for (const std::string &flag : checked) {
        std::optional<bool> supported = canCache ? cache.supports(*identity, flag) : std::nullopt;
        if (!supported) {
            const Launcher::ToolFlag *details = Launcher::findToolFlag(flag);
            const char *trialValue = details && details->takesValue ? details->trialValue : nullptr;
            const Launcher::FlagSupport answer = Launcher::probeFlagSupport(tool, flag, trialValue, probeTimeoutMs);
            if (answer != Launcher::FlagSupport::Undetermined) {
                supported = answer == Launcher::FlagSupport::Supported;
                if (canCache) {
                    cache.setSupports(*identity, flag, *supported);
                    learnt = true;
                }
            }
        }
        if (supported && !*supported)
            unknown.insert(flag);
    }

    if (unknown.empty()) {
        if (learnt)
            cache.save(cachePath);
        return arguments;
    }

    std::optional<std::string> version = canCache ? cache.version(*identity) : std::nullopt;
    if (!version) {
        version = Launcher::queryToolVersion(tool, probeTimeoutMs);
        if (version && canCache) {
            cache.setVersion(*identity, *version);
            learnt = true;
        }
    }
    if (learnt)
        cache.save(cachePath);

    std::vector<Launcher::DroppedFlag> dropped;
    const std::vector<std::string> kept = Launcher::dropFlags(arguments, unknown, &dropped);
    const std::string toolName = version ? "yt-dlp " + *version : tool;
    std::set<std::string> told;
    for (const Launcher::DroppedFlag &flag : dropped) {
        if (told.insert(flag.flag).second)
            note("dropped " + flag.text + " (not known to " + toolName + ")");
    }
    return kept;
}

} // namespace

int main(int argc, char *argv[])
{
    Launcher::rememberInheritedSignals();
    std::signal(SIGPIPE, SIG_IGN);

    std::string problem;
    const std::string tool = Launcher::findTool(&problem);
    if (tool.empty()) {
        note("cannot find yt-dlp; install the Debian package yt-dlp");
        note(problem);
        return 127;
    }

    std::vector<std::string> arguments(argv + 1, argv + argc);
    const std::vector<std::string> checked = Launcher::flagsToCheck(arguments);
    if (!checked.empty())
        arguments = withoutUnknownFlags(tool, arguments, checked);

    int error = 0;
    const int status = Launcher::runTool(tool, arguments, &error);
    if (status < 0) {
        note("cannot run " + tool + ": " + std::strerror(error));
        return 127;
    }
    Launcher::exitLike(status);
}
