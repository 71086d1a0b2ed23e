#include "childend.h"

#include <cstdio>
#include <windows.h>

namespace Launcher {

namespace {

// Qt reports a child as crashed when its exit code is an NTSTATUS error
// (0x80000000 to 0xCFFFFFFF), as an access violation's 0xC0000005 is.
constexpr DWORD firstCrashCode = 0x80000000;
constexpr DWORD pastCrashCodes = 0xD0000000;

} // namespace

ChildEnd ChildEnd::fromSystemStatus(int status)
{
    return exitedWithCode(status);
}

bool ChildEnd::crashed() const
{
    const std::optional<int> code = exitCode();
    return code && DWORD(*code) >= firstCrashCode && DWORD(*code) < pastCrashCodes;
}

std::string ChildEnd::describe() const
{
    const DWORD code = DWORD(exitCode().value_or(0));
    if (code < firstCrashCode)
        return "exit code " + std::to_string(code);
    char text[32];
    std::snprintf(text, sizeof text, "exit code 0x%08lX", static_cast<unsigned long>(code));
    return text;
}

} // namespace Launcher
