#include "plugins/logginginterface.h"

#include "logcapture.h"
#include "testsandbox.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPluginLoader>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>
#include <vector>

namespace {

const QString logFileName = QStringLiteral("kestrel-downloader.log");
const QString settingsFileName = QStringLiteral("settings.ini");

// "2025-08-26T14:03:12.345 [warning] text"
const QRegularExpression linePattern(
    QStringLiteral(R"(^(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}) (\[(?:debug|info|warning|critical|fatal)\] .*)$)"));

QStringList fileLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString text = QString::fromUtf8(file.readAll());
    if (text.isEmpty())
        return {};
    QStringList lines = text.split(QLatin1Char('\n'));
    // A whole file ends with a line break, which leaves one empty piece.
    if (lines.last().isEmpty())
        lines.removeLast();
    else
        lines.last().prepend(QStringLiteral("UNTERMINATED: "));
    return lines;
}

// The lines without their time stamps; a line of another shape comes back
// marked, so that no comparison with expected lines can pass.
QStringList withoutTimes(const QStringList &lines)
{
    QStringList result;
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = linePattern.match(line);
        result << (match.hasMatch() ? match.captured(2) : QStringLiteral("MALFORMED: ") + line);
    }
    return result;
}

void emitMessage(QtMsgType type, const QString &text)
{
    switch (type) {
    case QtDebugMsg:
        qDebug().noquote() << text;
        break;
    case QtInfoMsg:
        qInfo().noquote() << text;
        break;
    case QtWarningMsg:
        qWarning().noquote() << text;
        break;
    case QtCriticalMsg:
        qCritical().noquote() << text;
        break;
    case QtFatalMsg:
        QFAIL("a fatal message would end the test");
    }
}

// A handler of the test's own, so that the test can tell whether it is the
// one installed.
QList<QString> outerMessages;
void outerHandler(QtMsgType, const QMessageLogContext &, const QString &text)
{
    outerMessages << text;
}

} // namespace

class TestLoggingMessagesPlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    // First on purpose: the plug-in has not been set up yet.
    void shutDownBeforeSetUpChangesNothing();

    void init();
    void cleanup();

    void linesCarryTimeLevelAndText_data();
    void linesCarryTimeLevelAndText();
    void messagesStillReachThePreviousHandler();
    void shutDownRestoresThePreviousHandler();
    void shutDownTwiceIsHarmless();
    void logFileOfAnEarlierRunIsContinued();
    void storedStateDecidesLogging_data();
    void storedStateDecidesLogging();
    void switchingOffStopsWritesAtOnceAndIsRemembered();
    void switchingOffKeepsOtherSettings();
    void fileIsRotatedToOneBackup();
    void earlierContentCountsTowardsTheCap();
    void linesFromSeveralThreadsStayWhole();
    void unwritableFolderKeepsMessagesFlowing();
    void fatalMessageIsInTheFileBeforeTheEnd();

private:
    QString logPath() const { return m_folder->filePath(logFileName); }
    QString settingsPath() const { return m_folder->filePath(settingsFileName); }
    void setUp() { m_logging->setUp(m_folder->path(), settingsFileName); }

    QPluginLoader m_loader{QStringLiteral(LOGGING_PLUGIN_PATH)};
    LoggingInterface *m_logging = nullptr;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<LogCapture> m_capture;
};

void TestLoggingMessagesPlugin::initTestCase()
{
    QObject *root = m_loader.instance();
    QVERIFY2(root, qPrintable(m_loader.errorString()));
    QCOMPARE(m_loader.metaData().value(QLatin1String("IID")).toString(), QStringLiteral("me.brisant.LoggingInterface"));
    m_logging = qobject_cast<LoggingInterface *>(root);
    QVERIFY(m_logging);
}

