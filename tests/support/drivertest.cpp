#include "drivertest.h"

#include "base/platform.h"
#include "downloader/filesetup.h"
#include "downloader/kestreldownloader.h"

#include "windowdriver.h"

#include <QDir>
#include <QFile>
#include <QTest>

void DriverTest::initTestCase()
{
    prepareOutputDir();
    m_scenarioFile = m_work.filePath(QStringLiteral("scenario.json"));
    m_recordFile = m_work.filePath(QStringLiteral("record.jsonl"));
    qputenv(FakeTool::scenarioVariable(), m_scenarioFile.toLocal8Bit());
}

void DriverTest::init()
{
    QDir().mkpath(dataFolder());
    QFile::remove(toolInDataFolder());
    QVERIFY(QFile::copy(FakeTool::builtToolPath(), toolInDataFolder()));
    QFile::remove(m_recordFile);
    m_scenario = FakeTool::Scenario();
    m_scenario.record(m_recordFile);
    QVERIFY(m_scenario.writeTo(m_scenarioFile));
    m_info = std::make_unique<VideoInfo>();
}

void DriverTest::cleanup()
{
    // Leave no tool running, and no run that could still report, for the next case.
    KestrelDownloader quietDriver(*m_info);
    quietDriver.terminateTool(true);
    QVERIFY(WindowDriver::waitForRunsToEnd());
}

void DriverTest::useScenario(const QString &kind, const FakeTool::Behaviour &behaviour)
{
    m_scenario.set(kind, behaviour);
    QVERIFY(m_scenario.writeTo(m_scenarioFile));
}

QList<FakeTool::Invocation> DriverTest::invocations() const
{
    return FakeTool::readRecord(m_recordFile);
}

QList<FakeTool::Invocation> DriverTest::invocationsOf(const QString &kind) const
{
    QList<FakeTool::Invocation> runs = invocations();
    runs.removeIf([&kind](const FakeTool::Invocation &run) { return run.kind != kind; });
    return runs;
}

void DriverTest::waitForInvocations(int count)
{
    QTRY_COMPARE(invocations().size(), count);
}

QString DriverTest::toolInDataFolder()
{
    return dataFolder() + QLatin1Char('/') + Platform::toolFileName();
}

FakeTool::Behaviour DriverTest::printing(const QString &text, int exitCode)
{
    FakeTool::Behaviour behaviour;
    behaviour.stdoutChunks = {text};
    behaviour.exitCode = exitCode;
    return behaviour;
}

FakeTool::Behaviour DriverTest::hanging()
{
    FakeTool::Behaviour behaviour;
    behaviour.hang = true;
    return behaviour;
}

FakeTool::Behaviour DriverTest::crashing(int signal)
{
    FakeTool::Behaviour behaviour;
    behaviour.signal = signal;
    return behaviour;
}
