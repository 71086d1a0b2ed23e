#include "toolrun.h"

#include "childprocess.h"
#include "platform.h"
#include "posixchild.h"
#include "toollog.h"
#include "writeall.h"

#include <cerrno>
#include <optional>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Launcher {

namespace {

constexpr int passedOnSignals[] = {SIGINT, SIGHUP};

volatile sig_atomic_t toolGroup = 0;
// Written to by the SIGCHLD handler, so that the loop that copies the
// tool's standard error wakes up when the tool ends.
int childEndedPipe[2] = {-1, -1};

void stopRun(int)
{
    const pid_t group = toolGroup;
    if (group > 0)
        ::kill(-group, SIGKILL);
    ::_exit(1);
}

void passOn(int signal)
{
    const int savedErrno = errno;
    const pid_t group = toolGroup;
    if (group > 0)
        ::kill(-group, signal);
    errno = savedErrno;
}

void noteChildEnded(int)
{
    const int savedErrno = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t ignored = ::write(childEndedPipe[1], &byte, 1);
    errno = savedErrno;
}

void handle(int signal, void (*handler)(int))
{
    struct sigaction action;
    std::memset(&action, 0, sizeof action);
    action.sa_handler = handler;
    // No handler runs inside another: each reads toolGroup once.
    ::sigfillset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

sigset_t handledSignals()
{
    sigset_t set;
    ::sigemptyset(&set);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGCHLD})
        ::sigaddset(&set, signal);
    return set;
}

// Copies what is readable on fd to the launcher's standard error and the
// log; false at the end of the stream.
bool copyErrorOutput(int fd, ToolLog &log)
{
    char buffer[16 * 1024];
    const ssize_t n = ::read(fd, buffer, sizeof buffer);
    if (n < 0)
        return errno == EINTR || errno == EAGAIN;
    if (n == 0)
        return false;
    writeAll(STDERR_FILENO, buffer, std::size_t(n));
    log.appendError(buffer, std::size_t(n));
    return true;
}

void nullStreams()
{
    const int null = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    for (int fd = 0; fd <= 2; ++fd)
        ::dup2(null, fd);
}

// A process of the launcher's that ends the tool's group when the launcher
// ends without being able to do it itself: killed with SIGKILL, which the
// application's kill rule falls back to and which QProcess sends when it is
// destroyed. The tool dies with the launcher by itself (PR_SET_PDEATHSIG);
// what it started, such as ffmpeg, would not.
pid_t startGuardian(pid_t group)
{
    const pid_t launcher = ::getpid();
    const pid_t guardian = ::fork();
    if (guardian != 0)
        return guardian;
    // Nothing of the launcher's streams stays open in here: the application
    // reads the launcher's output until its end.
    nullStreams();
    for (int fd = 3; fd < 1024; ++fd)
        ::close(fd);
    toolGroup = group;
    handle(SIGTERM, stopRun);
    ::signal(SIGINT, SIG_IGN);
    ::signal(SIGHUP, SIG_IGN);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != launcher)
        stopRun(SIGTERM);
    sigset_t onlyStop;
    ::sigfillset(&onlyStop);
    ::sigdelset(&onlyStop, SIGTERM);
    for (;;)
        ::sigsuspend(&onlyStop);
}

bool hasEnded(pid_t pid)
{
    siginfo_t info;
    std::memset(&info, 0, sizeof info);
    // Not reaped yet: until then the group's id cannot be given to another
    // process, so a signal sent to the group cannot hit a stranger.
    return ::waitid(P_PID, id_t(pid), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == pid;
}

// The process whose end ends the launcher: the application, which names
// itself in KESTREL_APP_PID for its children; else whoever started it.
pid_t expectedParent()
{
    const long named = applicationProcessId();
    return named > 1 ? pid_t(named) : ::getppid();
}

} // namespace

void endRunOnStop()
{
    rememberInheritedSignals();
    // Writing a note to a closed standard error must not kill the launcher.
    std::signal(SIGPIPE, SIG_IGN);
    const pid_t parent = expectedParent();
    handle(SIGTERM, stopRun);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent)
        ::_exit(1);
}

void replaceProcess(const std::string &program, char *argv[])
{
    ::execv(program.c_str(), argv);
}

