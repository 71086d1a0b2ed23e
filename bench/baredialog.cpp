// The smallest Qt Widgets program that shows a window: a dialog with one
// button. The start-up and memory benchmarks measure it exactly like the
// application, so what they report is the application's own cost on top of
// what Qt costs anyway.
//
//   kestrel_bench_bare_dialog            shows the dialog and quits at once
//   kestrel_bench_bare_dialog --stay F   shows it, appends "shown" to file F
//                                        and stays open until killed

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const qsizetype stayAt = arguments.indexOf(QStringLiteral("--stay"));
    const QString markFile = stayAt >= 0 ? arguments.value(stayAt + 1) : QString();

    QDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QPushButton(QStringLiteral("OK"), &dialog));

    // The application shows its window from a zero timer and its updater
    // check, called right after show(), quits from another zero timer; this
    // does the same at the same moments.
    QTimer::singleShot(0, &dialog, [&dialog, markFile] {
        dialog.show();
        if (markFile.isEmpty()) {
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
            return;
        }
        QFile mark(markFile);
        if (mark.open(QIODevice::Append | QIODevice::Text))
            mark.write("shown\n");
    });

    return QApplication::exec();
}
