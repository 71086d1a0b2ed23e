#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What the launcher needs of the operating system beyond running the tool
// (toolrun.h, childprocess.h): files, the environment, its own place. Paths
// are UTF-8 everywhere, on Windows too, where they are turned into the wide
// strings the system takes. Descriptors are the C library's, opened in
// binary mode and not inherited by children.

namespace Launcher {

// ".exe" on Windows, where programs carry it; empty elsewhere.
const char *executableSuffix();

// The separator of the folders in PATH.
char pathListSeparator();

// The program's own arguments in UTF-8, whatever the system's code page.
std::vector<std::string> commandLineArguments(int argc, char *argv[]);

// The path of the running launcher's own executable; empty if unknown.
std::string executablePath();

// Whether path is a regular file, a folder, a file that may be run.
bool isRegularFile(const std::string &path);
bool isFolder(const std::string &path);
bool isExecutableFile(const std::string &path);

// Whether path begins at the root of a file system ("/", "C:/", "C:\\").
bool isAbsolutePath(const std::string &path);

// Whether two paths name the same folder, by the system's rules of case and
// separators, after following links.
bool isSameFolder(const std::string &first, const std::string &second);

// The executable file of a running process; empty when it is unknown.
std::string processExecutable(long pid);

// The file path names after following links, or path itself if that fails.
std::string canonicalPath(const std::string &path);

// What changes when a file is replaced or rewritten: its modification time
// to the nanosecond where the system keeps it, and its size.
struct FileStamp
{
    std::uint64_t size = 0;
    std::string modified;
};
std::optional<FileStamp> fileStamp(const std::string &path);

// The names (not paths) in folder, without "." and "..".
std::vector<std::string> folderEntries(const std::string &folder);

// The whole of a regular file of at most maxBytes; nothing when it is
// missing, larger or unreadable.
std::optional<std::string> readFile(const std::string &path, std::size_t maxBytes);

int openForReading(const std::string &path);
int openForAppending(const std::string &path);
// Creates a new file from pattern, whose last six characters are "XXXXXX"
// and are replaced by the name found; -1 on failure.
int createUniqueFile(std::string &pattern);
// Opens the lock file at path and takes its exclusive lock if it is free;
// -1 when it is not taken. The lock goes with the descriptor and with the
// process, however it ends. A wait is the caller's, bounded (FolderLock).
int tryOpenLocked(const std::string &path);
// Flushes fd to the disk and closes it; false when either fails.
bool syncAndClose(int fd);
void closeFile(int fd);

bool makeExecutable(const std::string &path);
// Takes every access to path away from other users, as the launcher's log,
// state and caches need: the log can name the user's files and options.
// On Windows the user's own profile folders, where these files live, are
// private already, and nothing is changed.
bool makePrivate(const std::string &path);
bool removeFile(const std::string &path);
// A second name for an existing file.
bool linkFile(const std::string &existing, const std::string &newName);
// Gives from the name to, in one step, replacing what had it. On Windows a
// program that is running cannot be replaced in place: it is first renamed
// aside into its folder under aside, the name of a leftover that a later
// clean-up removes.
bool replaceFile(const std::string &from, const std::string &to, const std::string &aside);

// The system's words for error, an errno value on POSIX systems and a
// Windows error code on Windows; and for the last error of a file call.
std::string errorText(int error);
std::string lastErrorText();

// An environment variable's value in UTF-8; nothing when it is not set or
// empty.
std::optional<std::string> environmentValue(const char *name);

// The process id the application names in KESTREL_APP_PID for its
// children; 0 when it names none.
long applicationProcessId();

// The launcher's environment as "NAME=value" entries.
std::vector<std::string> environmentEntries();

// Sets or removes an environment variable of the launcher, which its
// children inherit.
void setEnvironment(const char *name, const char *value);
void unsetEnvironment(const char *name);

// Lowers the launcher's scheduling priority, and its children's, for work
// that nobody waits for.
void lowerOwnPriority();

// The launcher's process id.
long processId();

// Local time as "YYYY-MM-DD hh:mm:ss".
std::string localTimestamp();

} // namespace Launcher
