#pragma once

#include <QList>
#include <QObject>

class KestrelDownloader;
class QProgressBar;

// Records the progress the driver reports during a download, and what the
// window's bar showed for each report.
class ProgressRecorder : public QObject
{
public:
    // Connect after the window, so that the bar already shows each value.
    ProgressRecorder(KestrelDownloader &driver, QProgressBar *bar);

    const QList<int> &signalled() const { return m_signalled; }
    // What the bar showed while it showed a percentage.
    const QList<int> &shown() const { return m_shown; }
    int distinctShown() const;
    // "3 17 50 100": the values shown, for a failure message.
    QString shownText() const;

private:
    QList<int> m_signalled;
    QList<int> m_shown;
};
