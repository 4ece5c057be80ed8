// The agent's records, read from the devices of the tree. What a device does not say is empty or 0.
#pragma once

#include "agent/OrlFcoeRecords.h"
#include "agentlibs/fcoelink/sysfs/SysfsTree.h"

#include <string>
#include <vector>

namespace orl::sysfs
{

// What ports, targets and LUNs all repeat of the host that they belong to or are seen by.
struct HostView
{
    HostView(const Controller& controller, const Host& host);
    COrlString deviceId;
    COrlString portName;
    COrlString fabricName;
};

// Node name of the forwarder that the controller has chosen, empty when it is logged in to none.
COrlString SelectedForwarder(const Controller& controller);

ORL_FCOE_HBA ReadHba(const Tree& tree, const Controller& controller);

ORL_FCOE_PORT ReadPort(const HostView& view, const Host& host, const COrlString& selectedForwarder);

// One for each forwarder that answered the controller.
void AppendFabrics(const Controller& controller, std::vector<ORL_FCOE_FABRIC>& fabrics);

ORL_FCOE_TARGET ReadTarget(const HostView& view, const RemotePort& port);

void AppendLuns(const HostView& view, const RemotePort& port, std::vector<ORL_FCOE_LUN>& luns);

ORL_FCOE_VLAN ReadVlan(const Tree& tree, const Controller& controller);

// The counters that the adapter keeps; those that it says it does not keep are left out.
void AppendStatistics(const Controller& controller, std::vector<ORL_FCOE_STATISTIC>& statistics);

} // namespace orl::sysfs
