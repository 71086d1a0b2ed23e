#include "localreleasefeed.h"

#include "gpgrun.h"
#include "testfiles.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QTest>

namespace {

using TestFiles::readAll;
using TestFiles::writeFile;

QByteArray sha256Hex(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

} // namespace

TestSigningKeys::TestSigningKeys()
{
    if (!m_home.isValid())
        return;
    const std::optional<QByteArray> armoured = GpgRun::makeTestKeys(m_home.path());
    m_valid = armoured && writeFile(releaseKeyFile(), *armoured);
}

TestSigningKeys::~TestSigningKeys()
{
    QProcess::execute(QStringLiteral("gpgconf"), {QStringLiteral("--homedir"), m_home.path(), QStringLiteral("--kill"),
                                                  QStringLiteral("gpg-agent")});
}

bool TestSigningKeys::sign(Signer signer, const QString &file, const QString &signature) const
{
    return GpgRun::signFile(m_home.path(), signer == Signer::Release ? GpgRun::releaseUser : GpgRun::strangerUser, file,
                            signature);
}

LocalReleaseFeed::LocalReleaseFeed(const TestSigningKeys &keys, const QString &folder)
    : m_keys(keys)
    , m_folder(folder)
{
    QDir().mkpath(m_folder);
}

LocalReleaseFeed::~LocalReleaseFeed()
{
    stop();
}

bool LocalReleaseFeed::start()
{
    const QString portFile = m_folder + QStringLiteral(".port");
    QFile::remove(portFile);
    m_server.start(QStringLiteral("python3"), {QStringLiteral(KESTREL_FEED_SERVER), m_folder, portFile, logFile()});
    if (!m_server.waitForStarted())
        return false;
    if (!QTest::qWaitFor([&] { return QFileInfo::exists(portFile) || m_server.state() != QProcess::Running; }, 20000))
        return false;
    m_port = quint16(readAll(portFile).toUInt());
    return m_port != 0;
}

void LocalReleaseFeed::stop()
{
    if (m_server.state() != QProcess::NotRunning) {
        m_server.kill();
        m_server.waitForFinished();
    }
}

QString LocalReleaseFeed::address() const
{
    return QStringLiteral("http://127.0.0.1:%1/").arg(m_port);
}

bool LocalReleaseFeed::publishTool(const QByteArray &release, bool withSumLine)
{
    QByteArray sums = sha256Hex("some other asset") + "  yt-dlp.exe\n";
    if (withSumLine)
        sums += sha256Hex(release) + "  " + toolAsset() + "\n";
    sums += sha256Hex("yet another asset") + "  yt-dlp_macos\n";
    return writeFile(m_folder + QLatin1Char('/') + QLatin1String(toolAsset()), release)
           && writeFile(m_folder + QStringLiteral("/SHA2-256SUMS"), sums) && signSums(TestSigningKeys::Signer::Release);
}

bool LocalReleaseFeed::signSums(TestSigningKeys::Signer signer)
{
    return m_keys.sign(signer, m_folder + QStringLiteral("/SHA2-256SUMS"), m_folder + QStringLiteral("/SHA2-256SUMS.sig"));
}

bool LocalReleaseFeed::publishRuntime(const QByteArray &versionLine)
{
    const QString executable = m_folder + QStringLiteral(".deno/deno");
    const QString archive = m_folder + QLatin1Char('/') + QLatin1String(runtimeArchive());
    QFile::remove(archive);
    if (!writeFile(executable, ReleaseScripts::answering(versionLine), true))
        return false;
    const int zipped = QProcess::execute(QStringLiteral("python3"),
                                         {QStringLiteral("-c"),
                                          QStringLiteral("import sys, zipfile\n"
                                                         "with zipfile.ZipFile(sys.argv[1], 'w') as z:\n"
                                                         "    z.write(sys.argv[2], 'deno')\n"),
                                          archive, executable});
    return zipped == 0
           && writeFile(archive + QStringLiteral(".sha256sum"),
                        sha256Hex(readAll(archive)) + "  " + runtimeArchive() + "\n");
}

void LocalReleaseFeed::setBehaviour(const QString &file, const QString &how)
{
    writeFile(m_folder + QStringLiteral("/.behaviour"), QStringLiteral("%1 %2\n").arg(file, how).toUtf8());
}

QStringList LocalReleaseFeed::requests() const
{
    QStringList lines;
    for (const QByteArray &line : readAll(logFile()).split('\n')) {
        if (!line.isEmpty())
            lines << QString::fromUtf8(line);
    }
    return lines;
}

void LocalReleaseFeed::forgetRequests()
{
    QFile::remove(logFile());
}

namespace ReleaseScripts {

QByteArray tool(const QString &version, bool broken)
{
    QByteArray script = "#!/bin/bash\n"
                        "if [ \"$*\" = --version ]; then\n";
    script += broken ? "    echo 'cannot load the bundled libraries' >&2\n    exit 1\n"
                     : "    echo " + version.toUtf8() + "\n    exit 0\n";
    script += "fi\n"
              "url=\n"
              "for arg in \"$@\"; do case \"$arg\" in https://*) url=$arg ;; esac; done\n"
              "if [ -z \"$url\" ]; then echo 'yt-dlp: error: You must provide at least one URL.' >&2; exit 2; fi\n"
              "(IFS=$'\\x1f'; printf '%s\\n' \"release "
              + version.toUtf8()
              + "$IFS$*\") >> \"$FAKE_RECORD\"\n"
                "if [ -n \"$FAKE_WAIT_FILE\" ]; then\n"
                "    for i in $(seq 600); do grep -q \"$FAKE_WAIT_TEXT\" \"$FAKE_WAIT_FILE\" && break; sleep 0.1; done\n"
                "fi\n"
                "if [ -n \"$FAKE_CRASH\" ]; then kill -SEGV $$; fi\n"
                "exit 0\n";
    return script;
}

QByteArray answering(const QByteArray &firstLine)
{
    return "#!/bin/sh\necho '" + firstLine + "'\n";
}

} // namespace ReleaseScripts
