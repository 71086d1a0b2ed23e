#include "dearmor.h"

#include <cstdint>
#include <vector>

namespace Launcher {

namespace {

int base64Value(char c)
{
    if (c >= 'A' && c <= 'Z')
        return c - 'A';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 26;
    if (c >= '0' && c <= '9')
        return c - '0' + 52;
    if (c == '+')
        return 62;
    if (c == '/')
        return 63;
    return -1;
}

std::optional<std::string> decodeBase64(const std::string &text)
{
    std::string bytes;
    std::uint32_t bits = 0;
    int bitCount = 0;
    std::size_t padding = 0;
    for (const char c : text) {
        if (c == '=') {
            ++padding;
            continue;
        }
        const int value = base64Value(c);
        if (value < 0 || padding > 0)
            return std::nullopt;
        bits = (bits << 6) | std::uint32_t(value);
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            bytes.push_back(char((bits >> bitCount) & 0xff));
        }
    }
    if (padding > 2 || (text.size() % 4) != 0)
        return std::nullopt;
    return bytes;
}

// RFC 4880, section 6.1.
std::uint32_t crc24(const std::string &bytes)
{
    std::uint32_t crc = 0xb704ce;
    for (const char byte : bytes) {
        crc ^= std::uint32_t(static_cast<unsigned char>(byte)) << 16;
        for (int i = 0; i < 8; ++i) {
            crc <<= 1;
            if (crc & 0x1000000)
                crc ^= 0x1864cfb;
        }
    }
    return crc & 0xffffff;
}

std::vector<std::string> lines(const std::string &text)
{
    std::vector<std::string> result;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t'))
            line.pop_back();
        result.push_back(line);
        start = end + 1;
    }
    return result;
}

bool startsWith(const std::string &text, const std::string &prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

} // namespace

std::optional<std::string> dearmor(const std::string &text)
{
    if (!text.empty() && (static_cast<unsigned char>(text.front()) & 0x80))
        return text;

    const std::vector<std::string> all = lines(text);
    std::size_t at = 0;
    while (at < all.size() && !startsWith(all[at], "-----BEGIN PGP "))
        ++at;
    if (at == all.size())
        return std::nullopt;
    ++at;
    // Header lines ("Comment: ...") end at the first empty line.
    while (at < all.size() && !all[at].empty()) {
        if (all[at].find(": ") == std::string::npos)
            break;
        ++at;
    }
    if (at < all.size() && all[at].empty())
        ++at;

    std::string body;
    std::string checksum;
    bool ended = false;
    for (; at < all.size(); ++at) {
        const std::string &line = all[at];
        if (startsWith(line, "-----END PGP ")) {
            ended = true;
            break;
        }
        if (startsWith(line, "="))
            checksum = line.substr(1);
        else
            body += line;
    }
    if (!ended || body.empty())
        return std::nullopt;
    std::optional<std::string> bytes = decodeBase64(body);
    if (!bytes || bytes->empty())
        return std::nullopt;
    if (!checksum.empty()) {
        const std::optional<std::string> sum = decodeBase64(checksum);
        if (!sum || sum->size() != 3)
            return std::nullopt;
        const std::uint32_t expected = (std::uint32_t(static_cast<unsigned char>((*sum)[0])) << 16)
                                       | (std::uint32_t(static_cast<unsigned char>((*sum)[1])) << 8)
                                       | std::uint32_t(static_cast<unsigned char>((*sum)[2]));
        if (expected != crc24(*bytes))
            return std::nullopt;
    }
    return bytes;
}

} // namespace Launcher
