#pragma once

#include <QHash>
#include <QObject>
#include <QPoint>
#include <QStringList>
#include <QTimer>

class QMenu;
class QWidget;

// Works a context menu as a user does: once a menu pops up, it records its
// entries and chooses the given path of entry texts with the keyboard
// ("Change Scale Size", "140%"), or closes the menu with Escape when the
// path is empty.
class MenuDriver : public QObject
{
    Q_OBJECT

public:
    explicit MenuDriver(const QStringList &path = {});

    // Entries of the first menu that popped up; separators read "---".
    QStringList entries() const { return m_entries; }
    // Where that menu appeared, in global coordinates.
    QPoint position() const { return m_position; }
    bool menuSeen() const { return m_seen; }
    // The checked states of the entries of each menu seen, by text.
    QHash<QString, bool> checkedStates() const { return m_checked; }

private:
    void whenPollDue();

    QTimer m_poll;
    QStringList m_path;
    QStringList m_entries;
    QPoint m_position;
    QHash<QString, bool> m_checked;
    QMenu *m_lastMenu = nullptr;
    bool m_seen = false;
};
