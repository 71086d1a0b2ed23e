#pragma once

#include <cstdint>
#include <string>

namespace Launcher {

// Downloads over HTTPS; plain HTTP only from the loopback addresses, which
// the tests' local feeds use. Redirects are followed (a release's "latest"
// address redirects to the file), but only to HTTPS.
namespace Fetch {

struct Result
{
    bool ok = false;
    // Why it failed, in a few words: "HTTP 404", "download cut short",
    // "cannot connect to 127.0.0.1:9".
    std::string problem;
};

// Writes the body at address into the open file descriptor fd. A body
// larger than maxBytes, an HTTP status other than 200, a transfer that
// stalls for a minute or ends before its announced length fails.
Result toFile(const std::string &address, int fd, std::uint64_t maxBytes);

// The body at address, up to maxBytes.
Result toText(const std::string &address, std::string *text, std::uint64_t maxBytes);

} // namespace Fetch

} // namespace Launcher
