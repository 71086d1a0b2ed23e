#include "formats/formatcatalogue.h"

#include "logcapture.h"
#include "testsandbox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#ifndef KESTREL_FORMAT_FIXTURES
#error "KESTREL_FORMAT_FIXTURES must name tests/fixtures/formats"
#endif

// The format tables in tests/fixtures/formats are printed by the downloader
// tool itself (see the README there); each <name>.txt has a hand-checked
// <name>.expected.json next to it.
class TestFormatCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void everyFixtureHasAnExpectation();
    void listingMatchesExpectation_data();
    void listingMatchesExpectation();

    void parseLine_data();
    void parseLine();
    void leadingIdentifier_data();
    void leadingIdentifier();

    void reduction_data();
    void reduction();
    void viewOrderLogLines_data();
    void viewOrderLogLines();

    void sizeInBytes_data();
    void sizeInBytes();
    void sizeInMiB_data();
    void sizeInMiB();
};

namespace {

QDir fixtureDir()
{
    return QDir(QStringLiteral(KESTREL_FORMAT_FIXTURES));
}

QStringList fixtureNames()
{
    QStringList names;
    const QStringList files = fixtureDir().entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name);
    for (const QString &file : files)
        names << file.chopped(4);
    return names;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

// "id resolution size" per kept format in view order: the same shape as the
// log lines, so a failing comparison shows the whole outcome at once.
QStringList describe(const FormatCatalogue::Result &result)
{
    QStringList rows;
    for (quint32 id : result.viewOrder) {
        const FormatInfo info = result.formats.value(id);
        rows << QStringLiteral("%1 %2 %3").arg(id).arg(info.resolution, info.sizeText);
    }
    return rows;
}

// The catalogue's information lines with the "[line] signature :" location
// (if the statement writes one) taken off, as the line numbers are not ours
// to pin down here.
QStringList informationTexts(const LogCapture &log)
{
    static const QRegularExpression location(QStringLiteral("^\\[\\d+\\] .*? : "));
    QStringList texts;
    for (const LogCapture::Line &line : log.lines()) {
        if (line.type != QtInfoMsg)
            continue;
        QString text = line.text;
        texts << text.remove(location);
    }
    return texts;
}

// A stretch of the view order. Formats of equal size may come in any order
// among themselves, so a stretch names its IDs as a set; "pick" says how many
// of them are kept when the limit cuts through equally sized formats.
struct Stretch
{
    QList<quint32> ids;
    qsizetype pick = 0;
};

quint32 jsonId(const QJsonValue &value)
{
    return static_cast<quint32>(value.toInteger());
}

QList<Stretch> stretchesOf(const QJsonObject &expectation)
{
    QList<Stretch> stretches;
    if (expectation.contains(QStringLiteral("viewOrder"))) {
        for (const QJsonValue &id : expectation.value(QStringLiteral("viewOrder")).toArray())
            stretches.append({{jsonId(id)}, 1});
        return stretches;
    }
    for (const QJsonValue &group : expectation.value(QStringLiteral("viewOrderGroups")).toArray()) {
        Stretch stretch;
        if (group.isArray()) {
            for (const QJsonValue &id : group.toArray())
                stretch.ids << jsonId(id);
            stretch.pick = stretch.ids.size();
        } else {
            const QJsonObject object = group.toObject();
            for (const QJsonValue &id : object.value(QStringLiteral("from")).toArray())
                stretch.ids << jsonId(id);
            stretch.pick = object.value(QStringLiteral("pick")).toInteger();
        }
        stretches << stretch;
    }
    return stretches;
}

QString idList(const QList<quint32> &ids)
{
    QStringList texts;
    for (quint32 id : ids)
        texts << QString::number(id);
    return texts.join(QLatin1Char(' '));
}

const QString viewOrderHeading = QStringLiteral("--- VIEW ORDER ---");

} // namespace

void TestFormatCatalogue::everyFixtureHasAnExpectation()
{
    const QStringList names = fixtureNames();
    QVERIFY2(names.size() >= 10, qPrintable(fixtureDir().absolutePath()));
    for (const QString &name : names)
        QVERIFY2(fixtureDir().exists(name + QStringLiteral(".expected.json")), qPrintable(name));
}

void TestFormatCatalogue::listingMatchesExpectation_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("crlf");

    // Every table also goes through with Windows line ends, which the tool
    // prints there and which must not change a thing.
    for (const QString &name : fixtureNames()) {
        QTest::newRow(qPrintable(name)) << name << false;
        if (!readFile(fixtureDir().filePath(name + QStringLiteral(".txt"))).contains('\r'))
            QTest::newRow(qPrintable(name + QStringLiteral(" as CRLF"))) << name << true;
    }
}

