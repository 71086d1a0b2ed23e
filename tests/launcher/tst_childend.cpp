// How the launcher names the end of a child process, from the wait status
// the system reports.

#include "childend.h"

#include <QTest>

#include <csignal>
#include <string>
#include <sys/wait.h>

using Launcher::ChildEnd;

class TestChildEnd : public QObject
{
    Q_OBJECT

private slots:
    void waitStatusIsNamed_data();
    void waitStatusIsNamed();
    void madeEndsAnswerAlike();
};

void TestChildEnd::waitStatusIsNamed_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<int>("signal");
    QTest::addColumn<bool>("failure");
    QTest::addColumn<bool>("crashed");
    QTest::addColumn<QString>("description");

    // exitCode -1 and signal 0: not that kind of end.
    QTest::newRow("success") << W_EXITCODE(0, 0) << 0 << 0 << false << false << QStringLiteral("exit code 0");
    QTest::newRow("usage error") << W_EXITCODE(2, 0) << 2 << 0 << true << false << QStringLiteral("exit code 2");
    QTest::newRow("highest code") << W_EXITCODE(255, 0) << 255 << 0 << true << false << QStringLiteral("exit code 255");
    QTest::newRow("segmentation fault") << W_EXITCODE(0, SIGSEGV) << -1 << int(SIGSEGV) << false << true
                                        << QStringLiteral("ended by signal 11");
    QTest::newRow("abort") << W_EXITCODE(0, SIGABRT) << -1 << int(SIGABRT) << false << true
                           << QStringLiteral("ended by signal 6");
    QTest::newRow("abort with a core file") << (W_EXITCODE(0, SIGABRT) | WCOREFLAG) << -1 << int(SIGABRT) << false
                                            << true << QStringLiteral("ended by signal 6");
    QTest::newRow("killed") << W_EXITCODE(0, SIGKILL) << -1 << int(SIGKILL) << false << false
                            << QStringLiteral("ended by signal 9");
    QTest::newRow("told to stop") << W_EXITCODE(0, SIGTERM) << -1 << int(SIGTERM) << false << false
                                  << QStringLiteral("ended by signal 15");
}

void TestChildEnd::waitStatusIsNamed()
{
    QFETCH(int, status);
    QFETCH(int, exitCode);
    QFETCH(int, signal);
    QFETCH(bool, failure);
    QFETCH(bool, crashed);
    QFETCH(QString, description);

    const ChildEnd end = ChildEnd::fromSystemStatus(status);
    QCOMPARE(end.exitCode().value_or(-1), exitCode);
    QCOMPARE(end.signal().value_or(0), signal);
    QCOMPARE(end.exitedWith(exitCode), exitCode >= 0);
    QVERIFY(!end.exitedWith(exitCode + 1));
    QCOMPARE(end.exitedWithFailure(), failure);
    QCOMPARE(end.crashed(), crashed);
    QCOMPARE(QString::fromStdString(end.describe()), description);
}

void TestChildEnd::madeEndsAnswerAlike()
{
    QCOMPARE(ChildEnd::exitedWithCode(3).describe(), ChildEnd::fromSystemStatus(W_EXITCODE(3, 0)).describe());
    QCOMPARE(ChildEnd::endedBySignal(SIGBUS).describe(), ChildEnd::fromSystemStatus(W_EXITCODE(0, SIGBUS)).describe());
    QVERIFY(ChildEnd::endedBySignal(SIGBUS).crashed());
    QVERIFY(!ChildEnd::endedBySignal(SIGBUS).exitCode());
}

QTEST_GUILESS_MAIN(TestChildEnd)
#include "tst_childend.moc"
