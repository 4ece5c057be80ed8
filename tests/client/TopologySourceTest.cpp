// Reading the topology from a service: what is asked for, and where associations put it.
#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orl::client;
using namespace orl::test;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

CComVariant Text(const std::wstring& text)
{
    return CComVariant(text.c_str());
}

class TopologyOnServices : public testing::Test
{
protected:
    FakeServices services;

    static FakeContent Hba(const std::wstring& id)
    {
        return Instance(L"Zarn_FCOEHBA", {{L"DeviceID", Text(id)}, {L"LinkStatus", Text(L"Online")}});
    }
    static FakeContent PortOf(const std::wstring& id)
    {
        return Instance(L"Zarn_FCoEPort", {{L"DeviceID", Text(id)},
                                           {L"WorldWidePortName", Text(L"20" + id)},
                                           {L"PortType", Text(L"NPIV VPORT")},
                                           {L"FabricName", Text(L"f")},
                                           {L"Fabric", Text(L"Zarn_FCoEFabric.WorldWideNodeName=\"aa\"")}});
    }
    static FakeContent TargetOf(const std::wstring& id, int state)
    {
        FakeContent target = Instance(L"Zarn_FcoeTarget", {{L"DeviceID", Text(id)},
                                                           {L"WorldWidePortName", Text(L"30")},
                                                           {L"PortWorldWidePortName", Text(L"20" + id)}});
        target.properties.push_back({L"TargetType", CComVariant(state), CIM_UINT32, {}});
        return target;
    }
};

TEST_F(TopologyOnServices, AsksForEachClassOnce)
{
    services.OnEnumerate(L"Zarn_FCOEHBA", Objects({Hba(L"a"), Hba(L"b"), Hba(L"c")}));
    services.OnEnumerate(L"Zarn_FCoEVLAN", Objects({}));
    services.OnEnumerate(L"Zarn_FCoEFabric", Objects({}));
    services.OnEnumerate(L"Zarn_FCoEPort", Objects({PortOf(L"a"), PortOf(L"b"), PortOf(L"c")}));
    services.OnEnumerate(L"Zarn_FcoeTarget",
                         Objects({TargetOf(L"c", 3), TargetOf(L"a", 2), TargetOf(L"b", 1), TargetOf(L"b", 9)}));
    services.OnEnumerate(L"Zarn_FCoeLUN", Objects({}));
    const Ran ran = RunOn(services, {"tree"});
    EXPECT_EQ(ran.errors, "");
    EXPECT_EQ(ran.output, "FCoE adapter a\n"
                          "│   state  Online\n"
                          "└── virtual port 20a\n"
                          "    │   fabric  f\n"
                          "    └── target 30  blocked, no LUNs\n"
                          "\n"
                          "FCoE adapter b\n"
                          "│   state  Online\n"
                          "└── virtual port 20b\n"
                          "    │   fabric  f\n"
                          "    ├── target 30  online, no LUNs\n"
                          "    └── target 30  unknown, no LUNs\n"
                          "\n"
                          "FCoE adapter c\n"
                          "│   state  Online\n"
                          "└── virtual port 20c\n"
                          "    │   fabric  f\n"
                          "    └── target 30  not present, no LUNs\n");
    EXPECT_THAT(services.Calls(),
                ElementsAre(L"CreateInstanceEnum(Zarn_FCOEHBA)", L"CreateInstanceEnum(Zarn_FCoE_Adapter_HBA_Assoc)",
                            L"CreateInstanceEnum(Zarn_FCoE_HBA_VLAN_Assoc)",
                            L"CreateInstanceEnum(Zarn_FCoE_HBA_Fabric_Assoc)",
                            L"CreateInstanceEnum(Zarn_FCoE_Fabric_Port_Assoc)", L"CreateInstanceEnum(Zarn_FCoEVLAN)",
                            L"CreateInstanceEnum(Zarn_FCoEFabric)", L"CreateInstanceEnum(Zarn_FCoEPort)",
                            L"CreateInstanceEnum(Zarn_FcoeTarget)", L"CreateInstanceEnum(Zarn_FCoeLUN)"));
}

// One path as the provider writes it.
std::wstring PathOf(const std::wstring& className, const std::wstring& id, const std::wstring& key = L"")
{
    return className + L".DeviceID=\"" + id + L"\"" + key;
}

FakeContent Association(const std::wstring& antecedent, const std::wstring& dependent)
{
    return Instance(L"A", {{L"Antecedent", Text(antecedent)}, {L"Dependent", Text(dependent)}});
}

