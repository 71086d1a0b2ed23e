#include "useroptions.h"

#include "platform.h"
#include "secrets.h"

#include <optional>

namespace Launcher {

namespace {

constexpr std::size_t maxFileBytes = 64 * 1024;

struct AllowedOption
{
    const char *name;
    bool takesValue;
};

const AllowedOption allowedOptions[] = {
    {"--cookies-from-browser", true},
    {"--cookies", true},
    {"--no-cookies-from-browser", false},
    {"--no-cookies", false},
    {"--proxy", true},
    {"--geo-verification-proxy", true},
    {"--source-address", true},
    {"--force-ipv4", false},
    {"-4", false},
    {"--force-ipv6", false},
    {"-6", false},
    {"--limit-rate", true},
    {"-r", true},
    {"--throttled-rate", true},
    {"--socket-timeout", true},
    {"--sleep-requests", true},
    {"--sleep-interval", true},
    {"--max-sleep-interval", true},
    {"--add-headers", true},
    {"--extractor-args", true},
    {"--xff", true},
    {"--no-check-certificates", false},
    {"--netrc", false},
    {"--netrc-location", true},
    {"--username", true},
    {"--password", true},
};

const AllowedOption *findAllowed(const std::string &name)
{
    for (const AllowedOption &option : allowedOptions) {
        if (name == option.name)
            return &option;
    }
    return nullptr;
}

std::string trimmed(const std::string &text)
{
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos)
        return {};
    const std::size_t last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

std::string unquoted(const std::string &value)
{
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
        return value.substr(1, value.size() - 2);
    return value;
}

bool isPrintable(const std::string &text)
{
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < 0x20 && c != '\t')
            return false;
    }
    return true;
}

} // namespace

UserOptions parseUserOptions(const std::string &text)
{
    UserOptions options;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        const std::string line = trimmed(text.substr(start, end - start));
        start = end + 1;
        if (line.empty() || line.front() == '#')
            continue;
        if (!isPrintable(line)) {
            options.refused.push_back("a line that is not text");
            continue;
        }
        const std::size_t split = line.find_first_of(" \t=");
        const std::string name = line.substr(0, split);
        const std::string value = split == std::string::npos ? std::string() : unquoted(trimmed(line.substr(split + 1)));
        const AllowedOption *option = findAllowed(name);
        // The refused line goes into the log, where a secret has no place.
        const std::string shown = Secrets::isSecretOption(name) && !value.empty() ? name + ' ' + Secrets::hidden : line;
        if (!option) {
            options.refused.push_back(shown + " (not an option for reaching the service)");
            continue;
        }
        if (option->takesValue != !value.empty()) {
            options.refused.push_back(shown + (option->takesValue ? " (needs a value)" : " (takes no value)"));
            continue;
        }
        options.arguments.push_back(name);
        if (option->takesValue)
            options.arguments.push_back(value);
    }
    return options;
}

UserOptions readUserOptions(const std::string &folder)
{
    const std::string path = folder + "/tool-options.txt";
    const std::optional<FileStamp> stamp = fileStamp(path);
    if (!stamp || !isRegularFile(path))
        return {};
    if (stamp->size > maxFileBytes)
        return {{}, {"the whole file: larger than 64 KiB"}};
    return parseUserOptions(readFile(path, maxFileBytes).value_or(std::string()));
}

} // namespace Launcher
