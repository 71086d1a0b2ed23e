#pragma once

#include <string>

namespace Launcher {

// UTF-8, the launcher's text everywhere, and UTF-16, what Windows' wide
// calls take. Text that is not valid UTF-8 gives an empty wide string, which
// no call mistakes for a file or an address.
std::wstring toWide(const std::string &text);
std::string fromWide(const std::wstring &text);

} // namespace Launcher
