#pragma once

#include <QByteArray>
#include <QString>

// The identifier this computer is known by: the system's own when it has one
// (pass QSysInfo::machineUniqueId()), otherwise a random UUID made up once
// and kept in "<storeFolder>/machine-id", so that it stays the same from one
// run to the next. Should that file be impossible to write, a new UUID comes
// back each time: the caller keeps it for the rest of the run.
QString machineIdentifier(const QByteArray &systemIdentifier, const QString &storeFolder);

// The name of the file in the store folder.
QString machineIdentifierFileName();
