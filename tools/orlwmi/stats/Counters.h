// Counters of adapters, and how fast they advance.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace orl::client
{

struct Counter
{
    std::string deviceId;
    std::string statistic; // the counter's own name
    std::string name;      // the same in words
    std::uint64_t value = 0;
    std::optional<double> perSecond; // none until there are two values to compare
};

using Counters = std::vector<Counter>;

// Compares each sample with the one before it.
class CounterRates
{
public:
    using Clock = std::chrono::steady_clock;

    // Fills in the rates. A counter that stands lower than before was reset, or has begun again at 0: it has no rate
    // this time, and neither has one that was not there before, nor any when no time has passed.
    void Add(Counters& sample, Clock::time_point taken);

private:
    std::unordered_map<std::string, std::uint64_t> m_values; // by adapter and counter
    Clock::time_point m_taken;
};

} // namespace orl::client
