#include "updaterfixture.h"

#include "plugins/updateinterface.h"

#include "happenswithin.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkProxy>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <QWidget>

#ifndef KESTREL_UPDATER_PLUGIN
#error "KESTREL_UPDATER_PLUGIN must name the built updater plug-in"
#endif

namespace {

// Not compressible and not repetitive, so a piece out of place changes the digest.
QByteArray makeInstaller(qsizetype size)
{
    QByteArray data;
    data.reserve(size);
    quint32 state = 2463534242u;
    while (data.size() < size) {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        data.append(static_cast<char>(state & 0xff));
    }
    return data;
}

} // namespace

void UpdaterFixture::initTestCase()
{
    // Nothing these tests download is ever started; the updater logs it instead.
    qputenv("KESTREL_UPDATER_NO_LAUNCH", "1");
    // The local server is reached directly, whatever proxy the machine names.
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));

    QVERIFY2(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation).startsWith(QDir::homePath()),
             "the download folder must lie in the test's private home");

    m_signer = std::make_unique<FeedSigner>();
#if defined(Q_OS_WIN)
    if (!m_signer->isValid())
        QSKIP("gpg is needed to sign the test feeds and is not available here");
#endif
    QVERIFY2(m_signer->isValid(), "gpg must make the throw-away signing keys");
    // Added to the release key, which stays accepted: the test key signs the feeds.
    qputenv("KESTREL_UPDATER_KEYRING", m_signer->releaseKeyFile().toLocal8Bit());

    m_loader.setFileName(QStringLiteral(KESTREL_UPDATER_PLUGIN));
    m_installer = makeInstaller(300 * 1024);
}

// Each case gets a plug-in of its own, as each run of the application does:
// an installation started in one case is not carried into the next.
void UpdaterFixture::init()
{
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    m_updater = qobject_cast<UpdateInterface *>(m_loader.instance());
    QVERIFY(m_updater);

    m_server = std::make_unique<LocalHttpServer>();
    QVERIFY(m_server->start());
    writeSettings(m_server->url(QStringLiteral("/feed.json")).toString());
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::Whole, {}});

    QDir().mkpath(QFileInfo(finalPath()).absolutePath());
    QFile::remove(finalPath());
    QFile::remove(partPath());

    // By signature: the plug-in has its own copy of the interface's meta-object.
    m_done = std::make_unique<QSignalSpy>(m_updater, SIGNAL(updateDone()));
    m_error = std::make_unique<QSignalSpy>(m_updater, SIGNAL(updateError()));
    QVERIFY(m_done->isValid());
    QVERIFY(m_error->isValid());
}

void UpdaterFixture::cleanup()
{
    m_updater->finish();
    QVERIFY2(visibleDialogs().isEmpty(), "finish() leaves no dialog on the screen");
    m_server.reset();
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));
    QFile::remove(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/settings.ini"));
    QFile::remove(finalPath());
    QFile::remove(partPath());

    // What finish() handed to deleteLater() goes before the plug-in's code does.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_done.reset();
    m_error.reset();
    QVERIFY(m_loader.unload());
    m_updater = nullptr;
}

QByteArray UpdaterFixture::sha256Hex(const QByteArray &data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex();
}

QList<QWidget *> UpdaterFixture::visibleDialogs()
{
    QList<QWidget *> dialogs;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->inherits("QDialog"))
            dialogs << window;
    }
    return dialogs;
}

void UpdaterFixture::writeSettings(const QString &feedUrl, int timeoutMs)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(folder);
    QSettings settings(folder + QStringLiteral("/settings.ini"), QSettings::IniFormat);
    settings.setValue(QStringLiteral("Updater/FeedUrl"), feedUrl);
    settings.setValue(QStringLiteral("Updater/TimeoutMs"), timeoutMs);
    settings.sync();
}

QByteArray UpdaterFixture::feed(int releaseNumber, const QString &version, const QString &buildDate,
                                const QByteArray &sha256, const QJsonValue &installerUrl) const
{
    const QJsonObject thisEntry{
        {QStringLiteral("url"), installerUrl.isUndefined() || installerUrl.isNull() ? m_server->url(installerPath).toString() : installerUrl},
        {QStringLiteral("sha256"), QString::fromLatin1(sha256)},
    };
    const QJsonObject otherEntry{
        {QStringLiteral("url"), m_server->url(otherInstallerPath).toString()},
        {QStringLiteral("sha256"), QString::fromLatin1(sha256)},
    };
    const QJsonObject root{
        {QStringLiteral("releaseNumber"), releaseNumber},
        {QStringLiteral("version"), version},
        {QStringLiteral("buildDate"), buildDate},
        {QStringLiteral("installers"), QJsonObject{{thisSystem, thisEntry}, {otherSystem, otherEntry}}},
    };
    return QJsonDocument(root).toJson();
}

void UpdaterFixture::serveFeed(int releaseNumber, const QString &version, const QString &buildDate)
{
    serveSignedFeed(feed(releaseNumber, version, buildDate, sha256Hex(m_installer)));
}

void UpdaterFixture::serveSignedFeed(const QByteArray &document, FeedSigner::Key key)
{
    const QByteArray signature = m_signer->sign(document, key);
    QVERIFY2(!signature.isEmpty(), "gpg must sign the test feed");
    m_server->setRoute(QStringLiteral("/feed.json"), {200, document, LocalHttpServer::Mode::Whole, {}});
    m_server->setRoute(QStringLiteral("/feed.json.sig"), {200, signature, LocalHttpServer::Mode::Whole, {}});
}

QString UpdaterFixture::installerFolder()
{
#if defined(Q_OS_WIN)
    return QDir::cleanPath(QDir::tempPath() + QStringLiteral("/KestrelD-update"));
#else
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/updates");
#endif
}

QString UpdaterFixture::finalPath()
{
#if defined(Q_OS_WIN)
    const QString name = QStringLiteral("KestrelD.exe");
#else
    const QString name = QStringLiteral("KestrelD.deb");
#endif
    return QDir(installerFolder()).filePath(name);
}

QString UpdaterFixture::launchLine() const
{
    return QStringLiteral("[UPD] KESTREL_UPDATER_NO_LAUNCH is set; the installer is not started: %1").arg(finalPath());
}

QStringList UpdaterFixture::feedRequests()
{
    return {QStringLiteral("GET /feed.json"), QStringLiteral("GET /feed.json.sig")};
}

QStringList UpdaterFixture::installerRequests() const
{
    QStringList requests = m_server->requests();
    requests.removeAll(QStringLiteral("GET /feed.json"));
    requests.removeAll(QStringLiteral("GET /feed.json.sig"));
    return requests;
}

bool UpdaterFixture::staysQuietFor(int timeoutMs) const
{
    const qsizetype requests = m_server->requests().size();
    const qsizetype done = m_done->count();
    const qsizetype errors = m_error->count();
    const bool finalThere = QFile::exists(finalPath());
    const bool partThere = QFile::exists(partPath());
    return !happensWithin(timeoutMs, [&] {
        return m_server->requests().size() != requests || m_done->count() != done || m_error->count() != errors
            || QFile::exists(finalPath()) != finalThere || QFile::exists(partPath()) != partThere;
    });
}
