#pragma once

#include "downloader/kestreldownloader.h"

#include <QDialog>
#include <QPointer>
#include <QProcess>
#include <QSet>

#include <memory>

class Plugins;
class QAction;
class QCommandLineParser;
class QMenu;
class QModelIndex;
class RowFitter;
class VideoInfo;

namespace Ui {
class Navigation;
}

// The application's one window: a dialog whose pages lead from the start page
// through the address and the format list to the download. All work with the
// downloader tool is done by the driver; the window asks it for things and
// shows what its signals report.
class Navigation : public QDialog
{
    Q_OBJECT

public:
    // The window works with the program's one driver, video record and set of
    // plug-ins, which outlive it.
    Navigation(KestrelDownloader &driver, VideoInfo &info, Plugins &plugins, QWidget *parent = nullptr);
    ~Navigation() override;

    // The parsed command line, read when the window is first shown. Owned by
    // the entry function for the whole run.
    void setCommandLine(QCommandLineParser *parser);

    // The display scale in percent, read from the settings at construction.
    unsigned int scale() const;

    // Gives the window's images the sources a screen of this device pixel
    // ratio needs, when the window moves onto one.
    void prepareImagesFor(qreal devicePixelRatio);

signals:
    void updateKestrelDL(bool detached);
    void requestVideo(unsigned int formatId);
    void requestMetadata();

public slots:
    void whenStackedPageChanged(int index);
    void whenProcessButtonClicked();
    void whenFormatsReceived();
    void whenCallProcess();
    void whenSomethingWrong(KestrelDownloader::errorType code);
    // Shows the window on the start page and acts on the command line.
    void showMainWindow();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    // Escape goes back or cancels instead of closing the window; the menu key
    // opens the window's menu.
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private slots:
    // Connected by signature to each updater plug-in object's updateDone().
    void whenApplicationUpdated();

private:
    void connectWindow();
    void connectKeyboard();
    void goBackOrCancel();
    void connectDriver();
    void applyFormFontWeights();
    void fitTranslatedTexts();
    void pointBackArrowsBack();
    unsigned int storedScale() const;
    void runCommandLineRequests();

    void whenMetadataReceived();
    void whenFormatPicked(const QModelIndex &index);
    void whenProgressReported(int value);
    void whenVideoDownloaded();
    void whenToolUpdated(QProcess::ExitStatus status);

    void activateMenuActions();
    QAction *addMenuEntry(QMenu *menu, const char *englishText);
    static QString englishText(const QAction *action);
    void whenMenuTriggered(QAction *action);
    void changeScale(QAction *action);
    void updateApplicationNow();
    void showAbout();

    std::unique_ptr<Ui::Navigation> m_ui;
    KestrelDownloader &m_driver;
    VideoInfo &m_info;
    Plugins &m_plugins;
    QCommandLineParser *m_commandLine = nullptr;
    QWidget *m_returnPage = nullptr;
    unsigned int m_scale = 100;
    // Whether the window's images have their "@2x" sources.
    bool m_denseImages = false;
    // Shows only the format table's rows that fit; owned by the table.
    RowFitter *m_rowFitter = nullptr;

    QPointer<QMenu> m_contextMenu;
    QAction *m_updateAction = nullptr;
    QAction *m_loggingAction = nullptr;
    QMenu *m_scaleMenu = nullptr;
    QAction *m_identifierAction = nullptr;
    QAction *m_aboutAction = nullptr;

    // Updater plug-in objects whose updateDone() is already connected.
    QSet<QObject *> m_connectedUpdaters;
};
