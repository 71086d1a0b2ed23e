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
// is the caller's __LINE__, so use the LOG_* macros below. When GCC builds the
// code, LOG_ENTRY, LOG_INFO, LOG_ERROR, LOG_WARNING and LOG_LOCATION compare
// the literal with the compiler's own name of the enclosing function, and the
// build fails when they differ. The _AS forms write a name that deliberately
// differs from the enclosing function's; say why where they are used.
namespace Log {

// Whether written is the compiler's name of a function (compilerName, as
// __PRETTY_FUNCTION__ gives it), apart from spaces and the anonymous
// namespace, which the log lines leave out.
constexpr bool namesFunction(const char *written, const char *compilerName)
{
    constexpr char anonymous[] = "{anonymous}::";
    constexpr int anonymousLength = sizeof(anonymous) - 1;
    for (;;) {
        while (*written == ' ')
            ++written;
        while (*compilerName == ' ')
            ++compilerName;
        int matched = 0;
        while (matched < anonymousLength && compilerName[matched] == anonymous[matched])
            ++matched;
        if (matched == anonymousLength) {
            compilerName += anonymousLength;
            continue;
        }
        if (*written != *compilerName)
            return false;
        if (*written == '\0')
            return true;
        ++written;
        ++compilerName;
    }
}

template <bool names>
struct NameCheck
{
    static_assert(names, "the log text does not name the function it is written in");
};

// The name of a run's finish handler, checked where the handler's lambda
// would be written (LOG_HANDLER_NAME).
template <typename Lambda>
constexpr const char *handlerName(Lambda, const char *name)
{
    return name;
}

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

#if defined(__GNUC__) && !defined(__clang__)
// Other compilers spell names their own way (clang writes "char **"), so only
// GCC, which every build of the program uses, checks them.
#define LOG_CHECKED_NAME(signature) (Log::NameCheck<Log::namesFunction(signature, __PRETTY_FUNCTION__)>{}, signature)
#else
#define LOG_CHECKED_NAME(signature) (signature)
#endif

#define LOG_ENTRY(signature) Log::entry(LOG_CHECKED_NAME(signature), __LINE__)
#define LOG_INFO(signature) Log::info(LOG_CHECKED_NAME(signature), __LINE__)
#define LOG_ERROR(signature) Log::error(LOG_CHECKED_NAME(signature), __LINE__)
#define LOG_WARNING(signature) Log::warning(LOG_CHECKED_NAME(signature), __LINE__)
#define LOG_LOCATION(signature) Log::location(LOG_CHECKED_NAME(signature), __LINE__)

#define LOG_ENTRY_AS(signature) Log::entry(signature, __LINE__)
#define LOG_ERROR_AS(signature) Log::error(signature, __LINE__)
#define LOG_WARNING_AS(signature) Log::warning(signature, __LINE__)

// name, checked against the compiler's name of a lambda with the parameters
// given, written at this place: how a request names the handler that logs
// its run's end.
#define LOG_HANDLER_NAME(name, ...) Log::handlerName([](__VA_ARGS__) { (void)LOG_CHECKED_NAME(name); }, name)
