#include "formats/formattablemodel.h"

#include "logcapture.h"
#include "testsandbox.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QPixmap>
#include <QSignalSpy>
#include <QTest>

class TestFormatTableModel : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void withoutSourceIsEmpty();
    void withoutSourceAnyIndexGivesNothing();
    void passesTheModelTester();
    void rowCountIgnoresTheParent();
    void headers_data();
    void headers();
    void verticalHeaderNumbersRows();
    void rowsFollowTheOrderList();
    void displayRole();
    void sizeColumnAlignmentAndMebibytes();
    void formatWithoutSize();
    void decorations();
    void otherRolesAreInvalid();
    void unknownIdentifierGivesNothing();
    void emptyFormatMapGivesNothing();
    void resetAroundSourceChange();

private:
    QHash<quint32, FormatInfo> m_formats;
    QList<quint32> m_order;
};

void TestFormatTableModel::init()
{
    m_formats = {
        {137, {137, QStringLiteral("1.5GiB"), QStringLiteral("1920x1080")}},
        {22, {22, QStringLiteral("512KiB"), QStringLiteral("1280x720")}},
        {18, {18, QString(), QStringLiteral("640x360")}},
    };
    m_order = {137, 22, 18};
}

void TestFormatTableModel::withoutSourceIsEmpty()
{
    FormatTableModel model;
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 5);
    for (int role : {int(Qt::DisplayRole), int(Qt::DecorationRole), int(Qt::TextAlignmentRole), int(Qt::UserRole)}) {
        for (int column = 0; column < 5; ++column)
            QVERIFY(!model.data(model.index(0, column), role).isValid());
    }
}

// index() refuses rows the model does not have; a model made index for a row
// asks data() itself.
class IndexMaker : public FormatTableModel
{
public:
    QModelIndex make(int row, int column) const { return createIndex(row, column); }
};

void TestFormatTableModel::withoutSourceAnyIndexGivesNothing()
{
    IndexMaker model;
    for (int role : {int(Qt::DisplayRole), int(Qt::DecorationRole), int(Qt::TextAlignmentRole), int(Qt::UserRole)}) {
        for (int column = 0; column < 5; ++column) {
            const QModelIndex index = model.make(0, column);
            QVERIFY(index.isValid());
            QVERIFY(!model.data(index, role).isValid());
        }
    }

    // Only one of the two set is no source either.
    model.setSource(&m_formats, nullptr);
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(!model.data(model.make(0, 1)).isValid());
    model.setSource(nullptr, &m_order);
    QVERIFY(!model.data(model.make(0, 1)).isValid());
}

void TestFormatTableModel::passesTheModelTester()
{
    // rowCount() does not look at its parent, so a row's index reports the
    // same rows as the root. The tester names exactly that as the children of
    // a row; anything else it reports is a real defect.
    LogCapture log;
    {
        FormatTableModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
        model.setSource(&m_formats, &m_order);
        QCOMPARE(model.rowCount(), 3);
        m_order.removeLast();
        model.setSource(&m_formats, &m_order);
        QCOMPARE(model.rowCount(), 2);
        model.setSource(nullptr, nullptr);
        QCOMPARE(model.rowCount(), 0);
    }
    const QStringList complaints = log.texts();
    QVERIFY(!complaints.isEmpty());
    for (const QString &complaint : complaints) {
        QVERIFY2(complaint.contains(QStringLiteral("model->hasChildren(topIndex)"))
                     || complaint.contains(QStringLiteral("model->parent(childIndex)")),
                 qPrintable(complaint));
    }
}

void TestFormatTableModel::rowCountIgnoresTheParent()
{
    FormatTableModel model;
    model.setSource(&m_formats, &m_order);
    QCOMPARE(model.rowCount(model.index(0, 0)), 3);
    QCOMPARE(model.columnCount(model.index(1, 2)), 5);
}

void TestFormatTableModel::headers_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("type") << 0 << QVariant(QStringLiteral("Type"));
    QTest::newRow("identifier") << 1 << QVariant(QStringLiteral("ID."));
    QTest::newRow("resolution") << 2 << QVariant(QStringLiteral("Resolution"));
    QTest::newRow("size") << 3 << QVariant(QStringLiteral("Size"));
    QTest::newRow("download, empty text") << 4 << QVariant(QString());
    QTest::newRow("beyond the last column") << 5 << QVariant();
    QTest::newRow("negative section") << -1 << QVariant();
}

void TestFormatTableModel::headers()
{
    QFETCH(int, section);
    QFETCH(QVariant, expected);
    FormatTableModel model;
    const QVariant header = model.headerData(section, Qt::Horizontal, Qt::DisplayRole);
    QCOMPARE(header.isValid(), expected.isValid());
    if (expected.isValid())
        QCOMPARE(header.toString(), expected.toString());
    QVERIFY(!model.headerData(section, Qt::Horizontal, Qt::DecorationRole).isValid());
    QVERIFY(!model.headerData(section, Qt::Horizontal, Qt::TextAlignmentRole).isValid());
}

