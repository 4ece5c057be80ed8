// The settings of an inventory's adapters: read, changed, kept, and what stands in the way.

#include "InventorySettings.h"

#include "agentlibs/fcoelink/Backend.h"
#include "tests/common/FailingNew.h"
#include "tests/support/TraceCapture.h"

#include <gmock/gmock.h>

namespace orl::test
{

namespace
{

using testing::ElementsAre;

const std::string San = R"({"hbas": [
    {"deviceId": "eth0", "name": "the first", "settings": [
      {"kind": "integer", "name": "Depth", "min": -10, "max": 1000, "step": 5, "default": 50, "current": 100},
      {"kind": "enumeration", "name": "Mode", "caption": "The mode", "default": 1,
       "values": [{"value": 1, "text": "Slow"}, {"value": 2, "text": "Fast"}]},
      {"kind": "integer", "name": "Fixed", "writable": false, "min": 0, "max": 9, "default": 3},
      {"kind": "other", "name": "Blob"}]},
    {"deviceId": "eth1", "settings": [
      {"kind": "integer", "name": "Depth", "min": 0, "max": 10, "default": 5}]},
    {"deviceId": "eth2"}]})";

class InventorySettingsTest : public InventorySettingFixture
{
};

} // namespace

TEST_F(InventorySettingsTest, AreListedWithEveryField)
{
    const auto agent = Agent(R"({"hbas": [{"deviceId": "eth0", "settings": [
      {"kind": "integer", "name": "Depth", "caption": "c", "description": "d", "displayName": "n", "miniHelp": "h",
       "registryKeyword": "*Depth", "group": 0, "detailId": 18446744073709551615, "writable": false,
       "exposeLevel": 4294967295, "min": -2147483648, "max": "0x7FFFFFFF", "step": 2147483647, "base": 16, "scale": -4,
       "unit": "frames", "default": -1, "current": -2147483648},
      {"kind": "enumeration", "name": "Mode", "default": -5, "current": 6,
       "values": [{"value": 6, "text": "Six"}, {"value": -5, "text": "\u00c4"}]},
      {"kind": "integer", "name": "Plain", "min": 0, "max": 1, "default": 1},
      {"kind": "other", "name": "Blob"}, {"kind": "other", "name": "Blob3", "typeCode": 3}]}]})");
    EXPECT_THAT(Lines(*agent, L"ETH0"),
                ElementsAre("int Depth|c|d|0|18446744073709551615|h|n (frames)|*Depth|fixed|4294967295|-2147483648|"
                            "-0x80000000|-1|-2147483648|2147483647|2147483647|16|-4",
                            "enum Mode|Mode||-|0||Mode||writable|0|6|Six|-5|6=Six, -5=\u00c4",
                            "int Plain|Plain||-|0||Plain||writable|0|1|1|1|0|1|1|10|1",
                            "type 1 Blob|Blob||-|0||Blob||writable|0", "type 3 Blob3|Blob3||-|0||Blob3||writable|0"));
    EXPECT_EQ(m_code, 0u);
}

TEST_F(InventorySettingsTest, BelongToAnAdapterThatIsThere)
{
    const auto agent = Agent(San);
    EXPECT_TRUE(Lines(*agent, L"eth2").empty());
    EXPECT_EQ(m_code, 0u) << "an adapter without settings";
    for (const wchar_t* unknown : {L"eth3", L""})
    {
        EXPECT_TRUE(Lines(*agent, unknown).empty());
        EXPECT_EQ(m_code, 55u);
        EXPECT_EQ(Set(*agent, unknown, L"Depth", 5), 55u);
    }
    EXPECT_EQ(Local(FromUtf8(Ask(*agent, L"eth3", L"Depth", 5))),
              "55; error 0: san.json: there is no HBA with the device id \"eth3\"");
    EXPECT_EQ(Ask(*agent, L"eth1", L"Mode", 5), "1168; error 0: There is no setting \"Mode\" on eth1.");
    ORL_ADAPTER adapter;
    EXPECT_EQ(agent->GetAdapter(L"Eth0", adapter, m_status, false).ulErrCode, 0u);
    EXPECT_EQ(adapter.Name, L"the first");
    EXPECT_FALSE(std::filesystem::exists(m_statePath));
}

