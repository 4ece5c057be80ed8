// The setting records: the order and the width of what agents that are built apart read and write.

#include "agent/OrlSettings.h"

#include "tests/agent/Layout.h"
#include "tests/support/VirtualAt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace orl::test
{
namespace
{

class EnumSetting : public ORL_SETTING_ENUM
{
public:
    explicit EnumSetting(bool* deleted = nullptr) : m_deleted(deleted) {}
    EnumSetting(const EnumSetting&) = delete;
    EnumSetting& operator=(const EnumSetting&) = delete;
    ~EnumSetting() override
    {
        if (m_deleted != nullptr)
            *m_deleted = true;
    }
    void ApplyDisplayValue(ORL_SETTING_VAL_INT* value) const override { value->Value = 4711; }

private:
    bool* m_deleted;
};

class IntSetting : public ORL_SETTING_INT
{
public:
    void ApplyDisplayValue(ORL_SETTING_VAL_INT*) const override {}
};

std::size_t ExpectCommonFields(const ORL_SETTING& setting)
{
    return Layout(&setting, sizeof(void*))
        .Next<COrlString>(setting.Caption, "Caption")
        .Next<COrlString>(setting.Name, "Name")
        .Next<COrlString>(setting.Description, "Description")
        .Next<BOOL>(setting.Grouped, "Grouped")
        .Next<USHORT>(setting.GroupId, "GroupId")
        .Next<ULONGLONG>(setting.DetailId, "DetailId")
        .Next<COrlString>(setting.MiniHelp, "MiniHelp")
        .Next<COrlString>(setting.DisplayName, "DisplayName")
        .Next<COrlString>(setting.RegistryKeyword, "RegistryKeyword")
        .Next<BOOL>(setting.Writable, "Writable")
        .Next<ULONG>(setting.ExposeLevel, "ExposeLevel")
        .End();
}

TEST(SettingRecords, TextsHaveTheStandardStringsLayout)
{
    EXPECT_EQ(sizeof(COrlString), sizeof(std::wstring));
    EXPECT_EQ(sizeof(BOOL), 4U);
}

TEST(SettingRecords, EnumerationSettingDeclaresItsFieldsInOrder)
{
    const EnumSetting setting;
    const ORL_SETTING_ENUM& record = setting;
    Layout(&setting, ExpectCommonFields(setting))
        .Next<LONG>(record.DefaultValue, "DefaultValue")
        .Next<LONG>(record.CurrentValue, "CurrentValue")
        .Next<COrlString>(record.CurrentDisplayValue, "CurrentDisplayValue")
        .Next<std::vector<LONG>>(record.PossibleValues, "PossibleValues")
        .Next<std::vector<COrlString>>(record.DescriptionMap, "DescriptionMap");
}

TEST(SettingRecords, IntegerSettingDeclaresItsFieldsInOrder)
{
    const IntSetting setting;
    const ORL_SETTING_INT& record = setting;
    Layout(&setting, ExpectCommonFields(setting))
        .Next<LONG>(record.Base, "Base")
        .Next<LONG>(record.Max, "Max")
        .Next<LONG>(record.Min, "Min")
        .Next<LONG>(record.Step, "Step")
        .Next<LONG>(record.Default, "Default")
        .Next<LONG>(record.Current, "Current")
        .Next<LONG>(record.Scale, "Scale")
        .Next<COrlString>(record.CurrentDisplayValue, "CurrentDisplayValue");
}

TEST(SettingRecords, ValueDeclaresItsFieldsInOrder)
{
    const ORL_SETTING_VAL_INT value;
    Layout(&value, sizeof(void*)).Next<LONG>(value.Value, "Value").Next<COrlString>(value.DisplayValue, "DisplayValue");
    EXPECT_EQ(value.Value, 0);
    EXPECT_TRUE(value.DisplayValue.empty());
}

TEST(SettingRecords, AdapterDeclaresSixTextsTheCapabilitiesAndFiveTexts)
{
    const ORL_ADAPTER adapter;
    const Layout layout = Layout(&adapter, 0)
                              .Next<COrlString>(adapter.reservedText1, "1")
                              .Next<COrlString>(adapter.Name, "Name")
                              .Next<COrlString>(adapter.reservedText3, "3")
                              .Next<COrlString>(adapter.reservedText4, "4")
                              .Next<COrlString>(adapter.reservedText5, "5")
                              .Next<COrlString>(adapter.reservedText6, "6")
                              .Next<COrlPointerArray<ORL_ADAPTER_CAP*>>(adapter.Capabilities, "Capabilities")
                              .Next<COrlString>(adapter.reservedText8, "8")
                              .Next<COrlString>(adapter.reservedText9, "9")
                              .Next<COrlString>(adapter.reservedText10, "10")
                              .Next<COrlString>(adapter.reservedText11, "11")
                              .Next<COrlString>(adapter.reservedText12, "12");
    EXPECT_EQ(layout.End(), sizeof(ORL_ADAPTER));
}

TEST(SettingRecords, AdapterDeletesItsCapabilities)
{
    // A leak checker sees what stays.
    ORL_ADAPTER adapter;
    adapter.Capabilities.push_back(new ORL_ADAPTER_CAP{1, L"a name that is too long to lie in the record itself"});
    adapter.Capabilities.push_back(nullptr);
    const ORL_ADAPTER_CAP& capability = *adapter.Capabilities[0];
    Layout(&capability, 0)
        .Next<ULONGLONG>(capability.reservedNumber, "number")
        .Next<COrlString>(capability.Name, "Name");
}

// In the contract's table the destructor is operation 1, between GetType and the agent's own.
constexpr std::size_t SettingDestructor = 1;

TEST(SettingRecords, SettingAnswersThroughItsTable)
{
    const EnumSetting enumeration;
    const IntSetting integer;
    const auto getType = VirtualAt<ULONG (ORL_SETTING::*)() const>(EntryOf(0, SettingDestructor));
    EXPECT_EQ((enumeration.*getType)(), 0U);
    EXPECT_EQ((integer.*getType)(), 2U);

    const auto apply = VirtualAt<void (ORL_SETTING::*)(ORL_SETTING_VAL_INT*) const>(EntryOf(5, SettingDestructor));
    ORL_SETTING_VAL_INT value;
    (enumeration.*apply)(&value);
    EXPECT_EQ(value.Value, 4711);
}

TEST(SettingRecords, SettingIsDeletedThroughItsTable)
{
    bool deleted = false;
    ORL_SETTING* setting = new EnumSetting(&deleted);
    // The deleting destructor is the second of the two entries.
    using Destroy = void (*)(void*);
    (*reinterpret_cast<Destroy**>(setting))[SettingDestructor + 1](setting);
    EXPECT_TRUE(deleted);
}

TEST(SettingRecords, ValueHasGetTypeAloneInItsTable)
{
    const ORL_SETTING_VAL_INT value;
    const auto getType = VirtualAt<ULONG (ORL_SETTING_VAL::*)() const>(0);
    EXPECT_EQ((value.*getType)(), 2U);
    EXPECT_FALSE(std::has_virtual_destructor_v<ORL_SETTING_VAL>);
    EXPECT_TRUE(std::is_abstract_v<ORL_SETTING_VAL>);
    EXPECT_TRUE(std::is_trivially_destructible_v<ORL_SETTING_VAL>);
}

} // namespace
} // namespace orl::test
