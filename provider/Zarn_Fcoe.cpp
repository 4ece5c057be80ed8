// CZarn_Fcoe: key readers and path builders.

#include "provider/Zarn_Fcoe.h"

#include "Common/Src/OrlDebug.h"
#include "framework/include/CWomProviderException.h"
#include "framework/include/OrlWmiAppendSystemKeys.h"

#include <cstdarg>
#include <cwchar>

namespace
{

// The framework knows every error of a key that a path lacks by this code.
constexpr ULONG MissingKeyCode = 0x8004090F;
// Where the missing keys are reported from; tools tell the readers apart by the line.
constexpr wchar_t SourceName[] = L"Src\\Zarn_FCOE";
constexpr int DeviceIdLine = 260;
constexpr int TextKeyLine = 288;
constexpr int IntKeyLine = 321;

constexpr std::size_t PathCapacity = 5000;

const VARIANT& RequireKey(COrlWmiAutoParsedObjectPath& path, const wchar_t* key, CWomContext& context, int line)
{
    const VARIANT* value = path.GetKeyRef(key);
    if (value == nullptr)
    {
        throw CWomProviderException(context, MissingKeyCode, path.GetPathText(), static_cast<HRESULT>(WBEM_E_NOT_FOUND),
                                    SourceName, line, COrlString(), std::vector<CComBSTR>());
    }
    return *value;
}

COrlString TextOf(BSTR text)
{
    return COrlString(text == nullptr ? L"" : static_cast<const wchar_t*>(text));
}

// Formats a path and stores it in place of the one that `path` held.
void StorePath(BSTR& path, const wchar_t* format, ...)
{
    wchar_t buffer[PathCapacity];
    va_list arguments;
    va_start(arguments, format);
    const int length = _vsnwprintf(buffer, PathCapacity - 1, format, arguments);
    va_end(arguments);
    buffer[length < 0 ? PathCapacity - 1 : static_cast<std::size_t>(length)] = L'\0';

    CComBSTR made(static_cast<const wchar_t*>(buffer));
    SysFreeString(path);
    path = made.Detach();
}

constexpr wchar_t OneTextKey[] = L"%s.%s=\"%s\"";
constexpr wchar_t TwoTextKeys[] = L"%s.%s=\"%s\",%s=\"%s\"";
constexpr wchar_t TextAndNumberKey[] = L"%s.%s=\"%s\",%s=\"%d\"";

} // namespace

CZarn_Fcoe::CZarn_Fcoe(COrlFcoeAgentIntf* agent) : m_agent(agent) {}

HRESULT CZarn_Fcoe::UpdateInstanceAsync(CWomClassObject&, CWomContext&, ULONG_PTR, CComPtr<IWbemObjectSink>)
{
    COrlTraceScope scope(L"CZarn_Fcoe::UpdateInstanceAsync");
    return static_cast<HRESULT>(WBEM_E_ACCESS_DENIED);
}

HRESULT CZarn_Fcoe::DeleteInstanceAsync(COrlWmiAutoParsedObjectPath&, CWomContext&, CComPtr<IWbemObjectSink>)
{
    return static_cast<HRESULT>(WBEM_E_ACCESS_DENIED);
}

COrlString CZarn_Fcoe::GetDeviceIdFromPath(COrlWmiAutoParsedObjectPath& path, CWomContext& context) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::GetDeviceIdFromPath");
    const VARIANT& value = RequireKey(path, L"DeviceID", context, DeviceIdLine);
    if (value.vt == VT_BSTR)
        return TextOf(value.bstrVal);
    CComVariant text;
    return SUCCEEDED(VariantChangeType(&text, const_cast<VARIANT*>(&value), 0, VT_BSTR)) ? TextOf(text.bstrVal)
                                                                                         : COrlString();
}

COrlString CZarn_Fcoe::GetKeyFromPath(COrlWmiAutoParsedObjectPath& path, const wchar_t* key, CWomContext& context) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::GetKeyFromPath");
    const VARIANT& value = RequireKey(path, key, context, TextKeyLine);
    return value.vt == VT_BSTR ? TextOf(value.bstrVal) : COrlString();
}

LONG CZarn_Fcoe::GetIntKeyFromPath(COrlWmiAutoParsedObjectPath& path, const wchar_t* key, CWomContext& context) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::GetIntKeyFromPath");
    const VARIANT& value = RequireKey(path, key, context, IntKeyLine);
    return value.vt == VT_I4 ? value.lVal : 0;
}

void CZarn_Fcoe::MakeDevicePathFromDeviceID(CWomContext& context, COrlString deviceId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeDevicePathFromDeviceID");
    constexpr wchar_t className[] = L"Zarn_PhysicalEthernetAdapter";
    StorePath(path, OneTextKey, className, L"DeviceID", deviceId.c_str());
    if (context.ulOmitSystemKeys == 0)
        OrlWmiAppendSystemKeys(path, className);
}

void CZarn_Fcoe::MakeHBAPathFromDeviceID(CWomContext&, COrlString deviceId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeHBAPathFromDeviceID");
    StorePath(path, OneTextKey, L"Zarn_FCOEHBA", L"DeviceID", deviceId.c_str());
}

void CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN(CWomContext&, COrlString deviceId, COrlString nodeWWN, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN");
    StorePath(path, TwoTextKeys, L"Zarn_FCoEFabric", L"DeviceID", deviceId.c_str(), L"WorldWideNodeName",
              nodeWWN.c_str());
}

void CZarn_Fcoe::MakePortPathFromWWN(CWomContext&, COrlString deviceId, COrlString portWWN, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakePortPathFromWWN");
    StorePath(path, TwoTextKeys, L"Zarn_FCoEPort", L"DeviceID", deviceId.c_str(), L"WorldWidePortName",
              portWWN.c_str());
}

void CZarn_Fcoe::MakeTargetPathFromWWPN(CWomContext&, COrlString deviceId, COrlString portWWN, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeTargetPathFromWWPN");
    StorePath(path, TwoTextKeys, L"Zarn_FcoeTarget", L"DeviceID", deviceId.c_str(), L"WorldWidePortName",
              portWWN.c_str());
}

void CZarn_Fcoe::MakeLUNPathFromID(CWomContext&, COrlString deviceId, LONG lunId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeLUNPathFromID");
    StorePath(path, TextAndNumberKey, L"Zarn_FCoeLUN", L"DeviceID", deviceId.c_str(), L"ID", lunId);
}

void CZarn_Fcoe::MakeVLANPathFromID(CWomContext&, COrlString deviceId, LONG vlanId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeVLANPathFromID");
    StorePath(path, TextAndNumberKey, L"Zarn_FCoeVLAN", L"DeviceID", deviceId.c_str(), L"VlanID", vlanId);
}

void CZarn_Fcoe::MakeStatisticPath(CWomContext&, COrlString deviceId, COrlString statistic, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeStatisticPath");
    StorePath(path, TwoTextKeys, L"Zarn_FCoEStatistics", L"DeviceID", deviceId.c_str(), L"Statistic",
              statistic.c_str());
}
