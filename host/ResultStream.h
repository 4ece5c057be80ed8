// Objects between a provider's thread and a client's: a bounded queue that is handed over in chunks.
#pragma once

#include "host/Call.h"
#include "host/Results.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace orl
{

// When a wait ends; nothing: never.
using Deadline = std::optional<std::chrono::steady_clock::time_point>;

// Of a COM timeout in milliseconds: WBEM_INFINITE is never, other negative numbers are over at once.
Deadline DeadlineIn(LONG milliseconds);

// One producer, one consumer. Memory is bounded however many objects pass: a producer that is ahead waits, a consumer
// that is ahead gets the first object at once and later ones in chunks, at most a millisecond late.
class ResultStream final : public ResultSink
{
public:
    static constexpr std::size_t kCapacity = 512; // objects that wait for the consumer

    explicit ResultStream(Ref<Call> call) : m_call(std::move(call)) {}

    // ResultSink: the producer's side. Waits while the queue is full.
    HRESULT Deliver(Objects& objects) override;
    void Finish(CallStatus status) override;

    enum class Taken
    {
        Some,
        End, // Status tells how it ended
        TimedOut
    };
    // All objects that wait, in `into`, which must be empty.
    Taken Take(Objects& into, const Deadline& deadline);
    // After End.
    const CallStatus& Status() const noexcept { return m_status; }

    // The consumer goes: the producer's next object is refused and the call is cancelled.
    void Close();

private:
    bool Await(std::unique_lock<std::mutex>& lock, const Deadline& deadline);

    const Ref<Call> m_call;
    std::mutex m_mutex;
    std::condition_variable m_filled;
    std::condition_variable m_emptied;
    Objects m_waiting;
    std::size_t m_wakeAt = 1; // how many objects wake the consumer
    bool m_isConsumerWaiting = false;
    bool m_isProducerWaiting = false;
    bool m_hasStarted = false; // the consumer has taken something
    bool m_isClosed = false;
    bool m_isFinished = false;
    CallStatus m_status;
};

} // namespace orl
