// The launcher with the real Deno on PATH, offline: its --version answer
// passes the launcher's floor (2.3), so the launcher installs no Deno of its
// own and names that one to the tool; and the current tool, handed it, takes
// it as its runtime.
//
// The Deno is the official binary that scripts/real-deno.sh unpacks into the
// build tree, named by KESTREL_TEST_DENO; the current tool is the one of
// scripts/current-tool.sh, named by KESTREL_TEST_YTDLP. CTest sets both when
// the build was configured with them (./test.sh does).

#include "toolinstalltest.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

#include <utility>

namespace {

// In CI a missing file means the fetch step did not run: that must fail, not
// read as a pass.
bool mustHaveRealFiles()
{
    return qEnvironmentVariable("CI") == QStringLiteral("true");
}

// Why the executable that variable names cannot be used, or nothing.
QString whyMissing(const char *variable, const QString &fetchedBy)
{
    const QString path = qEnvironmentVariable(variable);
    if (!path.isEmpty() && QFileInfo(path).isExecutable())
        return QString();
    return QStringLiteral("%1 names no executable (\"%2\"): %3 fetches it, and ./test.sh configures the build with it")
        .arg(QLatin1String(variable), path, fetchedBy);
}

// The first line a program prints when asked for its version.
QString firstVersionLine(const QString &program)
{
    QProcess process;
    process.start(program, {QStringLiteral("--version")});
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return QString();
    return QString::fromUtf8(process.readAllStandardOutput()).section(QLatin1Char('\n'), 0, 0);
}

} // namespace

class TestRealRuntime : public ToolInstallTest
{
    Q_OBJECT

private slots:
    void realDenoOnPathIsNamedToTheTool();
    void currentToolTakesTheRealDeno();

private:
    // Links the real Deno into the PATH folder of the case as "deno" and
    // gives its version number ("2.9.6"); empty when it does not answer.
    QString putRealDenoOnPath();
};

QString TestRealRuntime::putRealDenoOnPath()
{
    const QString deno = qEnvironmentVariable("KESTREL_TEST_DENO");
    const QString answer = firstVersionLine(deno);
    qInfo().noquote() << "the real Deno:" << answer;
    // A link keeps the 90 MB binary where it is; the launcher identifies the
    // file it reaches through PATH.
    if (!answer.startsWith(QStringLiteral("deno ")) || !QFile::link(deno, fakeBin() + QStringLiteral("/deno")))
        return QString();
    return answer.section(QLatin1Char(' '), 1, 1);
}

void TestRealRuntime::realDenoOnPathIsNamedToTheTool()
{
    if (const QString why = whyMissing("KESTREL_TEST_DENO", QStringLiteral("scripts/real-deno.sh")); !why.isEmpty()) {
        if (mustHaveRealFiles())
            QFAIL(qPrintable(why));
        QSKIP(qPrintable(why));
    }
    QVERIFY(!putRealDenoOnPath().isEmpty());

    // The Deno on PATH is new enough: the feed's is neither fetched nor installed.
    verifySystemRuntimeIsUsed(QStringLiteral("deno:") + fakeBin() + QStringLiteral("/deno"));
}

void TestRealRuntime::currentToolTakesTheRealDeno()
{
    for (const auto &[variable, fetchedBy] : {std::pair{"KESTREL_TEST_DENO", "scripts/real-deno.sh"},
                                              std::pair{"KESTREL_TEST_YTDLP", "scripts/current-tool.sh"}}) {
        if (const QString why = whyMissing(variable, QLatin1String(fetchedBy)); !why.isEmpty()) {
            if (mustHaveRealFiles())
                QFAIL(qPrintable(why));
            QSKIP(qPrintable(why));
        }
    }
    const QString denoVersion = putRealDenoOnPath();
    QVERIFY(!denoVersion.isEmpty());

    QProcessEnvironment withTool = environment();
    withTool.insert(QStringLiteral("KESTREL_YTDLP"), qEnvironmentVariable("KESTREL_TEST_YTDLP"));
    // The tool's verbose header names the runtimes it accepted, with the
    // version it read from them, before it complains that no video was given.
    const RunResult result = runLauncher({QStringLiteral("--verbose")}, withTool);
    QVERIFY(result.finished);
    QVERIFY2(result.err.contains("[debug] JS runtimes: deno-" + denoVersion.toUtf8() + '\n'), result.err.constData());
}

KESTREL_TEST_MAIN(TestRealRuntime)
#include "tst_realruntime.moc"
