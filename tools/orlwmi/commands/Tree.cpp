// tree: the adapters and what belongs to them, in the words of people who look after them.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/FcNames.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Tree.h"

namespace orl::client
{
namespace
{

std::string Joined(const std::string& left, const std::string& right, const char* between)
{
    return left.empty() || right.empty() ? left + right : left + between + right;
}

TreeNode AdapterNode(const Record& hba)
{
    TreeNode node;
    const std::string name = TextOf(hba, "Name");
    const std::string id = TextOf(hba, "DeviceID");
    node.title = "FCoE adapter " + Joined(id, name == id ? "" : name, "  ");
    node.facts = {{"state", Joined(TextOf(hba, "LinkStatus"), TextOf(hba, "LinkSpeed"), ", ")},
                  {"port name", ColonName(TextOf(hba, "WorldWidePortName"))},
                  {"node name", ColonName(TextOf(hba, "WorldWideNodeName"))},
                  {"FCID", FcidText(TextOf(hba, "FCID"))},
                  {"host", TextOf(hba, "HBAName")},
                  {"model", TextOf(hba, "Model")},
                  {"bus", TextOf(hba, "BusInformation")}};
    return node;
}

// The instances of a class, or none when the namespace does not have it.
std::vector<Record> InstancesIfAny(const std::string& className, Session& session)
{
    std::vector<Record> records;
    try
    {
        Results results = Results::Instances(session.services, className);
        while (const auto object = results.Next(session.deadline, session.output))
        {
            session.timing.CountObject();
            records.push_back(ReadRecord(object));
        }
    }
    catch (const Failure& failure)
    {
        if (failure.Status() != WBEM_E_INVALID_CLASS && failure.Status() != WBEM_E_NOT_FOUND)
        {
            throw;
        }
    }
    return records;
}

} // namespace

void RunTree(const Options&, Session& session)
{
    bool first = true;
    for (const auto& hba : InstancesIfAny("Zarn_FCOEHBA", session))
    {
        session.output.Write(first ? "" : "\n");
        first = false;
        DrawTree(session.output, AdapterNode(hba));
    }
    if (first)
    {
        session.output.Write("No FCoE adapter. Whether the agents can see one: orlwmi doctor\n");
    }
}

} // namespace orl::client
