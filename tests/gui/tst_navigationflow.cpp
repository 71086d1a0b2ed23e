#include "app/filesetup.h"
#include "app/platform.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "formats/formattablemodel.h"
#include "ui/navigation.h"
#include "ui/rowfit.h"

#include "logcapture.h"
#include "menudriver.h"
#include "modalcatcher.h"
#include "openedurls.h"
#include "scenario.h"
#include "testsandbox.h"
#include "windowdriver.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleFactory>
#include <QTableView>
#include <QTemporaryDir>
#include <QScopeGuard>
#include <QTest>

#include <algorithm>

using FakeTool::Behaviour;

namespace {

Behaviour printing(const QString &text)
{
    Behaviour behaviour;
    behaviour.stdoutChunks = {text};
    return behaviour;
}

Behaviour hanging()
{
    Behaviour behaviour;
    behaviour.hang = true;
    return behaviour;
}

const QString listing = QStringLiteral(
    "[info] Available formats for abc:\n"
    "ID  EXT  RESOLUTION FPS |   FILESIZE   TBR PROTO | VCODEC        VBR ACODEC      ABR\n"
    "--------------------------------------------------------------------------------------\n"
    "140 m4a  audio only     |    2.91MiB  129k https | audio only        mp4a.40.2  129k\n"
    "18  mp4  640x360     30 |    9.35MiB  414k https | avc1.42001E       mp4a.40.2   96k\n"
    "22  mp4  1280x720    30 | ~ 28.11MiB 1245k https | avc1.64001F       mp4a.40.2  192k\n"
    "137 mp4  1920x1080   30 |  107.20MiB 4752k https | avc1.640028  4752k video only\n"
    "248 webm 1920x1080   30 |   80.50MiB 3568k https | vp9          3568k video only\n");

// Eleven formats, the most a list offers: more rows than the table has room
// for up to a scale of 125 %.
QString manyFormats()
{
    QString many = QStringLiteral("ID EXT RESOLUTION | SIZE\n---\n");
    for (int id = 1; id <= 11; ++id)
        many += QStringLiteral("%1 mp4 %2x%2 | %3.00MiB\n").arg(id).arg(id * 100).arg(id * 10);
    return many;
}

// The rows of the table that the fit rule keeps for its viewport as it is now.
int rowsThatFit(const QTableView *table)
{
    return firstHiddenRow(table->viewport()->height(), table->verticalHeader()->sectionSize(0)).value_or(-1);
}

// The rows shown are exactly those that fit the table's viewport as it is now.
void verifyRowFit(const QTableView *table)
{
    const int viewport = table->viewport()->height();
    const int rowHeight = table->verticalHeader()->sectionSize(0);
    const QString measures = QStringLiteral("viewport %1, rows %2").arg(viewport).arg(rowHeight);
    QVERIFY2(rowHeight > 0, qPrintable(measures));
    const int firstHidden = rowsThatFit(table);
    const int rowCount = table->model()->rowCount();
    QVERIFY2(firstHidden < rowCount, qPrintable(measures));
    for (int row = 0; row < rowCount; ++row)
        QVERIFY2(table->isRowHidden(row) == (row >= firstHidden),
                 qPrintable(QStringLiteral("row %1 of %2 shown: %3").arg(row).arg(firstHidden).arg(measures)));
}

// Lets the window finish what it has queued: the page's new layout once its
// busy bar is gone, the table's new header and rows after a font or style
// change.
void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

// Lets tests reach the number of connections of a view's signal.
class ConnectionCounter : public QTableView
{
public:
    static int count(const QTableView *view, const char *signal)
    {
        // QObject::receivers() is protected. A pointer to it named through
        // this class may be applied to any QObject, unlike a cast of the view
        // to a class it is not, which is undefined behaviour.
        using Receivers = int (QObject::*)(const char *) const;
        const Receivers receivers = &ConnectionCounter::receivers;
        return (view->*receivers)(signal);
    }
};

} // namespace

class TestNavigationFlow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

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
    void cancelDuringDownloadReturnsToFormats();
    void backFromFormatsKillsTheTool();
    void backFromDownloadKeepsTheTable();
    void processEmptiesThePreviousTable();
    void titleAndDuration_data();
    void titleAndDuration();
    void failureReport_data();
    void failureReport();
    void cancellingTheFormatListShowsCrashBox();
    void toolThatCannotStartIsReported();
    void formatsPageDressing();
    void emptyListShowsEmptyTable();
    void handlersDoNotPileUp();
    void rowFitRule_data();
    void rowFitRule();
    void rowsThatDoNotFitAreHidden_data();
    void rowsThatDoNotFitAreHidden();
    void rowFitFollowsTheTableStyle();
    void rowFitFollowsTheApplicationStyle();
    void rowFitFollowsTheTableFont();
    void rowFitFollowsTheDisplayScale();
    void openFolderAndSiteButtons();
    void menuWithoutPlugins();
    void entriesOfMissingPluginsLogNothingElse_data();
    void entriesOfMissingPluginsLogNothingElse();
    void damagedScaleSettingIsIgnored_data();
    void damagedScaleSettingIsIgnored();
    void pageSizes_data();
    void pageSizes();

