#include "childprocess.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace Launcher {

namespace {

// The signals the launcher handles itself (toolrun.cpp), and SIGPIPE, which
// it ignores so that writing a note to a closed stderr cannot kill it.
constexpr int changedSignals[] = {SIGPIPE, SIGTERM, SIGINT, SIGHUP, SIGCHLD};
constexpr std::size_t changedCount = sizeof changedSignals / sizeof changedSignals[0];

struct sigaction inheritedActions[changedCount];
sigset_t inheritedMask;

// Runs in the child between fork() and exec(): async-signal-safe calls only.
void restoreInheritedSignals()
{
    for (std::size_t i = 0; i < changedCount; ++i)
        ::sigaction(changedSignals[i], &inheritedActions[i], nullptr);
    ::sigprocmask(SIG_SETMASK, &inheritedMask, nullptr);
}

void placeStream(int fd, int target)
{
    if (fd < 0)
        return;
    if (fd == target)
        ::fcntl(fd, F_SETFD, 0); // dup2() would leave close-on-exec set
    else
        ::dup2(fd, target);
}

long long nowMs()
{
    timespec now;
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long long>(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

int openNull(int flags)
{
    return ::open("/dev/null", flags | O_CLOEXEC);
}

// The launcher's environment with the parser's messages in English, which
// is what the probe reads.
std::vector<std::string> untranslatedEnvironment()
{
    std::vector<std::string> environment;
    for (char **entry = environ; entry && *entry; ++entry) {
        if (std::strncmp(*entry, "LC_ALL=", 7) != 0 && std::strncmp(*entry, "LANGUAGE=", 9) != 0)
            environment.emplace_back(*entry);
    }
    environment.emplace_back("LC_ALL=C");
    environment.emplace_back("LANGUAGE=C");
    return environment;
}

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

CapturedRun runCaptured(const std::string &program, const std::vector<std::string> &arguments, int capturedStream,
                        const std::vector<std::string> *environment, int timeoutMs)
{
    CapturedRun run;
    int pipeFds[2];
    if (::pipe2(pipeFds, O_CLOEXEC) != 0)
        return run;
    const int nullIn = openNull(O_RDONLY);
    const int nullOut = openNull(O_WRONLY);

    ChildSetup setup;
    setup.in = nullIn;
    setup.out = capturedStream == STDOUT_FILENO ? pipeFds[1] : nullOut;
    setup.err = capturedStream == STDERR_FILENO ? pipeFds[1] : nullOut;
    int error = 0;
    const pid_t pid = startChild(program, arguments, setup, environment, &error);
    ::close(pipeFds[1]);
    if (nullIn >= 0)
        ::close(nullIn);
    if (nullOut >= 0)
        ::close(nullOut);
    if (pid < 0) {
        ::close(pipeFds[0]);
        return run;
    }
    run.started = true;

    // Enough for any parser message; the rest is read and let go.
    constexpr std::size_t keptBytes = 64 * 1024;
    const long long deadline = nowMs() + timeoutMs;
    bool open = true;
    while (open) {
        const long long remaining = deadline - nowMs();
        if (remaining <= 0)
            break;
        pollfd readable{pipeFds[0], POLLIN, 0};
        const int ready = ::poll(&readable, 1, int(remaining));
        if (ready < 0 && errno != EINTR)
            break;
        if (ready <= 0)
            continue;
        char buffer[4096];
        const ssize_t n = ::read(pipeFds[0], buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            open = false;
            break;
        }
        if (run.text.size() < keptBytes)
            run.text.append(buffer, std::size_t(n));
    }
    ::close(pipeFds[0]);

    for (;;) {
        const pid_t waited = ::waitpid(pid, &run.status, WNOHANG);
        if (waited == pid) {
            run.finished = true;
            break;
        }
        if (waited < 0 && errno != EINTR)
            break;
        if (nowMs() >= deadline) {
            ::kill(pid, SIGKILL);
            while (::waitpid(pid, &run.status, 0) < 0 && errno == EINTR) {
            }
            break;
        }
        const timespec pause{0, 2 * 1000 * 1000};
        ::nanosleep(&pause, nullptr);
    }
    return run;
}

void rememberInheritedSignals()
{
    for (std::size_t i = 0; i < changedCount; ++i)
        ::sigaction(changedSignals[i], nullptr, &inheritedActions[i]);
    ::sigprocmask(SIG_SETMASK, nullptr, &inheritedMask);
}

bool inheritedIgnore(int signal)
{
    for (std::size_t i = 0; i < changedCount; ++i) {
        if (changedSignals[i] == signal)
            return inheritedActions[i].sa_handler == SIG_IGN;
    }
    return false;
}

pid_t startChild(const std::string &program, const std::vector<std::string> &arguments,
                 const ChildSetup &setup, const std::vector<std::string> *environment, int *error)
{
    // Everything the child uses is made before fork(): after it, the child
    // may only make async-signal-safe calls.
    std::vector<char *> argv;
    for (const std::string &argument : arguments)
        argv.push_back(const_cast<char *>(argument.c_str()));
    argv.push_back(nullptr);
    std::vector<char *> envp;
    if (environment) {
        for (const std::string &entry : *environment)
            envp.push_back(const_cast<char *>(entry.c_str()));
        envp.push_back(nullptr);
    }
    char *const *childEnvironment = environment ? envp.data() : environ;

    // Tells the parent why exec() failed; closes unread when exec() succeeds.
    int failure[2];
    if (::pipe2(failure, O_CLOEXEC) != 0) {
        *error = errno;
        return -1;
    }

    const pid_t parent = ::getpid();
    const pid_t pid = ::fork();
    if (pid < 0) {
        *error = errno;
        ::close(failure[0]);
        ::close(failure[1]);
        return -1;
    }
    if (pid == 0) {
        ::close(failure[0]);
        placeStream(setup.in, STDIN_FILENO);
        placeStream(setup.out, STDOUT_FILENO);
        placeStream(setup.err, STDERR_FILENO);
        if (setup.ownProcessGroup)
            ::setpgid(0, 0);
        restoreInheritedSignals();
        int reason = 0;
        if (::prctl(PR_SET_PDEATHSIG, SIGKILL) != 0) {
            reason = errno;
        } else {
            // The launcher may have died before the request above, too late
            // for the kernel to act on it.
            if (::getppid() != parent)
                ::raise(SIGKILL);
            ::execve(program.c_str(), argv.data(), childEnvironment);
            reason = errno;
        }
        while (::write(failure[1], &reason, sizeof reason) < 0 && errno == EINTR) {
        }
        ::_exit(127);
    }

    ::close(failure[1]);
    int reason = 0;
    ssize_t n;
    while ((n = ::read(failure[0], &reason, sizeof reason)) < 0 && errno == EINTR) {
    }
    ::close(failure[0]);
    if (n == ssize_t(sizeof reason)) {
        while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
        }
        *error = reason;
        return -1;
    }
    return pid;
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
    const CapturedRun run = runCaptured(tool, arguments, STDERR_FILENO, &environment, timeoutMs);
    if (!run.started)
        return FlagSupport::Undetermined;
    if (hasLine(run.text, "no such option: " + flag))
        return FlagSupport::Unsupported;
    // Exit code 2 is the option parser's usage error: it read the flag and
    // stopped at the missing address. A crash, a hang or a Python error
    // (exit code 1) tells nothing about the flag.
    if (run.finished && WIFEXITED(run.status) && WEXITSTATUS(run.status) == 2)
        return FlagSupport::Supported;
    return FlagSupport::Undetermined;
}

std::optional<std::string> firstOutputLine(const std::string &program, const std::vector<std::string> &arguments,
                                           int timeoutMs, bool needsSuccess)
{
    std::vector<std::string> argv{program};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    const CapturedRun run = runCaptured(program, argv, STDOUT_FILENO, nullptr, timeoutMs);
    if (!run.finished)
        return std::nullopt;
    if (needsSuccess && (!WIFEXITED(run.status) || WEXITSTATUS(run.status) != 0))
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

void exitLike(int waitStatus)
{
    if (WIFEXITED(waitStatus))
        ::_exit(WEXITSTATUS(waitStatus));
    if (!WIFSIGNALED(waitStatus))
        ::_exit(1);
    endBySignal(WTERMSIG(waitStatus));
}

void endBySignal(int signal)
{
    // A core file of the launcher would be useless: a crashed child has
    // written its own, and a refused update has nothing to show. A core pattern that
    // pipes to a program (systemd-coredump) ignores RLIMIT_CORE, so the
    // launcher also makes itself non-dumpable.
    rlimit core;
    if (::getrlimit(RLIMIT_CORE, &core) == 0) {
        core.rlim_cur = 0;
        ::setrlimit(RLIMIT_CORE, &core);
    }
    ::prctl(PR_SET_DUMPABLE, 0);

    struct sigaction standard;
    std::memset(&standard, 0, sizeof standard);
    standard.sa_handler = SIG_DFL;
    ::sigemptyset(&standard.sa_mask);
    ::sigaction(signal, &standard, nullptr);
    sigset_t only;
    ::sigemptyset(&only);
    ::sigaddset(&only, signal);
    ::sigprocmask(SIG_UNBLOCK, &only, nullptr);
    ::raise(signal);
    // Reached only for a signal whose default action is not to terminate.
    ::_exit(128 + signal);
}

} // namespace Launcher
