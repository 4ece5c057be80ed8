// What the agents of a run do wrong.
#include "tests/stress/Mischief.h"

#include <new>
#include <stdexcept>
#include <thread>

namespace orl::test
{
namespace
{

constexpr std::uint64_t OneBadCallIn = 6;
constexpr std::uint64_t LongestHang = 20; // milliseconds

} // namespace

Mischief::Turn::Turn(Dice dice, Ledger& ledger, bool isPaused) : m_dice(dice), m_ledger(ledger)
{
    if (isPaused || !m_dice.OneIn(OneBadCallIn))
        return;
    constexpr Effect bad[] = {Effect::Fail,        Effect::Throw, Effect::ThrowOdd,
                              Effect::OutOfMemory, Effect::Hang,  Effect::Garbage};
    m_effect = bad[m_dice.Below(std::size(bad))];
    m_isLate = m_dice.OneIn(4);
}

bool Mischief::Turn::Fails()
{
    switch (m_effect)
    {
    case Effect::Fail:
        m_ledger.Add(Ledger::AgentFailures);
        return true;
    case Effect::Throw:
        m_ledger.Add(Ledger::AgentThrows);
        throw std::runtime_error("the agent's library is out of order");
    case Effect::ThrowOdd:
        m_ledger.Add(Ledger::AgentThrows);
        throw 7; // NOLINT(hicpp-exception-baseclass): that is what is odd about it
    case Effect::OutOfMemory:
        m_ledger.Add(Ledger::AgentThrows);
        throw std::bad_alloc();
    case Effect::Hang:
        m_ledger.Add(Ledger::AgentHangs);
        std::this_thread::sleep_for(std::chrono::milliseconds(1 + m_dice.Below(LongestHang)));
        return false;
    case Effect::Garbage:
        m_ledger.Add(Ledger::AgentGarbage);
        return false;
    case Effect::None:
        return false;
    }
    return false;
}

} // namespace orl::test
