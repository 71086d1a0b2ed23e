#pragma once

#include <QObject>
#include <QProcess>
#include <QString>

// Readies the downloader tool before the first video: the application's
// launcher in its data folder installs its managed copy of the tool and the
// runtime on its first run, tens of megabytes, which would otherwise happen
// behind the busy page of the user's very first video. Started with the
// start-up check, "kestreldl2 --update --background" does that while the
// user is still finding an address; it does nothing when the copies are
// there, keeps to the machine's idle time, and a run of the application's
// that comes meanwhile waits for it. It ends with the plug-in at the latest.
class ToolPreparation : public QObject
{
    Q_OBJECT

public:
    explicit ToolPreparation(QObject *parent = nullptr);
    ~ToolPreparation() override;

    // Starts the launcher unless it is already running or not there.
    void start();

    // The launcher in the application's data folder.
    static QString launcherPath();

private:
    void whenFinished(int exitCode, QProcess::ExitStatus status);

    QProcess m_launcher;
};
