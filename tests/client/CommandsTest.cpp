// The commands: what they ask the service and what they print.
#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include "tools/orlwmi/Options.h"
#include "tools/orlwmi/commands/Commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orl::client;
using namespace orl::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

CComVariant Text(const wchar_t* text)
{
    return CComVariant(text);
}

FakeContent Hba(const wchar_t* id, const wchar_t* state)
{
    FakeContent hba = Instance(L"Zarn_FCOEHBA", {{L"DeviceID", Text(id)}, {L"LinkStatus", Text(state)}});
    hba.system[L"__PATH"] =
        Text((L"\\\\HOST\\root\\KESTA:Zarn_FCOEHBA.DeviceID=\"" + std::wstring(id) + L"\"").c_str());
    hba.mof = L"instance of Zarn_FCOEHBA\n{\n\tDeviceID = \"" + std::wstring(id) + L"\";\n};\n";
    return hba;
}

class ClientCommands : public testing::Test
{
protected:
    FakeServices services;

    void SetUp() override
    {
        services.OnEnumerate(L"Zarn_FCOEHBA", Objects({Hba(L"eth0.1002", L"Online"), Hba(L"eth1.1002", L"Linkdown")}));
        services.OnGetObject(L"Zarn_FCOEHBA.DeviceID=\"eth0.1002\"", Objects({Hba(L"eth0.1002", L"Online")}));
    }

    std::string Output(const std::vector<std::string>& arguments)
    {
        const Ran ran = RunOn(services, arguments);
        EXPECT_EQ(ran.errors, "");
        EXPECT_EQ(ran.code, ExitCode::Done);
        return ran.output;
    }
};

TEST_F(ClientCommands, EnumPrintsATable)
{
    EXPECT_EQ(Output({"enum", "Zarn_FCOEHBA"}), "DeviceID   LinkStatus\n"
                                                "---------  ----------\n"
                                                "eth0.1002  Online\n"
                                                "eth1.1002  Linkdown\n");
    EXPECT_THAT(services.Calls(), ElementsAre(L"CreateInstanceEnum(Zarn_FCOEHBA)"));
}

TEST_F(ClientCommands, EnumPrintsEachFormat)
{
    EXPECT_EQ(Output({"enum", "Zarn_FCOEHBA", "--format", "csv"}),
              "DeviceID,LinkStatus\r\neth0.1002,Online\r\neth1.1002,Linkdown\r\n");
    EXPECT_EQ(Output({"enum", "Zarn_FCOEHBA", "--format", "list"}), "DeviceID   : eth0.1002\n"
                                                                    "LinkStatus : Online\n"
                                                                    "\n"
                                                                    "DeviceID   : eth1.1002\n"
                                                                    "LinkStatus : Linkdown\n");
    EXPECT_EQ(Output({"enum", "Zarn_FCOEHBA", "--format", "json"}), R"([
  {
    "DeviceID": "eth0.1002",
    "LinkStatus": "Online"
  },
  {
    "DeviceID": "eth1.1002",
    "LinkStatus": "Linkdown"
  }
]
)");
    EXPECT_EQ(Output({"enum", "Zarn_FCOEHBA", "--format", "mof"}),
              "instance of Zarn_FCOEHBA\n{\n\tDeviceID = \"eth0.1002\";\n};\n\n"
              "instance of Zarn_FCOEHBA\n{\n\tDeviceID = \"eth1.1002\";\n};\n");
}

TEST_F(ClientCommands, EnumCounts)
{
    EXPECT_EQ(Output({"enum", "Zarn_FCOEHBA", "--count"}), "2\n");
}

TEST_F(ClientCommands, EnumLetsTheServiceProjectAndFilter)
{
    services.OnQuery(L"SELECT LinkStatus, DeviceID FROM Zarn_FCOEHBA", Objects({Hba(L"a", L"up")}));
    EXPECT_EQ(Output({"enum", "Zarn_FCOEHBA", "--select", "LinkStatus,DeviceID", "--format", "csv"}),
              "LinkStatus,DeviceID\r\nup,a\r\n");
    services.OnQuery(L"SELECT * FROM Zarn_FCOEHBA WHERE LinkStatus <> 'Online'", Objects({Hba(L"b", L"down")}));
    EXPECT_EQ(Output({"enum", "Zarn_FCOEHBA", "--where", "LinkStatus <> 'Online'", "--format", "csv"}),
              "DeviceID,LinkStatus\r\nb,down\r\n");
}

