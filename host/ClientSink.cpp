// Objects to a client's own sink.
#include "host/ClientSink.h"

#include "host/VariantValue.h"

#include <algorithm>

namespace orl
{
namespace
{

// Interface pointers compare by the identity of their object.
CComPtr<IUnknown> IdentityOf(IUnknown* object)
{
    CComPtr<IUnknown> identity;
    if (object)
        object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity.p));
    return identity;
}

} // namespace

ClientSink::ClientSink(IWbemObjectSink* client, Ref<Call> call)
    : m_client(client), m_call(std::move(call)), m_identity(IdentityOf(client).p)
{
}

bool ClientSink::BeginDelivery() noexcept
{
    unsigned state = 0;
    return m_state.compare_exchange_strong(state, kDelivering, std::memory_order_acquire);
}

HRESULT ClientSink::Deliver(Objects& objects)
{
    if (!BeginDelivery())
        return WBEM_E_CALL_CANCELLED;
    HRESULT answer = WBEM_E_FAILED;
    try
    {
        answer = Indicate(objects);
    }
    catch (...)
    {
        answer = WBEM_E_FAILED; // a client that throws wants no more
    }
    const unsigned before = FAILED(answer) ? m_state.exchange(kCancelled, std::memory_order_acq_rel) | kCancelled
                                           : m_state.fetch_and(~unsigned{kDelivering}, std::memory_order_acq_rel);
    if (!(before & kCancelled))
        return WBEM_S_NO_ERROR;
    ConcludeCancelled();
    return WBEM_E_CALL_CANCELLED;
}

HRESULT ClientSink::Indicate(const Objects& objects)
{
    if (objects.size() == 1)
    {
        IWbemClassObject* one = objects.front();
        return m_client->Indicate(1, &one);
    }
    const std::vector<IWbemClassObject*> plain(objects.begin(), objects.end());
    return m_client->Indicate(static_cast<LONG>(plain.size()), const_cast<IWbemClassObject**>(plain.data()));
}

void ClientSink::Finish(CallStatus status)
{
    Conclude(status);
}

void ClientSink::Cancel()
{
    if (!(m_state.fetch_or(kCancelled, std::memory_order_acq_rel) & kDelivering))
        ConcludeCancelled();
    m_call->Cancel();
}

void ClientSink::ConcludeCancelled()
{
    CallStatus status;
    status.code = WBEM_E_CALL_CANCELLED;
    status.description = L"the client cancelled the call";
    Conclude(status);
}

void ClientSink::Conclude(const CallStatus& status)
{
    if (m_state.fetch_or(kFinished, std::memory_order_acq_rel) & kFinished)
        return;
    const CComPtr<IWbemObjectSink> client(std::move(m_client));
    const CComPtr<IWbemClassObject> extended = ExtendedStatusOf(status);
    const BSTR text = status.text.empty() ? nullptr : OrlAllocBstr(status.text.data(), status.text.size());
    try
    {
        client->SetStatus(WBEM_STATUS_COMPLETE, status.code, text, extended);
    }
    catch (...)
    {
        // A client that throws has still had its status.
    }
    SysFreeString(text);
}

// Calls under way ----------------------------------------------------------------------------------------------------

void AsyncCalls::Add(const Ref<ClientSink>& sink)
{
    const std::lock_guard lock(m_mutex);
    m_calls.push_back(sink);
}

void AsyncCalls::Remove(const Ref<ClientSink>& sink)
{
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_calls, [&](const Ref<ClientSink>& each) { return each.Get() == sink.Get(); });
}

bool AsyncCalls::Cancel(IWbemObjectSink* client)
{
    const CComPtr<IUnknown> identity = IdentityOf(client);
    std::vector<Ref<ClientSink>> found;
    {
        const std::lock_guard lock(m_mutex);
        std::copy_if(m_calls.begin(), m_calls.end(), std::back_inserter(found),
                     [&](const Ref<ClientSink>& each) { return each->IsFor(identity); });
    }
    for (const Ref<ClientSink>& each : found)
        each->Cancel();
    return !found.empty();
}

} // namespace orl
