// kestreldl2: runs the downloader tool with the arguments the application
// gives, as its child, and ends the way the tool ended.
//
// The tool is the launcher's own managed copy of the tool's standalone
// release build in the data folder beside it, installed on first need and
// refreshed weekly (ManagedTools); the system's yt-dlp when there is none.
// "kestreldl2 --update" installs or updates the managed copies and ends as
// a crash when it cannot, which is what the application reports as a failed
// update.
//
// The application stops a download by killing every process whose
// executable is this file, and judges a run by whether it ended by a signal,
// so the launcher must not outlive the tool's purpose nor hide how it ended.
// It writes nothing of its own to standard output during a tool run: that is
// the tool's, read by the application byte for byte.

#include "childprocess.h"
#include "flagcache.h"
#include "knowledgecache.h"
#include "freshcopies.h"
#include "infocache.h"
#include "jsruntime.h"
#include "launchersettings.h"
#include "managedtools.h"
#include "platform.h"
#include "scratchfile.h"
#include "secrets.h"
#include "toolflags.h"
#include "toollocation.h"
#include "toollog.h"
#include "toolrun.h"
#include "useroptions.h"
#include "videoargument.h"
#include "writeall.h"

#include <ctime>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

// Long enough for a cold Python start on a busy machine; a probe that takes
// longer proves nothing and the flag is then passed on unchanged.
constexpr int probeTimeoutMs = 20000;

constexpr int standardOutput = 1;
constexpr int standardError = 2;

void writeLine(int fd, const std::string &text)
{
    Launcher::writeAll(fd, text + '\n');
}

// The launcher's log in the data folder, once it is open.
Launcher::ToolLog *launcherLog = nullptr;

void note(const std::string &text)
{
    writeLine(standardError, "kestreldl2: " + Launcher::Secrets::withoutCredentials(text));
    if (launcherLog)
        launcherLog->note(text);
}

// arguments without the checked flags that tool does not know.
std::vector<std::string> withoutUnknownFlags(const std::string &tool, const std::vector<std::string> &arguments,
                                             const std::vector<std::string> &checked, Launcher::KnowledgeCache &knowledge)
{
    const std::optional<Launcher::ToolIdentity> identity = Launcher::identifyTool(tool);
    const bool canCache = identity && knowledge.canKeep();
    Launcher::FlagCache &cache = knowledge.cache();

    std::set<std::string> unknown;
    for (const std::string &flag : checked) {
        std::optional<bool> supported = canCache ? cache.supports(*identity, flag) : std::nullopt;
        if (!supported) {
            const Launcher::ToolFlag *details = Launcher::findToolFlag(flag);
            const char *trialValue = details && details->takesValue ? details->trialValue : nullptr;
            const Launcher::FlagSupport answer = Launcher::probeFlagSupport(tool, flag, trialValue, probeTimeoutMs);
            if (answer != Launcher::FlagSupport::Undetermined) {
                supported = answer == Launcher::FlagSupport::Supported;
                if (canCache) {
                    cache.setSupports(*identity, flag, *supported);
                    knowledge.learnt();
                }
            }
        }
        if (supported && !*supported)
            unknown.insert(flag);
    }
    if (unknown.empty())
        return arguments;

    std::optional<std::string> version = canCache ? cache.version(*identity) : std::nullopt;
    if (!version) {
        version = Launcher::queryToolVersion(tool, probeTimeoutMs);
        if (version && canCache) {
            cache.setVersion(*identity, *version);
            knowledge.learnt();
        }
    }

    std::vector<Launcher::DroppedFlag> dropped;
    const std::vector<std::string> kept = Launcher::dropFlags(arguments, unknown, &dropped);
    const std::string toolName = version ? "yt-dlp " + *version : tool;
    std::set<std::string> told;
    for (const Launcher::DroppedFlag &flag : dropped) {
        if (told.insert(flag.flag).second)
            note("dropped " + flag.text + " (not known to " + toolName + ")");
    }
    return kept;
}

std::optional<Launcher::JsRuntime> systemRuntime(Launcher::KnowledgeCache &knowledge)
{
    return Launcher::findSystemRuntime(knowledge.cache(), knowledge.learntFlag());
}

// The version a program answers with, asked once per installed file and
// then taken from the knowledge cache.
std::string programVersion(const std::string &program, const std::vector<std::string> &question,
                           Launcher::KnowledgeCache &knowledge)
{
    const std::optional<Launcher::ToolIdentity> identity = Launcher::identifyTool(program);
    std::optional<std::string> answer = identity ? knowledge.cache().version(*identity) : std::nullopt;
    if (!answer) {
        constexpr int versionTimeoutMs = 10000;
        answer = Launcher::firstOutputLine(program, question, versionTimeoutMs, true).value_or("?");
        if (identity) {
            knowledge.cache().setVersion(*identity, *answer);
            knowledge.learnt();
        }
    }
    return *answer;
}

