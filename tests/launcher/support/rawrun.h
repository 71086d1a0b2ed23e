#pragma once

#include "testfiles.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <sys/types.h>
#include <sys/wait.h>

// A process started with fork() and exec(), so that its wait status is
// seen as it is, signal number and core flag included.
class RawRun
{
public:
    RawRun(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment,
           const QString &folder);

    ~RawRun();

    RawRun(const RawRun &) = delete;
    RawRun &operator=(const RawRun &) = delete;

    pid_t pid() const { return m_pid; }

    // Waits until the process has ended; false when it did not within timeoutMs.
    bool wait(int timeoutMs = 30000);

    int status() const { return m_status; }
    bool exited() const { return m_ended && WIFEXITED(m_status); }
    int exitCode() const { return exited() ? WEXITSTATUS(m_status) : -1; }
    int signal() const { return m_ended && WIFSIGNALED(m_status) ? WTERMSIG(m_status) : 0; }
    QByteArray out() const { return TestFiles::readAll(m_outPath); }
    QByteArray err() const { return TestFiles::readAll(m_errPath); }

private:
    QString m_outPath;
    QString m_errPath;
    pid_t m_pid = -1;
    int m_status = 0;
    bool m_ended = false;
};
