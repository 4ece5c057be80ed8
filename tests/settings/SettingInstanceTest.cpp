// Listing and getting settings: what is sent, and what is refused.

#include "tests/settings/Settings.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class SettingInstance : public SettingTest
{
protected:
    SettingInstance()
    {
        AddAdapter(L"eth0");
        adapterAgent.settings[L"eth0"] = {Choice(adapterAgent, L"Mode"), Number(adapterAgent, L"Queue")};
    }
    ~SettingInstance() override { EXPECT_EQ(adapterAgent.log.live, 0) << "a setting was not deleted"; }

    // A path whose keys are these, of either class.
    static std::wstring PathOf(const std::wstring& id, const std::wstring& caption)
    {
        return L"Zarn_FCOESettingEnum.Caption=\"" + caption + L"\",ParentId=\"" + id + L"\",ParentType=\"NIC\"";
    }
};

TEST_F(SettingInstance, OfAChoiceCarriesItsPropertiesInOrder)
{
    const Outcome outcome = Enumerate(enumManager);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_THAT(Shown(outcome.instances[0]),
                ElementsAre(L"ParentType=NIC", L"ParentId=eth0", L"Caption=caption of Mode",
                            L"RegistryKeyword=*Keyword", L"Name=Adapter One", L"Description=What it does",
                            L"DisplayName=For display", L"ExposeLevel=-2", L"Writable=TRUE", L"MiniHelp=A short help",
                            L"GroupId=65535", L"Grouped=TRUE", L"DetailId=18446744073709551615", L"CurrentValue=3",
                            L"RegistryValue=3", L"DisplayValue=three", L"DefaultValue=2", L"PossibleValues={2, 3, 5}",
                            L"DescriptionMap={two, three, five}"));
    const std::vector<VARTYPE> types = {VT_BSTR,           VT_BSTR, VT_BSTR, VT_BSTR, VT_BSTR, VT_BSTR,
                                        VT_BSTR,           VT_I4,   VT_BOOL, VT_BSTR, VT_I4,   VT_BOOL,
                                        VT_BSTR,           VT_BSTR, VT_BSTR, VT_BSTR, VT_BSTR, VT_ARRAY | VT_I4,
                                        VT_ARRAY | VT_BSTR};
    for (std::size_t i = 0; i < types.size(); ++i)
        EXPECT_EQ(outcome.instances[0][i].type, types[i]) << outcome.instances[0][i];
}

TEST_F(SettingInstance, OfANumberCarriesItsPropertiesInOrder)
{
    const Outcome outcome = Enumerate(intManager);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_THAT(Shown(outcome.instances[0]),
                ElementsAre(L"ParentType=NIC", L"ParentId=eth0", L"Caption=caption of Queue",
                            L"RegistryKeyword=*Keyword", L"Name=Adapter One", L"Description=What it does",
                            L"DisplayName=For display", L"ExposeLevel=-2", L"Writable=TRUE", L"MiniHelp=A short help",
                            L"GroupId=65535", L"Grouped=TRUE", L"DetailId=18446744073709551615", L"CurrentValue=3",
                            L"RegistryValue=3", L"DisplayValue=three packets", L"min=1", L"max=600", L"step=2",
                            L"base=10", L"DefaultValue=60", L"Scale=4"));
    for (std::size_t i = 13; i < outcome.instances[0].size(); ++i)
        EXPECT_EQ(outcome.instances[0][i].type, VT_BSTR) << outcome.instances[0][i];
}

TEST_F(SettingInstance, NegativeNumbersKeepTheirSignAndTheBaseExtendsIt)
{
    adapterAgent.settings[L"eth0"] = {[this]
                                      {
                                          auto setting = std::make_unique<TestIntSetting>(adapterAgent.log);
                                          setting->Base = -2;
                                          setting->Min = -2147483647 - 1;
                                          setting->Current = -1;
                                          return setting;
                                      }};
    const Outcome outcome = Enumerate(intManager);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"base"), L"18446744073709551614");
    EXPECT_EQ(ValueOf(outcome.instances[0], L"min"), L"-2147483648");
    EXPECT_EQ(ValueOf(outcome.instances[0], L"CurrentValue"), L"-1");
}

TEST_F(SettingInstance, WithoutAGroupHasNoGroupId)
{
    adapterAgent.settings[L"eth0"] = {[this]
                                      {
                                          auto setting = std::make_unique<TestEnumSetting>(adapterAgent.log);
                                          setting->GroupId = 7;
                                          return setting;
                                      }};
    const Outcome outcome = Enumerate(enumManager);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"GroupId"), L"<none>");
    EXPECT_EQ(ValueOf(outcome.instances[0], L"Grouped"), L"FALSE");
    EXPECT_EQ(ValueOf(outcome.instances[0], L"Writable"), L"FALSE");
}