TEST_F(InventorySettingsTest, AreChangedForEveryProcessAndOnTheDisk)
{
    const auto agent = Agent(San);
    const auto other = Agent();
    EXPECT_EQ(Current(*other, L"eth0", L"Depth"), "100");
    EXPECT_EQ(Set(*agent, L"ETH0", L"DEPTH", 200), 0u);
    EXPECT_EQ(Set(*agent, L"eth0", L"The Mode", 1, L"fast"), 0u) << "the text decides";
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "200");
    EXPECT_EQ(Current(*other, L"eth0", L"Depth"), "200");
    EXPECT_EQ(Current(*other, L"eth0", L"Mode"), "Fast");
    EXPECT_EQ(Current(*other, L"eth1", L"Depth"), "5") << "the adapter's own alone";
    EXPECT_EQ(State(), "{\n\"version\": 1,\n\"settings\": {\"hbas\": [\n {\"deviceId\": \"eth0\", \"values\": [\n"
                       "  {\"name\": \"Depth\", \"value\": 200},\n  {\"name\": \"Mode\", \"value\": 2}]}]}\n}\n");
    EXPECT_EQ(Set(*other, L"eth0", L"Depth", 100), 0u) << "as the file says";
    EXPECT_EQ(Set(*other, L"eth0", L"Mode", 1), 0u);
    EXPECT_EQ(State(), "{\n\"version\": 1\n}\n") << "nothing is changed any more";
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "100");
}

TEST_F(InventorySettingsTest, AreChangedByAValueThatPassesWhenItIsMeantToBeSet)
{
    const auto agent = Agent(San);
    EXPECT_EQ(Ask(*agent, L"eth0", L"Depth", 200), "0");
    EXPECT_FALSE(std::filesystem::exists(m_statePath));
    EXPECT_EQ(Ask(*agent, L"eth0", L"Depth", 200, L"", true), "0");
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "200");
    EXPECT_EQ(Ask(*agent, L"eth0", L"Depth", 0, L"0x64", true), "0");
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "100");
    EXPECT_EQ(Ask(*agent, L"eth0", L"Depth", 300, ORL_SETTING_VAL_INT::NoDisplayValue, true), "0");
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "300") << "the marker is no text";
}

TEST_F(InventorySettingsTest, RefuseWhatTheyCannotHaveAndStayAsTheyAre)
{
    const auto agent = Agent(San);
    const struct
    {
        const wchar_t* name;
        LONG number;
        const wchar_t* text;
        const char* answer;
    } cases[] = {
        {L"Depth", 1005, L"", "0; error 3002: Depth cannot be set to 1005: the value must lie between -10 and 1000."},
        {L"Depth", -11, L"", "0; error 3002: Depth cannot be set to -11: the value must lie between -10 and 1000."},
        {L"Depth", 11, L"", "0; error 3003: Depth cannot be set to 11: the value must be -10 plus a multiple of 5."},
        {L"Depth", 5, L"5 %",
         "0; error 3010: Depth cannot be set to \"5 %\": expected a whole number, in decimal or "
         "behind 0x."},
        {L"Mode", 3, L"", "0; error 3004: Mode cannot be set to \"3\": its values are Slow (1), Fast (2)."},
        {L"Mode", 1, L"Slower", "0; error 3004: Mode cannot be set to \"Slower\": its values are Slow (1), Fast (2)."},
        {L"Fixed", 4, L"", "0; error 3009: Fixed of eth0 is read-only."},
        {L"Blob", 4, L"", "0; error 3009: Blob of eth0 is read-only."},
    };
    for (const auto& wrong : cases)
    {
        EXPECT_EQ(Ask(*agent, L"eth0", wrong.name, wrong.number, wrong.text, true), wrong.answer);
        EXPECT_NE(Set(*agent, L"eth0", wrong.name, wrong.number, wrong.text), 0u) << wrong.answer;
    }
    EXPECT_NE(Reset(*agent, L"eth0", L"Fixed"), 0u);
    EXPECT_FALSE(std::filesystem::exists(m_statePath));
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "100");
}

TEST_F(InventorySettingsTest, GoToTheirDefaultWhateverTheFileSaysOfTheirCurrentValue)
{
    const auto agent = Agent(San);
    EXPECT_EQ(Reset(*agent, L"eth0", L"Depth"), 0u);
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "50");
    EXPECT_EQ(Set(*agent, L"eth0", L"Mode", 2), 0u);
    EXPECT_EQ(Reset(*agent, L"eth0", L"Mode"), 0u);
    EXPECT_EQ(Current(*agent, L"eth0", L"Mode"), "Slow");
    EXPECT_EQ(Current(*Agent(), L"eth0", L"Depth"), "50");
    EXPECT_EQ(Reset(*agent, L"eth0", L"No"), 1168u);
}

