#include "childprocess.h"
#include "posixchild.h"

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

} // namespace

CapturedRun runCaptured(const std::string &program, const std::vector<std::string> &arguments,
                        CapturedStream captured, const std::vector<std::string> *environment, int timeoutMs)
{
    CapturedRun run;
    int pipeFds[2];
    if (::pipe2(pipeFds, O_CLOEXEC) != 0)
        return run;
    const int nullIn = openNull(O_RDONLY);
    const int nullOut = openNull(O_WRONLY);

    ChildSetup setup;
    setup.in = nullIn;
    setup.out = captured == CapturedStream::Output ? pipeFds[1] : nullOut;
    setup.err = captured == CapturedStream::Error ? pipeFds[1] : nullOut;
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
        int status = 0;
        const pid_t waited = ::waitpid(pid, &status, WNOHANG);
        if (waited == pid) {
            run.end = ChildEnd::fromSystemStatus(status);
            break;
        }
        if (waited < 0 && errno != EINTR)
            break;
        if (nowMs() >= deadline) {
            ::kill(pid, SIGKILL);
            while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
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

namespace {

[[noreturn]] void endBySignal(int signal)
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

} // namespace

void endAsCrash()
{
    endBySignal(SIGABRT);
}

void exitLike(const ChildEnd &end)
{
    if (const std::optional<int> code = end.exitCode())
        ::_exit(*code);
    endBySignal(*end.signal());
}

} // namespace Launcher
