#include "feedsignature.h"
#include "installerfolder.h"
#include "releasekey.h"

#include "feedsigner.h"
#include "testsandbox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

#ifndef KESTREL_UPDATER_SOURCES
#error "KESTREL_UPDATER_SOURCES must name plugin-libs/Updater"
#endif

// The pieces of the feed's signature check and of the installer's folder,
// compiled in: the built-in key and its fingerprint, the keyring that a test
// variable can add to but never empty, gpgv by its fixed path and its
// verdict, and the rules of the private folder.
class TestUpdaterKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void builtInKeyIsTheReleaseKeyNamedInTheReadme();
    void dearmourMatchesGpg();
    void damagedArmourIsRefused_data();
    void damagedArmourIsRefused();
    void withoutTheVariableOnlyTheBuiltInKeyIsAccepted();
    void variableAddsKeysAndKeepsTheBuiltInOne();
    void unreadableAddedFileKeepsTheBuiltInKey();
    void gpgvHasAFixedAbsolutePath();
    void statusLinesAreJudged_data();
    void statusLinesAreJudged();
    void signatureOverTheGivenBytesIsVerified();
    void signatureOverOtherBytesIsRefused();
    void gpgvFirstOnPathIsNotUsed();
    void abortEndsTheCheckWithoutASignal();
    void installerFolderLiesInTheUsersOwnPlace();
    void onlyFilesInTheInstallerFolderMayStart_data();
    void onlyFilesInTheInstallerFolderMayStart();
    void startRefusalSpeaksTheInstalledLanguage();

private:
    QByteArray keyFingerprint(const QByteArray &key) const;

    std::unique_ptr<FeedSigner> m_signer;
};

namespace {

constexpr char releaseFingerprint[] = "DDD98280D23B7C598CAD5784FDD60F4B58664595";

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString armouredKeyFile()
{
    return QStringLiteral(KESTREL_UPDATER_SOURCES "/keys/kestrel-release-key.asc");
}

QByteArray runGpg(const QStringList &arguments, const QByteArray &input)
{
    QTemporaryDir home;
    QProcess gpg;
    gpg.start(QStringLiteral("gpg"), QStringList{QStringLiteral("--homedir"), home.path(), QStringLiteral("--batch")} + arguments);
    gpg.write(input);
    gpg.closeWriteChannel();
    if (!gpg.waitForFinished(60000) || gpg.exitCode() != 0)
        return QByteArray();
    return gpg.readAllStandardOutput();
}

} // namespace

void TestUpdaterKeys::initTestCase()
{
    m_signer = std::make_unique<FeedSigner>();
#if defined(Q_OS_WIN)
    if (!m_signer->isValid())
        QSKIP("gpg is needed to make the test keys and is not available here");
#endif
    QVERIFY2(m_signer->isValid(), "gpg must make the throw-away signing keys");
}

void TestUpdaterKeys::cleanup()
{
    qunsetenv(ReleaseKey::addedKeysVariable);
}

QByteArray TestUpdaterKeys::keyFingerprint(const QByteArray &key) const
{
    const QByteArray listing = runGpg({QStringLiteral("--with-colons"), QStringLiteral("--show-keys")}, key);
    for (const QByteArray &line : listing.split('\n')) {
        if (line.startsWith("fpr:"))
            return line.split(':').value(9);
    }
    return QByteArray();
}

void TestUpdaterKeys::builtInKeyIsTheReleaseKeyNamedInTheReadme()
{
#if defined(Q_OS_WIN)
    QSKIP("gpg, which reads the key's fingerprint, does not run here");
#endif
    QCOMPARE(keyFingerprint(ReleaseKey::builtInKey()), QByteArray(releaseFingerprint));
    QVERIFY(readFile(QStringLiteral(KESTREL_UPDATER_SOURCES "/README.md")).contains(releaseFingerprint));
}

