// The methods of a setting: what the agent is told, and what the client reads.

#include "tests/settings/Settings.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr wchar_t ModePath[] = L"Zarn_FCOESettingEnum.Caption=\"Mode\",ParentId=\"eth0\",ParentType=\"NIC\"";
constexpr wchar_t QueuePath[] = L"Zarn_FCOESettingInt.Caption=\"Queue\",ParentId=\"eth0\",ParentType=\"NIC\"";

class SettingMethod : public SettingTest
{
protected:
    SettingMethod()
    {
        services->Add(FakeWarningMessage());
        adapterAgent.settings[L"eth0"] = {Choice(adapterAgent, L"Mode"), Number(adapterAgent, L"Queue")};
        Renew();
    }
    ~SettingMethod() override
    {
        EXPECT_EQ(adapterAgent.log.live, 0) << "a setting was not deleted";
        EXPECT_TRUE(sink->Objects().empty()) << "a method sends no instance";
    }

    // A new object of out-parameters.
    void Renew() { out.Attach(new FakeClassObject(outClass)); }

    Outcome Default(const wchar_t* path = ModePath) { return Call(enumManager, path, L"SetDefault", nullptr, out); }
    Outcome Validate(const Values& values, const wchar_t* path = ModePath)
    {
        return Call(enumManager, path, L"ValidateAndSetSetting", Object(values), out);
    }

    // The keys are read by the readers, in their order.
    void ExpectKeysRequired(const wchar_t* method)
    {
        const struct
        {
            const wchar_t* path;
            int line;
        } cases[] = {{L"Zarn_FCOESettingEnum.Caption=\"Mode\",ParentId=\"eth0\"", 529},
                     {L"Zarn_FCOESettingEnum.Caption=\"Mode\",ParentType=\"NIC\"", 490},
                     {L"Zarn_FCOESettingEnum.ParentId=\"eth0\",ParentType=\"NIC\"", 567},
                     {L"Zarn_FCOESettingEnum", 529}};
        for (const auto& row : cases)
        {
            ExpectRefusal([&] { Call(enumManager, row.path, method, nullptr, out); },
                          {0x8004090F, row.path, 0x80041002, L"Src\\KfgSettingMgrRoot", row.line});
        }
        EXPECT_THAT(adapterAgent.calls, IsEmpty());
        EXPECT_THAT(out->Puts(), IsEmpty());
    }

    FakeClassPtr outClass = MakeFakeClass(L"Out");
    CComPtr<FakeClassObject> out;
};

TEST_F(SettingMethod, IsFoundByNameInAnyCase)
{
    for (const wchar_t* name : {L"SetDefault", L"setdefault", L"SETDEFAULT"})
        EXPECT_EQ(Call(enumManager, ModePath, name, nullptr, out).status, 0);
    for (const wchar_t* name : {L"ValidateAndSetSetting", L"validateandsetsetting"})
        EXPECT_EQ(Call(enumManager, ModePath, name, Object({{L"CurrentValue", CComVariant(L"5")}}), out).status, 0);
    EXPECT_THAT(adapterAgent.calls,
                ElementsAre(L"SetSettingToDefault(eth0, Mode)", L"SetSettingToDefault(eth0, Mode)",
                            L"SetSettingToDefault(eth0, Mode)", L"GetSetting(eth0, Mode)",
                            L"ValidateSettingModification(eth0, Mode, 5/, 0)", L"GetSetting(eth0, Mode)",
                            L"ValidateSettingModification(eth0, Mode, 5/, 0)"));
}

TEST_F(SettingMethod, OfAnyOtherNameIsNotImplemented)
{
    const TraceCapture trace;
    for (const wchar_t* name : {L"Reset", L"", L"SetDefaults", L"SetDefaul"})
        EXPECT_EQ(static_cast<ULONG>(Call(intManager, L"X.A=\"1\"", name, nullptr, out).status), 0x80041055U);
    EXPECT_THAT(adapterAgent.calls, IsEmpty());
    EXPECT_THAT(out->Puts(), IsEmpty());
    EXPECT_THAT(trace.Messages(), Each(std::string("CKfgSettingMgrRoot::ExecMethodAsync")));
    EXPECT_EQ(trace.Messages().size(), 4U);
}