void TestFormatCatalogue::listingMatchesExpectation()
{
    QFETCH(QString, name);
    QFETCH(bool, crlf);

    const QByteArray raw = readFile(fixtureDir().filePath(name + QStringLiteral(".txt")));
    QVERIFY(!raw.isEmpty());
    QString listing = QString::fromUtf8(raw);
    if (crlf)
        listing.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));

    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(
        readFile(fixtureDir().filePath(name + QStringLiteral(".expected.json"))), &error);
    QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));
    const QJsonObject expectation = document.object();
    const QJsonObject expectedFormats = expectation.value(QStringLiteral("formats")).toObject();
    const QList<Stretch> stretches = stretchesOf(expectation);

    // The expectation itself must be consistent: every ID it may show has
    // its size and resolution written down, and nothing else has.
    QSet<QString> mentioned;
    qsizetype expectedCount = 0;
    for (const Stretch &stretch : stretches) {
        QVERIFY(stretch.pick > 0 && stretch.pick <= stretch.ids.size());
        expectedCount += stretch.pick;
        for (quint32 id : stretch.ids)
            mentioned.insert(QString::number(id));
    }
    const QStringList described = expectedFormats.keys();
    QCOMPARE(mentioned, QSet<QString>(described.cbegin(), described.cend()));

    const FormatCatalogue::Result result = FormatCatalogue::fromListing(listing);
    const QByteArray outcome = describe(result).join(QStringLiteral(" / ")).toUtf8();

    QVERIFY2(result.viewOrder.size() == expectedCount, outcome.constData());
    QCOMPARE(result.formats.size(), expectedCount);

    qsizetype at = 0;
    for (const Stretch &stretch : stretches) {
        const QList<quint32> got = result.viewOrder.mid(at, stretch.pick);
        at += stretch.pick;
        const QByteArray where = QStringLiteral("expected %1 of {%2} at view position %3, got {%4}; whole: ")
                                     .arg(stretch.pick)
                                     .arg(idList(stretch.ids))
                                     .arg(at - stretch.pick)
                                     .arg(idList(got))
                                     .toUtf8()
            + outcome;
        QVERIFY2(QSet<quint32>(got.cbegin(), got.cend()).size() == stretch.pick, where.constData());
        for (quint32 id : got)
            QVERIFY2(stretch.ids.contains(id), where.constData());
    }

    for (quint32 id : result.viewOrder) {
        QVERIFY2(result.formats.contains(id), qPrintable(QString::number(id)));
        const FormatInfo info = result.formats.value(id);
        const QJsonObject expected = expectedFormats.value(QString::number(id)).toObject();
        QCOMPARE(info.id, id);
        QCOMPARE(info.sizeText, expected.value(QStringLiteral("size")).toString());
        QCOMPARE(info.resolution, expected.value(QStringLiteral("resolution")).toString());
    }
}

