#include "childprocess.h"

#include "platform.h"

namespace Launcher {

namespace {

bool hasLine(const std::string &text, const std::string &line)
{
    for (std::size_t at = text.find(line); at != std::string::npos; at = text.find(line, at + 1)) {
        const std::size_t end = at + line.size();
        if (end == text.size() || text[end] == '\n' || text[end] == '\r')
            return true;
    }
    return false;
}

} // namespace

std::vector<std::string> untranslatedEnvironment()
{
    std::vector<std::string> environment;
    for (const std::string &entry : environmentEntries()) {
        if (entry.compare(0, 7, "LC_ALL=") != 0 && entry.compare(0, 9, "LANGUAGE=") != 0)
            environment.push_back(entry);
    }
    environment.emplace_back("LC_ALL=C");
    environment.emplace_back("LANGUAGE=C");
    return environment;
}

std::vector<std::string> probeArguments(const std::string &flag, const char *trialValue)
{
    // No address is given, so yt-dlp reads the whole command line and then
    // stops with a usage error before doing anything: "no such option: FLAG"
    // when it does not know the flag, "You must provide at least one URL"
    // when it does. The value is joined with "=" so that it can never be
    // taken for an address. --ignore-config keeps the user's configuration
    // files, which may hold options of their own, out of the answer, and
    // --simulate makes sure nothing would be downloaded in any case.
    return {"--ignore-config", trialValue ? flag + '=' + trialValue : flag, "--simulate"};
}

FlagSupport probeFlagSupport(const std::string &tool, const std::string &flag, const char *trialValue,
                             int timeoutMs)
{
    std::vector<std::string> arguments{tool};
    for (const std::string &argument : probeArguments(flag, trialValue))
        arguments.push_back(argument);
    const std::vector<std::string> environment = untranslatedEnvironment();
    const CapturedRun run = runCaptured(tool, arguments, CapturedStream::Error, &environment, timeoutMs);
    if (!run.started)
        return FlagSupport::Undetermined;
    if (hasLine(run.text, "no such option: " + flag))
        return FlagSupport::Unsupported;
    // Exit code 2 is the option parser's usage error: it read the flag and
    // stopped at the missing address. A crash, a hang or a Python error
    // (exit code 1) tells nothing about the flag.
    if (run.end && run.end->exitedWith(2))
        return FlagSupport::Supported;
    return FlagSupport::Undetermined;
}

std::optional<std::string> firstOutputLine(const std::string &program, const std::vector<std::string> &arguments,
                                           int timeoutMs, bool needsSuccess)
{
    std::vector<std::string> argv{program};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    const CapturedRun run = runCaptured(program, argv, CapturedStream::Output, nullptr, timeoutMs);
    if (!run.end)
        return std::nullopt;
    if (needsSuccess && !run.end->exitedWith(0))
        return std::nullopt;
    std::string line = run.text.substr(0, run.text.find_first_of("\r\n"));
    if (line.empty() || line.size() > 200)
        return std::nullopt;
    for (const char c : line) {
        if (c < 0x20 || c > 0x7e)
            return std::nullopt;
    }
    return line;
}

std::optional<std::string> queryToolVersion(const std::string &tool, int timeoutMs)
{
    std::optional<std::string> version = firstOutputLine(tool, {"--ignore-config", "--version"}, timeoutMs, true);
    if (version && (version->size() > 64 || version->find(' ') != std::string::npos))
        return std::nullopt;
    return version;
}

} // namespace Launcher