// Whether the managed Deno is one the tool can use: an earlier launcher
// installed whatever the feed offered.
bool managedRuntimeIsNewEnough(const Launcher::ManagedTools &managed, Launcher::KnowledgeCache &knowledge)
{
    return managed.hasRuntime()
        && Launcher::isRuntimeNewEnough("deno", programVersion(managed.runtimePath(), {"--version"}, knowledge));
}

// The runtime every tool run names: one on PATH that is new enough, else
// the managed Deno when it is installed and new enough.
std::optional<Launcher::JsRuntime> runtimeInUse(const Launcher::ManagedTools &managed,
                                                const std::optional<Launcher::JsRuntime> &system,
                                                Launcher::KnowledgeCache &knowledge)
{
    if (system)
        return system;
    if (managedRuntimeIsNewEnough(managed, knowledge))
        return Launcher::JsRuntime{"deno", managed.runtimePath()};
    return std::nullopt;
}

// What the launcher puts before the application's arguments on every run:
// the user's own configuration files stay out of it (a "--print" line there
// would change the output the application parses), the output is UTF-8
// whatever the locale, and the tool uses exactly the runtime chosen here
// instead of searching for one itself.
std::vector<std::string> launcherArguments(const std::optional<Launcher::JsRuntime> &runtime)
{
    std::vector<std::string> arguments{"--ignore-config", "--encoding", "utf-8", "--no-js-runtimes"};
    if (runtime) {
        arguments.emplace_back("--js-runtimes");
        arguments.push_back(runtime->flagValue());
    }
    return arguments;
}

// For a tool that runs on the system's Python, where --encoding alone does
// not reach every stream.
void forceUtf8Output()
{
    Launcher::setEnvironment("PYTHONIOENCODING", "utf-8");
    Launcher::setEnvironment("PYTHONUTF8", "1");
}

// The managed copies, from the channel the user's kestreldl2.conf names.
Launcher::ManagedTools managedTools(const std::string &folder)
{
    const Launcher::LauncherSettings settings = Launcher::LauncherSettings::load(folder);
    for (const std::string &problem : settings.problems) {
        if (launcherLog)
            launcherLog->note(problem);
    }
    return Launcher::ManagedTools(folder, settings.toolChannel);
}

// Brings the managed copies up to date: the tool, and Deno unless the system
// has a runtime new enough, waiting for another launcher's update as wait
// says.
Launcher::ManagedTools::Outcome updateCopies(Launcher::ManagedTools &managed, const std::string &folder,
                                             Launcher::FolderLock::Wait wait)
{
    Launcher::KnowledgeCache knowledge(folder);
    const bool withRuntime = !systemRuntime(knowledge);
    knowledge.saveIfLearnt();
    return managed.update(withRuntime, wait);
}

// Into the log only: standard error belongs to the tool during a run.
void logWarnings(const Launcher::ManagedTools::Outcome &outcome)
{
    for (const std::string &warning : outcome.warnings) {
        if (launcherLog)
            launcherLog->note("warning: " + warning);
    }
}

// The launcher's own command line for a refresh beside a tool run: not an
// option of the tool's, and never one the application gives.
const char backgroundRefreshOption[] = "--kestrel-background-refresh";

// A refresh may take four downloads of at most ten minutes each and two
// version checks; past this it is ended, and counts as a failed attempt.
constexpr int backgroundRefreshSeconds = 45 * 60;

// Refreshes the managed copies in a launcher process of its own, started
// once the tool runs, so that the run keeps the copy it chose. It outlives
// the run, so that a short run does not cut a long download short and make
// the next run start it again from nothing.
void startRefresh()
{
    Launcher::startBesideRun({backgroundRefreshOption});
}

// The refresh that startRefresh() starts: one at a time (it gives up at once
// when another launcher is updating), ended by its own deadline, its
// outcome in the log only.
[[noreturn]] void refreshInBackground(const std::string &folder)
{
    Launcher::endAfter(backgroundRefreshSeconds);
    Launcher::ManagedTools managed = managedTools(folder);
    const Launcher::ManagedTools::Outcome outcome = updateCopies(managed, folder, Launcher::FolderLock::Wait::NotAtAll);
    logWarnings(outcome);
    note(std::string("background refresh ") + (outcome.ok ? "done: " : "refused: ") + outcome.message);
    std::exit(0);
}

