// The tool's channel: "tool-channel nightly" in kestreldl2.conf takes the
// tool from its nightly builds, verified exactly as its releases; no older
// build within a channel, and going back to the releases installs the newest
// release although its date is older than the nightly build's.

#include "launchersettings.h"
#include "toolinstalltest.h"

#include <QDateTime>
#include <QFile>
#include <QTest>

#include <memory>

using TestFiles::readAll;

namespace {

const QString nightly = QStringLiteral("2026.11.23.233020");

} // namespace

class TestToolChannel : public ToolInstallTest
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

private slots:
    void settingsAreRead_data();
    void settingsAreRead();
    void nightlyChannelInstallsTheNightlyBuild();
    void backToStableInstallsTheNewestRelease();
    void olderNightlyBuildIsRefused();
    void nightlyBuildSignedByAnotherKeyIsRefused();
    void changeOfChannelTakesEffectAtTheNextRun();

private:
    void setChannel(const QByteArray &channel);

    std::unique_ptr<LocalReleaseFeed> m_nightlyFeed;
};

void TestToolChannel::init()
{
    ToolInstallTest::init();
    m_nightlyFeed = std::make_unique<LocalReleaseFeed>(keys(), path(QStringLiteral("nightly-feed")));
    QVERIFY(m_nightlyFeed->publishTool(ReleaseScripts::tool(nightly)));
    QVERIFY(m_nightlyFeed->start());
    environment().insert(QStringLiteral("KESTREL_TOOL_NIGHTLY_FEED"), m_nightlyFeed->address());
}

void TestToolChannel::cleanup()
{
    m_nightlyFeed.reset();
    ToolInstallTest::cleanup();
}

void TestToolChannel::setChannel(const QByteArray &channel)
{
    writeFile(dataFolder() + QStringLiteral("/kestreldl2.conf"), "# the tool's channel\ntool-channel " + channel + '\n');
}

void TestToolChannel::settingsAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("channel");
    QTest::addColumn<int>("problems");
    QTest::newRow("nothing") << QByteArray() << QByteArray("stable") << 0;
    QTest::newRow("nightly") << QByteArray("tool-channel nightly\n") << QByteArray("nightly") << 0;
    QTest::newRow("with an equals sign") << QByteArray("tool-channel = nightly\r\n") << QByteArray("nightly") << 0;
    QTest::newRow("comment and blank line") << QByteArray("# mine\n\n  tool-channel stable  \n") << QByteArray("stable") << 0;
    QTest::newRow("unknown channel") << QByteArray("tool-channel beta\n") << QByteArray("stable") << 1;
    QTest::newRow("unknown key") << QByteArray("colour blue\ntool-channel nightly\n") << QByteArray("nightly") << 1;
}

void TestToolChannel::settingsAreRead()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, channel);
    QFETCH(int, problems);
    const Launcher::LauncherSettings settings = Launcher::LauncherSettings::parse(text.toStdString());
    QCOMPARE(QByteArray::fromStdString(settings.toolChannel), channel);
    QCOMPARE(int(settings.problems.size()), problems);
}

void TestToolChannel::nightlyChannelInstallsTheNightlyBuild()
{
    setChannel("nightly");
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    QVERIFY2(result.out.startsWith("installed yt-dlp_linux " + nightly.toUtf8() + ';'), result.out.constData());
    QCOMPARE(installedTool(), ReleaseScripts::tool(nightly));
    QVERIFY(!feed().requests().contains(QStringLiteral("GET SHA2-256SUMS")));
    QVERIFY(m_nightlyFeed->requests().contains(QStringLiteral("GET SHA2-256SUMS.sig")));
}

void TestToolChannel::backToStableInstallsTheNewestRelease()
{
    setChannel("nightly");
    QVERIFY(update().succeeded());
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.20"))));
    setChannel("stable");
    const RunResult result = update();
    QVERIFY2(result.succeeded(), result.err.constData());
    QCOMPARE(installedTool(), ReleaseScripts::tool(QStringLiteral("2026.11.20")));
    // Within the releases, the bar is the releases' own.
    QVERIFY(feed().publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.01"))));
    QVERIFY(update().crashed());
}

void TestToolChannel::olderNightlyBuildIsRefused()
{
    setChannel("nightly");
    QVERIFY(update().succeeded());
    QVERIFY(m_nightlyFeed->publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.23.101500"))));
    const RunResult result = update();
    QVERIFY(result.crashed());
    QCOMPARE(result.err, "kestreldl2: update refused: yt-dlp_linux: release 2026.11.23.101500 is older than release "
                             + nightly.toUtf8() + ", installed here before; the installed copy is kept\n");
    QCOMPARE(installedTool(), ReleaseScripts::tool(nightly));
}

void TestToolChannel::nightlyBuildSignedByAnotherKeyIsRefused()
{
    setChannel("nightly");
    QVERIFY(m_nightlyFeed->signSums(TestSigningKeys::Signer::Stranger));
    const RunResult result = update();
    QVERIFY(result.crashed());
    QCOMPARE(result.err,
             QByteArray("kestreldl2: update refused: SHA2-256SUMS.sig: signed by another key than the tool's release key\n"));
    QVERIFY(!QFile::exists(dataFolder() + QLatin1Char('/') + QLatin1String(toolAsset)));
}

// A fresh release installed today, then the channel changed: the next run
// does not wait a week for its refresh.
void TestToolChannel::changeOfChannelTakesEffectAtTheNextRun()
{
    installRelease(QStringLiteral("2026.11.01"));
    setChannel("nightly");
    QVERIFY(runLauncher({QStringLiteral("--get-title"), QStringLiteral("https://youtu.be/kestrel")},
                        waitingForRelease(nightly))
                .succeeded());
    QCOMPARE(recordedRuns().value(0).value(0), QStringLiteral("release 2026.11.01"));
    QCOMPARE(installedTool(), ReleaseScripts::tool(nightly));
    QVERIFY(readAll(dataFolder() + QStringLiteral("/kestreldl2.state")).contains("\ntool-channel nightly\n"));
}

KESTREL_TEST_MAIN(TestToolChannel)
#include "tst_toolchannel.moc"
