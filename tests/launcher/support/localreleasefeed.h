#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// Throw-away OpenPGP keys for signing test releases: one that stands for
// the tool's release key and one of a stranger. Making them takes a second
// or two, so a test process makes them once.
class TestSigningKeys
{
public:
    enum class Signer { Release, Stranger };

    TestSigningKeys();
    // Ends the agent gpg started for the keys.
    ~TestSigningKeys();

    bool isValid() const { return m_valid; }
    // The release key, ASCII-armoured, as KESTREL_TOOL_KEYRING takes it.
    QString releaseKeyFile() const { return m_home.filePath(QStringLiteral("release.asc")); }

    bool sign(Signer signer, const QString &file, const QString &signature) const;

private:
    QTemporaryDir m_home;
    bool m_valid = false;
};

// A release feed on 127.0.0.1 (tests/launcher/feedserver.py) serving one
// folder that holds a tool release and a Deno release, as the launcher's
// feeds do.
class LocalReleaseFeed
{
public:
    LocalReleaseFeed(const TestSigningKeys &keys, const QString &folder);
    ~LocalReleaseFeed();

    bool start();
    void stop();
    // The base address, for KESTREL_TOOL_FEED and KESTREL_JS_RUNTIME_FEED.
    QString address() const;
    QString folder() const { return m_folder; }

    // The tool's asset with its SHA2-256SUMS line (unless withSumLine is
    // false) among lines for other assets, signed by the release key.
    bool publishTool(const QByteArray &release, bool withSumLine = true);
    bool signSums(TestSigningKeys::Signer signer);
    // Deno's zip holding an executable that answers versionLine, with its
    // .sha256sum.
    bool publishRuntime(const QByteArray &versionLine);
    // "truncate" or "slow" for one file (feedserver.py says what they do).
    void setBehaviour(const QString &file, const QString &how);

    // "GET <file>" for every request since the start or the last forget.
    QStringList requests() const;
    void forgetRequests();

    static const char *toolAsset() { return "yt-dlp_linux"; }
    static const char *runtimeArchive() { return "deno-x86_64-unknown-linux-gnu.zip"; }

private:
    QString logFile() const { return m_folder + QStringLiteral(".log"); }

    const TestSigningKeys &m_keys;
    QString m_folder;
    QProcess m_server;
    quint16 m_port = 0;
};

namespace ReleaseScripts {

// A release of the tool: answers --version with version (or fails it when
// broken), the option parser's question about a flag as the real tool does
// (exit code 2 without an address), and appends every other command line to
// $FAKE_RECORD, after "release <version>", separated by \x1f. A run then
// waits, at most a minute, until $FAKE_WAIT_FILE holds $FAKE_WAIT_TEXT when
// those are set, and then dies by SIGSEGV when $FAKE_CRASH is set.
QByteArray tool(const QString &version, bool broken = false);

// An executable that prints firstLine whatever it is asked.
QByteArray answering(const QByteArray &firstLine);

} // namespace ReleaseScripts
