#include "processprobe.h"

#include <windows.h>
#include <tlhelp32.h>

namespace ProcessProbe {

bool exists(qint64 pid)
{
    // An ended process keeps its identifier only while someone holds a
    // handle to it; it no longer counts as existing either way.
    return isRunning(pid);
}

bool isRunning(qint64 pid)
{
    const HANDLE process = ::OpenProcess(SYNCHRONIZE, FALSE, DWORD(pid));
    if (process == nullptr)
        return false;
    // Waiting rather than asking for the exit code: a running process and
    // one that ended with code 259 (STILL_ACTIVE) would look alike.
    const bool running = ::WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    ::CloseHandle(process);
    return running;
}

int openHandles()
{
    DWORD count = 0;
    if (!::GetProcessHandleCount(::GetCurrentProcess(), &count))
        return -1;
    return int(count);
}

int childProcesses()
{
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return -1;
    const DWORD self = ::GetCurrentProcessId();
    int children = 0;
    PROCESSENTRY32W entry;
    entry.dwSize = sizeof(entry);
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more; more = ::Process32NextW(snapshot, &entry)) {
        if (entry.th32ParentProcessID == self)
            ++children;
    }
    ::CloseHandle(snapshot);
    return children;
}

} // namespace ProcessProbe
