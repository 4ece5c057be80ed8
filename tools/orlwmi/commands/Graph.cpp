// graph: the topology for Graphviz.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/AdapterChoice.h"
#include "tools/orlwmi/topology/TopologyGraph.h"
#include "tools/orlwmi/topology/TopologySource.h"

namespace orl::client
{

void RunGraph(const Options& options, Session& session)
{
    const AdapterChoice choice(options.operands, session);
    const Topology topology = ReadTopology(choice, session);
    session.output.Write(DotOf(topology, topology.empty() ? Links() : ReadLinks(session)));
}

} // namespace orl::client
