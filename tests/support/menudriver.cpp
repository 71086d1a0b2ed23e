#include "menudriver.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>

MenuDriver::MenuDriver(const QStringList &path)
    : m_path(path)
{
    m_poll.setInterval(20);
    connect(&m_poll, &QTimer::timeout, this, &MenuDriver::whenPollDue);
    m_poll.start();
}

void MenuDriver::whenPollDue()
{
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu || !menu->isVisible() || menu == m_lastMenu)
        return;
    m_lastMenu = menu;
    if (!m_seen) {
        m_seen = true;
        m_position = menu->pos();
        for (const QAction *action : menu->actions())
            m_entries << (action->isSeparator() ? QStringLiteral("---") : action->text());
    }
    for (const QAction *action : menu->actions()) {
        if (action->isCheckable())
            m_checked.insert(action->text(), action->isChecked());
    }

    if (m_path.isEmpty()) {
        QTest::keyClick(menu, Qt::Key_Escape);
        return;
    }
    const QString wanted = m_path.takeFirst();
    for (QAction *action : menu->actions()) {
        if (action->text() != wanted)
            continue;
        menu->setActiveAction(action);
        QTest::keyClick(menu, action->menu() ? Qt::Key_Right : Qt::Key_Return);
        return;
    }
    qWarning("no menu entry %s", qPrintable(wanted));
    QTest::keyClick(menu, Qt::Key_Escape);
}
