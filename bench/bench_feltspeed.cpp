// The speed a user feels for one video: the whole walk through the window
// (address, title and duration, format list, download) with a stand-in for
// yt-dlp that costs what the real one costs a user and nothing else: a fixed
// time to start, and a fixed time for every extraction of the video from the
// service. It runs through the real launcher, once with its information
// cache and once with the cache switched off (KESTREL_INFO_CACHE=off).
//
// Reports, for each: how many extractions one video took, and the time from
// Enter in the address field to the title, to the format list, to the first
// progress and to the finished download (medians of the walks).
//
//   kestrel_bench_feltspeed [--walks N] [--extraction-ms N] [--start-ms N]

#include "downloader/filesetup.h"
#include "benchsupport.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "plugins/plugins.h"
#include "testsandbox.h"
#include "ui/navigation.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>
#include <QTextStream>

#include <optional>

namespace {

// yt-dlp's command line as far as the walk needs it: an extraction unless a
// document is loaded, the information document on --print-to-file, and the
// three outputs the application reads.
const char standIn[] = R"(#!/bin/bash
sleep "$FELT_START"
for argument in "$@"; do
    if [ "$argument" = --version ]; then echo 2026.11.01; exit 0; fi
done
document= written= target= expect= title= listing=
for argument in "$@"; do
    case "$expect" in
        document) document=$argument; expect=; continue ;;
        template) expect=written; continue ;;
        written) written=$argument; expect=; continue ;;
        value) expect=; continue ;;
    esac
    case "$argument" in
        --load-info-json) expect=document ;;
        --print-to-file) expect=template ;;
        --get-title) title=1 ;;
        --list-formats) listing=1 ;;
        --encoding | --js-runtimes | --retries | --concurrent-fragments | --output-na-placeholder | \
            --trim-filenames | --progress-delta | --merge-output-format | --format | --ffmpeg-location | \
            --path | --output) expect=value ;;
        -*) ;;
        *) target=$argument ;;
    esac
done
if [ -z "$target" ] && [ -z "$document" ]; then
    echo 'yt-dlp: error: You must provide at least one URL.' >&2
    exit 2
fi
if [ -z "$document" ]; then
    echo "$target" >> "$FELT_RECORD"
    sleep "$FELT_EXTRACTION"
fi
if [ -n "$title" ]; then
    printf 'Felt Speed Clip\n3:05\n'
    if [ -n "$written" ]; then echo '{"id": "felt"}' >> "$written"; fi
elif [ -n "$listing" ]; then
    printf '[info] Available formats for felt:\nID  EXT  RESOLUTION | FILESIZE\n---\n22  mp4  1280x720   | 28.11MiB\n18  mp4  640x360    |  9.35MiB\n'
else
    printf '[download]   1.0%% of 28.11MiB'
    sleep 0.2
    printf '\r[download] 100%% of 28.11MiB in 00:00:01\n'
fi
)";

struct Walk
{
    int extractions = 0;
    double title = 0;
    double formats = 0;
    double progress = 0;
    double done = 0;
};

qsizetype lineCount(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().count('\n');
}

// One video from the address to the finished download, as a user does it.
std::optional<Walk> walk(const QString &video, const QString &record, QString *problem)
{
    VideoInfo info;
    KestrelDownloader driver(info);
    Plugins plugins;
    Navigation window(driver, info, plugins);
    window.showMainWindow();
    if (!QTest::qWaitForWindowExposed(&window)) {
        *problem = QStringLiteral("the window was not shown");
        return std::nullopt;
    }
    QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("pushButton_Video")), Qt::LeftButton);
    auto *edit = window.findChild<QLineEdit *>(QStringLiteral("editURL"));
    edit->setText(QStringLiteral("https://www.youtube.com/watch?v=") + video);

    Walk measured;
    QElapsedTimer clock;
    const auto ms = [&clock] { return clock.nsecsElapsed() / 1e6; };
    QObject context;
    QObject::connect(&driver, &KestrelDownloader::haveMetadata, &context, [&] { measured.title = ms(); });
    QObject::connect(&driver, &KestrelDownloader::haveFormats, &context, [&] { measured.formats = ms(); });
    QObject::connect(&driver, &KestrelDownloader::percent, &context, [&] {
        if (measured.progress == 0)
            measured.progress = ms();
    });
    QSignalSpy formats(&driver, &KestrelDownloader::haveFormats);
    QSignalSpy finished(&driver, &KestrelDownloader::haveVideo);
    QSignalSpy failure(&driver, &KestrelDownloader::somethingWrong);
    const qsizetype extractionsBefore = lineCount(record);

    clock.start();
    QTest::keyClick(edit, Qt::Key_Return);
    if (!formats.wait(60000) || measured.title == 0) {
        *problem = QStringLiteral("no title and format list for %1 (%2 failures)").arg(video).arg(failure.size());
        return std::nullopt;
    }
    auto *table = window.findChild<QTableView *>(QStringLiteral("tableView"));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(table->model()->index(0, 2)).center());
    if (!finished.wait(60000)) {
        *problem = QStringLiteral("the download of %1 did not finish (%2 failures)").arg(video).arg(failure.size());
        return std::nullopt;
    }
    measured.done = ms();
    measured.extractions = int(lineCount(record) - extractionsBefore);
    return measured;
}

