// What may be asked about.
#include "tests/stress/Actors.h"

namespace orl::test
{
namespace
{

const wchar_t* const Classes[] = {L"Zarn_FCOEHBA",
                                  L"Zarn_FCoEPort",
                                  L"Zarn_FCoEFabric",
                                  L"Zarn_FcoeTarget",
                                  L"Zarn_FCoeLUN",
                                  L"Zarn_FCoeVLAN",
                                  L"Zarn_FCoEStatistics",
                                  L"Zarn_FCOESettingEnum",
                                  L"Zarn_FCOESettingInt",
                                  L"Zarn_FCoeSetting",
                                  L"Zarn_FCoE_Adapter_HBA_Assoc",
                                  L"Zarn_FCoE_HBA_Setting_Assoc",
                                  L"Zarn_FCoE_HBA_Fabric_Assoc",
                                  L"Zarn_FCoE_Fabric_Port_Assoc",
                                  L"Zarn_FCoE_Port_Target_Assoc",
                                  L"Zarn_FCoE_HBA_LUN_Assoc",
                                  L"Zarn_FCoE_HBA_VLAN_Assoc",
                                  L"Zarn_FCoE_HBA_Statistics_Assoc",
                                  L"zarn_fcoehba",
                                  L"Zarn_Nothing"};

const wchar_t* const Paths[] = {L"Zarn_FCOEHBA.DeviceID=\"sim0\"",
                                L"Zarn_FCOEHBA.DeviceID=\"SIM1\"",
                                L"Zarn_FCOEHBA=\"work0\"",
                                L"Zarn_FCOEHBA.DeviceID=\"\"",
                                L"Zarn_FCoeLUN.DeviceID=\"sim0\",ID=\"3\"",
                                L"Zarn_FCoeVLAN.DeviceID=\"sim1\",VlanID=100",
                                L"Zarn_FCoEPort.DeviceID=\"work1\",WorldWidePortName=\"2001525400fd0001\"",
                                L"Zarn_FCOESettingInt.Caption=\"QueueDepth\",ParentId=\"work0\",ParentType=\"NIC\"",
                                L"Zarn_FCOESettingEnum.Caption=\"Switch1\",ParentId=\"sim0\",ParentType=\"NIC\"",
                                L"Zarn_FCOEHBA",
                                L"Zarn_FCOEHBA.DeviceID=\"\\\"",
                                L"\\\\.\\root\\nowhere:Zarn_FCOEHBA.DeviceID=\"sim0\"",
                                L""};

const wchar_t* const Queries[] = {
    L"SELECT * FROM Zarn_FCoeLUN WHERE DeviceID = 'sim0'",
    L"SELECT ID, Name FROM Zarn_FCoeLUN WHERE ID > 7 AND NOT Name LIKE '%x%'",
    L"SELECT * FROM Zarn_FCoEPort WHERE PortTypeID = 2 OR DeviceID LIKE 'w[^x-z]%'",
    L"SELECT __PATH FROM Zarn_FCoEStatistics",
    L"SELECT * FROM meta_class",
    L"SELECT * FROM Zarn_FCOEHBA WHERE Volts = 3",
    L"SELECT * FROM",
    L"ASSOCIATORS OF {Zarn_FCOEHBA.DeviceID=\"sim0\"}",
    L"ASSOCIATORS OF {Zarn_FCOEHBA.DeviceID=\"sim1\"} WHERE ResultClass = Zarn_FCoeLUN",
    L"ASSOCIATORS OF {Zarn_FCOEHBA.DeviceID=\"work0\"} WHERE AssocClass = Zarn_FCoE_HBA_Setting_Assoc",
    L"REFERENCES OF {Zarn_FCOEHBA.DeviceID=\"sim0\"}",
    L"REFERENCES OF {Zarn_FCOEHBA.DeviceID=\"sim0\"} WHERE ClassDefsOnly",
    L"ASSOCIATORS OF {Zarn_FCOEHBA} WHERE SchemaOnly",
    L"ASSOCIATORS OF {Zarn_FCOEHBA.DeviceID=\"nobody\"}",
};

template <std::size_t Size>
std::wstring OneOf(const wchar_t* const (&list)[Size], Dice& dice)
{
    return list[dice.Below(Size)];
}

} // namespace

std::wstring SomePath(Dice& dice)
{
    return OneOf(Paths, dice);
}

std::wstring SomeClass(Dice& dice)
{
    return OneOf(Classes, dice);
}

std::wstring SomeQuery(Dice& dice)
{
    return OneOf(Queries, dice);
}

} // namespace orl::test
