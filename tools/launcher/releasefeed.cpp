#include "releasefeed.h"

#include "platform.h"

namespace Launcher::ReleaseFeed {

namespace {

std::string feedFrom(const char *variable, const char *standard)
{
    return environmentValue(variable).value_or(standard);
}

} // namespace

std::string toolFeed(const std::string &channel)
{
    if (channel == "nightly")
        return feedFrom("KESTREL_TOOL_NIGHTLY_FEED",
                        "https://github.com/yt-dlp/yt-dlp-nightly-builds/releases/latest/download/");
    return feedFrom("KESTREL_TOOL_FEED", "https://github.com/yt-dlp/yt-dlp/releases/latest/download/");
}

std::string runtimeFeed()
{
    return feedFrom("KESTREL_JS_RUNTIME_FEED", "https://github.com/denoland/deno/releases/latest/download/");
}

const char *sumsFile()
{
    return "SHA2-256SUMS";
}

const char *signatureFile()
{
    return "SHA2-256SUMS.sig";
}

#if defined(_WIN32)
const char *toolAsset()
{
    return "yt-dlp.exe";
}

const char *runtimeArchive()
{
    return "deno-x86_64-pc-windows-msvc.zip";
}

const char *runtimeExecutable()
{
    return "deno.exe";
}
#elif defined(__aarch64__)
const char *toolAsset()
{
    return "yt-dlp_linux_aarch64";
}

const char *runtimeArchive()
{
    return "deno-aarch64-unknown-linux-gnu.zip";
}

const char *runtimeExecutable()
{
    return "deno";
}
#else
const char *toolAsset()
{
    return "yt-dlp_linux";
}

const char *runtimeArchive()
{
    return "deno-x86_64-unknown-linux-gnu.zip";
}

const char *runtimeExecutable()
{
    return "deno";
}
#endif

std::string address(const std::string &feed, const std::string &fileName)
{
    if (!feed.empty() && feed.back() == '/')
        return feed + fileName;
    return feed + '/' + fileName;
}

} // namespace Launcher::ReleaseFeed
