// States in words.
#include "tools/orlwmi/topology/TopologyWords.h"

#include "tools/orlwmi/FcNames.h"
#include "tools/orlwmi/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace orl::client
{
namespace
{

bool IsDown(const Adapter& adapter)
{
    return SameName(adapter.status, "Linkdown");
}

bool IsOffline(const Adapter& adapter)
{
    return SameName(adapter.status, "Offline");
}

bool IsDisabled(const Adapter& adapter)
{
    return !adapter.vlans.empty() &&
           std::all_of(adapter.vlans.begin(), adapter.vlans.end(), [](const Vlan& vlan) { return vlan.isDisabled; });
}

size_t CountForwarders(const Adapter& adapter)
{
    size_t count = 0;
    for (const auto& fabric : adapter.fabrics)
    {
        count += fabric.forwarders.size();
    }
    return count;
}

const Forwarder* FindForwarder(const Adapter& adapter, const std::string& nodeName)
{
    for (const auto& fabric : adapter.fabrics)
    {
        for (const auto& forwarder : fabric.forwarders)
        {
            if (SameName(forwarder.nodeName, nodeName))
            {
                return &forwarder;
            }
        }
    }
    return nullptr;
}

} // namespace

std::string ProblemOf(const Adapter& adapter)
{
    if (IsDown(adapter))
    {
        return IsDisabled(adapter) ? "FCoE is disabled on this adapter"
                                   : "the link is down: no cable, or the interface is switched off";
    }
    if (!IsOffline(adapter))
    {
        return {};
    }
    const size_t forwarders = CountForwarders(adapter);
    if (forwarders == 0)
    {
        return "no forwarder found: the link is up, but nothing offers a fabric";
    }
    return "forwarder lost: the link is up, but no port is logged in through the " +
           (forwarders == 1 ? std::string("one that is known") : std::to_string(forwarders) + " that are known");
}

std::string UseOf(const Forwarder& forwarder, const Adapter& adapter)
{
    if (forwarder.logins != 0)
    {
        return "selected, " + std::to_string(forwarder.logins) +
               (forwarder.logins == 1 ? " port logged in" : " ports logged in");
    }
    if (IsDown(adapter))
    {
        return "out of reach, the link is down";
    }
    return IsOffline(adapter) ? "lost, no port logged in" : "standby, no port logged in";
}

std::string LoginOf(const Port& port, const Adapter& adapter)
{
    if (port.fabric.empty())
    {
        return HasFcid(port.fcid) ? "none, point to point" : "not logged in";
    }
    const auto* forwarder = FindForwarder(adapter, port.switchName);
    return ColonName(port.fabric) + (forwarder == nullptr ? "" : " through " + forwarder->name);
}

const char* StateName(TargetState state)
{
    switch (state)
    {
    case TargetState::Online:
        return "online";
    case TargetState::Blocked:
        return "blocked";
    case TargetState::NotPresent:
        return "not present";
    case TargetState::Unknown:
        break;
    }
    return "unknown";
}

std::string SizeText(const std::string& bytes)
{
    constexpr std::array units = {"B", "KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
    std::uint64_t size = 0;
    const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), size);
    if (error != std::errc() || end != bytes.data() + bytes.size())
    {
        return bytes;
    }
    // Tenths are cut, not rounded: a disk is never shown larger than it is.
    size_t unit = 0;
    std::uint64_t tenth = 0;
    while (size >= 1024 && unit + 1 < units.size())
    {
        tenth = size % 1024 * 10 / 1024;
        size /= 1024;
        ++unit;
    }
    std::string text = std::to_string(size);
    text += tenth == 0 ? "" : "." + std::to_string(tenth);
    return text + " " + units.at(unit);
}

} // namespace orl::client