void TestFormatCatalogue::parseLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<qint32>("position");
    QTest::addColumn<bool>("usable");
    QTest::addColumn<qint32>("category");
    QTest::addColumn<quint32>("id");
    QTest::addColumn<QString>("ext");
    QTest::addColumn<QString>("resolution");
    QTest::addColumn<QString>("sizeText");

    const auto usable = [](const char *name, const QString &line, qint32 category, quint32 id,
                           const QString &ext, const QString &resolution, const QString &size,
                           qint32 position = 7) {
        QTest::newRow(name) << line << position << true << category << id << ext << resolution << size;
    };
    const auto dropped = [](const char *name, const QString &line) {
        QTest::newRow(name) << line << 7 << false << 0 << 0u << QString() << QString() << QString();
    };

    const QString muxed18 = QStringLiteral("18  mp4   640x360     30    | 12.34MiB  268k https | avc1.42001E mp4a.40.2 44k 360p");

    // Categories, from the estimate marks down to everything else.
    usable("muxed id 18", muxed18, 2, 18, QStringLiteral("mp4"), QStringLiteral("640x360"), QStringLiteral("12.34MiB"));
    usable("approximate mark beats mp4 video only",
           QStringLiteral("137 mp4   1920x1080   30    | ≈ 70.01MiB 1950k https | avc1.640028 1950k video only 1080p, mp4_dash"),
           0, 137, QStringLiteral("mp4"), QStringLiteral("1920x1080"), QStringLiteral("70.01MiB"));
    usable("approximate mark beats tilde",
           QStringLiteral("616 mp4   1920x1080   30    | ≈201.00MiB 5600k https | vp09.00.40.08 5600k video only ~ Premium"),
           0, 616, QStringLiteral("mp4"), QStringLiteral("1920x1080"), QStringLiteral("201.00MiB"));
    usable("tilde with id 24",
           QStringLiteral("24  webm  640x360     30    | ~ 10.05MiB  280k https | vp9 280k video only 360p"),
           1, 24, QStringLiteral("webm"), QStringLiteral("640x360"), QStringLiteral("10.05MiB"));
    usable("tilde with id 18",
           QStringLiteral("18  mp4   640x360     25  2 | ~  6.12MiB  268k https | avc1.42001E mp4a.40.2 44k 360p"),
           1, 18, QStringLiteral("mp4"), QStringLiteral("640x360"), QStringLiteral("6.12MiB"));
    usable("tilde with mp4 video only",
           QStringLiteral("232 mp4   1280x720    30    | ~ 80.61MiB 2245k m3u8  | avc1.64001F 2245k video only"),
           1, 232, QStringLiteral("mp4"), QStringLiteral("1280x720"), QStringLiteral("80.61MiB"));
    usable("id 24 webm",
           QStringLiteral("24  webm  640x360     25    |   2.00MiB  300k https | vp9 300k video only 360p, webm_dash"),
           2, 24, QStringLiteral("webm"), QStringLiteral("640x360"), QStringLiteral("2.00MiB"));
    usable("mp4 video only",
           QStringLiteral("137 mp4   1920x1080   25    |  6.85MiB 303k https | avc1.640028 303k video only          1080p, mp4_dash"),
           3, 137, QStringLiteral("mp4"), QStringLiteral("1920x1080"), QStringLiteral("6.85MiB"));
    usable("mp4 with sound",
           QStringLiteral("22  mp4   1280x720    25  2 |   12.66MiB 1160k https | avc1.64001F       mp4a.40.2       44k 720p"),
           4, 22, QStringLiteral("mp4"), QStringLiteral("1280x720"), QStringLiteral("12.66MiB"));
    usable("mp4 with Video Only in other letters",
           QStringLiteral("135 mp4   854x480     25    | 5.58MiB 512k https | avc1.4d401f 512k Video Only 480p"),
           4, 135, QStringLiteral("mp4"), QStringLiteral("854x480"), QStringLiteral("5.58MiB"));
    usable("webm video only",
           QStringLiteral("248 webm  1920x1080   25    |  7.17MiB 318k https | vp9         318k video only          1080p, webm_dash"),
           5, 248, QStringLiteral("webm"), QStringLiteral("1920x1080"), QStringLiteral("7.17MiB"));
    usable("MP4 in capitals video only",
           QStringLiteral("137 MP4   1920x1080   25    |  6.85MiB 303k https | avc1.640028 303k video only"),
           5, 137, QStringLiteral("MP4"), QStringLiteral("1920x1080"), QStringLiteral("6.85MiB"));

    // Lines that offer nothing.
    dropped("audio only", QStringLiteral("140 m4a   audio only      2 |  2.85MiB 126k https | audio only       mp4a.40.2  126k 44k medium, m4a_dash"));
    dropped("audio only with approximate mark", QStringLiteral("251 webm  audio only      2 | ≈  4.84MiB  135k https | audio only          opus       135k 48k medium, webm_dash"));
    dropped("audio only in the notes of an mp4", QStringLiteral("18  mp4   640x360     25  2 | 6.05MiB 268k https | avc1.42001E mp4a.40.2 44k audio only"));
    dropped("storyboard with a letter ID", QStringLiteral("sb0 mhtml 160x90       0    |               mhtml | images                               storyboard"));
    dropped("storyboard sb2", QStringLiteral("sb2 mhtml 48x27        0    |               mhtml | images                               storyboard"));
    dropped("ID made of letters and digits", QStringLiteral("hls-720p mp4 1280x720 30 | 9.50MiB 2200k https | avc1.4d401f video only"));
    dropped("ID 0", QStringLiteral("0   mp4   1920x1080   30    | 20.00MiB 4100k https | avc1.640028 4100k video only"));
    dropped("ID 4294967296", QStringLiteral("4294967296 mp4 1920x1080 30 | 19.00MiB 4000k https | avc1.640028 4000k video only"));
    dropped("ID of 23 digits", QStringLiteral("12345678901234567890123 mp4 640x360 | 1.00MiB"));
    dropped("table header", QStringLiteral("ID  EXT   RESOLUTION FPS CH | FILESIZE  TBR PROTO | VCODEC       VBR ACODEC      ABR ASR MORE INFO"));
    dropped("table rule", QStringLiteral("----------------------------------------------------------------------------------------------------------"));
    dropped("info line", QStringLiteral("[info] Available formats for dQw4w9WgXcQ:"));
    dropped("extractor line", QStringLiteral("[youtube] dQw4w9WgXcQ: Downloading webpage"));
    dropped("empty line", QString());
    dropped("blanks only", QStringLiteral("   \t "));
    dropped("carriage return only", QStringLiteral("\r"));

    // Where the ID stands and what counts as its end.
    usable("largest 32-bit ID", QStringLiteral("4294967295 webm 1280x720 30 | 8.25MiB 1800k https | vp9 video only"),
           5, 4294967295u, QStringLiteral("webm"), QStringLiteral("1280x720"), QStringLiteral("8.25MiB"));
    usable("leading spaces before id 22", QStringLiteral("   22 mp4   1280x720    25  2 |   12.66MiB 1160k https | avc1.64001F mp4a.40.2 44k 720p"),
           4, 22, QStringLiteral("mp4"), QStringLiteral("1280x720"), QStringLiteral("12.66MiB"));
    usable("leading tab and no-break space", QStringLiteral("\t\u00a0 22 mp4 1280x720 | 12.66MiB"),
           4, 22, QStringLiteral("mp4"), QStringLiteral("1280x720"), QStringLiteral("12.66MiB"));
    usable("leading em space", QStringLiteral("\u2003137 webm 1920x1080 | 7.17MiB"),
           5, 137, QStringLiteral("webm"), QStringLiteral("1920x1080"), QStringLiteral("7.17MiB"));
    usable("ID with a drc suffix", QStringLiteral("251-drc webm  854x480     25    |   4.00MiB  480k https | vp9 480k video only 480p, webm_dash"),
           5, 251, QStringLiteral("webm"), QStringLiteral("854x480"), QStringLiteral("4.00MiB"));
    usable("ID with a p suffix", QStringLiteral("1080p mp4 1920x1080 30 | 14.00MiB 3000k https | avc1.640028 video only"),
           3, 1080, QStringLiteral("mp4"), QStringLiteral("1920x1080"), QStringLiteral("14.00MiB"));
    usable("ID with leading zeros is 18", QStringLiteral("018 webm 640x360 | 6.05MiB"),
           2, 18, QStringLiteral("webm"), QStringLiteral("640x360"), QStringLiteral("6.05MiB"));

    // Columns: only the part before the first bar, split at blanks.
    usable("no bar takes tokens from the whole line", QStringLiteral("22 mp4 1280x720 12.66MiB"),
           4, 22, QStringLiteral("mp4"), QStringLiteral("1280x720"), QStringLiteral("12.66MiB"));
    usable("no bar and two tokens", QStringLiteral("313 webm"),
           5, 313, QStringLiteral("webm"), QString(), QString());
    usable("bare ID", QStringLiteral("5"), 5, 5, QString(), QString(), QString());
    usable("resolution after the bar is not a column", QStringLiteral("137 mp4 | 1920x1080 6.85MiB video only"),
           3, 137, QStringLiteral("mp4"), QString(), QStringLiteral("6.85MiB"));
    usable("bar right after the ID", QStringLiteral("137| mp4 1920x1080 6.85MiB"),
           5, 137, QString(), QString(), QStringLiteral("6.85MiB"));
    usable("mp4 in the codec names is not the container",
           QStringLiteral("17  3gp   176x144     12  1 | 1.50MiB  80k https | mp4v.20.3 mp4a.40.2"),
           5, 17, QStringLiteral("3gp"), QStringLiteral("176x144"), QStringLiteral("1.50MiB"));

    // Sizes: a number glued to KiB, MiB or GiB, the first one in the line.
    usable("KiB with a fraction", QStringLiteral("160 mp4 256x144 | 12.5KiB"),
           4, 160, QStringLiteral("mp4"), QStringLiteral("256x144"), QStringLiteral("12.5KiB"));
    usable("whole GiB", QStringLiteral("313 webm 3840x2160 | 3GiB"),
           5, 313, QStringLiteral("webm"), QStringLiteral("3840x2160"), QStringLiteral("3GiB"));
    usable("blank before the unit", QStringLiteral("137 mp4 1920x1080 | 1.2 MiB"),
           4, 137, QStringLiteral("mp4"), QStringLiteral("1920x1080"), QString());
    usable("unit in lower case", QStringLiteral("137 mp4 1920x1080 | 1.2mib 12.5kib 3gib"),
           4, 137, QStringLiteral("mp4"), QStringLiteral("1920x1080"), QString());
    usable("plain bytes", QStringLiteral("394 mp4  256x144     25    |     512.00B    60k https | av01.0.00M.08 60k video only"),
           3, 394, QStringLiteral("mp4"), QStringLiteral("256x144"), QString());
    usable("tebibytes", QStringLiteral("313 webm 3840x2160   25    |     1.50TiB 17000k https | vp9 17000k video only"),
           5, 313, QStringLiteral("webm"), QStringLiteral("3840x2160"), QString());
    usable("first size of two", QStringLiteral("137 mp4 1920x1080 | 6.85MiB ~ 7.17MiB"),
           1, 137, QStringLiteral("mp4"), QStringLiteral("1920x1080"), QStringLiteral("6.85MiB"));
    usable("size glued to the approximate mark", QStringLiteral("135 mp4 854x480 | ≈990.50KiB 512k https | avc1.4d401f video only"),
           0, 135, QStringLiteral("mp4"), QStringLiteral("854x480"), QStringLiteral("990.50KiB"));
    usable("no size", QStringLiteral("18  mp4   640x360     25  2 |               https | avc1.42001E      mp4a.40.2       44k 360p"),
           2, 18, QStringLiteral("mp4"), QStringLiteral("640x360"), QString());

    // Windows line ends leave a carriage return at the end of each line.
    usable("muxed id 18 with CR", muxed18 + QStringLiteral("\r"),
           2, 18, QStringLiteral("mp4"), QStringLiteral("640x360"), QStringLiteral("12.34MiB"));
    usable("resolution as the last token with CR", QStringLiteral("22 mp4 1280x720\r"),
           4, 22, QStringLiteral("mp4"), QStringLiteral("1280x720"), QString());
    usable("ID alone with CR", QStringLiteral("5\r"), 5, 5, QString(), QString(), QString());

    // The position is carried as given.
    usable("first position", muxed18, 2, 18, QStringLiteral("mp4"), QStringLiteral("640x360"), QStringLiteral("12.34MiB"), 0);
    usable("far position", muxed18, 2, 18, QStringLiteral("mp4"), QStringLiteral("640x360"), QStringLiteral("12.34MiB"), 12345);
}

