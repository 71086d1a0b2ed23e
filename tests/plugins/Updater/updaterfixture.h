#pragma once

#include "feedsigner.h"
#include "localhttpserver.h"

#include <QJsonValue>
#include <QObject>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QStringList>

#include <memory>

class UpdateInterface;

// What every updater suite shares: the built plug-in, loaded anew for each
// case as each run of the application loads it, a local HTTP server that
// serves the release feed, its signature and the installer, the settings
// that point the plug-in at that server, and a throw-away key that the
// plug-in accepts beside the release key. The suites derive from it; its slots set up
// and check each case.
class UpdaterFixture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    // The feed offers the served installer under this system's entry, which
    // the updater reads; the other system's entry names a file the server
    // does not serve, so an updater that took the wrong one would fail.
#if defined(Q_OS_WIN)
    static inline const QString thisSystem = QStringLiteral("windows");
    static inline const QString otherSystem = QStringLiteral("linux");
    static inline const QString installerPath = QStringLiteral("/files/KestrelDownloader-win64.exe");
    static inline const QString otherInstallerPath = QStringLiteral("/files/kestrel-downloader_amd64.deb");
#else
    static inline const QString thisSystem = QStringLiteral("linux");
    static inline const QString otherSystem = QStringLiteral("windows");
    static inline const QString installerPath = QStringLiteral("/files/kestrel-downloader_amd64.deb");
    static inline const QString otherInstallerPath = QStringLiteral("/files/KestrelD.exe");
#endif

    static QByteArray sha256Hex(const QByteArray &data);
    static QList<QWidget *> visibleDialogs();

    void writeSettings(const QString &feedUrl, int timeoutMs = 5000);
    QByteArray feed(int releaseNumber, const QString &version, const QString &buildDate, const QByteArray &sha256,
                    const QJsonValue &installerUrl = QJsonValue()) const;
    void serveFeed(int releaseNumber, const QString &version, const QString &buildDate);
    // The document as /feed.json and its detached signature by key as /feed.json.sig.
    void serveSignedFeed(const QByteArray &document, FeedSigner::Key key = FeedSigner::Key::Release);
    // The installer's private folder.
    static QString installerFolder();
    static QString finalPath();
    static QString partPath() { return finalPath() + QStringLiteral(".part"); }
    QString launchLine() const;
    // What every check asks first: the feed, then its signature.
    static QStringList feedRequests();
    // The request lines the server got, without the feed's and its signature's.
    QStringList installerRequests() const;
    // True when for timeoutMs the updater does nothing more that a test can
    // see: no request to the server, no signal, no file coming or going.
    bool staysQuietFor(int timeoutMs) const;

    std::unique_ptr<FeedSigner> m_signer;
    QPluginLoader m_loader;
    UpdateInterface *m_updater = nullptr;
    std::unique_ptr<LocalHttpServer> m_server;
    std::unique_ptr<QSignalSpy> m_done;
    std::unique_ptr<QSignalSpy> m_error;
    QByteArray m_installer;
};
