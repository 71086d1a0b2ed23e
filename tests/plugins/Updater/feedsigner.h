#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// Throw-away OpenPGP keys that sign the release feeds the updater's tests
// serve: one that stands in for the application's release key (handed to
// the updater through KESTREL_UPDATER_KEYRING) and one of a stranger the
// updater does not know. Made with gpg once per test process; a second or so.
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
    bool gpg(const QStringList &arguments, QByteArray *output = nullptr) const;

    QTemporaryDir m_home;
    bool m_valid = false;
};
