// PortIndex: names and addresses to ports.

#include "agentlibs/inventory/PortIndex.h"

#include "agentlibs/fcoelink/WorldWideName.h"

namespace orl
{

void PortIndex::Add(const PortSite& site, const COrlString& portName, ULONG fcid)
{
    if (fcid != 0)
        m_fcids.insert(fcid);
    const auto name = ParseWorldWideName(portName);
    if (!name)
        return;
    if (site.kind == PortSite::Kind::Target)
        m_targets.emplace(*name, site.hba);
    else
        m_ports.emplace(*name, site);
}

std::vector<PortSite> PortIndex::SitesOf(std::uint64_t portName) const
{
    std::vector<PortSite> sites;
    const auto [first, last] = m_ports.equal_range(portName);
    for (auto port = first; port != last; ++port)
        sites.push_back(port->second);
    if (const auto target = m_targets.find(portName); target != m_targets.end())
        sites.push_back({PortSite::Kind::Target, target->second});
    return sites;
}

} // namespace orl
