#include "base/platform.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "plugins/plugins.h"
#include "ui/navigation.h"

#include "happenswithin.h"
#include "menudriver.h"
#include "modalcatcher.h"
#include "scenario.h"
#include "testsandbox.h"
#include "windowdriver.h"

#include <QApplication>
#include <QScreen>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

const QStringList menuEntries{
    QStringLiteral("Manually Update Software"),
    QStringLiteral("Logging enabled"),
    QStringLiteral("---"),
    QStringLiteral("Change Scale Size"),
    QStringLiteral("---"),
    QStringLiteral("Show UUID"),
    QStringLiteral("About"),
};

void placeRecordingPlugin(const QString &kind, const QString &baseName)
{
    const QString target = QStringLiteral("%1/%2").arg(QCoreApplication::applicationDirPath(), Platform::pluginFileName(baseName));
    QFile::remove(target);
    if (!QFile::copy(QStringLiteral("%1/recording_%2" KESTREL_MODULE_SUFFIX).arg(QStringLiteral(KESTREL_FIXTURE_PLUGIN_DIR), kind), target))
        qFatal("cannot place %s", qPrintable(target));
}

} // namespace

class TestNavigationMenu : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void rightPressOpensTheMenu_data();
    void rightPressOpensTheMenu();
    void leftClickStillReachesTheButtons();
    void loggingEntry();
    void noScaleEntryCheckedByDefault();
    void choosingAScaleResizesAtOnce();
    void choosingTheCurrentScaleWritesNothing();
    void showIdentifier();
    void aboutAsksForTheSystemText();
    void updateEntryConnectsOnce();
    void toolUpdateCrashIsReported();
    void updateDuringADownloadReturnsToIt();

private:
    void useScenario(const QString &kind, const FakeTool::Behaviour &behaviour);
    QStringList calls() const;
    QStringList toolUpdates() const;
    void openMenu(QWidget *target, const QPoint &position = {});
    QWidget *page() const;

    QTemporaryDir m_work;
    QString m_calls;
    QString m_scenarioFile;
    QString m_recordFile;
    FakeTool::Scenario m_scenario;
    // The application's one record, driver and plug-in helpers outlive its
    // window; so do the suite's.
    VideoInfo m_info;
    KestrelDownloader m_driver{m_info};
    Plugins m_plugins;
    std::unique_ptr<Navigation> m_window;
};

void TestNavigationMenu::initTestCase()
{
    for (const auto &[kind, name] : {std::pair{"logging", "LoggingMessages"}, std::pair{"sysinfo", "SysInfo"},
                                     std::pair{"updater", "Updater"}, std::pair{"about", "About"}})
        placeRecordingPlugin(QLatin1String(kind), QLatin1String(name));
    m_calls = m_work.filePath(QStringLiteral("calls.txt"));
    qputenv("KESTREL_FIXTURE_RECORD", m_calls.toLocal8Bit());
    qputenv("KESTREL_FIXTURE_ACTIONS", "done-on-update");

    // The window is made here, for each case in the screen's corner, but the
    // fake tool is placed as for every other window suite.
    WindowDriver::prepareTool(m_work.path());
    m_scenarioFile = m_work.filePath(QStringLiteral("scenario.json"));
    m_recordFile = m_work.filePath(QStringLiteral("record.jsonl"));
}

void TestNavigationMenu::cleanupTestCase()
{
    for (const char *name : {"LoggingMessages", "SysInfo", "Updater", "About"})
        QFile::remove(QStringLiteral("%1/%2").arg(QCoreApplication::applicationDirPath(), Platform::pluginFileName(QLatin1String(name))));
}

void TestNavigationMenu::init()
{
    QFile::remove(m_calls);
    QFile::remove(m_recordFile);
    m_scenario = FakeTool::Scenario();
    m_scenario.record(m_recordFile);
    QVERIFY(m_scenario.writeTo(m_scenarioFile));
    m_info.settings().remove(QStringLiteral("Scale/Val"));
    m_window = std::make_unique<Navigation>(m_driver, m_info, m_plugins);
    m_window->showMainWindow();
    // In the screen's corner, so that a menu never has to be moved to fit.
    m_window->move(m_window->screen()->availableGeometry().topLeft());
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QFile::remove(m_calls);
}

