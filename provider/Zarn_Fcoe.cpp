// CZarn_Fcoe: key readers and path builders.

#include "provider/Zarn_Fcoe.h"

#include "Common/Src/OrlDebug.h"
#include "framework/include/OrlWmiAppendSystemKeys.h"
#include "provider/PathText.h"
#include "provider/Refusals.h"

namespace
{

using orl::FormatPath;
using orl::RequireKey;
using orl::SourceLine;
using orl::StoreFormattedPath;
using orl::StorePath;

// Where the missing keys are reported from; tools tell the readers apart by the line.
constexpr wchar_t SourceName[] = L"Src\\Zarn_FCOE";
constexpr SourceLine DeviceIdSource{SourceName, 260};
constexpr SourceLine TextKeySource{SourceName, 288};
constexpr SourceLine IntKeySource{SourceName, 321};

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
    return RequireKey(path, L"DeviceID", context, DeviceIdSource, true).Text();
}

COrlString CZarn_Fcoe::GetKeyFromPath(COrlWmiAutoParsedObjectPath& path, const wchar_t* key, CWomContext& context) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::GetKeyFromPath");
    const CComVariant& value = RequireKey(path, key, context, TextKeySource).value;
    return value.vt == VT_BSTR && value.bstrVal != nullptr ? COrlString(static_cast<const wchar_t*>(value.bstrVal))
                                                           : COrlString();
}

LONG CZarn_Fcoe::GetIntKeyFromPath(COrlWmiAutoParsedObjectPath& path, const wchar_t* key, CWomContext& context) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::GetIntKeyFromPath");
    const CComVariant& value = RequireKey(path, key, context, IntKeySource).value;
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
    StoreFormattedPath(path, OneTextKey, L"Zarn_FCOEHBA", L"DeviceID", deviceId.c_str());
}

void CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN(CWomContext&, COrlString deviceId, COrlString nodeWWN, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN");
    StoreFormattedPath(path, TwoTextKeys, L"Zarn_FCoEFabric", L"DeviceID", deviceId.c_str(), L"WorldWideNodeName",
                       nodeWWN.c_str());
}

void CZarn_Fcoe::MakePortPathFromWWN(CWomContext&, COrlString deviceId, COrlString portWWN, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakePortPathFromWWN");
    StoreFormattedPath(path, TwoTextKeys, L"Zarn_FCoEPort", L"DeviceID", deviceId.c_str(), L"WorldWidePortName",
                       portWWN.c_str());
}

void CZarn_Fcoe::MakeTargetPathFromWWPN(CWomContext&, COrlString deviceId, COrlString portWWN, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeTargetPathFromWWPN");
    StoreFormattedPath(path, TwoTextKeys, L"Zarn_FcoeTarget", L"DeviceID", deviceId.c_str(), L"WorldWidePortName",
                       portWWN.c_str());
}

void CZarn_Fcoe::MakeLUNPathFromID(CWomContext&, COrlString deviceId, LONG lunId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeLUNPathFromID");
    StoreFormattedPath(path, TextAndNumberKey, L"Zarn_FCoeLUN", L"DeviceID", deviceId.c_str(), L"ID", lunId);
}

void CZarn_Fcoe::MakeVLANPathFromID(CWomContext&, COrlString deviceId, LONG vlanId, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeVLANPathFromID");
    StoreFormattedPath(path, TextAndNumberKey, L"Zarn_FCoeVLAN", L"DeviceID", deviceId.c_str(), L"VlanID", vlanId);
}

void CZarn_Fcoe::MakeStatisticPath(CWomContext&, COrlString deviceId, COrlString statistic, BSTR& path) const
{
    COrlTraceScope scope(L"CZarn_Fcoe::MakeStatisticPath");
    StoreFormattedPath(path, TwoTextKeys, L"Zarn_FCoEStatistics", L"DeviceID", deviceId.c_str(), L"Statistic",
                       statistic.c_str());
}
