#include "platform.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

extern char **environ;

namespace Launcher {

const char *executableSuffix()
{
    return "";
}

char pathListSeparator()
{
    return ':';
}

std::vector<std::string> commandLineArguments(int argc, char *argv[])
{
    return std::vector<std::string>(argv + 1, argv + argc);
}

std::string executablePath()
{
    char buffer[PATH_MAX];
    const ssize_t n = ::readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    return n > 0 ? std::string(buffer, std::size_t(n)) : std::string();
}

bool isAbsolutePath(const std::string &path)
{
    return !path.empty() && path.front() == '/';
}

bool isSameFolder(const std::string &first, const std::string &second)
{
    return canonicalPath(first) == canonicalPath(second);
}

std::string processExecutable(long pid)
{
    char buffer[PATH_MAX];
    const std::string link = "/proc/" + std::to_string(pid) + "/exe";
    const ssize_t n = ::readlink(link.c_str(), buffer, sizeof buffer - 1);
    return n > 0 ? std::string(buffer, std::size_t(n)) : std::string();
}

bool isRegularFile(const std::string &path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isFolder(const std::string &path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isExecutableFile(const std::string &path)
{
    return isRegularFile(path) && ::access(path.c_str(), X_OK) == 0;
}

std::string canonicalPath(const std::string &path)
{
    char *resolved = ::realpath(path.c_str(), nullptr);
    if (!resolved)
        return path;
    std::string result = resolved;
    std::free(resolved);
    return result;
}

std::optional<FileStamp> fileStamp(const std::string &path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    char modified[48];
    std::snprintf(modified, sizeof modified, "%lld.%09ld", static_cast<long long>(status.st_mtim.tv_sec),
                  static_cast<long>(status.st_mtim.tv_nsec));
    return FileStamp{std::uint64_t(status.st_size), modified};
}

std::vector<std::string> folderEntries(const std::string &folder)
{
    std::vector<std::string> names;
    DIR *directory = ::opendir(folder.c_str());
    if (!directory)
        return names;
    while (const dirent *entry = ::readdir(directory)) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
            names.emplace_back(entry->d_name);
    }
    ::closedir(directory);
    return names;
}

std::optional<std::string> readFile(const std::string &path, std::size_t maxBytes)
{
    const int fd = openForReading(path);
    if (fd < 0)
        return std::nullopt;
    std::string text;
    struct stat status;
    bool ok = ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
    char buffer[8192];
    while (ok) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            ok = n == 0;
            break;
        }
        text.append(buffer, std::size_t(n));
        ok = text.size() <= maxBytes;
    }
    ::close(fd);
    return ok ? std::optional<std::string>(std::move(text)) : std::nullopt;
}

int openForReading(const std::string &path)
{
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

int openForAppending(const std::string &path)
{
    return ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
}

int createUniqueFile(std::string &pattern)
{
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    const int fd = ::mkostemp(buffer.data(), O_CLOEXEC);
    if (fd >= 0)
        pattern = buffer.data();
    return fd;
}

int tryOpenLocked(const std::string &path)
{
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0)
        return -1;
    int result;
    while ((result = ::flock(fd, LOCK_EX | LOCK_NB)) != 0 && errno == EINTR) {
    }
    if (result == 0)
        return fd;
    const int error = errno;
    ::close(fd);
    errno = error;
    return -1;
}

bool syncAndClose(int fd)
{
    const bool synced = ::fsync(fd) == 0;
    return ::close(fd) == 0 && synced;
}

void closeFile(int fd)
{
    ::close(fd);
}

bool makeExecutable(const std::string &path)
{
    return ::chmod(path.c_str(), 0755) == 0;
}

void lowerOwnPriority()
{
    // Nice 10: what a desktop's background jobs run at.
    ::setpriority(PRIO_PROCESS, 0, 10);
}

bool makePrivate(const std::string &path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return false;
    return (status.st_mode & 077) == 0 || ::chmod(path.c_str(), status.st_mode & 0700) == 0;
}

bool removeFile(const std::string &path)
{
    return ::unlink(path.c_str()) == 0;
}

bool linkFile(const std::string &existing, const std::string &newName)
{
    return ::link(existing.c_str(), newName.c_str()) == 0;
}

bool replaceFile(const std::string &from, const std::string &to, const std::string &)
{
    // A running program keeps its file when its name is given to another.
    return ::rename(from.c_str(), to.c_str()) == 0;
}

std::string errorText(int error)
{
    return std::strerror(error);
}

std::string lastErrorText()
{
    return errorText(errno);
}

std::vector<std::string> environmentEntries()
{
    std::vector<std::string> entries;
    for (char **entry = environ; entry && *entry; ++entry)
        entries.emplace_back(*entry);
    return entries;
}

std::optional<std::string> environmentValue(const char *name)
{
    const char *value = std::getenv(name);
    return value && *value ? std::optional<std::string>(value) : std::nullopt;
}

void setEnvironment(const char *name, const char *value)
{
    ::setenv(name, value, 1);
}

void unsetEnvironment(const char *name)
{
    ::unsetenv(name);
}

long processId()
{
    return long(::getpid());
}

std::string localTimestamp()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    char text[32];
    return std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts) > 0 ? text : "";
}

} // namespace Launcher
