// What the launcher refuses although it is signed, and what it says when a
// feed has stopped following the tool: no release older than one installed
// before, no Deno older than the tool needs, no gpgv but the system's, and
// every variable that points it elsewhere on record.

#include "toolinstalltest.h"

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <memory>

using TestFiles::readAll;

namespace {

const QByteArray oldDeno = "deno 2.2.12 (stable, release, x86_64-unknown-linux-gnu)";
const QByteArray currentDeno = "deno 2.5.6 (stable, release, x86_64-unknown-linux-gnu)";

qint64 daysSince(const QDate &day)
{
    return day.daysTo(QDateTime::currentDateTimeUtc().date());
}

} // namespace

class TestToolTrust : public ToolInstallTest
{
    Q_OBJECT

private slots:
    void olderSignedReleaseIsRefused();
    void highestVersionIsRemembered();
    void staleNewestReleaseIsReported();
    void silentFeedIsReported();
    void gpgvOnPathIsNotUsed();
    void redirectionsAreOnRecord();
    void tooOldDenoIsNotInstalled();
    void tooOldManagedDenoIsReplaced();
    void newCopyThatCrashesBringsTheOldOneBack();
    void oldCopyEndingWellLeavesTheNewOneOnTrial();
    void oldCopyCrashingDoesNothingToTheNewOne();
    void newRuntimeIsSettledByItsFirstRun_data();
    void newRuntimeIsSettledByItsFirstRun();
    void backgroundInstallBringsTheCopiesQuietly();
    void backgroundInstallLeavesAnInstalledToolAlone();
    void firstRunWaitsForTheBackgroundInstall();

private:
    QString previousTool() const { return dataFolder() + QStringLiteral("/yt-dlp_linux.previous"); }
    QString previousRuntime() const { return dataFolder() + QStringLiteral("/deno.previous"); }
    // A title run; how it ended.
    RunResult titleRun(const QProcessEnvironment &environment)
    {
        return runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")}, environment);
    }
    // Release 2026.11.01 installed a week and a day ago, 2026.11.20 on the feed.
    void newReleaseDueBesideTheNextRun();
    QString logText() const { return QString::fromUtf8(readAll(dataFolder() + QStringLiteral("/kestreldl2.log"))); }
};

void TestToolTrust::olderSignedReleaseIsRefused()
{
    installRelease(QStringLiteral("2026.11.20"));
    // A mirror that serves an older release, signed as validly as the rest.
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.01"))));
    const RunResult result = update();
    QVERIFY(result.crashed());
    QCOMPARE(result.err, QByteArray("kestreldl2: update refused: yt-dlp_linux: release 2026.11.01 is older than "
                                    "release 2026.11.20, installed here before; the installed copy is kept\n"));
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.20")));
    QVERIFY(scratchFiles().isEmpty());
    QVERIFY(logText().contains(QStringLiteral("release 2026.11.01 is older than release 2026.11.20")));
}

// The highest version installed is what a release is measured against,
// and a refused one leaves it as it was.
void TestToolTrust::highestVersionIsRemembered()
{
    installRelease(QStringLiteral("2026.11.01"));
    installRelease(QStringLiteral("2026.11.20"));
    const QString statePath = dataFolder() + QStringLiteral("/kestreldl2.state");
    const QByteArray state = readAll(statePath);
    QVERIFY2(state.contains("\nhighest-tool-version:stable 2026.11.20\n"), state.constData());
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.10"))));
    QVERIFY(update().crashed());
    QVERIFY(readAll(statePath).contains("\nhighest-tool-version:stable 2026.11.20\n"));
}

void TestToolTrust::staleNewestReleaseIsReported()
{
    installRelease(QStringLiteral("2026.01.05"));
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    const QByteArray warning = "yt-dlp_linux 2026.01.05, the newest release the feed offers, is "
                               + QByteArray::number(daysSince(QDate(2026, 1, 5)))
                               + " days old: the feed may no longer follow the tool's releases";
    QCOMPARE(result.err, "kestreldl2: warning: " + warning + '\n');
    QVERIFY(logText().contains(QString::fromUtf8(warning)));

    // A release of last week says nothing.
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20"))));
    const RunResult fresh = update();
    QVERIFY2(fresh.succeeded(), fresh.err.constData());
    QCOMPARE(fresh.err, QByteArray());
}

void TestToolTrust::silentFeedIsReported()
{
    installRelease(QStringLiteral("2026.11.20"));
    setLastCheck(QDateTime::currentSecsSinceEpoch() - 40 * 24 * 3600);
    feed().stop();

    const RunResult result = update();
    QVERIFY(result.crashed());
    QVERIFY2(result.err.startsWith("kestreldl2: warning: the tool's feed has not answered for 40 days: the managed "
                                   "yt-dlp gets no updates\nkestreldl2: update refused: SHA2-256SUMS: "),
             result.err.constData());
    QVERIFY(logText().contains(QStringLiteral("the tool's feed has not answered for 40 days")));
}

