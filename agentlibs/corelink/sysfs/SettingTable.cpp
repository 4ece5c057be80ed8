// The settings that the kernel has for an FCoE adapter: limits, defaults and words are those of its FCoE stack.

#include "agentlibs/corelink/sysfs/SettingTable.h"

#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/sysfs/SysfsText.h"

#include <limits>

namespace orl::sysfs
{
namespace
{

// The numbers are those of the fabric types.
constexpr KernelChoice Modes[] = {{1, L"Fabric", "Fabric", "fabric"}, {2, L"VN2VN", "VN2VN", "vn2vn"}};
constexpr KernelChoice Enabled[] = {{0, L"Disabled", "0", "0"}, {1, L"Enabled", "1", "1"}};
constexpr KernelChoice Switch[] = {{0, L"Off", "0", "0"}, {1, L"On", "1", "1"}};

constexpr LONG MaxDevLossTimeout = 600; // of remote ports without a fast failure of their I/O
constexpr LONG MaxMtu = 65535;
constexpr LONG MinMtu = 68; // of IPv4
constexpr LONG MaxTxQueueLength = 1000000;

constexpr SettingAttribute Table[] = {
    {L"FcfDevLossTimeout",
     L"FCF device loss timeout (seconds)",
     L"How long a forwarder that has gone silent is remembered.",
     L"Seconds after which a Fibre Channel forwarder that no longer advertises itself is removed. The value is passed "
     L"on "
     L"to the forwarders that are known.",
     "fcf_dev_loss_tmo",
     AttributePlace::Controller,
     1800,
     0,
     std::numeric_limits<LONG>::max(),
     {}},
    {L"DevLossTimeout",
     L"Device loss timeout (seconds)",
     L"How long a remote port may be away before its devices are removed.",
     L"Seconds for which the I/O of a remote port that has gone is held back. After that it fails, and the port's SCSI "
     L"devices are removed. Remote ports of this adapter start with this value.",
     "dev_loss_tmo",
     AttributePlace::FcHost,
     60,
     1,
     MaxDevLossTimeout,
     {}},
    {ControllerModeName, L"Controller mode", L"Whether ports log in to a fabric or to each other.",
     L"Fabric: the port logs in through a Fibre Channel forwarder. VN2VN: ports of one Ethernet network log in to each "
     L"other. The mode can be changed while the controller is disabled.",
     "mode", AttributePlace::Controller, 1, 0, 0, Modes},
    {L"ControllerEnabled", L"Controller enabled", L"Whether the controller logs in and carries I/O.",
     L"Disabling the controller logs its ports out; their devices are lost after the device loss timeout.", "enabled",
     AttributePlace::Controller, 0, 0, 0, Enabled},
    {MtuName,
     L"Maximum transmission unit (bytes)",
     L"The largest payload of an Ethernet frame.",
     L"A full FCoE frame needs 2158 bytes; with less the ports agree on smaller Fibre Channel frames. The interface "
     L"below and the switch must carry such frames too.",
     "mtu",
     AttributePlace::Interface,
     FullFrameMtu,
     MinMtu,
     MaxMtu,
     {}},
    {L"TxQueueLength",
     L"Transmit queue length (packets)",
     L"How many packets may wait to be sent.",
     L"Length of the interface's transmit queue in packets.",
     "tx_queue_len",
     AttributePlace::Interface,
     1000,
     0,
     MaxTxQueueLength,
     {}},
    {L"FipVlanResponder", L"FIP VLAN responder", L"Whether FIP VLAN requests of other ports are answered.",
     L"On: the controller answers FIP VLAN discovery requests with the VLAN that it is on. It takes effect in the mode "
     L"VN2VN.",
     "fip_vlan_responder", AttributePlace::Controller, 0, 0, 0, Switch},
};

std::optional<LONG> ValueOf(const SettingAttribute& attribute, std::string_view text)
{
    if (attribute.choices.empty())
    {
        const auto number = ParseNumber(text);
        if (!number || *number > std::uint64_t{std::numeric_limits<LONG>::max()})
            return std::nullopt;
        return static_cast<LONG>(*number);
    }
    const std::wstring key = FoldCase(Wide(text));
    for (const KernelChoice& choice : attribute.choices)
        if (FoldCase(Wide(choice.read)) == key)
            return choice.value;
    return std::nullopt;
}

} // namespace

std::span<const SettingAttribute> SettingAttributes()
{
    return Table;
}

std::optional<SettingDescription> Describe(const SettingAttribute& attribute, std::string_view text)
{
    const auto value = ValueOf(attribute, text);
    if (!value)
        return std::nullopt;
    SettingDescription setting;
    setting.kind =
        attribute.choices.empty() ? SettingDescription::Kind::Integer : SettingDescription::Kind::Enumeration;
    setting.name = attribute.name;
    setting.caption = attribute.name;
    setting.description = attribute.description;
    setting.displayName = attribute.displayName;
    setting.miniHelp = attribute.miniHelp;
    setting.registryKeyword = Wide(attribute.file);
    setting.defaultValue = attribute.defaultValue;
    setting.current = *value;
    setting.min = attribute.min;
    setting.max = attribute.max;
    for (const KernelChoice& choice : attribute.choices)
        setting.choices.push_back({choice.value, choice.text});
    return setting;
}

std::string KernelText(const SettingAttribute& attribute, LONG value)
{
    for (const KernelChoice& choice : attribute.choices)
        if (choice.value == value)
            return std::string(choice.written);
    return std::to_string(value);
}

} // namespace orl::sysfs