void TestFormatCatalogue::parseLine()
{
    QFETCH(QString, line);
    QFETCH(qint32, position);
    QFETCH(bool, usable);

    const std::optional<FormatCandidate> candidate = FormatCatalogue::parseLine(line, position);
    QCOMPARE(candidate.has_value(), usable);
    if (!usable)
        return;

    QTEST(candidate->category, "category");
    QTEST(candidate->id, "id");
    QTEST(candidate->ext, "ext");
    QTEST(candidate->resolution, "resolution");
    QTEST(candidate->sizeText, "sizeText");
    QCOMPARE(candidate->position, position);
}

void TestFormatCatalogue::leadingIdentifier_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<quint32>("id");

    QTest::newRow("video row") << QStringLiteral("137 mp4   1920x1080") << 137u;
    // The fallback looks at audio-only rows too, so this test does not drop them.
    QTest::newRow("audio-only row") << QStringLiteral("140 m4a   audio only      2 |  2.85MiB") << 140u;
    QTest::newRow("leading spaces") << QStringLiteral("   22 mp4") << 22u;
    QTest::newRow("leading tab and no-break space") << QStringLiteral("\t\u00a018 mp4") << 18u;
    QTest::newRow("drc suffix") << QStringLiteral("251-drc webm") << 251u;
    QTest::newRow("leading zeros") << QStringLiteral("007 mp4") << 7u;
    QTest::newRow("largest 32-bit ID") << QStringLiteral("4294967295 webm") << 4294967295u;
    QTest::newRow("letter ID") << QStringLiteral("sb0 mhtml") << 0u;
    QTest::newRow("ID 0") << QStringLiteral("0 mp4") << 0u;
    QTest::newRow("ID 4294967296") << QStringLiteral("4294967296 mp4") << 0u;
    QTest::newRow("header") << QStringLiteral("ID  EXT   RESOLUTION") << 0u;
    QTest::newRow("rule") << QStringLiteral("------") << 0u;
    QTest::newRow("empty") << QString() << 0u;
    QTest::newRow("blanks") << QStringLiteral("  \r") << 0u;
}

