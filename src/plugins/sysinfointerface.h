#pragma once

#include <QtPlugin>
#include <QString>

// The system-information plug-in. The order of the virtual functions is a
// binary contract with separately built plug-ins: never change it.
class SysInfoInterface
{
public:
    virtual void reserved() = 0;
    // Called once at start-up with the version, the build date and the two
    // numbers 0 and 1.
    virtual void setApplicationInfo(QString version, QString buildDate, int, int) = 0;
    // Shows the machine identifier to the user.
    virtual void showIdentifier() = 0;
    // A description of the system for the About box.
    virtual QString systemInformation() = 0;

protected:
    ~SysInfoInterface() = default;
};

#define SysInfoInterface_iid "me.brisant.SysInfoInterface"
Q_DECLARE_INTERFACE(SysInfoInterface, SysInfoInterface_iid)
