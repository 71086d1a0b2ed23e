#include "signature.h"

#include "childprocess.h"
#include "platform.h"
#include "scratchfile.h"
#include "toollocation.h"

#include <optional>

namespace Launcher {

namespace {

constexpr int gpgvTimeoutMs = 60000;

bool hasStatus(const std::string &statusText, const std::string &keyword)
{
    return statusText.find("[GNUPG:] " + keyword + ' ') != std::string::npos;
}

// gpgv on PATH (Debian's package), else the one installed beside the
// application (the Windows installation's gpgv.exe).
std::string findGpgv()
{
    const std::string onPath = findOnPath("gpgv");
    if (!onPath.empty())
        return onPath;
    const std::optional<std::string> appFolder = environmentValue("KESTREL_APP_DIR");
    const std::string besideApplication = appFolder ? *appFolder + "/gpgv" + executableSuffix() : std::string();
    return appFolder && isExecutableFile(besideApplication) ? besideApplication : std::string();
}

} // namespace

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
