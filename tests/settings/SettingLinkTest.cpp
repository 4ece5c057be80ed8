// Zarn_FCoeSetting and Zarn_FCoE_HBA_Setting_Assoc: the same tests for both, each with its own facts.

#include "tests/settings/Settings.h"

#include "settings/Zarn_FCOESettingMgr.h"
#include "settings/Zarn_HBAToSettingAssocMgr.h"

#include <functional>
#include <stdexcept>

namespace orl::test
{
namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The facts as a client and a support tool know them.
struct Known
{
    const char* testName;
    std::function<std::unique_ptr<CWomClassManagerRoot>(COrlFcoeAgentIntf*, OrlAdapterAgent*)> make;
    std::wstring cimClass;
    std::string manager;
    std::wstring elementClass;
    std::string elementScope;
    std::string settingsFailed;
    std::wstring source;
    int keyLine;
    int settingLine;
    int hbasLine;
    int kindLine;
};

std::ostream& operator<<(std::ostream& stream, const Known& known)
{
    return stream << known.testName;
}

const Known Links[] = {
    {"FcoeSetting",
     [](COrlFcoeAgentIntf* fcoe, OrlAdapterAgent* adapter)
     { return std::make_unique<CZarn_FCOESettingMgr>(fcoe, adapter); },
     L"Zarn_FCoeSetting", "CZarn_FCOESettingMgr", L"Zarn_PhysicalEthernetAdapter",
     "CZarn_Fcoe::MakeDevicePathFromDeviceID", "EnumerateSettings failed for eth1", L"Src\\Zarn_FCOESettingMgr", 88,
     115, 192, 291},
    {"HbaToSetting",
     [](COrlFcoeAgentIntf* fcoe, OrlAdapterAgent* adapter)
     { return std::make_unique<CZarn_FcoeHBAToSettingAssocMgr>(fcoe, adapter); },
     L"Zarn_FCoE_HBA_Setting_Assoc", "CZarn_FcoeHBAToSettingAssocMgr", L"Zarn_FCOEHBA",
     "CZarn_Fcoe::MakeHBAPathFromDeviceID", "EnumerateFCOESettings failed for eth1", L"Src\\Zarn_HBAToSettingAssocMgr",
     73, 100, 178, 278},
};

class SettingLink : public SettingTest, public ::testing::WithParamInterface<Known>
{
protected:
    SettingLink()
    {
        services->Add(linkClass);
        AddAdapter(L"eth0");
        AddAdapter(L"eth1");
        adapterAgent.settings[L"eth0"] = {Choice(adapterAgent, L"Mode"), Number(adapterAgent, L"Queue")};
        adapterAgent.settings[L"eth1"] = {Number(adapterAgent, L"Mtu")};
    }
    ~SettingLink() override { EXPECT_EQ(adapterAgent.log.live, 0) << "a setting was not deleted"; }

    std::wstring ElementPath(const std::wstring& id) const
    {
        return GetParam().elementClass + L".DeviceID=\"" + id + L"\"";
    }
    static std::wstring SettingPath(const std::wstring& cimClass, const std::wstring& name, const std::wstring& id)
    {
        return cimClass + L".Caption=\"" + name + L"\",ParentId=\"" + id + L"\",ParentType=\"NIC\"";
    }
    static std::wstring Quoted(const std::wstring& path)
    {
        std::wstring quoted;
        for (const wchar_t c : path)
            quoted += c == L'"' ? std::wstring(L"\\\"") : std::wstring(1, c);
        return L"\"" + quoted + L"\"";
    }
    std::wstring LinkPath(const std::wstring& element, const std::wstring& setting) const
    {
        return GetParam().cimClass + L".Element=" + Quoted(element) + L",Setting=" + Quoted(setting);
    }
    std::wstring ModeLink() const
    {
        return LinkPath(ElementPath(L"eth0"), SettingPath(L"Zarn_FCOESettingEnum", L"Mode", L"eth0"));
    }

    void ExpectLink(const std::vector<FakePut>& puts, const std::wstring& element, const std::wstring& setting)
    {
        EXPECT_THAT(Shown(puts), ElementsAre(L"Element=" + element, L"Setting=" + setting));
    }

