#include "aboutplugin.h"

#include "aboutdialog.h"
#include "dialogparent.h"

void AboutPlugin::reserved()
{
}

void AboutPlugin::showAbout(QString systemInformation, QString description)
{
    AboutDialog dialog(systemInformation, description, PluginDialogs::dialogParent());
    dialog.exec();
}
