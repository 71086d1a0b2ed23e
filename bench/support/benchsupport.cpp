#include "benchsupport.h"

#include "base/identity.h"
#include "downloader/filesetup.h"
#include "appinstallation.h"
#include "scenario.h"
#include "testsandbox.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <numeric>
#include <unistd.h>

namespace Bench {

double median(QList<double> values)
{
    if (values.isEmpty())
        return 0.0;
    std::sort(values.begin(), values.end());
    const qsizetype middle = values.size() / 2;
    return values.size() % 2 ? values.at(middle) : (values.at(middle - 1) + values.at(middle)) / 2.0;
}

double minimum(const QList<double> &values)
{
    return values.isEmpty() ? 0.0 : *std::min_element(values.begin(), values.end());
}

double mean(const QList<double> &values)
{
    return values.isEmpty() ? 0.0 : std::accumulate(values.begin(), values.end(), 0.0) / double(values.size());
}

QString number(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

QString verdict(bool met)
{
    return met ? QStringLiteral("met") : QStringLiteral("MISSED");
}

QProcessEnvironment childEnvironment(const TestSandbox &sandbox)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : sandbox.environment()) {
        const qsizetype equals = variable.indexOf(QLatin1Char('='));
        environment.insert(variable.left(equals), variable.mid(equals + 1));
    }
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.remove(QStringLiteral("QT_MESSAGE_PATTERN"));
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    environment.remove(QStringLiteral("KESTREL_FIXTURE_ACTIONS"));
    environment.remove(QStringLiteral("KESTREL_FIXTURE_RECORD"));
    return environment;
}

void sandboxThisProcess(TestSandbox &sandbox)
{
    sandbox.applyToThisProcess();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication::setApplicationName(Identity::applicationName());
    QCoreApplication::setOrganizationName(Identity::organisationName());
}

void addWindowFixtures(AppInstallation &installation)
{
    installation.addRecordingPlugin(QStringLiteral("updater"), QStringLiteral("Updater"));
    installation.addCopyOf(FakeTool::builtToolPath(), QStringLiteral("kestreldl2"));
    installation.addCopyOf(FakeTool::builtToolPath(), QStringLiteral("ffmpeg"));
}

int failedToRun(const char *benchmark, const QString &problem)
{
    std::fprintf(stderr, "%s: FAILED TO RUN: %s\n", benchmark, qPrintable(problem));
    return 2;
}

QString bareDialogPath()
{
    return QStringLiteral(KESTREL_BENCH_BARE_DIALOG);
}

bool installInstantTool(const TestSandbox &sandbox, QString *problem)
{
    const QString folder = dataFolder();
    const QString tool = QDir(folder).filePath(QStringLiteral("kestreldl2"));
    if (!QDir().mkpath(folder) || !(QFile::exists(tool) || QFile::copy(FakeTool::builtToolPath(), tool))) {
        *problem = QStringLiteral("cannot put the fake tool into %1").arg(folder);
        return false;
    }
    FakeTool::Behaviour metadata;
    metadata.stdoutChunks = { QStringLiteral("Bench title\n1:02\n") };
    const QString scenario = QDir(sandbox.home()).filePath(QStringLiteral("scenario.json"));
    if (!FakeTool::Scenario().set(FakeTool::Kind::metadata(), metadata).writeTo(scenario)) {
        *problem = QStringLiteral("cannot write %1").arg(scenario);
        return false;
    }
    qputenv(FakeTool::scenarioVariable(), QFile::encodeName(scenario));
    return true;
}

QString benchVideoAddress()
{
    return QStringLiteral("https://www.youtube.com/watch?v=Kestr3lBnch");
}

QStringList metadataArguments()
{
    return { QStringLiteral("--get-title"), QStringLiteral("--get-duration"), QStringLiteral("--no-warnings"),
        QStringLiteral("Kestr3lBnch") };
}

int intOption(const QStringList &arguments, const QString &name, int fallback)
{
    const qsizetype at = arguments.indexOf(name);
    if (at < 0 || at + 1 >= arguments.size())
        return fallback;
    bool ok = false;
    const int value = arguments.at(at + 1).toInt(&ok);
    return ok && value > 0 ? value : fallback;
}

void discardMessages(QtMsgType, const QMessageLogContext &, const QString &) { }

StandardErrorToNull::StandardErrorToNull()
{
    ::fflush(stderr);
    const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (null < 0)
        return;
    m_saved = ::dup(STDERR_FILENO);
    ::dup2(null, STDERR_FILENO);
    ::close(null);
}

StandardErrorToNull::~StandardErrorToNull()
{
    if (m_saved < 0)
        return;
    ::fflush(stderr);
    ::dup2(m_saved, STDERR_FILENO);
    ::close(m_saved);
}

} // namespace Bench
