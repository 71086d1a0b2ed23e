#include "secrets.h"

#include <algorithm>
#include <array>

namespace Launcher::Secrets {

namespace {

// The tool's options whose values identify or authenticate the user.
constexpr std::array<const char *, 15> secretOptions{
    "--username", "-u", "--password", "-p", "--video-password", "--twofactor", "-2",
    "--ap-username", "--ap-password", "--client-certificate-password",
    "--add-headers", "--add-header", "--cookies", "--proxy", "--geo-verification-proxy"};

bool isShortSecretOption(const std::string &argument)
{
    return argument.size() > 2 && argument[0] == '-' && argument[1] != '-'
        && isSecretOption(argument.substr(0, 2));
}

std::string hiddenValue(const std::string &argument)
{
    const std::size_t equals = argument.find('=');
    if (argument.compare(0, 2, "--") == 0 && equals != std::string::npos && isSecretOption(argument.substr(0, equals)))
        return argument.substr(0, equals + 1) + hidden;
    if (isShortSecretOption(argument))
        return argument.substr(0, 2) + hidden;
    return withoutCredentials(argument);
}

} // namespace

bool isSecretOption(const std::string &option)
{
    return std::find(secretOptions.begin(), secretOptions.end(), option) != secretOptions.end();
}

std::vector<std::string> hiddenIn(const std::vector<std::string> &arguments)
{
    std::vector<std::string> shown;
    shown.reserve(arguments.size());
    bool valueIsSecret = false;
    for (const std::string &argument : arguments) {
        shown.push_back(valueIsSecret ? std::string(hidden) : hiddenValue(argument));
        valueIsSecret = !valueIsSecret && isSecretOption(argument);
    }
    return shown;
}

std::string withoutCredentials(std::string text)
{
    static const std::string separator = "://";
    for (std::size_t at = text.find(separator); at != std::string::npos; at = text.find(separator, at + 1)) {
        const std::size_t authority = at + separator.size();
        const std::size_t end = std::min(text.find_first_of("/?# \t", authority), text.size());
        const std::size_t userEnd = text.rfind('@', end == 0 ? 0 : end - 1);
        if (userEnd == std::string::npos || userEnd < authority)
            continue;
        text.replace(authority, userEnd - authority, hidden);
    }
    return text;
}

} // namespace Launcher::Secrets
