#pragma once

#include <cstdint>
#include <string>

namespace Launcher {

// The runtime's executable unpacks to about 110 MB: room to grow, but a zip
// that would fill the disk is refused.
constexpr std::uint64_t maxUnpackedBytes = 300ull * 1024 * 1024;

// Writes the entry called entryName (at the zip's top level) of the zip
// archive at archivePath into the open file descriptor fd. False with
// *problem set when the archive cannot be read, has no such entry, or the
// entry's declared size or the bytes it actually unpacks to exceed maxBytes.
bool extractZipEntry(const std::string &archivePath, const std::string &entryName, int fd, std::string *problem,
                     std::uint64_t maxBytes = maxUnpackedBytes);

} // namespace Launcher
