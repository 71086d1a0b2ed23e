#include "filehash.h"

#include "widetext.h"

#include <windows.h>
#include <bcrypt.h>

namespace Launcher {

std::optional<std::string> sha256OfFile(const std::string &path)
{
    const std::wstring widePath = toWide(path);
    if (widePath.empty())
        return std::nullopt;
    // Shared for writing and deleting too: a download is hashed while its
    // scratch file is still open for writing, as POSIX allows.
    const HANDLE file = CreateFileW(widePath.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    BCRYPT_HASH_HANDLE hash = nullptr;
    bool ok = BCRYPT_SUCCESS(BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0))
        && BCRYPT_SUCCESS(BCryptCreateHash(algorithm, &hash, nullptr, 0, nullptr, 0, 0));
    unsigned char buffer[64 * 1024];
    while (ok) {
        DWORD n = 0;
        if (!ReadFile(file, buffer, sizeof buffer, &n, nullptr)) {
            ok = false;
            break;
        }
        if (n == 0)
            break;
        ok = BCRYPT_SUCCESS(BCryptHashData(hash, buffer, n, 0));
    }
    CloseHandle(file);
    unsigned char digest[32];
    ok = ok && BCRYPT_SUCCESS(BCryptFinishHash(hash, digest, sizeof digest, 0));
    if (hash)
        BCryptDestroyHash(hash);
    if (algorithm)
        BCryptCloseAlgorithmProvider(algorithm, 0);
    if (!ok)
        return std::nullopt;

    static const char hexDigits[] = "0123456789abcdef";
    std::string text;
    for (unsigned char byte : digest) {
        text.push_back(hexDigits[byte >> 4]);
        text.push_back(hexDigits[byte & 0xf]);
    }
    return text;
}

} // namespace Launcher