void TestFormatTableModel::verticalHeaderNumbersRows()
{
    FormatTableModel model;
    model.setSource(&m_formats, &m_order);
    QCOMPARE(model.headerData(0, Qt::Vertical, Qt::DisplayRole).toInt(), 1);
    QCOMPARE(model.headerData(2, Qt::Vertical, Qt::DisplayRole).toInt(), 3);
    QVERIFY(!model.headerData(0, Qt::Vertical, Qt::DecorationRole).isValid());
}

void TestFormatTableModel::rowsFollowTheOrderList()
{
    FormatTableModel model;
    model.setSource(&m_formats, &m_order);
    QCOMPARE(model.data(model.index(0, 1)).toUInt(), 137u);
    QCOMPARE(model.data(model.index(1, 1)).toUInt(), 22u);
    QCOMPARE(model.data(model.index(2, 1)).toUInt(), 18u);
}

void TestFormatTableModel::displayRole()
{
    FormatTableModel model;
    model.setSource(&m_formats, &m_order);
    QVERIFY(!model.data(model.index(0, 0), Qt::DisplayRole).isValid());
    QCOMPARE(model.data(model.index(0, 1), Qt::DisplayRole).typeId(), QMetaType::UInt);
    QCOMPARE(model.data(model.index(0, 1), Qt::DisplayRole).toUInt(), 137u);
    QCOMPARE(model.data(model.index(0, 2), Qt::DisplayRole).toString(), QStringLiteral("1920x1080"));
    QCOMPARE(model.data(model.index(0, 3), Qt::DisplayRole).toString(), QStringLiteral("1.5GiB"));
    QVERIFY(!model.data(model.index(0, 4), Qt::DisplayRole).isValid());
}

void TestFormatTableModel::sizeColumnAlignmentAndMebibytes()
{
    FormatTableModel model;
    model.setSource(&m_formats, &m_order);
    QCOMPARE(model.data(model.index(0, 3), Qt::TextAlignmentRole).toInt(), 130);
    QCOMPARE(model.data(model.index(0, 3), Qt::UserRole).typeId(), QMetaType::Double);
    QCOMPARE(model.data(model.index(0, 3), Qt::UserRole).toDouble(), 1536.0);
    QCOMPARE(model.data(model.index(1, 3), Qt::UserRole).toDouble(), 0.5);
    for (int column : {0, 1, 2, 4}) {
        QVERIFY(!model.data(model.index(0, column), Qt::TextAlignmentRole).isValid());
        QVERIFY(!model.data(model.index(0, column), Qt::UserRole).isValid());
    }
}

void TestFormatTableModel::formatWithoutSize()
{
    FormatTableModel model;
    model.setSource(&m_formats, &m_order);
    QCOMPARE(model.data(model.index(2, 3), Qt::DisplayRole).toString(), QString());
    QCOMPARE(model.data(model.index(2, 3), Qt::UserRole).toDouble(), 0.0);
    QCOMPARE(model.data(model.index(2, 3), Qt::TextAlignmentRole).toInt(), 130);
}

void TestFormatTableModel::decorations()
{
    FormatTableModel model;
    model.setSource(&m_formats, &m_order);
    const QVariant media = model.data(model.index(0, 0), Qt::DecorationRole);
    QCOMPARE(media.typeId(), QMetaType::QPixmap);
    QCOMPARE(media.value<QPixmap>().size(), QSize(48, 23));
    const QVariant download = model.data(model.index(1, 4), Qt::DecorationRole);
    QCOMPARE(download.typeId(), QMetaType::QPixmap);
    QCOMPARE(download.value<QPixmap>().size(), QSize(22, 22));
    QVERIFY(!media.value<QPixmap>().toImage().isNull());
    for (int column : {1, 2, 3})
        QVERIFY(!model.data(model.index(0, column), Qt::DecorationRole).isValid());
}

void TestFormatTableModel::otherRolesAreInvalid()
{
    FormatTableModel model;
    model.setSource(&m_formats, &m_order);
    for (int role : {int(Qt::ToolTipRole), int(Qt::EditRole), int(Qt::FontRole), int(Qt::UserRole) + 1}) {
        for (int column = 0; column < 5; ++column)
            QVERIFY(!model.data(model.index(0, column), role).isValid());
    }
}

void TestFormatTableModel::unknownIdentifierGivesNothing()
{
    FormatTableModel model;
    m_order = {137, 999};
    model.setSource(&m_formats, &m_order);
    QCOMPARE(model.rowCount(), 2);
    QVERIFY(!model.data(model.index(1, 1)).isValid());
    QVERIFY(!model.data(model.index(1, 0), Qt::DecorationRole).isValid());
    QVERIFY(!model.data(model.index(5, 1)).isValid());
}

void TestFormatTableModel::emptyFormatMapGivesNothing()
{
    FormatTableModel model;
    const QHash<quint32, FormatInfo> none;
    model.setSource(&none, &m_order);
    QCOMPARE(model.rowCount(), 3);
    QVERIFY(!model.data(model.index(0, 1)).isValid());
}

void TestFormatTableModel::resetAroundSourceChange()
{
    FormatTableModel model;
    QSignalSpy aboutToReset(&model, &QAbstractItemModel::modelAboutToBeReset);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.setSource(&m_formats, &m_order);
    QCOMPARE(aboutToReset.size(), 1);
    QCOMPARE(reset.size(), 1);
}

KESTREL_TEST_MAIN(TestFormatTableModel)
#include "tst_formattablemodel.moc"