TEST_F(InventorySettingsTest, FollowAnInventoryThatIsEdited)
{
    const auto agent = Agent(San);
    EXPECT_EQ(Set(*agent, L"eth1", L"Depth", 9), 0u);
    WriteInventory(R"({"hbas": [{"deviceId": "ETH1", "settings": [
      {"kind": "integer", "name": "depth", "min": 0, "max": 8, "default": 4}]}]})");
    EXPECT_EQ(Current(*agent, L"eth1", L"Depth"), "4") << "the change does not fit any more";
    WriteInventory(R"({"hbas": [{"deviceId": "ETH1", "settings": [
      {"kind": "integer", "name": "depth", "min": 0, "max": 90, "default": 4}]}]})");
    EXPECT_EQ(Current(*agent, L"eth1", L"Depth"), "9") << "now it does";
    WriteInventory(R"({"hbas": [{"deviceId": "ETH1"}]})");
    EXPECT_TRUE(Lines(*agent, L"eth1").empty());
    WriteInventory(San);
    EXPECT_EQ(Current(*agent, L"eth1", L"Depth"), "9");
}

TEST_F(InventorySettingsTest, ShareTheStateFileWithTheVirtualPorts)
{
    const auto agent = Agent(San);
    const auto ports = MakeInventoryBackend({L"inventory", m_path.wstring(), {}});
    COrlString name = L"2101525400fc0001";
    std::vector<WarningMessageObj> warnings;
    EXPECT_EQ(Set(*agent, L"eth0", L"Depth", 200), 0u);
    EXPECT_TRUE(ports->CreateVirtualPort(L"eth0", name, warnings, m_status));
    EXPECT_EQ(Set(*agent, L"eth0", L"Mode", 2), 0u);
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "200");
    std::vector<ORL_FCOE_PORT> list;
    EXPECT_TRUE(ports->EnumeratePorts(L"eth0", list, m_status));
    EXPECT_EQ(list.size(), 1u);
    EXPECT_TRUE(ports->Uninstall(m_status));
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "200") << "what the other agent takes back is its own";
}

TEST_F(InventorySettingsTest, AreRefusedWithThePlaceWhereTheStateIsDamaged)
{
    const struct
    {
        const char* section;
        const char* error;
    } cases[] = {
        {"[]", "san.json.state:1:28: /settings: expected an object, found a list"},
        {R"({"hba": []})", "san.json.state:1:29: /settings: unknown key \"hba\"; the nearest known key is \"hbas\""},
        {R"({"hbas": [{}]})", "san.json.state:1:38: /settings/hbas/0: the key \"deviceId\" is missing"},
        {R"({"hbas": [{"deviceId": "a"}, {"deviceId": "A"}]})",
         "san.json.state:1:70: /settings/hbas/1/deviceId: another entry is of this device id, at line 1, column 51"},
        {R"({"hbas": [{"deviceId": "a", "values": [{"value": 1}]}]})",
         "san.json.state:1:67: /settings/hbas/0/values/0: the key \"name\" is missing"},
        {R"({"hbas": [{"deviceId": "a", "values": [{"name": "x"}]}]})",
         "san.json.state:1:67: /settings/hbas/0/values/0: the key \"value\" is missing"},
        {R"({"hbas": [{"deviceId": "a", "values": [{"name": "x", "value": 2147483648}]}]})",
         "san.json.state:1:90: /settings/hbas/0/values/0/value: expected a whole number from -2147483648 to "
         "2147483647, "
         "found 2147483648"},
        {R"({"hbas": [{"deviceId": "a", "values": [{"name": "x", "value": 1}, {"name": "X", "value": 1}]}]})",
         "san.json.state:1:103: /settings/hbas/0/values/1/name: another value is of this setting, at line 1, column "
         "76"},
    };
    const auto agent = Agent(San);
    for (const auto& damaged : cases)
    {
        const std::string state = "{\"version\": 1, \"settings\": " + std::string(damaged.section) + "}";
        WriteState(state);
        EXPECT_TRUE(Lines(*agent, L"eth0").empty());
        EXPECT_EQ(m_code, 13u) << damaged.error;
        EXPECT_EQ(Get(*agent, L"eth0", L"Depth"), nullptr);
        EXPECT_EQ(Set(*agent, L"eth0", L"Depth", 200), 13u);
        EXPECT_EQ(Local(FromUtf8(Ask(*agent, L"eth0", L"Depth", 200))), std::string("13; error 0: ") + damaged.error);
        EXPECT_FALSE(agent->Status().ready);
        EXPECT_EQ(Local(agent->Status().text), damaged.error);
        EXPECT_EQ(State(), state) << "it is not touched";
    }
    std::filesystem::remove(m_statePath);
    EXPECT_EQ(Set(*agent, L"eth0", L"Depth", 200), 0u);
}

