// Settings apart from commands: their values in words, and the values of a command line for them.
#include "tools/orlwmi/settings/Settings.h"

#include "tools/orlwmi/Failure.h"

#include <gtest/gtest.h>

using namespace orl::client;

namespace
{

Setting Enumeration()
{
    Setting setting;
    setting.adapter = "eth0";
    setting.name = "ControllerMode";
    setting.displayName = "Controller mode";
    setting.value = "1";
    setting.text = "Fabric";
    setting.defaultValue = "2";
    setting.isEnumeration = true;
    setting.choices = {{"1", "Fabric"}, {"2", "VN2VN"}, {"3", ""}, {"4", "5"}};
    return setting;
}

Setting Integer(const std::string& base, const std::string& step)
{
    Setting setting;
    setting.adapter = "eth0";
    setting.name = "Mtu";
    setting.displayName = "Maximum transmission unit (bytes)";
    setting.value = "2500";
    setting.min = "68";
    setting.max = "65535";
    setting.step = step;
    setting.base = base;
    return setting;
}

TEST(Settings, TellValuesInWords)
{
    EXPECT_EQ(ValueText(Enumeration(), "2"), "VN2VN");
    EXPECT_EQ(ValueText(Enumeration(), "3"), "3") << "a choice without a text";
    EXPECT_EQ(ValueText(Enumeration(), "9"), "9") << "no choice";
    EXPECT_EQ(ValueText(Integer("10", "1"), "2500"), "2500");
    EXPECT_EQ(ValueText(Integer("16", "1"), "2500"), "0x9C4");
    EXPECT_EQ(ValueText(Integer("16", "1"), "-1"), "-0x1");
    EXPECT_EQ(ValueText(Integer("16", "1"), ""), "") << "a value that nobody told";
    Setting named = Integer("10", "1");
    named.text = "2500 bytes";
    EXPECT_EQ(ValueText(named, "2500"), "2500 bytes");
    EXPECT_EQ(ValueText(named, "1500"), "1500") << "the text is that of the current value only";
}

TEST(Settings, TellWhatTheyTake)
{
    EXPECT_EQ(AllowedText(Enumeration()), "Fabric, VN2VN, 3, 5");
    EXPECT_EQ(AllowedText(Integer("10", "1")), "68 to 65535");
    EXPECT_EQ(AllowedText(Integer("10", "0")), "68 to 65535");
    EXPECT_EQ(AllowedText(Integer("10", "4")), "68 to 65535 by 4");
    EXPECT_EQ(AllowedText(Integer("16", "16")), "0x44 to 0xFFFF by 0x10");
}

TEST(Settings, TakeTextsOfChoicesBeforeNumbers)
{
    using Assignment = std::pair<std::string, std::string>;
    Setting profile = Enumeration();
    profile.name = "performanceprofile";
    struct Case
    {
        Setting setting;
        const char* value;
        Assignment assignment;
    };
    const Case cases[] = {
        {Enumeration(), "VN2VN", {"CurrentValue", "2"}},
        {Enumeration(), "vn2vn", {"CurrentValue", "2"}},
        {Enumeration(), "5", {"CurrentValue", "4"}},
        {Enumeration(), "3", {"CurrentValue", "3"}},
        {Enumeration(), "77", {"CurrentValue", "77"}},
        {profile, "LowLatency", {"DisplayValue", "\"LowLatency\""}},
        {profile, "fabric", {"CurrentValue", "1"}},
        {Integer("10", "1"), "1500", {"CurrentValue", "1500"}},
        {Integer("16", "1"), "0x5DC", {"CurrentValue", "1500"}},
        {Integer("10", "1"), "-1", {"CurrentValue", "-1"}},
        {Integer("10", "1"), "-2147483648", {"CurrentValue", "-2147483648"}},
        {Integer("10", "1"), "1500 \"bytes\"", {"DisplayValue", "\"1500 \\\"bytes\\\"\""}},
        {Integer("10", "1"), "NULL", {"DisplayValue", "\"NULL\""}},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(NewValue(c.setting, c.value), c.assignment) << c.setting.name << " " << c.value;
    }
}

TEST(Settings, RefuseValuesThatTheyCannotHave)
{
    struct Case
    {
        Setting setting;
        const char* value;
        const char* message;
    };
    const Case cases[] = {
        {Enumeration(), "Loop", "the setting ControllerMode takes Fabric, VN2VN, 3, 5, not Loop"},
        {Integer("10", "1"), "2147483648", "a value of Mtu is from -2147483648 to 2147483647, not 2147483648"},
        {Integer("10", "1"), "-2147483649", "a value of Mtu is from -2147483648 to 2147483647, not -2147483649"},
        {Enumeration(), "4294967297", "a value of ControllerMode is from -2147483648 to 2147483647, not 4294967297"},
    };
    for (const auto& c : cases)
    {
        try
        {
            static_cast<void>(NewValue(c.setting, c.value));
            ADD_FAILURE() << c.value;
        }
        catch (const Failure& failure)
        {
            EXPECT_STREQ(failure.what(), c.message);
            EXPECT_EQ(failure.Code(), ExitCode::Usage);
        }
    }
}

TEST(Settings, AreFoundByTheirNameBeforeTheirNameForDisplay)
{
    Setting other = Enumeration();
    other.name = "Other";
    other.displayName = "mtu";
    const std::vector<Setting> settings = {Enumeration(), other, Integer("10", "1")};
    ASSERT_EQ(FindSettings(settings, "MTU").size(), 1U);
    EXPECT_EQ(FindSettings(settings, "MTU").front().name, "Mtu");
    EXPECT_EQ(FindSettings(settings, "controller MODE").front().name, "ControllerMode");
    EXPECT_EQ(FindSettings({Integer("10", "1"), Integer("16", "1")}, "mtu").size(), 2U) << "of two adapters";
}

TEST(Settings, ThatAreNotThereAreNotFound)
{
    struct Case
    {
        std::vector<Setting> settings;
        const char* message;
    };
    const Case cases[] = {
        {{Enumeration(), Integer("10", "1")}, "there is no setting Mtv; the nearest one is Mtu"},
        {{}, "there is no setting Mtv; the adapter has none"},
    };
    for (const auto& c : cases)
    {
        try
        {
            static_cast<void>(FindSettings(c.settings, "Mtv"));
            ADD_FAILURE() << c.message;
        }
        catch (const Failure& failure)
        {
            EXPECT_STREQ(failure.what(), c.message);
            EXPECT_EQ(failure.Code(), ExitCode::NotFound);
        }
    }
}

} // namespace
