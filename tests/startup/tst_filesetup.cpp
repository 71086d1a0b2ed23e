#include "appinstallation.h"
#include "testsandbox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QTest>

namespace {

// The tool files beside the executable, by this system's names.
const QString toolFile = QStringLiteral("kestreldl2" KESTREL_EXECUTABLE_SUFFIX);
const QString ffmpegFile = QStringLiteral("ffmpeg" KESTREL_EXECUTABLE_SUFFIX);

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

// An installation whose recording updater ends each run once start-up is
// complete, with both tool files beside the executable.
class SetupRun
{
public:
    SetupRun()
    {
        m_app.addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("Updater"));
        m_app.addFile(toolFile, "tool v1");
        m_app.addFile(ffmpegFile, "ffmpeg v1");
    }

    AppInstallation::Run start() const
    {
        AppInstallation::Run run = m_app.run(m_sandbox, {}, {QStringLiteral("quit-on-check")});
        if (!run.finished || run.exitCode != 0)
            qFatal("start-up did not end cleanly: %s", qPrintable(run.logLines.join(QLatin1Char('\n'))));
        return run;
    }

    QString downloads(const QString &name = {}) const
    {
        return name.isEmpty() ? m_sandbox.downloadFolder() : m_sandbox.downloadFolder() + QLatin1Char('/') + name;
    }

    const TestSandbox &sandbox() const { return m_sandbox; }
    AppInstallation &app() { return m_app; }

private:
    TestSandbox m_sandbox;
    AppInstallation m_app;
};

} // namespace

class TestFileSetup : public QObject
{
    Q_OBJECT

private slots:
    void firstRunCopiesBothTools();
    void secondRunCopiesNothing();
    void damagedCopyIsKept();
    void missingToolIsReported();
    void firstRunWritesVersionKeys();
    void secondRunDoesNotRewriteSettings();
    void changedVersionKeysAreRewritten();
    void outputFolderIsCreated();
    void dataFolderIsTheUsersAlone();
    void installerIsRenamed_data();
    void installerIsRenamed();
    void installerIsDeletedWhenRenameFails();
    void installerThatCannotGoSwitchesOutputFolder();
    void bothExtensionsAreExamined();
    void noInstallerLogsNothing();
};

void TestFileSetup::firstRunCopiesBothTools()
{
    SetupRun setup;
    const AppInstallation::Run run = setup.start();
    const QString data = setup.sandbox().dataFolder();
    QCOMPARE(readFile(data + QLatin1Char('/') + toolFile), QByteArray("tool v1"));
    QCOMPARE(readFile(data + QLatin1Char('/') + ffmpegFile), QByteArray("ffmpeg v1"));
    QVERIFY(run.logLines.contains(QStringLiteral("OK: data dir %1").arg(data)));
    const qsizetype tool = run.logLines.indexOf(QStringLiteral("%1 copy to: %2/%1").arg(toolFile, data));
    const qsizetype ffmpeg = run.logLines.indexOf(QStringLiteral("%1 copy to: %2/%1").arg(ffmpegFile, data));
    QVERIFY(tool >= 0);
    QVERIFY(ffmpeg > tool);
}

void TestFileSetup::secondRunCopiesNothing()
{
    SetupRun setup;
    setup.start();
    setup.app().addFile(toolFile, "tool v2, newer and larger");
    setup.app().addFile(ffmpegFile, "ffmpeg v2, newer and larger");
    const AppInstallation::Run second = setup.start();
    QCOMPARE(readFile(setup.sandbox().dataFolder() + QLatin1Char('/') + toolFile), QByteArray("tool v1"));
    QCOMPARE(readFile(setup.sandbox().dataFolder() + QLatin1Char('/') + ffmpegFile), QByteArray("ffmpeg v1"));
    QCOMPARE(second.logLinesContaining(QStringLiteral("copy to:")), QStringList());
}

void TestFileSetup::damagedCopyIsKept()
{
    SetupRun setup;
    writeFile(setup.sandbox().dataFolder() + QLatin1Char('/') + toolFile, QByteArray());
    writeFile(setup.sandbox().dataFolder() + QLatin1Char('/') + ffmpegFile, "\x00\x01garbage");
    const AppInstallation::Run run = setup.start();
    QCOMPARE(readFile(setup.sandbox().dataFolder() + QLatin1Char('/') + toolFile), QByteArray());
    QCOMPARE(readFile(setup.sandbox().dataFolder() + QLatin1Char('/') + ffmpegFile), QByteArray("\x00\x01garbage"));
    QCOMPARE(run.logLinesContaining(QStringLiteral("copy to:")), QStringList());
}

