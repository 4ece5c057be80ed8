// COrlFcoeAgentIntf: the provider's only view of FCoE hardware.
#pragma once

#include "agent/CResult.h"
#include "agent/OrlFcoeRecords.h"
#include "agent/WarningMessageObj.h"
#include "Common/Src/OrlExport.h"
#include "Common/Src/OrlString.h"

#include <vector>

// The FCoE agent: an object without data, its table of operations only. An agent library's export "GetFcoeAgent" hands
// one out; it lives until the process ends and nobody deletes it.
//
// For every operation:
// - A device id is the DeviceID key of an HBA, compared without regard to case; an empty one asks for all HBAs.
// - Strings, lists and the status record are the caller's. A list is empty when it is handed in. Filled records stay
// the
//   caller's when the agent is called again.
// - The status record comes in as a copy of the request's status word. An agent may fill it; the provider does not read
// it.
// - Any number of threads may be inside the agent at once, in the same operation or in different ones.
//
// The order of the operations is a contract with agents that are built apart from the provider.
class ORL_COMMON_API COrlFcoeAgentIntf
{
public:
    COrlFcoeAgentIntf();
    COrlFcoeAgentIntf(const COrlFcoeAgentIntf& other);
    COrlFcoeAgentIntf& operator=(const COrlFcoeAgentIntf& other);
    virtual ~COrlFcoeAgentIntf();

    // The enumerations answer true when the list was filled, also when it was filled with nothing. On false the list is
    // not looked at and the request ends without instances and without an error.
    virtual bool EnumerateHBAs(const COrlString& deviceId, std::vector<ORL_FCOE_HBA>& hbas, CResult& status) = 0;
    virtual bool EnumerateFabrics(const COrlString& deviceId, std::vector<ORL_FCOE_FABRIC>& fabrics,
                                  CResult& status) = 0;
    virtual bool EnumeratePorts(const COrlString& deviceId, std::vector<ORL_FCOE_PORT>& ports, CResult& status) = 0;
    virtual bool EnumerateTargets(const COrlString& deviceId, std::vector<ORL_FCOE_TARGET>& targets,
                                  CResult& status) = 0;
    virtual bool EnumerateVLANs(const COrlString& deviceId, std::vector<ORL_FCOE_VLAN>& vlans, CResult& status) = 0;
    virtual bool EnumerateLUNs(const COrlString& deviceId, std::vector<ORL_FCOE_LUN>& luns, CResult& status) = 0;
    virtual bool EnumerateStatistics(const COrlString& deviceId, std::vector<ORL_FCOE_STATISTIC>& statistics,
                                     CResult& status) = 0;

    // The actions answer true when they were done. What the user should know comes back as warnings; a warning of the
    // error kind says that the action was refused.
    virtual bool Uninstall(CResult& status) = 0;
    // The name comes in as the user wrote it; the agent may replace it by the name that it really assigned.
    virtual bool CreateVirtualPort(const COrlString& deviceId, COrlString& worldWidePortName,
                                   std::vector<WarningMessageObj>& warnings, CResult& status) = 0;
    virtual bool DeleteVirtualPort(const COrlString& deviceId, const COrlString& worldWidePortName,
                                   std::vector<WarningMessageObj>& warnings, CResult& status) = 0;
    virtual bool GenerateVirtualPortWWPN(const COrlString& deviceId, COrlString& worldWidePortName,
                                         std::vector<WarningMessageObj>& warnings, CResult& status) = 0;
    virtual bool RefreshTargets(const COrlString& deviceId, CResult& status) = 0;
};

// What an agent library exports under the name "GetFcoeAgent".
using GetFcoeAgentFunction = COrlFcoeAgentIntf* (*)();
