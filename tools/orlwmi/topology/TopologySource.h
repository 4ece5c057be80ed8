// TopologySource: the topology as the classes and associations of the namespace tell it.
#pragma once

#include "tools/orlwmi/AdapterChoice.h"
#include "tools/orlwmi/Session.h"
#include "tools/orlwmi/topology/Topology.h"
#include "tools/orlwmi/topology/TopologyLinks.h"

namespace orl::client
{

struct LinkedTopology
{
    Topology topology;
    Links links; // empty where there is no adapter
};

// Asks for each class and each association once, whatever the number of instances. VLANs, fabrics and ports belong
// where an association ties them, and where none does, as for a port that is logged in nowhere, to the adapter of their
// keys. Targets and LUNs belong to the port and the target that their keys name: no association leads from a port to
// its targets. A class that the namespace lacks has no instances. Throws Failure when the service cannot answer.
[[nodiscard]] LinkedTopology ReadTopology(const AdapterChoice& choice, Session& session);

} // namespace orl::client
