// Objects to a client's own sink, and the calls with such sinks that are under way.
#pragma once

#include "host/Call.h"
#include "host/Results.h"

#include <atomic>
#include <mutex>
#include <vector>

namespace orl
{

// The client gets every object on the thread that brings it, then one SetStatus and nothing after it. A client whose
// Indicate fails, or that cancels, gets WBEM_E_CALL_CANCELLED as its status.
class ClientSink final : public ResultSink
{
public:
    ClientSink(IWbemObjectSink* client, Ref<Call> call);

    // ResultSink
    HRESULT Deliver(Objects& objects) override;
    void Finish(CallStatus status) override;

    // From any thread. The client's SetStatus comes before this returns, or, when an Indicate is running, after that.
    void Cancel();
    bool IsFor(IUnknown* identity) const noexcept { return m_identity == identity; }

private:
    enum State : unsigned
    {
        kDelivering = 1,
        kCancelled = 2,
        kFinished = 4
    };

    bool BeginDelivery() noexcept;
    HRESULT Indicate(const Objects& objects);
    void ConcludeCancelled();
    void Conclude(const CallStatus& status);

    CComPtr<IWbemObjectSink> m_client;
    const Ref<Call> m_call;
    const void* m_identity = nullptr;
    std::atomic<unsigned> m_state{0};
};

// The asynchronous calls of one connection. Thread safe.
class AsyncCalls
{
public:
    void Add(const Ref<ClientSink>& sink);
    void Remove(const Ref<ClientSink>& sink);
    // All calls with the client's sink; false when there are none.
    bool Cancel(IWbemObjectSink* client);

private:
    std::mutex m_mutex;
    std::vector<Ref<ClientSink>> m_calls;
};

} // namespace orl
