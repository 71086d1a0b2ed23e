#include "aboutplugin.h"

#include "aboutdialog.h"

#include <QApplication>

void AboutPlugin::reserved()
{
}

void AboutPlugin::showAbout(QString systemInformation, QString description)
{
    AboutDialog dialog(systemInformation, description, QApplication::activeWindow());
    dialog.exec();
}
