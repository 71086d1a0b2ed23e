#pragma once

#include "childend.h"

#include <optional>
#include <string>
#include <vector>

namespace Launcher {

// What a child that wrote one of its streams to a pipe printed there, and how
// it ended; no end when it did not end within the time given (it is then
// killed).
struct CapturedRun
{
    bool started = false;
    std::optional<ChildEnd> end;
    std::string text;
};

enum class CapturedStream { Output, Error };

// Runs program with arguments (argv[0] is program) as a child that dies with
// the launcher, with its standard input from the null device and the
// captured stream read into the result; the other stream goes to the null
// device. environment replaces the launcher's own when given.
CapturedRun runCaptured(const std::string &program, const std::vector<std::string> &arguments,
                        CapturedStream captured, const std::vector<std::string> *environment, int timeoutMs);

// The launcher's environment with the option parser's messages in English,
// which is what the probe reads.
std::vector<std::string> untranslatedEnvironment();

// The first line program printed on standard output when run with
// arguments, if it printed one of printable ASCII within timeoutMs and, when
// needsSuccess, ended with exit code 0.
std::optional<std::string> firstOutputLine(const std::string &program, const std::vector<std::string> &arguments,
                                           int timeoutMs, bool needsSuccess);

enum class FlagSupport { Supported, Unsupported, Undetermined };

// The command line that asks tool whether it knows flag, without arguments[0].
std::vector<std::string> probeArguments(const std::string &flag, const char *trialValue);

// Asks tool whether it knows flag; trialValue is given with a flag that takes
// a value and is nullptr for a switch. Undetermined when the answer is not
// one yt-dlp's option parser gives (the tool crashed, hung for timeoutMs, or
// could not start), so that nothing is concluded from it.
FlagSupport probeFlagSupport(const std::string &tool, const std::string &flag, const char *trialValue,
                             int timeoutMs);

// The version tool reports, such as "2023.03.04", if it reports one within
// timeoutMs.
std::optional<std::string> queryToolVersion(const std::string &tool, int timeoutMs);

// Ends the launcher as a crash without a core file (SIGABRT; on Windows an
// NTSTATUS error code): how it reports a failure that the application must
// see as one.
[[noreturn]] void endAsCrash();

// Ends the launcher as the child ended: with its exit code, or by the same
// signal.
[[noreturn]] void exitLike(const ChildEnd &end);

} // namespace Launcher
