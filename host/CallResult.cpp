// IWbemCallResult: a call that was made to return at once.
#include "host/CallResult.h"

#include "host/VariantValue.h"

namespace orl
{
HRESULT CallResult::GetResultObject(LONG timeout, IWbemClassObject** object)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(object);
            *object = nullptr;
            if (!m_result->Wait(DeadlineIn(timeout)))
                return WBEM_S_TIMEDOUT;
            if (m_result->Status().Failed())
                throw CallFailure(m_result->Status());
            if (const CComPtr<ClassObject>& found = m_result->Object())
                *object = MakeObject<ClassObject>(found->Body(), found->Shown()).Detach();
            return m_result->Status().code;
        });
}

HRESULT CallResult::GetResultString(LONG timeout, BSTR* text)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(text);
            *text = nullptr;
            if (!m_result->Wait(DeadlineIn(timeout)))
                return WBEM_S_TIMEDOUT;
            if (m_result->Status().Failed())
                throw CallFailure(m_result->Status());
            if (m_result->Status().text.empty())
                throw CallFailure(WBEM_E_INVALID_OPERATION, L"the call yields no text");
            *text = MakeBstr(m_result->Status().text);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT CallResult::GetResultServices(LONG, IWbemServices** services)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(services);
            *services = nullptr;
            if (!m_services)
                throw CallFailure(WBEM_E_INVALID_OPERATION, L"the call opens no namespace");
            return m_services.CopyTo(services);
        });
}

HRESULT CallResult::GetCallStatus(LONG timeout, LONG* status)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(status);
            if (!m_result->Wait(DeadlineIn(timeout)))
                return WBEM_S_TIMEDOUT;
            *status = m_result->Status().code;
            Publish(m_result->Status());
            return WBEM_S_NO_ERROR;
        });
}

} // namespace orl
