#include "processprobe.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QString>

#include <csignal>
#include <malloc.h>
#include <unistd.h>

namespace ProcessProbe {

bool exists(qint64 pid)
{
    return ::kill(pid_t(pid), 0) == 0;
}

bool isRunning(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = stat.readAll();
    return text.mid(text.lastIndexOf(')') + 2, 1) != "Z";
}

int openHandles()
{
    return int(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot).size());
}

int childProcesses()
{
    int children = 0;
    const QString self = QString::number(::getpid());
    for (const QString &entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(entry));
        if (!stat.open(QIODevice::ReadOnly))
            continue;
        const QByteArray text = stat.readAll();
        const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
        if (fields.size() > 1 && QString::fromLatin1(fields.at(1)) == self)
            ++children;
    }
    return children;
}

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
