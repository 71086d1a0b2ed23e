#include "happenswithin.h"
#include "testsandbox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTest>
#include <QTimer>

// The helper that the suites use to show that something does not happen in
// a given time: it must wait the whole time when nothing happens, and no
// longer than needed when it does.
class TestHappensWithin : public QObject
{
    Q_OBJECT

private slots:
    void trueAtOnceReturnsWithoutWaiting();
    void eventBeforeTheDeadlineIsSeen();
    void nothingHappeningTakesTheWholeTime();
    void eventAfterTheDeadlineIsNotSeen();
    void deferredDeletionsAreCarriedOut();
};

void TestHappensWithin::trueAtOnceReturnsWithoutWaiting()
{
    QElapsedTimer clock;
    clock.start();
    QVERIFY(happensWithin(5000, [] { return true; }));
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
}

void TestHappensWithin::eventBeforeTheDeadlineIsSeen()
{
    bool fired = false;
    QTimer::singleShot(50, this, [&fired] { fired = true; });
    QElapsedTimer clock;
    clock.start();
    QVERIFY(happensWithin(5000, [&fired] { return fired; }));
    // Returned once the event was seen, well before the deadline.
    QVERIFY2(clock.elapsed() < 4000, qPrintable(QString::number(clock.elapsed())));
}

void TestHappensWithin::nothingHappeningTakesTheWholeTime()
{
    int checks = 0;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!happensWithin(200, [&checks] {
        ++checks;
        return false;
    }));
    QVERIFY2(clock.elapsed() >= 200, qPrintable(QString::number(clock.elapsed())));
    // Looked at again and again while waiting, not only at both ends.
    QVERIFY2(checks > 2, qPrintable(QString::number(checks)));
}

void TestHappensWithin::eventAfterTheDeadlineIsNotSeen()
{
    bool fired = false;
    QTimer late;
    late.setSingleShot(true);
    connect(&late, &QTimer::timeout, this, [&fired] { fired = true; });
    late.start(2000);
    QVERIFY(!happensWithin(100, [&fired] { return fired; }));
    QVERIFY(!fired);
}

void TestHappensWithin::deferredDeletionsAreCarriedOut()
{
    QPointer<QObject> doomed = new QObject;
    doomed->deleteLater();
    QVERIFY(happensWithin(1000, [&doomed] { return doomed.isNull(); }));
}

KESTREL_TEST_MAIN(TestHappensWithin)
#include "tst_happenswithin.moc"
