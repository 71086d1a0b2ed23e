#pragma once

#include <optional>
#include <string>

namespace Launcher {

// How a child process ended: it exited with a code, or, on POSIX systems, a
// signal ended it. On Windows a crash is an exit code in the NTSTATUS error
// range (0xC0000005 for an access violation), as Qt and the system report it.
class ChildEnd
{
public:
    // From what the system reports: a wait status from waitpid() on POSIX
    // systems, a process's exit code on Windows. The only place the raw
    // report is read.
    static ChildEnd fromSystemStatus(int status);
    static ChildEnd exitedWithCode(int code);
    static ChildEnd endedBySignal(int signal);

    bool exitedWith(int code) const;
    // Exited with a code other than 0; a crash is no such exit.
    bool exitedWithFailure() const;
    // A crash: a fatal signal such as SIGSEGV or SIGABRT; on Windows an
    // exit code in the NTSTATUS error range.
    bool crashed() const;
    // "exit code 2", "ended by signal 9", "exit code 0xC0000005".
    std::string describe() const;

    // The exit code when the child exited, the signal when one ended it.
    std::optional<int> exitCode() const;
    std::optional<int> signal() const;

private:
    enum class Kind { Exited, Signalled };

    ChildEnd(Kind kind, int value);

    Kind m_kind;
    int m_value;
};

} // namespace Launcher
