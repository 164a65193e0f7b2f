#include "io/Progress.h"

#include <string>

namespace Keltrix::App {

void Progress::Count(ExitCode code)
{
    if (!m_show) return;
    ++m_members;
    m_failing += code == EXIT_MEMBER_FAILS ? 1 : 0;
    m_refused += code == EXIT_BAD_INPUT ? 1 : 0;
    const Clock::time_point now = Clock::now();
    if (now < m_next) return;
    m_next = now + std::chrono::milliseconds(200);
    const double seconds = std::chrono::duration<double>(now - m_start).count();
    m_show(std::to_string(m_members) + " members, " + std::to_string(m_failing) + " fail, " +
           std::to_string(m_refused) + " refused, " +
           std::to_string(static_cast<long long>(static_cast<double>(m_members) / seconds)) + " a second");
    m_isShown = true;
}

void Progress::Clear()
{
    if (m_isShown) m_show({});
    m_isShown = false;
}

} // namespace Keltrix::App
