// Text without case, names, UTF-8.
#include "wbem/Text.h"

#include <gtest/gtest.h>

#include <set>

namespace wbem
{
namespace
{

struct CaseRow
{
    std::wstring_view left;
    std::wstring_view right;
    bool equal;
};

constexpr CaseRow kCaseRows[] = {
    {L"", L"", true},
    {L"", L"a", false},
    {L"Zarn_FCOEHBA", L"zarn_fcoehba", true},
    {L"Zarn_FCoEPort", L"ZARN_FCOEPORT", true},
    {L"DeviceID", L"DeviceIDs", false},
    {L"[", L"{", false},
    {L"@", L"`", false},
    {L"Ärger", L"äRGER", true},
    {L"×", L"÷", false},
    {L"ÿ", L"Ÿ", true},
    {L"ŁÓDŹ", L"łódź", true},
    {L"Ελλάδα", L"ΕΛΛΆΔΑ", true},
    {L"ПРИВЕТ", L"привет", true},
    {L"ЁЖ", L"ёж", true},
    {L"ﬀ", L"FF", false},
    {L"ß", L"SS", false},
    {L"İ", L"i", false},
    {L"ı", L"I", false},
    {L"ＡＢＣ", L"ａｂｃ", true},
    {L"日本", L"日本", true},
    {L"日本", L"日木", false},
};

TEST(Text, EqualNoCaseFoldsTheAlphabetsThatHaveCase)
{
    for (const CaseRow& row : kCaseRows)
    {
        SCOPED_TRACE(ToUtf8(row.left) + " and " + ToUtf8(row.right));
        EXPECT_EQ(EqualNoCase(row.left, row.right), row.equal);
        EXPECT_EQ(CompareNoCase(row.left, row.right) == 0, row.equal);
        EXPECT_EQ(FoldCase(row.left) == FoldCase(row.right), row.equal);
        EXPECT_EQ(HashNoCase(row.left) == HashNoCase(row.right), row.equal);
    }
}

TEST(Text, FoldingTwiceChangesNothingMore)
{
    for (unsigned c = 0; c < 0x10000; ++c)
    {
        const wchar_t folded = FoldCase(static_cast<wchar_t>(c));
        ASSERT_EQ(FoldCase(folded), folded) << "U+" << std::hex << c;
    }
}

TEST(Text, OrderIsThatOfTheFoldedCharacters)
{
    EXPECT_LT(CompareNoCase(L"Alpha", L"beta"), 0);
    EXPECT_GT(CompareNoCase(L"Beta", L"alpha"), 0);
    EXPECT_LT(CompareNoCase(L"eth1", L"ETH10"), 0);
    EXPECT_GT(CompareNoCase(L"Z", L"_"), 0) << "a letter folds to its small form, which stands behind '_'";
    EXPECT_TRUE(LessNoCase(L"_", L"a"));
    EXPECT_TRUE(LessNoCase(L"_", L"A"));
    EXPECT_FALSE(LessNoCase(L"a", L"A"));
    EXPECT_TRUE(LessNoCase(L"z", L"\x00E4"));
}

TEST(Text, StartsWithNoCaseComparesTheBeginningOnly)
{
    EXPECT_TRUE(StartsWithNoCase(L"__PATH", L"__p"));
    EXPECT_TRUE(StartsWithNoCase(L"a", L""));
    EXPECT_FALSE(StartsWithNoCase(L"", L"a"));
    EXPECT_FALSE(StartsWithNoCase(L"ab", L"abc"));
}

TEST(Text, ContainersFindNamesWithoutCaseAndWithoutAString)
{
    NameMap<int> map;
    map.emplace(L"DeviceID", 1);
    EXPECT_FALSE(map.emplace(L"DEVICEID", 2).second);
    const std::wstring_view name = L"deviceid";
    ASSERT_NE(map.find(name), map.end());
    EXPECT_EQ(map.find(name)->second, 1);
    EXPECT_EQ(map.find(std::wstring_view(L"device")), map.end());

    const std::set<std::wstring, NameLess> set{L"b", L"A", L"B", L"a"};
    EXPECT_EQ(set.size(), 2u);
    EXPECT_TRUE(set.contains(std::wstring_view(L"B")));
}

TEST(Text, NamesBeginWithALetterAnUnderscoreOrWhatIsBeyondAscii)
{
    EXPECT_TRUE(IsName(L"Zarn_FCOEHBA"));
    EXPECT_TRUE(IsName(L"__this"));
    EXPECT_TRUE(IsName(L"größe2"));
    EXPECT_FALSE(IsName(L""));
    EXPECT_FALSE(IsName(L"2a"));
    EXPECT_FALSE(IsName(L"a b"));
    EXPECT_FALSE(IsName(L"a-b"));
    EXPECT_FALSE(IsName(L"a.b"));
}

TEST(Text, TrimTakesSpacesFromBothEnds)
{
    EXPECT_EQ(Trim(L" \t\r\n a b \v\f"), L"a b");
    EXPECT_EQ(Trim(L"   "), L"");
    EXPECT_EQ(Trim(L"a"), L"a");
}

TEST(Text, ExcerptCutsAfterSixtyCharacters)
{
    EXPECT_EQ(Excerpt(std::wstring(60, L'x')), std::wstring(60, L'x'));
    EXPECT_EQ(Excerpt(std::wstring(61, L'x')), std::wstring(60, L'x') + L"...");
}

struct Utf8Row
{
    std::string_view bytes;
    std::wstring_view text;
};

constexpr Utf8Row kUtf8Rows[] = {
    {"plain", L"plain"},
    {"\xC3\xA4", L"\x00E4"},
    {"\xE2\x82\xAC", L"\x20AC"},
    {"\xF0\x9F\x98\x80", L"\U0001F600"},
    {"\xF4\x8F\xBF\xBF", L"\U0010FFFF"},
};

TEST(Text, Utf8GoesBothWays)
{
    for (const Utf8Row& row : kUtf8Rows)
    {
        EXPECT_EQ(FromUtf8(row.bytes), row.text);
        EXPECT_EQ(ToUtf8(row.text), row.bytes);
    }
}

TEST(Text, BytesThatAreNotUtf8BecomeReplacements)
{
    EXPECT_EQ(FromUtf8("a\xE9z"), L"a\xFFFDz");
    EXPECT_EQ(FromUtf8("\xC0\x80"), L"\xFFFD\xFFFD") << "overlong";
    EXPECT_EQ(FromUtf8("\xE0\x80\x80"), L"\xFFFD\xFFFD\xFFFD") << "overlong";
    EXPECT_EQ(FromUtf8("\xF0\x80\x80\x80"), L"\xFFFD\xFFFD\xFFFD\xFFFD") << "overlong";
    EXPECT_EQ(FromUtf8("\xED\xA0\x80"), L"\xFFFD\xFFFD\xFFFD") << "surrogate";
    EXPECT_EQ(FromUtf8("\xF4\x90\x80\x80"), L"\xFFFD\xFFFD\xFFFD\xFFFD") << "beyond U+10FFFF";
    EXPECT_EQ(FromUtf8("\xE2\x82"), L"\xFFFD\xFFFD") << "cut short";
}

TEST(Text, HalvesOfSurrogatePairsBecomeReplacements)
{
    const wchar_t high = static_cast<wchar_t>(0xD83D);
    const wchar_t low = static_cast<wchar_t>(0xDE00);
    EXPECT_EQ(ToUtf8(std::wstring{high}), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(std::wstring{low, L'a'}), "\xEF\xBF\xBD"
                                               "a");
    EXPECT_EQ(ToUtf8(std::wstring{high, low}), "\xF0\x9F\x98\x80");
}

} // namespace
} // namespace wbem
