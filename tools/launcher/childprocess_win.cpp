#include "childprocess.h"

#include "commandline.h"
#include "widetext.h"
#include "windowschild.h"

#include <thread>

namespace Launcher {

namespace {

// What a fail-fast abort ends with.
constexpr DWORD abortCode = 0xC0000409;

// A handle the child inherits in the place of handle: Windows hands a
// child only inheritable handles.
HANDLE inheritable(HANDLE handle)
{
    if (!handle || handle == INVALID_HANDLE_VALUE)
        return handle;
    HANDLE copy = nullptr;
    return DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &copy, 0, TRUE, DUPLICATE_SAME_ACCESS)
               ? copy
               : nullptr;
}

void closeHandle(HANDLE handle)
{
    if (handle && handle != INVALID_HANDLE_VALUE)
        CloseHandle(handle);
}

std::wstring environmentBlock(const std::vector<std::string> &entries)
{
    std::wstring block;
    for (const std::string &entry : entries) {
        block += toWide(entry);
        block += L'\0';
    }
    block += L'\0';
    return block;
}

HANDLE killOnCloseJob()
{
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    if (!job)
        return nullptr;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits)) {
        CloseHandle(job);
        return nullptr;
    }
    return job;
}

} // namespace

WindowsChild::~WindowsChild()
{
    closeHandle(m_process);
    // Kills what the child left running.
    closeHandle(m_job);
}

bool WindowsChild::start(const std::string &program, const std::vector<std::string> &arguments, HANDLE in,
                         HANDLE out, HANDLE err, const std::vector<std::string> *environment, int *error)
{
    m_job = killOnCloseJob();
    if (!m_job) {
        *error = int(GetLastError());
        return false;
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = inheritable(in);
    startup.hStdOutput = inheritable(out);
    startup.hStdError = inheritable(err);

    const std::wstring application = toWide(program);
    std::wstring commandLine = toWide(windowsCommandLine(arguments));
    std::wstring block = environment ? environmentBlock(*environment) : std::wstring();
    PROCESS_INFORMATION created{};
    // Suspended until it is in the job, so that nothing it starts escapes.
    const BOOL started = CreateProcessW(application.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                                        CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT | CREATE_NO_WINDOW,
                                        environment ? block.data() : nullptr, nullptr, &startup, &created);
    const DWORD startError = GetLastError();
    closeHandle(startup.hStdInput);
    closeHandle(startup.hStdOutput);
    closeHandle(startup.hStdError);
    if (!started) {
        *error = int(startError);
        return false;
    }
    if (!AssignProcessToJobObject(m_job, created.hProcess)) {
        *error = int(GetLastError());
        TerminateProcess(created.hProcess, 1);
        CloseHandle(created.hThread);
        CloseHandle(created.hProcess);
        return false;
    }
    ResumeThread(created.hThread);
    CloseHandle(created.hThread);
    m_process = created.hProcess;
    return true;
}

bool WindowsChild::wait(DWORD timeoutMs)
{
    return m_process && WaitForSingleObject(m_process, timeoutMs) == WAIT_OBJECT_0;
}

void WindowsChild::killAll()
{
    if (m_job)
        TerminateJobObject(m_job, 1);
}

int WindowsChild::exitCode() const
{
    DWORD code = 1;
    if (m_process)
        GetExitCodeProcess(m_process, &code);
    return int(code);
}

bool createChildPipe(ChildPipe *pipe)
{
    SECURITY_ATTRIBUTES attributes{sizeof attributes, nullptr, FALSE};
    return CreatePipe(&pipe->read, &pipe->write, &attributes, 0) != 0;
}

HANDLE nullDevice(DWORD access)
{
    return CreateFileW(L"NUL", access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
}

CapturedRun runCaptured(const std::string &program, const std::vector<std::string> &arguments,
                        CapturedStream captured, const std::vector<std::string> *environment, int timeoutMs)
{
    CapturedRun run;
    ChildPipe pipe;
    if (!createChildPipe(&pipe))
        return run;
    const HANDLE nullIn = nullDevice(GENERIC_READ);
    const HANDLE nullOut = nullDevice(GENERIC_WRITE);
    WindowsChild child;
    int error = 0;
    run.started = child.start(program, arguments, nullIn,
                              captured == CapturedStream::Output ? pipe.write : nullOut,
                              captured == CapturedStream::Error ? pipe.write : nullOut, environment, &error);
    closeHandle(pipe.write);
    closeHandle(nullIn);
    closeHandle(nullOut);
    if (!run.started) {
        closeHandle(pipe.read);
        return run;
    }

    // Enough for any parser message; the rest is read and let go.
    constexpr std::size_t keptBytes = 64 * 1024;
    std::thread reader([&run, read = pipe.read] {
        char buffer[4096];
        DWORD n = 0;
        while (ReadFile(read, buffer, sizeof buffer, &n, nullptr) && n > 0) {
            if (run.text.size() < keptBytes)
                run.text.append(buffer, n);
        }
    });
    if (child.wait(DWORD(timeoutMs)))
        run.end = ChildEnd::fromSystemStatus(child.exitCode());
    // What the child left running holds the pipe open.
    child.killAll();
    reader.join();
    closeHandle(pipe.read);
    return run;
}

void endNow(DWORD code)
{
    // Not ExitProcess(): a refresh beside the run may hold a lock of the
    // C run-time that the exit routines would wait for; nothing of the
    // launcher's is buffered.
    TerminateProcess(GetCurrentProcess(), code);
    ExitProcess(code);
}

void endAsCrash()
{
    endNow(abortCode);
}

void exitLike(const ChildEnd &end)
{
    endNow(DWORD(end.exitCode().value_or(1)));
}

} // namespace Launcher
