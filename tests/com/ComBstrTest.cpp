// CComBSTR, and the allocations that tests can make fail.
#include "com/OrlAtl.h"

#include <gtest/gtest.h>

namespace
{

// Runs something whose first allocation fails, and gives the HRESULT that is thrown.
template <class Action>
HRESULT ThrownWhenMemoryIsShort(const Action& action)
{
    OrlFailBstrAllocation(1);
    HRESULT thrown = S_OK;
    try
    {
        action();
    }
    catch (const CAtlException& exception)
    {
        thrown = exception;
    }
    OrlFailBstrAllocation(0);
    return thrown;
}

TEST(ComBstr, ItHoldsACopyOfATextOrNothing)
{
    const CComBSTR text(L"eth0");
    EXPECT_STREQ(text, L"eth0");
    EXPECT_EQ(text.Length(), 4u);
    EXPECT_EQ(text.ByteLength(), 4 * sizeof(wchar_t));
    const CComBSTR nothing;
    EXPECT_EQ(nothing.m_str, nullptr);
    EXPECT_TRUE(!nothing);
    EXPECT_EQ(nothing.Length(), 0u);
    const CComBSTR fromNull(static_cast<LPCOLESTR>(nullptr));
    EXPECT_EQ(fromNull.m_str, nullptr);
    const CComBSTR empty(L"");
    EXPECT_NE(empty.m_str, nullptr);
}

TEST(ComBstr, ACountedTextKeepsItsZeros)
{
    const CComBSTR text(3, L"a\0b");
    EXPECT_EQ(text.Length(), 3u);
    const CComBSTR copy(text);
    EXPECT_EQ(copy.Length(), 3u);
    EXPECT_EQ(copy.m_str[2], L'b');
}

TEST(ComBstr, CopiesAreTheirOwnAndMovesLeaveNothing)
{
    CComBSTR first(L"one");
    CComBSTR second(first);
    EXPECT_NE(first.m_str, second.m_str);
    CComBSTR third(std::move(second));
    EXPECT_EQ(second.m_str, nullptr);
    EXPECT_STREQ(third, L"one");
    first = L"two";
    third = first;
    EXPECT_STREQ(third, L"two");
    CComBSTR& itself = third;
    third = itself;
    EXPECT_STREQ(third, L"two");
    third = std::move(first);
    EXPECT_STREQ(third, L"two");
    EXPECT_EQ(first.m_str, nullptr);
    third = nullptr;
    EXPECT_EQ(third.m_str, nullptr);
}

TEST(ComBstr, ATextIsHandedInAndOut)
{
    CComBSTR text;
    text.Attach(SysAllocString(L"mine"));
    BSTR out = text.Copy();
    EXPECT_STREQ(out, L"mine");
    EXPECT_NE(out, text.m_str);
    SysFreeString(out);
    EXPECT_EQ(text.CopyTo(&out), S_OK);
    EXPECT_STREQ(out, L"mine");
    SysFreeString(out);
    EXPECT_EQ(text.CopyTo(nullptr), E_POINTER);
    out = text.Detach();
    EXPECT_EQ(text.m_str, nullptr);
    SysFreeString(out);
}

TEST(ComBstr, ItsAddressTakesAnAnswerAndLosesNothing)
{
    CComBSTR text(L"before");
    *&text = SysAllocString(L"after");
    EXPECT_STREQ(text, L"after");
}

TEST(ComBstr, TextsAreAppendedAlsoTheirOwn)
{
    CComBSTR text;
    text += L"ab";
    text += CComBSTR(L"cd");
    EXPECT_EQ(text.Append(text), S_OK);
    EXPECT_STREQ(text, L"abcdabcd");
    EXPECT_EQ(text.Append(L"xyz", 2), S_OK);
    EXPECT_STREQ(text, L"abcdabcdxy");
    EXPECT_EQ(text.Append(static_cast<LPCOLESTR>(nullptr)), S_OK);
    EXPECT_EQ(text.Length(), 10u);
}

TEST(ComBstr, TextsCompareByTheirCharacters)
{
    const CComBSTR a(L"a");
    const CComBSTR b(L"b");
    EXPECT_TRUE(a == CComBSTR(L"a"));
    EXPECT_TRUE(a == L"a");
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a < b);
    EXPECT_FALSE(a == CComBSTR(L"A"));
    EXPECT_TRUE(CComBSTR() == CComBSTR(L""));
    EXPECT_TRUE(CComBSTR() == nullptr);
}

TEST(ComBstr, WithoutMemoryItThrows)
{
    const CComBSTR text(L"text");
    EXPECT_EQ(ThrownWhenMemoryIsShort([] { CComBSTR made(L"x"); }), E_OUTOFMEMORY);
    EXPECT_EQ(ThrownWhenMemoryIsShort([&] { CComBSTR copy(text); }), E_OUTOFMEMORY);
    CComBSTR target(L"kept");
    EXPECT_EQ(ThrownWhenMemoryIsShort([&] { target = text; }), E_OUTOFMEMORY);
    EXPECT_EQ(ThrownWhenMemoryIsShort([&] { target = L"other"; }), E_OUTOFMEMORY);
    EXPECT_EQ(ThrownWhenMemoryIsShort([&] { target += L"other"; }), E_OUTOFMEMORY);
    EXPECT_STREQ(target, L"kept");
    BSTR out = nullptr;
    OrlFailBstrAllocation(1);
    EXPECT_EQ(text.CopyTo(&out), E_OUTOFMEMORY);
    EXPECT_EQ(out, nullptr);
}

TEST(BstrAllocation, TheNthFromNowFailsOnce)
{
    OrlFailBstrAllocation(3);
    for (int number = 1; number <= 5; ++number)
    {
        BSTR text = OrlAllocBstr(L"x", 1);
        EXPECT_EQ(text == nullptr, number == 3) << number;
        SysFreeString(text);
    }
}

TEST(BstrAllocation, AFailureCanBeCalledOff)
{
    OrlFailBstrAllocation(1);
    OrlFailBstrAllocation(0);
    BSTR text = OrlAllocBstr(L"x", 1);
    EXPECT_NE(text, nullptr);
    SysFreeString(text);
}

TEST(BstrAllocation, EveryRequestIsCounted)
{
    const ULONG before = OrlBstrAllocations();
    SysFreeString(OrlAllocBstr(L"x", 1));
    OrlFailBstrAllocation(1);
    EXPECT_EQ(OrlAllocBstr(L"x"), nullptr);
    EXPECT_EQ(OrlAllocBstr(nullptr), nullptr);
    EXPECT_EQ(OrlBstrAllocations(), before + 2);
}

TEST(BstrAllocation, ALengthThatDoesNotFitIsShortOfMemory)
{
    EXPECT_EQ(OrlAllocBstr(nullptr, size_t{1} << 40), nullptr);
}

} // namespace
