#include "modalrun.h"

#include "modalcatcher.h"

#include <QAbstractButton>
#include <QWidget>

ModalRun runModal(const std::function<void()> &show, const std::function<void(QWidget *)> &act)
{
    ModalRun run;
    ModalCatcher catcher;
    // Only the dialog that show() opens is the test's; the catcher closes it
    // if the test's action left it open.
    catcher.setAction([&](QWidget *dialog) {
        catcher.stop();
        run.appeared = true;
        act(dialog);
        run.closedByTest = !dialog->isVisible();
    });
    show();
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
