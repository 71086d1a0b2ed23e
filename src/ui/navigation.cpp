#include "navigation.h"
#include "ui_navigation.h"

#include "app/filesetup.h"
#include "app/identity.h"
#include "app/images.h"
#include "app/log.h"
#include "app/platform.h"
#include "app/settings.h"
#include "downloader/videoinfo.h"
#include "formats/formattablemodel.h"
#include "plugins/plugins.h"
#include "ui/keyboardactivation.h"
#include "ui/pagesizes.h"
#include "ui/rowfitter.h"
#include "ui/visibility.h"

#include <QCommandLineParser>
#include <QDesktopServices>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QSettings>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace {

const QString tableStyleSheet = QStringLiteral("\n"
                                               "        QTableView { font-size: %1px; }\n"
                                               "        QTableView::item { border: none; }\n"
                                               "        QTableView::item:selected {\n"
                                               "            background-color: #D3D3D3;\n"
                                               "            color: black;\n"
                                               "        }");

// The label shows only ASCII letters, blanks and . , : ? ! of a title.
QString displayTitle(const QString &title)
{
    static const QRegularExpression notShown(QStringLiteral("[^a-zA-Z .,:?!]"));
    return QString(title).remove(notShown).simplified();
}

QString displayDuration(const QTime &duration)
{
    if (duration.hour() >= 1)
        return duration.toString(QStringLiteral("| H:mm:ss"));
    if (duration.minute() > 0)
        return duration.toString(QStringLiteral("| m:ss"));
    return QStringLiteral("| %1 sec.").arg(duration.second());
}

QString failureMessage(KestrelDownloader::errorType code)
{
    switch (code) {
    case KestrelDownloader::metadataTooFewLines:
    case KestrelDownloader::metadataBadDuration:
        return QStringLiteral("Cannot request metadata");
    case KestrelDownloader::metadataCrashed:
        return QStringLiteral("crash exit on metadata request");
    case KestrelDownloader::formatsCrashed:
        return QStringLiteral("crash exit on formats request");
    case KestrelDownloader::downloadCrashed:
        return QStringLiteral("crash exit at downloading process");
    case KestrelDownloader::formatCountError:
        return QStringLiteral("format count error");
    case KestrelDownloader::toolNotStarted:
        return QStringLiteral("cannot start the downloader tool");
    default:
        return QStringLiteral("indefinite");
    }
}

// Sets a table's model and lets go of the selection models the view and its
// headers made for the models before: Qt keeps replaced ones as children,
// which would add up over many lists.
void setTableModel(QTableView *table, QAbstractItemModel *model)
{
    const QList<QWidget *> owners{table, table->horizontalHeader(), table->verticalHeader()};
    QList<QItemSelectionModel *> replaced;
    for (QWidget *owner : owners)
        replaced << owner->findChildren<QItemSelectionModel *>(Qt::FindDirectChildrenOnly);
    table->setModel(model);
    for (QItemSelectionModel *selection : std::as_const(replaced)) {
        if (selection != table->selectionModel() && selection != table->horizontalHeader()->selectionModel()
            && selection != table->verticalHeader()->selectionModel())
            delete selection;
    }
}

// Gives a button a fixed size with an icon of the same size, unless it
// already has exactly that size.
void fixButtonSize(QWidget *button, QSize size)
{
    if (button->geometry().size() == size)
        return;
    if (auto *pushButton = qobject_cast<QAbstractButton *>(button))
        pushButton->setIconSize(size);
    button->setMinimumSize(size);
    button->setMaximumSize(size);
}

// The display scale kept in the settings, 100 when there is none. A value
// that is not a sensible percentage (a damaged file, a hand edit) would
// shrink the window to nothing or blow it up; it is ignored.
unsigned int storedScale()
{
    const QVariant stored = VideoInfo::shared().settings().value(Settings::scaleKey(), 100);
    bool isNumber = false;
    const unsigned int value = stored.toUInt(&isNumber);
    if (isNumber && value >= 25 && value <= 400)
        return value;
    LOG_WARNING("unsigned int storedScale()") << "ignoring display scale" << stored.toString();
    return 100;
}

} // namespace

