#include "formats/formatcatalogue.h"

#include "testsandbox.h"

#include <QApplication>
#include <QTest>

// One line of the tool's format table at a time: what is read from it and
// whether it is kept, and the identifier at its start.
class TestFormatLines : public QObject
{
    Q_OBJECT

private slots:
    void parseLine_data();
    void parseLine();
    void leadingIdentifier_data();
    void leadingIdentifier();
};

void TestFormatLines::parseLine_data()
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

void TestFormatLines::parseLine()
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

void TestFormatLines::leadingIdentifier_data()
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

void TestFormatLines::leadingIdentifier()
{
    QFETCH(QString, line);
    QTEST(FormatCatalogue::leadingIdentifier(line), "id");
}

KESTREL_TEST_MAIN(TestFormatLines)
#include "tst_formatlines.moc"