TEST_F(InventorySettingsTest, SayWhyTheyCannotBeKept)
{
    const auto agent = Agent(San);
    std::filesystem::create_directory(m_statePath);
    EXPECT_NE(Set(*agent, L"eth0", L"Depth", 200), 0u);
    EXPECT_EQ(Ask(*agent, L"eth0", L"Depth", 200, L"", true).find("0; "), std::string::npos) << "no success";
}

TEST_F(InventorySettingsTest, AreCountedInTheStatus)
{
    EXPECT_EQ(Agent(San)->Status().text, L"5 settings of 3 HBAs");
    EXPECT_TRUE(Agent(San)->Status().ready);
    EXPECT_EQ(Agent(R"({"hbas": [{"deviceId": "a", "settings": [{"kind": "other", "name": "x"}]}]})")->Status().text,
              L"1 setting of 1 HBA");
    EXPECT_EQ(Agent(R"({"hbas": [{"deviceId": "a"}], "generate": {"hbas": 10, "settingsPerHba": 7}})")->Status().text,
              L"70 settings of 11 HBAs");
    std::filesystem::remove(m_path);
    EXPECT_EQ(Local(Agent()->Status().text), "san.json: does not exist");
    EXPECT_EQ(Lines(*Agent(), L"a").size(), 0u);
    EXPECT_EQ(m_code, 2u);
}

TEST_F(InventorySettingsTest, OfGeneratedAdaptersAreLikeAnyOthers)
{
    const auto agent = Agent(R"({"generate": {"hbas": 3, "settingsPerHba": 3}})");
    EXPECT_THAT(Lines(*agent, L"sim1"),
                ElementsAre("int Limit0|Limit0||-|0||Limit 0|*Limit0|writable|0|100|100|100|0|1000|1|10|1",
                            "enum Switch1|Switch1||-|0||Switch 1|*Switch1|writable|0|0|Off|0|0=Off, 1=On",
                            "int Limit2|Limit2||-|0||Limit 2|*Limit2|writable|0|100|100|100|0|1000|1|10|1"));
    EXPECT_EQ(Set(*agent, L"SIM1", L"Switch1", 0, L"on"), 0u);
    EXPECT_EQ(Current(*agent, L"sim1", L"Switch1"), "On");
    EXPECT_EQ(Current(*agent, L"sim2", L"Switch1"), "Off");
    EXPECT_TRUE(Lines(*Agent(R"({"generate": {"hbas": 1}})"), L"sim0").empty());
}

TEST_F(InventorySettingsTest, FailThrowOrWaitAsTheFaultsAskFor)
{
    const char* const names[] = {
        "GetSetting",       "SetSetting", "SetSettingToDefault", "GetAdapter", "ValidateSettingModification",
        "EnumerateSettings"};
    for (const std::string name : names)
    {
        const auto agent = Agent(San.substr(0, San.size() - 1) + R"(, "faults": [{"operation": ")" + name +
                                 R"(", "deviceId": "eth0", "effect": "fail", "code": 21, "text": "asked for"},
                                 {"operation": ")" +
                                 name + R"(", "deviceId": "eth1", "effect": "throw", "text": "boom"}]})");
        const auto codes = [&](const wchar_t* adapter)
        {
            ORL_ADAPTER record;
            std::vector<ULONG> all;
            Get(*agent, adapter, L"Depth");
            all.push_back(m_code);
            all.push_back(Set(*agent, adapter, L"Depth", 5));
            all.push_back(Reset(*agent, adapter, L"Depth"));
            all.push_back(agent->GetAdapter(adapter, record, m_status, false).ulErrCode);
            const std::string answer = Ask(*agent, adapter, L"Depth", 5);
            all.push_back(answer == "21; error 0: asked for" ? 21u : answer == "0" ? 0u : 999u);
            Lines(*agent, adapter);
            all.push_back(m_code);
            return all;
        };
        std::vector<ULONG> expected;
        for (const char* other : names)
            expected.push_back(name == other ? 21u : 0u);
        EXPECT_EQ(codes(L"eth0"), expected) << name;
        EXPECT_THROW(codes(L"eth1"), FaultException) << name;
    }
}

