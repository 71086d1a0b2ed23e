#include "loggingmessagesplugin.h"

#include "logsink.h"

LoggingMessagesPlugin::~LoggingMessagesPlugin()
{
    LogSink::instance().shutDown();
}

void LoggingMessagesPlugin::shutDown()
{
    LogSink::instance().shutDown();
}

void LoggingMessagesPlugin::reserved()
{
}

void LoggingMessagesPlugin::setUp(QString folder, QString settingsFileName)
{
    LogSink::instance().setUp(folder, settingsFileName);
}

void LoggingMessagesPlugin::setEnabled(bool on)
{
    LogSink::instance().setEnabled(on);
}

bool LoggingMessagesPlugin::isEnabled()
{
    return LogSink::instance().isEnabled();
}
