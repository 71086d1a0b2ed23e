#include "aboutplugin.h"

#include "aboutdialog.h"

#include <QApplication>

void AboutPlugin::reserved()
{
}

void AboutPlugin::showAbout(const QString &systemInformation, const QString &description)
{
    AboutDialog dialog(systemInformation, description, QApplication::activeWindow());
    dialog.exec();
}
