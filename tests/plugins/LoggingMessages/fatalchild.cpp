// logging_fatal_child <plug-in file> <folder>: sets the logging plug-in up in
// <folder> and ends with a fatal message.
#include "plugins/logginginterface.h"

#include <QCoreApplication>
#include <QPluginLoader>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: logging_fatal_child <plug-in file> <folder>\n");
        return 2;
    }
    QPluginLoader loader(arguments.at(1));
    auto *logging = qobject_cast<LoggingInterface *>(loader.instance());
    if (!logging) {
        std::fprintf(stderr, "cannot load %s: %s\n", qUtf8Printable(arguments.at(1)), qUtf8Printable(loader.errorString()));
        return 3;
    }
    logging->setUp(arguments.at(2), QStringLiteral("settings.ini"));
    qFatal("cannot go on: %s", "disk on fire");
}
