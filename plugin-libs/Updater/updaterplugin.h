#pragma once

#include "plugins/updateinterface.h"
#include "releasefeed.h"

#include <QMessageBox>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <optional>

class FeedSignature;
class InstallerDownload;
class ToolPreparation;
class QNetworkAccessManager;
class QNetworkReply;
class QProgressBar;
class QProgressDialog;
class QWidget;

// The application updater: fetches the update server's release feed and its
// signature, checks the signature against the application's release key,
// asks the feed whether a newer build exists, offers it to the user,
// downloads the installer for this system into a private folder, verifies
// its SHA-256 and, after checking the file on disk once more, starts it.
//
// Every step runs from the event loop; no call blocks and no dialog runs its
// own event loop, so finish() can stop whatever is under way at any moment.
class UpdaterPlugin : public UpdateInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID UpdateInterface_iid)
    Q_INTERFACES(UpdateInterface)

public:
    explicit UpdaterPlugin(QObject *parent = nullptr);
    ~UpdaterPlugin() override;

    // Quiet: only a newer build is mentioned to the user; a failed check is
    // logged and signalled, never shown.
    void checkForUpdate(int releaseNumber, QString text) override;
    void reserved() override;
    // Manual: the user hears about every outcome.
    void updateNow(int releaseNumber, QString text) override;
    void finish() override;

signals:
    // The verified installer has its final name, and is about to be checked
    // once more and started. Lets a test change the file in between, as an
    // attacker on the same disk would.
    void installerSaved(const QString &path);

private:
    enum class Stage {
        Idle,
        FetchingFeed,
        FetchingSignature,
        VerifyingFeed,
        Asking,
        Downloading,
        Reporting, // a closing message is on the screen
    };

    void begin(int releaseNumber, const QString &text, bool quiet);
    void whenFeedRedirected(const QUrl &url);
    void whenFeedProgress(qint64 received);
    void whenFeedFinished();
    void fetchSignature();
    void whenSignatureFinished();
    void verifyFeed(const QByteArray &signature);
    void whenFeedVerified();
    void whenFeedRefused(const QString &reason);
    QNetworkReply *fetch(const QUrl &url);
    QString transferProblem(QNetworkReply *reply) const;
    void decide(const ReleaseFeed::Release &release);
    void whenAnswer(QMessageBox::StandardButton answer);
    void startDownload();
    void whenDownloadProgress(qint64 received, qint64 total);
    void whenDownloadSucceeded(const QString &path);
    void whenDownloadFailed(const QString &message);
    void whenDownloadCancelled();
    void reportInstallation(bool quiet);
    QString installerChange(const QString &path) const;
    QString startInstaller(const QString &path);
    void fail(const QString &message);

    QMessageBox *showBox(QMessageBox::Icon icon, const QString &text, QMessageBox::StandardButtons buttons);
    void showProgress();
    void closeProgress();
    void closeBox();
    void bringForward();
    QNetworkAccessManager *network();

    Stage m_stage = Stage::Idle;
    bool m_quiet = false;
    // Once the user has said yes, failures are shown even for a quiet check.
    bool m_userAgreed = false;
    int m_releaseNumber = 0;
    QString m_text;
    int m_timeoutMs = 0;
    std::optional<ReleaseFeed::Release> m_release;
    // The version whose installer this run has started.
    QString m_installingVersion;

    QNetworkAccessManager *m_network = nullptr;
    // The start-up check, waiting for the window's first frame.
    QTimer m_pendingCheck;
    ToolPreparation *m_toolPreparation = nullptr;
    int m_pendingReleaseNumber = 0;
    QString m_pendingText;
    QUrl m_feedUrl;
    // The feed or, after it, its signature.
    QPointer<QNetworkReply> m_feedReply;
    // The feed exactly as received: these bytes are verified, then parsed.
    QByteArray m_feedDocument;
    QPointer<FeedSignature> m_signature;
    // Why the feed transfer was stopped from this side; reported when it finishes.
    QString m_feedStopReason;
    QPointer<InstallerDownload> m_download;
    QPointer<QMessageBox> m_box;
    QPointer<QProgressDialog> m_progress;
    QPointer<QProgressBar> m_progressBar;
};
