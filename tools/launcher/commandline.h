#pragma once

#include <string>
#include <vector>

namespace Launcher {

// The command line that hands arguments to a Windows program unchanged:
// Windows passes a program one string, which the program's C run-time (and
// CommandLineToArgvW) splits again by its rules of blanks, quotes and
// backslashes. Each argument is quoted only when it needs it.
std::string windowsCommandLine(const std::vector<std::string> &arguments);

} // namespace Launcher
