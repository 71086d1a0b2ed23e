#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "plugins/plugins.h"
#include "ui/navigation.h"
#include "ui_navigation.h"

#include "testsandbox.h"

#include <QApplication>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>

namespace {

template <typename Widget>
Widget *child(const QObject *parent, const char *name)
{
    auto *widget = parent->findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qWarning("no %s named %s", Widget::staticMetaObject.className(), name);
    return widget;
}

// Which layout of the window holds a widget or a sub-layout.
QString layoutHolding(const QWidget *window, const QObject *item)
{
    for (const QLayout *layout : window->findChildren<QLayout *>()) {
        for (int i = 0; i < layout->count(); ++i) {
            QLayoutItem *entry = layout->itemAt(i);
            if (entry->widget() == item || entry->layout() == item)
                return layout->objectName();
        }
    }
    return {};
}

QStringList layoutWidgets(const QLayout *layout)
{
    QStringList names;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *entry = layout->itemAt(i);
        if (entry->widget())
            names << entry->widget()->objectName();
        else if (entry->layout())
            names << entry->layout()->objectName();
        else if (entry->spacerItem())
            names << QStringLiteral("<spacer>");
    }
    return names;
}

} // namespace

class TestNavigationForm : public QObject
{
    Q_OBJECT

private slots:
    void topLevel();
    void firstFrameHasTheBusyPageSize_data();
    void firstFrameHasTheBusyPageSize();
    void pagesInOrderWithBusyPageFirst();
    void startPage();
    void addressPage();
    void formatsPage();
    void downloadPage();
    void emptyPage();
    void noButtonTakesTheEnterKey();
    void iconsAreLoaded();
    void imagesStaySharpAtTwiceTheDeviceScale();
    void siteButtonShowsItsIconAndOffersItsText();
    void missingScaleSettingGivesHundred();
    void storedScaleSettingIsRead();
    void showMainWindowOpensTheStartPage();

private:
    VideoInfo m_info;
    KestrelDownloader m_driver{m_info};
    Plugins m_plugins;
};

// The form's own sizes, which the window replaces before it is first shown.
void TestNavigationForm::topLevel()
{
    QDialog window;
    Ui::Navigation form;
    form.setupUi(&window);
    QCOMPARE(window.objectName(), QStringLiteral("Navigation"));
    QCOMPARE(window.windowTitle(), QStringLiteral("Kestrel Downloader"));
    QCOMPARE(window.size(), QSize(487, 229));
    QCOMPARE(window.maximumSize(), QSize(734, 16777215));
    QLayout *layout = window.layout();
    QVERIFY(layout);
    QCOMPARE(layout->objectName(), QStringLiteral("horizontalLayout_9"));
    QVERIFY(layout->inherits("QHBoxLayout"));
    QCOMPARE(layoutWidgets(layout), QStringList{QStringLiteral("stackedWidget")});
}

void TestNavigationForm::firstFrameHasTheBusyPageSize_data()
{
    QTest::addColumn<int>("scale");
    QTest::addColumn<QSize>("size");
    QTest::newRow("100 %") << 100 << QSize(384, 128);
    QTest::newRow("130 %") << 130 << QSize(499, 166);
    QTest::newRow("140 %") << 140 << QSize(537, 179);
}

// Switching to the busy page in the constructor sizes the window, so it is
// mapped at its page's size and does not jump once shown.
void TestNavigationForm::firstFrameHasTheBusyPageSize()
{
    QFETCH(int, scale);
    QFETCH(QSize, size);
    QSettings &settings = m_info.settings();
    settings.setValue(QStringLiteral("Scale/Val"), scale);
    Navigation window(m_driver, m_info, m_plugins);
    settings.remove(QStringLiteral("Scale/Val"));

    QCOMPARE(window.size(), size);
    QCOMPARE(window.minimumSize(), size);
    QCOMPARE(window.maximumSize(), size);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.size(), size);
    window.showMainWindow();
    QCOMPARE(window.size(), size);
}

