#include "processprobe.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QString>

#include <csignal>
#include <optional>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// One line of the process table, from /proc/<pid>/stat.
struct ProcessEntry
{
    qint64 pid = 0;
    qint64 parent = 0;
    char state = '?';
};

// The entry of pid, or nothing when /proc no longer lists it. The command
// name in parentheses may itself hold spaces and parentheses, so the fields
// are read after its last ')'.
std::optional<ProcessEntry> readEntry(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray text = stat.readAll();
    const qsizetype afterName = text.lastIndexOf(')');
    if (afterName < 0)
        return std::nullopt;
    const QList<QByteArray> fields = text.mid(afterName + 2).split(' ');
    if (fields.size() < 2 || fields.first().isEmpty())
        return std::nullopt;
    return ProcessEntry{pid, fields.at(1).toLongLong(), fields.first().at(0)};
}

QList<ProcessEntry> processTable()
{
    QList<ProcessEntry> table;
    for (const QString &name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const qint64 pid = name.toLongLong(&isNumber);
        if (!isNumber)
            continue;
        if (const std::optional<ProcessEntry> entry = readEntry(pid))
            table << *entry;
    }
    return table;
}

// Zombies ('Z') have ended and wait for their parent; dead ones ('X') are
// on their way out of the table.
bool hasEnded(const ProcessEntry &entry)
{
    return entry.state == 'Z' || entry.state == 'X';
}

} // namespace

namespace ProcessProbe {

bool exists(qint64 pid)
{
    return ::kill(pid_t(pid), 0) == 0;
}

bool isRunning(qint64 pid)
{
    const std::optional<ProcessEntry> entry = readEntry(pid);
    return entry && !hasEnded(*entry);
}

qint64 parentOf(qint64 pid)
{
    const std::optional<ProcessEntry> entry = readEntry(pid);
    return entry ? entry->parent : -1;
}

int openHandles()
{
    return int(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot).size());
}

int childProcesses()
{
    const qint64 self = ::getpid();
    int children = 0;
    for (const ProcessEntry &entry : processTable()) {
        if (entry.parent == self)
            ++children;
    }
    return children;
}

QList<qint64> runningProcessesOf(const QString &executable)
{
    const QString wanted = QFileInfo(executable).absoluteFilePath();
    QList<qint64> found;
    for (const ProcessEntry &entry : processTable()) {
        if (!hasEnded(entry) && QFileInfo(QStringLiteral("/proc/%1/exe").arg(entry.pid)).symLinkTarget() == wanted)
            found << entry.pid;
    }
    return found;
}

#ifdef Q_OS_LINUX
QString UserProcess::describe() const
{
    return QStringLiteral("%1: %2").arg(pid).arg(arguments.join(QLatin1Char(' ')));
}

QList<UserProcess> processesOfThisUser()
{
    QList<UserProcess> found;
    const qint64 self = ::getpid();
    for (const ProcessEntry &entry : processTable()) {
        struct stat owner;
        const QByteArray folder = QFile::encodeName(QStringLiteral("/proc/%1").arg(entry.pid));
        if (entry.pid == self || hasEnded(entry) || ::stat(folder.constData(), &owner) != 0 || owner.st_uid != ::getuid())
            continue;
        QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(entry.pid));
        if (!commandLine.open(QIODevice::ReadOnly))
            continue;
        const QByteArray raw = commandLine.readAll();
        if (raw.isEmpty()) // a kernel thread, or one that just ended
            continue;
        UserProcess process;
        process.pid = entry.pid;
        for (const QByteArray &argument : raw.split('\0')) {
            if (!argument.isEmpty())
                process.arguments << QFile::decodeName(argument);
        }
        found << process;
    }
    return found;
}

qint64 statusKiB(qint64 pid, const char *field)
{
    QFile status(pid == 0 ? QStringLiteral("/proc/self/status") : QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray prefix = QByteArray(field) + ':';
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (!line.startsWith(prefix))
            continue;
        // "VmRSS:	   12345 kB"
        const QList<QByteArray> parts = line.mid(prefix.size()).simplified().split(' ');
        bool isNumber = false;
        const qint64 value = parts.value(0).toLongLong(&isNumber);
        return isNumber ? value : -1;
    }
    return -1;
}
#endif

qint64 heapBytesInUse()
{
    const struct mallinfo2 heap = ::mallinfo2();
    return qint64(heap.uordblks + heap.hblkhd);
}

qint64 residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

} // namespace ProcessProbe
