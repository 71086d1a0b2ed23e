#include "feedsigner.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>

namespace {

const char releaseUser[] = "Kestrel Test Release <release@example.invalid>";
const char strangerUser[] = "Kestrel Test Stranger <stranger@example.invalid>";

bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

FeedSigner::FeedSigner()
{
    if (!m_home.isValid())
        return;
    QByteArray armoured;
    m_valid = gpg({QStringLiteral("--quick-gen-key"), QString::fromUtf8(releaseUser), QStringLiteral("ed25519"),
                   QStringLiteral("sign"), QStringLiteral("never")})
              && gpg({QStringLiteral("--quick-gen-key"), QString::fromUtf8(strangerUser), QStringLiteral("ed25519"),
                      QStringLiteral("sign"), QStringLiteral("never")})
              && gpg({QStringLiteral("--armor"), QStringLiteral("--export"), QString::fromUtf8(releaseUser)}, &armoured)
              && writeFile(releaseKeyFile(), armoured);
}

FeedSigner::~FeedSigner()
{
    QProcess::execute(QStringLiteral("gpgconf"), {QStringLiteral("--homedir"), m_home.path(), QStringLiteral("--kill"),
                                                  QStringLiteral("gpg-agent")});
}

QByteArray FeedSigner::sign(const QByteArray &document, Key key) const
{
    const QString documentPath = m_home.filePath(QStringLiteral("document"));
    const QString signaturePath = documentPath + QStringLiteral(".sig");
    const char *user = key == Key::Release ? releaseUser : strangerUser;
    if (!writeFile(documentPath, document)
        || !gpg({QStringLiteral("--local-user"), QString::fromUtf8(user), QStringLiteral("--output"), signaturePath,
                 QStringLiteral("--detach-sign"), documentPath}))
        return QByteArray();
    return readFile(signaturePath);
}

bool FeedSigner::gpg(const QStringList &arguments, QByteArray *output) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("GNUPGHOME"), m_home.path());
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("gpg"),
                  QStringList{QStringLiteral("--batch"), QStringLiteral("--yes"), QStringLiteral("--passphrase"),
                              QString(), QStringLiteral("--pinentry-mode"), QStringLiteral("loopback")}
                      + arguments);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        qWarning("gpg hangs");
        return false;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        qWarning("gpg failed: %s", process.readAllStandardError().constData());
        return false;
    }
    if (output)
        *output = process.readAllStandardOutput();
    return true;
}
