#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace Launcher {

// Notes the signal dispositions and mask the launcher was started with, so
// that every child starts with them whatever the launcher changes for
// itself. Called first thing in main().
void rememberInheritedSignals();

// Whether the launcher was started with signal ignored: such a signal stays
// ignored, in the launcher and in its children.
bool inheritedIgnore(int signal);

// How a child starts: where its standard streams go (a descriptor, or -1
// for the launcher's own stream, which the child then shares untouched),
// and whether it leads a process group of its own, which the launcher can
// end as a whole with everything the child starts.
struct ChildSetup
{
    int in = -1;
    int out = -1;
    int err = -1;
    bool ownProcessGroup = false;
};

// Starts program with arguments (argv[0] is program) as a child that the
// kernel kills when the launcher dies, however it dies: the application
// stops a download by killing the launcher with SIGKILL, and yt-dlp must not
// go on downloading after it. environment replaces the launcher's own when
// given. Returns the child's id, or -1 with *error set when the program
// could not be started.
pid_t startChild(const std::string &program, const std::vector<std::string> &arguments,
                 const ChildSetup &setup, const std::vector<std::string> *environment, int *error);

// What a child that wrote one of its streams to a pipe printed there, and how
// it ended; finished is false when it did not end within the time given (it
// is then killed).
struct CapturedRun
{
    bool started = false;
    bool finished = false;
    int status = 0;
    std::string text;
};

// Runs program with arguments (argv[0] is program) with its standard input
// from /dev/null and capturedStream (STDOUT_FILENO or STDERR_FILENO) read
// into the result; the other stream goes to /dev/null.
CapturedRun runCaptured(const std::string &program, const std::vector<std::string> &arguments, int capturedStream,
                        const std::vector<std::string> *environment, int timeoutMs);

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

// Ends the launcher by signal, without a core file: how it reports a
// failure that the application must see as a crash.
[[noreturn]] void endBySignal(int signal);

// Ends the launcher as the child with waitStatus ended: with its exit code,
// or by the same signal.
[[noreturn]] void exitLike(int waitStatus);

} // namespace Launcher
