#include "happenswithin.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QTimer>

bool happensWithin(int timeoutMs, const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(timeoutMs, Qt::PreciseTimer);
    // Wakes the loop now and then, for conditions that no event of this
    // process announces: a file another process writes, say.
    QTimer wakeUp;
    wakeUp.start(10);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}
