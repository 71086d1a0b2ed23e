#pragma once

#include <string>

namespace Launcher {

// The update lock of the data folder: an advisory lock on the file
// "kestreldl2.lock" there, so that two launchers never install at once. The
// kernel releases it when its holder dies, however it dies.
class FolderLock
{
public:
    // A run that installs before the tool waits at most half a minute, so
    // that a slow install elsewhere never holds a window for long.
    enum class Wait { UpToHalfAMinute, NotAtAll };

    FolderLock(const std::string &folder, Wait wait);
    ~FolderLock();

    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    bool isHeld() const { return m_fd >= 0; }

private:
    int m_fd = -1;
};

} // namespace Launcher
