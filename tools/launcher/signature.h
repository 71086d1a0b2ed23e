#pragma once

#include <optional>
#include <string>

namespace Launcher {

// The keys a release may be signed with, as binary packets: the tool's
// release key built into the launcher, and those of the file
// KESTREL_TOOL_KEYRING names (ASCII-armoured or binary), for a test's or a
// mirror's own feed. The built-in key always stays: the variable can widen
// the check, never take the real key out of it. Nothing, with *problem set,
// when the variable names a file that holds no key.
std::optional<std::string> acceptedReleaseKeys(std::string *problem);

// Checks with gpgv that signaturePath is a good detached signature of
// signedPath by key (binary OpenPGP packets: gpgv reads no armour). The key
// is written for gpgv into a file of scratchFolder, removed again before
// returning. False with *problem set otherwise: "signed by another key",
// "bad signature", "gpgv is missing ...".
bool verifySignature(const std::string &key, const std::string &signedPath, const std::string &signaturePath,
                     const std::string &scratchFolder, std::string *problem);

} // namespace Launcher
