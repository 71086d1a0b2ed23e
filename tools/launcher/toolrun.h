#pragma once

#include "childend.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Launcher {

class ToolLog;

// Called first thing: ties the launcher's end to the application's.
//
// The process that started the launcher (the application, which names
// itself in KESTREL_APP_PID for its children) is watched; when it ends,
// however it ends, the launcher ends with exit code 1 and takes the tool and
// everything the tool started along. If it is already gone, the launcher
// ends at once. On POSIX systems SIGTERM, which the application's kill rule
// sends, ends a run the same way, as a forced kill does on Windows.
void endRunOnStop();

// Runs tool with arguments as the launcher's child, with everything it
// starts in a group of its own (a process group; a job object on Windows),
// and returns how it ended as runCaptured() does; nothing, with *error set,
// when it could not start. Standard output is the launcher's, untouched; standard
// error goes to the launcher's and into log. On POSIX systems SIGINT and
// SIGHUP are passed on to the group. Whatever the tool leaves running in its
// group is killed when the tool ends. whenStarted, when given, is called once the tool's program is
// running, before the launcher waits for it.
// It may run the tool again once it has returned.
std::optional<ChildEnd> runTool(const std::string &tool, const std::vector<std::string> &arguments, ToolLog &log,
                           int *error, const std::function<void()> &whenStarted = {});

// Runs program in place of the launcher, with the launcher's arguments, and
// returns only if it could not. On Windows, where a process cannot be
// replaced, it returns at once: the program serves from the next run.
void replaceProcess(const std::string &program, char *argv[]);

// Starts this launcher's own executable with arguments (without the
// program's name) in a process of its
// own that outlives the run: not the launcher's child (Linux: a session of
// its own, not tied to the launcher's end; Windows: outside the launcher's
// job where the job lets it go), with the null device as its standard
// streams, so that it holds nothing the application reads. It is still a
// process of this executable, which the application's stop of a run kills.
void startBesideRun(const std::vector<std::string> &arguments);

// Ends the process, however far its work has come, after seconds.
void endAfter(int seconds);

} // namespace Launcher