private:
    Navigation *window() const { return &m_driver->window(); }
    template <typename Widget>
    Widget *widget(const char *name) const { return m_driver->find<Widget>(name); }
    QString currentPage() const { return m_driver->currentPage(); }
    void useScenario(const QString &kind, const Behaviour &behaviour) { m_driver->play(kind, behaviour); }
    void enterAddress(const QString &text) { m_driver->enterAddress(text); }
    void pickRow(int row, int column = 2) { m_driver->pickRow(row, column); }
    QString recordFile() const { return m_driver->recordFile(); }
    void reachFormats(const QString &output = listing);
    QTableView *reachManyFormats();

    QTemporaryDir m_work;
    std::unique_ptr<WindowDriver> m_driver;
};

void TestNavigationFlow::initTestCase()
{
    WindowDriver::prepareTool(m_work.path());
}

void TestNavigationFlow::init()
{
    VideoInfo::shared().settings().remove(QStringLiteral("Scale/Val"));
    m_driver = std::make_unique<WindowDriver>(m_work.path());
}

void TestNavigationFlow::cleanup()
{
    m_driver.reset();
    for (QWidget *topLevel : QApplication::topLevelWidgets())
        QVERIFY2(!topLevel->isVisible(), qPrintable(topLevel->objectName()));
}

void TestNavigationFlow::reachFormats(const QString &output)
{
    useScenario(FakeTool::Kind::metadata(), printing(QStringLiteral("Kestrel Test Clip (1080p)\n3:05\n")));
    useScenario(FakeTool::Kind::formats(), printing(output));
    QVERIFY(m_driver->reachFormats());
}

QTableView *TestNavigationFlow::reachManyFormats()
{
    reachFormats(manyFormats());
    settle();
    auto *table = widget<QTableView>("tableView");
    return QTest::currentTestFailed() ? nullptr : table;
}

void TestNavigationFlow::startsOnTheStartPage()
{
    QCOMPARE(currentPage(), QStringLiteral("page_Start"));
    QVERIFY(window()->isVisible());
}

void TestNavigationFlow::videoButtonOpensTheAddressPage()
{
    QTest::mouseClick(widget<QPushButton>("pushButton_Video"), Qt::LeftButton);
    QCOMPARE(currentPage(), QStringLiteral("page_URL"));
    QCOMPARE(window()->focusWidget(), widget<QLineEdit>("editURL"));
}

void TestNavigationFlow::backFromAddressPageReturnsToStart()
{
    QTest::mouseClick(widget<QPushButton>("pushButton_Video"), Qt::LeftButton);
    QTest::keyClicks(widget<QLineEdit>("editURL"), QStringLiteral("kept text"));
    QTest::mouseClick(widget<QPushButton>("btn_Back_from_Process"), Qt::LeftButton);
    QCOMPARE(currentPage(), QStringLiteral("page_Start"));
    QTest::mouseClick(widget<QPushButton>("pushButton_Video"), Qt::LeftButton);
    QCOMPARE(widget<QLineEdit>("editURL")->text(), QStringLiteral("kept text"));
}

void TestNavigationFlow::refusedAddressChangesNothing()
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

void TestNavigationFlow::acceptedAddressShowsBusyFormatsPage()
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
    QTest::qWait(100);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QTRY_COMPARE(FakeTool::readRecord(recordFile()).size(), 1);
}

void TestNavigationFlow::wholeWalkFromAddressToDownloadedFile()
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

    QSignalSpy video(&KestrelDownloader::shared(), &KestrelDownloader::haveVideo);
    QSignalSpy percent(&KestrelDownloader::shared(), &KestrelDownloader::percent);
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

void TestNavigationFlow::pickingAnyColumnPicksTheRow_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("type icon") << 0;
    QTest::newRow("resolution") << 2;
    QTest::newRow("size") << 3;
    QTest::newRow("download icon") << 4;
}