TEST_F(ClientCommands, EnumSelectsSystemPropertiesItself)
{
    EXPECT_EQ(Output({"enum", "Zarn_FCOEHBA", "--select", "DeviceID,__PATH", "--format", "csv"}),
              "DeviceID,__PATH\r\n"
              "eth0.1002,\"\\\\HOST\\root\\KESTA:Zarn_FCOEHBA.DeviceID=\"\"eth0.1002\"\"\"\r\n"
              "eth1.1002,\"\\\\HOST\\root\\KESTA:Zarn_FCOEHBA.DeviceID=\"\"eth1.1002\"\"\"\r\n");
    EXPECT_THAT(services.Calls(), ElementsAre(L"CreateInstanceEnum(Zarn_FCOEHBA)"));
}

TEST_F(ClientCommands, EnumRefusesWhatIsNoClassName)
{
    for (const std::string name : {"A B", "A;", "A.B=\"c\"", "A'", "A FROM B"})
    {
        const Ran ran = RunOn(services, {"enum", name, "--where", "C = 1"});
        EXPECT_EQ(ran.code, ExitCode::Usage);
        EXPECT_EQ(ran.errors, "orlwmi: \"" + name + "\" is not the name of a class\n");
    }
    EXPECT_THAT(services.Calls(), IsEmpty());
}

TEST_F(ClientCommands, EnumEndsTheDocumentBeforeItTellsAFailure)
{
    FakeAnswer answer = Objects({Hba(L"eth0", L"Online")});
    answer.atEnd = WBEM_E_PROVIDER_FAILURE;
    services.OnEnumerate(L"Zarn_FCOEHBA", answer);
    const Ran ran = RunOn(services, {"enum", "Zarn_FCOEHBA", "--format", "json"});
    EXPECT_EQ(ran.code, ExitCode::Failed);
    EXPECT_EQ(ran.output, "[\n  {\n    \"DeviceID\": \"eth0\",\n    \"LinkStatus\": \"Online\"\n  }\n]\n");
    EXPECT_EQ(ran.errors,
              "orlwmi: cannot enumerate Zarn_FCOEHBA: WBEM_E_PROVIDER_FAILURE (0x80041004): The provider failed.\n");
}

TEST_F(ClientCommands, EnumOfAnUnknownClassIsNotFound)
{
    FakeAnswer answer;
    answer.atOnce = WBEM_E_INVALID_CLASS;
    services.OnEnumerate(L"Nope", answer);
    const Ran ran = RunOn(services, {"enum", "Nope"});
    EXPECT_EQ(ran.code, ExitCode::NotFound);
    EXPECT_EQ(ran.output, "");
    EXPECT_EQ(ran.errors,
              "orlwmi: cannot enumerate Nope: WBEM_E_INVALID_CLASS (0x80041010): There is no such class.\n");
}

TEST_F(ClientCommands, EnumKeepsOneObjectAtATimeWhateverTheFormat)
{
    FakeAnswer many;
    many.count = 5000;
    many.make = [](size_t index) { return Hba(std::to_wstring(index).c_str(), L"Online"); };
    services.OnEnumerate(L"Many", many);
    for (const std::string format : {"table", "list", "json", "csv", "mof"})
    {
        ForgetMostLiveFakeObjects();
        Output({"enum", "Many", "--format", format});
        EXPECT_LE(MostLiveFakeObjects(), 200) << format;
        EXPECT_EQ(LiveFakeObjects(), 0) << format;
    }
}

TEST_F(ClientCommands, GetPrintsAList)
{
    EXPECT_EQ(Output({"get", "Zarn_FCOEHBA.DeviceID=\"eth0.1002\""}), "DeviceID   : eth0.1002\nLinkStatus : Online\n");
}

TEST_F(ClientCommands, GetPrintsOneJsonObject)
{
    EXPECT_EQ(Output({"get", "Zarn_FCOEHBA.DeviceID=\"eth0.1002\"", "--format", "json", "--select", "LinkStatus"}),
              "{\n  \"LinkStatus\": \"Online\"\n}\n");
}

