#include "platform.h"

#include "widetext.h"

#include <windows.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cwchar>
#include <ctime>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

namespace Launcher {

namespace {

DWORD attributesOf(const std::string &path)
{
    return GetFileAttributesW(toWide(path).c_str());
}

int openWith(const std::string &path, int flags)
{
    int fd = -1;
    return _wsopen_s(&fd, toWide(path).c_str(), flags | _O_BINARY | _O_NOINHERIT, _SH_DENYNO,
                     _S_IREAD | _S_IWRITE) == 0
               ? fd
               : -1;
}

} // namespace

const char *executableSuffix()
{
    return ".exe";
}

char pathListSeparator()
{
    return ';';
}

std::vector<std::string> commandLineArguments(int, char *[])
{
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t **wide = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!wide)
        return arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(fromWide(wide[i]));
    LocalFree(wide);
    return arguments;
}

std::string executablePath()
{
    std::wstring buffer(MAX_PATH, L'\0');
    for (;;) {
        const DWORD n = GetModuleFileNameW(nullptr, buffer.data(), DWORD(buffer.size()));
        if (n == 0)
            return {};
        if (n < buffer.size()) {
            buffer.resize(n);
            // The launcher joins paths with forward slashes, which Windows
            // takes too; one kind of slash keeps them readable.
            std::string path = fromWide(buffer);
            std::replace(path.begin(), path.end(), '\\', '/');
            return path;
        }
        buffer.resize(buffer.size() * 2);
    }
}

