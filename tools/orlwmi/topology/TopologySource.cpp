// One request a class, each instance handed on as it comes.
#include "tools/orlwmi/topology/TopologySource.h"

#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/topology/TopologyBuilder.h"

#include <functional>

namespace orl::client
{
namespace
{

constexpr const char* VirtualPortType = "NPIV VPORT";
constexpr const char* DisabledVlan = "3"; // StatusID

bool IsMissingClass(const Failure& failure)
{
    return failure.Status() == WBEM_E_INVALID_CLASS || failure.Status() == WBEM_E_NOT_FOUND;
}

// Hands on each instance that belongs to a wanted adapter, with the adapter's DeviceID.
void ForEach(const char* className, const AdapterChoice& choice, Session& session,
             const std::function<void(const std::string&, const Record&)>& visit)
{
    try
    {
        Results results = InstancesOf(className, choice, session);
        while (const auto object = results.Next(session.deadline, session.output))
        {
            session.timing.CountObject();
            const Record record = ReadRecord(object);
            if (const std::string id = TextOf(record, "DeviceID"); choice.Has(id))
            {
                visit(id, record);
            }
        }
    }
    catch (const Failure& failure)
    {
        if (!IsMissingClass(failure))
        {
            throw;
        }
    }
}

Adapter ReadAdapter(const std::string& id, const Record& record)
{
    Adapter adapter;
    adapter.deviceId = id;
    adapter.name = TextOf(record, "Name");
    adapter.hostName = TextOf(record, "HBAName");
    adapter.fcid = TextOf(record, "FCID");
    adapter.bus = TextOf(record, "BusInformation");
    adapter.speed = TextOf(record, "LinkSpeed");
    adapter.status = TextOf(record, "LinkStatus");
    adapter.model = TextOf(record, "Model");
    adapter.portName = TextOf(record, "WorldWidePortName");
    adapter.nodeName = TextOf(record, "WorldWideNodeName");
    return adapter;
}

Vlan ReadVlan(const Record& record)
{
    return {TextOf(record, "VlanID"), TextOf(record, "Name"), TextOf(record, "VLANName"), TextOf(record, "Status"),
            TextOf(record, "StatusID") == DisabledVlan};
}

Forwarder ReadForwarder(const Record& record)
{
    Forwarder forwarder;
    forwarder.name = TextOf(record, "Name");
    forwarder.nodeName = TextOf(record, "WorldWideNodeName");
    forwarder.fcMap = TextOf(record, "FCMap");
    forwarder.type = TextOf(record, "FabricType");
    forwarder.priority = TextOf(record, "Priority");
    forwarder.vlanId = TextOf(record, "VlanID");
    return forwarder;
}

Port ReadPort(const Record& record)
{
    Port port;
    port.name = TextOf(record, "Name");
    port.nodeName = TextOf(record, "WorldWideNodeName");
    port.portName = TextOf(record, "WorldWidePortName");
    port.fcid = TextOf(record, "FCID");
    port.type = TextOf(record, "PortType");
    port.isVirtual = port.type == VirtualPortType;
    port.fabric = TextOf(record, "FabricName");
    port.switchName = TextKeyOf(TextOf(record, "Fabric"), "WorldWideNodeName");
    return port;
}

TargetState ReadState(const Record& record)
{
    const std::string type = TextOf(record, "TargetType");
    return type == "1"   ? TargetState::Online
           : type == "2" ? TargetState::Blocked
           : type == "3" ? TargetState::NotPresent
                         : TargetState::Unknown;
}

Target ReadTarget(const Record& record)
{
    Target target;
    target.name = TextOf(record, "Name");
    target.nodeName = TextOf(record, "WorldWideNodeName");
    target.portName = TextOf(record, "WorldWidePortName");
    target.fcid = TextOf(record, "FCID");
    target.vendor = TextOf(record, "Vendor");
    target.state = ReadState(record);
    return target;
}

Lun ReadLun(const Record& record)
{
    return {TextOf(record, "ID"), TextOf(record, "Name"), TextOf(record, "OSDeviceName"), TextOf(record, "Capacity"),
            TextOf(record, "BlockSize")};
}

} // namespace

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

Topology ReadTopology(const AdapterChoice& choice, Session& session)
{
    TopologyBuilder builder;
    ForEach("Zarn_FCOEHBA", choice, session,
            [&](const std::string& id, const Record& record) { builder.Add(ReadAdapter(id, record)); });
    ForEach("Zarn_FCoEVLAN", choice, session,
            [&](const std::string& id, const Record& record) { builder.Add(id, ReadVlan(record)); });
    ForEach("Zarn_FCoEFabric", choice, session,
            [&](const std::string& id, const Record& record)
            { builder.Add(id, TextOf(record, "FabricName"), ReadForwarder(record)); });
    ForEach("Zarn_FCoEPort", choice, session,
            [&](const std::string& id, const Record& record) { builder.Add(id, ReadPort(record)); });
    ForEach("Zarn_FcoeTarget", choice, session,
            [&](const std::string& id, const Record& record)
            { builder.Add(id, TextOf(record, "PortWorldWidePortName"), ReadTarget(record)); });
    ForEach("Zarn_FCoeLUN", choice, session,
            [&](const std::string& id, const Record& record)
            {
                builder.Add(id, TextOf(record, "PortWorldWidePortName"), TextOf(record, "TargetWorldWidePortName"),
                            ReadLun(record));
            });
    return builder.Take();
}

} // namespace orl::client
