#include "flagcache.h"

#include "platform.h"
#include "scratchfile.h"
#include "writeall.h"

#include <cstddef>
#include <utility>

namespace Launcher {

namespace {

const char header[] = "# kestreldl2: yt-dlp flag support, format 1";
const char flagKind[] = "flag";
const char versionKind[] = "version";
const char versionKey[] = "-";
const char supportedValue[] = "supported";
const char unsupportedValue[] = "unsupported";

// Bounds that keep a damaged or foreign file from costing much.
constexpr std::size_t maxFileSize = 256 * 1024;
constexpr std::size_t maxEntries = 64;

// A field is followed by a tab; only the path, the last field, may hold one.
bool isField(const std::string &text)
{
    return !text.empty() && text.find_first_of("\t\r\n") == std::string::npos;
}

bool isPath(const std::string &text)
{
    return !text.empty() && text.find_first_of("\r\n") == std::string::npos;
}

std::vector<std::string> splitFields(const std::string &line, std::size_t count)
{
    std::vector<std::string> fields;
    std::size_t start = 0;
    while (fields.size() + 1 < count) {
        const std::size_t tab = line.find('\t', start);
        if (tab == std::string::npos)
            return {};
        fields.push_back(line.substr(start, tab - start));
        start = tab + 1;
    }
    fields.push_back(line.substr(start));
    return fields;
}

} // namespace

std::optional<ToolIdentity> identifyTool(const std::string &path)
{
    const std::string realPath = canonicalPath(path);
    const std::optional<FileStamp> stamp = fileStamp(realPath);
    if (!stamp)
        return std::nullopt;
    return ToolIdentity{realPath, stamp->modified + ':' + std::to_string(stamp->size)};
}

FlagCache FlagCache::load(const std::string &filePath)
{
    return parse(readFile(filePath, maxFileSize).value_or(std::string()));
}

FlagCache FlagCache::parse(const std::string &text)
{
    // Only a complete file is trusted: every line ends with a line feed.
    if (text.empty() || text.back() != '\n')
        return {};

    FlagCache cache;
    std::size_t start = 0;
    bool first = true;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        const std::string line = text.substr(start, end - start);
        start = end + 1;
        if (first) {
            if (line != header)
                return {};
            first = false;
            continue;
        }
        const std::vector<std::string> fields = splitFields(line, 5);
        if (fields.size() != 5)
            return {};
        Entry entry{fields[0], fields[1], fields[2], fields[3], fields[4]};
        const bool wellFormed = isField(entry.kind) && isField(entry.stamp) && isField(entry.key)
                                && isField(entry.value) && isPath(entry.path);
        const bool knownKind =
            (entry.kind == flagKind && (entry.value == supportedValue || entry.value == unsupportedValue))
            || (entry.kind == versionKind && entry.key == versionKey);
        if (!wellFormed || !knownKind || cache.m_entries.size() == maxEntries)
            return {};
        cache.m_entries.push_back(entry);
    }
    return cache;
}

std::string FlagCache::serialize() const
{
    std::string text = std::string(header) + '\n';
    for (const Entry &entry : m_entries)
        text += entry.kind + '\t' + entry.stamp + '\t' + entry.key + '\t' + entry.value + '\t' + entry.path + '\n';
    return text;
}

bool FlagCache::save(const std::string &filePath) const
{
    std::string temporary = filePath + ".XXXXXX";
    const int fd = createUniqueFile(temporary);
    if (fd < 0)
        return false;
    const bool written = writeAll(fd, serialize());
    closeFile(fd);
    if (written && replaceFile(temporary, filePath, ScratchFile::asideName(filePath)))
        return true;
    removeFile(temporary);
    return false;
}

std::optional<bool> FlagCache::supports(const ToolIdentity &tool, const std::string &flag) const
{
    const Entry *entry = find(tool, flagKind, flag);
    if (!entry)
        return std::nullopt;
    return entry->value == supportedValue;
}

void FlagCache::setSupports(const ToolIdentity &tool, const std::string &flag, bool supported)
{
    set(tool, flagKind, flag, supported ? supportedValue : unsupportedValue);
}

std::optional<std::string> FlagCache::version(const ToolIdentity &tool) const
{
    const Entry *entry = find(tool, versionKind, versionKey);
    if (!entry)
        return std::nullopt;
    return entry->value;
}

void FlagCache::setVersion(const ToolIdentity &tool, const std::string &version)
{
    set(tool, versionKind, versionKey, version);
}

const FlagCache::Entry *FlagCache::find(const ToolIdentity &tool, const std::string &kind,
                                        const std::string &key) const
{
    for (const Entry &entry : m_entries) {
        if (entry.path == tool.path && entry.stamp == tool.stamp && entry.kind == kind && entry.key == key)
            return &entry;
    }
    return nullptr;
}

void FlagCache::set(const ToolIdentity &tool, const std::string &kind, const std::string &key,
                    const std::string &value)
{
    // What cannot be written back so that parse() accepts it is not kept.
    if (!isField(tool.stamp) || !isField(key) || !isField(value) || !isPath(tool.path))
        return;

    std::vector<Entry> kept;
    for (const Entry &entry : m_entries) {
        const bool stale = entry.path == tool.path && entry.stamp != tool.stamp;
        const bool replaced = entry.path == tool.path && entry.kind == kind && entry.key == key;
        if (!stale && !replaced)
            kept.push_back(entry);
    }
    kept.push_back({kind, tool.stamp, key, value, tool.path});
    if (kept.size() > maxEntries)
        kept.erase(kept.begin(), kept.begin() + std::ptrdiff_t(kept.size() - maxEntries));
    m_entries = std::move(kept);
}

} // namespace Launcher
