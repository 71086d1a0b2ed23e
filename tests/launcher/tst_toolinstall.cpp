// The launcher's managed copies of the tool and of the JavaScript runtime,
// installed from a release feed on 127.0.0.1 that the test makes and signs
// with a throw-away key. The "release" is a small script that answers
// --version with its version and records every other command line.

#include "toolinstalltest.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTest>

using TestFiles::readAll;

class TestToolInstall : public ToolInstallTest
{
    Q_OBJECT

private slots:
    void firstInstallBringsToolAndRuntime();
    void newerReleaseReplacesTheCopy();
    void sameReleaseIsNotDownloadedAgain();
    void badReleaseIsRefused_data();
    void badReleaseIsRefused();
    void unreachableFeedEndsAsCrashAndWaitsAnHour();
    void plainHttpFeedIsRefused();
    void newCopyThatDoesNotRunIsRolledBack();
    void twoUpdatesAtOnceInstallOnce();
    void killedUpdateLeavesOldCopyWorking();
    void newEnoughSystemRuntimeIsUsed();
    void tooOldSystemRuntimeGetsManagedDeno();
    void everyRunNamesRuntimeAndIgnoresConfig();
    void normalRunInstallsFirst();
    void staleCopyIsRefreshedBesideTheRun();
    void userConfigCannotChangeOutput_data() { addRealTools(); }
    void userConfigCannotChangeOutput();
    void outputIsUtf8WhateverTheLocale_data() { addRealTools(); }
    void outputIsUtf8WhateverTheLocale();

private:
    // The real tools these cases run: the distribution's, and the current
    // release when KESTREL_TEST_YTDLP names it (scripts/current-tool.sh).
    static void addRealTools();
};

void TestToolInstall::addRealTools()
{
    QTest::addColumn<QString>("tool");
    QTest::newRow("distribution's yt-dlp") << QStringLiteral("/usr/bin/yt-dlp");
    if (const QString current = qEnvironmentVariable("KESTREL_TEST_YTDLP"); !current.isEmpty())
        QTest::newRow("current yt-dlp") << current;
}

void TestToolInstall::firstInstallBringsToolAndRuntime()
{
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(result.out, QByteArray("installed yt-dlp_linux 2026.11.01; installed deno 2.5.6 (stable, release, "
                                    "x86_64-unknown-linux-gnu)\n"));
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
    QCOMPARE(readAll(dataFolder() + QStringLiteral("/deno")),
             ReleaseScripts::answering("deno 2.5.6 (stable, release, x86_64-unknown-linux-gnu)"));
    QVERIFY(QFileInfo(dataFolder() + QStringLiteral("/deno")).isExecutable());
    QVERIFY(QFileInfo(dataFolder() + QLatin1Char('/') + QLatin1String(toolAsset)).isExecutable());
    QCOMPARE(feed().requests(), QStringList({QStringLiteral("GET SHA2-256SUMS"), QStringLiteral("GET SHA2-256SUMS.sig"),
                                          QStringLiteral("GET yt-dlp_linux"),
                                          QStringLiteral("GET deno-x86_64-unknown-linux-gnu.zip.sha256sum"),
                                          QStringLiteral("GET deno-x86_64-unknown-linux-gnu.zip")}));
    QCOMPARE(dataFiles(), QStringList({QStringLiteral("deno"), QStringLiteral("kestreldl2"),
                                       QStringLiteral("kestreldl2.flags"), QStringLiteral("kestreldl2.lock"),
                                       QStringLiteral("kestreldl2.log"),
                                       QStringLiteral("kestreldl2.state"), QStringLiteral("yt-dlp_linux")}));
}

