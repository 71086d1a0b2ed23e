// The launcher is copied into a folder of its own, as the application copies
// it into its data folder, and run with a fake yt-dlp named by KESTREL_YTDLP.
// The fake answers the option parser's questions as Debian's 2023.03.04
// does, records every command line it gets, and otherwise does what its
// FAKE_* variables ask.

#include "childprocess.h"
#include "commandline.h"
#include "flagcache.h"
#include "infocache.h"
#include "toolflags.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const char fakeYtDlp[] = R"(#!/bin/bash
# Stands in for yt-dlp 2023.03.04: --version and the option parser's errors
# come out as they do from it; the rest is up to the FAKE_* variables.
ulimit -c 0
if [ -n "$FAKE_RECORD" ]; then
    (IFS=$'\x1f'; printf '%s\n' "$*") >> "$FAKE_RECORD"
fi
usage() {
    printf '\nUsage: yt-dlp [OPTIONS] URL [URL...]\n\nyt-dlp: error: %s\n' "$1" >&2
}
if [ -n "$FAKE_PROBE_FAILS" ] && [ "${@: -1}" = --simulate ]; then
    echo 'Traceback (most recent call last):' >&2
    exit 1
fi
for arg in "$@"; do
    if [ "$arg" = --version ]; then
        echo 2023.03.04
        exit 0
    fi
done
for arg in "$@"; do
    for flag in ${FAKE_UNKNOWN---progress-delta}; do
        if [ "$arg" = "$flag" ] || [ "${arg%%=*}" = "$flag" ]; then
            usage "no such option: $flag"
            exit 2
        fi
    done
done
url=
document=
written=
expect=
for arg in "$@"; do
    case "$expect" in
        document) document=$arg; expect=; continue ;;
        template) expect=written; continue ;;
        written) written=$arg; expect=; continue ;;
    esac
    case "$arg" in
        https://*) url=$arg ;;
        --load-info-json) expect=document ;;
        --print-to-file) expect=template ;;
    esac
done
if [ -z "$url" ] && [ -z "$document" ]; then
    usage 'You must provide at least one URL.'
    echo 'Type yt-dlp --help to see a list of all options.' >&2
    exit 2
fi
if [ -n "$document" ] && [ -n "$FAKE_LOAD_EXIT" ]; then
    echo "ERROR: $document: the media addresses are no longer served" >&2
    exit "$FAKE_LOAD_EXIT"
fi
if [ -n "$written" ]; then printf '%s\n' "${FAKE_DOCUMENT-{\"id\": \"kestrel\"\}}" >> "$written"; fi
if [ -n "$FAKE_STDOUT" ]; then cat "$FAKE_STDOUT"; fi
if [ -n "$FAKE_STDERR" ]; then cat "$FAKE_STDERR" >&2; fi
ready() {
    echo $$ > "$FAKE_PIDFILE.new" && mv "$FAKE_PIDFILE.new" "$FAKE_PIDFILE"
}
if [ -n "$FAKE_CHILD" ]; then
    # What yt-dlp's ffmpeg is to it: a child of its own.
    sleep 30 &
    echo $! > "$FAKE_PIDFILE.child"
fi
if [ -n "$FAKE_TRAP" ]; then
    trap 'echo "caught $FAKE_TRAP" >> "$FAKE_RECORD"; kill $sleeper; exit 42' "$FAKE_TRAP"
    sleep 30 &
    sleeper=$!
    ready
    wait $sleeper
    exit 3
fi
if [ -n "$FAKE_SLEEP" ]; then
    ready
    exec sleep "$FAKE_SLEEP"
fi
if [ -n "$FAKE_SIGNAL" ]; then kill -s "$FAKE_SIGNAL" $$; fi
exit "${FAKE_EXIT:-0}"
)";

// What the launcher puts before the application's arguments when no
// JavaScript runtime is at hand, as with the fake runtimes of Installation.
const QStringList launcherPrefix{QStringLiteral("--ignore-config"), QStringLiteral("--encoding"),
                                 QStringLiteral("utf-8"), QStringLiteral("--no-js-runtimes")};

const char droppedNote[] = "kestreldl2: dropped --progress-delta 1 (not known to yt-dlp 2023.03.04)\n";
const char missingNote[] = "kestreldl2: cannot find yt-dlp; install the Debian package yt-dlp\n";

QStringList downloadArguments()
{
    return {QStringLiteral("--no-warnings"),
            QStringLiteral("--retries"),
            QStringLiteral("3"),
            QStringLiteral("--progress-delta"),
            QStringLiteral("1"),
            QStringLiteral("--output"),
            QStringLiteral("%(title)s [%(id)s].%(ext)s"),
            QStringLiteral("--path"),
            QStringLiteral("/tmp/Zürich – 東京"),
            QString(),
            QStringLiteral("--format"),
            QStringLiteral("137+140"),
            QStringLiteral("https://www.example.invalid/watch?v=kestrel")};
}

QStringList withoutProgressDelta(QStringList arguments)
{
    const qsizetype at = arguments.indexOf(QStringLiteral("--progress-delta"));
    if (at >= 0)
        arguments.remove(at, 2);
    return arguments;
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeAll(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

void writeScript(const QString &path, const QByteArray &content)
{
    writeAll(path, content);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup
                                    | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther);
}

// Whether process pid has ended, also when it waits unreaped as a zombie
// for a parent that does not reap it.
bool hasEnded(pid_t pid)
{
    if (::kill(pid, 0) != 0 && errno == ESRCH)
        return true;
    const QByteArray stat = readAll(QStringLiteral("/proc/%1/stat").arg(pid));
    const qsizetype afterName = stat.lastIndexOf(')');
    if (afterName < 0)
        return true;
    const QByteArray state = stat.mid(afterName + 2, 1);
    return state == "Z" || state == "X";
}

// Waits up to two seconds until every one of pids has ended; kills those
// that have not, so that a failing test leaves nothing behind.
bool waitUntilEnded(const QList<pid_t> &pids)
{
    QDeadlineTimer deadline(2000);
    bool allEnded = false;
    while (!allEnded && !deadline.hasExpired()) {
        allEnded = std::all_of(pids.cbegin(), pids.cend(), hasEnded);
        if (!allEnded)
            QThread::msleep(5);
    }
    for (const pid_t pid : pids) {
        if (!hasEnded(pid))
            ::kill(pid, SIGKILL);
    }
    return allEnded;
}

pid_t parentOf(pid_t pid)
{
    const QByteArray stat = readAll(QStringLiteral("/proc/%1/stat").arg(pid));
    const qsizetype afterName = stat.lastIndexOf(')');
    const QList<QByteArray> fields = stat.mid(afterName + 2).split(' ');
    return fields.size() > 1 ? pid_t(fields.at(1).toInt()) : -1;
}

// A process started with fork() and exec(), so that its wait status is
// seen as it is, signal number and core flag included.
class RawRun
{
public:
    RawRun(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment,
           const QString &folder)
        : m_outPath(folder + QStringLiteral("/run.out"))
        , m_errPath(folder + QStringLiteral("/run.err"))
    {
        std::vector<std::string> argv{program.toStdString()};
        for (const QString &argument : arguments)
            argv.push_back(argument.toStdString());
        std::vector<std::string> envp;
        for (const QString &entry : environment.toStringList())
            envp.push_back(entry.toStdString());
        std::vector<char *> argvPointers;
        for (std::string &argument : argv)
            argvPointers.push_back(argument.data());
        argvPointers.push_back(nullptr);
        std::vector<char *> envpPointers;
        for (std::string &entry : envp)
            envpPointers.push_back(entry.data());
        envpPointers.push_back(nullptr);

        const std::string outPath = m_outPath.toStdString();
        const std::string errPath = m_errPath.toStdString();
        const std::string workFolder = folder.toStdString();
        const int in = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        const int out = ::open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        const int err = ::open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        if (in < 0 || out < 0 || err < 0)
            qFatal("cannot open the run's files");

        m_pid = ::fork();
        if (m_pid == 0) {
            ::dup2(in, STDIN_FILENO);
            ::dup2(out, STDOUT_FILENO);
            ::dup2(err, STDERR_FILENO);
            if (::chdir(workFolder.c_str()) != 0)
                ::_exit(126);
            // As the application's process would start it, whatever the test
            // runner changed; and with core files allowed, so that one the
            // launcher should not write would show.
            for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGPIPE})
                ::signal(signal, SIG_DFL);
            sigset_t none;
            ::sigemptyset(&none);
            ::sigprocmask(SIG_SETMASK, &none, nullptr);
            rlimit core;
            if (::getrlimit(RLIMIT_CORE, &core) == 0) {
                core.rlim_cur = core.rlim_max;
                ::setrlimit(RLIMIT_CORE, &core);
            }
            ::execve(argvPointers[0], argvPointers.data(), envpPointers.data());
            ::_exit(126);
        }
        ::close(in);
        ::close(out);
        ::close(err);
        if (m_pid < 0)
            qFatal("fork failed");
    }

    ~RawRun()
    {
        if (!m_ended) {
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
        }
    }

    RawRun(const RawRun &) = delete;
    RawRun &operator=(const RawRun &) = delete;

    pid_t pid() const { return m_pid; }

    bool wait(int timeoutMs = 30000)
    {
        QDeadlineTimer deadline(timeoutMs);
        while (!m_ended) {
            const pid_t waited = ::waitpid(m_pid, &m_status, WNOHANG);
            if (waited == m_pid)
                m_ended = true;
            else if (deadline.hasExpired())
                return false;
            else
                QThread::msleep(2);
        }
        return true;
    }

    int status() const { return m_status; }
    bool exited() const { return m_ended && WIFEXITED(m_status); }
    int exitCode() const { return exited() ? WEXITSTATUS(m_status) : -1; }
    int signal() const { return m_ended && WIFSIGNALED(m_status) ? WTERMSIG(m_status) : 0; }
    QByteArray out() const { return readAll(m_outPath); }
    QByteArray err() const { return readAll(m_errPath); }

