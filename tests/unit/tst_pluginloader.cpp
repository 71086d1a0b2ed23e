#include "plugins/plugins.h"

#include "logcapture.h"
#include "testsandbox.h"

#include <QApplication>
#include <QFile>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <type_traits>

namespace {

// The interfaces are a binary contract with plug-ins built by other
// compilers: text arguments are passed by value, which is not call-compatible
// with a reference where the callee destroys its by-value arguments.
static_assert(std::is_same_v<decltype(&LoggingInterface::setUp), void (LoggingInterface::*)(QString, QString)>);
static_assert(std::is_same_v<decltype(&SysInfoInterface::setApplicationInfo), void (SysInfoInterface::*)(QString, QString, int, int)>);
static_assert(std::is_same_v<decltype(&UpdateInterface::checkForUpdate), void (UpdateInterface::*)(int, QString)>);
static_assert(std::is_same_v<decltype(&UpdateInterface::updateNow), void (UpdateInterface::*)(int, QString)>);
static_assert(std::is_same_v<decltype(&AboutAppInterface::showAbout), void (AboutAppInterface::*)(QString, QString)>);

// Places a recording plug-in beside the test executable under a base name of
// the test's choosing and removes it again.
class PlacedPlugin
{
public:
    PlacedPlugin(const QString &kind, const QString &baseName)
        : m_path(QStringLiteral("%1/%2" KESTREL_MODULE_SUFFIX).arg(QCoreApplication::applicationDirPath(), baseName))
    {
        QFile::remove(m_path);
        const QString source = QStringLiteral("%1/recording_%2" KESTREL_MODULE_SUFFIX).arg(QStringLiteral(KESTREL_FIXTURE_PLUGIN_DIR), kind);
        if (!QFile::copy(source, m_path))
            qFatal("cannot place %s", qPrintable(m_path));
    }
    ~PlacedPlugin() { QFile::remove(m_path); }

    QString path() const { return m_path; }

private:
    QString m_path;
};

} // namespace

class TestPluginLoader : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void missingFileWarnsOnceAndStaysNull();
    void garbageFileWarnsWithLoadError();
    void otherInterfaceIsRejectedAndUnloaded();
    void filePathIsBesideTheExecutable();
    void loggingCallsReachTheirSlots();
    void sysInfoCallsReachTheirSlots();
    void updaterCallsReachTheirSlots();
    void updaterSignalsConnectBySignature();
    void aboutCallsReachTheirSlots();
    void deletingTheFileAfterLoadingChangesNothing();
    void applicationHelpersUseFixedBaseNames();

private:
    QStringList recordedCalls() const;

    QTemporaryDir m_records;
};

void TestPluginLoader::init()
{
    qputenv("KESTREL_FIXTURE_RECORD", m_records.filePath(QStringLiteral("calls.txt")).toLocal8Bit());
    QFile::remove(m_records.filePath(QStringLiteral("calls.txt")));
}

