#include "base/settings.h"

#include "testsandbox.h"

#include <QApplication>
#include <QFileInfo>
#include <QSettings>
#include <QTest>

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void fileLiesInTheLocalDataFolder();
    void openCreatesTheFolder();
    void writeIfChangedWritesNewValue();
    void writeIfChangedSkipsEqualValue();
    void writeIfChangedComparesCaseSensitively();
    void keysLandInGroupSections();
};

void TestSettings::fileLiesInTheLocalDataFolder()
{
#ifdef Q_OS_WIN
    // The local, not the roaming, application data folder.
    QCOMPARE(Settings::folder() + QStringLiteral("/settings.ini"), TestSandbox().settingsFile());
#else
    const QString home = qEnvironmentVariable("HOME");
    QCOMPARE(Settings::folder(), home + QStringLiteral("/.local/share/Halvard Software/Kestrel Downloader"));
#endif
    QCOMPARE(Settings::fileName(), QStringLiteral("settings.ini"));
}

void TestSettings::openCreatesTheFolder()
{
    QVERIFY(!QFileInfo::exists(Settings::folder()));
    auto settings = Settings::open();
    QVERIFY(QFileInfo(Settings::folder()).isDir());
    QCOMPARE(settings->fileName(), Settings::folder() + QStringLiteral("/settings.ini"));
    QCOMPARE(settings->format(), QSettings::IniFormat);
}

void TestSettings::writeIfChangedWritesNewValue()
{
    auto settings = Settings::open();
    settings->remove(QStringLiteral("Version"));
    QVERIFY(Settings::writeIfChanged(*settings, Settings::versionNumberKey(), QStringLiteral("2.0.023")));
    QCOMPARE(settings->value(QStringLiteral("Version/Num")).toString(), QStringLiteral("2.0.023"));
}

void TestSettings::writeIfChangedSkipsEqualValue()
{
    auto settings = Settings::open();
    settings->setValue(QStringLiteral("Version/Date"), QStringLiteral("25.0826"));
    QVERIFY(!Settings::writeIfChanged(*settings, Settings::versionDateKey(), QStringLiteral("25.0826")));
}

void TestSettings::writeIfChangedComparesCaseSensitively()
{
    auto settings = Settings::open();
    settings->setValue(QStringLiteral("Version/Num"), QStringLiteral("beta"));
    QVERIFY(Settings::writeIfChanged(*settings, Settings::versionNumberKey(), QStringLiteral("BETA")));
    QCOMPARE(settings->value(QStringLiteral("Version/Num")).toString(), QStringLiteral("BETA"));
}

void TestSettings::keysLandInGroupSections()
{
    {
        auto settings = Settings::open();
        settings->clear();
        Settings::writeIfChanged(*settings, Settings::versionNumberKey(), QStringLiteral("2.0.023"));
        settings->setValue(Settings::scaleKey(), 130);
    }
    QFile file(Settings::folder() + QStringLiteral("/settings.ini"));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QString text = QString::fromUtf8(file.readAll());
    QVERIFY2(text.contains(QStringLiteral("[Version]\nNum=2.0.023")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("[Scale]\nVal=130")), qPrintable(text));
}

KESTREL_TEST_MAIN(TestSettings)
#include "tst_settings.moc"