// The walks of one mode, each with a video of its own.
std::optional<QList<Walk>> walks(int count, const QString &mode, const QString &record, QString *problem)
{
    QList<Walk> done;
    for (int i = 0; i < count; ++i) {
        const std::optional<Walk> measured = walk(QStringLiteral("felt%1%2").arg(mode).arg(i, 4, 10, QLatin1Char('0')), record, problem);
        if (!measured)
            return std::nullopt;
        done << *measured;
    }
    return done;
}

QList<double> each(const QList<Walk> &walks, double Walk::*field)
{
    QList<double> values;
    for (const Walk &walk : walks)
        values << walk.*field;
    return values;
}

int mostExtractions(const QList<Walk> &walks)
{
    int most = 0;
    for (const Walk &walk : walks)
        most = qMax(most, walk.extractions);
    return most;
}

void report(QTextStream &out, const char *label, const QList<Walk> &walks)
{
    out << "felt speed, " << label << ": time to title " << Bench::number(Bench::median(each(walks, &Walk::title)), 0)
        << " ms, to formats " << Bench::number(Bench::median(each(walks, &Walk::formats)), 0) << " ms, to first progress "
        << Bench::number(Bench::median(each(walks, &Walk::progress)), 0) << " ms, to the finished download "
        << Bench::number(Bench::median(each(walks, &Walk::done)), 0) << " ms\n";
}

} // namespace

int main(int argc, char **argv)
{
    TestSandbox sandbox;
    Bench::sandboxThisProcess(sandbox);
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int count = Bench::intOption(arguments, QStringLiteral("--walks"), 3);
    const int extractionMs = Bench::intOption(arguments, QStringLiteral("--extraction-ms"), 1500);
    const int startMs = Bench::intOption(arguments, QStringLiteral("--start-ms"), 100);

    // The real launcher as the data folder's tool, running the stand-in.
    const QString work = sandbox.home() + QStringLiteral("/felt");
    const QString standInPath = work + QStringLiteral("/yt-dlp");
    const QString record = work + QStringLiteral("/extractions");
    QDir().mkpath(work);
    prepareOutputDir();
    QDir().mkpath(dataFolder());
    QFile script(standInPath);
    if (!script.open(QIODevice::WriteOnly) || script.write(standIn) != qint64(sizeof standIn - 1))
        return Bench::failedToRun("felt speed", QStringLiteral("cannot write %1").arg(standInPath));
    script.close();
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (!QFile::copy(QStringLiteral(KESTREL_LAUNCHER_PATH), dataFolder() + QStringLiteral("/kestreldl2")))
        return Bench::failedToRun("felt speed", QStringLiteral("cannot place the launcher"));
    qputenv("KESTREL_YTDLP", QFile::encodeName(standInPath));
    qputenv("FELT_RECORD", QFile::encodeName(record));
    qputenv("FELT_START", QByteArray::number(startMs / 1000.0));
    qputenv("FELT_EXTRACTION", QByteArray::number(extractionMs / 1000.0));
    qInstallMessageHandler(Bench::discardMessages);

    QString problem;
    // The launcher's first questions about the tool are kept for later runs.
    if (!walks(1, QStringLiteral("warm"), record, &problem))
        return Bench::failedToRun("felt speed", problem);
    const std::optional<QList<Walk>> cached = walks(count, QStringLiteral("kept"), record, &problem);
    qputenv("KESTREL_INFO_CACHE", "off");
    const std::optional<QList<Walk>> plain = cached ? walks(count, QStringLiteral("each"), record, &problem) : std::nullopt;
    qunsetenv("KESTREL_INFO_CACHE");
    if (!cached || !plain)
        return Bench::failedToRun("felt speed", problem);

    QTextStream out(stdout);
    out << "felt speed: a stand-in for yt-dlp taking " << startMs << " ms to start and " << extractionMs
        << " ms for each extraction, run by the launcher; medians of " << count << " walks each\n";
    out << "extractions per video: " << mostExtractions(*cached) << "\n";
    report(out, "one extraction", *cached);
    const double formatsGoal = extractionMs + 500.0;
    const double formats = Bench::median(each(*cached, &Walk::formats));
    out << "felt speed: time to formats " << Bench::number(formats, 0) << " ms (goal <= one extraction + 500 ms = "
        << Bench::number(formatsGoal, 0) << " ms) " << Bench::verdict(formats <= formatsGoal) << "\n";
    out << "extractions per video without the cache: " << mostExtractions(*plain) << "\n";
    report(out, "without the cache", *plain);
    return 0;
}
