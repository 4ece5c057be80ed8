// The tree for people.
#include "tools/orlwmi/topology/TopologyViews.h"

#include "tools/orlwmi/FcNames.h"
#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/topology/TopologyWords.h"

#include <algorithm>

namespace orl::client
{
namespace
{

std::string Joined(const std::string& left, const std::string& right, const char* between)
{
    return left.empty() || right.empty() ? left + right : left + between + right;
}

// Cells with two blanks between, each but the last as wide as the widest of its column. A column that is empty in all
// rows takes no room.
std::vector<std::string> Aligned(const std::vector<std::vector<std::string>>& rows, size_t numberColumn)
{
    std::vector<size_t> widths;
    for (const auto& row : rows)
    {
        widths.resize(std::max(widths.size(), row.size()));
        for (size_t i = 0; i < row.size(); ++i)
        {
            widths[i] = std::max(widths[i], DisplayWidth(row[i]));
        }
    }
    std::vector<std::string> lines;
    for (const auto& row : rows)
    {
        std::string line;
        for (size_t i = 0; i < row.size(); ++i)
        {
            if (widths[i] != 0)
            {
                const std::string blanks(widths[i] - DisplayWidth(row[i]), ' ');
                line += line.empty() ? "" : "  ";
                line += i == numberColumn ? blanks + row[i] : row[i] + blanks;
            }
        }
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(std::move(line));
    }
    return lines;
}

constexpr size_t NoNumbers = static_cast<size_t>(-1);

std::vector<TreeNode> Leaves(const std::vector<std::vector<std::string>>& rows, size_t numberColumn)
{
    std::vector<TreeNode> nodes;
    for (auto& line : Aligned(rows, numberColumn))
    {
        nodes.push_back({std::move(line), {}, {}});
    }
    return nodes;
}

TreeNode VlanNode(const Vlan& vlan)
{
    const std::string title = vlan.id == "0" ? "untagged" : "VLAN " + vlan.id;
    return {Joined(Joined(title, vlan.interfaceName, " on "), Lower(vlan.status), ": "), {}, {}};
}

TreeNode FabricNode(const Fabric& fabric, const Adapter& adapter)
{
    std::vector<std::vector<std::string>> rows;
    for (const auto& forwarder : fabric.forwarders)
    {
        rows.push_back({"forwarder " + Printable(forwarder.name), ColonName(forwarder.nodeName),
                        "priority " + forwarder.priority,
                        forwarder.vlanId == "0" ? "untagged" : "VLAN " + forwarder.vlanId,
                        "FC-MAP " + Printable(forwarder.fcMap), UseOf(forwarder, adapter)});
    }
    return {"fabric " + (fabric.name.empty() ? "without name" : ColonName(fabric.name)), {}, Leaves(rows, NoNumbers)};
}

std::string BlockText(const std::string& blockSize)
{
    return blockSize.empty() || blockSize == "512" ? "" : blockSize + "-byte blocks";
}

std::string CountText(size_t count)
{
    return count == 0 ? "no LUNs" : std::to_string(count) + (count == 1 ? " LUN" : " LUNs");
}

TreeNode TargetNode(const Target& target)
{
    std::vector<std::vector<std::string>> rows;
    for (const auto& lun : target.luns)
    {
        rows.push_back({"LUN " + lun.id, Printable(SizeText(lun.capacity)),
                        lun.device.empty() ? "no disk" : Printable(lun.device), Printable(lun.name),
                        Printable(BlockText(lun.blockSize))});
    }
    std::string title = "target " + ColonName(target.portName) + "  ";
    if (!target.isListed)
    {
        return {title + "not among the adapter's targets", {}, Leaves(rows, 1)};
    }
    title += StateName(target.state) + (", " + CountText(target.luns.size()));
    title += HasFcid(target.fcid) ? ", FCID " + target.fcid : "";
    title += target.vendor.empty() ? "" : ", " + target.vendor;
    title += target.name.empty() ? "" : ", " + target.name;
    return {title, {}, Leaves(rows, 1)};
}

TreeNode PortNode(const Port& port, const Adapter& adapter)
{
    TreeNode node;
    node.title = (port.isVirtual ? "virtual port " : "port ") + ColonName(port.portName);
    if (port.isListed)
    {
        node.title += port.name.empty() || port.name == adapter.name ? "" : "  " + port.name;
        node.facts = {{"FCID", FcidText(port.fcid)}, {"fabric", LoginOf(port, adapter)}};
        if (!SameName(port.nodeName, adapter.nodeName))
        {
            node.facts.emplace_back("node name", ColonName(port.nodeName));
        }
    }
    else
    {
        node.title += "  not among the adapter's ports";
    }
    for (const auto& target : port.targets)
    {
        node.children.push_back(TargetNode(target));
    }
    return node;
}

} // namespace

TreeNode TreeOf(const Adapter& adapter)
{
    TreeNode node;
    node.title = "FCoE adapter " + Joined(adapter.deviceId, adapter.name == adapter.deviceId ? "" : adapter.name, "  ");
    node.facts = {{"state", Joined(adapter.status, adapter.speed, ", ")},
                  {"problem", ProblemOf(adapter)},
                  {"port name", ColonName(adapter.portName)},
                  {"node name", ColonName(adapter.nodeName)},
                  {"FCID", FcidText(adapter.fcid)},
                  {"host", adapter.hostName},
                  {"model", adapter.model},
                  {"bus", adapter.bus}};
    for (const auto& vlan : adapter.vlans)
    {
        node.children.push_back(VlanNode(vlan));
    }
    for (const auto& fabric : adapter.fabrics)
    {
        node.children.push_back(FabricNode(fabric, adapter));
    }
    for (const auto& port : adapter.ports)
    {
        node.children.push_back(PortNode(port, adapter));
    }
    return node;
}

} // namespace orl::client
