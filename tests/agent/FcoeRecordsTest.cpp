// The FCoE agent's records: the order and the width of what agents that are built apart write.

#include "agent/OrlFcoeRecords.h"

#include "tests/agent/Layout.h"

namespace orl::test
{
namespace
{

TEST(FcoeRecords, HbaDeclaresItsFieldsInOrder)
{
    const ORL_FCOE_HBA hba;
    const Layout layout = Layout(&hba, 0)
                              .Next<COrlString>(hba.hbaName, "hbaName")
                              .Next<COrlString>(hba.deviceId, "deviceId")
                              .Next<COrlString>(hba.name, "name")
                              .Next<COrlString>(hba.worldWidePortName, "worldWidePortName")
                              .Next<COrlString>(hba.worldWideNodeName, "worldWideNodeName")
                              .Next<ULONG>(hba.fcid, "fcid")
                              .Next<COrlString>(hba.busInformation, "busInformation")
                              .Next<COrlString>(hba.linkSpeed, "linkSpeed")
                              .Next<COrlString>(hba.linkStatus, "linkStatus")
                              .Next<COrlString>(hba.instancePath, "instancePath")
                              .Next<COrlString>(hba.model, "model");
    EXPECT_EQ(layout.End(), sizeof(ORL_FCOE_HBA));
}

TEST(FcoeRecords, PortDeclaresItsFieldsInOrder)
{
    const ORL_FCOE_PORT port;
    const Layout layout = Layout(&port, 0)
                              .Next<COrlString>(port.nodeWWN, "nodeWWN")
                              .Next<COrlString>(port.portWWN, "portWWN")
                              .Next<ULONG>(port.portTypeId, "portTypeId")
                              .Next<COrlString>(port.portType, "portType")
                              .Next<ULONG>(port.fcid, "fcid")
                              .Next<COrlString>(port.deviceId, "deviceId")
                              .Next<COrlString>(port.name, "name")
                              .Next<COrlString>(port.fabricNodeWWN, "fabricNodeWWN")
                              .Next<COrlString>(port.fabricName, "fabricName");
    EXPECT_EQ(layout.End(), sizeof(ORL_FCOE_PORT));
}

TEST(FcoeRecords, FabricDeclaresItsFieldsInOrder)
{
    const ORL_FCOE_FABRIC fabric;
    const Layout layout = Layout(&fabric, 0)
                              .Next<COrlString>(fabric.fabricName, "fabricName")
                              .Next<COrlString>(fabric.nodeWWN, "nodeWWN")
                              .Next<COrlString>(fabric.portWWN, "portWWN")
                              .Next<COrlString>(fabric.reservedText, "reservedText")
                              .Next<ULONG>(fabric.fcMap, "fcMap")
                              .Next<COrlString>(fabric.deviceId, "deviceId")
                              .Next<COrlString>(fabric.name, "name")
                              .Next<COrlString>(fabric.fabricType, "fabricType")
                              .Next<ULONG>(fabric.fabricTypeId, "fabricTypeId")
                              .Next<ULONG>(fabric.priority, "priority")
                              .Next<ULONG>(fabric.vlanId, "vlanId");
    EXPECT_LE(layout.End(), sizeof(ORL_FCOE_FABRIC));
    EXPECT_LT(sizeof(ORL_FCOE_FABRIC) - layout.End(), alignof(ORL_FCOE_FABRIC));
}

TEST(FcoeRecords, TargetDeclaresItsFieldsInOrder)
{
    const ORL_FCOE_TARGET target;
    const Layout layout = Layout(&target, 0)
                              .Next<COrlString>(target.nodeWWN, "nodeWWN")
                              .Next<COrlString>(target.portWWN, "portWWN")
                              .Next<ULONG>(target.scsiBus, "scsiBus")
                              .Next<ULONG>(target.scsiTarget, "scsiTarget")
                              .Next<ULONG>(target.fcid, "fcid")
                              .Next<COrlString>(target.vendor, "vendor")
                              .Next<COrlString>(target.serialNumber, "serialNumber")
                              .Next<COrlString>(target.localPortWWN, "localPortWWN")
                              .Next<COrlString>(target.reservedText, "reservedText")
                              .Next<COrlString>(target.fabricName, "fabricName")
                              .Next<COrlString>(target.deviceId, "deviceId")
                              .Next<COrlString>(target.name, "name")
                              .Next<ULONGLONG>(target.reservedNumber, "reservedNumber")
                              .Next<ULONG>(target.targetType, "targetType");
    EXPECT_LE(layout.End(), sizeof(ORL_FCOE_TARGET));
    EXPECT_LT(sizeof(ORL_FCOE_TARGET) - layout.End(), alignof(ORL_FCOE_TARGET));
}

TEST(FcoeRecords, LunDeclaresItsFieldsInOrder)
{
    const ORL_FCOE_LUN lun;
    const Layout layout = Layout(&lun, 0)
                              .Next<ULONG>(lun.lunId, "lunId")
                              .Next<ULONG>(lun.busNumber, "busNumber")
                              .Next<ULONG>(lun.targetNumber, "targetNumber")
                              .Next<ULONG>(lun.fcid, "fcid")
                              .Next<COrlString>(lun.osDeviceName, "osDeviceName")
                              .Next<COrlString>(lun.capacity, "capacity")
                              .Next<COrlString>(lun.blockSize, "blockSize")
                              .Next<COrlString>(lun.targetPortWWN, "targetPortWWN")
                              .Next<COrlString>(lun.reservedText, "reservedText")
                              .Next<COrlString>(lun.localPortWWN, "localPortWWN")
                              .Next<COrlString>(lun.fabricName, "fabricName")
                              .Next<COrlString>(lun.deviceId, "deviceId")
                              .Next<COrlString>(lun.name, "name");
    EXPECT_EQ(layout.End(), sizeof(ORL_FCOE_LUN));
}

TEST(FcoeRecords, VlanDeclaresItsFieldsInOrder)
{
    const ORL_FCOE_VLAN vlan;
    const Layout layout = Layout(&vlan, 0)
                              .Next<COrlString>(vlan.vlanName, "vlanName")
                              .Next<ULONG>(vlan.vlanId, "vlanId")
                              .Next<ULONG>(vlan.statusId, "statusId")
                              .Next<COrlString>(vlan.status, "status")
                              .Next<COrlString>(vlan.deviceId, "deviceId")
                              .Next<COrlString>(vlan.name, "name");
    EXPECT_EQ(layout.End(), sizeof(ORL_FCOE_VLAN));
}

TEST(FcoeRecords, StatisticDeclaresItsFieldsInOrder)
{
    const ORL_FCOE_STATISTIC statistic;
    const Layout layout = Layout(&statistic, 0)
                              .Next<COrlString>(statistic.deviceId, "deviceId")
                              .Next<COrlString>(statistic.name, "name")
                              .Next<COrlString>(statistic.statistic, "statistic")
                              .Next<ULONGLONG>(statistic.value, "value");
    EXPECT_EQ(layout.End(), sizeof(ORL_FCOE_STATISTIC));
}

} // namespace
} // namespace orl::test
