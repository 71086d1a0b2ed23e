// Start-up time: from QProcess::start() to the end of the process, for the
// application and for a bare Qt dialog started the same way.
//
// The application copy has the recording updater beside it as Updater.so.
// With KESTREL_FIXTURE_ACTIONS=quit-on-check it quits from a zero timer in
// the update check, which the window calls right after it is shown, so the
// process ends right after its first window. The bare dialog quits at the same
// moment. Both run offscreen in one sandboxed HOME; the warm-up runs make the
// application copy its tool files, so every measured run is a second start.
// The two programs take turns, so a busy moment of the machine hits both.
//
//   kestrel_bench_startup [--runs N] [--warmup N]

#include "appinstallation.h"
#include "benchsupport.h"
#include "testsandbox.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QProcess>
#include <QTextStream>

#include <ctime>
#include <utility>

namespace {

qint64 nowNs()
{
    timespec now;
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1000000000 + now.tv_nsec;
}

struct Launch
{
    QString program;
    QStringList arguments;
    QProcessEnvironment environment;
    QString workingDirectory;
};

// Milliseconds from start() to exit, or a negative value with the reason.
double timeToExit(const Launch &launch, QString *problem)
{
    QProcess process;
    process.setProgram(launch.program);
    process.setArguments(launch.arguments);
    process.setProcessEnvironment(launch.environment);
    process.setWorkingDirectory(launch.workingDirectory);
    // No pipes to drain: the logging of either program costs what writing to
    // a file costs, and nothing of the benchmark's own reading is timed.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());

    QElapsedTimer timer;
    timer.start();
    process.start();
    const bool finished = process.waitForFinished(60000);
    const double ms = double(timer.nsecsElapsed()) / 1e6;

    if (!finished) {
        *problem = QStringLiteral("%1 did not end within 60 s (%2)").arg(launch.program, process.errorString());
        process.kill();
        process.waitForFinished();
        return -1.0;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        *problem = QStringLiteral("%1 ended with status %2, code %3 (%4)")
                       .arg(launch.program)
                       .arg(int(process.exitStatus()))
                       .arg(process.exitCode())
                       .arg(process.errorString());
        return -1.0;
    }
    return ms;
}

// One run of the start-up phase program: its phases in milliseconds (its
// counts as they are), plus "exit" (leaving main() to the end of the
// process) and "total".
bool phaseRun(const Launch &launch, const QString &mode, QHash<QString, double> *phases, QString *problem)
{
    QProcess process;
    process.setProgram(launch.program);
    process.setProcessEnvironment(launch.environment);
    process.setWorkingDirectory(launch.workingDirectory);
    process.setStandardErrorFile(QProcess::nullDevice());
    const qint64 started = nowNs();
    process.setArguments({ mode, QStringLiteral("--started-ns"), QString::number(started) });
    process.start();
    const bool finished = process.waitForFinished(60000);
    const qint64 ended = nowNs();
    const QString output = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    if (!finished || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0 || output.isEmpty()) {
        *problem = QStringLiteral("the phase program (%1) failed: %2").arg(mode, output);
        process.kill();
        process.waitForFinished();
        return false;
    }
    phases->clear();
    for (const QString &pair : output.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const qsizetype equals = pair.indexOf(QLatin1Char('='));
        const QString key = pair.left(equals);
        const double value = pair.mid(equals + 1).toDouble();
        const bool isCount = key == QStringLiteral("images") || key.endsWith(QStringLiteral("pixels"));
        phases->insert(key, isCount ? value : value / 1000.0);
    }
    phases->insert(QStringLiteral("exit"), double(ended / 1000) / 1000.0 - phases->value(QStringLiteral("end")));
    phases->insert(QStringLiteral("total"), double(ended - started) / 1e6);
    return true;
}

QString phaseLine(const QList<QHash<QString, double>> &runs, const QList<std::pair<const char *, const char *>> &names)
{
    QStringList parts;
    for (const auto &[key, label] : names) {
        QList<double> values;
        for (const QHash<QString, double> &run : runs)
            values << run.value(QLatin1String(key));
        parts << QStringLiteral("%1 %2").arg(QLatin1String(label), Bench::number(Bench::median(values)));
    }
    return parts.join(QStringLiteral(" | "));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int runs = Bench::intOption(arguments, QStringLiteral("--runs"), 20);
    const int warmups = Bench::intOption(arguments, QStringLiteral("--warmup"), 2);

    TestSandbox sandbox;
    AppInstallation installation;
    Bench::addWindowFixtures(installation);

    QProcessEnvironment environment = Bench::childEnvironment(sandbox);
    environment.insert(QStringLiteral("KESTREL_FIXTURE_ACTIONS"), QStringLiteral("quit-on-check"));

    const Launch app { QDir(installation.folder()).filePath(QStringLiteral("kestrel-downloader")), {}, environment,
        sandbox.home() };
    const Launch bare { Bench::bareDialogPath(), {}, environment, sandbox.home() };

    // The first warm-up start records what the updater saw, which proves the
    // process ends after its window was shown and not for another reason.
    QString problem;
    const QString record = QDir(sandbox.home()).filePath(QStringLiteral("updater-calls.txt"));
    Launch recorded = app;
    recorded.environment.insert(QStringLiteral("KESTREL_FIXTURE_RECORD"), record);
    for (int i = 0; i < warmups; ++i) {
        if (timeToExit(i == 0 ? recorded : app, &problem) < 0 || timeToExit(bare, &problem) < 0)
            return Bench::failedToRun("startup", problem);
    }
    QFile calls(record);
    const QString seen = calls.open(QIODevice::ReadOnly) ? QString::fromUtf8(calls.readAll()) : QString();
    if (!seen.contains(QStringLiteral("Updater.checkForUpdate")) || !seen.contains(QStringLiteral("|shown")))
        return Bench::failedToRun("startup", 
            QStringLiteral("the application did not reach the update check with its window shown; it recorded: %1")
                .arg(seen.isEmpty() ? QStringLiteral("nothing") : seen.trimmed()));
    for (const char *tool : { "kestreldl2", "ffmpeg" }) {
        if (!QFileInfo::exists(QDir(sandbox.dataFolder()).filePath(QLatin1String(tool))))
            return Bench::failedToRun("startup", 
                QStringLiteral("the warm-up start did not prepare the profile (%1 missing)").arg(QLatin1String(tool)));
    }

    QList<double> appTimes;
    QList<double> bareTimes;
    for (int i = 0; i < runs; ++i) {
        const double a = timeToExit(app, &problem);
        if (a < 0)
            return Bench::failedToRun("startup", problem);
        const double b = timeToExit(bare, &problem);
        if (b < 0)
            return Bench::failedToRun("startup", problem);
        appTimes << a;
        bareTimes << b;
    }

    const double appMedian = Bench::median(appTimes);
    const double bareMedian = Bench::median(bareTimes);
    const double ratio = appMedian / bareMedian;
    const double minRatio = Bench::minimum(appTimes) / Bench::minimum(bareTimes);

    QTextStream out(stdout);
    out << "startup: app " << Bench::number(appMedian) << " ms, bare dialog " << Bench::number(bareMedian)
        << " ms, ratio " << Bench::number(ratio, 2) << " (goal <= 1.25) " << Bench::verdict(ratio <= 1.25) << '\n';
    out << "startup: medians of " << runs << " runs each after " << warmups
        << " warm-up runs, taking turns; minimum app " << Bench::number(Bench::minimum(appTimes)) << " ms, bare dialog "
        << Bench::number(Bench::minimum(bareTimes)) << " ms, ratio of minimums " << Bench::number(minRatio, 2)
        << "; app extra " << Bench::number(appMedian - bareMedian) << " ms\n";

    // Where the time goes: the phase program in the same folder, started the
    // same way, with a clock reading between the steps of each sequence.
    installation.addCopyOf(QStringLiteral(KESTREL_BENCH_STARTUP_PHASES), QStringLiteral("startup-phases"));
    const Launch phasesProgram { QDir(installation.folder()).filePath(QStringLiteral("startup-phases")), {},
        environment, sandbox.home() };
    QList<QHash<QString, double>> appPhases;
    QList<QHash<QString, double>> barePhases;
    QList<QHash<QString, double>> iconPhases;
    QList<QHash<QString, double>> suffixedIconPhases;
    QList<QHash<QString, double>> windowPhases;
    QHash<QString, double> phases;
    const std::pair<QString, QList<QHash<QString, double>> *> modes[] = {
        { QStringLiteral("--app"), &appPhases },
        { QStringLiteral("--bare"), &barePhases },
        { QStringLiteral("--icons"), &iconPhases },
        { QStringLiteral("--icons-png"), &suffixedIconPhases },
        { QStringLiteral("--window"), &windowPhases },
    };
    for (int i = 0; i < warmups + runs; ++i) {
        for (const auto &[mode, runsOfMode] : modes) {
            if (!phaseRun(phasesProgram, mode, &phases, &problem))
                return Bench::failedToRun("startup", problem);
            if (i >= warmups)
                *runsOfMode << phases;
        }
    }
    out << "startup phases, app (ms, medians): "
        << phaseLine(appPhases,
               { { "launch", "launch" }, { "qapplication", "QApplication" }, { "plugins", "plug-in look-ups" },
                   { "files", "files" }, { "window", "window" }, { "setup", "command line+title" },
                   { "loopstart", "loop start" }, { "show", "show+update check" }, { "events", "events" },
                   { "teardown", "teardown" }, { "exit", "exit" }, { "total", "total" } })
        << '\n';
    out << "startup phases, bare dialog (ms, medians): "
        << phaseLine(barePhases,
               { { "launch", "launch" }, { "qapplication", "QApplication" }, { "window", "window" },
                   { "loopstart", "loop start" }, { "show", "show" }, { "events", "events" },
                   { "teardown", "teardown" }, { "exit", "exit" }, { "total", "total" } })
        << '\n';
    const auto medianOf = [&iconPhases](const char *key) {
        QList<double> values;
        for (const QHash<QString, double> &run : iconPhases)
            values << run.value(QLatin1String(key));
        return Bench::median(values);
    };
    out << "startup phases: the window form's " << medianOf("images") << " button images ("
        << QLocale(QLocale::English).toString(qint64(medianOf("pixels")))
        << " pixels) through QIcon::addFile (ms, medians): "
        << phaseLine(iconPhases, { { "first", "first time in a process" }, { "again", "again" } })
        << " | the same images in files named *.png: "
        << phaseLine(suffixedIconPhases, { { "first", "first time in a process" }, { "again", "again" } })
        << '\n';
    out << "startup phases: the window after Qt's one-time set-up (ms, medians): "
        << phaseLine(windowPhases,
               { { "qtsetup", "a bare dialog shown first" }, { "form", "the form alone (setupUi)" },
                   { "formimages", "its images alone" }, { "navigation", "the whole window" },
                   { "defaultfont", "sizing three labels in the default font" },
                   { "formfonts", "sizing the three widgets with the form's fonts" } })
        << '\n';
    return 0;
}
