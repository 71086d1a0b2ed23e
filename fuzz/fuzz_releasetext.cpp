// What the launcher reads from a release feed and from the user's options
// file: the armoured signing key, sums files, a runtime's version answer,
// "tool-options.txt". The first byte chooses the reader, the rest is its
// text.

#include "fuzzsupport.h"

#include "checksums.h"
#include "dearmor.h"
#include "jsruntime.h"
#include "useroptions.h"

#include <cctype>
#include <string>

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const std::string text(reinterpret_cast<const char *>(data) + 1, size - 1);
    const QString report = Fuzz::text(data, size);
    switch (data[0] % 5) {
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
    default:
        FUZZ_CHECK(wellFormedOptions(Launcher::parseUserOptions(text)), report);
        break;
    }
    return 0;
}