    const Known& known = GetParam();
    FakeClassPtr linkClass = MakeFakeClass(GetParam().cimClass);
    std::unique_ptr<CWomClassManagerRoot> manager = GetParam().make(&agent, &adapterAgent);
};

INSTANTIATE_TEST_SUITE_P(, SettingLink, ::testing::ValuesIn(Links),
                         [](const ::testing::TestParamInfo<Known>& link) { return link.param.testName; });

TEST_P(SettingLink, NamesItsClass)
{
    EXPECT_EQ(std::wstring(manager->GetCimClassName()), known.cimClass);
}

TEST_P(SettingLink, LinksEveryAdapterToEachOfItsSettings)
{
    status = 0x77;
    const Outcome outcome = Enumerate(*manager);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 3U);
    ExpectLink(outcome.instances[0], ElementPath(L"eth0"), SettingPath(L"Zarn_FCOESettingEnum", L"Mode", L"eth0"));
    ExpectLink(outcome.instances[1], ElementPath(L"eth0"), SettingPath(L"Zarn_FCOESettingInt", L"Queue", L"eth0"));
    ExpectLink(outcome.instances[2], ElementPath(L"eth1"), SettingPath(L"Zarn_FCOESettingInt", L"Mtu", L"eth1"));
    EXPECT_THAT(agent.calls, ElementsAre(L"EnumerateHBAs()"));
    EXPECT_EQ(agent.statusSeen.ulErrCode, 0x77U);
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"EnumerateSettings(eth0)", L"EnumerateSettings(eth1)"));
    ExpectStatusInEveryCall(0x77);
    EXPECT_EQ(services->Lookups(), std::vector<std::wstring>{known.cimClass});
}

TEST_P(SettingLink, OfNoAdapterIsNone)
{
    agent.hbas.clear();
    const Outcome outcome = Enumerate(*manager);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.instances, IsEmpty());
}

// Its references are what it consists of.
TEST_P(SettingLink, CarriesItsReferencesAlsoWhenPropertiesAreSuppressed)
{
    suppressProperties = 1;
    const Outcome outcome = Enumerate(*manager);
    ASSERT_EQ(outcome.instances.size(), 3U);
    EXPECT_EQ(outcome.instances[0].size(), 2U);
}

TEST_P(SettingLink, AdaptersThatCannotBeListedAreARefusal)
{
    agent.answer = false;
    ExpectRefusal([&] { Enumerate(*manager); }, {0x8004091A, L"CZarn_FcoeHBAToSettingAssocMgr::EnumerateHBAs",
                                                 0x80041002, known.source, known.hbasLine});
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
}

// An enumeration needs its class before anything else, a get its setting.
TEST_P(SettingLink, ClassThatTheNamespaceLacksIsRefused)
{
    services.Attach(new FakeWbemServices());
    EXPECT_THROW(Enumerate(*manager), CWomProviderException);
    EXPECT_THAT(agent.calls, IsEmpty());
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
    EXPECT_THROW(Get(*manager, ModeLink().c_str()), CWomProviderException);
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)"));
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_P(SettingLink, LackOfMemoryForTheClassNameLeavesTheRequestBeforeTheAgentsAreAsked)
{
    ExpectLackOfMemory([&] { Enumerate(*manager); });
    EXPECT_THAT(agent.calls, IsEmpty());
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
}

TEST_P(SettingLink, LinkThatTheClientRefusesEndsTheEnumeration)
{
    sink->indicate = [](ULONG n) { return n == 2 ? static_cast<HRESULT>(WBEM_E_FAILED) : S_OK; };
    EXPECT_THROW(Enumerate(*manager), CWomProviderException);
    EXPECT_EQ(sink->Taken(), 1U) << "what was sent before stays sent";
    EXPECT_EQ(sink->IndicateCalls(), 2U);
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"EnumerateSettings(eth0)"));
}

TEST_P(SettingLink, AdapterWhoseSettingsCannotBeListedIsTracedAndPassedOver)
{
    AddAdapter(L"eth2");
    adapterAgent.settings[L"eth2"] = {Choice(adapterAgent, L"Late")};
    adapterAgent.answers[L"EnumerateSettings(eth1)"] = {5, 0};
    const TraceCapture trace;
    const Outcome outcome = Enumerate(*manager);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 3U);
    EXPECT_EQ(ValueOf(outcome.instances[2], L"Element"), ElementPath(L"eth2"));
    EXPECT_THAT(trace.Messages(), Contains(known.settingsFailed).Times(1));
}