void TestFileSetup::missingToolIsReported()
{
    TestSandbox sandbox;
    AppInstallation app;
    app.addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("Updater"));
    app.addFile(ffmpegFile, "ffmpeg v1");
    const AppInstallation::Run run = app.run(sandbox, {}, {QStringLiteral("quit-on-check")});
    QVERIFY(run.finished);
    const QRegularExpression warning(QStringLiteral("^\\[\\d+\\] void checkAndSetupFiles\\(\\) : WARNING: No file in: \"%1\"$")
                                         .arg(QRegularExpression::escape(app.folder() + QLatin1Char('/') + toolFile)));
    QCOMPARE(run.logLines.filter(warning).size(), 1);
    QVERIFY(!QFile::exists(sandbox.dataFolder() + QLatin1Char('/') + toolFile));
    QVERIFY(QFile::exists(sandbox.dataFolder() + QLatin1Char('/') + ffmpegFile));
}

void TestFileSetup::firstRunWritesVersionKeys()
{
    SetupRun setup;
    QVERIFY(!QFile::exists(setup.sandbox().settingsFile()));
    setup.start();
    QSettings settings(setup.sandbox().settingsFile(), QSettings::IniFormat);
    QCOMPARE(settings.value(QStringLiteral("Version/Num")).toString(), QStringLiteral("2.0.023"));
    QCOMPARE(settings.value(QStringLiteral("Version/Date")).toString(), QStringLiteral("25.0826"));
}

void TestFileSetup::secondRunDoesNotRewriteSettings()
{
    SetupRun setup;
    setup.start();
    const QDateTime longAgo = QDateTime::currentDateTime().addDays(-30);
    {
        QFile settings(setup.sandbox().settingsFile());
        QVERIFY(settings.open(QIODevice::ReadWrite));
        QVERIFY(settings.setFileTime(longAgo, QFileDevice::FileModificationTime));
    }
    const QByteArray before = readFile(setup.sandbox().settingsFile());
    setup.start();
    QCOMPARE(readFile(setup.sandbox().settingsFile()), before);
    QCOMPARE(QFileInfo(setup.sandbox().settingsFile()).lastModified(), longAgo);
}

void TestFileSetup::changedVersionKeysAreRewritten()
{
    SetupRun setup;
    writeFile(setup.sandbox().settingsFile(), "[Version]\nNum=1.9.000\nDate=24.0101\n[Scale]\nVal=130\n");
    setup.start();
    QSettings settings(setup.sandbox().settingsFile(), QSettings::IniFormat);
    QCOMPARE(settings.value(QStringLiteral("Version/Num")).toString(), QStringLiteral("2.0.023"));
    QCOMPARE(settings.value(QStringLiteral("Version/Date")).toString(), QStringLiteral("25.0826"));
    QCOMPARE(settings.value(QStringLiteral("Scale/Val")).toInt(), 130);
}

void TestFileSetup::outputFolderIsCreated()
{
    SetupRun setup;
    const AppInstallation::Run run = setup.start();
    QVERIFY(QFileInfo(setup.downloads(QStringLiteral("KestrelD"))).isDir());
    QCOMPARE(run.logLinesContaining(QStringLiteral("OK: output dir")),
             QStringList{QStringLiteral("OK: output dir %1").arg(setup.downloads(QStringLiteral("KestrelD")))});
    const QRegularExpression entry(QStringLiteral("^--> \\[\\d+\\] void prepareOutputDir\\(\\) :$"));
    QCOMPARE(run.logLines.filter(entry).size(), 1);
}

