#include "modalcatcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTest>

ModalCatcher::ModalCatcher(QMessageBox::StandardButton answer)
    : m_answer(answer)
{
    m_poll.setInterval(10);
    connect(&m_poll, &QTimer::timeout, this, &ModalCatcher::answerOpenBox);
    m_poll.start();
}

bool ModalCatcher::waitForBoxes(int count, int timeoutMs) const
{
    return QTest::qWaitFor([&] { return m_boxes.size() >= count; }, timeoutMs);
}

void ModalCatcher::answerOpenBox()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal || !modal->isVisible())
        return;

    Box box;
    box.className = QString::fromLatin1(modal->metaObject()->className());
    box.title = modal->windowTitle();
    box.hasParent = modal->parentWidget() != nullptr;
    if (auto *message = qobject_cast<QMessageBox *>(modal)) {
        box.text = message->text();
        box.icon = message->icon();
        box.textFormat = message->textFormat();
        for (QAbstractButton *button : message->buttons())
            box.buttons << message->standardButton(button);
        m_boxes << box;
        if (QAbstractButton *button = message->button(m_answer))
            button->click();
        else
            message->reject();
        return;
    }
    m_boxes << box;
    if (auto *dialog = qobject_cast<QDialog *>(modal))
        dialog->reject();
    else
        modal->close();
}