QStringList TestPluginLoader::recordedCalls() const
{
    QFile file(m_records.filePath(QStringLiteral("calls.txt")));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void TestPluginLoader::missingFileWarnsOnceAndStaysNull()
{
    LogCapture log;
    PluginManagerHelper<LoggingInterface> helper(QStringLiteral("NoSuchPlugin"));
    QCOMPARE(helper.instance(), nullptr);
    QCOMPARE(helper.instance(), nullptr);
    QCOMPARE(helper.instance(), nullptr);

    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(log.lines().first().type, QtWarningMsg);
    const QString expectedStart = QStringLiteral("QDebug PluginManagerHelper::Warning() [MGR] WARNING: \"%1\" load error: \"")
                                      .arg(helper.filePath());
    QVERIFY2(log.texts().first().startsWith(expectedStart), qPrintable(log.texts().first()));
}

void TestPluginLoader::garbageFileWarnsWithLoadError()
{
    const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/GarbagePlugin" KESTREL_MODULE_SUFFIX);
    QFile garbage(path);
    QVERIFY(garbage.open(QIODevice::WriteOnly));
    garbage.write(QByteArray(4096, '\x7f'));
    garbage.close();

    LogCapture log;
    PluginManagerHelper<AboutAppInterface> helper(QStringLiteral("GarbagePlugin"));
    QCOMPARE(helper.instance(), nullptr);
    QCOMPARE(helper.instance(), nullptr);
    QFile::remove(path);

    QCOMPARE(log.matching(QStringLiteral("load error:")).size(), 1);
    QVERIFY(log.texts().first().startsWith(QStringLiteral("QDebug PluginManagerHelper::Warning() [MGR] WARNING: \"%1\" load error:").arg(path)));
}

void TestPluginLoader::otherInterfaceIsRejectedAndUnloaded()
{
    PlacedPlugin sysInfoAsUpdater(QStringLiteral("sysinfo"), QStringLiteral("MismatchedUpdater"));
    LogCapture log;
    PluginManagerHelper<UpdateInterface> helper(QStringLiteral("MismatchedUpdater"));
    QCOMPARE(helper.instance(), nullptr);
    QCOMPARE(helper.instance(), nullptr);

    QCOMPARE(log.texts(), QStringList{QStringLiteral("QDebug PluginManagerHelper::Warning() [MGR] WARNING: \"%1\" iface mismatch")
                                          .arg(sysInfoAsUpdater.path())});

    // Loaders of one file share its library: a fresh one sees whether the
    // helper's loader still holds it.
    const QPluginLoader sameFile(sysInfoAsUpdater.path());
    QVERIFY(!sameFile.isLoaded());
}

void TestPluginLoader::filePathIsBesideTheExecutable()
{
    PluginManagerHelper<UpdateInterface> helper(QStringLiteral("Updater"));
    QCOMPARE(helper.filePath(), QCoreApplication::applicationDirPath() + QStringLiteral("/Updater" KESTREL_MODULE_SUFFIX));
}

void TestPluginLoader::loggingCallsReachTheirSlots()
{
    PlacedPlugin placed(QStringLiteral("logging"), QStringLiteral("LoaderLogging"));
    LogCapture log;
    PluginManagerHelper<LoggingInterface> helper(QStringLiteral("LoaderLogging"));
    LoggingInterface *logging = helper.instance();
    QVERIFY(logging);
    QVERIFY(log.texts().isEmpty());

    logging->setUp(QStringLiteral("/folder"), QStringLiteral("settings.ini"));
    logging->setEnabled(false);
    QCOMPARE(logging->isEnabled(), false);
    logging->shutDown();
    QCOMPARE(recordedCalls(), (QStringList{
                                  QStringLiteral("LoggingMessages.setUp|/folder|settings.ini"),
                                  QStringLiteral("LoggingMessages.setEnabled|false"),
                                  QStringLiteral("LoggingMessages.isEnabled"),
                                  QStringLiteral("LoggingMessages.shutDown"),
                              }));
}

void TestPluginLoader::sysInfoCallsReachTheirSlots()
{
    PlacedPlugin placed(QStringLiteral("sysinfo"), QStringLiteral("LoaderSysInfo"));
    PluginManagerHelper<SysInfoInterface> helper(QStringLiteral("LoaderSysInfo"));
    SysInfoInterface *sysInfo = helper.instance();
    QVERIFY(sysInfo);

    sysInfo->setApplicationInfo(QStringLiteral("2.0.023"), QStringLiteral("25.0826"), 0, 1);
    sysInfo->showIdentifier();
    QCOMPARE(sysInfo->systemInformation(), QStringLiteral("Recorded system"));
    QCOMPARE(recordedCalls(), (QStringList{
                                  QStringLiteral("SysInfo.setApplicationInfo|2.0.023|25.0826|0|1"),
                                  QStringLiteral("SysInfo.showIdentifier"),
                                  QStringLiteral("SysInfo.systemInformation"),
                              }));
}

void TestPluginLoader::updaterCallsReachTheirSlots()
{
    PlacedPlugin placed(QStringLiteral("updater"), QStringLiteral("LoaderUpdater"));
    PluginManagerHelper<UpdateInterface> helper(QStringLiteral("LoaderUpdater"));
    UpdateInterface *updater = helper.instance();
    QVERIFY(updater);

    updater->checkForUpdate(2023, QStringLiteral("25.0826"));
    updater->updateNow(2100, QStringLiteral("2.0.023"));
    updater->finish();
    QCOMPARE(recordedCalls().filter(QRegularExpression(QStringLiteral("^Updater\\.(?!window)"))),
             (QStringList{
                 QStringLiteral("Updater.checkForUpdate|2023|25.0826"),
                 QStringLiteral("Updater.updateNow|2100|2.0.023"),
                 QStringLiteral("Updater.finish"),
             }));
}

void TestPluginLoader::updaterSignalsConnectBySignature()
{
    PlacedPlugin placed(QStringLiteral("updater"), QStringLiteral("SignalUpdater"));
    PluginManagerHelper<UpdateInterface> helper(QStringLiteral("SignalUpdater"));
    UpdateInterface *updater = helper.instance();
    QVERIFY(updater);

    QSignalSpy done(updater, SIGNAL(updateDone()));
    QVERIFY(done.isValid());
    qputenv("KESTREL_FIXTURE_ACTIONS", "done-on-update");
    updater->updateNow(1, QString());
    qunsetenv("KESTREL_FIXTURE_ACTIONS");
    QVERIFY(done.wait());
    QCOMPARE(done.size(), 1);
}

void TestPluginLoader::aboutCallsReachTheirSlots()
{
    PlacedPlugin placed(QStringLiteral("about"), QStringLiteral("LoaderAbout"));
    PluginManagerHelper<AboutAppInterface> helper(QStringLiteral("LoaderAbout"));
    AboutAppInterface *about = helper.instance();
    QVERIFY(about);

    about->showAbout(QStringLiteral("system"), QStringLiteral("description"));
    QCOMPARE(recordedCalls(), QStringList{QStringLiteral("About.showAbout|system|description")});
}

void TestPluginLoader::deletingTheFileAfterLoadingChangesNothing()
{
    auto placed = std::make_unique<PlacedPlugin>(QStringLiteral("sysinfo"), QStringLiteral("DeletedSysInfo"));
    PluginManagerHelper<SysInfoInterface> helper(QStringLiteral("DeletedSysInfo"));
    SysInfoInterface *first = helper.instance();
    QVERIFY(first);
#ifdef Q_OS_WIN
    // Windows refuses to delete a loaded library but lets it be renamed,
    // which takes it from where the helper looks all the same.
    const QString movedAway = helper.filePath() + QStringLiteral(".moved");
    QFile::remove(movedAway);
    QVERIFY(QFile::rename(helper.filePath(), movedAway));
#else
    placed.reset();
#endif
    QVERIFY(!QFile::exists(helper.filePath()));

    LogCapture log;
    QCOMPARE(helper.instance(), first);
    first->showIdentifier();
    QVERIFY(log.texts().isEmpty());
    QCOMPARE(recordedCalls(), QStringList{QStringLiteral("SysInfo.showIdentifier")});
}

void TestPluginLoader::applicationHelpersUseFixedBaseNames()
{
    const QString folder = QCoreApplication::applicationDirPath();
    Plugins plugins;
    QCOMPARE(plugins.logging().filePath(), folder + QStringLiteral("/LoggingMessages" KESTREL_MODULE_SUFFIX));
    QCOMPARE(plugins.sysInfo().filePath(), folder + QStringLiteral("/SysInfo" KESTREL_MODULE_SUFFIX));
    QCOMPARE(plugins.updater().filePath(), folder + QStringLiteral("/Updater" KESTREL_MODULE_SUFFIX));
    QCOMPARE(plugins.about().filePath(), folder + QStringLiteral("/About" KESTREL_MODULE_SUFFIX));
    QCOMPARE(&plugins.logging(), &plugins.logging());
}

KESTREL_TEST_MAIN(TestPluginLoader)
#include "tst_pluginloader.moc"
