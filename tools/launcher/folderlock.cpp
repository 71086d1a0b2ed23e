#include "folderlock.h"

#include "platform.h"

#include <chrono>
#include <thread>

namespace Launcher {

namespace {

constexpr std::chrono::seconds longestWait(30);
constexpr std::chrono::milliseconds retryInterval(100);

// The system's lock calls wait without a limit or not at all: a bounded wait
// asks again and again.
int lockWithin(const std::string &path, std::chrono::steady_clock::duration maxWait)
{
    const auto deadline = std::chrono::steady_clock::now() + maxWait;
    for (;;) {
        const int fd = tryOpenLocked(path);
        if (fd >= 0 || std::chrono::steady_clock::now() >= deadline)
            return fd;
        std::this_thread::sleep_for(retryInterval);
    }
}

} // namespace

FolderLock::FolderLock(const std::string &folder, Wait wait)
    : m_fd(lockWithin(folder + "/kestreldl2.lock",
                      wait == Wait::UpToHalfAMinute ? std::chrono::steady_clock::duration(longestWait)
                                                    : std::chrono::steady_clock::duration::zero()))
{
}

FolderLock::~FolderLock()
{
    if (m_fd >= 0)
        closeFile(m_fd);
}

} // namespace Launcher
