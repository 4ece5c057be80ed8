// tree: the adapters and what belongs to them, in the words of people who look after them.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/AdapterChoice.h"
#include "tools/orlwmi/topology/TopologySource.h"
#include "tools/orlwmi/topology/TopologyViews.h"

namespace orl::client
{
namespace
{

void DrawTrees(const Topology& topology, Output& output)
{
    for (const auto& adapter : topology)
    {
        output.Write(&adapter == &topology.front() ? "" : "\n");
        DrawTree(output, TreeOf(adapter));
    }
    if (topology.empty())
    {
        output.Write("No FCoE adapter. Whether the agents can see one: orlwmi doctor\n");
    }
}

void WriteRecords(const Topology& topology, Output& output)
{
    const auto writer = MakeResultWriter(Format::Json, Shape::Many, output);
    for (const auto& adapter : topology)
    {
        writer->Write(RecordOf(adapter));
    }
    writer->End();
}

} // namespace

void RunTree(const Options& options, Session& session)
{
    const AdapterChoice choice(options.operands, session);
    const Topology topology = ReadTopology(choice, session).topology;
    if (options.format == Format::Json)
    {
        WriteRecords(topology, session.output);
    }
    else
    {
        DrawTrees(topology, session.output);
    }
}

} // namespace orl::client
