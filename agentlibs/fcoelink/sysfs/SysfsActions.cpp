// What the agent can do to the kernel's FCoE stack, by writing to its attributes.

#include "agentlibs/fcoelink/sysfs/SysfsActions.h"

#include "agentlibs/BackendError.h"
#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"
#include "agentlibs/fcoelink/sysfs/SysfsErrors.h"
#include "agentlibs/fcoelink/sysfs/SysfsText.h"

#include <cstdint>
#include <set>
#include <utility>

namespace orl::sysfs
{
namespace
{

// Advice about something that was done.
constexpr ULONG KindAdvice = 2;

std::wstring Refusal(const std::wstring& where, const std::wstring& what, int error)
{
    return where + L": the kernel refused " + what + L": " + ErrorText(error);
}

[[noreturn]] void ThrowRefused(const std::wstring& where, const std::wstring& what, int error)
{
    throw BackendError(ErrorCode(error), Refusal(where, what, error));
}

Controller FindController(const Tree& tree, const std::wstring& action, const std::wstring& deviceId)
{
    if (deviceId.empty())
        throw BackendError(ERROR_INVALID_PARAMETER, action + L": the DeviceID is empty and names no HBA");
    const auto found = tree.FindController(deviceId);
    if (!found)
        throw BackendError(ERROR_DEV_NOT_EXIST, action + L": there is no HBA \"" + deviceId + L"\"");
    return *found;
}

std::uint64_t ReadName(const std::wstring& action, const std::wstring& text)
{
    const auto name = ParseWorldWideName(text);
    if (!name)
        throw BackendError(ERROR_INVALID_PARAMETER,
                           action + L": \"" + text +
                               L"\" is no world wide port name, which is 16 hexadecimal digits, not all of them 0");
    return *name;
}

std::uint64_t NameIn(const Dir& dir, const char* attribute)
{
    return ParseNumber(dir.Read(attribute)).value_or(0);
}

// The virtual port of this name; an empty folder when there is none.
Dir FindVirtualPort(const Controller& controller, std::uint64_t portName)
{
    Dir found;
    ForEachVirtualPort(controller,
                       [&](const Dir& port)
                       {
                           if (!found && NameIn(port, "port_name") == portName)
                               found = port;
                       });
    return found;
}

// Which port of the HBA has this name; empty when none has.
std::wstring HolderOf(const Controller& controller, std::uint64_t portName)
{
    if (NameIn(controller.host.fc, "port_name") == portName)
        return L"the adapter's own port";
    if (FindVirtualPort(controller, portName))
        return L"a virtual port that is there already";
    return {};
}

// What vport_create and vport_delete take.
std::string PortAndNode(std::uint64_t portName, std::uint64_t nodeName)
{
    return Narrow(FormatWorldWideName(portName) + L':' + FormatWorldWideName(nodeName));
}

std::wstring At(const wchar_t* action, const Controller& controller)
{
    return std::wstring(action) + L" on " + Wide(controller.interfaceName);
}

void Advise(std::vector<WarningMessageObj>& warnings, const std::wstring& text)
{
    WarningMessageObj warning;
    warning.ulKind = KindAdvice;
    warning.strMessage = text;
    warnings.push_back(std::move(warning));
}

// The 48 bits of "52:54:00:fc:00:01"; 0 for any other text.
std::uint64_t ParseMac(std::string_view text)
{
    constexpr std::size_t length = 17;
    if (text.size() != length)
        return 0;
    std::uint64_t mac = 0;
    for (std::size_t i = 0; i < length; ++i)
    {
        if (i % 3 == 2 ? text[i] != ':' : HexDigit(text[i]) < 0)
            return 0;
        if (i % 3 != 2)
            mac = mac << 4 | static_cast<std::uint64_t>(HexDigit(text[i]));
    }
    return mac;
}

} // namespace

void CreateVirtualPort(const Tree& tree, const std::wstring& deviceId, COrlString& worldWidePortName,
                       std::vector<WarningMessageObj>& warnings)
{
    constexpr const wchar_t* action = L"CreateVirtualPort";
    const std::uint64_t portName = ReadName(action, worldWidePortName);
    const Controller controller = FindController(tree, action, deviceId);
    const std::wstring where = At(action, controller);
    const std::wstring name = FormatWorldWideName(portName);

    const std::uint64_t nodeName = NameIn(controller.host.fc, "node_name");
    if (nodeName == 0)
        throw BackendError(ERROR_INVALID_DATA, where + L": the adapter tells no node name for the port");

    // The kernel decides, for others may be creating ports too; what it answers to a name that is taken says nothing.
    const std::wstring holder = HolderOf(controller, portName);
    const int error = controller.host.fc.Write("vport_create", PortAndNode(portName, nodeName));
    if (error == EINVAL && !holder.empty())
        throw BackendError(ERROR_ALREADY_EXISTS, Refusal(where, name, error) + L": it is the name of " + holder);
    if (error != 0)
        ThrowRefused(where, name, error);
    worldWidePortName = name;
    if (!holder.empty())
        Advise(warnings, where + L": the kernel took " + name + L", which is the name of " + holder);
    else if (!FindVirtualPort(controller, portName))
        Advise(warnings, where + L": the kernel took " + name + L", but shows no such port");
}

void DeleteVirtualPort(const Tree& tree, const std::wstring& deviceId, const std::wstring& worldWidePortName,
                       std::vector<WarningMessageObj>& warnings)
{
    constexpr const wchar_t* action = L"DeleteVirtualPort";
    const std::uint64_t portName = ReadName(action, worldWidePortName);
    const Controller controller = FindController(tree, action, deviceId);
    const std::wstring where = At(action, controller);
    const std::wstring name = FormatWorldWideName(portName);

    const Dir port = FindVirtualPort(controller, portName);
    if (!port && NameIn(controller.host.fc, "port_name") == portName)
        throw BackendError(ERROR_ACCESS_DENIED,
                           where + L": " + name + L" is the adapter's own port, which cannot be deleted");
    if (!port)
        throw BackendError(ERROR_DEV_NOT_EXIST, where + L": there is no virtual port " + name);

    if (const int error = controller.host.fc.Write("vport_delete", PortAndNode(portName, NameIn(port, "node_name"))))
        ThrowRefused(where, name, error);
    if (FindVirtualPort(controller, portName))
        Advise(warnings, where + L": the kernel took the deletion of " + name + L", but still shows the port");
}

std::wstring GenerateVirtualPortName(const Tree& tree, const std::wstring& deviceId)
{
    constexpr const wchar_t* action = L"GenerateVirtualPortWWPN";
    const Controller controller = FindController(tree, action, deviceId);
    const std::uint64_t mac = ParseMac(controller.interfaceDir.Read("address"));
    if (mac == 0)
        throw BackendError(ERROR_INVALID_DATA, At(action, controller) + L": the interface has no MAC address");

    // Interfaces may share a MAC address (VLANs of one adapter do), so the ports of all are looked at.
    std::set<std::uint64_t> taken;
    tree.ForEachController({},
                           [&](const Controller& other)
                           {
                               taken.insert(NameIn(other.host.fc, "port_name"));
                               ForEachVirtualPort(other,
                                                  [&](const Dir& port) { taken.insert(NameIn(port, "port_name")); });
                           });

    // IEEE extended names (NAA 2): four bits of format, twelve of the owner's choice, the MAC address. The adapter's
    // own port has 0 there.
    constexpr std::uint64_t format = 2;
    constexpr std::uint64_t firstNumber = 0x101;
    constexpr std::uint64_t lastNumber = 0x1FF;
    for (std::uint64_t number = firstNumber; number <= lastNumber; ++number)
    {
        const std::uint64_t name = format << 60 | number << 48 | mac;
        if (!taken.contains(name))
            return FormatWorldWideName(name);
    }
    throw BackendError(ERROR_NO_MORE_ITEMS,
                       At(action, controller) + L": every name that can be made from the MAC address is taken");
}

void RefreshTargets(const Tree& tree, const std::wstring& deviceId)
{
    constexpr const wchar_t* action = L"RefreshTargets";
    const Controller controller = FindController(tree, action, deviceId);
    int failure = 0;
    std::wstring failed;
    ForEachHost(controller,
                [&](const Host& host)
                {
                    // All channels, all targets, all LUNs.
                    const int error = host.dir.Open("scsi_host/" + host.name).Write("scan", "- - -");
                    if (error != 0 && failure == 0)
                    {
                        failure = error;
                        failed = L"to scan " + Wide(host.name);
                    }
                });
    if (failure != 0)
        ThrowRefused(At(action, controller), failed, failure);
}

} // namespace orl::sysfs
