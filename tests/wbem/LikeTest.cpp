// The patterns of LIKE.
#include "Shown.h"
#include "wbem/Like.h"

#include <gtest/gtest.h>

#include <chrono>

namespace wbem
{
namespace
{

struct LikeRow
{
    std::wstring_view pattern;
    std::wstring_view text;
    bool matches;
};

constexpr LikeRow kRows[] = {
    {L"", L"", true},
    {L"", L"a", false},
    {L"abc", L"abc", true},
    {L"abc", L"ABC", true},
    {L"abc", L"abcd", false},
    {L"abc", L"ab", false},
    {L"ÄRGER", L"ärger", true},
    // %
    {L"%", L"", true},
    {L"%", L"anything", true},
    {L"%%", L"", true},
    {L"a%", L"a", true},
    {L"a%", L"abc", true},
    {L"a%", L"ba", false},
    {L"%c", L"abc", true},
    {L"%c", L"cab", false},
    {L"%b%", L"abc", true},
    {L"%b%", L"ac", false},
    {L"a%c", L"abcbc", true},
    {L"a%b%c", L"axxbxxc", true},
    {L"a%b%c", L"axxcxxb", false},
    {L"%ab%ab", L"abab", true},
    {L"%aab", L"aaab", true},
    {L"eth%.1002", L"eth0.1002", true},
    // _
    {L"_", L"a", true},
    {L"_", L"", false},
    {L"_", L"ab", false},
    {L"a_c", L"abc", true},
    {L"__%", L"ab", true},
    {L"__%", L"a", false},
    {L"%_b", L"ab", true},
    {L"%_b", L"b", false},
    // Sets.
    {L"[abc]x", L"bx", true},
    {L"[abc]x", L"dx", false},
    {L"[a-c]x", L"Cx", true},
    {L"[A-C]x", L"bx", true},
    {L"[a-c]x", L"dx", false},
    {L"[a-cx-z]", L"y", true},
    {L"[a-cx-z]", L"m", false},
    {L"[^a-c]x", L"dx", true},
    {L"[^a-c]x", L"Ax", false},
    {L"[^a]", L"", false},
    {L"[0-9][0-9]", L"42", true},
    {L"[0-9][0-9]", L"4x", false},
    {L"[z-a]", L"m", false},
    {L"[^z-a]", L"m", true},
    {L"[а-я]", L"Ж", true},
    // Members that mean something elsewhere.
    {L"100[%]", L"100%", true},
    {L"100[%]", L"1000", false},
    {L"[_]x", L"_x", true},
    {L"[_]x", L"ax", false},
    {L"[[]x", L"[x", true},
    {L"[]]x", L"]x", true},
    {L"[^]]x", L"]x", false},
    {L"[^]]x", L"ax", true},
    {L"[a^]", L"^", true},
    {L"[-a]", L"-", true},
    {L"[a-]", L"-", true},
    {L"[a-]", L"b", false},
    {L"[%-_]x", L"Bx", true},
    {L"[Z-a]x", L"zx", true},
    {L"[Z-a]x", L"^x", true},
    {L"[Z-a]x", L"mx", false},
    // What is not closed is itself.
    {L"[abc", L"[abc", true},
    {L"[abc", L"a", false},
    {L"a[", L"a[", true},
    {L"[]", L"[]", true},
    {L"[^]", L"[^]", true},
    {L"[[[", L"[[[", true},
    {L"]", L"]", true},
    {L"a[b", L"A[B", true},
    {L"a[b", L"ab", false},
    {L"[%", L"[anything", true},
    {L"[%", L"anything", false},
    {L"[_", L"[x", true},
    {L"[^", L"[^", true},
    {L"[^", L"x", false},
    {L"[^%]", L"x", true},
    {L"[^%]", L"%", false},
    {L"[a-", L"[a-", true},
    {L"[a-", L"b", false},
    {L"[ab]c[de", L"bc[DE", true},
    {L"[ab]c[de", L"bcd", false},
    {L"[]%", L"[]x", true},
    {L"[]ab", L"]", false},
    {L"[]ab]", L"]", true},
    {L"[]ab]", L"b", true},
    {L"[^^]", L"^", false},
    {L"[^^]", L"x", true},
    {L"[a-b-c]", L"-", true},
    {L"[a-b-c]", L"c", true},
    {L"[a-b-c]", L"b", true},
    {L"[a-b-c]", L"d", false},
    {L"[--0]", L".", true},
    {L"[--0]", L"1", false},
    {L"[[-\\]]", L"\\]", true},
    {L"[[^]", L"^", true},
    // A set takes one character, never none and never two.
    {L"[ab]", L"", false},
    {L"[ab]", L"ab", false},
    {L"[^ab]", L"xy", false},
    {L"[ab]%", L"b", true},
    {L"%[0-9]", L"eth9", true},
    {L"%[0-9]", L"9eth", false},
    {L"%[^0-9]", L"9eth", true},
    {L"[e]th%[.]1002", L"ETH0.1002", true},
    // A backslash is a letter like others.
    {L"a\\%", L"a\\bc", true},
    {L"a\\%", L"a%", false},
    {L"PCI\\VEN_1AF4%", L"pci\\ven_1af4&dev", true},
    {L"a\\_", L"a\\x", true},
    // Beyond 16 bits of mask, and texts with what no pattern names.
    {L"%\xFFFD", L"a\xFFFD", true},
    {L"[\x0001-\xFFFF]", L"a", true},
};

TEST(Like, PatternsMatchWhatTheySay)
{
    for (const LikeRow& row : kRows)
    {
        SCOPED_TRACE(Utf8(row.text) + " LIKE " + Utf8(row.pattern));
        EXPECT_EQ(LikePattern(row.pattern).Matches(row.text), row.matches);
    }
}

// What LIKE means, stated as simply as possible: the slow way, for '%', '_' and letters.
bool SlowMatch(std::wstring_view pattern, std::wstring_view text)
{
    if (pattern.empty())
        return text.empty();
    if (pattern[0] == L'%')
        return SlowMatch(pattern.substr(1), text) || (!text.empty() && SlowMatch(pattern, text.substr(1)));
    return !text.empty() && (pattern[0] == L'_' || pattern[0] == text[0]) &&
           SlowMatch(pattern.substr(1), text.substr(1));
}

TEST(Like, AgreesWithItsDefinitionOnAllSmallCases)
{
    const auto word = [](unsigned number, unsigned letters, std::wstring_view alphabet)
    {
        std::wstring text;
        for (unsigned i = 0; i < letters; ++i, number /= static_cast<unsigned>(alphabet.size()))
            text += alphabet[number % alphabet.size()];
        return text;
    };
    std::size_t matches = 0;
    for (unsigned p = 0; p < 1024; ++p)
    {
        const std::wstring pattern = word(p, 5, L"ab%_");
        const LikePattern compiled(pattern);
        for (unsigned t = 0; t < 64; ++t)
        {
            const std::wstring text = word(t, 6, L"ab").substr(t % 4);
            const bool expected = SlowMatch(pattern, text);
            matches += expected ? 1 : 0;
            ASSERT_EQ(compiled.Matches(text), expected) << Utf8(text) << " LIKE " << Utf8(pattern);
        }
    }
    EXPECT_GT(matches, 1000u);
}

TEST(Like, PatternsLongerThanAWordOfBitsMatchOnBothSidesOfItsEdge)
{
    for (const std::size_t length : {62u, 63u, 64u, 65u, 127u, 128u, 129u, 300u})
    {
        const std::wstring text(length, L'x');
        EXPECT_TRUE(LikePattern(text).Matches(text)) << length;
        EXPECT_FALSE(LikePattern(text).Matches(text + L"x")) << length;
        EXPECT_FALSE(LikePattern(text).Matches(text.substr(1))) << length;
        EXPECT_TRUE(LikePattern(text + L"%").Matches(text + L"yyy")) << length;
        EXPECT_TRUE(LikePattern(L"%" + text).Matches(L"yyy" + text)) << length;
        EXPECT_TRUE(LikePattern(text + L"%z").Matches(text + L"yyyz")) << length;
        EXPECT_FALSE(LikePattern(text + L"%z").Matches(text + L"yyy")) << length;
    }
}

TEST(Like, AnEvilPatternTakesTimeInProportionToTheText)
{
    std::wstring pattern;
    for (int i = 0; i < 1000; ++i)
        pattern += L"a%";
    pattern += L"b";
    const std::wstring text(100000, L'a');
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(LikePattern(pattern).Matches(text));
    EXPECT_TRUE(LikePattern(pattern).Matches(text + L"b"));
    std::wstring sets;
    for (int i = 0; i < 680; ++i)
        sets += L"[^x]%_";
    EXPECT_TRUE(LikePattern(sets).Matches(text));
    std::wstring segment = L"%" + std::wstring(4000, L'a') + L"b";
    EXPECT_FALSE(LikePattern(segment).Matches(text));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2) * ORL_TEST_SLOWDOWN);
}

