#include "base/platform.h"
#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"

#include "modalcatcher.h"
#include "scenario.h"
#include "testsandbox.h"
#include "windowflowtest.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>

// What the window makes of the end of each run of the tool: the title and
// duration it shows, the boxes it raises for failures, and the pages it
// goes back to when a run is cancelled or cannot start.
class TestRunOutcomes : public WindowFlowTest
{
    Q_OBJECT

private slots:
    void cancelDuringDownloadReturnsToFormats();
    void backFromFormatsKillsTheTool();
    void processEmptiesThePreviousTable();
    void titleAndDuration_data();
    void titleAndDuration();
    void failureReport_data();
    void failureReport();
    void cancellingTheFormatListShowsCrashBox();
    void toolThatCannotStartIsReported();
};

void TestRunOutcomes::cancelDuringDownloadReturnsToFormats()
{
    useScenario(FakeTool::Kind::download(), hanging());
    reachFormats();
    pickRow(0);
    QTRY_COMPARE(FakeTool::readRecord(recordFile()).last().kind, FakeTool::Kind::download());
    const qint64 pid = FakeTool::readRecord(recordFile()).last().pid;

    ModalCatcher catcher;
    QSignalSpy failure(&driver(), &KestrelDownloader::somethingWrong);
    QTest::mouseClick(widget<QPushButton>("btnCancel"), Qt::LeftButton);
    QVERIFY(failure.wait());
    QCOMPARE(failure.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::downloadCancelled);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QCOMPARE(catcher.boxes().size(), 0);
    QVERIFY(pid > 0);
}

void TestRunOutcomes::backFromFormatsKillsTheTool()
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

void TestRunOutcomes::processEmptiesThePreviousTable()
{
    reachFormats();
    QTest::mouseClick(widget<QPushButton>("btn_Back_from_Formats"), Qt::LeftButton);
    useScenario(FakeTool::Kind::metadata(), hanging());
    QTest::keyClick(widget<QLineEdit>("editURL"), Qt::Key_Return);
    QCOMPARE(widget<QTableView>("tableView")->model(), nullptr);
}

void TestRunOutcomes::titleAndDuration_data()
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

void TestRunOutcomes::titleAndDuration()
{
    QFETCH(QString, output);
    QFETCH(QString, title);
    QFETCH(QString, duration);
    useScenario(FakeTool::Kind::metadata(), WindowDriver::printing(output));
    useScenario(FakeTool::Kind::formats(), hanging());
    QSignalSpy metadata(&driver(), &KestrelDownloader::haveMetadata);
    enterAddress(QStringLiteral("https://youtu.be/abc"));
    QVERIFY(metadata.wait());
    QCOMPARE(widget<QLabel>("labelTitle")->text(), title);
    QCOMPARE(widget<QLabel>("labelTime")->text(), duration);
}

void TestRunOutcomes::failureReport_data()
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

void TestRunOutcomes::failureReport()
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

void TestRunOutcomes::cancellingTheFormatListShowsCrashBox()
{
    useScenario(FakeTool::Kind::metadata(), WindowDriver::printing(QStringLiteral("Title\n1\n")));
    useScenario(FakeTool::Kind::formats(), hanging());
    enterAddress(QStringLiteral("https://youtu.be/abc"));
    QTRY_COMPARE(FakeTool::readRecord(recordFile()).size(), 2);
    ModalCatcher catcher;
    driver().terminateTool(false);
    QVERIFY(catcher.waitForBoxes(1));
    QVERIFY(catcher.boxes().first().text.endsWith(QStringLiteral("<i>Code: #0x4a</i>")));
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
}

void TestRunOutcomes::toolThatCannotStartIsReported()
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

KESTREL_TEST_MAIN(TestRunOutcomes)
#include "tst_runoutcomes.moc"
