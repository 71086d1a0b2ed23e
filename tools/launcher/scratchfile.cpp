#include "scratchfile.h"

#include "writeall.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Launcher {

namespace {

const char scratchPrefix[] = ".kestreldl2-";

} // namespace

ScratchFile::ScratchFile(const std::string &folder, const std::string &purpose)
{
    std::string pattern = folder + '/' + scratchPrefix + purpose + "-XXXXXX";
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    m_fd = ::mkostemp(buffer.data(), O_CLOEXEC);
    if (m_fd >= 0)
        m_path = buffer.data();
}

ScratchFile::~ScratchFile()
{
    close();
    if (!m_path.empty() && !m_moved)
        ::unlink(m_path.c_str());
}

bool ScratchFile::write(const std::string &bytes)
{
    return m_fd >= 0 && writeAll(m_fd, bytes);
}

bool ScratchFile::finishExecutable()
{
    if (m_fd < 0)
        return false;
    const bool synced = ::fsync(m_fd) == 0;
    close();
    return synced && ::chmod(m_path.c_str(), 0755) == 0;
}

bool ScratchFile::moveTo(const std::string &target)
{
    close();
    if (m_path.empty() || ::rename(m_path.c_str(), target.c_str()) != 0)
        return false;
    m_moved = true;
    return true;
}

void ScratchFile::close()
{
    if (m_fd >= 0)
        ::close(m_fd);
    m_fd = -1;
}

void ScratchFile::removeLeftovers(const std::string &folder)
{
    DIR *directory = ::opendir(folder.c_str());
    if (!directory)
        return;
    std::vector<std::string> leftovers;
    while (const dirent *entry = ::readdir(directory)) {
        if (std::strncmp(entry->d_name, scratchPrefix, sizeof scratchPrefix - 1) == 0)
            leftovers.emplace_back(entry->d_name);
    }
    ::closedir(directory);
    for (const std::string &name : leftovers)
        ::unlink((folder + '/' + name).c_str());
}

} // namespace Launcher
