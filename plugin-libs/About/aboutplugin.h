#pragma once

#include "plugins/aboutappinterface.h"

#include <QObject>

// The program's About box.
class AboutPlugin : public QObject, public AboutAppInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "me.brisant.AboutAppInterface")
    Q_INTERFACES(AboutAppInterface)

public:
    void reserved() override;
    void showAbout(QString systemInformation, QString description) override;
};
