// CZarn_AdapterToHBAAssocMgr: Zarn_FCoE_Adapter_HBA_Assoc, each Ethernet adapter and the FCoE adapter on it. Both have
// the same device id.
#pragma once

#include "assoc/AssociationClass.h"

namespace orl
{

struct AdapterToHBA : AssociationDefaults<ORL_FCOE_HBA>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoE_Adapter_HBA_Assoc");
    static constexpr auto Manager = FixedText(L"CZarn_AdapterToHBAAssocMgr");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateHBAs;
    static constexpr AssociationFailures Failures{L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_AdapterToHBAAssoc",
                                                  66, 189};
    using Antecedent = PathOf<&CZarn_Fcoe::MakeDevicePathFromDeviceID, &ORL_FCOE_HBA::deviceId>;
    using Dependent = PathOf<&CZarn_Fcoe::MakeHBAPathFromDeviceID, &ORL_FCOE_HBA::deviceId>;
};

} // namespace orl

using CZarn_AdapterToHBAAssocMgr = CZarn_QueriedAssociationClass<orl::AdapterToHBA>;
