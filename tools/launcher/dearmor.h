#pragma once

#include <optional>
#include <string>

namespace Launcher {

// The binary OpenPGP packets of an ASCII-armoured block ("-----BEGIN PGP
// ... -----" up to its "-----END"): the armour lines, the header lines and
// the checksum line are dropped and the Base64 body decoded. gpgv reads
// binary keyrings only. Nothing when the text holds no complete block, the
// body is not Base64, or the checksum line does not match the body. Text
// that is already binary (its first byte has the high bit set, as every
// OpenPGP packet's does) is returned as it is.
std::optional<std::string> dearmor(const std::string &text);

} // namespace Launcher
