#pragma once

#include "childend.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Launcher {

// The launcher's log, "kestreldl2.log" in the data folder: for each tool run
// its command line, what the tool wrote to standard error (the only place
// that says why a run failed, which the application does not keep) and how
// it ended, and the launcher's own notes. The file is rotated to
// "kestreldl2.log.1" once it passes 256 KiB; of a run's standard error the
// first and the last 32 KiB are kept.
class ToolLog
{
public:
    explicit ToolLog(const std::string &folder);
    ~ToolLog();

    ToolLog(const ToolLog &) = delete;
    ToolLog &operator=(const ToolLog &) = delete;

    void note(const std::string &text);
    void beginRun(const std::string &tool, const std::vector<std::string> &arguments);
    void appendError(const char *data, std::size_t size);
    void endRun(const ChildEnd &end);

private:
    void write(const std::string &text);

    int m_fd = -1;
    std::size_t m_errorBytes = 0;
    char m_lastErrorByte = '\n';
    std::string m_tail;
};

} // namespace Launcher
