#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace Launcher {

// The tool's versions are dates: "2026.10.26" for a release, with a fourth
// number for a build of the same day ("2026.10.26.232815"). They are
// compared number by number, so that an older release, however validly
// signed, can be told from a newer one.
namespace ToolVersion {

// Whether text is such a version.
bool isVersion(const std::string &text);

// Whether first is an older version than second; false when either is not a
// version.
bool isOlder(const std::string &first, const std::string &second);

// Midnight, UTC, of the day in the version; nothing when it names none.
std::optional<std::time_t> releaseDay(const std::string &version);

} // namespace ToolVersion

} // namespace Launcher