TEST_F(ClientCommands, GetTellsWhyThereIsNoInstance)
{
    services.OnGetObject(
        L"Zarn_FCOEHBA.DeviceID=\"x\"",
        Refusal(WBEM_E_NOT_FOUND, MakeExtendedStatus(L"none", L"GetObject", L"x", L"p", WBEM_E_NOT_FOUND)));
    const Ran ran = RunOn(services, {"get", "Zarn_FCOEHBA.DeviceID=\"x\""});
    EXPECT_EQ(ran.code, ExitCode::NotFound);
    EXPECT_EQ(ran.output, "");
    EXPECT_EQ(
        ran.errors,
        "orlwmi: cannot get Zarn_FCOEHBA.DeviceID=\"x\": WBEM_E_NOT_FOUND (0x80041002): The object was not found.\n"
        "  Description: none\n  Operation: GetObject\n  ParameterInfo: x\n  ProviderName: p\n"
        "  StatusCode: WBEM_E_NOT_FOUND (0x80041002)\n");
}

FakeContent LunClass()
{
    FakeContent definition = Definition(L"Zarn_FCoeLUN");
    definition.properties = {{L"DeviceID", CComVariant(), CIM_STRING, {}},
                             {L"ID", CComVariant(), CIM_UINT32, {}},
                             {L"Primary", CComVariant(), CIM_BOOLEAN, {}}};
    return definition;
}

TEST_F(ClientCommands, GetWritesEachKeyAsItsTypeWantsIt)
{
    struct Case
    {
        std::vector<std::string> keys;
        std::wstring path;
    };
    const Case cases[] = {
        {{"DeviceID=eth0", "ID=5"}, L"Zarn_FCoeLUN.DeviceID=\"eth0\",ID=5"},
        {{"DeviceID=a\\b\"c"}, L"Zarn_FCoeLUN.DeviceID=\"a\\\\b\\\"c\""},
        {{"deviceid="}, L"Zarn_FCoeLUN.deviceid=\"\""},
        {{"ID=-1"}, L"Zarn_FCoeLUN.ID=-1"},
        {{"ID=0x1F"}, L"Zarn_FCoeLUN.ID=0x1F"},
        {{"Primary=true"}, L"Zarn_FCoeLUN.Primary=true"},
    };
    services.OnGetObject(L"Zarn_FCoeLUN", Objects({LunClass()}));
    for (const auto& c : cases)
    {
        std::vector<std::string> arguments{"get", "Zarn_FCoeLUN"};
        for (const auto& key : c.keys)
        {
            arguments.insert(arguments.end(), {"--key", key});
        }
        RunOn(services, arguments);
        EXPECT_EQ(services.Calls().back(), L"GetObject(" + c.path + L")");
    }
}

TEST_F(ClientCommands, GetRefusesKeysThatDoNotFitTheClass)
{
    struct Case
    {
        std::string key;
        std::string message;
        ExitCode code;
    };
    const Case cases[] = {
        {"Colour=red", "Zarn_FCoeLUN has no key Colour", ExitCode::NotFound},
        {"ID=five", "the key ID wants a whole number, not five", ExitCode::Usage},
        {"ID=", "the key ID wants a whole number, not ", ExitCode::Usage},
        {"ID=5\"", "the key ID wants a whole number, not 5\"", ExitCode::Usage},
        {"ID=0x", "the key ID wants a whole number, not 0x", ExitCode::Usage},
        {"Primary=1", "the key Primary wants TRUE or FALSE, not 1", ExitCode::Usage},
    };
    services.OnGetObject(L"Zarn_FCoeLUN", Objects({LunClass()}));
    for (const auto& c : cases)
    {
        const Ran ran = RunOn(services, {"get", "Zarn_FCoeLUN", "--key", c.key});
        EXPECT_EQ(ran.errors, "orlwmi: " + c.message + "\n");
        EXPECT_EQ(ran.code, c.code);
        EXPECT_EQ(services.Calls().back(), L"GetObject(Zarn_FCoeLUN)") << "the instance is not asked for";
    }
}

