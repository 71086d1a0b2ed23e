// What the launcher reads from a release feed, from the user's files and
// from the application's command line: the armoured signing key, sums
// files, a runtime's version answer, "tool-options.txt", the video argument,
// the arguments it writes to its log with their secrets hidden, the tool's
// versions and "kestreldl2.conf". The first byte chooses the reader, the
// rest is its text.

#include "fuzzsupport.h"

#include "checksums.h"
#include "dearmor.h"
#include "jsruntime.h"
#include "launchersettings.h"
#include "secrets.h"
#include "toolversion.h"
#include "useroptions.h"
#include "videoargument.h"

#include <cctype>
#include <string>
#include <vector>

namespace {

bool isLowerHexSum(const std::string &sum)
{
    if (sum.size() != 64)
        return false;
    for (const char c : sum) {
        if (!std::isxdigit(static_cast<unsigned char>(c)) || std::isupper(static_cast<unsigned char>(c)))
            return false;
    }
    return true;
}

std::string lowerCase(std::string text)
{
    for (char &c : text)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// Every option name the reader passes on begins with "-", and it passes on
// names and values in pairs where a name takes a value.
bool wellFormedOptions(const Launcher::UserOptions &options)
{
    for (const std::string &argument : options.arguments) {
        if (argument.empty())
            return false;
    }
    return options.arguments.empty() || options.arguments.front().front() == '-';
}

std::vector<std::string> lines(const std::string &text)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
        parts.push_back(text.substr(start, end - start));
    parts.push_back(text.substr(start));
    return parts;
}

// A video passed on is an identifier, or an https address with nothing in
// it that could make the tool read it as something else.
bool isSafeVideo(const std::string &video)
{
    const bool identifier = !video.empty() && video.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-") == std::string::npos;
    if (identifier)
        return true;
    if (video.size() < 9 || lowerCase(video.substr(0, 8)) != "https://")
        return false;
    for (const unsigned char c : video) {
        if (c <= ' ' || c == 0x7f)
            return false;
    }
    const std::size_t hostEnd = video.find_first_of("/?#", 8);
    const std::string host = lowerCase(video.substr(8, hostEnd == std::string::npos ? std::string::npos : hostEnd - 8));
    return host.find_first_of("@:%") == std::string::npos;
}

// The value after every secret option is hidden, whatever it is.
bool secretsHidden(const std::vector<std::string> &arguments, const std::vector<std::string> &shown)
{
    if (shown.size() != arguments.size())
        return false;
    bool valueIsSecret = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (valueIsSecret && shown[i] != Launcher::Secrets::hidden)
            return false;
        valueIsSecret = !valueIsSecret && Launcher::Secrets::isSecretOption(arguments[i]);
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const std::string text(reinterpret_cast<const char *>(data) + 1, size - 1);
    const QString report = Fuzz::text(data, size);
    switch (data[0] % 9) {
    case 0: {
        const std::optional<std::string> key = Launcher::dearmor(text);
        if (!text.empty() && (static_cast<unsigned char>(text.front()) & 0x80))
            FUZZ_CHECK(key == text, report);
        else if (key)
            FUZZ_CHECK(!key->empty() && key->size() <= text.size(), report);
        break;
    }
    case 1: {
        const std::optional<std::string> sum = Launcher::sumForFile(text, "yt-dlp_linux");
        if (sum)
            FUZZ_CHECK(isLowerHexSum(*sum) && lowerCase(text).find(*sum) != std::string::npos, report);
        break;
    }
    case 2: {
        const std::optional<std::string> sum = Launcher::firstSum(text);
        if (sum)
            FUZZ_CHECK(isLowerHexSum(*sum) && lowerCase(text).find(*sum) != std::string::npos, report);
        break;
    }
    case 3:
        for (const char *runtime : {"deno", "node", "quickjs"})
            Launcher::isRuntimeNewEnough(runtime, text);
        break;
    case 4: {
        const std::optional<std::string> video = Launcher::acceptedVideo(text);
        if (video)
            FUZZ_CHECK(isSafeVideo(*video), report);
        break;
    }
    case 5: {
        const std::vector<std::string> arguments = lines(text);
        FUZZ_CHECK(secretsHidden(arguments, Launcher::Secrets::hiddenIn(arguments)), report);
        break;
    }
    case 6: {
        const std::vector<std::string> versions = lines(text);
        const std::string first = versions.front();
        const std::string second = versions.size() > 1 ? versions[1] : std::string();
        FUZZ_CHECK(!Launcher::ToolVersion::isOlder(first, first), report);
        FUZZ_CHECK(!(Launcher::ToolVersion::isOlder(first, second) && Launcher::ToolVersion::isOlder(second, first)), report);
        FUZZ_CHECK(Launcher::ToolVersion::releaseDay(first).has_value() == Launcher::ToolVersion::isVersion(first), report);
        break;
    }
    case 7: {
        const std::string channel = Launcher::LauncherSettings::parse(text).toolChannel;
        FUZZ_CHECK(channel == "stable" || channel == "nightly", report);
        break;
    }
    default:
        FUZZ_CHECK(wellFormedOptions(Launcher::parseUserOptions(text)), report);
        break;
    }
    return 0;
}
