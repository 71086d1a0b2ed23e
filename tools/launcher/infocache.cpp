#include "infocache.h"

#include "platform.h"
#include "scratchfile.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace Launcher {

namespace {

const char prefix[] = "info-";
const char suffix[] = ".json";

bool isVideo(const std::string &argument)
{
    return !argument.empty() && argument.front() != '-';
}

bool contains(const std::vector<std::string> &arguments, const char *flag)
{
    return std::find(arguments.begin(), arguments.end(), flag) != arguments.end();
}

// A file name for any target, which may be a whole address.
std::string keyOf(const std::string &target)
{
    std::uint64_t hash = 14695981039346656037ull;
    for (const unsigned char c : target) {
        hash ^= c;
        hash *= 1099511628211ull;
    }
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return text;
}

bool isWholeObject(const std::string &text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    return first != std::string::npos && text[first] == '{' && text[last] == '}';
}

// A download from a document that fails makes the tool extract the video
// again from the document's "webpage_url" on its own. Renamed, the key is
// not found: the launcher's one plain run does that instead, so that a
// stale document is forgotten and a failing video is not tried three times.
std::string withoutOwnRetry(std::string text)
{
    static const std::string key = "\"webpage_url\": ";
    static const std::string renamed = "\"kept_webpage_url\": ";
    for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at + renamed.size()))
        text.replace(at, key.size(), renamed);
    return text;
}

} // namespace

InfoCache::InfoCache(std::string dataFolder)
    : m_folder(std::move(dataFolder))
{
}

InfoCache::Run InfoCache::recognise(const std::vector<std::string> &given, std::string *target)
{
    if (given.empty() || !isVideo(given.back()) || contains(given, "--load-info-json"))
        return Run::Other;
    *target = given.back();
    if (given == std::vector<std::string>{"--get-title", "--get-duration", "--no-warnings", given.back()})
        return Run::Metadata;
    if (given == std::vector<std::string>{"--list-formats", "--no-warnings", given.back()})
        return Run::Formats;
    if (given.front() == "--no-warnings" && contains(given, "--format") && contains(given, "--path")
        && contains(given, "--output"))
        return Run::Download;
    target->clear();
    return Run::Other;
}

bool InfoCache::enabled()
{
    return environmentValue("KESTREL_INFO_CACHE").value_or(std::string()) != "off";
}

std::vector<std::string> InfoCache::writingDocument(const std::vector<std::string> &arguments, const std::string &path)
{
    std::vector<std::string> written(arguments.begin(), arguments.end() - 1);
    written.insert(written.end(), {"--print-to-file", "%()j", path, arguments.back()});
    return written;
}

std::vector<std::string> InfoCache::loadingDocument(const std::vector<std::string> &arguments, const std::string &path)
{
    std::vector<std::string> loading(arguments.begin(), arguments.end() - 1);
    loading.insert(loading.end(), {"--load-info-json", path});
    return loading;
}

std::optional<std::string> InfoCache::freshDocument(const std::string &target, std::time_t now) const
{
    const std::string key = keyOf(target);
    const Document *newest = nullptr;
    const std::vector<Document> kept = documents();
    for (const Document &document : kept) {
        if (document.key == key && document.made <= now && now - document.made < lifetimeSeconds
            && (!newest || document.made > newest->made))
            newest = &document;
    }
    if (!newest || !isRegularFile(path(newest->name)))
        return std::nullopt;
    return path(newest->name);
}

bool InfoCache::keep(const std::string &written, const std::string &target, std::time_t started)
{
    const std::optional<std::string> text = readFile(written, maximumDocumentBytes);
    if (!text || !isWholeObject(*text))
        return false;
    ScratchFile document(m_folder, "info");
    if (!document.write(withoutOwnRetry(*text)))
        return false;
    forget(target);
    const std::string name = prefix + keyOf(target) + '-' + std::to_string(static_cast<long long>(started)) + suffix;
    return document.moveTo(path(name));
}

void InfoCache::forget(const std::string &target)
{
    const std::string key = keyOf(target);
    for (const Document &document : documents()) {
        if (document.key == key)
            removeFile(path(document.name));
    }
}

void InfoCache::clean(std::time_t now)
{
    std::vector<Document> kept;
    for (const Document &document : documents()) {
        if (document.made > now || now - document.made >= lifetimeSeconds)
            removeFile(path(document.name));
        else
            kept.push_back(document);
    }
    if (kept.size() <= maximumDocuments)
        return;
    std::sort(kept.begin(), kept.end(), [](const Document &a, const Document &b) { return a.made > b.made; });
    for (std::size_t i = maximumDocuments; i < kept.size(); ++i)
        removeFile(path(kept[i].name));
}

// "info-<16 hex digits>-<seconds>.json"; other names in the folder are not the cache's.
std::vector<InfoCache::Document> InfoCache::documents() const
{
    constexpr std::size_t prefixLength = sizeof prefix - 1;
    constexpr std::size_t suffixLength = sizeof suffix - 1;
    constexpr std::size_t keyLength = 16;
    std::vector<Document> found;
    for (const std::string &name : folderEntries(m_folder)) {
        if (name.size() < prefixLength + keyLength + 2 + suffixLength || name.compare(0, prefixLength, prefix) != 0
            || name.compare(name.size() - suffixLength, suffixLength, suffix) != 0
            || name[prefixLength + keyLength] != '-')
            continue;
        const std::string key = name.substr(prefixLength, keyLength);
        const std::string seconds
            = name.substr(prefixLength + keyLength + 1, name.size() - prefixLength - keyLength - 1 - suffixLength);
        if (key.find_first_not_of("0123456789abcdef") != std::string::npos || seconds.empty()
            || seconds.size() > 18 || seconds.find_first_not_of("0123456789") != std::string::npos)
            continue;
        found.push_back({name, key, static_cast<std::time_t>(std::stoll(seconds))});
    }
    return found;
}

std::string InfoCache::path(const std::string &name) const
{
    return m_folder + '/' + name;
}

} // namespace Launcher
