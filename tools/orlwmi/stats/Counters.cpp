// Rates from two samples.
#include "tools/orlwmi/stats/Counters.h"

namespace orl::client
{

void CounterRates::Add(Counters& sample, Clock::time_point taken)
{
    const double seconds = std::chrono::duration<double>(taken - m_taken).count();
    std::unordered_map<std::string, std::uint64_t> values;
    values.reserve(sample.size());
    for (auto& counter : sample)
    {
        const std::string key = counter.deviceId + '\0' + counter.statistic;
        const auto before = m_values.find(key);
        if (before != m_values.end() && counter.value >= before->second && seconds > 0)
        {
            counter.perSecond = static_cast<double>(counter.value - before->second) / seconds;
        }
        values[key] = counter.value;
    }
    m_values = std::move(values);
    m_taken = taken;
}

} // namespace orl::client
