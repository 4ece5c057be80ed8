// IWbemCallResult: a call that was made to return at once.
#pragma once

#include "com/OrlCom.h"
#include "host/SingleResult.h"

namespace orl
{

// Letting it go does not cancel the call. Thread safe.
class CallResult : public ComObject<IWbemCallResult>
{
public:
    explicit CallResult(Ref<SingleResult> result, CComPtr<IWbemServices> services = nullptr)
        : m_result(std::move(result)), m_services(std::move(services))
    {
    }

    // WBEM_S_TIMEDOUT while the call is under way; then the object, or the call's own failure.
    HRESULT STDMETHODCALLTYPE GetResultObject(LONG timeout, IWbemClassObject** object) override;
    // The path that a put ended with; WBEM_E_INVALID_OPERATION for calls that yield no text.
    HRESULT STDMETHODCALLTYPE GetResultString(LONG timeout, BSTR* text) override;
    HRESULT STDMETHODCALLTYPE GetResultServices(LONG timeout, IWbemServices** services) override;
    HRESULT STDMETHODCALLTYPE GetCallStatus(LONG timeout, LONG* status) override;

private:
    const Ref<SingleResult> m_result;
    const CComPtr<IWbemServices> m_services; // of OpenNamespace
};

} // namespace orl
