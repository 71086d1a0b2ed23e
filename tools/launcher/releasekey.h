#pragma once

#include <string>

namespace Launcher {

// The downloader tool's release signing key as binary OpenPGP packets: the
// key that signs every release's SHA2-256SUMS file (fingerprint
// AC0C BBE6 848D 6A87 3464 AF4E 57CF 6593 3B5A 7581). Generated at build
// time from keys/yt-dlp-release-signing-key.asc.
std::string releaseKey();

} // namespace Launcher
