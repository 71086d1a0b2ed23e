#include "folderlock.h"

#include "platform.h"

namespace Launcher {

FolderLock::FolderLock(const std::string &folder, Wait wait)
    : m_fd(openLocked(folder + "/kestreldl2.lock", wait == Wait::UntilFree))
{
}

FolderLock::~FolderLock()
{
    if (m_fd >= 0)
        closeFile(m_fd);
}

} // namespace Launcher
