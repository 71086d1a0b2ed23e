#include "updaterplugin.h"

#include "dialogparent.h"
#include "feedsignature.h"
#include "installerdownload.h"
#include "toolpreparation.h"
#include "installerfolder.h"
#include "releasekey.h"
#include "updatersettings.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QProcess>
#include <QProgressBar>
#include <QProgressDialog>
#include <QUrl>

#include <utility>

namespace {

// A release feed is a few hundred bytes; anything near this size is not one.
constexpr qint64 maximumFeedSize = 1024 * 1024;
// A detached signature is a few hundred bytes.
constexpr qint64 maximumSignatureSize = 64 * 1024;

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
    , m_toolPreparation(new ToolPreparation(this))
{
    m_pendingCheck.setSingleShot(true);
    m_pendingCheck.setInterval(startUpCheckDelayMs);
    connect(&m_pendingCheck, &QTimer::timeout, this, [this] {
        m_toolPreparation->start();
        begin(m_pendingReleaseNumber, m_pendingText, true);
    });
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
    if (FeedSignature *signature = m_signature.data()) {
        m_signature.clear();
        signature->disconnect(this);
        signature->abort(); // ends gpgv
        signature->deleteLater();
    }
    closeProgress();
    closeBox();
    m_feedDocument.clear();
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
    m_feedUrl = settings.feedUrl;
    m_feedDocument.clear();
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

    m_feedReply = fetch(settings.feedUrl);
    connect(m_feedReply, &QNetworkReply::finished, this, &UpdaterPlugin::whenFeedFinished);
}

// The feed and its signature are fetched alike; the caller connects the end.
QNetworkReply *UpdaterPlugin::fetch(const QUrl &url)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(m_timeoutMs);
    // Every hop of a redirect must pass the same address check.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    QNetworkReply *reply = network()->get(request);
    connect(reply, &QNetworkReply::redirected, this, &UpdaterPlugin::whenFeedRedirected);
    connect(reply, &QNetworkReply::downloadProgress, this, &UpdaterPlugin::whenFeedProgress);
    return reply;
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
    if (!m_feedReply)
        return;
    if (m_stage == Stage::FetchingFeed && received > maximumFeedSize)
        m_feedStopReason = tr("The release information from the update server is too large to be a release feed.");
    else if (m_stage == Stage::FetchingSignature && received > maximumSignatureSize)
        m_feedStopReason = tr("The signature of the release information is too large to be a signature.");
    else
        return;
    m_feedReply->abort();
}

QString UpdaterPlugin::transferProblem(QNetworkReply *reply) const
{
    if (!m_feedStopReason.isEmpty() || reply->error() == QNetworkReply::NoError)
        return m_feedStopReason;
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (status.isValid() && status.toInt() >= 400)
        return tr("Could not get the release information: the update server answered HTTP %1 %2.")
            .arg(status.toInt())
            .arg(reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString());
    if (reply->error() == QNetworkReply::OperationCanceledError || reply->error() == QNetworkReply::TimeoutError)
        // Nothing on this side stopped it, so the transfer timeout did.
        return tr("The update server did not answer within %1 seconds.").arg(m_timeoutMs / 1000.0);
    return tr("Could not reach the update server: %1").arg(reply->errorString());
}

void UpdaterPlugin::whenFeedFinished()
{
    QNetworkReply *reply = m_feedReply.data();
    if (!reply)
        return;
    m_feedReply.clear();
    reply->deleteLater();

    const QString message = transferProblem(reply);
    m_feedStopReason.clear();
    if (!message.isEmpty()) {
        fail(message);
        return;
    }
    m_feedDocument = reply->readAll();
    fetchSignature();
}

// The detached signature lies beside the feed, under its address with ".sig" added.
void UpdaterPlugin::fetchSignature()
{
    QUrl address = m_feedUrl;
    address.setPath(m_feedUrl.path() + QStringLiteral(".sig"));
    m_stage = Stage::FetchingSignature;
    m_feedReply = fetch(address);
    connect(m_feedReply, &QNetworkReply::finished, this, &UpdaterPlugin::whenSignatureFinished);
}

void UpdaterPlugin::whenSignatureFinished()
{
    QNetworkReply *reply = m_feedReply.data();
    if (!reply)
        return;
    m_feedReply.clear();
    reply->deleteLater();

    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (m_feedStopReason.isEmpty() && status.isValid() && status.toInt() >= 400) {
        fail(tr("The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).")
                 .arg(reply->url().toString())
                 .arg(status.toInt())
                 .arg(reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString()));
        return;
    }
    const QString message = transferProblem(reply);
    m_feedStopReason.clear();
    if (!message.isEmpty()) {
        fail(message);
        return;
    }
    verifyFeed(reply->readAll());
}