// kestreldl2 --update: installs or updates the managed tool, and the managed
// runtime unless the system has one that is new enough.
[[noreturn]] void updateManagedCopies(const std::string &folder)
{
    Launcher::ManagedTools managed = managedTools(folder);
    const Launcher::ManagedTools::Outcome outcome
        = updateCopies(managed, folder, Launcher::FolderLock::Wait::UpToHalfAMinute);
    for (const std::string &warning : outcome.warnings)
        note("warning: " + warning);
    if (!outcome.ok) {
        note("update refused: " + outcome.message);
        Launcher::endAsCrash();
    }
    writeLine(standardOutput, outcome.message);
    std::exit(0);
}

// kestreldl2 --update --background: what the application starts as soon as
// its window is up, so that the managed copies are there before the first
// video rather than installed behind its busy page. It does anything only
// when there is no managed tool yet, gives way to a run that is installing,
// keeps to the machine's idle time, and writes only to the log.
[[noreturn]] void prepareManagedCopies(const std::string &folder)
{
    Launcher::lowerOwnPriority();
    Launcher::ManagedTools managed = managedTools(folder);
    if (Launcher::environmentValue(Launcher::toolVariable()) || managed.hasTool()
        || !managed.mayTryInstall(std::time(nullptr)))
        std::exit(0);
    const Launcher::ManagedTools::Outcome outcome = updateCopies(managed, folder, Launcher::FolderLock::Wait::NotAtAll);
    logWarnings(outcome);
    if (launcherLog)
        launcherLog->note(std::string("background install: ") + (outcome.ok ? "" : "refused: ") + outcome.message);
    std::exit(outcome.ok ? 0 : 1);
}

// Set for the launcher that a launcher which has just replaced itself
// starts in its place, so that it does not look again.
const char freshVariable[] = "KESTREL_LAUNCHER_FRESH";

// Takes fresh copies of the launcher and ffmpeg from beside the application
// that started this launcher (applicationFolder()) and, when the launcher
// itself was replaced, runs the new one in its place.
void takeFreshCopies(const std::string &folder, char *argv[])
{
    const bool fresh = Launcher::environmentValue(freshVariable).has_value();
    Launcher::unsetEnvironment(freshVariable);
    if (fresh)
        return;
    const std::optional<std::string> appFolder = Launcher::applicationFolder();
    if (!appFolder) {
        if (const std::optional<std::string> named = Launcher::environmentValue("KESTREL_APP_DIR"); named && launcherLog)
            launcherLog->note("KESTREL_APP_DIR names " + *named
                              + ", which is not the folder of the application KESTREL_APP_PID names; no copies are taken from it");
        return;
    }
    if (!Launcher::refreshCopies(folder, *appFolder))
        return;
    note("took the launcher of " + *appFolder);
    Launcher::setEnvironment(freshVariable, "1");
    Launcher::replaceProcess(folder + "/kestreldl2" + Launcher::executableSuffix(), argv);
    // The old launcher can still do this run.
    Launcher::unsetEnvironment(freshVariable);
}

// The variables that point the launcher at other feeds, keys or tools than
// its own. They are for mirrors and tests; each use is written to the log at
// every run, and for "--update" on standard error too, so that an
// environment someone else gave the launcher does not go unseen.
void reportRedirections(bool onStandardError)
{
    for (const char *name : {"KESTREL_TOOL_FEED", "KESTREL_TOOL_NIGHTLY_FEED", "KESTREL_JS_RUNTIME_FEED",
                             "KESTREL_TOOL_KEYRING", "KESTREL_YTDLP"}) {
        const std::optional<std::string> value = Launcher::environmentValue(name);
        if (!value)
            continue;
        const std::string text = std::string(name) + " is set: " + *value;
        if (onStandardError)
            note(text);
        else if (launcherLog)
            launcherLog->note(text);
    }
}

bool ffmpegStarts(const std::string &program, Launcher::KnowledgeCache &knowledge)
{
    return Launcher::identifyTool(program) && programVersion(program, {"-version"}, knowledge).compare(0, 15, "ffmpeg version ") == 0;
}

