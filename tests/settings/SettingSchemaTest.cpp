// The schema of the setting classes, held against what the managers send and read.

#include "tests/settings/Settings.h"

#include "settings/Zarn_FCOESettingMgr.h"
#include "settings/Zarn_HBAToSettingAssocMgr.h"
#include "wbem/MofReader.h"

namespace orl::test
{
namespace
{

using ::testing::UnorderedElementsAreArray;

wbem::MofClass Schema(const std::wstring& name)
{
    const std::filesystem::path file = std::filesystem::path(ORL_SOURCE_DIR) / "schema" / (name + L".mof");
    const wbem::MofResult read = wbem::ReadMofFile(file);
    if (!read)
    {
        ADD_FAILURE() << Narrow(read.Error().Text());
        return {};
    }
    for (const wbem::MofDeclaration& declaration : read->declarations)
    {
        if (const auto* found = std::get_if<wbem::MofClass>(&declaration); found != nullptr && found->name == name)
            return *found;
    }
    ADD_FAILURE() << file << " does not declare its class";
    return {};
}

// How a value of the type travels.
VARTYPE Travels(const wbem::MofType& type)
{
    VARTYPE single = VT_EMPTY;
    switch (type.type)
    {
    case wbem::CimType::String:
    case wbem::CimType::Reference:
    case wbem::CimType::SInt64:
    case wbem::CimType::UInt64:
        single = VT_BSTR;
        break;
    case wbem::CimType::Boolean:
        single = VT_BOOL;
        break;
    case wbem::CimType::SInt32:
    case wbem::CimType::UInt32:
    case wbem::CimType::UInt16:
        single = VT_I4;
        break;
    default:
        break;
    }
    return static_cast<VARTYPE>(type.isArray ? VT_ARRAY | single : single);
}

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

    static std::vector<std::wstring> Keys(const wbem::MofClass& schema)
    {
        std::vector<std::wstring> keys;
        for (const wbem::MofProperty& property : schema.properties)
        {
            if (wbem::FindQualifier(property.qualifiers, L"key") != nullptr)
                keys.push_back(property.name);
        }
        return keys;
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
