#include "folderlock.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace Launcher {

FolderLock::FolderLock(const std::string &folder, Wait wait)
{
    const std::string path = folder + "/kestreldl2.lock";
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0)
        return;
    const int operation = wait == Wait::UntilFree ? LOCK_EX : LOCK_EX | LOCK_NB;
    int result;
    while ((result = ::flock(fd, operation)) != 0 && errno == EINTR) {
    }
    if (result != 0) {
        ::close(fd);
        return;
    }
    m_fd = fd;
}

FolderLock::~FolderLock()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

} // namespace Launcher
