#include "logcapture.h"

#include <QMutex>

namespace {

QMutex capturedMutex;
QList<LogCapture::Line> captured;

void captureMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    QMutexLocker lock(&capturedMutex);
    captured.append({type, text});
}

} // namespace

LogCapture::LogCapture()
    : m_previous(qInstallMessageHandler(captureMessage))
{
    clear();
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(m_previous);
}

QList<LogCapture::Line> LogCapture::lines() const
{
    QMutexLocker lock(&capturedMutex);
    return captured;
}

QStringList LogCapture::texts() const
{
    QStringList result;
    for (const Line &line : lines())
        result << line.text;
    return result;
}

QStringList LogCapture::matching(const QString &text) const
{
    return texts().filter(text);
}

void LogCapture::clear()
{
    QMutexLocker lock(&capturedMutex);
    captured.clear();
}
