#include "dialogparent.h"

#include <QApplication>
#include <QMessageBox>
#include <QProgressDialog>
#include <QWidget>

namespace {

// A dialog parented to one of these, such as the question box that is just
// closing, would be deleted along with it.
bool isShortLived(const QWidget *window)
{
    return qobject_cast<const QMessageBox *>(window) || qobject_cast<const QProgressDialog *>(window)
        || window->windowType() == Qt::Popup || window->windowType() == Qt::ToolTip;
}

} // namespace

namespace PluginDialogs {

QWidget *dialogParent()
{
    QWidget *window = QApplication::activeWindow();
    while (window && isShortLived(window))
        window = window->parentWidget() ? window->parentWidget()->window() : nullptr;
    if (window)
        return window;
    for (QWidget *candidate : QApplication::topLevelWidgets()) {
        if (candidate->isVisible() && !isShortLived(candidate))
            return candidate;
    }
    return nullptr;
}

} // namespace PluginDialogs
