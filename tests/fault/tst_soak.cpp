#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "formats/formattablemodel.h"

#include "modalcatcher.h"
#include "processprobe.h"
#include "testsandbox.h"
#include "windowdriver.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTableView>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestSoak : public QObject
{
    Q_OBJECT

private slots:
    void thousandDownloadsLeaveNothingBehind();

private:
    QTemporaryDir m_work;
    VideoInfo m_info;
};

void TestSoak::thousandDownloadsLeaveNothingBehind()
{
    WindowDriver::prepareTool(m_work.path());
    WindowDriver driver(m_work.path(), m_info);
    // Without a record of the runs: it would only grow the test's own file.
    const FakeTool::Behaviour download = WindowDriver::printing(QStringLiteral("[download]  50.0% of 1MiB\r[download] 100% of 1MiB\n"));
    QVERIFY(FakeTool::Scenario()
                .set(FakeTool::Kind::metadata(), WindowDriver::printing(QStringLiteral("Soak Title\n3:05\n")))
                .set(FakeTool::Kind::formats(), WindowDriver::printing(WindowDriver::sampleListing()))
                .set(FakeTool::Kind::download(), download)
                .writeTo(m_work.filePath(QStringLiteral("scenario.json"))));

    // The window logs several lines a cycle; the test framework's own
    // handling of them is not what this test measures.
    const QtMessageHandler previousHandler = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    ModalCatcher boxes;
    QSignalSpy video(&driver.driver(), &KestrelDownloader::haveVideo);
    int keptModels = 0;
    const auto cycle = [&] {
        // Typing or pasting adds an undo step per character to the address
        // field's history, which Qt keeps for as long as the field lives:
        // about 2 KB a cycle here, all of it what the user entered. The
        // address is set as a whole, which resets that history, so the test
        // measures everything else.
        if (!driver.reachFormats(QStringLiteral("https://www.youtube.com/watch?v=abc"), false))
            return false;
        const qsizetype before = video.size();
        driver.pickRow(0);
        if (!QTest::qWaitFor([&] { return video.size() > before; }, 10000))
            return false;
        QTest::mouseClick(driver.find<QPushButton>("btnStartOver"), Qt::LeftButton);
        // Every list's model stays a child of the table for the window's
        // life, on purpose; that is the one thing meant to grow. The test
        // lets go of the replaced ones to measure everything else.
        auto *table = driver.find<QTableView>("tableView");
        const QList<FormatTableModel *> models = table->findChildren<FormatTableModel *>();
        for (FormatTableModel *model : models) {
            if (model != table->model()) {
                ++keptModels;
                delete model;
            }
        }
        return driver.currentPage() == QStringLiteral("page_Start");
    };

    for (int i = 0; i < 10; ++i)
        QVERIFY(cycle());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // The heap rather than the resident size: the window's backing store,
    // reallocated at every page-size change, fragments the heap.
    const qint64 memoryAfterTen = ProcessProbe::heapBytesInUse();
    const qint64 residentAfterTen = ProcessProbe::residentBytes();
    const int descriptorsAfterTen = ProcessProbe::openHandles();
    QVERIFY(descriptorsAfterTen > 0);

    for (int i = 10; i < 1000; ++i)
        QVERIFY2(cycle(), qPrintable(QStringLiteral("cycle %1").arg(i)));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const qint64 memoryAtEnd = ProcessProbe::heapBytesInUse();
    const qint64 residentAtEnd = ProcessProbe::residentBytes();

    qInstallMessageHandler(previousHandler);
    qInfo("heap in use after 10 cycles %lld bytes, after 1000 cycles %+lld bytes; resident %lld bytes, %+lld bytes",
          memoryAfterTen, memoryAtEnd - memoryAfterTen, residentAfterTen, residentAtEnd - residentAfterTen);
    QCOMPARE(keptModels, 999);
    QCOMPARE(video.size(), 1000);
    QCOMPARE(boxes.boxes().size(), 0);
    QCOMPARE(KestrelDownloader::processObjectCount(), 0);
    QCOMPARE(ProcessProbe::openHandles(), descriptorsAfterTen);
    QVERIFY2(memoryAtEnd - memoryAfterTen <= 1024 * 1024, qPrintable(QString::number(memoryAtEnd - memoryAfterTen)));
}

KESTREL_TEST_MAIN(TestSoak)
#include "tst_soak.moc"
