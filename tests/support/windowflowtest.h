#pragma once

#include "downloader/videoinfo.h"
#include "scenario.h"
#include "ui/navigation.h"
#include "windowdriver.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>

class QTableView;

// What the suites of the window's flow share: a fresh main window for each
// case, driven through WindowDriver with the fake tool, and the check that
// a case leaves no window behind. The suites derive from it; its slots set
// up and check each case.
class WindowFlowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    Navigation *window() const { return &m_driver->window(); }
    KestrelDownloader &driver() const { return m_driver->driver(); }
    VideoInfo &info() { return m_info; }
    template <typename Widget>
    Widget *widget(const char *name) const { return m_driver->find<Widget>(name); }
    QString currentPage() const { return m_driver->currentPage(); }
    void useScenario(const QString &kind, const FakeTool::Behaviour &behaviour) { m_driver->play(kind, behaviour); }
    void enterAddress(const QString &text) { m_driver->enterAddress(text); }
    void pickRow(int row, int column = 2) { m_driver->pickRow(row, column); }
    QString recordFile() const { return m_driver->recordFile(); }
    // A new window, made as the application makes it: after a change to the
    // settings it reads at start.
    void remakeWindow();

    // Enters an address and checks that the format table came, with the
    // clip's title and duration from the metadata run.
    void reachFormats(const QString &output = fiveFormats());
    // Five formats of which four are kept, the webm one among them.
    static QString fiveFormats();
    static FakeTool::Behaviour hanging();

private:
    QTemporaryDir m_work;
    // The record every window of the suite works on, as the one record of
    // the application outlives its window.
    VideoInfo m_info;
    std::unique_ptr<WindowDriver> m_driver;
};
