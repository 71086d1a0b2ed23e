// No loops and no hangs around the managed tool: failed attempts make the
// next one wait longer, a slow feed or another launcher's lock never holds a
// tool run for long, and the refresh beside a run outlives the run. The
// feed is the local one of the install tests, signed with throw-away keys.

#include "folderlock.h"
#include "toolinstalltest.h"
#include "processprobe.h"
#include "testfiles.h"
#include "testsandbox.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <csignal>

#include <unistd.h>

namespace {

constexpr qint64 anHour = 3600;

using TestFiles::readAll;

} // namespace

class TestToolRetries : public ToolInstallTest
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

private slots:

    void failingFeedSpacesTheRefreshes();
    void failingFeedSpacesTheInstalls();
    void stateThatCannotBeSavedMakesNoAttempt();
    void tricklingFeedEndsTheInstallByTheRateRule();
    void tricklingFeedRefusesTheUpdateByTheRateRule();
    void lockHeldElsewhereHoldsTheRunHalfAMinuteAtMost();
    void refreshOutlivesTheRunThatStartedIt();
    void killedRefreshCountsAsFailed();

private:
    QString statePath() const { return path(QStringLiteral("data/kestreldl2.state")); }

    RunResult runVideo() { return runLauncher(videoRun()); }
    static QStringList videoRun() { return {QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/k")}; }
    // Until no launcher of the data folder runs: a refresh beside a run is
    // started before the run ends, so after it none can come.
    bool noLauncherLeft() const;
    void setStateValue(const QByteArray &key, qint64 value);
    qint64 stateValue(const QByteArray &key) const;
    // Moves the last failure back by seconds, as if that time had passed.
    void letTimePass(qint64 seconds) { setStateValue("last-failure", stateValue("last-failure") - seconds); }
    int sumsRequests() { return feed().requests().count(QStringLiteral("GET SHA2-256SUMS")); }
    QStringList recordedTools() const;
};

// A node new enough on PATH: no Deno to download.
void TestToolRetries::init()
{
    ToolInstallTest::init();
    setSystemNode("v22.11.0");
}

// A refresh may outlive its run: none is left for the next case.
void TestToolRetries::cleanup()
{
    for (const qint64 pid : ProcessProbe::runningProcessesOf(launcher()))
        ::kill(pid_t(pid), SIGKILL);
    ToolInstallTest::cleanup();
}

bool TestToolRetries::noLauncherLeft() const
{
    return QTest::qWaitFor([&] { return ProcessProbe::runningProcessesOf(launcher()).isEmpty(); }, 60000);
}

void TestToolRetries::setStateValue(const QByteArray &key, qint64 value)
{
    QByteArray state = readAll(statePath());
    const QRegularExpression line(QStringLiteral("(^|\\n)%1 -?\\d+").arg(QString::fromUtf8(key)));
    const QString old = line.match(QString::fromUtf8(state)).captured(0);
    QVERIFY2(!old.isEmpty(), state.constData());
    state.replace(old.toUtf8(), (old.startsWith(QLatin1Char('\n')) ? "\n" : "") + key + ' ' + QByteArray::number(value));
    writeFile(statePath(), state);
}

qint64 TestToolRetries::stateValue(const QByteArray &key) const
{
    const QRegularExpression line(QStringLiteral("(^|\\n)%1 (-?\\d+)").arg(QString::fromUtf8(key)));
    return line.match(QString::fromUtf8(readAll(statePath()))).captured(2).toLongLong();
}

QStringList TestToolRetries::recordedTools() const
{
    QStringList tools;
    for (const QByteArray &line : readAll(recordPath()).split('\n')) {
        if (!line.isEmpty())
            tools << QString::fromUtf8(line.split('\x1f').value(0));
    }
    return tools;
}

void TestToolRetries::failingFeedSpacesTheRefreshes()
{
    installRelease(QStringLiteral("2026.11.01"));
    setStateValue("last-check", QDateTime::currentSecsSinceEpoch() - 8 * 24 * anHour);
    feed().setBehaviour(QStringLiteral("SHA2-256SUMS"), QStringLiteral("fail"));
    feed().forgetRequests();

    // The first run tries; the runs within the hour after do not.
    for (int run = 0; run < 4; ++run) {
        QVERIFY(runVideo().succeeded());
        QVERIFY(noLauncherLeft());
    }
    QCOMPARE(sumsRequests(), 1);
    QCOMPARE(stateValue("failures"), 1);

    // An hour later one more try; then the wait is two hours, then four.
    letTimePass(anHour);
    for (int run = 0; run < 3; ++run) {
        QVERIFY(runVideo().succeeded());
        QVERIFY(noLauncherLeft());
    }
    QCOMPARE(sumsRequests(), 2);
    letTimePass(anHour);
    QVERIFY(runVideo().succeeded());
    QVERIFY(noLauncherLeft());
    QCOMPARE(sumsRequests(), 2);
    letTimePass(anHour);
    QVERIFY(runVideo().succeeded());
    QVERIFY(noLauncherLeft());
    QCOMPARE(sumsRequests(), 3);
    QCOMPARE(stateValue("failures"), 3);
    letTimePass(3 * anHour);
    QVERIFY(runVideo().succeeded());
    QVERIFY(noLauncherLeft());
    QCOMPARE(sumsRequests(), 3);

    // The longest wait is a day, and a success ends the waiting.
    setStateValue("failures", 30);
    letTimePass(24 * anHour);
    feed().setBehaviour(QStringLiteral("SHA2-256SUMS"), QStringLiteral("whole"));
    QVERIFY(runVideo().succeeded());
    QVERIFY(noLauncherLeft());
    QCOMPARE(sumsRequests(), 4);
    QCOMPARE(stateValue("failures"), 0);
    QCOMPARE(recordedTools(), QStringList(11, QStringLiteral("release 2026.11.01")));
}

void TestToolRetries::failingFeedSpacesTheInstalls()
{
    feed().setBehaviour(QStringLiteral("SHA2-256SUMS"), QStringLiteral("fail"));
    for (int run = 0; run < 3; ++run)
        QVERIFY(runVideo().succeeded());
    QCOMPARE(sumsRequests(), 1);
    letTimePass(anHour);
    QVERIFY(runVideo().succeeded());
    QCOMPARE(sumsRequests(), 2);
    letTimePass(anHour);
    QVERIFY(runVideo().succeeded());
    QCOMPARE(sumsRequests(), 2);
    QCOMPARE(stateValue("failures"), 2);
    QCOMPARE(recordedTools(), QStringList(5, QStringLiteral("system")));
}

void TestToolRetries::stateThatCannotBeSavedMakesNoAttempt()
{
    installRelease(QStringLiteral("2026.11.01"));
    // Nothing can replace a folder by a file: every save fails, and the
    // state read is empty, so that every run finds the copy due.
    QVERIFY(QFile::remove(statePath()));
    QVERIFY(QDir().mkpath(statePath() + QStringLiteral("/blocked")));
    feed().forgetRequests();
    for (int run = 0; run < 3; ++run) {
        QVERIFY(runVideo().succeeded());
        QVERIFY(noLauncherLeft());
    }
    QCOMPARE(feed().requests(), QStringList());

    const RunResult update = runLauncher({QStringLiteral("--update")});
    QVERIFY(update.crashed());
    QCOMPARE(update.err, "kestreldl2: update refused: kestreldl2.state: cannot write into " + dataFolder().toUtf8()
                             + '\n');
    QCOMPARE(feed().requests(), QStringList());
}

void TestToolRetries::tricklingFeedEndsTheInstallByTheRateRule()
{
    // 200 bytes at one byte a second, far below 10 KiB/s: stalled after
    // 30 seconds, and the run goes on with the system's tool.
    feed().setBehaviour(QStringLiteral("SHA2-256SUMS"), QStringLiteral("trickle"));
    const RunResult result = runVideo();
    QVERIFY2(result.succeeded(), result.err.constData());
    QVERIFY2(result.milliseconds < 90000, qPrintable(QString::number(result.milliseconds)));
    QVERIFY2(result.err.contains("cannot install the managed yt-dlp (SHA2-256SUMS: stalled: less than 10240 bytes a "
                                 "second for 30 seconds); using the system's yt-dlp"),
             result.err.constData());
    QCOMPARE(recordedTools(), QStringList{QStringLiteral("system")});
}

void TestToolRetries::tricklingFeedRefusesTheUpdateByTheRateRule()
{
    // The window's update ends as the refusal it reports, not after the
    // minutes the whole file would take.
    feed().setBehaviour(QStringLiteral("SHA2-256SUMS"), QStringLiteral("trickle"));
    const RunResult result = runLauncher({QStringLiteral("--update")});
    QVERIFY(result.crashed());
    QVERIFY2(result.milliseconds < 90000, qPrintable(QString::number(result.milliseconds)));
    QCOMPARE(result.err, QByteArray("kestreldl2: update refused: SHA2-256SUMS: stalled: less than 10240 bytes a second "
                                    "for 30 seconds\n"));
}

void TestToolRetries::lockHeldElsewhereHoldsTheRunHalfAMinuteAtMost()
{
    const Launcher::FolderLock lock(dataFolder().toStdString(), Launcher::FolderLock::Wait::NotAtAll);
    QVERIFY(lock.isHeld());
    const RunResult result = runVideo();
    QVERIFY2(result.succeeded(), result.err.constData());
    QVERIFY2(result.milliseconds >= 29000 && result.milliseconds < 90000,
             qPrintable(QString::number(result.milliseconds)));
    QVERIFY2(result.err.contains("kestreldl2: another launcher is still installing the managed yt-dlp after 30 seconds; "
                                 "using the system's yt-dlp"),
             result.err.constData());
    QCOMPARE(recordedTools(), QStringList{QStringLiteral("system")});
    QVERIFY(feed().requests().isEmpty());
}

void TestToolRetries::refreshOutlivesTheRunThatStartedIt()
{
    installRelease(QStringLiteral("2026.11.01"));
    setStateValue("last-check", QDateTime::currentSecsSinceEpoch() - 8 * 24 * anHour);
    // About three seconds to download: longer than the run.
    const QByteArray newer = ReleaseScripts::tool(QStringLiteral("2026.11.20")) + "#" + QByteArray(2 * 1024 * 1024, 'k')
                             + "\n";
    QVERIFY(feed().publishTool(newer));
    feed().setBehaviour(QLatin1String(toolAsset), QStringLiteral("slow"));

    QVERIFY(runVideo().succeeded());
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
    const QList<qint64> refresh = ProcessProbe::runningProcessesOf(launcher());
    QCOMPARE(refresh.size(), 1);
    // In a session of its own, apart from the run's.
    QVERIFY(::getsid(pid_t(refresh.first())) != ::getsid(0));
    // It holds none of the run's streams, which the application reads to
    // their end.
    for (const char *stream : {"0", "1", "2"}) {
        QCOMPARE(QFileInfo(QStringLiteral("/proc/%1/fd/%2").arg(refresh.first()).arg(QLatin1String(stream)))
                     .symLinkTarget(),
                 QStringLiteral("/dev/null"));
    }
    QVERIFY(QTest::qWaitFor([&] { return installedTool() == newer; }, 60000));
    QVERIFY(noLauncherLeft());
    QVERIFY(readAll(dataFolder() + QStringLiteral("/kestreldl2.log"))
                .contains("background refresh done: installed yt-dlp_linux 2026.11.20"));
}

void TestToolRetries::killedRefreshCountsAsFailed()
{
    installRelease(QStringLiteral("2026.11.01"));
    setStateValue("last-check", QDateTime::currentSecsSinceEpoch() - 8 * 24 * anHour);
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20"))));
    feed().setBehaviour(QLatin1String(toolAsset), QStringLiteral("trickle"));
    feed().forgetRequests();

    QVERIFY(runVideo().succeeded());
    QVERIFY(QTest::qWaitFor([&] { return feed().requests().contains(QStringLiteral("GET yt-dlp_linux")); }, 60000));
    // What the application's stop of a run does to every launcher process.
    for (const qint64 pid : ProcessProbe::runningProcessesOf(launcher()))
        QCOMPARE(::kill(pid_t(pid), SIGKILL), 0);
    QVERIFY(noLauncherLeft());

    // The next runs do not start it again within the hour.
    for (int run = 0; run < 2; ++run) {
        QVERIFY(runVideo().succeeded());
        QVERIFY(noLauncherLeft());
    }
    QCOMPARE(feed().requests().count(QStringLiteral("GET yt-dlp_linux")), 1);
    QCOMPARE(stateValue("failures"), 1);
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
}

KESTREL_TEST_MAIN(TestToolRetries)

#include "tst_toolretries.moc"
