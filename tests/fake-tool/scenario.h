#pragma once

// Helpers for tests that run the fake kestreldl2 tool: they write the
// scenario file that tells the tool how to behave and read back the record
// of how it was started.
//
// Typical use:
//
//   FakeTool::Behaviour metadata;
//   metadata.stdoutChunks = {QStringLiteral("Some title\n")};
//   FakeTool::Scenario()
//       .set(FakeTool::Kind::metadata(), metadata)
//       .record(dir.filePath(QStringLiteral("record.jsonl")))
//       .writeTo(dir.filePath(QStringLiteral("scenario.json")));
//   qputenv(FakeTool::scenarioVariable(), scenarioPath.toLocal8Bit());
//   ... start the application's process with FakeTool::builtToolPath() ...
//   const QList<FakeTool::Invocation> runs = FakeTool::readRecord(recordPath);
//
// builtToolPath() needs the macro KESTREL_FAKE_TOOL_PATH, the absolute path of
// the built tool, defined for the test target. Linking the CMake target
// kestrel_fake_tool provides it together with this header's include path.

#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>

namespace FakeTool {

// The environment variable through which the tool finds its scenario file.
inline const char *scenarioVariable()
{
    return "KESTREL_FAKE_TOOL_SCENARIO";
}

// The kinds of run the tool tells apart, by the arguments it is given.
namespace Kind {
inline QString metadata() { return QStringLiteral("metadata"); } // --get-title
inline QString formats() { return QStringLiteral("formats"); } // --list-formats
inline QString update() { return QStringLiteral("update"); } // --update
inline QString download() { return QStringLiteral("download"); } // anything else
inline QString fallback() { return QStringLiteral("default"); } // used when a kind has no entry
} // namespace Kind

// What one run does, in this order: stderr flood, repeated stdout line,
// stdout chunks, binary stdout, output file, then hang, signal or exit code.
// Members left at their defaults are not written to the scenario.
struct Behaviour
{
    QStringList stdoutChunks; // each one write, pauseMs apart
    int pauseMs = 0;
    int exitCode = 0;
    int signal = 0; // raised with its default action, no core file; on Windows: its NTSTATUS code
    bool hang = false; // sleeps until killed
    bool ignoresStop = false; // SIGTERM ignored instead of ending with code 1 (nothing to ignore on Windows)
    qint64 stderrBytes = 0; // lines of 'e'
    qint64 stdoutLines = 0; // stdoutLine + "\n", this many times
    QString stdoutLine;
    QByteArray stdoutBinary; // written verbatim in one write
    bool writeOutputFile = false; // "<last argument>.mp4" in the --path folder
    qint64 outputFileBytes = -1; // -1: the file holds "fake video\n"

    QJsonObject toJson() const
    {
        QJsonObject json;
        if (!stdoutChunks.isEmpty())
            json.insert(QLatin1String("stdoutChunks"), QJsonArray::fromStringList(stdoutChunks));
        if (pauseMs != 0)
            json.insert(QLatin1String("pauseMs"), pauseMs);
        if (exitCode != 0)
            json.insert(QLatin1String("exitCode"), exitCode);
        if (signal != 0)
            json.insert(QLatin1String("signal"), signal);
        if (hang)
            json.insert(QLatin1String("hang"), true);
        if (ignoresStop)
            json.insert(QLatin1String("ignoresStop"), true);
        if (stderrBytes != 0)
            json.insert(QLatin1String("stderrBytes"), stderrBytes);
        if (stdoutLines != 0) {
            json.insert(QLatin1String("stdoutLines"), stdoutLines);
            json.insert(QLatin1String("stdoutLine"), stdoutLine);
        }
        if (!stdoutBinary.isEmpty())
            json.insert(QLatin1String("stdoutBase64"), QString::fromLatin1(stdoutBinary.toBase64()));
        if (writeOutputFile) {
            json.insert(QLatin1String("writeOutputFile"), true);
            if (outputFileBytes >= 0)
                json.insert(QLatin1String("outputFileBytes"), outputFileBytes);
        }
        return json;
    }
};

class Scenario
{
public:
    Scenario &set(const QString &kind, const Behaviour &behaviour)
    {
        m_json.insert(kind, behaviour.toJson());
        return *this;
    }

    // Every run of the tool appends one JSON line to this file.
    Scenario &record(const QString &path)
    {
        m_json.insert(QLatin1String("record"), path);
        return *this;
    }

    QJsonObject toJson() const { return m_json; }

    bool writeTo(const QString &fileName) const
    {
        QFile file(fileName);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return false;
        const QByteArray bytes = QJsonDocument(m_json).toJson(QJsonDocument::Indented);
        return file.write(bytes) == bytes.size() && file.flush();
    }

private:
    QJsonObject m_json;
};

// One run of the tool, as it recorded itself.
struct Invocation
{
    QString kind;
    QStringList arguments;
    QString workingDirectory; // as the system gave it, '/' between parts: compare with canonical paths
    qint64 pid = 0;
    QString program; // the first item of the command line, as the system passed it
};

// The runs in the record file, oldest first. A missing file means no runs.
inline QList<Invocation> readRecord(const QString &path)
{
    QList<Invocation> invocations;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return invocations;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QJsonObject json = QJsonDocument::fromJson(line).object();
        if (json.isEmpty())
            continue;
        Invocation invocation;
        invocation.kind = json.value(QLatin1String("kind")).toString();
        const QJsonArray arguments = json.value(QLatin1String("arguments")).toArray();
        for (const QJsonValue &argument : arguments)
            invocation.arguments.append(argument.toString());
        invocation.workingDirectory = json.value(QLatin1String("workingDirectory")).toString();
        invocation.pid = json.value(QLatin1String("pid")).toInteger();
        invocation.program = json.value(QLatin1String("program")).toString();
        invocations.append(invocation);
    }
    return invocations;
}

#ifdef KESTREL_FAKE_TOOL_PATH
// The absolute path of the fake tool this build produced.
inline QString builtToolPath()
{
    return QString::fromUtf8(KESTREL_FAKE_TOOL_PATH);
}
#else
// Only a test that actually asks for the path needs the macro; this turns a
// missing definition into a readable compile error at the call site.
template <typename Unused = void>
QString builtToolPath()
{
    static_assert(sizeof(Unused *) == 0,
                  "KESTREL_FAKE_TOOL_PATH is not defined: link the test with kestrel_fake_tool");
    return QString();
}
#endif

} // namespace FakeTool
