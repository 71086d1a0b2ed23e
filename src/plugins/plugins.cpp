#include "plugins.h"

Plugins::Plugins()
    : m_logging(QStringLiteral("LoggingMessages"))
    , m_sysInfo(QStringLiteral("SysInfo"))
    , m_updater(QStringLiteral("Updater"))
    , m_about(QStringLiteral("About"))
{
}

PluginManagerHelper<LoggingInterface> &Plugins::logging()
{
    return m_logging;
}

PluginManagerHelper<SysInfoInterface> &Plugins::sysInfo()
{
    return m_sysInfo;
}

PluginManagerHelper<UpdateInterface> &Plugins::updater()
{
    return m_updater;
}

PluginManagerHelper<AboutAppInterface> &Plugins::about()
{
    return m_about;
}
