// assoc and refs: the queries that they stand for, and results of several classes.
#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

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

FakeContent Vlan(const wchar_t* id, int number)
{
    FakeContent vlan = Instance(L"Vlan", {{L"DeviceID", Text(id)}});
    vlan.properties.push_back({L"VlanID", CComVariant(number), CIM_UINT32, {}});
    vlan.system[L"__CLASS"] = Text(L"Vlan");
    vlan.mof = L"instance of Vlan\n{\n};\n";
    return vlan;
}

FakeContent Lun(const wchar_t* id)
{
    FakeContent lun = Instance(L"Lun", {{L"DeviceID", Text(id)}});
    lun.mof = L"instance of Lun\n{\n};\n";
    return lun;
}

constexpr const char* Path = "Hba.DeviceID=\"eth0\"";

class ClientAssociations : public testing::Test
{
protected:
    FakeServices services;

    void SetUp() override
    {
        services.OnQuery(L"ASSOCIATORS OF {Hba.DeviceID=\"eth0\"}",
                         Objects({Vlan(L"eth0", 1), Lun(L"eth0"), Vlan(L"eth1", 20)}));
    }

    std::string Output(const std::vector<std::string>& arguments)
    {
        const Ran ran = RunOn(services, arguments);
        EXPECT_EQ(ran.errors, "");
        EXPECT_EQ(ran.code, ExitCode::Done);
        return ran.output;
    }
};

TEST_F(ClientAssociations, AskForWhatTheCommandLineWants)
{
    struct Case
    {
        std::vector<std::string> arguments;
        const wchar_t* query;
    };
    const Case cases[] = {
        {{"assoc", Path}, L"ASSOCIATORS OF {Hba.DeviceID=\"eth0\"}"},
        {{"refs", Path}, L"REFERENCES OF {Hba.DeviceID=\"eth0\"}"},
        {{"assoc", Path, "--assoc-class", "A"}, L"ASSOCIATORS OF {Hba.DeviceID=\"eth0\"} WHERE AssocClass = A"},
        {{"assoc", Path, "--keys-only"}, L"ASSOCIATORS OF {Hba.DeviceID=\"eth0\"} WHERE KeysOnly"},
        {{"assoc", Path, "--result-role", "Dependent", "--role", "Antecedent", "--result-class", "B", "--assoc-class",
          "A", "--keys-only"},
         L"ASSOCIATORS OF {Hba.DeviceID=\"eth0\"} WHERE AssocClass = A ResultClass = B Role = Antecedent "
         L"ResultRole = Dependent KeysOnly"},
        {{"refs", Path, "--role", "Element", "--result-class", "B"},
         L"REFERENCES OF {Hba.DeviceID=\"eth0\"} WHERE ResultClass = B Role = Element"},
        {{"assoc", "\\\\HOST\\root\\KESTA:Hba.DeviceID=\"a}b\""},
         L"ASSOCIATORS OF {\\\\HOST\\root\\KESTA:Hba.DeviceID=\"a}b\"}"},
        {{"refs", "Only=@"}, L"REFERENCES OF {Only=@}"},
    };
    for (const auto& c : cases)
    {
        std::vector<std::string> arguments = c.arguments;
        arguments.emplace_back("--count");
        RunOn(services, arguments);
        EXPECT_EQ(services.Calls().back(), L"ExecQuery(WQL, " + std::wstring(c.query) + L")");
    }
}

TEST_F(ClientAssociations, MakeThePathOfKeys)
{
    FakeContent definition = Definition(L"Vlan");
    definition.properties = {{L"DeviceID", CComVariant(), CIM_STRING, {}}, {L"VlanID", CComVariant(), CIM_UINT32, {}}};
    services.OnGetObject(L"Vlan", Objects({definition}));
    RunOn(services, {"assoc", "Vlan", "--key", "DeviceID=a\"b", "--key", "VlanID=7"});
    EXPECT_THAT(services.Calls(),
                ElementsAre(L"GetObject(Vlan)", L"ExecQuery(WQL, ASSOCIATORS OF {Vlan.DeviceID=\"a\\\"b\",VlanID=7})"));
}

