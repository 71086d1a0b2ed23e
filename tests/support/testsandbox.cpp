#include "testsandbox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>

#ifdef Q_OS_WIN
#include <shlobj.h>
#endif

namespace {

const char *const appFolder = "Halvard Software/Kestrel Downloader";

#ifdef Q_OS_WIN

// Asked of the shell itself rather than of QStandardPaths, so that the
// tests compare the application's folders with the system's own answer.
QString knownFolder(const KNOWNFOLDERID &id)
{
    wchar_t *path = nullptr;
    QString folder;
    if (SUCCEEDED(SHGetKnownFolderPath(id, KF_FLAG_DEFAULT, nullptr, &path)))
        folder = QDir::fromNativeSeparators(QString::fromWCharArray(path));
    CoTaskMemFree(path);
    if (folder.isEmpty())
        qFatal("the shell names no known folder");
    return folder;
}

QString applicationFolder(const KNOWNFOLDERID &id)
{
    return QStringLiteral("%1/%2").arg(knownFolder(id), QLatin1String(appFolder));
}

// Everything the application and its updater keep in the user folders: its
// roaming and local folders, and in the download folder the output folders
// and the installer names prepareOutputDir() and the updater use, all of
// which begin with "KestrelD".
void removeApplicationFiles()
{
    QStringList left;
    for (const KNOWNFOLDERID *id : {&FOLDERID_RoamingAppData, &FOLDERID_LocalAppData}) {
        QDir folder(applicationFolder(*id));
        if (folder.exists() && !folder.removeRecursively())
            left << folder.path();
    }
    const QDir downloads(knownFolder(FOLDERID_Downloads));
    const QFileInfoList entries = downloads.entryInfoList({QStringLiteral("KestrelD*")},
                                                          QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    for (const QFileInfo &entry : entries) {
        const bool removed = entry.isDir() && !entry.isSymLink() ? QDir(entry.filePath()).removeRecursively()
                                                                : QFile::remove(entry.filePath());
        if (!removed)
            left << entry.filePath();
    }
    // A case that started on an earlier case's files would test nothing.
    if (!left.isEmpty())
        qFatal("cannot empty the application's folders: %s", qPrintable(left.join(QStringLiteral(", "))));
}

} // namespace

// Windows keeps its user folders where the shell says, whatever the
// environment holds, so the sandbox cannot move them. The tests run in a
// throw-away Wine prefix instead (scripts/windows/ctest-wine.sh), whose user
// folders are new and are removed with it; without the variable that script
// sets, they would be a real user's folders, which no test may touch. Every
// sandbox of a run shares them, so each one starts and ends with the
// application's files gone, as a new Linux sandbox starts empty.
TestSandbox::TestSandbox()
{
    if (!qEnvironmentVariableIsSet("KESTREL_TEST_DISPOSABLE_PROFILE"))
        qFatal("the tests change the Windows user folders: run them in a throw-away Wine prefix "
               "(scripts/windows/ctest-wine.sh)");
    removeApplicationFiles();
}

TestSandbox::~TestSandbox()
{
    removeApplicationFiles();
}

QString TestSandbox::home() const
{
    return knownFolder(FOLDERID_Profile);
}

// Where the tool and ffmpeg are copied to: the roaming folder.
QString TestSandbox::dataFolder() const
{
    return applicationFolder(FOLDERID_RoamingAppData);
}

// Settings and the log stay on this machine: the local folder.
QString TestSandbox::localDataFolder() const
{
    return applicationFolder(FOLDERID_LocalAppData);
}

QString TestSandbox::settingsFile() const
{
    return localDataFolder() + QStringLiteral("/settings.ini");
}

QString TestSandbox::downloadFolder() const
{
    return knownFolder(FOLDERID_Downloads);
}

QStringList TestSandbox::environment() const
{
    return {};
}

void TestSandbox::applyToThisProcess() const
{
}

#else

struct Variable
{
    const char *name;
    const char *relativePath;
};

// HOME and every XDG folder a Qt program may ask for.
constexpr Variable sandboxVariables[] = {
    {"HOME", ""},
    {"XDG_DATA_HOME", ".local/share"},
    {"XDG_CONFIG_HOME", ".config"},
    {"XDG_CACHE_HOME", ".cache"},
    {"XDG_STATE_HOME", ".local/state"},
    {"XDG_RUNTIME_DIR", "runtime"},
};

} // namespace

TestSandbox::TestSandbox()
{
    QDir root(m_root.path());
    for (const Variable &variable : sandboxVariables)
        root.mkpath(QString::fromLatin1(variable.relativePath).isEmpty() ? QStringLiteral(".") : QString::fromLatin1(variable.relativePath));
    QFile::setPermissions(root.filePath(QStringLiteral("runtime")),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

QString TestSandbox::home() const
{
    return m_root.path();
}

QString TestSandbox::dataFolder() const
{
    return QStringLiteral("%1/.local/share/%2").arg(home(), QLatin1String(appFolder));
}

TestSandbox::~TestSandbox() = default;

// One folder holds everything on Linux.
QString TestSandbox::localDataFolder() const
{
    return dataFolder();
}

QString TestSandbox::settingsFile() const
{
    return localDataFolder() + QStringLiteral("/settings.ini");
}

QString TestSandbox::downloadFolder() const
{
    return home() + QStringLiteral("/Downloads");
}

QStringList TestSandbox::environment() const
{
    QStringList variables;
    for (const Variable &variable : sandboxVariables) {
        const QString path = QString::fromLatin1(variable.relativePath).isEmpty()
                                 ? home()
                                 : QStringLiteral("%1/%2").arg(home(), QLatin1String(variable.relativePath));
        variables << QStringLiteral("%1=%2").arg(QLatin1String(variable.name), path);
    }
    return variables;
}

void TestSandbox::applyToThisProcess() const
{
    for (const QString &variable : environment()) {
        const qsizetype equals = variable.indexOf(QLatin1Char('='));
        qputenv(variable.left(equals).toLatin1().constData(), variable.mid(equals + 1).toLocal8Bit());
    }
}

#endif