void TestNavigationMenu::cleanup()
{
    m_window.reset();
}

void TestNavigationMenu::useScenario(const QString &kind, const FakeTool::Behaviour &behaviour)
{
    m_scenario.set(kind, behaviour);
    QVERIFY(m_scenario.writeTo(m_scenarioFile));
}

QStringList TestNavigationMenu::calls() const
{
    QFile file(m_calls);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.removeIf([](const QString &line) { return line.startsWith(QStringLiteral("Updater.window")); });
    return lines;
}

QStringList TestNavigationMenu::toolUpdates() const
{
    QStringList updates;
    for (const FakeTool::Invocation &run : FakeTool::readRecord(m_recordFile)) {
        if (run.kind == FakeTool::Kind::update())
            updates << run.arguments.join(QLatin1Char(' '));
    }
    return updates;
}

void TestNavigationMenu::openMenu(QWidget *target, const QPoint &position)
{
    QTest::mousePress(target, Qt::RightButton, {}, position.isNull() ? target->rect().center() : position);
}

QWidget *TestNavigationMenu::page() const
{
    return m_window->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"))->currentWidget();
}

void TestNavigationMenu::rightPressOpensTheMenu_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("video button") << QStringLiteral("pushButton_Video");
    QTest::newRow("site button") << QStringLiteral("pushButton_Site");
    QTest::newRow("empty part of the page") << QStringLiteral("stackedWidget");
}

void TestNavigationMenu::rightPressOpensTheMenu()
{
    QFETCH(QString, target);
    auto *widget = m_window->findChild<QWidget *>(target);
    QVERIFY(widget);
    // On the start page the page area's free corner is below the buttons.
    const QPoint position = target == QStringLiteral("stackedWidget") ? QPoint(2, widget->height() - 2) : widget->rect().center();
    auto *button = qobject_cast<QAbstractButton *>(widget);
    QSignalSpy clicked(button ? static_cast<QObject *>(button) : static_cast<QObject *>(widget),
                       button ? SIGNAL(pressed()) : SIGNAL(destroyed()));

    MenuDriver menu;
    openMenu(widget, position);
    QVERIFY(menu.menuSeen());
    QCOMPARE(menu.entries(), menuEntries);
    QCOMPARE(menu.position(), widget->mapToGlobal(position));
    QCOMPARE(clicked.size(), 0);
    QCOMPARE(page()->objectName(), QStringLiteral("page_Start"));
}

void TestNavigationMenu::leftClickStillReachesTheButtons()
{
    QTest::mouseClick(m_window->findChild<QPushButton *>(QStringLiteral("pushButton_Video")), Qt::LeftButton);
    QCOMPARE(page()->objectName(), QStringLiteral("page_URL"));
}

void TestNavigationMenu::loggingEntry()
{
    {
        MenuDriver menu;
        openMenu(m_window->findChild<QWidget *>(QStringLiteral("pushButton_Video")));
        QCOMPARE(menu.checkedStates().value(QStringLiteral("Logging enabled")), true);
    }
    MenuDriver menu({QStringLiteral("Logging enabled")});
    openMenu(m_window->findChild<QWidget *>(QStringLiteral("pushButton_Video")));
    QCOMPARE(calls(), QStringList{QStringLiteral("LoggingMessages.setEnabled|false")});
}

void TestNavigationMenu::noScaleEntryCheckedByDefault()
{
    MenuDriver menu({QStringLiteral("Change Scale Size")});
    openMenu(m_window->findChild<QWidget *>(QStringLiteral("pushButton_Video")));
    // The driver closes the submenu and the menu once the path is walked.
    const QHash<QString, bool> checked = menu.checkedStates();
    for (const QString &entry : {QStringLiteral("125%"), QStringLiteral("130%"), QStringLiteral("135%"), QStringLiteral("140%")}) {
        QVERIFY2(checked.contains(entry), qPrintable(entry));
        QVERIFY2(!checked.value(entry), qPrintable(entry));
    }
    QVERIFY(!checked.contains(QStringLiteral("100%")));
    QCOMPARE(m_window->size(), QSize(384, 128));
}

