#include "sysinfoplugin.h"

#include "dialogparent.h"
#include "identifierdialog.h"
#include "machineidentifier.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <QSysInfo>

void SysInfoPlugin::reserved()
{
}

void SysInfoPlugin::setApplicationInfo(QString version, QString buildDate, int first, int second)
{
    m_version = version;
    m_buildDate = buildDate;
    m_first = first;
    m_second = second;
}

void SysInfoPlugin::showIdentifier()
{
    IdentifierDialog dialog(identifier(), PluginDialogs::dialogParent());
    dialog.exec();
}

QString SysInfoPlugin::systemInformation()
{
    const QString version = m_version.isEmpty() ? QCoreApplication::applicationVersion() : m_version;
    QString application = QStringList{QCoreApplication::applicationName(), version}.join(QLatin1Char(' ')).trimmed();
    if (!m_buildDate.isEmpty())
        application += tr(" (build %1)").arg(m_buildDate);

    QStringList lines;
    if (!application.isEmpty())
        lines << application;
    lines << tr("Operating system: %1").arg(QSysInfo::prettyProductName())
          << tr("Kernel: %1 %2").arg(QSysInfo::kernelType(), QSysInfo::kernelVersion())
          << tr("CPU architecture: %1").arg(QSysInfo::currentCpuArchitecture())
          << tr("Qt version: %1").arg(QString::fromLatin1(qVersion()));
    return lines.join(QLatin1Char('\n'));
}

QString SysInfoPlugin::identifier()
{
    if (m_identifier.isEmpty()) {
        m_identifier = machineIdentifier(QSysInfo::machineUniqueId(),
                                         QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    }
    return m_identifier;
}
