#include "modalcatcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTest>

ModalCatcher::ModalCatcher(QMessageBox::StandardButton answer)
    : ModalCatcher(QList<QMessageBox::StandardButton>{})
{
    m_answer = answer;
}

ModalCatcher::ModalCatcher(const QList<QMessageBox::StandardButton> &answers, Reach reach)
    : m_answers(answers)
    , m_reach(reach)
{
    m_poll.setInterval(10);
    connect(&m_poll, &QTimer::timeout, this, &ModalCatcher::whenPollDue);
    m_poll.start();
}

bool ModalCatcher::waitForBoxes(int count, int timeoutMs) const
{
    return QTest::qWaitFor([&] { return m_boxes.size() >= count; }, timeoutMs);
}

void ModalCatcher::whenPollDue()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal || !modal->isVisible() || modal == m_held)
        return;
    auto *message = qobject_cast<QMessageBox *>(modal);
    if (!message && m_reach == Reach::MessageBoxesOnly)
        return;

    m_boxes << describe(modal);
    if (m_action) {
        const QPointer<QWidget> dialog = modal;
        m_action(dialog);
        if (dialog && dialog->isVisible())
            dialog->close();
    } else if (message) {
        answerMessageBox(message);
    } else {
        answerOtherDialog(modal);
    }
}

void ModalCatcher::answerMessageBox(QMessageBox *box)
{
    const QMessageBox::StandardButton answer = m_answers.isEmpty() ? m_answer : m_answers.takeFirst();
    if (answer == QMessageBox::NoButton) {
        m_held = box;
        return;
    }
    QAbstractButton *button = box->button(answer);
    for (QMessageBox::StandardButton fallback : {QMessageBox::Ok, QMessageBox::No, QMessageBox::Cancel}) {
        if (!button)
            button = box->button(fallback);
    }
    if (button)
        button->click();
    else
        box->reject();
}

void ModalCatcher::answerOtherDialog(QWidget *dialog)
{
    if (auto *closable = qobject_cast<QDialog *>(dialog))
        closable->reject();
    else
        dialog->close();
}

ModalCatcher::Box ModalCatcher::describe(QWidget *dialog)
{
    Box box;
    box.className = QString::fromLatin1(dialog->metaObject()->className());
    box.title = dialog->windowTitle();
    box.parent = dialog->parentWidget();
    if (auto *message = qobject_cast<QMessageBox *>(dialog)) {
        box.text = message->text();
        box.icon = message->icon();
        box.textFormat = message->textFormat();
        for (QAbstractButton *button : message->buttons())
            box.buttons << message->standardButton(button);
    }
    return box;
}
