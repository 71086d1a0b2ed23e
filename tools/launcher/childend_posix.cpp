#include "childend.h"

#include <csignal>
#include <sys/wait.h>

namespace Launcher {

ChildEnd ChildEnd::fromSystemStatus(int status)
{
    if (WIFSIGNALED(status))
        return endedBySignal(WTERMSIG(status));
    // waitpid() without WUNTRACED reports only ends; anything else counts
    // as a failed exit.
    return exitedWithCode(WIFEXITED(status) ? WEXITSTATUS(status) : 1);
}

bool ChildEnd::crashed() const
{
    const std::optional<int> ending = signal();
    if (!ending)
        return false;
    return *ending == SIGSEGV || *ending == SIGILL || *ending == SIGBUS || *ending == SIGFPE || *ending == SIGABRT;
}

std::string ChildEnd::describe() const
{
    if (const std::optional<int> code = exitCode())
        return "exit code " + std::to_string(*code);
    return "ended by signal " + std::to_string(*signal());
}

} // namespace Launcher
