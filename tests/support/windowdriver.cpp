#include "windowdriver.h"

#include "base/platform.h"
#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "ui/navigation.h"

#include "modalcatcher.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>

namespace {

QString scenarioPath(const QString &workFolder)
{
    return workFolder + QStringLiteral("/scenario.json");
}

} // namespace

void WindowDriver::prepareTool(const QString &workFolder)
{
    prepareOutputDir();
    QDir().mkpath(dataFolder());
    const QString tool = dataFolder() + QLatin1Char('/') + Platform::toolFileName();
    QFile::remove(tool);
    if (!QFile::copy(FakeTool::builtToolPath(), tool))
        qFatal("cannot place the fake tool");
    qputenv(FakeTool::scenarioVariable(), scenarioPath(workFolder).toLocal8Bit());
}

WindowDriver::WindowDriver(const QString &workFolder, VideoInfo &info)
    : m_driver(info)
    , m_scenarioFile(scenarioPath(workFolder))
    , m_recordFile(workFolder + QStringLiteral("/record.jsonl"))
{
    QFile::remove(m_recordFile);
    m_scenario.record(m_recordFile);
    m_scenario.writeTo(m_scenarioFile);
    m_window = std::make_unique<Navigation>(m_driver, info, m_plugins);
    m_window->showMainWindow();
    if (!QTest::qWaitForWindowExposed(m_window.get()))
        qFatal("the window was not shown");
}

WindowDriver::~WindowDriver()
{
    m_driver.terminateTool(true);
    ModalCatcher catcher;
    if (!waitForRunsToEnd())
        qWarning("a run of the tool outlived its window");
}

bool WindowDriver::waitForRunsToEnd()
{
    // A run's process object goes only after its end was handled, box included.
    return QTest::qWaitFor([] { return KestrelDownloader::processObjectCount() == 0; }, 10000);
}

void WindowDriver::play(const QString &kind, const FakeTool::Behaviour &behaviour)
{
    m_scenario.set(kind, behaviour);
    if (!m_scenario.writeTo(m_scenarioFile))
        qFatal("cannot write the scenario");
}

QString WindowDriver::currentPage() const
{
    return find<QStackedWidget>("stackedWidget")->currentWidget()->objectName();
}

void WindowDriver::enterAddress(const QString &text)
{
    if (currentPage() == QStringLiteral("page_Start"))
        QTest::mouseClick(find<QPushButton>("pushButton_Video"), Qt::LeftButton);
    auto *edit = find<QLineEdit>("editURL");
    edit->clear();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

void WindowDriver::setAddress(const QString &text)
{
    if (currentPage() == QStringLiteral("page_Start"))
        QTest::mouseClick(find<QPushButton>("pushButton_Video"), Qt::LeftButton);
    auto *edit = find<QLineEdit>("editURL");
    edit->setText(text);
    QTest::keyClick(edit, Qt::Key_Return);
}

bool WindowDriver::reachFormats(const QString &address, bool typed, int timeoutMs)
{
    QSignalSpy formats(&m_driver, &KestrelDownloader::haveFormats);
    if (typed)
        enterAddress(address);
    else
        setAddress(address);
    return formats.wait(timeoutMs);
}

void WindowDriver::pickRow(int row, int column)
{
    auto *table = find<QTableView>("tableView");
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(table->model()->index(row, column)).center());
}

FakeTool::Behaviour WindowDriver::printing(const QString &text)
{
    FakeTool::Behaviour behaviour;
    behaviour.stdoutChunks = {text};
    return behaviour;
}

QString WindowDriver::sampleListing()
{
    return QStringLiteral("[info] Available formats for abc:\n"
                          "ID  EXT  RESOLUTION FPS |   FILESIZE   TBR PROTO | VCODEC        VBR ACODEC\n"
                          "--------------------------------------------------------------------------\n"
                          "140 m4a  audio only     |    2.91MiB  129k https | audio only        mp4a.40.2\n"
                          "18  mp4  640x360     30 |    9.35MiB  414k https | avc1.42001E       mp4a.40.2\n"
                          "22  mp4  1280x720    30 | ~ 28.11MiB 1245k https | avc1.64001F       mp4a.40.2\n"
                          "137 mp4  1920x1080   30 |  107.20MiB 4752k https | avc1.640028  4752k video only\n");
}
