#pragma once

#include "plugins/logginginterface.h"

#include <QObject>

// Writes the program's message lines to a size-capped log file in the
// per-user data folder, while every line still reaches the handler that was
// installed before (normally the terminal).
class LoggingMessagesPlugin : public QObject, public LoggingInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "me.brisant.LoggingInterface")
    Q_INTERFACES(LoggingInterface)

public:
    LoggingMessagesPlugin() = default;
    // The message handler lives in this library: it must be out of the chain
    // before the library can be unloaded.
    ~LoggingMessagesPlugin() override;

    void shutDown() override;
    void reserved() override;
    void setUp(QString folder, QString settingsFileName) override;
    void setEnabled(bool on) override;
    bool isEnabled() override;
};
