// The launcher is copied into a folder of its own, as the application copies
// it into its data folder, and run with a fake yt-dlp named by KESTREL_YTDLP.
// One extraction per video: the information document the title run keeps,
// which the listing and the download load, and every way back to a plain run.

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

class TestInfoCache : public QObject
{
    Q_OBJECT

private slots:
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
};

void TestInfoCache::oneExtractionServesAllRunsOfAVideo()
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

void TestInfoCache::outputIsTheSameWithAndWithoutKeptInformation()
{
    const QByteArray printed = "[info] Available formats for kestrel:\nID  EXT  RESOLUTION\n---\n137 mp4  1920x1080\n";
    QByteArray withCache;
    QByteArray without;
    for (const bool cached : {true, false}) {
        Installation installation;
        writeAll(installation.path(QStringLiteral("out.bin")), printed);
        installation.environment().insert(QStringLiteral("FAKE_STDOUT"), installation.path(QStringLiteral("out.bin")));
        if (!cached)
            installation.environment().insert(QStringLiteral("KESTREL_INFO_CACHE"), QStringLiteral("off"));
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

void TestInfoCache::switchedOffCacheExtractsEveryTime()
{
    Installation installation;
    installation.environment().insert(QStringLiteral("KESTREL_INFO_CACHE"), QStringLiteral("off"));
    for (const QStringList &arguments : {titleRun(), listingRun(), videoRun()}) {
        QScopedPointer<RawRun> run(installation.start(arguments));
        QVERIFY(run->wait());
        QCOMPARE(installation.lastInvocation(), arguments);
    }
    QVERIFY(keptDocuments(installation.dataFolder()).isEmpty());
}

void TestInfoCache::refusedDocumentFallsBackToAPlainRunOnce()
{
    Installation installation;
    // As the application starts it: watched by a guardian, run after run.
    installation.environment().insert(QStringLiteral("KESTREL_APP_PID"), QString::number(QCoreApplication::applicationPid()));
    QScopedPointer<RawRun> title(installation.start(titleRun()));
    QVERIFY(title->wait());
    QCOMPARE(keptDocuments(installation.dataFolder()).size(), 1);

    installation.environment().insert(QStringLiteral("FAKE_LOAD_EXIT"), QStringLiteral("1"));
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

void TestInfoCache::titleRunThatRefusesTheFileFlagRunsPlain()
{
    Installation installation;
    writeAll(installation.path(QStringLiteral("out.bin")), "Kestrel Test Clip\n3:05\n");
    installation.environment().insert(QStringLiteral("FAKE_STDOUT"), installation.path(QStringLiteral("out.bin")));
    installation.environment().insert(QStringLiteral("FAKE_UNKNOWN"), QStringLiteral("--print-to-file"));
    QScopedPointer<RawRun> title(installation.start(titleRun()));
    QVERIFY(title->wait());
    QCOMPARE(title->exitCode(), 0);
    QCOMPARE(title->out(), QByteArray("Kestrel Test Clip\n3:05\n"));
    QCOMPARE(toolRuns(installation.invocations()).size(), 2);
    QCOMPARE(installation.lastInvocation(), titleRun());
    QVERIFY(keptDocuments(installation.dataFolder()).isEmpty());
}

void TestInfoCache::stopDuringTheSecondRunEndsItAsAnyStop()
{
    Installation installation;
    installation.environment().insert(QStringLiteral("KESTREL_APP_PID"), QString::number(QCoreApplication::applicationPid()));
    QScopedPointer<RawRun> title(installation.start(titleRun()));
    QVERIFY(title->wait());
    installation.environment().insert(QStringLiteral("FAKE_LOAD_EXIT"), QStringLiteral("1"));
    installation.environment().insert(QStringLiteral("FAKE_PIDFILE"), installation.pidFile());
    installation.environment().insert(QStringLiteral("FAKE_SLEEP"), QStringLiteral("30"));
    QScopedPointer<RawRun> video(installation.start(videoRun()));
    const pid_t tool = waitForTool(installation);
    QVERIFY(tool > 0);
    QCOMPARE(installation.lastInvocation(), videoRun());

    ::kill(video->pid(), SIGTERM);
    QVERIFY(video->wait(5000));
    QCOMPARE(video->exitCode(), 1);
    QVERIFY(waitUntilEnded({tool}));
}

void TestInfoCache::failedTitleRunKeepsNothing()
{
    Installation installation;
    installation.environment().insert(QStringLiteral("FAKE_EXIT"), QStringLiteral("1"));
    QScopedPointer<RawRun> title(installation.start(titleRun()));
    QVERIFY(title->wait());
    QCOMPARE(title->exitCode(), 1);
    QCOMPARE(toolRuns(installation.invocations()).size(), 1);
    QVERIFY(keptDocuments(installation.dataFolder()).isEmpty());
    QVERIFY(QDir(installation.dataFolder()).entryList({QStringLiteral(".kestreldl2-info-*")}, QDir::Files | QDir::Hidden).isEmpty());
}

void TestInfoCache::onlyTheApplicationsRunsAreRecognised_data()
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

void TestInfoCache::onlyTheApplicationsRunsAreRecognised()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, run);
    std::string target;
    QCOMPARE(int(Launcher::InfoCache::recognise(toStd(arguments), &target)), run);
    QCOMPARE(QString::fromStdString(target), run == int(Launcher::InfoCache::Run::Other) ? QString() : arguments.last());
}

void TestInfoCache::keptDocumentExpires()
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

void TestInfoCache::incompleteDocumentIsNotKept()
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

void TestInfoCache::keptDocumentLeavesTheRetryToTheLauncher()
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

void TestInfoCache::cacheIsCleanedAndBounded()
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

QTEST_GUILESS_MAIN(TestInfoCache)
#include "tst_infocache.moc"
