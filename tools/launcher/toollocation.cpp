#include "toollocation.h"

#include <cstdlib>
#include <vector>

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Launcher {

namespace {

bool isExecutableFile(const std::string &path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

std::string searchPath()
{
    if (const char *path = std::getenv("PATH"))
        return path;
    // What execvp() searches when PATH is not set.
    const std::size_t size = ::confstr(_CS_PATH, nullptr, 0);
    if (size == 0)
        return "/usr/bin:/bin";
    std::vector<char> buffer(size);
    ::confstr(_CS_PATH, buffer.data(), size);
    return buffer.data();
}

} // namespace

std::string findTool(std::string *problem)
{
    const char *chosen = std::getenv(toolVariable());
    if (chosen && *chosen) {
        if (isExecutableFile(chosen))
            return chosen;
        *problem = std::string(toolVariable()) + " is set to " + chosen + ", which is not an executable file";
        return {};
    }

    const std::string found = findOnPath("yt-dlp");
    if (found.empty())
        *problem = "no yt-dlp on PATH (" + searchPath() + ")";
    return found;
}

std::string findOnPath(const std::string &name)
{
    const std::string path = searchPath();
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = path.find(':', start);
        std::string folder = path.substr(start, end == std::string::npos ? std::string::npos : end - start);
        // An empty entry stands for the current folder, as for the shell.
        if (folder.empty())
            folder = ".";
        const std::string candidate = folder + '/' + name;
        if (isExecutableFile(candidate))
            return candidate;
        if (end == std::string::npos)
            return {};
        start = end + 1;
    }
}

std::string ownFolder()
{
    char buffer[PATH_MAX];
    const ssize_t n = ::readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    if (n <= 0)
        return {};
    const std::string executable(buffer, std::size_t(n));
    const std::size_t slash = executable.rfind('/');
    if (slash == std::string::npos)
        return {};
    return slash == 0 ? std::string("/") : executable.substr(0, slash);
}

} // namespace Launcher
