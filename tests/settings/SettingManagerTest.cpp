// The setting managers as such: their table, their lives, and the paths of settings.

#include "tests/settings/Settings.h"
#include "tests/support/VirtualAt.h"

#include "settings/Zarn_FCOESettingMgr.h"
#include "settings/Zarn_HBAToSettingAssocMgr.h"

namespace orl::test
{
namespace
{

class SettingManager : public SettingTest
{
protected:
    static COrlWmiAutoParsedObjectPath Parsed(const wchar_t* path)
    {
        COrlWmiAutoParsedObjectPath parsed;
        EXPECT_EQ(parsed.Parse(path), WBEM_S_NO_ERROR);
        return parsed;
    }

    CWomContext context{nullptr};
};

TEST_F(SettingManager, NamesItsClass)
{
    EXPECT_EQ(std::wstring(enumManager.GetCimClassName()), L"Zarn_FCOESettingEnum");
    EXPECT_EQ(std::wstring(intManager.GetCimClassName()), L"Zarn_FCOESettingInt");
}

TEST_F(SettingManager, KnowsItsKindOfSetting)
{
    const TestEnumSetting choice(adapterAgent.log);
    const TestIntSetting number(adapterAgent.log);
    const TestOtherSetting other(adapterAgent.log);
    EXPECT_TRUE(enumManager.IsSettingOfMyType(&choice));
    EXPECT_FALSE(enumManager.IsSettingOfMyType(&number));
    EXPECT_FALSE(enumManager.IsSettingOfMyType(&other));
    EXPECT_FALSE(intManager.IsSettingOfMyType(&choice));
    EXPECT_TRUE(intManager.IsSettingOfMyType(&number));
    EXPECT_FALSE(intManager.IsSettingOfMyType(&other));
}

TEST_F(SettingManager, HasItsOwnOperationsBehindTheFrameworksNine)
{
    const TestIntSetting number(adapterAgent.log);
    CKfgSettingMgrRoot& root = intManager;
    const auto isOfMyType = VirtualAt<bool (CKfgSettingMgrRoot::*)(const ORL_SETTING*)>(EntryOf(9, 0));
    EXPECT_TRUE((root.*isOfMyType)(&number));

    CComPtr<FakeClassObject> instance = Object({});
    CWomClassObject put(context, instance);
    const auto putData =
        VirtualAt<HRESULT (CKfgSettingMgrRoot::*)(CWomClassObject&, const ORL_SETTING*)>(EntryOf(10, 0));
    EXPECT_EQ((root.*putData)(put, &number), 0);
    EXPECT_EQ(instance->Puts().size(), 9U);

    CComPtr<FakeClassObject> request = Object({{L"CurrentValue", CComVariant(L"5")}});
    CWomClassObject source(context, request);
    ORL_SETTING_VAL_INT* value = nullptr;
    const auto getData =
        VirtualAt<HRESULT (CKfgSettingMgrRoot::*)(CWomClassObject&, ORL_SETTING_VAL_INT**, const ORL_SETTING*, int)>(
            EntryOf(11, 0));
    EXPECT_EQ((root.*getData)(source, &value, &number, 0), 0);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->Value, 5);
    delete value;
}

TEST_F(SettingManager, IgnoresWhatTheFrameworkSaysToTheProperties)
{
    const FakeClassPtr refusing = MakeFakeClass(L"Refusing", {{L"Nothing", CIM_STRING}});
    CComPtr<FakeClassObject> instance;
    instance.Attach(new FakeClassObject(refusing));
    CWomClassObject put(context, instance);
    const TestEnumSetting choice(adapterAgent.log);
    const TestIntSetting number(adapterAgent.log);
    EXPECT_EQ(enumManager.PutDataIntoCimObject(put, &choice), 0);
    EXPECT_EQ(intManager.PutDataIntoCimObject(put, &number), 0);
    EXPECT_TRUE(instance->Puts().empty());
}

TEST_F(SettingManager, AddsTheAdapterAgentAndNothingElse)
{
    EXPECT_EQ(sizeof(CKfgSettingEnumMgr), sizeof(CZarn_Fcoe) + sizeof(void*));
    EXPECT_EQ(sizeof(CKfgSettingIntMgr), sizeof(CZarn_Fcoe) + sizeof(void*));
    EXPECT_EQ(sizeof(CZarn_FCOESettingMgr), sizeof(CZarn_Fcoe) + sizeof(void*));
    EXPECT_EQ(sizeof(CZarn_FcoeHBAToSettingAssocMgr), sizeof(CZarn_Fcoe) + sizeof(void*));
}

template <typename Manager>
std::vector<std::string> TraceOfLife(COrlFcoeAgentIntf* fcoeAgent, OrlAdapterAgent* adapterAgent)
{
    const TraceCapture trace;
    {
        // As the framework destroys it.
        const std::unique_ptr<CWomClassManagerRoot> manager = std::make_unique<Manager>(fcoeAgent, adapterAgent);
    }
    return trace.Messages();
}

TEST_F(SettingManager, TracesItsLife)
{
    using Lines = std::vector<std::string>;
    const Lines made = {"ENTRY:  CKfgSettingMgrRoot::CKfgSettingMgrRoot",
                        "EXIT:  CKfgSettingMgrRoot::CKfgSettingMgrRoot"};
    const Lines gone = {"ENTRY:  CKfgSettingMgrRoot::~CKfgSettingMgrRoot",
                        "EXIT:  CKfgSettingMgrRoot::~CKfgSettingMgrRoot"};
    EXPECT_EQ(TraceOfLife<CKfgSettingEnumMgr>(&agent, &adapterAgent), (Lines{made[0], made[1], gone[0], gone[1]}));
    EXPECT_EQ(TraceOfLife<CKfgSettingIntMgr>(&agent, &adapterAgent),
              (Lines{made[0], made[1], "ENTRY:  CKfgSettingIntMgr::~CKfgSettingIntMgr",
                     "EXIT:  CKfgSettingIntMgr::~CKfgSettingIntMgr", gone[0], gone[1]}));
    EXPECT_EQ(TraceOfLife<CZarn_FCOESettingMgr>(&agent, &adapterAgent), Lines());
    EXPECT_EQ(TraceOfLife<CZarn_FcoeHBAToSettingAssocMgr>(&agent, &adapterAgent),
              (Lines{"ENTRY:  CZarn_FcoeHBAToSettingAssocMgr::CZarn_FcoeHBAToSettingAssocMgr",
                     "EXIT:  CZarn_FcoeHBAToSettingAssocMgr::CZarn_FcoeHBAToSettingAssocMgr",
                     "ENTRY:  CZarn_FcoeHBAToSettingAssocMgr::~CZarn_FcoeHBAToSettingAssocMgr",
                     "EXIT:  CZarn_FcoeHBAToSettingAssocMgr::~CZarn_FcoeHBAToSettingAssocMgr"}));
}

TEST_F(SettingManager, RefusesToCreateAndToDelete)
{
    CWomClassObject instance(context);
    CComBSTR created;
    COrlWmiAutoParsedObjectPath path = Parsed(L"X.A=\"1\"");
    for (CKfgSettingMgrRoot* manager :
         {static_cast<CKfgSettingMgrRoot*>(&enumManager), static_cast<CKfgSettingMgrRoot*>(&intManager)})
    {
        EXPECT_EQ(static_cast<ULONG>(manager->DeleteInstanceAsync(path, context, nullptr)), 0x80041003U);
        EXPECT_EQ(static_cast<ULONG>(manager->CreateInstanceAsync(instance, context, created, nullptr)), 0x80041024U);
    }
    EXPECT_TRUE(adapterAgent.calls.empty());
}

TEST_F(SettingManager, ReadsTheKeysOfAPath)
{
    const COrlWmiAutoParsedObjectPath path =
        Parsed(L"Zarn_FCOESettingInt.caption=\"Queue\",PARENTID=\"eth0\",ParentType=\"NIC\"");
    const TraceCapture trace;
    EXPECT_EQ(std::wstring(CKfgSettingMgrRoot::GetObjectIdFromPath(context, path)), L"eth0");
    EXPECT_EQ(std::wstring(CKfgSettingMgrRoot::GetObjectTypeFromPath(context, path)), L"NIC");
    EXPECT_EQ(std::wstring(CKfgSettingMgrRoot::GetSettingNameFromPath(context, path)), L"Queue");
    EXPECT_EQ(trace.Messages(), (std::vector<std::string>{"KfgSettingMgrRoot::GetObjectIdFromPath",
                                                          "KfgSettingMgrRoot::GetObjectTypeFromPath",
                                                          "KfgSettingMgrRoot::GetSettingNameFromPath"}));
}

TEST_F(SettingManager, RefusesAPathWithoutTheKey)
{
    const wchar_t* text = L"Zarn_FCOESettingInt.A=\"1\"";
    const COrlWmiAutoParsedObjectPath path = Parsed(text);
    const struct
    {
        COrlString (*read)(const CWomContext&, const COrlWmiAutoParsedObjectPath&);
        int line;
    } cases[] = {{&CKfgSettingMgrRoot::GetObjectIdFromPath, 490},
                 {&CKfgSettingMgrRoot::GetObjectTypeFromPath, 529},
                 {&CKfgSettingMgrRoot::GetSettingNameFromPath, 567}};
    for (const auto& row : cases)
        ExpectRefusal([&] { row.read(context, path); },
                      {0x8004090F, text, 0x80041002, L"Src\\KfgSettingMgrRoot", row.line});
}

TEST_F(SettingManager, WritesAPathAndReplacesTheOneBefore)
{
    CComBSTR path(L"an older path");
    const TraceCapture trace;
    CKfgSettingMgrRoot::MakePath(L"Zarn_FCOESettingEnum", L"eth0.1002", L"Mode", L"NIC", path.m_str);
    EXPECT_EQ(std::wstring(path.m_str),
              L"Zarn_FCOESettingEnum.Caption=\"Mode\",ParentId=\"eth0.1002\",ParentType=\"NIC\"");
    EXPECT_EQ(trace.Messages(), (std::vector<std::string>{"KfgSettingMgrRoot::MakePath"}));
}

TEST_F(SettingManager, CutsAPathThatIsTooLong)
{
    CComBSTR path;
    const COrlString name(std::wstring(6000, L'x').c_str());
    CKfgSettingMgrRoot::MakePath(L"C", L"eth0", name, L"NIC", path.m_str);
    EXPECT_EQ(std::wstring(path.m_str), (L"C.Caption=\"" + std::wstring(6000, L'x')).substr(0, 4999));
}

TEST_F(SettingManager, WritesNoPathWithoutMemory)
{
    CComBSTR path(L"an older path");
    OrlFailBstrAllocation(1);
    EXPECT_THROW(CKfgSettingMgrRoot::MakePath(L"C", L"eth0", L"Mode", L"NIC", path.m_str), CAtlException);
    OrlFailBstrAllocation(0);
    EXPECT_EQ(std::wstring(path.m_str), L"an older path");
}

} // namespace
} // namespace orl::test
