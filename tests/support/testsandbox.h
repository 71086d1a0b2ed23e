#pragma once

#include <QString>
#include <QTemporaryDir>

// A private HOME with its own XDG folders for one test process or one child
// process, so that no test ever touches the real user's folders. On Windows
// it names the user folders of the throw-away Wine prefix the test runs in,
// which every sandbox of that run shares: there a sandbox empties the
// application's folders when it is made and when it ends, so only one
// sandbox at a time may hold files (testsandbox.cpp).
class TestSandbox
{
public:
    TestSandbox();
    ~TestSandbox();
    TestSandbox(const TestSandbox &) = delete;
    TestSandbox &operator=(const TestSandbox &) = delete;

    QString home() const;
    QString dataFolder() const;      // the application's per-user data folder: tool copies
    QString localDataFolder() const; // the per-machine one: settings.ini and the log
    QString settingsFile() const;    // settings.ini in the local data folder
    QString downloadFolder() const;  // the user's download folder

    // Points HOME and the XDG variables of this process at the sandbox.
    void applyToThisProcess() const;

    // The same variables for a child process.
    QStringList environment() const;

private:
#ifndef Q_OS_WIN
    QTemporaryDir m_root;
#endif
};

// Replaces QTEST_MAIN: the sandbox exists before the application object, so
// every standard location of the test process lies inside it.
#define KESTREL_TEST_MAIN(TestClass)                                           \
    int main(int argc, char **argv)                                            \
    {                                                                          \
        TestSandbox sandbox;                                                   \
        sandbox.applyToThisProcess();                                          \
        QCoreApplication::setApplicationName(QStringLiteral("Kestrel Downloader")); \
        QCoreApplication::setOrganizationName(QStringLiteral("Halvard Software")); \
        QApplication app(argc, argv);                                          \
        TestClass test;                                                        \
        QTEST_SET_MAIN_SOURCE_PATH                                             \
        return QTest::qExec(&test, argc, argv);                                \
    }
