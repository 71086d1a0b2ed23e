#include "jsruntime.h"

#include "childprocess.h"
#include "toollocation.h"

#include <cstdlib>
#include <tuple>

namespace Launcher {

namespace {

// The numbers of a dotted or dashed version at the start of text
// ("2.5.6 (stable)" gives 2, 5, 6); missing parts count as 0.
std::tuple<long, long, long> leadingVersion(const std::string &text)
{
    long parts[3] = {0, 0, 0};
    const char *at = text.c_str();
    for (int i = 0; i < 3; ++i) {
        char *end = nullptr;
        parts[i] = std::strtol(at, &end, 10);
        if (end == at)
            break;
        at = end;
        if (*at != '.' && *at != '-')
            break;
        ++at;
    }
    return {parts[0], parts[1], parts[2]};
}

bool startsWithDigit(const std::string &text)
{
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

std::string afterPrefix(const std::string &text, const std::string &prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0 ? text.substr(prefix.size()) : std::string();
}

} // namespace

const std::vector<JsRuntimeKind> &jsRuntimeKinds()
{
    static const std::vector<JsRuntimeKind> kinds{
        {"deno", "deno", {"--version"}},
        {"node", "node", {"--version"}},
        // qjs has no version option; its help text begins with the version.
        {"quickjs", "qjs", {"-h"}},
    };
    return kinds;
}

bool isRuntimeNewEnough(const std::string &name, const std::string &versionText)
{
    if (name == "deno") {
        const std::string version = afterPrefix(versionText, "deno ");
        return startsWithDigit(version) && leadingVersion(version) >= std::make_tuple(2L, 3L, 0L);
    }
    if (name == "node") {
        const std::string version = afterPrefix(versionText, "v");
        return startsWithDigit(version) && leadingVersion(version) >= std::make_tuple(20L, 0L, 0L);
    }
    if (name == "quickjs") {
        if (!afterPrefix(versionText, "QuickJS-ng version ").empty())
            return true;
        const std::string date = afterPrefix(versionText, "QuickJS version ");
        return startsWithDigit(date) && leadingVersion(date) >= std::make_tuple(2023L, 12L, 9L);
    }
    return false;
}

std::optional<JsRuntime> findSystemRuntime(FlagCache &cache, bool *learnt)
{
    // A runtime answers at once; one that does not is not worth waiting for.
    constexpr int versionTimeoutMs = 10000;
    for (const JsRuntimeKind &kind : jsRuntimeKinds()) {
        const std::string path = findOnPath(kind.executable);
        if (path.empty())
            continue;
        const std::optional<ToolIdentity> identity = identifyTool(path);
        std::optional<std::string> version = identity ? cache.version(*identity) : std::nullopt;
        if (!version) {
            version = firstOutputLine(path, kind.versionArguments, versionTimeoutMs, false);
            if (identity) {
                // An executable that gives no answer is remembered as such.
                cache.setVersion(*identity, version.value_or("?"));
                *learnt = true;
            }
        }
        if (version && isRuntimeNewEnough(kind.name, *version))
            return JsRuntime{kind.name, path};
    }
    return std::nullopt;
}

} // namespace Launcher
