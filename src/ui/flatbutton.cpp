#include "flatbutton.h"

#include <QPainter>

FlatButton::FlatButton(QWidget *parent)
    : QPushButton(parent)
{
}

void FlatButton::paintEvent(QPaintEvent *event)
{
    QPushButton::paintEvent(event);
    if (!isFlat() || !hasFocus() || !window()->testAttribute(Qt::WA_KeyboardFocusChange))
        return;
    // The image fills the whole button; a thin dotted style frame would be
    // lost on it, so the frame is drawn in the highlight colour, two pixels wide.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
}
