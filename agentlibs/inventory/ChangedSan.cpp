// ChangedSan: records of an inventory and of a state, together.

#include "agentlibs/inventory/ChangedSan.h"

#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace orl
{

namespace
{

using Names = std::set<std::wstring>; // as records write them

Names DeletedOf(const VirtualPortState::Hba& changes)
{
    Names names;
    for (const std::uint64_t name : changes.deleted)
        names.insert(FormatWorldWideName(name));
    return names;
}

bool IsDeleted(const VirtualPortState::Hba* changes, std::uint64_t portName)
{
    return changes != nullptr &&
           std::find(changes->deleted.begin(), changes->deleted.end(), portName) != changes->deleted.end();
}

ORL_FCOE_PORT RecordOf(const VirtualPortState::Port& port, const ORL_FCOE_HBA& hba, const ORL_FCOE_PORT* first)
{
    ORL_FCOE_PORT record;
    record.portWWN = FormatWorldWideName(port.portName);
    record.nodeWWN = FormatWorldWideName(port.nodeName);
    record.portTypeId = 2;
    record.portType = L"NPIV VPORT";
    record.deviceId = hba.deviceId;
    record.name = (hba.name.empty() ? hba.deviceId : hba.name) + L" : " + record.portWWN;
    if (IsLinkDown(hba))
        return record;
    record.fcid = port.fcid;
    if (first != nullptr)
    {
        record.fabricNodeWWN = first->fabricNodeWWN;
        record.fabricName = first->fabricName;
    }
    return record;
}

} // namespace

bool IsLinkDown(const ORL_FCOE_HBA& hba)
{
    const std::wstring status = FoldCase(hba.linkStatus);
    return status == L"linkdown" || status == L"link down" || status == L"offline";
}

std::optional<PortSite> ListedSiteOf(const Inventory& inventory, const VirtualPortState& state, std::uint64_t portName)
{
    for (const PortSite& site : inventory.SitesOf(portName))
        if (site.kind != PortSite::Kind::VirtualPort ||
            !IsDeleted(state.Find(inventory.DeviceIdOf(site.hba)), portName))
            return site;
    return std::nullopt;
}

template <typename Record>
void ChangedSan::AppendTo(const COrlString& deviceId, std::vector<Record>& out) const
{
    if (!deviceId.empty())
    {
        const VirtualPortState::Hba* changes = m_state->Find(deviceId);
        const auto hba = changes == nullptr ? std::nullopt : m_inventory->Find(deviceId);
        if (hba)
            AppendChanged(*hba, *changes, out);
        else
            m_inventory->Append(deviceId, out);
        return;
    }
    std::vector<std::pair<std::size_t, const VirtualPortState::Hba*>> changed;
    for (const auto& [key, changes] : m_state->Hbas())
        if (const auto hba = m_inventory->Find(changes.deviceId))
            changed.emplace_back(*hba, &changes);
    std::sort(changed.begin(), changed.end());
    m_inventory->Reserve(out);
    std::size_t next = 0;
    for (const auto& [hba, changes] : changed)
    {
        m_inventory->AppendOf(next, hba, out);
        AppendChanged(hba, *changes, out);
        next = hba + 1;
    }
    m_inventory->AppendOf(next, m_inventory->HbaCount(), out);
}

void ChangedSan::AppendChanged(std::size_t hba, const VirtualPortState::Hba& changes,
                               std::vector<ORL_FCOE_PORT>& out) const
{
    std::vector<ORL_FCOE_HBA> owner;
    m_inventory->AppendOf(hba, owner);
    std::vector<ORL_FCOE_PORT> ports;
    m_inventory->AppendOf(hba, ports);
    const std::size_t physical = m_inventory->PhysicalPorts(hba);
    const Names deleted = DeletedOf(changes);
    for (std::size_t i = 0; i < ports.size(); ++i)
        if (i < physical || !deleted.contains(ports[i].portWWN))
            out.push_back(ports[i]);
    for (const VirtualPortState::Port& port : changes.created)
        if (!ListedSiteOf(*m_inventory, *m_state, port.portName))
            out.push_back(RecordOf(port, owner.front(), physical == 0 ? nullptr : &ports.front()));
}

// What is seen through a deleted port is gone with it.
template <typename Record>
void ChangedSan::AppendSeen(std::size_t hba, const VirtualPortState::Hba& changes, std::vector<Record>& out) const
{
    std::vector<ORL_FCOE_PORT> ports;
    m_inventory->AppendOf(hba, ports);
    const Names deleted = DeletedOf(changes);
    Names gone;
    for (std::size_t i = m_inventory->PhysicalPorts(hba); i < ports.size(); ++i)
        if (deleted.contains(ports[i].portWWN))
            gone.insert(ports[i].portWWN);
    const auto start = static_cast<std::ptrdiff_t>(out.size());
    m_inventory->AppendOf(hba, out);
    out.erase(std::remove_if(out.begin() + start, out.end(),
                             [&](const Record& record) { return gone.contains(record.localPortWWN); }),
              out.end());
}

template void ChangedSan::AppendTo(const COrlString&, std::vector<ORL_FCOE_PORT>&) const;
template void ChangedSan::AppendTo(const COrlString&, std::vector<ORL_FCOE_TARGET>&) const;
template void ChangedSan::AppendTo(const COrlString&, std::vector<ORL_FCOE_LUN>&) const;

} // namespace orl
