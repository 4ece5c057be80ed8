// CZarn_HBAToVLANAssocMgr: Zarn_FCoE_HBA_VLAN_Assoc, each adapter and the VLANs on which it runs FCoE.
#pragma once

#include "assoc/AssociationClass.h"

namespace orl
{

struct HBAToVLAN : AssociationDefaults<ORL_FCOE_VLAN>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoE_HBA_VLAN_Assoc");
    static constexpr auto Manager = FixedText(L"CZarn_HBAToVLANAssocMgr");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateVLANs;
    static constexpr AssociationFailures Failures{L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_HBAToVLANAssoc",
                                                  69, 149};
    using Antecedent = PathOf<&CZarn_Fcoe::MakeHBAPathFromDeviceID, &ORL_FCOE_VLAN::deviceId>;
    using Dependent = PathOf<&CZarn_Fcoe::MakeVLANPathFromID, &ORL_FCOE_VLAN::deviceId, &ORL_FCOE_VLAN::vlanId>;
};

} // namespace orl

using CZarn_HBAToVLANAssocMgr = CZarn_AssociationClass<orl::HBAToVLAN>;
