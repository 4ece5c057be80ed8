// settings, set and reset: what they ask the service, what they print, and how they end.
#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orl::client;
using namespace orl::test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{

CComVariant Text(const wchar_t* text)
{
    return CComVariant(text);
}

FakeProperty Number(const wchar_t* name, const wchar_t* value)
{
    return {name, Text(value), CIM_SINT64, {}};
}

FakeProperty Flag(const wchar_t* name, bool value)
{
    return {name, CComVariant(value), CIM_BOOLEAN, {}};
}

template <typename T>
CComVariant List(VARTYPE type, const std::vector<T>& items)
{
    CComVariant list;
    list.parray = SafeArrayCreateVector(type, 0, static_cast<ULONG>(items.size()));
    list.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    for (size_t i = 0; i < items.size(); ++i)
    {
        auto index = static_cast<LONG>(i);
        const CComVariant item(items[i]);
        EXPECT_EQ(
            SafeArrayPutElement(list.parray, &index,
                                type == VT_BSTR ? static_cast<void*>(item.bstrVal) : const_cast<LONG*>(&item.lVal)),
            S_OK);
    }
    return list;
}

constexpr const wchar_t* MtuPath = L"Zarn_FCOESettingInt.Caption=\"Mtu\",ParentId=\"eth0\",ParentType=\"NIC\"";
constexpr const wchar_t* ModePath =
    L"Zarn_FCOESettingEnum.Caption=\"ControllerMode\",ParentId=\"eth0\",ParentType=\"NIC\"";

FakeContent Mtu(const wchar_t* value)
{
    FakeContent setting = Instance(L"Zarn_FCOESettingInt", {{L"ParentType", Text(L"NIC")},
                                                            {L"ParentId", Text(L"eth0")},
                                                            {L"Caption", Text(L"Mtu")},
                                                            {L"DisplayName", Text(L"Frame size (bytes)")},
                                                            {L"Description", Text(L"Of Ethernet.")},
                                                            {L"MiniHelp", Text(L"2158 or more.")},
                                                            {L"DisplayValue", Text(value)}});
    for (const auto& property : {Number(L"CurrentValue", value), Number(L"RegistryValue", value), Number(L"min", L"68"),
                                 Number(L"max", L"65535"), Number(L"step", L"1"), Number(L"base", L"10"),
                                 Number(L"DefaultValue", L"2500"), Flag(L"Writable", true)})
    {
        setting.properties.push_back(property);
    }
    setting.system[L"__RELPATH"] = Text(MtuPath);
    return setting;
}

FakeContent Mode(const wchar_t* value, const wchar_t* text)
{
    FakeContent setting =
        Instance(L"Zarn_FCOESettingEnum",
                 {{L"ParentId", Text(L"eth0")}, {L"Caption", Text(L"ControllerMode")}, {L"DisplayValue", Text(text)}});
    setting.properties.push_back(Number(L"CurrentValue", value));
    setting.properties.push_back(Number(L"DefaultValue", L"1"));
    setting.properties.push_back({L"PossibleValues", List<LONG>(VT_I4, {1, 2}), CIM_SINT32 | CIM_FLAG_ARRAY, {}});
    setting.properties.push_back(
        {L"DescriptionMap", List<const wchar_t*>(VT_BSTR, {L"Fabric", L"VN2VN"}), CIM_STRING | CIM_FLAG_ARRAY, {}});
    setting.properties.push_back(Flag(L"Writable", false));
    setting.system[L"__RELPATH"] = Text(ModePath);
    return setting;
}

FakeContent SettingClass(const wchar_t* name)
{
    FakeContent definition = Definition(name);
    const std::map<std::wstring, CComVariant> writable = {{L"write", CComVariant(true)}};
    definition.properties = {{L"Caption", CComVariant(), CIM_STRING, {}},
                             {L"CurrentValue", CComVariant(), CIM_SINT64, writable},
                             {L"RegistryValue", CComVariant(), CIM_SINT64, writable},
                             {L"DisplayValue", CComVariant(), CIM_STRING, writable}};
    definition.methods = {{L"SetDefault", {}, {}, {}},
                          {L"ValidateAndSetSetting",
                           {{L"CurrentValue", CComVariant(), CIM_SINT64, {}},
                            {L"RegistryValue", CComVariant(), CIM_SINT64, {}},
                            {L"DisplayValue", CComVariant(), CIM_STRING, {}},
                            {L"SetValuesOnNoError", CComVariant(), CIM_UINT32, {}}},
                           {},
                           {}}};
    return definition;
}

FakeContent Message(int kind, const wchar_t* text)
{
    FakeContent message = Instance(L"Zarn_WarningMessage", {{L"Message", Text(text)}});
    message.properties.push_back({L"Kind", CComVariant(kind), CIM_UINT32, {}});
    return message;
}

FakeContent Answer(bool isDone, const std::vector<FakeContent>& messages)
{
    FakeContent out = Instance(L"__PARAMETERS", {});
    FakeProperty list{L"WarningMessages", CComVariant(), CIM_OBJECT | CIM_FLAG_ARRAY, {}};
    list.value.parray = SafeArrayCreateVector(VT_UNKNOWN, 0, static_cast<ULONG>(messages.size()));
    list.value.vt = VT_ARRAY | VT_UNKNOWN;
    for (size_t i = 0; i < messages.size(); ++i)
    {
        auto index = static_cast<LONG>(i);
        EXPECT_EQ(SafeArrayPutElement(list.value.parray, &index, MakeFakeObject(messages[i]).p), S_OK);
    }
    out.properties = {list, {L"ReturnValue", isDone ? CComVariant(0) : CComVariant(), CIM_UINT32, {}}};
    return out;
}

// One object at the first look and another at each later one.
FakeAnswer FirstThen(const FakeContent& first, const FakeContent& later)
{
    FakeAnswer answer = Objects({first});
    answer.make = [first, later, looks = std::make_shared<int>(0)](size_t) { return (*looks)++ == 0 ? first : later; };
    return answer;
}

class ClientSettings : public testing::Test
{
protected:
    FakeServices services;

    void SetUp() override
    {
        const FakeContent hba = Instance(L"Zarn_FCOEHBA", {{L"DeviceID", Text(L"eth0")}});
        services.OnQuery(L"SELECT DeviceID FROM Zarn_FCOEHBA WHERE DeviceID = 'eth0'", Objects({hba}));
        services.OnQuery(L"SELECT * FROM Zarn_FCOESettingEnum WHERE ParentId = 'eth0'",
                         Objects({Mode(L"1", L"Fabric")}));
        services.OnQuery(L"SELECT * FROM Zarn_FCOESettingInt WHERE ParentId = 'eth0'", Objects({Mtu(L"1500")}));
        services.OnGetObject(L"Zarn_FCOESettingInt", Objects({SettingClass(L"Zarn_FCOESettingInt")}));
        services.OnGetObject(L"Zarn_FCOESettingEnum", Objects({SettingClass(L"Zarn_FCOESettingEnum")}));
        services.OnGetObject(MtuPath, Objects({Mtu(L"2500")}));
        services.OnMethod(MtuPath, L"ValidateAndSetSetting", Objects({Answer(true, {})}));
        services.OnMethod(MtuPath, L"SetDefault", Objects({Answer(true, {})}));
    }

    std::string Output(const std::vector<std::string>& arguments)
    {
        const Ran ran = RunOn(services, arguments);
        EXPECT_EQ(ran.errors, "");
        EXPECT_EQ(ran.code, ExitCode::Done);
        return ran.output;
    }
};

TEST_F(ClientSettings, AreShownInATable)
{
    EXPECT_EQ(Output({"settings", "eth0"}),
              "Adapter  Setting         Current  Default  Allowed        Writable  Name\n"
              "-------  --------------  -------  -------  -------------  --------  ------------------\n"
              "eth0     ControllerMode  Fabric   Fabric   Fabric, VN2VN  no\n"
              "eth0     Mtu             1500     2500     68 to 65535    yes       Frame size (bytes)\n");
}

TEST_F(ClientSettings, AreShownWithHelpInAList)
{
    services.OnQuery(L"SELECT * FROM Zarn_FCOESettingEnum WHERE ParentId = 'eth0'", Objects({}));
    EXPECT_EQ(Output({"settings", "eth0", "--format", "list"}),
              "Adapter     : eth0\n"
              "Setting     : Mtu\n"
              "Current     : 1500\n"
              "Default     : 2500\n"
              "Allowed     : 68 to 65535\n"
              "Writable    : yes\n"
              "Name        : Frame size (bytes)\n"
              "Help        : 2158 or more.\n"
              "Description : Of Ethernet.\n"
              "Path        : Zarn_FCOESettingInt.Caption=\"Mtu\",ParentId=\"eth0\",ParentType=\"NIC\"\n");
}

TEST_F(ClientSettings, AreRawForPrograms)
{
    services.OnQuery(L"SELECT * FROM Zarn_FCOESettingInt WHERE ParentId = 'eth0'", Objects({}));
    EXPECT_EQ(Output({"settings", "eth0", "--format", "json"}), R"([
  {
    "Adapter": "eth0",
    "Setting": "ControllerMode",
    "DisplayName": null,
    "CurrentValue": 1,
    "DisplayValue": "Fabric",
    "DefaultValue": 1,
    "Choices": [
      {
        "Value": 1,
        "Text": "Fabric"
      },
      {
        "Value": 2,
        "Text": "VN2VN"
      }
    ],
    "Min": null,
    "Max": null,
    "Step": null,
    "Base": null,
    "Writable": false,
    "Help": null,
    "Description": null,
    "Path": "Zarn_FCOESettingEnum.Caption=\"ControllerMode\",ParentId=\"eth0\",ParentType=\"NIC\""
  }
]
)");
}

