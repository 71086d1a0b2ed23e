#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

class QProcess;

// Checks one release feed against its detached signature with gpgv, without
// blocking: the received bytes, the signature and the accepted keys are
// written to a private temporary folder, and gpgv runs as a child process.
// The caller parses the same bytes it handed in, so what is verified is
// exactly what is read.
//
// Exactly one of verified() or refused() follows a successful start(),
// unless abort() is called first.
class FeedSignature : public QObject
{
    Q_OBJECT

public:
    explicit FeedSignature(QObject *parent = nullptr);
    ~FeedSignature() override;

    // On false nothing runs, no signal follows and *error says why.
    bool start(const QByteArray &feed, const QByteArray &signature, const QByteArray &keyring, QString *error);

    // Ends gpgv and removes the temporary files. Harmless when nothing runs.
    void abort();

    // What gpgv's status lines and exit code say, as the reason a feed is
    // refused, or an empty string when the signature is good.
    static QString judge(int exitCode, const QByteArray &statusLines);

signals:
    void verified();
    void refused(const QString &reason);

private:
    QString nativePath(const QString &name) const;
    bool writeFile(const QString &name, const QByteArray &content, QString *error) const;
    void whenGpgvFinished();
    void whenGpgvFailedToStart();
    void whenGpgvTimedOut();
    void finishWith(const QString &reason);

    std::unique_ptr<QTemporaryDir> m_folder;
    QPointer<QProcess> m_gpgv;
    QTimer m_deadline;
};
