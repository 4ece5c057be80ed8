// How the FCoE devices hang together in the kernel's tree: controllers, hosts, remote ports, disks.

#include "agentlibs/fcoelink/sysfs/SysfsTree.h"

#include "agentlibs/BackendError.h"
#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"
#include "agentlibs/fcoelink/sysfs/SysfsText.h"
#include "Common/Src/OrlDebug.h"

#include <algorithm>
#include <cerrno>
#include <set>
#include <system_error>

namespace orl::sysfs
{
namespace
{

constexpr const char* BusFolder = "sys/bus/fcoe/devices";
constexpr std::string_view DevicesFolder = "sys/devices";
constexpr std::string_view ControllerPrefix = "ctlr_";
constexpr std::string_view VirtualPortPrefix = "vport-";

// Type number of disks in SCSI's peripheral device types.
constexpr std::string_view DiskType = "0";

std::vector<std::string> SplitPath(std::string_view path)
{
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= path.size();)
    {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        parts.emplace_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

std::string JoinPath(const std::vector<std::string>& parts)
{
    std::string path;
    for (const std::string& part : parts)
        path += path.empty() ? part : '/' + part;
    return path;
}

// domain:bus:device.function, all hexadecimal. Domains beyond those of the firmware have more than four digits.
bool IsPciAddress(std::string_view name)
{
    constexpr std::string_view tail = ":00:00.0";
    constexpr std::size_t minDomainDigits = 4;
    constexpr std::size_t maxDomainDigits = 8;
    if (name.size() < minDomainDigits + tail.size() || name.size() > maxDomainDigits + tail.size())
        return false;
    const std::size_t domain = name.size() - tail.size();
    for (std::size_t i = 0; i < name.size(); ++i)
    {
        const char form = i < domain ? '0' : tail[i - domain];
        if (form == '0' ? HexDigit(name[i]) < 0 : name[i] != form)
            return false;
    }
    return true;
}

void TraceLeftOut(const std::string& what, const wchar_t* reason)
{
    if (g_OrlDebug.GetCurrentLogLevel() != 0)
        g_OrlDebug.Print(L"sysfs: %s left out: %s", Wide(what).c_str(), reason);
}

// The host in this folder; an empty one when there is none.
Host OpenHost(const Dir& folder, bool npiv)
{
    Host host;
    for (const std::string& name : folder.Names("host"))
    {
        if (!NumbersOf<1>(name, "host"))
            continue;
        host.dir = folder.Open(name);
        host.fc = host.dir.Open("fc_host/" + name);
        host.name = name;
        host.npiv = npiv;
        if (host.fc)
            return host;
    }
    return {};
}

} // namespace

std::string ResolveDevice(const std::string& folder, const std::string& link)
{
    if (link.empty() || link.front() == '/')
        return {};
    std::vector<std::string> parts = SplitPath(folder);
    for (std::string& part : SplitPath(link))
    {
        if (part.empty() || part == ".")
            continue;
        if (part != "..")
            parts.push_back(std::move(part));
        else if (parts.empty())
            return {};
        else
            parts.pop_back();
    }
    const std::string path = JoinPath(parts);
    if (!path.starts_with(DevicesFolder) || path.size() <= DevicesFolder.size() + 1 ||
        path[DevicesFolder.size()] != '/')
        return {};
    return path.substr(DevicesFolder.size() + 1);
}

Tree::Tree(const std::string& root) : m_root(Dir::OpenPath(root))
{
    if (!m_root)
    {
        const int error = errno;
        throw BackendError(error == EACCES ? ERROR_ACCESS_DENIED : ERROR_PATH_NOT_FOUND,
                           L"SysfsRoot \"" + Wide(root) + L"\": " + Wide(std::generic_category().message(error)));
    }
    m_devices = m_root.Open(DevicesFolder);
    if (!m_devices)
        throw BackendError(ERROR_PATH_NOT_FOUND, L"SysfsRoot \"" + Wide(root) + L"\" holds no folder \"sys/devices\"");
    m_bus = m_root.Open(BusFolder);
}

std::vector<Tree::Location> Tree::Locate(const std::wstring& deviceId) const
{
    std::vector<Location> found;
    bool exact = false;
    for (const std::string& name : m_bus.Names(ControllerPrefix))
    {
        const std::string path = ResolveDevice(BusFolder, m_bus.Link(name));
        std::vector<std::string> parts = SplitPath(path);
        // The controller is a child of a network interface: .../net/INTERFACE/ctlr_N
        if (parts.size() < 3 || parts.back() != name || parts[parts.size() - 3] != "net")
        {
            TraceLeftOut(std::string(BusFolder) + '/' + name,
                         L"it is no link to the controller of a network interface");
            continue;
        }
        parts.pop_back();
        Location location;
        location.interfaceName = parts.back();
        location.interfacePath = JoinPath(parts);
        location.name = name;
        const std::wstring id = Wide(location.interfaceName);
        if (!deviceId.empty() && FoldCase(id) != FoldCase(deviceId))
            continue;
        exact = exact || id == deviceId;
        found.push_back(std::move(location));
    }
    if (exact)
        std::erase_if(found, [&](const Location& location) { return Wide(location.interfaceName) != deviceId; });
    if (found.size() > 1)
    {
        for (Location& location : found)
            location.interfaceIndex = Number32(m_devices.Open(location.interfacePath).Read("ifindex"));
        std::stable_sort(found.begin(), found.end(),
                         [](const Location& left, const Location& right)
                         { return left.interfaceIndex < right.interfaceIndex; });
    }
    return found;
}

std::optional<Controller> Tree::FindController(const std::wstring& deviceId) const
{
    std::optional<Controller> found;
    if (!deviceId.empty())
        ForEachController(deviceId,
                          [&](const Controller& controller)
                          {
                              if (!found)
                                  found = controller;
                          });
    return found;
}

void Tree::ForEachController(const std::wstring& deviceId, const std::function<void(const Controller&)>& visit) const
{
    for (const Location& location : Locate(deviceId))
    {
        Controller controller;
        controller.interfaceName = location.interfaceName;
        controller.interfacePath = location.interfacePath;
        controller.interfaceDir = m_devices.Open(location.interfacePath);
        controller.dir = controller.interfaceDir.Open(location.name);
        controller.name = location.name;
        controller.host = OpenHost(controller.dir, false);
        if (controller.host.fc)
            visit(controller);
        else
            TraceLeftOut(location.interfacePath + '/' + location.name, L"it has no Fibre Channel host");
    }
}

std::string Tree::BusAddress(const std::string& interfacePath) const
{
    // Interfaces on interfaces (a VLAN of a bond of two adapters), each looked at once: a damaged tree may have rings.
    std::set<std::string> seen;
    std::vector<std::string> pending{interfacePath};
    while (!pending.empty())
    {
        const std::string path = std::move(pending.back());
        pending.pop_back();
        if (!seen.insert(path).second)
            continue;
        // The nearest PCI device above the interface: the adapter, behind whatever bridges.
        const std::vector<std::string> parts = SplitPath(path);
        const auto address = std::find_if(parts.rbegin(), parts.rend(), IsPciAddress);
        if (address != parts.rend())
            return *address;
        const Dir interfaceDir = m_devices.Open(path);
        const std::vector<std::string> lower = interfaceDir.Names("lower_");
        for (auto name = lower.rbegin(); name != lower.rend(); ++name)
        {
            std::string below = ResolveDevice(std::string(DevicesFolder) + '/' + path, interfaceDir.Link(*name));
            if (!below.empty())
                pending.push_back(std::move(below));
        }
    }
    return {};
}

std::uint32_t Tree::VlanId(const std::string& interfaceName) const
{
    // On a running kernel proc/net is a link to the calling process's own view.
    const std::string table = m_root.OpenThroughLinks("proc/net/vlan").ReadWhole("config", MaxVlanTableBytes);
    // "eth0.1002      | 1002  | eth0": a name may hold any character but blanks, '/' and ':'.
    for (std::size_t begin = 0; begin < table.size();)
    {
        const std::size_t end = std::min(table.find('\n', begin), table.size());
        std::string_view line = std::string_view(table).substr(begin, end - begin);
        begin = end + 1;
        const std::size_t nameEnd = std::min(line.find(' '), line.size());
        if (line.substr(0, nameEnd) != interfaceName)
            continue;
        line.remove_prefix(nameEnd);
        line = AttributeText(line);
        if (!line.starts_with('|'))
            continue;
        line.remove_prefix(1);
        return Number32(AttributeText(line.substr(0, line.find('|'))));
    }
    return 0;
}

void ForEachHost(const Controller& controller, const std::function<void(const Host&)>& visit)
{
    visit(controller.host);
    for (const std::string& name : controller.host.dir.Names(VirtualPortPrefix))
        if (const Host host = OpenHost(controller.host.dir.Open(name), true); host.fc)
            visit(host);
}

void ForEachVirtualPort(const Controller& controller, const std::function<void(const Dir&)>& visit)
{
    for (const std::string& name : controller.host.dir.Names(VirtualPortPrefix))
    {
        std::string path = name;
        path.append("/fc_vports/").append(name);
        if (const Dir port = controller.host.dir.Open(path))
            visit(port);
    }
}

void ForEachRemotePort(const Host& host, const std::function<void(const RemotePort&)>& visit)
{
    for (const std::string& name : host.dir.Names("rport-"))
    {
        const auto numbers = NumbersOf<3>(name, "rport-");
        if (!numbers)
            continue;
        RemotePort port;
        port.dir = host.dir.Open(name);
        port.fc = port.dir.Open("fc_remote_ports/" + name);
        // -1 for what is no SCSI target: name servers, other initiators.
        const auto targetId = ParseNumber(port.fc.Read("scsi_target_id"));
        if (!targetId || *targetId > UINT32_MAX)
            continue;
        port.name = name;
        port.channel = (*numbers)[1];
        port.targetId = static_cast<std::uint32_t>(*targetId);
        visit(port);
    }
}

void ForEachDisk(const RemotePort& port, const std::function<bool(const Disk&)>& visit)
{
    for (const std::string& targetName : port.dir.Names("target"))
    {
        const Dir target = port.dir.Open(targetName);
        for (const std::string& name : target.Names())
        {
            const auto numbers = NumbersOf<4>(name);
            if (!numbers)
                continue;
            Disk disk;
            disk.dir = target.Open(name);
            if (disk.dir.Read("type") != DiskType)
                continue;
            disk.channel = (*numbers)[1];
            disk.target = (*numbers)[2];
            disk.lun = (*numbers)[3];
            if (!visit(disk))
                return;
        }
    }
}

} // namespace orl::sysfs
