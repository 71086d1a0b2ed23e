#include "videoinfo.h"

#include "base/settings.h"

#include <QSettings>

VideoInfo::VideoInfo()
    : m_settings(Settings::open())
{
}

VideoInfo::~VideoInfo() = default;

QSettings &VideoInfo::settings() const
{
    return *m_settings;
}