void UpdaterPlugin::verifyFeed(const QByteArray &signature)
{
    const ReleaseKey::Keyring keyring = ReleaseKey::keyring();
    // A test's key beside the release key: said on every check, so a variable
    // slipped into the user's environment is never silent.
    if (!keyring.addedFile.isEmpty())
        logInfo(QStringLiteral("%1 is set: the keys in \"%2\" are accepted beside the release key for this check")
                    .arg(QLatin1String(ReleaseKey::addedKeysVariable), keyring.addedFile));
    if (!keyring.problem.isEmpty())
        logWarning(QStringLiteral("%1 is not used: %2").arg(QLatin1String(ReleaseKey::addedKeysVariable), keyring.problem));

    auto *check = new FeedSignature(this);
    QString error;
    if (!check->start(m_feedDocument, signature, keyring.keys, &error)) {
        delete check;
        fail(error);
        return;
    }
    m_signature = check;
    m_stage = Stage::VerifyingFeed;
    connect(check, &FeedSignature::verified, this, &UpdaterPlugin::whenFeedVerified);
    connect(check, &FeedSignature::refused, this, &UpdaterPlugin::whenFeedRefused);
}

void UpdaterPlugin::whenFeedVerified()
{
    if (FeedSignature *check = m_signature.data()) {
        m_signature.clear();
        check->deleteLater();
    }
    logInfo(QStringLiteral("the release information is signed by the release key"));
    QString reason;
    const std::optional<ReleaseFeed::Release> release =
        ReleaseFeed::parse(std::exchange(m_feedDocument, QByteArray()), ReleaseFeed::platformKey(), &reason);
    if (!release) {
        fail(tr("The release information from the update server is not readable: %1.").arg(reason));
        return;
    }
    decide(*release);
}

void UpdaterPlugin::whenFeedRefused(const QString &reason)
{
    if (FeedSignature *check = m_signature.data()) {
        m_signature.clear();
        check->deleteLater();
    }
    m_feedDocument.clear();
    fail(tr("The release information from the update server was refused: %1.").arg(reason));
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
    const InstallerFolder::Preparation folder = InstallerFolder::prepare();
    if (!folder.problem.isEmpty()) {
        fail(tr("The installer cannot be downloaded: %1.").arg(folder.problem));
        return;
    }

    InstallerDownload::Target target;
    target.url = m_release->installer->url;
    target.sha256 = m_release->installer->sha256;
    target.finalPath = QDir(folder.path).filePath(ReleaseFeed::installerFileName());
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

    emit installerSaved(path);
    if (m_stage != Stage::Downloading)
        return; // finish() was called meanwhile
    // Checked again from the disk right before the start: the file that
    // runs must be the file that was verified.
    QString error = installerChange(path);
    if (error.isEmpty())
        error = startInstaller(path);
    if (!error.isEmpty()) {
        QFile::remove(path);
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

// Why the installer on disk is no longer the one verified, or an empty string.
QString UpdaterPlugin::installerChange(const QString &path) const
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return tr("The downloaded installer could not be read again before its start and was deleted.");
    if (hash.result() != m_release->installer->sha256)
        return tr("The downloaded installer was changed after its check and was deleted; it was not started.");
    return QString();
}

// Starts the installer, or says why it was not started.
QString UpdaterPlugin::startInstaller(const QString &path)
{
    const QString refusal = InstallerFolder::startRefusal(path);
    if (!refusal.isEmpty())
        return tr("The installer was not started: %1.").arg(refusal);
    const QString folder = QFileInfo(path).absolutePath();
#if !defined(Q_OS_WIN)
    logInfo(QStringLiteral("the package is kept for you to install in %1").arg(folder));
#endif
    if (qEnvironmentVariableIntValue(noLaunchVariable) == 1) {
        logInfo(QStringLiteral("%1 is set; the installer is not started: %2").arg(QLatin1String(noLaunchVariable), path));
        return QString();
    }
#if defined(Q_OS_WIN)
    // By absolute path, in its own folder: no other program of that name is
    // found instead, and no library planted in a shared folder is loaded.
    if (QProcess::startDetached(path, {}, folder))
        return QString();
    // An installer that asks for administrator rights cannot be started as a
    // plain process; the shell can, and shows the elevation prompt.
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        return QString();
#else
    // The package stays the user's to install: the desktop hands it to the
    // system's package installer, and the folder that holds it is shown.
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(path))) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
        return QString();
    }
#endif
    return tr("The installer \"%1\" could not be started and was deleted.").arg(QDir::toNativeSeparators(path));
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
