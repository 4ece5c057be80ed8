// Records as one line of text each.

#include "tests/agentlibs/sysfs/RecordText.h"

#include "agentlibs/Text.h"

#include <cstdio>

namespace orl
{
namespace
{

struct Hex
{
    ULONG value;
};

std::string Field(const COrlString& text)
{
    return Narrow(text);
}
std::string Field(ULONG number)
{
    return std::to_string(number);
}
std::string Field(ULONGLONG number)
{
    return std::to_string(number);
}
std::string Field(Hex number)
{
    char text[16];
    std::snprintf(text, sizeof text, "%x", static_cast<unsigned>(number.value));
    return text;
}

template <class... Fields>
std::string Join(const Fields&... fields)
{
    std::string line;
    ((line += (line.empty() ? "" : "|") + Field(fields)), ...);
    return line;
}

template <class Record>
std::vector<std::string> Ask(FcoeBackend& backend,
                             bool (COrlFcoeAgentIntf::*enumerate)(const COrlString&, std::vector<Record>&, CResult&),
                             const wchar_t* deviceId)
{
    std::vector<Record> records;
    CResult status;
    try
    {
        if (!(backend.*enumerate)(deviceId, records, status))
            return {"refused"};
    }
    catch (const BackendError& error)
    {
        return {"error " + std::to_string(error.Code()) + ": " + Narrow(error.Text())};
    }
    return Lines(records);
}

} // namespace

std::string Line(const ORL_FCOE_HBA& hba)
{
    // The first field is never empty, or the bars would not tell the fields apart.
    return Join(hba.deviceId, hba.hbaName, hba.name, hba.worldWidePortName, hba.worldWideNodeName, Hex{hba.fcid},
                hba.busInformation, hba.linkSpeed, hba.linkStatus, hba.instancePath, hba.model);
}

std::string Line(const ORL_FCOE_PORT& port)
{
    return Join(port.deviceId, port.nodeWWN, port.portWWN, port.portTypeId, port.portType, Hex{port.fcid}, port.name,
                port.fabricNodeWWN, port.fabricName);
}

std::string Line(const ORL_FCOE_FABRIC& fabric)
{
    return Join(fabric.deviceId, fabric.fabricName, fabric.nodeWWN, fabric.portWWN, fabric.reservedText,
                Hex{fabric.fcMap}, fabric.name, fabric.fabricType, fabric.fabricTypeId, fabric.priority, fabric.vlanId);
}

std::string Line(const ORL_FCOE_TARGET& target)
{
    return Join(target.deviceId, target.nodeWWN, target.portWWN, target.scsiBus, target.scsiTarget, Hex{target.fcid},
                target.vendor, target.serialNumber, target.localPortWWN, target.reservedText, target.fabricName,
                target.name, target.reservedNumber, target.targetType);
}

std::string Line(const ORL_FCOE_LUN& lun)
{
    return Join(lun.deviceId, lun.lunId, lun.busNumber, lun.targetNumber, Hex{lun.fcid}, lun.osDeviceName, lun.capacity,
                lun.blockSize, lun.targetPortWWN, lun.reservedText, lun.localPortWWN, lun.fabricName, lun.name);
}

std::string Line(const ORL_FCOE_VLAN& vlan)
{
    return Join(vlan.deviceId, vlan.vlanName, vlan.vlanId, vlan.statusId, vlan.status, vlan.name);
}

std::string Line(const ORL_FCOE_STATISTIC& statistic)
{
    return Join(statistic.deviceId, statistic.name, statistic.statistic, statistic.value);
}

std::vector<std::string> Hbas(FcoeBackend& backend, const wchar_t* deviceId)
{
    return Ask(backend, &COrlFcoeAgentIntf::EnumerateHBAs, deviceId);
}

std::vector<std::string> Ports(FcoeBackend& backend, const wchar_t* deviceId)
{
    return Ask(backend, &COrlFcoeAgentIntf::EnumeratePorts, deviceId);
}

std::vector<std::string> Fabrics(FcoeBackend& backend, const wchar_t* deviceId)
{
    return Ask(backend, &COrlFcoeAgentIntf::EnumerateFabrics, deviceId);
}

std::vector<std::string> Targets(FcoeBackend& backend, const wchar_t* deviceId)
{
    return Ask(backend, &COrlFcoeAgentIntf::EnumerateTargets, deviceId);
}

std::vector<std::string> Luns(FcoeBackend& backend, const wchar_t* deviceId)
{
    return Ask(backend, &COrlFcoeAgentIntf::EnumerateLUNs, deviceId);
}

std::vector<std::string> Vlans(FcoeBackend& backend, const wchar_t* deviceId)
{
    return Ask(backend, &COrlFcoeAgentIntf::EnumerateVLANs, deviceId);
}

std::vector<std::string> Statistics(FcoeBackend& backend, const wchar_t* deviceId)
{
    return Ask(backend, &COrlFcoeAgentIntf::EnumerateStatistics, deviceId);
}

} // namespace orl
