#include "visibility.h"

#include <QWidget>

void setVisibility(const QList<QWidget *> &widgets, Visibility mode)
{
    for (QWidget *widget : widgets)
        widget->setVisible(mode == Visibility::Show);
}