void TestUpdaterKeys::dearmourMatchesGpg()
{
#if defined(Q_OS_WIN)
    QSKIP("gpg, which the un-armouring is compared with, does not run here");
#endif
    const QByteArray binary = runGpg({QStringLiteral("--dearmor")}, readFile(armouredKeyFile()));
    QVERIFY(!binary.isEmpty());
    QCOMPARE(ReleaseKey::builtInKey(), binary);
    QCOMPARE(ReleaseKey::dearmor(binary), std::optional<QByteArray>(binary));
}

void TestUpdaterKeys::damagedArmourIsRefused_data()
{
    const QByteArray armoured = readFile(armouredKeyFile());
    QTest::addColumn<QByteArray>("text");
    const qsizetype body = armoured.indexOf("\n\n") + 2;
    QByteArray changed = armoured;
    changed[body + 10] = changed.at(body + 10) == 'A' ? 'B' : 'A';
    QTest::newRow("a changed letter") << changed;
    QTest::newRow("no end line") << armoured.left(armoured.indexOf("-----END"));
    QByteArray noChecksum = armoured;
    noChecksum.remove(noChecksum.lastIndexOf("\n="), 6);
    QTest::newRow("no checksum") << noChecksum;
    QTest::newRow("plain text") << QByteArray("just a few words");
    QTest::newRow("empty") << QByteArray();
}

void TestUpdaterKeys::damagedArmourIsRefused()
{
    QFETCH(QByteArray, text);
    QVERIFY(!ReleaseKey::dearmor(text));
}

void TestUpdaterKeys::withoutTheVariableOnlyTheBuiltInKeyIsAccepted()
{
    const ReleaseKey::Keyring keyring = ReleaseKey::keyring();
    QVERIFY(!keyring.keys.isEmpty());
    QCOMPARE(keyring.keys, ReleaseKey::builtInKey());
    QVERIFY(keyring.addedFile.isEmpty());
    QVERIFY(keyring.problem.isEmpty());
}

void TestUpdaterKeys::variableAddsKeysAndKeepsTheBuiltInOne()
{
    qputenv(ReleaseKey::addedKeysVariable, m_signer->releaseKeyFile().toLocal8Bit());
    const ReleaseKey::Keyring keyring = ReleaseKey::keyring();
    const std::optional<QByteArray> added = ReleaseKey::dearmor(readFile(m_signer->releaseKeyFile()));
    QVERIFY(added);
    QCOMPARE(keyring.keys, ReleaseKey::builtInKey() + *added);
    QCOMPARE(keyring.addedFile, m_signer->releaseKeyFile());
    QVERIFY(keyring.problem.isEmpty());
}

void TestUpdaterKeys::unreadableAddedFileKeepsTheBuiltInKey()
{
    qputenv(ReleaseKey::addedKeysVariable, QByteArray("/nonexistent/keys.asc"));
    const ReleaseKey::Keyring keyring = ReleaseKey::keyring();
    QCOMPARE(keyring.keys, ReleaseKey::builtInKey());
    QVERIFY(keyring.problem.contains(QLatin1String("/nonexistent/keys.asc")));
}

void TestUpdaterKeys::gpgvHasAFixedAbsolutePath()
{
#if defined(Q_OS_WIN)
    QCOMPARE(ReleaseKey::gpgvPath(), QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("gpgv.exe")));
#else
    QCOMPARE(ReleaseKey::gpgvPath(), QStringLiteral("/usr/bin/gpgv"));
#endif
}