void TestNavigationFlow::pickingAnyColumnPicksTheRow()
{
    QFETCH(int, column);
    useScenario(FakeTool::Kind::download(), hanging());
    reachFormats();
    QSignalSpy requests(window(), &Navigation::requestVideo);
    pickRow(1, column);
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().first().toUInt(), 248u);
}

void TestNavigationFlow::doubleClickStartsOneDownload()
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

void TestNavigationFlow::progressDisplay()
{
    useScenario(FakeTool::Kind::download(), hanging());
    reachFormats();
    pickRow(0);
    KestrelDownloader &driver = KestrelDownloader::shared();
    auto *bar = widget<QProgressBar>("progressBarDL");
    emit driver.percent(45);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 45);
    emit driver.percent(99);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 99);
    emit driver.percent(100);
    QCOMPARE(bar->maximum(), 0);
    QCOMPARE(bar->value(), 0);
    emit driver.percent(0);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 0);
    emit driver.percent(250);
    QCOMPARE(bar->maximum(), 0);
    // While the download runs, the only way off the page is Cancel.
    QVERIFY(!widget<QPushButton>("btn_Back_Last")->isVisible());
    QVERIFY(!widget<QPushButton>("btnStartOver")->isVisible());
}

void TestNavigationFlow::cancelDuringDownloadReturnsToFormats()
{
    useScenario(FakeTool::Kind::download(), hanging());
    reachFormats();
    pickRow(0);
    QTRY_COMPARE(FakeTool::readRecord(recordFile()).last().kind, FakeTool::Kind::download());
    const qint64 pid = FakeTool::readRecord(recordFile()).last().pid;

    ModalCatcher catcher;
    QSignalSpy failure(&KestrelDownloader::shared(), &KestrelDownloader::somethingWrong);
    QTest::mouseClick(widget<QPushButton>("btnCancel"), Qt::LeftButton);
    QVERIFY(failure.wait());
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::downloadCancelled);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QCOMPARE(catcher.boxes().size(), 0);
    QVERIFY(pid > 0);
}

void TestNavigationFlow::backFromFormatsKillsTheTool()
{
    useScenario(FakeTool::Kind::metadata(), hanging());
    enterAddress(QStringLiteral("https://youtu.be/abc"));
    QTRY_COMPARE(FakeTool::readRecord(recordFile()).size(), 1);

    // Ended without the cancel mark, the metadata run ends as a forced kill
    // does on Windows: exit code 1, a normal exit, with nothing printed.
    ModalCatcher catcher;
    QTest::mouseClick(widget<QPushButton>("btn_Back_from_Formats"), Qt::LeftButton);
    QCOMPARE(currentPage(), QStringLiteral("page_URL"));
    QVERIFY(catcher.waitForBoxes(1));
    QCOMPARE(catcher.boxes().first().text, QStringLiteral("<h3>ERROR:</h3>Cannot request metadata<hr><i>Code: #0x45</i>"));
    QCOMPARE(currentPage(), QStringLiteral("page_URL"));
}

void TestNavigationFlow::backFromDownloadKeepsTheTable()
{
    reachFormats();
    auto *table = widget<QTableView>("tableView");
    QAbstractItemModel *model = table->model();
    QSignalSpy video(&KestrelDownloader::shared(), &KestrelDownloader::haveVideo);
    pickRow(0);
    QVERIFY(video.wait());
    QTest::mouseClick(widget<QPushButton>("btn_Back_Last"), Qt::LeftButton);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QCOMPARE(table->model(), model);
    QCOMPARE(model->rowCount(), 4);
}

void TestNavigationFlow::processEmptiesThePreviousTable()
{
    reachFormats();
    QTest::mouseClick(widget<QPushButton>("btn_Back_from_Formats"), Qt::LeftButton);
    useScenario(FakeTool::Kind::metadata(), hanging());
    QTest::keyClick(widget<QLineEdit>("editURL"), Qt::Key_Return);
    QCOMPARE(widget<QTableView>("tableView")->model(), nullptr);
}

void TestNavigationFlow::titleAndDuration_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("duration");
    QTest::newRow("accents, digits, double blank") << QStringLiteral("Héllo  wörld 2024!\n1:02:03\n") << QStringLiteral("Hllo wrld !")
                                                   << QStringLiteral("| 1:02:03");
    QTest::newRow("non-Latin only") << QStringLiteral("日本語のタイトル\n5:07\n") << QString() << QStringLiteral("| 5:07");
    QTest::newRow("marks kept") << QStringLiteral("Why? Yes, no: ok. Go!\n0:42\n") << QStringLiteral("Why? Yes, no: ok. Go!")
                                << QStringLiteral("| 42 sec.");
    QTest::newRow("zero") << QStringLiteral("Title\n0\n") << QStringLiteral("Title") << QStringLiteral("| 0 sec.");
    QTest::newRow("hours with minutes under ten") << QStringLiteral("Title\n10:00:09\n") << QStringLiteral("Title")
                                                  << QStringLiteral("| 10:00:09");
    QTest::newRow("windows-hostile") << QStringLiteral("a/b\\\\c:d*e?f\"g<h>i|j\n1:00\n") << QStringLiteral("abc:de?fghij")
                                     << QStringLiteral("| 1:00");
}

