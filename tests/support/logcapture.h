#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

// Collects every message line of the test process while it exists, so tests
// can assert on the exact text of the program's log lines.
class LogCapture
{
public:
    struct Line
    {
        QtMsgType type;
        QString text;
    };

    LogCapture();
    ~LogCapture();

    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QList<Line> lines() const;
    QStringList texts() const;
    // Lines that contain the given text.
    QStringList matching(const QString &text) const;
    void clear();

private:
    QtMessageHandler m_previous;
};