void TestUpdaterKeys::statusLinesAreJudged_data()
{
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<QString>("reason");
    const QByteArray good = "[GNUPG:] NEWSIG\n[GNUPG:] GOODSIG 58664595 Release\n[GNUPG:] VALIDSIG DDD98280 2026-11-24\n";
    QTest::newRow("good") << 0 << good << QString();
    QTest::newRow("good lines, failed exit") << 1 << good << QStringLiteral("its signature is not a valid signature");
    QTest::newRow("only GOODSIG") << 0 << QByteArray("[GNUPG:] GOODSIG 58664595 Release\n")
                                  << QStringLiteral("its signature is not a valid signature");
    QTest::newRow("another key") << 2 << QByteArray("[GNUPG:] ERRSIG 1234 22 8 00 1 9\n[GNUPG:] NO_PUBKEY 1234\n")
                                 << QStringLiteral("it is signed by another key than the application's release key");
    QTest::newRow("bad signature") << 1 << QByteArray("[GNUPG:] BADSIG 58664595 Release\n")
                                   << QStringLiteral("its signature does not match its content");
    QTest::newRow("nothing") << 2 << QByteArray() << QStringLiteral("its signature is not a valid signature");
    QTest::newRow("a keyword inside other text") << 0 << QByteArray("GOODSIG VALIDSIG\n")
                                                 << QStringLiteral("its signature is not a valid signature");
}

void TestUpdaterKeys::statusLinesAreJudged()
{
    QFETCH(int, exitCode);
    QFETCH(QByteArray, status);
    QFETCH(QString, reason);
    QCOMPARE(FeedSignature::judge(exitCode, status), reason);
}

void TestUpdaterKeys::signatureOverTheGivenBytesIsVerified()
{
    const QByteArray feed = "{\"releaseNumber\": 2024}\n";
    qputenv(ReleaseKey::addedKeysVariable, m_signer->releaseKeyFile().toLocal8Bit());
    FeedSignature check;
    QSignalSpy verified(&check, &FeedSignature::verified);
    QSignalSpy refused(&check, &FeedSignature::refused);
    QString error;
    QVERIFY2(check.start(feed, m_signer->sign(feed), ReleaseKey::keyring().keys, &error), qPrintable(error));
    QTRY_COMPARE(verified.count() + refused.count(), 1);
    QCOMPARE(verified.count(), 1);
}

void TestUpdaterKeys::signatureOverOtherBytesIsRefused()
{
    const QByteArray feed = "{\"releaseNumber\": 2024}\n";
    FeedSignature check;
    QSignalSpy verified(&check, &FeedSignature::verified);
    QSignalSpy refused(&check, &FeedSignature::refused);
    QString error;
    QVERIFY2(check.start(feed + ' ', m_signer->sign(feed), ReleaseKey::dearmor(readFile(m_signer->releaseKeyFile())).value_or(QByteArray()), &error),
             qPrintable(error));
    QTRY_COMPARE(verified.count() + refused.count(), 1);
    QCOMPARE(refused.count(), 1);
    QCOMPARE(refused.first().first().toString(), QStringLiteral("its signature does not match its content"));
}

