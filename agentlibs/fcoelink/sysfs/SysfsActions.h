// What the agent can do to the kernel's FCoE stack, by writing to its attributes.
#pragma once

#include "agent/OrlFcoeAgentIntf.h"
#include "agentlibs/fcoelink/sysfs/SysfsTree.h"

#include <string>
#include <vector>

namespace orl::sysfs
{

// Each throws BackendError, with the kernel's reason, when the kernel refuses, and when there is no such HBA or port.

// On success the name is in the agents' form. The port belongs to the adapter's own node.
void CreateVirtualPort(const Tree& tree, const std::wstring& deviceId, COrlString& worldWidePortName,
                       std::vector<WarningMessageObj>& warnings);

void DeleteVirtualPort(const Tree& tree, const std::wstring& deviceId, const std::wstring& worldWidePortName,
                       std::vector<WarningMessageObj>& warnings);

// A name that no port of any HBA of the tree has, made from the interface's MAC address.
std::wstring GenerateVirtualPortName(const Tree& tree, const std::wstring& deviceId);

// Looks for new targets and LUNs behind every host of the HBA; returns when the kernel has looked.
void RefreshTargets(const Tree& tree, const std::wstring& deviceId);

} // namespace orl::sysfs
