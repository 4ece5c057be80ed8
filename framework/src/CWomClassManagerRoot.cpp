// CWomClassManagerRoot: the answers of a manager that has none of its own.

#include "framework/include/CWomClassManagerRoot.h"

CWomClassManagerRoot::CWomClassManagerRoot() = default;

CWomClassManagerRoot::~CWomClassManagerRoot() = default;

HRESULT CWomClassManagerRoot::CreateInstanceAsync(CWomClassObject&, CWomContext&, CComBSTR&, CComPtr<IWbemObjectSink>)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT CWomClassManagerRoot::UpdateInstanceAsync(CWomClassObject&, CWomContext&, ULONG_PTR, CComPtr<IWbemObjectSink>)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT CWomClassManagerRoot::DeleteInstanceAsync(COrlWmiAutoParsedObjectPath&, CWomContext&, CComPtr<IWbemObjectSink>)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT CWomClassManagerRoot::ExecMethodAsync(COrlWmiAutoParsedObjectPath&, const wchar_t*, CWomContext&,
                                              CWomClassObject&, CWomClassObject&, CComPtr<IWbemObjectSink>)
{
    return WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT CWomClassManagerRoot::ExecQueryAsync(CWomWQLParser&, CWomContext& context, CComPtr<IWbemObjectSink> sink)
{
    return CreateInstanceEnumAsync(context, sink);
}
