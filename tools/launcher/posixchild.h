#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

// Starting children on POSIX systems, for childprocess_posix.cpp and
// toolrun_posix.cpp.

namespace Launcher {

// Notes the signal dispositions and mask the launcher was started with, so
// that every child starts with them whatever the launcher changes for
// itself. Called before the launcher changes any.
void rememberInheritedSignals();

// Whether the launcher was started with signal ignored: such a signal stays
// ignored, in the launcher and in its children.
bool inheritedIgnore(int signal);

// How a child starts: where its standard streams go (a descriptor, or -1
// for the launcher's own stream, which the child then shares untouched),
// and whether it leads a process group of its own, which the launcher can
// end as a whole with everything the child starts.
struct ChildSetup
{
    int in = -1;
    int out = -1;
    int err = -1;
    bool ownProcessGroup = false;
};

// Starts program with arguments (argv[0] is program) as a child that the
// kernel kills when the launcher dies, however it dies: the application
// stops a download by killing the launcher with SIGKILL, and yt-dlp must not
// go on downloading after it. environment replaces the launcher's own when
// given. Returns the child's id once it runs program, or -1 with *error set
// when the program could not be started.
pid_t startChild(const std::string &program, const std::vector<std::string> &arguments,
                 const ChildSetup &setup, const std::vector<std::string> *environment, int *error);

} // namespace Launcher