TEST_F(SettingMethod, SetDefaultTellsTheAgent)
{
    status = 0x77;
    const TraceCapture trace;
    EXPECT_EQ(Default().status, 0);
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"SetSettingToDefault(eth0, Mode)"));
    ExpectStatusInEveryCall(0x77);
    EXPECT_THAT(Shown(out->Puts()), ElementsAre(L"ReturnValue=0"));
    EXPECT_EQ(out->Puts()[0].type, VT_I4);
    EXPECT_EQ(trace.TieredMessages(),
              (std::vector<std::string>{
                  "0 CKfgSettingMgrRoot::ExecMethodAsync", "1 ENTRY:  CKfgSettingMgrRoot::SetDefault",
                  "1 KfgSettingMgrRoot::GetObjectTypeFromPath", "1 KfgSettingMgrRoot::GetObjectIdFromPath",
                  "1 KfgSettingMgrRoot::GetSettingNameFromPath", "1 EXIT:  CKfgSettingMgrRoot::SetDefault"}));
}

TEST_F(SettingMethod, SetDefaultThatTheAgentRefusesAnswersOneAndNoReturnValue)
{
    adapterAgent.answers[L"SetSettingToDefault"] = {0x80070005, 0};
    const TraceCapture trace;
    EXPECT_EQ(Default().status, 1);
    EXPECT_THAT(out->Puts(), IsEmpty());
    EXPECT_THAT(trace.Messages(), Contains("SetToDefault() - call to SetSettingToDefault() failed.").Times(1));
}

TEST_F(SettingMethod, SetDefaultWhoseReturnValueCannotBeSetAnswersWhy)
{
    outClass->putFails[L"ReturnValue"] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    const TraceCapture trace;
    EXPECT_EQ(Default().status, static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH));
    EXPECT_THAT(trace.Messages(), Contains("SetToDefault() - failed to set the return value.").Times(1));
}

TEST_F(SettingMethod, SetDefaultRequiresTheKeys)
{
    ExpectKeysRequired(L"SetDefault");
}

TEST_F(SettingMethod, ValidateTellsTheAgentAndTheClient)
{
    status = 0x77;
    adapterAgent.warnings = {{2, 17, L"a reboot is needed"}, {1, 0, L"refused"}};
    const TraceCapture trace;
    EXPECT_EQ(Validate({{L"DisplayValue", CComVariant(L"five")}, {L"SetValuesOnNoError", CComVariant(LONG{1})}}).status,
              0);
    EXPECT_THAT(adapterAgent.calls,
                ElementsAre(L"GetSetting(eth0, Mode)", L"ValidateSettingModification(eth0, Mode, 50/five, 1)"));
    ExpectStatusInEveryCall(0x77);
    EXPECT_THAT(Shown(out->Puts()),
                ElementsAre(L"WarningMessages={Zarn_WarningMessage{Kind=2, MessageID=17, Message=a reboot is needed}, "
                            L"Zarn_WarningMessage{Kind=1, MessageID=0, Message=refused}}",
                            L"ReturnValue=0"));
    EXPECT_EQ(trace.TieredMessages(),
              (std::vector<std::string>{
                  "0 CKfgSettingMgrRoot::ExecMethodAsync", "1 ENTRY:  CKfgSettingMgrRoot::ValidateAndSetSetting",
                  "1 KfgSettingMgrRoot::GetObjectTypeFromPath", "1 KfgSettingMgrRoot::GetObjectIdFromPath",
                  "1 KfgSettingMgrRoot::GetSettingNameFromPath", "2 ENTRY:  CKfgSettingEnumMgr::GetDataFromCimObject",
                  "2 EXIT:  CKfgSettingEnumMgr::GetDataFromCimObject",
                  "1 EXIT:  CKfgSettingMgrRoot::ValidateAndSetSetting"}));
}

