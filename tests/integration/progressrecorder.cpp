#include "progressrecorder.h"

#include "downloader/kestreldownloader.h"

#include <QProgressBar>
#include <QStringList>

ProgressRecorder::ProgressRecorder(KestrelDownloader &driver, QProgressBar *bar)
{
    connect(&driver, &KestrelDownloader::percent, this, [this, bar](int value) {
        m_signalled << value;
        if (bar->maximum() == 100)
            m_shown << bar->value();
    });
}

int ProgressRecorder::distinctShown() const
{
    QList<int> distinct;
    for (int value : m_shown) {
        if (!distinct.contains(value))
            distinct << value;
    }
    return int(distinct.size());
}

QString ProgressRecorder::shownText() const
{
    QStringList text;
    for (int value : m_shown)
        text << QString::number(value);
    return text.join(QLatin1Char(' '));
}
