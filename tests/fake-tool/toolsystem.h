#pragma once

// What the fake kestreldl2 tool needs from the operating system: raw output
// on the standard streams, an append-only record file, and the ways a run
// can end. toolsystem_posix.cpp and toolsystem_win.cpp hold the two halves;
// fakekestreldl2.cpp plays the scenario with them alike on every system.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace ToolSystem {

enum class Stream { Output, Error };

// Writes all of data to standard output or error with as few system calls
// as the system allows: one, unless it takes only part of it (a large write
// into a pipe). Nothing is buffered, so one chunk of a scenario reaches the
// application as one write. Returns false once the stream refuses more, so
// the caller stops producing output nobody can receive.
bool writeAll(Stream stream, const char *data, qint64 size);

// Appends bytes to the file in one write on a descriptor opened for
// appending only, so that runs started side by side each leave their whole
// line behind instead of interleaving. Failures are ignored: the record is
// for the tests, the run goes on without it.
void appendToFile(const QString &path, const QByteArray &bytes);

// The program as started and its arguments, decoded as the system passed
// them: the first item is the program.
QStringList commandLine(int argc, char *argv[]);

// The working directory the system gave this process, with '/' between its
// parts, as Qt spells paths.
QString currentDirectory();

qint64 processId();

void sleepMilliseconds(qint64 ms);

// The stop the application's kill rule sends first ends the run as the real
// launcher does, by exiting with code 1; where the rule has no such step,
// nothing needs doing.
void answerStopAsTheLauncherDoes();
// Leaves the run to be ended only by a forced kill.
void ignoreStop();

[[noreturn]] void hangForever();

// Ends the process as a crash: by the POSIX signal signalNumber with its
// default action, or on Windows by the NTSTATUS code of the exception that
// signal stands for, which Qt likewise reports as a crash exit.
void crash(int signalNumber);

} // namespace ToolSystem
