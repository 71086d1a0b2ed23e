#include "videoinfo.h"

#include "app/settings.h"

#include <QSettings>

VideoInfo &VideoInfo::shared()
{
    static VideoInfo record;
    return record;
}

VideoInfo::VideoInfo()
    : m_settings(Settings::open())
{
}

VideoInfo::~VideoInfo() = default;

QSettings &VideoInfo::settings() const
{
    return *m_settings;
}