TEST_F(ClientAssociations, AreRefusedBeforeAnythingIsAskedWhenTheyMakeNoSense)
{
    struct Case
    {
        std::vector<std::string> arguments;
        const char* message;
    };
    const Case cases[] = {
        {{"assoc", "Hba"}, "Hba names a class: name an instance of it"},
        {{"refs", "root\\KESTA:Hba"}, "root\\KESTA:Hba names a class: name an instance of it"},
        {{"assoc", Path, "--assoc-class", "A B"}, "\"A B\" is not the name of a class"},
        {{"assoc", Path, "--result-class", "A.B=1"}, "\"A.B=1\" is not the name of a class"},
        {{"refs", Path, "--role", "A KeysOnly"}, "\"A KeysOnly\" is not the name of a property"},
        {{"assoc", Path, "--result-role", "'A'"}, "\"'A'\" is not the name of a property"},
    };
    for (const auto& c : cases)
    {
        const Ran ran = RunOn(services, c.arguments);
        EXPECT_EQ(ran.code, ExitCode::Usage);
        EXPECT_EQ(ran.errors, "orlwmi: " + std::string(c.message) + "\n");
    }
    EXPECT_THAT(services.Calls(), IsEmpty());
}

TEST_F(ClientAssociations, PrintTablesByClass)
{
    EXPECT_EQ(Output({"assoc", Path}), "Vlan (2)\n"
                                       "\n"
                                       "DeviceID  VlanID\n"
                                       "--------  ------\n"
                                       "eth0           1\n"
                                       "eth1          20\n"
                                       "\n"
                                       "Lun (1)\n"
                                       "\n"
                                       "DeviceID\n"
                                       "--------\n"
                                       "eth0\n");
    EXPECT_EQ(Output({"assoc", Path, "--format", "list", "--select", "DeviceID"}), "Vlan (2)\n"
                                                                                   "\n"
                                                                                   "DeviceID : eth0\n"
                                                                                   "\n"
                                                                                   "DeviceID : eth1\n"
                                                                                   "\n"
                                                                                   "Lun (1)\n"
                                                                                   "\n"
                                                                                   "DeviceID : eth0\n");
}

TEST_F(ClientAssociations, NameTheClassOfEachObjectForPrograms)
{
    EXPECT_EQ(Output({"assoc", Path, "--format", "json"}), R"([
  {
    "__CLASS": "Vlan",
    "DeviceID": "eth0",
    "VlanID": 1
  },
  {
    "__CLASS": "Lun",
    "DeviceID": "eth0"
  },
  {
    "__CLASS": "Vlan",
    "DeviceID": "eth1",
    "VlanID": 20
  }
]
)");
    EXPECT_EQ(Output({"assoc", Path, "--format", "csv", "--select", "DeviceID"}),
              "__CLASS,DeviceID\r\nVlan,eth0\r\nLun,eth0\r\nVlan,eth1\r\n");
}

TEST_F(ClientAssociations, NameTheClassOnceWhenItIsSelected)
{
    EXPECT_EQ(Output({"assoc", Path, "--format", "csv", "--select", "DeviceID,__CLASS"}),
              "DeviceID,__CLASS\r\neth0,Vlan\r\neth0,Lun\r\neth1,Vlan\r\n");
}

TEST_F(ClientAssociations, PrintTheObjectsOwnTextsAndTheirNumber)
{
    EXPECT_EQ(Output({"assoc", Path, "--format", "mof"}),
              "instance of Vlan\n{\n};\n\ninstance of Lun\n{\n};\n\ninstance of Vlan\n{\n};\n");
    EXPECT_EQ(Output({"assoc", Path, "--count"}), "3\n");
}

TEST_F(ClientAssociations, PrintNothingOfNothingAndWhatCameBeforeAFailure)
{
    services.OnQuery(L"ASSOCIATORS OF {Hba.DeviceID=\"eth0\"}", Objects({}));
    EXPECT_EQ(Output({"assoc", Path}), "");
    EXPECT_EQ(Output({"assoc", Path, "--format", "json"}), "[]\n");
    FakeAnswer broken = Objects({Lun(L"eth0")});
    broken.atEnd = WBEM_E_PROVIDER_FAILURE;
    services.OnQuery(L"ASSOCIATORS OF {Hba.DeviceID=\"eth0\"}", broken);
    const Ran ran = RunOn(services, {"assoc", Path});
    EXPECT_EQ(ran.code, ExitCode::Failed);
    EXPECT_EQ(ran.output, "Lun (1)\n\nDeviceID\n--------\neth0\n");
    EXPECT_EQ(ran.errors, "orlwmi: cannot run the query ASSOCIATORS OF {Hba.DeviceID=\"eth0\"}: "
                          "WBEM_E_PROVIDER_FAILURE (0x80041004): The provider failed.\n");
}

} // namespace
