#pragma once

#include "plugins/aboutappinterface.h"
#include "plugins/logginginterface.h"
#include "plugins/pluginmanagerhelper.h"
#include "plugins/sysinfointerface.h"
#include "plugins/updateinterface.h"

// The four optional plug-ins, each behind its own helper, which loads the
// library the first time it is asked and keeps it until the helper ends. The
// program has one set, made by its composition place.
class Plugins
{
public:
    Plugins();
    Plugins(const Plugins &) = delete;
    Plugins &operator=(const Plugins &) = delete;

    PluginManagerHelper<LoggingInterface> &logging();
    PluginManagerHelper<SysInfoInterface> &sysInfo();
    PluginManagerHelper<UpdateInterface> &updater();
    PluginManagerHelper<AboutAppInterface> &about();

private:
    PluginManagerHelper<LoggingInterface> m_logging;
    PluginManagerHelper<SysInfoInterface> m_sysInfo;
    PluginManagerHelper<UpdateInterface> m_updater;
    PluginManagerHelper<AboutAppInterface> m_about;
};