// The provider deletes each setting; nothing of the agent's own goes with it.
TEST_F(InventorySettingsTest, AreTheCallersToDelete)
{
    const auto agent = Agent(San);
    for (int round = 0; round < 3; ++round)
    {
        COrlPointerArray<ORL_SETTING*> settings;
        EXPECT_EQ(agent->EnumerateSettings(L"eth0", settings, m_status).ulErrCode, 0u);
        EXPECT_EQ(agent->EnumerateSettings(L"eth1", settings, m_status).ulErrCode, 0u);
        ASSERT_EQ(settings.size(), 5u) << "appended";
        settings.erase(settings.begin());
        EXPECT_EQ(settings[0]->Name, L"Mode");
        auto kept = Get(*agent, L"eth0", L"Mode");
        settings.clear();
        ORL_SETTING_VAL_INT value = ValueOf(0, L"FAST");
        kept->ApplyDisplayValue(&value);
        EXPECT_EQ(value.Value, 2);
    }
    auto outlived = Get(*Agent(), L"eth0", L"Mode");
    ORL_SETTING_VAL_INT value = ValueOf(0, L"FAST");
    outlived->ApplyDisplayValue(&value);
    EXPECT_EQ(value.Value, 2) << "without its agent";
}

TEST_F(InventorySettingsTest, AreNeitherLostNorHalfChangedWithoutMemory)
{
    const auto agent = Agent(San);
    const COrlString adapter = L"eth0";
    const COrlString name = L"Depth";
    EXPECT_EQ(Current(*agent, L"eth0", L"Depth"), "100");
    bool succeeded = false;
    LONG last = 100;
    for (unsigned nth = 1; nth < 5000 && !succeeded; ++nth)
    {
        ORL_SETTING_VAL_INT value = ValueOf(last == 100 ? 200 : 100);
        std::vector<WarningMessageObj> warnings;
        CResult result;
        COrlPointerArray<ORL_SETTING*> settings;
        ORL_SETTING* one = nullptr;
        CResult listed;
        CResult got;
        {
            const AllocationFailure failure(nth);
            result = agent->ValidateSettingModification(adapter, name, &value, warnings, m_status, 1);
        }
        {
            const AllocationFailure failure(nth);
            listed = agent->EnumerateSettings(adapter, settings, m_status);
        }
        {
            const AllocationFailure failure(nth);
            got = agent->GetSetting(adapter, name, one, m_status);
        }
        const std::unique_ptr<ORL_SETTING> owned(one);
        EXPECT_EQ(one == nullptr, got.ulErrCode != 0) << nth;
        EXPECT_TRUE(listed.ulErrCode != 0 || settings.size() == 4) << nth;
        const bool done = result.ulErrCode == 0 && warnings.empty();
        const std::string now = Current(*agent, L"eth0", L"Depth");
        EXPECT_TRUE(now == std::to_string(value.Value) || (!done && (now == "100" || now == "200")))
            << nth << ": " << now;
        last = std::stoi(now);
        succeeded = done && listed.ulErrCode == 0 && got.ulErrCode == 0;
    }
    EXPECT_TRUE(succeeded);
}

TEST_F(InventorySettingsTest, OfTheLabServeBothAdapters)
{
    CoreAgent agent(MakeInventorySettings(
        {L"inventory", (std::filesystem::path(ORL_TEST_DATA) / "inventory" / "lab.json").wstring(), {}}));
    for (const wchar_t* adapter : {L"eth0.1002", L"eth1.1002"})
    {
        COrlPointerArray<ORL_SETTING*> settings;
        ASSERT_EQ(agent.EnumerateSettings(adapter, settings, m_status).ulErrCode, 0u);
        std::size_t kinds[3] = {};
        for (const ORL_SETTING* setting : settings)
        {
            ASSERT_LT(setting->GetType(), 3u);
            ++kinds[setting->GetType()];
            EXPECT_NE(setting->MiniHelp, L"");
            EXPECT_NE(setting->RegistryKeyword, L"");
        }
        EXPECT_GE(kinds[0], 3u);
        EXPECT_EQ(kinds[1], 0u) << "one that nobody serves would stop the classes that link to settings";
        EXPECT_GE(kinds[2], 3u);
        const auto profile = Get(agent, adapter, L"performanceprofile");
        ASSERT_NE(profile, nullptr);
        const struct
        {
            const wchar_t* text;
            LONG code;
        } profiles[] = {{L"StandardServer", 2},       {L"WebServer", 3},  {L"StorageServer", 4},
                        {L"VirtualizationServer", 5}, {L"LowLatency", 6}, {L"Storage+VirtualizationServer", 7}};
        for (const auto& known : profiles)
        {
            ORL_SETTING_VAL_INT value = ValueOf(0, known.text);
            profile->ApplyDisplayValue(&value);
            EXPECT_EQ(value.Value, known.code) << ToUtf8(known.text);
        }
    }
}

} // namespace orl::test
