#include "settings.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace Settings {

QString folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

std::unique_ptr<QSettings> open()
{
    QDir().mkpath(folder());
    return std::make_unique<QSettings>(QStringLiteral("%1/%2").arg(folder(), fileName()), QSettings::IniFormat);
}

bool writeIfChanged(QSettings &settings, const QString &key, const QString &value)
{
    if (settings.value(key, QString()).toString() == value)
        return false;
    settings.setValue(key, value);
    return true;
}

} // namespace Settings
