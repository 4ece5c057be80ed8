// TopologyLinks: which objects of a topology the association classes tie together.
#pragma once

#include "tools/orlwmi/Session.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orl::client
{

// Names of objects, the same for the object of a topology and for every path that means it: without case.
[[nodiscard]] std::string AdapterId(std::string_view deviceId);
[[nodiscard]] std::string EthernetId(std::string_view deviceId);
[[nodiscard]] std::string ForwarderId(std::string_view deviceId, std::string_view nodeName);
[[nodiscard]] std::string PortId(std::string_view deviceId, std::string_view portName);
[[nodiscard]] std::string VlanId(std::string_view deviceId, std::string_view vlanId);

// An end of an association.
struct LinkEnd
{
    std::string id; // empty for an object of another class
    std::string deviceId;
    std::string key; // beside the DeviceID: a world wide name or a VLAN's number; as the path spells it
};

[[nodiscard]] LinkEnd EndOfPath(const std::string& path);

// From one object to another, as their associations tell: Antecedent to Dependent.
using Links = std::vector<std::pair<LinkEnd, LinkEnd>>;

// The associations of Ethernet adapters, adapters, fabrics, ports and VLANs, each class asked once; one that the
// namespace lacks ties nothing. Throws Failure.
[[nodiscard]] Links ReadLinks(Session& session);

// What leads to an object: the first link's other end.
class Parents
{
public:
    // The links must outlive it.
    explicit Parents(const Links& links);

    // Null when nothing does.
    [[nodiscard]] const LinkEnd* Find(const std::string& id) const;

private:
    std::unordered_map<std::string_view, const LinkEnd*> m_parents;
};

// The value of a text key of an object path, as the provider writes paths; empty when the path does not have it.
[[nodiscard]] std::string TextKeyOf(const std::string& path, const std::string& key);

} // namespace orl::client