TEST_F(ClientCommands, GetTellsClassesFromInstances)
{
    services.OnGetObject(L"Zarn_FCoeLUN", Objects({LunClass()}));
    EXPECT_EQ(RunOn(services, {"get", "Zarn_FCoeLUN"}).errors,
              "orlwmi: Zarn_FCoeLUN names a class: name an instance of it, or use orlwmi class\n");
    EXPECT_EQ(RunOn(services, {"get", "Zarn_FCOEHBA.DeviceID=\"eth0.1002\"", "--key", "A=b"}).errors,
              "orlwmi: Zarn_FCOEHBA.DeviceID=\"eth0.1002\" names an instance already: --key goes with a class\n");
    EXPECT_EQ(RunOn(services, {"class", "Zarn_FCOEHBA.DeviceID=\"eth0.1002\""}).errors,
              "orlwmi: Zarn_FCOEHBA.DeviceID=\"eth0.1002\" names an instance: use orlwmi get\n");
}

TEST_F(ClientCommands, QueryPassesTheTextOn)
{
    services.OnQuery(L"SELECT DeviceID FROM Zarn_FCOEHBA WHERE Name LIKE '\u00e9%'", Objects({Hba(L"a", L"b")}));
    EXPECT_EQ(Output({"query", "SELECT DeviceID FROM Zarn_FCOEHBA WHERE Name LIKE '\xC3\xA9%'", "--format", "csv",
                      "--select", "DeviceID"}),
              "DeviceID\r\na\r\n");
    EXPECT_EQ(Output({"query", "SELECT DeviceID FROM Zarn_FCOEHBA WHERE Name LIKE '\xC3\xA9%'", "--count"}), "1\n");
}

TEST_F(ClientCommands, QueryTellsWhereItIsWrong)
{
    services.OnQuery(L"SELECT",
                     Refusal(WBEM_E_INVALID_QUERY, MakeExtendedStatus(L"end of query at 7", L"ExecQuery", L"SELECT",
                                                                      L"", WBEM_E_INVALID_QUERY)));
    const Ran ran = RunOn(services, {"query", "SELECT"});
    EXPECT_EQ(ran.code, ExitCode::Failed);
    EXPECT_EQ(ran.errors,
              "orlwmi: cannot run the query SELECT: WBEM_E_INVALID_QUERY (0x80041017): The query is not valid.\n"
              "  Description: end of query at 7\n  Operation: ExecQuery\n  ParameterInfo: SELECT\n"
              "  StatusCode: WBEM_E_INVALID_QUERY (0x80041017)\n");
}

FakeContent HbaClass()
{
    FakeContent definition = Definition(L"Zarn_FCOEHBA");
    definition.mof = L"class Zarn_FCOEHBA\n{\n};\n";
    definition.properties = {
        {L"DeviceID", CComVariant(), CIM_STRING, {{L"key", CComVariant(true)}, {L"Description", Text(L"The id.")}}},
        {L"Adapter", CComVariant(), CIM_REFERENCE, {{L"CIMTYPE", Text(L"ref:Zarn_PhysicalEthernetAdapter")}}},
        {L"Sizes", CComVariant(), CIM_UINT64 | CIM_FLAG_ARRAY, {}}};
    definition.methods = {{L"CreateVirtualPort",
                           {{L"WorldWidePortName", CComVariant(), CIM_STRING, {}}},
                           {{L"PortPath", CComVariant(), CIM_STRING, {}},
                            {L"WarningMessages",
                             CComVariant(),
                             CIM_OBJECT | CIM_FLAG_ARRAY,
                             {{L"CIMTYPE", Text(L"object:Zarn_WarningMessage")}}},
                            {L"ReturnValue", CComVariant(), CIM_UINT32, {}}},
                           {{L"Description", Text(L"Makes a port.")}}},
                          {L"Nothing", {}, {}, {}}};
    return definition;
}

TEST_F(ClientCommands, ClassPrintsMof)
{
    services.OnGetObject(L"Zarn_FCOEHBA", Objects({HbaClass()}));
    EXPECT_EQ(Output({"class", "Zarn_FCOEHBA"}), "class Zarn_FCOEHBA\n{\n};\n");
}

TEST_F(ClientCommands, ClassListsMembers)
{
    services.OnGetObject(L"Zarn_FCOEHBA", Objects({HbaClass()}));
    EXPECT_EQ(Output({"class", "Zarn_FCOEHBA", "--format", "list"}),
              "Member      : DeviceID\n"
              "Type        : string\n"
              "Key         : true\n"
              "Description : The id.\n"
              "\n"
              "Member      : Adapter\n"
              "Type        : ref:Zarn_PhysicalEthernetAdapter\n"
              "Key         : false\n"
              "Description : -\n"
              "\n"
              "Member      : Sizes\n"
              "Type        : uint64[]\n"
              "Key         : false\n"
              "Description : -\n"
              "\n"
              "Member      : CreateVirtualPort()\n"
              "Type        : uint32 (in string WorldWidePortName, out string PortPath, "
              "out object:Zarn_WarningMessage[] WarningMessages)\n"
              "Key         : false\n"
              "Description : Makes a port.\n"
              "\n"
              "Member      : Nothing()\n"
              "Type        : void ()\n"
              "Key         : false\n"
              "Description : -\n");
}