private:
    QString m_outPath;
    QString m_errPath;
    pid_t m_pid = -1;
    int m_status = 0;
    bool m_ended = false;
};

// A copy of the launcher in a folder of its own, a fake yt-dlp, and the
// environment that connects them.
class Installation
{
public:
    Installation()
    {
        if (!m_root.isValid())
            qFatal("no temporary folder");
        QDir().mkpath(dataFolder());
        if (!QFile::copy(QStringLiteral(KESTREL_LAUNCHER_PATH), launcher()))
            qFatal("cannot copy the launcher");
        writeScript(fake(), fakeYtDlp);
        // Runtimes too old for the tool shadow any the machine has, so that
        // no run names one.
        writeScript(path(QStringLiteral("runtimes/deno")), "#!/bin/sh\necho 'deno 1.46.3 (stable)'\n");
        writeScript(path(QStringLiteral("runtimes/node")), "#!/bin/sh\necho v18.19.0\n");
        writeScript(path(QStringLiteral("runtimes/qjs")), "#!/bin/sh\necho 'QuickJS version 2021-03-27'\n");

        environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : environment.keys()) {
            if (name.startsWith(QStringLiteral("FAKE_")))
                environment.remove(name);
        }
        environment.insert(QStringLiteral("KESTREL_YTDLP"), fake());
        environment.insert(QStringLiteral("FAKE_RECORD"), recordPath());
        environment.insert(QStringLiteral("PATH"), runtimeFolder() + QLatin1Char(':')
                                                       + environment.value(QStringLiteral("PATH")));
        // No test here reaches a release feed: an install attempt fails at once.
        environment.insert(QStringLiteral("KESTREL_TOOL_FEED"), QStringLiteral("http://127.0.0.1:9/"));
    }

    QString path(const QString &name) const { return m_root.filePath(name); }
    QString dataFolder() const { return path(QStringLiteral("data")); }
    QString launcher() const { return path(QStringLiteral("data/kestreldl2")); }
    QString cacheFile() const { return path(QStringLiteral("data/kestreldl2.flags")); }
    QString fake() const { return path(QStringLiteral("fake/yt-dlp")); }
    QString runtimeFolder() const { return path(QStringLiteral("runtimes")); }
    QString recordPath() const { return path(QStringLiteral("record")); }
    QString pidFile() const { return path(QStringLiteral("tool.pid")); }

    // Every command line the fake was given, in order.
    QList<QStringList> invocations() const
    {
        QList<QStringList> lines;
        const QList<QByteArray> records = readAll(recordPath()).split('\n');
        for (const QByteArray &record : records) {
            if (record.isEmpty())
                continue;
            QStringList arguments;
            for (const QByteArray &argument : record.split('\x1f'))
                arguments << QString::fromUtf8(argument);
            lines << arguments;
        }
        return lines;
    }

    // How many times the launcher asked the fake about itself rather than
    // for a download.
    qsizetype questions() const
    {
        qsizetype count = 0;
        for (const QStringList &arguments : invocations())
            count += arguments.endsWith(QStringLiteral("--simulate")) || arguments.endsWith(QStringLiteral("--version"))
                ? 1
                : 0;
        return count;
    }

    // The last command line the fake was given without the launcher's own
    // flags in front, which is what the application gave; as it is when
    // those flags are not there, so that a comparison shows it.
    QStringList lastInvocation() const
    {
        const QList<QStringList> all = invocations();
        if (all.isEmpty())
            return {};
        const QStringList last = all.last();
        return last.mid(0, launcherPrefix.size()) == launcherPrefix ? last.mid(launcherPrefix.size()) : last;
    }

    RawRun *start(const QStringList &arguments) const
    {
        return new RawRun(launcher(), arguments, environment, m_root.path());
    }

    QProcessEnvironment environment;

private:
    QTemporaryDir m_root;
};

// Waits for the fake to say it is ready and returns its process id.
pid_t waitForTool(const Installation &installation)
{
    QDeadlineTimer deadline(20000);
    while (!deadline.hasExpired()) {
        const QByteArray text = readAll(installation.pidFile()).trimmed();
        if (!text.isEmpty())
            return pid_t(text.toInt());
        QThread::msleep(5);
    }
    return -1;
}

const QString videoAddress = QStringLiteral("https://www.youtube.com/watch?v=kestrel");

QStringList titleRun()
{
    return {QStringLiteral("--get-title"), QStringLiteral("--get-duration"), QStringLiteral("--no-warnings"), videoAddress};
}

QStringList listingRun()
{
    return {QStringLiteral("--list-formats"), QStringLiteral("--no-warnings"), videoAddress};
}

QStringList videoRun()
{
    return {QStringLiteral("--no-warnings"), QStringLiteral("--format"), QStringLiteral("137+140"),
            QStringLiteral("--path"), QStringLiteral("/tmp/KestrelD"), QStringLiteral("--output"),
            QStringLiteral("%(title)s.%(ext)s"), videoAddress};
}

// The information documents the launcher keeps in its data folder.
QStringList keptDocuments(const QString &dataFolder)
{
    return QDir(dataFolder).entryList({QStringLiteral("info-*.json")}, QDir::Files, QDir::Name);
}

// The command lines of the runs, without the launcher's questions about the
// tool itself.
QList<QStringList> toolRuns(const QList<QStringList> &invocations)
{
    QList<QStringList> runs = invocations;
    runs.removeIf([](const QStringList &arguments) {
        return arguments.endsWith(QStringLiteral("--simulate")) || arguments.endsWith(QStringLiteral("--version"));
    });
    return runs;
}

std::vector<std::string> toStd(const QStringList &list)
{
    std::vector<std::string> converted;
    for (const QString &item : list)
        converted.push_back(item.toStdString());
    return converted;
}

} // namespace

