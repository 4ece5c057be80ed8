// The agent's records, read from the devices of the tree.

#include "agentlibs/fcoelink/sysfs/SysfsRecords.h"

#include "agentlibs/fcoelink/sysfs/SysfsText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>

#include <arpa/inet.h>

namespace orl::sysfs
{
namespace
{

struct NamedValue
{
    std::string_view text;
    ULONG value;
};

template <std::size_t Count>
ULONG ValueOf(const std::array<NamedValue, Count>& table, std::string_view text, ULONG otherwise)
{
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const NamedValue& entry) { return entry.text == text; });
    return found == table.end() ? otherwise : found->value;
}

// The port types of the FC-HBA API, under the kernel's words for them.
constexpr ULONG PortTypeUnknown = 1;
constexpr ULONG PortTypeOther = 2;
constexpr std::wstring_view NpivPortType = L"NPIV VPORT";
constexpr std::array<NamedValue, 7> PortTypes{{{"Unknown", PortTypeUnknown},
                                               {"Other", PortTypeOther},
                                               {"Not Present", 3},
                                               {"NPort (fabric via point-to-point)", 5},
                                               {"NLPort (fabric via loop)", 6},
                                               {"LPort (private loop)", 20},
                                               {"Point-To-Point (direct nport connection)", 21}}};

constexpr std::array<NamedValue, 2> FabricTypes{{{"Fabric", 1}, {"VN2VN", 2}}};

// What a target's state is called; 0 for every other state.
constexpr std::array<NamedValue, 3> TargetTypes{{{"Online", 1}, {"Blocked", 2}, {"Not Present", 3}}};

constexpr ULONG VlanUp = 1;
constexpr ULONG VlanDown = 2;
constexpr ULONG VlanDisabled = 3;

// A disk's size is told in these, whatever its block size.
constexpr std::uint64_t SectorBytes = 512;

// What the FC transport says for a counter that the driver does not keep.
constexpr std::uint64_t NotSupported = std::numeric_limits<std::uint64_t>::max();

std::wstring Text(const Dir& dir, const char* attribute)
{
    return Wide(dir.Read(attribute));
}

// Below /sys/devices, as an instance path.
std::wstring InstancePath(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return Wide(path);
}

// Vendor, model and revision with single blanks between.
std::wstring DiskName(const Dir& disk)
{
    std::wstring name;
    for (const char* attribute : {"vendor", "model", "rev"})
    {
        const std::wstring part = Text(disk, attribute);
        if (!name.empty() && !part.empty())
            name += L' ';
        name += part;
    }
    return name;
}

void ReadBlockDevice(const Dir& disk, ORL_FCOE_LUN& lun)
{
    const Dir block = disk.Open("block");
    const std::vector<std::string> names = block.Names();
    if (names.empty())
        return;
    const Dir device = block.Open(names.front());
    lun.osDeviceName = L"/dev/" + Wide(names.front());
    const auto sectors = ParseNumber(device.Read("size"));
    if (sectors && *sectors <= std::numeric_limits<std::uint64_t>::max() / SectorBytes)
        lun.capacity = std::to_wstring(*sectors * SectorBytes);
    if (const auto blockSize = ParseNumber(device.Open("queue").Read("logical_block_size")))
        lun.blockSize = std::to_wstring(*blockSize);
}

void AppendStatistic(const COrlString& deviceId, const std::string& name, std::uint64_t value,
                     std::vector<ORL_FCOE_STATISTIC>& statistics)
{
    ORL_FCOE_STATISTIC statistic;
    statistic.deviceId = deviceId;
    statistic.name = Words(name);
    statistic.statistic = Wide(name);
    statistic.value = value;
    statistics.push_back(std::move(statistic));
}

} // namespace

HostView::HostView(const Controller& controller, const Host& host)
    : deviceId(Wide(controller.interfaceName)), portName(WorldWideName(host.fc.Read("port_name"))),
      fabricName(WorldWideName(host.fc.Read("fabric_name")))
{
}

