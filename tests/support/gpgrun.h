#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// gpg run the way the tests' throw-away keys need it: in the GnuPG home
// folder home, without questions, with an empty passphrase.
namespace GpgRun {

// Whether gpg ended well within a minute; its standard output goes into
// *output. Says on the test's output why it did not.
bool run(const QString &home, const QStringList &arguments, QByteArray *output = nullptr);

} // namespace GpgRun