void TestFormatCatalogue::leadingIdentifier()
{
    QFETCH(QString, line);
    QTEST(FormatCatalogue::leadingIdentifier(line), "id");
}

void TestFormatCatalogue::reduction_data()
{
    QTest::addColumn<QString>("listing");
    QTest::addColumn<QStringList>("expected");

    const QString header = QStringLiteral(
        "[info] Available formats for Kestr3lTest:\n"
        "ID  EXT   RESOLUTION FPS CH |   FILESIZE   TBR PROTO | VCODEC        VBR ACODEC      ABR ASR MORE INFO\n"
        "-------------------------------------------------------------------------------------------------------------\n");

    QTest::newRow("estimated 251 beats the plain mp4 251 before it")
        << header + QStringLiteral("251 mp4   640x360     25  2 |   3.00MiB  300k https | avc1.42001E       mp4a.40.2       44k 360p\n"
                                   "251 webm  426x240     25    | ~ 3.50MiB  350k https | vp9          350k video only          240p, webm_dash\n")
        << QStringList{QStringLiteral("251 426x240 3.50MiB")};
    QTest::newRow("estimated 251 beats the plain mp4 251 after it")
        << header + QStringLiteral("251 webm  426x240     25    | ~ 3.50MiB  350k https | vp9          350k video only          240p, webm_dash\n"
                                   "251 mp4   640x360     25  2 |   3.00MiB  300k https | avc1.42001E       mp4a.40.2       44k 360p\n")
        << QStringList{QStringLiteral("251 426x240 3.50MiB")};
    QTest::newRow("same ID and category: the earlier line wins")
        << header + QStringLiteral("137 mp4   1920x1080   25    |   6.85MiB  303k https | avc1.640028  303k video only          1080p, mp4_dash\n"
                                   "137 mp4   1920x1088   30    |   7.00MiB  320k https | avc1.640028  320k video only          1080p, mp4_dash\n")
        << QStringList{QStringLiteral("137 1920x1080 6.85MiB")};
    QTest::newRow("approximate beats tilde beats id 18")
        << header + QStringLiteral("18  mp4   640x360     25  2 |   6.05MiB  268k https | avc1.42001E       mp4a.40.2       44k 360p\n"
                                   "18  mp4   480x270     25  2 | ~ 7.00MiB  268k https | avc1.42001E       mp4a.40.2       44k 270p\n"
                                   "18  mp4   426x240     25  2 | ≈ 5.00MiB  268k https | avc1.42001E       mp4a.40.2       44k 240p\n")
        << QStringList{QStringLiteral("18 426x240 5.00MiB")};
    QTest::newRow("mp4 video only beats mp4 beats webm")
        << header + QStringLiteral("22  webm  1280x720    25    |  13.00MiB 1000k https | vp9         1000k video only          720p, webm_dash\n"
                                   "22  mp4   1280x720    25  2 |  12.66MiB 1160k https | avc1.64001F       mp4a.40.2       44k 720p\n"
                                   "22  mp4   1280x718    25    |  11.00MiB 1000k https | avc1.4d401f 1000k video only          720p, mp4_dash\n")
        << QStringList{QStringLiteral("22 1280x718 11.00MiB")};
    QTest::newRow("category does not decide the display order")
        << header + QStringLiteral("100 mp4   640x360     25    | ≈ 1.00MiB  100k https | avc1.4d401e  100k video only\n"
                                   "200 webm  640x360     25    |   2.00MiB  200k https | vp9          200k video only\n")
        << QStringList{QStringLiteral("200 640x360 2.00MiB"), QStringLiteral("100 640x360 1.00MiB")};
    QTest::newRow("fourteen formats keep the eleven largest")
        << header + QStringLiteral("301 mp4   256x144     25    |   5.00MiB https | video only\n"
                                   "302 mp4   426x240     25    |  12.00MiB https | video only\n"
                                   "303 mp4   640x360     25    |   1.00MiB https | video only\n"
                                   "304 mp4   854x480     25    |   9.00MiB https | video only\n"
                                   "305 mp4   1280x720    25    |  14.00MiB https | video only\n"
                                   "306 mp4   1920x1080   25    |   3.00MiB https | video only\n"
                                   "307 mp4   2560x1440   25    |   7.00MiB https | video only\n"
                                   "308 mp4   3840x2160   25    |  11.00MiB https | video only\n"
                                   "309 webm  256x144     25    |   2.00MiB https | video only\n"
                                   "310 webm  426x240     25    |  13.00MiB https | video only\n"
                                   "311 webm  640x360     25    |   4.00MiB https | video only\n"
                                   "312 webm  854x480     25    |   8.00MiB https | video only\n"
                                   "313 webm  1280x720    25    |  10.00MiB https | video only\n"
                                   "314 webm  1920x1080   25    |   6.00MiB https | video only\n")
        << QStringList{QStringLiteral("305 1280x720 14.00MiB"), QStringLiteral("310 426x240 13.00MiB"),
                       QStringLiteral("302 426x240 12.00MiB"), QStringLiteral("308 3840x2160 11.00MiB"),
                       QStringLiteral("313 1280x720 10.00MiB"), QStringLiteral("304 854x480 9.00MiB"),
                       QStringLiteral("312 854x480 8.00MiB"), QStringLiteral("307 2560x1440 7.00MiB"),
                       QStringLiteral("314 1920x1080 6.00MiB"), QStringLiteral("301 256x144 5.00MiB"),
                       QStringLiteral("311 640x360 4.00MiB")};
    QTest::newRow("units count: 1.5GiB, 900MiB, 2000KiB")
        << header + QStringLiteral("100 mp4   640x360     25    | 2000KiB https | video only\n"
                                   "200 mp4   3840x2160   25    | 1.5GiB https | video only\n"
                                   "300 mp4   1920x1080   25    | 900MiB https | video only\n")
        << QStringList{QStringLiteral("200 3840x2160 1.5GiB"), QStringLiteral("300 1920x1080 900MiB"),
                       QStringLiteral("100 640x360 2000KiB")};
    QTest::newRow("larger audio-only rows are left out")
        << header + QStringLiteral("140 m4a   audio only      2 |  50.00MiB 129k https | audio only mp4a.40.2 129k 44k medium\n"
                                   "18  mp4   640x360     25  2 |   6.05MiB 268k https | avc1.42001E mp4a.40.2 44k 360p\n")
        << QStringList{QStringLiteral("18 640x360 6.05MiB")};
    QTest::newRow("unsized format comes after sized ones")
        << header + QStringLiteral("5   flv   400x240     25    |                  https | h263 video only\n"
                                   "17  3gp   176x144     12  1 |   512.00KiB  80k https | mp4v.20.3 mp4a.40.2\n")
        << QStringList{QStringLiteral("17 176x144 512.00KiB"), QStringLiteral("5 400x240 ")};
    QTest::newRow("blank lines are ignored")
        << QStringLiteral("\n\n18 mp4 640x360 | 6.05MiB\n\n\n")
        << QStringList{QStringLiteral("18 640x360 6.05MiB")};

    // When every numbered line is sound only, the first of them still
    // gives the user something to download.
    QTest::newRow("only audio: the first one, without size")
        << header + QStringLiteral("140 m4a   audio only      2 |  2.85MiB 126k https | audio only       mp4a.40.2  126k 44k medium, m4a_dash\n"
                                   "251 webm  audio only      2 |  3.69MiB 163k https | audio only       opus       163k 48k medium, webm_dash\n")
        << QStringList{QStringLiteral("140  ")};
    QTest::newRow("only audio: letter IDs and ID 0 are passed over")
        << header + QStringLiteral("sb0 mhtml 160x90       0    |               mhtml | images storyboard\n"
                                   "0   m4a   audio only      2 |  2.95MiB 129k https | audio only mp4a.40.2\n"
                                   "   139 m4a audio only      2 |  1.12MiB  49k https | audio only mp4a.40.5\n"
                                   "140 m4a   audio only      2 |  2.95MiB 129k https | audio only mp4a.40.2\n")
        << QStringList{QStringLiteral("139  ")};
    QTest::newRow("only audio: too large an ID is passed over, a suffix is not")
        << header + QStringLiteral("4294967296 m4a audio only 2 | 2.95MiB https | audio only\n"
                                   "251-drc webm audio only 2 | 3.07MiB https | audio only\n")
        << QStringList{QStringLiteral("251  ")};
    QTest::newRow("no numbered line")
        << header + QStringLiteral("sb2 mhtml 48x27        0    |               mhtml | images storyboard\n"
                                   "sb0 mhtml 160x90       0    |               mhtml | images storyboard\n")
        << QStringList();
    QTest::newRow("nothing printed") << QString() << QStringList();
    QTest::newRow("line feeds only") << QStringLiteral("\n\n\n") << QStringList();
}

