#include "appinstallation.h"
#include "testsandbox.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

#include <optional>

namespace {

QStringList withoutWindowRecords(const QStringList &calls)
{
    QStringList result;
    for (const QString &call : calls) {
        if (!call.startsWith(QStringLiteral("Updater.window")))
            result << call;
    }
    return result;
}

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void pluginCallsInStartAndShutdownOrder();
    void windowIsShownWithVersionTitleBeforeTheCheck();
    void lastLogLineIsDone();
    void versionOption();
    void helpOption();
    void unknownOptionEndsTheProcess();
    void commandLineStaysEnglishInOtherLanguages();
    void updateAsEmptyPrintsHelpAndExits();
    void updateAsCallsUpdateNow_data();
    void updateAsCallsUpdateNow();
    void uidShowsIdentifierBeforeUpdateAs();
    void uidAloneThenAutomaticCheck();
    void noPluginFilesWarnOncePerPlugin();
    void pluginOfAnotherInterfaceIsRejected();
    void brokenPluginFileIsSkipped();
    void updateAsWithoutUpdaterWritesOnlyItsLines();
    void nothingFollowsTheMissingUpdatersWarning_data();
    void nothingFollowsTheMissingUpdatersWarning();
    void uidWithoutSysInfoChangesNothing();
};

void TestStartup::pluginCallsInStartAndShutdownOrder()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addAllRecordingPlugins();
    const AppInstallation::Run run = app.run(sandbox, {}, {QStringLiteral("quit-on-check")});
    QVERIFY(run.finished);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(withoutWindowRecords(run.calls), (QStringList{
                                                   QStringLiteral("LoggingMessages.setUp|%1|settings.ini").arg(sandbox.localDataFolder()),
                                                   QStringLiteral("SysInfo.setApplicationInfo|2.0.023|25.0826|0|1"),
                                                   // The window's menu shows whether logging is on.
                                                   QStringLiteral("LoggingMessages.isEnabled"),
                                                   QStringLiteral("Updater.checkForUpdate|2023|25.0826"),
                                                   QStringLiteral("LoggingMessages.shutDown"),
                                                   QStringLiteral("Updater.finish"),
                                               }));
}

void TestStartup::windowIsShownWithVersionTitleBeforeTheCheck()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("Updater"));
    const AppInstallation::Run run = app.run(sandbox, {}, {QStringLiteral("quit-on-check")});
    QVERIFY(run.finished);
    QCOMPARE(run.calls.filter(QStringLiteral("Updater.window")),
             QStringList{QStringLiteral("Updater.window|Kestrel Downloader 2.0.023|shown")});
    QVERIFY(!run.calls.join(QLatin1Char('\n')).contains(QStringLiteral("25.0826|shown")));
}

void TestStartup::lastLogLineIsDone()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("Updater"));
    const AppInstallation::Run run = app.run(sandbox, {}, {QStringLiteral("quit-on-check")});
    QVERIFY(run.finished);

    // The line ends with a line feed item, so an empty line follows it.
    QStringList lines = run.logLines;
    QVERIFY(lines.size() >= 3);
    QCOMPARE(lines.takeLast(), QString()); // the stream's own line end
    QCOMPARE(lines.takeLast(), QString());
    const QRegularExpression done(QStringLiteral("^\\[\\d+\\] int qMain\\(int, char\\*\\*\\) : DONE: 0 $"));
    QVERIFY2(done.match(lines.last()).hasMatch(), qPrintable(lines.last()));
}

void TestStartup::versionOption()
{
    TestSandbox sandbox;
    AppInstallation app;
    const AppInstallation::Run run = app.run(sandbox, {QStringLiteral("--version")});
    QVERIFY(run.finished);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.standardOutput, QStringLiteral("Kestrel Downloader 2.0.023\n"));
}

void TestStartup::helpOption()
{
    TestSandbox sandbox;
    AppInstallation app;
    const AppInstallation::Run run = app.run(sandbox, {QStringLiteral("--help")});
    QVERIFY(run.finished);
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.standardOutput.contains(QRegularExpression(QStringLiteral("--update-as <version> +update this app as some version"))),
             qPrintable(run.standardOutput));
    QVERIFY(run.standardOutput.contains(QRegularExpression(QStringLiteral("--uid +show UID"))));
}

