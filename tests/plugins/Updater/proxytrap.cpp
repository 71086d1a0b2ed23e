#include "proxytrap.h"

#include <QNetworkProxy>

ProxyTrap::ProxyTrap(quint16 port)
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), port));
}

ProxyTrap::~ProxyTrap()
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));
}
