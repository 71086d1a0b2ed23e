// The application's own cost per tool run: the time from
// KestrelDownloader::requestMetadata() to its haveMetadata signal, against a
// bare QProcess run of the same program with the same arguments and working
// folder, started and awaited through the event loop as well.
//
// The tool is the fake kestreldl2 in the sandbox's data folder; it prints a
// title and a duration and exits at once, so what remains is process start-up
// and the handling on our side. Metadata would normally chain into a format
// run; that connection is cut, so one request is one run. The two kinds of
// run take turns (app, bare, app, bare ...), so a busy moment of the machine
// hits both. Each run's clean-up (the deferred deletion of its process
// object) happens after its clock has stopped, for both kinds alike.
//
// Two passes: log messages dropped by a no-op handler (the driver's code
// alone), then Qt's default handler writing to a standard error that goes to
// /dev/null (the code path the application really takes, minus a terminal).
//
//   kestrel_bench_toolrun [--runs N] [--warmup N]

#include "downloader/filesetup.h"
#include "benchsupport.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "scenario.h"
#include "testsandbox.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <optional>

namespace {

class Runner
{
public:
    explicit Runner(KestrelDownloader &driver)
        : m_driver(driver)
    {
        // One request, one run: no format run after the metadata.
        QObject::disconnect(&m_driver, &KestrelDownloader::haveMetadata, &m_driver, &KestrelDownloader::requestFormats);
        QObject::connect(&m_driver, &KestrelDownloader::haveMetadata, &m_loop, [this] {
            m_outcome = QStringLiteral("haveMetadata");
            m_loop.quit();
        });
        QObject::connect(
            &m_driver, &KestrelDownloader::somethingWrong, &m_loop, [this](KestrelDownloader::errorType code) {
                m_outcome = QStringLiteral("somethingWrong %1").arg(int(code));
                m_loop.quit();
            });
        m_tool = QDir(dataFolder()).filePath(QStringLiteral("kestreldl2"));
    }

    // Microseconds from the request to the signal, or nothing with a reason.
    std::optional<double> appRun(QString *problem)
    {
        m_outcome.clear();
        QElapsedTimer timer;
        timer.start();
        m_driver.requestMetadata();
        m_loop.exec();
        const double us = double(timer.nsecsElapsed()) / 1e3;
        cleanUp();
        if (m_outcome != QStringLiteral("haveMetadata")) {
            *problem = QStringLiteral("the driver's metadata run ended with %1").arg(m_outcome);
            return std::nullopt;
        }
        return us;
    }

