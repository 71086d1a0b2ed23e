#pragma once

#include <QString>

// One usable line of the tool's format table.
struct FormatCandidate
{
    qint32 category = 5; // preference class 0..5, lower is better
    quint32 id = 0;      // the line's leading number, never 0
    QString ext;         // the EXT column
    QString resolution;  // the RESOLUTION column
    QString sizeText;    // the first size with a KiB, MiB or GiB unit in the line
    qint32 position = 0; // index among the output's non-empty lines
};
