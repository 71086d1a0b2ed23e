// A stand-in for the kestreldl2 command-line downloader, used by the tests.
//
// The tests describe what one run should look like in a JSON scenario file
// (see scenario.h, which writes those files) and point the environment
// variable KESTREL_FAKE_TOOL_SCENARIO at it. The tool then produces exactly
// that output, exit status or crash, so the application's process handling
// can be tested without a network or the real downloader.
//
// Scenario file layout:
//   {
//     "record":   "/path/to/record.jsonl",     optional
//     "metadata": { behaviour },               run with --get-title
//     "formats":  { behaviour },               run with --list-formats
//     "update":   { behaviour },               run with --update
//     "download": { behaviour },               any other run
//     "default":  { behaviour }                used when the kind is missing
//   }
// A behaviour may hold, all optional and carried out in this order:
//   stderrBytes, stdoutLines + stdoutLine, stdoutChunks + pauseMs,
//   stdoutBase64, writeOutputFile + outputFileBytes, hang, signal, exitCode;
//   and ignoresStop.
//
// Like the real launcher, the tool answers SIGTERM (the first step of the
// application's kill rule on Linux) by exiting with code 1, a normal exit, as
// a run ended by taskkill does on Windows; unless ignoresStop is set, which
// leaves only the rule's SIGKILL to end it. On Windows the rule is taskkill
// /F alone, so there is no stop to answer and ignoresStop changes nothing.
//
// Output goes straight to the standard streams (write(2) on POSIX systems,
// WriteFile on Windows): one chunk is one write and nothing sits in a
// buffer, so the tests decide exactly where the application's reads may be
// split.
//
// A "signal" ends the run as a crash: by that signal on POSIX systems, by
// the matching NTSTATUS code on Windows (toolsystem_win.cpp).

#include "toolsystem.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <algorithm>

namespace {

bool writeAll(ToolSystem::Stream stream, const QByteArray &data)
{
    return ToolSystem::writeAll(stream, data.constData(), data.size());
}

QString runKind(const QStringList &arguments)
{
    if (arguments.contains(QLatin1String("--get-title")))
        return QStringLiteral("metadata");
    if (arguments.contains(QLatin1String("--list-formats")))
        return QStringLiteral("formats");
    if (arguments.contains(QLatin1String("--update")))
        return QStringLiteral("update");
    return QStringLiteral("download");
}

// Appends one line describing this run, in one write on an append-only
// descriptor (ToolSystem::appendToFile).
void recordInvocation(const QString &recordPath, const QString &kind,
                      const QStringList &arguments, const QString &program)
{
    QJsonObject line;
    line.insert(QLatin1String("kind"), kind);
    line.insert(QLatin1String("arguments"), QJsonArray::fromStringList(arguments));
    line.insert(QLatin1String("workingDirectory"), ToolSystem::currentDirectory());
    line.insert(QLatin1String("pid"), ToolSystem::processId());
    line.insert(QLatin1String("program"), program);

    QByteArray bytes = QJsonDocument(line).toJson(QJsonDocument::Compact);
    bytes.append('\n');

    ToolSystem::appendToFile(recordPath, bytes);
}

// Lines of 'e' ending in '\n'. Lines are 64 bytes, so a 64 KiB block holds
// whole lines and consecutive blocks continue the same pattern.
void writeStandardError(qint64 total)
{
    constexpr qint64 lineLength = 64;
    constexpr qint64 blockSize = 64 * 1024;
    QByteArray block(blockSize, 'e');
    for (qint64 i = lineLength - 1; i < blockSize; i += lineLength)
        block[i] = '\n';

    while (total > 0) {
        const qint64 size = std::min(total, blockSize);
        bool ok;
        if (size == total && block.at(size - 1) != '\n') {
            // The last, short block still ends its line.
            QByteArray tail = block.left(size);
            tail[size - 1] = '\n';
            ok = writeAll(ToolSystem::Stream::Error, tail);
        } else {
            ok = ToolSystem::writeAll(ToolSystem::Stream::Error, block.constData(), size);
        }
        if (!ok)
            return;
        total -= size;
    }
}

// The same line many times, gathered into writes of about 64 KiB so that a
// flood of hundreds of thousands of lines stays quick.
void writeRepeatedLine(const QString &text, qint64 count)
{
    const QByteArray line = text.toUtf8() + '\n';
    const qint64 perBlock = std::max<qint64>(1, (64 * 1024) / line.size());
    const QByteArray block = line.repeated(static_cast<qsizetype>(std::min(perBlock, count)));
    const qint64 linesPerBlock = block.size() / line.size();

    while (count > 0) {
        const qint64 lines = std::min(count, linesPerBlock);
        if (!ToolSystem::writeAll(ToolSystem::Stream::Output, block.constData(), lines * line.size()))
            return;
        count -= lines;
    }
}

void writeChunks(const QJsonArray &chunks, qint64 pauseMs)
{
    for (qsizetype i = 0; i < chunks.size(); ++i) {
        if (i > 0)
            ToolSystem::sleepMilliseconds(pauseMs);
        if (!writeAll(ToolSystem::Stream::Output, chunks.at(i).toString().toUtf8()))
            return;
    }
}

// The folder that follows "--path". The real downloader spells the option
// "--paths" or "-P", so those are understood as well.
QString outputFolder(const QStringList &arguments)
{
    for (qsizetype i = 0; i + 1 < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        if (argument == QLatin1String("--path") || argument == QLatin1String("--paths")
            || argument == QLatin1String("-P")) {
            return arguments.at(i + 1);
        }
    }
    return QString();
}

void writeOutputFile(const QStringList &arguments, qint64 bytes)
{
    const QString folder = outputFolder(arguments);
    if (folder.isEmpty() || arguments.isEmpty())
        return;
    if (!QDir().mkpath(folder))
        return;

    // The target is the URL, the last argument; the characters a file name
    // cannot hold are replaced.
    QString name = arguments.last();
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    name.replace(QLatin1Char(':'), QLatin1Char('_'));
    name += QLatin1String(".mp4");

    const QByteArray pattern("fake video\n");
    QByteArray content;
    if (bytes < 0) {
        content = pattern;
    } else {
        const qsizetype size = static_cast<qsizetype>(bytes);
        content = pattern.repeated(size / pattern.size() + 1).left(size);
    }

    QFile file(QDir(folder).filePath(name));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(content);
}

} // namespace

