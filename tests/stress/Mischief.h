// What the agents of a run do wrong, call by call.
#pragma once

#include "tests/stress/Dice.h"
#include "tests/stress/Ledger.h"

#include <atomic>

namespace orl::test
{

enum class Effect
{
    None,
    Fail,        // answers that it failed
    Throw,       // an exception of the standard library leaves it
    ThrowOdd,    // something leaves it that is no std::exception
    OutOfMemory, // std::bad_alloc leaves it
    Hang,        // takes its time, then does what it was asked
    Garbage      // does what it was asked, and answers nonsense
};

// Thread safe. The nth call of a run meets the same effect for the same seed.
class Mischief
{
public:
    Mischief(std::uint64_t seed, Ledger& ledger) : m_seed(seed), m_ledger(ledger) {}

    // From now on the agents behave, or misbehave again.
    void Pause() { m_isPaused = true; }
    void Resume() { m_isPaused = false; }

    // One call of an agent.
    class Turn
    {
    public:
        // Carries out what comes before, or instead of, an answer: waits or throws. True when the call shall fail.
        bool Fails();
        // Whether an action is carried out before it fails.
        bool FailsAfterwards() { return m_isLate; }
        bool IsGarbage() const { return m_effect == Effect::Garbage; }
        Dice& Chance() { return m_dice; }

    private:
        friend class Mischief;
        Turn(Dice dice, Ledger& ledger, bool isPaused);

        Dice m_dice;
        Ledger& m_ledger;
        Effect m_effect = Effect::None;
        bool m_isLate = false;
    };
    Turn Next() { return {Dice(m_seed, ++m_calls), m_ledger, m_isPaused}; }

private:
    const std::uint64_t m_seed;
    Ledger& m_ledger;
    std::atomic<std::uint64_t> m_calls{0};
    std::atomic<bool> m_isPaused{false};
};

} // namespace orl::test