Navigation::Navigation(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::Navigation>())
    , driver(KestrelDownloader::shared())
{
    ui->setupUi(this);
    applyFormFontWeights();
    // Qt gives the form's images their "@2x" files itself when a screen
    // denser than 1 is present at start.
    denseImages = qApp->devicePixelRatio() > 1.0;
    rowFitter = new RowFitter(ui->tableView);

    scaleValue = storedScale();
    activateMenuActions();
    connectWindow();
    connectKeyboard();
    connectDriver();

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

// Loading the "@2x" files costs the first frame a few milliseconds, so
// without a dense screen at start they are added only when the window comes
// onto one later.
void Navigation::prepareImagesFor(qreal devicePixelRatio)
{
    if (devicePixelRatio <= 1.0 || denseImages)
        return;
    denseImages = true;
    const std::pair<QAbstractButton *, QString> buttons[] = {
        {ui->pushButton_Video, QStringLiteral(":/img/btn_kestreldl")},
        {ui->pushButton_Site, QStringLiteral(":/img/btn_site")},
        {ui->btn_Back_from_Process, QStringLiteral(":/img/btn_back_big")},
        {ui->pushButton_Process, QStringLiteral(":/img/btn_process")},
        {ui->btn_Back_from_Formats, QStringLiteral(":/img/btn_back_small")},
        {ui->btn_Back_Last, QStringLiteral(":/img/btn_back_small")},
    };
    for (const auto &[button, resource] : buttons)
        button->setIcon(Images::icon(resource));
}

void Navigation::connectWindow()
{
    connect(ui->pushButton_Video, &QPushButton::clicked, this, &Navigation::whenProcessButtonClicked);
    connect(ui->pushButton_Site, &QPushButton::clicked, this,
            [] { QDesktopServices::openUrl(QUrl(Identity::sisterSiteAddress())); });
    connect(ui->editURL, &QLineEdit::returnPressed, this, &Navigation::whenCallProcess);
    connect(ui->pushButton_Process, &QPushButton::clicked, this, &Navigation::whenCallProcess);
    // clicked(false) of this plain button makes the kill a user's cancel.
    connect(ui->btnCancel, &QPushButton::clicked, &driver, &KestrelDownloader::terminateTool);
    connect(ui->stackedWidget, &QStackedWidget::currentChanged, this, &Navigation::whenStackedPageChanged);

    connect(ui->btn_Back_from_Process, &QPushButton::clicked, this,
            [this] { ui->stackedWidget->setCurrentWidget(returnPage); });
    connect(ui->btn_Back_from_Formats, &QPushButton::clicked, this, [this] {
        ui->stackedWidget->setCurrentWidget(ui->page_URL);
        driver.terminateTool(true);
    });
    connect(ui->btn_Back_Last, &QPushButton::clicked, this,
            [this] { ui->stackedWidget->setCurrentWidget(ui->page_Formats); });
    connect(ui->btnStartOver, &QPushButton::clicked, this, [this] { ui->stackedWidget->setCurrentWidget(returnPage); });
    connect(ui->btnOpenFolder, &QPushButton::clicked, this,
            [] { QDesktopServices::openUrl(Platform::folderUrl(outputFolder())); });
}

void Navigation::connectKeyboard()
{
    auto *keyboard = new KeyboardActivation(this);
    for (QPushButton *button : findChildren<QPushButton *>())
        keyboard->watchButton(button);
    keyboard->watchTable(ui->tableView);
    connect(keyboard, &KeyboardActivation::rowChosen, this, &Navigation::whenFormatPicked);
}

void Navigation::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel)) {
        goBackOrCancel();
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

// The page's own way back: the back button, or Cancel while a download runs.
// Pages without one ignore the key.
void Navigation::goBackOrCancel()
{
    QWidget *page = ui->stackedWidget->currentWidget();
    QAbstractButton *back = nullptr;
    if (page == ui->page_URL)
        back = ui->btn_Back_from_Process;
    else if (page == ui->page_Formats)
        back = ui->btn_Back_from_Formats;
    else if (page == ui->page_Download)
        back = ui->btnCancel->isVisible() ? ui->btnCancel : ui->btn_Back_Last;
    if (back && back->isVisible())
        back->click();
}

void Navigation::contextMenuEvent(QContextMenuEvent *event)
{
    // The mouse opens the menu through the event filter.
    if (event->reason() != QContextMenuEvent::Keyboard || !contextMenu) {
        QDialog::contextMenuEvent(event);
        return;
    }
    const QWidget *anchor = focusWidget() ? focusWidget() : ui->stackedWidget;
    contextMenu->exec(anchor->mapToGlobal(anchor->rect().center()));
}

void Navigation::connectDriver()
{
    connect(&driver, &KestrelDownloader::somethingWrong, this, &Navigation::whenSomethingWrong);
    connect(&driver, &KestrelDownloader::haveFormats, this, &Navigation::whenFormatsReceived);
    connect(&driver, &KestrelDownloader::haveMetadata, this, &Navigation::showMetadata);
    connect(&driver, &KestrelDownloader::haveVideo, this, &Navigation::showDownloadCompleted);
    connect(&driver, &KestrelDownloader::percent, this, &Navigation::showProgress);
    connect(&driver, &KestrelDownloader::resultUpdateBinary, this, &Navigation::whenToolUpdated);
    connect(this, &Navigation::updateKestrelDL, &driver, &KestrelDownloader::updateBinary);
    connect(this, &Navigation::requestVideo, &driver, &KestrelDownloader::requestVideo);
    connect(this, &Navigation::requestMetadata, &driver, &KestrelDownloader::requestMetadata);
}

void Navigation::showMainWindow()
{
    if (!isVisible()) {
        show();
        connect(windowHandle(), &QWindow::screenChanged, this,
                [this](QScreen *screen) { prepareImagesFor(screen->devicePixelRatio()); });
    }
    returnPage = ui->page_Start;
    ui->stackedWidget->setCurrentWidget(ui->page_Start);
    // The busy page had nothing to focus; the keyboard starts on the video button.
    if (!focusWidget() || !focusWidget()->isVisible())
        ui->pushButton_Video->setFocus(Qt::OtherFocusReason);
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

void Navigation::whenProcessButtonClicked()
{
    ui->stackedWidget->setCurrentWidget(ui->page_URL);
    ui->editURL->setFocus(Qt::OtherFocusReason);
}

void Navigation::whenCallProcess()
{
    if (!driver.setUrl(ui->editURL->text())) {
        QMessageBox::warning(this, QStringLiteral("WARNING"),
                             QStringLiteral("WARNING: You must provide at least some valid YouTube URL to proceed"));
        return;
    }
    setTableModel(ui->tableView, nullptr);
    ui->labelTime->setText(QStringLiteral("00:00:00"));
    ui->labelTitle->setText(QStringLiteral("Title"));
    ui->progressBar->show();
    ui->stackedWidget->setCurrentWidget(ui->page_Formats);
    ui->btn_Back_from_Formats->setFocus(Qt::OtherFocusReason);
    emit requestMetadata();
}

void Navigation::showMetadata()
{
    const VideoInfo &info = VideoInfo::shared();
    ui->labelTitle->setText(displayTitle(info.title));
    ui->labelTime->setText(displayDuration(info.duration));
}

void Navigation::whenFormatsReceived()
{
    LOG_ENTRY("void Navigation::whenFormatsReceived()");
    ui->progressBar->hide();

    // Earlier models stay children of the view.
    auto *model = new FormatTableModel(ui->tableView);
    model->setSource(&driver.formats, &driver.viewOrder);

    // Handlers of an earlier list must not pile up.
    ui->tableView->disconnect();
    setTableModel(ui->tableView, model);

    QHeaderView *columns = ui->tableView->horizontalHeader();
    columns->setSectionResizeMode(FormatTableModel::TypeColumn, QHeaderView::ResizeToContents);
    columns->setSectionResizeMode(FormatTableModel::ResolutionColumn, QHeaderView::Stretch);
    columns->setSectionResizeMode(FormatTableModel::SizeColumn, QHeaderView::ResizeToContents);
    columns->setSectionResizeMode(FormatTableModel::DownloadColumn, QHeaderView::ResizeToContents);
    ui->tableView->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    ui->tableView->hideColumn(FormatTableModel::IdColumn);

    // The model keeps its order; this only puts the sort mark on "Resolution".
    ui->tableView->setSortingEnabled(true);
    ui->tableView->sortByColumn(FormatTableModel::ResolutionColumn, Qt::AscendingOrder);

    ui->tableView->setSelectionBehavior(QAbstractItemView::SelectRows);
    ui->tableView->setSelectionMode(QAbstractItemView::SingleSelection);
    ui->tableView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    ui->tableView->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Qt keeps some of what each setStyleSheet() call builds, so the same
    // text is not set again for every list.
    const QString styleSheet = tableStyleSheet.arg(int(scaleValue * 0.14));
    if (ui->tableView->styleSheet() != styleSheet)
        ui->tableView->setStyleSheet(styleSheet);

    rowFitter->fit();

    connect(ui->tableView, &QTableView::clicked, this, &Navigation::whenFormatPicked);
    connect(ui->tableView, &QTableView::doubleClicked, this, &Navigation::whenFormatPicked);
}

void Navigation::whenFormatPicked(const QModelIndex &index)
{
    if (!index.isValid() || index.row() < 0 || index.column() < 0 || !index.model()) {
        LOG_ERROR("void Navigation::whenFormatPicked(const QModelIndex&)") << "index invalid:" << index;
        return;
    }
    // The click of a double click has already started this download.
    if (ui->stackedWidget->currentWidget() == ui->page_Download)
        return;

    ui->stackedWidget->setCurrentWidget(ui->page_Download);
    setVisibility({ui->btn_Back_Last, ui->label_DL_OK, ui->btnStartOver, ui->btnOpenFolder}, Visibility::Hide);
    setVisibility({ui->label_DL, ui->btnCancel}, Visibility::Show);
    ui->label_TitleDownload->show();
    ui->label_TitleDownload->setText(ui->labelTitle->text());
    ui->progressBarDL->show();
    ui->progressBarDL->setValue(0);
    ui->progressBarDL->setMaximum(0);

    const QModelIndex idIndex =
        index.column() == FormatTableModel::IdColumn ? index : index.model()->index(index.row(), FormatTableModel::IdColumn);
    const unsigned int formatId = idIndex.data(Qt::DisplayRole).toUInt();
    qDebug().noquote() << QStringLiteral("Requesting video with FormatID: %1").arg(formatId);
    emit requestVideo(formatId);
}

void Navigation::showProgress(int value)
{
    // Past 99 the tool merges or finishes: a busy bar, not a full one.
    if (value > 99) {
        ui->progressBarDL->setValue(0);
        ui->progressBarDL->setMaximum(0);
        return;
    }
    ui->progressBarDL->setMaximum(100);
    ui->progressBarDL->setValue(value);
}

void Navigation::showDownloadCompleted()
{
    LOG_ENTRY("Navigation::connectDriver()::<lambda()>");
    setVisibility({ui->btnCancel, ui->progressBarDL, ui->label_TitleDownload, ui->label_DL}, Visibility::Hide);
    setVisibility({ui->label_DL_OK, ui->btnStartOver, ui->btn_Back_Last, ui->btnOpenFolder}, Visibility::Show);
    // The focus went with the hidden Cancel button.
    if (ui->stackedWidget->currentWidget() == ui->page_Download && (!focusWidget() || !focusWidget()->isVisible()))
        ui->btnOpenFolder->setFocus(Qt::OtherFocusReason);
}

void Navigation::whenSomethingWrong(KestrelDownloader::errorType code)
{
    ui->progressBar->hide();
    switch (code) {
    case KestrelDownloader::metadataCancelled:
    case KestrelDownloader::formatsCancelled:
        ui->stackedWidget->setCurrentWidget(ui->page_URL);
        return;
    case KestrelDownloader::downloadCancelled:
        ui->stackedWidget->setCurrentWidget(ui->page_Formats);
        return;
    default:
        break;
    }
    QMessageBox box(QMessageBox::Critical, QStringLiteral("ERROR"),
                    QStringLiteral("<h3>ERROR:</h3>%1<hr><i>Code: #0x%2</i>").arg(failureMessage(code)).arg(int(code), 0, 16),
                    QMessageBox::Ok, this);
    box.setTextFormat(Qt::RichText);
    box.exec();
}

void Navigation::whenStackedPageChanged(int index)
{
    using namespace PageSizes;
    QWidget *page = ui->stackedWidget->widget(index);
    double height = otherPageHeight;
    if (page == ui->page_Start) {
        fixButtonSize(ui->pushButton_Video, scaled(videoButton, scaleValue));
        fixButtonSize(ui->pushButton_Site, scaled(siteButton, scaleValue));
    } else if (page == ui->page_URL) {
        fixButtonSize(ui->btn_Back_from_Process, scaled(backFromProcessButton, scaleValue));
        fixButtonSize(ui->pushButton_Process, scaled(processButton, scaleValue));
    } else if (page == ui->page_Formats) {
        fixButtonSize(ui->btn_Back_from_Formats, scaled(smallBackButton, scaleValue));
        height = formatsPageHeight;
    } else if (page == ui->page_Download) {
        fixButtonSize(ui->btn_Back_Last, scaled(smallBackButton, scaleValue));
        height = downloadPageHeight;
    } else if (page != ui->pageEmpty) {
        return;
    }

    const QSize window = scaled({windowWidth, height}, scaleValue);
    if (maximumSize() != window)
        setFixedSize(window);
}

void Navigation::whenToolUpdated(QProcess::ExitStatus status)
{
    LOG_ENTRY("void Navigation::whenToolUpdated(QProcess::ExitStatus)") << status;
    ui->stackedWidget->setCurrentWidget(returnPage);
    if (status == QProcess::CrashExit)
        QMessageBox::warning(this, QStringLiteral("ERROR"), QStringLiteral("Unable to update. Please contact support"));
    else
        QMessageBox::information(this, QStringLiteral("Success"), QStringLiteral("KestrelDownloader was successfully updated"));
}

void Navigation::whenApplicationUpdated()
{
    returnPage = ui->stackedWidget->currentWidget();
    ui->stackedWidget->setCurrentWidget(ui->pageEmpty);
    QTimer::singleShot(333, this, [this] { emit updateKestrelDL(false); });
}

void Navigation::activateMenuActions()
{
    for (QObject *watched : {static_cast<QObject *>(ui->pushButton_Video), static_cast<QObject *>(ui->pushButton_Site),
                             static_cast<QObject *>(ui->stackedWidget)})
        watched->installEventFilter(this);

    contextMenu = new QMenu(this);
    updateAction = contextMenu->addAction(QStringLiteral("Manually Update Software"));
    loggingAction = contextMenu->addAction(QStringLiteral("Logging enabled"));
    loggingAction->setCheckable(true);
    LoggingInterface *logging = loggingPlugin().instance();
    loggingAction->setChecked(logging && logging->isEnabled());
    contextMenu->addSeparator();

    // There is deliberately no 100 entry: the default scale has no check mark.
    scaleMenu = new QMenu(QStringLiteral("Change Scale Size"), contextMenu);
    for (unsigned int value : {125u, 130u, 135u, 140u}) {
        QAction *entry = scaleMenu->addAction(QStringLiteral("%1%").arg(value));
        entry->setCheckable(true);
        entry->setChecked(value == scaleValue);
    }
    contextMenu->addMenu(scaleMenu);
    contextMenu->addSeparator();
    identifierAction = contextMenu->addAction(QStringLiteral("Show UUID"));
    aboutAction = contextMenu->addAction(QStringLiteral("About"));

    connect(contextMenu, &QMenu::triggered, this, &Navigation::whenMenuTriggered);
}

bool Navigation::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress && static_cast<QMouseEvent *>(event)->button() == Qt::RightButton) {
        if (contextMenu)
            contextMenu->exec(static_cast<QMouseEvent *>(event)->globalPosition().toPoint());
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void Navigation::whenMenuTriggered(QAction *action)
{
    LOG_ENTRY("void Navigation::whenMenuTriggered(QAction*)") << action->text();
    if (action == updateAction) {
        updateApplicationNow();
    } else if (action == loggingAction) {
        if (LoggingInterface *logging = loggingPlugin().instance())
            logging->setEnabled(action->isChecked());
    } else if (action == identifierAction) {
        if (SysInfoInterface *sysInfo = sysInfoPlugin().instance())
            sysInfo->showIdentifier();
    } else if (action == aboutAction) {
        showAbout();
    } else {
        changeScale(action);
    }
}

void Navigation::changeScale(QAction *action)
{
    for (QAction *entry : scaleMenu->actions())
        entry->setChecked(false);
    action->setChecked(true);

    const unsigned int value = QString(action->text()).remove(QStringLiteral("%")).toUInt(nullptr, 10);
    if (value == scaleValue)
        return;
    scaleValue = value;
    VideoInfo::shared().settings().setValue(Settings::scaleKey(), value);
    whenStackedPageChanged(ui->stackedWidget->currentIndex());
}

void Navigation::updateApplicationNow()
{
    UpdateInterface *updater = updaterPlugin().instance();
    if (!updater)
        return;
    // The plug-in carries its own copy of the signal's meta-object: connect by
    // signature, once per plug-in object.
    if (!connectedUpdaters.contains(updater)) {
        connectedUpdaters.insert(updater);
        connect(updater, SIGNAL(updateDone()), this, SLOT(whenApplicationUpdated()));
    }
    updater->updateNow(Identity::updateReleaseNumber, Identity::buildDate());
}

void Navigation::showAbout()
{
    AboutAppInterface *about = aboutPlugin().instance();
    if (!about) {
        QMessageBox::information(nullptr, QCoreApplication::applicationName(),
                                 QStringLiteral("%1 version: %2")
                                     .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()));
        return;
    }
    SysInfoInterface *sysInfo = sysInfoPlugin().instance();
    about->showAbout(sysInfo ? sysInfo->systemInformation() : QString(), Identity::description());
}
