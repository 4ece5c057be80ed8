// CZarn_HBAToLUNAssocMgr: Zarn_FCoE_HBA_LUN_Assoc, each adapter and the logical units that it reaches.
#pragma once

#include "assoc/AssociationClass.h"

namespace orl
{

struct HBAToLUN : AssociationDefaults<ORL_FCOE_LUN>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoE_HBA_LUN_Assoc");
    static constexpr auto Manager = FixedText(L"CZarn_HBAToLUNAssocMgr");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateLUNs;
    static constexpr AssociationFailures Failures{L"OrlAdapterAgent::EnumerateLUNs", L"Src\\Zarn_HBAToLunAssoc", 69,
                                                  152};
    using Antecedent = PathOf<&CZarn_Fcoe::MakeHBAPathFromDeviceID, &ORL_FCOE_LUN::deviceId>;
    using Dependent = PathOf<&CZarn_Fcoe::MakeLUNPathFromID, &ORL_FCOE_LUN::deviceId, &ORL_FCOE_LUN::lunId>;

    // The LUN id asked for. 0 asks for all, as does an id in quotes, which reads as 0.
    using Filter = ULONG;
    static Filter Everything() { return 0; }
    static Filter FromKeys(const CZarn_Fcoe& manager, COrlWmiAutoParsedObjectPath&, const COrlWmiNamedValue& dependent,
                           CWomContext& context)
    {
        COrlWmiAutoParsedObjectPath lun = ParsedPath(dependent);
        return static_cast<ULONG>(manager.GetIntKeyFromPath(lun, L"ID", context));
    }
    static bool Admits(Filter lunId, const ORL_FCOE_LUN& lun) { return lunId == 0 || lun.lunId == lunId; }
};

} // namespace orl

using CZarn_HBAToLUNAssocMgr = CZarn_AssociationClass<orl::HBAToLUN>;