void TestNavigationForm::pagesInOrderWithBusyPageFirst()
{
    Navigation window(m_driver, m_info, m_plugins);
    auto *stack = child<QStackedWidget>(&window, "stackedWidget");
    QVERIFY(stack);
    QStringList pages;
    for (int i = 0; i < stack->count(); ++i)
        pages << stack->widget(i)->objectName();
    QCOMPARE(pages, (QStringList{QStringLiteral("page_Start"), QStringLiteral("page_URL"), QStringLiteral("page_Formats"),
                                 QStringLiteral("page_Download"), QStringLiteral("pageEmpty")}));
    QCOMPARE(stack->currentWidget()->objectName(), QStringLiteral("pageEmpty"));
}

void TestNavigationForm::startPage()
{
    Navigation window(m_driver, m_info, m_plugins);
    auto *video = child<QPushButton>(&window, "pushButton_Video");
    auto *site = child<QPushButton>(&window, "pushButton_Site");
    QVERIFY(video && site);
    QCOMPARE(video->text(), QString());
    QVERIFY(video->isFlat());
    QCOMPARE(video->minimumSize(), QSize(350, 89));
    QCOMPARE(video->maximumSize(), QSize(350, 89));
    QCOMPARE(video->iconSize(), QSize(350, 89));
    QCOMPARE(video->cursor().shape(), Qt::PointingHandCursor);

    QCOMPARE(site->text(), QStringLiteral("Go To Loomfield<br>Access 1000's of Sites"));
    QVERIFY(!site->isFlat());
    QCOMPARE(site->minimumSize(), QSize(105, 90));
    QCOMPARE(site->iconSize(), QSize(105, 90));

    QCOMPARE(video->parentWidget()->objectName(), QStringLiteral("page_Start"));
    const QLayout *row = video->parentWidget()->findChild<QLayout *>(layoutHolding(&window, video));
    QVERIFY(row);
    QCOMPARE(layoutWidgets(row), (QStringList{QStringLiteral("pushButton_Video"), QStringLiteral("<spacer>"), QStringLiteral("pushButton_Site")}));
}

void TestNavigationForm::addressPage()
{
    Navigation window(m_driver, m_info, m_plugins);
    auto *page = child<QWidget>(&window, "page_URL");
    QVERIFY(page);
    QCOMPARE(page->layout()->objectName(), QStringLiteral("verticalLayout_2"));
    QCOMPARE(layoutWidgets(page->layout()),
             (QStringList{QStringLiteral("horizontalLayout_5"), QStringLiteral("editURL"), QStringLiteral("horizontalLayout_6")}));
    QCOMPARE(layoutWidgets(page->findChild<QLayout *>(QStringLiteral("horizontalLayout_5"))),
             (QStringList{QStringLiteral("btn_Back_from_Process"), QStringLiteral("<spacer>")}));
    QCOMPARE(layoutWidgets(page->findChild<QLayout *>(QStringLiteral("horizontalLayout_6"))),
             (QStringList{QStringLiteral("<spacer>"), QStringLiteral("pushButton_Process"), QStringLiteral("<spacer>")}));

    auto *back = child<QPushButton>(&window, "btn_Back_from_Process");
    QCOMPARE(back->text(), QString());
    QCOMPARE(back->minimumSize(), QSize(76, 32));
    QCOMPARE(back->iconSize(), QSize(76, 32));
    auto *edit = child<QLineEdit>(&window, "editURL");
    QCOMPARE(edit->text(), QString());
    QCOMPARE(edit->minimumHeight(), 33);
    auto *process = child<QPushButton>(&window, "pushButton_Process");
    QCOMPARE(process->text(), QString());
    QCOMPARE(process->minimumSize(), QSize(158, 46));
    QCOMPARE(process->iconSize(), QSize(158, 46));
}

