#pragma once

#include <QtGlobal>

// Routes every request of the process through a proxy on the local port,
// so that a request the updater should never send reaches the test's server
// instead of leaving the machine. The direct connection is back when the
// trap goes, however the test ends.
class ProxyTrap
{
public:
    explicit ProxyTrap(quint16 port);
    ~ProxyTrap();
    ProxyTrap(const ProxyTrap &) = delete;
    ProxyTrap &operator=(const ProxyTrap &) = delete;
};
