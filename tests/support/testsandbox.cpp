#include "testsandbox.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>

namespace {

const char *const appFolder = "Halvard Software/Kestrel Downloader";

struct Variable
{
    const char *name;
    const char *relativePath;
};

// HOME and every XDG folder a Qt program may ask for.
constexpr Variable sandboxVariables[] = {
    {"HOME", ""},
    {"XDG_DATA_HOME", ".local/share"},
    {"XDG_CONFIG_HOME", ".config"},
    {"XDG_CACHE_HOME", ".cache"},
    {"XDG_STATE_HOME", ".local/state"},
    {"XDG_RUNTIME_DIR", "runtime"},
};

} // namespace

TestSandbox::TestSandbox()
{
    QDir root(m_root.path());
    for (const Variable &variable : sandboxVariables)
        root.mkpath(QString::fromLatin1(variable.relativePath).isEmpty() ? QStringLiteral(".") : QString::fromLatin1(variable.relativePath));
    QFile::setPermissions(root.filePath(QStringLiteral("runtime")),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

QString TestSandbox::home() const
{
    return m_root.path();
}

QString TestSandbox::dataFolder() const
{
    return QStringLiteral("%1/.local/share/%2").arg(home(), QLatin1String(appFolder));
}

QString TestSandbox::settingsFile() const
{
    return dataFolder() + QStringLiteral("/settings.ini");
}

QString TestSandbox::downloadFolder() const
{
    return home() + QStringLiteral("/Downloads");
}

QStringList TestSandbox::environment() const
{
    QStringList variables;
    for (const Variable &variable : sandboxVariables) {
        const QString path = QString::fromLatin1(variable.relativePath).isEmpty()
                                 ? home()
                                 : QStringLiteral("%1/%2").arg(home(), QLatin1String(variable.relativePath));
        variables << QStringLiteral("%1=%2").arg(QLatin1String(variable.name), path);
    }
    return variables;
}

void TestSandbox::applyToThisProcess() const
{
    for (const QString &variable : environment()) {
        const qsizetype equals = variable.indexOf(QLatin1Char('='));
        qputenv(variable.left(equals).toLatin1().constData(), variable.mid(equals + 1).toLocal8Bit());
    }
}
