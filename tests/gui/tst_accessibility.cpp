#include "base/platform.h"
#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "ui/navigation.h"

#include "happenswithin.h"
#include "menudriver.h"
#include "openedurls.h"
#include "scenario.h"
#include "testsandbox.h"
#include "windowdriver.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using FakeTool::Behaviour;

namespace {

const QString address = QStringLiteral("https://www.youtube.com/watch?v=abc");

Behaviour hanging()
{
    Behaviour behaviour;
    behaviour.hang = true;
    return behaviour;
}

Behaviour finishedDownload()
{
    Behaviour download;
    download.stdoutChunks = {QStringLiteral("[download]  45.3% of 10.00MiB"), QStringLiteral("\r[download] 100% of 10.00MiB in 00:00:01\n")};
    download.pauseMs = 100;
    download.writeOutputFile = true;
    return download;
}

QAccessibleInterface *accessible(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget);
}

QString focusName()
{
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QStringLiteral("<none>");
}

// The key goes where a user's key goes: to the widget with the focus.
void press(int key)
{
    QWidget *focus = QApplication::focusWidget();
    QVERIFY2(focus, "nothing has the keyboard focus");
    QTest::keyClick(focus, Qt::Key(key));
}

} // namespace

class TestAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void controlsHaveRolesNamesAndDescriptions_data();
    void controlsHaveRolesNamesAndDescriptions();
    void everyControlAKeyReachesIsNamed_data();
    void everyControlAKeyReachesIsNamed();
    void statesFollowThePage();
    void tabOrderFollowsEachPage();
    void keyboardOnlyWalkDownloadsAVideo();
    void escapeGoesBack_data();
    void escapeGoesBack();
    void escapeCancelsARunningDownload();
    void escapeOnTheStartPageKeepsTheWindow();
    void menuKeyOpensTheMenu();
    void flatButtonsShowTheKeyboardFocus();

private:
    Navigation *window() const { return &m_driver->window(); }
    template <typename Widget = QWidget>
    Widget *widget(const char *name) const { return m_driver->find<Widget>(name); }
    QString currentPage() const { return m_driver->currentPage(); }
    void useScenario(const QString &kind, const Behaviour &behaviour) { m_driver->play(kind, behaviour); }
    void showPage(const char *name);
    void reachFormatsByKeyboard();
    void reachFinishedDownload();
    QStringList tabCycle(int presses);

    QTemporaryDir m_work;
    VideoInfo m_info;
    std::unique_ptr<WindowDriver> m_driver;
};

void TestAccessibility::initTestCase()
{
    WindowDriver::prepareTool(m_work.path());
}

void TestAccessibility::init()
{
    m_info.settings().remove(QStringLiteral("Scale/Val"));
    m_driver.reset();
    m_driver = std::make_unique<WindowDriver>(m_work.path(), m_info);
    useScenario(FakeTool::Kind::metadata(), WindowDriver::printing(QStringLiteral("Kestrel Test Clip\n3:05\n")));
    useScenario(FakeTool::Kind::formats(), WindowDriver::printing(WindowDriver::sampleListing()));
    useScenario(FakeTool::Kind::download(), finishedDownload());
    QApplication::setActiveWindow(window());
    QVERIFY(QTest::qWaitForWindowActive(window()));
}

void TestAccessibility::cleanup()
{
    m_driver.reset();
}

void TestAccessibility::showPage(const char *name)
{
    widget<QStackedWidget>("stackedWidget")->setCurrentWidget(widget(name));
}

void TestAccessibility::reachFormatsByKeyboard()
{
    QSignalSpy formats(&m_driver->driver(), &KestrelDownloader::haveFormats);
    QCOMPARE(focusName(), QStringLiteral("pushButton_Video"));
    press(Qt::Key_Return);
    QCOMPARE(currentPage(), QStringLiteral("page_URL"));
    QCOMPARE(focusName(), QStringLiteral("editURL"));
    QTest::keyClicks(QApplication::focusWidget(), address);
    press(Qt::Key_Return);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
    QVERIFY(formats.wait(10000));
}

