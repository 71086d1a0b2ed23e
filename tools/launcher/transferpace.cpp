#include "transferpace.h"

namespace Launcher {

TransferPace::TransferPace(const Fetch::Limits &limits, Clock::time_point start)
    : m_limits(limits)
    , m_deadline(start + std::chrono::seconds(limits.deadlineSeconds))
    , m_windowStart(start)
{
}

std::optional<std::string> TransferPace::problem(std::uint64_t received, Clock::time_point now)
{
    if (now >= m_deadline)
        return pastDeadline(m_limits);
    const std::chrono::seconds window(m_limits.rateWindowSeconds);
    if (now - m_windowStart < window)
        return std::nullopt;
    // Judged over whole windows, as curl judges its low-speed limit, so that
    // a pause of a few seconds in a fast transfer does not end it.
    const std::uint64_t expected = m_limits.minimumBytesPerSecond * std::uint64_t(m_limits.rateWindowSeconds);
    if (received - m_receivedAtWindowStart < expected)
        return stalled(m_limits);
    m_windowStart = now;
    m_receivedAtWindowStart = received;
    return std::nullopt;
}

std::string TransferPace::pastDeadline(const Fetch::Limits &limits)
{
    return "not finished within " + std::to_string(limits.deadlineSeconds) + " seconds";
}

std::string TransferPace::stalled(const Fetch::Limits &limits)
{
    return "stalled: less than " + std::to_string(limits.minimumBytesPerSecond) + " bytes a second for "
           + std::to_string(limits.rateWindowSeconds) + " seconds";
}

} // namespace Launcher