void TestNavigationFlow::titleAndDuration()
{
    QFETCH(QString, output);
    QFETCH(QString, title);
    QFETCH(QString, duration);
    useScenario(FakeTool::Kind::metadata(), printing(output));
    useScenario(FakeTool::Kind::formats(), hanging());
    QSignalSpy metadata(&KestrelDownloader::shared(), &KestrelDownloader::haveMetadata);
    enterAddress(QStringLiteral("https://youtu.be/abc"));
    QVERIFY(metadata.wait());
    QCOMPARE(widget<QLabel>("labelTitle")->text(), title);
    QCOMPARE(widget<QLabel>("labelTime")->text(), duration);
}

void TestNavigationFlow::failureReport_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("page");
    QTest::newRow("69") << 69 << QStringLiteral("Cannot request metadata") << QString();
    QTest::newRow("70") << 70 << QStringLiteral("Cannot request metadata") << QString();
    QTest::newRow("71 silent") << 71 << QString() << QStringLiteral("page_URL");
    QTest::newRow("72") << 72 << QStringLiteral("crash exit on metadata request") << QString();
    QTest::newRow("73 silent") << 73 << QString() << QStringLiteral("page_URL");
    QTest::newRow("74") << 74 << QStringLiteral("crash exit on formats request") << QString();
    QTest::newRow("85 silent") << 85 << QString() << QStringLiteral("page_Formats");
    QTest::newRow("86") << 86 << QStringLiteral("crash exit at downloading process") << QString();
    QTest::newRow("101") << 101 << QStringLiteral("format count error") << QString();
    QTest::newRow("102") << 102 << QStringLiteral("cannot start the downloader tool") << QString();
    QTest::newRow("0") << 0 << QStringLiteral("indefinite") << QString();
    QTest::newRow("200") << 200 << QStringLiteral("indefinite") << QString();
    QTest::newRow("87, inside the reserved range") << 87 << QStringLiteral("indefinite") << QString();
}

void TestNavigationFlow::failureReport()
{
    QFETCH(int, code);
    QFETCH(QString, message);
    QFETCH(QString, page);
    useScenario(FakeTool::Kind::metadata(), hanging());
    enterAddress(QStringLiteral("https://youtu.be/abc"));
    auto *bar = widget<QProgressBar>("progressBar");
    QVERIFY(bar->isVisible());
    // The failure arrives while the user is on the download page, so a page
    // change is visible.
    widget<QStackedWidget>("stackedWidget")->setCurrentWidget(widget<QWidget>("page_Download"));

    ModalCatcher catcher;
    window()->whenSomethingWrong(KestrelDownloader::errorType(code));
    QVERIFY(!bar->isVisibleTo(widget<QWidget>("page_Formats")));
    if (message.isEmpty()) {
        QCOMPARE(catcher.boxes().size(), 0);
        QCOMPARE(currentPage(), page);
        return;
    }
    QCOMPARE(catcher.boxes().size(), 1);
    const ModalCatcher::Box box = catcher.boxes().first();
    QCOMPARE(box.title, QStringLiteral("ERROR"));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.textFormat, Qt::RichText);
    QCOMPARE(box.buttons, QList<QMessageBox::StandardButton>{QMessageBox::Ok});
    QCOMPARE(box.text, QStringLiteral("<h3>ERROR:</h3>%1<hr><i>Code: #0x%2</i>").arg(message, QString::number(code, 16)));
    QCOMPARE(currentPage(), QStringLiteral("page_Download"));
}

void TestNavigationFlow::cancellingTheFormatListShowsCrashBox()
{
    useScenario(FakeTool::Kind::metadata(), printing(QStringLiteral("Title\n1\n")));
    useScenario(FakeTool::Kind::formats(), hanging());
    enterAddress(QStringLiteral("https://youtu.be/abc"));
    QTRY_COMPARE(FakeTool::readRecord(recordFile()).size(), 2);
    ModalCatcher catcher;
    KestrelDownloader::shared().terminateTool(false);
    QVERIFY(catcher.waitForBoxes(1));
    QVERIFY(catcher.boxes().first().text.endsWith(QStringLiteral("<i>Code: #0x4a</i>")));
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
}