void TestNavigationForm::formatsPage()
{
    Navigation window(m_driver, m_info, m_plugins);
    auto *page = child<QWidget>(&window, "page_Formats");
    QVERIFY(page);
    QCOMPARE(page->layout()->objectName(), QStringLiteral("verticalLayout_4"));
    QCOMPARE(layoutWidgets(page->layout()), (QStringList{QStringLiteral("horizontalLayout_8"), QStringLiteral("progressBar"),
                                                          QStringLiteral("tableView")}));
    QCOMPARE(layoutWidgets(page->findChild<QLayout *>(QStringLiteral("horizontalLayout_8"))),
             (QStringList{QStringLiteral("btn_Back_from_Formats"), QStringLiteral("groupBox_3")}));

    auto *back = child<QPushButton>(&window, "btn_Back_from_Formats");
    QCOMPARE(back->text(), QString());
    QCOMPARE(back->minimumSize(), QSize(33, 33));
    QCOMPARE(back->iconSize(), QSize(33, 33));

    auto *group = child<QGroupBox>(&window, "groupBox_3");
    QCOMPARE(group->title(), QString());
    QCOMPARE(group->layout()->objectName(), QStringLiteral("horizontalLayout_7"));
    QCOMPARE(layoutWidgets(group->layout()), (QStringList{QStringLiteral("labelTitle"), QStringLiteral("<spacer>"), QStringLiteral("labelTime")}));

    auto *title = child<QLabel>(&window, "labelTitle");
    QCOMPARE(title->text(), QStringLiteral("title"));
    QCOMPARE(title->textFormat(), Qt::PlainText);
    auto *time = child<QLabel>(&window, "labelTime");
    QCOMPARE(time->text(), QStringLiteral("00:00:00"));
    QCOMPARE(time->alignment(), Qt::AlignRight | Qt::AlignVCenter);

    auto *bar = child<QProgressBar>(&window, "progressBar");
    QCOMPARE(bar->maximum(), 0);
    QCOMPARE(bar->value(), 0);
    QVERIFY(!bar->isTextVisible());
    QVERIFY(child<QTableView>(&window, "tableView"));
}

void TestNavigationForm::downloadPage()
{
    Navigation window(m_driver, m_info, m_plugins);
    auto *page = child<QWidget>(&window, "page_Download");
    QVERIFY(page);
    QCOMPARE(page->layout()->objectName(), QStringLiteral("verticalLayout_5"));
    QCOMPARE(layoutWidgets(page->layout()),
             (QStringList{QStringLiteral("horizontalLayout_10"), QStringLiteral("horizontalLayout_12"), QStringLiteral("progressBarDL"),
                          QStringLiteral("horizontalLayout_13"), QStringLiteral("horizontalLayout_11")}));
    QCOMPARE(layoutWidgets(page->findChild<QLayout *>(QStringLiteral("horizontalLayout_10"))),
             (QStringList{QStringLiteral("btn_Back_Last"), QStringLiteral("label_DL"), QStringLiteral("label_TitleDownload"), QStringLiteral("<spacer>")}));
    QCOMPARE(layoutWidgets(page->findChild<QLayout *>(QStringLiteral("horizontalLayout_12"))),
             (QStringList{QStringLiteral("<spacer>"), QStringLiteral("label_DL_OK"), QStringLiteral("<spacer>")}));
    QCOMPARE(layoutWidgets(page->findChild<QLayout *>(QStringLiteral("horizontalLayout_13"))),
             (QStringList{QStringLiteral("btnStartOver"), QStringLiteral("<spacer>"), QStringLiteral("btnOpenFolder")}));
    QCOMPARE(layoutWidgets(page->findChild<QLayout *>(QStringLiteral("horizontalLayout_11"))),
             (QStringList{QStringLiteral("<spacer>"), QStringLiteral("btnCancel")}));

    auto *back = child<QPushButton>(&window, "btn_Back_Last");
    QVERIFY(back->isFlat());
    QCOMPARE(back->text(), QString());
    QCOMPARE(back->minimumSize(), QSize(33, 33));
    QCOMPARE(back->maximumSize(), QSize(33, 33));
    QCOMPARE(back->iconSize(), QSize(33, 33));

    QCOMPARE(child<QLabel>(&window, "label_DL")->text(), QStringLiteral("Downloading: "));
    QCOMPARE(child<QLabel>(&window, "label_TitleDownload")->text(), QStringLiteral("title"));

    auto *done = child<QLabel>(&window, "label_DL_OK");
    QCOMPARE(done->text(), QStringLiteral("Video Successfully Downloaded"));
    QCOMPARE(done->font().pointSize(), 14);
    QCOMPARE(done->font().weight(), QFont::Weight(700));
    QCOMPARE(done->styleSheet(), QStringLiteral("color: green;"));

    QCOMPARE(child<QProgressBar>(&window, "progressBarDL")->minimumHeight(), 25);

    auto *startOver = child<QPushButton>(&window, "btnStartOver");
    QCOMPARE(startOver->text(), QStringLiteral("Start Over"));
    QCOMPARE(startOver->minimumSize(), QSize(120, 33));
    QCOMPARE(startOver->font().pointSize(), 12);
    QCOMPARE(startOver->font().weight(), QFont::Weight(600));

    auto *openFolder = child<QPushButton>(&window, "btnOpenFolder");
    QCOMPARE(openFolder->text(), QStringLiteral("Open Folder with File"));
    QCOMPARE(openFolder->minimumHeight(), 33);
    QCOMPARE(openFolder->font().pointSize(), 11);
    QCOMPARE(openFolder->font().weight(), QFont::Weight(500));

    QCOMPARE(child<QPushButton>(&window, "btnCancel")->text(), QStringLiteral("Cancel"));
}

