#include "app/log.h"

#include "logcapture.h"
#include "testsandbox.h"

#include <QApplication>
#include <QTest>

class TestLog : public QObject
{
    Q_OBJECT

private slots:
    void locationHasLineAndSignature();
    void entryTraceIsUnquoted();
    void entryTraceTakesDetails();
    void successLineShowsValueBare();
    void successLineKeepsEmptyValue();
    void errorLineQuotesStrings();
    void errorLineKeepsEmptyValue();
    void warningLineQuotesStrings();
    void warningWithoutLocation();
    void informationLineIsUnquoted();
};

void TestLog::locationHasLineAndSignature()
{
    QCOMPARE(Log::location("void prepareOutputDir()", 21), QStringLiteral("[21] void prepareOutputDir() :"));
    QCOMPARE(Log::location("int qMain(int, char**)", 7), QStringLiteral("[7] int qMain(int, char**) :"));
}

void TestLog::entryTraceIsUnquoted()
{
    LogCapture log;
    LOG_ENTRY("void Navigation::showMainWindow()");
    const int line = __LINE__ - 1;
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(log.lines().first().type, QtDebugMsg);
    QCOMPARE(log.texts().first(), QStringLiteral("--> [%1] void Navigation::showMainWindow() :").arg(line));
}

void TestLog::entryTraceTakesDetails()
{
    LogCapture log;
    LOG_ENTRY("void KestrelDownloader::requestVideo(uint)") << "ID:" << 137u;
    const int line = __LINE__ - 1;
    QCOMPARE(log.texts(), QStringList{QStringLiteral("--> [%1] void KestrelDownloader::requestVideo(uint) : ID: 137").arg(line)});
}

void TestLog::successLineShowsValueBare()
{
    LogCapture log;
    Log::ok("output dir", QStringLiteral("/home/me/Downloads/KestrelD"));
    QCOMPARE(log.lines().first().type, QtDebugMsg);
    QCOMPARE(log.texts(), QStringList{QStringLiteral("OK: output dir /home/me/Downloads/KestrelD")});
}

void TestLog::successLineKeepsEmptyValue()
{
    LogCapture log;
    Log::ok("data dir", QString());
    QCOMPARE(log.texts(), QStringList{QStringLiteral("OK: data dir ")});
}

void TestLog::errorLineQuotesStrings()
{
    LogCapture log;
    LOG_ERROR("void prepareOutputDir()") << "output dir" << QStringLiteral("/no/such");
    const int line = __LINE__ - 1;
    QCOMPARE(log.lines().first().type, QtCriticalMsg);
    QCOMPARE(log.texts(), QStringList{QStringLiteral("[%1] void prepareOutputDir() : !!! ERROR: output dir \"/no/such\"").arg(line)});
}

void TestLog::errorLineKeepsEmptyValue()
{
    LogCapture log;
    LOG_ERROR("void prepareOutputDir()") << "Failed to rename" << QString();
    const int line = __LINE__ - 1;
    QCOMPARE(log.texts(), QStringList{QStringLiteral("[%1] void prepareOutputDir() : !!! ERROR: Failed to rename \"\"").arg(line)});
}

void TestLog::warningLineQuotesStrings()
{
    LogCapture log;
    LOG_WARNING("void checkAndSetupFiles()") << "No file in:" << QStringLiteral("/opt/kestreldl2");
    const int line = __LINE__ - 1;
    QCOMPARE(log.lines().first().type, QtWarningMsg);
    QCOMPARE(log.texts(), QStringList{QStringLiteral("[%1] void checkAndSetupFiles() : WARNING: No file in: \"/opt/kestreldl2\"").arg(line)});
}

void TestLog::warningWithoutLocation()
{
    LogCapture log;
    Log::warning() << "Not a YouTube URL";
    QCOMPARE(log.lines().first().type, QtWarningMsg);
    QCOMPARE(log.texts(), QStringList{QStringLiteral("WARNING: Not a YouTube URL")});
}

void TestLog::informationLineIsUnquoted()
{
    LogCapture log;
    LOG_INFO("void prepareOutputDir()") << "Renamed" << QStringLiteral("/d/KestrelD.exe") << "to" << QStringLiteral("/d/KestrelD_Installer.exe");
    const int line = __LINE__ - 1;
    QCOMPARE(log.lines().first().type, QtInfoMsg);
    QCOMPARE(log.texts(), QStringList{QStringLiteral("[%1] void prepareOutputDir() : Renamed /d/KestrelD.exe to /d/KestrelD_Installer.exe").arg(line)});
}

KESTREL_TEST_MAIN(TestLog)
#include "tst_log.moc"
