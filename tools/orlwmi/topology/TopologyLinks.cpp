// Associations, joined to objects by the keys in their paths.
#include "tools/orlwmi/topology/TopologyLinks.h"

#include "tools/orlwmi/InstancePath.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/topology/ClassObjects.h"

namespace orl::client
{
namespace
{

constexpr const char* AssociationClasses[] = {"Zarn_FCoE_Adapter_HBA_Assoc", "Zarn_FCoE_HBA_VLAN_Assoc",
                                              "Zarn_FCoE_HBA_Fabric_Assoc", "Zarn_FCoE_Fabric_Port_Assoc"};

// A line feed divides the parts: no identifier holds one.
std::string Id(const char* kind, std::string_view deviceId, std::string_view key = {})
{
    return std::string(kind) + "\n" + Lower(deviceId) + "\n" + Lower(key);
}

// A number stands quoted in the provider's paths and bare in the service's.
std::string NumberKeyOf(const std::string& path, const std::string& key)
{
    const std::string start = key + "=";
    const auto found = path.rfind(start);
    if (found == std::string::npos)
    {
        return {};
    }
    const auto begin = path.find_first_not_of('"', found + start.size());
    return begin == std::string::npos ? std::string()
                                      : path.substr(begin, path.find_first_not_of("0123456789", begin) - begin);
}

} // namespace

std::string AdapterId(std::string_view deviceId)
{
    return Id("adapter", deviceId);
}

std::string EthernetId(std::string_view deviceId)
{
    return Id("ethernet", deviceId);
}

std::string ForwarderId(std::string_view deviceId, std::string_view nodeName)
{
    return Id("forwarder", deviceId, nodeName);
}

std::string PortId(std::string_view deviceId, std::string_view portName)
{
    return Id("port", deviceId, portName);
}

std::string VlanId(std::string_view deviceId, std::string_view vlanId)
{
    return Id("vlan", deviceId, vlanId);
}

LinkEnd EndOfPath(const std::string& path)
{
    const std::string classPath = ClassPathOf(path);
    const auto colon = classPath.find(':');
    const std::string className = colon == std::string::npos ? classPath : classPath.substr(colon + 1);
    LinkEnd end{{}, TextKeyOf(path, "DeviceID"), {}};
    if (SameName(className, "Zarn_FCOEHBA"))
    {
        end.id = AdapterId(end.deviceId);
    }
    else if (SameName(className, "Zarn_PhysicalEthernetAdapter"))
    {
        end.id = EthernetId(end.deviceId);
    }
    else if (SameName(className, "Zarn_FCoEFabric"))
    {
        end.key = TextKeyOf(path, "WorldWideNodeName");
        end.id = ForwarderId(end.deviceId, end.key);
    }
    else if (SameName(className, "Zarn_FCoEPort"))
    {
        end.key = TextKeyOf(path, "WorldWidePortName");
        end.id = PortId(end.deviceId, end.key);
    }
    else if (SameName(className, "Zarn_FCoEVLAN"))
    {
        end.key = NumberKeyOf(path, "VlanID");
        end.id = VlanId(end.deviceId, end.key);
    }
    return end;
}

Links ReadLinks(Session& session)
{
    Links links;
    for (const char* className : AssociationClasses)
    {
        ForEachObject([&] { return Results::Instances(session.services, className); }, session,
                      [&](IWbemClassObject* object) {
                          links.emplace_back(EndOfPath(ReadText(object, L"Antecedent")),
                                             EndOfPath(ReadText(object, L"Dependent")));
                      });
    }
    return links;
}

Parents::Parents(const Links& links)
{
    for (const auto& [parent, child] : links)
    {
        if (!parent.id.empty() && !child.id.empty())
        {
            m_parents.try_emplace(child.id, &parent);
        }
    }
}

const LinkEnd* Parents::Find(const std::string& id) const
{
    const auto found = m_parents.find(id);
    return found == m_parents.end() ? nullptr : found->second;
}

std::string TextKeyOf(const std::string& path, const std::string& key)
{
    // The provider does not escape what it quotes, so an earlier value may hold quotes; world wide names hold none.
    const std::string start = key + "=\"";
    const auto found = path.rfind(start);
    if (found == std::string::npos)
    {
        return {};
    }
    const auto begin = found + start.size();
    return path.substr(begin, path.find('"', begin) - begin);
}

} // namespace orl::client
