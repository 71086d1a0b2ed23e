#pragma once

#include "downloader/kestreldownloader.h"
#include "plugins/plugins.h"
#include "scenario.h"
#include "ui/navigation.h"

#include <QString>
#include <QWidget>

#include <memory>

class VideoInfo;

// Drives the real main window the way a user does, with the fake downloader
// tool in the sandboxed data folder playing the scenario the test sets. The
// window gets a driver and plug-in helpers of its own and the video record
// the test hands in, as the application's composition gives it its own.
class WindowDriver
{
public:
    // Places the fake tool in the data folder and points it at a scenario
    // file in workFolder. Call once per test process, after the sandbox.
    static void prepareTool(const QString &workFolder);

    WindowDriver(const QString &workFolder, VideoInfo &info);
    // Ends the tool's runs first, and answers the box that a run killed
    // just now may still raise, so that nothing outlives the window.
    ~WindowDriver();

    Navigation &window() const { return *m_window; }
    KestrelDownloader &driver() { return m_driver; }
    QString recordFile() const { return m_recordFile; }

    void play(const QString &kind, const FakeTool::Behaviour &behaviour);

    template <typename Widget = QWidget>
    Widget *find(const char *name) const
    {
        auto *found = m_window->findChild<Widget *>(QLatin1String(name));
        if (!found)
            qFatal("no widget %s", name);
        return found;
    }

    // Waits until every run of the tool has ended and its end was handled;
    // false on time-out.
    static bool waitForRunsToEnd();

    QString currentPage() const;
    // Types the address key by key, then Enter.
    void enterAddress(const QString &text);
    // Puts the address into the field as a program would (which also resets
    // the field's undo history), then Enter.
    void setAddress(const QString &text);
    // Enters an address and waits for the format table; false on time-out.
    bool reachFormats(const QString &address = QStringLiteral("https://www.youtube.com/watch?v=abc"), bool typed = true,
                      int timeoutMs = 10000);
    void pickRow(int row, int column = 2);

    static FakeTool::Behaviour printing(const QString &text);
    static QString sampleListing();

private:
    KestrelDownloader m_driver;
    Plugins m_plugins;
    std::unique_ptr<Navigation> m_window;
    FakeTool::Scenario m_scenario;
    QString m_scenarioFile;
    QString m_recordFile;
};
