#pragma once

#include "fetch.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace Launcher {

// Watches a download against its Fetch::Limits where the download library
// has no such rule of its own (WinHTTP), and names a transfer past them in
// the same words on every system.
class TransferPace
{
public:
    using Clock = std::chrono::steady_clock;

    TransferPace(const Fetch::Limits &limits, Clock::time_point start);

    // Why the transfer must end, given that received bytes have arrived in
    // all by now; nothing while it is within its limits.
    std::optional<std::string> problem(std::uint64_t received, Clock::time_point now);

    static std::string pastDeadline(const Fetch::Limits &limits);
    static std::string stalled(const Fetch::Limits &limits);

private:
    Fetch::Limits m_limits;
    Clock::time_point m_deadline;
    Clock::time_point m_windowStart;
    std::uint64_t m_receivedAtWindowStart = 0;
};

} // namespace Launcher
