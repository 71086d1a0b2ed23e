#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "formats/formattablemodel.h"

#include "offlineservicetest.h"
#include "progressrecorder.h"
#include "testsandbox.h"

#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <algorithm>

// Runs of the real tool that go wrong: a cancel, a missing format, a service
// that stops, a video that does not exist.
class TestOfflineFailures : public OfflineServiceTest
{
    Q_OBJECT

private slots:
    void cancelEndsEveryToolProcess();
    void missingFormatStillEndsCompleted();
    void serviceStoppedMidDownloadStillEndsCompleted();
    void unknownVideoReportsMetadataFailure();
};

void TestOfflineFailures::cancelEndsEveryToolProcess()
{
    // Any address gets the default sample: what a user of the demo sees.
    QVERIFY(reachFormats(QStringLiteral("https://www.youtube.com/watch?v=aBcDeFgHiJk")));
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("Kestrel Demo Clip p"));

    auto *bar = widget<QProgressBar>("progressBarDL");
    ProgressRecorder progress(driver(), bar);
    QSignalSpy failure(&driver(), &KestrelDownloader::somethingWrong);
    QSignalSpy video(&driver(), &KestrelDownloader::haveVideo);
    pickRow(0);
    // Under way: bytes are arriving.
    QVERIFY(QTest::qWaitFor([&] { return !progress.signalled().isEmpty() && progress.signalled().last() >= 1; }, listingTimeoutMs));
    QVERIFY2(progress.signalled().last() < 100, "the download ended before it could be cancelled");

    // The scan sees the running tool, so an empty scan later means something.
    const QList<ProcessProbe::UserProcess> running = toolProcesses();
    QStringList described;
    for (const ProcessProbe::UserProcess &process : running)
        described << process.describe();
    QVERIFY2(std::any_of(running.cbegin(), running.cend(),
                         [](const ProcessProbe::UserProcess &process) { return process.arguments.contains(realTool()); }),
             qPrintable(described.join(QLatin1Char('\n'))));
    QVERIFY2(std::any_of(running.cbegin(), running.cend(),
                         [](const ProcessProbe::UserProcess &process) {
                             return process.arguments.value(0) == dataFolder() + QStringLiteral("/kestreldl2");
                         }),
             qPrintable(described.join(QLatin1Char('\n'))));

    QTest::mouseClick(widget<QPushButton>("btnCancel"), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(failure.size(), 1, 10000);
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::downloadCancelled);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));

    // The stop ends the whole tree before it returns; the run's end is then
    // handled once its process object is gone.
    QTRY_VERIFY_WITH_TIMEOUT(toolProcesses().isEmpty(), 2000);
    QTRY_COMPARE(KestrelDownloader::processObjectCount(), 0);
    QCOMPARE(boxes().boxes().size(), 0);
    QCOMPARE(video.size(), 0);
    // Nothing was merged; what the tool had written is only a partial file.
    for (const QString &name : outputFiles())
        QVERIFY2(name.endsWith(QStringLiteral(".part")), qPrintable(name));
}

void TestOfflineFailures::missingFormatStillEndsCompleted()
{
    QVERIFY(reachFormats(QStringLiteral("https://www.youtube.com/watch?v=") + missingId()));
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("Kestrel Missing Media"));
    QCOMPARE(rowOfFormat(136), 0);

    QSignalSpy video(&driver(), &KestrelDownloader::haveVideo);
    QSignalSpy failure(&driver(), &KestrelDownloader::somethingWrong);
    pickRow(0);
    // yt-dlp gives up with exit code 1; an ordinary end of the run is all
    // the application looks at, so the page says the download completed.
    QVERIFY(video.wait(downloadTimeoutMs));
    QCOMPARE(failure.size(), 0);
    QVERIFY(widget<QLabel>("label_DL_OK")->isVisible());
    QVERIFY(!widget<QPushButton>("btnCancel")->isVisible());
    QCOMPARE(boxes().boxes().size(), 0);

    // The tool did ask for the file, and nothing was written.
    QFile log(serviceLog());
    QVERIFY(log.open(QIODevice::ReadOnly));
    QVERIFY(log.readAll().contains("GET /missing/video-1280x720.mp4 HTTP/1.1\" 404"));
    QCOMPARE(outputFiles(), QStringList());
}

void TestOfflineFailures::serviceStoppedMidDownloadStillEndsCompleted()
{
    QVERIFY(reachFormats(QStringLiteral("https://www.youtube.com/watch?v=") + demoId()));
    auto *bar = widget<QProgressBar>("progressBarDL");
    ProgressRecorder progress(driver(), bar);
    QSignalSpy video(&driver(), &KestrelDownloader::haveVideo);
    QSignalSpy failure(&driver(), &KestrelDownloader::somethingWrong);
    pickRow(0);
    QVERIFY(QTest::qWaitFor([&] { return !progress.signalled().isEmpty() && progress.signalled().last() >= 1; }, listingTimeoutMs));
    QVERIFY2(progress.signalled().last() < 100, "the download ended before the service could be stopped");
    QVERIFY(video.isEmpty());

    const int port = servicePort();
    stopService();
    // yt-dlp retries once, finds the port closed and gives up with exit
    // code 1: an ordinary end, so again the page says completed.
    QVERIFY(video.wait(downloadTimeoutMs));
    QCOMPARE(failure.size(), 0);
    QVERIFY(widget<QLabel>("label_DL_OK")->isVisible());
    QCOMPARE(boxes().boxes().size(), 0);
    const QStringList files = outputFiles();
    QVERIFY2(std::none_of(files.cbegin(), files.cend(), [](const QString &name) { return name.endsWith(QStringLiteral(".mp4")); }),
             qPrintable(files.join(QLatin1Char('\n'))));
    QVERIFY2(std::any_of(files.cbegin(), files.cend(), [](const QString &name) { return name.endsWith(QStringLiteral(".part")); }),
             qPrintable(files.join(QLatin1Char('\n'))));

    // Back on the same port, for the info files name it.
    QVERIFY(startService(port));
}

void TestOfflineFailures::unknownVideoReportsMetadataFailure()
{
    QSignalSpy metadata(&driver(), &KestrelDownloader::haveMetadata);
    QSignalSpy formats(&driver(), &KestrelDownloader::haveFormats);
    enterAddress(QStringLiteral("https://www.youtube.com/watch?v=") + unknownId());
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));

    // yt-dlp prints nothing on standard output and ends normally with exit
    // code 1: too few lines for a title and a duration.
    QVERIFY(boxes().waitForBoxes(1, listingTimeoutMs));
    const ModalCatcher::Box box = boxes().boxes().first();
    QCOMPARE(box.title, QStringLiteral("ERROR"));
    QCOMPARE(box.text, QStringLiteral("<h3>ERROR:</h3>Cannot request metadata<hr><i>Code: #0x45</i>"));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QVERIFY(!widget<QProgressBar>("progressBar")->isVisible());
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("Title"));

    // No format listing follows a failed metadata run: once the run's process
    // object is gone, nothing else runs.
    QTRY_COMPARE(KestrelDownloader::processObjectCount(), 0);
    QCOMPARE(metadata.size(), 0);
    QCOMPARE(formats.size(), 0);
    QCOMPARE(widget<QTableView>("tableView")->model(), nullptr);
    QCOMPARE(boxes().boxes().size(), 1);
}

KESTREL_TEST_MAIN(TestOfflineFailures)
#include "tst_offlinefailures.moc"
