#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

// The release feed: what the update server says about the newest build, and
// the rules that decide whether it is newer than the running one. Nothing in
// here touches the network, the disk or the screen, so it is tested alone.
namespace ReleaseFeed {

struct Installer
{
    QUrl url;
    QByteArray sha256; // the 32 raw bytes of the expected digest
};

struct Release
{
    int releaseNumber = 0;
    QString version;   // shown to the user, e.g. "2.0.024"
    QString buildDate; // "YY.MMDD", e.g. "25.0901"
    std::optional<Installer> installer; // for this system; absent when the feed offers none
};

// The installers object's key for the system this library was built for;
// empty where no installer is published.
QString platformKey();

// The name the installer gets in the download folder on this system.
QString installerFileName();

// Reads a feed document. The installer entry for the given platform key is
// checked and taken over; entries for other systems are left alone. On
// failure returns nothing and says why in *error.
std::optional<Release> parse(const QByteArray &document, const QString &platform, QString *error);

// True for text of the form "NN.NNNN", the shape of a build date.
bool looksLikeBuildDate(const QString &text);

// Whether the feed's release is newer than the running build, known by its
// release number and a text that is either its build date or its version.
// The build dates decide only between equal release numbers, and only when
// the text is a build date: both have the same fixed width, so comparing
// them as text orders them by date.
bool isNewer(const Release &release, int releaseNumber, const QString &text);

// Why an address may not be used for the feed or an installer, or an empty
// string when it may. Only https is accepted; plain http only to 127.0.0.1,
// which never leaves the machine.
QString addressRefusal(const QUrl &url);

} // namespace ReleaseFeed
