#pragma once

#include <QString>

#include <memory>

class QSettings;

// The program's one INI file, "settings.ini" in the per-user local data folder.
namespace Settings {

inline QString fileName() { return QStringLiteral("settings.ini"); }
inline QString versionNumberKey() { return QStringLiteral("Version/Num"); }
inline QString versionDateKey() { return QStringLiteral("Version/Date"); }
inline QString scaleKey() { return QStringLiteral("Scale/Val"); }

// The writable local application-data folder that holds the file.
QString folder();

// Creates the folder if need be and opens the file in INI format.
std::unique_ptr<QSettings> open();

// Writes value under key only when the stored text differs (exact,
// case-sensitive); returns whether it wrote.
bool writeIfChanged(QSettings &settings, const QString &key, const QString &value);

} // namespace Settings
