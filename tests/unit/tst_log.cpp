#include "base/log.h"

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
    void checkedTextIsTheEnclosingFunction();
    void namesFunctionComparesWithTheCompilersName_data();
    void namesFunctionComparesWithTheCompilersName();
};

void TestLog::locationHasLineAndSignature()
{
    QCOMPARE(Log::location("void prepareOutputDir()", 21), QStringLiteral("[21] void prepareOutputDir() :"));
    QCOMPARE(Log::location("int qMain(int, char**)", 7), QStringLiteral("[7] int qMain(int, char**) :"));
}

void TestLog::entryTraceIsUnquoted()
{
    LogCapture log;
    LOG_ENTRY_AS("void Navigation::showMainWindow()");
    const int line = __LINE__ - 1;
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(log.lines().first().type, QtDebugMsg);
    QCOMPARE(log.texts().first(), QStringLiteral("--> [%1] void Navigation::showMainWindow() :").arg(line));
}

void TestLog::entryTraceTakesDetails()
{
    LogCapture log;
    LOG_ENTRY_AS("void KestrelDownloader::requestVideo(uint)") << "ID:" << 137u;
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
    LOG_ERROR_AS("void prepareOutputDir()") << "output dir" << QStringLiteral("/no/such");
    const int line = __LINE__ - 1;
    QCOMPARE(log.lines().first().type, QtCriticalMsg);
    QCOMPARE(log.texts(), QStringList{QStringLiteral("[%1] void prepareOutputDir() : !!! ERROR: output dir \"/no/such\"").arg(line)});
}

void TestLog::errorLineKeepsEmptyValue()
{
    LogCapture log;
    LOG_ERROR_AS("void prepareOutputDir()") << "Failed to rename" << QString();
    const int line = __LINE__ - 1;
    QCOMPARE(log.texts(), QStringList{QStringLiteral("[%1] void prepareOutputDir() : !!! ERROR: Failed to rename \"\"").arg(line)});
}

void TestLog::warningLineQuotesStrings()
{
    LogCapture log;
    LOG_WARNING_AS("void checkAndSetupFiles()") << "No file in:" << QStringLiteral("/opt/kestreldl2");
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
    Log::info("void prepareOutputDir()", __LINE__) << "Renamed" << QStringLiteral("/d/KestrelD.exe") << "to" << QStringLiteral("/d/KestrelD_Installer.exe");
    const int line = __LINE__ - 1;
    QCOMPARE(log.lines().first().type, QtInfoMsg);
    QCOMPARE(log.texts(), QStringList{QStringLiteral("[%1] void prepareOutputDir() : Renamed /d/KestrelD.exe to /d/KestrelD_Installer.exe").arg(line)});
}

void TestLog::checkedTextIsTheEnclosingFunction()
{
    // Compiles only because the text is this function's own name.
    QCOMPARE(LOG_LOCATION("void TestLog::checkedTextIsTheEnclosingFunction()"),
             QStringLiteral("[%1] void TestLog::checkedTextIsTheEnclosingFunction() :").arg(__LINE__ - 1));
}

void TestLog::namesFunctionComparesWithTheCompilersName_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QByteArray>("compilerName");
    QTest::addColumn<bool>("names");

    QTest::newRow("the same") << QByteArray("void Navigation::showMainWindow()")
                              << QByteArray("void Navigation::showMainWindow()") << true;
    QTest::newRow("spaces differ") << QByteArray("int qMain(int, char**)") << QByteArray("int qMain(int, char **)")
                                   << true;
    QTest::newRow("anonymous namespace left out")
        << QByteArray("void prepareOutputDir()") << QByteArray("void {anonymous}::prepareOutputDir()") << true;
    QTest::newRow("a lambda") << QByteArray("KestrelDownloader::requestFormats()::<lambda(int, QProcess::ExitStatus)>")
                              << QByteArray("KestrelDownloader::requestFormats()::<lambda(int, QProcess::ExitStatus)>")
                              << true;
    QTest::newRow("a typo") << QByteArray("void Navigation::showMainWindo()")
                            << QByteArray("void Navigation::showMainWindow()") << false;
    QTest::newRow("parameters differ") << QByteArray("void checkAndSetupFiles()")
                                       << QByteArray("void checkAndSetupFiles(VideoInfo&)") << false;
    QTest::newRow("class left out") << QByteArray("void showMainWindow()")
                                    << QByteArray("void Navigation::showMainWindow()") << false;
    QTest::newRow("longer than the name") << QByteArray("void f() const") << QByteArray("void f()") << false;
    QTest::newRow("shorter than the name") << QByteArray("void f") << QByteArray("void f()") << false;
}

void TestLog::namesFunctionComparesWithTheCompilersName()
{
    QFETCH(QByteArray, written);
    QFETCH(QByteArray, compilerName);
    QFETCH(bool, names);
    QCOMPARE(Log::namesFunction(written.constData(), compilerName.constData()), names);
}

KESTREL_TEST_MAIN(TestLog)
#include "tst_log.moc"
