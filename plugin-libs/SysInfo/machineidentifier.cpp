#include "machineidentifier.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QUuid>

QString machineIdentifierFileName()
{
    return QStringLiteral("machine-id");
}

QString machineIdentifier(const QByteArray &systemIdentifier, const QString &storeFolder)
{
    const QByteArray system = systemIdentifier.trimmed();
    if (!system.isEmpty())
        return QString::fromLatin1(system);

    const QString path = QDir(storeFolder).filePath(machineIdentifierFileName());
    // Closed before a new one is written: Windows does not replace a file
    // that is still open.
    {
        QFile stored(path);
        if (!storeFolder.isEmpty() && stored.open(QIODevice::ReadOnly)) {
            const QUuid uuid = QUuid::fromString(QString::fromLatin1(stored.read(64).trimmed()));
            // A damaged file is replaced rather than trusted: an identifier that
            // is not a UUID would be of no use to anyone it is shown to.
            if (!uuid.isNull())
                return uuid.toString(QUuid::WithoutBraces);
        }
    }

    const QString made = QUuid::createUuid().toString(QUuid::WithoutBraces);
    if (!storeFolder.isEmpty() && QDir().mkpath(storeFolder)) {
        // Written whole or not at all, so that a crash cannot leave half an identifier.
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(made.toLatin1() + '\n');
            file.commit();
        }
    }
    return made;
}
