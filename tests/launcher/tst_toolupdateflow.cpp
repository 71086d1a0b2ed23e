// The window's tool update with the real launcher: the menu's "Manually
// Update Software", an updater plug-in that reports updateDone at once, and
// the launcher's own install from a feed on 127.0.0.1.

#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "plugins/plugins.h"
#include "ui/navigation.h"

#include "localreleasefeed.h"
#include "menudriver.h"
#include "modalcatcher.h"
#include "testsandbox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStackedWidget>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class TestToolUpdateFlow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void verifiedReleaseReportsSuccess();
    void unreachableFeedReportsFailure();
    void refusedSignatureReportsFailure();

private:
    void chooseUpdateFromTheMenu();
    QString managedTool() const { return dataFolder() + QStringLiteral("/yt-dlp_linux"); }

    TestSigningKeys m_keys;
    QTemporaryDir m_work;
    std::unique_ptr<LocalReleaseFeed> m_feed;
    VideoInfo m_info;
    KestrelDownloader m_driver{m_info};
    Plugins m_plugins;
    std::unique_ptr<Navigation> m_window;
};

void TestToolUpdateFlow::initTestCase()
{
    QVERIFY(m_keys.isValid());
    const QString updater = QCoreApplication::applicationDirPath() + QStringLiteral("/Updater.so");
    QFile::remove(updater);
    QVERIFY(QFile::copy(QStringLiteral(KESTREL_FIXTURE_PLUGIN_DIR "/recording_updater.so"), updater));
    qputenv("KESTREL_FIXTURE_RECORD", QFile::encodeName(m_work.filePath(QStringLiteral("calls.txt"))));
    qputenv("KESTREL_FIXTURE_ACTIONS", "done-on-update");

    prepareOutputDir();
    QVERIFY(QDir().mkpath(dataFolder()));
    QVERIFY(QFile::copy(QStringLiteral(KESTREL_LAUNCHER_PATH), dataFolder() + QStringLiteral("/kestreldl2")));

    // A Node too old for the tool first on PATH, so that the managed Deno
    // is installed whatever the machine has.
    const QString bin = m_work.filePath(QStringLiteral("bin"));
    QVERIFY(QDir().mkpath(bin));
    QFile node(bin + QStringLiteral("/node"));
    QVERIFY(node.open(QIODevice::WriteOnly));
    node.write(ReleaseScripts::answering("v18.19.0"));
    node.close();
    QVERIFY(node.setPermissions(node.permissions() | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(bin) + ':' + qgetenv("PATH"));
    qputenv("KESTREL_TOOL_KEYRING", QFile::encodeName(m_keys.releaseKeyFile()));
    qunsetenv("KESTREL_YTDLP");
}

void TestToolUpdateFlow::init()
{
    QFile::remove(managedTool());
    m_feed = std::make_unique<LocalReleaseFeed>(m_keys, m_work.filePath(QStringLiteral("feed")));
    QVERIFY(m_feed->publishTool(ReleaseScripts::tool(QStringLiteral("2026.11.01"))));
    QVERIFY(m_feed->publishRuntime("deno 2.5.6 (stable, release, x86_64-unknown-linux-gnu)"));
    QVERIFY(m_feed->start());
    qputenv("KESTREL_TOOL_FEED", m_feed->address().toUtf8());
    qputenv("KESTREL_JS_RUNTIME_FEED", m_feed->address().toUtf8());

    m_window = std::make_unique<Navigation>(m_driver, m_info, m_plugins);
    m_window->showMainWindow();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestToolUpdateFlow::cleanup()
{
    m_window.reset();
    m_feed.reset();
}

void TestToolUpdateFlow::cleanupTestCase()
{
    QFile::remove(QCoreApplication::applicationDirPath() + QStringLiteral("/Updater.so"));
}

void TestToolUpdateFlow::chooseUpdateFromTheMenu()
{
    MenuDriver menu({QStringLiteral("Manually Update Software")});
    QWidget *button = m_window->findChild<QWidget *>(QStringLiteral("pushButton_Video"));
    QTest::mousePress(button, Qt::RightButton, {}, button->rect().center());
}

void TestToolUpdateFlow::verifiedReleaseReportsSuccess()
{
    ModalCatcher boxes;
    chooseUpdateFromTheMenu();
    QVERIFY(boxes.waitForBoxes(1, 120000));
    QCOMPARE(boxes.boxes().first().title, QStringLiteral("Success"));
    QCOMPARE(boxes.boxes().first().text, QStringLiteral("KestrelDownloader was successfully updated"));
    QVERIFY(QFileInfo(managedTool()).isExecutable());
    QVERIFY(QFileInfo::exists(dataFolder() + QStringLiteral("/deno")));
}

void TestToolUpdateFlow::unreachableFeedReportsFailure()
{
    QTcpServer closed;
    QVERIFY(closed.listen(QHostAddress::LocalHost));
    const quint16 port = closed.serverPort();
    closed.close();
    qputenv("KESTREL_TOOL_FEED", QStringLiteral("http://127.0.0.1:%1/").arg(port).toUtf8());

    ModalCatcher boxes;
    chooseUpdateFromTheMenu();
    QVERIFY(boxes.waitForBoxes(1, 120000));
    QCOMPARE(boxes.boxes().first().title, QStringLiteral("ERROR"));
    QCOMPARE(boxes.boxes().first().text, QStringLiteral("Unable to update. Please contact support"));
    QVERIFY(!QFileInfo::exists(managedTool()));
}

void TestToolUpdateFlow::refusedSignatureReportsFailure()
{
    QVERIFY(m_feed->signSums(TestSigningKeys::Signer::Stranger));
    ModalCatcher boxes;
    chooseUpdateFromTheMenu();
    QVERIFY(boxes.waitForBoxes(1, 120000));
    QCOMPARE(boxes.boxes().first().text, QStringLiteral("Unable to update. Please contact support"));
    QVERIFY(!QFileInfo::exists(managedTool()));
}

KESTREL_TEST_MAIN(TestToolUpdateFlow)

#include "tst_toolupdateflow.moc"
