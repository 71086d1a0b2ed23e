#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

// The one place where tests meet modal dialogs: while it exists it looks for
// QApplication::activeModalWidget(), records what the user would read and
// answers the dialog, so tests can drive code that runs QMessageBox::exec(),
// QDialog::exec() and friends without blocking.
//
// A message box gets the next answer of the list given, then the default
// answer (OK unless told otherwise); NoButton in the list leaves that box
// open. A box without the button asked for is answered with its OK, No or
// Cancel, so an unexpected box fails the test instead of blocking it. Other
// dialogs are rejected, unless an action is set for them.
class ModalCatcher : public QObject
{
    Q_OBJECT

public:
    struct Box
    {
        QString className;
        QString title;
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        Qt::TextFormat textFormat = Qt::AutoText;
        QList<QMessageBox::StandardButton> buttons;
        QPointer<QWidget> parent;
    };

    enum class Reach {
        AnyDialog,
        // Modal dialogs that are not message boxes (progress dialogs, say)
        // are left to the code under test.
        MessageBoxesOnly,
    };

    explicit ModalCatcher(QMessageBox::StandardButton answer = QMessageBox::Ok);
    explicit ModalCatcher(const QList<QMessageBox::StandardButton> &answers, Reach reach = Reach::AnyDialog);

    // The test answers each dialog itself; one it leaves open is closed.
    void setAction(const std::function<void(QWidget *)> &action) { m_action = action; }
    // Dialogs that come up later are left to others.
    void stop() { m_poll.stop(); }

    QList<Box> boxes() const { return m_boxes; }

    // Waits until at least count boxes were answered.
    bool waitForBoxes(int count, int timeoutMs = 10000) const;

private:
    void whenPollDue();
    void answerMessageBox(QMessageBox *box);
    void answerOtherDialog(QWidget *dialog);
    static Box describe(QWidget *dialog);

    QTimer m_poll;
    QMessageBox::StandardButton m_answer = QMessageBox::Ok;
    QList<QMessageBox::StandardButton> m_answers;
    std::function<void(QWidget *)> m_action;
    Reach m_reach = Reach::AnyDialog;
    QList<Box> m_boxes;
    QPointer<QWidget> m_held;
};
