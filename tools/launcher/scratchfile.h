#pragma once

#include <string>

namespace Launcher {

// A temporary file in the data folder, named ".kestreldl2-<purpose>-XXXXXX"
// so that a leftover of a launcher killed midway is recognised and removed
// by the next update. Removed when destroyed unless it was moved into place.
class ScratchFile
{
public:
    ScratchFile(const std::string &folder, const std::string &purpose);
    ~ScratchFile();

    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;

    bool isOpen() const { return m_fd >= 0; }
    int fd() const { return m_fd; }
    const std::string &path() const { return m_path; }

    bool write(const std::string &bytes);
    // Closes the file and makes it executable for everyone who may read it.
    bool finishExecutable();
    // Closes the file, which stays until this is destroyed: only then may
    // another program read it on Windows, which lets no program open a file
    // that another holds open for writing.
    void close();
    // Closes the file and renames it to target in one step.
    bool moveTo(const std::string &target);

    // Where a file that cannot be replaced while it runs (a program on
    // Windows) goes instead, as a scratch file of target's folder.
    static std::string asideName(const std::string &target);

    // Removes every scratch file in folder. Called only while holding the
    // update lock, so that no running update loses its files.
    static void removeLeftovers(const std::string &folder);

private:
    std::string m_path;
    int m_fd = -1;
    bool m_moved = false;
};

} // namespace Launcher
