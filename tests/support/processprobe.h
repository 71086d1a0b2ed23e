#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

// What the tests ask the system about processes: whether a tool run still
// lives, and what this test program holds open and in memory. processprobe_posix.cpp reads
// Linux's /proc; processprobe_win.cpp asks Windows.
namespace ProcessProbe {

// Whether the process exists: it runs or, on Linux, it has ended but its
// parent has not reaped it yet (a zombie).
bool exists(qint64 pid);

// Whether the process still runs: a zombie has ended.
bool isRunning(qint64 pid);

// How many files, pipes and the like this process holds open: its file
// descriptors on Linux, its handles on Windows.
int openHandles();

// The processes this one started that the system still lists: on Linux
// zombies too, on Windows the running ones.
int childProcesses();

// The parent of the process, or -1 when the system no longer lists it.
qint64 parentOf(qint64 pid);

// The running processes whose program is the file executable (not ones that
// merely name it on their command line).
QList<qint64> runningProcessesOf(const QString &executable);

#ifdef Q_OS_LINUX
// A process of this user with its command line.
struct UserProcess
{
    qint64 pid = 0;
    QStringList arguments;

    QString describe() const;
};

// The live processes of this user other than this one, with their command
// lines. Linux only: other systems do not hand out command lines readily.
QList<UserProcess> processesOfThisUser();

// A memory figure of /proc/<pid>/status such as "VmRSS", in KiB, or -1 when
// the process or the field is gone; pid 0 means this process.
qint64 statusKiB(qint64 pid, const char *field);
#endif

// Bytes this process holds on its heaps (small and mapped blocks), whatever
// the layout of the heap: resident size also counts fragmentation.
qint64 heapBytesInUse();

// The memory of this process that lies in RAM: its resident set on Linux,
// its working set on Windows; -1 when the system does not say.
qint64 residentBytes();

} // namespace ProcessProbe
