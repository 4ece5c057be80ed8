// Associations, joined to objects by the keys in their paths.
#include "tools/orlwmi/topology/TopologyLinks.h"

#include "tools/orlwmi/InstancePath.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/topology/TopologySource.h"

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

std::string IdOfPath(const std::string& path)
{
    const std::string classPath = ClassPathOf(path);
    const auto colon = classPath.find(':');
    const std::string className = colon == std::string::npos ? classPath : classPath.substr(colon + 1);
    const std::string deviceId = TextKeyOf(path, "DeviceID");
    if (SameName(className, "Zarn_FCOEHBA"))
    {
        return AdapterId(deviceId);
    }
    if (SameName(className, "Zarn_PhysicalEthernetAdapter"))
    {
        return EthernetId(deviceId);
    }
    if (SameName(className, "Zarn_FCoEFabric"))
    {
        return ForwarderId(deviceId, TextKeyOf(path, "WorldWideNodeName"));
    }
    if (SameName(className, "Zarn_FCoEPort"))
    {
        return PortId(deviceId, TextKeyOf(path, "WorldWidePortName"));
    }
    return SameName(className, "Zarn_FCoEVLAN") ? VlanId(deviceId, NumberKeyOf(path, "VlanID")) : std::string();
}

Links ReadLinks(Session& session)
{
    Links links;
    for (const char* className : AssociationClasses)
    {
        Results results = Results::Instances(session.services, className);
        while (const auto object = results.Next(session.deadline, session.output))
        {
            session.timing.CountObject();
            links.emplace_back(IdOfPath(ReadText(object, L"Antecedent")), IdOfPath(ReadText(object, L"Dependent")));
        }
    }
    return links;
}

} // namespace orl::client