TEST_F(SettingMethod, ValidateOfAnIntegerGoesTheSameWay)
{
    EXPECT_EQ(Call(intManager, QueuePath, L"ValidateAndSetSetting", Object({{L"CurrentValue", CComVariant(L"3")}}), out)
                  .status,
              0);
    EXPECT_THAT(adapterAgent.calls,
                ElementsAre(L"GetSetting(eth0, Queue)", L"ValidateSettingModification(eth0, Queue, 3/3, 0)"));
    EXPECT_THAT(Shown(out->Puts()), ElementsAre(L"WarningMessages={}", L"ReturnValue=0"));
}

TEST_F(SettingMethod, ValidateSetsOnlyWhenTheClientSaysSo)
{
    CComVariant null;
    null.vt = VT_NULL;
    const struct
    {
        const char* what;
        Values values;
        const wchar_t* flag;
    } cases[] = {{"absent", {}, L"0"},
                 {"null", {{L"SetValuesOnNoError", null}}, L"0"},
                 {"no number", {{L"SetValuesOnNoError", CComVariant(L"yes")}}, L"0"},
                 {"negative", {{L"SetValuesOnNoError", CComVariant(LONG{-1})}}, L"0"},
                 {"0", {{L"SetValuesOnNoError", CComVariant(LONG{0})}}, L"0"},
                 {"1", {{L"SetValuesOnNoError", CComVariant(LONG{1})}}, L"1"},
                 {"7", {{L"SetValuesOnNoError", CComVariant(LONG{7})}}, L"7"}};
    for (const auto& row : cases)
    {
        Values values = row.values;
        values.emplace_back(L"CurrentValue", CComVariant(L"5"));
        EXPECT_EQ(Validate(values).status, 0);
        EXPECT_EQ(adapterAgent.calls.back(),
                  std::wstring(L"ValidateSettingModification(eth0, Mode, 5/, ") + row.flag + L")")
            << row.what;
    }
}

// The flag of the request counts for updates alone.
TEST_F(SettingMethod, ValidateReadsDisplayValuesWhateverTheRequestSays)
{
    displayValueUnsupported = 1;
    Validate({{L"DisplayValue", CComVariant(L"five")}});
    EXPECT_EQ(adapterAgent.calls.back(), L"ValidateSettingModification(eth0, Mode, 50/five, 0)");
}

TEST_F(SettingMethod, ValidateOfASettingThatCannotBeReadAnswersOne)
{
    adapterAgent.answers[L"GetSetting"] = {9, 0};
    const TraceCapture trace;
    EXPECT_EQ(Validate({{L"CurrentValue", CComVariant(L"5")}}).status, 1);
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)"));
    EXPECT_THAT(out->Puts(), IsEmpty());
    EXPECT_THAT(trace.Messages(), Contains("ValidateAndSetSetting() - call to GetSetting() failed").Times(1));
}

TEST_F(SettingMethod, ValidateGoesOnWithoutASetting)
{
    adapterAgent.settings.clear();
    adapterAgent.unknown = {0, 0};
    EXPECT_EQ(Validate({{L"CurrentValue", CComVariant(L"5")}}).status, 0);
    EXPECT_EQ(adapterAgent.calls.back(), L"ValidateSettingModification(eth0, Mode, 5/, 0)");
}

TEST_F(SettingMethod, ValidateOfAConflictOrOfNothingIsRefused)
{
    const struct
    {
        const char* what;
        Values values;
    } cases[] = {{"a conflict", {{L"CurrentValue", CComVariant(L"5")}, {L"RegistryValue", CComVariant(L"6")}}},
                 {"nothing", {{L"SetValuesOnNoError", CComVariant(LONG{1})}}}};
    for (const auto& row : cases)
    {
        SCOPED_TRACE(row.what);
        const TraceCapture trace;
        ExpectRefusal([&] { Validate(row.values); }, {0x80040908, L"CZarn_TeamOfAdaptersMgr::ValidateAndSetSetting()",
                                                      0x80041001, L"Src\\KfgSettingMgrRoot", 719});
        EXPECT_THAT(trace.Messages(), Contains("GetDataFromCimObject failed").Times(1));
        EXPECT_EQ(adapterAgent.calls.back(), L"GetSetting(eth0, Mode)");
        EXPECT_THAT(out->Puts(), IsEmpty());
    }
}

