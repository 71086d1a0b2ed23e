#include "textfitter.h"

#include <QAbstractButton>
#include <QEvent>
#include <QFontMetrics>
#include <QLabel>

namespace {

constexpr qreal smallestShare = 0.75;
constexpr qreal step = 0.5;

QString shownText(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return QString(button->text()).remove(QLatin1Char('&'));
    return {};
}

// What a button needs besides its text (bevel, padding, icon), which does
// not change with the font.
int buttonChrome(const QAbstractButton *button)
{
    const int textWidth = QFontMetrics(button->font()).horizontalAdvance(shownText(button));
    return qMax(0, button->sizeHint().width() - textWidth);
}

} // namespace

TextFitter::TextFitter(QObject *parent)
    : QObject(parent)
{
}

void TextFitter::watch(QWidget *widget)
{
    m_designSizes.insert(widget, widget->font().pointSizeF());
    widget->installEventFilter(this);
}

bool TextFitter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
        auto *widget = static_cast<QWidget *>(watched);
        if (widget->isVisible())
            fit(widget);
    }
    return QObject::eventFilter(watched, event);
}

bool TextFitter::fits(const QWidget *widget, const QFont &font)
{
    const QFontMetrics metrics(font);
    const QString text = shownText(widget);
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return buttonChrome(button) + metrics.horizontalAdvance(text) <= button->width();
    const QRect room = widget->contentsRect();
    return metrics.horizontalAdvance(text) <= room.width() && metrics.height() <= room.height();
}

void TextFitter::fit(QWidget *widget) const
{
    const qreal designSize = m_designSizes.value(widget);
    // A font sized in pixels has no point size to step down.
    if (designSize <= 0 || shownText(widget).isEmpty())
        return;
    QFont font = widget->font();
    const qreal smallest = designSize * smallestShare;
    while (!fits(widget, font) && font.pointSizeF() - step >= smallest)
        font.setPointSizeF(font.pointSizeF() - step);
    if (font != widget->font())
        widget->setFont(font);
}
