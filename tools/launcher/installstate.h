#pragma once

#include <cstdint>
#include <ctime>
#include <map>
#include <string>

namespace Launcher {

// What the launcher remembers about its managed copies between runs, in
// "kestreldl2.state" beside it: when the feeds were last checked with
// success, when an attempt last failed and how many have failed since the
// last success, and which runtime archive the
// managed runtime came from (its sum file names the archive, not the
// executable inside), the installed and the highest tool version, and which
// files it copied from beside the application. A file that cannot be read counts as empty.
struct InstallState
{
    std::int64_t lastCheck = 0;
    std::int64_t lastFailure = 0;
    int failures = 0;
    std::string runtimeArchiveSum;
    // The version and channel of the installed tool, and for each channel
    // the highest version ever verified and installed here: a release
    // below it is refused. Another channel's versions do not count: going
    // back from nightly builds to the releases installs the newest release,
    // older as it is.
    std::string toolVersion;
    std::string toolChannel = "stable";
    std::map<std::string, std::string> highestToolVersion;
    // For each file the launcher copies from beside the application: the
    // identity of the source it last took the file from.
    std::map<std::string, std::string> copiedFrom;

    // Whether an attempt may be made at now: not while the wait after the
    // last failure runs, an hour after the first failure, twice as long
    // after each further one, at most a day.
    bool mayAttempt(std::time_t now) const;

    static InstallState load(const std::string &folder);
    // Replaces the file in one step.
    bool save(const std::string &folder) const;
};

} // namespace Launcher
