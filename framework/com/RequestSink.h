// RequestSink: what a manager indicates to. It passes instances on to the client's sink and keeps count.
#pragma once

#include "com/OrlCom.h"

#include <atomic>

namespace orl
{

class RequestSink final : public ComObject<IWbemObjectSink>
{
public:
    explicit RequestSink(IWbemObjectSink* client) : m_client(client) {}

    // Once the client has gone, or the request has ended, it answers WBEM_E_CALL_CANCELLED without asking the client.
    HRESULT STDMETHODCALLTYPE Indicate(LONG count, IWbemClassObject** objects) override;
    // The end of a request is the framework's to tell, so a final status that comes from a manager is dropped. Progress
    // goes through.
    HRESULT STDMETHODCALLTYPE SetStatus(LONG flags, HRESULT status, BSTR text, IWbemClassObject* object) override;

    // No instance passes after this, also when somebody has kept the sink.
    void Close() noexcept { m_cancelled = true; }

    // How many instances the client has taken.
    ULONG Indicated() const noexcept { return m_indicated; }
    // The first refusal of the client, or WBEM_S_NO_ERROR.
    HRESULT Refusal() const noexcept { return m_refusal; }

private:
    CComPtr<IWbemObjectSink> m_client;
    std::atomic<ULONG> m_indicated{0};
    std::atomic<bool> m_cancelled{false};
    std::atomic<HRESULT> m_refusal{WBEM_S_NO_ERROR};
};

} // namespace orl