class TestLauncher : public QObject
{
    Q_OBJECT

private slots:
    void unknownFlagIsDroppedWithItsValue();
    void knownFlagIsKept();
    void answerIsKeptForTheNextRun_data();
    void answerIsKeptForTheNextRun();
    void changedToolIsAskedAgain();
    void damagedCacheIsReplaced();
    void unwritableCacheChangesNothing();
    void inconclusiveAnswerKeepsTheFlag();
    void plainRunAsksOnceAboutTheLaunchersFlag();
    void launchersFlagsComeFirst();
    void oneExtractionServesAllRunsOfAVideo();
    void outputIsTheSameWithAndWithoutKeptInformation();
    void switchedOffCacheExtractsEveryTime();
    void refusedDocumentFallsBackToAPlainRunOnce();
    void titleRunThatRefusesTheFileFlagRunsPlain();
    void stopDuringTheSecondRunEndsItAsAnyStop();
    void failedTitleRunKeepsNothing();
    void onlyTheApplicationsRunsAreRecognised_data();
    void onlyTheApplicationsRunsAreRecognised();
    void keptDocumentExpires();
    void incompleteDocumentIsNotKept();
    void keptDocumentLeavesTheRetryToTheLauncher();
    void cacheIsCleanedAndBounded();
    void exitCodePassesThrough_data();
    void exitCodePassesThrough();
    void deathBySignalPassesThrough_data();
    void deathBySignalPassesThrough();
    void outputPassesThroughUnchanged();
    void stopSignalIsPassedOn_data();
    void stopSignalIsPassedOn();
    void killedLauncherTakesToolAlong();
    void stopEndsTheWholeTreeWithExitCodeOne_data();
    void stopEndsTheWholeTreeWithExitCodeOne();
    void endOfTheApplicationEndsTheTree();
    void applicationAlreadyGoneRunsNothing();
    void toolErrorsAreLogged();
    void upgradedApplicationBringsFreshCopies();
    void ffmpegThatDoesNotStartIsNeverUsed();
    void userOptionsReachTheTool();
    void brokenOptionsFileChangesNothing_data();
    void brokenOptionsFileChangesNothing();
    void missingToolIsReported_data();
    void missingToolIsReported();
    void toolIsFoundOnPath();
    void hungProbeIsAbandoned();

    void flagsAreDroppedWithTheirValues_data();
    void flagsAreDroppedWithTheirValues();
    void onlyCheckedFlagsAreAskedAbout();
    void cacheKeepsAnswersPerInstallation();
    void cacheRejectsDamagedText_data();
    void cacheRejectsDamagedText();
    void windowsCommandLineKeepsEveryArgument_data();
    void windowsCommandLineKeepsEveryArgument();

    void debianYtDlpAnswersTheProbe();
    void buildTreeHasToolAndFfmpegBesideExecutable();
};

void TestLauncher::unknownFlagIsDroppedWithItsValue()
{
    Installation installation;
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());

    QCOMPARE(run->exitCode(), 0);
    QCOMPARE(installation.lastInvocation(), withoutProgressDelta(downloadArguments()));
    QCOMPARE(run->err(), QByteArray(droppedNote));
    QCOMPARE(run->out(), QByteArray());
    // The question asked: a command line that stops at the option parser.
    QVERIFY(installation.invocations().contains(QStringList{
        QStringLiteral("--ignore-config"), QStringLiteral("--progress-delta=1"), QStringLiteral("--simulate")}));
}

void TestLauncher::knownFlagIsKept()
{
    Installation installation;
    installation.environment.insert(QStringLiteral("FAKE_UNKNOWN"), QString());
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());

    QCOMPARE(run->exitCode(), 0);
    QCOMPARE(installation.lastInvocation(), downloadArguments());
    QCOMPARE(run->err(), QByteArray());
    // --progress-delta and the launcher's own --no-js-runtimes.
    QCOMPARE(installation.questions(), 2);
}

void TestLauncher::answerIsKeptForTheNextRun_data()
{
    QTest::addColumn<bool>("known");
    QTest::newRow("unknown flag") << false;
    QTest::newRow("known flag") << true;
}

void TestLauncher::answerIsKeptForTheNextRun()
{
    QFETCH(bool, known);
    Installation installation;
    if (known)
        installation.environment.insert(QStringLiteral("FAKE_UNKNOWN"), QString());
    const QStringList expected = known ? downloadArguments() : withoutProgressDelta(downloadArguments());
    const QByteArray note = known ? QByteArray() : QByteArray(droppedNote);

    QScopedPointer<RawRun> first(installation.start(downloadArguments()));
    QVERIFY(first->wait());
    const qsizetype asked = installation.questions();
    QVERIFY(asked > 0);
    QVERIFY(QFileInfo(installation.cacheFile()).isFile());

    QScopedPointer<RawRun> second(installation.start(downloadArguments()));
    QVERIFY(second->wait());
    QCOMPARE(installation.questions(), asked);
    QCOMPARE(installation.invocations().size(), asked + 2);
    QCOMPARE(installation.lastInvocation(), expected);
    QCOMPARE(second->err(), note);
    QCOMPARE(second->exitCode(), 0);
}

void TestLauncher::changedToolIsAskedAgain()
{
    Installation installation;
    QScopedPointer<RawRun> first(installation.start(downloadArguments()));
    QVERIFY(first->wait());
    const qsizetype asked = installation.questions();

    // An upgrade leaves a yt-dlp with another modification time.
    struct stat status;
    QCOMPARE(::stat(QFile::encodeName(installation.fake()).constData(), &status), 0);
    const timespec times[2] = {status.st_atim, {status.st_mtim.tv_sec - 100, status.st_mtim.tv_nsec}};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(installation.fake()).constData(), times, 0), 0);

    QScopedPointer<RawRun> second(installation.start(downloadArguments()));
    QVERIFY(second->wait());
    QVERIFY(installation.questions() > asked);
    QCOMPARE(installation.lastInvocation(), withoutProgressDelta(downloadArguments()));
    QCOMPARE(second->err(), QByteArray(droppedNote));
}

void TestLauncher::damagedCacheIsReplaced()
{
    Installation installation;
    QByteArray garbage = "# kestreldl2: yt-dlp flag support, format 1\nflag\tnonsense\n";
    garbage.append("\xff\xfe\x00\x01", 4);
    writeAll(installation.cacheFile(), garbage);

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 0);
    QVERIFY(installation.questions() > 0);
    QCOMPARE(installation.lastInvocation(), withoutProgressDelta(downloadArguments()));
    QCOMPARE(run->err(), QByteArray(droppedNote));
    QVERIFY(!Launcher::FlagCache::load(QFile::encodeName(installation.cacheFile()).toStdString()).isEmpty());
}