void TestFileSetup::dataFolderIsTheUsersAlone()
{
#ifdef Q_OS_WIN
    QSKIP("the user's profile folders are private by their access lists");
#endif
    SetupRun setup;
    const QString data = setup.sandbox().dataFolder();
    QVERIFY(QDir().mkpath(data));
    QVERIFY(QFile::setPermissions(data, QFile::permissions(data) | QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther));
    setup.start();
    QCOMPARE(QFile::permissions(data) & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
             QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void TestFileSetup::installerIsRenamed_data()
{
    QTest::addColumn<QString>("extension");
    QTest::newRow("exe") << QStringLiteral("exe");
    QTest::newRow("msi") << QStringLiteral("msi");
}

void TestFileSetup::installerIsRenamed()
{
    QFETCH(QString, extension);
    SetupRun setup;
    const QString installer = setup.downloads(QStringLiteral("KestrelD.%1").arg(extension));
    const QString renamed = setup.downloads(QStringLiteral("KestrelD_Installer.%1").arg(extension));
    writeFile(installer, "installer");
    const AppInstallation::Run run = setup.start();
    QVERIFY(!QFile::exists(installer));
    QCOMPARE(readFile(renamed), QByteArray("installer"));
    const QRegularExpression line(QStringLiteral("^\\[\\d+\\] void prepareOutputDir\\(\\) : Renamed %1 to %2$")
                                      .arg(QRegularExpression::escape(installer), QRegularExpression::escape(renamed)));
    QCOMPARE(run.logLines.filter(line).size(), 1);
    QCOMPARE(run.logLinesContaining(QStringLiteral("OK: output dir")),
             QStringList{QStringLiteral("OK: output dir %1").arg(setup.downloads(QStringLiteral("KestrelD")))});
}

void TestFileSetup::installerIsDeletedWhenRenameFails()
{
    SetupRun setup;
    const QString installer = setup.downloads(QStringLiteral("KestrelD.exe"));
    const QString earlier = setup.downloads(QStringLiteral("KestrelD_Installer.exe"));
    writeFile(installer, "new installer");
    writeFile(earlier, "earlier installer");
    const AppInstallation::Run run = setup.start();
    QVERIFY(!QFile::exists(installer));
    QCOMPARE(readFile(earlier), QByteArray("earlier installer"));
    const QRegularExpression line(QStringLiteral("^\\[\\d+\\] void prepareOutputDir\\(\\) : !!! ERROR: Failed to rename \"%1\"$")
                                      .arg(QRegularExpression::escape(installer)));
    QCOMPARE(run.logLines.filter(line).size(), 1);
    QCOMPARE(run.logLinesContaining(QStringLiteral("Failed to remove")), QStringList());
    QCOMPARE(run.logLinesContaining(QStringLiteral("OK: output dir")),
             QStringList{QStringLiteral("OK: output dir %1").arg(setup.downloads(QStringLiteral("KestrelD")))});
}

void TestFileSetup::installerThatCannotGoSwitchesOutputFolder()
{
    SetupRun setup;
    // A folder in the installer's place can neither be renamed onto the
    // existing name nor removed as a file, even by an administrator.
    const QString installer = setup.downloads(QStringLiteral("KestrelD.exe"));
    QVERIFY(QDir().mkpath(installer + QStringLiteral("/content")));
    writeFile(setup.downloads(QStringLiteral("KestrelD_Installer.exe")), "earlier installer");
    const AppInstallation::Run run = setup.start();

    QVERIFY(QFileInfo(installer).isDir());
    const QRegularExpression removeFailed(QStringLiteral("^\\[\\d+\\] void prepareOutputDir\\(\\) : !!! ERROR: Failed to remove \"%1\"$")
                                              .arg(QRegularExpression::escape(installer)));
    QCOMPARE(run.logLines.filter(removeFailed).size(), 1);
    QCOMPARE(run.logLinesContaining(QStringLiteral("OK: output dir")),
             (QStringList{QStringLiteral("OK: output dir %1").arg(setup.downloads(QStringLiteral("KestrelD"))),
                          QStringLiteral("OK: output dir %1").arg(setup.downloads(QStringLiteral("KestrelDownload")))}));
    QVERIFY(QFileInfo(setup.downloads(QStringLiteral("KestrelDownload"))).isDir());
}

void TestFileSetup::bothExtensionsAreExamined()
{
    SetupRun setup;
    QVERIFY(QDir().mkpath(setup.downloads(QStringLiteral("KestrelD.exe"))));
    writeFile(setup.downloads(QStringLiteral("KestrelD_Installer.exe")), "earlier");
    writeFile(setup.downloads(QStringLiteral("KestrelD.msi")), "msi installer");
    const AppInstallation::Run run = setup.start();
    QCOMPARE(readFile(setup.downloads(QStringLiteral("KestrelD_Installer.msi"))), QByteArray("msi installer"));
    QVERIFY(!QFile::exists(setup.downloads(QStringLiteral("KestrelD.msi"))));
    QCOMPARE(run.logLinesContaining(QStringLiteral(" : Renamed ")).size(), 1);
    QCOMPARE(run.logLinesContaining(QStringLiteral("OK: output dir")).last(),
             QStringLiteral("OK: output dir %1").arg(setup.downloads(QStringLiteral("KestrelDownload"))));
}

void TestFileSetup::noInstallerLogsNothing()
{
    SetupRun setup;
    const AppInstallation::Run run = setup.start();
    QCOMPARE(run.logLinesContaining(QStringLiteral("Renamed")), QStringList());
    QCOMPARE(run.logLinesContaining(QStringLiteral("!!! ERROR:")), QStringList());
}

KESTREL_TEST_MAIN(TestFileSetup)
#include "tst_filesetup.moc"