TEST_F(SettingMethod, ValidateIsRefusedWithWhatItsKindMadeOfTheParameters)
{
    AnsweringManager manager(&agent, &adapterAgent);
    manager.answer = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    ExpectRefusal(
        [&] { Call(manager, ModePath, L"ValidateAndSetSetting", Object({}), out); },
        {0x80040908, L"CZarn_TeamOfAdaptersMgr::ValidateAndSetSetting()", 0x80041005, L"Src\\KfgSettingMgrRoot", 719});
    EXPECT_THAT(adapterAgent.calls, ElementsAre(L"GetSetting(eth0, Mode)"));
    manager.answer = 2; // a success of another kind
    const TraceCapture trace;
    EXPECT_EQ(Call(manager, ModePath, L"ValidateAndSetSetting", Object({}), out).status, 0);
    EXPECT_THAT(trace.Messages(), Not(Contains("GetDataFromCimObject failed")));
    EXPECT_EQ(adapterAgent.calls.back(), L"ValidateSettingModification(eth0, Mode, 7/, 0)");
}

TEST_F(SettingMethod, ValidateWithoutInParametersIsRefused)
{
    ExpectRefusal(
        [&] { Call(enumManager, ModePath, L"ValidateAndSetSetting", nullptr, out); },
        {0x80040908, L"CZarn_TeamOfAdaptersMgr::ValidateAndSetSetting()", 0x80041001, L"Src\\KfgSettingMgrRoot", 719});
}

TEST_F(SettingMethod, ValidateThatTheAgentRefusesAnswersOneAndTellsNothing)
{
    adapterAgent.answers[L"ValidateSettingModification"] = {0x80070010, 0};
    adapterAgent.warnings = {{1, 0, L"busy"}};
    const TraceCapture trace;
    EXPECT_EQ(Validate({{L"CurrentValue", CComVariant(L"5")}}).status, 1);
    EXPECT_THAT(out->Puts(), IsEmpty());
    EXPECT_THAT(trace.Messages(),
                Contains("ValidateAndSetSetting() - call to ValidateSettingModification() failed.").Times(1));
}

TEST_F(SettingMethod, ValidateWhoseWarningsCannotBeSetIsRefused)
{
    outClass->putFails[L"WarningMessages"] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    ExpectRefusal(
        [&] {
            Validate({{L"CurrentValue", CComVariant(L"5")}});
        },
        {0x80040901, L"CZarn_TeamOfAdaptersMgr::ValidateAndSetSetting()", 0x80041005, L"Src\\KfgSettingMgrRoot", 751});
    EXPECT_THAT(out->Puts(), IsEmpty());
}

TEST_F(SettingMethod, ValidateWhoseReturnValueCannotBeSetAnswersWhy)
{
    outClass->putFails[L"ReturnValue"] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    const TraceCapture trace;
    EXPECT_EQ(Validate({{L"CurrentValue", CComVariant(L"5")}}).status, static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH));
    EXPECT_THAT(Shown(out->Puts()), ElementsAre(L"WarningMessages={}"));
    EXPECT_THAT(trace.Messages(), Contains("ValidateAndSetSetting() - failed to set the return value.").Times(1));
}

TEST_F(SettingMethod, ValidateRequiresTheKeys)
{
    ExpectKeysRequired(L"ValidateAndSetSetting");
}

TEST_F(SettingMethod, ExceptionOfTheAgentLeavesTheRequestAndNothingBehind)
{
    for (std::size_t call = 1; call <= 2; ++call)
    {
        adapterAgent.calls.clear();
        adapterAgent.inside = [this, call]
        {
            if (adapterAgent.calls.size() == call)
                throw std::runtime_error("the agent's own");
        };
        EXPECT_THROW(Validate({{L"CurrentValue", CComVariant(L"5")}}), std::runtime_error);
        EXPECT_EQ(adapterAgent.log.live, 0);
    }
}

} // namespace
} // namespace orl::test