void TestLauncher::unwritableCacheChangesNothing()
{
    Installation installation;
    // A folder where the file belongs can be neither read nor replaced,
    // whoever runs the test.
    QVERIFY(QDir().mkpath(installation.cacheFile()));

    for (int round = 1; round <= 2; ++round) {
        const qsizetype asked = installation.questions();
        QScopedPointer<RawRun> run(installation.start(downloadArguments()));
        QVERIFY(run->wait());
        QCOMPARE(run->exitCode(), 0);
        QVERIFY2(installation.questions() > asked, qPrintable(QStringLiteral("round %1").arg(round)));
        QCOMPARE(installation.lastInvocation(), withoutProgressDelta(downloadArguments()));
        QCOMPARE(run->err(), QByteArray(droppedNote));
    }
    const QStringList left = QDir(installation.dataFolder()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
    QCOMPARE(left, (QStringList{QStringLiteral("kestreldl2"), QStringLiteral("kestreldl2.flags"),
                                QStringLiteral("kestreldl2.log")}));
}

void TestLauncher::inconclusiveAnswerKeepsTheFlag()
{
    Installation installation;
    installation.environment.insert(QStringLiteral("FAKE_PROBE_FAILS"), QStringLiteral("1"));

    for (int round = 1; round <= 2; ++round) {
        const qsizetype asked = installation.questions();
        QScopedPointer<RawRun> run(installation.start(downloadArguments()));
        QVERIFY(run->wait());
        // Nothing was learnt, so the flag goes on and yt-dlp itself refuses.
        QVERIFY2(installation.questions() > asked, qPrintable(QStringLiteral("round %1").arg(round)));
        QCOMPARE(installation.lastInvocation(), downloadArguments());
        QCOMPARE(run->exitCode(), 2);
        QVERIFY(run->err().contains("yt-dlp: error: no such option: --progress-delta"));
        QVERIFY(!run->err().contains("kestreldl2:"));
    }
}

void TestLauncher::plainRunAsksOnceAboutTheLaunchersFlag()
{
    Installation installation;
    const QStringList arguments{QStringLiteral("--get-title"), QStringLiteral("--get-duration"),
                                QStringLiteral("--no-playlist"),
                                QStringLiteral("https://www.example.invalid/watch?v=kestrel")};
    for (int round = 1; round <= 2; ++round) {
        QScopedPointer<RawRun> run(installation.start(arguments));
        QVERIFY(run->wait());
        QCOMPARE(run->exitCode(), 0);
        QCOMPARE(run->err(), QByteArray());
        QCOMPARE(installation.lastInvocation(), arguments);
    }
    QCOMPARE(installation.invocations().size(), 3);
    QCOMPARE(installation.invocations().first(),
             (QStringList{QStringLiteral("--ignore-config"), QStringLiteral("--no-js-runtimes"),
                          QStringLiteral("--simulate")}));
}

void TestLauncher::launchersFlagsComeFirst()
{
    Installation installation;
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QCOMPARE(installation.invocations().last(), launcherPrefix + withoutProgressDelta(downloadArguments()));
}

void TestLauncher::oneExtractionServesAllRunsOfAVideo()
{
    Installation installation;
    QScopedPointer<RawRun> title(installation.start(titleRun()));
    QVERIFY(title->wait());
    QCOMPARE(title->exitCode(), 0);
    const QStringList written = installation.lastInvocation();
    QCOMPARE(written.size(), titleRun().size() + 3);
    QCOMPARE(written.mid(0, 3), titleRun().mid(0, 3));
    QCOMPARE(written.mid(3, 2), (QStringList{QStringLiteral("--print-to-file"), QStringLiteral("%()j")}));
    QCOMPARE(written.last(), videoAddress);
    const QStringList kept = keptDocuments(installation.dataFolder());
    QCOMPARE(kept.size(), 1);
    const QString document = installation.dataFolder() + QLatin1Char('/') + kept.first();
    QCOMPARE(readAll(document), QByteArray("{\"id\": \"kestrel\"}\n"));
    QVERIFY2(!QFile::exists(written.at(5)), "the file the tool wrote was moved into place");

    QScopedPointer<RawRun> listing(installation.start(listingRun()));
    QVERIFY(listing->wait());
    QCOMPARE(listing->exitCode(), 0);
    QCOMPARE(installation.lastInvocation(), listingRun().mid(0, 2) + (QStringList{QStringLiteral("--load-info-json"), document}));

    QScopedPointer<RawRun> video(installation.start(videoRun()));
    QVERIFY(video->wait());
    QCOMPARE(video->exitCode(), 0);
    QCOMPARE(installation.lastInvocation(), videoRun().mid(0, 7) + (QStringList{QStringLiteral("--load-info-json"), document}));
    QCOMPARE(toolRuns(installation.invocations()).size(), 3);
}

// The application reads the tool's output byte for byte: what the tool
// prints from a kept document is printed as it comes.
void TestLauncher::outputIsTheSameWithAndWithoutKeptInformation()
{
    const QByteArray printed = "[info] Available formats for kestrel:\nID  EXT  RESOLUTION\n---\n137 mp4  1920x1080\n";
    QByteArray withCache;
    QByteArray without;
    for (const bool cached : {true, false}) {
        Installation installation;
        writeAll(installation.path(QStringLiteral("out.bin")), printed);
        installation.environment.insert(QStringLiteral("FAKE_STDOUT"), installation.path(QStringLiteral("out.bin")));
        if (!cached)
            installation.environment.insert(QStringLiteral("KESTREL_INFO_CACHE"), QStringLiteral("off"));
        for (const QStringList &arguments : {titleRun(), listingRun()}) {
            QScopedPointer<RawRun> run(installation.start(arguments));
            QVERIFY(run->wait());
            QCOMPARE(run->exitCode(), 0);
            (cached ? withCache : without) += run->out();
            QCOMPARE(run->err(), QByteArray());
        }
        QCOMPARE(installation.lastInvocation().contains(QStringLiteral("--load-info-json")), cached);
    }
    QCOMPARE(withCache, printed + printed);
    QCOMPARE(withCache, without);
}

void TestLauncher::switchedOffCacheExtractsEveryTime()
{
    Installation installation;
    installation.environment.insert(QStringLiteral("KESTREL_INFO_CACHE"), QStringLiteral("off"));
    for (const QStringList &arguments : {titleRun(), listingRun(), videoRun()}) {
        QScopedPointer<RawRun> run(installation.start(arguments));
        QVERIFY(run->wait());
        QCOMPARE(installation.lastInvocation(), arguments);
    }
    QVERIFY(keptDocuments(installation.dataFolder()).isEmpty());
}

void TestLauncher::refusedDocumentFallsBackToAPlainRunOnce()
{
    Installation installation;
    // As the application starts it: watched by a guardian, run after run.
    installation.environment.insert(QStringLiteral("KESTREL_APP_PID"), QString::number(QCoreApplication::applicationPid()));
    QScopedPointer<RawRun> title(installation.start(titleRun()));
    QVERIFY(title->wait());
    QCOMPARE(keptDocuments(installation.dataFolder()).size(), 1);

    installation.environment.insert(QStringLiteral("FAKE_LOAD_EXIT"), QStringLiteral("1"));
    QScopedPointer<RawRun> video(installation.start(videoRun()));
    QVERIFY(video->wait());
    QCOMPARE(video->exitCode(), 0);
    const QList<QStringList> runs = toolRuns(installation.invocations());
    QCOMPARE(runs.size(), 3);
    QVERIFY(runs.at(1).contains(QStringLiteral("--load-info-json")));
    QCOMPARE(installation.lastInvocation(), videoRun());
    QVERIFY(video->err().contains("kestreldl2: the run with the kept information of " + videoAddress.toUtf8()
                                  + " ended with exit code 1; running it again without\n"));
    QVERIFY(keptDocuments(installation.dataFolder()).isEmpty());

    // Once, and never again with that document.
    QScopedPointer<RawRun> listing(installation.start(listingRun()));
    QVERIFY(listing->wait());
    QCOMPARE(toolRuns(installation.invocations()).size(), 4);
    QCOMPARE(installation.lastInvocation(), listingRun());
}

void TestLauncher::stopDuringTheSecondRunEndsItAsAnyStop()
{
    Installation installation;
    installation.environment.insert(QStringLiteral("KESTREL_APP_PID"), QString::number(QCoreApplication::applicationPid()));
    QScopedPointer<RawRun> title(installation.start(titleRun()));
    QVERIFY(title->wait());
    installation.environment.insert(QStringLiteral("FAKE_LOAD_EXIT"), QStringLiteral("1"));
    installation.environment.insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());
    installation.environment.insert(QStringLiteral("FAKE_SLEEP"), QStringLiteral("30"));
    QScopedPointer<RawRun> video(installation.start(videoRun()));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    QCOMPARE(installation.lastInvocation(), videoRun());

    ::kill(video->pid(), SIGTERM);
    QVERIFY(video->wait(5000));
    QCOMPARE(video->exitCode(), 1);
    QVERIFY(waitUntilEnded({tool}));
}

void TestLauncher::titleRunThatRefusesTheFileFlagRunsPlain()
{
    Installation installation;
    writeAll(installation.path(QStringLiteral("out.bin")), "Kestrel Test Clip\n3:05\n");
    installation.environment.insert(QStringLiteral("FAKE_STDOUT"), installation.path(QStringLiteral("out.bin")));
    installation.environment.insert(QStringLiteral("FAKE_UNKNOWN"), QStringLiteral("--print-to-file"));
    QScopedPointer<RawRun> title(installation.start(titleRun()));
    QVERIFY(title->wait());
    QCOMPARE(title->exitCode(), 0);
    QCOMPARE(title->out(), QByteArray("Kestrel Test Clip\n3:05\n"));
    QCOMPARE(toolRuns(installation.invocations()).size(), 2);
    QCOMPARE(installation.lastInvocation(), titleRun());
    QVERIFY(keptDocuments(installation.dataFolder()).isEmpty());
}

void TestLauncher::failedTitleRunKeepsNothing()
{
    Installation installation;
    installation.environment.insert(QStringLiteral("FAKE_EXIT"), QStringLiteral("1"));
    QScopedPointer<RawRun> title(installation.start(titleRun()));
    QVERIFY(title->wait());
    QCOMPARE(title->exitCode(), 1);
    QCOMPARE(toolRuns(installation.invocations()).size(), 1);
    QVERIFY(keptDocuments(installation.dataFolder()).isEmpty());
    QVERIFY(QDir(installation.dataFolder()).entryList({QStringLiteral(".kestreldl2-info-*")}, QDir::Files | QDir::Hidden).isEmpty());
}

