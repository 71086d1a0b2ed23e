#pragma once

#include <cstddef>
#include <string>

namespace Launcher {

// Writes all of data to fd, going on after short writes and interruptions;
// false when the descriptor takes no more.
bool writeAll(int fd, const char *data, std::size_t size);
bool writeAll(int fd, const std::string &data);

} // namespace Launcher
