// The launcher is copied into a folder of its own, as the application copies
// it into its data folder, and run with a fake yt-dlp named by KESTREL_YTDLP.
// The launcher's surroundings: its log, fresh copies after an upgrade, ffmpeg,
// the user's options file, and finding the tool.

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

class TestLauncherSetup : public QObject
{
    Q_OBJECT

private slots:
    void toolErrorsAreLogged();
    void upgradedApplicationBringsFreshCopies();
    void folderOfAnotherProgramBringsNoCopies();
    void ffmpegThatDoesNotStartIsNeverUsed();
    void userOptionsReachTheTool();
    void brokenOptionsFileChangesNothing_data();
    void brokenOptionsFileChangesNothing();
    void missingToolIsReported_data();
    void missingToolIsReported();
    void toolIsFoundOnPath();
    void emptyPathEntryIsNotTheCurrentFolder();
    void buildTreeHasToolAndFfmpegBesideExecutable();
};

void TestLauncherSetup::toolErrorsAreLogged()
{
    Installation installation;
    const QString errors = installation.path(QStringLiteral("errors.txt"));
    writeAll(errors, "ERROR: [youtube] kestrel: Sign in to confirm you're not a bot");
    installation.environment().insert(QStringLiteral("FAKE_STDERR"), errors);
    installation.environment().insert(QStringLiteral("FAKE_EXIT"), QStringLiteral("1"));
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

void TestLauncherSetup::upgradedApplicationBringsFreshCopies()
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
    // The application starts the launcher from that folder and names itself
    // in KESTREL_APP_PID: here a shell copied there does.
    const QString shell = application + QStringLiteral("/kestrel-downloader");
    QVERIFY(QFile::copy(QStringLiteral("/bin/bash"), shell));
    installation.environment().insert(QStringLiteral("KESTREL_APP_DIR"), application);

    const QStringList arguments{QStringLiteral("--ffmpeg-location"), installation.dataFolder(),
                                QStringLiteral("https://x.invalid/watch?v=k")};
    for (int round = 1; round <= 2; ++round) {
        QScopedPointer<RawRun> run(new RawRun(shell,
                                              QStringList{QStringLiteral("-c"),
                                                          QStringLiteral("KESTREL_APP_PID=$$ \"$0\" \"$@\"; exit $?"),
                                                          installation.launcher()}
                                                  + arguments,
                                              installation.environment(), installation.path(QString())));
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

// KESTREL_APP_DIR alone, from an environment someone else made, names any
// folder: only the folder of the application that started the launcher
// gives it new copies.
void TestLauncherSetup::folderOfAnotherProgramBringsNoCopies()
{
    Installation installation;
    const QByteArray launcher = readAll(installation.launcher());
    const QString elsewhere = installation.path(QStringLiteral("elsewhere"));
    writeScript(elsewhere + QStringLiteral("/kestreldl2"), "#!/bin/sh\necho planted > planted.txt\n");
    installation.environment().insert(QStringLiteral("KESTREL_APP_DIR"), elsewhere);
    // This test program is running, but not from that folder.
    installation.environment().insert(QStringLiteral("KESTREL_APP_PID"), QString::number(QCoreApplication::applicationPid()));
    QScopedPointer<RawRun> run(installation.start(titleRun()));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 0);
    QCOMPARE(readAll(installation.launcher()), launcher);
    const QByteArray log = readAll(installation.dataFolder() + QStringLiteral("/kestreldl2.log"));
    QVERIFY2(log.contains("KESTREL_APP_DIR names " + QFile::encodeName(elsewhere)
                          + ", which is not the folder of the application KESTREL_APP_PID names"),
             log.constData());
}

void TestLauncherSetup::ffmpegThatDoesNotStartIsNeverUsed()
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

void TestLauncherSetup::userOptionsReachTheTool()
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

void TestLauncherSetup::brokenOptionsFileChangesNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("folder");
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("comments only") << QByteArray("# nothing yet\n\n   \n") << false;
    QTest::newRow("binary") << QByteArray("\x7f" "ELF\x02\x01\x01\0\0\0", 10) << false;
    QTest::newRow("huge") << QByteArray(200 * 1024, '-') << false;
    QTest::newRow("a folder") << QByteArray() << true;
}

