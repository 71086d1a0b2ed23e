#include "toolpreparation.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

ToolPreparation::ToolPreparation(QObject *parent)
    : QObject(parent)
{
    connect(&m_launcher, &QProcess::finished, this, &ToolPreparation::whenFinished);
}

ToolPreparation::~ToolPreparation()
{
    // An install cut short leaves the installed copies as they were; the
    // next start tries again.
    if (m_launcher.state() != QProcess::NotRunning) {
        m_launcher.kill();
        m_launcher.waitForFinished(3000);
    }
}

QString ToolPreparation::launcherPath()
{
#if defined(Q_OS_WIN)
    const QString name = QStringLiteral("kestreldl2.exe");
#else
    const QString name = QStringLiteral("kestreldl2");
#endif
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).filePath(name);
}

void ToolPreparation::start()
{
    const QString launcher = launcherPath();
    if (m_launcher.state() != QProcess::NotRunning || !QFileInfo(launcher).isExecutable())
        return;
    qInfo().noquote() << "[UPD] readying the downloader tool in the background:" << QDir::toNativeSeparators(launcher);
    m_launcher.setProgram(launcher);
    m_launcher.setArguments({QStringLiteral("--update"), QStringLiteral("--background")});
    m_launcher.setWorkingDirectory(QFileInfo(launcher).absolutePath());
    m_launcher.setStandardInputFile(QProcess::nullDevice());
    m_launcher.setStandardOutputFile(QProcess::nullDevice());
    m_launcher.setStandardErrorFile(QProcess::nullDevice());
    m_launcher.start();
}

void ToolPreparation::whenFinished(int exitCode, QProcess::ExitStatus status)
{
    if (status == QProcess::NormalExit && exitCode == 0)
        qInfo().noquote() << "[UPD] the downloader tool is ready";
    else
        qInfo().noquote() << "[UPD] the downloader tool could not be readied in the background; its first run installs it";
}
