// CZarn_FcoeVLAN: Zarn_FCoeVLAN, one instance for each FCoE VLAN of an HBA.
#pragma once

#include "classes/DeviceClass.h"

namespace orl
{

struct FcoeVLAN : DeviceClassDefaults<ORL_FCOE_VLAN>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoeVLAN");
    static constexpr auto Manager = FixedText(L"CZarn_FcoeVLAN");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateVLANs;
    static constexpr auto FailureName = &ORL_FCOE_VLAN::vlanName;

    // The VLAN id asked for. 0 is a VLAN number like any other; only AllVlans selects every VLAN, and so does an id
    // that is no decimal number.
    using Filter = ULONG;
    static constexpr ULONG AllVlans = 0xFFFFFFFF;
    static Filter Everything() { return AllVlans; }
    static Filter FromPath(const CZarn_Fcoe& manager, COrlWmiAutoParsedObjectPath& path, CWomContext& context)
    {
        COrlString text = manager.GetKeyFromPath(path, L"VlanID", context);
        return text.IsNumeric() ? static_cast<ULONG>(_wtoi(text.c_str())) : AllVlans;
    }
    static bool Admits(Filter vlanId, const COrlString& deviceId, const ORL_FCOE_VLAN& vlan)
    {
        return deviceId.IsEmpty() || vlanId == AllVlans || vlan.vlanId == vlanId;
    }

    static constexpr DeviceProperty<ORL_FCOE_VLAN> Properties[] = {
        TextProperty<&ORL_FCOE_VLAN::deviceId>(L"DeviceID"),
        TextProperty<&ORL_FCOE_VLAN::name>(L"Name"),
        TextProperty<&ORL_FCOE_VLAN::vlanName>(L"VLANName"),
        Uint32Property<&ORL_FCOE_VLAN::statusId>(L"StatusID"),
        TextProperty<&ORL_FCOE_VLAN::status>(L"Status"),
        Uint32Property<&ORL_FCOE_VLAN::vlanId>(L"VlanID"),
        ReferenceProperty<&CZarn_Fcoe::MakeHBAPathFromDeviceID, &ORL_FCOE_VLAN::deviceId>(L"HBA"),
    };
};

} // namespace orl

class CZarn_FcoeVLAN final : public CZarn_DeviceClass<orl::FcoeVLAN>
{
public:
    using CZarn_DeviceClass::CZarn_DeviceClass;
};
