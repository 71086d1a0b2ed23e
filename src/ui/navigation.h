#pragma once

#include <QDialog>

#include <memory>

class QCommandLineParser;

namespace Ui {
class Navigation;
}

// The application's one window: a dialog whose pages lead from the start page
// through the address and the format list to the download.
class Navigation : public QDialog
{
    Q_OBJECT

public:
    explicit Navigation(QWidget *parent = nullptr);
    ~Navigation() override;

    // The parsed command line, read when the window is first shown. Owned by
    // the entry function for the whole run.
    void setCommandLine(QCommandLineParser *parser);

    // The display scale in percent, read from the settings at construction.
    unsigned int scale() const;

public slots:
    // Shows the window on the start page and acts on the command line.
    void showMainWindow();

private:
    void applyFormFontWeights();
    void runCommandLineRequests();

    std::unique_ptr<Ui::Navigation> ui;
    QCommandLineParser *commandLine = nullptr;
    QWidget *returnPage = nullptr;
    unsigned int scaleValue = 100;
};
