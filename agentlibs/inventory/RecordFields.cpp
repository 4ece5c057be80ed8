// Which key of an inventory holds which field of a record. The keys are the names of the properties that clients see,
// so that one can go from what a client shows to the line that says it.

#include "agentlibs/inventory/RecordFields.h"

namespace orl
{

void ReadFields(ObjectReader& in, ORL_FCOE_HBA& record)
{
    in.Text("deviceId", record.deviceId);
    in.Text("name", record.name);
    in.Text("hbaName", record.hbaName);
    in.Number("fcid", record.fcid);
    in.Text("busInformation", record.busInformation);
    in.Text("linkSpeed", record.linkSpeed);
    in.Text("linkStatus", record.linkStatus);
    in.Text("model", record.model);
    in.WorldWideName("worldWidePortName", record.worldWidePortName);
    in.WorldWideName("worldWideNodeName", record.worldWideNodeName);
    in.Text("instancePath", record.instancePath);
}

void ReadFields(ObjectReader& in, ORL_FCOE_FABRIC& record)
{
    in.Text("name", record.name);
    in.Text("fabricName", record.fabricName);
    in.WorldWideName("worldWideNodeName", record.nodeWWN);
    in.WorldWideName("worldWidePortName", record.portWWN);
    in.Number("fcMap", record.fcMap);
    in.Number("fabricTypeId", record.fabricTypeId);
    in.Text("fabricType", record.fabricType);
    in.Number("priority", record.priority);
    in.Number("vlanId", record.vlanId);
    in.Text("reservedText", record.reservedText);
}

void ReadFields(ObjectReader& in, ORL_FCOE_PORT& record)
{
    in.Text("name", record.name);
    in.WorldWideName("worldWideNodeName", record.nodeWWN);
    in.WorldWideName("worldWidePortName", record.portWWN);
    in.Number("fcid", record.fcid);
    in.Number("portTypeId", record.portTypeId);
    in.Text("portType", record.portType);
    in.WorldWideName("fabricWorldWideNodeName", record.fabricNodeWWN);
    in.Text("fabricName", record.fabricName);
}

void ReadFields(ObjectReader& in, ORL_FCOE_TARGET& record)
{
    in.Text("name", record.name);
    in.Text("fabricName", record.fabricName);
    in.WorldWideName("worldWideNodeName", record.nodeWWN);
    in.WorldWideName("worldWidePortName", record.portWWN);
    in.Number("fcid", record.fcid);
    in.Number("scsiBus", record.scsiBus);
    in.Number("scsiTarget", record.scsiTarget);
    in.Text("vendor", record.vendor);
    in.Text("serialNumber", record.serialNumber);
    in.Number("targetType", record.targetType);
    in.WorldWideName("portWorldWidePortName", record.localPortWWN);
    in.Text("reservedText", record.reservedText);
    in.Number("reservedNumber", record.reservedNumber);
}

void ReadFields(ObjectReader& in, ORL_FCOE_LUN& record)
{
    in.Text("name", record.name);
    in.Text("fabricName", record.fabricName);
    in.Number("id", record.lunId);
    in.Number("busNumber", record.busNumber);
    in.Number("targetNumber", record.targetNumber);
    in.Number("fcid", record.fcid);
    in.Text("osDeviceName", record.osDeviceName);
    in.Text("capacity", record.capacity);
    in.Text("blockSize", record.blockSize);
    in.WorldWideName("targetWorldWidePortName", record.targetPortWWN);
    in.WorldWideName("portWorldWidePortName", record.localPortWWN);
    in.Text("reservedText", record.reservedText);
}

void ReadFields(ObjectReader& in, ORL_FCOE_VLAN& record)
{
    in.Text("name", record.name);
    in.Text("vlanName", record.vlanName);
    in.Number("vlanId", record.vlanId);
    in.Number("statusId", record.statusId);
    in.Text("status", record.status);
}

void ReadFields(ObjectReader& in, ORL_FCOE_STATISTIC& record)
{
    in.Text("name", record.name);
    in.Text("statistic", record.statistic);
    in.Number("value", record.value);
}

} // namespace orl