void TestLoggingMessagesPlugin::shutDownBeforeSetUpChangesNothing()
{
    const QtMessageHandler before = qInstallMessageHandler(outerHandler);
    m_logging->shutDown();
    m_logging->shutDown();
    const QtMessageHandler current = qInstallMessageHandler(before);
    QVERIFY2(current == outerHandler, "another handler is installed");
}

void TestLoggingMessagesPlugin::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_capture = std::make_unique<LogCapture>();
}

void TestLoggingMessagesPlugin::cleanup()
{
    m_logging->shutDown();
    m_capture.reset();
    m_folder.reset();
}

void TestLoggingMessagesPlugin::linesCarryTimeLevelAndText_data()
{
    QTest::addColumn<QtMsgType>("type");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("debug") << QtDebugMsg << QStringLiteral("--> [21] void prepareOutputDir() :")
                           << QStringList{QStringLiteral("[debug] --> [21] void prepareOutputDir() :")};
    QTest::newRow("info") << QtInfoMsg << QStringLiteral("[58] int qMain(int, char**) : DONE: 0")
                          << QStringList{QStringLiteral("[info] [58] int qMain(int, char**) : DONE: 0")};
    QTest::newRow("warning") << QtWarningMsg << QStringLiteral("WARNING: No file in: \"/x\"")
                             << QStringList{QStringLiteral("[warning] WARNING: No file in: \"/x\"")};
    QTest::newRow("critical") << QtCriticalMsg << QStringLiteral("[35] void prepareOutputDir() : !!! ERROR: output dir \"/x\"")
                              << QStringList{QStringLiteral("[critical] [35] void prepareOutputDir() : !!! ERROR: output dir \"/x\"")};
    QTest::newRow("non-ASCII") << QtDebugMsg << QStringLiteral("OK: output dir /home/jörg/Загрузки ✓")
                               << QStringList{QStringLiteral("[debug] OK: output dir /home/jörg/Загрузки ✓")};
    QTest::newRow("empty") << QtDebugMsg << QString() << QStringList{QStringLiteral("[debug] ")};
    QTest::newRow("several lines") << QtWarningMsg << QStringLiteral("first\nsecond")
                                   << QStringList{QStringLiteral("[warning] first"), QStringLiteral("[warning] second")};
    QTest::newRow("trailing line break") << QtInfoMsg << QStringLiteral("DONE: 0 \n")
                                         << QStringList{QStringLiteral("[info] DONE: 0 ")};
}

void TestLoggingMessagesPlugin::linesCarryTimeLevelAndText()
{
    QFETCH(QtMsgType, type);
    QFETCH(QString, message);
    QFETCH(QStringList, expected);

    setUp();
    const QDateTime before = QDateTime::currentDateTime();
    emitMessage(type, message);
    const QDateTime after = QDateTime::currentDateTime();

    const QStringList lines = fileLines(logPath());
    QCOMPARE(withoutTimes(lines), expected);
    for (const QString &line : lines) {
        const QDateTime stamp = QDateTime::fromString(linePattern.match(line).captured(1), Qt::ISODateWithMs);
        QVERIFY2(stamp.isValid(), qPrintable(line));
        QVERIFY2(stamp >= before.addMSecs(-1) && stamp <= after, qPrintable(line));
    }
}

