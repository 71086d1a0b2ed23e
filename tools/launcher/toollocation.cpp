#include "toollocation.h"

#include "platform.h"

#include <optional>

namespace Launcher {

namespace {

std::string searchPath()
{
    // What the shell searches when PATH is not set.
    return environmentValue("PATH").value_or(pathListSeparator() == ':' ? "/usr/bin:/bin" : "");
}

} // namespace

std::string findTool(std::string *problem)
{
    if (const std::optional<std::string> chosen = environmentValue(toolVariable())) {
        if (isExecutableFile(*chosen))
            return *chosen;
        *problem = std::string(toolVariable()) + " is set to " + *chosen + ", which is not an executable file";
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
    const std::string file = name + executableSuffix();
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = path.find(pathListSeparator(), start);
        const std::string folder = path.substr(start, end == std::string::npos ? std::string::npos : end - start);
        // An empty or relative entry would make the current folder, which
        // may be anybody's, a source of programs: the shell's rule is not
        // followed there.
        const std::string candidate = folder + '/' + file;
        if (isAbsolutePath(folder) && isExecutableFile(candidate))
            return candidate;
        if (end == std::string::npos)
            return {};
        start = end + 1;
    }
}

std::optional<std::string> applicationFolder()
{
    const std::optional<std::string> named = environmentValue("KESTREL_APP_DIR");
    const long pid = applicationProcessId();
    if (!named || pid == 0)
        return std::nullopt;
    const std::string executable = processExecutable(pid);
    const std::size_t slash = executable.find_last_of("/\\");
    if (slash == std::string::npos || !isSameFolder(executable.substr(0, slash), *named))
        return std::nullopt;
    return named;
}

std::string ownFolder()
{
    const std::string executable = executablePath();
    const std::size_t slash = executable.find_last_of("/\\");
    if (slash == std::string::npos)
        return {};
    return slash == 0 ? std::string("/") : executable.substr(0, slash);
}

} // namespace Launcher