void TestLauncher::onlyTheApplicationsRunsAreRecognised_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("run");
    using Run = Launcher::InfoCache::Run;
    QTest::newRow("title") << titleRun() << int(Run::Metadata);
    QTest::newRow("listing") << listingRun() << int(Run::Formats);
    QTest::newRow("download") << videoRun() << int(Run::Download);
    QTest::newRow("title, other order") << QStringList{QStringLiteral("--no-warnings"), QStringLiteral("--get-title"),
                                                       QStringLiteral("--get-duration"), videoAddress}
                                        << int(Run::Other);
    QTest::newRow("document given") << QStringList{QStringLiteral("--list-formats"), QStringLiteral("--load-info-json"),
                                                   QStringLiteral("x.json")}
                                    << int(Run::Other);
    QTest::newRow("no video") << QStringList{QStringLiteral("--list-formats"), QStringLiteral("--no-warnings")} << int(Run::Other);
    QTest::newRow("update") << QStringList{QStringLiteral("--update")} << int(Run::Other);
    QTest::newRow("nothing") << QStringList{} << int(Run::Other);
}

void TestLauncher::onlyTheApplicationsRunsAreRecognised()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, run);
    std::string target;
    QCOMPARE(int(Launcher::InfoCache::recognise(toStd(arguments), &target)), run);
    QCOMPARE(QString::fromStdString(target), run == int(Launcher::InfoCache::Run::Other) ? QString() : arguments.last());
}

void TestLauncher::keptDocumentExpires()
{
    QTemporaryDir folder;
    const QString written = folder.filePath(QStringLiteral("written"));
    writeAll(written, "{\"id\": \"a\"}\n");
    Launcher::InfoCache cache(folder.path().toStdString());
    const std::time_t made = 1'800'000'000;
    QVERIFY(cache.keep(written.toStdString(), "a", made));
    const std::optional<std::string> document = cache.freshDocument("a", made + 60);
    QVERIFY(document);
    QCOMPARE(readAll(QString::fromStdString(*document)), QByteArray("{\"id\": \"a\"}\n"));
    QVERIFY(cache.freshDocument("a", made + Launcher::InfoCache::lifetimeSeconds - 1));
    QVERIFY(!cache.freshDocument("a", made + Launcher::InfoCache::lifetimeSeconds));
    QVERIFY(!cache.freshDocument("a", made - 60));
    QVERIFY(!cache.freshDocument("b", made + 60));

    // A newer document of the same video replaces the older.
    writeAll(written, "{\"id\": \"a\", \"new\": 1}\n");
    QVERIFY(cache.keep(written.toStdString(), "a", made + 100));
    QCOMPARE(keptDocuments(folder.path()).size(), 1);
    QCOMPARE(readAll(QString::fromStdString(*cache.freshDocument("a", made + 200))), QByteArray("{\"id\": \"a\", \"new\": 1}\n"));
}

