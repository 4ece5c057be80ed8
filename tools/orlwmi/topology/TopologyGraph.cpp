// Nodes first, then edges: nodes are numbered as they come.
#include "tools/orlwmi/topology/TopologyGraph.h"

#include "tools/orlwmi/FcNames.h"
#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/topology/TopologyWords.h"

#include <set>
#include <unordered_map>
#include <unordered_set>

namespace orl::client
{
namespace
{

constexpr const char* Solid = "";
constexpr const char* Dashed = " [style=dashed]";

class Dot
{
public:
    // Adds a node; lines that are empty are left out of its label.
    std::string Add(const std::string& id, const char* shape, const std::vector<std::string>& lines)
    {
        std::string label;
        for (const auto& line : lines)
        {
            label += line.empty() ? "" : (label.empty() ? "" : "\\n") + Escaped(line);
        }
        std::string name = "n" + std::to_string(++m_count);
        m_nodes += "    " + name + " [label=\"" + label + "\", shape=" + shape + "];\n";
        if (!id.empty())
        {
            m_names.emplace(id, name);
        }
        return name;
    }

    void Connect(const std::string& from, const std::string& to, const char* style)
    {
        m_edges += "    " + from + " -> " + to + style + ";\n";
    }

    // Follows a link, if both of its objects are there.
    void Follow(const std::string& from, const std::string& to)
    {
        const auto begin = m_names.find(from);
        const auto end = m_names.find(to);
        if (begin != m_names.end() && end != m_names.end() && m_followed.emplace(from, to).second)
        {
            Connect(begin->second, end->second, Solid);
            m_reached.insert(to);
        }
    }

    [[nodiscard]] bool IsReached(const std::string& id) const { return m_reached.count(id) != 0; }

    [[nodiscard]] std::string Text() const
    {
        return "digraph FCoE {\n    rankdir=LR;\n    node [fontname=\"sans-serif\"];\n" + m_nodes + m_edges + "}\n";
    }

private:
    static std::string Escaped(const std::string& line)
    {
        const std::string quoted = Quoted(Printable(line));
        return quoted.substr(1, quoted.size() - 2);
    }

    size_t m_count = 0;
    std::string m_nodes;
    std::string m_edges;
    std::unordered_map<std::string, std::string> m_names;
    std::set<std::pair<std::string, std::string>> m_followed;
    std::unordered_set<std::string> m_reached;
};

void AddTarget(Dot& dot, const std::string& port, const Target& target)
{
    const std::string name = dot.Add(
        {}, "box", {"target " + ColonName(target.portName), target.isListed ? StateName(target.state) : "not listed"});
    dot.Connect(port, name, Solid);
    for (const auto& lun : target.luns)
    {
        dot.Connect(name, dot.Add({}, "cylinder", {"LUN " + lun.id, SizeText(lun.capacity), lun.device}), Solid);
    }
}

// The names of the nodes that may have to be tied to the adapter itself.
struct PortNode
{
    std::string adapter;
    std::string name;
    std::string id;
};

void AddAdapter(Dot& dot, const Adapter& adapter, std::vector<PortNode>& ports)
{
    const std::string& device = adapter.deviceId;
    dot.Add(EthernetId(device), "component", {"Ethernet adapter " + device});
    const std::string name =
        dot.Add(AdapterId(device), "box3d",
                {"FCoE adapter " + device, adapter.name == device ? "" : adapter.name, adapter.status});
    for (const auto& vlan : adapter.vlans)
    {
        dot.Add(VlanId(device, vlan.id), "ellipse",
                {(vlan.id == "0" ? "untagged" : "VLAN " + vlan.id) +
                     (vlan.interfaceName.empty() ? "" : " on " + vlan.interfaceName),
                 Lower(vlan.status)});
    }
    for (const auto& fabric : adapter.fabrics)
    {
        for (const auto& forwarder : fabric.forwarders)
        {
            dot.Add(ForwarderId(device, forwarder.nodeName), "hexagon",
                    {"fabric " + (fabric.name.empty() ? "without name" : ColonName(fabric.name)),
                     "forwarder " + forwarder.name, ColonName(forwarder.nodeName)});
        }
    }
    for (const auto& port : adapter.ports)
    {
        const std::string id = PortId(device, port.portName);
        const std::string node = dot.Add(
            id, "box", {(port.isVirtual ? "virtual port " : "port ") + ColonName(port.portName), FcidText(port.fcid)});
        ports.push_back({name, node, id});
        for (const auto& target : port.targets)
        {
            AddTarget(dot, node, target);
        }
    }
}

} // namespace

std::string DotOf(const Topology& topology, const Links& links)
{
    Dot dot;
    std::vector<PortNode> ports;
    for (const auto& adapter : topology)
    {
        AddAdapter(dot, adapter, ports);
    }
    for (const auto& [from, to] : links)
    {
        dot.Follow(from.id, to.id);
    }
    for (const auto& port : ports)
    {
        if (!dot.IsReached(port.id))
        {
            dot.Connect(port.adapter, port.name, Dashed);
        }
    }
    return dot.Text();
}

} // namespace orl::client