void startBesideRun(const std::vector<std::string> &arguments)
{
    const std::string program = executablePath();
    std::vector<char *> argv{const_cast<char *>(program.c_str())};
    for (const std::string &argument : arguments)
        argv.push_back(const_cast<char *>(argument.c_str()));
    argv.push_back(nullptr);
    // Started through a middle process that ends at once, so that the
    // process that does the work is no child of the launcher's: the system,
    // not the run, reaps it when it ends.
    const pid_t middle = ::fork();
    if (middle < 0)
        return;
    if (middle == 0) {
        // The run's handlers belong to the launcher that waits for the tool:
        // a stop reaching this process must not end the tool's group.
        for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGCHLD})
            ::signal(signal, SIG_DFL);
        ::setsid();
        // Before the launcher goes on: from then on nothing of its holds
        // the run's streams.
        nullStreams();
        if (::fork() == 0) {
            sigset_t none;
            ::sigemptyset(&none);
            ::sigprocmask(SIG_SETMASK, &none, nullptr);
            ::execv(program.c_str(), argv.data());
        }
        ::_exit(0);
    }
    while (::waitpid(middle, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void endAfter(int seconds)
{
    ::signal(SIGALRM, SIG_DFL);
    ::alarm(unsigned(seconds));
}

std::optional<ChildEnd> runTool(const std::string &tool, const std::vector<std::string> &arguments, ToolLog &log,
                           int *error, const std::function<void()> &whenStarted)
{
    // Blocked until the group is known, so that no signal arriving
    // meanwhile is lost or misses the tool; the child restores the mask.
    const sigset_t handled = handledSignals();
    sigset_t before;
    ::sigprocmask(SIG_BLOCK, &handled, &before);

    int errorPipe[2];
    if (::pipe2(childEndedPipe, O_CLOEXEC | O_NONBLOCK) != 0 || ::pipe2(errorPipe, O_CLOEXEC) != 0) {
        *error = errno;
        ::sigprocmask(SIG_SETMASK, &before, nullptr);
        return std::nullopt;
    }
    handle(SIGCHLD, noteChildEnded);
    for (const int signal : passedOnSignals) {
        if (!inheritedIgnore(signal))
            handle(signal, passOn);
    }

    std::vector<std::string> argv{tool};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    ChildSetup setup;
    setup.err = errorPipe[1];
    setup.ownProcessGroup = true;
    log.beginRun(tool, arguments);
    const pid_t pid = startChild(tool, argv, setup, nullptr, error);
    ::close(errorPipe[1]);
    if (pid < 0) {
        ::close(errorPipe[0]);
        ::sigprocmask(SIG_SETMASK, &before, nullptr);
        log.note(std::string("cannot run ") + tool + ": " + std::strerror(*error));
        return std::nullopt;
    }
    // Also done by the child; whichever comes first, the group exists before
    // anything is sent to it.
    ::setpgid(pid, pid);
    toolGroup = pid;
    const pid_t guardian = startGuardian(pid);
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    if (whenStarted)
        whenStarted();

    bool errorOpen = true;
    while (!hasEnded(pid)) {
        pollfd watched[2] = {{childEndedPipe[0], POLLIN, 0}, {errorOpen ? errorPipe[0] : -1, POLLIN, 0}};
        if (::poll(watched, 2, -1) < 0)
            continue;
        if (watched[1].revents != 0)
            errorOpen = copyErrorOutput(errorPipe[0], log);
        char drained[64];
        while (::read(childEndedPipe[0], drained, sizeof drained) > 0) {
        }
    }
    // What the tool wrote just before it ended; a child it left behind may
    // hold the stream open, so only what is there now.
    ::fcntl(errorPipe[0], F_SETFL, O_NONBLOCK);
    while (errorOpen && copyErrorOutput(errorPipe[0], log)) {
        pollfd readable{errorPipe[0], POLLIN, 0};
        if (::poll(&readable, 1, 0) <= 0)
            break;
    }
    ::close(errorPipe[0]);

    ::sigprocmask(SIG_BLOCK, &handled, nullptr);
    toolGroup = 0;
    ::kill(-pid, SIGKILL);
    // The guardian ends only when the stop reached it: the kill rule sends
    // SIGTERM to the guardian and the launcher alike, and when the guardian
    // was first, the tool is gone before the launcher's own SIGTERM (blocked
    // now) is handled. The run then ends as a stopped run, not as the tool's
    // death by SIGKILL.
    bool stopped = false;
    if (guardian > 0) {
        stopped = hasEnded(guardian);
        ::kill(guardian, SIGKILL);
        while (::waitpid(guardian, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    if (stopped)
        ::_exit(1);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    const ChildEnd end = ChildEnd::fromSystemStatus(status);
    log.endRun(end);
    // Ready for another run: the run's pipe goes, and the signals are as
    // they were before it, a stop that came meanwhile included.
    ::signal(SIGCHLD, SIG_DFL);
    ::close(childEndedPipe[0]);
    ::close(childEndedPipe[1]);
    childEndedPipe[0] = childEndedPipe[1] = -1;
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    return end;
}

} // namespace Launcher
