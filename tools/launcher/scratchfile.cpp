#include "scratchfile.h"

#include "platform.h"
#include "writeall.h"

namespace Launcher {

namespace {

const char scratchPrefix[] = ".kestreldl2-";

} // namespace

ScratchFile::ScratchFile(const std::string &folder, const std::string &purpose)
{
    std::string path = folder + '/' + scratchPrefix + purpose + "-XXXXXX";
    m_fd = createUniqueFile(path);
    if (m_fd >= 0)
        m_path = path;
}

ScratchFile::~ScratchFile()
{
    close();
    if (!m_path.empty() && !m_moved)
        removeFile(m_path);
}

bool ScratchFile::write(const std::string &bytes)
{
    return m_fd >= 0 && writeAll(m_fd, bytes);
}

bool ScratchFile::finishExecutable()
{
    if (m_fd < 0)
        return false;
    const bool closed = syncAndClose(m_fd);
    m_fd = -1;
    return closed && makeExecutable(m_path);
}

bool ScratchFile::moveTo(const std::string &target)
{
    close();
    if (m_path.empty() || !replaceFile(m_path, target, asideName(target)))
        return false;
    m_moved = true;
    return true;
}

void ScratchFile::close()
{
    if (m_fd >= 0)
        closeFile(m_fd);
    m_fd = -1;
}

std::string ScratchFile::asideName(const std::string &target)
{
    const std::size_t slash = target.find_last_of("/\\");
    const std::string folder = slash == std::string::npos ? std::string(".") : target.substr(0, slash);
    return folder + '/' + scratchPrefix + "replaced";
}

void ScratchFile::removeLeftovers(const std::string &folder)
{
    for (const std::string &name : folderEntries(folder)) {
        if (name.compare(0, sizeof scratchPrefix - 1, scratchPrefix) == 0)
            removeFile(folder + '/' + name);
    }
}

} // namespace Launcher
