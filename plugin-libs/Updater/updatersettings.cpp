#include "updatersettings.h"

#include <QSettings>
#include <QStandardPaths>

QString UpdaterSettings::filePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/settings.ini");
}

UpdaterSettings UpdaterSettings::load()
{
    UpdaterSettings result;
    result.feedUrl = QUrl(QString::fromLatin1(defaultFeedUrl));

    const QSettings settings(filePath(), QSettings::IniFormat);

    // An address that is set but unusable is kept as it is: the address check
    // refuses it with a message naming it, rather than quietly asking the
    // default server instead of the one the user chose.
    const QString feed = settings.value(QStringLiteral("Updater/FeedUrl")).toString().trimmed();
    if (!feed.isEmpty())
        result.feedUrl = QUrl(feed, QUrl::StrictMode);

    const QVariant timeout = settings.value(QStringLiteral("Updater/TimeoutMs"));
    if (timeout.isValid()) {
        bool isNumber = false;
        const int milliseconds = timeout.toString().trimmed().toInt(&isNumber);
        if (isNumber && milliseconds > 0)
            result.timeoutMs = milliseconds;
        else
            result.problem = QStringLiteral("Updater/TimeoutMs \"%1\" is not a positive number of milliseconds; using %2")
                                 .arg(timeout.toString())
                                 .arg(defaultTimeoutMs);
    }
    return result;
}
