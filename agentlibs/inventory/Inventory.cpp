// Inventory: what is asked of it once it is read.

#include "agentlibs/inventory/Inventory.h"

#include "agentlibs/Text.h"

#include <cmath>

namespace orl
{

namespace
{

// Counters start again at 0 past their last value, as those of hardware do.
ULONGLONG Advance(ULONGLONG value, double rate, double seconds)
{
    constexpr double most = 9.2e18; // what surely converts
    const double counts = std::floor(rate * seconds);
    return counts > 0 ? value + static_cast<ULONGLONG>(std::min(counts, most)) : value;
}

} // namespace

const Inventory::ListedHba* Inventory::FindListed(const COrlString& deviceId) const
{
    const auto found = m_index.find(FoldCase(deviceId));
    return found == m_index.end() ? nullptr : &m_listed[found->second];
}

std::optional<std::size_t> Inventory::Find(const COrlString& deviceId) const
{
    if (const ListedHba* hba = FindListed(deviceId))
        return static_cast<std::size_t>(hba - m_listed.data());
    if (const auto number = m_generator ? m_generator->Find(deviceId) : std::nullopt)
        return m_listed.size() + *number;
    return std::nullopt;
}

COrlString Inventory::DeviceIdOf(std::size_t hba) const
{
    std::vector<ORL_FCOE_HBA> records;
    AppendOf(hba, records);
    return records.front().deviceId;
}

std::size_t Inventory::PhysicalPorts(std::size_t hba) const
{
    return hba < m_listed.size() ? m_listed[hba].physicalPorts : m_generator->PhysicalPortsPerHba();
}

std::vector<PortSite> Inventory::SitesOf(std::uint64_t portName) const
{
    std::vector<PortSite> sites = m_ports.SitesOf(portName);
    if (auto generated = m_generator ? m_generator->SiteOf(portName) : std::nullopt)
    {
        generated->hba += m_listed.size();
        sites.push_back(*generated);
    }
    return sites;
}

ULONG Inventory::FreeFcid(ULONG from) const
{
    constexpr ULONG last = 0xFFFEFF; // behind it are the addresses of a fabric's own services
    for (ULONG fcid = from; fcid <= last; ++fcid)
    {
        if (m_generator)
            fcid = m_generator->BehindFcids(fcid);
        if (fcid <= last && !m_ports.HasFcid(fcid))
            return fcid;
    }
    return 0;
}

std::vector<SettingDescription> Inventory::SettingsOf(std::size_t hba) const
{
    return hba < m_listed.size() ? m_listed[hba].settings : m_generator->Settings();
}

std::size_t Inventory::SettingCount() const
{
    std::size_t count = m_generator ? std::size_t{m_generator->HbaCount()} * m_generator->SettingsPerHba() : 0;
    for (const ListedHba& hba : m_listed)
        count += hba.settings.size();
    return count;
}

void Inventory::AppendStatistics(const COrlString& deviceId, double seconds, std::vector<ORL_FCOE_STATISTIC>& out) const
{
    std::size_t next = out.size();
    Append(deviceId, out);
    const auto advance = [&](const ListedHba& hba)
    {
        for (double rate : hba.rates)
        {
            out[next].value = Advance(out[next].value, rate, seconds);
            ++next;
        }
    };
    if (!deviceId.empty())
    {
        if (const ListedHba* hba = FindListed(deviceId))
            advance(*hba);
        return;
    }
    for (const ListedHba& hba : m_listed)
        advance(hba);
}

} // namespace orl
