#pragma once

#include <string>

namespace Launcher {

// Where the launcher takes the managed tool and runtime from, and the file
// names it asks for there. A feed is a base address to which the file names
// are appended, like a release's "latest/download/" folder.
namespace ReleaseFeed {

// The tool's feed for channel ("stable" or "nightly"): KESTREL_TOOL_FEED or
// KESTREL_TOOL_NIGHTLY_FEED when set, else the latest release or nightly
// build. The nightly builds carry the same files, signed by the same key.
std::string toolFeed(const std::string &channel);
// The JavaScript runtime's feed: KESTREL_JS_RUNTIME_FEED, else Deno's latest
// release.
std::string runtimeFeed();

// The tool's standalone build for this system, which is also the name of the
// managed copy in the data folder.
const char *toolAsset();
const char *sumsFile();      // "SHA2-256SUMS"
const char *signatureFile(); // "SHA2-256SUMS.sig"

// Deno's zip for this system; its sum is in "<zip>.sha256sum".
const char *runtimeArchive();
// The runtime's executable inside the zip and in the data folder.
const char *runtimeExecutable();

// feed followed by fileName, with one slash between them.
std::string address(const std::string &feed, const std::string &fileName);

} // namespace ReleaseFeed

} // namespace Launcher
