#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>

class QNetworkAccessManager;
class QNetworkReply;

// Fetches one installer into "<final path>.part", hashing it as it arrives,
// and only when its SHA-256 matches renames it to the final path. A file
// whose digest does not match is deleted, so it can never be started. An
// installer larger than the target's maximum is refused as soon as its
// announced size or its received bytes pass it.
//
// Exactly one of succeeded() or failed() follows start(), unless abort() is
// called first: an abort is the caller's own decision and is not reported.
class InstallerDownload : public QObject
{
    Q_OBJECT

public:
    struct Target
    {
        QUrl url;
        QByteArray sha256; // raw digest bytes
        QString finalPath;
        int timeoutMs = 30000;
        qint64 maximumSize = defaultMaximumSize;
    };

    // Far above any installer of the application (tens of MiB), far below
    // what would fill a disk.
    static constexpr qint64 defaultMaximumSize = qint64(512) * 1024 * 1024;

    InstallerDownload(QNetworkAccessManager *network, const Target &target, QObject *parent = nullptr);
    ~InstallerDownload() override;

    // Opens the partial file and sends the request. On false nothing was
    // started, no signal follows and *error says why.
    bool start(QString *error);

    // Stops the transfer and removes the partial file. Harmless when nothing
    // runs or after the download has ended.
    void abort();

    QString partPath() const;

signals:
    // total is -1 while the size is unknown
    void progress(qint64 received, qint64 total);
    void succeeded(const QString &finalPath);
    void failed(const QString &message);

private:
    void whenMetaDataChanged();
    void whenReadyRead();
    void consume(QNetworkReply *reply);
    void whenRedirected(const QUrl &url);
    void whenFinished();
    void stopWith(const QString &message);
    QString tooLargeMessage() const;
    void discardPartialFile();

    QNetworkAccessManager *m_network;
    const Target m_target;
    QFile m_file;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
    qint64 m_received = 0;
    QPointer<QNetworkReply> m_reply;
    // Why the transfer was stopped from this side; reported when it finishes.
    QString m_stopReason;
};
