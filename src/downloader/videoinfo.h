#pragma once

#include <QString>
#include <QTime>
#include <QUrl>

#include <memory>

class QSettings;

// The one process-wide record of the video being handled. It also owns the
// application's open settings file, which its constructor opens.
class VideoInfo
{
public:
    // The shared record, created on first use and kept until the process ends.
    static VideoInfo &shared();

    QSettings &settings() const;

    QString rawOutput;    // whole standard output of the last metadata or format run
    quint32 formatId = 0; // format asked for by the last download
    QUrl url;             // the accepted address; canonical once metadata was asked for
    QString target;       // the tool's positional argument for every run
    QTime duration;
    QString title;

    VideoInfo(const VideoInfo &) = delete;
    VideoInfo &operator=(const VideoInfo &) = delete;

private:
    VideoInfo();
    ~VideoInfo();

    std::unique_ptr<QSettings> m_settings;
};
