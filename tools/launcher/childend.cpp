#include "childend.h"

namespace Launcher {

ChildEnd::ChildEnd(Kind kind, int value)
    : m_kind(kind)
    , m_value(value)
{
}

ChildEnd ChildEnd::exitedWithCode(int code)
{
    return ChildEnd(Kind::Exited, code);
}

ChildEnd ChildEnd::endedBySignal(int signal)
{
    return ChildEnd(Kind::Signalled, signal);
}

bool ChildEnd::exitedWith(int code) const
{
    return m_kind == Kind::Exited && m_value == code;
}

bool ChildEnd::exitedWithFailure() const
{
    return m_kind == Kind::Exited && m_value != 0 && !crashed();
}

std::optional<int> ChildEnd::exitCode() const
{
    return m_kind == Kind::Exited ? std::optional<int>(m_value) : std::nullopt;
}

std::optional<int> ChildEnd::signal() const
{
    return m_kind == Kind::Signalled ? std::optional<int>(m_value) : std::nullopt;
}

} // namespace Launcher
