#include "toolrun.h"

#include "commandline.h"
#include "platform.h"
#include "toollog.h"
#include "widetext.h"
#include "windowschild.h"
#include "writeall.h"

#include <windows.h>
#include <tlhelp32.h>

#include <fcntl.h>
#include <io.h>

#include <optional>
#include <thread>

namespace Launcher {

namespace {

// The process that started the launcher, from the system's process list.
DWORD parentProcessId()
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return 0;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    DWORD parent = 0;
    const DWORD self = GetCurrentProcessId();
    for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry)) {
        if (entry.th32ProcessID == self) {
            parent = entry.th32ParentProcessID;
            break;
        }
    }
    CloseHandle(snapshot);
    return parent;
}

std::uint64_t creationTime(HANDLE process)
{
    FILETIME created, exited, kernel, user;
    if (!GetProcessTimes(process, &created, &exited, &kernel, &user))
        return 0;
    return (std::uint64_t(created.dwHighDateTime) << 32) | created.dwLowDateTime;
}

// A handle to the process with id pid if it is still the one that was
// there before the launcher: a process id is reused once its process ends.
HANDLE openOlderProcess(DWORD pid)
{
    const HANDLE process = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid);
    if (!process)
        return nullptr;
    const std::uint64_t started = creationTime(process);
    if (started == 0 || started > creationTime(GetCurrentProcess()) || WaitForSingleObject(process, 0) == WAIT_OBJECT_0) {
        CloseHandle(process);
        return nullptr;
    }
    return process;
}

// Copies the tool's standard error to the launcher's and into the log,
// until the pipe's end.
void copyErrorOutput(HANDLE pipe, ToolLog &log)
{
    char buffer[16 * 1024];
    DWORD n = 0;
    while (ReadFile(pipe, buffer, sizeof buffer, &n, nullptr) && n > 0) {
        writeAll(2, buffer, n);
        log.appendError(buffer, n);
    }
}

} // namespace

void endRunOnStop()
{
    // The launcher's own notes and the tool's standard error pass through
    // byte for byte, with no line ends added.
    _setmode(1, _O_BINARY);
    _setmode(2, _O_BINARY);
    // The application when it names itself, else whoever started the
    // launcher, if that is a process of this system that still runs.
    const long named = applicationProcessId();
    const DWORD application = named > 0 ? DWORD(named) : 0;
    const HANDLE parent = openOlderProcess(application ? application : parentProcessId());
    if (!parent) {
        if (application)
            endNow(1);
        return;
    }
    // Ending the process closes the handle of the tool's job, which kills the
    // tool and everything it started.
    std::thread([parent] {
        WaitForSingleObject(parent, INFINITE);
        endNow(1);
    }).detach();
}

std::optional<ChildEnd> runTool(const std::string &tool, const std::vector<std::string> &arguments, ToolLog &log,
                           int *error, const std::function<void()> &whenStarted)
{
    ChildPipe errorPipe;
    if (!createChildPipe(&errorPipe)) {
        *error = int(GetLastError());
        return std::nullopt;
    }
    std::vector<std::string> argv{tool};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    log.beginRun(tool, arguments);
    WindowsChild child;
    const bool started = child.start(tool, argv, GetStdHandle(STD_INPUT_HANDLE), GetStdHandle(STD_OUTPUT_HANDLE),
                                     errorPipe.write, nullptr, error);
    CloseHandle(errorPipe.write);
    if (!started) {
        CloseHandle(errorPipe.read);
        log.note("cannot run " + tool + ": " + errorText(*error));
        return std::nullopt;
    }
    std::thread copier(copyErrorOutput, errorPipe.read, std::ref(log));
    if (whenStarted)
        whenStarted();
    child.wait(INFINITE);
    const ChildEnd end = ChildEnd::fromSystemStatus(child.exitCode());
    // What the tool left running goes with it, and lets go of the pipe.
    child.killAll();
    copier.join();
    CloseHandle(errorPipe.read);
    log.endRun(end);
    return end;
}

void replaceProcess(const std::string &, char *[])
{
}

void startBesideRun(const std::vector<std::string> &arguments)
{
    const std::string path = executablePath();
    std::vector<std::string> argv{path};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    const std::wstring program = toWide(path);
    std::wstring commandLine = toWide(windowsCommandLine(argv));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    // No handles at all: none of the run's streams stays open in it.
    startup.dwFlags = STARTF_USESTDHANDLES;
    const DWORD flags = DETACHED_PROCESS | CREATE_NEW_PROCESS_GROUP | CREATE_UNICODE_ENVIRONMENT;
    PROCESS_INFORMATION created{};
    // Out of the job the launcher may run in, so that closing the job at
    // the run's end does not end the refresh; a job that forbids this keeps
    // it, and the refresh then ends with the job.
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                        flags | CREATE_BREAKAWAY_FROM_JOB, nullptr, nullptr, &startup, &created)
        && !CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, flags, nullptr, nullptr,
                           &startup, &created))
        return;
    CloseHandle(created.hThread);
    CloseHandle(created.hProcess);
}

void endAfter(int seconds)
{
    std::thread([seconds] {
        Sleep(DWORD(seconds) * 1000);
        endNow(1);
    }).detach();
}

} // namespace Launcher
