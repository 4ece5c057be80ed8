// TopologyLinks: which objects of a topology the association classes tie together.
#pragma once

#include "tools/orlwmi/Session.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orl::client
{

// Names of objects, the same for the object of a topology and for every path that means it: without case.
[[nodiscard]] std::string AdapterId(std::string_view deviceId);
[[nodiscard]] std::string EthernetId(std::string_view deviceId);
[[nodiscard]] std::string ForwarderId(std::string_view deviceId, std::string_view nodeName);
[[nodiscard]] std::string PortId(std::string_view deviceId, std::string_view portName);
[[nodiscard]] std::string VlanId(std::string_view deviceId, std::string_view vlanId);

// The name of the object that a path means; empty for a path of another class.
[[nodiscard]] std::string IdOfPath(const std::string& path);

// From one object to another, as their associations tell: Antecedent to Dependent.
using Links = std::vector<std::pair<std::string, std::string>>;

// The associations of Ethernet adapters, adapters, fabrics, ports and VLANs, each class asked once. LUNs and targets
// hang where their references say. Throws Failure.
[[nodiscard]] Links ReadLinks(Session& session);

} // namespace orl::client
