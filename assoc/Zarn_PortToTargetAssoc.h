// CZarn_PortToTargetAssocMgr, registered for Zarn_FCoE_Port_Target_Assoc: each target.
#pragma once

#include "assoc/AssociationClass.h"

namespace orl
{

struct PortToTarget : AssociationDefaults<ORL_FCOE_TARGET>
{
    // Its instances are of the class of HBAs and fabrics, whatever it is registered for: tools know them so.
    static constexpr auto CimClass = FixedText(L"Zarn_FCoE_HBA_Fabric_Assoc");
    static constexpr auto Manager = FixedText(L"CZarn_PortToTargetAssocMgr");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateTargets;
    static constexpr AssociationFailures Failures{L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_PortToTargetAssoc",
                                                  69, 149};
    // The port's path carries the name of the target's own port, and the target's path that of its node. Neither is
    // the path of an instance; tools join them with the targets by these names.
    using Antecedent = PathOf<&CZarn_Fcoe::MakePortPathFromWWN, &ORL_FCOE_TARGET::deviceId, &ORL_FCOE_TARGET::portWWN>;
    using Dependent =
        PathOf<&CZarn_Fcoe::MakeTargetPathFromWWPN, &ORL_FCOE_TARGET::deviceId, &ORL_FCOE_TARGET::nodeWWN>;
};

} // namespace orl

using CZarn_PortToTargetAssocMgr = CZarn_AssociationClass<orl::PortToTarget>;