void TestLauncher::incompleteDocumentIsNotKept()
{
    QTemporaryDir folder;
    const QString written = folder.filePath(QStringLiteral("written"));
    Launcher::InfoCache cache(folder.path().toStdString());
    for (const QByteArray &text : {QByteArray(), QByteArray("\n"), QByteArray("{\"id\": \"a\", \"form"), QByteArray("[1]\n")}) {
        writeAll(written, text);
        QVERIFY2(!cache.keep(written.toStdString(), "a", 1'800'000'000), text.constData());
    }
    QVERIFY(keptDocuments(folder.path()).isEmpty());
    QVERIFY(!cache.keep(folder.filePath(QStringLiteral("missing")).toStdString(), "a", 1'800'000'000));
}

// A failed download from a kept document would make the tool extract the
// video again by itself, and then the launcher once more.
void TestLauncher::keptDocumentLeavesTheRetryToTheLauncher()
{
    QTemporaryDir folder;
    const QString written = folder.filePath(QStringLiteral("written"));
    writeAll(written, "{\"id\": \"a\", \"webpage_url\": \"https://www.youtube.com/watch?v=a\", "
                      "\"webpage_url_basename\": \"watch\", \"title\": \"\\\"webpage_url\\\": x\"}\n");
    Launcher::InfoCache cache(folder.path().toStdString());
    QVERIFY(cache.keep(written.toStdString(), "a", 1'800'000'000));
    const QByteArray kept = readAll(QString::fromStdString(*cache.freshDocument("a", 1'800'000'000)));
    QCOMPARE(kept, QByteArray("{\"id\": \"a\", \"kept_webpage_url\": \"https://www.youtube.com/watch?v=a\", "
                              "\"webpage_url_basename\": \"watch\", \"title\": \"\\\"webpage_url\\\": x\"}\n"));
}

void TestLauncher::cacheIsCleanedAndBounded()
{
    QTemporaryDir folder;
    const QString written = folder.filePath(QStringLiteral("written"));
    Launcher::InfoCache cache(folder.path().toStdString());
    const std::time_t now = 1'800'000'000;
    for (int video = 0; video < 20; ++video) {
        writeAll(written, "{}\n");
        QVERIFY(cache.keep(written.toStdString(), "video " + std::to_string(video), now - 10 * video));
    }
    writeAll(folder.filePath(QStringLiteral("info-not-ours.json")), "{}");
    writeAll(folder.filePath(QStringLiteral("kestreldl2.flags")), "kept");

    cache.clean(now);
    QCOMPARE(keptDocuments(folder.path()).size(), qsizetype(Launcher::InfoCache::maximumDocuments) + 1);
    for (int video = 0; video < int(Launcher::InfoCache::maximumDocuments); ++video)
        QVERIFY(cache.freshDocument("video " + std::to_string(video), now));
    QVERIFY(!cache.freshDocument("video 19", now));
    QVERIFY(QFile::exists(folder.filePath(QStringLiteral("info-not-ours.json"))));
    QVERIFY(QFile::exists(folder.filePath(QStringLiteral("kestreldl2.flags"))));

    cache.clean(now + Launcher::InfoCache::lifetimeSeconds);
    QCOMPARE(keptDocuments(folder.path()), QStringList{QStringLiteral("info-not-ours.json")});
}

void TestLauncher::exitCodePassesThrough_data()
{
    QTest::addColumn<int>("code");
    for (const int code : {0, 1, 2, 100})
        QTest::addRow("%d", code) << code;
}

void TestLauncher::exitCodePassesThrough()
{
    QFETCH(int, code);
    Installation installation;
    installation.environment.insert(QStringLiteral("FAKE_EXIT"), QString::number(code));
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QVERIFY(run->exited());
    QCOMPARE(run->exitCode(), code);
}

void TestLauncher::deathBySignalPassesThrough_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGSEGV") << QStringLiteral("SEGV") << int(SIGSEGV);
    QTest::newRow("SIGKILL") << QStringLiteral("KILL") << int(SIGKILL);
    QTest::newRow("SIGABRT") << QStringLiteral("ABRT") << int(SIGABRT);
    QTest::newRow("SIGTERM") << QStringLiteral("TERM") << int(SIGTERM);
}

void TestLauncher::deathBySignalPassesThrough()
{
    QFETCH(QString, name);
    QFETCH(int, signal);
    Installation installation;
    installation.environment.insert(QStringLiteral("FAKE_SIGNAL"), name);

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QVERIFY2(WIFSIGNALED(run->status()), qPrintable(QStringLiteral("wait status %1").arg(run->status())));
    QCOMPARE(run->signal(), signal);
    QVERIFY(!WCOREDUMP(run->status()));
    QCOMPARE(QDir(installation.path(QString())).entryList({QStringLiteral("core*")}, QDir::Files), QStringList());

    // What the application sees.
    QProcess process;
    process.setProcessEnvironment(installation.environment);
    process.start(installation.launcher(), downloadArguments());
    QVERIFY(process.waitForFinished(30000));
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
}

void TestLauncher::outputPassesThroughUnchanged()
{
    Installation installation;
    QByteArray out = "[download]   0.0% of 6.85MiB at  1.00MiB/s ETA 00:06\r"
                     "[download]  50.0% of 6.85MiB at  1.00MiB/s ETA 00:03\r"
                     "[download] 100% of 6.85MiB in 00:00:07\n"
                     "Zürich – 東京 🎬 (1080p)\r\n";
    out.append('\0');
    out.append("\xff\xfe binary tail without a line feed");
    QByteArray large;
    for (int i = 0; i < 300000; ++i)
        large.append(char((i * 7 + i / 251) & 0xff));
    out.append(large);
    const QByteArray err = "WARNING: Ünïcödé \r\nERROR: unable to download video data: HTTP Error 404: Not Found\n";
    writeAll(installation.path(QStringLiteral("out.bin")), out);
    writeAll(installation.path(QStringLiteral("err.bin")), err);
    installation.environment.insert(QStringLiteral("FAKE_STDOUT"), installation.path(QStringLiteral("out.bin")));
    installation.environment.insert(QStringLiteral("FAKE_STDERR"), installation.path(QStringLiteral("err.bin")));
    installation.environment.insert(QStringLiteral("FAKE_EXIT"), QStringLiteral("1"));

    QScopedPointer<RawRun> run(installation.start(withoutProgressDelta(downloadArguments())));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 1);
    QVERIFY(run->out() == out);
    QCOMPARE(run->err(), err);
}

void TestLauncher::stopSignalIsPassedOn_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << QStringLiteral("INT") << int(SIGINT);
    QTest::newRow("SIGHUP") << QStringLiteral("HUP") << int(SIGHUP);
}

void TestLauncher::stopSignalIsPassedOn()
{
    QFETCH(QString, name);
    QFETCH(int, signal);
    Installation installation;
    installation.environment.insert(QStringLiteral("FAKE_TRAP"), name);
    installation.environment.insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    QCOMPARE(::kill(run->pid(), signal), 0);
    // Well before the fake's sleep would end on its own.
    QVERIFY(run->wait(10000));

    // The fake caught the signal and ended with its own code, which the
    // launcher, still alive, passed on.
    QCOMPARE(run->exitCode(), 42);
    QVERIFY(readAll(installation.recordPath()).contains("caught " + name.toLatin1() + '\n'));
}

void TestLauncher::killedLauncherTakesToolAlong()
{
    Installation installation;
    installation.environment.insert(QStringLiteral("FAKE_SLEEP"), QStringLiteral("30"));
    installation.environment.insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());
    installation.environment.insert(QStringLiteral("FAKE_CHILD"), QStringLiteral("1"));

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    QCOMPARE(parentOf(tool), run->pid());
    QVERIFY(!hasEnded(tool));
    const pid_t grandchild = pid_t(readAll(installation.pidFile() + QStringLiteral(".child")).trimmed().toInt());
    QVERIFY(grandchild > 0);

    QCOMPARE(::kill(run->pid(), SIGKILL), 0);
    QVERIFY(run->wait());
    QCOMPARE(run->signal(), int(SIGKILL));
    // The tool and what it started, ffmpeg's place here.
    QVERIFY(waitUntilEnded({tool, grandchild}));
}

void TestLauncher::stopEndsTheWholeTreeWithExitCodeOne_data()
{
    QTest::addColumn<bool>("toolIgnoresStop");
    QTest::newRow("tool stops") << false;
    QTest::newRow("tool ignores SIGTERM") << true;
}

void TestLauncher::stopEndsTheWholeTreeWithExitCodeOne()
{
    QFETCH(bool, toolIgnoresStop);
    Installation installation;
    installation.environment.insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());
    installation.environment.insert(QStringLiteral("FAKE_CHILD"), QStringLiteral("1"));
    if (toolIgnoresStop)
        installation.environment.insert(QStringLiteral("FAKE_TRAP"), QStringLiteral("TERM"));
    else
        installation.environment.insert(QStringLiteral("FAKE_SLEEP"), QStringLiteral("30"));

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    const pid_t grandchild = pid_t(readAll(installation.pidFile() + QStringLiteral(".child")).trimmed().toInt());
    QVERIFY(grandchild > 0);

    // What the application's kill rule sends first.
    QCOMPARE(::kill(run->pid(), SIGTERM), 0);
    QVERIFY(run->wait(10000));
    // As a forced kill ends a run on Windows.
    QVERIFY(run->exited());
    QCOMPARE(run->exitCode(), 1);
    QVERIFY(waitUntilEnded({tool, grandchild}));
}

void TestLauncher::endOfTheApplicationEndsTheTree()
{
    Installation installation;
    installation.environment.insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());
    installation.environment.insert(QStringLiteral("FAKE_CHILD"), QStringLiteral("1"));
    installation.environment.insert(QStringLiteral("FAKE_SLEEP"), QStringLiteral("30"));
    // A stand-in for the application: it starts the launcher and is then
    // killed, as a crash or SIGKILL would end the application.
    const QString launcherPidFile = installation.path(QStringLiteral("launcher.pid"));
    QScopedPointer<RawRun> application(new RawRun(
        QStringLiteral("/bin/bash"),
        {QStringLiteral("-c"), QStringLiteral("\"$0\" \"$@\" & echo $! > '%1'; wait").arg(launcherPidFile),
         installation.launcher(), QStringLiteral("--no-warnings"), QStringLiteral("https://x.invalid/watch?v=k")},
        installation.environment, installation.path(QString())));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    const pid_t launcher = pid_t(readAll(launcherPidFile).trimmed().toInt());
    const pid_t grandchild = pid_t(readAll(installation.pidFile() + QStringLiteral(".child")).trimmed().toInt());
    QVERIFY(launcher > 0 && grandchild > 0);

    QCOMPARE(::kill(application->pid(), SIGKILL), 0);
    QVERIFY(application->wait());
    QVERIFY(waitUntilEnded({launcher, tool, grandchild}));
}

void TestLauncher::applicationAlreadyGoneRunsNothing()
{
    Installation installation;
    // The application named itself, but the launcher's parent is another
    // process: the application ended before the launcher could tie its life
    // to it.
    installation.environment.insert(QStringLiteral("KESTREL_APP_PID"), QString::number(::getpid() + 1));
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QVERIFY(run->exited());
    QCOMPARE(run->exitCode(), 1);
    QVERIFY(installation.invocations().isEmpty());
}

void TestLauncher::toolErrorsAreLogged()
{
    Installation installation;
    const QString errors = installation.path(QStringLiteral("errors.txt"));
    writeAll(errors, "ERROR: [youtube] kestrel: Sign in to confirm you're not a bot");
    installation.environment.insert(QStringLiteral("FAKE_STDERR"), errors);
    installation.environment.insert(QStringLiteral("FAKE_EXIT"), QStringLiteral("1"));
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 1);
    // Still on the launcher's standard error, as the tool wrote it.
    QVERIFY(run->err().endsWith("Sign in to confirm you're not a bot"));

    const QByteArray log = readAll(installation.dataFolder() + QStringLiteral("/kestreldl2.log"));
    QVERIFY2(log.contains(" run " + QFile::encodeName(installation.fake()) + " --ignore-config"), log.constData());
    QVERIFY(log.contains("kestreldl2: dropped --progress-delta 1 (not known to yt-dlp 2023.03.04)\n"));
    QVERIFY(log.contains("\nERROR: [youtube] kestrel: Sign in to confirm you're not a bot\n"));
    QVERIFY(log.contains(" end: exit code 1\n"));
}

void TestLauncher::upgradedApplicationBringsFreshCopies()
{
    Installation installation;
    // The data folder's copies: the launcher of the first start, and an
    // ffmpeg that no longer finds its libraries.
    writeScript(installation.dataFolder() + QStringLiteral("/ffmpeg"),
                "#!/bin/sh\necho 'ffmpeg: error while loading shared libraries: libavdevice.so.59' >&2\nexit 127\n");
    // The upgraded application's own.
    const QString application = installation.path(QStringLiteral("application"));
    const QByteArray newLauncher = readAll(installation.launcher()) + "\n# a newer build\n";
    writeScript(application + QStringLiteral("/kestreldl2"), newLauncher);
    const QByteArray newFfmpeg = "#!/bin/sh\necho 'ffmpeg version 7.1 Copyright (c) the FFmpeg developers'\n";
    writeScript(application + QStringLiteral("/ffmpeg"), newFfmpeg);
    installation.environment.insert(QStringLiteral("KESTREL_APP_DIR"), application);

    const QStringList arguments{QStringLiteral("--ffmpeg-location"), installation.dataFolder(),
                                QStringLiteral("https://x.invalid/watch?v=k")};
    for (int round = 1; round <= 2; ++round) {
        QScopedPointer<RawRun> run(installation.start(arguments));
        QVERIFY(run->wait());
        QCOMPARE(run->exitCode(), 0);
        QCOMPARE(readAll(installation.launcher()), newLauncher);
        QCOMPARE(readAll(installation.dataFolder() + QStringLiteral("/ffmpeg")), newFfmpeg);
        // The fresh ffmpeg starts, so the tool is pointed at it.
        QCOMPARE(installation.lastInvocation(), arguments);
    }
    const QByteArray log = readAll(installation.dataFolder() + QStringLiteral("/kestreldl2.log"));
    QCOMPARE(log.count("kestreldl2: took the launcher of " + QFile::encodeName(application) + '\n'), 1);
}

void TestLauncher::ffmpegThatDoesNotStartIsNeverUsed()
{
    Installation installation;
    writeScript(installation.dataFolder() + QStringLiteral("/ffmpeg"), "#!/bin/sh\nexit 127\n");
    const QString systemFfmpeg = installation.runtimeFolder() + QStringLiteral("/ffmpeg");
    writeScript(systemFfmpeg, "#!/bin/sh\necho 'ffmpeg version 5.1.6-0+deb12u1 Copyright (c) 2000-2024'\n");

    QScopedPointer<RawRun> run(installation.start({QStringLiteral("--ffmpeg-location"), installation.dataFolder(),
                                                   QStringLiteral("https://x.invalid/watch?v=k")}));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 0);
    QCOMPARE(installation.lastInvocation(), (QStringList{QStringLiteral("--ffmpeg-location"), systemFfmpeg,
                                                         QStringLiteral("https://x.invalid/watch?v=k")}));
    QVERIFY(run->err().contains("/ffmpeg does not start; the tool uses " + QFile::encodeName(systemFfmpeg)));
}

void TestLauncher::userOptionsReachTheTool()
{
    Installation installation;
    writeAll(installation.dataFolder() + QStringLiteral("/tool-options.txt"),
             "# Behind YouTube's bot check:\r\n"
             "--cookies-from-browser firefox\r\n"
             "\n"
             "  --proxy=socks5://127.0.0.1:1080  \n"
             "--cookies \"/home/me/my cookies.txt\"\n"
             "--force-ipv4\n"
             "--print title\n"
             "-o /tmp/%(id)s\n"
             "--limit-rate\n"
             "--dump-json\n");
    const QStringList arguments{QStringLiteral("--get-title"), QStringLiteral("https://x.invalid/watch?v=k")};
    QScopedPointer<RawRun> run(installation.start(arguments));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 0);
    QCOMPARE(installation.lastInvocation(),
             QStringList({QStringLiteral("--cookies-from-browser"), QStringLiteral("firefox"), QStringLiteral("--proxy"),
                          QStringLiteral("socks5://127.0.0.1:1080"), QStringLiteral("--cookies"),
                          QStringLiteral("/home/me/my cookies.txt"), QStringLiteral("--force-ipv4")})
                 + arguments);
    const QByteArray log = readAll(installation.dataFolder() + QStringLiteral("/kestreldl2.log"));
    for (const QByteArray &refused : {QByteArray("--print title (not an option for reaching the service)"),
                                     QByteArray("-o /tmp/%(id)s (not an option for reaching the service)"),
                                     QByteArray("--limit-rate (needs a value)"),
                                     QByteArray("--dump-json (not an option for reaching the service)")})
        QVERIFY2(log.contains("kestreldl2: tool-options.txt: refused " + refused + '\n'), refused.constData());
}

void TestLauncher::brokenOptionsFileChangesNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("folder");
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("comments only") << QByteArray("# nothing yet\n\n   \n") << false;
    QTest::newRow("binary") << QByteArray("\x7f" "ELF\x02\x01\x01\0\0\0", 10) << false;
    QTest::newRow("huge") << QByteArray(200 * 1024, '-') << false;
    QTest::newRow("a folder") << QByteArray() << true;
}

void TestLauncher::brokenOptionsFileChangesNothing()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, folder);
    Installation installation;
    const QString file = installation.dataFolder() + QStringLiteral("/tool-options.txt");
    if (folder)
        QVERIFY(QDir().mkpath(file));
    else
        writeAll(file, content);
    const QStringList arguments{QStringLiteral("--get-title"), QStringLiteral("https://x.invalid/watch?v=k")};
    QScopedPointer<RawRun> run(installation.start(arguments));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 0);
    QCOMPARE(installation.lastInvocation(), arguments);
}

void TestLauncher::missingToolIsReported_data()
{
    QTest::addColumn<bool>("exists");
    QTest::newRow("no file") << false;
    QTest::newRow("not executable") << true;
}

void TestLauncher::missingToolIsReported()
{
    QFETCH(bool, exists);
    Installation installation;
    const QString chosen = installation.path(QStringLiteral("elsewhere/yt-dlp"));
    if (exists)
        writeAll(chosen, fakeYtDlp);
    installation.environment.insert(QStringLiteral("KESTREL_YTDLP"), chosen);

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 127);
    QVERIFY2(run->err().startsWith(missingNote), run->err().constData());
    QVERIFY(run->err().contains(QFile::encodeName(chosen)));
    QCOMPARE(run->out(), QByteArray());
    QVERIFY(installation.invocations().isEmpty());
}

void TestLauncher::toolIsFoundOnPath()
{
    Installation installation;
    installation.environment.remove(QStringLiteral("KESTREL_YTDLP"));
    installation.environment.insert(QStringLiteral("FAKE_EXIT"), QStringLiteral("5"));

    const QString empty = installation.path(QStringLiteral("empty"));
    QVERIFY(QDir().mkpath(empty));
    installation.environment.insert(QStringLiteral("PATH"), empty);
    QScopedPointer<RawRun> missing(installation.start(downloadArguments()));
    QVERIFY(missing->wait());
    QCOMPARE(missing->exitCode(), 127);
    QVERIFY2(missing->err().contains(missingNote), missing->err().constData());

    // The fake comes before the system's own yt-dlp, which the fake's
    // commands need /usr/bin and /bin for.
    installation.environment.insert(QStringLiteral("PATH"), empty + QStringLiteral(":")
                                        + installation.runtimeFolder() + QStringLiteral(":")
                                        + QFileInfo(installation.fake()).path()
                                        + QStringLiteral(":/usr/bin:/bin"));
    QScopedPointer<RawRun> found(installation.start(downloadArguments()));
    QVERIFY(found->wait());
    QCOMPARE(found->exitCode(), 5);
    QCOMPARE(installation.lastInvocation(), withoutProgressDelta(downloadArguments()));
}

void TestLauncher::hungProbeIsAbandoned()
{
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QString pidFile = folder.filePath(QStringLiteral("tool.pid"));
    const QString tool = folder.filePath(QStringLiteral("yt-dlp"));
    writeScript(tool, "#!/bin/bash\necho $$ > '" + QFile::encodeName(pidFile) + "'\nexec sleep 30\n");

    QElapsedTimer elapsed;
    elapsed.start();
    const Launcher::FlagSupport answer =
        Launcher::probeFlagSupport(QFile::encodeName(tool).toStdString(), "--progress-delta", "1", 1000);
    QCOMPARE(answer, Launcher::FlagSupport::Undetermined);
    QVERIFY(elapsed.elapsed() < 10000);
    const QByteArray pid = readAll(pidFile).trimmed();
    if (!pid.isEmpty())
        QVERIFY(hasEnded(pid_t(pid.toInt())));
}

