#include "startup.h"

#include "app/composition.h"
#include "base/identity.h"
#include "base/log.h"
#include "base/settings.h"
#include "base/translations.h"
#include "downloader/filesetup.h"
#include "plugins/plugins.h"
#include "ui/navigation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QLocale>
#include <QStandardPaths>
#include <QTimer>

namespace {

QCommandLineParser *createCommandLine()
{
    // Kept for the whole run: the window reads it after the event loop has started.
    auto *parser = new QCommandLineParser;
    parser->addHelpOption();
    parser->addVersionOption();
    parser->addOption({QStringLiteral("update-as"), QStringLiteral("update this app as some version"),
                       QStringLiteral("version")});
    parser->addOption({QStringLiteral("uid"), QStringLiteral("show UID")});
    return parser;
}

} // namespace

int qMain(int argc, char **argv)
{
    // The per-user folder names are made of these, so they come first.
    QCoreApplication::setApplicationName(Identity::applicationName());
    QCoreApplication::setOrganizationName(Identity::organisationName());
    QCoreApplication::setApplicationVersion(Identity::applicationVersion());

    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(Identity::desktopEntryId());

    // For the tool launcher of every run: it ends with the application, and
    // takes fresh copies of itself and ffmpeg from beside the executable.
    qputenv("KESTREL_APP_PID", QByteArray::number(QCoreApplication::applicationPid()));
    qputenv("KESTREL_APP_DIR", QFile::encodeName(QCoreApplication::applicationDirPath()));

    if (LoggingInterface *logging = Composition::plugins().logging().instance())
        logging->setUp(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation), Settings::fileName());
    if (SysInfoInterface *sysInfo = Composition::plugins().sysInfo().instance())
        sysInfo->setApplicationInfo(Identity::applicationVersion(), Identity::buildDate(), 0, 1);

    checkAndSetupFiles(Composition::videoRecord());

    // The form takes its texts when it is built. Qt's own catalogue comes
    // after the command line, whose --help and error texts are Qt's and stay
    // English for scripts and support.
    Translations translations(Translations::folderBesideProgram());
    const QString language = translations.languageFor(QLocale::system().uiLanguages());
    translations.installProgramCatalogue(language);

    Navigation window(Composition::driver(), Composition::videoRecord(), Composition::plugins());
    QCommandLineParser *commandLine = createCommandLine();
    window.setCommandLine(commandLine);
    commandLine->process(application);
    translations.installQtCatalogue(language, Translations::qtCatalogueFolders());

    window.setWindowTitle(QStringLiteral("%1 %2").arg(Identity::applicationName(), Identity::applicationVersion(), Identity::buildDate()));

    QTimer::singleShot(0, &window, &Navigation::showMainWindow);

    const int exitCode = QApplication::exec();

    qInfo().noquote() << LOG_LOCATION("int qMain(int, char**)") << "DONE:" << exitCode << QStringLiteral("\n");

    if (LoggingInterface *logging = Composition::plugins().logging().instance())
        logging->shutDown();

    return exitCode;
}