TEST_F(SettingInstance, CarriesFivePropertiesWhenTheOthersAreSuppressed)
{
    suppressProperties = 1;
    for (CKfgSettingMgrRoot* manager :
         {static_cast<CKfgSettingMgrRoot*>(&enumManager), static_cast<CKfgSettingMgrRoot*>(&intManager)})
    {
        const Outcome outcome = Enumerate(*manager);
        ASSERT_EQ(outcome.instances.size(), 1U);
        EXPECT_THAT(Shown(outcome.instances[0]),
                    ElementsAre(L"ParentType=NIC", L"ParentId=eth0",
                                manager == &enumManager ? L"Caption=caption of Mode" : L"Caption=caption of Queue",
                                L"RegistryKeyword=*Keyword", L"Name=Adapter One"));
    }
}

// What is refused is left out; the rest of the instance still tells the client much.
TEST_F(SettingInstance, PropertiesThatAreRefusedAreLeftOut)
{
    enumClass->putFails[L"Caption"] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    enumClass->putFails[L"PossibleValues"] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    const Outcome outcome = Enumerate(enumManager);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"Caption"), L"<none>");
    EXPECT_EQ(ValueOf(outcome.instances[0], L"DescriptionMap"), L"{two, three, five}");
}

TEST_F(SettingInstance, LookupOfTheAdapterMayFail)
{
    adapterAgent.answers[L"GetAdapter"] = {1168, 0};
    adapterAgent.adapterName = L"";
    const Outcome outcome = Enumerate(enumManager);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"Name"), L"");
    EXPECT_EQ(ValueOf(outcome.instances[0], L"DescriptionMap"), L"{two, three, five}");
}

TEST_F(SettingInstance, EnumerationAsksForTheAdaptersAndThenForEachOnesSettings)
{
    AddAdapter(L"eth1");
    adapterAgent.settings[L"eth1"] = {Number(adapterAgent, L"A"), nullptr, Other(adapterAgent, L"B"),
                                      Choice(adapterAgent, L"C"), Choice(adapterAgent, L"D")};
    status = 0x77;
    const Outcome outcome = Enumerate(enumManager);
    EXPECT_THAT(agent.calls, ElementsAre(L"EnumerateHBAs()"));
    EXPECT_EQ(agent.statusSeen.ulErrCode, 0x77U);
    EXPECT_THAT(adapterAgent.calls,
                ElementsAre(L"EnumerateSettings(eth0)", L"GetAdapter(eth0, false)", L"EnumerateSettings(eth1)",
                            L"GetAdapter(eth1, false)", L"GetAdapter(eth1, false)"));
    ExpectStatusInEveryCall(0x77);
    ASSERT_EQ(outcome.instances.size(), 3U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"Caption"), L"caption of Mode");
    EXPECT_EQ(ValueOf(outcome.instances[1], L"Caption"), L"caption of C");
    EXPECT_EQ(ValueOf(outcome.instances[1], L"ParentId"), L"eth1");
    EXPECT_EQ(ValueOf(outcome.instances[2], L"Caption"), L"caption of D");
    EXPECT_EQ(services->Lookups(), std::vector<std::wstring>{L"Zarn_FCOESettingEnum"});
}

TEST_F(SettingInstance, AdapterWhoseSettingsCannotBeListedIsTracedAndPassedOver)
{
    agent.hbas.clear();
    for (const wchar_t* id : {L"eth0", L"eth1", L"eth2"})
    {
        AddAdapter(id);
        adapterAgent.settings[id] = {Choice(adapterAgent, L"Mode")};
    }
    adapterAgent.answers[L"EnumerateSettings(eth1)"] = {5, 0};
    const TraceCapture trace;
    const Outcome outcome = Enumerate(enumManager);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 2U);
    EXPECT_EQ(ValueOf(outcome.instances[1], L"ParentId"), L"eth2");
    EXPECT_THAT(trace.Messages(), Contains("EnumerateFCOESettings failed for eth1").Times(1));
}

