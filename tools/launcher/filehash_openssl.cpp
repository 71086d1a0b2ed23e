#include "filehash.h"

#include <openssl/evp.h>

#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace Launcher {

std::optional<std::string> sha256OfFile(const std::string &path)
{
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return std::nullopt;
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    bool ok = context && EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) == 1;
    char buffer[64 * 1024];
    while (ok) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            ok = false;
        if (n <= 0)
            break;
        ok = EVP_DigestUpdate(context.get(), buffer, std::size_t(n)) == 1;
    }
    ::close(fd);
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    if (!ok || EVP_DigestFinal_ex(context.get(), digest, &length) != 1)
        return std::nullopt;

    static const char hexDigits[] = "0123456789abcdef";
    std::string text;
    for (unsigned int i = 0; i < length; ++i) {
        text.push_back(hexDigits[digest[i] >> 4]);
        text.push_back(hexDigits[digest[i] & 0xf]);
    }
    return text;
}

} // namespace Launcher
