#pragma once

#include <QtPlugin>
#include <QString>

// The logging plug-in. A plug-in is built against this header alone, so the
// order of the virtual functions below is a binary contract: never reorder,
// insert or remove one, and add no other virtual function.
class LoggingInterface
{
public:
    // Called once after the event loop has ended, so the plug-in can close its output.
    virtual void shutDown() = 0;
    virtual void reserved() = 0;
    // Called once at start-up, before any other log line, with the writable
    // local data folder and the settings file name in it.
    virtual void setUp(QString folder, QString settingsFileName) = 0;
    virtual void setEnabled(bool on) = 0;
    virtual bool isEnabled() = 0;

protected:
    // The plug-in loader owns the instance; nobody deletes it through this interface.
    ~LoggingInterface() = default;
};

#define LoggingInterface_iid "me.brisant.LoggingInterface"
Q_DECLARE_INTERFACE(LoggingInterface, LoggingInterface_iid)
