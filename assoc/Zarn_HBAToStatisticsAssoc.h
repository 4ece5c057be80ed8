// CZarn_HbaToStatsAssocMgr: Zarn_FCoE_HBA_Statistics_Assoc, each adapter and its counters.
#pragma once

#include "assoc/AssociationClass.h"

namespace orl
{

struct HbaToStats : AssociationDefaults<ORL_FCOE_STATISTIC>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoE_HBA_Statistics_Assoc");
    static constexpr auto Manager = FixedText(L"CZarn_HbaToStatsAssocMgr");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateStatistics;
    static constexpr AssociationFailures Failures{L"OrlAdapterAgent::EnumerateStatistics",
                                                  L"Src\\Zarn_HBAToStatisticsAssoc", 69, 155};
    using Antecedent = PathOf<&CZarn_Fcoe::MakeHBAPathFromDeviceID, &ORL_FCOE_STATISTIC::deviceId>;
    using Dependent =
        PathOf<&CZarn_Fcoe::MakeStatisticPath, &ORL_FCOE_STATISTIC::deviceId, &ORL_FCOE_STATISTIC::statistic>;

    // The counter asked for, without regard to case. An empty name asks for all.
    using Filter = COrlString;
    static Filter Everything() { return {}; }
    static Filter FromKeys(const CZarn_Fcoe& manager, COrlWmiAutoParsedObjectPath&, const COrlWmiNamedValue& dependent,
                           CWomContext& context)
    {
        COrlWmiAutoParsedObjectPath counter = ParsedPath(dependent);
        return manager.GetKeyFromPath(counter, L"Statistic", context);
    }
    static bool Admits(const Filter& name, const ORL_FCOE_STATISTIC& counter)
    {
        return name.empty() || COrlString(name).CompareI(counter.statistic);
    }
};

} // namespace orl

using CZarn_HbaToStatsAssocMgr = CZarn_AssociationClass<orl::HbaToStats>;
