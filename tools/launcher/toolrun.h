#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace Launcher {

class ToolLog;

// Makes SIGTERM end the launcher the way a forced kill ends a run on
// Windows: the running tool's whole process group is killed and the
// launcher exits with code 1, a normal exit. SIGTERM is what the
// application's kill rule sends, and what the kernel sends when the
// process that started the launcher ends, however it ends: so nothing the
// launcher started outlives the application. If that process is already
// gone (it is not expectedParent any more), the launcher ends at once.
void endRunOnStop(pid_t expectedParent);

// Runs tool with arguments as the launcher's child, leading a process group
// of its own, and returns its wait status; -1 with *error set when it could
// not start. Standard output is the launcher's, untouched; standard error
// goes to the launcher's and into log. SIGINT and SIGHUP are passed on to
// the group; whatever the tool leaves running in it is killed when the tool
// ends. whenStarted, when given, is called once the tool's program is
// running, before the launcher waits for it.
int runTool(const std::string &tool, const std::vector<std::string> &arguments, ToolLog &log, int *error,
            const std::function<void()> &whenStarted = {});

} // namespace Launcher
