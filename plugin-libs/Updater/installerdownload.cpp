#include "installerdownload.h"

#include "releasefeed.h"

#include <QDir>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

InstallerDownload::InstallerDownload(QNetworkAccessManager *network, const Target &target, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_target(target)
    , m_file(target.finalPath + QStringLiteral(".part"))
{
}

InstallerDownload::~InstallerDownload()
{
    abort();
}

QString InstallerDownload::partPath() const
{
    return m_file.fileName();
}

bool InstallerDownload::start(QString *error)
{
    // A partial file left by an earlier, interrupted run is simply overwritten.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        *error = tr("Could not save the installer as \"%1\": %2").arg(QDir::toNativeSeparators(partPath()), m_file.errorString());
        return false;
    }

    QNetworkRequest request(m_target.url);
    request.setTransferTimeout(m_target.timeoutMs);
    // Every hop of a redirect must pass the same address check as the feed's address.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    m_reply = m_network->get(request);

    connect(m_reply, &QNetworkReply::metaDataChanged, this, &InstallerDownload::whenMetaDataChanged);
    connect(m_reply, &QNetworkReply::readyRead, this, &InstallerDownload::whenReadyRead);
    connect(m_reply, &QNetworkReply::redirected, this, &InstallerDownload::whenRedirected);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &InstallerDownload::progress);
    connect(m_reply, &QNetworkReply::finished, this, &InstallerDownload::whenFinished);
    return true;
}

void InstallerDownload::abort()
{
    if (QNetworkReply *reply = m_reply.data()) {
        m_reply.clear();
        // Disconnected first: the abort finishes the reply at once, and this
        // object's handlers must not report it.
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
    discardPartialFile();
}

// Refused before the body arrives when the server announces its size.
void InstallerDownload::whenMetaDataChanged()
{
    if (!m_reply || !m_stopReason.isEmpty())
        return;
    bool known = false;
    const qint64 announced = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong(&known);
    if (known && announced > m_target.maximumSize)
        stopWith(tooLargeMessage());
}

void InstallerDownload::whenReadyRead()
{
    if (m_reply)
        consume(m_reply);
}

void InstallerDownload::consume(QNetworkReply *reply)
{
    const QByteArray data = reply->readAll();
    // A body that belongs to an error answer is not part of any installer;
    // the finished handler reports the status.
    if (!m_stopReason.isEmpty() || reply->error() != QNetworkReply::NoError)
        return;
    m_received += data.size();
    if (m_received > m_target.maximumSize) {
        stopWith(tooLargeMessage());
        return;
    }
    m_hash.addData(data);
    if (m_file.write(data) != data.size())
        stopWith(tr("Could not save the installer as \"%1\": %2").arg(QDir::toNativeSeparators(partPath()), m_file.errorString()));
}

void InstallerDownload::whenRedirected(const QUrl &url)
{
    if (!m_reply)
        return;
    const QString refusal = ReleaseFeed::addressRefusal(url);
    if (refusal.isEmpty()) {
        emit m_reply->redirectAllowed();
        return;
    }
    stopWith(tr("The installer download was redirected to an address that is not allowed: %1.").arg(refusal));
}

void InstallerDownload::stopWith(const QString &message)
{
    m_stopReason = message;
    if (m_reply)
        m_reply->abort();
}

QString InstallerDownload::tooLargeMessage() const
{
    return tr("The installer was refused: it is larger than %1, more than an installer may be.")
        .arg(QLocale().formattedDataSize(m_target.maximumSize, 0));
}

void InstallerDownload::whenFinished()
{
    QNetworkReply *reply = m_reply.data();
    if (!reply)
        return;
    m_reply.clear();
    reply->deleteLater();

    QString message = m_stopReason;
    if (message.isEmpty() && reply->error() != QNetworkReply::NoError) {
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (status.isValid() && status.toInt() >= 400)
            message = tr("The installer could not be downloaded: the server answered HTTP %1 %2.")
                          .arg(status.toInt())
                          .arg(reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString());
        else if (reply->error() == QNetworkReply::OperationCanceledError || reply->error() == QNetworkReply::TimeoutError)
            // Nothing on this side stopped it, so the transfer timeout did.
            message = tr("The installer download stalled: nothing arrived for %1 seconds.")
                          .arg(m_target.timeoutMs / 1000.0);
        else
            message = tr("Could not reach the update server: %1").arg(reply->errorString());
    }
    if (message.isEmpty()) {
        // Whatever is still buffered belongs to the file too.
        consume(reply);
        message = m_stopReason;
    }
    if (message.isEmpty() && !m_file.flush())
        message = tr("Could not save the installer as \"%1\": %2").arg(QDir::toNativeSeparators(partPath()), m_file.errorString());
    m_file.close();

    if (message.isEmpty() && m_hash.result() != m_target.sha256)
        message = tr("The downloaded installer is damaged (checksum mismatch) and was deleted.");

    if (message.isEmpty()) {
        // Whatever has the final name now is an older download or not ours at all.
        if (QFile::exists(m_target.finalPath) && !QFile::remove(m_target.finalPath))
            message = tr("Could not replace the earlier file \"%1\".").arg(QDir::toNativeSeparators(m_target.finalPath));
        else if (!m_file.rename(m_target.finalPath))
            message = tr("Could not rename the installer to \"%1\": %2").arg(QDir::toNativeSeparators(m_target.finalPath), m_file.errorString());
    }

    if (!message.isEmpty()) {
        discardPartialFile();
        emit failed(message);
        return;
    }
    emit succeeded(m_target.finalPath);
}

void InstallerDownload::discardPartialFile()
{
    m_file.close();
    // After a successful rename the file name is the final one and stays.
    if (m_file.fileName().endsWith(QLatin1String(".part")))
        m_file.remove();
}
