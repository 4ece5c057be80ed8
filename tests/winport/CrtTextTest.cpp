// Bounded copying, case, comparison and numbers of wide text.
#include "winport/portable/BoundedCrt.h"

#include <windows.h>

#include <cstdlib>
#include <cwchar>
#include <gtest/gtest.h>
#include <limits>

namespace
{

int g_handlerCalls = 0;

void CountCall(const wchar_t*, const wchar_t*, const wchar_t*, unsigned int, uintptr_t)
{
    ++g_handlerCalls;
}

// Copying under a handler that counts its calls.
class BoundedCrt : public ::testing::Test
{
protected:
    void SetUp() override
    {
        g_handlerCalls = 0;
        m_before = _set_invalid_parameter_handler(CountCall);
    }
    void TearDown() override { _set_invalid_parameter_handler(m_before); }

private:
    _invalid_parameter_handler m_before = nullptr;
};

TEST_F(BoundedCrt, TheHandlerIsTheOneThatWasSetLast)
{
    EXPECT_EQ(_get_invalid_parameter_handler(), CountCall);
}

TEST_F(BoundedCrt, ACopyThatFitsIsMadeInSilence)
{
    wchar_t text[4] = L"???";
    EXPECT_EQ(orl::BoundedCopy(text, 4, L"abc"), 0);
    EXPECT_STREQ(text, L"abc");
    EXPECT_EQ(orl::BoundedCopy(text, 4, L""), 0);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(g_handlerCalls, 0);
}

TEST_F(BoundedCrt, ACopyOneTooLongEmptiesTheDestinationAndCallsTheHandler)
{
    wchar_t text[3] = L"??";
    EXPECT_EQ(orl::BoundedCopy(text, 3, L"abc"), 34);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(g_handlerCalls, 1);
}

TEST_F(BoundedCrt, MissingArgumentsAreInvalid)
{
    wchar_t text[3] = L"??";
    EXPECT_EQ(orl::BoundedCopy(text, 3, nullptr), 22);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(orl::BoundedCopy(nullptr, 3, L"a"), 22);
    EXPECT_EQ(orl::BoundedCopy(text, 0, L"a"), 22);
    EXPECT_EQ(orl::BoundedAppend(nullptr, 3, L"a"), 22);
    EXPECT_EQ(orl::BoundedNumber(1, nullptr, 3, 10), 22);
    EXPECT_EQ(g_handlerCalls, 5);
}

TEST_F(BoundedCrt, AppendingGoesBehindTheTextThatIsThere)
{
    wchar_t text[7] = L"abc";
    EXPECT_EQ(orl::BoundedAppend(text, 7, L"def"), 0);
    EXPECT_STREQ(text, L"abcdef");
    EXPECT_EQ(orl::BoundedAppend(text, 7, L""), 0);
    EXPECT_EQ(g_handlerCalls, 0);
    EXPECT_EQ(orl::BoundedAppend(text, 7, L"g"), 34);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(g_handlerCalls, 1);
}

TEST_F(BoundedCrt, AppendingToATextWithoutEndIsInvalid)
{
    wchar_t text[3] = {L'a', L'b', L'c'};
    EXPECT_EQ(orl::BoundedAppend(text, 3, L"d"), 22);
    EXPECT_EQ(text[0], L'\0');
    EXPECT_EQ(g_handlerCalls, 1);
}

TEST_F(BoundedCrt, ANumberThatFitsHasItsDigits)
{
    wchar_t text[10];
    EXPECT_EQ(orl::BoundedNumber(999999999, text, 10, 10), 0);
    EXPECT_STREQ(text, L"999999999");
    EXPECT_EQ(orl::BoundedNumber(-12345678, text, 10, 10), 0);
    EXPECT_STREQ(text, L"-12345678");
    EXPECT_EQ(g_handlerCalls, 0);
}

TEST_F(BoundedCrt, ANumberThatDoesNotFitLeavesNothing)
{
    wchar_t text[10] = L"?";
    EXPECT_EQ(orl::BoundedNumber(1000000000, text, 10, 10), 34);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(orl::BoundedNumber(-100000000, text, 10, 10), 34);
    EXPECT_EQ(orl::BoundedNumber(1, text, 10, 1), 22);
    EXPECT_EQ(orl::BoundedNumber(1, text, 10, 37), 22);
    EXPECT_EQ(g_handlerCalls, 4);
}

TEST_F(BoundedCrt, WithoutAHandlerTheErrorIsOnlyReturned)
{
    _set_invalid_parameter_handler(nullptr);
    wchar_t text[2];
    EXPECT_EQ(orl::BoundedCopy(text, 2, L"ab"), 34);
    EXPECT_EQ(g_handlerCalls, 0);
}

TEST(CrtText, TheRuntimesOwnFunctionsGiveTheSameResults)
{
    wchar_t text[4] = L"?";
    EXPECT_EQ(wcscpy_s(text, 4, L"abc"), 0);
    EXPECT_EQ(wcscpy_s(text, 4, L"abcd"), 34);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(wcscat_s(text, 4, L"ab"), 0);
    EXPECT_EQ(wcscat_s(text, 4, L"cd"), 34);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(_itow_s(-12, text, 4, 10), 0);
    EXPECT_STREQ(text, L"-12");
    EXPECT_EQ(_itow_s(-123, text, 4, 10), 34);
    EXPECT_STREQ(text, L"");
}

struct Digits
{
    int value;
    int radix;
    const wchar_t* text;
};

TEST(CrtText, NumbersAreWrittenInAnyRadix)
{
    const Digits cases[] = {{0, 10, L"0"},
                            {255, 16, L"ff"},
                            {-1, 16, L"ffffffff"},
                            {-1, 2, L"11111111111111111111111111111111"},
                            {35, 36, L"z"},
                            {std::numeric_limits<int>::min(), 10, L"-2147483648"},
                            {std::numeric_limits<int>::max(), 8, L"17777777777"}};
    for (const Digits& one : cases)
    {
        wchar_t text[40];
        EXPECT_EQ(_itow_s(one.value, text, 40, one.radix), 0);
        EXPECT_STREQ(text, one.text);
    }
}

TEST(CrtText, CaseChangesAsciiLettersOnly)
{
    wchar_t text[] = L"Ab\u00c4\u00e4 9_Zz";
    EXPECT_STREQ(_wcslwr(text), L"ab\u00c4\u00e4 9_zz");
    EXPECT_STREQ(_wcsupr(text), L"AB\u00c4\u00e4 9_ZZ");
}

TEST(CrtText, ComparisonLooksAwayFromCase)
{
    EXPECT_EQ(_wcsicmp(L"QvSetup", L"qvSETUP"), 0);
    EXPECT_LT(_wcsicmp(L"abc", L"ABD"), 0);
    EXPECT_GT(_wcsicmp(L"abcd", L"ABC"), 0);
    // '_' lies between the upper and the lower case letters: the lower case decides.
    EXPECT_GT(_wcsicmp(L"a", L"_"), 0);
    EXPECT_EQ(_wcsnicmp(L"abcX", L"ABCY", 3), 0);
    EXPECT_NE(_wcsnicmp(L"abcX", L"ABCY", 4), 0);
    EXPECT_EQ(_wcsnicmp(L"a", L"b", 0), 0);
}

TEST(CrtText, NumbersAreReadUpToTheFirstOtherCharacter)
{
    const std::pair<const wchar_t*, int> cases[] = {
        {L"42", 42}, {L"  -42abc", -42},          {L"+7", 7},       {L"", 0},     {L"abc", 0}, {L"1252", 1252},
        {L"- 1", 0}, {L"2147483647", 2147483647}, {L"\t\n 12", 12}, {L"0x10", 0}, {L"007", 7}};
    for (const auto& [text, number] : cases)
        EXPECT_EQ(_wtoi(text), number) << text;
}

TEST(CrtText, NumbersOutOfRangeGiveTheLimit)
{
    EXPECT_EQ(_wtoi(L"2147483648"), std::numeric_limits<int>::max());
    EXPECT_EQ(_wtoi(L"99999999999999999999"), std::numeric_limits<int>::max());
    EXPECT_EQ(_wtoi(L"-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(_wtoi(L"-2147483649"), std::numeric_limits<int>::min());
    EXPECT_EQ(_wtoi64(L"9223372036854775807"), std::numeric_limits<LONGLONG>::max());
    EXPECT_EQ(_wtoi64(L"-9223372036854775808"), std::numeric_limits<LONGLONG>::min());
}

} // namespace
