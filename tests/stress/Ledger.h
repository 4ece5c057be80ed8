// What a run has come to: how much was done, and what was wrong.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace orl::test
{

// Thread safe.
class Ledger
{
public:
    enum Count : std::size_t
    {
        Calls,             // of a client's methods that came back
        Failures,          // of them that answered a failure
        Objects,           // that clients got and read
        AsyncCalls,        // with a sink
        Cancelled,         // by CancelAsyncCall
        Refusing,          // sinks that refused an object or threw
        Abandoned,         // enumerations and results that were let go before their end
        Created,           // virtual ports that were answered as created
        Deleted,           // ... as deleted
        Written,           // settings that were answered as written
        AgentFailures,     // answers of the agents that say so
        AgentThrows,       // exceptions that left them
        AgentHangs,        // calls that took their time
        AgentGarbage,      // answers that make no sense
        AgentHuge,         // of them, with a text of 10 MB
        ClientOutOfMemory, // clients that could not even ask
        Kills,             // processes that were killed
        Promises,          // of killed processes that were found kept
        CountCount
    };

    void Add(Count count, std::uint64_t many = 1) { m_counts[count].fetch_add(many, std::memory_order_relaxed); }
    std::uint64_t Of(Count count) const { return m_counts[count].load(std::memory_order_relaxed); }

    // Something that must never be. The first twenty are kept.
    void Wrong(std::string what);
    std::vector<std::string> Wrongs() const;

    // Lines for people.
    std::string Text() const;

private:
    std::array<std::atomic<std::uint64_t>, CountCount> m_counts{};
    mutable std::mutex m_mutex;
    std::vector<std::string> m_wrongs;
};

// No answer may take longer, on the slowest machine under the slowest sanitizer.
inline constexpr std::chrono::seconds LongestAnswer{120};

} // namespace orl::test
