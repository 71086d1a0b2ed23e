#include "toolsystem.h"

#include <QDir>

#include <algorithm>
#include <csignal>
#include <string>

#include <windows.h>
#include <shellapi.h>

namespace ToolSystem {

namespace {

bool writeAll(HANDLE handle, const char *data, qint64 size)
{
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE)
        return false;
    while (size > 0) {
        // WriteFile takes a 32-bit count; a longer buffer goes in parts.
        const DWORD part = static_cast<DWORD>(std::min<qint64>(size, 1 << 30));
        DWORD written = 0;
        if (!::WriteFile(handle, data, part, &written, nullptr))
            return false;
        data += written;
        size -= written;
    }
    return true;
}

// The NTSTATUS code a Windows program ends with after the exception the
// POSIX signal stands for. Qt reports these codes, all above 0x7FFFFFFF, as
// a crash exit, as it reports the signal on Linux.
UINT crashCode(int signalNumber)
{
    switch (signalNumber) {
    case SIGILL:
        return 0xC000001D; // STATUS_ILLEGAL_INSTRUCTION
    case SIGFPE:
        return 0xC0000094; // STATUS_INTEGER_DIVIDE_BY_ZERO
    case SIGABRT:
    case SIGABRT_COMPAT:
        // abort() in a program of the Universal C run-time ends with a
        // fail-fast exception, reported as this code.
        return 0xC0000409; // STATUS_STACK_BUFFER_OVERRUN
    case SIGINT:
    case SIGBREAK:
        return 0xC000013A; // STATUS_CONTROL_C_EXIT
    default:
        // SIGSEGV, and any number without a Windows counterpart: the
        // commonest crash of all.
        return 0xC0000005; // STATUS_ACCESS_VIOLATION
    }
}

} // namespace

bool writeAll(Stream stream, const char *data, qint64 size)
{
    // WriteFile on the standard handles: no C run-time buffer and no text
    // mode turning "\n" into "\r\n" between the scenario and the application.
    return writeAll(::GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE), data, size);
}

void appendToFile(const QString &path, const QByteArray &bytes)
{
    // Opened for appending only, every write lands at the end of the file
    // even when other runs append at the same time. Shared for deleting, so
    // that a test can remove the record while a hanging run still has it open.
    const HANDLE file = ::CreateFileW(reinterpret_cast<const wchar_t *>(QDir::toNativeSeparators(path).utf16()),
                                      FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    writeAll(file, bytes.constData(), bytes.size());
    ::CloseHandle(file);
}

QStringList commandLine(int argc, char *argv[])
{
    // The wide command line: argv holds it in the ANSI code page, which
    // cannot carry every character of an address or a folder name.
    int count = 0;
    wchar_t **items = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (items == nullptr) {
        QStringList fallback;
        for (int i = 0; i < argc; ++i)
            fallback.append(QString::fromLocal8Bit(argv[i]));
        return fallback;
    }
    QStringList decoded;
    for (int i = 0; i < count; ++i)
        decoded.append(QString::fromWCharArray(items[i]));
    ::LocalFree(items);
    return decoded;
}

QString currentDirectory()
{
    // The directory the system gave this process, as CreateProcess set it.
    const DWORD size = ::GetCurrentDirectoryW(0, nullptr);
    if (size == 0)
        return QString();
    std::wstring buffer(size, L'\0');
    const DWORD length = ::GetCurrentDirectoryW(size, buffer.data());
    if (length == 0 || length >= size)
        return QString();
    return QDir::fromNativeSeparators(QString::fromWCharArray(buffer.data(), int(length)));
}

qint64 processId()
{
    return static_cast<qint64>(::GetCurrentProcessId());
}

void sleepMilliseconds(qint64 ms)
{
    if (ms > 0)
        ::Sleep(static_cast<DWORD>(ms));
}

// The application ends tools on Windows with taskkill /F, which does not
// ask first: there is no stop to answer or to ignore.
void answerStopAsTheLauncherDoes()
{
}

void ignoreStop()
{
}

void hangForever()
{
    for (;;)
        ::Sleep(INFINITE);
}

void crash(int signalNumber)
{
    ::TerminateProcess(::GetCurrentProcess(), crashCode(signalNumber));
}

} // namespace ToolSystem
