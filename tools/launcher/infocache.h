#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace Launcher {

// One extraction per video. The application runs the tool three times for
// one video (title and duration, the format list, the download), and every
// run would extract the video's page from the service again, seconds each.
// So the title run also writes the tool's whole information document
// (--print-to-file "%()j"), which is kept in the data folder as
// "info-<key>-<time>.json"; the format and download runs of the same video
// load it (--load-info-json) instead of extracting, for as long as the media
// addresses in it are sure to be valid. Only the application's own three
// argument lists are recognised; every other run is left as it is.
class InfoCache
{
public:
    enum class Run { Metadata, Formats, Download, Other };

    // The service's media addresses last hours; a document is used for
    // twenty minutes after its extraction.
    static constexpr std::time_t lifetimeSeconds = 20 * 60;
    // Documents of popular videos run to a megabyte or two.
    static constexpr std::size_t maximumDocuments = 12;
    static constexpr std::size_t maximumDocumentBytes = 64 * 1024 * 1024;

    explicit InfoCache(std::string dataFolder);

    // Which of the application's runs the arguments are, and the video
    // they name (the last argument).
    static Run recognise(const std::vector<std::string> &given, std::string *target);
    // Switched off by KESTREL_INFO_CACHE=off.
    static bool enabled();

    // The arguments of a title run that also writes the document to path.
    static std::vector<std::string> writingDocument(const std::vector<std::string> &arguments, const std::string &path);
    // The arguments of a run that loads the document at path in place of
    // extracting the video named by the last argument.
    static std::vector<std::string> loadingDocument(const std::vector<std::string> &arguments, const std::string &path);

    // The newest document of target that is younger than the lifetime at now.
    std::optional<std::string> freshDocument(const std::string &target, std::time_t now) const;
    // Keeps a copy of the document a title run for target, started at
    // started, wrote to written, if it is a whole JSON object: under the
    // cache's name, in place of older documents of the same video, with its
    // "webpage_url" renamed (see withoutOwnRetry()).
    bool keep(const std::string &written, const std::string &target, std::time_t started);
    // Removes every document of target.
    void forget(const std::string &target);
    // Removes expired documents, unreadable names, and the oldest beyond
    // maximumDocuments.
    void clean(std::time_t now);

private:
    struct Document
    {
        std::string name;
        std::string key;
        std::time_t made = 0;
    };
    std::vector<Document> documents() const;
    std::string path(const std::string &name) const;

    std::string m_folder;
};

} // namespace Launcher
