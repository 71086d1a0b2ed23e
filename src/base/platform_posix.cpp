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
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace Platform {

namespace {

// How long a stopped launcher has to end its tool and itself before it is
// killed: it needs a few milliseconds.
constexpr int stopGraceMs = 3000;

// What the kernel runs for the tool file when it is a script: the canonical
// path of the interpreter its "#!" line names ("/usr/bin/env NAME" looked up
// on PATH); empty for a program.
QString scriptInterpreter(const QString &toolPath)
{
    QFile tool(toolPath);
    if (!tool.open(QIODevice::ReadOnly))
        return {};
    const QByteArray firstLine = tool.readLine(4096);
    if (!firstLine.startsWith("#!"))
        return {};
    const QStringList words =
        QString::fromLocal8Bit(firstLine.mid(2)).split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    if (words.isEmpty())
        return {};
    QString interpreter = words.first();
    if (QFileInfo(interpreter).fileName() == QStringLiteral("env") && words.size() > 1)
        interpreter = QStandardPaths::findExecutable(words.at(1));
    return QFileInfo(interpreter).canonicalFilePath();
}

// Whether a process of this user runs the tool file: as its executable, or,
// when the tool is a script, as the script its interpreter runs. A process
// that merely names the file ("less kestreldl2") runs another executable.
bool runsTool(const QString &processFolder, const QStringList &toolPaths, const QString &interpreter)
{
    struct stat owner;
    if (::stat(QFile::encodeName(processFolder).constData(), &owner) != 0 || owner.st_uid != ::getuid())
        return false;

    const QString executable = QFileInfo(processFolder + QStringLiteral("/exe")).symLinkTarget();
    if (toolPaths.contains(executable))
        return true;
    if (interpreter.isEmpty() || executable != interpreter)
        return false;

    QFile commandLine(processFolder + QStringLiteral("/cmdline"));
    if (!commandLine.open(QIODevice::ReadOnly))
        return false;
    const QList<QByteArray> items = commandLine.readAll().split('\0');
    return items.size() > 1 && toolPaths.contains(QFile::decodeName(items.at(1)));
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
// The tool's own processes come first, as *toolCount of them.
QList<pid_t> toolProcessTrees(const QStringList &toolPaths, const QString &interpreter, qsizetype *toolCount)
{
    const QHash<pid_t, pid_t> parents = parentsOfProcesses();
    const pid_t self = ::getpid();
    QList<pid_t> found;
    for (auto it = parents.cbegin(); it != parents.cend(); ++it) {
        if (it.key() != self && runsTool(QStringLiteral("/proc/%1").arg(it.key()), toolPaths, interpreter))
            found << it.key();
    }
    *toolCount = found.size();
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

    qsizetype toolCount = 0;
    const QList<pid_t> tree = toolProcessTrees(toolPaths, scriptInterpreter(toolPath), &toolCount);

    // Told to stop first: the launcher then ends its tool's whole process
    // group and exits with code 1, as a run ended by taskkill does on
    // Windows. Whatever has not ended soon after is killed outright.
    QDeadlineTimer deadline(timeoutMs);
    for (qsizetype i = 0; i < toolCount; ++i)
        ::kill(tree.at(i), SIGTERM);
    const QDeadlineTimer grace(qMin(stopGraceMs, timeoutMs));
    const auto allEnded = [&tree](const QDeadlineTimer &until) {
        for (const pid_t pid : tree) {
            while (!hasExited(pid)) {
                if (until.hasExpired())
                    return false;
                QThread::msleep(2);
            }
        }
        return true;
    };
    if (allEnded(grace))
        return true;
    for (const pid_t pid : tree) {
        if (!hasExited(pid))
            ::kill(pid, SIGKILL);
    }
    return allEnded(deadline);
}

} // namespace Platform
