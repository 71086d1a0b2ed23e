#pragma once

#include <QDebug>
#include <QString>

// The shapes of the program's log lines. Every function that does real work
// logs through these helpers so that all lines look alike:
//
//   --> [21] void prepareOutputDir() :                  (entry trace)
//   OK: output dir /home/me/Downloads/KestrelD          (success)
//   [35] void prepareOutputDir() : !!! ERROR: output dir "/x"   (error)
//   [52] void checkAndSetupFiles() : WARNING: No file in: "/x"  (warning)
//
// The function signature is a literal written at the call site and the line
// is the caller's __LINE__, so use the LOG_* macros below.
namespace Log {

// "[line] signature :"
QString location(const char *signature, int line);

// "--> [line] signature :", quoting off; callers may append details.
QDebug entry(const char *signature, int line);

// "[line] signature :" at information level, quoting off.
QDebug info(const char *signature, int line);

// "[line] signature : !!! ERROR:" at critical level; appended strings are quoted.
QDebug error(const char *signature, int line);

// "[line] signature : WARNING:" at warning level; appended strings are quoted.
QDebug warning(const char *signature, int line);

// "WARNING:" at warning level for statements that have no location.
QDebug warning();

// "OK: label value", quoting off.
void ok(const char *label, const QString &value);

} // namespace Log

#define LOG_ENTRY(signature) Log::entry(signature, __LINE__)
#define LOG_INFO(signature) Log::info(signature, __LINE__)
#define LOG_ERROR(signature) Log::error(signature, __LINE__)
#define LOG_WARNING(signature) Log::warning(signature, __LINE__)
#define LOG_LOCATION(signature) Log::location(signature, __LINE__)