void TestStartup::unknownOptionEndsTheProcess()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addAllRecordingPlugins();
    const AppInstallation::Run run = app.run(sandbox, {QStringLiteral("--no-such-option")});
    QVERIFY(run.finished);
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.logLines.join(QLatin1Char('\n')).contains(QStringLiteral("Unknown option 'no-such-option'.")));
    QCOMPARE(run.calls.filter(QStringLiteral("Updater.")), QStringList());
}

// The help, the version and the parser's complaints are for scripts and
// support: English whatever the user's language.
void TestStartup::commandLineStaysEnglishInOtherLanguages()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addTranslations();
    const QList<std::pair<const char *, QByteArray>> german{{"LANGUAGE", "de"}, {"LANG", "de_DE.UTF-8"}, {"LC_ALL", {}}};
    QList<std::pair<const char *, std::optional<QByteArray>>> before;
    for (const auto &[name, value] : german) {
        before.append({name, qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt});
        value.isEmpty() ? qunsetenv(name) : qputenv(name, value);
    }
    const AppInstallation::Run help = app.run(sandbox, {QStringLiteral("--help")});
    const AppInstallation::Run version = app.run(sandbox, {QStringLiteral("--version")});
    const AppInstallation::Run unknown = app.run(sandbox, {QStringLiteral("--no-such-option")});
    for (const auto &[name, value] : before)
        value ? qputenv(name, *value) : qunsetenv(name);

    QVERIFY(help.finished);
    QVERIFY2(help.standardOutput.contains(QRegularExpression(QStringLiteral("-h, --help +Displays help on commandline options."))),
             qPrintable(help.standardOutput));
    QVERIFY(help.standardOutput.contains(QRegularExpression(QStringLiteral("--update-as <version> +update this app as some version"))));
    QCOMPARE(version.standardOutput, QStringLiteral("Kestrel Downloader 2.0.023\n"));
    QVERIFY(unknown.logLines.join(QLatin1Char('\n')).contains(QStringLiteral("Unknown option 'no-such-option'.")));
}

void TestStartup::updateAsEmptyPrintsHelpAndExits()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addAllRecordingPlugins();
    const AppInstallation::Run run = app.run(sandbox, {QStringLiteral("--update-as=")});
    QVERIFY(run.finished);
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.standardOutput.startsWith(QStringLiteral("Usage:")));
    QCOMPARE(run.calls.filter(QStringLiteral("Updater.updateNow")), QStringList());
    QCOMPARE(run.calls.filter(QStringLiteral("Updater.checkForUpdate")), QStringList());
}

void TestStartup::updateAsCallsUpdateNow_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expectedCall");
    QTest::newRow("a number") << QStringLiteral("2100") << QStringLiteral("Updater.updateNow|2100|2.0.023");
    QTest::newRow("not a number") << QStringLiteral("abc") << QStringLiteral("Updater.updateNow|0|2.0.023");
    QTest::newRow("too large for 32 bits") << QStringLiteral("4294967296") << QStringLiteral("Updater.updateNow|0|2.0.023");
    QTest::newRow("negative") << QStringLiteral("-5") << QStringLiteral("Updater.updateNow|-5|2.0.023");
}

void TestStartup::updateAsCallsUpdateNow()
{
    QFETCH(QString, value);
    QFETCH(QString, expectedCall);
    TestSandbox sandbox;
    AppInstallation app;
    app.addAllRecordingPlugins();
    const AppInstallation::Run run = app.run(sandbox, {QStringLiteral("--update-as"), value}, {QStringLiteral("quit-on-update")});
    QVERIFY(run.finished);
    QCOMPARE(run.calls.filter(QStringLiteral("Updater.updateNow")), QStringList{expectedCall});
    QCOMPARE(run.calls.filter(QStringLiteral("Updater.checkForUpdate")), QStringList());

    const qsizetype separator = run.logLines.indexOf(QStringLiteral("------------------"));
    QVERIFY(separator >= 0);
    QCOMPARE(run.logLines.value(separator + 1), QStringLiteral("Update as version: %1").arg(value));
}

