// Updating a setting: what the agent is told, and when it is told nothing.

#include "tests/settings/Settings.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SettingUpdate : public SettingTest
{
protected:
    // The settings that updates leave behind outlive the test, and so does what they know.
    SettingUpdate()
    {
        adapterAgent.settings[L"eth0"] = {[] { return Setting(); }};
    }

    static std::unique_ptr<ORL_SETTING> Setting()
    {
        auto setting = std::make_unique<TestEnumSetting>(Log());
        FillCommon(*setting, L"Mode");
        setting->CurrentValue = 3;
        setting->CurrentDisplayValue = L"three";
        return setting;
    }
    static SettingLog& Log()
    {
        static SettingLog log;
        return log;
    }
};

const std::wstring MarkerText = L"TheDisplayValueIsNotSupportedForThisSetting";

TEST_F(SettingUpdate, SetsWhatTheInstanceAsksFor)
{
    status = 0x77;
    const Outcome outcome = Update(enumManager, Written({{L"CurrentValue", CComVariant(L"5")}}));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.instances.empty());
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)", L"SetSetting(eth0, Mode, 5/)"));
    ExpectStatusInEveryCall(0x77);
    EXPECT_THAT(agent.calls, IsEmpty());
    EXPECT_THAT(services->Lookups(), IsEmpty());
}

TEST_F(SettingUpdate, SetsAlsoWhatDoesNotChange)
{
    Update(enumManager, Written({{L"CurrentValue", CComVariant(L"3")}, {L"DisplayValue", CComVariant(L"three")}}));
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)", L"SetSetting(eth0, Mode, 3/three)"));
}

TEST_F(SettingUpdate, SetsTheNumberAloneWhereTheRequestSaysSo)
{
    displayValueUnsupported = 1;
    const auto instance = Written({{L"CurrentValue", CComVariant(L"5")},
                                   {L"RegistryValue", CComVariant(L"6")},
                                   {L"DisplayValue", CComVariant(L"seven")}});
    EXPECT_EQ(Update(enumManager, instance).status, 0);
    EXPECT_EQ(adapterAgent.calls.back(), L"SetSetting(eth0, Mode, 5/" + MarkerText + L")");
    // Not even a value is needed then.
    EXPECT_EQ(Update(enumManager, Written({})).status, 0);
    EXPECT_EQ(adapterAgent.calls.back(), L"SetSetting(eth0, Mode, 3/" + MarkerText + L")");
}

TEST_F(SettingUpdate, ThatConflictsOrAsksForNothingSetsNothing)
{
    const struct
    {
        const char* what;
        Values values;
    } cases[] = {{"a conflict", {{L"CurrentValue", CComVariant(L"5")}, {L"RegistryValue", CComVariant(L"6")}}},
                 {"nothing", {}}};
    for (const auto& row : cases)
    {
        SCOPED_TRACE(row.what);
        adapterAgent.calls.clear();
        const TraceCapture trace;
        EXPECT_EQ(static_cast<ULONG>(Update(enumManager, Written(row.values)).status), 0x80041001U);
        EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)"));
        EXPECT_THAT(trace.Messages(),
                    Contains("ERROR:  Detected multiple changed fields - unable to continue.").Times(1));
    }
}

TEST_F(SettingUpdate, AnswersWhatItsKindMadeOfTheInstance)
{
    AnsweringManager manager(&agent, &adapterAgent);
    manager.answer = 2; // a success of another kind
    EXPECT_EQ(Update(manager, Written({})).status, 2);
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)", L"SetSetting(eth0, Mode, 7/)"));
    adapterAgent.calls.clear();
    manager.answer = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    EXPECT_EQ(Update(manager, Written({})).status, static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH));
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)"));
}

TEST_F(SettingUpdate, OfASettingThatCannotBeReadIsRefusedInTheWordsOfTheWriting)
{
    adapterAgent.settings.clear();
    ExpectRefusal(
        [&] {
            Update(enumManager, Written({{L"CurrentValue", CComVariant(L"5")}}));
        },
        {1168, L"OrlAdapterAgent::SetSetting", 0x80041001, L"Src\\KfgSettingMgrRoot", 313, CResult{1168, 5}});
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)"));
}