COrlString SelectedForwarder(const Controller& controller)
{
    for (const std::string& name : controller.dir.Names("fcf_"))
    {
        const Dir forwarder = controller.dir.Open(name);
        if (Number32(forwarder.Read("selected")) != 0)
            return WorldWideName(forwarder.Read("switch_name"));
    }
    return {};
}

ORL_FCOE_HBA ReadHba(const Tree& tree, const Controller& controller)
{
    const Dir& fc = controller.host.fc;
    ORL_FCOE_HBA hba;
    hba.hbaName = Wide(controller.host.name);
    hba.deviceId = Wide(controller.interfaceName);
    hba.name = Text(fc, "symbolic_name");
    hba.worldWidePortName = WorldWideName(fc.Read("port_name"));
    hba.worldWideNodeName = WorldWideName(fc.Read("node_name"));
    hba.fcid = Number32(fc.Read("port_id"));
    hba.busInformation = Wide(tree.BusAddress(controller.interfacePath));
    hba.linkSpeed = Text(fc, "speed");
    hba.linkStatus = Text(fc, "port_state");
    hba.instancePath = InstancePath(controller.interfacePath + '/' + controller.name + '/' + controller.host.name);
    hba.model = Text(fc, "model");
    return hba;
}

ORL_FCOE_PORT ReadPort(const HostView& view, const Host& host, const COrlString& selectedForwarder)
{
    const std::string portType = host.npiv ? std::string() : host.fc.Read("port_type");
    ORL_FCOE_PORT port;
    port.nodeWWN = WorldWideName(host.fc.Read("node_name"));
    port.portWWN = view.portName;
    if (host.npiv)
    {
        // The kernel's text is that of the adapter's own port: both are N_Ports. The interface has no type for it.
        port.portType = std::wstring(NpivPortType);
        port.portTypeId = PortTypeOther;
    }
    else if (!portType.empty())
    {
        port.portType = Wide(portType);
        port.portTypeId = ValueOf(PortTypes, portType, PortTypeUnknown);
    }
    port.fcid = Number32(host.fc.Read("port_id"));
    port.deviceId = view.deviceId;
    port.name = Text(host.fc, "symbolic_name");
    port.fabricNodeWWN = selectedForwarder;
    port.fabricName = view.fabricName;
    return port;
}

void AppendFabrics(const Controller& controller, std::vector<ORL_FCOE_FABRIC>& fabrics)
{
    const std::string mode = controller.dir.Read("mode");
    for (const std::string& name : controller.dir.Names("fcf_"))
    {
        // The controller's own fcf_dev_loss_tmo is an attribute, no forwarder.
        if (!NumbersOf<1>(name, "fcf_"))
            continue;
        const Dir forwarder = controller.dir.Open(name);
        ORL_FCOE_FABRIC fabric;
        fabric.fabricName = WorldWideName(forwarder.Read("fabric_name"));
        fabric.nodeWWN = WorldWideName(forwarder.Read("switch_name"));
        fabric.reservedText = Text(forwarder, "mac");
        fabric.fcMap = Number32(forwarder.Read("fc_map"));
        fabric.deviceId = Wide(controller.interfaceName);
        fabric.name = Wide(name);
        fabric.fabricType = Wide(mode);
        fabric.fabricTypeId = ValueOf(FabricTypes, mode, 0);
        fabric.priority = Number32(forwarder.Read("priority"));
        fabric.vlanId = Number32(forwarder.Read("vlan_id"));
        if (forwarder.Present())
            fabrics.push_back(std::move(fabric));
    }
}

