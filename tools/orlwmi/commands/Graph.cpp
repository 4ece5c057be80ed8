// graph: the topology for Graphviz.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/AdapterChoice.h"
#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Filter.h"
#include "tools/orlwmi/topology/TopologyGraph.h"
#include "tools/orlwmi/topology/TopologySource.h"

namespace orl::client
{
namespace
{

std::string Draw(const std::string& dot, const Deadline& deadline)
{
    const Filtered drawn = RunFilter("dot", {"-Tsvg"}, dot, deadline);
    if (drawn.end == FilterEnd::NotInstalled)
    {
        throw Failure(ExitCode::NoOutput, "cannot draw the graph: the program dot is not in a folder of PATH",
                      {{"Try", "install Graphviz, or use --format dot"}});
    }
    if (drawn.end == FilterEnd::NotRun)
    {
        throw Failure(ExitCode::NoOutput, "cannot draw the graph: dot could not be run: " + drawn.reason);
    }
    if (drawn.exitCode != 0 || drawn.output.empty())
    {
        throw Failure(ExitCode::NoOutput, "cannot draw the graph: dot ended with exit code " +
                                              std::to_string(drawn.exitCode) +
                                              (drawn.output.empty() ? " and drew nothing" : ""));
    }
    return drawn.output;
}

} // namespace

void RunGraph(const Options& options, Session& session)
{
    const AdapterChoice choice(options.operands, session);
    const LinkedTopology found = ReadTopology(choice, session);
    const std::string dot = DotOf(found.topology, found.links);
    session.output.Write(options.drawn ? Draw(dot, session.deadline) : dot);
}

} // namespace orl::client
