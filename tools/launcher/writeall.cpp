#include "writeall.h"

#include <cerrno>

#include <unistd.h>

namespace Launcher {

bool writeAll(int fd, const char *data, std::size_t size)
{
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        data += n;
        size -= std::size_t(n);
    }
    return true;
}

bool writeAll(int fd, const std::string &data)
{
    return writeAll(fd, data.data(), data.size());
}

} // namespace Launcher
