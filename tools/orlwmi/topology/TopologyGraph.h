// A topology as a graph, in the language of Graphviz.
#pragma once

#include "tools/orlwmi/topology/Topology.h"
#include "tools/orlwmi/topology/TopologyLinks.h"

#include <string>

namespace orl::client
{

// A digraph in DOT. Objects are named as in the tree. Links tie adapters to Ethernet adapters, VLANs, forwarders and
// ports; one whose object is not in the topology is left out. A port that no link leads to hangs at its adapter by a
// dashed line; targets hang at their ports and LUNs at their targets.
[[nodiscard]] std::string DotOf(const Topology& topology, const Links& links);

} // namespace orl::client
