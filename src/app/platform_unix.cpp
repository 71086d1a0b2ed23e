#include "platform.h"

namespace Platform {

QString toolFileName()
{
    return QStringLiteral("kestreldl2");
}

QString ffmpegFileName()
{
    return QStringLiteral("ffmpeg");
}

QString pluginFileName(const QString &baseName)
{
    return baseName + QStringLiteral(".so");
}

QUrl folderUrl(const QString &folder)
{
    // A bare path read as an address has no scheme and is not opened as a
    // folder here; a local-file address is.
    return QUrl::fromLocalFile(folder);
}

} // namespace Platform

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QList>
#include <QThread>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace Platform {

namespace {

// Whether a process of this user runs the tool file: as its executable, or
// as the script its interpreter was given.
bool runsTool(const QString &processFolder, const QStringList &toolPaths)
{
    struct stat owner;
    if (::stat(QFile::encodeName(processFolder).constData(), &owner) != 0 || owner.st_uid != ::getuid())
        return false;

    const QString executable = QFileInfo(processFolder + QStringLiteral("/exe")).symLinkTarget();
    if (toolPaths.contains(executable))
        return true;

    QFile commandLine(processFolder + QStringLiteral("/cmdline"));
    if (!commandLine.open(QIODevice::ReadOnly))
        return false;
    const QList<QByteArray> items = commandLine.readAll().split('\0');
    for (qsizetype i = 0; i < qMin<qsizetype>(2, items.size()); ++i) {
        if (toolPaths.contains(QFile::decodeName(items.at(i))))
            return true;
    }
    return false;
}

// A process counts as gone once it has exited, also while it waits as a
// zombie for its parent, which may be this very program's event loop.
bool hasExited(pid_t pid)
{
    QFile status(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return true;
    const QByteArray text = status.readAll();
    const qsizetype afterName = text.lastIndexOf(')');
    return afterName < 0 || text.mid(afterName + 2, 1) == "Z" || text.mid(afterName + 2, 1) == "X";
}

// The parent of every process on the system.
QHash<pid_t, pid_t> parentsOfProcesses()
{
    QHash<pid_t, pid_t> parents;
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        bool isNumber = false;
        const pid_t pid = pid_t(entry.toInt(&isNumber));
        if (!isNumber)
            continue;
        QFile status(QStringLiteral("/proc/%1/stat").arg(entry));
        if (!status.open(QIODevice::ReadOnly))
            continue;
        const QByteArray text = status.readAll();
        const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
        if (fields.size() > 1)
            parents.insert(pid, pid_t(fields.at(1).toInt()));
    }
    return parents;
}

// The tool's processes and everything they started (the real downloader
// behind a launcher, and its ffmpeg), gathered before any of them is killed,
// while the family tree is still intact.
QList<pid_t> toolProcessTrees(const QStringList &toolPaths)
{
    const QHash<pid_t, pid_t> parents = parentsOfProcesses();
    const pid_t self = ::getpid();
    QList<pid_t> found;
    for (auto it = parents.cbegin(); it != parents.cend(); ++it) {
        if (it.key() != self && runsTool(QStringLiteral("/proc/%1").arg(it.key()), toolPaths))
            found << it.key();
    }
    for (qsizetype i = 0; i < found.size(); ++i) {
        for (auto it = parents.cbegin(); it != parents.cend(); ++it) {
            if (it.value() == found.at(i) && it.key() != self && !found.contains(it.key()))
                found << it.key();
        }
    }
    return found;
}

} // namespace

bool killTool(const QString &toolPath, int timeoutMs)
{
    QStringList toolPaths{toolPath};
    const QString canonicalToolPath = QFileInfo(toolPath).canonicalFilePath();
    if (!canonicalToolPath.isEmpty() && canonicalToolPath != toolPath)
        toolPaths << canonicalToolPath;

    QList<pid_t> killed;
    for (pid_t pid : toolProcessTrees(toolPaths)) {
        if (::kill(pid, SIGKILL) == 0)
            killed << pid;
    }

    QDeadlineTimer deadline(timeoutMs);
    for (pid_t pid : std::as_const(killed)) {
        while (!hasExited(pid)) {
            if (deadline.hasExpired())
                return false;
            QThread::msleep(2);
        }
    }
    return true;
}

} // namespace Platform