void TestLoggingMessagesPlugin::messagesStillReachThePreviousHandler()
{
    setUp();
    qDebug().noquote() << "one";
    qInfo().noquote() << "two";
    qWarning().noquote() << "three";
    qCritical().noquote() << "four";

    const QList<LogCapture::Line> seen = m_capture->lines();
    QCOMPARE(seen.size(), 4);
    QCOMPARE(m_capture->texts(), (QStringList{QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three"), QStringLiteral("four")}));
    QCOMPARE(seen.at(0).type, QtDebugMsg);
    QCOMPARE(seen.at(1).type, QtInfoMsg);
    QCOMPARE(seen.at(2).type, QtWarningMsg);
    QCOMPARE(seen.at(3).type, QtCriticalMsg);
    QCOMPARE(withoutTimes(fileLines(logPath())), (QStringList{QStringLiteral("[debug] one"), QStringLiteral("[info] two"),
                                                              QStringLiteral("[warning] three"), QStringLiteral("[critical] four")}));
}

void TestLoggingMessagesPlugin::shutDownRestoresThePreviousHandler()
{
    const QtMessageHandler before = qInstallMessageHandler(outerHandler);
    outerMessages.clear();
    setUp();
    qDebug().noquote() << "while set up";
    m_logging->shutDown();
    qDebug().noquote() << "after shut-down";
    const QtMessageHandler current = qInstallMessageHandler(before);

    QVERIFY2(current == outerHandler, "another handler is installed");
    QCOMPARE(outerMessages, (QStringList{QStringLiteral("while set up"), QStringLiteral("after shut-down")}));
    QCOMPARE(withoutTimes(fileLines(logPath())), QStringList{QStringLiteral("[debug] while set up")});
}

void TestLoggingMessagesPlugin::shutDownTwiceIsHarmless()
{
    setUp();
    m_logging->shutDown();
    const QtMessageHandler before = qInstallMessageHandler(outerHandler);
    m_logging->shutDown();
    const QtMessageHandler current = qInstallMessageHandler(before);
    QVERIFY2(current == outerHandler, "another handler is installed");

    // And it can be set up again afterwards.
    setUp();
    qInfo().noquote() << "again";
    QCOMPARE(withoutTimes(fileLines(logPath())), QStringList{QStringLiteral("[info] again")});
}

void TestLoggingMessagesPlugin::logFileOfAnEarlierRunIsContinued()
{
    setUp();
    qInfo().noquote() << "first run";
    m_logging->shutDown();
    setUp();
    qInfo().noquote() << "second run";
    QCOMPARE(withoutTimes(fileLines(logPath())), (QStringList{QStringLiteral("[info] first run"), QStringLiteral("[info] second run")}));
}

void TestLoggingMessagesPlugin::storedStateDecidesLogging_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("expectedOn");

    QTest::newRow("nothing stored") << QVariant() << true;
    QTest::newRow("stored on") << QVariant(true) << true;
    QTest::newRow("stored off") << QVariant(false) << false;
}

void TestLoggingMessagesPlugin::storedStateDecidesLogging()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, expectedOn);

    if (stored.isValid()) {
        QSettings settings(settingsPath(), QSettings::IniFormat);
        settings.setValue(QStringLiteral("Logging/Enabled"), stored);
    }
    setUp();
    QCOMPARE(m_logging->isEnabled(), expectedOn);
    qInfo().noquote() << "a line";
    QCOMPARE(withoutTimes(fileLines(logPath())), expectedOn ? QStringList{QStringLiteral("[info] a line")} : QStringList());
    QCOMPARE(m_capture->texts(), QStringList{QStringLiteral("a line")});
}

void TestLoggingMessagesPlugin::switchingOffStopsWritesAtOnceAndIsRemembered()
{
    setUp();
    qDebug().noquote() << "before";
    m_logging->setEnabled(false);
    QCOMPARE(m_logging->isEnabled(), false);
    QCOMPARE(QSettings(settingsPath(), QSettings::IniFormat).value(QStringLiteral("Logging/Enabled")).toString(), QStringLiteral("false"));
    qDebug().noquote() << "while off";

    m_logging->shutDown();
    setUp();
    QCOMPARE(m_logging->isEnabled(), false);
    qDebug().noquote() << "after a restart";

    m_logging->setEnabled(true);
    QCOMPARE(m_logging->isEnabled(), true);
    QCOMPARE(QSettings(settingsPath(), QSettings::IniFormat).value(QStringLiteral("Logging/Enabled")).toString(), QStringLiteral("true"));
    qDebug().noquote() << "on again";

    QCOMPARE(withoutTimes(fileLines(logPath())), (QStringList{QStringLiteral("[debug] before"), QStringLiteral("[debug] on again")}));
    QCOMPARE(m_capture->texts(), (QStringList{QStringLiteral("before"), QStringLiteral("while off"),
                                              QStringLiteral("after a restart"), QStringLiteral("on again")}));
}

