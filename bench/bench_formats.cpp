// Format-table parsing speed: FormatCatalogue::fromListing() on a 10,000-line
// table, in lines per second.
//
// The table is made of real rows: those of the format fixtures (rendered by
// the tool's own table code, captured from real runs, or written in the
// layout of newer tool versions), under the lines the tool prints before
// its table. Two tables:
//   - distinct IDs: every row with a numeric ID gets an ID of its own, so
//     every video row becomes a format the catalogue has to weigh and sort
//     (the harder case, and the headline figure);
//   - repeated IDs: the fixture rows as they are, over and over, so the
//     catalogue keeps one entry per ID, as with a real listing.
// Each timed call parses the whole table; the figure is the median over the
// calls. The catalogue logs the formats it keeps: that output goes to a
// no-op handler for the headline, and through Qt's default handler into
// /dev/null for comparison.
//
//   kestrel_bench_formats [--lines N] [--min-ms N]

#include "benchsupport.h"
#include "formats/formatcatalogue.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QSet>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <optional>

namespace {

// The rows below the dashed line of every table fixture.
QStringList fixtureRows()
{
    QStringList rows;
    const QDir folder(QStringLiteral(KESTREL_FORMAT_FIXTURES));
    for (const QString &name : folder.entryList({ QStringLiteral("*.txt") }, QDir::Files, QDir::Name)) {
        if (name.contains(QStringLiteral("crlf")))
            continue;
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        bool inTable = false;
        for (const QString &line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
            if (line.startsWith(QStringLiteral("-----"))) {
                inTable = true;
                continue;
            }
            if (inTable && !line.trimmed().isEmpty())
                rows << line;
        }
    }
    return rows;
}

QString buildTable(const QStringList &rows, int lineCount, bool distinctIds)
{
    const QStringList head {
        QStringLiteral("[youtube] Extracting URL: https://www.youtube.com/watch?v=Kestr3lBnch"),
        QStringLiteral("[youtube] Kestr3lBnch: Downloading webpage"),
        QStringLiteral("[youtube] Kestr3lBnch: Downloading android player API JSON"),
        QStringLiteral("[info] Available formats for Kestr3lBnch:"),
        QStringLiteral("ID      EXT   RESOLUTION FPS CH |   FILESIZE   TBR PROTO | VCODEC        VBR ACODEC      ABR "
                       "ASR MORE INFO"),
        QString(114, QLatin1Char('-')),
    };
    // A numeric ID and the blanks after it; storyboard IDs ("sb0") stay.
    static const QRegularExpression leadingId(QStringLiteral("^(\\s*)(\\d\\S*)(\\s+)"));
    QStringList lines = head;
    quint32 nextId = 1000;
    for (int i = 0; lines.size() < lineCount; ++i) {
        QString row = rows.at(i % rows.size());
        const QRegularExpressionMatch match = leadingId.match(row);
        if (distinctIds && match.hasMatch()) {
            // The same row under a new ID, padded to the old column width
            // where the new ID fits into it.
            const QString id = QString::number(nextId++) + QLatin1Char(' ');
            const qsizetype width = match.capturedLength(2) + match.capturedLength(3);
            row = match.captured(1) + id.leftJustified(width) + row.mid(match.capturedEnd(3));
        }
        lines << row;
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

struct Timing
{
    double medianNs = 0;
    double bestNs = 0;
    int calls = 0;
    qsizetype kept = 0;
};

Timing timeParsing(const QString &table, int minMs)
{
    QList<double> ns;
    QElapsedTimer total;
    total.start();
    qsizetype kept = 0;
    while (ns.size() < 20 || total.elapsed() < minMs) {
        QElapsedTimer timer;
        timer.start();
        const FormatCatalogue::Result result = FormatCatalogue::fromListing(table);
        ns << double(timer.nsecsElapsed());
        kept = result.viewOrder.size();
    }
    return { Bench::median(ns), Bench::minimum(ns), int(ns.size()), kept };
}

// Where the time of one table goes, for the figure's explanation: the
// catalogue's own per-line step (parseLine) on every line, timed on its own.
// What fromListing() spends beyond that is its choosing one line per format,
// ordering and view order. It also counts the distinct formats to order.
struct Breakdown
{
    double perLineNs = 0; // splitting the output and parseLine() on every line
    qsizetype formats = 0; // distinct format IDs among the usable lines
};

Breakdown breakDown(const QString &table)
{
    Breakdown breakdown;
    QList<double> perLine;
    for (int round = 0; round < 15; ++round) {
        QElapsedTimer timer;
        timer.start();
        const QStringList lines = table.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QList<FormatCandidate> candidates;
        for (qsizetype position = 0; position < lines.size(); ++position) {
            if (std::optional<FormatCandidate> candidate
                = FormatCatalogue::parseLine(lines.at(position), qint32(position)))
                candidates << *candidate;
        }
        perLine << double(timer.nsecsElapsed());

        QSet<quint32> ids;
        for (const FormatCandidate &candidate : std::as_const(candidates))
            ids.insert(candidate.id);
        breakdown.formats = ids.size();
    }
    breakdown.perLineNs = Bench::median(perLine);
    return breakdown;
}

double linesPerSecond(int lines, double ns)
{
    return double(lines) / (ns / 1e9);
}

QString thousands(double value)
{
    return QLocale(QLocale::English).toString(qint64(value + 0.5));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int lineCount = Bench::intOption(arguments, QStringLiteral("--lines"), 10000);
    const int minMs = Bench::intOption(arguments, QStringLiteral("--min-ms"), 3000);

    const QStringList rows = fixtureRows();
    if (rows.isEmpty()) {
        std::fprintf(stderr, "formats: FAILED TO RUN: no table rows in %s\n", KESTREL_FORMAT_FIXTURES);
        return 2;
    }
    const QString distinct = buildTable(rows, lineCount, true);
    const QString repeated = buildTable(rows, lineCount, false);

    Timing distinctQuiet;
    Timing repeatedQuiet;
    {
        const QtMessageHandler previous = qInstallMessageHandler(Bench::discardMessages);
        timeParsing(distinct, 200); // warm-up
        distinctQuiet = timeParsing(distinct, minMs);
        repeatedQuiet = timeParsing(repeated, minMs);
        qInstallMessageHandler(previous);
    }
    Timing distinctLogged;
    {
        const Bench::StandardErrorToNull silence;
        distinctLogged = timeParsing(distinct, minMs);
    }
    Breakdown distinctParts;
    Breakdown repeatedParts;
    {
        const QtMessageHandler previous = qInstallMessageHandler(Bench::discardMessages);
        distinctParts = breakDown(distinct);
        repeatedParts = breakDown(repeated);
        qInstallMessageHandler(previous);
    }

    const double rate = linesPerSecond(lineCount, distinctQuiet.medianNs);
    QTextStream out(stdout);
    out << "formats: " << thousands(rate) << " lines/s on a " << lineCount
        << "-line table with distinct IDs (goal >= 500,000) " << Bench::verdict(rate >= 500000.0) << '\n';
    const auto detail = [&](const char *label, const Timing &timing) {
        out << "formats: " << label << ": " << Bench::number(timing.medianNs / 1e6, 2) << " ms per table, "
            << thousands(linesPerSecond(lineCount, timing.medianNs)) << " lines/s median, "
            << thousands(linesPerSecond(lineCount, timing.bestNs)) << " lines/s best, " << timing.calls << " calls, "
            << timing.kept << " formats kept\n";
    };
    detail("distinct IDs, messages dropped", distinctQuiet);
    detail("repeated IDs, messages dropped", repeatedQuiet);
    detail("distinct IDs, Qt's default handler into /dev/null", distinctLogged);
    out << "formats: table rows taken from " << rows.size() << " fixture rows\n";
    const auto parts = [&](const char *label, const Breakdown &breakdown, const Timing &whole) {
        out << "formats: where a " << label << " table's time goes: splitting and parseLine() on every line "
            << Bench::number(breakdown.perLineNs / 1e6, 2) << " ms ("
            << thousands(linesPerSecond(lineCount, breakdown.perLineNs))
            << " lines/s); the rest of fromListing() (one line per format among " << breakdown.formats
            << " formats, ordering, view order) " << Bench::number((whole.medianNs - breakdown.perLineNs) / 1e6, 2)
            << " ms\n";
    };
    parts("distinct-ID", distinctParts, distinctQuiet);
    parts("repeated-ID", repeatedParts, repeatedQuiet);
    return 0;
}
