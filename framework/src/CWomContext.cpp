// CWomContext: the client's flags, and what a request must remember.

#include "framework/include/CWomContext.h"

#include "framework/src/PropertyValue.h"

namespace
{

// A value that is neither a boolean nor an integer sets nothing: flags are never guessed from texts.
ULONG FlagOf(const VARIANT& value)
{
    switch (value.vt)
    {
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE ? 1 : 0;
    case VT_I1:
        return static_cast<ULONG>(value.cVal);
    case VT_UI1:
        return value.bVal;
    case VT_I2:
        return static_cast<ULONG>(value.iVal);
    case VT_UI2:
        return value.uiVal;
    case VT_I4:
    case VT_INT:
        return static_cast<ULONG>(value.lVal);
    case VT_UI4:
    case VT_UINT:
        return value.ulVal;
    case VT_I8:
    case VT_UI8:
        return value.ullVal != 0 ? 1 : 0;
    default:
        return 0;
    }
}

ULONG ReadFlag(IWbemContext* clientContext, const wchar_t* name)
{
    CComVariant value;
    if (clientContext == nullptr || FAILED(clientContext->GetValue(name, 0, &value)))
        return 0;
    return FlagOf(value);
}

} // namespace

CWomContext::CWomContext(IWbemServices* services, IWbemContext* clientContext, orl::ClassSource* classes)
    : ulSuppressProperties(ReadFlag(clientContext, L"__GET_EXT_KEYS_ONLY")),
      ulOmitSystemKeys(ReadFlag(clientContext, L"OrlOmitSystemKeys")),
      ulDisplayValueUnsupported(ReadFlag(clientContext, L"OrlDisplayValueUnsupported")), m_services(services),
      m_clientContext(clientContext), m_classes(classes)
{
}

HRESULT CWomContext::LoadClass(const CComBSTR& className, CComPtr<IWbemClassObject>& definition)
{
    if (m_classes != nullptr)
        return m_classes->LoadClass(className, m_clientContext, definition);
    if (m_services == nullptr)
        return WBEM_E_INVALID_CONTEXT;
    definition.Release();
    return m_services->GetObject(className, 0, m_clientContext, &definition, nullptr);
}

void CWomContext::NoteLostRecord(HRESULT status)
{
    if (orl::IsOutOfMemory(status) && m_lossStatus == WBEM_S_NO_ERROR)
        m_lossStatus = status;
}
