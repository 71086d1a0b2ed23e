#include "checksums.h"

#include <cctype>

namespace Launcher {

namespace {

constexpr std::size_t sumLength = 64;

bool isHexDigit(char c)
{
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

std::string lowerCase(std::string text)
{
    for (char &c : text)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

bool isSum(const std::string &word)
{
    if (word.size() != sumLength)
        return false;
    for (const char c : word) {
        if (!isHexDigit(c))
            return false;
    }
    return true;
}

} // namespace

std::optional<std::string> sumForFile(const std::string &sumsText, const std::string &fileName)
{
    std::size_t start = 0;
    while (start < sumsText.size()) {
        std::size_t end = sumsText.find('\n', start);
        if (end == std::string::npos)
            end = sumsText.size();
        std::string line = sumsText.substr(start, end - start);
        start = end + 1;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const std::size_t space = line.find(' ');
        if (space == std::string::npos)
            continue;
        std::string name = line.substr(space + 1);
        if (!name.empty() && (name.front() == ' ' || name.front() == '*'))
            name.erase(0, 1);
        if (name != fileName)
            continue;
        const std::string sum = line.substr(0, space);
        return isSum(sum) ? std::optional<std::string>(lowerCase(sum)) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<std::string> firstSum(const std::string &text)
{
    std::size_t at = 0;
    while (at < text.size()) {
        if (!isHexDigit(text[at])) {
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && isHexDigit(text[end]))
            ++end;
        const std::string word = text.substr(at, end - at);
        if (isSum(word))
            return lowerCase(word);
        at = end;
    }
    return std::nullopt;
}

} // namespace Launcher
