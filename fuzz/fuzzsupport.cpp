#include "fuzzsupport.h"

#include "base/identity.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

std::string sandboxRoot;

void removeSandbox()
{
    if (!sandboxRoot.empty())
        QDir(QString::fromStdString(sandboxRoot)).removeRecursively();
}

// mkdtemp rather than QTemporaryDir: a static QTemporaryDir would be destroyed
// before the record's settings object, which is created later and lives until
// exit; atexit() handlers registered here run after that object is gone.
void enterSandbox()
{
    const char *tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/kestrel-fuzz-XXXXXX";
    if (!::mkdtemp(pattern.data())) {
        std::perror("kestrel fuzz: mkdtemp");
        std::abort();
    }
    sandboxRoot = pattern;
    std::atexit(removeSandbox);

    const QByteArray root = QByteArray::fromStdString(sandboxRoot);
    qputenv("HOME", root);
    qputenv("XDG_DATA_HOME", root + "/.local/share");
    qputenv("XDG_CONFIG_HOME", root + "/.config");
    qputenv("XDG_CACHE_HOME", root + "/.cache");
    qputenv("XDG_DOWNLOAD_DIR", root + "/Downloads");

    // The names that form the per-user folder names, as the application sets them.
    QCoreApplication::setApplicationName(Identity::applicationName());
    QCoreApplication::setOrganizationName(Identity::organisationName());
}

// Every parser logs its entry and its failures; millions of such lines would
// dominate the run. A fatal message still reaches stderr, and Qt aborts after
// it whatever the handler does, which libFuzzer reports as a crash.
void quietHandler(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtFatalMsg)
        std::fprintf(stderr, "qFatal: %s\n", qUtf8Printable(message));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    enterSandbox();
    qInstallMessageHandler(quietHandler);
    return 0;
}

namespace Fuzz {

QString text(const uint8_t *data, size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
}

void fail(const char *what, const QString &input)
{
    std::fprintf(stderr, "%s\ninput (%lld characters): %s\n", what, static_cast<long long>(input.size()),
                 qUtf8Printable(input.left(400)));
    std::abort();
}

} // namespace Fuzz
