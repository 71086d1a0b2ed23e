#pragma once

#include <string>

namespace Launcher {

// Checks with gpgv that signaturePath is a good detached signature of
// signedPath by key (binary OpenPGP packets: gpgv reads no armour). The key
// is written for gpgv into a file of scratchFolder, removed again before
// returning. False with *problem set otherwise: "signed by another key",
// "bad signature", "gpgv is missing ...".
bool verifySignature(const std::string &key, const std::string &signedPath, const std::string &signaturePath,
                     const std::string &scratchFolder, std::string *problem);

} // namespace Launcher
