#pragma once

#include <QString>

// Where a downloaded installer waits to be started: a folder of this user's
// alone, never the shared download folder, so no other account can swap the
// installer or plant a library beside it. Linux: "updates" in the per-user
// local data folder, made 0700; Windows: "KestrelD-update" in the user's
// own temporary folder, which only that user may write.
namespace InstallerFolder {

// The folder's absolute path; nothing is created.
QString location();

struct Preparation
{
    QString path;    // the empty, private folder, ready for one download
    QString problem; // set when the folder could not be made private and empty
};

// Removes what an earlier download left in the folder, creates it and, on
// Linux, gives it mode 0700.
Preparation prepare();

// Why the file at path may not be started, or an empty string when it may:
// it must be named by an absolute path directly inside the folder, and on
// Windows its name must end in ".exe", so the shell never picks a program by
// another kind of file.
QString startRefusal(const QString &path);

} // namespace InstallerFolder
