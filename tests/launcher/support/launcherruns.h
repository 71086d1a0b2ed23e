#pragma once

#include "testfiles.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <string>
#include <sys/types.h>
#include <vector>

class Installation;

// What the launcher's suites share besides the installation: the command
// lines the application gives, the launcher's notes, and the waits for the
// fake tool's processes.
namespace LauncherRuns {

using TestFiles::readAll;

// What the launcher puts before the application's arguments when no
// JavaScript runtime is at hand, as with the fake runtimes of Installation.
inline const QStringList launcherPrefix{QStringLiteral("--ignore-config"), QStringLiteral("--encoding"),
                                        QStringLiteral("utf-8"), QStringLiteral("--no-js-runtimes")};

inline constexpr char droppedNote[] = "kestreldl2: dropped --progress-delta 1 (not known to yt-dlp 2023.03.04)\n";
inline constexpr char missingNote[] = "kestreldl2: cannot find yt-dlp; install the Debian package yt-dlp\n";

inline const QString videoAddress = QStringLiteral("https://www.youtube.com/watch?v=kestrel");

// A download's command line with a flag the fake does not know.
QStringList downloadArguments();
QStringList withoutProgressDelta(QStringList arguments);
// An application's run as the tool gets it: the launcher puts "--" before the video.
QStringList withVideoAfterOptions(QStringList arguments);

// The application's three runs for videoAddress.
QStringList titleRun();
QStringList listingRun();
QStringList videoRun();

// Writes a file the test needs, or ends the test program when it cannot.
void writeAll(const QString &path, const QByteArray &content);
// The same, executable for everyone.
void writeScript(const QString &path, const QByteArray &content);

// Waits up to two seconds until every one of pids has ended; kills those
// that have not, so that a failing test leaves nothing behind.
bool waitUntilEnded(const QList<pid_t> &pids);

// Waits for the fake to say it is ready and returns its process id, or -1.
pid_t waitForTool(const Installation &installation);

// The information documents the launcher keeps in its data folder.
QStringList keptDocuments(const QString &dataFolder);

// The command lines of the runs, without the launcher's questions about the
// tool itself.
QList<QStringList> toolRuns(const QList<QStringList> &invocations);

std::vector<std::string> toStd(const QStringList &list);

} // namespace LauncherRuns
