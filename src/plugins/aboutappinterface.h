#pragma once

#include <QtPlugin>
#include <QString>

// The About-box plug-in. The order of the virtual functions is a binary
// contract with separately built plug-ins: never change it.
class AboutAppInterface
{
public:
    virtual void reserved() = 0;
    virtual void showAbout(QString systemInformation, QString description) = 0;

protected:
    ~AboutAppInterface() = default;
};

#define AboutAppInterface_iid "me.brisant.AboutAppInterface"
Q_DECLARE_INTERFACE(AboutAppInterface, AboutAppInterface_iid)