void TestAccessibility::reachFinishedDownload()
{
    reachFormatsByKeyboard();
    QSignalSpy video(&m_driver->driver(), &KestrelDownloader::haveVideo);
    press(Qt::Key_Tab);
    QCOMPARE(focusName(), QStringLiteral("tableView"));
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    QCOMPARE(currentPage(), QStringLiteral("page_Download"));
    QVERIFY(video.wait(10000));
}

// The names of the widgets that Tab visits, starting with the focused one.
QStringList TestAccessibility::tabCycle(int presses)
{
    QStringList visited{focusName()};
    for (int i = 0; i < presses; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited << focusName();
    }
    return visited;
}

void TestAccessibility::controlsHaveRolesNamesAndDescriptions_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("description");

    const auto row = [](const char *page, const char *control, QAccessible::Role role, const char *name, const char *description) {
        QTest::addRow("%s", control) << QString::fromLatin1(page) << QString::fromLatin1(control) << int(role)
                                     << QString::fromUtf8(name) << QString::fromUtf8(description);
    };
    row("page_Start", "pushButton_Video", QAccessible::Button, "Download a video",
        "Opens the page where you paste the address of a YouTube video");
    row("page_Start", "pushButton_Site", QAccessible::Button, "Go To Loomfield: Access 1000's of Sites",
        "Opens the Loomfield web site in your browser");
    row("page_URL", "btn_Back_from_Process", QAccessible::Button, "Back", "Returns to the start page");
    row("page_URL", "editURL", QAccessible::EditableText, "Video address",
        "The address of a YouTube video; press Enter to look it up");
    row("page_URL", "pushButton_Process", QAccessible::Button, "Process", "Looks up the video and lists its formats");
    row("page_Formats", "btn_Back_from_Formats", QAccessible::Button, "Back",
        "Stops looking up the video and returns to its address");
    row("page_Formats", "labelTitle", QAccessible::StaticText, "title", "Title of the video");
    row("page_Formats", "labelTime", QAccessible::StaticText, "00:00:00", "Duration of the video");
    row("page_Formats", "progressBar", QAccessible::ProgressBar, "Looking up the video",
        "Shown until the video's formats are listed");
    row("page_Formats", "tableView", QAccessible::Table, "Formats",
        "The video's formats, largest first: type, resolution and size. Press Enter or click a format to download it");
    row("page_Download", "btn_Back_Last", QAccessible::Button, "Back", "Returns to the list of formats");
    row("page_Download", "label_DL", QAccessible::StaticText, "Downloading: ", "");
    row("page_Download", "label_TitleDownload", QAccessible::StaticText, "title", "Title of the video");
    row("page_Download", "label_DL_OK", QAccessible::StaticText, "Video Successfully Downloaded", "");
    row("page_Download", "progressBarDL", QAccessible::ProgressBar, "Download progress",
        "How much of the video has been downloaded");
    row("page_Download", "btnStartOver", QAccessible::Button, "Start Over", "Starts again with the address of another video");
    row("page_Download", "btnOpenFolder", QAccessible::Button, "Open Folder with File", "Opens the folder with the downloaded video");
    row("page_Download", "btnCancel", QAccessible::Button, "Cancel", "Stops the download");
    row("pageEmpty", "progressBar_2", QAccessible::ProgressBar, "Please wait", "Shown while the program is busy");
}

void TestAccessibility::controlsHaveRolesNamesAndDescriptions()
{
    QFETCH(QString, page);
    QFETCH(QString, control);
    QFETCH(int, role);
    QFETCH(QString, name);
    QFETCH(QString, description);

    showPage(qPrintable(page));
    QAccessibleInterface *interface = accessible(widget(qPrintable(control)));
    QVERIFY(interface && interface->isValid());
    QCOMPARE(int(interface->role()), role);
    QCOMPARE(interface->text(QAccessible::Name), name);
    QCOMPARE(interface->text(QAccessible::Description), description);
}

