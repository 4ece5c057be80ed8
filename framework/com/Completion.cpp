// Completion: paying the debt.

#include "framework/com/Completion.h"

#include "Common/Src/OrlDebug.h"

namespace orl
{

void Completion::Finish(HRESULT status, BSTR text, IWbemClassObject* object) noexcept
{
    CComPtr<IWbemObjectSink> sink;
    sink.Attach(m_sink.Detach());
    if (sink == nullptr)
        return;
    const HRESULT taken = sink->SetStatus(WBEM_STATUS_COMPLETE, status, text, object);
    // Nobody is left to tell: the client itself is what failed.
    if (FAILED(taken))
        g_OrlDebug.Print(L"The client did not take the final status 0x%08X: 0x%08X", status, taken);
}

} // namespace orl
