// RequestSink: passing on and keeping count.

#include "framework/com/RequestSink.h"

namespace orl
{

HRESULT RequestSink::Indicate(LONG count, IWbemClassObject** objects)
{
    if (m_cancelled.load(std::memory_order_relaxed))
        return WBEM_E_CALL_CANCELLED;
    const HRESULT status = m_client->Indicate(count, objects);
    if (SUCCEEDED(status))
    {
        m_indicated.fetch_add(static_cast<ULONG>(count), std::memory_order_relaxed);
        return status;
    }
    if (status == WBEM_E_CALL_CANCELLED)
        m_cancelled = true;
    HRESULT none = WBEM_S_NO_ERROR;
    m_refusal.compare_exchange_strong(none, status);
    return status;
}

HRESULT RequestSink::SetStatus(LONG flags, HRESULT status, BSTR text, IWbemClassObject* object)
{
    return flags == WBEM_STATUS_COMPLETE ? WBEM_S_NO_ERROR : m_client->SetStatus(flags, status, text, object);
}

} // namespace orl
