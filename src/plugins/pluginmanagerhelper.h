#pragma once

#include "base/platform.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMutex>
#include <QObject>
#include <QPluginLoader>
#include <QString>

#include <atomic>

// Finds one optional plug-in library beside the executable by its base name,
// loads it at most once per run and hands out its interface, or null when the
// library is missing, broken or of another interface. Callers ask every time
// and skip the feature on null.
template <typename Interface>
class PluginManagerHelper
{
public:
    explicit PluginManagerHelper(const QString &baseName)
        : m_baseName(baseName)
    {
    }

    PluginManagerHelper(const PluginManagerHelper &) = delete;
    PluginManagerHelper &operator=(const PluginManagerHelper &) = delete;

    Interface *instance()
    {
        // A plug-in is tried once per run: a failure is not retried and a
        // second caller gets what the first one found.
        if (m_tried.exchange(true))
            return m_instance;

        m_loader.setFileName(filePath());
        if (!m_loader.load()) {
            Warning() << filePath() << "load error:" << m_loader.errorString();
            return nullptr;
        }
        QObject *root = m_loader.instance();
        if (!root)
            return m_instance;
        if (auto *plugin = qobject_cast<Interface *>(root)) {
            m_instance = plugin;
            return m_instance;
        }
        Warning() << filePath() << "iface mismatch";
        m_loader.unload();
        return nullptr;
    }

    QString filePath() const
    {
        return QStringLiteral("%1/%2").arg(QCoreApplication::applicationDirPath(), Platform::pluginFileName(m_baseName));
    }

    // A warning line that already carries the loader's marks.
    static QDebug Warning()
    {
        QDebug stream = qWarning();
        stream << "QDebug PluginManagerHelper::Warning()" << "[MGR] WARNING:";
        return stream;
    }

private:
    const QString m_baseName;
    QPluginLoader m_loader;
    QMutex m_mutex;
    Interface *m_instance = nullptr;
    std::atomic_bool m_tried{false};
};
