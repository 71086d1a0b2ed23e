// Memory growth over many tool runs: 1,000 metadata runs of the downloader
// driver against the instant fake tool, in this process, as the application
// would make them one after another.
//
// The baseline is taken after the first 10 runs, when every lazily created
// object (the tool path, Qt's process machinery, the log formatting) exists;
// growth after it is what a long session would keep piling up. Two figures:
// the heap glibc reports in use (mallinfo2: uordblks + hblkhd), which shows a
// leak byte for byte, and VmRSS, which is what the system sees. Each run's
// process object is released through the event loop, which is given the
// chance after every run, as the application's event loop would. The log
// messages go through Qt's default handler into /dev/null, so the code path
// is the application's.
//
//   kestrel_bench_memorygrowth [--runs N]

#include "downloader/filesetup.h"
#include "benchsupport.h"
#include "processprobe.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "testsandbox.h"

#include <QApplication>
#include <QEventLoop>
#include <QTextStream>


namespace {

struct Point
{
    int runs = 0;
    qint64 heap = 0; // bytes
    qint64 rss = 0; // KiB
};

QString kib(double bytes)
{
    return Bench::number(bytes / 1024.0);
}

} // namespace

int main(int argc, char **argv)
{
    TestSandbox sandbox;
    Bench::sandboxThisProcess(sandbox);
    QApplication application(argc, argv);
    const int runs = Bench::intOption(QCoreApplication::arguments(), QStringLiteral("--runs"), 1000);
    const int baselineRuns = 10;

    QString problem;
    if (!Bench::installInstantTool(sandbox, &problem))
        return Bench::failedToRun("memory growth", problem);

    VideoInfo info;
    KestrelDownloader driver(info);
    if (!driver.setUrl(Bench::benchVideoAddress()))
        return Bench::failedToRun("memory growth", QStringLiteral("the driver refused the address %1").arg(Bench::benchVideoAddress()));
    QObject::disconnect(&driver, &KestrelDownloader::haveMetadata, &driver, &KestrelDownloader::requestFormats);

    QEventLoop loop;
    QString outcome;
    QObject::connect(&driver, &KestrelDownloader::haveMetadata, &loop, [&] {
        outcome = QStringLiteral("haveMetadata");
        loop.quit();
    });
    QObject::connect(&driver, &KestrelDownloader::somethingWrong, &loop, [&](KestrelDownloader::errorType code) {
        outcome = QStringLiteral("somethingWrong %1").arg(int(code));
        loop.quit();
    });

    const QList<int> checkpoints { baselineRuns, 100, 250, 500, 750, runs };
    QList<Point> points;
    {
        const Bench::StandardErrorToNull silence;
        for (int run = 1; run <= runs; ++run) {
            outcome.clear();
            driver.requestMetadata();
            loop.exec();
            if (outcome != QStringLiteral("haveMetadata")) {
                problem = QStringLiteral("run %1 ended with %2").arg(run).arg(outcome);
                break;
            }
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            if (checkpoints.contains(run) && (points.isEmpty() || points.last().runs != run))
                points << Point { run, ProcessProbe::heapBytesInUse(), ProcessProbe::statusKiB(0, "VmRSS") };
        }
    }
    if (!problem.isEmpty())
        return Bench::failedToRun("memory growth", problem);
    if (KestrelDownloader::processObjectCount() != 0)
        return Bench::failedToRun("memory growth", QStringLiteral("%1 process objects still exist after all runs")
                        .arg(KestrelDownloader::processObjectCount()));

    const Point &first = points.first();
    const Point &last = points.last();
    const double heapGrowth = double(last.heap - first.heap);
    const double rssGrowth = double(last.rss - first.rss) * 1024.0;
    const double limit = 1000.0 * 1000.0; // 1 MB
    const bool met = heapGrowth < limit && rssGrowth < limit;

    QTextStream out(stdout);
    out << "memory growth: heap " << (heapGrowth >= 0 ? "+" : "") << kib(heapGrowth) << " KiB, VmRSS "
        << (rssGrowth >= 0 ? "+" : "") << kib(rssGrowth) << " KiB from run " << first.runs << " to run " << last.runs
        << " (goal < 1 MB each) " << Bench::verdict(met) << '\n';
    out << "memory growth: heap per run " << Bench::number(heapGrowth / double(last.runs - first.runs), 1)
        << " bytes; after run";
    for (const Point &point : points)
        out << ' ' << point.runs << ": heap " << kib(double(point.heap)) << " KiB, VmRSS " << point.rss << " KiB;";
    out << '\n';
    return 0;
}
