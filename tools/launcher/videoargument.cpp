#include "videoargument.h"

#include <algorithm>
#include <cctype>

namespace Launcher {

namespace {

const std::string secureScheme = "https://";

bool isIdentifierCharacter(unsigned char c)
{
    return std::isalnum(c) != 0 || c == '_' || c == '-';
}

bool isIdentifier(const std::string &text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) { return isIdentifierCharacter(c); });
}

bool hasPrefixIgnoringCase(const std::string &text, const std::string &prefix)
{
    return text.size() >= prefix.size()
        && std::equal(prefix.begin(), prefix.end(), text.begin(),
                      [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b)); });
}

bool endsWith(const std::string &text, const std::string &suffix)
{
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

// Host names only: a percent sign, an "@" or a port would let the text mean
// another host than it shows.
bool isServiceHost(std::string host)
{
    if (host.empty() || !std::all_of(host.begin(), host.end(), [](unsigned char c) {
            return std::isalnum(c) != 0 || c == '.' || c == '-';
        }))
        return false;
    std::transform(host.begin(), host.end(), host.begin(), [](unsigned char c) { return std::tolower(c); });
    return host == "youtube.com" || endsWith(host, ".youtube.com") || host == "youtu.be";
}

bool hasSchemeOfItsOwn(const std::string &text)
{
    const std::size_t colon = text.find(':');
    const std::size_t pathStart = text.find_first_of("/?#");
    return colon != std::string::npos && (pathStart == std::string::npos || colon < pathStart);
}

// Spaces or control characters have no place in an address the tool is
// given; the tool would take a part of it for something else.
bool isPrintable(const std::string &text)
{
    return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c > ' ' && c != 0x7f; });
}

std::optional<std::string> acceptedAddress(const std::string &address)
{
    if (!isPrintable(address) || !hasPrefixIgnoringCase(address, secureScheme))
        return std::nullopt;
    const std::size_t hostStart = secureScheme.size();
    const std::size_t hostEnd = std::min(address.find_first_of("/?#", hostStart), address.size());
    if (!isServiceHost(address.substr(hostStart, hostEnd - hostStart)))
        return std::nullopt;
    return address;
}

} // namespace

std::optional<std::string> acceptedVideo(const std::string &argument)
{
    if (isIdentifier(argument))
        return argument;
    if (hasSchemeOfItsOwn(argument))
        return acceptedAddress(argument);
    return acceptedAddress(secureScheme + argument);
}

} // namespace Launcher
