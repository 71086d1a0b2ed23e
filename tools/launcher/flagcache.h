#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Launcher {

// Which installation of yt-dlp an answer belongs to: its file and that
// file's state, so that an upgraded or replaced yt-dlp is asked again.
struct ToolIdentity
{
    std::string path;
    std::string stamp;
};

// The identity of the yt-dlp at path (its real path, modification time and
// size), or nothing when the file cannot be examined.
std::optional<ToolIdentity> identifyTool(const std::string &path);

// What the launcher learnt about installed yt-dlp versions, kept in a text
// file beside it because asking yt-dlp costs a Python start-up per flag.
// A file that cannot be read, or that is not entirely understood, counts as
// empty: the answers are only ever a shortcut.
class FlagCache
{
public:
    static FlagCache load(const std::string &filePath);
    static FlagCache parse(const std::string &text);

    std::string serialize() const;
    // Replaces the file in one step, so that a launcher running at the same
    // time reads either the old or the new file, never half of one.
    bool save(const std::string &filePath) const;

    std::optional<bool> supports(const ToolIdentity &tool, const std::string &flag) const;
    void setSupports(const ToolIdentity &tool, const std::string &flag, bool supported);

    std::optional<std::string> version(const ToolIdentity &tool) const;
    void setVersion(const ToolIdentity &tool, const std::string &version);

    bool isEmpty() const { return m_entries.empty(); }

private:
    struct Entry
    {
        std::string kind;
        std::string stamp;
        std::string key;
        std::string value;
        std::string path;
    };

    const Entry *find(const ToolIdentity &tool, const std::string &kind, const std::string &key) const;
    void set(const ToolIdentity &tool, const std::string &kind, const std::string &key, const std::string &value);

    std::vector<Entry> m_entries;
};

} // namespace Launcher
