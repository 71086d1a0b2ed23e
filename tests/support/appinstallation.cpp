#include "appinstallation.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QTest>

AppInstallation::AppInstallation()
{
    const QString executable = QStringLiteral(KESTREL_APP_EXECUTABLE);
    const QString copy = QDir(folder()).filePath(QFileInfo(executable).fileName());
    if (!QFile::copy(executable, copy))
        qFatal("cannot copy the application executable %s", qPrintable(executable));
}

QString AppInstallation::folder() const
{
    return m_folder.path();
}

void AppInstallation::addRecordingPlugin(const QString &kind, const QString &baseName)
{
    const QString source = QStringLiteral("%1/recording_%2" KESTREL_MODULE_SUFFIX).arg(QStringLiteral(KESTREL_FIXTURE_PLUGIN_DIR), kind);
    const QString target = QStringLiteral("%1/%2" KESTREL_MODULE_SUFFIX).arg(folder(), baseName);
    QFile::remove(target);
    if (!QFile::copy(source, target))
        qFatal("cannot copy the recording plug-in %s", qPrintable(source));
}

void AppInstallation::addAllRecordingPlugins()
{
    addRecordingPlugin(QStringLiteral("logging"), QStringLiteral("LoggingMessages"));
    addRecordingPlugin(QStringLiteral("sysinfo"), QStringLiteral("SysInfo"));
    addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("Updater"));
    addRecordingPlugin(QStringLiteral("about"), QStringLiteral("About"));
}

void AppInstallation::addFile(const QString &name, const QByteArray &content)
{
    QFile file(QDir(folder()).filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

void AppInstallation::addCopyOf(const QString &source, const QString &name)
{
    const QString target = QDir(folder()).filePath(name);
    QFile::remove(target);
    if (!QFile::copy(source, target))
        qFatal("cannot copy %s", qPrintable(source));
}

void AppInstallation::addTranslations()
{
    const QDir source(QFileInfo(QStringLiteral(KESTREL_APP_EXECUTABLE)).dir().filePath(QStringLiteral("translations")));
    const QDir target(QDir(folder()).filePath(QStringLiteral("translations")));
    if (!target.mkpath(QStringLiteral(".")))
        qFatal("cannot make %s", qPrintable(target.path()));
    const QStringList catalogues = source.entryList({QStringLiteral("*.qm")}, QDir::Files);
    if (catalogues.isEmpty())
        qFatal("no catalogues in %s", qPrintable(source.path()));
    for (const QString &catalogue : catalogues) {
        if (!QFile::copy(source.filePath(catalogue), target.filePath(catalogue)))
            qFatal("cannot copy %s", qPrintable(catalogue));
    }
}

AppInstallation::Run AppInstallation::run(const TestSandbox &sandbox, const QStringList &arguments,
                                          const QStringList &fixtureActions, int timeoutMs) const
{
    return execute(sandbox, arguments, fixtureActions, timeoutMs, {}, 0);
}

AppInstallation::Run AppInstallation::runUntilLogged(const TestSandbox &sandbox, const QStringList &arguments,
                                                     const QString &text, int settleMs, int timeoutMs) const
{
    return execute(
        sandbox, arguments, {}, timeoutMs, [text](const QString &log) { return log.contains(text); }, settleMs);
}

AppInstallation::Run AppInstallation::execute(const TestSandbox &sandbox, const QStringList &arguments,
                                              const QStringList &fixtureActions, int timeoutMs,
                                              const std::function<bool(const QString &)> &stopWhen, int settleMs) const
{
    const QString records = m_records.filePath(QStringLiteral("calls.txt"));
    QFile::remove(records);

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : sandbox.environment()) {
        const qsizetype equals = variable.indexOf(QLatin1Char('='));
        environment.insert(variable.left(equals), variable.mid(equals + 1));
    }
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("KESTREL_FIXTURE_RECORD"), records);
    environment.insert(QStringLiteral("KESTREL_FIXTURE_ACTIONS"), fixtureActions.join(QLatin1Char(',')));
    environment.remove(QStringLiteral("QT_MESSAGE_PATTERN"));
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
#ifdef Q_OS_WIN
    // A Windows GUI program without a console hands its messages to the
    // debugger, not to standard error, unless told to.
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
#endif

    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(sandbox.home());
    process.start(QDir(folder()).filePath(QFileInfo(QStringLiteral(KESTREL_APP_EXECUTABLE)).fileName()), arguments);
    if (!process.waitForStarted())
        qFatal("cannot start the application copy");

    QString errorText;
    QDeadlineTimer deadline(timeoutMs);
    Run result;
    while (!deadline.hasExpired()) {
        if (process.waitForFinished(20)) {
            result.finished = true;
            break;
        }
        errorText += QString::fromUtf8(process.readAllStandardError());
        if (stopWhen && stopWhen(errorText)) {
            result.finished = process.waitForFinished(settleMs);
            break;
        }
    }
    if (!result.finished) {
        process.kill();
        process.waitForFinished();
    }
    errorText += QString::fromUtf8(process.readAllStandardError());

    QString outputText = QString::fromUtf8(process.readAllStandardOutput());
#ifdef Q_OS_WIN
    // Both are text streams, whose lines end with CR LF on Windows.
    outputText.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    errorText.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
#endif

    result.exitCode = process.exitCode();
    result.exitStatus = process.exitStatus();
    result.standardOutput = outputText;
    result.logLines = errorText.split(QLatin1Char('\n'));
    QFile calls(records);
    if (calls.open(QIODevice::ReadOnly | QIODevice::Text))
        result.calls = QString::fromUtf8(calls.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return result;
}
