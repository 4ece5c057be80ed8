// The schema of the setting classes, held against what the managers send and read.

#include "tests/provider/Schema.h"
#include "tests/settings/Settings.h"

#include "settings/Zarn_FCOESettingMgr.h"
#include "settings/Zarn_HBAToSettingAssocMgr.h"

namespace orl::test
{
namespace
{

using ::testing::UnorderedElementsAreArray;

class SettingSchema : public SettingTest
{
protected:
    SettingSchema()
    {
        AddAdapter(L"eth0");
        adapterAgent.settings[L"eth0"] = {Choice(adapterAgent, L"Mode"), Number(adapterAgent, L"Queue")};
        services->Add(MakeFakeClass(L"Zarn_FCoeSetting"));
        services->Add(MakeFakeClass(L"Zarn_FCoE_HBA_Setting_Assoc"));
    }
};

TEST_F(SettingSchema, DeclaresWhatTheManagersSendWithItsTypeAndNothingElse)
{
    CZarn_FCOESettingMgr setting(&agent, &adapterAgent);
    CZarn_FcoeHBAToSettingAssocMgr association(&agent, &adapterAgent);
    for (CWomClassManagerRoot* manager :
         {static_cast<CWomClassManagerRoot*>(&enumManager), static_cast<CWomClassManagerRoot*>(&intManager),
          static_cast<CWomClassManagerRoot*>(&setting), static_cast<CWomClassManagerRoot*>(&association)})
    {
        SCOPED_TRACE(Narrow(manager->GetCimClassName()));
        const wbem::MofClass schema = Schema(manager->GetCimClassName());
        const Outcome outcome = Enumerate(*manager);
        ASSERT_FALSE(outcome.instances.empty());
        std::vector<std::pair<std::wstring, VARTYPE>> sent;
        for (const FakePut& put : outcome.instances[0])
            sent.emplace_back(put.name, put.type);
        std::vector<std::pair<std::wstring, VARTYPE>> declared;
        for (const wbem::MofProperty& property : schema.properties)
            declared.emplace_back(property.name, Travels(property.type));
        EXPECT_THAT(declared, UnorderedElementsAreArray(sent));
    }
}

TEST_F(SettingSchema, KeysAreThoseOfThePaths)
{
    using Names = std::vector<std::wstring>;
    EXPECT_EQ(Keys(Schema(L"Zarn_FCOESettingEnum")), (Names{L"ParentType", L"ParentId", L"Caption"}));
    EXPECT_EQ(Keys(Schema(L"Zarn_FCOESettingInt")), (Names{L"ParentType", L"ParentId", L"Caption"}));
    EXPECT_EQ(Keys(Schema(L"Zarn_FCoeSetting")), (Names{L"Element", L"Setting"}));
    EXPECT_EQ(Keys(Schema(L"Zarn_FCoE_HBA_Setting_Assoc")), (Names{L"Element", L"Setting"}));
}

TEST_F(SettingSchema, WhatAnUpdateReadsIsWritableAndAParameterOfTheMethod)
{
    for (const wchar_t* name : {L"Zarn_FCOESettingEnum", L"Zarn_FCOESettingInt"})
    {
        SCOPED_TRACE(Narrow(name));
        const wbem::MofClass schema = Schema(name);
        std::vector<std::wstring> writable;
        for (const wbem::MofProperty& property : schema.properties)
        {
            if (wbem::FindQualifier(property.qualifiers, L"write") != nullptr)
                writable.push_back(property.name);
        }
        EXPECT_EQ(writable, (std::vector<std::wstring>{L"CurrentValue", L"RegistryValue", L"DisplayValue"}));

        ASSERT_EQ(schema.methods.size(), 2U);
        EXPECT_EQ(schema.methods[0].name, L"SetDefault");
        EXPECT_TRUE(schema.methods[0].parameters.empty());
        EXPECT_EQ(schema.methods[1].name, L"ValidateAndSetSetting");
        std::vector<std::wstring> parameters;
        for (const wbem::MofProperty& parameter : schema.methods[1].parameters)
        {
            const bool isOut = wbem::FindQualifier(parameter.qualifiers, L"out") != nullptr;
            parameters.push_back((isOut ? L"out " : L"in ") + parameter.name);
        }
        EXPECT_EQ(parameters, (std::vector<std::wstring>{L"in CurrentValue", L"in RegistryValue", L"in DisplayValue",
                                                         L"in SetValuesOnNoError", L"out WarningMessages"}));
        for (const wbem::MofMethod& method : schema.methods)
            EXPECT_EQ(method.result.type, wbem::CimType::UInt32);
    }
}

} // namespace
} // namespace orl::test