// A program called gpgv early on PATH that prints what a good signature
// looks like: the launcher never asks it.
void TestToolTrust::gpgvOnPathIsNotUsed()
{
    installRelease(QStringLiteral("2026.11.01"));
    const QString marker = path(QStringLiteral("fake-gpgv-ran"));
    writeFile(fakeBin() + QStringLiteral("/gpgv"),
              "#!/bin/sh\ntouch '" + marker.toUtf8()
                  + "'\necho '[GNUPG:] GOODSIG 0000000000000000 Anybody'\n"
                    "echo '[GNUPG:] VALIDSIG AC0CBBE6848D6A873464AF4E57CF65933B5A7581'\nexit 0\n",
              true);
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20"))));
    QVERIFY(feed().signSums(TestSigningKeys::Signer::Stranger));
    const RunResult result = update();
    QVERIFY(result.crashed());
    QCOMPARE(result.err,
             QByteArray("kestreldl2: update refused: SHA2-256SUMS.sig: signed by another key than the tool's release key\n"));
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
    QVERIFY(!QFileInfo::exists(marker));
}

void TestToolTrust::redirectionsAreOnRecord()
{
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    const QByteArrayList expected{
        "kestreldl2: KESTREL_TOOL_FEED is set: " + feed().address().toUtf8(),
        "kestreldl2: KESTREL_JS_RUNTIME_FEED is set: " + feed().address().toUtf8(),
        "kestreldl2: KESTREL_TOOL_KEYRING is set: " + QFile::encodeName(keys().releaseKeyFile())};
    QCOMPARE(result.redirections, expected);
    QCOMPARE(logText().count(QStringLiteral("KESTREL_TOOL_FEED is set: ")), 1);

    // A tool run keeps standard error for the tool, and the log has them.
    const RunResult run = runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")});
    QVERIFY2(run.succeeded(), run.err.constData());
    QCOMPARE(run.redirections, QByteArrayList());
    QCOMPARE(logText().count(QStringLiteral("KESTREL_TOOL_FEED is set: ")), 2);
    QCOMPARE(logText().count(QStringLiteral("KESTREL_TOOL_KEYRING is set: ")), 2);
}

void TestToolTrust::tooOldDenoIsNotInstalled()
{
    QVERIFY(feed().publishRuntime(oldDeno));
    const RunResult result = update();
    QVERIFY(result.crashed());
    QCOMPARE(result.err, "kestreldl2: update refused: deno-x86_64-unknown-linux-gnu.zip: " + oldDeno
                             + " is older than Deno 2.3.0, which the tool needs; the installed copy is kept\n");
    QVERIFY(!QFileInfo::exists(dataFolder() + QStringLiteral("/deno")));
}