TEST_P(SettingLink, SettingOfAThirdKindEndsTheEnumeration)
{
    adapterAgent.settings[L"eth0"].push_back(Other(adapterAgent, L"Third"));
    ExpectRefusal([&] { Enumerate(*manager); }, {0x8004090F, L"", 0x80041002, known.source, known.kindLine});
    EXPECT_EQ(sink->Taken(), 2U) << "what was sent before stays sent";
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"EnumerateSettings(eth0)"));
}

TEST_P(SettingLink, IsGotFromThePathOfItsSetting)
{
    status = 0x77;
    const Outcome outcome = Get(*manager, ModeLink().c_str());
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 1U);
    ExpectLink(outcome.instances[0], ElementPath(L"eth0"), SettingPath(L"Zarn_FCOESettingEnum", L"Mode", L"eth0"));
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)"));
    ExpectStatusInEveryCall(0x77);
    EXPECT_THAT(agent.calls, IsEmpty());
}

TEST_P(SettingLink, IsTheSettingsAdaptersWhateverElementNames)
{
    const std::wstring setting = SettingPath(L"Zarn_FCOESettingInt", L"Mtu", L"eth1");
    for (const std::wstring& element : {ElementPath(L"eth0"), std::wstring(L"no path at all"), std::wstring()})
    {
        const Outcome outcome = Get(*manager, LinkPath(element, setting).c_str());
        ASSERT_EQ(outcome.instances.size(), 1U);
        ExpectLink(outcome.instances[0], ElementPath(L"eth1"), setting);
    }
}

// The class in the setting's path is not looked at, the setting's kind is.
TEST_P(SettingLink, NamesTheClassOfTheSettingsKind)
{
    const Outcome outcome =
        Get(*manager, LinkPath(ElementPath(L"eth0"), SettingPath(L"Zarn_FCOESettingEnum", L"Queue", L"eth0")).c_str());
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"Setting"), SettingPath(L"Zarn_FCOESettingInt", L"Queue", L"eth0"));
}

TEST_P(SettingLink, PathWithoutAKeyIsRefusedBeforeTheAgentIsAsked)
{
    const std::wstring setting = Quoted(SettingPath(L"Zarn_FCOESettingEnum", L"Mode", L"eth0"));
    for (const std::wstring& path : {known.cimClass + L".Element=\"A.B=1\"", known.cimClass + L".Setting=" + setting,
                                     known.cimClass + L".Antecedent=\"A\",Dependent=\"B\"", known.cimClass})
    {
        ExpectRefusal([&] { Get(*manager, path.c_str()); },
                      {0x8004090F, path, 0x80041002, known.source, known.keyLine});
    }
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
}

TEST_P(SettingLink, SettingPathWithoutAKeyIsRefusedByItsReaders)
{
    const struct
    {
        const wchar_t* setting;
        int line;
    } cases[] = {{L"S.Caption=\"Mode\",ParentType=\"NIC\"", 490},
                 {L"S.Caption=\"Mode\",ParentId=\"eth0\"", 529},
                 {L"S.ParentId=\"eth0\",ParentType=\"NIC\"", 567},
                 {L"S", 490},
                 {L"no path: at all", 490},
                 {L"", 490}};
    for (const auto& row : cases)
    {
        const std::wstring path = LinkPath(ElementPath(L"eth0"), row.setting);
        ExpectRefusal([&] { Get(*manager, path.c_str()); },
                      {0x8004090F, row.setting, 0x80041002, L"Src\\KfgSettingMgrRoot", row.line});
    }
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
}

