#include "updaterplugin.h"

#include "dialogparent.h"
#include "installerdownload.h"
#include "updatersettings.h"

#include <QApplication>
#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QProcess>
#include <QProgressBar>
#include <QProgressDialog>
#include <QStandardPaths>
#include <QUrl>

#include <utility>

namespace {

// A release feed is a few hundred bytes; anything near this size is not one.
constexpr qint64 maximumFeedSize = 1024 * 1024;

// Set to 1, the verified installer is only logged, never started: tests and
// trial runs go through every other step without installing anything.
constexpr const char *noLaunchVariable = "KESTREL_UPDATER_NO_LAUNCH";

void logInfo(const QString &text)
{
    qInfo().noquote() << "[UPD]" << text;
}

void logWarning(const QString &text)
{
    qWarning().noquote() << "[UPD] WARNING:" << text;
}

QString applicationName()
{
    const QString name = QCoreApplication::applicationName();
    return name.isEmpty() ? QStringLiteral("Kestrel Downloader") : name;
}

} // namespace

// The start-up check is called as soon as the window is shown; setting up
// the network stack then would hold up the window's first frame, which the
// user waits for, for a check nobody waits for.
constexpr int startUpCheckDelayMs = 250;

UpdaterPlugin::UpdaterPlugin(QObject *parent)
    : UpdateInterface(parent)
{
    m_pendingCheck.setSingleShot(true);
    m_pendingCheck.setInterval(startUpCheckDelayMs);
    connect(&m_pendingCheck, &QTimer::timeout, this,
            [this] { begin(m_pendingReleaseNumber, m_pendingText, true); });
}

UpdaterPlugin::~UpdaterPlugin()
{
    // The application calls finish() before it goes; this covers a host that
    // unloads the plug-in without it. Once the application object is gone,
    // its widgets may no longer be touched; the children of this object
    // still end their transfers and remove a partial file as they go.
    if (QCoreApplication::instance())
        finish();
}

void UpdaterPlugin::checkForUpdate(int releaseNumber, QString text)
{
    m_pendingReleaseNumber = releaseNumber;
    m_pendingText = text;
    m_pendingCheck.start();
}

void UpdaterPlugin::reserved()
{
}

// A start-up check still waiting is replaced: the manual request tells the
// user about every outcome.
void UpdaterPlugin::updateNow(int releaseNumber, QString text)
{
    m_pendingCheck.stop();
    begin(releaseNumber, text, false);
}

