// Walks the main window through every page and state with the fake
// downloader tool and photographs the screen with ImageMagick's "import" at
// each step, so the window can be looked at as a user sees it. Run it through
// scripts/screenshots.sh, which provides an X server and a throw-away home.

#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "plugins/plugins.h"
#include "ui/navigation.h"

#include "scenario.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace {

const QString listing = QStringLiteral(
    "[info] Available formats for abc:\n"
    "ID  EXT   RESOLUTION FPS |   FILESIZE   TBR PROTO | VCODEC        VBR ACODEC      ABR\n"
    "---------------------------------------------------------------------------------------\n"
    "140 m4a   audio only     |    2.91MiB  129k https | audio only        mp4a.40.2  129k\n"
    "160 mp4   256x144     30 |    1.92MiB   85k https | avc1.4d400c   85k video only\n"
    "133 mp4   426x240     30 |    4.21MiB  186k https | avc1.4d4015  186k video only\n"
    "18  mp4   640x360     30 |    9.35MiB  414k https | avc1.42001E       mp4a.40.2   96k\n"
    "135 mp4   854x480     30 |   15.80MiB  700k https | avc1.4d401e  700k video only\n"
    "22  mp4   1280x720    30 | ~ 28.11MiB 1245k https | avc1.64001F       mp4a.40.2  192k\n"
    "136 mp4   1280x720    30 |   31.40MiB 1390k https | avc1.4d401f 1390k video only\n"
    "248 webm  1920x1080   30 |   80.50MiB 3568k https | vp9         3568k video only\n"
    "137 mp4   1920x1080   30 |  107.20MiB 4752k https | avc1.640028 4752k video only\n");

class Photographer
{
public:
    Photographer(const QString &folder, unsigned int scale)
        : m_folder(folder)
        , m_scale(scale)
    {
    }

    bool take(const QString &name)
    {
        QTest::qWait(400);
        const QString file = QStringLiteral("%1/%2-%3-%4.png").arg(m_folder).arg(m_scale).arg(++m_count, 2, 10, QLatin1Char('0')).arg(name);
        QProcess import;
        import.start(QStringLiteral("import"), {QStringLiteral("-window"), QStringLiteral("root"), QStringLiteral("-trim"), file});
        const bool done = import.waitForFinished(20000) && import.exitCode() == 0;
        if (!done)
            qWarning("could not photograph %s", qPrintable(file));
        return done;
    }

private:
    QString m_folder;
    unsigned int m_scale;
    int m_count = 0;
};

FakeTool::Behaviour printing(const QString &text, int pauseMs = 0)
{
    FakeTool::Behaviour behaviour;
    behaviour.stdoutChunks = {QString(), text};
    behaviour.pauseMs = pauseMs;
    return behaviour;
}

bool walk(const QString &folder, unsigned int scale, const QString &scenarioFile)
{
    VideoInfo info;
    info.settings().setValue(QStringLiteral("Scale/Val"), scale);
    Photographer camera(folder, scale);
    KestrelDownloader driver(info);
    Plugins plugins;

    Navigation window(driver, info, plugins);
    window.showMainWindow();
    if (!QTest::qWaitForWindowExposed(&window))
        return false;
    auto *stack = window.findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    auto *edit = window.findChild<QLineEdit *>(QStringLiteral("editURL"));
    auto *table = window.findChild<QTableView *>(QStringLiteral("tableView"));

    camera.take(QStringLiteral("start"));
    QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("pushButton_Video")), Qt::LeftButton);
    QTest::keyClicks(edit, QStringLiteral("https://www.youtube.com/watch?v=dQw4w9WgXcQ"));
    camera.take(QStringLiteral("address"));

    FakeTool::Behaviour download = printing(QStringLiteral("[download]  45.3% of 107.20MiB at 1.00MiB/s ETA 01:02"));
    download.hang = true;
    FakeTool::Scenario()
        .set(FakeTool::Kind::metadata(), printing(QStringLiteral("Kestrel Test Clip (1080p)\n3:05\n"), 1500))
        .set(FakeTool::Kind::formats(), printing(listing))
        .set(FakeTool::Kind::download(), download)
        .writeTo(scenarioFile);
    QSignalSpy formats(&driver, &KestrelDownloader::haveFormats);
    QTest::keyClick(edit, Qt::Key_Return);
    camera.take(QStringLiteral("formats-busy"));
    if (!formats.wait(10000))
        return false;
    camera.take(QStringLiteral("formats"));

    QSignalSpy percent(&driver, &KestrelDownloader::percent);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(table->model()->index(0, 2)).center());
    if (!percent.wait(10000))
        return false;
    camera.take(QStringLiteral("downloading"));

    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("btnCancel")), Qt::LeftButton);
    failure.wait(10000);
    FakeTool::Scenario().set(FakeTool::Kind::download(), printing(QStringLiteral("[download] 100% of 9.35MiB\n"))).writeTo(scenarioFile);
    QSignalSpy video(&driver, &KestrelDownloader::haveVideo);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(table->model()->index(3, 2)).center());
    if (!video.wait(10000))
        return false;
    camera.take(QStringLiteral("completed"));

    QTimer::singleShot(0, &window, [&] {
        QTimer::singleShot(600, &window, [&] {
            camera.take(QStringLiteral("error-box"));
            QApplication::activeModalWidget()->close();
        });
        window.whenSomethingWrong(KestrelDownloader::metadataCrashed);
    });
    QTest::qWait(1500);

    stack->setCurrentWidget(window.findChild<QWidget *>(QStringLiteral("pageEmpty")));
    camera.take(QStringLiteral("busy"));
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("Kestrel Downloader"));
    QCoreApplication::setOrganizationName(QStringLiteral("Halvard Software"));
    QCoreApplication::setApplicationVersion(QStringLiteral("2.0.023"));
    QApplication application(argc, argv);
    const QString folder = QApplication::arguments().value(1, QStringLiteral("screenshots"));
    QDir().mkpath(folder);

    prepareOutputDir();
    QDir().mkpath(dataFolder());
    QFile::copy(FakeTool::builtToolPath(), dataFolder() + QStringLiteral("/kestreldl2"));
    const QString scenarioFile = dataFolder() + QStringLiteral("/scenario.json");
    qputenv(FakeTool::scenarioVariable(), scenarioFile.toLocal8Bit());

    for (unsigned int scale : {100u, 140u}) {
        if (!walk(folder, scale, scenarioFile))
            return 1;
    }
    return 0;
}
