// An IWbemServices without any operation.
#include "tests/host/ScriptedProvider.h"

namespace orl::test
{

HRESULT IncapableServices::OpenNamespace(const BSTR, LONG, IWbemContext*, IWbemServices**, IWbemCallResult**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::CancelAsyncCall(IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::QueryObjectSink(LONG, IWbemObjectSink**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::GetObject(const BSTR, LONG, IWbemContext*, IWbemClassObject**, IWbemCallResult**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::GetObjectAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::PutClass(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::PutClassAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::DeleteClass(const BSTR, LONG, IWbemContext*, IWbemCallResult**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::DeleteClassAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::CreateClassEnum(const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::CreateClassEnumAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::PutInstance(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::PutInstanceAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::DeleteInstance(const BSTR, LONG, IWbemContext*, IWbemCallResult**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::DeleteInstanceAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::CreateInstanceEnum(const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::CreateInstanceEnumAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::ExecQuery(const BSTR, const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::ExecQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::ExecNotificationQuery(const BSTR, const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::ExecNotificationQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::ExecMethod(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                      IWbemClassObject**, IWbemCallResult**)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT IncapableServices::ExecMethodAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                           IWbemObjectSink*)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

} // namespace orl::test
