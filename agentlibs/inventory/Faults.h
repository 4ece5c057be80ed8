// FaultPlan: the `faults` block, which makes chosen operations fail, throw or wait.
#pragma once

#include "agentlibs/inventory/ObjectReader.h"
#include "agentlibs/inventory/Operation.h"

#include "Common/Src/OrlString.h"

#include <atomic>
#include <deque>
#include <optional>
#include <string>

namespace orl
{

class FaultPlan
{
public:
    static constexpr ULONG MaxWaitMilliseconds = 600000;

    // One element of the list `faults`.
    void Add(ObjectReader& fault);

    // What the plan has in store for this call: returns, at once or after a wait; throws BackendError, or
    // FaultException when the plan wants an exception to leave the agent. Counts the call. Any number of threads may
    // call it at once.
    void Apply(Operation operation, const COrlString& deviceId) const;

    bool Empty() const { return m_faults.empty(); }

private:
    enum class Effect : std::size_t
    {
        Fail,
        Throw,
        Wait
    };
    struct Fault
    {
        std::optional<Operation> operation; // none: every one
        std::wstring deviceId;              // folded; empty: whatever the call asks for
        ULONG call = 0;                     // the one of the matching calls, counted from 1; 0: each of them
        Effect effect = Effect::Fail;
        ULONG milliseconds = 0;
        ULONG code = ERROR_GEN_FAILURE;
        COrlString text;
        mutable std::atomic<ULONG> calls = 0;
    };

    static void Carry(const Fault& fault);

    std::deque<Fault> m_faults; // never moved: they hold counters
};

} // namespace orl
