// PortIndex: which ports and targets of an inventory have a name or an address.
#pragma once

#include "Common/Src/OrlString.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace orl
{

struct PortSite
{
    enum class Kind
    {
        Port,
        VirtualPort,
        Target
    };

    Kind kind = Kind::Port;
    std::size_t hba = 0; // the adapter's number

    bool operator==(const PortSite&) const = default;
};

class PortIndex
{
public:
    // An empty name and the address 0 are none. The same port may be added twice, under the adapter and under the port.
    void Add(const PortSite& site, const COrlString& portName, ULONG fcid);

    // Of a target, only the first adapter that sees it.
    std::vector<PortSite> SitesOf(std::uint64_t portName) const;
    bool HasFcid(ULONG fcid) const { return m_fcids.contains(fcid); }

private:
    std::unordered_multimap<std::uint64_t, PortSite> m_ports;
    std::unordered_map<std::uint64_t, std::size_t> m_targets; // the adapter's number
    std::unordered_set<ULONG> m_fcids;
};

} // namespace orl