void TestLoggingMessagesPlugin::switchingOffKeepsOtherSettings()
{
    {
        QSettings settings(settingsPath(), QSettings::IniFormat);
        settings.setValue(QStringLiteral("Version/Num"), QStringLiteral("2.0.023"));
        settings.setValue(QStringLiteral("Scale/Val"), 125);
    }
    setUp();
    m_logging->setEnabled(false);

    const QSettings settings(settingsPath(), QSettings::IniFormat);
    QCOMPARE(settings.value(QStringLiteral("Version/Num")).toString(), QStringLiteral("2.0.023"));
    QCOMPARE(settings.value(QStringLiteral("Scale/Val")).toInt(), 125);
    QCOMPARE(settings.value(QStringLiteral("Logging/Enabled")).toBool(), false);
}

void TestLoggingMessagesPlugin::fileIsRotatedToOneBackup()
{
    const qint64 cap = 2000;
    QSettings(settingsPath(), QSettings::IniFormat).setValue(QStringLiteral("Logging/MaxBytes"), cap);
    setUp();

    // About 70 bytes a line: some ten rotations in all.
    const int count = 300;
    for (int i = 0; i < count; ++i)
        qDebug().noquote() << QStringLiteral("rotation line %1 ").arg(i, 3, 10, QLatin1Char('0')) + QString(20, QLatin1Char('.'));

    QDir folder(m_folder->path());
    QCOMPARE(folder.entryList(QDir::Files, QDir::Name),
             (QStringList{logFileName, logFileName + QStringLiteral(".1"), settingsFileName}));

    const QString backupPath = logPath() + QStringLiteral(".1");
    const qint64 lineLength = fileLines(logPath()).first().toUtf8().size() + 1;
    QVERIFY(QFileInfo(logPath()).size() <= cap);
    QVERIFY(QFileInfo(backupPath).size() <= cap);
    // The backup was only rotated away when the next line no longer fitted.
    QVERIFY(QFileInfo(backupPath).size() > cap - lineLength);

    // Backup and current file hold the last lines, in order and without a gap.
    const QStringList lines = withoutTimes(fileLines(backupPath) + fileLines(logPath()));
    QVERIFY(lines.size() > 30);
    const int first = count - int(lines.size());
    for (int i = 0; i < lines.size(); ++i) {
        QCOMPARE(lines.at(i), QStringLiteral("[debug] rotation line %1 ").arg(first + i, 3, 10, QLatin1Char('0'))
                                  + QString(20, QLatin1Char('.')));
    }
}

