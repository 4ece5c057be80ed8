// One request a class or association, each instance handed on as it comes.
#include "tools/orlwmi/topology/TopologySource.h"

#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/topology/ClassObjects.h"
#include "tools/orlwmi/topology/TopologyBuilder.h"

#include <functional>

namespace orl::client
{
namespace
{

constexpr const char* VirtualPortType = "NPIV VPORT";
constexpr const char* DisabledVlan = "3"; // StatusID

// Hands on each instance that belongs to a wanted adapter, with the adapter's DeviceID.
void ForEach(const char* className, const AdapterChoice& choice, Session& session,
             const std::function<void(const std::string&, const Record&)>& visit)
{
    ForEachObject([&] { return InstancesOf(className, choice, session); }, session,
                  [&](IWbemClassObject* object)
                  {
                      const Record record = ReadRecord(object);
                      if (const std::string id = TextOf(record, "DeviceID"); choice.Has(id))
                      {
                          visit(id, record);
                      }
                  });
}

// The adapter that an association ties an object to, else the one of the object's own keys.
std::string OwnerOf(const std::string& id, const Parents& parents, const std::string& ownDeviceId)
{
    const LinkEnd* adapter = parents.Find(id);
    return adapter ? adapter->deviceId : ownDeviceId;
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

LinkedTopology ReadTopology(const AdapterChoice& choice, Session& session)
{
    TopologyBuilder builder;
    bool isAny = false;
    ForEach("Zarn_FCOEHBA", choice, session,
            [&](const std::string& id, const Record& record)
            {
                isAny = true;
                builder.Add(ReadAdapter(id, record));
            });
    LinkedTopology found;
    if (!isAny)
    {
        return found;
    }
    found.links = ReadLinks(session);
    const Parents parents(found.links);
    ForEach("Zarn_FCoEVLAN", choice, session,
            [&](const std::string& id, const Record& record)
            {
                Vlan vlan = ReadVlan(record);
                const std::string owner = OwnerOf(VlanId(id, vlan.id), parents, id);
                builder.Add(owner, std::move(vlan));
            });
    ForEach("Zarn_FCoEFabric", choice, session,
            [&](const std::string& id, const Record& record)
            {
                Forwarder forwarder = ReadForwarder(record);
                const std::string owner = OwnerOf(ForwarderId(id, forwarder.nodeName), parents, id);
                builder.Add(owner, TextOf(record, "FabricName"), std::move(forwarder));
            });
    ForEach("Zarn_FCoEPort", choice, session,
            [&](const std::string& id, const Record& record)
            {
                Port port = ReadPort(record);
                const LinkEnd* fabric = parents.Find(PortId(id, port.portName));
                port.switchName = fabric ? fabric->key : port.switchName;
                builder.Add(fabric ? OwnerOf(fabric->id, parents, id) : id, std::move(port));
            });
    ForEach("Zarn_FcoeTarget", choice, session,
            [&](const std::string& id, const Record& record)
            { builder.Add(id, TextOf(record, "PortWorldWidePortName"), ReadTarget(record)); });
    ForEach("Zarn_FCoeLUN", choice, session,
            [&](const std::string& id, const Record& record)
            {
                builder.Add(id, TextOf(record, "PortWorldWidePortName"), TextOf(record, "TargetWorldWidePortName"),
                            ReadLun(record));
            });
    found.topology = builder.Take();
    return found;
}

} // namespace orl::client
