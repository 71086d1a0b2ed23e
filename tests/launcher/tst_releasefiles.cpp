// What the launcher reads from a release: the armoured key, the sums files
// and the runtimes' version answers; and the release key it carries.

#include "checksums.h"
#include "dearmor.h"
#include "jsruntime.h"
#include "releasekey.h"
#include "signature.h"
#include "toolversion.h"

#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <optional>
#include <string>

namespace {

const char releaseKeyFingerprint[] = "AC0CBBE6848D6A873464AF4E57CF65933B5A7581";

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::string text(const QByteArray &bytes)
{
    return bytes.toStdString();
}

// What gpg itself makes of key bytes: the output of --dearmor, or the
// fingerprints --show-keys lists.
QByteArray runGpg(const QTemporaryDir &home, const QStringList &arguments, const QByteArray &input)
{
    QProcess gpg;
    gpg.start(QStringLiteral("gpg"), QStringList{QStringLiteral("--homedir"), home.path(), QStringLiteral("--batch")}
                                         + arguments);
    gpg.write(input);
    gpg.closeWriteChannel();
    if (!gpg.waitForFinished(60000) || gpg.exitCode() != 0)
        return {};
    return gpg.readAllStandardOutput();
}

} // namespace

class TestReleaseFiles : public QObject
{
    Q_OBJECT

private slots:
    void shippedKeyIsTheToolsReleaseKey();
    void dearmorMatchesGpg();
    void damagedArmourIsRejected_data();
    void damagedArmourIsRejected();
    void sumIsFoundForItsFile_data();
    void sumIsFoundForItsFile();
    void oneFileSumIsRead_data();
    void oneFileSumIsRead();
    void runtimeVersionsAreJudged_data();
    void runtimeVersionsAreJudged();
    void keyringVariableAddsToTheReleaseKey();
    void toolVersionsAreOrdered_data();
    void toolVersionsAreOrdered();
    void toolVersionNamesItsDay();
};

void TestReleaseFiles::shippedKeyIsTheToolsReleaseKey()
{
    QTemporaryDir home;
    QVERIFY(home.isValid());
    const QByteArray key = QByteArray::fromStdString(Launcher::releaseKey());
    QCOMPARE(key, runGpg(home, {QStringLiteral("--dearmor")}, readAll(QStringLiteral(KESTREL_RELEASE_KEY))));
    const QByteArray listing =
        runGpg(home, {QStringLiteral("--with-colons"), QStringLiteral("--show-keys")}, key);
    QVERIFY2(listing.contains(QByteArray("\nfpr:::::::::") + releaseKeyFingerprint + ':'), listing.constData());
}

void TestReleaseFiles::dearmorMatchesGpg()
{
    QTemporaryDir home;
    QVERIFY(home.isValid());
    const QByteArray armoured = readAll(QStringLiteral(KESTREL_RELEASE_KEY));
    const QByteArray binary = runGpg(home, {QStringLiteral("--dearmor")}, armoured);
    QVERIFY(!binary.isEmpty());
    QCOMPARE(Launcher::dearmor(text(armoured)), std::optional<std::string>(text(binary)));
    // CRLF line ends and a header line change nothing.
    QByteArray windows = armoured;
    windows.replace("\n", "\r\n");
    windows.replace("-----\r\n\r\n", "-----\r\nComment: from a mirror\r\n\r\n");
    QCOMPARE(Launcher::dearmor(text(windows)), std::optional<std::string>(text(binary)));
    // A key that is binary already is passed on.
    QCOMPARE(Launcher::dearmor(text(binary)), std::optional<std::string>(text(binary)));
}

void TestReleaseFiles::damagedArmourIsRejected_data()
{
    QTest::addColumn<QByteArray>("armoured");
    const QByteArray good = readAll(QStringLiteral(KESTREL_RELEASE_KEY));
    QVERIFY(!good.isEmpty());

    QByteArray flipped = good;
    const qsizetype body = flipped.indexOf("\n\n") + 10;
    flipped[body] = flipped[body] == 'A' ? 'B' : 'A';
    QTest::newRow("body changed, checksum kept") << flipped;
    QTest::newRow("no end line") << good.left(good.indexOf("-----END"));
    QTest::newRow("not armour") << QByteArray("just some text\n");
    QTest::newRow("empty") << QByteArray();
    QByteArray badCharacter = good;
    badCharacter[good.indexOf("\n\n") + 5] = '%';
    QTest::newRow("not Base64") << badCharacter;
}

void TestReleaseFiles::damagedArmourIsRejected()
{
    QFETCH(QByteArray, armoured);
    QCOMPARE(Launcher::dearmor(text(armoured)), std::optional<std::string>());
}

