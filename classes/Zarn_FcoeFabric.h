// CZarn_FcoeFabric: Zarn_FCoEFabric, one instance for each fabric that an HBA sees.
#pragma once

#include "classes/DeviceClass.h"

namespace orl
{

struct FcoeFabric : DeviceClassWithTextKey<ORL_FCOE_FABRIC, &ORL_FCOE_FABRIC::nodeWWN>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoEFabric");
    static constexpr auto Manager = FixedText(L"CZarn_FcoeFabric");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateFabrics;
    static constexpr auto FailureName = &ORL_FCOE_FABRIC::fabricName;
    static constexpr const wchar_t* Key = L"WorldWideNodeName";

    // Also an instance without properties says which fabric it is; the display name replaces it when there is one.
    static void SetAlways(CWomClassObject& instance, const ORL_FCOE_FABRIC& fabric)
    {
        instance.SetProperty(L"Name", fabric.nodeWWN);
    }

    static constexpr DeviceProperty<ORL_FCOE_FABRIC> Properties[] = {
        TextProperty<&ORL_FCOE_FABRIC::deviceId>(L"DeviceID"),
        TextProperty<&ORL_FCOE_FABRIC::name>(L"Name"),
        TextProperty<&ORL_FCOE_FABRIC::fabricName>(L"FabricName"),
        TextProperty<&ORL_FCOE_FABRIC::nodeWWN>(L"WorldWideNodeName"),
        TextProperty<&ORL_FCOE_FABRIC::portWWN>(L"WorldWidePortName"),
        HexadecimalProperty<&ORL_FCOE_FABRIC::fcMap>(L"FCMap"),
        Uint32Property<&ORL_FCOE_FABRIC::fabricTypeId>(L"FabricTypeID"),
        TextProperty<&ORL_FCOE_FABRIC::fabricType>(L"FabricType"),
        Uint32Property<&ORL_FCOE_FABRIC::priority>(L"Priority"),
        Uint32Property<&ORL_FCOE_FABRIC::vlanId>(L"VlanID"),
        ReferenceProperty<&CZarn_Fcoe::MakeHBAPathFromDeviceID, &ORL_FCOE_FABRIC::deviceId>(L"HBA"),
    };
};

} // namespace orl

class CZarn_FcoeFabric final : public CZarn_DeviceClass<orl::FcoeFabric>
{
public:
    using CZarn_DeviceClass::CZarn_DeviceClass;
};
