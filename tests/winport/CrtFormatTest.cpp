// Wide printf.
#include <windows.h>

#include <cstdarg>
#include <cstdio>
#include <cwchar>
#include <gtest/gtest.h>
#include <limits>

namespace
{

// Formats through the argument-list form, as this system's callers do.
int Format(wchar_t* text, size_t count, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = _vsnwprintf(text, count, format, arguments);
    va_end(arguments);
    return result;
}

template <class... Arguments>
std::wstring Formatted(const wchar_t* format, Arguments... arguments)
{
    wchar_t text[512];
    const int length = Format(text, 512, format, arguments...);
    EXPECT_EQ(static_cast<size_t>(length), std::wcslen(text));
    return text;
}

TEST(WidePrintf, TextsAreWideUnlessTheDirectiveSaysNarrow)
{
    EXPECT_EQ(Formatted(L"<%s>", L"wide"), L"<wide>");
    EXPECT_EQ(Formatted(L"<%ls>", L"wide"), L"<wide>");
    EXPECT_EQ(Formatted(L"<%ws>", L"wide"), L"<wide>");
    EXPECT_EQ(Formatted(L"<%hs>", "narrow"), L"<narrow>");
    EXPECT_EQ(Formatted(L"<%S>", "narrow"), L"<narrow>");
    EXPECT_EQ(Formatted(L"<%s>", L"\u00e4\u4e2d"), L"<\u00e4\u4e2d>");
    EXPECT_EQ(Formatted(L"<%s>", static_cast<const wchar_t*>(nullptr)), L"<(null)>");
    EXPECT_EQ(Formatted(L"<%hs>", static_cast<const char*>(nullptr)), L"<(null)>");
}

TEST(WidePrintf, TextsAreCutAndFilledUp)
{
    EXPECT_EQ(Formatted(L"<%6s>", L"abc"), L"<   abc>");
    EXPECT_EQ(Formatted(L"<%-6s>", L"abc"), L"<abc   >");
    EXPECT_EQ(Formatted(L"<%.2s>", L"abc"), L"<ab>");
    EXPECT_EQ(Formatted(L"<%5.2s>", L"abc"), L"<   ab>");
    EXPECT_EQ(Formatted(L"<%.0s>", L"abc"), L"<>");
    EXPECT_EQ(Formatted(L"<%*s>", 5, L"abc"), L"<  abc>");
    EXPECT_EQ(Formatted(L"<%*s>", -5, L"abc"), L"<abc  >");
    EXPECT_EQ(Formatted(L"<%.*s>", 1, L"abc"), L"<a>");
}

TEST(WidePrintf, ACutTextNeedsNoTerminator)
{
    const wchar_t unterminated[] = {L'a', L'b', L'c'};
    EXPECT_EQ(Formatted(L"%.3s", unterminated), L"abc");
}

TEST(WidePrintf, CharactersAreWideUnlessTheDirectiveSaysNarrow)
{
    EXPECT_EQ(Formatted(L"<%c>", L'x'), L"<x>");
    EXPECT_EQ(Formatted(L"<%c>", L'\u00e4'), L"<\u00e4>");
    EXPECT_EQ(Formatted(L"<%hc>", 'x'), L"<x>");
    EXPECT_EQ(Formatted(L"<%C>", 'x'), L"<x>");
    EXPECT_EQ(Formatted(L"<%3c>", L'x'), L"<  x>");
}

TEST(WidePrintf, WholeNumbers)
{
    EXPECT_EQ(Formatted(L"%d", 42), L"42");
    EXPECT_EQ(Formatted(L"%i", -42), L"-42");
    EXPECT_EQ(Formatted(L"%u", 4294967295u), L"4294967295");
    EXPECT_EQ(Formatted(L"%x", 0xBEEFu), L"beef");
    EXPECT_EQ(Formatted(L"%X", 0xBEEFu), L"BEEF");
    EXPECT_EQ(Formatted(L"%o", 8u), L"10");
    EXPECT_EQ(Formatted(L"%d", std::numeric_limits<int>::min()), L"-2147483648");
    EXPECT_EQ(Formatted(L"%hd", 0x12345), L"9029");
    EXPECT_EQ(Formatted(L"%hu", 0x1FFFF), L"65535");
}

TEST(WidePrintf, LIs32BitsWideAndI64Is64)
{
    EXPECT_EQ(Formatted(L"%ld", static_cast<LONG>(-5)), L"-5");
    EXPECT_EQ(Formatted(L"%lu", static_cast<ULONG>(4294967295u)), L"4294967295");
    EXPECT_EQ(Formatted(L"%lx|%d", static_cast<ULONG>(0xFFFFFFFF), 7), L"ffffffff|7");
    EXPECT_EQ(Formatted(L"%I64X", ULONGLONG{0x123456789ABCDEF0}), L"123456789ABCDEF0");
    EXPECT_EQ(Formatted(L"%I64d", LONGLONG{-1}), L"-1");
    EXPECT_EQ(Formatted(L"%lld", LONGLONG{-1234567890123}), L"-1234567890123");
    EXPECT_EQ(Formatted(L"%llu", std::numeric_limits<ULONGLONG>::max()), L"18446744073709551615");
    EXPECT_EQ(Formatted(L"%I32u", 7u), L"7");
    EXPECT_EQ(Formatted(L"%Id", INT_PTR{-9000000000}), L"-9000000000");
}

TEST(WidePrintf, FlagsWidthAndPrecisionOfNumbers)
{
    EXPECT_EQ(Formatted(L"<%5d>", 42), L"<   42>");
    EXPECT_EQ(Formatted(L"<%-5d>", 42), L"<42   >");
    EXPECT_EQ(Formatted(L"<%05d>", -42), L"<-0042>");
    EXPECT_EQ(Formatted(L"<%+d>", 42), L"<+42>");
    EXPECT_EQ(Formatted(L"<% d>", 42), L"< 42>");
    EXPECT_EQ(Formatted(L"<%.5d>", -42), L"<-00042>");
    EXPECT_EQ(Formatted(L"<%8.5d>", -42), L"<  -00042>");
    EXPECT_EQ(Formatted(L"<%02.2d>", 7), L"<07>");
    EXPECT_EQ(Formatted(L"<%03.3d>", 7), L"<007>");
    EXPECT_EQ(Formatted(L"<%.0d>", 0), L"<>");
    EXPECT_EQ(Formatted(L"<%#x>", 255u), L"<0xff>");
    EXPECT_EQ(Formatted(L"<%#X>", 255u), L"<0XFF>");
    EXPECT_EQ(Formatted(L"<%#x>", 0u), L"<0>");
    EXPECT_EQ(Formatted(L"<%#o>", 8u), L"<010>");
    EXPECT_EQ(Formatted(L"<%#010x>", 255u), L"<0x000000ff>");
    EXPECT_EQ(Formatted(L"<%*d>", 4, 1), L"<   1>");
}

TEST(WidePrintf, RealNumbers)
{
    EXPECT_EQ(Formatted(L"%f", 1.5), L"1.500000");
    EXPECT_EQ(Formatted(L"%.2f", -2.345), L"-2.35");
    EXPECT_EQ(Formatted(L"%.0f", 2.6), L"3");
    EXPECT_EQ(Formatted(L"%e", 12345.678), L"1.234568e+004");
    EXPECT_EQ(Formatted(L"%.1E", 0.00012), L"1.2E-004");
    EXPECT_EQ(Formatted(L"%g", 0.0001), L"0.0001");
    EXPECT_EQ(Formatted(L"%g", 1e20), L"1e+020");
    EXPECT_EQ(Formatted(L"%G", 100000.0), L"100000");
    EXPECT_EQ(Formatted(L"<%8.2f>", 3.14159), L"<    3.14>");
    EXPECT_EQ(Formatted(L"<%-8.2f>", 3.14159), L"<3.14    >");
    EXPECT_EQ(Formatted(L"<%08.2f>", -3.14159), L"<-0003.14>");
    EXPECT_EQ(Formatted(L"<%+.1f>", 1.0), L"<+1.0>");
    EXPECT_EQ(Formatted(L"%.3f", 0.0), L"0.000");
    EXPECT_EQ(Formatted(L"%.1f", 1e22), L"10000000000000000000000.0");
}

TEST(WidePrintf, PointersHaveAllTheirDigits)
{
    EXPECT_EQ(Formatted(L"%p", reinterpret_cast<void*>(0xABCDEF)), L"0000000000ABCDEF");
}

TEST(WidePrintf, PercentAndUnknownDirectivesAreThemselves)
{
    EXPECT_EQ(Formatted(L"100%% of %s", L"all"), L"100% of all");
    EXPECT_EQ(Formatted(L"%y"), L"y");
    EXPECT_EQ(Formatted(L"%"), L"");
    EXPECT_EQ(Formatted(L""), L"");
}

TEST(WidePrintf, AnExactFitHasNoTerminatorAndReturnsItsLength)
{
    wchar_t text[5] = {L'?', L'?', L'?', L'?', L'!'};
    EXPECT_EQ(Format(text, 4, L"%s", L"abcd"), 4);
    EXPECT_EQ(std::wstring(text, 5), L"abcd!");
}

TEST(WidePrintf, ATextThatIsTooLongIsCutAndReturnsMinusOne)
{
    wchar_t text[5] = {L'?', L'?', L'?', L'?', L'!'};
    EXPECT_EQ(Format(text, 4, L"%s", L"abcde"), -1);
    EXPECT_EQ(std::wstring(text, 5), L"abcd!");
}

TEST(WidePrintf, ATextThatFitsIsTerminated)
{
    wchar_t text[5] = {L'?', L'?', L'?', L'?', L'!'};
    EXPECT_EQ(Format(text, 4, L"%d", 123), 3);
    EXPECT_STREQ(text, L"123");
    EXPECT_EQ(text[4], L'!');
}

TEST(WidePrintf, WithoutADestinationTheLengthIsCounted)
{
    EXPECT_EQ(Format(nullptr, 0, L"%s-%d", L"abc", 12), 6);
}

TEST(WidePrintf, TheDirectFormIsTheSame)
{
    wchar_t text[16];
    EXPECT_EQ(_snwprintf(text, 16, L"%s.%s=\"%d\"", L"A", L"B", 5), 7);
    EXPECT_STREQ(text, L"A.B=\"5\"");
}

TEST(WidePrintf, TheSafeFormAlwaysTerminates)
{
    wchar_t text[4];
    EXPECT_EQ(_snwprintf_s(text, 4, _TRUNCATE, L"%s", L"abc"), 3);
    EXPECT_STREQ(text, L"abc");
    EXPECT_EQ(_snwprintf_s(text, 4, _TRUNCATE, L"%s", L"abcd"), -1);
    EXPECT_STREQ(text, L"abc");
    EXPECT_EQ(_snwprintf_s(text, 4, 2, L"%s", L"abcd"), -1);
    EXPECT_STREQ(text, L"ab");
}

TEST(WidePrintf, TheSafeFormEmptiesWhatTheCountWouldOverrun)
{
    wchar_t text[4] = L"???";
    EXPECT_EQ(_snwprintf_s(text, 4, 10, L"%s", L"abcdef"), -1);
    EXPECT_STREQ(text, L"");
}

} // namespace
