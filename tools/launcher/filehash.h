#pragma once

#include <optional>
#include <string>

namespace Launcher {

// The SHA-256 of the file at path as 64 lower-case hex digits, or nothing
// when it cannot be read.
std::optional<std::string> sha256OfFile(const std::string &path);

} // namespace Launcher
