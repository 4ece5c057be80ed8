// What the setting managers leave behind. A build with the address sanitizer proves more than the expectations say:
// that what is left behind is still there, that the rest is not, and that only these are overlooked.

#include "tests/support/ScriptedAdapterAgent.h"

#include "settings/LeftBehind.h"

#include <gtest/gtest.h>

namespace orl::test
{
namespace
{

TEST(LeftBehind, ValueGoesAndItsTextStays)
{
    auto* value = new ORL_SETTING_VAL_INT;
    value->DisplayValue = ORL_SETTING_VAL_INT::NoDisplayValue;
    const wchar_t* text = value->DisplayValue.c_str();
    FreeSettingValue(value);
    EXPECT_EQ(std::wstring(text), L"TheDisplayValueIsNotSupportedForThisSetting");
}

TEST(LeftBehind, ValueWithAShortTextGoesWhole)
{
    auto* value = new ORL_SETTING_VAL_INT;
    value->DisplayValue = L"3";
    FreeSettingValue(value);
}

TEST(LeftBehind, ValueOfAnotherKindGoes)
{
    struct OtherValue final : ORL_SETTING_VAL
    {
        ULONG GetType() const override { return 1; }
        LONG numbers[16]{};
    };
    FreeSettingValue(new OtherValue);
}

TEST(LeftBehind, NothingIsLeftOfNothing)
{
    FreeSettingValue(nullptr);
    LeaveSettingBehind(nullptr);
    const SettingValuePtr none;
    EXPECT_EQ(none, nullptr);
}

TEST(LeftBehind, SettingStaysAsItIs)
{
    static SettingLog log;
    ORL_SETTING* setting = new TestEnumSetting(log);
    setting->Description = L"a text that is too long to lie in the setting itself, so it has memory of its own";
    LeaveSettingBehind(setting);
    setting = nullptr;
    EXPECT_EQ(log.live, 1);
}

} // namespace
} // namespace orl::test
