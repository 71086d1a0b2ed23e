#pragma once

#include <QHash>
#include <QObject>

class QWidget;
class QFont;

// Keeps the texts of labels and push buttons inside the room the window's
// fixed page sizes give them. A translation can be longer than the English
// text the pages were designed for; when a text needs more width or height
// than its widget has, its font steps down half a point at a time, to no
// less than three quarters of its size. Texts that fit keep their font, so
// the English pages look as designed.
//
// The font only ever shrinks: growing it back as soon as the layout gives
// the widget more room could make the widget and its layout chase each other.
class TextFitter : public QObject
{
    Q_OBJECT

public:
    explicit TextFitter(QObject *parent);

    // Fits the text of the label or button whenever it is shown or resized.
    void watch(QWidget *widget);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fit(QWidget *widget) const;
    static bool fits(const QWidget *widget, const QFont &font);

    // The point size each widget was designed with, the base of its smallest.
    QHash<const QObject *, qreal> m_designSizes;
};
