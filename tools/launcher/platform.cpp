#include "platform.h"

#include <cstdlib>

// What platform.h offers that is the same on every system.

namespace Launcher {

long applicationProcessId()
{
    const std::optional<std::string> named = environmentValue("KESTREL_APP_PID");
    char *end = nullptr;
    const long pid = named ? std::strtol(named->c_str(), &end, 10) : 0;
    return named && end && *end == '\0' && pid > 0 ? pid : 0;
}

} // namespace Launcher
