#include "installerfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace InstallerFolder {

namespace {

QString parentLocation()
{
#if defined(Q_OS_WIN)
    return QDir::tempPath();
#else
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
#endif
}

QString folderName()
{
#if defined(Q_OS_WIN)
    return QStringLiteral("KestrelD-update");
#else
    return QStringLiteral("updates");
#endif
}

// A link in the folder's place would send the installer wherever it points.
bool removeEarlierContent(const QString &folder)
{
    const QFileInfo info(folder);
    if (info.isSymLink())
        return QFile::remove(folder);
    return !info.exists() || QDir(folder).removeRecursively();
}

bool makeOwnerOnly(const QString &folder)
{
#if defined(Q_OS_WIN)
    // The user's temporary folder already keeps other accounts out, and a
    // new folder inherits its access rules.
    Q_UNUSED(folder)
    return true;
#else
    const QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    const QFileDevice::Permissions groupOrOthers = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
                                                 | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
    return QFile::setPermissions(folder, ownerOnly) && (QFile::permissions(folder) & groupOrOthers) == 0;
#endif
}

} // namespace

QString location()
{
    const QString parent = parentLocation();
    return parent.isEmpty() ? QString() : QDir::cleanPath(QDir(parent).absoluteFilePath(folderName()));
}

Preparation prepare()
{
    Preparation result;
    const QString folder = location();
    // The problems and refusals go into the plug-in's translated boxes ("The
    // installer cannot be downloaded: %1."), so they are translated too; this
    // namespace has no QObject to lend its tr().
    if (folder.isEmpty()) {
        result.problem
            = QCoreApplication::translate("InstallerFolder", "there is no folder for the installer on this system");
        return result;
    }
    if (!removeEarlierContent(folder) || !QDir().mkpath(folder) || !makeOwnerOnly(folder)) {
        //: %1 is the folder's path.
        const QString problem = QCoreApplication::translate(
            "InstallerFolder", "the folder \"%1\" could not be made ready for the installer");
        result.problem = problem.arg(QDir::toNativeSeparators(folder));
        return result;
    }
    result.path = folder;
    return result;
}

QString startRefusal(const QString &path)
{
    const QFileInfo file(path);
    if (!QDir::isAbsolutePath(path) || QDir::cleanPath(file.absolutePath()) != location())
        //: %1 is the installer's path. Shown inside "The installer was not started: %1."
        return QCoreApplication::translate("InstallerFolder", "\"%1\" does not lie in the installer's own folder")
            .arg(QDir::toNativeSeparators(path));
#if defined(Q_OS_WIN)
    if (!file.fileName().endsWith(QLatin1String(".exe"), Qt::CaseInsensitive))
        //: %1 is the installer's path. Shown inside "The installer was not started: %1."
        return QCoreApplication::translate("InstallerFolder", "\"%1\" is not a program (.exe)")
            .arg(QDir::toNativeSeparators(path));
#endif
    return QString();
}

} // namespace InstallerFolder