void TestAccessibility::everyControlAKeyReachesIsNamed_data()
{
    QTest::addColumn<QString>("page");
    for (const char *page : {"page_Start", "page_URL", "page_Formats", "page_Download", "pageEmpty"})
        QTest::newRow(page) << QString::fromLatin1(page);
}

// Also the buttons that show only an image: a screen reader reads their
// names, not their pictures.
void TestAccessibility::everyControlAKeyReachesIsNamed()
{
    QFETCH(QString, page);
    showPage(qPrintable(page));
    for (QWidget *control : widget(qPrintable(page))->findChildren<QWidget *>()) {
        if (!(control->focusPolicy() & Qt::TabFocus))
            continue;
        QAccessibleInterface *interface = accessible(control);
        QVERIFY(interface);
        QVERIFY2(!interface->text(QAccessible::Name).trimmed().isEmpty(), qPrintable(control->objectName()));
        QVERIFY2(!interface->text(QAccessible::Description).trimmed().isEmpty(), qPrintable(control->objectName()));
    }
}

void TestAccessibility::statesFollowThePage()
{
    QAccessibleInterface *video = accessible(widget("pushButton_Video"));
    QAccessibleInterface *edit = accessible(widget("editURL"));
    QVERIFY(video->state().focusable);
    QVERIFY(video->state().focused);
    QVERIFY(!video->state().invisible);
    QVERIFY(edit->state().invisible);

    press(Qt::Key_Return);
    QVERIFY(video->state().invisible);
    QVERIFY(!edit->state().invisible);
    QVERIFY(edit->state().focused);

    QTest::keyClicks(QApplication::focusWidget(), address);
    press(Qt::Key_Return);
    QAccessibleInterface *busy = accessible(widget("progressBar"));
    QVERIFY(!busy->state().invisible);
    QVERIFY(accessible(widget("btn_Back_from_Formats"))->state().focused);
    QTRY_VERIFY(busy->state().invisible);
    QVERIFY(!accessible(widget("tableView"))->state().invisible);
}

void TestAccessibility::tabOrderFollowsEachPage()
{
    QCOMPARE(tabCycle(2), (QStringList{QStringLiteral("pushButton_Video"), QStringLiteral("pushButton_Site"),
                                       QStringLiteral("pushButton_Video")}));
    press(Qt::Key_Return);
    QCOMPARE(tabCycle(3), (QStringList{QStringLiteral("editURL"), QStringLiteral("pushButton_Process"),
                                       QStringLiteral("btn_Back_from_Process"), QStringLiteral("editURL")}));

    QSignalSpy formats(&m_driver->driver(), &KestrelDownloader::haveFormats);
    QTest::keyClicks(QApplication::focusWidget(), address);
    press(Qt::Key_Return);
    QVERIFY(formats.wait(10000));
    QCOMPARE(tabCycle(2), (QStringList{QStringLiteral("btn_Back_from_Formats"), QStringLiteral("tableView"),
                                       QStringLiteral("btn_Back_from_Formats")}));

    QSignalSpy video(&m_driver->driver(), &KestrelDownloader::haveVideo);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    QVERIFY(video.wait(10000));
    QCOMPARE(tabCycle(3), (QStringList{QStringLiteral("btnOpenFolder"), QStringLiteral("btn_Back_Last"),
                                       QStringLiteral("btnStartOver"), QStringLiteral("btnOpenFolder")}));
}

