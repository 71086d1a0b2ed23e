#include "formatcatalogue.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace FormatCatalogue {

namespace {

const QRegularExpression &sizePattern()
{
    static const QRegularExpression pattern(QStringLiteral("(\\d+(?:\\.\\d+)?(?:KiB|MiB|GiB))"));
    return pattern;
}

qsizetype skipWhiteSpace(const QString &text, qsizetype from)
{
    while (from < text.size() && text.at(from).isSpace())
        ++from;
    return from;
}

// The first columns of the table part before the first '|': ID, EXT, RESOLUTION ...
QStringList leadingColumns(const QString &line)
{
    const QString columns = line.section(QLatin1Char('|'), 0, 0);
    QStringList tokens;
    qsizetype at = skipWhiteSpace(columns, 0);
    while (at < columns.size() && tokens.size() < 4) {
        qsizetype end = at;
        while (end < columns.size() && !columns.at(end).isSpace())
            ++end;
        tokens << columns.mid(at, end - at);
        at = skipWhiteSpace(columns, end);
    }
    return tokens;
}

qint32 categoryOf(const QString &line, quint32 id, const QString &ext)
{
    if (line.contains(QChar(0x2248))) // an estimated size, "≈"
        return 0;
    if (line.contains(QLatin1Char('~')))
        return 1;
    if (id == 18 || id == 24)
        return 2;
    if (ext == QStringLiteral("mp4") && line.contains(QStringLiteral("video only")))
        return 3;
    if (ext == QStringLiteral("mp4"))
        return 4;
    return 5;
}

struct SizeParts
{
    double number = 0.0;
    QString unit;
};

// Digits and dots make the number, everything else the unit.
SizeParts splitSize(const QString &sizeText)
{
    QString number;
    SizeParts parts;
    for (const QChar character : sizeText) {
        if (character.isDigit() || character == QLatin1Char('.'))
            number += character;
        else
            parts.unit += character;
    }
    bool converted = false;
    const double value = number.toDouble(&converted);
    parts.number = converted ? value : 0.0;
    return parts;
}

bool unitIs(const QString &unit, const char *name)
{
    return unit.contains(QLatin1String(name), Qt::CaseInsensitive);
}

void logViewOrder(const QList<FormatInfo> &ordered)
{
    qInfo().noquote() << "--- VIEW ORDER ---";
    for (const FormatInfo &format : ordered)
        qInfo().noquote() << format.id << format.resolution << format.sizeText;
}

} // namespace

quint32 leadingIdentifier(const QString &line)
{
    const qsizetype start = skipWhiteSpace(line, 0);
    qsizetype end = start;
    while (end < line.size() && line.at(end).isDigit())
        ++end;
    if (end == start)
        return 0;
    bool converted = false;
    const quint32 id = line.mid(start, end - start).toUInt(&converted, 10);
    return converted ? id : 0;
}

std::optional<FormatCandidate> parseLine(const QString &line, qint32 position)
{
    if (line.contains(QStringLiteral("audio only")))
        return std::nullopt;
    const quint32 id = leadingIdentifier(line);
    if (id == 0)
        return std::nullopt;

    const QStringList columns = leadingColumns(line);
    FormatCandidate candidate;
    candidate.id = id;
    candidate.ext = columns.value(1);
    candidate.resolution = columns.value(2);
    candidate.sizeText = sizePattern().match(line).captured(1);
    candidate.category = categoryOf(line, id, candidate.ext);
    candidate.position = position;
    return candidate;
}

Result fromListing(const QString &output)
{
    const QStringList lines = output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QList<FormatCandidate> candidates;
    for (qsizetype position = 0; position < lines.size(); ++position) {
        if (std::optional<FormatCandidate> candidate = parseLine(lines.at(position), qint32(position)))
            candidates << *candidate;
    }

    // Of several lines for one format, the best category wins, then the earliest line.
    std::stable_sort(candidates.begin(), candidates.end(), [](const FormatCandidate &a, const FormatCandidate &b) {
        return a.category != b.category ? a.category < b.category : a.position < b.position;
    });
    QHash<quint32, FormatInfo> chosen;
    for (const FormatCandidate &candidate : std::as_const(candidates)) {
        if (candidate.id != 0 && !chosen.contains(candidate.id))
            chosen.insert(candidate.id, {candidate.id, candidate.sizeText, candidate.resolution});
    }

    // A listing without a usable line still offers its first numbered line,
    // even an audio-only one.
    if (chosen.isEmpty()) {
        for (const QString &line : lines) {
            if (const quint32 id = leadingIdentifier(line)) {
                chosen.insert(id, {id, QString(), QString()});
                break;
            }
        }
    }

    // Each size is read once: the comparisons of a sort would read it again
    // and again.
    QList<std::pair<qint64, FormatInfo>> bySize;
    bySize.reserve(chosen.size());
    for (const FormatInfo &format : std::as_const(chosen))
        bySize.append({sizeInBytes(format.sizeText), format});
    std::sort(bySize.begin(), bySize.end(), [](const auto &a, const auto &b) { return a.first > b.first; });
    QList<FormatInfo> ordered;
    ordered.reserve(qMin(bySize.size(), maximumFormats));
    for (qsizetype i = 0; i < bySize.size() && i < maximumFormats; ++i)
        ordered.append(bySize.at(i).second);

    Result result;
    result.viewOrder.reserve(ordered.size());
    logViewOrder(ordered);
    for (const FormatInfo &format : std::as_const(ordered)) {
        result.formats.insert(format.id, format);
        result.viewOrder << format.id;
    }
    return result;
}

qint64 sizeInBytes(const QString &sizeText)
{
    if (sizeText.isEmpty())
        return 0;
    const SizeParts parts = splitSize(sizeText);
    double bytes = parts.number;
    if (unitIs(parts.unit, "GiB"))
        bytes *= 1024.0 * 1024.0 * 1024.0;
    else if (unitIs(parts.unit, "MiB"))
        bytes *= 1024.0 * 1024.0;
    else if (unitIs(parts.unit, "KiB"))
        bytes *= 1024.0;
    // Absurdly large sizes sort first rather than overflowing.
    if (bytes >= double(std::numeric_limits<qint64>::max()))
        return std::numeric_limits<qint64>::max();
    return qint64(bytes);
}

double sizeInMiB(const QString &sizeText)
{
    if (sizeText.isEmpty())
        return 0.0;
    const SizeParts parts = splitSize(sizeText);
    if (unitIs(parts.unit, "GiB"))
        return parts.number * 1024.0;
    if (unitIs(parts.unit, "MiB"))
        return parts.number;
    if (unitIs(parts.unit, "KiB"))
        return parts.number * 0.0009765625;
    return parts.number;
}

} // namespace FormatCatalogue
