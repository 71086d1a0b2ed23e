#include "gpgrun.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QtGlobal>

namespace GpgRun {

bool run(const QString &home, const QStringList &arguments, QByteArray *output)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("GNUPGHOME"), home);
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

std::optional<QByteArray> makeTestKeys(const QString &home)
{
    QByteArray armoured;
    const bool made
        = run(home, {QStringLiteral("--quick-gen-key"), QString::fromUtf8(releaseUser), QStringLiteral("ed25519"),
                     QStringLiteral("sign"), QStringLiteral("never")})
          && run(home, {QStringLiteral("--quick-gen-key"), QString::fromUtf8(strangerUser), QStringLiteral("ed25519"),
                        QStringLiteral("sign"), QStringLiteral("never")})
          && run(home, {QStringLiteral("--armor"), QStringLiteral("--export"), QString::fromUtf8(releaseUser)}, &armoured)
          && armoured.startsWith("-----BEGIN PGP PUBLIC KEY BLOCK-----");
    return made ? std::optional<QByteArray>(armoured) : std::nullopt;
}

bool signFile(const QString &home, const char *user, const QString &file, const QString &signature)
{
    return run(home, {QStringLiteral("--local-user"), QString::fromUtf8(user), QStringLiteral("--output"), signature,
                      QStringLiteral("--detach-sign"), file});
}

} // namespace GpgRun
