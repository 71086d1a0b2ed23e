#include "toolinstalltest.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

using TestFiles::readAll;

namespace {

// The system's yt-dlp on PATH, which the launcher falls back to.
QByteArray systemTool()
{
    return "#!/bin/bash\n"
           "if [ \"$*\" = --version ]; then echo 2023.03.04; exit 0; fi\n"
           "url=\n"
           "for arg in \"$@\"; do case \"$arg\" in https://*) url=$arg ;; esac; done\n"
           "if [ -z \"$url\" ]; then echo 'yt-dlp: error: You must provide at least one URL.' >&2; exit 2; fi\n"
           "(IFS=$'\\x1f'; printf '%s\\n' \"system$IFS$*\") >> \"$FAKE_RECORD\"\n";
}

bool isRedirectionNote(const QByteArray &line)
{
    static const QRegularExpression note(QStringLiteral("^kestreldl2: KESTREL_[A-Z_]+ is set: "));
    return note.match(QString::fromUtf8(line)).hasMatch();
}

} // namespace

QByteArray withoutRedirectionNotes(const QByteArray &error, QByteArrayList *notes)
{
    QByteArray kept;
    for (const QByteArray &line : error.split('\n')) {
        if (isRedirectionNote(line)) {
            if (notes)
                *notes << line;
        } else if (!line.isEmpty()) {
            kept += line + '\n';
        }
    }
    return kept;
}

void ToolInstallTest::writeFile(const QString &path, const QByteArray &content, bool executable)
{
    if (!TestFiles::writeFile(path, content, executable))
        qFatal("cannot write %s", qPrintable(path));
}

void ToolInstallTest::initTestCase()
{
    QVERIFY(m_keys.isValid());
}

void ToolInstallTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    QVERIFY(m_root->isValid());
    QVERIFY(QDir().mkpath(dataFolder()));
    QVERIFY(QFile::copy(QStringLiteral(KESTREL_LAUNCHER_PATH), launcher()));
    m_feed = std::make_unique<LocalReleaseFeed>(m_keys, path(QStringLiteral("feed")));

    writeFile(fakeBin() + QStringLiteral("/yt-dlp"), systemTool(), true);
    // Debian bookworm's Node: too old for the tool.
    setSystemNode("v18.19.0");
    QVERIFY(m_feed->publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.01"))));
    QVERIFY(m_feed->publishRuntime("deno 2.5.6 (stable, release, x86_64-unknown-linux-gnu)"));

    m_environment = QProcessEnvironment::systemEnvironment();
    m_environment.remove(QStringLiteral("KESTREL_YTDLP"));
    m_environment.insert(QStringLiteral("PATH"),
                         fakeBin() + QLatin1Char(':') + m_environment.value(QStringLiteral("PATH")));
    m_environment.insert(QStringLiteral("KESTREL_TOOL_KEYRING"), m_keys.releaseKeyFile());
    m_environment.insert(QStringLiteral("FAKE_RECORD"), recordPath());
    QVERIFY(m_feed->start());
    m_environment.insert(QStringLiteral("KESTREL_TOOL_FEED"), m_feed->address());
    m_environment.insert(QStringLiteral("KESTREL_JS_RUNTIME_FEED"), m_feed->address());
}

void ToolInstallTest::cleanup()
{
    m_feed.reset();
    m_root.reset();
}

void ToolInstallTest::setSystemNode(const QByteArray &versionLine)
{
    writeFile(fakeBin() + QStringLiteral("/node"), ReleaseScripts::answering(versionLine), true);
}

QProcess *ToolInstallTest::startLauncher(const QStringList &arguments, const QProcessEnvironment &environment)
{
    auto *process = new QProcess(this);
    process->setProcessEnvironment(environment);
    process->setWorkingDirectory(dataFolder());
    process->start(launcher(), arguments);
    return process;
}

RunResult ToolInstallTest::runLauncher(const QStringList &arguments, const QProcessEnvironment &environment)
{
    QElapsedTimer clock;
    clock.start();
    std::unique_ptr<QProcess> process(startLauncher(arguments, environment));
    RunResult result;
    result.finished = process->waitForFinished(150000);
    result.milliseconds = clock.elapsed();
    result.status = process->exitStatus();
    result.exitCode = process->exitCode();
    result.out = process->readAllStandardOutput();
    result.err = withoutRedirectionNotes(process->readAllStandardError(), &result.redirections);
    if (!result.finished) {
        process->kill();
        process->waitForFinished();
    }
    return result;
}

QStringList ToolInstallTest::dataFiles() const
{
    return QDir(dataFolder()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

QStringList ToolInstallTest::scratchFiles() const
{
    return dataFiles().filter(QRegularExpression(QStringLiteral("^\\.kestreldl2-")));
}

QList<QStringList> ToolInstallTest::recordedRuns() const
{
    QList<QStringList> runs;
    for (const QByteArray &line : readAll(recordPath()).split('\n')) {
        if (line.isEmpty())
            continue;
        QStringList arguments;
        for (const QByteArray &argument : line.split('\x1f'))
            arguments << QString::fromUtf8(argument);
        runs << arguments;
    }
    return runs;
}

void ToolInstallTest::installRelease(const QString &version)
{
    QVERIFY(m_feed->publishTool(ReleaseScripts::tool(version)));
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(installedTool(), ReleaseScripts::tool(version));
}


void ToolInstallTest::setLastCheck(qint64 secondsSinceEpoch)
{
    const QString statePath = dataFolder() + QStringLiteral("/kestreldl2.state");
    QByteArray state = readAll(statePath);
    const qsizetype start = state.indexOf("last-check ");
    QVERIFY(start >= 0);
    state.replace(start, state.indexOf('\n', start) - start, "last-check " + QByteArray::number(secondsSinceEpoch));
    writeFile(statePath, state);
}

QProcessEnvironment ToolInstallTest::waitingForRelease(const QString &version, bool crash)
{
    QProcessEnvironment changed = m_environment;
    changed.insert(QStringLiteral("FAKE_WAIT_FILE"), dataFolder() + QLatin1Char('/') + QLatin1String(toolAsset));
    changed.insert(QStringLiteral("FAKE_WAIT_TEXT"), version);
    if (crash)
        changed.insert(QStringLiteral("FAKE_CRASH"), QStringLiteral("1"));
    return changed;
}

void ToolInstallTest::verifySystemRuntimeIsUsed(const QString &runtimeFlag)
{
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(result.out, QByteArray("installed yt-dlp_linux 2026.11.01\n"));
    QVERIFY(!feed().requests().contains(QStringLiteral("GET deno-x86_64-unknown-linux-gnu.zip")));
    QVERIFY(!QFileInfo::exists(dataFolder() + QStringLiteral("/deno")));

    QVERIFY(runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")}).succeeded());
    const QStringList run = recordedRuns().value(0);
    QCOMPARE(run.mid(1, 6), QStringList({QStringLiteral("--ignore-config"), QStringLiteral("--encoding"),
                                         QStringLiteral("utf-8"), QStringLiteral("--no-js-runtimes"),
                                         QStringLiteral("--js-runtimes"), runtimeFlag}));
}