void TestNavigationFlow::toolThatCannotStartIsReported()
{
    const QString tool = dataFolder() + QLatin1Char('/') + Platform::toolFileName();
    QVERIFY(QFile::rename(tool, tool + QStringLiteral(".away")));
    ModalCatcher catcher;
    enterAddress(QStringLiteral("https://youtu.be/abc"));
    const bool reported = catcher.waitForBoxes(1);
    QVERIFY(QFile::rename(tool + QStringLiteral(".away"), tool));
    QVERIFY(reported);
    QCOMPARE(catcher.boxes().first().text,
             QStringLiteral("<h3>ERROR:</h3>cannot start the downloader tool<hr><i>Code: #0x66</i>"));
    QVERIFY(!widget<QProgressBar>("progressBar")->isVisible());
}

void TestNavigationFlow::formatsPageDressing()
{
    reachFormats();
    auto *table = widget<QTableView>("tableView");
    QVERIFY(qobject_cast<FormatTableModel *>(table->model()));
    QCOMPARE(table->model()->parent(), table);
    QHeaderView *header = table->horizontalHeader();
    QCOMPARE(header->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(header->sectionResizeMode(1), QHeaderView::Interactive);
    QCOMPARE(header->sectionResizeMode(2), QHeaderView::Stretch);
    QCOMPARE(header->sectionResizeMode(3), QHeaderView::ResizeToContents);
    QCOMPARE(header->sectionResizeMode(4), QHeaderView::ResizeToContents);
    QCOMPARE(table->verticalHeader()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QVERIFY(table->isColumnHidden(1));
    QVERIFY(table->isSortingEnabled());
    QCOMPARE(header->sortIndicatorSection(), 2);
    QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(table->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(table->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    const QString expectedStyle = QStringLiteral("\n"
                                                 "        QTableView { font-size: 14px; }\n"
                                                 "        QTableView::item { border: none; }\n"
                                                 "        QTableView::item:selected {\n"
                                                 "            background-color: #D3D3D3;\n"
                                                 "            color: black;\n"
                                                 "        }");
    QCOMPARE(table->styleSheet(), expectedStyle);
    QCOMPARE(expectedStyle.size(), 194 - 2 + 2);
    // The model's view order stays: the sort mark on "Resolution" reorders nothing.
    QCOMPARE(table->model()->index(0, 1).data().toUInt(), 137u);
    QCOMPARE(table->model()->index(3, 1).data().toUInt(), 18u);
}

void TestNavigationFlow::emptyListShowsEmptyTable()
{
    reachFormats(QStringLiteral("[info] Available formats for abc:\nnothing usable here\n"));
    auto *table = widget<QTableView>("tableView");
    QCOMPARE(table->model()->rowCount(), 0);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
}

void TestNavigationFlow::handlersDoNotPileUp()
{
    reachFormats();
    QTest::mouseClick(widget<QPushButton>("btn_Back_from_Formats"), Qt::LeftButton);
    QSignalSpy formats(&KestrelDownloader::shared(), &KestrelDownloader::haveFormats);
    QTest::keyClick(widget<QLineEdit>("editURL"), Qt::Key_Return);
    QVERIFY(formats.wait());
    auto *table = widget<QTableView>("tableView");
    QCOMPARE(ConnectionCounter::count(table, SIGNAL(clicked(QModelIndex))), 1);
    QCOMPARE(ConnectionCounter::count(table, SIGNAL(doubleClicked(QModelIndex))), 1);
    QCOMPARE(table->findChildren<FormatTableModel *>().size(), 2);
}

void TestNavigationFlow::rowFitRule_data()
{
    QTest::addColumn<int>("viewport");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("firstHidden");
    QTest::newRow("230 over 30: 7.67 rounds up") << 230 << 30 << 8;
    QTest::newRow("215 over 30: 7.17 rounds down") << 215 << 30 << 7;
    QTest::newRow("exactly 0.3 rounds down") << 99 << 30 << 3;
    QTest::newRow("whole rows") << 240 << 30 << 8;
    QTest::newRow("no room") << 0 << 30 << 0;
}

void TestNavigationFlow::rowFitRule()
{
    QFETCH(int, viewport);
    QFETCH(int, row);
    QFETCH(int, firstHidden);
    QCOMPARE(firstHiddenRow(viewport, row), std::optional<int>(firstHidden));
    QCOMPARE(firstHiddenRow(viewport, 0), std::nullopt);
}

void TestNavigationFlow::rowsThatDoNotFitAreHidden_data()
{
    QTest::addColumn<int>("applicationFontPixels");
    QTest::newRow("default font") << 0;
    // A system font of another size than the table's own (the style sheet
    // sets 14 px at 100 %), as Windows' 9 pt Segoe UI is: the rows change
    // height when the style sheet takes effect.
    QTest::newRow("small system font") << 9;
    QTest::newRow("large system font") << 22;
}

void TestNavigationFlow::rowsThatDoNotFitAreHidden()
{
    QFETCH(int, applicationFontPixels);
    const QFont original = QApplication::font();
    const auto restoreFont = qScopeGuard([&original] { QApplication::setFont(original); });
    if (applicationFontPixels > 0) {
        QFont font = original;
        font.setPixelSize(applicationFontPixels);
        QApplication::setFont(font);
    }
    QTableView *table = reachManyFormats();
    QVERIFY(table);
    verifyRowFit(table);
}

// The Windows style draws the header and the frame at other sizes than
// Fusion does: a style that takes effect after the list is shown moves the
// viewport.
void TestNavigationFlow::rowFitFollowsTheTableStyle()
{
    QTableView *table = reachManyFormats();
    QVERIFY(table);
    const int viewportBefore = table->viewport()->height();
    QStyle *windows = QStyleFactory::create(QStringLiteral("Windows"));
    QVERIFY(windows);
    windows->setParent(table);
    table->setStyle(windows);
    settle();
    QVERIFY(table->viewport()->height() != viewportBefore);
    verifyRowFit(table);
}

void TestNavigationFlow::rowFitFollowsTheApplicationStyle()
{
    QTableView *table = reachManyFormats();
    QVERIFY(table);
    const int viewportBefore = table->viewport()->height();
    const QString original = QApplication::style()->name();
    const auto restoreStyle = qScopeGuard([&original] { QApplication::setStyle(original); });
    QApplication::setStyle(QStringLiteral("Windows"));
    settle();
    QVERIFY(table->viewport()->height() != viewportBefore);
    verifyRowFit(table);
}

// Another font size changes the height of the rows: taller rows push the last
// ones out, and once they are back to their height those rows show again.
void TestNavigationFlow::rowFitFollowsTheTableFont()
{
#ifdef Q_OS_WIN
    QSKIP("The offscreen platform on Windows finds no font (Qt ships none): a font size leaves the rows' height as it was");
#endif
    QTableView *table = reachManyFormats();
    QVERIFY(table);
    const QString ownStyleSheet = table->styleSheet();
    const int shownBefore = rowsThatFit(table);
    table->setStyleSheet(ownStyleSheet + QStringLiteral("QTableView { font-size: 24px; }"));
    settle();
    QVERIFY2(rowsThatFit(table) < shownBefore, qPrintable(QString::number(shownBefore)));
    verifyRowFit(table);
    if (QTest::currentTestFailed())
        return;

    table->setStyleSheet(ownStyleSheet);
    settle();
    QCOMPARE(rowsThatFit(table), shownBefore);
    verifyRowFit(table);
}

// A larger scale makes the window, and so the viewport, taller: rows hidden
// before now fit.
void TestNavigationFlow::rowFitFollowsTheDisplayScale()
{
    QTableView *table = reachManyFormats();
    QVERIFY(table);
    const int shownBefore = rowsThatFit(table);
    auto *stack = widget<QStackedWidget>("stackedWidget");
    {
        MenuDriver menu({QStringLiteral("Change Scale Size"), QStringLiteral("125%")});
        QTest::mousePress(stack, Qt::RightButton, {}, stack->rect().center());
    }
    settle();
    QCOMPARE(window()->scale(), 125u);
    QVERIFY2(rowsThatFit(table) > shownBefore, qPrintable(QString::number(shownBefore)));
    verifyRowFit(table);
}

void TestNavigationFlow::openFolderAndSiteButtons()
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
    QSignalSpy video(&KestrelDownloader::shared(), &KestrelDownloader::haveVideo);
    pickRow(0);
    QVERIFY(video.wait());
    QTest::mouseClick(widget<QPushButton>("btnOpenFolder"), Qt::LeftButton);
    QTest::mouseClick(widget<QPushButton>("btnStartOver"), Qt::LeftButton);
    QTest::mouseClick(widget<QPushButton>("pushButton_Site"), Qt::LeftButton);
    QDesktopServices::unsetUrlHandler(folder.scheme());
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    QCOMPARE(opened.urls.size(), 2);
    QCOMPARE(opened.urls.at(0), folder);
    QCOMPARE(opened.urls.at(1).scheme(), QStringLiteral("https"));
}

void TestNavigationFlow::menuWithoutPlugins()
{
    QCoreApplication::setApplicationVersion(QStringLiteral("2.0.023"));
    auto *video = widget<QPushButton>("pushButton_Video");
    {
        MenuDriver menu;
        QTest::mousePress(video, Qt::RightButton, {}, video->rect().center());
        QCOMPARE(menu.checkedStates().value(QStringLiteral("Logging enabled"), true), false);
    }

    ModalCatcher boxes;
    for (const QString &entry : {QStringLiteral("Show UUID"), QStringLiteral("Logging enabled"), QStringLiteral("Manually Update Software")}) {
        MenuDriver menu({entry});
        QTest::mousePress(video, Qt::RightButton, {}, video->rect().center());
    }
    QTest::qWait(100);
    QCOMPARE(boxes.boxes().size(), 0);
    QCOMPARE(currentPage(), QStringLiteral("page_Start"));

    MenuDriver menu({QStringLiteral("About")});
    QTest::mousePress(video, Qt::RightButton, {}, video->rect().center());
    QVERIFY(boxes.waitForBoxes(1));
    const ModalCatcher::Box box = boxes.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Kestrel Downloader"));
    QCOMPARE(box.text, QStringLiteral("Kestrel Downloader version: 2.0.023"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QList<QMessageBox::StandardButton>{QMessageBox::Ok});
    QVERIFY(!box.parent);
}

void TestNavigationFlow::entriesOfMissingPluginsLogNothingElse_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("plugin");
    QTest::newRow("update") << QStringLiteral("Manually Update Software") << QStringLiteral("Updater");
    QTest::newRow("identifier") << QStringLiteral("Show UUID") << QStringLiteral("SysInfo");
}

// Each use writes the menu's own line; the plug-in's load error, if this is
// its first use in the run, is the only other line.
void TestNavigationFlow::entriesOfMissingPluginsLogNothingElse()
{
    QFETCH(QString, entry);
    QFETCH(QString, plugin);
    auto *site = widget<QPushButton>("pushButton_Site");
    ModalCatcher boxes;
    LogCapture log;
    for (int use = 0; use < 2; ++use) {
        MenuDriver menu({entry});
        QTest::mousePress(site, Qt::RightButton, {}, site->rect().center());
    }
    // Longer than the wait between an application update and the tool's.
    QTest::qWait(500);

    const QRegularExpression menuLine(QStringLiteral("^--> \\[\\d+\\] void Navigation::whenMenuTriggered\\(QAction\\*\\) : %1$")
                                          .arg(QRegularExpression::escape(entry)));
    const QString loadError = QStringLiteral("QDebug PluginManagerHelper::Warning() [MGR] WARNING: \"%1/%2" KESTREL_MODULE_SUFFIX "\" load error:")
                                  .arg(QCoreApplication::applicationDirPath(), plugin);
    QStringList others = log.texts();
    QCOMPARE(others.filter(menuLine).size(), 2);
    // Qt's own notices as the menu pops up: the offscreen platform's ("This
    // plugin does not support raise()" and the like), and under Wine a font
    // of the menu's that has only a pixel size.
    const QStringList qtNotices{QStringLiteral("This plugin does not support "), QStringLiteral("QFont::setPointSizeF: ")};
    others.removeIf([&](const QString &line) {
        return menuLine.match(line).hasMatch()
            || std::any_of(qtNotices.begin(), qtNotices.end(), [&](const QString &notice) { return line.startsWith(notice); });
    });
    QVERIFY2(others.isEmpty() || (others.size() == 1 && others.first().startsWith(loadError)), qPrintable(others.join(QLatin1Char('\n'))));
    QCOMPARE(boxes.boxes().size(), 0);
    QCOMPARE(currentPage(), QStringLiteral("page_Start"));
    QCOMPARE(FakeTool::readRecord(recordFile()).size(), 0);
}

void TestNavigationFlow::damagedScaleSettingIsIgnored_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("text") << QVariant(QStringLiteral("abc"));
    QTest::newRow("zero") << QVariant(0);
    QTest::newRow("negative") << QVariant(-130);
    QTest::newRow("huge") << QVariant(100000);
    QTest::newRow("binary") << QVariant(QStringLiteral("\x01\x02\xff"));
}

void TestNavigationFlow::damagedScaleSettingIsIgnored()
{
    QFETCH(QVariant, stored);
    VideoInfo::shared().settings().setValue(QStringLiteral("Scale/Val"), stored);
    LogCapture log;
    m_driver = std::make_unique<WindowDriver>(m_work.path());
    QCOMPARE(window()->scale(), 100u);
    QCOMPARE(window()->size(), QSize(384, 128));
    QCOMPARE(log.matching(QStringLiteral("WARNING: ignoring display scale")).size(), 1);
}

void TestNavigationFlow::pageSizes_data()
{
    QTest::addColumn<unsigned int>("scale");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QSize>("windowSize");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<QList<QSize>>("sizes");
    const QStringList start{QStringLiteral("pushButton_Video"), QStringLiteral("pushButton_Site")};
    const QStringList address{QStringLiteral("btn_Back_from_Process"), QStringLiteral("pushButton_Process")};
    const QStringList formats{QStringLiteral("btn_Back_from_Formats")};
    const QStringList download{QStringLiteral("btn_Back_Last")};
    QTest::newRow("100 start") << 100u << QStringLiteral("page_Start") << QSize(384, 128) << start
                               << QList<QSize>{{280, 71}, {84, 72}};
    QTest::newRow("100 address") << 100u << QStringLiteral("page_URL") << QSize(384, 128) << address
                                 << QList<QSize>{{62, 26}, {153, 43}};
    QTest::newRow("100 formats") << 100u << QStringLiteral("page_Formats") << QSize(384, 256) << formats << QList<QSize>{{20, 20}};
    QTest::newRow("100 download") << 100u << QStringLiteral("page_Download") << QSize(384, 144) << download << QList<QSize>{{20, 20}};
    QTest::newRow("100 busy") << 100u << QStringLiteral("pageEmpty") << QSize(384, 128) << QStringList() << QList<QSize>();
    QTest::newRow("125 start") << 125u << QStringLiteral("page_Start") << QSize(480, 160) << start
                               << QList<QSize>{{350, 89}, {105, 90}};
    QTest::newRow("125 address") << 125u << QStringLiteral("page_URL") << QSize(480, 160) << address
                                 << QList<QSize>{{77, 33}, {192, 53}};
    QTest::newRow("125 formats") << 125u << QStringLiteral("page_Formats") << QSize(480, 320) << formats << QList<QSize>{{25, 25}};
    QTest::newRow("125 download") << 125u << QStringLiteral("page_Download") << QSize(480, 180) << download << QList<QSize>{{25, 25}};
    QTest::newRow("140 start") << 140u << QStringLiteral("page_Start") << QSize(537, 179) << start
                               << QList<QSize>{{392, 99}, {118, 100}};
    QTest::newRow("140 address") << 140u << QStringLiteral("page_URL") << QSize(537, 179) << address
                                 << QList<QSize>{{87, 37}, {215, 60}};
    QTest::newRow("140 formats") << 140u << QStringLiteral("page_Formats") << QSize(537, 359) << formats << QList<QSize>{{28, 28}};
    QTest::newRow("140 download") << 140u << QStringLiteral("page_Download") << QSize(537, 201) << download << QList<QSize>{{28, 28}};
    QTest::newRow("140 busy") << 140u << QStringLiteral("pageEmpty") << QSize(537, 179) << QStringList() << QList<QSize>();
}

void TestNavigationFlow::pageSizes()
{
    QFETCH(unsigned int, scale);
    QFETCH(QString, page);
    QFETCH(QSize, windowSize);
    QFETCH(QStringList, buttons);
    QFETCH(QList<QSize>, sizes);

    // The scale is read when the window is made.
    VideoInfo::shared().settings().setValue(QStringLiteral("Scale/Val"), scale);
    m_driver = std::make_unique<WindowDriver>(m_work.path());
    QCOMPARE(window()->scale(), scale);

    widget<QStackedWidget>("stackedWidget")->setCurrentWidget(widget<QWidget>(qPrintable(page)));
    QCOMPARE(window()->size(), windowSize);
    QCOMPARE(window()->minimumSize(), windowSize);
    QCOMPARE(window()->maximumSize(), windowSize);
    for (qsizetype i = 0; i < buttons.size(); ++i) {
        auto *button = widget<QPushButton>(qPrintable(buttons.at(i)));
        QCOMPARE(button->minimumSize(), sizes.at(i));
        QCOMPARE(button->maximumSize(), sizes.at(i));
        QCOMPARE(button->iconSize(), sizes.at(i));
        // The image fills its box at its own proportions: it is at least as
        // large as what the button shows, so it is only ever scaled down.
        const QSize drawn = button->icon().actualSize(sizes.at(i));
        QVERIFY2(drawn.width() == sizes.at(i).width() || drawn.height() == sizes.at(i).height(),
                 qPrintable(buttons.at(i)));
    }
}

KESTREL_TEST_MAIN(TestNavigationFlow)
#include "tst_navigationflow.moc"