void TestAccessibility::keyboardOnlyWalkDownloadsAVideo()
{
    QSignalSpy requests(window(), &Navigation::requestVideo);
    reachFinishedDownload();
    // Up from the second row picks the first: the largest format.
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().first().toUInt(), 137u);
    QVERIFY(QFile::exists(outputFolder() + QStringLiteral("/abc.mp4")));
    QVERIFY(widget("label_DL_OK")->isVisible());

    OpenedUrls opener;
    // On Windows the folder's drive letter reads as the address's scheme.
    const QString scheme = Platform::folderUrl(outputFolder()).scheme();
    QDesktopServices::setUrlHandler(scheme, &opener, "open");
    QCOMPARE(focusName(), QStringLiteral("btnOpenFolder"));
    press(Qt::Key_Return);
    QTRY_COMPARE(opener.urls().size(), 1);
    QDesktopServices::unsetUrlHandler(scheme);

    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QCOMPARE(focusName(), QStringLiteral("btnStartOver"));
    press(Qt::Key_Return);
    QTRY_COMPARE(currentPage(), QStringLiteral("page_Start"));
    QCOMPARE(focusName(), QStringLiteral("pushButton_Video"));
}

void TestAccessibility::escapeGoesBack_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::newRow("address page") << QStringLiteral("page_URL") << QStringLiteral("page_Start");
    QTest::newRow("formats page") << QStringLiteral("page_Formats") << QStringLiteral("page_URL");
    QTest::newRow("finished download") << QStringLiteral("page_Download") << QStringLiteral("page_Formats");
}

void TestAccessibility::escapeGoesBack()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    if (from == QStringLiteral("page_URL")) {
        press(Qt::Key_Return);
    } else if (from == QStringLiteral("page_Formats")) {
        reachFormatsByKeyboard();
    } else {
        reachFinishedDownload();
    }
    QCOMPARE(currentPage(), from);
    press(Qt::Key_Escape);
    QTRY_COMPARE(currentPage(), to);
    QVERIFY(window()->isVisible());
}

void TestAccessibility::escapeCancelsARunningDownload()
{
    useScenario(FakeTool::Kind::download(), hanging());
    reachFormatsByKeyboard();
    QSignalSpy wrong(&m_driver->driver(), &KestrelDownloader::somethingWrong);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    QCOMPARE(currentPage(), QStringLiteral("page_Download"));
    QCOMPARE(focusName(), QStringLiteral("btnCancel"));

    press(Qt::Key_Escape);
    QVERIFY(wrong.wait(10000));
    QCOMPARE(wrong.first().first().value<KestrelDownloader::errorType>(), KestrelDownloader::downloadCancelled);
    QCOMPARE(currentPage(), QStringLiteral("page_Formats"));
}

void TestAccessibility::escapeOnTheStartPageKeepsTheWindow()
{
    press(Qt::Key_Escape);
    QVERIFY(!happensWithin(50, [&] { return !window()->isVisible() || currentPage() != QStringLiteral("page_Start"); }));
    QVERIFY(window()->isVisible());
    QCOMPARE(currentPage(), QStringLiteral("page_Start"));
}

void TestAccessibility::menuKeyOpensTheMenu()
{
    MenuDriver menu;
    QWidget *focus = QApplication::focusWidget();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, focus->rect().center(), focus->mapToGlobal(focus->rect().center()));
    QApplication::sendEvent(focus, &event);
    QVERIFY(menu.menuSeen());
    QCOMPARE(menu.entries(), (QStringList{QStringLiteral("Manually Update Software"), QStringLiteral("Logging enabled"),
                                          QStringLiteral("---"), QStringLiteral("Change Scale Size"), QStringLiteral("---"),
                                          QStringLiteral("Show UUID"), QStringLiteral("About")}));
}

// The image fills the flat video button, which the style draws without any
// frame: the button marks the focus itself once the keyboard has moved it.
void TestAccessibility::flatButtonsShowTheKeyboardFocus()
{
    auto *video = widget<QPushButton>("pushButton_Video");
    auto *site = widget<QPushButton>("pushButton_Site");
    QVERIFY(video->isFlat());
    QVERIFY(video->hasFocus());
    const QImage focusedByProgram = video->grab().toImage();
    site->setFocus();
    const QImage unfocused = video->grab().toImage();
    QCOMPARE(focusedByProgram, unfocused);

    press(Qt::Key_Backtab);
    QCOMPARE(focusName(), QStringLiteral("pushButton_Video"));
    QVERIFY(video->grab().toImage() != unfocused);
}

KESTREL_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
