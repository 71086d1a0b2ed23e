#include "navigation.h"
#include "ui_navigation.h"

#include "base/identity.h"
#include "base/images.h"
#include "base/log.h"
#include "base/platform.h"
#include "base/settings.h"
#include "downloader/filesetup.h"
#include "downloader/videoinfo.h"
#include "formats/formattablemodel.h"
#include "plugins/plugins.h"
#include "ui/keyboardactivation.h"
#include "ui/pagesizes.h"
#include "ui/rowfitter.h"
#include "ui/textfitter.h"
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
    return QCoreApplication::translate("Navigation", "| %1 sec.").arg(duration.second());
}

QString failureMessage(KestrelDownloader::errorType code)
{
    switch (code) {
    case KestrelDownloader::metadataTooFewLines:
    case KestrelDownloader::metadataBadDuration:
        return QCoreApplication::translate("Navigation", "Cannot request metadata");
    case KestrelDownloader::metadataCrashed:
        return QCoreApplication::translate("Navigation", "crash exit on metadata request");
    case KestrelDownloader::formatsCrashed:
        return QCoreApplication::translate("Navigation", "crash exit on formats request");
    case KestrelDownloader::downloadCrashed:
        return QCoreApplication::translate("Navigation", "crash exit at downloading process");
    case KestrelDownloader::formatCountError:
        return QCoreApplication::translate("Navigation", "format count error");
    case KestrelDownloader::toolNotStarted:
        return QCoreApplication::translate("Navigation", "cannot start the downloader tool");
    default:
        return QCoreApplication::translate("Navigation", "indefinite");
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

} // namespace

Navigation::Navigation(KestrelDownloader &driver, VideoInfo &info, Plugins &plugins, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::Navigation>())
    , m_driver(driver)
    , m_info(info)
    , m_plugins(plugins)
{
    m_ui->setupUi(this);
    applyFormFontWeights();
    fitTranslatedTexts();
    pointBackArrowsBack();
    // Qt gives the form's images their "@2x" files itself when a screen
    // denser than 1 is present at start.
    m_denseImages = qApp->devicePixelRatio() > 1.0;
    m_rowFitter = new RowFitter(m_ui->tableView);

    m_scale = storedScale();
    activateMenuActions();
    connectWindow();
    connectKeyboard();
    connectDriver();

    // Until start-up has finished the window shows the busy page.
    m_returnPage = m_ui->pageEmpty;
    if (m_ui->stackedWidget->currentWidget() != m_ui->pageEmpty)
        m_ui->stackedWidget->setCurrentWidget(m_ui->pageEmpty);
}

// The display scale kept in the settings, 100 when there is none. A value
// that is not a sensible percentage (a damaged file, a hand edit) would
// shrink the window to nothing or blow it up; it is ignored.
unsigned int Navigation::storedScale() const
{
    const QVariant stored = m_info.settings().value(Settings::scaleKey(), 100);
    bool isNumber = false;
    const unsigned int value = stored.toUInt(&isNumber);
    if (isNumber && value >= 25 && value <= 400)
        return value;
    LOG_WARNING("unsigned int Navigation::storedScale() const") << "ignoring display scale" << stored.toString();
    return 100;
}

Navigation::~Navigation()
{
    if (UpdateInterface *updater = m_plugins.updater().instance())
        updater->finish();
}

void Navigation::setCommandLine(QCommandLineParser *parser)
{
    m_commandLine = parser;
}

unsigned int Navigation::scale() const
{
    return m_scale;
}

// Designer files of this Qt version cannot express the semi-bold and medium
// weights of the download page's buttons.
void Navigation::applyFormFontWeights()
{
    QFont startOver = m_ui->btnStartOver->font();
    startOver.setWeight(QFont::DemiBold);
    m_ui->btnStartOver->setFont(startOver);

    QFont openFolder = m_ui->btnOpenFolder->font();
    openFolder.setWeight(QFont::Medium);
    m_ui->btnOpenFolder->setFont(openFolder);
}

// A translation may need more room than the English texts the pages were
// made for. The video's title is not among these: it is the video's.
void Navigation::fitTranslatedTexts()
{
    auto *fitter = new TextFitter(this);
    for (QWidget *widget : std::initializer_list<QWidget *>{m_ui->labelTime, m_ui->label_DL, m_ui->label_DL_OK,
                                                            m_ui->btnStartOver, m_ui->btnOpenFolder, m_ui->btnCancel})
        fitter->watch(widget);
}

// Loading the "@2x" files costs the first frame a few milliseconds, so
// without a dense screen at start they are added only when the window comes
// onto one later.
void Navigation::prepareImagesFor(qreal devicePixelRatio)
{
    if (devicePixelRatio <= 1.0 || m_denseImages)
        return;
    m_denseImages = true;
    const std::pair<QAbstractButton *, QString> buttons[] = {
        {m_ui->pushButton_Video, QStringLiteral(":/img/btn_kestreldl")},
        {m_ui->pushButton_Site, QStringLiteral(":/img/btn_site")},
        {m_ui->btn_Back_from_Process, QStringLiteral(":/img/btn_back_big")},
        {m_ui->pushButton_Process, QStringLiteral(":/img/btn_process")},
        {m_ui->btn_Back_from_Formats, QStringLiteral(":/img/btn_back_small")},
        {m_ui->btn_Back_Last, QStringLiteral(":/img/btn_back_small")},
    };
    for (const auto &[button, resource] : buttons)
        button->setIcon(Images::icon(resource));
    pointBackArrowsBack();
}

// In a window laid out right to left (Arabic) back lies to the right. The
// large back button's picture holds a word, which must not be flipped.
void Navigation::pointBackArrowsBack()
{
    if (layoutDirection() != Qt::RightToLeft)
        return;
    const QIcon arrow = Images::mirroredIcon(QStringLiteral(":/img/btn_back_small"));
    m_ui->btn_Back_from_Formats->setIcon(arrow);
    m_ui->btn_Back_Last->setIcon(arrow);
}

void Navigation::connectWindow()
{
    connect(m_ui->pushButton_Video, &QPushButton::clicked, this, &Navigation::whenProcessButtonClicked);
    connect(m_ui->pushButton_Site, &QPushButton::clicked, this,
            [] { QDesktopServices::openUrl(QUrl(Identity::sisterSiteAddress())); });
    connect(m_ui->editURL, &QLineEdit::returnPressed, this, &Navigation::whenCallProcess);
    connect(m_ui->pushButton_Process, &QPushButton::clicked, this, &Navigation::whenCallProcess);
    // clicked(false) of this plain button makes the kill a user's cancel.
    connect(m_ui->btnCancel, &QPushButton::clicked, &m_driver, &KestrelDownloader::terminateTool);
    connect(m_ui->stackedWidget, &QStackedWidget::currentChanged, this, &Navigation::whenStackedPageChanged);

    connect(m_ui->btn_Back_from_Process, &QPushButton::clicked, this,
            [this] { m_ui->stackedWidget->setCurrentWidget(m_returnPage); });
    connect(m_ui->btn_Back_from_Formats, &QPushButton::clicked, this, [this] {
        m_ui->stackedWidget->setCurrentWidget(m_ui->page_URL);
        m_driver.terminateTool(true);
    });
    connect(m_ui->btn_Back_Last, &QPushButton::clicked, this,
            [this] { m_ui->stackedWidget->setCurrentWidget(m_ui->page_Formats); });
    connect(m_ui->btnStartOver, &QPushButton::clicked, this, [this] { m_ui->stackedWidget->setCurrentWidget(m_returnPage); });
    connect(m_ui->btnOpenFolder, &QPushButton::clicked, this,
            [] { QDesktopServices::openUrl(Platform::folderUrl(outputFolder())); });
}

void Navigation::connectKeyboard()
{
    auto *keyboard = new KeyboardActivation(this);
    for (QPushButton *button : findChildren<QPushButton *>())
        keyboard->watchButton(button);
    keyboard->watchTable(m_ui->tableView);
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
    QWidget *page = m_ui->stackedWidget->currentWidget();
    QAbstractButton *back = nullptr;
    if (page == m_ui->page_URL)
        back = m_ui->btn_Back_from_Process;
    else if (page == m_ui->page_Formats)
        back = m_ui->btn_Back_from_Formats;
    else if (page == m_ui->page_Download)
        back = m_ui->btnCancel->isVisible() ? m_ui->btnCancel : m_ui->btn_Back_Last;
    if (back && back->isVisible())
        back->click();
}

void Navigation::contextMenuEvent(QContextMenuEvent *event)
{
    // The mouse opens the menu through the event filter.
    if (event->reason() != QContextMenuEvent::Keyboard || !m_contextMenu) {
        QDialog::contextMenuEvent(event);
        return;
    }
    const QWidget *anchor = focusWidget() ? focusWidget() : m_ui->stackedWidget;
    m_contextMenu->exec(anchor->mapToGlobal(anchor->rect().center()));
}

void Navigation::connectDriver()
{
    connect(&m_driver, &KestrelDownloader::somethingWrong, this, &Navigation::whenSomethingWrong);
    connect(&m_driver, &KestrelDownloader::haveFormats, this, &Navigation::whenFormatsReceived);
    connect(&m_driver, &KestrelDownloader::haveMetadata, this, &Navigation::whenMetadataReceived);
    connect(&m_driver, &KestrelDownloader::haveVideo, this, &Navigation::whenVideoDownloaded);
    connect(&m_driver, &KestrelDownloader::percent, this, &Navigation::whenProgressReported);
    connect(&m_driver, &KestrelDownloader::resultUpdateBinary, this, &Navigation::whenToolUpdated);
    connect(this, &Navigation::updateKestrelDL, &m_driver, &KestrelDownloader::updateBinary);
    connect(this, &Navigation::requestVideo, &m_driver, &KestrelDownloader::requestVideo);
    connect(this, &Navigation::requestMetadata, &m_driver, &KestrelDownloader::requestMetadata);
}

void Navigation::showMainWindow()
{
    if (!isVisible()) {
        show();
        connect(windowHandle(), &QWindow::screenChanged, this,
                [this](QScreen *screen) { prepareImagesFor(screen->devicePixelRatio()); });
    }
    m_returnPage = m_ui->page_Start;
    m_ui->stackedWidget->setCurrentWidget(m_ui->page_Start);
    // The busy page had nothing to focus; the keyboard starts on the video button.
    if (!focusWidget() || !focusWidget()->isVisible())
        m_ui->pushButton_Video->setFocus(Qt::OtherFocusReason);
    runCommandLineRequests();
}

void Navigation::runCommandLineRequests()
{
    if (!m_commandLine)
        return;

    if (m_commandLine->isSet(QStringLiteral("uid"))) {
        if (SysInfoInterface *sysInfo = m_plugins.sysInfo().instance())
            sysInfo->showIdentifier();
    }

    if (m_commandLine->isSet(QStringLiteral("update-as"))) {
        const QString version = m_commandLine->value(QStringLiteral("update-as"));
        if (version.isEmpty())
            m_commandLine->showHelp(0);
        qDebug().noquote() << "------------------";
        qDebug().noquote() << "Update as version:" << version;
        // Not a number, or too large for 32 bits, reads as 0.
        const int releaseNumber = version.toInt(nullptr, 10);
        if (UpdateInterface *updater = m_plugins.updater().instance())
            updater->updateNow(releaseNumber, Identity::applicationVersion());
        return;
    }

    if (UpdateInterface *updater = m_plugins.updater().instance())
        updater->checkForUpdate(Identity::updateReleaseNumber, Identity::buildDate());
}

void Navigation::whenProcessButtonClicked()
{
    m_ui->stackedWidget->setCurrentWidget(m_ui->page_URL);
    m_ui->editURL->setFocus(Qt::OtherFocusReason);
}

void Navigation::whenCallProcess()
{
    if (!m_driver.setUrl(m_ui->editURL->text())) {
        QMessageBox::warning(this, tr("WARNING"), tr("WARNING: You must provide at least some valid YouTube URL to proceed"));
        return;
    }
    setTableModel(m_ui->tableView, nullptr);
    m_ui->labelTime->setText(QStringLiteral("00:00:00"));
    m_ui->labelTitle->setText(tr("Title"));
    m_ui->progressBar->show();
    m_ui->stackedWidget->setCurrentWidget(m_ui->page_Formats);
    m_ui->btn_Back_from_Formats->setFocus(Qt::OtherFocusReason);
    emit requestMetadata();
}

void Navigation::whenMetadataReceived()
{
    m_ui->labelTitle->setText(displayTitle(m_info.title));
    m_ui->labelTime->setText(displayDuration(m_info.duration));
}

void Navigation::whenFormatsReceived()
{
    LOG_ENTRY("void Navigation::whenFormatsReceived()");
    m_ui->progressBar->hide();

    // Earlier models stay children of the view.
    auto *model = new FormatTableModel(m_ui->tableView);
    model->setSource(&m_driver.formats(), &m_driver.viewOrder());

    // Handlers of an earlier list must not pile up.
    m_ui->tableView->disconnect();
    setTableModel(m_ui->tableView, model);

    QHeaderView *columns = m_ui->tableView->horizontalHeader();
    columns->setSectionResizeMode(FormatTableModel::TypeColumn, QHeaderView::ResizeToContents);
    columns->setSectionResizeMode(FormatTableModel::ResolutionColumn, QHeaderView::Stretch);
    columns->setSectionResizeMode(FormatTableModel::SizeColumn, QHeaderView::ResizeToContents);
    columns->setSectionResizeMode(FormatTableModel::DownloadColumn, QHeaderView::ResizeToContents);
    m_ui->tableView->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_ui->tableView->hideColumn(FormatTableModel::IdColumn);

    // The model keeps its order; this only puts the sort mark on "Resolution".
    m_ui->tableView->setSortingEnabled(true);
    m_ui->tableView->sortByColumn(FormatTableModel::ResolutionColumn, Qt::AscendingOrder);

    m_ui->tableView->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_ui->tableView->setSelectionMode(QAbstractItemView::SingleSelection);
    m_ui->tableView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_ui->tableView->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Qt keeps some of what each setStyleSheet() call builds, so the same
    // text is not set again for every list.
    const QString styleSheet = tableStyleSheet.arg(int(m_scale * 0.14));
    if (m_ui->tableView->styleSheet() != styleSheet)
        m_ui->tableView->setStyleSheet(styleSheet);

    m_rowFitter->fit();

    connect(m_ui->tableView, &QTableView::clicked, this, &Navigation::whenFormatPicked);
    connect(m_ui->tableView, &QTableView::doubleClicked, this, &Navigation::whenFormatPicked);
}

void Navigation::whenFormatPicked(const QModelIndex &index)
{
    if (!index.isValid() || index.row() < 0 || index.column() < 0 || !index.model()) {
        LOG_ERROR("void Navigation::whenFormatPicked(const QModelIndex&)") << "index invalid:" << index;
        return;
    }
    // The click of a double click has already started this download.
    if (m_ui->stackedWidget->currentWidget() == m_ui->page_Download)
        return;

    m_ui->stackedWidget->setCurrentWidget(m_ui->page_Download);
    setVisibility({m_ui->btn_Back_Last, m_ui->label_DL_OK, m_ui->btnStartOver, m_ui->btnOpenFolder}, Visibility::Hide);
    setVisibility({m_ui->label_DL, m_ui->btnCancel}, Visibility::Show);
    m_ui->label_TitleDownload->show();
    m_ui->label_TitleDownload->setText(m_ui->labelTitle->text());
    m_ui->progressBarDL->show();
    m_ui->progressBarDL->setValue(0);
    m_ui->progressBarDL->setMaximum(0);

    const QModelIndex idIndex =
        index.column() == FormatTableModel::IdColumn ? index : index.model()->index(index.row(), FormatTableModel::IdColumn);
    const unsigned int formatId = idIndex.data(Qt::DisplayRole).toUInt();
    qDebug().noquote() << QStringLiteral("Requesting video with FormatID: %1").arg(formatId);
    emit requestVideo(formatId);
}

void Navigation::whenProgressReported(int value)
{
    // Past 99 the tool merges or finishes: a busy bar, not a full one.
    if (value > 99) {
        m_ui->progressBarDL->setValue(0);
        m_ui->progressBarDL->setMaximum(0);
        return;
    }
    m_ui->progressBarDL->setMaximum(100);
    m_ui->progressBarDL->setValue(value);
}

void Navigation::whenVideoDownloaded()
{
    // The log names the lambda that once handled the end of a download in
    // connectDriver(); the line's text is kept.
    LOG_ENTRY_AS("Navigation::connectDriver()::<lambda()>");
    setVisibility({m_ui->btnCancel, m_ui->progressBarDL, m_ui->label_TitleDownload, m_ui->label_DL}, Visibility::Hide);
    setVisibility({m_ui->label_DL_OK, m_ui->btnStartOver, m_ui->btn_Back_Last, m_ui->btnOpenFolder}, Visibility::Show);
    // The focus went with the hidden Cancel button.
    if (m_ui->stackedWidget->currentWidget() == m_ui->page_Download && (!focusWidget() || !focusWidget()->isVisible()))
        m_ui->btnOpenFolder->setFocus(Qt::OtherFocusReason);
}

void Navigation::whenSomethingWrong(KestrelDownloader::errorType code)
{
    m_ui->progressBar->hide();
    switch (code) {
    case KestrelDownloader::metadataCancelled:
    case KestrelDownloader::formatsCancelled:
        m_ui->stackedWidget->setCurrentWidget(m_ui->page_URL);
        return;
    case KestrelDownloader::downloadCancelled:
        m_ui->stackedWidget->setCurrentWidget(m_ui->page_Formats);
        return;
    default:
        break;
    }
    // The code stays as it is in every language: support asks for it.
    //: %1 is the kind of failure, %2 its code in hexadecimal.
    const QString text = tr("<h3>ERROR:</h3>%1<hr><i>Code: #0x%2</i>");
    QMessageBox box(QMessageBox::Critical, tr("ERROR"), text.arg(failureMessage(code)).arg(int(code), 0, 16), QMessageBox::Ok, this);
    box.setTextFormat(Qt::RichText);
    box.exec();
}

void Navigation::whenStackedPageChanged(int index)
{
    using namespace PageSizes;
    QWidget *page = m_ui->stackedWidget->widget(index);
    double height = otherPageHeight;
    if (page == m_ui->page_Start) {
        fixButtonSize(m_ui->pushButton_Video, scaled(videoButton, m_scale));
        fixButtonSize(m_ui->pushButton_Site, scaled(siteButton, m_scale));
    } else if (page == m_ui->page_URL) {
        fixButtonSize(m_ui->btn_Back_from_Process, scaled(backFromProcessButton, m_scale));
        fixButtonSize(m_ui->pushButton_Process, scaled(processButton, m_scale));
    } else if (page == m_ui->page_Formats) {
        fixButtonSize(m_ui->btn_Back_from_Formats, scaled(smallBackButton, m_scale));
        height = formatsPageHeight;
    } else if (page == m_ui->page_Download) {
        fixButtonSize(m_ui->btn_Back_Last, scaled(smallBackButton, m_scale));
        height = downloadPageHeight;
    } else if (page != m_ui->pageEmpty) {
        return;
    }

    const QSize window = scaled({windowWidth, height}, m_scale);
    if (maximumSize() != window)
        setFixedSize(window);
}

void Navigation::whenToolUpdated(QProcess::ExitStatus status)
{
    LOG_ENTRY("void Navigation::whenToolUpdated(QProcess::ExitStatus)") << status;
    m_ui->stackedWidget->setCurrentWidget(m_returnPage);
    if (status == QProcess::CrashExit)
        QMessageBox::warning(this, tr("ERROR"), tr("Unable to update. Please contact support"));
    else
        QMessageBox::information(this, tr("Success"), tr("KestrelDownloader was successfully updated"));
}

void Navigation::whenApplicationUpdated()
{
    m_returnPage = m_ui->stackedWidget->currentWidget();
    m_ui->stackedWidget->setCurrentWidget(m_ui->pageEmpty);
    QTimer::singleShot(333, this, [this] { emit updateKestrelDL(false); });
}

void Navigation::activateMenuActions()
{
    for (QObject *watched : {static_cast<QObject *>(m_ui->pushButton_Video), static_cast<QObject *>(m_ui->pushButton_Site),
                             static_cast<QObject *>(m_ui->stackedWidget)})
        watched->installEventFilter(this);

    m_contextMenu = new QMenu(this);
    m_updateAction = addMenuEntry(m_contextMenu, QT_TR_NOOP("Manually Update Software"));
    m_loggingAction = addMenuEntry(m_contextMenu, QT_TR_NOOP("Logging enabled"));
    m_loggingAction->setCheckable(true);
    LoggingInterface *logging = m_plugins.logging().instance();
    m_loggingAction->setChecked(logging && logging->isEnabled());
    m_contextMenu->addSeparator();

    // There is deliberately no 100 entry: the default scale has no check mark.
    m_scaleMenu = new QMenu(tr("Change Scale Size"), m_contextMenu);
    for (unsigned int value : {125u, 130u, 135u, 140u}) {
        //: A display scale in percent, as 130%.
        QAction *entry = m_scaleMenu->addAction(tr("%1%").arg(value));
        entry->setData(QStringLiteral("%1%").arg(value));
        entry->setCheckable(true);
        entry->setChecked(value == m_scale);
    }
    m_contextMenu->addMenu(m_scaleMenu);
    m_contextMenu->addSeparator();
    m_identifierAction = addMenuEntry(m_contextMenu, QT_TR_NOOP("Show UUID"));
    m_aboutAction = addMenuEntry(m_contextMenu, QT_TR_NOOP("About"));

    connect(m_contextMenu, &QMenu::triggered, this, &Navigation::whenMenuTriggered);
}

// The log and the scale handling read an entry's English text, which the
// entry keeps as its data whatever language it shows.
QAction *Navigation::addMenuEntry(QMenu *menu, const char *englishText)
{
    QAction *entry = menu->addAction(tr(englishText));
    entry->setData(QString::fromLatin1(englishText));
    return entry;
}

QString Navigation::englishText(const QAction *action)
{
    return action->data().toString();
}

bool Navigation::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress && static_cast<QMouseEvent *>(event)->button() == Qt::RightButton) {
        if (m_contextMenu)
            m_contextMenu->exec(static_cast<QMouseEvent *>(event)->globalPosition().toPoint());
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void Navigation::whenMenuTriggered(QAction *action)
{
    LOG_ENTRY("void Navigation::whenMenuTriggered(QAction*)") << englishText(action);
    if (action == m_updateAction) {
        updateApplicationNow();
    } else if (action == m_loggingAction) {
        if (LoggingInterface *logging = m_plugins.logging().instance())
            logging->setEnabled(action->isChecked());
    } else if (action == m_identifierAction) {
        if (SysInfoInterface *sysInfo = m_plugins.sysInfo().instance())
            sysInfo->showIdentifier();
    } else if (action == m_aboutAction) {
        showAbout();
    } else {
        changeScale(action);
    }
}

void Navigation::changeScale(QAction *action)
{
    for (QAction *entry : m_scaleMenu->actions())
        entry->setChecked(false);
    action->setChecked(true);

    const unsigned int value = englishText(action).remove(QStringLiteral("%")).toUInt(nullptr, 10);
    if (value == m_scale)
        return;
    m_scale = value;
    m_info.settings().setValue(Settings::scaleKey(), value);
    whenStackedPageChanged(m_ui->stackedWidget->currentIndex());
}

void Navigation::updateApplicationNow()
{
    UpdateInterface *updater = m_plugins.updater().instance();
    if (!updater)
        return;
    // The plug-in carries its own copy of the signal's meta-object: connect by
    // signature, once per plug-in object.
    if (!m_connectedUpdaters.contains(updater)) {
        m_connectedUpdaters.insert(updater);
        connect(updater, SIGNAL(updateDone()), this, SLOT(whenApplicationUpdated()));
    }
    updater->updateNow(Identity::updateReleaseNumber, Identity::buildDate());
}

void Navigation::showAbout()
{
    AboutAppInterface *about = m_plugins.about().instance();
    if (!about) {
        QMessageBox::information(nullptr, QCoreApplication::applicationName(),
                                 tr("%1 version: %2")
                                     .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()));
        return;
    }
    SysInfoInterface *sysInfo = m_plugins.sysInfo().instance();
    about->showAbout(sysInfo ? sysInfo->systemInformation() : QString(), Identity::description());
}
