#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

#include "drivertest.h"
#include "logcapture.h"
#include "testsandbox.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

using FakeTool::Behaviour;

// The format listing and download runs: their arguments, folders and progress.
class TestListingAndDownload : public DriverTest
{
    Q_OBJECT

private slots:
    void formatRun();
    void downloadArguments();
    void downloadWritesIntoOutputFolder();
    void downloadWithFailingExitCodeIsSuccess();
    void progress_data();
    void progress();
};

void TestListingAndDownload::formatRun()
{
    useScenario(FakeTool::Kind::formats(),
                printing(QStringLiteral("ID EXT RESOLUTION | FILESIZE\n---\n22 mp4 1280x720 | 50.00MiB\n18 mp4 640x360 | 12.34MiB\n"), 1));
    KestrelDownloader driver(info());
    info().target = QStringLiteral("-abc");
    QSignalSpy formats(&driver, &KestrelDownloader::haveFormats);
    driver.requestFormats();
    QCOMPARE(info().rawOutput, QString());
    QVERIFY(formats.wait());
    QCOMPARE(formats.size(), 1);
    QCOMPARE(driver.viewOrder(), (QList<quint32>{22, 18}));
    QCOMPARE(driver.formats().value(18).sizeText, QStringLiteral("12.34MiB"));
    const FakeTool::Invocation run = invocations().first();
    QCOMPARE(run.arguments, (QStringList{QStringLiteral("--list-formats"), QStringLiteral("--no-warnings"), QStringLiteral("-abc")}));
    QCOMPARE(run.workingDirectory, QDir(dataFolder()).canonicalPath());
}

void TestListingAndDownload::downloadArguments()
{
    KestrelDownloader driver(info());
    info().target = QStringLiteral("abc");
    QSignalSpy video(&driver, &KestrelDownloader::haveVideo);
    LogCapture log;
    driver.requestVideo(137);
    QCOMPARE(info().formatId, 137u);
    QVERIFY(video.wait());

    const FakeTool::Invocation run = invocations().first();
    QCOMPARE(run.kind, FakeTool::Kind::download());
    QCOMPARE(run.arguments, (QStringList{
                                QStringLiteral("--no-warnings"),
                                QStringLiteral("--no-playlist"),
                                QStringLiteral("--force-overwrites"),
                                QStringLiteral("--retries"),
                                QStringLiteral("1"),
                                QStringLiteral("--concurrent-fragments"),
                                QStringLiteral("4"),
                                QStringLiteral("--output-na-placeholder"),
                                QStringLiteral("KestrelD"),
                                QStringLiteral("--trim-filenames"),
                                QStringLiteral("55"),
                                QStringLiteral("--progress-delta"),
                                QStringLiteral("1"),
                                QStringLiteral("--merge-output-format"),
                                QStringLiteral("mp4"),
                                QStringLiteral("--format"),
                                QStringLiteral("137+bestaudio[ext=m4a]/137+bestaudio/best[ext=mp4]/best[ext=mkv]"),
                                QStringLiteral("--ffmpeg-location"),
                                dataFolder(),
                                QStringLiteral("--path"),
                                outputFolder(),
                                QStringLiteral("--output"),
                                QStringLiteral("%(title)s_%(resolution)s_%(id)s.%(ext)s"),
                                QStringLiteral("--windows-filenames"),
                                QStringLiteral("abc"),
                            }));
    QCOMPARE(run.arguments.size(), 25);
    QCOMPARE(run.workingDirectory, QDir(dataFolder()).canonicalPath());
    QVERIFY(log.texts().first().endsWith(QStringLiteral("] void KestrelDownloader::requestVideo(uint) : ID: 137")));
    QCOMPARE(log.matching(QStringLiteral("Video request::finished")).size(), 1);
}

