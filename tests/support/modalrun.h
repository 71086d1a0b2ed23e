#pragma once

#include <QString>

#include <functional>

class QAbstractButton;
class QWidget;

// For dialogs of any kind (not only message boxes), through ModalCatcher:
// calls show(), which should open a modal dialog and return once it is
// closed; act(dialog) runs while the dialog is up and is expected to close
// it. A dialog that stays open is closed by force, and closedByTest says so.
struct ModalRun
{
    bool appeared = false;
    bool closedByTest = false;
};

ModalRun runModal(const std::function<void()> &show, const std::function<void(QWidget *)> &act);

// The dialog's button with that text, its mnemonic mark left out.
QAbstractButton *buttonWithText(QWidget *dialog, const QString &text);
