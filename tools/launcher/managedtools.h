#pragma once

#include "folderlock.h"

#include <ctime>
#include <string>

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
class ManagedTools
{
public:
    struct Outcome
    {
        bool ok = false;
        // On failure, the file concerned and why: "SHA2-256SUMS.sig: bad
        // signature". On success, what was done: "installed yt-dlp_linux
        // 2025.11.12", "yt-dlp_linux is up to date".
        std::string message;
    };

    explicit ManagedTools(std::string folder);

    std::string toolPath() const;
    std::string runtimePath() const;
    bool hasTool() const;
    bool hasRuntime() const;

    // Brings the tool, and the runtime when withRuntime, up to the feeds'
    // newest verified releases. Waits for another launcher's update to end
    // first, up to half a minute, or gives up at once, as wait says.
    Outcome update(bool withRuntime, FolderLock::Wait wait);

    // Whether the last successful check is more than a week old and no
    // failed attempt makes the next one wait (InstallState::mayAttempt).
    bool isDueForRefresh(std::time_t now) const;
    // Whether an install may be tried: not while a failed attempt makes the
    // next one wait.
    bool mayTryInstall(std::time_t now) const;

    // After a run of the managed tool: a run that went well settles a fresh
    // install (the previous copy goes); one whose tool could not start or
    // crashed puts the previous copy back.
    void settleAfterRun(bool ranWell);

private:
    Outcome updateTool();
    Outcome updateRuntime(InstallState &state);
    bool installFile(ScratchFile &file, const std::string &target, std::string *problem);

    std::string m_folder;
};

} // namespace Launcher
