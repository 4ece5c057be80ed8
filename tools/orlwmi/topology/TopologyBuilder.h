// TopologyBuilder: puts what a source tells one by one into its place.
#pragma once

#include "tools/orlwmi/topology/Topology.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace orl::client
{

// Parents are added before their children: adapters, then VLANs, forwarders and ports, then targets, then LUNs. Each
// takes the same time however many there are. Identifiers compare without case.
//
// What belongs to an adapter that was not added is left out. A target whose port was not added, and a LUN whose target
// was not, come below one that stands in for it and is not listed.
class TopologyBuilder
{
public:
    void Add(Adapter adapter);
    void Add(std::string_view deviceId, Vlan vlan);
    void Add(std::string_view deviceId, std::string_view fabricName, Forwarder forwarder);
    void Add(std::string_view deviceId, Port port);
    void Add(std::string_view deviceId, std::string_view portName, Target target);
    void Add(std::string_view deviceId, std::string_view portName, std::string_view targetName, Lun lun);

    // What was added, with the logins of each forwarder counted. The builder is empty then.
    [[nodiscard]] Topology Take();

private:
    struct Place
    {
        size_t adapter = 0;
        size_t port = 0;
        size_t target = 0;
    };
    using Places = std::unordered_map<std::string, Place>;

    Adapter* FindAdapter(std::string_view deviceId);
    Port* NeedPort(std::string_view deviceId, std::string_view portName, Place& place);

    Topology m_adapters;
    Places m_adapterPlaces;
    Places m_portPlaces;
    Places m_targetPlaces;
};

} // namespace orl::client
