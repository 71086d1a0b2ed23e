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

// How long a download may take, so that a slow or stuck server never holds
// a run: it ends at the deadline, and it counts as stalled when less than
// minimumBytesPerSecond arrived on average over rateWindowSeconds.
struct Limits
{
    int deadlineSeconds = 600;
    std::uint64_t minimumBytesPerSecond = 10 * 1024;
    int rateWindowSeconds = 30;
};

// Writes the body at address into the open file descriptor fd. A body
// larger than maxBytes, an HTTP status other than 200, a transfer past the
// limits or one that ends before its announced length fails.
Result toFile(const std::string &address, int fd, std::uint64_t maxBytes, const Limits &limits = {});

// The body at address, up to maxBytes.
Result toText(const std::string &address, std::string *text, std::uint64_t maxBytes, const Limits &limits = {});

} // namespace Fetch

} // namespace Launcher
