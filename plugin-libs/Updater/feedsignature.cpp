#include "feedsignature.h"

#include "releasekey.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace {

// gpgv checks a feed in milliseconds; a minute means it hangs.
constexpr int gpgvDeadlineMs = 60000;

bool hasStatus(const QByteArray &statusLines, const char *keyword)
{
    return statusLines.contains(QByteArray("[GNUPG:] ") + keyword + ' ');
}

} // namespace

FeedSignature::FeedSignature(QObject *parent)
    : QObject(parent)
{
    m_deadline.setSingleShot(true);
    m_deadline.setInterval(gpgvDeadlineMs);
    connect(&m_deadline, &QTimer::timeout, this, &FeedSignature::whenGpgvTimedOut);
}

FeedSignature::~FeedSignature()
{
    abort();
}

bool FeedSignature::start(const QByteArray &feed, const QByteArray &signature, const QByteArray &keyring, QString *error)
{
    abort();
    // Made readable by this user only, so no other account can swap the
    // feed between its check and its reading.
    m_folder = std::make_unique<QTemporaryDir>();
    if (!m_folder->isValid()) {
        *error = tr("Could not create a temporary folder for the signature check: %1").arg(m_folder->errorString());
        abort();
        return false;
    }
    if (!writeFile(QStringLiteral("feed.json"), feed, error) || !writeFile(QStringLiteral("feed.json.sig"), signature, error)
        || !writeFile(QStringLiteral("keyring.gpg"), keyring, error)) {
        abort();
        return false;
    }

    auto *gpgv = new QProcess(this);
    gpgv->setProgram(ReleaseKey::gpgvPath());
    // A home folder that does not exist keeps the user's own keyrings and
    // settings out of the check; gpgv does not create it.
    gpgv->setArguments({QStringLiteral("--homedir"), nativePath(QStringLiteral("no-home")),
                        QStringLiteral("--status-fd"), QStringLiteral("1"),
                        QStringLiteral("--keyring"), nativePath(QStringLiteral("keyring.gpg")),
                        nativePath(QStringLiteral("feed.json.sig")), nativePath(QStringLiteral("feed.json"))});
    gpgv->setStandardInputFile(QProcess::nullDevice());
    connect(gpgv, &QProcess::finished, this, &FeedSignature::whenGpgvFinished);
    connect(gpgv, &QProcess::errorOccurred, this, [this](QProcess::ProcessError problem) {
        if (problem == QProcess::FailedToStart)
            whenGpgvFailedToStart();
    });
    m_gpgv = gpgv;
    m_deadline.start();
    gpgv->start();
    return true;
}

void FeedSignature::abort()
{
    m_deadline.stop();
    if (QProcess *gpgv = m_gpgv.data()) {
        m_gpgv.clear();
        gpgv->disconnect(this);
        // Deleting the process ends it; gpgv holds nothing that needs a clean end.
        delete gpgv;
    }
    m_folder.reset();
}

QString FeedSignature::judge(int exitCode, const QByteArray &statusLines)
{
    if (exitCode == 0 && hasStatus(statusLines, "GOODSIG") && hasStatus(statusLines, "VALIDSIG"))
        return QString();
    if (hasStatus(statusLines, "NO_PUBKEY") || hasStatus(statusLines, "ERRSIG"))
        return tr("it is signed by another key than the application's release key");
    if (hasStatus(statusLines, "BADSIG"))
        return tr("its signature does not match its content");
    return tr("its signature is not a valid signature");
}

// gpgv.exe is given its files the way Windows writes paths.
QString FeedSignature::nativePath(const QString &name) const
{
    return QDir::toNativeSeparators(m_folder->filePath(name));
}

bool FeedSignature::writeFile(const QString &name, const QByteArray &content, QString *error) const
{
    QFile file(m_folder->filePath(name));
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush())
        return true;
    *error = tr("Could not write \"%1\" for the signature check: %2").arg(QDir::toNativeSeparators(file.fileName()), file.errorString());
    return false;
}

void FeedSignature::whenGpgvFinished()
{
    QProcess *gpgv = m_gpgv.data();
    if (!gpgv)
        return;
    const int exitCode = gpgv->exitStatus() == QProcess::NormalExit ? gpgv->exitCode() : -1;
    finishWith(judge(exitCode, gpgv->readAllStandardOutput()));
}

void FeedSignature::whenGpgvFailedToStart()
{
    finishWith(tr("gpgv (%1) could not be started").arg(QDir::toNativeSeparators(ReleaseKey::gpgvPath())));
}

void FeedSignature::whenGpgvTimedOut()
{
    finishWith(tr("gpgv did not answer within %1 seconds").arg(gpgvDeadlineMs / 1000));
}

// The process is removed before the signal: its receiver may start the next
// step, or a new check, at once.
void FeedSignature::finishWith(const QString &reason)
{
    if (QProcess *gpgv = m_gpgv.data()) {
        m_gpgv.clear();
        gpgv->disconnect(this);
        if (gpgv->state() != QProcess::NotRunning)
            gpgv->kill();
        gpgv->deleteLater();
    }
    m_deadline.stop();
    m_folder.reset();
    if (reason.isEmpty())
        emit verified();
    else
        emit refused(reason);
}
