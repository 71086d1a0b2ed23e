#pragma once

#include "base/version.h"

#include <QCoreApplication>
#include <QString>

// Who this program is. The application and organisation names also form the
// per-user folder names, so they are set before anything asks for a folder.
namespace Identity {

inline QString applicationName() { return QStringLiteral("Kestrel Downloader"); }
inline QString organisationName() { return QStringLiteral("Halvard Software"); }
inline QString applicationVersion() { return QString::fromLatin1(Build::versionText); }
inline QString buildDate() { return QStringLiteral("25.0826"); }

// The name of the installed menu entry (<id>.desktop) and software centre
// entry (<id>.metainfo.xml). Given to the desktop so that it finds the entry
// that belongs to the windows.
inline QString desktopEntryId() { return QString::fromLatin1(Build::desktopEntryId); }

// The release number handed to the updater for the start-up check and the
// manual update; a fixed value, not derived from the build date.
inline constexpr int updateReleaseNumber = 2023;

// Handed to the About box together with the system description, in the
// user's language.
inline QString description()
{
    return QCoreApplication::translate("Identity", "simple downloader from YouTube, full version is on Loomfield site");
}

// The sister product's shop page, opened by the start page's site button.
inline QString sisterSiteAddress() { return QStringLiteral("https://loomfield.example.com/"); }

} // namespace Identity
