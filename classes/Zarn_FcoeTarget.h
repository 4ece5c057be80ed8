// CZarn_FcoeTarget: Zarn_FcoeTarget, one instance for each target that an HBA port sees.
#pragma once

#include "classes/DeviceClass.h"

namespace orl
{

struct FcoeTarget : DeviceClassWithTextKey<ORL_FCOE_TARGET, &ORL_FCOE_TARGET::nodeWWN>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FcoeTarget");
    static constexpr auto Manager = FixedText(L"CZarn_FcoeTarget");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateTargets;
    static constexpr auto FailureName = &ORL_FCOE_TARGET::nodeWWN;
    // A target is found by its node name, although the paths that point at one carry its port name: tools know both.
    static constexpr const wchar_t* Key = L"WorldWideNodeName";

    static constexpr DeviceProperty<ORL_FCOE_TARGET> Properties[] = {
        TextProperty<&ORL_FCOE_TARGET::deviceId>(L"DeviceID"),
        TextProperty<&ORL_FCOE_TARGET::name>(L"Name"),
        TextProperty<&ORL_FCOE_TARGET::fabricName>(L"FabricName"),
        TextProperty<&ORL_FCOE_TARGET::nodeWWN>(L"WorldWideNodeName"),
        TextProperty<&ORL_FCOE_TARGET::portWWN>(L"WorldWidePortName"),
        HexadecimalProperty<&ORL_FCOE_TARGET::fcid>(L"FCID"),
        Uint32Property<&ORL_FCOE_TARGET::scsiBus>(L"ScsiBus"),
        Uint32Property<&ORL_FCOE_TARGET::scsiTarget>(L"ScsiTarget"),
        TextProperty<&ORL_FCOE_TARGET::vendor>(L"Vendor"),
        TextProperty<&ORL_FCOE_TARGET::serialNumber>(L"SerialNumber"),
        Uint32Property<&ORL_FCOE_TARGET::targetType>(L"TargetType"),
        ReferenceProperty<&CZarn_Fcoe::MakePortPathFromWWN, &ORL_FCOE_TARGET::deviceId, &ORL_FCOE_TARGET::localPortWWN>(
            L"Port"),
        TextProperty<&ORL_FCOE_TARGET::localPortWWN>(L"PortWorldWidePortName"),
    };
};

} // namespace orl

class CZarn_FcoeTarget final : public CZarn_DeviceClass<orl::FcoeTarget>
{
public:
    using CZarn_DeviceClass::CZarn_DeviceClass;
};