// A Deno an earlier launcher installed without asking its version: not
// named to the tool, and replaced by the feed's, though the feed's archive
// is the one the state remembers.
void TestToolTrust::tooOldManagedDenoIsReplaced()
{
    QVERIFY(update().succeeded());
    writeFile(dataFolder() + QStringLiteral("/deno"), ReleaseScripts::answering(oldDeno), true);

    QVERIFY(runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")}).succeeded());
    const QStringList run = recordedRuns().value(0);
    QVERIFY2(!run.contains(QStringLiteral("--js-runtimes")), qPrintable(run.join(QLatin1Char(' '))));

    // The run started the replacement beside it; an update waits for it.
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(readAll(dataFolder() + QStringLiteral("/deno")), ReleaseScripts::answering(currentDeno));
}

void TestToolTrust::newReleaseDueBesideTheNextRun()
{
    installRelease(QStringLiteral("2026.11.01"));
    setLastCheck(QDateTime::currentSecsSinceEpoch() - 8 * 24 * 3600);
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20"))));
}

void TestToolTrust::newCopyThatCrashesBringsTheOldOneBack()
{
    installRelease(QStringLiteral("2026.11.01"));
    installRelease(QStringLiteral("2026.11.20"));
    QProcessEnvironment crashing = environment();
    crashing.insert(QStringLiteral("FAKE_CRASH"), QStringLiteral("1"));
    QVERIFY(titleRun(crashing).crashed());
    QCOMPARE(recordedRuns().value(0).value(0), QStringLiteral("release 2026.11.20"));
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
    QVERIFY(!QFileInfo::exists(previousTool()));
}

// The run of the old copy says nothing about the new one that a refresh
// beside it installed: the old copy stays as the previous one until the new
// one has run.
void TestToolTrust::oldCopyEndingWellLeavesTheNewOneOnTrial()
{
    newReleaseDueBesideTheNextRun();
    QVERIFY(titleRun(waitingForRelease(QStringLiteral("2026.11.20"))).succeeded());
    QCOMPARE(recordedRuns().value(0).value(0), QStringLiteral("release 2026.11.01"));
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.20")));
    QCOMPARE(readAll(previousTool()), ReleaseScripts::tool(QStringLiteral("2026.11.01")));

    QVERIFY(titleRun(environment()).succeeded());
    QCOMPARE(recordedRuns().value(1).value(0), QStringLiteral("release 2026.11.20"));
    QVERIFY(!QFileInfo::exists(previousTool()));
}

void TestToolTrust::oldCopyCrashingDoesNothingToTheNewOne()
{
    newReleaseDueBesideTheNextRun();
    QVERIFY(titleRun(waitingForRelease(QStringLiteral("2026.11.20"), true)).crashed());
    QCOMPARE(recordedRuns().value(0).value(0), QStringLiteral("release 2026.11.01"));
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.20")));
    QCOMPARE(readAll(previousTool()), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
}

void TestToolTrust::newRuntimeIsSettledByItsFirstRun_data()
{
    QTest::addColumn<bool>("crash");
    QTest::addColumn<QByteArray>("installed");
    QTest::newRow("run went well") << false << QByteArray("deno 2.6.0 (stable, release, x86_64-unknown-linux-gnu)");
    QTest::newRow("run crashed") << true << currentDeno;
}

void TestToolTrust::newRuntimeIsSettledByItsFirstRun()
{
    QFETCH(bool, crash);
    QFETCH(QByteArray, installed);
    QVERIFY(update().succeeded());
    QVERIFY(feed().publishRuntime("deno 2.6.0 (stable, release, x86_64-unknown-linux-gnu)"));
    QVERIFY(update().succeeded());
    QCOMPARE(readAll(previousRuntime()), ReleaseScripts::answering(currentDeno));

    QProcessEnvironment run = environment();
    if (crash)
        run.insert(QStringLiteral("FAKE_CRASH"), QStringLiteral("1"));
    QCOMPARE(titleRun(run).crashed(), crash);
    QVERIFY(recordedRuns().value(0).contains(QStringLiteral("deno:") + dataFolder() + QStringLiteral("/deno")));
    QVERIFY(!QFileInfo::exists(previousRuntime()));
    QCOMPARE(readAll(dataFolder() + QStringLiteral("/deno")), ReleaseScripts::answering(installed));
}

void TestToolTrust::backgroundInstallBringsTheCopiesQuietly()
{
    const RunResult result = runLauncher({QStringLiteral("--update"), QStringLiteral("--background")});
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.redirections, QByteArrayList());
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
    QCOMPARE(readAll(dataFolder() + QStringLiteral("/deno")), ReleaseScripts::answering(currentDeno));
    QVERIFY(logText().contains(QStringLiteral("background install: installed yt-dlp_linux 2026.11.01")));
}

// It is started at every start of the application: with a managed tool in
// place it asks no feed, whatever the feed offers.
void TestToolTrust::backgroundInstallLeavesAnInstalledToolAlone()
{
    installRelease(QStringLiteral("2026.11.01"));
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20"))));
    feed().forgetRequests();
    const RunResult result = runLauncher({QStringLiteral("--update"), QStringLiteral("--background")});
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(feed().requests(), QStringList());
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
}

// The application's first title run, while the install it started with the
// window still downloads: it waits for that install and runs the managed
// tool, rather than taking the unfinished attempt for a failed one.
void TestToolTrust::firstRunWaitsForTheBackgroundInstall()
{
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.01")) + "#" + QByteArray(1024 * 1024, 'k') + "\n"));
    feed().setBehaviour(QLatin1String(toolAsset), QStringLiteral("slow"));
    std::unique_ptr<QProcess> background(startLauncher({QStringLiteral("--update"), QStringLiteral("--background")}, environment()));
    QTRY_VERIFY(feed().requests().contains(QStringLiteral("GET yt-dlp_linux")));

    const RunResult run = runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")});
    QVERIFY2(run.succeeded(), run.err.constData());
    QCOMPARE(recordedRuns().value(0).value(0), QStringLiteral("release 2026.11.01"));
    QVERIFY(background->waitForFinished(60000));
    QCOMPARE(background->exitCode(), 0);
    QCOMPARE(feed().requests().count(QStringLiteral("GET yt-dlp_linux")), 1);
}

KESTREL_TEST_MAIN(TestToolTrust)
#include "tst_tooltrust.moc"
