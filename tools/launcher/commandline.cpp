#include "commandline.h"

namespace Launcher {

namespace {

void appendQuoted(std::string &line, const std::string &argument)
{
    if (!argument.empty() && argument.find_first_of(" \t\n\v\"") == std::string::npos) {
        line += argument;
        return;
    }
    line += '"';
    std::size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        // Backslashes count only before a quote: doubled there, and the
        // quote itself escaped.
        line.append(c == '"' ? backslashes * 2 + 1 : backslashes, '\\');
        backslashes = 0;
        line += c;
    }
    // Before the closing quote, too.
    line.append(backslashes * 2, '\\');
    line += '"';
}

} // namespace

std::string windowsCommandLine(const std::vector<std::string> &arguments)
{
    std::string line;
    for (const std::string &argument : arguments) {
        if (!line.empty())
            line += ' ';
        appendQuoted(line, argument);
    }
    return line;
}

} // namespace Launcher
