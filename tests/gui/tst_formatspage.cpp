#include "downloader/kestreldownloader.h"
#include "formats/formattablemodel.h"
#include "ui/rowfit.h"

#include "menudriver.h"
#include "testsandbox.h"
#include "windowflowtest.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleFactory>
#include <QTableView>
#include <QTest>

namespace {

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

// The format table's page: how the table is dressed, and which rows it
// shows as fonts, styles and the display scale change.
class TestFormatsPage : public WindowFlowTest
{
    Q_OBJECT

private slots:
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

private:
    QTableView *reachManyFormats();
};

QTableView *TestFormatsPage::reachManyFormats()
{
    reachFormats(manyFormats());
    settle();
    auto *table = widget<QTableView>("tableView");
    return QTest::currentTestFailed() ? nullptr : table;
}

void TestFormatsPage::formatsPageDressing()
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

void TestFormatsPage::emptyListShowsEmptyTable()
{
    reachFormats(QStringLiteral("[info] Available formats for abc:\nnothing usable here\n"));
    auto *table = widget<QTableView>("tableView");
    QCOMPARE(table->model()->rowCount(), 0);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
}

void TestFormatsPage::handlersDoNotPileUp()
{
    reachFormats();
    QTest::mouseClick(widget<QPushButton>("btn_Back_from_Formats"), Qt::LeftButton);
    QSignalSpy formats(&driver(), &KestrelDownloader::haveFormats);
    QTest::keyClick(widget<QLineEdit>("editURL"), Qt::Key_Return);
    QVERIFY(formats.wait());
    auto *table = widget<QTableView>("tableView");
    QCOMPARE(ConnectionCounter::count(table, SIGNAL(clicked(QModelIndex))), 1);
    QCOMPARE(ConnectionCounter::count(table, SIGNAL(doubleClicked(QModelIndex))), 1);
    QCOMPARE(table->findChildren<FormatTableModel *>().size(), 2);
}

void TestFormatsPage::rowFitRule_data()
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

void TestFormatsPage::rowFitRule()
{
    QFETCH(int, viewport);
    QFETCH(int, row);
    QFETCH(int, firstHidden);
    QCOMPARE(firstHiddenRow(viewport, row), std::optional<int>(firstHidden));
    QCOMPARE(firstHiddenRow(viewport, 0), std::nullopt);
}

void TestFormatsPage::rowsThatDoNotFitAreHidden_data()
{
    QTest::addColumn<int>("applicationFontPixels");
    QTest::newRow("default font") << 0;
    // A system font of another size than the table's own (the style sheet
    // sets 14 px at 100 %), as Windows' 9 pt Segoe UI is: the rows change
    // height when the style sheet takes effect.
    QTest::newRow("small system font") << 9;
    QTest::newRow("large system font") << 22;
}

void TestFormatsPage::rowsThatDoNotFitAreHidden()
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
void TestFormatsPage::rowFitFollowsTheTableStyle()
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

void TestFormatsPage::rowFitFollowsTheApplicationStyle()
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
void TestFormatsPage::rowFitFollowsTheTableFont()
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
void TestFormatsPage::rowFitFollowsTheDisplayScale()
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

KESTREL_TEST_MAIN(TestFormatsPage)
#include "tst_formatspage.moc"
