#pragma once

#include <QAtomicPointer>
#include <QFile>
#include <QMutex>
#include <QString>
#include <QtGlobal>

// The one log file of the process. Qt has a single message handler per
// process, so this state is process-wide as well, whatever number of plug-in
// objects exist.
class LogSink
{
public:
    static LogSink &instance();

    // Installs the message handler (once) and opens "<folder>/kestrel-downloader.log"
    // when logging is on. The on/off state and the size cap come from the INI
    // file "<folder>/<settingsFileName>".
    void setUp(const QString &folder, const QString &settingsFileName);
    // Closes the file and hands the message chain back to the previous handler.
    void shutDown();

    void setEnabled(bool on);
    bool isEnabled() const;

    static QString logFileName();
    static QString enabledKey();
    static QString maxBytesKey();
    static constexpr qint64 defaultMaxBytes = 1024 * 1024;

private:
    LogSink() = default;

    static void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text);
    void writeToFile(QtMsgType type, const QString &text);
    void passOn(QtMsgType type, const QMessageLogContext &context, const QString &text) const;

    // Both expect m_mutex held. openFile() returns an error text, empty on success.
    QString openFile();
    void rotate();

    mutable QMutex m_mutex;
    QFile m_file;
    qint64 m_fileSize = 0;
    QString m_folder;
    QString m_settingsPath;
    bool m_enabled = true;
    bool m_installed = false;
    qint64 m_maxBytes = defaultMaxBytes;
    // Read by the handler without the lock, so that handing a message on
    // never waits for a file operation of another thread.
    QAtomicPointer<std::remove_pointer_t<QtMessageHandler>> m_previous;
};
