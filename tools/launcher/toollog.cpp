#include "toollog.h"

#include "childprocess.h"
#include "platform.h"
#include "scratchfile.h"
#include "secrets.h"
#include "writeall.h"

#include <algorithm>
#include <optional>

namespace Launcher {

namespace {

constexpr std::uint64_t rotateAfterBytes = 256 * 1024;
constexpr std::size_t keptPartBytes = 32 * 1024;

} // namespace

ToolLog::ToolLog(const std::string &folder)
{
    if (folder.empty())
        return;
    const std::string path = folder + "/kestreldl2.log";
    const std::optional<FileStamp> stamp = fileStamp(path);
    if (stamp && stamp->size > rotateAfterBytes)
        replaceFile(path, path + ".1", ScratchFile::asideName(path));
    m_fd = openForAppending(path);
    // A log written before it was kept private is made so.
    if (m_fd >= 0)
        makePrivate(path);
}

ToolLog::~ToolLog()
{
    if (m_fd >= 0)
        closeFile(m_fd);
}

void ToolLog::note(const std::string &text)
{
    write(localTimestamp() + " kestreldl2: " + Secrets::withoutCredentials(text) + '\n');
}

void ToolLog::beginRun(const std::string &tool, const std::vector<std::string> &arguments)
{
    std::string line = localTimestamp() + " run " + tool;
    for (const std::string &argument : Secrets::hiddenIn(arguments))
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

void ToolLog::endRun(const ChildEnd &end)
{
    const std::size_t written = std::min(m_errorBytes, keptPartBytes);
    if (m_errorBytes > written + m_tail.size())
        write("[... " + std::to_string(m_errorBytes - written - m_tail.size()) + " bytes left out ...]\n");
    write(m_tail);
    // The tool's last line may lack its line feed.
    if (m_errorBytes > 0 && m_lastErrorByte != '\n')
        write("\n");
    write(localTimestamp() + " end: " + end.describe() + '\n');
    m_tail.clear();
}

void ToolLog::write(const std::string &text)
{
    if (m_fd >= 0)
        writeAll(m_fd, text);
}

} // namespace Launcher
