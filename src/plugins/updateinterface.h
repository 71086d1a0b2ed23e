#pragma once

#include <QObject>
#include <QString>
#include <QtPlugin>

// The application-updater plug-in. Its own virtual functions follow those of
// QObject; their order is a binary contract with separately built plug-ins.
//
// A plug-in carries its own copy of this class's meta-object, so connect to
// the signals by their signature (SIGNAL(updateDone()) or a QMetaMethod
// found by name), never by member-function pointer.
class UpdateInterface : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Called once after the main window is shown, unless a forced update was asked for.
    virtual void checkForUpdate(int releaseNumber, QString text) = 0;
    virtual void reserved() = 0;
    // Called for the manual update and for a forced update from the command line.
    virtual void updateNow(int releaseNumber, QString text) = 0;
    // Called when the main window goes away, so a running update can wind up.
    virtual void finish() = 0;

signals:
    void updateDone();
    void updateError();
};

#define UpdateInterface_iid "me.brisant.AppUpdaterInterface"
Q_DECLARE_INTERFACE(UpdateInterface, UpdateInterface_iid)