TEST_F(SettingInstance, AdaptersThatCannotBeListedAreARefusal)
{
    agent.answer = false;
    for (CKfgSettingMgrRoot* manager :
         {static_cast<CKfgSettingMgrRoot*>(&enumManager), static_cast<CKfgSettingMgrRoot*>(&intManager)})
    {
        ExpectRefusal([&] { Enumerate(*manager); },
                      {0x8004091A, L"OrlFcoeAgent::EnumerateHBAs", 0x80041002, L"Src\\KfgSettingMgrRoot", 219});
    }
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_F(SettingInstance, ClassThatTheNamespaceLacksIsRefusedBeforeTheAgentsAreAsked)
{
    services.Attach(new FakeWbemServices());
    EXPECT_THROW(Enumerate(enumManager), CWomProviderException);
    EXPECT_THROW(Get(enumManager, PathOf(L"eth0", L"Mode").c_str()), CWomProviderException);
    EXPECT_THAT(agent.calls, IsEmpty());
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
}

TEST_F(SettingInstance, InstanceThatCannotBeMadeEndsTheEnumeration)
{
    adapterAgent.settings[L"eth0"] = {Choice(adapterAgent, L"A"), Choice(adapterAgent, L"B"),
                                      Choice(adapterAgent, L"C")};
    enumClass->spawn = [](ULONG n) { return n == 2 ? static_cast<HRESULT>(WBEM_E_FAILED) : S_OK; };
    EXPECT_THROW(Enumerate(enumManager), CWomProviderException);
    EXPECT_EQ(sink->Taken(), 1U) << "what was sent before stays sent";
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"EnumerateSettings(eth0)", L"GetAdapter(eth0, false)"))
        << "the adapter is looked up for an instance that is there";
}

TEST_F(SettingInstance, InstanceThatTheClientRefusesEndsTheRequest)
{
    adapterAgent.settings[L"eth0"] = {Choice(adapterAgent, L"Mode"), Choice(adapterAgent, L"B")};
    sink->indicate = [](ULONG) { return static_cast<HRESULT>(WBEM_E_FAILED); };
    const std::wstring path = PathOf(L"eth0", L"Mode");
    const TraceCapture trace;
    EXPECT_THROW(Enumerate(enumManager), CWomProviderException);
    EXPECT_EQ(sink->IndicateCalls(), 1U) << "no other setting is tried";
    EXPECT_THROW(Get(enumManager, path.c_str()), CWomProviderException);
    EXPECT_EQ(sink->IndicateCalls(), 2U);
    EXPECT_TRUE(sink->Objects().empty());
    EXPECT_THAT(trace.Messages(), Not(Contains("KfgSettingMgrRoot::SendInstance Exited")));
}

TEST_F(SettingInstance, LackOfMemoryForTheClassNameLeavesTheRequestBeforeTheAgentsAreAsked)
{
    for (CKfgSettingMgrRoot* manager :
         {static_cast<CKfgSettingMgrRoot*>(&enumManager), static_cast<CKfgSettingMgrRoot*>(&intManager)})
        ExpectLackOfMemory([&] { Enumerate(*manager); });
    EXPECT_THAT(agent.calls, IsEmpty());
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
}

TEST_F(SettingInstance, TracesOfAnEnumeration)
{
    const TraceCapture trace;
    Enumerate(intManager);
    EXPECT_EQ(
        trace.TieredMessages(),
        (std::vector<std::string>{
            "1 ENTRY:  CKfgSettingMgrRoot::CreateInstanceEnumAsync", "2 ENTRY:  CKfgSettingMgrRoot::SendInstance",
            "3 ENTRY:  CKfgSettingIntMgr::PutDataIntoCimObject", "3 EXIT:  CKfgSettingIntMgr::PutDataIntoCimObject",
            "2 KfgSettingMgrRoot::SendInstance Exited", "2 EXIT:  CKfgSettingMgrRoot::SendInstance",
            "1 EXIT:  CKfgSettingMgrRoot::CreateInstanceEnumAsync"}));
}

TEST_F(SettingInstance, IsGotByItsKeysInAnyOrderAndOfAnyParentType)
{
    status = 0x77;
    for (const wchar_t* path :
         {L"Zarn_FCOESettingEnum.Caption=\"Mode\",ParentId=\"eth0\",ParentType=\"NIC\"",
          L"Zarn_FCOESettingEnum.ParentType=\"anything\",ParentId=\"eth0\",Caption=\"Mode\"",
          L"\\\\.\\root\\KESTA:Zarn_FCOESettingEnum.PARENTTYPE=\"\",caption=\"Mode\",ParentId=\"eth0\""})
    {
        adapterAgent.calls.clear();
        adapterAgent.statuses.clear();
        const Outcome outcome = Get(enumManager, path);
        EXPECT_EQ(outcome.status, 0);
        ASSERT_EQ(outcome.instances.size(), 1U) << Narrow(path);
        EXPECT_EQ(ValueOf(outcome.instances[0], L"Caption"), L"caption of Mode");
        EXPECT_EQ(ValueOf(outcome.instances[0], L"ParentType"), L"NIC");
        EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)", L"GetAdapter(eth0, false)"));
        ExpectStatusInEveryCall(0x77);
    }
    EXPECT_THAT(agent.calls, IsEmpty());
}

