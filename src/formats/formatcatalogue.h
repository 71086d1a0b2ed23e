#pragma once

#include "formats/formatcandidate.h"
#include "formats/formatinfo.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

// Turns the tool's printed format table into the formats offered to the user:
// at most one entry per format identifier, the largest first, at most 11.
namespace FormatCatalogue {

inline constexpr qsizetype maximumFormats = 11;

struct Result
{
    QHash<quint32, FormatInfo> formats;
    QList<quint32> viewOrder;
};

// The whole standard output of a format-listing run.
Result fromListing(const QString &output);

// One line of the table, or nothing when the line offers no usable format.
std::optional<FormatCandidate> parseLine(const QString &line, qint32 position);

// The format identifier a line starts with (after white space), or 0.
quint32 leadingIdentifier(const QString &line);

// A size such as "12.5MiB" in bytes; a bare number counts as bytes.
qint64 sizeInBytes(const QString &sizeText);

// The same size in mebibytes; a bare number counts as mebibytes.
double sizeInMiB(const QString &sizeText);

} // namespace FormatCatalogue
