#include "logsink.h"

#include <QDateTime>
#include <QDir>
#include <QSettings>

#include <cstdio>

namespace {

// Set while this thread holds the sink's lock or is inside the handler. A
// message raised meanwhile (by Qt's file or settings code, say) must not try
// to take the lock again: it goes only to the previous handler.
thread_local bool busyOnThisThread = false;

class BusyLock
{
public:
    explicit BusyLock(QMutex &mutex)
        : m_wasBusy(busyOnThisThread), m_lock(&mutex)
    {
        busyOnThisThread = true;
    }
    ~BusyLock() { busyOnThisThread = m_wasBusy; }

    BusyLock(const BusyLock &) = delete;
    BusyLock &operator=(const BusyLock &) = delete;

private:
    bool m_wasBusy;
    QMutexLocker<QMutex> m_lock;
};

QLatin1String levelName(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QLatin1String("debug");
    case QtInfoMsg:
        return QLatin1String("info");
    case QtWarningMsg:
        return QLatin1String("warning");
    case QtCriticalMsg:
        return QLatin1String("critical");
    case QtFatalMsg:
        return QLatin1String("fatal");
    }
    return QLatin1String("unknown");
}

// Every line of the file starts with the time and the level, so a message of
// several lines is written as several prefixed lines and the file stays easy
// to filter with line-based tools.
QByteArray formatLines(QtMsgType type, const QString &text)
{
    const QString prefix = QStringLiteral("%1 [%2] ")
                               .arg(QDateTime::currentDateTime().toString(Qt::ISODateWithMs), levelName(type));
    QString body = text;
    while (body.endsWith(QLatin1Char('\n')))
        body.chop(1);
    QByteArray result;
    for (const QString &line : body.split(QLatin1Char('\n')))
        result += (prefix + line).toUtf8() + '\n';
    return result;
}

} // namespace

LogSink &LogSink::instance()
{
    // Never destroyed: a message may still be logged while static objects
    // are being torn down at exit.
    static LogSink *sink = new LogSink;
    return *sink;
}

QString LogSink::logFileName()
{
    return QStringLiteral("kestrel-downloader.log");
}

QString LogSink::enabledKey()
{
    return QStringLiteral("Logging/Enabled");
}

QString LogSink::maxBytesKey()
{
    return QStringLiteral("Logging/MaxBytes");
}

void LogSink::setUp(const QString &folder, const QString &settingsFileName)
{
    QString openError;
    {
        BusyLock lock(m_mutex);
        m_file.close();
        m_folder = folder;
        m_settingsPath = folder.isEmpty() ? QString() : QDir(folder).filePath(settingsFileName);

        m_enabled = true;
        m_maxBytes = defaultMaxBytes;
        if (!m_settingsPath.isEmpty()) {
            const QSettings settings(m_settingsPath, QSettings::IniFormat);
            m_enabled = settings.value(enabledKey(), true).toBool();
            bool valid = false;
            const qint64 maxBytes = settings.value(maxBytesKey()).toLongLong(&valid);
            if (valid && maxBytes > 0)
                m_maxBytes = maxBytes;
        }

        if (!m_installed) {
            m_previous.storeRelease(qInstallMessageHandler(handleMessage));
            m_installed = true;
        }
        if (m_enabled)
            openError = openFile();
    }
    // Outside the lock, so that this line takes the normal way to the terminal.
    if (!openError.isEmpty())
        qWarning().noquote() << "LoggingMessages: no log file:" << openError;
}

void LogSink::shutDown()
{
    BusyLock lock(m_mutex);
    m_file.close();
    m_folder.clear();
    m_settingsPath.clear();
    if (!m_installed)
        return;
    const QtMessageHandler current = qInstallMessageHandler(m_previous.loadAcquire());
    if (current == handleMessage) {
        m_installed = false;
    } else {
        // Someone installed a handler after ours and may still call ours.
        // Taking ours out from under it is impossible, so theirs stays and
        // ours carries on as a plain pass-through with the file closed.
        qInstallMessageHandler(current);
    }
}

void LogSink::setEnabled(bool on)
{
    QString openError;
    {
        BusyLock lock(m_mutex);
        m_enabled = on;
        if (!on)
            m_file.close();
        else if (!m_folder.isEmpty() && !m_file.isOpen())
            openError = openFile();

        // Before setUp there is no file to keep the choice in; setUp reads
        // the stored one.
        if (!m_settingsPath.isEmpty()) {
            QSettings settings(m_settingsPath, QSettings::IniFormat);
            settings.setValue(enabledKey(), on);
            settings.sync();
        }
    }
    if (!openError.isEmpty())
        qWarning().noquote() << "LoggingMessages: no log file:" << openError;
}

bool LogSink::isEnabled() const
{
    BusyLock lock(m_mutex);
    return m_enabled;
}

void LogSink::handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    LogSink &sink = instance();
    if (!busyOnThisThread)
        sink.writeToFile(type, text);
    sink.passOn(type, context, text);
}

void LogSink::writeToFile(QtMsgType type, const QString &text)
{
    BusyLock lock(m_mutex);
    if (!m_enabled || !m_file.isOpen())
        return;
    // The time is taken under the lock so that the file's lines are in time order.
    const QByteArray lines = formatLines(type, text);
    if (m_fileSize > 0 && m_fileSize + lines.size() > m_maxBytes) {
        rotate();
        if (!m_file.isOpen())
            return;
    }
    const qint64 written = m_file.write(lines);
    if (written > 0)
        m_fileSize += written;
    // Unbuffered in effect: after a crash or a fatal message the last lines
    // are the ones that matter most.
    m_file.flush();
}

void LogSink::passOn(QtMsgType type, const QMessageLogContext &context, const QString &text) const
{
    if (const QtMessageHandler previous = m_previous.loadAcquire()) {
        previous(type, context, text);
        return;
    }
    // Only in the instant between installing the handler and learning the
    // previous one; the terminal is the best place left.
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

QString LogSink::openFile()
{
    if (m_folder.isEmpty())
        return QStringLiteral("no folder");
    if (!QDir().mkpath(m_folder))
        return QStringLiteral("cannot create the folder \"%1\"").arg(QDir::toNativeSeparators(m_folder));
    m_file.setFileName(QDir(m_folder).filePath(logFileName()));
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Append))
        return QStringLiteral("\"%1\": %2").arg(QDir::toNativeSeparators(m_file.fileName()), m_file.errorString());
    m_fileSize = m_file.size();
    return {};
}

void LogSink::rotate()
{
    const QString path = m_file.fileName();
    const QString previousPath = path + QStringLiteral(".1");
    m_file.close();
    QFile::remove(previousPath);
    // Should the rename fail, the file starts over all the same: the cap on
    // the disk space matters more than the old lines.
    const bool renamed = QFile::rename(path, previousPath);
    m_file.setFileName(path);
    const QIODevice::OpenMode mode = renamed ? QIODevice::WriteOnly | QIODevice::Append
                                             : QIODevice::WriteOnly | QIODevice::Truncate;
    m_fileSize = m_file.open(mode) ? m_file.size() : 0;
}
