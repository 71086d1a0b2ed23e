#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QTimer>

// Answers modal boxes while it exists: it records what the user would read
// and presses a button (OK unless told otherwise), so tests can drive code
// that runs QMessageBox::exec() and friends.
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
        bool hasParent = false;
    };

    explicit ModalCatcher(QMessageBox::StandardButton answer = QMessageBox::Ok);

    QList<Box> boxes() const { return m_boxes; }

    // Waits until at least count boxes were answered.
    bool waitForBoxes(int count, int timeoutMs = 10000) const;

private:
    void answerOpenBox();

    QTimer m_poll;
    QMessageBox::StandardButton m_answer;
    QList<Box> m_boxes;
};
