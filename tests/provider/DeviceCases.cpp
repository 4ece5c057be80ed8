#include "tests/provider/DeviceCases.h"

#include "classes/Zarn_FcoeFabric.h"
#include "classes/Zarn_FcoeHBA.h"
#include "classes/Zarn_FcoeLUN.h"
#include "classes/Zarn_FcoePort.h"
#include "classes/Zarn_FcoeStatistics.h"
#include "classes/Zarn_FcoeTarget.h"
#include "classes/Zarn_FcoeVLAN.h"

namespace orl::test
{

namespace
{

FakePut Text(const wchar_t* name, const wchar_t* value)
{
    return {name, value, VT_BSTR};
}

FakePut Number(const wchar_t* name, const wchar_t* value)
{
    return {name, value, VT_I4};
}

DeviceCase HbaCase()
{
    DeviceCase c;
    c.name = "Hba";
    c.cimClass = L"Zarn_FCOEHBA";
    c.manager = "CZarn_FcoeHBA";
    c.operation = L"EnumerateHBAs";
    c.make = &Make<CZarn_FcoeHBA>;
    c.add = &Add<&ScriptedAgent::hbas, &SampleHba>;
    c.sent = {Text(L"DeviceID", L"X"),
              Text(L"Name", L"fcoe v0.1 over X"),
              Text(L"HBAName", L"host of X"),
              Text(L"FCID", L"0x10300"),
              Text(L"BusInformation", L"0000:00:03.0"),
              Text(L"LinkSpeed", L"1 Gbit"),
              Text(L"LinkStatus", L"Online"),
              Text(L"Model", L"EN-10G2P"),
              Text(L"WorldWidePortName", L"2000525400fc0001"),
              Text(L"WorldWideNodeName", L"1000525400fc0001"),
              Text(L"HBAID", L"host0"),
              Text(L"Adapter", L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\"")};
    c.builders = {"MakeDevicePathFromDeviceID"};
    c.failureName = "host of B";
    c.enumerationLoadsClass = false;
    return c;
}

DeviceCase FabricCase()
{
    DeviceCase c;
    c.name = "Fabric";
    c.cimClass = L"Zarn_FCoEFabric";
    c.manager = "CZarn_FcoeFabric";
    c.operation = L"EnumerateFabrics";
    c.make = &Make<CZarn_FcoeFabric>;
    c.add = &Add<&ScriptedAgent::fabrics, &SampleFabric>;
    c.key = L"WorldWideNodeName";
    c.keyReader = "GetKeyFromPath";
    c.keyLine = 288;
    c.keyText = L"\"20000000fc00000a\"";
    c.always = {Text(L"Name", L"20000000fc00000a")};
    c.sent = {Text(L"Name", L"20000000fc00000a"),
              Text(L"DeviceID", L"X"),
              Text(L"Name", L"fcf_0"),
              Text(L"FabricName", L"fabric of X"),
              Text(L"WorldWideNodeName", L"20000000fc00000a"),
              Text(L"WorldWidePortName", L"20010000fc00000a"),
              Text(L"FCMap", L"0xEFC00"),
              Number(L"FabricTypeID", L"1"),
              Text(L"FabricType", L"Fabric"),
              Number(L"Priority", L"128"),
              Number(L"VlanID", L"1002"),
              Text(L"HBA", L"Zarn_FCOEHBA.DeviceID=\"X\"")};
    c.builders = {"MakeHBAPathFromDeviceID"};
    c.failureName = "fabric of B";
    return c;
}

DeviceCase PortCase()
{
    DeviceCase c;
    c.name = "Port";
    c.cimClass = L"Zarn_FCoEPort";
    c.manager = "CZarn_FcoePort";
    c.operation = L"EnumeratePorts";
    c.make = &Make<CZarn_FcoePort>;
    c.add = &Add<&ScriptedAgent::ports, &SamplePort>;
    c.key = L"WorldWidePortName";
    c.keyReader = "GetKeyFromPath";
    c.keyLine = 288;
    c.keyText = L"\"2101525400fc0001\"";
    c.sent = {Text(L"DeviceID", L"X"),
              Text(L"Name", L"lab vport"),
              Text(L"WorldWideNodeName", L"node of X"),
              Text(L"WorldWidePortName", L"2101525400fc0001"),
              Text(L"FCID", L"0xA1B2C"),
              Number(L"PortTypeID", L"2"),
              Text(L"PortType", L"NPIV VPORT"),
              Text(L"Fabric", L"Zarn_FCoEFabric.DeviceID=\"X\",WorldWideNodeName=\"20000000fc00000a\""),
              Text(L"FabricName", L"10000000fc00000a")};
    c.builders = {"MakeFabricPathFromDeviceIDWWN"};
    c.failureName = "node of B";
    c.workerIsTraced = false;
    return c;
}

DeviceCase TargetCase()
{
    DeviceCase c;
    c.name = "Target";
    c.cimClass = L"Zarn_FcoeTarget";
    c.manager = "CZarn_FcoeTarget";
    c.operation = L"EnumerateTargets";
    c.make = &Make<CZarn_FcoeTarget>;
    c.add = &Add<&ScriptedAgent::targets, &SampleTarget>;
    c.key = L"WorldWideNodeName";
    c.keyReader = "GetKeyFromPath";
    c.keyLine = 288;
    c.keyText = L"\"1000525400fc2000\"";
    c.sent = {Text(L"DeviceID", L"X"),
              Text(L"Name", L"rport-0:0-1"),
              Text(L"FabricName", L"10000000fc00000a"),
              Text(L"WorldWideNodeName", L"1000525400fc2000"),
              Text(L"WorldWidePortName", L"2000525400fc2000"),
              Text(L"FCID", L"0x10200"),
              Number(L"ScsiBus", L"3"),
              Number(L"ScsiTarget", L"4"),
              Text(L"Vendor", L"LIO-ORG"),
              Text(L"SerialNumber", L"naa.6001405abd0"),
              Number(L"TargetType", L"1"),
              Text(L"Port", L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2000525400fc0001\""),
              Text(L"PortWorldWidePortName", L"2000525400fc0001")};
    c.builders = {"MakePortPathFromWWN"};
    c.failureName = "1000525400fc2000";
    return c;
}

DeviceCase LunCase()
{
    DeviceCase c;
    c.name = "Lun";
    c.cimClass = L"Zarn_FCoeLUN";
    c.manager = "CZarn_FcoeLUN";
    c.operation = L"EnumerateLUNs";
    c.make = &Make<CZarn_FcoeLUN>;
    c.add = &Add<&ScriptedAgent::luns, &SampleLun>;
    c.key = L"ID";
    c.keyReader = "GetIntKeyFromPath";
    c.keyLine = 321;
    c.keyText = L"5";
    c.sent = {Text(L"DeviceID", L"X"),
              Text(L"Name", L"LIO-ORG FILEIO 4.0"),
              Text(L"FabricName", L"10000000fc00000a"),
              Number(L"ID", L"5"),
              Number(L"BusNumber", L"6"),
              Number(L"TargetNumber", L"7"),
              Text(L"FCID", L"0x10200"),
              Number(L"TargetNumber", L"7"),
              Text(L"OSDeviceName", L"/dev/sda"),
              Text(L"Capacity", L"64 MB, or so"),
              Text(L"BlockSize", L"512 bytes"),
              Text(L"Target", L"Zarn_FcoeTarget.DeviceID=\"X\",WorldWidePortName=\"2000525400fc2000\""),
              Text(L"TargetWorldWidePortName", L"2000525400fc2000"),
              Text(L"PortWorldWidePortName", L"2000525400fc0001")};
    c.builders = {"MakeTargetPathFromWWPN"};
    c.failureName = "5";
    return c;
}

DeviceCase VlanCase()
{
    DeviceCase c;
    c.name = "Vlan";
    c.cimClass = L"Zarn_FCoeVLAN";
    c.manager = "CZarn_FcoeVLAN";
    c.operation = L"EnumerateVLANs";
    c.make = &Make<CZarn_FcoeVLAN>;
    c.add = &Add<&ScriptedAgent::vlans, &SampleVlan>;
    c.key = L"VlanID";
    c.keyReader = "GetKeyFromPath";
    c.keyLine = 288;
    c.keyText = L"\"1002\"";
    c.sent = {Text(L"DeviceID", L"X"),
              Text(L"Name", L"VLAN 1002"),
              Text(L"VLANName", L"X.1002"),
              Number(L"StatusID", L"2"),
              Text(L"Status", L"Down"),
              Number(L"VlanID", L"1002"),
              Text(L"HBA", L"Zarn_FCOEHBA.DeviceID=\"X\"")};
    c.builders = {"MakeHBAPathFromDeviceID"};
    c.failureName = "B.1002";
    return c;
}

DeviceCase StatisticsCase()
{
    DeviceCase c;
    c.name = "Statistics";
    c.cimClass = L"Zarn_FCoEStatistics";
    c.manager = "CZarn_FcoeStatistics";
    c.operation = L"EnumerateStatistics";
    c.make = &Make<CZarn_FcoeStatistics>;
    c.add = &Add<&ScriptedAgent::statistics, &SampleStatistic>;
    c.key = L"Statistic";
    c.keyReader = "GetKeyFromPath";
    c.keyLine = 288;
    c.keyText = L"\"tx_frames\"";
    // 64-bit numbers travel as decimal texts.
    c.sent = {Text(L"DeviceID", L"X"), Text(L"Name", L"Tx frames"), Text(L"Statistic", L"tx_frames"),
              Text(L"Value", L"18446744073709551615"), Text(L"HBA", L"Zarn_FCOEHBA.DeviceID=\"X\"")};
    c.builders = {"MakeHBAPathFromDeviceID"};
    c.failureName = "B tx_frames";
    return c;
}

} // namespace

std::wstring DeviceCase::Path() const
{
    const std::wstring hba = cimClass + L".DeviceID=\"X\"";
    return key.empty() ? hba : hba + L"," + key + L"=" + keyText;
}

const std::vector<DeviceCase>& DeviceCases()
{
    static const std::vector<DeviceCase> cases = {HbaCase(), FabricCase(), PortCase(),      TargetCase(),
                                                  LunCase(), VlanCase(),   StatisticsCase()};
    return cases;
}

ORL_FCOE_HBA SampleHba(const wchar_t* deviceId)
{
    ORL_FCOE_HBA hba;
    hba.hbaName = COrlString((L"host of " + std::wstring(deviceId)).c_str());
    hba.deviceId = deviceId;
    hba.name = COrlString((L"fcoe v0.1 over " + std::wstring(deviceId)).c_str());
    hba.worldWidePortName = L"2000525400fc0001";
    hba.worldWideNodeName = L"1000525400fc0001";
    hba.fcid = 0x010300;
    hba.busInformation = L"0000:00:03.0";
    hba.linkSpeed = L"1 Gbit";
    hba.linkStatus = L"Online";
    hba.instancePath = L"virtual\\net\\host0";
    hba.model = L"EN-10G2P";
    return hba;
}

ORL_FCOE_FABRIC SampleFabric(const wchar_t* deviceId)
{
    ORL_FCOE_FABRIC fabric;
    fabric.fabricName = COrlString((L"fabric of " + std::wstring(deviceId)).c_str());
    fabric.nodeWWN = L"20000000fc00000a";
    fabric.portWWN = L"20010000fc00000a";
    fabric.reservedText = L"52:54:00:fc:01:01";
    fabric.fcMap = 0x0EFC00;
    fabric.deviceId = deviceId;
    fabric.name = L"fcf_0";
    fabric.fabricType = L"Fabric";
    fabric.fabricTypeId = 1;
    fabric.priority = 128;
    fabric.vlanId = 1002;
    return fabric;
}

ORL_FCOE_PORT SamplePort(const wchar_t* deviceId)
{
    ORL_FCOE_PORT port;
    port.nodeWWN = COrlString((L"node of " + std::wstring(deviceId)).c_str());
    port.portWWN = L"2101525400fc0001";
    port.portTypeId = 2;
    port.portType = L"NPIV VPORT";
    port.fcid = 0x0A1B2C;
    port.deviceId = deviceId;
    port.name = L"lab vport";
    port.fabricNodeWWN = L"20000000fc00000a";
    port.fabricName = L"10000000fc00000a";
    return port;
}

ORL_FCOE_TARGET SampleTarget(const wchar_t* deviceId)
{
    ORL_FCOE_TARGET target;
    target.nodeWWN = L"1000525400fc2000";
    target.portWWN = L"2000525400fc2000";
    target.scsiBus = 3;
    target.scsiTarget = 4;
    target.fcid = 0x010200;
    target.vendor = L"LIO-ORG";
    target.serialNumber = L"naa.6001405abd0";
    target.localPortWWN = L"2000525400fc0001";
    target.reservedText = L"FCP Target";
    target.fabricName = L"10000000fc00000a";
    target.deviceId = deviceId;
    target.name = L"rport-0:0-1";
    target.reservedNumber = 99;
    target.targetType = 1;
    return target;
}

ORL_FCOE_LUN SampleLun(const wchar_t* deviceId)
{
    ORL_FCOE_LUN lun;
    lun.lunId = 5;
    lun.busNumber = 6;
    lun.targetNumber = 7;
    lun.fcid = 0x010200;
    lun.osDeviceName = L"/dev/sda";
    lun.capacity = L"64 MB, or so";
    lun.blockSize = L"512 bytes";
    lun.targetPortWWN = L"2000525400fc2000";
    lun.reservedText = L"naa.6001405abd0";
    lun.localPortWWN = L"2000525400fc0001";
    lun.fabricName = L"10000000fc00000a";
    lun.deviceId = deviceId;
    lun.name = L"LIO-ORG FILEIO 4.0";
    return lun;
}

ORL_FCOE_VLAN SampleVlan(const wchar_t* deviceId)
{
    ORL_FCOE_VLAN vlan;
    vlan.vlanName = COrlString((std::wstring(deviceId) + L".1002").c_str());
    vlan.vlanId = 1002;
    vlan.statusId = 2;
    vlan.status = L"Down";
    vlan.deviceId = deviceId;
    vlan.name = L"VLAN 1002";
    return vlan;
}

ORL_FCOE_STATISTIC SampleStatistic(const wchar_t* deviceId)
{
    ORL_FCOE_STATISTIC statistic;
    statistic.deviceId = deviceId;
    statistic.name = L"Tx frames";
    statistic.statistic = L"tx_frames";
    statistic.value = 0xFFFFFFFFFFFFFFFF;
    return statistic;
}

} // namespace orl::test
