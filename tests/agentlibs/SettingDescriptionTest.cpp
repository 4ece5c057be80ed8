// Settings as records, and the way between numbers and texts.

#include "agentlibs/settings/SettingDescription.h"

#include "SettingTests.h"
#include "agentlibs/settings/SettingMessages.h"

#include <limits>

namespace orl::test
{

namespace
{

SettingDescription Enumeration()
{
    SettingDescription setting;
    setting.kind = SettingDescription::Kind::Enumeration;
    setting.name = L"Mode";
    setting.caption = L"The mode";
    setting.choices = {{-3, L"Slow"}, {7, L"Fast"}};
    setting.defaultValue = -3;
    setting.current = 7;
    return setting;
}

SettingDescription Integer(LONG base)
{
    SettingDescription setting;
    setting.name = L"Depth";
    setting.min = -10;
    setting.max = 1000;
    setting.base = base;
    setting.current = 31;
    return setting;
}

} // namespace

TEST(SettingDescriptions, BecomeRecordsWithEveryField)
{
    SettingDescription all = Enumeration();
    all.description = L"what it is";
    all.displayName = L"Mode of work";
    all.miniHelp = L"help";
    all.registryKeyword = L"*Mode";
    all.group = static_cast<USHORT>(65535);
    all.detailId = 0xFFFFFFFFFFFFFFFF;
    all.writable = false;
    all.exposeLevel = 4000000000;
    EXPECT_EQ(LineOf(*MakeSetting(all)),
              "enum Mode|The mode|what it is|65535|18446744073709551615|help|Mode of work|*Mode|"
              "fixed|4000000000|7|Fast|-3|-3=Slow, 7=Fast");
    EXPECT_EQ(LineOf(*MakeSetting(Integer(16))), "int Depth|||-|0||||writable|0|31|0x1f|0|-10|1000|1|16|1");
    SettingDescription other;
    other.kind = SettingDescription::Kind::Other;
    other.name = L"Blob";
    other.typeCode = 3;
    EXPECT_EQ(LineOf(*MakeSetting(other)), "type 3 Blob|||-|0||||writable|0");
}

TEST(SettingDescriptions, ApplyATextToAValueByTheTextsOfTheirChoices)
{
    const auto setting = MakeSetting(Enumeration());
    ORL_SETTING_VAL_INT value = ValueOf(1, L"fAsT");
    setting->ApplyDisplayValue(&value);
    EXPECT_EQ(value.Value, 7);
    EXPECT_EQ(value.DisplayValue, L"fAsT");
    for (const wchar_t* text : {L"", L"7", L"Fast ", L"Faster"})
    {
        value = ValueOf(1, text);
        setting->ApplyDisplayValue(&value);
        EXPECT_EQ(value.Value, 1) << ToUtf8(text);
    }
    setting->ApplyDisplayValue(nullptr);
}

TEST(SettingDescriptions, ApplyATextToAValueAsAWholeNumber)
{
    const struct
    {
        const wchar_t* text;
        std::optional<LONG> number;
    } cases[] = {
        {L"0", 0},
        {L"31", 31},
        {L"0x1f", 31},
        {L"0X1F", 31},
        {L" 31\t", 31},
        {L"-31", -31},
        {L"-0x1f", -31},
        {L"007", 7},
        {L"2147483647", 2147483647},
        {L"0x7fffffff", 2147483647},
        {L"-2147483648", std::numeric_limits<LONG>::min()},
        {L"2147483648", std::nullopt},
        {L"-2147483649", std::nullopt},
        {L"0x80000000", std::nullopt},
        {L"99999999999999999999999", std::nullopt},
        {L"", std::nullopt},
        {L" ", std::nullopt},
        {L"-", std::nullopt},
        {L"0x", std::nullopt},
        {L"--1", std::nullopt},
        {L"+1", std::nullopt},
        {L"1f", std::nullopt},
        {L"1 0", std::nullopt},
        {L"1.0", std::nullopt},
        {L"0x-1", std::nullopt},
        {L"\u0661", std::nullopt},
    };
    for (const LONG base : {10, 16})
    {
        const SettingDescription description = Integer(base);
        const auto setting = MakeSetting(description);
        for (const auto& known : cases)
        {
            EXPECT_EQ(NumberOf(description, known.text), known.number) << ToUtf8(known.text);
            ORL_SETTING_VAL_INT value = ValueOf(999, known.text);
            setting->ApplyDisplayValue(&value);
            EXPECT_EQ(value.Value, known.number.value_or(999)) << ToUtf8(known.text);
        }
    }
}

TEST(SettingDescriptions, ShowTheTextThatTheyRead)
{
    const LONG lowest = std::numeric_limits<LONG>::min();
    const LONG highest = std::numeric_limits<LONG>::max();
    for (const LONG base : {10, 16})
        for (const LONG number : std::initializer_list<LONG>{0, 1, -1, 255, lowest, highest})
            EXPECT_EQ(NumberOf(Integer(base), TextOf(Integer(base), number)), number);
    EXPECT_EQ(TextOf(Integer(16), lowest), L"-0x80000000");
    EXPECT_EQ(TextOf(Enumeration(), -3), L"Slow");
    EXPECT_EQ(TextOf(Enumeration(), 5), L"5") << "what is none of them";
}

TEST(SettingDescriptions, AdmitWhatLiesOnAStepWithinTheLimits)
{
    SettingDescription setting = Integer(10);
    setting.step = 3;
    setting.max = 1;
    for (const LONG number : {-10, -7, -1})
        EXPECT_TRUE(Admits(setting, number)) << number;
    for (const LONG number : {-13, -11, -9, 0, 1, 2})
        EXPECT_FALSE(Admits(setting, number)) << number;
    setting.min = std::numeric_limits<LONG>::min();
    setting.max = std::numeric_limits<LONG>::max();
    setting.step = std::numeric_limits<LONG>::max();
    EXPECT_TRUE(Admits(setting, -1)) << "the lowest number and one step";
    EXPECT_FALSE(Admits(setting, 0));
    EXPECT_TRUE(Admits(Enumeration(), 7));
    EXPECT_FALSE(Admits(Enumeration(), 0));
}

TEST(SettingMessages, NameTheirNumberAndInsertsWhereTheLibraryIsMissing)
{
    TestRegistry registry;
    registry.SetText(ProductKey, L"ResourcePath", L"/no/such/folder");
    EXPECT_EQ(TextOf(SettingMessage::ReadOnly, {L"Depth", L"eth%s0"}),
              L"message 3009 of the resource library, which is missing: Depth eth%s0");
}

TEST(SettingMessages, PutEachInsertIntoItsOwnPlace)
{
    TestRegistry registry;
    registry.SetText(ProductKey, L"ResourcePath", FromUtf8(ORL_BIN_DIR));
    EXPECT_EQ(TextOf(SettingMessage::UnknownSetting, {L"%s", L"eth0"}), L"There is no setting \"%s\" on eth0.");
    EXPECT_EQ(TextOf(SettingMessage::UnknownSetting, {L"a"}), L"There is no setting \"a\" on %s.");
}

} // namespace orl::test
