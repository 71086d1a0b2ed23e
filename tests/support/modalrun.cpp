#include "modalrun.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

ModalRun runModal(const std::function<void()> &show, const std::function<void(QWidget *)> &act)
{
    ModalRun run;
    QObject context;
    QTimer poll;
    QElapsedTimer clock;
    clock.start();
    QObject::connect(&poll, &QTimer::timeout, &context, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog) {
            if (clock.elapsed() > 10000)
                poll.stop();
            return;
        }
        poll.stop();
        run.appeared = true;
        act(dialog);
        run.closedByTest = !dialog->isVisible();
        if (dialog->isVisible())
            dialog->close();
    });
    poll.start(10);
    show();
    poll.stop();
    return run;
}

QAbstractButton *buttonWithText(QWidget *dialog, const QString &text)
{
    for (QAbstractButton *button : dialog->findChildren<QAbstractButton *>()) {
        if (button->text().remove(QLatin1Char('&')) == text)
            return button;
    }
    return nullptr;
}
