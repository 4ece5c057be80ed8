// How the FCoE devices hang together in the kernel's tree: controllers, hosts, remote ports, disks.
#pragma once

#include "agentlibs/fcoelink/sysfs/SysfsDir.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orl::sysfs
{

// Of the kernel's table of VLANs, which has one line for each: many more than any machine has.
inline constexpr std::size_t MaxVlanTableBytes = std::size_t{1024} * 1024;

// A Fibre Channel host: an adapter's own port or one of its virtual (NPIV) ports.
struct Host
{
    Dir dir;          // hostN
    Dir fc;           // its fc_host/hostN
    std::string name; // hostN
    bool npiv = false;
};

// An FCoE controller and the network interface it was created on: what is called an HBA.
struct Controller
{
    std::string interfaceName;
    std::string interfacePath; // below /sys/devices
    Dir interfaceDir;
    Dir dir;
    std::string name; // ctlr_N
    Host host;        // the adapter's own port
};

// A remote port that is, or was, a SCSI target.
struct RemotePort
{
    Dir dir;          // rport-H:B-I
    Dir fc;           // its fc_remote_ports/rport-H:B-I
    std::string name; // rport-H:B-I
    std::uint64_t channel = 0;
    std::uint32_t targetId = 0;
};

// A logical unit of the type disk. A disk that is just coming or going has no block device.
struct Disk
{
    Dir dir; // H:C:T:L
    std::uint64_t channel = 0;
    std::uint64_t target = 0;
    std::uint64_t lun = 0;
};

// Why there may be no controllers, for the user.
inline constexpr const wchar_t* NoFcoeBus =
    L"there is no sys/bus/fcoe: the kernel's FCoE stack is not loaded (modprobe fcoe)";

// One look at the tree. Devices come and go while it is walked: each is visited if its folder could be opened, in the
// order of the numbers in the names. Looking at one HBA opens nothing that belongs to another.
class Tree
{
public:
    // Throws BackendError when the root holds no sysfs tree.
    explicit Tree(const std::string& root);

    // Is the kernel's FCoE bus there at all?
    bool HasFcoeBus() const { return static_cast<bool>(m_bus); }

    // The controllers by the index of their interface; with a device id that of this interface alone. A device id
    // matches as it is written, and if no interface is named so, without regard to case.
    void ForEachController(const std::wstring& deviceId, const std::function<void(const Controller&)>& visit) const;

    // The one of this device id; nothing for an empty one.
    std::optional<Controller> FindController(const std::wstring& deviceId) const;

    // PCI address of the adapter below the interface, empty when there is none.
    std::string BusAddress(const std::string& interfacePath) const;

    // Number of the VLAN that the interface is, 0 when it is none.
    std::uint32_t VlanId(const std::string& interfaceName) const;

private:
    struct Location // of a controller
    {
        std::string interfaceName;
        std::string interfacePath;
        std::string name;
        std::uint64_t interfaceIndex = 0;
    };

    std::vector<Location> Locate(const std::wstring& deviceId) const;

    Dir m_root;
    Dir m_devices; // /sys/devices
    Dir m_bus;     // /sys/bus/fcoe/devices
};

// The hosts of an HBA: its own, then those of its virtual ports.
void ForEachHost(const Controller& controller, const std::function<void(const Host&)>& visit);

// The virtual ports of an HBA, whether or not they have a host: their fc_vports/vport-H:B-I.
void ForEachVirtualPort(const Controller& controller, const std::function<void(const Dir&)>& visit);

void ForEachRemotePort(const Host& host, const std::function<void(const RemotePort&)>& visit);

// Until the visit answers false.
void ForEachDisk(const RemotePort& port, const std::function<bool(const Disk&)>& visit);

// The path below /sys/devices that a link means which lies in this folder of the tree. Empty for a link that leads
// elsewhere, or starts at the root, which in a copied tree is not the root that was copied.
std::string ResolveDevice(const std::string& folder, const std::string& link);

} // namespace orl::sysfs
