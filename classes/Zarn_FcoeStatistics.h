// CZarn_FcoeStatistics: Zarn_FCoEStatistics, one instance for each counter of an HBA.
#pragma once

#include "classes/DeviceClass.h"

namespace orl
{

struct FcoeStatistics : DeviceClassWithTextKey<ORL_FCOE_STATISTIC, &ORL_FCOE_STATISTIC::statistic>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoEStatistics");
    static constexpr auto Manager = FixedText(L"CZarn_FcoeStatistics");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateStatistics;
    static COrlString FailureName(const ORL_FCOE_STATISTIC& counter)
    {
        return COrlString((counter.deviceId + L" " + counter.statistic).c_str());
    }
    static constexpr const wchar_t* Key = L"Statistic";

    static constexpr DeviceProperty<ORL_FCOE_STATISTIC> Properties[] = {
        TextProperty<&ORL_FCOE_STATISTIC::deviceId>(L"DeviceID"),
        TextProperty<&ORL_FCOE_STATISTIC::name>(L"Name"),
        TextProperty<&ORL_FCOE_STATISTIC::statistic>(L"Statistic"),
        Uint64Property<&ORL_FCOE_STATISTIC::value>(L"Value"),
        ReferenceProperty<&CZarn_Fcoe::MakeHBAPathFromDeviceID, &ORL_FCOE_STATISTIC::deviceId>(L"HBA"),
    };
};

} // namespace orl

class CZarn_FcoeStatistics final : public CZarn_DeviceClass<orl::FcoeStatistics>
{
public:
    using CZarn_DeviceClass::CZarn_DeviceClass;
};