void TestStartup::uidShowsIdentifierBeforeUpdateAs()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addAllRecordingPlugins();
    const AppInstallation::Run run = app.run(sandbox, {QStringLiteral("--uid"), QStringLiteral("--update-as"), QStringLiteral("2100")},
                                             {QStringLiteral("quit-on-update")});
    QVERIFY(run.finished);
    const QStringList calls = withoutWindowRecords(run.calls);
    const qsizetype identifier = calls.indexOf(QStringLiteral("SysInfo.showIdentifier"));
    const qsizetype update = calls.indexOf(QStringLiteral("Updater.updateNow|2100|2.0.023"));
    QVERIFY(identifier >= 0);
    QVERIFY(update > identifier);
    QCOMPARE(calls.filter(QStringLiteral("Updater.checkForUpdate")), QStringList());
}

void TestStartup::uidAloneThenAutomaticCheck()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addAllRecordingPlugins();
    const AppInstallation::Run run = app.run(sandbox, {QStringLiteral("--uid")}, {QStringLiteral("quit-on-check")});
    QVERIFY(run.finished);
    const QStringList calls = withoutWindowRecords(run.calls);
    QVERIFY(calls.indexOf(QStringLiteral("SysInfo.showIdentifier")) >= 0);
    QVERIFY(calls.indexOf(QStringLiteral("Updater.checkForUpdate|2023|25.0826")) > calls.indexOf(QStringLiteral("SysInfo.showIdentifier")));
}

void TestStartup::noPluginFilesWarnOncePerPlugin()
{
    TestSandbox sandbox;
    AppInstallation app;
    // Nothing ends this run by itself: it is stopped once the last start-up
    // step, the update check, has been skipped.
    const AppInstallation::Run run = app.runUntilLogged(sandbox, {}, QStringLiteral("Updater" KESTREL_MODULE_SUFFIX "\" load error:"));
    QVERIFY2(!run.finished, "the application ended by itself");
    const QStringList loadErrors = run.logLinesContaining(QStringLiteral("load error:"));
    QCOMPARE(loadErrors.size(), 3);
    for (const QString &name : {QStringLiteral("LoggingMessages"), QStringLiteral("SysInfo"), QStringLiteral("Updater")}) {
        const QString expected = QStringLiteral("QDebug PluginManagerHelper::Warning() [MGR] WARNING: \"%1/%2" KESTREL_MODULE_SUFFIX "\" load error: \"")
                                     .arg(app.folder(), name);
        QCOMPARE(loadErrors.filter(expected).size(), 1);
    }
    QVERIFY(run.logLinesContaining(QStringLiteral("OK: output dir")).size() == 1);
}

void TestStartup::pluginOfAnotherInterfaceIsRejected()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addRecordingPlugin(QStringLiteral("sysinfo"), QStringLiteral("SysInfo"));
    app.addRecordingPlugin(QStringLiteral("sysinfo"), QStringLiteral("Updater"));
    app.addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("LoggingMessages"));
    const AppInstallation::Run run = app.runUntilLogged(sandbox, {}, QStringLiteral("Updater" KESTREL_MODULE_SUFFIX "\" iface mismatch"));
    QVERIFY(!run.finished);
    QCOMPARE(run.logLinesContaining(QStringLiteral("iface mismatch")),
             (QStringList{
                 QStringLiteral("QDebug PluginManagerHelper::Warning() [MGR] WARNING: \"%1/LoggingMessages" KESTREL_MODULE_SUFFIX "\" iface mismatch").arg(app.folder()),
                 QStringLiteral("QDebug PluginManagerHelper::Warning() [MGR] WARNING: \"%1/Updater" KESTREL_MODULE_SUFFIX "\" iface mismatch").arg(app.folder()),
             }));
    QCOMPARE(run.calls, QStringList{QStringLiteral("SysInfo.setApplicationInfo|2.0.023|25.0826|0|1")});
}