TEST_F(SettingUpdate, ThatTheAgentRefusesIsRefused)
{
    adapterAgent.answers[L"SetSetting"] = {0x80070010, 3};
    ExpectRefusal(
        [&] {
            Update(enumManager, Written({{L"CurrentValue", CComVariant(L"5")}}));
        },
        {0x80070010, L"OrlAdapterAgent::SetSetting", 0x80070010, L"Src\\KfgSettingMgrRoot", 330,
         CResult{0x80070010, 3}});
}

// A success of the agent that hands out no setting.
TEST_F(SettingUpdate, GoesOnWithoutASetting)
{
    adapterAgent.settings.clear();
    adapterAgent.unknown = {0, 0};
    const auto instance = Written({{L"CurrentValue", CComVariant(L"5")},
                                   {L"RegistryValue", CComVariant(L"6")},
                                   {L"DisplayValue", CComVariant(L"seven")}});
    EXPECT_EQ(Update(enumManager, instance).status, 0);
    EXPECT_EQ(Update(intManager, instance).status, 0);
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)", L"SetSetting(eth0, Mode, 6/seven)",
                                                L"GetSetting(eth0, Mode)", L"SetSetting(eth0, Mode, 6/seven)"));
}

// The setting's fields are not what the class takes them for; only the agent can tell what the number means to it.
TEST_F(SettingUpdate, ThroughTheClassOfTheOtherKindComparesNothing)
{
    EXPECT_EQ(Update(intManager, Written({{L"CurrentValue", CComVariant(L"5")}})).status, 0);
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)", L"SetSetting(eth0, Mode, 5/5)"));
}

TEST_F(SettingUpdate, OfAnInstanceWithoutKeysNamesNoSetting)
{
    ExpectRefusal(
        [&] {
            Update(enumManager, Object({{L"CurrentValue", CComVariant(L"5")}}));
        },
        {1168, L"OrlAdapterAgent::SetSetting", 0x80041001, L"Src\\KfgSettingMgrRoot", 313, CResult{1168, 5}});
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(, )"));
}

// See settings/LeftBehind.h.
TEST_F(SettingUpdate, LeavesTheSettingBehindHoweverItEnds)
{
    const auto good = Written({{L"CurrentValue", CComVariant(L"5")}});
    int live = Log().live;
    Update(enumManager, good);
    EXPECT_EQ(Log().live, ++live);
    Update(enumManager, Written({}));
    EXPECT_EQ(Log().live, ++live);
    adapterAgent.answers[L"SetSetting"] = {1, 0};
    EXPECT_THROW(Update(enumManager, good), CWomProviderException);
    EXPECT_EQ(Log().live, ++live);
    // Also one that came with a failure.
    adapterAgent.answers[L"GetSetting"] = {1, 0};
    EXPECT_THROW(Update(enumManager, good), CWomProviderException);
    EXPECT_EQ(Log().live, ++live);
}

TEST_F(SettingUpdate, ExceptionOfTheAgentLeavesTheRequest)
{
    adapterAgent.inside = [this]
    {
        if (adapterAgent.calls.size() == 2)
            throw std::runtime_error("the agent's own");
    };
    EXPECT_THROW(Update(enumManager, Written({{L"DisplayValue", CComVariant(L"a text that has memory of its own")}})),
                 std::runtime_error);
}

TEST_F(SettingUpdate, Traces)
{
    const auto instance = Written({{L"CurrentValue", CComVariant(L"5")}});
    const TraceCapture trace;
    Update(enumManager, instance);
    EXPECT_EQ(trace.TieredMessages(), (std::vector<std::string>{"1 ENTRY:  CKfgSettingMgrRoot::UpdateInstanceAsync",
                                                                "2 ENTRY:  CKfgSettingEnumMgr::GetDataFromCimObject",
                                                                "2 EXIT:  CKfgSettingEnumMgr::GetDataFromCimObject",
                                                                "1 EXIT:  CKfgSettingMgrRoot::UpdateInstanceAsync"}));
}

} // namespace
} // namespace orl::test