// Each of these makes a matcher that tries one choice after the other take for ever.
TEST(Like, NoPatternMakesALongTextSlow)
{
    const std::wstring many(100000, L'a');
    const auto repeat = [](std::wstring_view part, int times)
    {
        std::wstring all;
        while (times-- > 0)
            all += part;
        return all;
    };
    const struct
    {
        std::wstring pattern;
        bool matches; // many 'a'
        bool withEnd; // many 'a' and a 'b'
    } rows[] = {
        {repeat(L"%a", 2000) + L"%b", false, true},       {repeat(L"%a", 2000) + L"b", false, true},
        {repeat(L"%_", 2000) + L"b", false, true},        {repeat(L"%", 4000) + L"b", false, true},
        {repeat(L"%aaaaaaaaab", 300), false, false},      {repeat(L"%[a-z]", 600) + L"[^a]", false, true},
        {repeat(L"%[^b]", 800) + L"%", true, true},       {L"%" + repeat(L"_", 4000) + L"b", false, true},
        {L"%" + repeat(L"a", 4000) + L"[", false, false}, {repeat(L"[", 4000), false, false},
        {repeat(L"[a", 2000) + L"%", false, false},
    };
    const auto start = std::chrono::steady_clock::now();
    for (const auto& row : rows)
    {
        SCOPED_TRACE(Utf8(row.pattern.substr(0, 20)));
        const LikePattern pattern(row.pattern);
        EXPECT_EQ(pattern.Matches(many), row.matches);
        EXPECT_EQ(pattern.Matches(many + L"b"), row.withEnd);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4) * ORL_TEST_SLOWDOWN);
}

TEST(Like, EveryKindOfSetOfAFullPatternIsBuiltInNoTime)
{
    std::wstring ranges;
    for (unsigned i = 0; ranges.size() + 8 < kMaxLikePattern; ++i)
        ranges += std::wstring(L"[") + (i % 2 != 0 ? L"^" : L"") + static_cast<wchar_t>(0x4E00 + i) + L"-" +
                  static_cast<wchar_t>(0x9000 - i) + L"]";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(LikePattern(ranges).Matches(std::wstring(100000, L'\x5000')));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1) * ORL_TEST_SLOWDOWN);
}

TEST(Like, ATooLongPatternMatchesNothing)
{
    EXPECT_TRUE(LikePattern(std::wstring(kMaxLikePattern, L'%')).Matches(L"a"));
    EXPECT_FALSE(LikePattern(std::wstring(kMaxLikePattern + 1, L'%')).Matches(L"a"));
}

} // namespace
} // namespace wbem
