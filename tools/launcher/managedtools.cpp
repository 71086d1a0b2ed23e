#include "managedtools.h"

#include "checksums.h"
#include "childprocess.h"
#include "fetch.h"
#include "filehash.h"
#include "installstate.h"
#include "platform.h"
#include "releasefeed.h"
#include "scratchfile.h"
#include "jsruntime.h"
#include "signature.h"
#include "toolversion.h"
#include "unzip.h"

#include <optional>

namespace Launcher {

namespace {

constexpr std::uint64_t maxListBytes = 1024 * 1024;
constexpr std::uint64_t maxSignatureBytes = 64 * 1024;
constexpr std::uint64_t maxProgramBytes = 512ull * 1024 * 1024;
// The tool's one-file build unpacks itself before it answers: generous.
constexpr int versionTimeoutMs = 120000;
constexpr std::time_t refreshAfterSeconds = 7 * 24 * 3600;
constexpr std::time_t secondsPerDay = 24 * 3600;
// The tool is released every few weeks, and YouTube breaks old releases: a
// feed whose newest release is older than this has stopped following them.
constexpr std::time_t staleReleaseSeconds = 90 * secondsPerDay;
constexpr std::time_t silentFeedSeconds = 30 * secondsPerDay;

using Outcome = ManagedTools::Outcome;

Outcome refused(const std::string &file, const std::string &reason)
{
    return {false, file + ": " + reason};
}

std::string days(std::time_t seconds)
{
    return std::to_string(static_cast<long long>(seconds / secondsPerDay)) + " days";
}

// A warning when the newest release the feed offers is months old.
std::optional<std::string> staleReleaseWarning(const std::string &asset, const std::string &version, std::time_t now)
{
    const std::optional<std::time_t> day = ToolVersion::releaseDay(version);
    if (!day || now - *day <= staleReleaseSeconds)
        return std::nullopt;
    return asset + " " + version + ", the newest release the feed offers, is " + days(now - *day)
        + " old: the feed may no longer follow the tool's releases";
}

// A warning when the feed has not answered since long before now.
std::optional<std::string> silentFeedWarning(std::time_t lastAnswer, std::time_t now)
{
    if (lastAnswer <= 0 || now - lastAnswer <= silentFeedSeconds)
        return std::nullopt;
    return "the tool's feed has not answered for " + days(now - lastAnswer)
        + ": the managed yt-dlp gets no updates";
}

} // namespace

ManagedTools::ManagedTools(std::string folder, std::string channel)
    : m_folder(std::move(folder))
    , m_channel(std::move(channel))
{
}

std::string ManagedTools::toolPath() const
{
    return m_folder + '/' + ReleaseFeed::toolAsset();
}

std::string ManagedTools::runtimePath() const
{
    return m_folder + '/' + ReleaseFeed::runtimeExecutable();
}

bool ManagedTools::hasTool() const
{
    return isExecutableFile(toolPath());
}

bool ManagedTools::hasRuntime() const
{
    return isExecutableFile(runtimePath());
}

Outcome ManagedTools::update(bool withRuntime, FolderLock::Wait wait)
{
    const FolderLock lock(m_folder, wait);
    if (!lock.isHeld())
        return refused("kestreldl2.lock", wait == FolderLock::Wait::UpToHalfAMinute
                                              ? "another update is still running after 30 seconds"
                                              : "another update is running");
    ScratchFile::removeLeftovers(m_folder);

    // The attempt counts as failed until it has succeeded, so that one that
    // is killed, or whose success cannot be written down, still makes the
    // next one wait; one that could not even be counted is not made.
    InstallState state = InstallState::load(m_folder);
    state.lastFailure = std::time(nullptr);
    ++state.failures;
    if (!state.save(m_folder))
        return refused("kestreldl2.state", "cannot write into " + m_folder);
    Outcome outcome = updateTool(state);
    if (outcome.ok && withRuntime) {
        Outcome runtime = updateRuntime(state);
        if (runtime.ok)
            outcome.message += "; " + runtime.message;
        else
            outcome = {false, runtime.message, outcome.warnings};
    }
    const std::time_t now = std::time(nullptr);
    if (!outcome.ok) {
        if (const std::optional<std::string> silent = silentFeedWarning(state.lastCheck, now))
            outcome.warnings.push_back(*silent);
        // What was installed before the failure, its version above all, is kept.
        state.save(m_folder);
        return outcome;
    }
    if (const std::optional<std::string> version = installedToolVersion(state))
        if (const std::optional<std::string> stale = staleReleaseWarning(ReleaseFeed::toolAsset(), *version, now))
            outcome.warnings.push_back(*stale);
    state.lastCheck = now;
    state.lastFailure = 0;
    state.failures = 0;
    if (!state.save(m_folder))
        return refused("kestreldl2.state", "cannot write into " + m_folder + "; the attempt counts as failed");
    return outcome;
}

Outcome ManagedTools::updateTool(InstallState &state)
{
    const std::string feed = ReleaseFeed::toolFeed(m_channel);
    const std::string asset = ReleaseFeed::toolAsset();
    const std::string sumsName = ReleaseFeed::sumsFile();
    const std::string signatureName = ReleaseFeed::signatureFile();

    std::string sums;
    Fetch::Result fetched = Fetch::toText(ReleaseFeed::address(feed, sumsName), &sums, maxListBytes);
    if (!fetched.ok)
        return refused(sumsName, fetched.problem);
    ScratchFile sumsCopy(m_folder, "sums");
    ScratchFile signature(m_folder, "signature");
    if (!sumsCopy.write(sums) || !signature.isOpen())
        return refused(sumsName, "cannot write into " + m_folder);
    fetched = Fetch::toFile(ReleaseFeed::address(feed, signatureName), signature.fd(), maxSignatureBytes);
    if (!fetched.ok)
        return refused(signatureName, fetched.problem);
    sumsCopy.close();
    signature.close();

    std::string problem;
    const std::optional<std::string> key = acceptedReleaseKeys(&problem);
    if (!key)
        return {false, problem};
    if (!verifySignature(*key, sumsCopy.path(), signature.path(), m_folder, &problem))
        return refused(signatureName, problem);

    const std::optional<std::string> sum = sumForFile(sums, asset);
    if (!sum)
        return refused(sumsName, "no line for " + asset);
    if (hasTool() && sha256OfFile(toolPath()) == sum) {
        state.toolChannel = m_channel;
        return {true, asset + " is up to date"};
    }

    ScratchFile download(m_folder, asset);
    if (!download.isOpen())
        return refused(asset, "cannot write into " + m_folder);
    fetched = Fetch::toFile(ReleaseFeed::address(feed, asset), download.fd(), maxProgramBytes);
    if (!fetched.ok)
        return refused(asset, fetched.problem);
    if (sha256OfFile(download.path()) != sum)
        return refused(asset, "SHA-256 does not match " + sumsName);
    if (!download.finishExecutable())
        return refused(asset, "cannot write into " + m_folder);
    const std::optional<std::string> version = firstOutputLine(download.path(), {"--version"}, versionTimeoutMs, true);
    if (!version)
        return refused(asset, "the new copy does not answer --version; the installed copy is kept");
    std::string &highest = state.highestToolVersion[m_channel];
    if (ToolVersion::isOlder(*version, highest))
        return refused(asset, "release " + *version + " is older than release " + highest
                                  + ", installed here before; the installed copy is kept");
    if (!installFile(download, toolPath(), &problem))
        return refused(asset, problem);
    state.toolVersion = *version;
    state.toolChannel = m_channel;
    if (ToolVersion::isVersion(*version))
        highest = *version;
    return {true, "installed " + asset + ' ' + *version};
}

// The installed tool's version as the state remembers it; asked of the copy
// itself when an earlier launcher did not keep it.
std::optional<std::string> ManagedTools::installedToolVersion(InstallState &state) const
{
    if (!state.toolVersion.empty())
        return state.toolVersion;
    if (!hasTool())
        return std::nullopt;
    const std::optional<std::string> version = firstOutputLine(toolPath(), {"--version"}, versionTimeoutMs, true);
    if (version && ToolVersion::isVersion(*version)) {
        state.toolVersion = *version;
        std::string &highest = state.highestToolVersion[state.toolChannel];
        if (!ToolVersion::isOlder(*version, highest))
            highest = *version;
    }
    return version;
}

Outcome ManagedTools::updateRuntime(InstallState &state)
{
    const std::string feed = ReleaseFeed::runtimeFeed();
    const std::string archiveName = ReleaseFeed::runtimeArchive();
    const std::string sumName = archiveName + ".sha256sum";
    const std::string executable = ReleaseFeed::runtimeExecutable();

    std::string sumText;
    Fetch::Result fetched = Fetch::toText(ReleaseFeed::address(feed, sumName), &sumText, maxListBytes);
    if (!fetched.ok)
        return refused(sumName, fetched.problem);
    const std::optional<std::string> sum = firstSum(sumText);
    if (!sum)
        return refused(sumName, "holds no SHA-256");
    if (state.runtimeArchiveSum == *sum && hasRuntimeNewEnough())
        return {true, executable + " is up to date"};

    ScratchFile archive(m_folder, "runtime-archive");
    if (!archive.isOpen())
        return refused(archiveName, "cannot write into " + m_folder);
    fetched = Fetch::toFile(ReleaseFeed::address(feed, archiveName), archive.fd(), maxProgramBytes);
    if (!fetched.ok)
        return refused(archiveName, fetched.problem);
    if (sha256OfFile(archive.path()) != sum)
        return refused(archiveName, "SHA-256 does not match " + sumName);

    ScratchFile unpacked(m_folder, executable);
    std::string problem;
    if (!unpacked.isOpen() || !extractZipEntry(archive.path(), executable, unpacked.fd(), &problem)
        || !unpacked.finishExecutable())
        return refused(archiveName, problem.empty() ? "cannot write into " + m_folder : problem);
    const std::optional<std::string> version = firstOutputLine(unpacked.path(), {"--version"}, versionTimeoutMs, true);
    if (!version)
        return refused(archiveName, "the unpacked " + executable + " does not answer --version; the installed copy is kept");
    if (!isRuntimeNewEnough("deno", *version))
        return refused(archiveName, *version + " is older than Deno 2.3.0, which the tool needs; the installed copy is kept");
    if (!installFile(unpacked, runtimePath(), &problem))
        return refused(archiveName, problem);
    state.runtimeArchiveSum = *sum;
    return {true, "installed " + *version};
}

// Asked of the copy itself: an earlier launcher installed Deno without
// looking at its version.
bool ManagedTools::hasRuntimeNewEnough() const
{
    if (!hasRuntime())
        return false;
    const std::optional<std::string> version = firstOutputLine(runtimePath(), {"--version"}, versionTimeoutMs, true);
    return version && isRuntimeNewEnough("deno", *version);
}

bool ManagedTools::installFile(ScratchFile &file, const std::string &target, std::string *problem)
{
    const std::string previous = target + ".previous";
    if (isRegularFile(target)) {
        removeFile(previous);
        // A second name for the old copy, so that it stays whole while the
        // new one takes its name.
        if (!linkFile(target, previous)) {
            *problem = "cannot keep the installed copy as " + previous + ": " + lastErrorText();
            return false;
        }
    }
    if (!file.moveTo(target)) {
        *problem = "cannot put the new copy in place: " + lastErrorText();
        removeFile(previous);
        return false;
    }
    return true;
}

bool ManagedTools::waitForOtherUpdate() const
{
    const FolderLock lock(m_folder, FolderLock::Wait::UpToHalfAMinute);
    return lock.isHeld();
}

bool ManagedTools::isDueForRefresh(std::time_t now) const
{
    const InstallState state = InstallState::load(m_folder);
    // A change of channel takes effect at the next refresh: the next run.
    const bool channelChanged = hasTool() && state.toolChannel != m_channel;
    return state.mayAttempt(now)
        && (channelChanged || state.lastCheck > now || now - state.lastCheck >= refreshAfterSeconds);
}

bool ManagedTools::mayTryInstall(std::time_t now) const
{
    return InstallState::load(m_folder).mayAttempt(now);
}

ManagedTools::CopiesInUse ManagedTools::copiesInUse(bool toolIsManaged, bool runtimeIsManaged) const
{
    CopiesInUse used;
    if (toolIsManaged)
        used.tool = fileStamp(toolPath());
    if (runtimeIsManaged)
        used.runtime = fileStamp(runtimePath());
    return used;
}

void ManagedTools::settleAfterRun(const CopiesInUse &used, bool ranWell)
{
    if (!isRegularFile(toolPath() + ".previous") && !isRegularFile(runtimePath() + ".previous"))
        return;
    const FolderLock lock(m_folder, FolderLock::Wait::NotAtAll);
    if (!lock.isHeld())
        return;
    settleCopy(toolPath(), used.tool, ranWell);
    settleCopy(runtimePath(), used.runtime, ranWell);
}

void ManagedTools::settleCopy(const std::string &path, const std::optional<FileStamp> &used, bool ranWell)
{
    const std::string previous = path + ".previous";
    const std::optional<FileStamp> installed = fileStamp(path);
    if (!used || !installed || installed->size != used->size || installed->modified != used->modified
        || !isRegularFile(previous))
        return;
    if (ranWell)
        removeFile(previous);
    else
        replaceFile(previous, path, ScratchFile::asideName(path));
}

} // namespace Launcher
