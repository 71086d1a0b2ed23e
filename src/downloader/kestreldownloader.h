#pragma once

#include "formats/formatinfo.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QProcess>

#include <functional>
#include <memory>
#include <optional>

class VideoInfo;

// Drives the external downloader tool. Every piece of work is one run of the
// tool as a child process with a fixed argument list; results come back as
// signals. The tool and ffmpeg live in the per-user data folder, which is
// also the working folder of every run.
class KestrelDownloader : public QObject
{
    Q_OBJECT

public:
    // Failure codes. They are shown to the user in hexadecimal, so the numbers
    // are part of the interface; the gaps are deliberate.
    enum errorType {
        metadataTooFewLines = 69,
        metadataBadDuration = 70,
        metadataCancelled = 71,
        metadataCrashed = 72,
        // The format run raises these two crossed over: 74 when it was
        // cancelled, 73 when it crashed.
        formatsCancelled = 73,
        formatsCrashed = 74,
        downloadCancelled = 85,
        downloadCrashed = 86,
        formatCountError = 101,
        // The tool could not be started at all (missing or not executable).
        toolNotStarted = 102,
    };

    // Every run reads and writes info, the record of the video being handled.
    explicit KestrelDownloader(VideoInfo &info, QObject *parent = nullptr);

    // Checks a pasted address; true when it is accepted, which makes it the
    // video's address.
    bool setUrl(const QString &text);

    void requestMetadata();
    void requestFormats();
    void requestVideo(uint formatId);

    // Asks the tool to replace itself with its newest release; only an
    // attached run reports its end, through resultUpdateBinary.
    void updateBinary(bool detached);

    // Kills every running instance of the tool. Unless quiet, the run that
    // ends next reports its cancel code.
    void terminateTool(bool quiet);

    // The download progress a chunk of the tool's output reports: the first
    // "[download] ...%" line counts; nothing when the chunk has none.
    static std::optional<int> progressFromChunk(const QString &chunk);

    // Process objects of runs that still exist. A finished run lets go of
    // its object, which is then deleted through the event loop.
    static int processObjectCount();

    // The formats offered for the current video, and their display order,
    // as the last format listing left them.
    const QHash<quint32, FormatInfo> &formats() const;
    const QList<quint32> &viewOrder() const;

signals:
    void haveMetadata();
    void haveFormats();
    void haveVideo();
    void percent(int value);
    void somethingWrong(KestrelDownloader::errorType code);
    void resultUpdateBinary(QProcess::ExitStatus status);

public slots:
    void requestMetadataFinished();
    void requestFormatsFinished();

private:
    using SharedProcess = std::shared_ptr<QProcess>;

    // How one kind of run ends.
    struct RunEnd
    {
        const char *handler;       // the finish handler's name, for its log line
        const char *finishedText;  // what the handler's log line says
        bool logsArguments;        // whether that line also shows the arguments
        errorType cancelCode;
        errorType crashCode;
        std::function<void(QProcess &)> whenNormalExit;
    };

    SharedProcess createProcess(const QStringList &arguments) const;
    void startRun(const SharedProcess &process, const RunEnd &end);
    void finishRun(QProcess &process, QProcess::ExitStatus status, const RunEnd &end);
    void readRunOutput(QProcess &process);
    void reportProgress(QProcess &process);
    void watchForStartFailure(const SharedProcess &process, const std::function<void()> &report);

    VideoInfo &m_info;
    QHash<quint32, FormatInfo> m_formats;
    QList<quint32> m_viewOrder;
    bool m_cancelRequested = false;
};

Q_DECLARE_METATYPE(KestrelDownloader::errorType)
