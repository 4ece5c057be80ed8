// RegisterCimImplementors: the table of class managers.

#include "provider/RegisterCimImplementors.h"

#include "assoc/Zarn_AdapterToHBAAssoc.h"
#include "assoc/Zarn_FabricToPortAssoc.h"
#include "assoc/Zarn_HBAToFabricAssoc.h"
#include "assoc/Zarn_HBAToLunAssoc.h"
#include "assoc/Zarn_HBAToStatisticsAssoc.h"
#include "assoc/Zarn_HBAToVLANAssoc.h"
#include "assoc/Zarn_PortToTargetAssoc.h"
#include "classes/Zarn_FcoeFabric.h"
#include "classes/Zarn_FcoeHBA.h"
#include "classes/Zarn_FcoeLUN.h"
#include "classes/Zarn_FcoePort.h"
#include "classes/Zarn_FcoeStatistics.h"
#include "classes/Zarn_FcoeTarget.h"
#include "classes/Zarn_FcoeVLAN.h"
#include "Common/Src/OrlDebug.h"
#include "com/OrlAtl.h"
#include "provider/Agents.h"
#include "settings/KfgSettingEnumMgr.h"
#include "settings/KfgSettingIntMgr.h"
#include "settings/Zarn_FCOESettingMgr.h"
#include "settings/Zarn_HBAToSettingAssocMgr.h"

#include <memory>

namespace
{

// One row: the CIM class name, letter for letter as the framework matches it, and how its manager is made.
struct Implementor
{
    const wchar_t* cimClass;
    std::unique_ptr<CWomClassManagerRoot> (*make)(COrlFcoeAgentIntf* fcoe, OrlAdapterAgent* adapter);
};

template <typename Manager>
std::unique_ptr<CWomClassManagerRoot> OnFcoeAgent(COrlFcoeAgentIntf* fcoe, OrlAdapterAgent*)
{
    return std::make_unique<Manager>(fcoe);
}

template <typename Manager>
std::unique_ptr<CWomClassManagerRoot> OnBothAgents(COrlFcoeAgentIntf* fcoe, OrlAdapterAgent* adapter)
{
    return std::make_unique<Manager>(fcoe, adapter);
}

// In the order of registration.
constexpr Implementor Implementors[] = {
    {L"Zarn_FCOEHBA", &OnFcoeAgent<CZarn_FcoeHBA>},
    {L"Zarn_FCoEFabric", &OnFcoeAgent<CZarn_FcoeFabric>},
    {L"Zarn_FCoEPort", &OnFcoeAgent<CZarn_FcoePort>},
    {L"Zarn_FcoeTarget", &OnFcoeAgent<CZarn_FcoeTarget>},
    {L"Zarn_FCoeLUN", &OnFcoeAgent<CZarn_FcoeLUN>},
    {L"Zarn_FCoeVLAN", &OnFcoeAgent<CZarn_FcoeVLAN>},
    {L"Zarn_FCoEStatistics", &OnFcoeAgent<CZarn_FcoeStatistics>},
    {L"Zarn_FCoeSetting", &OnBothAgents<CZarn_FCOESettingMgr>},
    {L"Zarn_FCOESettingEnum", &OnBothAgents<CKfgSettingEnumMgr>},
    {L"Zarn_FCOESettingInt", &OnBothAgents<CKfgSettingIntMgr>},
    {L"Zarn_FCoE_Adapter_HBA_Assoc", &OnFcoeAgent<CZarn_AdapterToHBAAssocMgr>},
    {L"Zarn_FCoE_HBA_Setting_Assoc", &OnBothAgents<CZarn_FcoeHBAToSettingAssocMgr>},
    {L"Zarn_FCoE_HBA_Fabric_Assoc", &OnFcoeAgent<CZarn_HBAToFabricAssocMgr>},
    {L"Zarn_FCoE_Fabric_Port_Assoc", &OnFcoeAgent<CZarn_FabricToPortAssocMgr>},
    {L"Zarn_FCoE_Port_Target_Assoc", &OnFcoeAgent<CZarn_PortToTargetAssocMgr>},
    {L"Zarn_FCoE_HBA_LUN_Assoc", &OnFcoeAgent<CZarn_HBAToLUNAssocMgr>},
    {L"Zarn_FCoE_HBA_VLAN_Assoc", &OnFcoeAgent<CZarn_HBAToVLANAssocMgr>},
    {L"Zarn_FCoE_HBA_Statistics_Assoc", &OnFcoeAgent<CZarn_HbaToStatsAssocMgr>},
};

bool BindAgents()
{
    const CResult fcoe = orl::loadFcoeAgent();
    if (orl::g_fcoeAgent == nullptr || fcoe.ulErrCode != 0)
        return false;
    const CResult adapter = orl::loadAdapterAgent();
    return orl::g_adapterAgent != nullptr && adapter.ulErrCode == 0;
}

} // namespace

namespace orl
{

void AddClassManagers(ImplementorRegistry& registry, COrlFcoeAgentIntf* fcoe, OrlAdapterAgent* adapter)
{
    for (const Implementor& implementor : Implementors)
    {
        std::unique_ptr<CWomClassManagerRoot> manager = implementor.make(fcoe, adapter);
        CComBSTR name(implementor.cimClass);
        registry.AddClassManager(std::move(name), manager.release());
    }
}

} // namespace orl

void RegisterCimImplementors(void* /*context*/, ImplementorRegistry* registry, CResult* result)
{
    COrlTraceScope scope(L"RegisterCimImplementors");
    if (!BindAgents())
    {
        g_OrlDebug.Print(L"ORL2InstFcoe::RegisterCimImplementors Initialize() Failed!");
        return;
    }
    orl::AddClassManagers(*registry, orl::g_fcoeAgent, orl::g_adapterAgent);
    *result = CResult{0, 0};
}