TEST_F(SettingInstance, PathWithoutAKeyIsRefusedBeforeTheAgentIsAsked)
{
    for (const wchar_t* path : {L"Zarn_FCOESettingEnum.ParentId=\"eth0\",ParentType=\"NIC\"",
                                L"Zarn_FCOESettingEnum.Caption=\"Mode\",ParentType=\"NIC\"",
                                L"Zarn_FCOESettingEnum.Caption=\"Mode\",ParentId=\"eth0\"",
                                L"Zarn_FCOESettingEnum.A=\"\"", L"Zarn_FCOESettingEnum"})
    {
        ExpectRefusal([&] { Get(enumManager, path); }, {0x8004090F, path, 0x80041002, L"Src\\KfgSettingMgrRoot", 106});
    }
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
    EXPECT_TRUE(services->Lookups().empty());
}

TEST_F(SettingInstance, SettingThatTheAgentDoesNotHandOutIsARefusalInTheAgentsTerms)
{
    const std::wstring path = PathOf(L"eth0", L"None");
    ExpectRefusal([&] { Get(enumManager, path.c_str()); },
                  {1168, L"OrlAdapterAgent::GetSetting", 0x80041001, L"Src\\KfgSettingMgrRoot", 127, CResult{1168, 5}});
    // A failed HRESULT of the agent is the client's status.
    adapterAgent.unknown = {0x80041002, 6};
    ExpectRefusal([&] { Get(enumManager, path.c_str()); }, {0x80041002, L"OrlAdapterAgent::GetSetting", 0x80041002,
                                                            L"Src\\KfgSettingMgrRoot", 127, CResult{0x80041002, 6}});
    // A success without a setting.
    adapterAgent.unknown = {0, 0};
    ExpectRefusal([&] { Get(enumManager, path.c_str()); },
                  {0, L"OrlAdapterAgent::GetSetting", 0x80041001, L"Src\\KfgSettingMgrRoot", 127, CResult{0, 0}});
    // A failure with one: it is deleted.
    adapterAgent.answers[L"GetSetting"] = {9, 0};
    ExpectRefusal([&] { Get(enumManager, PathOf(L"eth0", L"Mode").c_str()); },
                  {9, L"OrlAdapterAgent::GetSetting", 0x80041001, L"Src\\KfgSettingMgrRoot", 127, CResult{9, 0}});
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_F(SettingInstance, SettingOfAnotherKindIsNotFound)
{
    adapterAgent.settings[L"eth0"].push_back(Other(adapterAgent, L"Third"));
    const struct
    {
        CKfgSettingMgrRoot& manager;
        const wchar_t* name;
    } cases[] = {{enumManager, L"Queue"}, {enumManager, L"Third"}, {intManager, L"Mode"}, {intManager, L"Third"}};
    for (const auto& row : cases)
    {
        ExpectRefusal([&] { Get(row.manager, PathOf(L"eth0", row.name).c_str()); },
                      {0x8004090F, L"", 0x80041002, L"Src\\KfgSettingMgrRoot", 138});
    }
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_F(SettingInstance, SettingIsDeletedWhenItCannotBeSent)
{
    enumClass->spawn = [](ULONG) -> HRESULT { throw std::runtime_error("of no kind that is known"); };
    EXPECT_THROW(Get(enumManager, PathOf(L"eth0", L"Mode").c_str()), std::runtime_error);
    EXPECT_EQ(adapterAgent.log.live, 0);
}

TEST_F(SettingInstance, TracesOfAGet)
{
    const TraceCapture trace;
    Get(enumManager, PathOf(L"eth0", L"Mode").c_str());
    EXPECT_EQ(trace.TieredMessages(),
              (std::vector<std::string>{
                  "1 ENTRY:  CKfgSettingMgrRoot::GetObjectAsync", "2 ENTRY:  CKfgSettingMgrRoot::SendInstance",
                  "3 ENTRY:  CKfgSettingEnumMgr::PutDataIntoCimObject",
                  "3 EXIT:  CKfgSettingEnumMgr::PutDataIntoCimObject", "2 KfgSettingMgrRoot::SendInstance Exited",
                  "2 EXIT:  CKfgSettingMgrRoot::SendInstance", "1 EXIT:  CKfgSettingMgrRoot::GetObjectAsync"}));
}

} // namespace
} // namespace orl::test
