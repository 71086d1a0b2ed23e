#include "toolsystem.h"

#include <QFile>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ToolSystem {

namespace {

bool writeAll(int fd, const char *data, qint64 size)
{
    while (size > 0) {
        const ssize_t written = ::write(fd, data, static_cast<size_t>(size));
        if (written < 0) {
            // A signal that does not end the process interrupted the write.
            if (errno == EINTR)
                continue;
            return false;
        }
        data += written;
        size -= written;
    }
    return true;
}

void stopAsTheLauncherDoes(int)
{
    ::_exit(1);
}

} // namespace

bool writeAll(Stream stream, const char *data, qint64 size)
{
    return writeAll(stream == Stream::Output ? STDOUT_FILENO : STDERR_FILENO, data, size);
}

void appendToFile(const QString &path, const QByteArray &bytes)
{
    const QByteArray name = QFile::encodeName(path);
    const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0)
        return;
    writeAll(fd, bytes.constData(), bytes.size());
    ::close(fd);
}

QStringList commandLine(int argc, char *argv[])
{
    QStringList items;
    for (int i = 0; i < argc; ++i)
        items.append(QFile::decodeName(argv[i]));
    return items;
}

QString currentDirectory()
{
    // getcwd() rather than QDir::currentPath(): the record should show the
    // directory the kernel gave this process, exactly as the tool saw it.
    QByteArray buffer(4096, '\0');
    while (::getcwd(buffer.data(), static_cast<size_t>(buffer.size())) == nullptr) {
        if (errno != ERANGE)
            return QString();
        buffer.resize(buffer.size() * 2);
    }
    return QFile::decodeName(buffer.constData());
}

qint64 processId()
{
    return static_cast<qint64>(::getpid());
}

void sleepMilliseconds(qint64 ms)
{
    if (ms <= 0)
        return;
    timespec remaining;
    remaining.tv_sec = static_cast<time_t>(ms / 1000);
    remaining.tv_nsec = static_cast<long>((ms % 1000) * 1000000);
    // A signal that does not end the process must not shorten the pause.
    while (::nanosleep(&remaining, &remaining) != 0 && errno == EINTR) {
    }
}

void answerStopAsTheLauncherDoes()
{
    ::signal(SIGTERM, stopAsTheLauncherDoes);
}

void ignoreStop()
{
    ::signal(SIGTERM, SIG_IGN);
}

void hangForever()
{
    for (;;)
        ::pause();
}

void crash(int signalNumber)
{
    // A crash test must not leave core files behind.
    rlimit noCore;
    noCore.rlim_cur = 0;
    noCore.rlim_max = 0;
    ::setrlimit(RLIMIT_CORE, &noCore);

    // The parent may have left the signal ignored or blocked; neither should
    // stop the default action from ending the process.
    ::signal(signalNumber, SIG_DFL);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signalNumber);
    ::sigprocmask(SIG_UNBLOCK, &set, nullptr);

    ::raise(signalNumber);
}

} // namespace ToolSystem
