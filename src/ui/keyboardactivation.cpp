#include "keyboardactivation.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QKeyEvent>

namespace {

bool isEnterKey(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    return modifiers == Qt::NoModifier && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter);
}

} // namespace

void KeyboardActivation::watchButton(QAbstractButton *button)
{
    button->installEventFilter(this);
}

void KeyboardActivation::watchTable(QAbstractItemView *table)
{
    table->installEventFilter(this);
}

bool KeyboardActivation::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !isEnterKey(static_cast<QKeyEvent *>(event)))
        return QObject::eventFilter(watched, event);
    // A held key clicks once.
    if (static_cast<QKeyEvent *>(event)->isAutoRepeat())
        return true;

    if (auto *button = qobject_cast<QAbstractButton *>(watched)) {
        button->click();
        return true;
    }
    if (auto *table = qobject_cast<QAbstractItemView *>(watched)) {
        if (table->currentIndex().isValid())
            emit rowChosen(table->currentIndex());
        return true;
    }
    return QObject::eventFilter(watched, event);
}
