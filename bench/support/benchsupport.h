#pragma once

#include <QList>
#include <QProcessEnvironment>
#include <QString>
#include <QtGlobal>

class AppInstallation;
class TestSandbox;

// Small helpers the benchmark programs share: statistics, the environment of
// a measured child process and quiet logging (memory figures: ProcessProbe).
namespace Bench {

double median(QList<double> values);
double minimum(const QList<double> &values);
double mean(const QList<double> &values);

// "12.3" with the given number of decimals.
QString number(double value, int decimals = 1);

// "met" or "MISSED": whether a measured value keeps to its goal.
QString verdict(bool met);

// The environment every measured child process gets: the system's, with the
// sandbox's HOME and XDG folders, the offscreen platform and no message
// pattern or logging rules of the person running the benchmark.
QProcessEnvironment childEnvironment(const TestSandbox &sandbox);

// Puts every standard location of this process into the sandbox and names
// the application as the application does, before the QApplication exists;
// the offscreen platform unless another one is asked for.
void sandboxThisProcess(TestSandbox &sandbox);

// What a measured copy of the application has beside its executable: the
// recording updater as "Updater" (its check is called right after the window
// is shown) and the fake tool as the tool files, whose presence is all that
// matters there: the first start copies them into the data folder.
void addWindowFixtures(AppInstallation &installation);

// Reports on standard error that the benchmark could not run, and gives the
// exit code for that.
int failedToRun(const char *benchmark, const QString &problem);

// The plain Qt dialog program the window figures are compared with.
QString bareDialogPath();

// For the benchmarks that drive the downloader in their own process, after
// the QApplication exists: the fake tool as the data folder's kestreldl2 and a
// scenario, named in the environment, in which a metadata run prints a title
// and a duration and exits at once. False, with the reason, when it fails.
bool installInstantTool(const TestSandbox &sandbox, QString *problem);

// The arguments the application gives a metadata run for this benchmark's
// video address, and that address.
QString benchVideoAddress();
QStringList metadataArguments();

// An integer option "--name value" from the command line, or the fallback.
int intOption(const QStringList &arguments, const QString &name, int fallback);

// Message handler that drops every message: timings then measure the code,
// not the terminal the benchmark happens to write to.
void discardMessages(QtMsgType, const QMessageLogContext &, const QString &);

// While it exists, this process's standard error goes to /dev/null, so Qt's
// own message handler does all of its work but nothing reaches the terminal.
class StandardErrorToNull
{
public:
    StandardErrorToNull();
    ~StandardErrorToNull();
    StandardErrorToNull(const StandardErrorToNull &) = delete;
    StandardErrorToNull &operator=(const StandardErrorToNull &) = delete;

private:
    int m_saved = -1;
};

} // namespace Bench
