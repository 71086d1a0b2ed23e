#include "freshcopies.h"

#include "flagcache.h"
#include "folderlock.h"
#include "installstate.h"
#include "platform.h"
#include "scratchfile.h"

#include <map>
#include <optional>

namespace Launcher {

namespace {

const std::string launcherFile = std::string("kestreldl2") + executableSuffix();
const std::string ffmpegFile = std::string("ffmpeg") + executableSuffix();

std::optional<std::string> contents(const std::string &path)
{
    constexpr std::size_t maxCopiedBytes = 512ull * 1024 * 1024;
    return readFile(path, maxCopiedBytes);
}

// Makes the data folder's file called name a copy of source. Nothing when
// that could not be done.
std::optional<bool> refreshCopy(const std::string &folder, const std::string &name, const std::string &source)
{
    const std::optional<std::string> fresh = contents(source);
    if (!fresh || fresh->empty())
        return std::nullopt;
    const std::string target = folder + '/' + name;
    if (contents(target) == fresh)
        return false;
    ScratchFile copy(folder, name);
    if (copy.write(*fresh) && copy.finishExecutable() && copy.moveTo(target))
        return true;
    return std::nullopt;
}

// The identity of each source that differs from the one last copied.
std::map<std::string, std::string> changedSources(const std::string &folder, const std::string &appFolder)
{
    const InstallState state = InstallState::load(folder);
    std::map<std::string, std::string> changed;
    for (const std::string &name : {launcherFile, ffmpegFile}) {
        const std::optional<ToolIdentity> source = identifyTool(appFolder + '/' + name);
        if (!source)
            continue;
        const std::string identity = source->stamp + ' ' + source->path;
        const auto known = state.copiedFrom.find(name);
        if (known == state.copiedFrom.end() || known->second != identity)
            changed[name] = identity;
    }
    return changed;
}

} // namespace

bool refreshCopies(const std::string &folder, const std::string &appFolder)
{
    if (folder.empty() || appFolder.empty() || appFolder == folder)
        return false;
    const std::map<std::string, std::string> changed = changedSources(folder, appFolder);
    if (changed.empty())
        return false;
    // Another launcher is at it: the next run looks again.
    const FolderLock lock(folder, FolderLock::Wait::NotAtAll);
    if (!lock.isHeld())
        return false;

    InstallState state = InstallState::load(folder);
    bool launcherReplaced = false;
    for (const auto &[name, identity] : changed) {
        const std::string source = identity.substr(identity.find(' ') + 1);
        const std::optional<bool> replaced = refreshCopy(folder, name, source);
        if (!replaced)
            continue;
        launcherReplaced = launcherReplaced || (*replaced && name == launcherFile);
        state.copiedFrom[name] = identity;
    }
    state.save(folder);
    return launcherReplaced;
}

} // namespace Launcher