void TestStartup::brokenPluginFileIsSkipped()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addAllRecordingPlugins();
    app.addFile(QStringLiteral("LoggingMessages" KESTREL_MODULE_SUFFIX), QByteArray("\x7f" "ELF but not really a library", 30));
    const AppInstallation::Run run = app.run(sandbox, {}, {QStringLiteral("quit-on-check")});
    QVERIFY(run.finished);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.logLinesContaining(QStringLiteral("LoggingMessages" KESTREL_MODULE_SUFFIX "\" load error:")).size(), 1);
    QCOMPARE(run.calls.filter(QStringLiteral("LoggingMessages.")), QStringList());
    QVERIFY(run.calls.contains(QStringLiteral("Updater.checkForUpdate|2023|25.0826")));
}

void TestStartup::updateAsWithoutUpdaterWritesOnlyItsLines()
{
    TestSandbox sandbox;
    AppInstallation app;
    const AppInstallation::Run run = app.runUntilLogged(sandbox, {QStringLiteral("--update-as"), QStringLiteral("2100")},
                                                        QStringLiteral("Updater" KESTREL_MODULE_SUFFIX "\" load error:"));
    QVERIFY(!run.finished);
    const qsizetype separator = run.logLines.indexOf(QStringLiteral("------------------"));
    QVERIFY(separator >= 0);
    QCOMPARE(run.logLines.value(separator + 1), QStringLiteral("Update as version: 2100"));
    QVERIFY(run.logLines.value(separator + 2).contains(QStringLiteral("Updater" KESTREL_MODULE_SUFFIX "\" load error:")));
}

void TestStartup::nothingFollowsTheMissingUpdatersWarning_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("automatic check") << QStringList();
    QTest::newRow("update-as") << QStringList{QStringLiteral("--update-as"), QStringLiteral("2100")};
}

void TestStartup::nothingFollowsTheMissingUpdatersWarning()
{
    QFETCH(QStringList, arguments);
    TestSandbox sandbox;
    AppInstallation app;
    // The run goes on for a while after the warning, time enough for
    // anything that a request to the updater would set off.
    const AppInstallation::Run run = app.runUntilLogged(sandbox, arguments, QStringLiteral("Updater" KESTREL_MODULE_SUFFIX "\" load error:"), 1500);
    QVERIFY(!run.finished);
    QStringList lines = run.logLines;
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    QVERIFY(!lines.isEmpty());
    QVERIFY2(lines.last().startsWith(QStringLiteral("QDebug PluginManagerHelper::Warning() [MGR] WARNING: \"%1/Updater" KESTREL_MODULE_SUFFIX "\" load error:")
                                         .arg(app.folder())),
             qPrintable(lines.join(QLatin1Char('\n'))));
    QCOMPARE(run.logLinesContaining(QStringLiteral("Updater" KESTREL_MODULE_SUFFIX "\" load error:")).size(), 1);
}

void TestStartup::uidWithoutSysInfoChangesNothing()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("Updater"));
    // The first run sets the sandbox up, so that both runs below start alike.
    QVERIFY(app.run(sandbox, {}, {QStringLiteral("quit-on-check")}).finished);

    const AppInstallation::Run plain = app.run(sandbox, {}, {QStringLiteral("quit-on-check")});
    const AppInstallation::Run withUid = app.run(sandbox, {QStringLiteral("--uid")}, {QStringLiteral("quit-on-check")});
    QVERIFY(plain.finished);
    QVERIFY(withUid.finished);
    QCOMPARE(withUid.exitCode, 0);
    QCOMPARE(withUid.logLinesContaining(QStringLiteral("SysInfo" KESTREL_MODULE_SUFFIX "\" load error:")).size(), 1);
    QCOMPARE(withUid.calls, plain.calls);
    QVERIFY(withUid.calls.contains(QStringLiteral("Updater.checkForUpdate|2023|25.0826")));
    QCOMPARE(withUid.logLines, plain.logLines);
}

KESTREL_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