// The tool is never pointed at an ffmpeg that does not start, such as an
// old copy linked against libraries the system no longer has: the system's
// ffmpeg takes its place.
void avoidBrokenFfmpeg(std::vector<std::string> &arguments, Launcher::KnowledgeCache &knowledge)
{
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
        if (arguments[i] != "--ffmpeg-location")
            continue;
        std::string &location = arguments[i + 1];
        const std::string given
            = Launcher::isFolder(location) ? location + "/ffmpeg" + Launcher::executableSuffix() : location;
        if (!Launcher::isRegularFile(given) || ffmpegStarts(given, knowledge))
            return;
        const std::string system = Launcher::findOnPath("ffmpeg");
        if (system.empty() || !ffmpegStarts(system, knowledge))
            return;
        note(given + " does not start; the tool uses " + system);
        location = system;
        return;
    }
}

// The tool reads every argument before "--" as a possible option, so the
// video goes after it.
std::vector<std::string> withVideoAfterOptions(std::vector<std::string> arguments, const std::string &video)
{
    if (!video.empty() && !arguments.empty() && arguments.back() == video)
        arguments.insert(arguments.end() - 1, "--");
    return arguments;
}

// A run of the tool that uses the information cache where the arguments are
// one of the application's three runs for a video, and otherwise is just
// the run. Whatever the cache changes, a run it made fail is made again
// once, the plain way: a title run the tool refused (exit code 2, before it
// printed anything), a format or download run that failed with a document
// the tool would not load or with media addresses that no longer serve.
class CachedRun
{
public:
    CachedRun(const std::string &folder, Launcher::InfoCache::Run kind, std::string video)
        : m_cache(folder)
        , m_folder(folder)
        , m_kind(Launcher::InfoCache::enabled() ? kind : Launcher::InfoCache::Run::Other)
        , m_target(std::move(video))
    {
    }

    std::optional<Launcher::ChildEnd> run(const std::string &tool, const std::vector<std::string> &arguments, Launcher::ToolLog &log,
                           int *error, const std::function<void()> &whenStarted)
    {
        const std::time_t started = std::time(nullptr);
        std::optional<Launcher::ScratchFile> written;
        std::vector<std::string> toolArguments = arguments;
        if (m_kind == Launcher::InfoCache::Run::Metadata) {
            m_cache.clean(started);
            written.emplace(m_folder, "info");
            if (written->isOpen()) {
                written->close();
                toolArguments = Launcher::InfoCache::writingDocument(arguments, written->path());
            }
        } else if (m_kind != Launcher::InfoCache::Run::Other) {
            if (const std::optional<std::string> document = m_cache.freshDocument(m_target, started))
                toolArguments = Launcher::InfoCache::loadingDocument(arguments, *document);
        }

        const std::vector<std::string> plainArguments = withVideoAfterOptions(arguments, m_target);
        std::optional<Launcher::ChildEnd> end
            = Launcher::runTool(tool, withVideoAfterOptions(toolArguments, m_target), log, error, whenStarted);
        if (toolArguments == arguments || !end)
            return end;
        if (written) {
            if (end->exitedWith(0))
                m_cache.keep(written->path(), m_target, started);
            if (!end->exitedWith(2))
                return end;
        } else if (!end->exitedWithFailure()) {
            return end;
        }
        m_cache.forget(m_target);
        note("the run with the kept information of " + m_target + " ended with " + end->describe()
             + "; running it again without");
        return Launcher::runTool(tool, plainArguments, log, error);
    }

private:
    Launcher::InfoCache m_cache;
    std::string m_folder;
    Launcher::InfoCache::Run m_kind;
    std::string m_target;
};

// The video of one of the application's runs, made the form the tool gets
// (the last of given) when it is one of the service's; otherwise refused the
// way the tool refuses a video it cannot find, so that the application
// reports its usual failure, and never run.
bool acceptVideo(std::vector<std::string> &given, std::string &video)
{
    const std::optional<std::string> accepted = Launcher::acceptedVideo(video);
    if (!accepted) {
        writeLine(standardError,
                  "ERROR: [kestreldl2] " + Launcher::Secrets::withoutCredentials(video) + ": not a video of the service; refused");
        if (launcherLog)
            launcherLog->note("refused the video argument " + video
                              + ": only a video identifier or an https address on youtube.com or youtu.be is passed on");
        return false;
    }
    video = *accepted;
    given.back() = video;
    return true;
}

struct ToolChoice
{
    std::string path;
    bool managed = false;
    bool dueForRefresh = false;
};

