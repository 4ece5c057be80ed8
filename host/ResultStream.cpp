// Objects between a provider's thread and a client's.
#include "host/ResultStream.h"

#include <algorithm>

namespace orl
{
namespace
{

using Clock = std::chrono::steady_clock;

// Waking a thread costs more than passing an object: a consumer that waits is woken for this many, or after this long.
constexpr std::size_t kChunk = 128;
constexpr std::chrono::milliseconds kChunkTime{1};

} // namespace

Deadline DeadlineIn(LONG milliseconds)
{
    if (milliseconds == WBEM_INFINITE)
        return std::nullopt;
    return Clock::now() + std::chrono::milliseconds(std::max<LONG>(milliseconds, 0));
}

HRESULT ResultStream::Deliver(Objects& objects)
{
    std::unique_lock lock(m_mutex);
    m_isProducerWaiting = true;
    m_emptied.wait(lock, [&] { return m_waiting.size() < kCapacity || m_isClosed; });
    m_isProducerWaiting = false;
    if (m_isClosed)
        return WBEM_E_CALL_CANCELLED;
    m_waiting.insert(m_waiting.end(), std::make_move_iterator(objects.begin()), std::make_move_iterator(objects.end()));
    if (m_isConsumerWaiting && m_waiting.size() >= m_wakeAt)
        m_filled.notify_one();
    return WBEM_S_NO_ERROR;
}

void ResultStream::Finish(CallStatus status)
{
    const std::lock_guard lock(m_mutex);
    m_status = std::move(status);
    m_isFinished = true;
    m_filled.notify_one();
}

ResultStream::Taken ResultStream::Take(Objects& into, const Deadline& deadline)
{
    std::unique_lock lock(m_mutex);
    if (m_waiting.empty() && !m_isFinished && !Await(lock, deadline))
        return Taken::TimedOut;
    if (m_waiting.empty())
        return Taken::End;
    m_hasStarted = true;
    into.swap(m_waiting);
    if (m_isProducerWaiting)
        m_emptied.notify_one();
    return Taken::Some;
}

bool ResultStream::Await(std::unique_lock<std::mutex>& lock, const Deadline& deadline)
{
    m_isConsumerWaiting = true;
    const auto isReady = [&] { return m_waiting.size() >= m_wakeAt || m_isFinished; };
    if (m_hasStarted)
    {
        const Clock::time_point soon = Clock::now() + kChunkTime;
        m_wakeAt = kChunk;
        m_filled.wait_until(lock, deadline ? std::min(*deadline, soon) : soon, isReady);
    }
    m_wakeAt = 1;
    if (deadline)
        m_filled.wait_until(lock, *deadline, isReady);
    else
        m_filled.wait(lock, isReady);
    m_isConsumerWaiting = false;
    return isReady();
}

void ResultStream::Close()
{
    Objects dropped;
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
        dropped.swap(m_waiting);
        m_emptied.notify_all();
        if (m_isFinished)
            return;
    }
    m_call->Cancel();
}

} // namespace orl
