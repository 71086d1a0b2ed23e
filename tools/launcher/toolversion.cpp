#include "toolversion.h"

#include <vector>

namespace Launcher::ToolVersion {

namespace {

// The numbers of a version, or nothing: three or four groups of digits
// separated by dots, the first three a plausible date.
std::optional<std::vector<long long>> numbers(const std::string &text)
{
    std::vector<long long> parts;
    std::size_t start = 0;
    for (;;) {
        const std::size_t dot = text.find('.', start);
        const std::string part = text.substr(start, dot == std::string::npos ? std::string::npos : dot - start);
        if (part.empty() || part.size() > 12 || part.find_first_not_of("0123456789") != std::string::npos)
            return std::nullopt;
        parts.push_back(std::stoll(part));
        if (dot == std::string::npos)
            break;
        start = dot + 1;
    }
    if (parts.size() < 3 || parts.size() > 4 || parts[0] < 2000 || parts[0] > 9999 || parts[1] < 1 || parts[1] > 12
        || parts[2] < 1 || parts[2] > 31)
        return std::nullopt;
    return parts;
}

// Days from 1970-01-01 to a date of the proleptic Gregorian calendar.
long long daysSinceEpoch(long long year, long long month, long long day)
{
    year -= month <= 2;
    const long long era = (year >= 0 ? year : year - 399) / 400;
    const long long yearOfEra = year - era * 400;
    const long long dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const long long dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

} // namespace

bool isVersion(const std::string &text)
{
    return numbers(text).has_value();
}

bool isOlder(const std::string &first, const std::string &second)
{
    const std::optional<std::vector<long long>> a = numbers(first);
    const std::optional<std::vector<long long>> b = numbers(second);
    return a && b && *a < *b;
}

std::optional<std::time_t> releaseDay(const std::string &version)
{
    const std::optional<std::vector<long long>> parts = numbers(version);
    if (!parts)
        return std::nullopt;
    return static_cast<std::time_t>(daysSinceEpoch((*parts)[0], (*parts)[1], (*parts)[2]) * 24 * 3600);
}

} // namespace Launcher::ToolVersion
