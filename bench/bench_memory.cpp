// Resident memory with the start page shown, for the application and for a
// bare Qt dialog.
//
// Both stay open. The application's recording updater writes its
// "checkForUpdate" line when the window calls it, right after show(); the
// bare dialog writes "shown" at the same moment. The benchmark polls for that
// line, reads /proc/<pid>/status at once ("at show"), again after a settle
// time in which the first frame is painted ("settled"), and then kills the
// process. The ratio is taken on the settled VmRSS.
//
//   kestrel_bench_memory [--runs N] [--settle-ms N]

#include "appinstallation.h"
#include "benchsupport.h"
#include "processprobe.h"
#include "testsandbox.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTextStream>
#include <QThread>


namespace {

struct Sample
{
    qint64 rssAtShow = -1;
    qint64 rss = -1;
    qint64 hwm = -1;
    qint64 anon = -1;
    qint64 file = -1;
    qint64 shmem = -1;
};

struct Launch
{
    QString program;
    QStringList arguments;
    QProcessEnvironment environment;
    QString workingDirectory;
    QString markFile;
    QString mark;
};

bool fileHolds(const QString &path, const QString &text)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && QString::fromUtf8(file.readAll()).contains(text);
}

bool measure(const Launch &launch, int settleMs, Sample *sample, QString *problem)
{
    QFile::remove(launch.markFile);
    QProcess process;
    process.setProgram(launch.program);
    process.setArguments(launch.arguments);
    process.setProcessEnvironment(launch.environment);
    process.setWorkingDirectory(launch.workingDirectory);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start();
    if (!process.waitForStarted(30000)) {
        *problem = QStringLiteral("%1 did not start: %2").arg(launch.program, process.errorString());
        return false;
    }
    const qint64 pid = process.processId();

    bool shown = false;
    QDeadlineTimer deadline(60000);
    while (!deadline.hasExpired() && process.state() == QProcess::Running) {
        if (fileHolds(launch.markFile, launch.mark)) {
            shown = true;
            break;
        }
        QThread::usleep(500);
        // Lets QProcess notice an early end of the child.
        process.waitForFinished(0);
    }
    if (shown) {
        sample->rssAtShow = ProcessProbe::statusKiB(pid, "VmRSS");
        QThread::msleep(settleMs);
        sample->rss = ProcessProbe::statusKiB(pid, "VmRSS");
        sample->hwm = ProcessProbe::statusKiB(pid, "VmHWM");
        sample->anon = ProcessProbe::statusKiB(pid, "RssAnon");
        sample->file = ProcessProbe::statusKiB(pid, "RssFile");
        sample->shmem = ProcessProbe::statusKiB(pid, "RssShmem");
    }
    const bool stillRunning = process.state() == QProcess::Running;
    process.kill();
    process.waitForFinished(30000);

    if (!shown) {
        *problem = QStringLiteral("%1 never showed its window (it %2)")
                       .arg(launch.program,
                           stillRunning ? QStringLiteral("kept running for 60 s") : QStringLiteral("ended"));
        return false;
    }
    if (!stillRunning || sample->rss < 0) {
        *problem = QStringLiteral("%1 ended before its memory could be read").arg(launch.program);
        return false;
    }
    return true;
}

QList<double> column(const QList<Sample> &samples, qint64 Sample::*field)
{
    QList<double> values;
    for (const Sample &sample : samples)
        values << double(sample.*field);
    return values;
}

QString mib(double kib)
{
    return Bench::number(kib / 1024.0);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int runs = Bench::intOption(arguments, QStringLiteral("--runs"), 5);
    const int settleMs = Bench::intOption(arguments, QStringLiteral("--settle-ms"), 500);

    TestSandbox sandbox;
    AppInstallation installation;
    Bench::addWindowFixtures(installation);

    const QString appMark = QDir(sandbox.home()).filePath(QStringLiteral("updater-calls.txt"));
    const QString bareMark = QDir(sandbox.home()).filePath(QStringLiteral("bare-shown.txt"));
    QProcessEnvironment appEnvironment = Bench::childEnvironment(sandbox);
    // No quit action: the application stays open with its start page.
    appEnvironment.insert(QStringLiteral("KESTREL_FIXTURE_ACTIONS"), QString());
    appEnvironment.insert(QStringLiteral("KESTREL_FIXTURE_RECORD"), appMark);

    const Launch app { QDir(installation.folder()).filePath(QStringLiteral("kestrel-downloader")), {}, appEnvironment,
        sandbox.home(), appMark, QStringLiteral("Updater.checkForUpdate") };
    const Launch bare { Bench::bareDialogPath(), { QStringLiteral("--stay"), bareMark },
        Bench::childEnvironment(sandbox), sandbox.home(), bareMark, QStringLiteral("shown") };

    // One start of each first: the application's first start copies its tool
    // files, and every measured run should be an ordinary second start.
    QString problem;
    Sample ignored;
    if (!measure(app, 0, &ignored, &problem) || !measure(bare, 0, &ignored, &problem))
        return Bench::failedToRun("memory", problem);

    QList<Sample> appSamples;
    QList<Sample> bareSamples;
    for (int i = 0; i < runs; ++i) {
        Sample a;
        Sample b;
        if (!measure(app, settleMs, &a, &problem) || !measure(bare, settleMs, &b, &problem))
            return Bench::failedToRun("memory", problem);
        appSamples << a;
        bareSamples << b;
    }

    const double appRss = Bench::median(column(appSamples, &Sample::rss));
    const double bareRss = Bench::median(column(bareSamples, &Sample::rss));
    const double ratio = appRss / bareRss;

    QTextStream out(stdout);
    out << "memory: app " << mib(appRss) << " MiB, bare dialog " << mib(bareRss)
        << " MiB, ratio "
        // Three decimals: the figure sits close to its goal.
        << Bench::number(ratio, 3) << " (goal <= 1.25) " << Bench::verdict(ratio <= 1.25) << '\n';
    out << "memory: VmRSS " << settleMs << " ms after show, median of " << runs << " runs each; app extra "
        << mib(appRss - bareRss) << " MiB\n";
    const auto detail = [&out](const char *name, const QList<Sample> &samples) {
        out << "memory: " << name << " at show " << mib(Bench::median(column(samples, &Sample::rssAtShow)))
            << " MiB, settled " << mib(Bench::median(column(samples, &Sample::rss))) << " MiB (anon "
            << mib(Bench::median(column(samples, &Sample::anon))) << ", file "
            << mib(Bench::median(column(samples, &Sample::file))) << ", shmem "
            << mib(Bench::median(column(samples, &Sample::shmem))) << "), peak VmHWM "
            << mib(Bench::median(column(samples, &Sample::hwm))) << " MiB\n";
    };
    detail("app", appSamples);
    detail("bare dialog", bareSamples);
    return 0;
}
