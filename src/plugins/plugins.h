#pragma once

#include "plugins/aboutappinterface.h"
#include "plugins/logginginterface.h"
#include "plugins/pluginmanagerhelper.h"
#include "plugins/sysinfointerface.h"
#include "plugins/updateinterface.h"

// The four optional plug-ins, each behind its own helper created on first use
// and kept until the process ends.
PluginManagerHelper<LoggingInterface> &loggingPlugin();
PluginManagerHelper<SysInfoInterface> &sysInfoPlugin();
PluginManagerHelper<UpdateInterface> &updaterPlugin();
PluginManagerHelper<AboutAppInterface> &aboutPlugin();
