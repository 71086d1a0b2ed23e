#include "plugins.h"

PluginManagerHelper<LoggingInterface> &loggingPlugin()
{
    static PluginManagerHelper<LoggingInterface> helper(QStringLiteral("LoggingMessages"));
    return helper;
}

PluginManagerHelper<SysInfoInterface> &sysInfoPlugin()
{
    static PluginManagerHelper<SysInfoInterface> helper(QStringLiteral("SysInfo"));
    return helper;
}

PluginManagerHelper<UpdateInterface> &updaterPlugin()
{
    static PluginManagerHelper<UpdateInterface> helper(QStringLiteral("Updater"));
    return helper;
}

PluginManagerHelper<AboutAppInterface> &aboutPlugin()
{
    static PluginManagerHelper<AboutAppInterface> helper(QStringLiteral("About"));
    return helper;
}