void UpdaterPlugin::finish()
{
    m_pendingCheck.stop();
    const bool wasBusy = m_stage != Stage::Idle;

    if (QNetworkReply *reply = m_feedReply.data()) {
        m_feedReply.clear();
        // Disconnected first: an abort finishes the reply at once, and that
        // must not be reported as a failure.
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
    if (InstallerDownload *download = m_download.data()) {
        m_download.clear();
        download->disconnect(this);
        download->abort(); // removes the partial file
        download->deleteLater();
    }
    closeProgress();
    closeBox();
    m_feedStopReason.clear();
    m_release.reset();
    m_stage = Stage::Idle;

    if (wasBusy)
        logInfo(QStringLiteral("the running update was stopped"));
}

void UpdaterPlugin::begin(int releaseNumber, const QString &text, bool quiet)
{
    if (m_stage != Stage::Idle) {
        logInfo(QStringLiteral("an update is already under way; the new request is ignored"));
        bringForward();
        return;
    }

    if (!m_installingVersion.isEmpty()) {
        reportInstallation(quiet);
        return;
    }

    const UpdaterSettings settings = UpdaterSettings::load();
    if (!settings.problem.isEmpty())
        logWarning(settings.problem);

    m_quiet = quiet;
    m_userAgreed = false;
    m_releaseNumber = releaseNumber;
    m_text = text;
    m_timeoutMs = settings.timeoutMs;
    m_release.reset();
    m_feedStopReason.clear();
    m_stage = Stage::FetchingFeed;

    logInfo(QStringLiteral("%1 check of %2 for a build newer than %3 %4")
                .arg(quiet ? QStringLiteral("quiet") : QStringLiteral("manual"), settings.feedUrl.toString())
                .arg(releaseNumber)
                .arg(text));

    // Refused before any request exists, so a refused address is never contacted.
    const QString refusal = ReleaseFeed::addressRefusal(settings.feedUrl);
    if (!refusal.isEmpty()) {
        fail(tr("The update address %1.").arg(refusal));
        return;
    }

    QNetworkRequest request(settings.feedUrl);
    request.setTransferTimeout(m_timeoutMs);
    // Every hop of a redirect must pass the same address check.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    m_feedReply = network()->get(request);
    connect(m_feedReply, &QNetworkReply::redirected, this, &UpdaterPlugin::whenFeedRedirected);
    connect(m_feedReply, &QNetworkReply::downloadProgress, this, &UpdaterPlugin::whenFeedProgress);
    connect(m_feedReply, &QNetworkReply::finished, this, &UpdaterPlugin::whenFeedFinished);
}

void UpdaterPlugin::whenFeedRedirected(const QUrl &url)
{
    if (!m_feedReply)
        return;
    const QString refusal = ReleaseFeed::addressRefusal(url);
    if (refusal.isEmpty()) {
        emit m_feedReply->redirectAllowed();
        return;
    }
    m_feedStopReason = tr("The update server redirected to an address that is not allowed: %1.").arg(refusal);
    m_feedReply->abort();
}

void UpdaterPlugin::whenFeedProgress(qint64 received)
{
    if (!m_feedReply || received <= maximumFeedSize)
        return;
    m_feedStopReason = tr("The release information from the update server is too large to be a release feed.");
    m_feedReply->abort();
}

void UpdaterPlugin::whenFeedFinished()
{
    QNetworkReply *reply = m_feedReply.data();
    if (!reply)
        return;
    m_feedReply.clear();
    reply->deleteLater();

    QString message = std::exchange(m_feedStopReason, QString());
    if (message.isEmpty() && reply->error() != QNetworkReply::NoError) {
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (status.isValid() && status.toInt() >= 400)
            message = tr("Could not get the release information: the update server answered HTTP %1 %2.")
                          .arg(status.toInt())
                          .arg(reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString());
        else if (reply->error() == QNetworkReply::OperationCanceledError || reply->error() == QNetworkReply::TimeoutError)
            // Nothing on this side stopped it, so the transfer timeout did.
            message = tr("The update server did not answer within %1 seconds.").arg(m_timeoutMs / 1000.0);
        else
            message = tr("Could not reach the update server: %1").arg(reply->errorString());
    }
    if (!message.isEmpty()) {
        fail(message);
        return;
    }

    QString reason;
    const std::optional<ReleaseFeed::Release> release = ReleaseFeed::parse(reply->readAll(), ReleaseFeed::platformKey(), &reason);
    if (!release) {
        fail(tr("The release information from the update server is not readable: %1.").arg(reason));
        return;
    }
    decide(*release);
}

void UpdaterPlugin::decide(const ReleaseFeed::Release &release)
{
    const QString offered = QStringLiteral("%1 (release %2, build %3)").arg(release.version).arg(release.releaseNumber).arg(release.buildDate);
    if (!ReleaseFeed::isNewer(release, m_releaseNumber, m_text)) {
        logInfo(QStringLiteral("no newer build: the update server offers %1").arg(offered));
        if (m_quiet) {
            m_stage = Stage::Idle;
            return;
        }
        m_stage = Stage::Reporting;
        showBox(QMessageBox::Information,
                tr("You have the latest version of %1.\n\nThe newest release on the update server is %2 (build %3).")
                    .arg(applicationName(), release.version, release.buildDate),
                QMessageBox::Ok);
        return;
    }

    logInfo(QStringLiteral("newer build offered: %1").arg(offered));
    if (!release.installer) {
        fail(tr("Version %1 of %2 is available, but the update server offers no installer for this system.")
                 .arg(release.version, applicationName()));
        return;
    }

    m_release = release;
    m_stage = Stage::Asking;
    QMessageBox *box = showBox(QMessageBox::Question,
                               tr("Version %1 (build %2) of %3 is available.\n\nDo you want to download and install it now?")
                                   .arg(release.version, release.buildDate, applicationName()),
                               QMessageBox::Yes | QMessageBox::No);
    box->setDefaultButton(QMessageBox::Yes);
}

void UpdaterPlugin::whenAnswer(QMessageBox::StandardButton answer)
{
    if (m_stage == Stage::Asking) {
        if (answer == QMessageBox::Yes) {
            m_userAgreed = true;
            startDownload();
            return;
        }
        logInfo(QStringLiteral("the user declined version %1").arg(m_release ? m_release->version : QString()));
    }
    // The closing message of a finished run, or a declined offer.
    m_release.reset();
    m_stage = Stage::Idle;
}

void UpdaterPlugin::startDownload()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        fail(tr("Could not find or create the download folder \"%1\".").arg(folder));
        return;
    }

    InstallerDownload::Target target;
    target.url = m_release->installer->url;
    target.sha256 = m_release->installer->sha256;
    target.finalPath = QDir(folder).filePath(ReleaseFeed::installerFileName());
    target.timeoutMs = m_timeoutMs;

    auto *download = new InstallerDownload(network(), target, this);
    QString error;
    if (!download->start(&error)) {
        delete download;
        fail(error);
        return;
    }
    m_download = download;
    connect(download, &InstallerDownload::progress, this, &UpdaterPlugin::whenDownloadProgress);
    connect(download, &InstallerDownload::succeeded, this, &UpdaterPlugin::whenDownloadSucceeded);
    connect(download, &InstallerDownload::failed, this, &UpdaterPlugin::whenDownloadFailed);
    m_stage = Stage::Downloading;
    logInfo(QStringLiteral("downloading %1 to %2").arg(target.url.toString(), download->partPath()));
    showProgress();
}

