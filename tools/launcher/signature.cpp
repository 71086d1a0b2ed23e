#include "signature.h"

#include "childprocess.h"
#include "dearmor.h"
#include "platform.h"
#include "releasekey.h"
#include "scratchfile.h"
#include "toollocation.h"

#include <optional>

namespace Launcher {

namespace {

constexpr int gpgvTimeoutMs = 60000;
constexpr std::size_t maxKeyringBytes = 1024 * 1024;

bool hasStatus(const std::string &statusText, const std::string &keyword)
{
    return statusText.find("[GNUPG:] " + keyword + ' ') != std::string::npos;
}

// The gpgv that the system's package installed, or on Windows the one our
// installer put beside the application; never one found on PATH, where a
// program that prints the right status lines would pass every check.
std::string findGpgv()
{
#ifdef _WIN32
    const std::optional<std::string> application = applicationFolder();
    const std::string gpgv = application ? *application + "/gpgv.exe" : std::string();
#else
    const std::string gpgv = "/usr/bin/gpgv";
#endif
    return isExecutableFile(gpgv) ? gpgv : std::string();
}

} // namespace

std::optional<std::string> acceptedReleaseKeys(std::string *problem)
{
    const std::optional<std::string> keyring = environmentValue("KESTREL_TOOL_KEYRING");
    if (!keyring)
        return releaseKey();
    const std::optional<std::string> text = readFile(*keyring, maxKeyringBytes);
    const std::optional<std::string> added = text ? dearmor(*text) : std::nullopt;
    if (!added) {
        *problem = "KESTREL_TOOL_KEYRING: " + *keyring + " holds no OpenPGP key";
        return std::nullopt;
    }
    // gpgv reads a keyring of several keys one after the other.
    return releaseKey() + *added;
}

bool verifySignature(const std::string &key, const std::string &signedPath, const std::string &signaturePath,
                     const std::string &scratchFolder, std::string *problem)
{
    const std::string gpgv = findGpgv();
    if (gpgv.empty()) {
        *problem = "gpgv is missing (install the Debian package gpgv)";
        return false;
    }
    ScratchFile keyring(scratchFolder, "keyring");
    if (!keyring.isOpen() || !keyring.write(key)) {
        *problem = "cannot write the key for gpgv into " + scratchFolder;
        return false;
    }
    keyring.close();
    // A home folder that does not exist keeps the user's own keyrings and
    // settings out of the check; gpgv does not create it.
    const std::vector<std::string> arguments{gpgv, "--homedir", keyring.path() + ".home", "--status-fd", "1",
                                             "--keyring", keyring.path(), signaturePath, signedPath};
    const CapturedRun run = runCaptured(gpgv, arguments, CapturedStream::Output, nullptr, gpgvTimeoutMs);
    if (!run.started) {
        *problem = "gpgv cannot be started";
        return false;
    }
    const bool exitedWell = run.end && run.end->exitedWith(0);
    if (exitedWell && hasStatus(run.text, "GOODSIG") && hasStatus(run.text, "VALIDSIG"))
        return true;
    if (hasStatus(run.text, "NO_PUBKEY") || hasStatus(run.text, "ERRSIG"))
        *problem = "signed by another key than the tool's release key";
    else if (hasStatus(run.text, "BADSIG"))
        *problem = "bad signature";
    else if (!run.end)
        *problem = "gpgv did not answer";
    else
        *problem = "not a valid signature";
    return false;
}

} // namespace Launcher
