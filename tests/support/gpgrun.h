#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

// gpg run the way the tests' throw-away keys need it: in the GnuPG home
// folder home, without questions, with an empty passphrase.
namespace GpgRun {

// Whether gpg ended well within a minute; its standard output goes into
// *output. Says on the test's output why it did not.
bool run(const QString &home, const QStringList &arguments, QByteArray *output = nullptr);

// The owners of the two throw-away keys: one stands in for a release key,
// the other is a stranger's.
inline constexpr char releaseUser[] = "Kestrel Test Release <release@example.invalid>";
inline constexpr char strangerUser[] = "Kestrel Test Stranger <stranger@example.invalid>";

// Makes both keys in home; the release key's public half, ASCII-armoured,
// or nothing when gpg failed.
std::optional<QByteArray> makeTestKeys(const QString &home);

// A detached binary signature of file by the key of user, into signature.
bool signFile(const QString &home, const char *user, const QString &file, const QString &signature);

} // namespace GpgRun