void UpdaterPlugin::whenDownloadProgress(qint64 received, qint64 total)
{
    if (!m_progress || !m_progressBar)
        return;
    const QLocale locale;
    if (total > 0) {
        // Per mille, so that installers beyond the range of an int still fit the bar.
        m_progressBar->setRange(0, 1000);
        m_progressBar->setValue(static_cast<int>(qBound(qint64(0), received * 1000 / total, qint64(1000))));
        m_progress->setLabelText(tr("Downloading %1 %2…\n%3 of %4")
                                     .arg(applicationName(), m_release ? m_release->version : QString(),
                                          locale.formattedDataSize(received), locale.formattedDataSize(total)));
    } else {
        m_progressBar->setRange(0, 0);
        m_progress->setLabelText(tr("Downloading %1 %2…\n%3")
                                     .arg(applicationName(), m_release ? m_release->version : QString(),
                                          locale.formattedDataSize(received)));
    }
}

void UpdaterPlugin::whenDownloadSucceeded(const QString &path)
{
    if (InstallerDownload *download = m_download.data()) {
        m_download.clear();
        download->deleteLater();
    }
    closeProgress();
    logInfo(QStringLiteral("installer verified: %1").arg(path));

    QString error;
    if (!startInstaller(path, &error)) {
        fail(error);
        return;
    }
    // One installation a run: a second update on top of a running installer
    // has nothing new to install, and the window answers every updateDone
    // with a tool update behind its busy page.
    m_installingVersion = m_release->version;
    m_release.reset();
    m_stage = Stage::Idle;
    emit updateDone();
}

void UpdaterPlugin::reportInstallation(bool quiet)
{
    logInfo(QStringLiteral("version %1 is being installed; the new request is ignored").arg(m_installingVersion));
    if (quiet)
        return;
    m_stage = Stage::Reporting;
    showBox(QMessageBox::Information,
            tr("Version %1 of %2 is being installed.\n\nPlease restart %2 once its installer has finished.")
                .arg(m_installingVersion, applicationName()),
            QMessageBox::Ok);
}

void UpdaterPlugin::whenDownloadFailed(const QString &message)
{
    if (InstallerDownload *download = m_download.data()) {
        m_download.clear();
        download->deleteLater();
    }
    fail(message);
}

