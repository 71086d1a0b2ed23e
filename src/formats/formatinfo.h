#pragma once

#include <QString>

// One format offered for download.
struct FormatInfo
{
    quint32 id = 0;     // the tool's format identifier, passed back to download it
    QString sizeText;   // the size as the tool prints it ("12.5MiB"), or empty
    QString resolution; // the resolution as printed, or empty
};