void TestReleaseFiles::sumIsFoundForItsFile_data()
{
    QTest::addColumn<QByteArray>("sums");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("expected");

    const QByteArray a(64, 'a');
    const QByteArray b = QByteArray(63, 'B') + 'c';
    const QByteArray sums = a + "  yt-dlp\n" + b + "  yt-dlp_linux\n" + a + "  yt-dlp_linux.zip\n";
    QTest::newRow("its own line") << sums << QByteArray("yt-dlp_linux") << QByteArray(63, 'b') + 'c';
    QTest::newRow("not a longer name") << sums << QByteArray("yt-dlp_linu") << QByteArray();
    QTest::newRow("binary mode marker") << QByteArray(b + " *yt-dlp_linux\n") << QByteArray("yt-dlp_linux")
                                        << QByteArray(63, 'b') + 'c';
    QTest::newRow("CRLF") << QByteArray(a + "  yt-dlp_linux\r\n") << QByteArray("yt-dlp_linux") << a;
    QTest::newRow("no line") << QByteArray(a + "  yt-dlp.exe\n") << QByteArray("yt-dlp_linux") << QByteArray();
    QTest::newRow("short hash") << QByteArray(QByteArray(63, 'a') + "  yt-dlp_linux\n")
                                << QByteArray("yt-dlp_linux") << QByteArray();
    QTest::newRow("not hex") << QByteArray(QByteArray(63, 'a') + "g  yt-dlp_linux\n")
                             << QByteArray("yt-dlp_linux") << QByteArray();
    QTest::newRow("empty") << QByteArray() << QByteArray("yt-dlp_linux") << QByteArray();
}

void TestReleaseFiles::sumIsFoundForItsFile()
{
    QFETCH(QByteArray, sums);
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, expected);
    const std::optional<std::string> sum = Launcher::sumForFile(text(sums), text(file));
    QCOMPARE(sum, expected.isEmpty() ? std::optional<std::string>() : std::optional<std::string>(text(expected)));
}

void TestReleaseFiles::oneFileSumIsRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("expected");

    const QByteArray sum = QByteArray("0123456789abcdef").repeated(4);
    QTest::newRow("sha256sum") << QByteArray(sum + "  deno-x86_64-unknown-linux-gnu.zip\n") << sum;
    QTest::newRow("PowerShell") << QByteArray("\r\nAlgorithm : SHA256\r\nHash      : " + sum.toUpper()
                                              + "\r\nPath      : C:\\a\\deno.zip\r\n")
                                << sum;
    QTest::newRow("too short") << QByteArray(sum.left(63) + "  deno.zip\n") << QByteArray();
    QTest::newRow("too long") << QByteArray(sum + "0  deno.zip\n") << QByteArray();
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void TestReleaseFiles::oneFileSumIsRead()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, expected);
    QCOMPARE(Launcher::firstSum(text(content)),
             expected.isEmpty() ? std::optional<std::string>() : std::optional<std::string>(text(expected)));
}

void TestReleaseFiles::runtimeVersionsAreJudged_data()
{
    QTest::addColumn<QString>("runtime");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("newEnough");

    QTest::newRow("deno 2.5") << "deno" << "deno 2.5.6 (stable, release, x86_64-unknown-linux-gnu)" << true;
    QTest::newRow("deno 2.3.0") << "deno" << "deno 2.3.0 (stable)" << true;
    QTest::newRow("deno 2.2") << "deno" << "deno 2.2.12 (stable)" << false;
    QTest::newRow("deno 10") << "deno" << "deno 10.0.0" << true;
    QTest::newRow("deno 1.46") << "deno" << "deno 1.46.3 (stable)" << false;
    QTest::newRow("node 20") << "node" << "v20.0.0" << true;
    QTest::newRow("node 22") << "node" << "v22.11.0" << true;
    QTest::newRow("bookworm's node 18") << "node" << "v18.19.0" << false;
    QTest::newRow("node without v") << "node" << "20.1.0" << false;
    QTest::newRow("quickjs 2023-12-09") << "quickjs" << "QuickJS version 2023-12-09" << true;
    QTest::newRow("quickjs 2025") << "quickjs" << "QuickJS version 2025-04-26" << true;
    QTest::newRow("quickjs 2023-12-08") << "quickjs" << "QuickJS version 2023-12-08" << false;
    QTest::newRow("quickjs 2021") << "quickjs" << "QuickJS version 2021-03-27" << false;
    QTest::newRow("quickjs-ng") << "quickjs" << "QuickJS-ng version 0.10.1" << true;
    QTest::newRow("no answer") << "deno" << "" << false;
    QTest::newRow("another program") << "node" << "deno 2.5.6" << false;
    QTest::newRow("unknown runtime") << "bun" << "1.2.0" << false;
}