TEST_F(ClientCommands, ClassesAreSortedAndWithoutTheSystems)
{
    FakeContent dynamic = Definition(L"zarn_B", L"CIM_A");
    dynamic.qualifiers[L"provider"] = Text(L"Orl2InstUtility");
    services.OnClasses(Objects({dynamic, Definition(L"__SystemClass"), Definition(L"CIM_A")}));
    EXPECT_EQ(Output({"classes"}), "Class   Superclass  Provider\n"
                                   "------  ----------  ---------------\n"
                                   "CIM_A   -           -\n"
                                   "zarn_B  CIM_A       Orl2InstUtility\n");
    EXPECT_EQ(Output({"classes", "--all", "--count"}), "3\n");
    EXPECT_EQ(Output({"classes", "--count"}), "2\n");
}

TEST_F(ClientCommands, TreeShowsAdaptersInTheWordsOfTheirOwners)
{
    services.OnEnumerate(L"Zarn_FCOEHBA",
                         Objects({Instance(L"Zarn_FCOEHBA", {{L"DeviceID", Text(L"eth0.1002")},
                                                             {L"Name", Text(L"fcoe over eth0.1002")},
                                                             {L"HBAName", Text(L"host0")},
                                                             {L"FCID", Text(L"0x10001")},
                                                             {L"BusInformation", Text(L"0000:0b:00.0")},
                                                             {L"LinkSpeed", Text(L"10 Gbit")},
                                                             {L"LinkStatus", Text(L"Online")},
                                                             {L"Model", Text(L"")},
                                                             {L"WorldWidePortName", Text(L"2000525400fc0001")},
                                                             {L"WorldWideNodeName", Text(L"1000525400fc0001")}}),
                                  Instance(L"Zarn_FCOEHBA", {{L"DeviceID", Text(L"eth1")},
                                                             {L"Name", Text(L"eth1")},
                                                             {L"FCID", Text(L"0xFFFFFFFF")},
                                                             {L"LinkStatus", Text(L"Linkdown")}})}));
    EXPECT_EQ(Output({"tree"}), "FCoE adapter eth0.1002  fcoe over eth0.1002\n"
                                "    state      Online, 10 Gbit\n"
                                "    port name  20:00:52:54:00:fc:00:01\n"
                                "    node name  10:00:52:54:00:fc:00:01\n"
                                "    FCID       0x10001\n"
                                "    host       host0\n"
                                "    bus        0000:0b:00.0\n"
                                "\n"
                                "FCoE adapter eth1\n"
                                "    state    Linkdown\n"
                                "    problem  the link is down: no cable, or the interface is switched off\n"
                                "    FCID     none, not logged in (0xFFFFFFFF)\n");
}

TEST_F(ClientCommands, TreeShowsNothingForAClassThatTheNamespaceLacks)
{
    FakeAnswer answer;
    answer.atOnce = WBEM_E_INVALID_CLASS;
    services.OnEnumerate(L"Zarn_FCOEHBA", answer);
    EXPECT_EQ(Output({"tree"}), "No FCoE adapter. Whether the agents can see one: orlwmi doctor\n");
}

TEST_F(ClientCommands, TreeTellsWhyItCannotAsk)
{
    services.OnEnumerate(L"Zarn_FCOEHBA", Refusal(WBEM_E_PROVIDER_LOAD_FAILURE));
    const Ran ran = RunOn(services, {"tree"});
    EXPECT_EQ(ran.code, ExitCode::Failed);
    EXPECT_EQ(ran.output, "");
    EXPECT_EQ(ran.errors, "orlwmi: cannot enumerate Zarn_FCOEHBA: WBEM_E_PROVIDER_LOAD_FAILURE (0x80041013): The "
                          "provider's library could not be loaded.\n");
}

} // namespace
