#pragma once

#include <QModelIndex>
#include <QObject>

class QAbstractButton;
class QAbstractItemView;

// Lets the keyboard do what a click does: Enter or Return on a focused push
// button clicks it, and on a table picks its current row. The window's
// buttons cannot simply be auto-default buttons: the dialog would then also
// hand them the Enter that the address field passes on after its request has
// moved the focus to a button.
class KeyboardActivation : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void watchButton(QAbstractButton *button);
    void watchTable(QAbstractItemView *table);

signals:
    void rowChosen(const QModelIndex &index);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