void TestNavigationForm::emptyPage()
{
    Navigation window(m_driver, m_info, m_plugins);
    auto *page = child<QWidget>(&window, "pageEmpty");
    QVERIFY(page);
    QCOMPARE(page->layout()->objectName(), QStringLiteral("verticalLayout_6"));
    QCOMPARE(layoutWidgets(page->layout()),
             (QStringList{QStringLiteral("<spacer>"), QStringLiteral("progressBar_2"), QStringLiteral("<spacer>")}));
    auto *bar = child<QProgressBar>(&window, "progressBar_2");
    QCOMPARE(bar->maximum(), 0);
    QCOMPARE(bar->value(), 0);
    QVERIFY(!bar->isTextVisible());
}

void TestNavigationForm::noButtonTakesTheEnterKey()
{
    // Enter in the address field starts a request and moves the focus to a
    // button; that button must not take the same key press too.
    Navigation window(m_driver, m_info, m_plugins);
    const QList<QPushButton *> buttons = window.findChildren<QPushButton *>();
    QCOMPARE(buttons.size(), 9);
    for (const QPushButton *button : buttons) {
        QVERIFY2(!button->autoDefault(), qPrintable(button->objectName()));
        QVERIFY2(!button->isDefault(), qPrintable(button->objectName()));
    }
}

void TestNavigationForm::iconsAreLoaded()
{
    Navigation window(m_driver, m_info, m_plugins);
    const QList<QPair<const char *, const char *>> buttons = {
        {"pushButton_Video", ":/img/btn_kestreldl"}, {"pushButton_Site", ":/img/btn_site"},
        {"btn_Back_from_Process", ":/img/btn_back_big"}, {"pushButton_Process", ":/img/btn_process"},
        {"btn_Back_from_Formats", ":/img/btn_back_small"}, {"btn_Back_Last", ":/img/btn_back_small"},
    };
    for (const auto &[name, resource] : buttons) {
        QVERIFY2(QFile::exists(QLatin1String(resource)), resource);
        const QPushButton *button = child<QPushButton>(&window, name);
        const QIcon icon = button->icon();
        QVERIFY2(!icon.isNull(), name);
        const QSize drawn = icon.actualSize(button->iconSize());
        QVERIFY2(drawn.width() == button->iconSize().width() || drawn.height() == button->iconSize().height(), name);
        const QImage shown = icon.pixmap(QSize(40, 20)).toImage();
        const QImage expected = QIcon(QLatin1String(resource)).pixmap(QSize(40, 20)).toImage();
        QCOMPARE(shown, expected);
    }
    for (const char *resource : {":/img/sign_media", ":/img/sign_download"})
        QVERIFY2(!QImage(QLatin1String(resource)).isNull(), resource);
}

