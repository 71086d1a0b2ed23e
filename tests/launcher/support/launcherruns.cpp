#include "launcherruns.h"

#include "launcherinstallation.h"
#include "processprobe.h"

#include <QDir>
#include <QTest>

#include <algorithm>
#include <csignal>

namespace LauncherRuns {

QStringList downloadArguments()
{
    return {QStringLiteral("--no-warnings"),
            QStringLiteral("--retries"),
            QStringLiteral("3"),
            QStringLiteral("--progress-delta"),
            QStringLiteral("1"),
            QStringLiteral("--output"),
            QStringLiteral("%(title)s [%(id)s].%(ext)s"),
            QStringLiteral("--path"),
            QStringLiteral("/tmp/Zürich – 東京"),
            QString(),
            QStringLiteral("--format"),
            QStringLiteral("137+140"),
            videoAddress};
}

QStringList withoutProgressDelta(QStringList arguments)
{
    const qsizetype at = arguments.indexOf(QStringLiteral("--progress-delta"));
    if (at >= 0)
        arguments.remove(at, 2);
    return arguments;
}

QStringList withVideoAfterOptions(QStringList arguments)
{
    arguments.insert(arguments.size() - 1, QStringLiteral("--"));
    return arguments;
}

QStringList titleRun()
{
    return {QStringLiteral("--get-title"), QStringLiteral("--get-duration"), QStringLiteral("--no-warnings"), videoAddress};
}

QStringList listingRun()
{
    return {QStringLiteral("--list-formats"), QStringLiteral("--no-warnings"), videoAddress};
}

QStringList videoRun()
{
    return {QStringLiteral("--no-warnings"), QStringLiteral("--format"), QStringLiteral("137+140"),
            QStringLiteral("--path"), QStringLiteral("/tmp/KestrelD"), QStringLiteral("--output"),
            QStringLiteral("%(title)s.%(ext)s"), videoAddress};
}

void writeAll(const QString &path, const QByteArray &content)
{
    if (!TestFiles::writeFile(path, content))
        qFatal("cannot write %s", qPrintable(path));
}

void writeScript(const QString &path, const QByteArray &content)
{
    if (!TestFiles::writeFile(path, content, true))
        qFatal("cannot write %s", qPrintable(path));
}

bool waitUntilEnded(const QList<pid_t> &pids)
{
    const auto allEnded = [&pids] {
        return std::none_of(pids.cbegin(), pids.cend(), [](pid_t pid) { return ProcessProbe::isRunning(pid); });
    };
    const bool ended = QTest::qWaitFor(allEnded, 2000);
    for (const pid_t pid : pids) {
        if (ProcessProbe::isRunning(pid))
            ::kill(pid, SIGKILL);
    }
    return ended;
}

pid_t waitForTool(const Installation &installation)
{
    const auto toolId = [&installation] { return TestFiles::readAll(installation.pidFile()).trimmed(); };
    if (!QTest::qWaitFor([&] { return !toolId().isEmpty(); }, 20000))
        return -1;
    return pid_t(toolId().toInt());
}

QStringList keptDocuments(const QString &dataFolder)
{
    return QDir(dataFolder).entryList({QStringLiteral("info-*.json")}, QDir::Files, QDir::Name);
}

QList<QStringList> toolRuns(const QList<QStringList> &invocations)
{
    QList<QStringList> runs = invocations;
    runs.removeIf([](const QStringList &arguments) {
        return arguments.endsWith(QStringLiteral("--simulate")) || arguments.endsWith(QStringLiteral("--version"));
    });
    return runs;
}

std::vector<std::string> toStd(const QStringList &list)
{
    std::vector<std::string> converted;
    for (const QString &item : list)
        converted.push_back(item.toStdString());
    return converted;
}

} // namespace LauncherRuns
