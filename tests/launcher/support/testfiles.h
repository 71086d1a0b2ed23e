#pragma once

#include <QByteArray>
#include <QString>

// Whole-file reads and writes for the launcher's tests.
namespace TestFiles {

// The file's bytes, or nothing when it cannot be read.
QByteArray readAll(const QString &path);

// Writes content into path (its folder is made), executable for everyone
// when asked; false when that could not be done.
bool writeFile(const QString &path, const QByteArray &content, bool executable = false);

} // namespace TestFiles
