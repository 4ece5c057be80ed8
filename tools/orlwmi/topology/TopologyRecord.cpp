// The record for programs.
#include "tools/orlwmi/topology/TopologyViews.h"

#include "tools/orlwmi/topology/TopologyWords.h"

#include <algorithm>
#include <memory>

namespace orl::client
{
namespace
{

// A number where the text is one: the classes' numbers arrive as texts of their digits.
Value NumberOf(const std::string& text)
{
    const bool digits =
        !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    const bool literal = digits && (text.size() == 1 || text.front() != '0');
    return literal ? Value(Number{text}) : text.empty() ? Value() : Value(text);
}

template <typename T, typename Make>
Value ListOf(const std::vector<T>& items, Make make)
{
    Array list;
    list.reserve(items.size());
    for (const auto& item : items)
    {
        list.emplace_back(std::make_shared<const Record>(make(item)));
    }
    return list;
}

Record LunRecord(const Lun& lun)
{
    Record record;
    record.properties = {{"ID", NumberOf(lun.id)},
                         {"Name", lun.name},
                         {"OSDeviceName", lun.device},
                         {"Capacity", NumberOf(lun.capacity)},
                         {"BlockSize", NumberOf(lun.blockSize)}};
    return record;
}

Record TargetRecord(const Target& target)
{
    Record record;
    record.properties = {{"WorldWidePortName", target.portName},
                         {"WorldWideNodeName", target.nodeName},
                         {"Name", target.name},
                         {"State", StateName(target.state)},
                         {"FCID", target.fcid},
                         {"Vendor", target.vendor},
                         {"LUNs", ListOf(target.luns, LunRecord)}};
    return record;
}

Record PortRecord(const Port& port)
{
    Record record;
    record.properties = {{"WorldWidePortName", port.portName},
                         {"WorldWideNodeName", port.nodeName},
                         {"Name", port.name},
                         {"PortType", port.type},
                         {"Virtual", port.isVirtual},
                         {"FCID", port.fcid},
                         {"FabricName", port.fabric},
                         {"ForwarderWorldWideNodeName", port.switchName},
                         {"Targets", ListOf(port.targets, TargetRecord)}};
    return record;
}

Record FabricRecord(const Fabric& fabric, const Adapter& adapter)
{
    const auto forwarderRecord = [&adapter](const Forwarder& forwarder)
    {
        Record record;
        record.properties = {{"Name", forwarder.name},
                             {"WorldWideNodeName", forwarder.nodeName},
                             {"FabricType", forwarder.type},
                             {"FCMap", forwarder.fcMap},
                             {"Priority", NumberOf(forwarder.priority)},
                             {"VlanID", NumberOf(forwarder.vlanId)},
                             {"Selected", forwarder.logins != 0},
                             {"Use", UseOf(forwarder, adapter)}};
        return record;
    };
    Record record;
    record.properties = {{"FabricName", fabric.name}, {"Forwarders", ListOf(fabric.forwarders, forwarderRecord)}};
    return record;
}

Record VlanRecord(const Vlan& vlan)
{
    Record record;
    record.properties = {
        {"VlanID", NumberOf(vlan.id)}, {"Name", vlan.name}, {"VLANName", vlan.interfaceName}, {"Status", vlan.status}};
    return record;
}

} // namespace

Record RecordOf(const Adapter& adapter)
{
    const std::string problem = ProblemOf(adapter);
    Record record;
    record.properties = {
        {"DeviceID", adapter.deviceId},
        {"Name", adapter.name},
        {"HBAName", adapter.hostName},
        {"LinkStatus", adapter.status},
        {"LinkSpeed", adapter.speed},
        {"Problem", problem.empty() ? Value() : Value(problem)},
        {"WorldWidePortName", adapter.portName},
        {"WorldWideNodeName", adapter.nodeName},
        {"FCID", adapter.fcid},
        {"Model", adapter.model},
        {"BusInformation", adapter.bus},
        {"VLANs", ListOf(adapter.vlans, VlanRecord)},
        {"Fabrics", ListOf(adapter.fabrics, [&](const Fabric& fabric) { return FabricRecord(fabric, adapter); })},
        {"Ports", ListOf(adapter.ports, PortRecord)}};
    return record;
}

} // namespace orl::client