void TestListingAndDownload::downloadWritesIntoOutputFolder()
{
    Behaviour download;
    download.writeOutputFile = true;
    useScenario(FakeTool::Kind::download(), download);
    KestrelDownloader driver(info());
    info().target = QStringLiteral("writes");
    QSignalSpy video(&driver, &KestrelDownloader::haveVideo);
    driver.requestVideo(22);
    QVERIFY(video.wait());
    QVERIFY(QFile::exists(outputFolder() + QStringLiteral("/writes.mp4")));
}

void TestListingAndDownload::downloadWithFailingExitCodeIsSuccess()
{
    useScenario(FakeTool::Kind::download(), printing(QStringLiteral("ERROR: unable to download video data\n"), 1));
    KestrelDownloader driver(info());
    info().target = QStringLiteral("abc");
    QSignalSpy video(&driver, &KestrelDownloader::haveVideo);
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    driver.requestVideo(22);
    QVERIFY(video.wait());
    QCOMPARE(failure.size(), 0);
}

void TestListingAndDownload::progress_data()
{
    QTest::addColumn<QStringList>("chunks");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("45.3 gives 45") << QStringList{QStringLiteral("[download]  45.3% of 10.00MiB at 1.00MiB/s ETA 00:05")}
                                   << QList<int>{45};
    QTest::newRow("99.2 gives 100") << QStringList{QStringLiteral("[download]  99.2% of 10.00MiB at 1.00MiB/s ETA 00:00")}
                                    << QList<int>{100};
    QTest::newRow("99.0 gives 100") << QStringList{QStringLiteral("[download]  99.0% of 10.00MiB")} << QList<int>{100};
    QTest::newRow("98.9 gives 98") << QStringList{QStringLiteral("[download]  98.9% of 10.00MiB")} << QList<int>{98};
    QTest::newRow("100 gives 100") << QStringList{QStringLiteral("[download] 100% of 10.00MiB in 00:00:10\n")} << QList<int>{100};
    QTest::newRow("first line without percent") << QStringList{QStringLiteral("[download] Destination: x.mp4\n[download]   3.0% of 1MiB")}
                                                << QList<int>{3};
    QTest::newRow("first percent of a chunk wins")
        << QStringList{QStringLiteral("\r[download]  10.0% of 1MiB\r[download]  12.0% of 1MiB")} << QList<int>{10};
    QTest::newRow("first progress line of several wins")
        << QStringList{QStringLiteral("[download]  20.0% of 1MiB\n[download]  30.0% of 1MiB\n")} << QList<int>{20};
    QTest::newRow("no download line") << QStringList{QStringLiteral("[Merger] Merging formats into \"x.mp4\"\n")} << QList<int>{};
    QTest::newRow("case matters") << QStringList{QStringLiteral("[DOWNLOAD]  50.0% of 1MiB\n")} << QList<int>{};
    QTest::newRow("no number gives 0") << QStringList{QStringLiteral("[download] Unknown% of 1MiB\n")} << QList<int>{0};
    QTest::newRow("one report per chunk")
        << QStringList{QStringLiteral("[download]   1.0% of 1MiB"), QStringLiteral("\r[download]  50.5% of 1MiB"),
                       QStringLiteral("\r[download] 100.0% of 1MiB in 00:01\n")}
        << QList<int>{1, 50, 100};
}

void TestListingAndDownload::progress()
{
    QFETCH(QStringList, chunks);
    QFETCH(QList<int>, expected);
    Behaviour download;
    download.stdoutChunks = chunks;
    download.pauseMs = 150;
    useScenario(FakeTool::Kind::download(), download);
    KestrelDownloader driver(info());
    info().target = QStringLiteral("abc");
    QSignalSpy percent(&driver, &KestrelDownloader::percent);
    QSignalSpy video(&driver, &KestrelDownloader::haveVideo);
    driver.requestVideo(137);
    QVERIFY(video.wait());
    QList<int> reported;
    for (const QList<QVariant> &arguments : std::as_const(percent))
        reported << arguments.first().toInt();
    QCOMPARE(reported, expected);
}

KESTREL_TEST_MAIN(TestListingAndDownload)
#include "tst_listinganddownload.moc"