void TestNavigationMenu::choosingAScaleResizesAtOnce()
{
    auto *stack = m_window->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    stack->setCurrentWidget(m_window->findChild<QWidget *>(QStringLiteral("page_Formats")));
    QCOMPARE(m_window->size(), QSize(384, 256));
    {
        MenuDriver menu({QStringLiteral("Change Scale Size"), QStringLiteral("140%")});
        openMenu(stack, QPoint(stack->width() - 3, stack->height() - 3));
    }
    QCOMPARE(m_window->size(), QSize(537, 359));
    QCOMPARE(m_window->findChild<QPushButton *>(QStringLiteral("btn_Back_from_Formats"))->iconSize(), QSize(28, 28));
    QCOMPARE(m_window->scale(), 140u);
    QCOMPARE(m_info.settings().value(QStringLiteral("Scale/Val")).toUInt(), 140u);

    MenuDriver menu({QStringLiteral("Change Scale Size")});
    openMenu(stack, QPoint(stack->width() - 3, stack->height() - 3));
    QCOMPARE(menu.checkedStates().value(QStringLiteral("140%")), true);
    QCOMPARE(menu.checkedStates().value(QStringLiteral("125%")), false);

    // Later windows start at the chosen scale.
    cleanup();
    Navigation again(m_driver, m_info, m_plugins);
    again.showMainWindow();
    QCOMPARE(again.size(), QSize(537, 179));
}

void TestNavigationMenu::choosingTheCurrentScaleWritesNothing()
{
    {
        MenuDriver menu({QStringLiteral("Change Scale Size"), QStringLiteral("130%")});
        openMenu(m_window->findChild<QWidget *>(QStringLiteral("pushButton_Video")));
    }
    QCOMPARE(m_window->size(), QSize(499, 166));
    // A marker the window would overwrite if it wrote the same scale again.
    m_info.settings().setValue(QStringLiteral("Scale/Val"), QStringLiteral("marker"));
    {
        MenuDriver menu({QStringLiteral("Change Scale Size"), QStringLiteral("130%")});
        openMenu(m_window->findChild<QWidget *>(QStringLiteral("pushButton_Video")));
    }
    QCOMPARE(m_info.settings().value(QStringLiteral("Scale/Val")).toString(), QStringLiteral("marker"));
    QCOMPARE(m_window->size(), QSize(499, 166));
}

void TestNavigationMenu::showIdentifier()
{
    MenuDriver menu({QStringLiteral("Show UUID")});
    openMenu(m_window->findChild<QWidget *>(QStringLiteral("pushButton_Site")));
    QCOMPARE(calls(), QStringList{QStringLiteral("SysInfo.showIdentifier")});
}

void TestNavigationMenu::aboutAsksForTheSystemText()
{
    ModalCatcher boxes;
    MenuDriver menu({QStringLiteral("About")});
    openMenu(m_window->findChild<QWidget *>(QStringLiteral("pushButton_Video")));
    QCOMPARE(calls(), (QStringList{QStringLiteral("SysInfo.systemInformation"),
                                   QStringLiteral("About.showAbout|Recorded system|simple downloader from YouTube, full version is on Loomfield site")}));
    QCOMPARE(boxes.boxes().size(), 0);
}

