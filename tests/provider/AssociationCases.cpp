#include "tests/provider/AssociationCases.h"

#include "assoc/Zarn_AdapterToHBAAssoc.h"
#include "assoc/Zarn_FabricToPortAssoc.h"
#include "assoc/Zarn_HBAToFabricAssoc.h"
#include "assoc/Zarn_HBAToLunAssoc.h"
#include "assoc/Zarn_HBAToStatisticsAssoc.h"
#include "assoc/Zarn_HBAToVLANAssoc.h"
#include "assoc/Zarn_PortToTargetAssoc.h"

#include <algorithm>
#include <stdexcept>

namespace orl::test
{

const std::vector<AssociationCase>& AssociationCases()
{
    static const std::wstring hba = L"Zarn_FCOEHBA.DeviceID=\"X\"";
    static const std::wstring fabric = L"Zarn_FCoEFabric.DeviceID=\"X\",WorldWideNodeName=\"20000000fc00000a\"";
    static const std::vector<AssociationCase> cases = {
        {"AdapterToHBA", L"Zarn_FCoE_Adapter_HBA_Assoc", "CZarn_AdapterToHBAAssocMgr", L"EnumerateHBAs",
         &Make<CZarn_AdapterToHBAAssocMgr>, &Add<&ScriptedAgent::hbas, &SampleHba>,
         L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\"", hba, "MakeDevicePathFromDeviceID", "MakeHBAPathFromDeviceID",
         "", L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_AdapterToHBAAssoc", 66, 189},
        {"FabricToPort", L"Zarn_FCoE_Fabric_Port_Assoc", "CZarn_FabricToPortAssocMgr", L"EnumeratePorts",
         &Make<CZarn_FabricToPortAssocMgr>, &Add<&ScriptedAgent::ports, &SamplePort>, fabric,
         L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2101525400fc0001\"", "MakeFabricPathFromDeviceIDWWN",
         "MakePortPathFromWWN", "GetKeyFromPath", L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_FabricToPortAssoc",
         69, 194},
        {"HBAToFabric", L"Zarn_FCoE_HBA_Fabric_Assoc", "CZarn_HBAToFabricAssocMgr", L"EnumerateFabrics",
         &Make<CZarn_HBAToFabricAssocMgr>, &Add<&ScriptedAgent::fabrics, &SampleFabric>, hba, fabric,
         "MakeHBAPathFromDeviceID", "MakeFabricPathFromDeviceIDWWN", "", L"OrlAdapterAgent::EnumerateAdapters",
         L"Src\\Zarn_HBAToFabricAssoc", 69, 148},
        {"HBAToLUN", L"Zarn_FCoE_HBA_LUN_Assoc", "CZarn_HBAToLUNAssocMgr", L"EnumerateLUNs",
         &Make<CZarn_HBAToLUNAssocMgr>, &Add<&ScriptedAgent::luns, &SampleLun>, hba,
         L"Zarn_FCoeLUN.DeviceID=\"X\",ID=\"5\"", "MakeHBAPathFromDeviceID", "MakeLUNPathFromID", "GetIntKeyFromPath",
         L"OrlAdapterAgent::EnumerateLUNs", L"Src\\Zarn_HBAToLunAssoc", 69, 152},
        {"HbaToStats", L"Zarn_FCoE_HBA_Statistics_Assoc", "CZarn_HbaToStatsAssocMgr", L"EnumerateStatistics",
         &Make<CZarn_HbaToStatsAssocMgr>, &Add<&ScriptedAgent::statistics, &SampleStatistic>, hba,
         L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"tx_frames\"", "MakeHBAPathFromDeviceID", "MakeStatisticPath",
         "GetKeyFromPath", L"OrlAdapterAgent::EnumerateStatistics", L"Src\\Zarn_HBAToStatisticsAssoc", 69, 155},
        {"HBAToVLAN", L"Zarn_FCoE_HBA_VLAN_Assoc", "CZarn_HBAToVLANAssocMgr", L"EnumerateVLANs",
         &Make<CZarn_HBAToVLANAssocMgr>, &Add<&ScriptedAgent::vlans, &SampleVlan>, hba,
         L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"1002\"", "MakeHBAPathFromDeviceID", "MakeVLANPathFromID", "",
         L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_HBAToVLANAssoc", 69, 149},
        // The target's own names: its port's in the port path, its node's in the target path. And another class.
        {"PortToTarget", L"Zarn_FCoE_HBA_Fabric_Assoc", "CZarn_PortToTargetAssocMgr", L"EnumerateTargets",
         &Make<CZarn_PortToTargetAssocMgr>, &Add<&ScriptedAgent::targets, &SampleTarget>,
         L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2000525400fc2000\"",
         L"Zarn_FcoeTarget.DeviceID=\"X\",WorldWidePortName=\"1000525400fc2000\"", "MakePortPathFromWWN",
         "MakeTargetPathFromWWPN", "", L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_PortToTargetAssoc", 69, 149},
    };
    return cases;
}

const AssociationCase& AssociationOf(const std::string& name)
{
    const auto found = std::find_if(AssociationCases().begin(), AssociationCases().end(),
                                    [&](const AssociationCase& c) { return c.name == name; });
    if (found == AssociationCases().end())
        throw std::invalid_argument("no association " + name);
    return *found;
}

std::wstring InPath(const std::wstring& text)
{
    std::wstring quoted = L"\"";
    for (const wchar_t c : text)
        quoted += (c == L'"' || c == L'\\' ? L"\\" : L"") + std::wstring(1, c);
    return quoted + L"\"";
}

std::wstring PathOfLink(const AssociationCase& c, const std::wstring& antecedent, const std::wstring& dependent)
{
    return c.cimClass + L".Antecedent=" + InPath(antecedent) + L",Dependent=" + InPath(dependent);
}

AssociationManager::AssociationManager()
{
    for (const AssociationCase& c : AssociationCases())
        services->Add(MakeFakeClass(c.cimClass));
}

} // namespace orl::test
