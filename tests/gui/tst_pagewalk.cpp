#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"

#include "happenswithin.h"
#include "modalcatcher.h"
#include "openedurls.h"
#include "scenario.h"
#include "testsandbox.h"
#include "windowflowtest.h"

#include <QApplication>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using FakeTool::Behaviour;

// The user's walk through the window's pages: from the start page through
// the address and the format table to the downloaded file, and back.
class TestPageWalk : public WindowFlowTest
{
    Q_OBJECT

private slots:
    void startsOnTheStartPage();
    void videoButtonOpensTheAddressPage();
    void backFromAddressPageReturnsToStart();
    void refusedAddressChangesNothing();
    void acceptedAddressShowsBusyFormatsPage();
    void wholeWalkFromAddressToDownloadedFile();
    void pickingAnyColumnPicksTheRow_data();
    void pickingAnyColumnPicksTheRow();
    void doubleClickStartsOneDownload();
    void progressDisplay();
    void backFromDownloadKeepsTheTable();
    void openFolderAndSiteButtons();
};

void TestPageWalk::startsOnTheStartPage()
{
    QCOMPARE(currentPage(), QStringLiteral("page_Start"));
    QVERIFY(window()->isVisible());
}

void TestPageWalk::videoButtonOpensTheAddressPage()
{
    QTest::mouseClick(widget<QPushButton>("pushButton_Video"), Qt::LeftButton);
    QCOMPARE(currentPage(), QStringLiteral("page_URL"));
    QCOMPARE(window()->focusWidget(), widget<QLineEdit>("editURL"));
}

void TestPageWalk::backFromAddressPageReturnsToStart()
{
    QTest::mouseClick(widget<QPushButton>("pushButton_Video"), Qt::LeftButton);
    QTest::keyClicks(widget<QLineEdit>("editURL"), QStringLiteral("kept text"));
    QTest::mouseClick(widget<QPushButton>("btn_Back_from_Process"), Qt::LeftButton);
    QCOMPARE(currentPage(), QStringLiteral("page_Start"));
    QTest::mouseClick(widget<QPushButton>("pushButton_Video"), Qt::LeftButton);
    QCOMPARE(widget<QLineEdit>("editURL")->text(), QStringLiteral("kept text"));
}

void TestPageWalk::refusedAddressChangesNothing()
{
    ModalCatcher catcher;
    QSignalSpy metadataRequests(window(), &Navigation::requestMetadata);
    enterAddress(QStringLiteral("https://vimeo.com/12345"));
    QVERIFY(catcher.waitForBoxes(1));
    const ModalCatcher::Box box = catcher.boxes().first();
    QCOMPARE(box.title, QStringLiteral("WARNING"));
    QCOMPARE(box.text, QStringLiteral("WARNING: You must provide at least some valid YouTube URL to proceed"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QList<QMessageBox::StandardButton>{QMessageBox::Ok});
    QVERIFY(box.parent);
    QCOMPARE(currentPage(), QStringLiteral("page_URL"));
    QCOMPARE(widget<QLineEdit>("editURL")->text(), QStringLiteral("https://vimeo.com/12345"));
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("title"));
    QCOMPARE(widget<QLabel>("labelTime")->text(), QStringLiteral("00:00:00"));
    QCOMPARE(metadataRequests.size(), 0);

    // The Process button refuses the same way.
    QTest::mouseClick(widget<QPushButton>("pushButton_Process"), Qt::LeftButton);
    QVERIFY(catcher.waitForBoxes(2));
    QCOMPARE(currentPage(), QStringLiteral("page_URL"));
}

