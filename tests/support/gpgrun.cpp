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

} // namespace GpgRun