void TestToolInstall::newerReleaseReplacesTheCopy()
{
    installRelease(QStringLiteral("2026.11.01"));
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20"))));
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(result.out, QByteArray("installed yt-dlp_linux 2026.11.20; deno is up to date\n"));
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.20")));
    // The old copy stays until the new one has run once.
    QCOMPARE(readAll(dataFolder() + QStringLiteral("/yt-dlp_linux.previous")),
             ReleaseScripts::tool(QStringLiteral("2026.11.01")));
    QVERIFY(runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")}).succeeded());
    QVERIFY(!QFileInfo::exists(dataFolder() + QStringLiteral("/yt-dlp_linux.previous")));
    QCOMPARE(recordedRuns().value(0).value(0), QStringLiteral("release 2026.11.20"));
}

void TestToolInstall::sameReleaseIsNotDownloadedAgain()
{
    installRelease(QStringLiteral("2026.11.01"));
    feed().forgetRequests();
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(result.out, QByteArray("yt-dlp_linux is up to date; deno is up to date\n"));
    QCOMPARE(feed().requests(), QStringList({QStringLiteral("GET SHA2-256SUMS"), QStringLiteral("GET SHA2-256SUMS.sig"),
                                          QStringLiteral("GET deno-x86_64-unknown-linux-gnu.zip.sha256sum")}));
    QVERIFY(!QFileInfo::exists(dataFolder() + QStringLiteral("/yt-dlp_linux.previous")));
}

void TestToolInstall::badReleaseIsRefused_data()
{
    QTest::addColumn<QString>("damage");
    QTest::addColumn<QByteArray>("message");

    QTest::newRow("tampered asset") << "asset"
                                    << QByteArray("yt-dlp_linux: SHA-256 does not match SHA2-256SUMS");
    QTest::newRow("tampered sums file") << "sums" << QByteArray("SHA2-256SUMS.sig: bad signature");
    QTest::newRow("signed by another key")
        << "other key" << QByteArray("SHA2-256SUMS.sig: signed by another key than the tool's release key");
    QTest::newRow("signature missing") << "no signature"
                                       << QByteArray("SHA2-256SUMS.sig: The requested URL returned error: 404");
    QTest::newRow("no line for the asset") << "no line" << QByteArray("SHA2-256SUMS: no line for yt-dlp_linux");
    QTest::newRow("truncated download") << "truncated" << QByteArray("yt-dlp_linux: download cut short");
    QTest::newRow("runtime archive tampered")
        << "runtime" << QByteArray("deno-x86_64-unknown-linux-gnu.zip: SHA-256 does not match "
                                   "deno-x86_64-unknown-linux-gnu.zip.sha256sum");
    QTest::newRow("runtime zip bomb") << "bomb"
                                      << QByteArray("deno-x86_64-unknown-linux-gnu.zip: deno unpacks to more than "
                                                    "314572800 bytes (zip bomb)");
}

void TestToolInstall::badReleaseIsRefused()
{
    QFETCH(QString, damage);
    QFETCH(QByteArray, message);

    installRelease(QStringLiteral("2026.11.01"));
    const QByteArray installed = installedTool();
    const QByteArray installedRuntime = readAll(dataFolder() + QStringLiteral("/deno"));
    const QByteArray state = readAll(dataFolder() + QStringLiteral("/kestreldl2.state"));
    const QStringList filesBefore = dataFiles();

    const QByteArray newer = ReleaseScripts::tool(QStringLiteral("2026.11.20"));
    const QString feedAsset = feed().folder() + QLatin1Char('/') + QLatin1String(toolAsset);
    if (damage == QLatin1String("asset")) {
        QVERIFY(feed().publishTool(newer));
        writeFile(feedAsset, newer + "# and something else\n");
    } else if (damage == QLatin1String("sums")) {
        QVERIFY(feed().publishTool(newer));
        QFile sums(feed().folder() + QStringLiteral("/SHA2-256SUMS"));
        QVERIFY(sums.open(QIODevice::Append));
        sums.write(QByteArray(64, 'f') + "  yt-dlp_linux_armv7l\n");
    } else if (damage == QLatin1String("other key")) {
        QVERIFY(feed().publishTool(newer));
        QVERIFY(feed().signSums(TestSigningKeys::Signer::Stranger));
    } else if (damage == QLatin1String("no signature")) {
        QVERIFY(feed().publishTool(newer));
        QVERIFY(QFile::remove(feed().folder() + QStringLiteral("/SHA2-256SUMS.sig")));
    } else if (damage == QLatin1String("no line")) {
        QVERIFY(feed().publishTool(newer, false));
    } else if (damage == QLatin1String("truncated")) {
        QVERIFY(feed().publishTool(newer));
        feed().setBehaviour(QLatin1String(toolAsset), QStringLiteral("truncate"));
    } else if (damage == QLatin1String("runtime")) {
        QVERIFY(feed().publishRuntime("deno 2.6.0 (stable, release, x86_64-unknown-linux-gnu)"));
        QFile archive(feed().folder() + QLatin1Char('/') + QLatin1String(LocalReleaseFeed::runtimeArchive()));
        QVERIFY(archive.open(QIODevice::Append));
        archive.write("appended");
    } else if (damage == QLatin1String("bomb")) {
        // A megabyte of zeros past the cap: a zip of about 300 KB.
        const QString script = QStringLiteral(
            "import hashlib, sys, zipfile\n"
            "with zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED) as z:\n"
            "    with z.open('deno', 'w', force_zip64=True) as entry:\n"
            "        for _ in range(301): entry.write(bytes(1 << 20))\n"
            "open(sys.argv[1] + '.sha256sum', 'w').write(\n"
            "    hashlib.sha256(open(sys.argv[1], 'rb').read()).hexdigest() + '  ' + sys.argv[2] + '\\n')\n");
        QCOMPARE(QProcess::execute(QStringLiteral("python3"),
                                   {QStringLiteral("-c"), script,
                                    feed().folder() + QLatin1Char('/') + QLatin1String(LocalReleaseFeed::runtimeArchive()),
                                    QLatin1String(LocalReleaseFeed::runtimeArchive())}),
                 0);
    }

    const RunResult result = update();
    QVERIFY(result.crashed());
    QCOMPARE(result.err, "kestreldl2: update refused: " + message + '\n');
    QCOMPARE(installedTool(), installed);
    QCOMPARE(readAll(dataFolder() + QStringLiteral("/deno")), installedRuntime);
    QCOMPARE(dataFiles(), filesBefore);
    QVERIFY(scratchFiles().isEmpty());
    // Only the failed attempt is remembered.
    QVERIFY(readAll(dataFolder() + QStringLiteral("/kestreldl2.state")) != state);
}

void TestToolInstall::unreachableFeedEndsAsCrashAndWaitsAnHour()
{
    installRelease(QStringLiteral("2026.11.01"));
    QTcpServer closed;
    QVERIFY(closed.listen(QHostAddress::LocalHost));
    const quint16 closedPort = closed.serverPort();
    closed.close();
    QProcessEnvironment offline = environment();
    offline.insert(QStringLiteral("KESTREL_TOOL_FEED"), QStringLiteral("http://127.0.0.1:%1/").arg(closedPort));

    const RunResult result = runLauncher({QStringLiteral("--update")}, offline);
    QVERIFY(result.crashed());
    QVERIFY2(result.err.startsWith("kestreldl2: update refused: SHA2-256SUMS: "), result.err.constData());
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
    QVERIFY(scratchFiles().isEmpty());

    // Without a managed copy, a tool run falls back to the system's tool and
    // does not try again within the hour, even once the feed is back.
    QVERIFY(QFile::remove(dataFolder() + QLatin1Char('/') + QLatin1String(toolAsset)));
    const QStringList videoRun{QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")};
    feed().forgetRequests();
    QVERIFY(runLauncher(videoRun, offline).succeeded());
    QVERIFY(runLauncher(videoRun).succeeded());
    QVERIFY(feed().requests().isEmpty());
    QCOMPARE(recordedRuns().size(), 2);
    QCOMPARE(recordedRuns().at(0).value(0), QStringLiteral("system"));
    QCOMPARE(recordedRuns().at(1).value(0), QStringLiteral("system"));

    // An hour later it installs before the run.
    const QString statePath = dataFolder() + QStringLiteral("/kestreldl2.state");
    QByteArray state = readAll(statePath);
    const qint64 anHourAgo = QDateTime::currentSecsSinceEpoch() - 3601;
    state.replace(QRegularExpression(QStringLiteral("last-failure \\d+")).match(QString::fromUtf8(state))
                      .captured(0).toUtf8(),
                  "last-failure " + QByteArray::number(anHourAgo));
    writeFile(statePath, state);
    QVERIFY(runLauncher(videoRun).succeeded());
    QCOMPARE(recordedRuns().at(2).value(0), QStringLiteral("release 2026.11.01"));
}

void TestToolInstall::plainHttpFeedIsRefused()
{
    QProcessEnvironment changed = environment();
    changed.insert(QStringLiteral("KESTREL_TOOL_FEED"), QStringLiteral("http://127.example.invalid/"));
    const RunResult result = runLauncher({QStringLiteral("--update")}, changed);
    QVERIFY(result.crashed());
    QCOMPARE(result.err, QByteArray("kestreldl2: update refused: SHA2-256SUMS: not an HTTPS address: "
                                    "http://127.example.invalid/SHA2-256SUMS\n"));
    QVERIFY(scratchFiles().isEmpty());
}

void TestToolInstall::newCopyThatDoesNotRunIsRolledBack()
{
    installRelease(QStringLiteral("2026.11.01"));
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20"), true)));
    const RunResult result = update();
    QVERIFY(result.crashed());
    QCOMPARE(result.err, QByteArray("kestreldl2: update refused: yt-dlp_linux: the new copy does not answer "
                                    "--version; the installed copy is kept\n"));
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
    QVERIFY(!QFileInfo::exists(dataFolder() + QStringLiteral("/yt-dlp_linux.previous")));
    QVERIFY(scratchFiles().isEmpty());
}

void TestToolInstall::twoUpdatesAtOnceInstallOnce()
{
    // Large enough, and served slowly enough, that the two overlap.
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.01")) + "#" + QByteArray(512 * 1024, 'k') + "\n"));
    feed().setBehaviour(QLatin1String(toolAsset), QStringLiteral("slow"));
    std::unique_ptr<QProcess> first(startLauncher({QStringLiteral("--update")}, environment()));
    std::unique_ptr<QProcess> second(startLauncher({QStringLiteral("--update")}, environment()));
    for (QProcess *process : {first.get(), second.get()}) {
        QVERIFY(process->waitForFinished(120000));
        QCOMPARE(process->exitStatus(), QProcess::NormalExit);
        QCOMPARE(process->exitCode(), 0);
    }
    QCOMPARE(feed().requests().count(QStringLiteral("GET yt-dlp_linux")), 1);
    QVERIFY(installedTool().startsWith(ReleaseScripts::tool(QStringLiteral("2026.11.01"))));
    QVERIFY(scratchFiles().isEmpty());
}

void TestToolInstall::killedUpdateLeavesOldCopyWorking()
{
    installRelease(QStringLiteral("2026.11.01"));
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20")) + "#" + QByteArray(2 * 1024 * 1024, 'k') + "\n"));
    feed().setBehaviour(QLatin1String(toolAsset), QStringLiteral("slow"));
    std::unique_ptr<QProcess> updating(startLauncher({QStringLiteral("--update")}, environment()));
    const QRegularExpression download(QStringLiteral("^\\.kestreldl2-yt-dlp_linux-"));
    const bool downloading = QTest::qWaitFor([&] { return !scratchFiles().filter(download).isEmpty(); }, 60000);
    updating->kill();
    QVERIFY(updating->waitForFinished());
    QVERIFY2(downloading, "the update never began to download");

    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.01")));
    QVERIFY(runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")}).succeeded());
    QCOMPARE(recordedRuns().value(0).value(0), QStringLiteral("release 2026.11.01"));

    // The next update clears what the killed one left and installs.
    feed().setBehaviour(QLatin1String(toolAsset), QStringLiteral("whole"));
    QVERIFY(update().succeeded());
    QVERIFY(installedTool().startsWith(ReleaseScripts::tool(QStringLiteral("2026.11.20"))));
    QVERIFY(scratchFiles().isEmpty());
}

void TestToolInstall::newEnoughSystemRuntimeIsUsed()
{
    setSystemNode("v22.11.0");
    verifySystemRuntimeIsUsed(QStringLiteral("node:") + fakeBin() + QStringLiteral("/node"));
}

void TestToolInstall::tooOldSystemRuntimeGetsManagedDeno()
{
    // A Deno before 2.3 and bookworm's Node 18 on PATH: neither will do.
    writeFile(fakeBin() + QStringLiteral("/deno"), ReleaseScripts::answering("deno 2.2.12 (stable, release, x86_64)"), true);
    QVERIFY(update().succeeded());
    QVERIFY(QFileInfo::exists(dataFolder() + QStringLiteral("/deno")));
    QVERIFY(runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")}).succeeded());
    QCOMPARE(recordedRuns().value(0).mid(4, 3),
             QStringList({QStringLiteral("--no-js-runtimes"), QStringLiteral("--js-runtimes"),
                          QStringLiteral("deno:") + dataFolder() + QStringLiteral("/deno")}));
}

void TestToolInstall::everyRunNamesRuntimeAndIgnoresConfig()
{
    QVERIFY(update().succeeded());
    const QStringList metadata{QStringLiteral("--no-warnings"), QStringLiteral("--get-title"),
                               QStringLiteral("--get-duration"), QStringLiteral("https://www.youtube.com/watch?v=k")};
    const QStringList formats{QStringLiteral("--no-warnings"), QStringLiteral("--list-formats"),
                              QStringLiteral("https://www.youtube.com/watch?v=k")};
    const QStringList prefix{QStringLiteral("--ignore-config"), QStringLiteral("--encoding"), QStringLiteral("utf-8"),
                             QStringLiteral("--no-js-runtimes"), QStringLiteral("--js-runtimes"),
                             QStringLiteral("deno:") + dataFolder() + QStringLiteral("/deno")};
    QVERIFY(runLauncher(metadata).succeeded());
    QVERIFY(runLauncher(formats).succeeded());
    // The system's tool gets them too.
    QVERIFY(QFile::remove(dataFolder() + QLatin1Char('/') + QLatin1String(toolAsset)));
    QProcessEnvironment system = environment();
    system.insert(QStringLiteral("KESTREL_YTDLP"), fakeBin() + QStringLiteral("/yt-dlp"));
    QVERIFY(runLauncher(metadata, system).succeeded());

    const QList<QStringList> runs = recordedRuns();
    QCOMPARE(runs.size(), 3);
    QCOMPARE(runs.at(0), QStringList{QStringLiteral("release 2026.11.01")} + prefix + metadata);
    QCOMPARE(runs.at(1), QStringList{QStringLiteral("release 2026.11.01")} + prefix + formats);
    QCOMPARE(runs.at(2), QStringList{QStringLiteral("system")} + prefix + metadata);
}

void TestToolInstall::normalRunInstallsFirst()
{
    const RunResult result = runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/k")});
    QVERIFY2(result.succeeded(), result.err.constData());
    // Nothing of the install reaches the tool's standard output.
    QVERIFY(result.out.isEmpty());
    QCOMPARE(recordedRuns().value(0).value(0), QStringLiteral("release 2026.11.01"));
    QVERIFY(QFileInfo::exists(dataFolder() + QStringLiteral("/deno")));
}

void TestToolInstall::staleCopyIsRefreshedBesideTheRun()
{
    installRelease(QStringLiteral("2026.11.01"));
    const QString statePath = dataFolder() + QStringLiteral("/kestreldl2.state");
    QByteArray state = readAll(statePath);
    const qint64 eightDaysAgo = QDateTime::currentSecsSinceEpoch() - 8 * 24 * 3600;
    state.replace(QRegularExpression(QStringLiteral("last-check \\d+")).match(QString::fromUtf8(state))
                      .captured(0).toUtf8(),
                  "last-check " + QByteArray::number(eightDaysAgo));
    writeFile(statePath, state);
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20"))));
    feed().forgetRequests();

    // The run uses the copy it found and lasts until the refresh beside it
    // has replaced that copy.
    QProcessEnvironment changed = environment();
    changed.insert(QStringLiteral("FAKE_WAIT_FILE"), dataFolder() + QLatin1Char('/') + QLatin1String(toolAsset));
    changed.insert(QStringLiteral("FAKE_WAIT_TEXT"), QStringLiteral("2026.11.20"));
    QVERIFY(runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/k")}, changed)
                .succeeded());
    QCOMPARE(recordedRuns().value(0).value(0), QStringLiteral("release 2026.11.01"));
    QVERIFY(feed().requests().contains(QStringLiteral("GET yt-dlp_linux")));
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.20")));
}

void TestToolInstall::userConfigCannotChangeOutput()
{
    // A user configuration that would print the id instead of the title.
    const QString home = path(QStringLiteral("home"));
    writeFile(home + QStringLiteral("/.config/yt-dlp/config"), "--print id\n");
    writeFile(home + QStringLiteral("/yt-dlp.conf"), "--print id\n");
    QProcessEnvironment changed = environment();
    changed.insert(QStringLiteral("HOME"), home);
    changed.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
    QFETCH(QString, tool);
    changed.insert(QStringLiteral("KESTREL_YTDLP"), tool);
    const QString info = path(QStringLiteral("clip.info.json"));
    writeFile(info, QByteArray(R"({"id": "kestrel0001", "title": "Kestrel Test Clip", "duration": 185,
        "extractor": "youtube", "extractor_key": "Youtube",
        "formats": [{"format_id": "18", "url": "http://127.0.0.1:9/none.mp4", "ext": "mp4",
                     "protocol": "http", "vcodec": "avc1", "acodec": "mp4a"}]})"));
    const RunResult result = runLauncher({QStringLiteral("--no-warnings"), QStringLiteral("--get-title"),
                                          QStringLiteral("--get-duration"), QStringLiteral("--load-info-json"),
                                          info},
                                         changed);
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(result.out, QByteArray("Kestrel Test Clip\n3:05\n"));
}

void TestToolInstall::outputIsUtf8WhateverTheLocale()
{
    QProcessEnvironment changed = environment();
    QFETCH(QString, tool);
    changed.insert(QStringLiteral("KESTREL_YTDLP"), tool);
    changed.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    changed.insert(QStringLiteral("LANG"), QStringLiteral("C"));
    changed.remove(QStringLiteral("PYTHONIOENCODING"));
    changed.remove(QStringLiteral("PYTHONUTF8"));
    const QString info = path(QStringLiteral("clip.info.json"));
    writeFile(info, QStringLiteral(R"({"id": "kestrel0002", "title": "Zürich – 東京 Ünïcode", "duration": 45,
        "extractor": "youtube", "extractor_key": "Youtube",
        "formats": [{"format_id": "18", "url": "http://127.0.0.1:9/none.mp4", "ext": "mp4",
                     "protocol": "http", "vcodec": "avc1", "acodec": "mp4a"}]})")
                        .toUtf8());
    const RunResult result = runLauncher({QStringLiteral("--no-warnings"), QStringLiteral("--get-title"),
                                          QStringLiteral("--get-duration"), QStringLiteral("--load-info-json"),
                                          info},
                                         changed);
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(result.out, QStringLiteral("Zürich – 東京 Ünïcode\n45\n").toUtf8());
}

KESTREL_TEST_MAIN(TestToolInstall)

#include "tst_toolinstall.moc"
