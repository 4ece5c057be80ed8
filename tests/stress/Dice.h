// Chance that a seed decides.
#pragma once

#include <cstdint>
#include <random>

namespace orl::test
{

// The same numbers for the same seed and stream, on every machine. One thread uses it at a time.
class Dice
{
public:
    Dice(std::uint64_t seed, std::uint64_t stream) : m_engine(seed * 0x9E3779B97F4A7C15u + stream) {}

    // From 0 to count - 1.
    std::uint64_t Below(std::uint64_t count) { return m_engine() % count; }
    bool OneIn(std::uint64_t count) { return Below(count) == 0; }

private:
    std::mt19937_64 m_engine;
};

} // namespace orl::test