int main(int argc, char *argv[])
{
    // First of all: a stop may come at any moment of the run.
    ToolSystem::answerStopAsTheLauncherDoes();

    // No QCoreApplication: QFile and QJsonDocument work without one, and the
    // tool starts faster.
    const QByteArray scenarioPath = qgetenv("KESTREL_FAKE_TOOL_SCENARIO");
    if (scenarioPath.isEmpty())
        return 0;

    QFile scenarioFile(QFile::decodeName(scenarioPath));
    if (!scenarioFile.open(QIODevice::ReadOnly))
        return 0;
    const QJsonDocument document = QJsonDocument::fromJson(scenarioFile.readAll());
    scenarioFile.close();
    if (!document.isObject())
        return 0;
    const QJsonObject scenario = document.object();

    const QStringList commandLine = ToolSystem::commandLine(argc, argv);
    const QStringList arguments = commandLine.mid(1);
    const QString kind = runKind(arguments);

    const QString recordPath = scenario.value(QLatin1String("record")).toString();
    if (!recordPath.isEmpty())
        recordInvocation(recordPath, kind, arguments, commandLine.value(0));

    QJsonObject behaviour;
    if (scenario.contains(kind))
        behaviour = scenario.value(kind).toObject();
    else
        behaviour = scenario.value(QLatin1String("default")).toObject();

    if (behaviour.value(QLatin1String("ignoresStop")).toBool())
        ToolSystem::ignoreStop();

    const qint64 stderrBytes = behaviour.value(QLatin1String("stderrBytes")).toInteger();
    if (stderrBytes > 0)
        writeStandardError(stderrBytes);

    const qint64 stdoutLines = behaviour.value(QLatin1String("stdoutLines")).toInteger();
    if (stdoutLines > 0)
        writeRepeatedLine(behaviour.value(QLatin1String("stdoutLine")).toString(), stdoutLines);

    const QJsonArray chunks = behaviour.value(QLatin1String("stdoutChunks")).toArray();
    if (!chunks.isEmpty())
        writeChunks(chunks, behaviour.value(QLatin1String("pauseMs")).toInteger());

    const QJsonValue base64 = behaviour.value(QLatin1String("stdoutBase64"));
    if (base64.isString())
        writeAll(ToolSystem::Stream::Output, QByteArray::fromBase64(base64.toString().toLatin1()));

    if (behaviour.value(QLatin1String("writeOutputFile")).toBool()) {
        const QJsonValue bytes = behaviour.value(QLatin1String("outputFileBytes"));
        writeOutputFile(arguments, bytes.isDouble() ? bytes.toInteger() : -1);
    }

    if (behaviour.value(QLatin1String("hang")).toBool())
        ToolSystem::hangForever();

    const int signalNumber = behaviour.value(QLatin1String("signal")).toInt();
    if (signalNumber > 0)
        ToolSystem::crash(signalNumber);

    return behaviour.value(QLatin1String("exitCode")).toInt();
}