void TestNavigationMenu::updateEntryConnectsOnce()
{
    ModalCatcher boxes;
    auto *stack = m_window->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    stack->setCurrentWidget(m_window->findChild<QWidget *>(QStringLiteral("page_URL")));
    QSignalSpy pages(stack, &QStackedWidget::currentChanged);
    {
        MenuDriver menu({QStringLiteral("Manually Update Software")});
        openMenu(stack, QPoint(stack->width() - 3, stack->height() - 3));
    }
    QCOMPARE(calls(), QStringList{QStringLiteral("Updater.updateNow|2023|25.0826")});
    // updateDone: the busy page, then the tool updates itself.
    QTRY_COMPARE(page()->objectName(), QStringLiteral("pageEmpty"));
    QVERIFY(boxes.waitForBoxes(1));
    QCOMPARE(toolUpdates(), QStringList{QStringLiteral("--update")});
    QCOMPARE(boxes.boxes().first().title, QStringLiteral("Success"));
    QCOMPARE(boxes.boxes().first().text, QStringLiteral("KestrelDownloader was successfully updated"));
    QCOMPARE(boxes.boxes().first().icon, QMessageBox::Information);
    QVERIFY(boxes.boxes().first().parent);
    QCOMPARE(page()->objectName(), QStringLiteral("page_URL"));

    {
        MenuDriver menu({QStringLiteral("Manually Update Software")});
        openMenu(stack, QPoint(stack->width() - 3, stack->height() - 3));
    }
    QVERIFY(boxes.waitForBoxes(2));
    QVERIFY(!happensWithin(500, [&] { return toolUpdates().size() > 2 || boxes.boxes().size() > 2; }));
    // One updateDone gives one tool update: the signal was connected once.
    QCOMPARE(toolUpdates().size(), 2);
    QCOMPARE(boxes.boxes().size(), 2);
}

void TestNavigationMenu::toolUpdateCrashIsReported()
{
    FakeTool::Behaviour crash;
    crash.signal = SIGSEGV;
    useScenario(FakeTool::Kind::update(), crash);
    ModalCatcher boxes;
    {
        MenuDriver menu({QStringLiteral("Manually Update Software")});
        openMenu(m_window->findChild<QWidget *>(QStringLiteral("pushButton_Video")));
    }
    QVERIFY(boxes.waitForBoxes(1));
    QCOMPARE(boxes.boxes().first().title, QStringLiteral("ERROR"));
    QCOMPARE(boxes.boxes().first().text, QStringLiteral("Unable to update. Please contact support"));
    QCOMPARE(boxes.boxes().first().icon, QMessageBox::Warning);
    QCOMPARE(page()->objectName(), QStringLiteral("page_Start"));
}

// The busy page covers the download while the tool updates itself beside it;
// the download's page comes back with the update's result, and the download
// still ends there.
void TestNavigationMenu::updateDuringADownloadReturnsToIt()
{
    FakeTool::Behaviour download;
    download.stdoutChunks = {QStringLiteral("[download]   3.0% of 10.00MiB"), QStringLiteral("\r[download]  45.3% of 10.00MiB"),
                             QStringLiteral("\r[download] 100% of 10.00MiB in 00:00:01\n")};
    download.pauseMs = 600;
    download.writeOutputFile = true;
    useScenario(FakeTool::Kind::download(), download);
    ModalCatcher boxes;
    auto *stack = m_window->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    stack->setCurrentWidget(m_window->findChild<QWidget *>(QStringLiteral("page_Download")));
    QSignalSpy video(&m_driver, &KestrelDownloader::haveVideo);
    emit m_window->requestVideo(22);
    QTRY_VERIFY(!FakeTool::readRecord(m_recordFile).isEmpty());

    {
        MenuDriver menu({QStringLiteral("Manually Update Software")});
        openMenu(stack, QPoint(stack->width() - 3, stack->height() - 3));
    }
    QTRY_COMPARE(page()->objectName(), QStringLiteral("pageEmpty"));
    QVERIFY(boxes.waitForBoxes(1));
    QCOMPARE(boxes.boxes().first().title, QStringLiteral("Success"));
    QCOMPARE(page()->objectName(), QStringLiteral("page_Download"));

    QVERIFY(video.wait());
    QCOMPARE(page()->objectName(), QStringLiteral("page_Download"));
    QVERIFY(m_window->findChild<QWidget *>(QStringLiteral("label_DL_OK"))->isVisible());
    QCOMPARE(toolUpdates(), QStringList{QStringLiteral("--update")});
}

KESTREL_TEST_MAIN(TestNavigationMenu)
#include "tst_navigationmenu.moc"
