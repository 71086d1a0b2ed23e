#include "downloader/videoinfo.h"

#include "happenswithin.h"
#include "logcapture.h"
#include "menudriver.h"
#include "modalcatcher.h"
#include "scenario.h"
#include "testsandbox.h"
#include "windowflowtest.h"

#include <QApplication>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QStackedWidget>
#include <QTest>

#include <algorithm>

// The window's menu when no plug-in is installed, and the display scale:
// what a damaged setting gives and the sizes of every page at each scale.
class TestMenuAndScale : public WindowFlowTest
{
    Q_OBJECT

private slots:
    void menuWithoutPlugins();
    void entriesOfMissingPluginsLogNothingElse_data();
    void entriesOfMissingPluginsLogNothingElse();
    void damagedScaleSettingIsIgnored_data();
    void damagedScaleSettingIsIgnored();
    void pageSizes_data();
    void pageSizes();
};

void TestMenuAndScale::menuWithoutPlugins()
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
    QVERIFY(!happensWithin(100, [&] { return !boxes.boxes().isEmpty(); }));
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

void TestMenuAndScale::entriesOfMissingPluginsLogNothingElse_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("plugin");
    QTest::newRow("update") << QStringLiteral("Manually Update Software") << QStringLiteral("Updater");
    QTest::newRow("identifier") << QStringLiteral("Show UUID") << QStringLiteral("SysInfo");
}

// Each use writes the menu's own line; the plug-in's load error, if this is
// its first use in the run, is the only other line.
void TestMenuAndScale::entriesOfMissingPluginsLogNothingElse()
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
    QVERIFY(!happensWithin(500, [&] {
        return !boxes.boxes().isEmpty() || !FakeTool::readRecord(recordFile()).isEmpty();
    }));

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

void TestMenuAndScale::damagedScaleSettingIsIgnored_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("text") << QVariant(QStringLiteral("abc"));
    QTest::newRow("zero") << QVariant(0);
    QTest::newRow("negative") << QVariant(-130);
    QTest::newRow("huge") << QVariant(100000);
    QTest::newRow("binary") << QVariant(QStringLiteral("\x01\x02\xff"));
}

void TestMenuAndScale::damagedScaleSettingIsIgnored()
{
    QFETCH(QVariant, stored);
    info().settings().setValue(QStringLiteral("Scale/Val"), stored);
    LogCapture log;
    remakeWindow();
    QCOMPARE(window()->scale(), 100u);
    QCOMPARE(window()->size(), QSize(384, 128));
    QCOMPARE(log.matching(QStringLiteral("WARNING: ignoring display scale")).size(), 1);
}

void TestMenuAndScale::pageSizes_data()
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

void TestMenuAndScale::pageSizes()
{
    QFETCH(unsigned int, scale);
    QFETCH(QString, page);
    QFETCH(QSize, windowSize);
    QFETCH(QStringList, buttons);
    QFETCH(QList<QSize>, sizes);

    // The scale is read when the window is made.
    info().settings().setValue(QStringLiteral("Scale/Val"), scale);
    remakeWindow();
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

KESTREL_TEST_MAIN(TestMenuAndScale)
#include "tst_menuandscale.moc"
