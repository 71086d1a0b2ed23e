// The launcher is copied into a folder of its own, as the application copies
// it into its data folder, and run with a fake yt-dlp named by KESTREL_YTDLP.
// What the tool says and how it ends reaches the application unchanged.

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

class TestLauncherPassThrough : public QObject
{
    Q_OBJECT

private slots:
    void exitCodePassesThrough_data();
    void exitCodePassesThrough();
    void deathBySignalPassesThrough_data();
    void deathBySignalPassesThrough();
    void outputPassesThroughUnchanged();
    void windowsCommandLineKeepsEveryArgument_data();
    void windowsCommandLineKeepsEveryArgument();
};

void TestLauncherPassThrough::exitCodePassesThrough_data()
{
    QTest::addColumn<int>("code");
    for (const int code : {0, 1, 2, 100})
        QTest::addRow("%d", code) << code;
}

void TestLauncherPassThrough::exitCodePassesThrough()
{
    QFETCH(int, code);
    Installation installation;
    installation.environment().insert(QStringLiteral("FAKE_EXIT"), QString::number(code));
    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QVERIFY(run->exited());
    QCOMPARE(run->exitCode(), code);
}

void TestLauncherPassThrough::deathBySignalPassesThrough_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGSEGV") << QStringLiteral("SEGV") << int(SIGSEGV);
    QTest::newRow("SIGKILL") << QStringLiteral("KILL") << int(SIGKILL);
    QTest::newRow("SIGABRT") << QStringLiteral("ABRT") << int(SIGABRT);
    QTest::newRow("SIGTERM") << QStringLiteral("TERM") << int(SIGTERM);
}

void TestLauncherPassThrough::deathBySignalPassesThrough()
{
    QFETCH(QString, name);
    QFETCH(int, signal);
    Installation installation;
    installation.environment().insert(QStringLiteral("FAKE_SIGNAL"), name);

    QScopedPointer<RawRun> run(installation.start(downloadArguments()));
    QVERIFY(run->wait());
    QVERIFY2(WIFSIGNALED(run->status()), qPrintable(QStringLiteral("wait status %1").arg(run->status())));
    QCOMPARE(run->signal(), signal);
    QVERIFY(!WCOREDUMP(run->status()));
    QCOMPARE(QDir(installation.path(QString())).entryList({QStringLiteral("core*")}, QDir::Files), QStringList());

    // What the application sees.
    QProcess process;
    process.setProcessEnvironment(installation.environment());
    process.start(installation.launcher(), downloadArguments());
    QVERIFY(process.waitForFinished(30000));
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
}

void TestLauncherPassThrough::outputPassesThroughUnchanged()
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
    installation.environment().insert(QStringLiteral("FAKE_STDOUT"), installation.path(QStringLiteral("out.bin")));
    installation.environment().insert(QStringLiteral("FAKE_STDERR"), installation.path(QStringLiteral("err.bin")));
    installation.environment().insert(QStringLiteral("FAKE_EXIT"), QStringLiteral("1"));

    QScopedPointer<RawRun> run(installation.start(withoutProgressDelta(downloadArguments())));
    QVERIFY(run->wait());
    QCOMPARE(run->exitCode(), 1);
    QVERIFY(run->out() == out);
    QCOMPARE(run->err(), err);
}

void TestLauncherPassThrough::windowsCommandLineKeepsEveryArgument_data()
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

void TestLauncherPassThrough::windowsCommandLineKeepsEveryArgument()
{
    using Arguments = std::vector<std::string>;
    QFETCH(Arguments, arguments);
    QFETCH(QString, expected);

    QCOMPARE(QString::fromStdString(Launcher::windowsCommandLine(arguments)), expected);
}

QTEST_GUILESS_MAIN(TestLauncherPassThrough)
#include "tst_launcherpassthrough.moc"
