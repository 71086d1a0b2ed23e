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
// <name>.expected.json next to it. Whole listings: what is kept, in which
// order, and what the log says of it.
class TestFormatListings : public QObject
{
    Q_OBJECT

private slots:
    void everyFixtureHasAnExpectation();
    void listingMatchesExpectation_data();
    void listingMatchesExpectation();
    void reduction_data();
    void reduction();
    void viewOrderLogLines_data();
    void viewOrderLogLines();
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

void TestFormatListings::everyFixtureHasAnExpectation()
{
    const QStringList names = fixtureNames();
    QVERIFY2(names.size() >= 10, qPrintable(fixtureDir().absolutePath()));
    for (const QString &name : names)
        QVERIFY2(fixtureDir().exists(name + QStringLiteral(".expected.json")), qPrintable(name));
}

void TestFormatListings::listingMatchesExpectation_data()
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

void TestFormatListings::listingMatchesExpectation()
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

void TestFormatListings::reduction_data()
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

void TestFormatListings::reduction()
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

void TestFormatListings::viewOrderLogLines_data()
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

void TestFormatListings::viewOrderLogLines()
{
    QFETCH(QString, listing);
    QFETCH(QStringList, lines);

    LogCapture log;
    FormatCatalogue::fromListing(listing);
    QCOMPARE(informationTexts(log), lines);
}

KESTREL_TEST_MAIN(TestFormatListings)
#include "tst_formatlistings.moc"