void TestFormatCatalogue::reduction()
{
    QFETCH(QString, listing);
    QFETCH(QStringList, expected);

    const FormatCatalogue::Result result = FormatCatalogue::fromListing(listing);
    QCOMPARE(describe(result), expected);
    QCOMPARE(result.formats.size(), result.viewOrder.size());
    for (quint32 id : result.viewOrder) {
        QVERIFY(result.formats.contains(id));
        QCOMPARE(result.formats.value(id).id, id);
    }
}

void TestFormatCatalogue::viewOrderLogLines_data()
{
    QTest::addColumn<QString>("listing");
    QTest::addColumn<QStringList>("lines");

    QTest::newRow("captured listing")
        << QString::fromUtf8(readFile(fixtureDir().filePath(QStringLiteral("main_b.txt"))))
        << QStringList{viewOrderHeading,
                       QStringLiteral("248 1920x1080 7.17MiB"),
                       QStringLiteral("137 1920x1080 6.85MiB"),
                       QStringLiteral("18 640x360 6.05MiB"),
                       QStringLiteral("136 1280x720 5.87MiB"),
                       QStringLiteral("134 640x360 3.83MiB")};
    // Empty fields stay in the line, so the spacing does not shift.
    QTest::newRow("format without size or resolution")
        << QString::fromUtf8(readFile(fixtureDir().filePath(QStringLiteral("audio_only.txt"))))
        << QStringList{viewOrderHeading, QStringLiteral("139  ")};
    QTest::newRow("no numbered line")
        << QString::fromUtf8(readFile(fixtureDir().filePath(QStringLiteral("storyboards_only.txt"))))
        << QStringList{viewOrderHeading};
    QTest::newRow("nothing printed") << QString() << QStringList{viewOrderHeading};
}