TEST_F(ClientSettings, ThatAreNotThereAreSaidNotToBe)
{
    services.OnEnumerate(L"Zarn_FCOESettingEnum", Objects({}));
    services.OnEnumerate(L"Zarn_FCOESettingInt", Objects({}));
    EXPECT_EQ(Output({"settings"}), "No setting. Whether the agents can see one: orlwmi doctor\n");
    EXPECT_EQ(Output({"settings", "--format", "json"}), "[]\n");
}

TEST_F(ClientSettings, AreSetByNameThroughTheirMethodAndReadBack)
{
    EXPECT_EQ(Output({"set", "--hba", "eth0", "--setting", "frame SIZE (bytes)", "2500"}), "eth0 Mtu: 1500 -> 2500\n");
    const std::wstring path = MtuPath;
    EXPECT_THAT(services.Calls(),
                ElementsAre(L"ExecQuery(WQL, SELECT DeviceID FROM Zarn_FCOEHBA WHERE DeviceID = 'eth0')",
                            L"ExecQuery(WQL, SELECT * FROM Zarn_FCOESettingEnum WHERE ParentId = 'eth0')",
                            L"ExecQuery(WQL, SELECT * FROM Zarn_FCOESettingInt WHERE ParentId = 'eth0')",
                            L"GetObject(Zarn_FCOESettingInt)",
                            L"ExecMethod(" + path +
                                L", ValidateAndSetSetting, CurrentValue = BSTR 2500, "
                                L"SetValuesOnNoError = I4 1)",
                            L"GetObject(" + path + L")"));
}

