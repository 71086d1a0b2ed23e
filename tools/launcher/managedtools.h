#pragma once

#include "folderlock.h"
#include "platform.h"

#include <ctime>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Launcher {

class ScratchFile;
struct InstallState;

// The launcher's own copies of the downloader tool's standalone build and of
// the Deno JavaScript runtime, kept in the data folder beside the launcher.
//
// An update takes the release's files from the feeds and installs one only
// if it is verified: the tool's SHA-256 must match its line in the release's
// SHA2-256SUMS, whose detached signature must verify against the tool's
// release key; Deno's zip must match its .sha256sum, fetched over HTTPS.
// A new copy must answer --version before it replaces the old one by an
// atomic rename; the old copy stays as "<name>.previous" until the new one
// has run once. Whatever fails, the installed copies stay as they were and
// no temporary file is left.
//
// Nothing goes backwards: a tool release older than the highest one ever
// installed here is refused, however validly signed (a stale mirror, or one
// that serves an old release with a known flaw), and a Deno older than the
// tool needs is neither installed nor kept.
class ManagedTools
{
public:
    struct Outcome
    {
        Outcome(bool succeeded, std::string text, std::vector<std::string> notices = {})
            : ok(succeeded)
            , message(std::move(text))
            , warnings(std::move(notices))
        {
        }

        bool ok = false;
        // On failure, the file concerned and why: "SHA2-256SUMS.sig: bad
        // signature". On success, what was done: "installed yt-dlp_linux
        // 2025.11.12", "yt-dlp_linux is up to date".
        std::string message;
        // What the user should know whatever the outcome: a feed that has
        // offered nothing new for months, or has not answered for weeks.
        std::vector<std::string> warnings;
    };

    // channel: "stable" or "nightly", the feed the tool comes from.
    ManagedTools(std::string folder, std::string channel);

    std::string toolPath() const;
    std::string runtimePath() const;
    bool hasTool() const;
    bool hasRuntime() const;

    // Brings the tool, and the runtime when withRuntime, up to the feeds'
    // newest verified releases. Waits for another launcher's update to end
    // first, up to half a minute, or gives up at once, as wait says.
    Outcome update(bool withRuntime, FolderLock::Wait wait);

    // Waits, half a minute at most, until no other launcher is updating the
    // copies; false when one still is.
    bool waitForOtherUpdate() const;

    // Whether the last successful check is more than a week old and no
    // failed attempt makes the next one wait (InstallState::mayAttempt).
    bool isDueForRefresh(std::time_t now) const;
    // Whether an install may be tried: not while a failed attempt makes the
    // next one wait.
    bool mayTryInstall(std::time_t now) const;

    // The managed copies a run starts with, told apart from later ones by
    // their files' stamps: a refresh beside the run may replace them.
    struct CopiesInUse
    {
        std::optional<FileStamp> tool;
        std::optional<FileStamp> runtime;
    };
    CopiesInUse copiesInUse(bool toolIsManaged, bool runtimeIsManaged) const;

    // After a run: a copy the run used that is still the installed one is
    // settled. A run that went well settles a fresh install (its previous
    // copy goes); one whose tool could not start or crashed puts the
    // previous copy back. A copy that was replaced while the run went on is
    // not judged by that run, either way.
    void settleAfterRun(const CopiesInUse &used, bool ranWell);

private:
    Outcome updateTool(InstallState &state);
    Outcome updateRuntime(InstallState &state);
    std::optional<std::string> installedToolVersion(InstallState &state) const;
    bool hasRuntimeNewEnough() const;
    bool installFile(ScratchFile &file, const std::string &target, std::string *problem);
    void settleCopy(const std::string &path, const std::optional<FileStamp> &used, bool ranWell);

    std::string m_folder;
    std::string m_channel;
};

} // namespace Launcher
