#pragma once

#include "plugins/sysinfointerface.h"

#include <QObject>

// Knows the machine identifier and describes the system for the About box.
class SysInfoPlugin : public QObject, public SysInfoInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "me.brisant.SysInfoInterface")
    Q_INTERFACES(SysInfoInterface)

public:
    void reserved() override;
    void setApplicationInfo(QString version, QString buildDate, int first, int second) override;
    void showIdentifier() override;
    QString systemInformation() override;

private:
    QString identifier();

    QString m_version;
    QString m_buildDate;
    // The application passes 0 and 1 here. They are kept for a later use but
    // change nothing this plug-in shows.
    int m_first = 0;
    int m_second = 0;
    // Made once per run: should the fallback file be unwritable, the
    // identifier still does not change while the program runs.
    QString m_identifier;
};