TEST_F(ClientSettings, AreOnlyValidatedInADryRun)
{
    EXPECT_EQ(Output({"set", "--hba", "eth0", "--setting", "Mtu", "2500", "--dry-run"}),
              "eth0 Mtu: 1500 -> 2500 would be taken; nothing is changed\n");
    EXPECT_EQ(services.Calls().back(), L"ExecMethod(" + std::wstring(MtuPath) +
                                           L", ValidateAndSetSetting, CurrentValue = BSTR 2500, "
                                           L"SetValuesOnNoError = I4 0)");
}

TEST_F(ClientSettings, TellWarningsAndRefusals)
{
    services.OnMethod(MtuPath, L"ValidateAndSetSetting", Objects({Answer(true, {Message(2, L"frames get small")})}));
    Ran ran = RunOn(services, {"set", "--hba", "eth0", "--setting", "Mtu", "100"});
    EXPECT_EQ(ran.code, ExitCode::Done);
    EXPECT_EQ(ran.errors, "warning: frames get small\n");
    EXPECT_EQ(ran.output, "eth0 Mtu: 1500 -> 2500\n");

    services.OnMethod(MtuPath, L"ValidateAndSetSetting", Objects({Answer(true, {Message(1, L"out of range")})}));
    ran = RunOn(services, {"set", "--hba", "eth0", "--setting", "Mtu", "1"});
    EXPECT_EQ(ran.code, ExitCode::NotDone);
    EXPECT_EQ(ran.errors, "error: out of range\n");
    EXPECT_EQ(ran.output, "");
}

TEST_F(ClientSettings, WhoseAdapterFailsWithoutAWordAreNotSet)
{
    for (const auto& answer : {Objects({Answer(false, {})}), Refusal(WBEM_S_NO_ERROR)})
    {
        services.OnMethod(MtuPath, L"ValidateAndSetSetting", answer);
        services.OnMethod(MtuPath, L"SetDefault", answer);
        Ran ran = RunOn(services, {"set", "--hba", "eth0", "--setting", "Mtu", "1"});
        EXPECT_EQ(ran.code, ExitCode::NotDone);
        EXPECT_EQ(ran.errors, "error: the adapter failed at ValidateAndSetSetting and does not say why\n");
        ran = RunOn(services, {"reset", "--hba", "eth0", "--setting", "Mtu"});
        EXPECT_EQ(ran.code, ExitCode::NotDone);
        EXPECT_EQ(ran.errors, "error: the adapter failed at SetDefault and does not say why\n");
        EXPECT_EQ(ran.output, "");
    }
}

TEST_F(ClientSettings, AreResetByNameOrPath)
{
    EXPECT_EQ(Output({"reset", "--hba", "eth0", "--setting", "MTU"}), "eth0 Mtu: 1500 -> 2500\n");
    services.OnGetObject(MtuPath, FirstThen(Mtu(L"9000"), Mtu(L"2500")));
    EXPECT_EQ(Output({"reset", "Zarn_FCOESettingInt.Caption=\"Mtu\",ParentId=\"eth0\",ParentType=\"NIC\""}),
              "eth0 Mtu: 9000 -> 2500\n");
    EXPECT_THAT(services.Calls(), Contains(L"ExecMethod(" + std::wstring(MtuPath) + L", SetDefault)").Times(2));
}

