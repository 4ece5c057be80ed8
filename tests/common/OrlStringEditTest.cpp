// COrlString: editing and splitting.

#include "Common/Src/OrlString.h"

#include "winport/portable/Utf8.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace orl::test
{

TEST(OrlStringEdit, LeftKeepsTheFirstCharacters)
{
    const struct
    {
        const wchar_t* text;
        unsigned n;
        const wchar_t* left;
        const wchar_t* right;
    } cases[] = {{L"abc", 0, L"", L""},       {L"abc", 1, L"a", L"c"},     {L"abc", 2, L"ab", L"bc"},
                 {L"abc", 3, L"abc", L"abc"}, {L"abc", 4, L"abc", L"abc"}, {L"abc", 10, L"abc", L"abc"},
                 {L"", 0, L"", L""},          {L"", 5, L"", L""},          {L"abc", 0xFFFFFFFF, L"abc", L"abc"}};
    for (const auto& [text, n, left, right] : cases)
    {
        COrlString leftPart(text);
        leftPart.Left(n);
        EXPECT_EQ(left, leftPart) << n;
        COrlString rightPart(text);
        rightPart.Right(n);
        EXPECT_EQ(right, rightPart) << n;
    }
}

TEST(OrlStringEdit, ChangesTheCaseOfLetters)
{
    COrlString text(L"Eth0.1002 AZaz[`{@");
    text.MakeUpper();
    EXPECT_EQ(L"ETH0.1002 AZAZ[`{@", text);
    text.MakeLower();
    EXPECT_EQ(L"eth0.1002 azaz[`{@", text);
    COrlString empty;
    empty.MakeLower();
    empty.MakeUpper();
    EXPECT_EQ(L"", empty);
}

TEST(OrlStringEdit, ChangesTheCaseOfLongTexts)
{
    COrlString text(std::wstring(100000, L'X').c_str());
    text.MakeLower();
    EXPECT_EQ(std::wstring(100000, L'x'), text);
}

TEST(OrlStringEdit, TrimsSpacesOnly)
{
    const struct
    {
        const wchar_t* text;
        const wchar_t* left;
        const wchar_t* right;
        const wchar_t* both;
    } cases[] = {{L"  a b  ", L"a b  ", L"  a b", L"a b"},
                 {L"\ta", L"\ta", L"\ta", L"\ta"},
                 {L" \ta\n ", L"\ta\n ", L" \ta\n", L"\ta\n"},
                 {L"\u00A0a\u00A0", L"\u00A0a\u00A0", L"\u00A0a\u00A0", L"\u00A0a\u00A0"},
                 {L"   ", L"", L"", L""},
                 {L"", L"", L"", L""},
                 {L"a", L"a", L"a", L"a"}};
    for (const auto& [text, left, right, both] : cases)
    {
        COrlString trimmed(text);
        trimmed.TrimLeft();
        EXPECT_EQ(left, trimmed);
        trimmed = text;
        trimmed.TrimRight();
        EXPECT_EQ(right, trimmed);
        trimmed = text;
        trimmed.Trim();
        EXPECT_EQ(both, trimmed);
    }
}

TEST(OrlStringEdit, SplitsAtEachSeparator)
{
    const struct
    {
        const wchar_t* text;
        std::vector<COrlString> pieces;
        bool found;
    } cases[] = {{L"a,,b", {L"a", L"", L"b"}, true},
                 {L",a", {L"", L"a"}, true},
                 {L"a,b,", {L"a", L"b"}, true},
                 {L"abc", {}, false},
                 {L"", {}, false},
                 {L",", {L""}, true},
                 {L",,", {L"", L""}, true},
                 {L"a,", {L"a"}, true},
                 {L"a,b", {L"a", L"b"}, true},
                 {L" a , b ", {L" a ", L" b "}, true}};
    for (const auto& [text, pieces, found] : cases)
    {
        COrlString whole(text);
        std::vector<COrlString> result = {L"what was there before"};
        EXPECT_EQ(found, whole.Split(',', result)) << ToUtf8(whole);
        EXPECT_EQ(pieces, result) << ToUtf8(whole);
        EXPECT_EQ(text, whole);
    }
}

TEST(OrlStringEdit, SplitsAtAByteAboveAscii)
{
    std::vector<COrlString> pieces;
    EXPECT_TRUE(COrlString(L"a\u00A7b").Split('\xA7', pieces));
    EXPECT_THAT(pieces, ElementsAre(L"a", L"b"));
}

TEST(OrlStringEdit, SplitsATextThatLiesInTheListItself)
{
    std::vector<COrlString> pieces = {L"a,b"};
    EXPECT_TRUE(pieces[0].Split(',', pieces));
    EXPECT_THAT(pieces, ElementsAre(L"a", L"b"));
}

TEST(OrlStringEdit, SplitsAtAZero)
{
    std::vector<COrlString> pieces;
    EXPECT_TRUE(COrlString(std::wstring(L"a\0b", 3)).Split('\0', pieces));
    EXPECT_THAT(pieces, ElementsAre(L"a", L"b"));
}

TEST(OrlStringEdit, SplitsALongTextInTimeThatGrowsWithIt)
{
    std::wstring text;
    for (int piece = 0; piece < 200000; ++piece)
        text += L"x,";
    std::vector<COrlString> pieces;
    EXPECT_TRUE(COrlString(text).Split(',', pieces));
    EXPECT_EQ(200000u, pieces.size());
}

} // namespace orl::test
