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

const COrlWmiNamedValue& RequireKey(const COrlWmiAutoParsedObjectPath& path, const COrlWmiNamedValue* key,
                                    const CWomContext& context, int line)
{
    if (key == nullptr)
    {
        throw CWomProviderException(context, MissingKeyCode, path.PathText(), WBEM_E_NOT_FOUND, SourceName, line,
                                    COrlString(), std::vector<CComBSTR>());
    }
    return *key;
}

// Bounded: what does not fit is cut.
COrlString FormatPath(const wchar_t* format, ...)
{
    wchar_t buffer[PathCapacity];
    va_list arguments;
    va_start(arguments, format);
    const int length = _vsnwprintf(buffer, PathCapacity - 1, format, arguments);
    va_end(arguments);
    buffer[length < 0 ? PathCapacity - 1 : static_cast<std::size_t>(length)] = L'\0';
    return COrlString(static_cast<const wchar_t*>(buffer));
}

// Puts a new BSTR in place of the one that `path` holds.
void StorePath(BSTR& path, const COrlString& text)
{
    CComBSTR made(static_cast<int>(text.Length()), text.c_str());
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
    // A path with a single key may leave the key's name out; it is this one then.
    return RequireKey(path, path.GetKeyRef(L"DeviceID", true), context, DeviceIdLine).Text();
}

COrlString CZarn_Fcoe::GetKeyFromPath(COrlWmiAutoParsedObjectPath& path, const wchar_t* key, CWomContext& context) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::GetKeyFromPath");
    const CComVariant& value = RequireKey(path, path.GetKeyRef(key), context, TextKeyLine).value;
    return value.vt == VT_BSTR && value.bstrVal != nullptr ? COrlString(static_cast<const wchar_t*>(value.bstrVal))
                                                           : COrlString();
}

LONG CZarn_Fcoe::GetIntKeyFromPath(COrlWmiAutoParsedObjectPath& path, const wchar_t* key, CWomContext& context) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::GetIntKeyFromPath");
    const CComVariant& value = RequireKey(path, path.GetKeyRef(key), context, IntKeyLine).value;
    return value.vt == VT_I4 ? value.lVal : 0;
}

void CZarn_Fcoe::MakeDevicePathFromDeviceID(CWomContext& context, COrlString deviceId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeDevicePathFromDeviceID");
    constexpr wchar_t className[] = L"Zarn_PhysicalEthernetAdapter";
    COrlString text = FormatPath(OneTextKey, className, L"DeviceID", deviceId.c_str());
    if (context.ulOmitSystemKeys == 0)
        OrlWmiAppendSystemKeys(text, className);
    StorePath(path, text);
}

void CZarn_Fcoe::MakeHBAPathFromDeviceID(CWomContext&, COrlString deviceId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeHBAPathFromDeviceID");
    StorePath(path, FormatPath(OneTextKey, L"Zarn_FCOEHBA", L"DeviceID", deviceId.c_str()));
}

void CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN(CWomContext&, COrlString deviceId, COrlString nodeWWN, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN");
    StorePath(path, FormatPath(TwoTextKeys, L"Zarn_FCoEFabric", L"DeviceID", deviceId.c_str(), L"WorldWideNodeName",
                               nodeWWN.c_str()));
}

void CZarn_Fcoe::MakePortPathFromWWN(CWomContext&, COrlString deviceId, COrlString portWWN, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakePortPathFromWWN");
    StorePath(path, FormatPath(TwoTextKeys, L"Zarn_FCoEPort", L"DeviceID", deviceId.c_str(), L"WorldWidePortName",
                               portWWN.c_str()));
}

void CZarn_Fcoe::MakeTargetPathFromWWPN(CWomContext&, COrlString deviceId, COrlString portWWN, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeTargetPathFromWWPN");
    StorePath(path, FormatPath(TwoTextKeys, L"Zarn_FcoeTarget", L"DeviceID", deviceId.c_str(), L"WorldWidePortName",
                               portWWN.c_str()));
}

void CZarn_Fcoe::MakeLUNPathFromID(CWomContext&, COrlString deviceId, LONG lunId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeLUNPathFromID");
    StorePath(path, FormatPath(TextAndNumberKey, L"Zarn_FCoeLUN", L"DeviceID", deviceId.c_str(), L"ID", lunId));
}

void CZarn_Fcoe::MakeVLANPathFromID(CWomContext&, COrlString deviceId, LONG vlanId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeVLANPathFromID");
    StorePath(path, FormatPath(TextAndNumberKey, L"Zarn_FCoeVLAN", L"DeviceID", deviceId.c_str(), L"VlanID", vlanId));
}

void CZarn_Fcoe::MakeStatisticPath(CWomContext&, COrlString deviceId, COrlString statistic, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeStatisticPath");
    StorePath(path, FormatPath(TwoTextKeys, L"Zarn_FCoEStatistics", L"DeviceID", deviceId.c_str(), L"Statistic",
                               statistic.c_str()));
}
