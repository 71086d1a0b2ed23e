#include "iconbutton.h"

#include <QEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

IconButton::IconButton(QWidget *parent)
    : QPushButton(parent)
{
}

bool IconButton::event(QEvent *event)
{
    // The text may hold line breaks written as "<br>", which a tooltip shows
    // as rich text.
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty())
        setToolTip(QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text()));
    return QPushButton::event(event);
}

void IconButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
}
