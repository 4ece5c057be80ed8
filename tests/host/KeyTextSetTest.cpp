// The set of key texts by which the ends of associations are found again.
#include "host/KeyTextSet.h"

#include <gtest/gtest.h>

#include <string>

using orl::KeyTextSet;

namespace
{

std::wstring Numbered(std::size_t i)
{
    return L"sim" + std::to_wstring(i % 7) + L'\0' + std::to_wstring(i);
}

} // namespace

TEST(KeyTextSet, HoldsNothingAtFirst)
{
    KeyTextSet set;
    EXPECT_FALSE(set.Contains(L""));
    EXPECT_FALSE(set.Contains(L"a"));
    EXPECT_EQ(set.Size(), 0u);
}

TEST(KeyTextSet, TakesATextOnce)
{
    KeyTextSet set;
    EXPECT_TRUE(set.Insert(L"a"));
    EXPECT_FALSE(set.Insert(L"a"));
    EXPECT_TRUE(set.Insert(L""));
    EXPECT_FALSE(set.Insert(L""));
    EXPECT_EQ(set.Size(), 2u);
}

TEST(KeyTextSet, TellsTextsApartThatDifferBehindANul)
{
    using namespace std::string_view_literals;
    KeyTextSet set;
    set.Insert(L"a\0b"sv);
    EXPECT_TRUE(set.Contains(L"a\0b"sv));
    EXPECT_FALSE(set.Contains(L"a"sv));
    EXPECT_FALSE(set.Contains(L"a\0c"sv));
}

TEST(KeyTextSet, FindsEveryTextInWhateverOrder)
{
    constexpr std::size_t Count = 10000;
    KeyTextSet set;
    for (std::size_t i = 0; i < Count; ++i)
        ASSERT_TRUE(set.Insert(Numbered(i)));
    for (std::size_t i = 0; i < Count; ++i)
        ASSERT_TRUE(set.Contains(Numbered(i))) << i;
    for (std::size_t i = Count; i-- > 0;)
        ASSERT_TRUE(set.Contains(Numbered(i))) << i;
    for (std::size_t i = 0; i < Count; i += 3)
        ASSERT_TRUE(set.Contains(Numbered(i))) << i;
    for (std::size_t i = Count; i < 2 * Count; ++i)
        ASSERT_FALSE(set.Contains(Numbered(i))) << i;
    for (std::size_t i = 0; i < Count; ++i)
        ASSERT_FALSE(set.Insert(Numbered(i))) << i;
    EXPECT_EQ(set.Size(), Count);
}

TEST(KeyTextSet, KeepsTextsLongerThanItsBlocks)
{
    const std::wstring longText(100000, L'x');
    KeyTextSet set;
    set.Insert(L"before");
    set.Insert(longText);
    set.Insert(L"after");
    EXPECT_TRUE(set.Contains(longText));
    EXPECT_TRUE(set.Contains(L"after"));
    EXPECT_TRUE(set.Contains(L"before"));
    EXPECT_FALSE(set.Contains(longText + L"x"));
}