TEST_F(TopologyOnServices, PutsObjectsWhereAssociationsTieThem)
{
    // Every object's own keys say adapter a.
    const std::wstring hba = PathOf(L"Zarn_FCOEHBA", L"b");
    const std::wstring vlan = PathOf(L"Zarn_FCoEVLAN", L"a", L",VlanID=\"7\"");
    const std::wstring fabric = PathOf(L"Zarn_FCoEFabric", L"a", L",WorldWideNodeName=\"CC\"");
    const std::wstring port = PathOf(L"Zarn_FCoEPort", L"a", L",WorldWidePortName=\"20a\"");
    services.OnEnumerate(L"Zarn_FCOEHBA", Objects({Hba(L"a"), Hba(L"b")}));
    services.OnEnumerate(L"Zarn_FCoE_HBA_VLAN_Assoc", Objects({Association(hba, vlan)}));
    services.OnEnumerate(L"Zarn_FCoE_HBA_Fabric_Assoc", Objects({Association(hba, fabric)}));
    services.OnEnumerate(L"Zarn_FCoE_Fabric_Port_Assoc", Objects({Association(fabric, port)}));
    services.OnEnumerate(
        L"Zarn_FCoEVLAN",
        Objects({Instance(L"Zarn_FCoEVLAN",
                          {{L"DeviceID", Text(L"a")}, {L"VlanID", Text(L"7")}, {L"Status", Text(L"Up")}})}));
    services.OnEnumerate(L"Zarn_FCoEFabric", Objects({Instance(L"Zarn_FCoEFabric", {{L"DeviceID", Text(L"a")},
                                                                                    {L"Name", Text(L"fcf_0")},
                                                                                    {L"WorldWideNodeName", Text(L"CC")},
                                                                                    {L"FabricName", Text(L"f")}})}));
    services.OnEnumerate(L"Zarn_FCoEPort", Objects({PortOf(L"a")}));
    const Ran ran = RunOn(services, {"tree", "--format", "json"});
    EXPECT_EQ(ran.errors, "");
    const auto second = ran.output.find("\"DeviceID\": \"b\"");
    ASSERT_NE(second, std::string::npos) << ran.output;
    for (const char* text : {"\"VlanID\": 7", "fcf_0", "\"20a\"", "\"ForwarderWorldWideNodeName\": \"CC\""})
    {
        EXPECT_GT(ran.output.find(text), second) << text << " in " << ran.output;
        EXPECT_NE(ran.output.find(text), std::string::npos) << text << " in " << ran.output;
    }
}

TEST_F(TopologyOnServices, AsksForTheChosenAdaptersAlone)
{
    services.OnQuery(L"SELECT DeviceID FROM Zarn_FCOEHBA WHERE DeviceID = 'A'", Objects({Hba(L"a")}));
    services.OnQuery(L"SELECT * FROM Zarn_FCOEHBA WHERE DeviceID = 'a'", Objects({Hba(L"a")}));
    services.OnQuery(L"SELECT * FROM Zarn_FCoEPort WHERE DeviceID = 'a'", Objects({PortOf(L"a")}));
    const Ran ran = RunOn(services, {"tree", "A"});
    EXPECT_EQ(ran.output, "FCoE adapter a\n│   state  Online\n└── virtual port 20a\n        fabric  f\n");
    EXPECT_EQ(services.Calls().size(), 11U);
    EXPECT_THAT(services.Calls(), testing::Each(AnyOf(HasSubstr(L"WHERE DeviceID = "), HasSubstr(L"_Assoc)"))));
}

TEST_F(TopologyOnServices, PrintsTheSameStructureAsJson)
{
    services.OnEnumerate(L"Zarn_FCOEHBA", Objects({Hba(L"a")}));
    services.OnEnumerate(L"Zarn_FCoEPort", Objects({PortOf(L"a")}));
    services.OnEnumerate(L"Zarn_FcoeTarget", Objects({TargetOf(L"a", 2)}));
    const Ran ran = RunOn(services, {"tree", "--format", "json"});
    EXPECT_THAT(ran.output, HasSubstr("\"Problem\": null"));
    EXPECT_THAT(ran.output, HasSubstr("\"Ports\": [\n      {\n        \"WorldWidePortName\": \"20a\""));
    EXPECT_THAT(ran.output, HasSubstr("\"Virtual\": true"));
    EXPECT_THAT(ran.output, HasSubstr("\"ForwarderWorldWideNodeName\": \"aa\""));
    EXPECT_THAT(ran.output, HasSubstr("\"State\": \"blocked\""));
    EXPECT_THAT(ran.output, HasSubstr("\"LUNs\": []"));
    FakeServices nothing;
    EXPECT_EQ(RunOn(nothing, {"tree", "--format", "json"}).output, "[]\n");
}

TEST_F(TopologyOnServices, TellsAFailureOfAnyClass)
{
    services.OnEnumerate(L"Zarn_FCOEHBA", Objects({Hba(L"a")}));
    FakeAnswer broken = Objects({PortOf(L"a")});
    broken.atEnd = WBEM_E_PROVIDER_FAILURE;
    services.OnEnumerate(L"Zarn_FCoEPort", broken);
    const Ran ran = RunOn(services, {"tree"});
    EXPECT_EQ(ran.code, ExitCode::Failed);
    EXPECT_EQ(ran.output, "") << "half a tree would look like a whole one";
    EXPECT_THAT(ran.errors, HasSubstr("cannot enumerate Zarn_FCoEPort"));
}

} // namespace
