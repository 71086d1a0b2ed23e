// Shows the main window on each of its pages in turn and photographs it with
// ImageMagick's "import", so the window can be looked at as a user sees it.
// Run it through scripts/screenshots.sh, which provides an X server.

#include "ui/navigation.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QStackedWidget>
#include <QTest>

namespace {

bool photograph(const QWidget &window, const QString &file)
{
    QProcess import;
    import.start(QStringLiteral("import"), {QStringLiteral("-window"), QString::number(window.winId()), file});
    return import.waitForFinished(20000) && import.exitCode() == 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("Kestrel Downloader"));
    QCoreApplication::setOrganizationName(QStringLiteral("Halvard Software"));
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString folder = arguments.value(1, QStringLiteral("screenshots"));
    QDir().mkpath(folder);

    Navigation window;
    window.showMainWindow();
    auto *stack = window.findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    if (!QTest::qWaitForWindowExposed(&window))
        return 1;

    for (int index = 0; index < stack->count(); ++index) {
        stack->setCurrentIndex(index);
        QTest::qWait(300);
        const QString file = QStringLiteral("%1/%2-%3.png").arg(folder).arg(index).arg(stack->currentWidget()->objectName());
        if (!photograph(window, file)) {
            qWarning("could not photograph %s", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
