// Joining by hash tables: one look for each parent.
#include "tools/orlwmi/topology/TopologyBuilder.h"

#include "tools/orlwmi/Text.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace orl::client
{
namespace
{

// A NUL stands between the parts, which no identifier holds.
std::string KeyOf(std::initializer_list<std::string_view> parts)
{
    std::string key;
    for (const auto part : parts)
    {
        key += Lower(part);
        key += '\0';
    }
    return key;
}

void CountLogins(Adapter& adapter)
{
    std::unordered_map<std::string, size_t> logins;
    for (const auto& port : adapter.ports)
    {
        if (!port.switchName.empty())
        {
            ++logins[KeyOf({port.switchName})];
        }
    }
    for (auto& fabric : adapter.fabrics)
    {
        for (auto& forwarder : fabric.forwarders)
        {
            const auto found = logins.find(KeyOf({forwarder.nodeName}));
            forwarder.logins = found == logins.end() ? 0 : found->second;
        }
    }
}

} // namespace

void TopologyBuilder::Add(Adapter adapter)
{
    m_adapterPlaces.try_emplace(KeyOf({adapter.deviceId}), Place{m_adapters.size(), 0, 0});
    m_adapters.push_back(std::move(adapter));
}

Adapter* TopologyBuilder::FindAdapter(std::string_view deviceId)
{
    const auto found = m_adapterPlaces.find(KeyOf({deviceId}));
    return found == m_adapterPlaces.end() ? nullptr : &m_adapters[found->second.adapter];
}

void TopologyBuilder::Add(std::string_view deviceId, Vlan vlan)
{
    if (auto* adapter = FindAdapter(deviceId))
    {
        adapter->vlans.push_back(std::move(vlan));
    }
}

void TopologyBuilder::Add(std::string_view deviceId, std::string_view fabricName, Forwarder forwarder)
{
    auto* adapter = FindAdapter(deviceId);
    if (adapter == nullptr)
    {
        return;
    }
    // An adapter sees one or two fabrics, through a handful of forwarders.
    auto fabric = std::find_if(adapter->fabrics.begin(), adapter->fabrics.end(),
                               [fabricName](const Fabric& known) { return known.name == fabricName; });
    if (fabric == adapter->fabrics.end())
    {
        fabric = adapter->fabrics.insert(fabric, Fabric{std::string(fabricName), {}});
    }
    fabric->forwarders.push_back(std::move(forwarder));
}

void TopologyBuilder::Add(std::string_view deviceId, Port port)
{
    const auto adapter = m_adapterPlaces.find(KeyOf({deviceId}));
    if (adapter == m_adapterPlaces.end())
    {
        return;
    }
    auto& ports = m_adapters[adapter->second.adapter].ports;
    m_portPlaces.try_emplace(KeyOf({deviceId, port.portName}), Place{adapter->second.adapter, ports.size(), 0});
    ports.push_back(std::move(port));
}

Port* TopologyBuilder::NeedPort(std::string_view deviceId, std::string_view portName, Place& place)
{
    const std::string key = KeyOf({deviceId, portName});
    if (m_portPlaces.find(key) == m_portPlaces.end())
    {
        Port missing;
        missing.portName = portName;
        missing.isListed = false;
        Add(deviceId, std::move(missing));
    }
    const auto found = m_portPlaces.find(key);
    if (found == m_portPlaces.end())
    {
        return nullptr;
    }
    place = found->second;
    return &m_adapters[place.adapter].ports[place.port];
}

void TopologyBuilder::Add(std::string_view deviceId, std::string_view portName, Target target)
{
    Place place;
    if (auto* port = NeedPort(deviceId, portName, place))
    {
        place.target = port->targets.size();
        m_targetPlaces.try_emplace(KeyOf({deviceId, portName, target.portName}), place);
        port->targets.push_back(std::move(target));
    }
}

void TopologyBuilder::Add(std::string_view deviceId, std::string_view portName, std::string_view targetName, Lun lun)
{
    const std::string key = KeyOf({deviceId, portName, targetName});
    if (m_targetPlaces.find(key) == m_targetPlaces.end())
    {
        Target missing;
        missing.portName = targetName;
        missing.isListed = false;
        Add(deviceId, portName, std::move(missing));
    }
    if (const auto found = m_targetPlaces.find(key); found != m_targetPlaces.end())
    {
        const Place& place = found->second;
        m_adapters[place.adapter].ports[place.port].targets[place.target].luns.push_back(std::move(lun));
    }
}

Topology TopologyBuilder::Take()
{
    for (auto& adapter : m_adapters)
    {
        CountLogins(adapter);
    }
    m_adapterPlaces.clear();
    m_portPlaces.clear();
    m_targetPlaces.clear();
    return std::exchange(m_adapters, {});
}

} // namespace orl::client
