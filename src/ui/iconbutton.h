#pragma once

#include <QPushButton>

// A push button that paints only its icon, centred, and offers its text as
// the tooltip. For buttons whose text is far wider than the button: a plain
// push button would push the icon out of sight to make room for the text.
class IconButton : public QPushButton
{
    Q_OBJECT

public:
    explicit IconButton(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
