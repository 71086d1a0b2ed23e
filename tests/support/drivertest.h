#pragma once

#include "downloader/videoinfo.h"
#include "scenario.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTemporaryDir>

#include <csignal>
#include <memory>

// What the driver's suites share: the fake tool in the sandboxed data folder,
// playing the scenario a case sets and recording its runs, and a fresh video
// record for every case, which the case hands to the drivers it makes. The
// suites derive from it; its slots set up and clean up each case.
class DriverTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    VideoInfo &info() { return *m_info; }
    QString workFolder() const { return m_work.path(); }

    void useScenario(const QString &kind, const FakeTool::Behaviour &behaviour);
    QList<FakeTool::Invocation> invocations() const;
    QList<FakeTool::Invocation> invocationsOf(const QString &kind) const;
    void waitForInvocations(int count);

    static QString toolInDataFolder();
    static FakeTool::Behaviour printing(const QString &text, int exitCode = 0);
    static FakeTool::Behaviour hanging();
    static FakeTool::Behaviour crashing(int signal = SIGSEGV);

private:
    QTemporaryDir m_work;
    FakeTool::Scenario m_scenario;
    QString m_scenarioFile;
    QString m_recordFile;
    std::unique_ptr<VideoInfo> m_info;
};
