// CZarn_FcoeLUN: Zarn_FCoeLUN, one instance for each LUN that an HBA sees.
#pragma once

#include "classes/DeviceClass.h"

namespace orl
{

struct FcoeLUN : DeviceClassDefaults<ORL_FCOE_LUN>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoeLUN");
    static constexpr auto Manager = FixedText(L"CZarn_FcoeLUN");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateLUNs;
    static COrlString FailureName(const ORL_FCOE_LUN& lun) { return COrlString(static_cast<int>(lun.lunId)); }

    // The LUN id asked for. 0 selects every LUN of the HBA, and so does an id in quotes, which reads as 0; without a
    // device id every LUN is selected whatever the number.
    using Filter = ULONG;
    static Filter Everything() { return 0xFFFFFFFF; }
    static Filter FromPath(const CZarn_Fcoe& manager, COrlWmiAutoParsedObjectPath& path, CWomContext& context)
    {
        return static_cast<ULONG>(manager.GetIntKeyFromPath(path, L"ID", context));
    }
    static bool Admits(Filter lunId, const COrlString& deviceId, const ORL_FCOE_LUN& lun)
    {
        return deviceId.IsEmpty() || lunId == 0 || lun.lunId == lunId;
    }

    static constexpr DeviceProperty<ORL_FCOE_LUN> Properties[] = {
        TextProperty<&ORL_FCOE_LUN::deviceId>(L"DeviceID"),
        TextProperty<&ORL_FCOE_LUN::name>(L"Name"),
        TextProperty<&ORL_FCOE_LUN::fabricName>(L"FabricName"),
        Uint32Property<&ORL_FCOE_LUN::lunId>(L"ID"),
        Uint32Property<&ORL_FCOE_LUN::busNumber>(L"BusNumber"),
        Uint32Property<&ORL_FCOE_LUN::targetNumber>(L"TargetNumber"),
        HexadecimalProperty<&ORL_FCOE_LUN::fcid>(L"FCID"),
        // Sent twice: tools that record the puts know it so.
        Uint32Property<&ORL_FCOE_LUN::targetNumber>(L"TargetNumber"),
        TextProperty<&ORL_FCOE_LUN::osDeviceName>(L"OSDeviceName"),
        TextProperty<&ORL_FCOE_LUN::capacity>(L"Capacity"),
        TextProperty<&ORL_FCOE_LUN::blockSize>(L"BlockSize"),
        ReferenceProperty<&CZarn_Fcoe::MakeTargetPathFromWWPN, &ORL_FCOE_LUN::deviceId, &ORL_FCOE_LUN::targetPortWWN>(
            L"Target"),
        TextProperty<&ORL_FCOE_LUN::targetPortWWN>(L"TargetWorldWidePortName"),
        TextProperty<&ORL_FCOE_LUN::localPortWWN>(L"PortWorldWidePortName"),
    };
};

} // namespace orl

class CZarn_FcoeLUN final : public CZarn_DeviceClass<orl::FcoeLUN>
{
public:
    using CZarn_DeviceClass::CZarn_DeviceClass;
};