void TestReleaseFiles::runtimeVersionsAreJudged()
{
    QFETCH(QString, runtime);
    QFETCH(QString, answer);
    QFETCH(bool, newEnough);
    QCOMPARE(Launcher::isRuntimeNewEnough(runtime.toStdString(), answer.toStdString()), newEnough);
}

// KESTREL_TOOL_KEYRING brings a test's or a mirror's key; the keyring gpgv
// gets still holds the tool's own release key.
void TestReleaseFiles::keyringVariableAddsToTheReleaseKey()
{
    QTemporaryDir home;
    QVERIFY(home.isValid());
    QProcess generate;
    generate.start(QStringLiteral("gpg"), {QStringLiteral("--homedir"), home.path(), QStringLiteral("--batch"),
                                           QStringLiteral("--passphrase"), QString(), QStringLiteral("--quick-gen-key"),
                                           QStringLiteral("Mirror <mirror@example.invalid>"), QStringLiteral("ed25519"),
                                           QStringLiteral("sign"), QStringLiteral("never")});
    QVERIFY(generate.waitForFinished(60000));
    QCOMPARE(generate.exitCode(), 0);
    const QByteArray mirrorKey = runGpg(home, {QStringLiteral("--armor"), QStringLiteral("--export")}, {});
    QVERIFY(mirrorKey.startsWith("-----BEGIN PGP PUBLIC KEY BLOCK-----"));
    const QString keyFile = home.filePath(QStringLiteral("mirror.asc"));
    QFile file(keyFile);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(mirrorKey);
    file.close();

    qputenv("KESTREL_TOOL_KEYRING", QFile::encodeName(keyFile));
    std::string problem;
    const std::optional<std::string> keys = Launcher::acceptedReleaseKeys(&problem);
    qunsetenv("KESTREL_TOOL_KEYRING");
    QVERIFY2(keys, problem.c_str());
    const QByteArray listing = runGpg(home, {QStringLiteral("--with-colons"), QStringLiteral("--show-keys")},
                                      QByteArray::fromStdString(*keys));
    QVERIFY2(listing.contains(QByteArray("\nfpr:::::::::") + releaseKeyFingerprint + ':'), listing.constData());
    QVERIFY2(listing.contains("Mirror <mirror@example.invalid>"), listing.constData());

    qputenv("KESTREL_TOOL_KEYRING", QFile::encodeName(home.filePath(QStringLiteral("missing.asc"))));
    QVERIFY(!Launcher::acceptedReleaseKeys(&problem));
    qunsetenv("KESTREL_TOOL_KEYRING");
    QVERIFY(problem.find("holds no OpenPGP key") != std::string::npos);
}

void TestReleaseFiles::toolVersionsAreOrdered_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<bool>("older");
    QTest::newRow("earlier day") << QByteArray("2026.10.26") << QByteArray("2026.11.01") << true;
    QTest::newRow("later day") << QByteArray("2026.11.01") << QByteArray("2026.10.26") << false;
    QTest::newRow("same") << QByteArray("2026.10.26") << QByteArray("2026.10.26") << false;
    QTest::newRow("numbers, not text") << QByteArray("2026.9.30") << QByteArray("2026.10.01") << true;
    QTest::newRow("build of the same day") << QByteArray("2026.10.26") << QByteArray("2026.10.26.232815") << true;
    QTest::newRow("earlier year") << QByteArray("2025.12.31") << QByteArray("2026.01.01") << true;
    QTest::newRow("nothing yet") << QByteArray("2026.10.26") << QByteArray() << false;
    QTest::newRow("not a version") << QByteArray("yt-dlp 2026.10.26") << QByteArray("2027.01.01") << false;
    QTest::newRow("not a date") << QByteArray("1.2.3") << QByteArray("2026.01.01") << false;
}

void TestReleaseFiles::toolVersionsAreOrdered()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QFETCH(bool, older);
    QCOMPARE(Launcher::ToolVersion::isOlder(first.toStdString(), second.toStdString()), older);
}

void TestReleaseFiles::toolVersionNamesItsDay()
{
    QCOMPARE(Launcher::ToolVersion::releaseDay("2000.01.02"), std::optional<std::time_t>(946771200));
    QCOMPARE(Launcher::ToolVersion::releaseDay("2026.10.26.232815"),
             std::optional<std::time_t>(QDateTime(QDate(2026, 10, 26), QTime(0, 0), Qt::UTC).toSecsSinceEpoch()));
    QCOMPARE(Launcher::ToolVersion::releaseDay("2024.02.29"),
             std::optional<std::time_t>(QDateTime(QDate(2024, 2, 29), QTime(0, 0), Qt::UTC).toSecsSinceEpoch()));
    QCOMPARE(Launcher::ToolVersion::releaseDay("2026.13.01"), std::optional<std::time_t>());
}

QTEST_GUILESS_MAIN(TestReleaseFiles)

#include "tst_releasefiles.moc"
