// The launcher is copied into a folder of its own, as the application copies
// it into its data folder, and run with a fake yt-dlp named by KESTREL_YTDLP.
// Flags the installed yt-dlp does not know: the launcher asks, drops them
// with their values, and keeps the answers per installation.

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

#include "launcherinstallation.h"
#include "launcherruns.h"
#include "processprobe.h"

using namespace LauncherRuns;

class TestFlagProbe : public QObject
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
    void hungProbeIsAbandoned();
    void flagsAreDroppedWithTheirValues_data();
    void flagsAreDroppedWithTheirValues();
    void onlyCheckedFlagsAreAskedAbout();
    void cacheKeepsAnswersPerInstallation();
    void cacheRejectsDamagedText_data();
    void cacheRejectsDamagedText();
    void debianYtDlpAnswersTheProbe();
};

void TestFlagProbe::unknownFlagIsDroppedWithItsValue()
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

void TestFlagProbe::knownFlagIsKept()
{
    Installation installation;
    installation.environment().insert(QStringLiteral("FAKE_UNKNOWN"), QString());
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());

    QCOMPARE(run->exitCode(), 0);
    QCOMPARE(installation.lastInvocation(), downloadArguments());
    QCOMPARE(run->err(), QByteArray());
    // --progress-delta and the launcher's own --no-js-runtimes.
    QCOMPARE(installation.questions(), 2);
}

void TestFlagProbe::answerIsKeptForTheNextRun_data()
{
    QTest::addColumn<bool>("known");
    QTest::newRow("unknown flag") << false;
    QTest::newRow("known flag") << true;
}

void TestFlagProbe::answerIsKeptForTheNextRun()
{
    QFETCH(bool, known);
    Installation installation;
    if (known)
        installation.environment().insert(QStringLiteral("FAKE_UNKNOWN"), QString());
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

void TestFlagProbe::changedToolIsAskedAgain()
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

void TestFlagProbe::damagedCacheIsReplaced()
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

void TestFlagProbe::unwritableCacheChangesNothing()
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

void TestFlagProbe::inconclusiveAnswerKeepsTheFlag()
{
    Installation installation;
    installation.environment().insert(QStringLiteral("FAKE_PROBE_FAILS"), QStringLiteral("1"));

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

void TestFlagProbe::plainRunAsksOnceAboutTheLaunchersFlag()
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

void TestFlagProbe::launchersFlagsComeFirst()
{
    Installation installation;
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QCOMPARE(installation.invocations().last(), launcherPrefix + withVideoAfterOptions(withoutProgressDelta(downloadArguments())));
}

void TestFlagProbe::hungProbeIsAbandoned()
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
        QVERIFY(!ProcessProbe::isRunning(pid_t(pid.toInt())));
}

void TestFlagProbe::flagsAreDroppedWithTheirValues_data()
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

void TestFlagProbe::flagsAreDroppedWithTheirValues()
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

void TestFlagProbe::onlyCheckedFlagsAreAskedAbout()
{
    using Arguments = std::vector<std::string>;
    QVERIFY(Launcher::flagsToCheck({"--progress-delta", "1", "--progress-delta=2", "--no-playlist"})
            == Arguments{"--progress-delta"});
    QVERIFY(Launcher::flagsToCheck({"--output", "--progress-delta", "--no-playlist", "--retries", "3"})
            == Arguments{});
    QVERIFY(Launcher::flagsToCheck({"--", "--progress-delta", "1"}) == Arguments{});
}

void TestFlagProbe::cacheKeepsAnswersPerInstallation()
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

void TestFlagProbe::cacheRejectsDamagedText_data()
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

void TestFlagProbe::cacheRejectsDamagedText()
{
    QFETCH(std::string, text);
    QVERIFY(Launcher::FlagCache::parse(text).isEmpty());
}

void TestFlagProbe::debianYtDlpAnswersTheProbe()
{
    // Debian's yt-dlp, which CI installs: its option parser answers without
    // any address and so without the network.
    const std::string tool = "/usr/bin/yt-dlp";
    QVERIFY2(QFileInfo(QString::fromStdString(tool)).isExecutable(), "install the Debian package yt-dlp");
    QCOMPARE(Launcher::probeFlagSupport(tool, "--progress-delta", "1", 60000), Launcher::FlagSupport::Unsupported);
    QCOMPARE(Launcher::probeFlagSupport(tool, "--no-playlist", nullptr, 60000), Launcher::FlagSupport::Supported);
}

QTEST_GUILESS_MAIN(TestFlagProbe)
#include "tst_flagprobe.moc"
