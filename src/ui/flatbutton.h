#pragma once

#include <QPushButton>

// A flat push button that shows the keyboard focus. Flat buttons of the
// common styles draw no frame at all, so a user moving through the window
// with the keyboard would not see that the button has the focus. Like the
// style's own buttons, it marks the focus only once the keyboard has moved it.
class FlatButton : public QPushButton
{
    Q_OBJECT

public:
    explicit FlatButton(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
