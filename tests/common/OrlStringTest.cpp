// COrlString: values, order and character classes.

#include "Common/Src/OrlString.h"

#include "winport/portable/Utf8.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <map>
#include <memory>
#include <type_traits>

using ::testing::ElementsAre;

namespace orl::test
{

namespace
{

// Every class of characters, and the borders beside each.
struct CharacterCase
{
    wchar_t character;
    bool letter;
    bool digit;
    bool hexadecimal;
    bool symbol;
};

constexpr CharacterCase CharacterCases[] = {
    {0, false, false, false, false},      {L'\t', false, false, false, false},  {0x1F, false, false, false, false},
    {L' ', false, false, false, true},    {L'/', false, false, false, true},    {L'0', false, true, true, false},
    {L'9', false, true, true, false},     {L':', false, false, false, true},    {L'@', false, false, false, true},
    {L'A', true, false, true, false},     {L'F', true, false, true, false},     {L'G', true, false, false, false},
    {L'Z', true, false, false, false},    {L'[', false, false, false, true},    {L'`', false, false, false, true},
    {L'a', true, false, true, false},     {L'f', true, false, true, false},     {L'g', true, false, false, false},
    {L'z', true, false, false, false},    {L'{', false, false, false, true},    {L'~', false, false, false, true},
    {0x7F, false, false, false, false},   {0x80, false, false, false, false},   {0xE4, false, false, false, false},
    {0x0661, false, false, false, false}, {0xFF21, false, false, false, false}, {0xFF11, false, false, false, false},
    {0xFFFF, false, false, false, false},
};

} // namespace

static_assert(std::is_base_of_v<std::wstring, COrlString>);
static_assert(sizeof(COrlString) == sizeof(std::wstring), "no data of its own");

TEST(OrlString, IsBuiltFromTextsAndNumbers)
{
    wchar_t changeable[] = L"changeable";
    wchar_t* const pointer = changeable;
    const COrlString original(L"text");
    EXPECT_EQ(L"", COrlString());
    EXPECT_EQ(L"text", original);
    EXPECT_EQ(L"changeable", COrlString(pointer));
    EXPECT_EQ(L"text", COrlString(original));
    EXPECT_EQ(L"wide", COrlString(std::wstring(L"wide")));
    EXPECT_EQ(L"-12", COrlString(-12));
    EXPECT_EQ(L"", COrlString(static_cast<const wchar_t*>(nullptr)));
}

TEST(OrlString, IsAssignedFromTextsAndNumbers)
{
    COrlString text(L"before");
    text = COrlString(L"other");
    EXPECT_EQ(L"other", text);
    text = std::wstring(L"standard");
    EXPECT_EQ(L"standard", text);
    text = L"plain";
    EXPECT_EQ(L"plain", text);
    text = 5;
    EXPECT_EQ(L"5", text);
    text = static_cast<const wchar_t*>(nullptr);
    EXPECT_EQ(L"", text);
}

TEST(OrlString, ReadsPlainTextsUpToTheFirstZero)
{
    EXPECT_EQ(2u, COrlString(L"ab\0cd").Length());
    COrlString text(std::wstring(L"ab\0cd", 5));
    EXPECT_EQ(5u, text.Length());
    EXPECT_FALSE(text == L"ab");
    text = L"xy\0z";
    EXPECT_EQ(2u, text.Length());
}

TEST(OrlString, HoldsNumbersOfAtMostNineCharacters)
{
    const struct
    {
        int number;
        const wchar_t* text;
    } cases[] = {{0, L"0"},
                 {7, L"7"},
                 {-1, L"-1"},
                 {999999999, L"999999999"},
                 {1000000000, L""},
                 {INT_MAX, L""},
                 {-12345678, L"-12345678"},
                 {-99999999, L"-99999999"},
                 {-100000000, L""},
                 {INT_MIN, L""}};
    for (const auto& [number, expected] : cases)
    {
        COrlString text(L"before");
        text = number;
        EXPECT_EQ(expected, text) << number;
        EXPECT_EQ(expected, COrlString(number)) << number;
    }
}

TEST(OrlString, GivesItsCharactersWithTheirEnd)
{
    const COrlString text(L"abc");
    const wchar_t* characters = text;
    EXPECT_STREQ(L"abc", characters);
    EXPECT_EQ(text.c_str(), characters);
}

TEST(OrlString, ClearsAndKeepsItsCapacity)
{
    COrlString text(std::wstring(500, L'x').c_str());
    const size_t capacity = text.capacity();
    text.ClearString();
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(0u, text.Length());
    EXPECT_EQ(L'\0', text.c_str()[0]);
    EXPECT_EQ(capacity, text.capacity());
}

TEST(OrlString, CopiesToTheHeap)
{
    const COrlString text(L"abc");
    const std::unique_ptr<COrlString> copy(text.Copy());
    EXPECT_EQ(L"abc", *copy);
    *copy = L"other";
    EXPECT_EQ(L"abc", text);
}

TEST(OrlString, KnowsItsLength)
{
    EXPECT_TRUE(COrlString().IsEmpty());
    EXPECT_FALSE(COrlString(L" ").IsEmpty());
    EXPECT_EQ(3u, COrlString(L"abc").Length());
    static_assert(sizeof(COrlString().Length()) == 8);
}

TEST(OrlString, EqualsUnitByUnit)
{
    const COrlString text(L"abc");
    EXPECT_TRUE(text == COrlString(L"abc"));
    EXPECT_TRUE(text == L"abc");
    EXPECT_TRUE(L"abc" == text);
    EXPECT_TRUE(text == std::wstring(L"abc"));
    EXPECT_FALSE(text == COrlString(L"ABC"));
    EXPECT_FALSE(text == L"abcd");
    EXPECT_TRUE(text != L"ab");
    EXPECT_TRUE(text != COrlString(L"abd"));
    EXPECT_TRUE(COrlString() == static_cast<const wchar_t*>(nullptr));
}

TEST(OrlString, SortsByCodeUnits)
{
    EXPECT_TRUE(COrlString(L"a") < COrlString(L"b"));
    EXPECT_TRUE(COrlString(L"B") < COrlString(L"a"));
    EXPECT_TRUE(COrlString(L"a") < COrlString(L"aa"));
    EXPECT_TRUE(COrlString() < COrlString(L"a"));
    EXPECT_FALSE(COrlString(L"a") < COrlString(L"a"));
    EXPECT_TRUE(COrlString(L"z") < COrlString(L"\u00E4"));
    const std::map<COrlString, int> sorted = {{L"b", 2}, {L"a", 1}};
    EXPECT_EQ(1, sorted.begin()->second);
}

TEST(OrlString, IsJoinedWithTextsOfAnyForm)
{
    const COrlString text(L"ab");
    EXPECT_EQ(L"abcd", text + COrlString(L"cd"));
    EXPECT_EQ(L"abcd", text + L"cd");
    EXPECT_EQ(L"abcd", text + std::wstring(L"cd"));
    const std::wstring standard(L"cd");
    EXPECT_EQ(L"abcd", text + standard);
    EXPECT_EQ(L"abc", text + L'c');
    EXPECT_EQ(L"ab", text + COrlString());
    EXPECT_EQ(L"ab", text);
}

TEST(OrlString, ComparesWithoutRegardToCase)
{
    const COrlString text(L"Zarn_FCoEPort");
    EXPECT_TRUE(text.CompareI(L"zarn_fcoeport"));
    EXPECT_TRUE(text.CompareI(L"ZARN_FCOEPORT"));
    EXPECT_FALSE(text.CompareI(L"Zarn_FCoEPor"));
    EXPECT_FALSE(text.CompareI(L""));
    EXPECT_TRUE(COrlString().CompareI(L""));
    EXPECT_FALSE(COrlString(L"[").CompareI(L"{"));
    EXPECT_EQ(L"Zarn_FCoEPort", text);
}

TEST(OrlString, IsStrGreaterAnswersWhetherTheFirstIsLess)
{
    EXPECT_TRUE(COrlString::IsStrGreater(L"a", L"b"));
    EXPECT_FALSE(COrlString::IsStrGreater(L"b", L"a"));
    EXPECT_FALSE(COrlString::IsStrGreater(L"a", L"a"));
    EXPECT_TRUE(COrlString::IsStrGreater(L"B", L"a"));
}

TEST(OrlString, ComparesListsInAnyOrder)
{
    const struct
    {
        std::vector<COrlString> a;
        std::vector<COrlString> b;
        bool equal;
        bool equalWithoutCase;
    } cases[] = {
        {{}, {}, true, true},
        {{L"a"}, {}, false, false},
        {{L"a"}, {L"a"}, true, true},
        {{L"a", L"b", L"c"}, {L"c", L"a", L"b"}, true, true},
        {{L"B", L"a"}, {L"A", L"b"}, false, true},
        {{L"a", L"a"}, {L"a", L"b"}, false, false},
        {{L"a", L"a", L"b"}, {L"a", L"b", L"b"}, false, false},
        {{L"a", L"B"}, {L"a", L"b"}, false, true},
        {{L"a", L"A", L"b"}, {L"A", L"a", L"B"}, false, true},
        {{L"a", L"A", L"b"}, {L"a", L"B", L"b"}, false, false},
    };
    for (const auto& [a, b, equal, equalWithoutCase] : cases)
    {
        EXPECT_EQ(equal, COrlString::CompareVectors(a, b, true)) << ::testing::PrintToString(a);
        EXPECT_EQ(equalWithoutCase, COrlString::CompareVectors(a, b, false)) << ::testing::PrintToString(a);
    }
}

TEST(OrlString, ClassifiesCharactersAsAsciiDoes)
{
    for (const CharacterCase& expected : CharacterCases)
    {
        SCOPED_TRACE(static_cast<unsigned>(expected.character));
        EXPECT_EQ(expected.letter, COrlString::IsAlphaChar(expected.character));
        EXPECT_EQ(expected.digit, COrlString::IsNumericChar(expected.character));
        EXPECT_EQ(expected.hexadecimal, COrlString::IsHexadecimal(expected.character));
        EXPECT_EQ(expected.symbol, COrlString::IsSymbolicChar(expected.character));
    }
}

TEST(OrlString, IsNumericWithDigitsOnlyAndAtLeastOne)
{
    for (const wchar_t* text : {L"0", L"0123456789", L"00000000000000000000000"})
        EXPECT_TRUE(COrlString(text).IsNumeric()) << ToUtf8(text);
    for (const wchar_t* text : {L"", L"-1", L"+1", L"1.5", L" 1", L"1 ", L"1a", L"\u0661"})
        EXPECT_FALSE(COrlString(text).IsNumeric()) << ToUtf8(text);
}

TEST(OrlString, IsHexadecimalWithoutPrefixAndWhenEmpty)
{
    for (const wchar_t* text : {L"", L"0", L"DEADbeef", L"0123456789abcdefABCDEF"})
        EXPECT_TRUE(COrlString(text).IsStringHexadecimal()) << ToUtf8(text);
    for (const wchar_t* text : {L"0x1", L"g", L"-1", L" ", L"1 2"})
        EXPECT_FALSE(COrlString(text).IsStringHexadecimal()) << ToUtf8(text);
}

TEST(OrlString, AdmitsTheClassesOfItsMask)
{
    const struct
    {
        const wchar_t* text;
        // Which classes occur: the mask must allow them all.
        ULONG needed;
    } cases[] = {{L"", 0},
                 {L"\t\x7F\u00E4", 0},
                 {L"ab", 1},
                 {L"12", 2},
                 {L"#", 4},
                 {L" ", 4},
                 {L"ab c", 5},
                 {L"ab\tc", 1},
                 {L"a1", 3},
                 {L"1-2", 6},
                 {L"a1!", 7},
                 {L"-\u00E4a", 5},
                 {L"\u00E4"
                  L"1",
                  2}};
    for (const auto& [text, needed] : cases)
    {
        for (ULONG mask = 0; mask < 16; ++mask)
            EXPECT_EQ((needed & ~mask) == 0, COrlString(text).IsStringType(mask)) << ToUtf8(text) << " " << mask;
    }
}

TEST(OrlString, IsWithinARangeThatIncludesItsBounds)
{
    const COrlString text(L"bcd");
    EXPECT_TRUE(text.IsWithinAsciiRange('b', 'd'));
    EXPECT_TRUE(text.IsWithinAsciiRange(0, 0xFFFF));
    EXPECT_FALSE(text.IsWithinAsciiRange('c', 'd'));
    EXPECT_FALSE(text.IsWithinAsciiRange('b', 'c'));
    EXPECT_FALSE(text.IsWithinAsciiRange('d', 'b'));
    EXPECT_TRUE(COrlString().IsWithinAsciiRange(1, 0));
    EXPECT_FALSE(COrlString(L"\uFFFF").IsWithinAsciiRange(0x20, 0x7E));
}

} // namespace orl::test