// Moved onto a screen of device pixel ratio 2 (the tests' screen has 1),
// at the largest display scale, every image has a source at least as large
// as it is drawn: it is only ever scaled down, never blown up from a small
// bitmap. The larger sources are not loaded before they are needed: they
// would delay the first frame.
void TestNavigationForm::imagesStaySharpAtTwiceTheDeviceScale()
{
    QCOMPARE(qApp->devicePixelRatio(), 1.0);
    QSettings &settings = m_info.settings();
    settings.setValue(QStringLiteral("Scale/Val"), 140);
    Navigation window(m_driver, m_info, m_plugins);
    settings.remove(QStringLiteral("Scale/Val"));
    auto *stack = child<QStackedWidget>(&window, "stackedWidget");
    for (const QPushButton *button : window.findChildren<QPushButton *>()) {
        if (!button->icon().isNull())
            QVERIFY2(button->icon().availableSizes().size() == 1, qPrintable(button->objectName()));
    }
    window.prepareImagesFor(2.0);

    QList<QPair<QIcon, QSize>> drawn;
    for (int page = 0; page < stack->count(); ++page) {
        window.whenStackedPageChanged(page);
        for (const QPushButton *button : stack->widget(page)->findChildren<QPushButton *>()) {
            if (!button->icon().isNull())
                drawn.append({button->icon(), button->iconSize()});
        }
    }
    QCOMPARE(drawn.size(), 6);
    drawn.append({QIcon(QStringLiteral(":/img/sign_media")), QSize(48, 23)});
    drawn.append({QIcon(QStringLiteral(":/img/sign_download")), QSize(22, 22)});

    for (const auto &[icon, box] : std::as_const(drawn)) {
        const QPixmap pixmap = icon.pixmap(box, 2.0);
        const QString what = QStringLiteral("%1x%2 drawn from %3x%4")
                                 .arg(box.width()).arg(box.height()).arg(pixmap.width()).arg(pixmap.height());
        QVERIFY2(pixmap.width() >= 2 * box.width() || pixmap.height() >= 2 * box.height(), qPrintable(what));
    }
}

void TestNavigationForm::siteButtonShowsItsIconAndOffersItsText()
{
    Navigation window(m_driver, m_info, m_plugins);
    window.show();
    auto *site = child<QPushButton>(&window, "pushButton_Site");
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    // The text is far wider than the button, which must not push the icon
    // out of sight: the middle of the button shows the icon's colours, not
    // grey button face and black text.
    const QImage shown = site->grab().toImage();
    const QRect middle(site->rect().center() - QPoint(15, 15), QSize(30, 30));
    int colourful = 0;
    for (int y = middle.top(); y <= middle.bottom(); ++y) {
        for (int x = middle.left(); x <= middle.right(); ++x) {
            if (shown.pixelColor(x, y).hsvSaturation() > 100)
                ++colourful;
        }
    }
    QVERIFY2(colourful > 300, qPrintable(QString::number(colourful)));

    QHelpEvent tip(QEvent::ToolTip, QPoint(5, 5), site->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(site, &tip);
    QVERIFY(site->toolTip().contains(QStringLiteral("Go To Loomfield<br>Access 1000's of Sites")));
    QVERIFY(Qt::mightBeRichText(site->toolTip()));
}

void TestNavigationForm::missingScaleSettingGivesHundred()
{
    Navigation window(m_driver, m_info, m_plugins);
    QCOMPARE(window.scale(), 100u);
}

void TestNavigationForm::storedScaleSettingIsRead()
{
    QSettings &settings = m_info.settings();
    settings.setValue(QStringLiteral("Scale/Val"), 135);
    const unsigned int scale = Navigation(m_driver, m_info, m_plugins).scale();
    settings.remove(QStringLiteral("Scale/Val"));
    QCOMPARE(scale, 135u);
}

void TestNavigationForm::showMainWindowOpensTheStartPage()
{
    Navigation window(m_driver, m_info, m_plugins);
    window.showMainWindow();
    QVERIFY(window.isVisible());
    QCOMPARE(child<QStackedWidget>(&window, "stackedWidget")->currentWidget()->objectName(), QStringLiteral("page_Start"));
}

KESTREL_TEST_MAIN(TestNavigationForm)
#include "tst_navigationform.moc"