void TestFormatCatalogue::viewOrderLogLines()
{
    QFETCH(QString, listing);
    QFETCH(QStringList, lines);

    LogCapture log;
    FormatCatalogue::fromListing(listing);
    QCOMPARE(informationTexts(log), lines);
}

void TestFormatCatalogue::sizeInBytes_data()
{
    QTest::addColumn<QString>("sizeText");
    QTest::addColumn<qint64>("bytes");

    QTest::newRow("1.5GiB") << QStringLiteral("1.5GiB") << Q_INT64_C(1610612736);
    QTest::newRow("0.5KiB") << QStringLiteral("0.5KiB") << Q_INT64_C(512);
    QTest::newRow("1023.9KiB is truncated") << QStringLiteral("1023.9KiB") << Q_INT64_C(1048473);
    QTest::newRow("empty") << QString() << Q_INT64_C(0);
    QTest::newRow("bare number is bytes") << QStringLiteral("2048") << Q_INT64_C(2048);
    QTest::newRow("bare fraction is truncated bytes") << QStringLiteral("512.75") << Q_INT64_C(512);
    QTest::newRow("3GiB") << QStringLiteral("3GiB") << Q_INT64_C(3221225472);
    QTest::newRow("900MiB") << QStringLiteral("900MiB") << Q_INT64_C(943718400);
    QTest::newRow("2000KiB") << QStringLiteral("2000KiB") << Q_INT64_C(2048000);
    QTest::newRow("12.5MiB") << QStringLiteral("12.5MiB") << Q_INT64_C(13107200);
    QTest::newRow("1.50GiB as printed") << QStringLiteral("1.50GiB") << Q_INT64_C(1610612736);
    QTest::newRow("units in any case") << QStringLiteral("1.5gib") << Q_INT64_C(1610612736);
    QTest::newRow("blank before the unit") << QStringLiteral("12 MiB") << Q_INT64_C(12582912);
    QTest::newRow("estimate marks are not part of the number") << QStringLiteral("~ 3.50MiB") << Q_INT64_C(3670016);
    QTest::newRow("tebibytes are not a unit here") << QStringLiteral("2.50TiB") << Q_INT64_C(2);
    QTest::newRow("no digits") << QStringLiteral("MiB") << Q_INT64_C(0);
    QTest::newRow("two decimal points") << QStringLiteral("1.2.3MiB") << Q_INT64_C(0);
    QTest::newRow("text") << QStringLiteral("unknown") << Q_INT64_C(0);
}