bool isRegularFile(const std::string &path)
{
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool isFolder(const std::string &path)
{
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool isExecutableFile(const std::string &path)
{
    return isRegularFile(path);
}

bool isAbsolutePath(const std::string &path)
{
    return path.size() >= 3 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':'
        && (path[2] == '/' || path[2] == '\\');
}

namespace {

// A full path with one kind of slash, in lower case, without a slash at
// the end: Windows compares names without regard to case.
std::string comparablePath(const std::string &path)
{
    std::string full = canonicalPath(path);
    std::replace(full.begin(), full.end(), '\\', '/');
    while (full.size() > 3 && full.back() == '/')
        full.pop_back();
    std::transform(full.begin(), full.end(), full.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return full;
}

} // namespace

bool isSameFolder(const std::string &first, const std::string &second)
{
    return comparablePath(first) == comparablePath(second);
}

std::string processExecutable(long pid)
{
    const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, DWORD(pid));
    if (process == nullptr)
        return {};
    std::wstring buffer(32768, L'\0');
    DWORD size = DWORD(buffer.size());
    const BOOL found = QueryFullProcessImageNameW(process, 0, buffer.data(), &size);
    CloseHandle(process);
    if (!found)
        return {};
    buffer.resize(size);
    return fromWide(buffer);
}

std::string canonicalPath(const std::string &path)
{
    const std::wstring wide = toWide(path);
    const DWORD size = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    if (size == 0)
        return path;
    std::wstring full(size, L'\0');
    const DWORD n = GetFullPathNameW(wide.c_str(), size, full.data(), nullptr);
    if (n == 0 || n >= size)
        return path;
    full.resize(n);
    return fromWide(full);
}

std::optional<FileStamp> fileStamp(const std::string &path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(toWide(path).c_str(), GetFileExInfoStandard, &data))
        return std::nullopt;
    const std::uint64_t modified
        = (std::uint64_t(data.ftLastWriteTime.dwHighDateTime) << 32) | data.ftLastWriteTime.dwLowDateTime;
    const std::uint64_t size = (std::uint64_t(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    // File times count 100 ns steps.
    return FileStamp{size, std::to_string(modified / 10000000) + '.' + std::to_string(modified % 10000000)};
}

std::vector<std::string> folderEntries(const std::string &folder)
{
    std::vector<std::string> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(toWide(folder + "\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..")
            names.push_back(fromWide(name));
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return names;
}

std::optional<std::string> readFile(const std::string &path, std::size_t maxBytes)
{
    if (!isRegularFile(path))
        return std::nullopt;
    const int fd = openForReading(path);
    if (fd < 0)
        return std::nullopt;
    std::string text;
    bool ok = true;
    char buffer[8192];
    while (ok) {
        const int n = _read(fd, buffer, sizeof buffer);
        if (n <= 0) {
            ok = n == 0;
            break;
        }
        text.append(buffer, std::size_t(n));
        ok = text.size() <= maxBytes;
    }
    _close(fd);
    return ok ? std::optional<std::string>(std::move(text)) : std::nullopt;
}

int openForReading(const std::string &path)
{
    return openWith(path, _O_RDONLY);
}

int openForAppending(const std::string &path)
{
    return openWith(path, _O_WRONLY | _O_APPEND | _O_CREAT);
}

int createUniqueFile(std::string &pattern)
{
    static const char letters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    const std::size_t start = pattern.size() - 6;
    unsigned long long seed = GetTickCount64() ^ (unsigned long long)GetCurrentProcessId() << 20;
    for (int attempt = 0; attempt < 100; ++attempt) {
        for (std::size_t i = start; i < pattern.size(); ++i) {
            seed = seed * 6364136223846793005ull + 1442695040888963407ull;
            pattern[i] = letters[(seed >> 33) % (sizeof letters - 1)];
        }
        const int fd = openWith(pattern, _O_RDWR | _O_CREAT | _O_EXCL);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    return -1;
}

int tryOpenLocked(const std::string &path)
{
    const int fd = openWith(path, _O_RDWR | _O_CREAT);
    if (fd < 0)
        return -1;
    OVERLAPPED start{};
    const DWORD flags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    if (LockFileEx(HANDLE(_get_osfhandle(fd)), flags, 0, 1, 0, &start))
        return fd;
    _close(fd);
    return -1;
}

bool syncAndClose(int fd)
{
    const bool synced = _commit(fd) == 0;
    return _close(fd) == 0 && synced;
}

void closeFile(int fd)
{
    _close(fd);
}

bool makeExecutable(const std::string &)
{
    return true;
}

void lowerOwnPriority()
{
    SetPriorityClass(GetCurrentProcess(), BELOW_NORMAL_PRIORITY_CLASS);
}

bool makePrivate(const std::string &)
{
    return true;
}

bool removeFile(const std::string &path)
{
    return DeleteFileW(toWide(path).c_str()) != 0;
}

bool linkFile(const std::string &existing, const std::string &newName)
{
    return CreateHardLinkW(toWide(newName).c_str(), toWide(existing).c_str(), nullptr) != 0;
}

bool replaceFile(const std::string &from, const std::string &to, const std::string &aside)
{
    const std::wstring source = toWide(from);
    const std::wstring target = toWide(to);
    if (MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING))
        return true;
    // A running program's file may be renamed, though not replaced.
    std::string asidePattern = aside + "-XXXXXX";
    const int placeholder = createUniqueFile(asidePattern);
    if (placeholder < 0)
        return false;
    _close(placeholder);
    if (!MoveFileExW(target.c_str(), toWide(asidePattern).c_str(), MOVEFILE_REPLACE_EXISTING)) {
        DeleteFileW(toWide(asidePattern).c_str());
        return false;
    }
    return MoveFileExW(source.c_str(), target.c_str(), 0) != 0;
}

std::string errorText(int error)
{
    const DWORD code = DWORD(error);
    wchar_t *text = nullptr;
    const DWORD n = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM
                                       | FORMAT_MESSAGE_IGNORE_INSERTS,
                                   nullptr, code, 0, reinterpret_cast<wchar_t *>(&text), 0, nullptr);
    std::string message = n > 0 ? fromWide(std::wstring(text, n)) : "error " + std::to_string(code);
    LocalFree(text);
    while (!message.empty() && (message.back() == '\n' || message.back() == '\r' || message.back() == '.'))
        message.pop_back();
    return message;
}

std::string lastErrorText()
{
    return errorText(int(GetLastError()));
}

std::vector<std::string> environmentEntries()
{
    std::vector<std::string> entries;
    wchar_t *block = GetEnvironmentStringsW();
    for (const wchar_t *entry = block; entry && *entry; entry += std::wcslen(entry) + 1)
        entries.push_back(fromWide(entry));
    FreeEnvironmentStringsW(block);
    return entries;
}

std::optional<std::string> environmentValue(const char *name)
{
    const wchar_t *value = _wgetenv(toWide(name).c_str());
    return value && *value ? std::optional<std::string>(fromWide(value)) : std::nullopt;
}

void setEnvironment(const char *name, const char *value)
{
    _wputenv_s(toWide(name).c_str(), toWide(value).c_str());
}

void unsetEnvironment(const char *name)
{
    // An empty value removes the variable.
    _wputenv_s(toWide(name).c_str(), L"");
}

long processId()
{
    return long(GetCurrentProcessId());
}

std::string localTimestamp()
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    char text[32];
    std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u", now.wYear, now.wMonth, now.wDay, now.wHour,
                  now.wMinute, now.wSecond);
    return text;
}

} // namespace Launcher