TEST_P(SettingLink, SettingThatTheAgentDoesNotHandOutIsARefusalInTheAgentsTerms)
{
    const std::wstring path = LinkPath(ElementPath(L"eth0"), SettingPath(L"Zarn_FCOESettingEnum", L"None", L"eth0"));
    ExpectRefusal([&] { Get(*manager, path.c_str()); }, {1168, L"OrlAdapterAgent::GetSetting", 0x80041001, known.source,
                                                         known.settingLine, CResult{1168, 5}});
    adapterAgent.unknown = {0, 0};
    ExpectRefusal([&] { Get(*manager, path.c_str()); },
                  {0, L"OrlAdapterAgent::GetSetting", 0x80041001, known.source, known.settingLine, CResult{0, 0}});
    EXPECT_THAT(services->Lookups(), IsEmpty());
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_P(SettingLink, SettingOfAThirdKindCannotBeGot)
{
    adapterAgent.settings[L"eth0"] = {Other(adapterAgent, L"Third")};
    const std::wstring path = LinkPath(ElementPath(L"eth0"), SettingPath(L"Zarn_FCOESettingEnum", L"Third", L"eth0"));
    ExpectRefusal([&] { Get(*manager, path.c_str()); }, {0x8004090F, L"", 0x80041002, known.source, known.kindLine});
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_P(SettingLink, SettingIsDeletedWhenTheLinkCannotBeSent)
{
    linkClass->spawn = [](ULONG) -> HRESULT { throw std::runtime_error("of no kind that is known"); };
    EXPECT_THROW(Get(*manager, ModeLink().c_str()), std::runtime_error);
    EXPECT_THROW(Enumerate(*manager), std::runtime_error);
    EXPECT_EQ(adapterAgent.log.live, 0);
}

TEST_P(SettingLink, AnswersTheRestAsTheBasesDo)
{
    CWomContext context(services);
    CWomClassObject object(context, nullptr);
    CComBSTR created;
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(path.Parse(ModeLink().c_str()), WBEM_S_NO_ERROR);
    EXPECT_EQ(static_cast<ULONG>(manager->CreateInstanceAsync(object, context, created, nullptr)), 0x80041024U);
    EXPECT_EQ(static_cast<ULONG>(manager->UpdateInstanceAsync(object, context, 0, nullptr)), 0x80041003U);
    EXPECT_EQ(static_cast<ULONG>(manager->DeleteInstanceAsync(path, context, nullptr)), 0x80041003U);
    EXPECT_EQ(static_cast<ULONG>(manager->ExecMethodAsync(path, L"SetDefault", context, object, object, nullptr)),
              0x80041024U);
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
    // A query is an enumeration, which the service filters.
    CWomWQLParser query;
    query.Parse((L"SELECT * FROM " + known.cimClass).c_str());
    EXPECT_EQ(manager->ExecQueryAsync(query, context, CComPtr<IWbemObjectSink>(sink.p)), 0);
    EXPECT_EQ(sink->Taken(), 3U);
}

TEST_P(SettingLink, TracesOfAnEnumeration)
{
    adapterAgent.settings[L"eth1"].clear();
    adapterAgent.settings[L"eth0"].pop_back();
    const TraceCapture trace;
    Enumerate(*manager);
    EXPECT_THAT(trace.TieredMessages(),
                ElementsAre("1 ENTRY:  " + known.manager + "::CreateInstanceEnumAsync",
                            "2 ENTRY:  " + known.manager + "::SendInstance", "3 ENTRY:  " + known.elementScope,
                            "3 EXIT:  " + known.elementScope, "2 KfgSettingMgrRoot::MakePath",
                            "2 EXIT:  " + known.manager + "::SendInstance",
                            "1 EXIT:  " + known.manager + "::CreateInstanceEnumAsync"));
}

TEST_P(SettingLink, TracesOfAGet)
{
    const std::wstring path = ModeLink();
    const TraceCapture trace;
    Get(*manager, path.c_str());
    EXPECT_THAT(
        trace.TieredMessages(),
        ElementsAre("1 ENTRY:  " + known.manager + "::GetObjectAsync", "1 KfgSettingMgrRoot::GetObjectIdFromPath",
                    "1 KfgSettingMgrRoot::GetObjectTypeFromPath", "1 KfgSettingMgrRoot::GetSettingNameFromPath",
                    "2 ENTRY:  " + known.manager + "::SendInstance", "3 ENTRY:  " + known.elementScope,
                    "3 EXIT:  " + known.elementScope, "2 KfgSettingMgrRoot::MakePath",
                    "2 EXIT:  " + known.manager + "::SendInstance", "1 EXIT:  " + known.manager + "::GetObjectAsync"));
}

} // namespace
} // namespace orl::test
