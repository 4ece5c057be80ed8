// CZarn_HBAToFabricAssocMgr: Zarn_FCoE_HBA_Fabric_Assoc, each adapter and the fabrics that it sees.
#pragma once

#include "assoc/AssociationClass.h"

namespace orl
{

struct HBAToFabric : AssociationDefaults<ORL_FCOE_FABRIC>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoE_HBA_Fabric_Assoc");
    static constexpr auto Manager = FixedText(L"CZarn_HBAToFabricAssocMgr");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateFabrics;
    static constexpr AssociationFailures Failures{L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_HBAToFabricAssoc",
                                                  69, 148};
    using Antecedent = PathOf<&CZarn_Fcoe::MakeHBAPathFromDeviceID, &ORL_FCOE_FABRIC::deviceId>;
    using Dependent =
        PathOf<&CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN, &ORL_FCOE_FABRIC::deviceId, &ORL_FCOE_FABRIC::nodeWWN>;
};

} // namespace orl

using CZarn_HBAToFabricAssocMgr = CZarn_AssociationClass<orl::HBAToFabric>;