void TestLauncher::flagsAreDroppedWithTheirValues_data()
{
    using Arguments = std::vector<std::string>;
    QTest::addColumn<Arguments>("arguments");
    QTest::addColumn<Arguments>("expected");
    QTest::addColumn<Arguments>("dropped");

    QTest::newRow("value as next argument")
        << Arguments{"--no-warnings", "--progress-delta", "1", "https://x.invalid/a"}
        << Arguments{"--no-warnings", "https://x.invalid/a"} << Arguments{"--progress-delta 1"};
    QTest::newRow("value after equals sign")
        << Arguments{"--progress-delta=1", "https://x.invalid/a"} << Arguments{"https://x.invalid/a"}
        << Arguments{"--progress-delta=1"};
    QTest::newRow("another flag's value")
        << Arguments{"--output", "--progress-delta", "--progress-delta", "2"}
        << Arguments{"--output", "--progress-delta"} << Arguments{"--progress-delta 2"};
    QTest::newRow("after double dash")
        << Arguments{"--progress-delta", "1", "--", "--progress-delta", "1"}
        << Arguments{"--", "--progress-delta", "1"} << Arguments{"--progress-delta 1"};
    QTest::newRow("last, without value")
        << Arguments{"--no-playlist", "--progress-delta"} << Arguments{"--no-playlist"}
        << Arguments{"--progress-delta"};
    QTest::newRow("twice")
        << Arguments{"--progress-delta", "1", "--retries", "3", "--progress-delta", "5"}
        << Arguments{"--retries", "3"} << Arguments{"--progress-delta 1", "--progress-delta 5"};
    QTest::newRow("absent")
        << Arguments{"--retries", "3", "--format", "137+140", "https://x.invalid/a"}
        << Arguments{"--retries", "3", "--format", "137+140", "https://x.invalid/a"} << Arguments{};
}

void TestLauncher::flagsAreDroppedWithTheirValues()
{
    using Arguments = std::vector<std::string>;
    QFETCH(Arguments, arguments);
    QFETCH(Arguments, expected);
    QFETCH(Arguments, dropped);

    std::vector<Launcher::DroppedFlag> removed;
    QVERIFY(Launcher::dropFlags(arguments, {"--progress-delta"}, &removed) == expected);
    Arguments texts;
    for (const Launcher::DroppedFlag &flag : removed) {
        QCOMPARE(flag.flag, std::string("--progress-delta"));
        texts.push_back(flag.text);
    }
    QVERIFY(texts == dropped);
    QVERIFY(Launcher::dropFlags(arguments, {}, nullptr) == arguments);
}

void TestLauncher::windowsCommandLineKeepsEveryArgument_data()
{
    using Arguments = std::vector<std::string>;
    QTest::addColumn<Arguments>("arguments");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plain") << Arguments{"yt-dlp.exe", "--get-title", "https://youtu.be/k"}
                           << QStringLiteral("yt-dlp.exe --get-title https://youtu.be/k");
    QTest::newRow("blank and empty") << Arguments{"C:\\Program Files\\a.exe", "", "x y"}
                                     << QStringLiteral(R"("C:\Program Files\a.exe" "" "x y")");
    QTest::newRow("quotes") << Arguments{"say \"hi\"", "a\"b"}
                            << QStringLiteral(R"("say \"hi\"" "a\"b")");
    QTest::newRow("backslashes before a quote") << Arguments{"a\\\"b", "end\\"}
                                                << QStringLiteral(R"("a\\\"b" end\)");
    QTest::newRow("folder with a blank, ending in a backslash")
        << Arguments{"--path", "C:\\Users\\Zoë Ann\\Downloads\\KestrelD\\"}
        << QStringLiteral(R"(--path "C:\Users\Zoë Ann\Downloads\KestrelD\\")");
    QTest::newRow("tab") << Arguments{"a\tb"} << QStringLiteral("\"a\tb\"");
}

void TestLauncher::windowsCommandLineKeepsEveryArgument()
{
    using Arguments = std::vector<std::string>;
    QFETCH(Arguments, arguments);
    QFETCH(QString, expected);

    QCOMPARE(QString::fromStdString(Launcher::windowsCommandLine(arguments)), expected);
}

void TestLauncher::onlyCheckedFlagsAreAskedAbout()
{
    using Arguments = std::vector<std::string>;
    QVERIFY(Launcher::flagsToCheck({"--progress-delta", "1", "--progress-delta=2", "--no-playlist"})
            == Arguments{"--progress-delta"});
    QVERIFY(Launcher::flagsToCheck({"--output", "--progress-delta", "--no-playlist", "--retries", "3"})
            == Arguments{});
    QVERIFY(Launcher::flagsToCheck({"--", "--progress-delta", "1"}) == Arguments{});
}

void TestLauncher::cacheKeepsAnswersPerInstallation()
{
    const Launcher::ToolIdentity debian{"/usr/bin/yt-dlp", "1678084478.000000000:205"};
    const Launcher::ToolIdentity upgraded{"/usr/bin/yt-dlp", "1700000000.000000000:205"};
    const Launcher::ToolIdentity other{"/opt/yt\tdlp/yt-dlp", "1.000000000:1"};

    Launcher::FlagCache cache;
    cache.setSupports(debian, "--progress-delta", false);
    cache.setVersion(debian, "2023.03.04");
    cache.setSupports(other, "--progress-delta", true);
    cache.setSupports({"/bad\npath", "1.0:1"}, "--progress-delta", true);

    const Launcher::FlagCache read = Launcher::FlagCache::parse(cache.serialize());
    QVERIFY(read.supports(debian, "--progress-delta") == std::optional<bool>(false));
    QVERIFY(read.version(debian) == std::optional<std::string>("2023.03.04"));
    QVERIFY(read.supports(other, "--progress-delta") == std::optional<bool>(true));
    QVERIFY(!read.supports(debian, "--no-playlist"));
    QVERIFY(!read.supports(upgraded, "--progress-delta"));
    QVERIFY(!read.supports({"/bad\npath", "1.0:1"}, "--progress-delta"));

    // An answer about a newer installation replaces those about the old one.
    Launcher::FlagCache updated = read;
    updated.setSupports(upgraded, "--progress-delta", true);
    QVERIFY(updated.supports(upgraded, "--progress-delta") == std::optional<bool>(true));
    QVERIFY(!updated.supports(debian, "--progress-delta"));
    QVERIFY(!updated.version(debian));
    QVERIFY(updated.supports(other, "--progress-delta") == std::optional<bool>(true));
}

void TestLauncher::cacheRejectsDamagedText_data()
{
    const std::string header = "# kestreldl2: yt-dlp flag support, format 1\n";
    const std::string entry = "flag\t1.000000000:1\t--progress-delta\tunsupported\t/usr/bin/yt-dlp\n";
    QTest::addColumn<std::string>("text");
    QTest::newRow("empty") << std::string();
    QTest::newRow("no header") << entry;
    QTest::newRow("other format") << "# kestreldl2: yt-dlp flag support, format 2\n" + entry;
    QTest::newRow("cut short") << header + entry.substr(0, entry.size() - 1);
    QTest::newRow("unknown answer") << header + "flag\t1.000000000:1\t--progress-delta\tmaybe\t/usr/bin/yt-dlp\n";
    QTest::newRow("unknown kind") << header + "colour\t1.000000000:1\t--progress-delta\tunsupported\t/y\n";
    QTest::newRow("missing field") << header + "flag\t1.000000000:1\tunsupported\t/usr/bin/yt-dlp\n";
    QTest::newRow("binary") << header + std::string("\xff\x00\x01\n", 4);
}

void TestLauncher::cacheRejectsDamagedText()
{
    QFETCH(std::string, text);
    QVERIFY(Launcher::FlagCache::parse(text).isEmpty());
}

void TestLauncher::debianYtDlpAnswersTheProbe()
{
    // Debian's yt-dlp, which CI installs: its option parser answers without
    // any address and so without the network.
    const std::string tool = "/usr/bin/yt-dlp";
    QVERIFY2(QFileInfo(QString::fromStdString(tool)).isExecutable(), "install the Debian package yt-dlp");
    QCOMPARE(Launcher::probeFlagSupport(tool, "--progress-delta", "1", 60000), Launcher::FlagSupport::Unsupported);
    QCOMPARE(Launcher::probeFlagSupport(tool, "--no-playlist", nullptr, 60000), Launcher::FlagSupport::Supported);
}

void TestLauncher::buildTreeHasToolAndFfmpegBesideExecutable()
{
    const QString folder = QStringLiteral(KESTREL_APP_DIR);
    const QFileInfo tool(folder + QStringLiteral("/kestreldl2"));
    QVERIFY(tool.isFile());
    QVERIFY(tool.isExecutable());
    const QFileInfo ffmpeg(folder + QStringLiteral("/ffmpeg"));
    QVERIFY(ffmpeg.isSymLink());
    QCOMPARE(ffmpeg.symLinkTarget(), QStringLiteral(KESTREL_SYSTEM_FFMPEG));
}

QTEST_GUILESS_MAIN(TestLauncher)
#include "tst_launcher.moc"
