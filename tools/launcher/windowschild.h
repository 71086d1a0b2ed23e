#pragma once

#include <windows.h>

#include <string>
#include <vector>

// Starting children on Windows, for childprocess_win.cpp and toolrun_win.cpp.

namespace Launcher {

// A running child and the job object that holds it and everything it
// starts. The job kills them all when its last handle closes, which happens
// too when the launcher ends, however it ends.
class WindowsChild
{
public:
    WindowsChild() = default;
    ~WindowsChild();

    WindowsChild(const WindowsChild &) = delete;
    WindowsChild &operator=(const WindowsChild &) = delete;

    // Starts program with arguments (arguments[0] is program) with the given
    // handles as its standard streams; environment ("NAME=value" entries)
    // replaces the launcher's own when given. False with *error set (a
    // Windows error code) when it could not start.
    bool start(const std::string &program, const std::vector<std::string> &arguments, HANDLE in, HANDLE out,
               HANDLE err, const std::vector<std::string> *environment, int *error);

    // Waits up to timeoutMs (INFINITE for no limit); true once it ended.
    bool wait(DWORD timeoutMs);
    // Kills whatever of the job still runs.
    void killAll();
    // The child's exit code, once it ended.
    int exitCode() const;

private:
    HANDLE m_process = nullptr;
    HANDLE m_job = nullptr;
};

// An anonymous pipe whose reading end stays with the launcher and whose
// writing end a child may inherit.
struct ChildPipe
{
    HANDLE read = nullptr;
    HANDLE write = nullptr;
};
bool createChildPipe(ChildPipe *pipe);

// Ends the launcher at once with exit code code.
[[noreturn]] void endNow(DWORD code);

// The null device, opened for access, as a handle a child may inherit.
HANDLE nullDevice(DWORD access);

} // namespace Launcher