void TestLoggingMessagesPlugin::earlierContentCountsTowardsTheCap()
{
    QSettings(settingsPath(), QSettings::IniFormat).setValue(QStringLiteral("Logging/MaxBytes"), 1000);
    const QByteArray earlier = QByteArray(949, 'e') + '\n';
    {
        QFile file(logPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(earlier);
    }
    {
        QFile file(logPath() + QStringLiteral(".1"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("the oldest lines\n");
    }
    setUp();
    qDebug().noquote() << "short";
    // 950 + about 40 bytes still fit, another 60 do not.
    QCOMPARE(fileLines(logPath()).size(), 2);
    qDebug().noquote() << QString(60, QLatin1Char('n'));

    QFile backup(logPath() + QStringLiteral(".1"));
    QVERIFY(backup.open(QIODevice::ReadOnly));
    QVERIFY(backup.readAll().startsWith(earlier));
    QCOMPARE(withoutTimes(fileLines(logPath())), QStringList{QStringLiteral("[debug] ") + QString(60, QLatin1Char('n'))});
}

void TestLoggingMessagesPlugin::linesFromSeveralThreadsStayWhole()
{
    setUp();
    const int workers = 4;
    const int linesEach = 500;
    const QString filler(150, QLatin1Char('x'));

    std::vector<std::unique_ptr<QThread>> threads;
    for (int worker = 0; worker < workers; ++worker) {
        threads.emplace_back(QThread::create([worker, linesEach, filler] {
            for (int i = 0; i < linesEach; ++i)
                qDebug().noquote() << QStringLiteral("worker %1 line %2 %3").arg(worker).arg(i).arg(filler);
        }));
    }
    for (const auto &thread : threads)
        thread->start();
    for (const auto &thread : threads)
        QVERIFY(thread->wait(60000));

    const QRegularExpression workerLine(QStringLiteral(R"(^\[debug\] worker (\d) line (\d+) x{150}$)"));
    const QStringList lines = withoutTimes(fileLines(logPath()));
    QCOMPARE(lines.size(), workers * linesEach);
    QList<int> nextLine(workers, 0);
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = workerLine.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        const int worker = match.captured(1).toInt();
        // Each worker's lines arrive whole, once and in its own order.
        QCOMPARE(match.captured(2).toInt(), nextLine[worker]);
        ++nextLine[worker];
    }
    QCOMPARE(m_capture->texts().size(), workers * linesEach);
}

void TestLoggingMessagesPlugin::unwritableFolderKeepsMessagesFlowing()
{
    // Not even root can create a folder below a regular file.
    const QString blocker = m_folder->filePath(QStringLiteral("afile"));
    {
        QFile file(blocker);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("not a folder\n");
    }
    const QString folder = blocker + QStringLiteral("/sub");

    m_logging->setUp(folder, settingsFileName);
    QCOMPARE(m_capture->lines().size(), 1);
    QCOMPARE(m_capture->lines().first().type, QtWarningMsg);
    QCOMPARE(m_capture->texts().first(), QStringLiteral("LoggingMessages: no log file: cannot create the folder \"%1\"").arg(QDir::toNativeSeparators(folder)));
    m_capture->clear();

    QCOMPARE(m_logging->isEnabled(), true);
    qWarning().noquote() << "still heard";
    m_logging->setEnabled(false);
    QCOMPARE(m_logging->isEnabled(), false);
    qInfo().noquote() << "heard while off";
    m_logging->setEnabled(true);
    m_logging->shutDown();
    m_logging->shutDown();

    QCOMPARE(m_capture->texts(), (QStringList{QStringLiteral("still heard"), QStringLiteral("heard while off"),
                                              QStringLiteral("LoggingMessages: no log file: cannot create the folder \"%1\"").arg(QDir::toNativeSeparators(folder))}));
    QVERIFY(QFileInfo(blocker).isFile());
    QCOMPARE(QFileInfo(blocker).size(), qint64(13));
}

void TestLoggingMessagesPlugin::fatalMessageIsInTheFileBeforeTheEnd()
{
    QProcess child;
    child.setWorkingDirectory(m_folder->path());
    // The paths are made absolute here: under Wine they have no drive, and
    // the child's working folder lies on another drive than the build.
#ifdef Q_OS_WIN
    // Qt's default handler writes to the debugger, not to a standard error
    // that is no console, unless told otherwise.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    child.setProcessEnvironment(environment);
#endif
    child.start(QFileInfo(QStringLiteral(LOGGING_FATAL_CHILD_PATH)).absoluteFilePath(),
                {QFileInfo(QStringLiteral(LOGGING_PLUGIN_PATH)).absoluteFilePath(), m_folder->path()});
    QVERIFY(child.waitForFinished(30000));
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);

    QCOMPARE(withoutTimes(fileLines(logPath())), QStringList{QStringLiteral("[fatal] cannot go on: disk on fire")});
    // The default handler still printed it.
    QVERIFY2(child.readAllStandardError().contains("cannot go on: disk on fire"), "not on the terminal");
}

KESTREL_TEST_MAIN(TestLoggingMessagesPlugin)
#include "tst_loggingmessagesplugin.moc"