void TestFormatCatalogue::sizeInBytes()
{
    QFETCH(QString, sizeText);
    QTEST(FormatCatalogue::sizeInBytes(sizeText), "bytes");
}

void TestFormatCatalogue::sizeInMiB_data()
{
    QTest::addColumn<QString>("sizeText");
    QTest::addColumn<double>("mebibytes");

    QTest::newRow("1.5GiB") << QStringLiteral("1.5GiB") << 1536.0;
    QTest::newRow("512KiB") << QStringLiteral("512KiB") << 0.5;
    QTest::newRow("12.25MiB") << QStringLiteral("12.25MiB") << 12.25;
    // Unlike sizeInBytes, a bare number counts as mebibytes.
    QTest::newRow("bare number is MiB") << QStringLiteral("7") << 7.0;
    QTest::newRow("bare fraction is MiB") << QStringLiteral("2.5") << 2.5;
    QTest::newRow("empty") << QString() << 0.0;
    QTest::newRow("1000.00KiB keeps the fraction") << QStringLiteral("1000.00KiB") << 0.9765625;
    QTest::newRow("units in any case") << QStringLiteral("0.5gib") << 512.0;
    QTest::newRow("no digits") << QStringLiteral("GiB") << 0.0;
    QTest::newRow("two decimal points") << QStringLiteral("1.2.3MiB") << 0.0;
}

void TestFormatCatalogue::sizeInMiB()
{
    QFETCH(QString, sizeText);
    QTEST(FormatCatalogue::sizeInMiB(sizeText), "mebibytes");
}

KESTREL_TEST_MAIN(TestFormatCatalogue)
#include "tst_formatcatalogue.moc"
