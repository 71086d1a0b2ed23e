#include "toollog.h"

#include "writeall.h"

#include <algorithm>
#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Launcher {

namespace {

constexpr off_t rotateAfterBytes = 256 * 1024;
constexpr std::size_t keptPartBytes = 32 * 1024;

std::string timestamp()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    char text[32];
    return std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts) > 0 ? text : "";
}

} // namespace

ToolLog::ToolLog(const std::string &folder)
{
    if (folder.empty())
        return;
    const std::string path = folder + "/kestreldl2.log";
    struct stat status;
    if (::stat(path.c_str(), &status) == 0 && status.st_size > rotateAfterBytes)
        ::rename(path.c_str(), (path + ".1").c_str());
    m_fd = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
}

ToolLog::~ToolLog()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

void ToolLog::note(const std::string &text)
{
    write(timestamp() + " kestreldl2: " + text + '\n');
}

void ToolLog::beginRun(const std::string &tool, const std::vector<std::string> &arguments)
{
    std::string line = timestamp() + " run " + tool;
    for (const std::string &argument : arguments)
        line += ' ' + argument;
    write(line + '\n');
    m_errorBytes = 0;
    m_tail.clear();
}

void ToolLog::appendError(const char *data, std::size_t size)
{
    const std::size_t head = m_errorBytes < keptPartBytes ? std::min(size, keptPartBytes - m_errorBytes) : 0;
    if (head > 0)
        write(std::string(data, head));
    m_errorBytes += size;
    if (size > 0)
        m_lastErrorByte = data[size - 1];
    m_tail.append(data + head, size - head);
    if (m_tail.size() > keptPartBytes)
        m_tail.erase(0, m_tail.size() - keptPartBytes);
}

void ToolLog::endRun(int waitStatus)
{
    const std::size_t written = std::min(m_errorBytes, keptPartBytes);
    if (m_errorBytes > written + m_tail.size())
        write("[... " + std::to_string(m_errorBytes - written - m_tail.size()) + " bytes left out ...]\n");
    write(m_tail);
    // The tool's last line may lack its line feed.
    if (m_errorBytes > 0 && m_lastErrorByte != '\n')
        write("\n");
    std::string end;
    if (WIFEXITED(waitStatus))
        end = "exit code " + std::to_string(WEXITSTATUS(waitStatus));
    else if (WIFSIGNALED(waitStatus))
        end = "ended by signal " + std::to_string(WTERMSIG(waitStatus));
    write(timestamp() + " end: " + end + '\n');
    m_tail.clear();
}

void ToolLog::write(const std::string &text)
{
    if (m_fd >= 0)
        writeAll(m_fd, text);
}

} // namespace Launcher
