#pragma once

#include <string>

namespace Launcher {

// Writes the entry called entryName (at the zip's top level) of the zip
// archive at archivePath into the open file descriptor fd. False with
// *problem set when the archive cannot be read or has no such entry.
bool extractZipEntry(const std::string &archivePath, const std::string &entryName, int fd, std::string *problem);

} // namespace Launcher
