#pragma once

#include <optional>
#include <string>

namespace Launcher {

// The SHA-256 (64 lower-case hex digits) that a release's SHA2-256SUMS file
// gives for fileName: lines "<hash>  <name>" or "<hash> *<name>" (binary
// mode), as sha256sum writes them. Nothing when no line names the file or
// its hash is malformed.
std::optional<std::string> sumForFile(const std::string &sumsText, const std::string &fileName);

// The SHA-256 that a one-file ".sha256sum" holds: its first 64-digit hex
// word, whatever surrounds it (sha256sum's "<hash>  <name>" or PowerShell's
// "Hash : <HASH>"), in lower case.
std::optional<std::string> firstSum(const std::string &text);

} // namespace Launcher
