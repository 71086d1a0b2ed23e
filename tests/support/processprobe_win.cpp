#include "processprobe.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QList>
#include <QString>

#include <algorithm>
#include <iterator>
#include <optional>

#include <windows.h>
#include <psapi.h>
#include <tlhelp32.h>
#include <winternl.h>

namespace {

// The layout NtQuerySystemInformation gives for its extended handle list
// (SYSTEM_HANDLE_INFORMATION_EX), which the SDK's headers leave out.
struct HandleEntry
{
    void *object;
    ULONG_PTR processId;
    ULONG_PTR handle;
    ULONG grantedAccess;
    USHORT creatorBackTraceIndex;
    USHORT objectTypeIndex;
    ULONG attributes;
    ULONG reserved;
};

struct HandleList
{
    ULONG_PTR count;
    ULONG_PTR reserved;
    HandleEntry handles[1];
};

// Every process the system lists, or nothing when it would not say.
std::optional<QList<PROCESSENTRY32W>> readProcessTable()
{
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return std::nullopt;
    QList<PROCESSENTRY32W> table;
    PROCESSENTRY32W entry;
    entry.dwSize = sizeof(entry);
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more; more = ::Process32NextW(snapshot, &entry))
        table << entry;
    ::CloseHandle(snapshot);
    return table;
}

QList<PROCESSENTRY32W> processTable()
{
    return readProcessTable().value_or(QList<PROCESSENTRY32W>());
}

} // namespace

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
    // Counted in the system's list of all handles rather than asked with
    // GetProcessHandleCount, which Wine answers with 0 whatever is open.
    constexpr SYSTEM_INFORMATION_CLASS extendedHandleInformation = SYSTEM_INFORMATION_CLASS(64);
    constexpr NTSTATUS lengthMismatch = NTSTATUS(0xC0000004);
    QByteArray buffer(1 << 16, Qt::Uninitialized);
    NTSTATUS status;
    ULONG needed = 0;
    while ((status = ::NtQuerySystemInformation(extendedHandleInformation, buffer.data(), ULONG(buffer.size()), &needed))
           == lengthMismatch) {
        buffer.resize(std::max<qsizetype>(buffer.size() * 2, qsizetype(needed) + 4096));
    }
    if (status < 0)
        return -1;
    const auto *list = reinterpret_cast<const HandleList *>(buffer.constData());
    const ULONG_PTR self = ::GetCurrentProcessId();
    int count = 0;
    for (ULONG_PTR i = 0; i < list->count; ++i) {
        if (list->handles[i].processId == self)
            ++count;
    }
    return count;
}

qint64 parentOf(qint64 pid)
{
    for (const PROCESSENTRY32W &entry : processTable()) {
        if (qint64(entry.th32ProcessID) == pid)
            return qint64(entry.th32ParentProcessID);
    }
    return -1;
}

int childProcesses()
{
    const std::optional<QList<PROCESSENTRY32W>> table = readProcessTable();
    if (!table)
        return -1;
    const DWORD self = ::GetCurrentProcessId();
    int children = 0;
    for (const PROCESSENTRY32W &entry : *table) {
        if (entry.th32ParentProcessID == self)
            ++children;
    }
    return children;
}

QList<qint64> runningProcessesOf(const QString &executable)
{
    const QString wanted = QDir::toNativeSeparators(QFileInfo(executable).absoluteFilePath());
    QList<qint64> found;
    for (const PROCESSENTRY32W &entry : processTable()) {
        const HANDLE process = ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, entry.th32ProcessID);
        if (process == nullptr)
            continue;
        wchar_t path[MAX_PATH * 4];
        DWORD length = DWORD(std::size(path));
        if (::QueryFullProcessImageNameW(process, 0, path, &length)
            && QString::fromWCharArray(path, int(length)).compare(wanted, Qt::CaseInsensitive) == 0
            && isRunning(entry.th32ProcessID)) {
            found << qint64(entry.th32ProcessID);
        }
        ::CloseHandle(process);
    }
    return found;
}

qint64 heapBytesInUse()
{
    // Every heap of the process: the C run-time's, which serves malloc and
    // new, and any other a library made. Each is locked while it is walked,
    // as threads of Qt's may allocate meanwhile.
    QList<HANDLE> heaps(64);
    for (;;) {
        const DWORD count = ::GetProcessHeaps(DWORD(heaps.size()), heaps.data());
        if (count == 0)
            return -1;
        if (count <= DWORD(heaps.size())) {
            heaps.resize(count);
            break;
        }
        heaps.resize(count);
    }
    qint64 total = 0;
    for (const HANDLE heap : std::as_const(heaps)) {
        if (!::HeapLock(heap))
            continue;
        PROCESS_HEAP_ENTRY entry;
        entry.lpData = nullptr;
        while (::HeapWalk(heap, &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                total += qint64(entry.cbData);
        }
        ::HeapUnlock(heap);
    }
    return total;
}

qint64 residentBytes()
{
    PROCESS_MEMORY_COUNTERS counters;
    if (!::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof(counters)))
        return -1;
    return qint64(counters.WorkingSetSize);
}

} // namespace ProcessProbe
