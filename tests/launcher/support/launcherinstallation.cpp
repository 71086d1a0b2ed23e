#include "launcherinstallation.h"

#include "launcherruns.h"

#include <QDir>
#include <QFile>

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

} // namespace

Installation::Installation()
{
    if (!m_root.isValid())
        qFatal("no temporary folder");
    QDir().mkpath(dataFolder());
    if (!QFile::copy(QStringLiteral(KESTREL_LAUNCHER_PATH), launcher()))
        qFatal("cannot copy the launcher");
    LauncherRuns::writeScript(fake(), fakeYtDlp);
    // Runtimes too old for the tool shadow any the machine has, so that
    // no run names one.
    LauncherRuns::writeScript(path(QStringLiteral("runtimes/deno")), "#!/bin/sh\necho 'deno 1.46.3 (stable)'\n");
    LauncherRuns::writeScript(path(QStringLiteral("runtimes/node")), "#!/bin/sh\necho v18.19.0\n");
    LauncherRuns::writeScript(path(QStringLiteral("runtimes/qjs")), "#!/bin/sh\necho 'QuickJS version 2021-03-27'\n");

    m_environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : m_environment.keys()) {
        if (name.startsWith(QStringLiteral("FAKE_")))
            m_environment.remove(name);
    }
    m_environment.insert(QStringLiteral("KESTREL_YTDLP"), fake());
    m_environment.insert(QStringLiteral("FAKE_RECORD"), recordPath());
    m_environment.insert(QStringLiteral("PATH"), runtimeFolder() + QLatin1Char(':')
                                                   + m_environment.value(QStringLiteral("PATH")));
    // No test here reaches a release feed: an install attempt fails at once.
    m_environment.insert(QStringLiteral("KESTREL_TOOL_FEED"), QStringLiteral("http://127.0.0.1:9/"));
    // Nothing a run starts finds the user's own folders.
    for (const QString &variable : m_sandbox.environment()) {
        const qsizetype equals = variable.indexOf(QLatin1Char('='));
        m_environment.insert(variable.left(equals), variable.mid(equals + 1));
    }
}

// Every command line the fake was given, in order.
QList<QStringList> Installation::invocations() const
{
    QList<QStringList> lines;
    const QList<QByteArray> records = TestFiles::readAll(recordPath()).split('\n');
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
qsizetype Installation::questions() const
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
QStringList Installation::lastInvocation() const
{
    const QList<QStringList> all = invocations();
    if (all.isEmpty())
        return {};
    QStringList last = all.last();
    if (last.mid(0, LauncherRuns::launcherPrefix.size()) != LauncherRuns::launcherPrefix)
        return last;
    last = last.mid(LauncherRuns::launcherPrefix.size());
    // The launcher's "--" before a video; one anywhere else stays, so that
    // a comparison shows it.
    if (last.size() >= 2 && last.at(last.size() - 2) == QLatin1String("--"))
        last.removeAt(last.size() - 2);
    return last;
}

RawRun *Installation::start(const QStringList &arguments) const
{
    return new RawRun(launcher(), arguments, m_environment, m_root.path());
}
