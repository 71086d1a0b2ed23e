// Where start-up time goes. kestrel_bench_startup runs this program many
// times and prints the medians of what it reports.
//
//   --app    the application's entry sequence (as in src/app/startup.cpp),
//            with a clock reading between the steps
//   --bare   the bare dialog's sequence (as in baredialog.cpp), the same way
//   --icons  only a QApplication and the button images of the window's form
//            loaded the way its generated code loads them (QIcon::addFile):
//            the first time in a process, and again
//   --icons-png the same, with the images copied to files named *.png
//   --window the parts of building the window, after Qt's one-time set-up:
//            the bare dialog shown first (style, fonts), then the window's
//            form alone (setupUi on a plain dialog), its images alone, and
//            the whole window (Navigation's constructor), and then the first
//            sizing of its three widgets with fonts of their own
//
// --started-ns N is the CLOCK_MONOTONIC time at which the parent started this
// process; the time from there to main() is the launch (exec, loading and
// relocating the libraries, static initialisation). The last value printed,
// "end", lets the parent work out the time from leaving main() to the end of
// the process. Everything goes to standard output as one line of name=value
// pairs in microseconds, followed by counts ("images=6").
//
// The --app sequence is a copy of qMain()'s; keep them alike. The parent
// prints this program's total beside the real executable's, which shows when
// they have drifted apart.

#include "app/composition.h"
#include "base/identity.h"
#include "downloader/filesetup.h"
#include "plugins/plugins.h"
#include "ui/navigation.h"
#include "ui_navigation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QImageReader>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

namespace {

qint64 nowNs()
{
    timespec now;
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1000000000 + now.tv_nsec;
}

class Phases
{
public:
    explicit Phases(qint64 startedNs)
        : m_last(nowNs())
    {
        if (startedNs > 0)
            m_phases.emplace_back("launch", m_last - startedNs);
    }

    void mark(const char *name)
    {
        const qint64 now = nowNs();
        m_phases.emplace_back(name, now - m_last);
        m_last = now;
    }

    // A plain number, printed as it is.
    void count(const char *name, qsizetype value) { m_counts.emplace_back(name, value); }

    void print() const
    {
        for (const auto &[name, ns] : m_phases)
            std::printf("%s=%.1f ", name, double(ns) / 1e3);
        for (const auto &[name, value] : m_counts)
            std::printf("%s=%lld ", name, static_cast<long long>(value));
        std::printf("end=%lld\n", static_cast<long long>(nowNs() / 1000));
        std::fflush(stdout);
    }

private:
    qint64 m_last;
    std::vector<std::pair<const char *, qint64>> m_phases;
    std::vector<std::pair<const char *, qsizetype>> m_counts;
};

QCommandLineParser *createCommandLine()
{
    auto *parser = new QCommandLineParser;
    parser->addHelpOption();
    parser->addVersionOption();
    parser->addOption(
        { QStringLiteral("update-as"), QStringLiteral("update this app as some version"), QStringLiteral("version") });
    parser->addOption({ QStringLiteral("uid"), QStringLiteral("show UID") });
    return parser;
}

int runApp(int argc, char **argv, Phases &phases)
{
    QCoreApplication::setApplicationName(Identity::applicationName());
    QCoreApplication::setOrganizationName(Identity::organisationName());
    QCoreApplication::setApplicationVersion(Identity::applicationVersion());
    // The program's own options are not the application's.
    int appArgc = 1;
    QApplication application(appArgc, argv);
    Q_UNUSED(argc);
    phases.mark("qapplication");

    if (LoggingInterface *logging = Composition::plugins().logging().instance())
        logging->setUp(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation), QString());
    if (SysInfoInterface *sysInfo = Composition::plugins().sysInfo().instance())
        sysInfo->setApplicationInfo(Identity::applicationVersion(), Identity::buildDate(), 0, 1);
    phases.mark("plugins");

    checkAndSetupFiles(Composition::videoRecord());
    phases.mark("files");

    int exitCode = 0;
    {
        Navigation window(Composition::driver(), Composition::videoRecord(), Composition::plugins());
        phases.mark("window");
        QCommandLineParser *commandLine = createCommandLine();
        window.setCommandLine(commandLine);
        commandLine->process(QStringList { QCoreApplication::applicationFilePath() });
        // Three values for two placeholders, exactly as the entry function has
        // it, warning included.
        window.setWindowTitle(QStringLiteral("%1 %2").arg(
            Identity::applicationName(), Identity::applicationVersion(), Identity::buildDate()));
        phases.mark("setup");

        QTimer::singleShot(0, &window, [&window, &phases] {
            phases.mark("loopstart");
            window.showMainWindow(); // shows the window, then the updater check quits
            phases.mark("show");
        });
        exitCode = QApplication::exec();
        phases.mark("events");
    }
    phases.mark("teardown");
    return exitCode;
}

int runBare(int argc, char **argv, Phases &phases)
{
    QApplication application(argc, argv);
    phases.mark("qapplication");
    int exitCode = 0;
    {
        QDialog dialog;
        auto *layout = new QVBoxLayout(&dialog);
        layout->addWidget(new QPushButton(QStringLiteral("OK"), &dialog));
        phases.mark("window");
        QTimer::singleShot(0, &dialog, [&dialog, &phases] {
            phases.mark("loopstart");
            dialog.show();
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
            phases.mark("show");
        });
        exitCode = QApplication::exec();
        phases.mark("events");
    }
    phases.mark("teardown");
    return exitCode;
}

struct FormIcon
{
    QString file;
    QSize shownSize; // the iconSize the form gives the button
};

