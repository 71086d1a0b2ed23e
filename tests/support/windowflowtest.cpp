#include "windowflowtest.h"

#include "downloader/videoinfo.h"

#include <QApplication>
#include <QSettings>
#include <QTest>

void WindowFlowTest::initTestCase()
{
    WindowDriver::prepareTool(m_work.path());
}

void WindowFlowTest::init()
{
    m_info.settings().remove(QStringLiteral("Scale/Val"));
    remakeWindow();
}

void WindowFlowTest::cleanup()
{
    m_driver.reset();
    for (QWidget *topLevel : QApplication::topLevelWidgets())
        QVERIFY2(!topLevel->isVisible(), qPrintable(topLevel->objectName()));
}

void WindowFlowTest::remakeWindow()
{
    m_driver.reset();
    m_driver = std::make_unique<WindowDriver>(m_work.path(), m_info);
}

void WindowFlowTest::reachFormats(const QString &output)
{
    useScenario(FakeTool::Kind::metadata(), WindowDriver::printing(QStringLiteral("Kestrel Test Clip (1080p)\n3:05\n")));
    useScenario(FakeTool::Kind::formats(), WindowDriver::printing(output));
    QVERIFY(m_driver->reachFormats());
}

QString WindowFlowTest::fiveFormats()
{
    return QStringLiteral(
        "[info] Available formats for abc:\n"
        "ID  EXT  RESOLUTION FPS |   FILESIZE   TBR PROTO | VCODEC        VBR ACODEC      ABR\n"
        "--------------------------------------------------------------------------------------\n"
        "140 m4a  audio only     |    2.91MiB  129k https | audio only        mp4a.40.2  129k\n"
        "18  mp4  640x360     30 |    9.35MiB  414k https | avc1.42001E       mp4a.40.2   96k\n"
        "22  mp4  1280x720    30 | ~ 28.11MiB 1245k https | avc1.64001F       mp4a.40.2  192k\n"
        "137 mp4  1920x1080   30 |  107.20MiB 4752k https | avc1.640028  4752k video only\n"
        "248 webm 1920x1080   30 |   80.50MiB 3568k https | vp9          3568k video only\n");
}

FakeTool::Behaviour WindowFlowTest::hanging()
{
    FakeTool::Behaviour behaviour;
    behaviour.hang = true;
    return behaviour;
}
