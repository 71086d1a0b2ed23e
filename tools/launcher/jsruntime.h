#pragma once

#include "flagcache.h"

#include <optional>
#include <string>
#include <vector>

namespace Launcher {

// A JavaScript runtime the downloader tool can solve YouTube's player
// challenges with, as the tool's --js-runtimes flag names it.
struct JsRuntime
{
    std::string name; // "deno", "node" or "quickjs"
    std::string path;

    // The value of --js-runtimes: "deno:/path/to/deno".
    std::string flagValue() const { return name + ':' + path; }
};

// One kind of runtime the launcher looks for on PATH: its executable, how it
// is asked for its version, and whether that answer is new enough for the
// tool (Deno 2.3, Node 20, QuickJS of 2023-12-09 or newer; every QuickJS-ng).
struct JsRuntimeKind
{
    const char *name;
    const char *executable;
    std::vector<std::string> versionArguments;
};

// In the order of preference.
const std::vector<JsRuntimeKind> &jsRuntimeKinds();

// Whether the first line a runtime of kind name printed when asked for its
// version ("deno 2.5.6 (stable, ...)", "v20.11.1", "QuickJS version
// 2024-01-13") names a version the tool can use.
bool isRuntimeNewEnough(const std::string &name, const std::string &versionText);

// The first runtime on PATH, in the order of jsRuntimeKinds(), that is new
// enough. Each runtime's version answer is kept in cache (by file, like the
// tool's), so that it is asked only once per installation; *learnt is set
// when the cache gained an answer.
std::optional<JsRuntime> findSystemRuntime(FlagCache &cache, bool *learnt);

} // namespace Launcher
