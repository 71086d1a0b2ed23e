#pragma once

#include <QString>
#include <QTime>
#include <QUrl>

#include <memory>

class QSettings;

// The record of the video being handled. It also owns the application's open
// settings file, which its constructor opens. The program has one, made by its
// composition place (app/composition.cpp) and handed to whatever reads or
// writes it; the video fields are plain data that every run reads and writes.
class VideoInfo
{
public:
    VideoInfo();
    ~VideoInfo();

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
    std::unique_ptr<QSettings> m_settings;
};