void TestLauncherSetup::brokenOptionsFileChangesNothing()
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

void TestLauncherSetup::missingToolIsReported_data()
{
    QTest::addColumn<bool>("exists");
    QTest::newRow("no file") << false;
    QTest::newRow("not executable") << true;
}

void TestLauncherSetup::missingToolIsReported()
{
    QFETCH(bool, exists);
    Installation installation;
    const QString chosen = installation.path(QStringLiteral("elsewhere/yt-dlp"));
    if (exists)
        writeAll(chosen, readAll(installation.fake()));
    installation.environment().insert(QStringLiteral("KESTREL_YTDLP"), chosen);

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 127);
    QVERIFY2(run->err().startsWith(missingNote), run->err().constData());
    QVERIFY(run->err().contains(QFile::encodeName(chosen)));
    QCOMPARE(run->out(), QByteArray());
    QVERIFY(installation.invocations().isEmpty());
}

void TestLauncherSetup::toolIsFoundOnPath()
{
    Installation installation;
    installation.environment().remove(QStringLiteral("KESTREL_YTDLP"));
    installation.environment().insert(QStringLiteral("FAKE_EXIT"), QStringLiteral("5"));

    const QString empty = installation.path(QStringLiteral("empty"));
    QVERIFY(QDir().mkpath(empty));
    installation.environment().insert(QStringLiteral("PATH"), empty);
    QScopedPointer<RawRun> missing(installation.start(downloadArguments()));
    QVERIFY(missing->wait());
    QCOMPARE(missing->exitCode(), 127);
    QVERIFY2(missing->err().contains(missingNote), missing->err().constData());

    // The fake comes before the system's own yt-dlp, which the fake's
    // commands need /usr/bin and /bin for.
    installation.environment().insert(QStringLiteral("PATH"), empty + QStringLiteral(":")
                                        + installation.runtimeFolder() + QStringLiteral(":")
                                        + QFileInfo(installation.fake()).path()
                                        + QStringLiteral(":/usr/bin:/bin"));
    QScopedPointer<RawRun> found(installation.start(downloadArguments()));
    QVERIFY(found->wait());
    QCOMPARE(found->exitCode(), 5);
    QCOMPARE(installation.lastInvocation(), withoutProgressDelta(downloadArguments()));
}

// An empty entry of PATH means the current folder to the shell; a yt-dlp
// left in whatever folder the launcher is started from is not run.
void TestLauncherSetup::emptyPathEntryIsNotTheCurrentFolder()
{
    Installation installation;
    installation.environment().remove(QStringLiteral("KESTREL_YTDLP"));
    // The runs start in the installation's folder.
    QVERIFY(QFile::copy(installation.fake(), installation.path(QStringLiteral("yt-dlp"))));
    const QString empty = installation.path(QStringLiteral("empty"));
    QVERIFY(QDir().mkpath(empty));
    for (const QString &path : {QStringLiteral(":") + empty, empty + QStringLiteral("::"), QStringLiteral(".:") + empty}) {
        installation.environment().insert(QStringLiteral("PATH"), path);
        QScopedPointer<RawRun> run(installation.start(downloadArguments()));
        QVERIFY(run->wait());
        QCOMPARE(run->exitCode(), 127);
        QVERIFY2(run->err().contains(missingNote), run->err().constData());
        QVERIFY(installation.invocations().isEmpty());
    }
}

void TestLauncherSetup::buildTreeHasToolAndFfmpegBesideExecutable()
{
    const QString folder = QStringLiteral(KESTREL_APP_DIR);
    const QFileInfo tool(folder + QStringLiteral("/kestreldl2"));
    QVERIFY(tool.isFile());
    QVERIFY(tool.isExecutable());
    const QFileInfo ffmpeg(folder + QStringLiteral("/ffmpeg"));
    QVERIFY(ffmpeg.isSymLink());
    QCOMPARE(ffmpeg.symLinkTarget(), QStringLiteral(KESTREL_SYSTEM_FFMPEG));
}

QTEST_GUILESS_MAIN(TestLauncherSetup)
#include "tst_launchersetup.moc"
