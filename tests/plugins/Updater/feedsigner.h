#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

#include <optional>

// Throw-away OpenPGP keys that sign the release feeds the updater's tests
// serve: one that stands in for the application's release key (handed to
// the updater through KESTREL_UPDATER_KEYRING) and one of a stranger the
// updater does not know. Made with gpg once per test process; a second or so.
// Where the test program cannot run gpg itself (under Wine), a signer on
// the build machine that KESTREL_TEST_SIGNER names (signer.py) holds the
// keys and signs instead.
class FeedSigner
{
public:
    enum class Key { Release, Stranger };

    FeedSigner();
    // Ends the agent gpg started for the keys.
    ~FeedSigner();
    FeedSigner(const FeedSigner &) = delete;
    FeedSigner &operator=(const FeedSigner &) = delete;

    bool isValid() const { return m_valid; }
    // The stand-in release key, ASCII-armoured.
    QString releaseKeyFile() const { return m_home.filePath(QStringLiteral("release.asc")); }

    // A detached binary signature over exactly these bytes; empty if gpg failed.
    QByteArray sign(const QByteArray &document, Key key = Key::Release) const;

private:
    // The signer service's answer to a request for path, with body posted
    // when there is one; nothing when it gave none.
    std::optional<QByteArray> askSigner(const QString &path, const std::optional<QByteArray> &body = {}) const;

    QTemporaryDir m_home;
    QUrl m_signer;
    bool m_valid = false;
};