ORL_FCOE_TARGET ReadTarget(const HostView& view, const RemotePort& port)
{
    ORL_FCOE_TARGET target;
    target.nodeWWN = WorldWideName(port.fc.Read("node_name"));
    target.portWWN = WorldWideName(port.fc.Read("port_name"));
    target.scsiBus = static_cast<ULONG>(port.channel);
    target.scsiTarget = port.targetId;
    target.fcid = Number32(port.fc.Read("port_id"));
    ForEachDisk(port,
                [&](const Disk& first)
                {
                    target.vendor = Text(first.dir, "vendor");
                    target.serialNumber = Text(first.dir, "wwid");
                    return false;
                });
    target.localPortWWN = view.portName;
    target.reservedText = Text(port.fc, "roles");
    target.fabricName = view.fabricName;
    target.deviceId = view.deviceId;
    target.name = Wide(port.name);
    target.targetType = ValueOf(TargetTypes, port.fc.Read("port_state"), 0);
    return target;
}

void AppendLuns(const HostView& view, const RemotePort& port, std::vector<ORL_FCOE_LUN>& luns)
{
    const COrlString targetPort = WorldWideName(port.fc.Read("port_name"));
    const ULONG fcid = Number32(port.fc.Read("port_id"));
    ForEachDisk(port,
                [&](const Disk& disk)
                {
                    ORL_FCOE_LUN lun;
                    // The kernel's number has 64 bits, of which the lower 32 hold the two levels that are in use.
                    lun.lunId = static_cast<ULONG>(disk.lun);
                    lun.busNumber = static_cast<ULONG>(disk.channel);
                    lun.targetNumber = static_cast<ULONG>(disk.target);
                    lun.fcid = fcid;
                    ReadBlockDevice(disk.dir, lun);
                    lun.targetPortWWN = targetPort;
                    lun.reservedText = Text(disk.dir, "wwid");
                    lun.localPortWWN = view.portName;
                    lun.fabricName = view.fabricName;
                    lun.deviceId = view.deviceId;
                    lun.name = DiskName(disk.dir);
                    if (disk.dir.Present())
                        luns.push_back(std::move(lun));
                    return true;
                });
}

ORL_FCOE_VLAN ReadVlan(const Tree& tree, const Controller& controller)
{
    ORL_FCOE_VLAN vlan;
    vlan.vlanName = Wide(controller.interfaceName);
    vlan.vlanId = tree.VlanId(controller.interfaceName);
    vlan.deviceId = vlan.vlanName;
    vlan.name = vlan.vlanId != 0 ? COrlString(L"VLAN " + std::to_wstring(vlan.vlanId)) : vlan.vlanName;
    const std::string operstate = controller.interfaceDir.Read("operstate");
    if (Number32(controller.dir.Read("enabled")) == 0)
    {
        vlan.statusId = VlanDisabled;
        vlan.status = L"Disabled";
    }
    else if (operstate == "up" || operstate == "unknown") // unknown: the driver does not tell, and data may flow
    {
        vlan.statusId = VlanUp;
        vlan.status = L"Up";
    }
    else
    {
        vlan.statusId = VlanDown;
        vlan.status = L"Down";
    }
    return vlan;
}

void AppendStatistics(const Controller& controller, std::vector<ORL_FCOE_STATISTIC>& statistics)
{
    const COrlString deviceId = Wide(controller.interfaceName);
    const Dir counters = controller.host.fc.Open("statistics");
    for (const std::string& name : counters.Names())
    {
        const auto value = ParseNumber(counters.Read(name));
        if (value && *value != NotSupported)
            AppendStatistic(deviceId, name, *value, statistics);
    }
    const Dir errors = controller.dir.Open("lesb");
    for (const std::string& name : errors.Names())
    {
        // The link error status block is kept in the byte order of the wire, and printed as if it were the machine's.
        const auto value = ParseNumber(errors.Read(name));
        if (value && *value <= UINT32_MAX)
            AppendStatistic(deviceId, "lesb_" + name, ntohl(static_cast<std::uint32_t>(*value)), statistics);
    }
    const std::string inUse = "npiv_vports_inuse";
    if (const auto value = ParseNumber(controller.host.fc.Read(inUse)))
        AppendStatistic(deviceId, inUse, *value, statistics);
}

} // namespace orl::sysfs
