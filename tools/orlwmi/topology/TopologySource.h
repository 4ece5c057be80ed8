// TopologySource: the topology as the classes of the namespace tell it.
#pragma once

#include "tools/orlwmi/AdapterChoice.h"
#include "tools/orlwmi/Session.h"
#include "tools/orlwmi/topology/Topology.h"

namespace orl::client
{

// Asks for each class once, whatever the number of instances, and joins them by their keys. A class that the namespace
// lacks has no instances. Throws Failure when the service cannot answer.
[[nodiscard]] Topology ReadTopology(const AdapterChoice& choice, Session& session);

// The value of a text key of an object path, as the provider writes paths; empty when the path does not have it.
[[nodiscard]] std::string TextKeyOf(const std::string& path, const std::string& key);

} // namespace orl::client
