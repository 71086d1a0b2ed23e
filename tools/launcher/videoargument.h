#pragma once

#include <optional>
#include <string>

namespace Launcher {

// The video a run of the application names, as the launcher hands it to the
// tool. The application passes what the user's address gave it: a bare
// video identifier, or an address. The tool would follow any address to any
// host, and read "ytsearch5:..." as a search, so only two forms go through:
// an identifier of letters, digits, "_" and "-", and an https address on
// the service's own hosts (youtube.com and its sub-domains, youtu.be),
// without credentials or a port of its own. An address without a scheme is
// read as https, as the tool itself would read it.
//
// Returns the argument to give the tool, or nothing when it is refused.
std::optional<std::string> acceptedVideo(const std::string &argument);

} // namespace Launcher