// The icon files named in the window's form, in its order, with the size
// each button shows its icon at.
QList<FormIcon> formIcons()
{
    QFile form(QStringLiteral(KESTREL_NAVIGATION_FORM));
    if (!form.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression iconAndSize(
        QStringLiteral("<normaloff>([^<]+)</normaloff>.*?<property name=\"iconSize\">\\s*<size>\\s*"
                       "<width>(\\d+)</width>\\s*<height>(\\d+)</height>"),
        QRegularExpression::DotMatchesEverythingOption);
    QList<FormIcon> icons;
    QRegularExpressionMatchIterator matches = iconAndSize.globalMatch(QString::fromUtf8(form.readAll()));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        icons.append({ match.captured(1), QSize(match.captured(2).toInt(), match.captured(3).toInt()) });
    }
    return icons;
}

bool loadIcons(const QStringList &files)
{
    for (const QString &file : files) {
        QIcon icon;
        icon.addFile(file, QSize(), QIcon::Normal, QIcon::Off);
        if (icon.availableSizes().isEmpty()) {
            std::fprintf(stderr, "icon %s did not load\n", qPrintable(file));
            return false;
        }
    }
    return true;
}

// Times the form's images as the form loads them, the first time in the
// process and again. With pngSuffix, the same images are first copied (outside
// the clock) to files named "<name>.png": the form's names have no suffix, so
// QIcon::addFile asks the MIME database what they are and QImageReader asks
// every installed image-format plug-in before its built-in PNG reader; a
// suffix skips both.
int runIcons(int argc, char **argv, Phases &phases, bool pngSuffix)
{
    QApplication application(argc, argv);
    const QList<FormIcon> icons = formIcons();
    if (icons.isEmpty()) {
        std::fprintf(stderr, "no icons found in %s\n", KESTREL_NAVIGATION_FORM);
        return 1;
    }
    QTemporaryDir folder;
    QStringList files;
    qint64 pixels = 0;
    for (const FormIcon &icon : icons) {
        files << icon.file;
        if (pngSuffix) {
            files.last() = folder.filePath(QStringLiteral("icon%1.png").arg(files.size()));
            if (!QFile::copy(icon.file, files.last()))
                return 1;
        }
        QImageReader reader(icon.file, "png");
        pixels += qint64(reader.size().width()) * reader.size().height();
    }
    phases.mark("prepare");
    if (!loadIcons(files))
        return 1;
    phases.mark("first");
    if (!loadIcons(files))
        return 1;
    phases.mark("again");
    phases.count("images", icons.size());
    phases.count("pixels", pixels);
    return 0;
}

// Times the first sizing of the three widgets to which the window gives fonts
// of their own: Qt loads a font's face only when a size is first asked for,
// which happens for every page when the window is laid out. For comparison,
// labels with the same texts in the default font are sized first.
bool sizeFontedWidgets(const Navigation &window, Phases &phases)
{
    QList<QWidget *> fonted;
    for (const char *name : { "label_DL_OK", "btnStartOver", "btnOpenFolder" }) {
        fonted << window.findChild<QWidget *>(QLatin1String(name));
        if (!fonted.last())
            return false;
    }
    for (const QWidget *widget : std::as_const(fonted)) {
        const QString text = widget->property("text").toString();
        QLabel(text).sizeHint();
    }
    phases.mark("defaultfont");
    for (const QWidget *widget : std::as_const(fonted))
        widget->sizeHint();
    phases.mark("formfonts");
    return true;
}

// Splits the window's cost into its parts once Qt has paid for what any first
// window pays (the bare dialog shown first). Needs the sandboxed folders of
// the parent, as the window reads the settings.
int runWindow(int argc, char **argv, Phases &phases)
{
    QCoreApplication::setApplicationName(Identity::applicationName());
    QCoreApplication::setOrganizationName(Identity::organisationName());
    QApplication application(argc, argv);
    const QList<FormIcon> icons = formIcons();
    QStringList files;
    for (const FormIcon &icon : icons)
        files << icon.file;
    if (files.isEmpty())
        return 1;
    phases.mark("qapplication");

    QDialog bare;
    auto *layout = new QVBoxLayout(&bare);
    layout->addWidget(new QPushButton(QStringLiteral("OK"), &bare));
    bare.show();
    QCoreApplication::processEvents();
    phases.mark("qtsetup");

    {
        QDialog plain;
        Ui::Navigation form;
        form.setupUi(&plain);
        phases.mark("form");
    }
    phases.mark("formdelete");
    if (!loadIcons(files))
        return 1;
    phases.mark("formimages");
    {
        Navigation window(Composition::driver(), Composition::videoRecord(), Composition::plugins());
        phases.mark("navigation");
        if (!sizeFontedWidgets(window, phases))
            return 1;
    }
    phases.mark("navigationdelete");
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    qint64 startedNs = 0;
    QByteArray mode;
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == "--started-ns" && i + 1 < argc)
            startedNs = QByteArray(argv[++i]).toLongLong();
        else if (argument.startsWith("--"))
            mode = argument;
    }
    Phases phases(startedNs);

    int exitCode = 1;
    if (mode == "--app")
        exitCode = runApp(argc, argv, phases);
    else if (mode == "--bare")
        exitCode = runBare(argc, argv, phases);
    else if (mode == "--icons")
        exitCode = runIcons(argc, argv, phases, false);
    else if (mode == "--icons-png")
        exitCode = runIcons(argc, argv, phases, true);
    else if (mode == "--window")
        exitCode = runWindow(argc, argv, phases);
    else
        std::fprintf(stderr, "usage: %s --app|--bare|--icons|--icons-png|--window [--started-ns N]\n", argv[0]);
    if (exitCode == 0)
        phases.print();
    return exitCode;
}