// A gpgv that says yes to everything, first on PATH: never asked.
void TestUpdaterKeys::gpgvFirstOnPathIsNotUsed()
{
#if defined(Q_OS_WIN)
    QSKIP("the fake gpgv is a shell script");
#else
    QTemporaryDir fakes;
    QFile fake(fakes.filePath(QStringLiteral("gpgv")));
    QVERIFY(fake.open(QIODevice::WriteOnly));
    fake.write("#!/bin/sh\necho '[GNUPG:] GOODSIG 0 x'\necho '[GNUPG:] VALIDSIG 0 x'\nexit 0\n");
    fake.close();
    QVERIFY(fake.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", fakes.path().toLocal8Bit() + ':' + path);

    FeedSignature check;
    QSignalSpy verified(&check, &FeedSignature::verified);
    QSignalSpy refused(&check, &FeedSignature::refused);
    QString error;
    const bool started = check.start("feed", "no signature", ReleaseKey::builtInKey(), &error);
    QTRY_COMPARE(verified.count() + refused.count(), 1);
    qputenv("PATH", path);
    QVERIFY2(started, qPrintable(error));
    QCOMPARE(refused.count(), 1);
#endif
}

void TestUpdaterKeys::abortEndsTheCheckWithoutASignal()
{
    const QByteArray feed = "{}\n";
    FeedSignature check;
    QSignalSpy verified(&check, &FeedSignature::verified);
    QSignalSpy refused(&check, &FeedSignature::refused);
    QString error;
    QVERIFY(check.start(feed, m_signer->sign(feed), ReleaseKey::builtInKey(), &error));
    check.abort();
    QTest::qWait(300);
    QCOMPARE(verified.count() + refused.count(), 0);
}

void TestUpdaterKeys::installerFolderLiesInTheUsersOwnPlace()
{
#if defined(Q_OS_WIN)
    const QString expected = QDir::cleanPath(QDir::tempPath() + QStringLiteral("/KestrelD-update"));
#else
    const QString expected = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/updates");
#endif
    QCOMPARE(InstallerFolder::location(), expected);
    QVERIFY(!InstallerFolder::location().startsWith(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation)));
    const InstallerFolder::Preparation prepared = InstallerFolder::prepare();
    QVERIFY2(prepared.problem.isEmpty(), qPrintable(prepared.problem));
    QCOMPARE(prepared.path, expected);
    QVERIFY(QFileInfo(expected).isDir());
}

void TestUpdaterKeys::onlyFilesInTheInstallerFolderMayStart_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("mayStart");
    const QString folder = InstallerFolder::location();
#if defined(Q_OS_WIN)
    QTest::newRow("the installer") << folder + QStringLiteral("/KestrelD.exe") << true;
    QTest::newRow("in capitals") << folder + QStringLiteral("/KESTRELD.EXE") << true;
    QTest::newRow("not a program") << folder + QStringLiteral("/KestrelD.msi") << false;
    QTest::newRow("a script") << folder + QStringLiteral("/KestrelD.exe.bat") << false;
#else
    QTest::newRow("the package") << folder + QStringLiteral("/KestrelD.deb") << true;
#endif
    QTest::newRow("relative") << QStringLiteral("KestrelD.exe") << false;
    QTest::newRow("in a subfolder") << folder + QStringLiteral("/sub/KestrelD.exe") << false;
    QTest::newRow("beside the folder") << folder + QStringLiteral("-other/KestrelD.exe") << false;
    QTest::newRow("out by dot-dot") << folder + QStringLiteral("/../KestrelD.exe") << false;
    QTest::newRow("the downloads") << QStandardPaths::writableLocation(QStandardPaths::DownloadLocation) + QStringLiteral("/KestrelD.exe")
                                   << false;
}

void TestUpdaterKeys::onlyFilesInTheInstallerFolderMayStart()
{
    QFETCH(QString, path);
    QFETCH(bool, mayStart);
    QCOMPARE(InstallerFolder::startRefusal(path).isEmpty(), mayStart);
}

// The refusal goes into the plug-in's translated box ("The installer was not
// started: %1."), so it follows the catalogue the application installed.
void TestUpdaterKeys::startRefusalSpeaksTheInstalledLanguage()
{
    const QString outside = QStringLiteral("KestrelD.exe");
    QString refusal;
    {
        QTranslator german;
        QVERIFY(german.load(QStringLiteral("kestrel_de"), QStringLiteral(KESTREL_CATALOGUE_FOLDER)));
        QVERIFY(QCoreApplication::installTranslator(&german));
        refusal = InstallerFolder::startRefusal(outside);
        QCoreApplication::removeTranslator(&german);
    }
    QCOMPARE(refusal, QStringLiteral("„KestrelD.exe“ liegt nicht im eigenen Ordner des Installationsprogramms"));
    QCOMPARE(InstallerFolder::startRefusal(outside),
        QStringLiteral("\"KestrelD.exe\" does not lie in the installer's own folder"));
}

KESTREL_TEST_MAIN(TestUpdaterKeys)
#include "tst_updaterkeys.moc"