    // The same run with nothing but QProcess: created, started, awaited in
    // the event loop and its output read.
    std::optional<double> bareRun(QString *problem)
    {
        QString output;
        QElapsedTimer timer;
        timer.start();
        auto *process = new QProcess;
        process->setProgram(m_tool);
        process->setArguments(Bench::metadataArguments());
        process->setWorkingDirectory(dataFolder());
        QObject::connect(process, &QProcess::finished, &m_loop, [this, process, &output] {
            output = QString::fromUtf8(process->readAllStandardOutput());
            m_loop.quit();
        });
        process->start(QIODevice::ReadWrite);
        m_loop.exec();
        const double us = double(timer.nsecsElapsed()) / 1e3;
        delete process;
        cleanUp();
        if (!output.contains(QStringLiteral("Bench title"))) {
            *problem = QStringLiteral("the bare run printed \"%1\"").arg(output);
            return std::nullopt;
        }
        return us;
    }

private:
    static void cleanUp() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    KestrelDownloader &m_driver;
    QEventLoop m_loop;
    QString m_outcome;
    QString m_tool;
};

struct Pass
{
    QList<double> app;
    QList<double> bare;
};

bool runPass(Runner &runner, int runs, Pass *pass, QString *problem)
{
    for (int i = 0; i < runs; ++i) {
        const std::optional<double> a = runner.appRun(problem);
        if (!a)
            return false;
        const std::optional<double> b = runner.bareRun(problem);
        if (!b)
            return false;
        pass->app << *a;
        pass->bare << *b;
    }
    return true;
}

// The arguments and folder of one driver run, as the fake tool records them,
// must be those of the bare run, or the comparison would not be fair.
bool sameRunAsBare(const TestSandbox &sandbox, Runner &runner, QString *problem)
{
    const QString scenario = QDir(sandbox.home()).filePath(QStringLiteral("recording-scenario.json"));
    const QString record = QDir(sandbox.home()).filePath(QStringLiteral("record.jsonl"));
    FakeTool::Behaviour metadata;
    metadata.stdoutChunks = { QStringLiteral("Bench title\n1:02\n") };
    FakeTool::Scenario().set(FakeTool::Kind::metadata(), metadata).record(record).writeTo(scenario);
    const QByteArray plain = qgetenv(FakeTool::scenarioVariable());
    qputenv(FakeTool::scenarioVariable(), QFile::encodeName(scenario));
    const bool ran = bool(runner.appRun(problem));
    qputenv(FakeTool::scenarioVariable(), plain);
    if (!ran)
        return false;
    const QList<FakeTool::Invocation> runs = FakeTool::readRecord(record);
    if (runs.size() != 1 || runs.first().arguments != Bench::metadataArguments()
        || QDir(runs.first().workingDirectory).canonicalPath() != QDir(dataFolder()).canonicalPath()) {
        *problem = QStringLiteral("the driver ran the tool differently from the bare run: %1")
                       .arg(runs.isEmpty() ? QStringLiteral("no run") : runs.first().arguments.join(QLatin1Char(' ')));
        return false;
    }
    return true;
}

void report(QTextStream &out, const char *label, const Pass &pass, bool headline)
{
    const double app = Bench::median(pass.app);
    const double bare = Bench::median(pass.bare);
    const double ratio = app / bare;
    if (headline) {
        out << "tool run: app " << Bench::number(app) << " us, bare QProcess " << Bench::number(bare) << " us, ratio "
            << Bench::number(ratio, 2) << " (goal <= 1.10) " << Bench::verdict(ratio <= 1.10) << '\n';
    }
    out << "tool run: " << label << ": medians app " << Bench::number(app) << " us, bare " << Bench::number(bare)
        << " us, ratio " << Bench::number(ratio, 2) << ", app extra " << Bench::number(app - bare) << " us; means app "
        << Bench::number(Bench::mean(pass.app)) << " us, bare " << Bench::number(Bench::mean(pass.bare))
        << " us, ratio " << Bench::number(Bench::mean(pass.app) / Bench::mean(pass.bare), 2) << "; " << pass.app.size()
        << " runs each\n";
}

} // namespace

int main(int argc, char **argv)
{
    // Every standard location of this process lies in the sandbox before the
    // application object exists, as in the application's own tests.
    TestSandbox sandbox;
    Bench::sandboxThisProcess(sandbox);
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int runs = Bench::intOption(arguments, QStringLiteral("--runs"), 500);
    const int warmups = Bench::intOption(arguments, QStringLiteral("--warmup"), 20);

    QString problem;
    if (!Bench::installInstantTool(sandbox, &problem))
        return Bench::failedToRun("tool run", problem);

    VideoInfo info;
    KestrelDownloader driver(info);
    if (!driver.setUrl(Bench::benchVideoAddress()))
        return Bench::failedToRun("tool run", QStringLiteral("the driver refused the address %1").arg(Bench::benchVideoAddress()));
    Runner runner(driver);

    QTextStream out(stdout);
    Pass quiet;
    Pass logged;
    {
        const QtMessageHandler previous = qInstallMessageHandler(Bench::discardMessages);
        Pass warmup;
        const bool ok = sameRunAsBare(sandbox, runner, &problem) && runPass(runner, warmups, &warmup, &problem)
            && runPass(runner, runs, &quiet, &problem);
        qInstallMessageHandler(previous);
        if (!ok)
            return Bench::failedToRun("tool run", problem);
    }
    {
        const Bench::StandardErrorToNull silence;
        Pass warmup;
        if (!runPass(runner, warmups, &warmup, &problem) || !runPass(runner, runs, &logged, &problem))
            problem.prepend(QStringLiteral("with default logging: "));
    }
    if (!problem.isEmpty())
        return Bench::failedToRun("tool run", problem);
    if (KestrelDownloader::processObjectCount() != 0)
        return Bench::failedToRun("tool run", QStringLiteral("%1 process objects still exist after all runs")
                        .arg(KestrelDownloader::processObjectCount()));

    report(out, "messages dropped", quiet, true);
    report(out, "Qt's default message handler into /dev/null", logged, false);
    return 0;
}