void UpdaterPlugin::whenDownloadCancelled()
{
    if (m_stage != Stage::Downloading)
        return;
    if (InstallerDownload *download = m_download.data()) {
        m_download.clear();
        download->disconnect(this);
        download->abort();
        download->deleteLater();
    }
    closeProgress();
    logInfo(QStringLiteral("the user cancelled the download"));
    m_release.reset();
    m_stage = Stage::Idle;
}

bool UpdaterPlugin::startInstaller(const QString &path, QString *error)
{
    if (qEnvironmentVariableIntValue(noLaunchVariable) == 1) {
        logInfo(QStringLiteral("%1 is set; the installer is not started: %2").arg(QLatin1String(noLaunchVariable), path));
        return true;
    }
#if defined(Q_OS_WIN)
    if (QProcess::startDetached(path, {}))
        return true;
    // An installer that asks for administrator rights cannot be started as a
    // plain process; the shell can, and shows the elevation prompt.
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        return true;
#else
    // The desktop hands the package to the system's package installer.
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        return true;
#endif
    *error = tr("The installer was saved as \"%1\" but could not be started. Please open it yourself.").arg(QDir::toNativeSeparators(path));
    return false;
}

void UpdaterPlugin::fail(const QString &message)
{
    logWarning(message);
    closeProgress();
    m_release.reset();
    if (m_quiet && !m_userAgreed) {
        m_stage = Stage::Idle;
    } else {
        m_stage = Stage::Reporting;
        showBox(QMessageBox::Warning, message, QMessageBox::Ok);
    }
    emit updateError();
}

QMessageBox *UpdaterPlugin::showBox(QMessageBox::Icon icon, const QString &text, QMessageBox::StandardButtons buttons)
{
    closeBox();
    auto *box = new QMessageBox(icon, tr("Software Update"), text, buttons, PluginDialogs::dialogParent());
    // Versions and addresses in the text come from the server; they are never markup.
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::ApplicationModal);
    connect(box, &QMessageBox::finished, this, [this, box]() {
        if (m_box != box)
            return;
        m_box.clear();
        whenAnswer(box->standardButton(box->clickedButton()));
    });
    m_box = box;
    box->show();
    return box;
}

void UpdaterPlugin::showProgress()
{
    closeProgress();
    auto *dialog = new QProgressDialog(PluginDialogs::dialogParent());
    // A bar of its own, set directly: QProgressDialog::setValue() runs a
    // nested event loop in a modal dialog, which would let the download's
    // signals arrive inside one another.
    auto *bar = new QProgressBar(dialog);
    bar->setRange(0, 0);
    dialog->setBar(bar);
    dialog->setWindowTitle(tr("Software Update"));
    dialog->setLabelText(tr("Downloading %1 %2…").arg(applicationName(), m_release ? m_release->version : QString()));
    dialog->setCancelButtonText(tr("Cancel"));
    dialog->setAutoClose(false);
    dialog->setAutoReset(false);
    dialog->setMinimumDuration(0);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    // Escape and the window's close button cancel as well as the button does.
    connect(dialog, &QProgressDialog::canceled, this, &UpdaterPlugin::whenDownloadCancelled);
    connect(dialog, &QDialog::rejected, this, &UpdaterPlugin::whenDownloadCancelled);
    m_progress = dialog;
    m_progressBar = bar;
    dialog->show();
}

void UpdaterPlugin::closeProgress()
{
    if (QProgressDialog *dialog = m_progress.data()) {
        m_progress.clear();
        m_progressBar.clear();
        // Hidden rather than closed: closing a progress dialog reports a
        // cancel, which is not the user's.
        dialog->disconnect(this);
        dialog->hide();
        dialog->deleteLater();
    }
}

void UpdaterPlugin::closeBox()
{
    if (QMessageBox *box = m_box.data()) {
        m_box.clear();
        // Hidden rather than closed: a message box without an escape button
        // ignores close().
        box->disconnect(this);
        box->hide();
        box->deleteLater();
    }
}

void UpdaterPlugin::bringForward()
{
    QWidget *dialog = m_box ? static_cast<QWidget *>(m_box.data()) : static_cast<QWidget *>(m_progress.data());
    if (!dialog)
        return;
    dialog->raise();
    dialog->activateWindow();
}

QNetworkAccessManager *UpdaterPlugin::network()
{
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
    return m_network;
}
