// The line of --timing.
#include "tools/orlwmi/Timing.h"

#include <array>
#include <charconv>

namespace orl::client
{
namespace
{

std::string Milliseconds(Timing::Clock::duration time)
{
    std::array<char, 64> text{};
    const double milliseconds = std::chrono::duration<double, std::milli>(time).count();
    const auto end = std::to_chars(text.data(), text.data() + text.size(), milliseconds, std::chars_format::fixed, 1);
    return std::string(text.data(), end.ptr) + " ms";
}

} // namespace

std::string Timing::Line() const
{
    std::string line = std::to_string(m_objects) + (m_objects == 1 ? " object in " : " objects in ");
    line += Milliseconds(Clock::now() - m_start);
    if (m_connected)
    {
        line += " (connected after " + Milliseconds(*m_connected - m_start);
        line += m_first ? ", first object after " + Milliseconds(*m_first - m_start) + ")" : ")";
    }
    return line;
}

} // namespace orl::client
