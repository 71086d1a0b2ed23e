#include "appinstallation.h"
#include "testsandbox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTest>

namespace {

struct Library
{
    const char *name;
    const char *builtFile;
};

const Library libraries[] = {
    {"LoggingMessages", KESTREL_PLUGIN_LOGGINGMESSAGES},
    {"SysInfo", KESTREL_PLUGIN_SYSINFO},
    {"Updater", KESTREL_PLUGIN_UPDATER},
    {"About", KESTREL_PLUGIN_ABOUT},
};

QString logFile(const TestSandbox &sandbox)
{
    return sandbox.localDataFolder() + QStringLiteral("/kestrel-downloader.log");
}

QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class TestPluginLibraries : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void startsWithAllOrAllButOne_data();
    void startsWithAllOrAllButOne();
};

void TestPluginLibraries::initTestCase()
{
    // The updater must neither reach a real server nor start an installer.
    qputenv("KESTREL_UPDATER_NO_LAUNCH", "1");
}

void TestPluginLibraries::startsWithAllOrAllButOne_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("all four") << QString();
    for (const Library &library : libraries)
        QTest::newRow(qPrintable(QStringLiteral("without %1").arg(QLatin1String(library.name)))) << QString::fromLatin1(library.name);
}

void TestPluginLibraries::startsWithAllOrAllButOne()
{
    QFETCH(QString, missing);
    TestSandbox sandbox;
    QDir().mkpath(sandbox.localDataFolder());
    {
        QSettings settings(sandbox.settingsFile(), QSettings::IniFormat);
        // Nothing listens on the discard port: the check fails at once.
        settings.setValue(QStringLiteral("Updater/FeedUrl"), QStringLiteral("http://127.0.0.1:9/feed.json"));
        settings.setValue(QStringLiteral("Updater/TimeoutMs"), 3000);
    }
    AppInstallation app;
    for (const Library &library : libraries) {
        if (missing != QLatin1String(library.name))
            app.addCopyOf(QString::fromLocal8Bit(library.builtFile), QStringLiteral("%1" KESTREL_MODULE_SUFFIX).arg(QLatin1String(library.name)));
    }

    // The update check is the last step of start-up; when the updater is
    // missing, its load error is.
    const QString lastStep = missing == QStringLiteral("Updater") ? QStringLiteral("Updater" KESTREL_MODULE_SUFFIX "\" load error:")
                                                                    : QStringLiteral("Could not reach the update server");
    const AppInstallation::Run run = app.runUntilLogged(sandbox, {}, lastStep);
    QVERIFY2(!run.finished, qPrintable(run.logLines.join(QLatin1Char('\n'))));
    QVERIFY2(run.logLines.join(QLatin1Char('\n')).contains(lastStep), qPrintable(run.logLines.join(QLatin1Char('\n'))));

    const QStringList loadErrors = run.logLinesContaining(QStringLiteral("[MGR] WARNING:"));
    if (missing.isEmpty() || missing == QStringLiteral("About")) {
        QCOMPARE(loadErrors, QStringList());
    } else {
        QCOMPARE(loadErrors.size(), 1);
        QVERIFY(loadErrors.first().contains(QStringLiteral("/%1" KESTREL_MODULE_SUFFIX "\" load error:").arg(missing)));
    }

    // Each line reaches the console once, and the log file once.
    QCOMPARE(run.logLinesContaining(QStringLiteral("OK: output dir")).size(), 1);
    const QString log = readText(logFile(sandbox));
    if (missing == QStringLiteral("LoggingMessages")) {
        QVERIFY(!QFile::exists(logFile(sandbox)));
    } else {
        QCOMPARE(log.count(QStringLiteral("OK: output dir")), 1);
        QCOMPARE(log.count(QStringLiteral("--> [")), run.logLinesContaining(QStringLiteral("--> [")).size());
    }
}

KESTREL_TEST_MAIN(TestPluginLibraries)
#include "tst_pluginlibraries.moc"