void TestPageWalk::acceptedAddressShowsBusyFormatsPage()
{
    useScenario(FakeTool::Kind::metadata(), hanging());
    QSignalSpy metadataRequests(window(), &Navigation::requestMetadata);
    enterAddress(QStringLiteral("https://youtu.be/abc"));
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("Title"));
    QCOMPARE(widget<QLabel>("labelTime")->text(), QStringLiteral("00:00:00"));
    auto *bar = widget<QProgressBar>("progressBar");
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->maximum(), 0);
    QCOMPARE(widget<QTableView>("tableView")->model(), nullptr);
    QCOMPARE(window()->focusWidget(), widget<QPushButton>("btn_Back_from_Formats"));
    // Enter asks once and does not also press a button of the dialog.
    QCOMPARE(metadataRequests.size(), 1);
    QVERIFY(!happensWithin(100, [&] {
        return metadataRequests.size() != 1 || currentPage() != QStringLiteral("page_Formats");
    }));
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QTRY_COMPARE(FakeTool::readRecord(recordFile()).size(), 1);
}

void TestPageWalk::wholeWalkFromAddressToDownloadedFile()
{
    Behaviour download;
    download.stdoutChunks = {QStringLiteral("[download] Destination: x.mp4\n[download]   3.0% of 10.00MiB"),
                             QStringLiteral("\r[download]  45.3% of 10.00MiB"), QStringLiteral("\r[download] 100% of 10.00MiB in 00:00:01\n")};
    download.pauseMs = 200;
    download.writeOutputFile = true;
    useScenario(FakeTool::Kind::download(), download);
    reachFormats();

    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("Kestrel Test Clip p"));
    QCOMPARE(widget<QLabel>("labelTime")->text(), QStringLiteral("| 3:05"));
    QVERIFY(!widget<QProgressBar>("progressBar")->isVisible());
    auto *table = widget<QTableView>("tableView");
    QVERIFY(table->model());
    QCOMPARE(table->model()->rowCount(), 4);
    QCOMPARE(table->model()->index(0, 1).data().toUInt(), 137u);

    QSignalSpy video(&driver(), &KestrelDownloader::haveVideo);
    QSignalSpy percent(&driver(), &KestrelDownloader::percent);
    pickRow(0);
    QCOMPARE(currentPage(), QStringLiteral("page_Download"));
    QVERIFY(widget<QLabel>("label_DL")->isVisible());
    QVERIFY(widget<QPushButton>("btnCancel")->isVisible());
    QVERIFY(widget<QLabel>("label_TitleDownload")->isVisible());
    QCOMPARE(widget<QLabel>("label_TitleDownload")->text(), QStringLiteral("Kestrel Test Clip p"));
    for (const char *hidden : {"btn_Back_Last", "label_DL_OK", "btnStartOver", "btnOpenFolder"})
        QVERIFY2(!widget<QWidget>(hidden)->isVisible(), hidden);
    auto *bar = widget<QProgressBar>("progressBarDL");
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->maximum(), 0);

    QVERIFY(percent.wait());
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 3);
    QVERIFY(video.wait());
    QCOMPARE(percent.size(), 3);

    for (const char *shown : {"label_DL_OK", "btnStartOver", "btn_Back_Last", "btnOpenFolder"})
        QVERIFY2(widget<QWidget>(shown)->isVisible(), shown);
    for (const char *hidden : {"btnCancel", "progressBarDL", "label_TitleDownload", "label_DL"})
        QVERIFY2(!widget<QWidget>(hidden)->isVisible(), hidden);
    QCOMPARE(currentPage(), QStringLiteral("page_Download"));
    QVERIFY(QFile::exists(outputFolder() + QStringLiteral("/abc.mp4")));

    const QList<FakeTool::Invocation> runs = FakeTool::readRecord(recordFile());
    QCOMPARE(runs.last().kind, FakeTool::Kind::download());
    QVERIFY(runs.last().arguments.contains(QStringLiteral("137+bestaudio[ext=m4a]/137+bestaudio/best[ext=mp4]/best[ext=mkv]")));

    QTest::mouseClick(widget<QPushButton>("btnStartOver"), Qt::LeftButton);
    QCOMPARE(currentPage(), QStringLiteral("page_Start"));
    QTest::mouseClick(widget<QPushButton>("pushButton_Video"), Qt::LeftButton);
    QCOMPARE(widget<QLineEdit>("editURL")->text(), QStringLiteral("https://www.youtube.com/watch?v=abc"));
}