// The tool to run: KESTREL_YTDLP's when set (a developer's or a test's
// choice, left alone); else the managed copy, installed first when missing
// (at most one attempt an hour); else the system's yt-dlp. An install also
// brings the managed Deno when withRuntime.
ToolChoice chooseTool(Launcher::ManagedTools &managed, bool withRuntime, Launcher::KnowledgeCache &knowledge,
                      std::string *problem)
{
    if (Launcher::environmentValue(Launcher::toolVariable()))
        return {Launcher::findTool(problem), false};

    const std::time_t now = std::time(nullptr);
    // An install under way in another launcher, such as the one the
    // application starts with its window, is waited for; its attempt counts
    // as failed until it has succeeded, so it is not judged by the state.
    if (!managed.hasTool() && !managed.waitForOtherUpdate())
        note("another launcher is still installing the managed yt-dlp after 30 seconds; using the system's yt-dlp");
    else if (!managed.hasTool() && managed.mayTryInstall(now)) {
        const Launcher::ManagedTools::Outcome outcome
            = managed.update(withRuntime, Launcher::FolderLock::Wait::UpToHalfAMinute);
        logWarnings(outcome);
        if (!outcome.ok)
            note("cannot install the managed yt-dlp (" + outcome.message + "); using the system's yt-dlp");
    }
    // A managed Deno too old for the tool is replaced at once, beside the run.
    const bool runtimeTooOld = withRuntime && managed.hasRuntime() && !managedRuntimeIsNewEnough(managed, knowledge);
    if (managed.hasTool())
        return {managed.toolPath(), true, managed.isDueForRefresh(now) || (runtimeTooOld && managed.mayTryInstall(now))};
    return {Launcher::findTool(problem), false};
}

} // namespace

int main(int argc, char *argv[])
{
    std::vector<std::string> given = Launcher::commandLineArguments(argc, argv);
    const bool backgroundRefresh = given == std::vector<std::string>{backgroundRefreshOption};
    // The refresh is not tied to the run that started it.
    if (!backgroundRefresh)
        Launcher::endRunOnStop();

    const std::string folder = Launcher::ownFolder();
    Launcher::ToolLog log(folder);
    launcherLog = &log;
    if (backgroundRefresh)
        refreshInBackground(folder);
    takeFreshCopies(folder, argv);
    const bool updateRun = given == std::vector<std::string>{"--update"};
    reportRedirections(updateRun);
    if (updateRun)
        updateManagedCopies(folder);
    if (given == std::vector<std::string>{"--update", "--background"})
        prepareManagedCopies(folder);
    std::string video;
    const Launcher::InfoCache::Run kind = Launcher::InfoCache::recognise(given, &video);
    if (kind != Launcher::InfoCache::Run::Other && !acceptVideo(given, video))
        return 1;

    Launcher::ManagedTools managed = managedTools(folder);
    Launcher::KnowledgeCache knowledge(folder);
    std::string problem;
    // Looked up once: it decides whether an install brings Deno, and which
    // runtime the run names.
    const std::optional<Launcher::JsRuntime> runtimeOnPath = systemRuntime(knowledge);
    const bool withRuntime = !runtimeOnPath;
    const ToolChoice tool = chooseTool(managed, withRuntime, knowledge, &problem);
    if (tool.path.empty()) {
        note("cannot find yt-dlp; install the Debian package yt-dlp");
        note(problem);
        return 127;
    }

    const std::optional<Launcher::JsRuntime> runtime = runtimeInUse(managed, runtimeOnPath, knowledge);
    const Launcher::ManagedTools::CopiesInUse copies
        = managed.copiesInUse(tool.managed, runtime && runtime->path == managed.runtimePath());
    std::vector<std::string> arguments = launcherArguments(runtime);
    const Launcher::UserOptions userOptions = Launcher::readUserOptions(folder);
    for (const std::string &refused : userOptions.refused)
        note("tool-options.txt: refused " + refused);
    arguments.insert(arguments.end(), userOptions.arguments.begin(), userOptions.arguments.end());
    arguments.insert(arguments.end(), given.begin(), given.end());
    avoidBrokenFfmpeg(arguments, knowledge);
    const std::vector<std::string> checked = Launcher::flagsToCheck(arguments);
    if (!checked.empty())
        arguments = withoutUnknownFlags(tool.path, arguments, checked, knowledge);

    knowledge.saveIfLearnt();
    forceUtf8Output();
    int error = 0;
    CachedRun cachedRun(folder, kind, video);
    const std::optional<Launcher::ChildEnd> end = cachedRun.run(tool.path, arguments, log, &error, [&] {
        if (tool.dueForRefresh)
            startRefresh();
    });
    managed.settleAfterRun(copies, end && !end->crashed());
    if (!end) {
        writeLine(standardError, "kestreldl2: cannot run " + tool.path + ": " + Launcher::errorText(error));
        return 127;
    }
    Launcher::exitLike(*end);
}
