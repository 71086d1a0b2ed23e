#include "navigation.h"
#include "ui_navigation.h"

#include "app/identity.h"
#include "app/settings.h"
#include "downloader/videoinfo.h"
#include "plugins/plugins.h"

#include <QCommandLineParser>
#include <QSettings>

Navigation::Navigation(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::Navigation>())
{
    ui->setupUi(this);
    applyFormFontWeights();

    scaleValue = VideoInfo::shared().settings().value(Settings::scaleKey(), 100).toUInt();

    // Until start-up has finished the window shows the busy page.
    returnPage = ui->pageEmpty;
    if (ui->stackedWidget->currentWidget() != ui->pageEmpty)
        ui->stackedWidget->setCurrentWidget(ui->pageEmpty);
}

Navigation::~Navigation()
{
    if (UpdateInterface *updater = updaterPlugin().instance())
        updater->finish();
}

void Navigation::setCommandLine(QCommandLineParser *parser)
{
    commandLine = parser;
}

unsigned int Navigation::scale() const
{
    return scaleValue;
}

// Designer files of this Qt version cannot express the semi-bold and medium
// weights of the download page's buttons.
void Navigation::applyFormFontWeights()
{
    QFont startOver = ui->btnStartOver->font();
    startOver.setWeight(QFont::DemiBold);
    ui->btnStartOver->setFont(startOver);

    QFont openFolder = ui->btnOpenFolder->font();
    openFolder.setWeight(QFont::Medium);
    ui->btnOpenFolder->setFont(openFolder);
}

void Navigation::showMainWindow()
{
    if (!isVisible())
        show();
    returnPage = ui->page_Start;
    ui->stackedWidget->setCurrentWidget(ui->page_Start);
    runCommandLineRequests();
}

void Navigation::runCommandLineRequests()
{
    if (!commandLine)
        return;

    if (commandLine->isSet(QStringLiteral("uid"))) {
        if (SysInfoInterface *sysInfo = sysInfoPlugin().instance())
            sysInfo->showIdentifier();
    }

    if (commandLine->isSet(QStringLiteral("update-as"))) {
        const QString version = commandLine->value(QStringLiteral("update-as"));
        if (version.isEmpty())
            commandLine->showHelp(0);
        qDebug().noquote() << "------------------";
        qDebug().noquote() << "Update as version:" << version;
        // Not a number, or too large for 32 bits, reads as 0.
        const int releaseNumber = version.toInt(nullptr, 10);
        if (UpdateInterface *updater = updaterPlugin().instance())
            updater->updateNow(releaseNumber, Identity::applicationVersion());
        return;
    }

    if (UpdateInterface *updater = updaterPlugin().instance())
        updater->checkForUpdate(Identity::updateReleaseNumber, Identity::buildDate());
}