void TestPageWalk::pickingAnyColumnPicksTheRow_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("type icon") << 0;
    QTest::newRow("resolution") << 2;
    QTest::newRow("size") << 3;
    QTest::newRow("download icon") << 4;
}

void TestPageWalk::pickingAnyColumnPicksTheRow()
{
    QFETCH(int, column);
    useScenario(FakeTool::Kind::download(), hanging());
    reachFormats();
    QSignalSpy requests(window(), &Navigation::requestVideo);
    pickRow(1, column);
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().first().toUInt(), 248u);
}

void TestPageWalk::doubleClickStartsOneDownload()
{
    useScenario(FakeTool::Kind::download(), hanging());
    reachFormats();
    QSignalSpy requests(window(), &Navigation::requestVideo);
    auto *table = widget<QTableView>("tableView");
    const QRect cell = table->visualRect(table->model()->index(2, 2));
    // A real double click: the first click picks, the second arrives while
    // the download page is shown.
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, cell.center());
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().first().toUInt(), 22u);
}

void TestPageWalk::progressDisplay()
{
    useScenario(FakeTool::Kind::download(), hanging());
    reachFormats();
    pickRow(0);
    KestrelDownloader &tool = driver();
    auto *bar = widget<QProgressBar>("progressBarDL");
    emit tool.percent(45);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 45);
    emit tool.percent(99);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 99);
    emit tool.percent(100);
    QCOMPARE(bar->maximum(), 0);
    QCOMPARE(bar->value(), 0);
    emit tool.percent(0);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 0);
    emit tool.percent(250);
    QCOMPARE(bar->maximum(), 0);
    // While the download runs, the only way off the page is Cancel.
    QVERIFY(!widget<QPushButton>("btn_Back_Last")->isVisible());
    QVERIFY(!widget<QPushButton>("btnStartOver")->isVisible());
}

void TestPageWalk::backFromDownloadKeepsTheTable()
{
    reachFormats();
    auto *table = widget<QTableView>("tableView");
    QAbstractItemModel *model = table->model();
    QSignalSpy video(&driver(), &KestrelDownloader::haveVideo);
    pickRow(0);
    QVERIFY(video.wait());
    QTest::mouseClick(widget<QPushButton>("btn_Back_Last"), Qt::LeftButton);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QCOMPARE(table->model(), model);
    QCOMPARE(model->rowCount(), 4);
}

void TestPageWalk::openFolderAndSiteButtons()
{
#ifdef Q_OS_WIN
    // Windows' shell is given the folder's path as it is, so its drive
    // letter reads as the address's scheme.
    const QUrl folder(outputFolder(), QUrl::TolerantMode);
#else
    const QUrl folder = QUrl::fromLocalFile(outputFolder());
#endif
    OpenedUrls opened;
    QDesktopServices::setUrlHandler(folder.scheme(), &opened, "open");
    QDesktopServices::setUrlHandler(QStringLiteral("https"), &opened, "open");
    reachFormats();
    QSignalSpy video(&driver(), &KestrelDownloader::haveVideo);
    pickRow(0);
    QVERIFY(video.wait());
    QTest::mouseClick(widget<QPushButton>("btnOpenFolder"), Qt::LeftButton);
    QTest::mouseClick(widget<QPushButton>("btnStartOver"), Qt::LeftButton);
    QTest::mouseClick(widget<QPushButton>("pushButton_Site"), Qt::LeftButton);
    QDesktopServices::unsetUrlHandler(folder.scheme());
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    QCOMPARE(opened.urls().size(), 2);
    QCOMPARE(opened.urls().at(0), folder);
    QCOMPARE(opened.urls().at(1).scheme(), QStringLiteral("https"));
}

KESTREL_TEST_MAIN(TestPageWalk)
#include "tst_pagewalk.moc"