TEST_F(ClientSettings, ArePutBackWithNewValuesByPath)
{
    services.OnPut(L"Zarn_FCOESettingInt", Refusal(WBEM_S_NO_ERROR));
    const std::string path = "Zarn_FCOESettingInt.Caption=\"Mtu\",ParentId=\"eth0\",ParentType=\"NIC\"";
    EXPECT_EQ(Output({"set", path, "currentvalue=0x5DC", "DisplayValue=NULL"}), "changed " + path + "\n");
    EXPECT_THAT(services.Calls().back(), StartsWith(L"PutInstance(Zarn_FCOESettingInt, ParentType = BSTR NIC, "));
    EXPECT_THAT(services.Calls().back(),
                testing::HasSubstr(L", CurrentValue = BSTR 1500, RegistryValue = BSTR 2500, "));
    EXPECT_THAT(services.Calls().back(), testing::HasSubstr(L", DisplayValue = NULL, "));
}

TEST_F(ClientSettings, ArePutBackNowhereInADryRunByPath)
{
    const std::string path = "Zarn_FCOESettingInt.Caption=\"Mtu\",ParentId=\"eth0\",ParentType=\"NIC\"";
    EXPECT_EQ(Output({"set", path, "CurrentValue=5", "--dry-run"}), "would change " + path + "; nothing is changed\n");
    EXPECT_EQ(services.Calls().back(),
              L"ExecMethod(" + std::wstring(MtuPath) +
                  L", ValidateAndSetSetting, CurrentValue = BSTR 5, SetValuesOnNoError = I4 0)");
}

TEST_F(ClientSettings, TellWhyTheyCannotBePut)
{
    services.OnPut(L"Zarn_FCOESettingInt",
                   Refusal(WBEM_E_FAILED, MakeExtendedStatus(L"EBUSY", L"PutInstance", L"x", L"p", WBEM_E_FAILED)));
    const std::string path = "Zarn_FCOESettingInt.Caption=\"Mtu\",ParentId=\"eth0\",ParentType=\"NIC\"";
    const Ran ran = RunOn(services, {"set", path, "CurrentValue=5"});
    EXPECT_EQ(ran.code, ExitCode::Failed);
    EXPECT_EQ(ran.output, "");
    EXPECT_THAT(ran.errors, StartsWith("orlwmi: cannot change " + path + ": WBEM_E_FAILED (0x80041001): "));
    EXPECT_THAT(ran.errors, testing::HasSubstr("  Description: EBUSY\n"));
}

TEST_F(ClientSettings, RefuseWhatCannotBeWrittenBeforeAnythingIs)
{
    struct Case
    {
        std::vector<std::string> arguments;
        const char* message;
        ExitCode code;
    };
    const std::string path = "Zarn_FCOESettingInt.Caption=\"Mtu\",ParentId=\"eth0\",ParentType=\"NIC\"";
    const Case cases[] = {
        {{"set", path, "Caption=x"}, "the property Caption of Zarn_FCOESettingInt cannot be written", ExitCode::Usage},
        {{"set", path, "CurrentValue=5", "Colour=red"},
         "Zarn_FCOESettingInt has no property Colour",
         ExitCode::NotFound},
        {{"set", path, "CurrentValue=five"},
         "the property CurrentValue wants a whole number from -9223372036854775808 to 9223372036854775807, not five",
         ExitCode::Usage},
        {{"set", "Zarn_FCOESettingInt", "CurrentValue=5"},
         "Zarn_FCOESettingInt names a class: name an instance of it",
         ExitCode::Usage},
        {{"set", "--hba", "eth0", "--setting", "Mtv", "5"},
         "there is no setting Mtv; the nearest one is Mtu",
         ExitCode::NotFound},
        {{"set", "--hba", "eth0", "--setting", "ControllerMode", "Loop"},
         "the setting ControllerMode takes Fabric, VN2VN, not Loop",
         ExitCode::Usage},
    };
    for (const auto& c : cases)
    {
        const Ran ran = RunOn(services, c.arguments);
        EXPECT_EQ(ran.errors, "orlwmi: " + std::string(c.message) + "\n");
        EXPECT_EQ(ran.code, c.code);
        EXPECT_EQ(ran.output, "");
    }
    EXPECT_THAT(services.Calls(), Not(Contains(StartsWith(L"PutInstance"))));
    EXPECT_THAT(services.Calls(), Not(Contains(StartsWith(L"ExecMethod"))));
}

} // namespace
