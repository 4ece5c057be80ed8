// CZarn_FabricToPortAssocMgr: Zarn_FCoE_Fabric_Port_Assoc, each fabric and the ports that are logged in to it.
#pragma once

#include "assoc/AssociationClass.h"

namespace orl
{

struct FabricToPort : AssociationDefaults<ORL_FCOE_PORT>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoE_Fabric_Port_Assoc");
    static constexpr auto Manager = FixedText(L"CZarn_FabricToPortAssocMgr");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumeratePorts;
    static constexpr AssociationFailures Failures{L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_FabricToPortAssoc",
                                                  69, 194};
    using Antecedent =
        PathOf<&CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN, &ORL_FCOE_PORT::deviceId, &ORL_FCOE_PORT::fabricNodeWWN>;
    using Dependent = PathOf<&CZarn_Fcoe::MakePortPathFromWWN, &ORL_FCOE_PORT::deviceId, &ORL_FCOE_PORT::portWWN>;

    // A path must name the fabric, but the answer is every port of the adapter: tools filter by themselves.
    static Filter FromKeys(const CZarn_Fcoe& manager, COrlWmiAutoParsedObjectPath& antecedent, const COrlWmiNamedValue&,
                           CWomContext& context)
    {
        manager.GetKeyFromPath(antecedent, L"WorldWideNodeName", context);
        return {};
    }
};

} // namespace orl

using CZarn_FabricToPortAssocMgr = CZarn_QueriedAssociationClass<orl::FabricToPort>;
