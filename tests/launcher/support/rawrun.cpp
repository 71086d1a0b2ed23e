#include "rawrun.h"

#include <QTest>

#include <csignal>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

RawRun::RawRun(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment,
               const QString &folder)
    : m_outPath(folder + QStringLiteral("/run.out"))
    , m_errPath(folder + QStringLiteral("/run.err"))
{
    std::vector<std::string> argv{program.toStdString()};
    for (const QString &argument : arguments)
        argv.push_back(argument.toStdString());
    std::vector<std::string> envp;
    for (const QString &entry : environment.toStringList())
        envp.push_back(entry.toStdString());
    std::vector<char *> argvPointers;
    for (std::string &argument : argv)
        argvPointers.push_back(argument.data());
    argvPointers.push_back(nullptr);
    std::vector<char *> envpPointers;
    for (std::string &entry : envp)
        envpPointers.push_back(entry.data());
    envpPointers.push_back(nullptr);

    const std::string outPath = m_outPath.toStdString();
    const std::string errPath = m_errPath.toStdString();
    const std::string workFolder = folder.toStdString();
    const int in = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    const int out = ::open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    const int err = ::open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (in < 0 || out < 0 || err < 0)
        qFatal("cannot open the run's files");

    m_pid = ::fork();
    if (m_pid == 0) {
        ::dup2(in, STDIN_FILENO);
        ::dup2(out, STDOUT_FILENO);
        ::dup2(err, STDERR_FILENO);
        if (::chdir(workFolder.c_str()) != 0)
            ::_exit(126);
        // As the application's process would start it, whatever the test
        // runner changed; and with core files allowed, so that one the
        // launcher should not write would show.
        for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGPIPE})
            ::signal(signal, SIG_DFL);
        sigset_t none;
        ::sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        rlimit core;
        if (::getrlimit(RLIMIT_CORE, &core) == 0) {
            core.rlim_cur = core.rlim_max;
            ::setrlimit(RLIMIT_CORE, &core);
        }
        ::execve(argvPointers[0], argvPointers.data(), envpPointers.data());
        ::_exit(126);
    }
    ::close(in);
    ::close(out);
    ::close(err);
    if (m_pid < 0)
        qFatal("fork failed");
}

RawRun::~RawRun()
{
    if (!m_ended) {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
}

bool RawRun::wait(int timeoutMs)
{
    if (m_ended)
        return true;
    return QTest::qWaitFor(
        [this] {
            m_ended = ::waitpid(m_pid, &m_status, WNOHANG) == m_pid;
            return m_ended;
        },
        timeoutMs);
}
