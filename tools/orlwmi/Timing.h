// Timing: what --timing tells.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace orl::client
{

class Timing
{
public:
    using Clock = std::chrono::steady_clock;

    void Connected() { m_connected = Clock::now(); }

    void CountObject()
    {
        if (m_objects++ == 0)
        {
            m_first = Clock::now();
        }
    }

    // One line: "3 objects in 6.4 ms (connected after 4.2 ms, first object after 6.0 ms)".
    [[nodiscard]] std::string Line() const;

private:
    Clock::time_point m_start = Clock::now();
    std::optional<Clock::time_point> m_connected;
    std::optional<Clock::time_point> m_first;
    unsigned long long m_objects = 0;
};

} // namespace orl::client
