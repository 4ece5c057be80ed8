// Numbers as the languages write them.
#include "Shown.h"
#include "wbem/Number.h"

#include <gtest/gtest.h>

#include <limits>

namespace wbem
{
namespace
{

constexpr const char* kNotANumber = "not a number";
constexpr const char* kTooLarge = "too large";

struct NumberRow
{
    std::wstring_view text;
    const char* plain; // what it is in a path and in WQL
    const char* mof;
};

constexpr NumberRow kRows[] = {
    {L"0", "sint32 0", "sint32 0"},
    {L"-0", "sint32 0", "sint32 0"},
    {L"+7", "sint32 7", "sint32 7"},
    {L"2147483647", "sint32 2147483647", "sint32 2147483647"},
    {L"2147483648", "sint64 2147483648", "sint64 2147483648"},
    {L"-2147483648", "sint32 -2147483648", "sint32 -2147483648"},
    {L"-2147483649", "sint64 -2147483649", "sint64 -2147483649"},
    {L"9223372036854775807", "sint64 9223372036854775807", "sint64 9223372036854775807"},
    {L"9223372036854775808", "uint64 9223372036854775808", "uint64 9223372036854775808"},
    {L"-9223372036854775808", "sint64 -9223372036854775808", "sint64 -9223372036854775808"},
    {L"18446744073709551615", "uint64 18446744073709551615", "uint64 18446744073709551615"},
    {L"-9223372036854775809", kTooLarge, kTooLarge},
    {L"18446744073709551616", kTooLarge, kTooLarge},
    {L"99999999999999999999999999999999", kTooLarge, kTooLarge},
    {L"0x1F", "sint32 31", "sint32 31"},
    {L"0XffffFFFFffffFFFF", "uint64 18446744073709551615", "uint64 18446744073709551615"},
    {L"-0x8000000000000000", "sint64 -9223372036854775808", "sint64 -9223372036854775808"},
    {L"0x10000000000000000", kTooLarge, kTooLarge},
    {L"0x", kNotANumber, kNotANumber},
    {L"0xG", kNotANumber, kNotANumber},
    {L"017", "sint32 17", "sint32 15"},
    {L"08", "sint32 8", kNotANumber},
    {L"101b", kNotANumber, "sint32 5"},
    {L"-11B", kNotANumber, "sint32 -3"},
    {L"102b", kNotANumber, kNotANumber},
    {L"b", kNotANumber, kNotANumber},
    {L"1.5", "real64 1.5", "real64 1.5"},
    {L"-1.5e3", "real64 -1500.0", "real64 -1500.0"},
    {L"1E-2", "real64 0.01", "real64 0.01"},
    {L".5", "real64 0.5", "real64 0.5"},
    {L"5.", "real64 5.0", "real64 5.0"},
    {L"010.5", "real64 10.5", "real64 10.5"},
    {L"1e400", kTooLarge, kTooLarge},
    {L"1e", kNotANumber, kNotANumber},
    {L"1.5.2", kNotANumber, kNotANumber},
    {L".", kNotANumber, kNotANumber},
    {L"", kNotANumber, kNotANumber},
    {L"-", kNotANumber, kNotANumber},
    {L"--5", kNotANumber, kNotANumber},
    {L"+-5.0", kNotANumber, kNotANumber},
    {L"5 ", kNotANumber, kNotANumber},
    {L"12ab", kNotANumber, kNotANumber},
    {L"inf", kNotANumber, kNotANumber},
    {L"nan", kNotANumber, kNotANumber},
    {L"１", kNotANumber, kNotANumber},
};

std::string Read(std::wstring_view text, IntegerForms forms)
{
    NumberFault fault = NumberFault::NotANumber;
    if (const auto value = ParseNumber(text, forms, fault))
        return Shown(*value);
    return fault == NumberFault::TooLarge ? kTooLarge : kNotANumber;
}

TEST(Number, TextsAreReadExactlyOrRefused)
{
    for (const NumberRow& row : kRows)
    {
        SCOPED_TRACE(Utf8(row.text));
        EXPECT_EQ(Read(row.text, IntegerForms::Plain), row.plain);
        EXPECT_EQ(Read(row.text, IntegerForms::Mof), row.mof);
    }
}

TEST(Number, RealTextReadsBackAsTheSameReal)
{
    for (const double value : {0.0, -0.0, 1.0, 0.1, 1e300, 5e-324, 1e21, 123456789.125, -2.5e-10})
    {
        NumberFault fault = NumberFault::NotANumber;
        const std::wstring text = RealText(value);
        const auto back = ParseNumber(text, IntegerForms::Mof, fault);
        ASSERT_TRUE(back) << Utf8(text);
        EXPECT_EQ(back->Type(), CimType::Real64) << Utf8(text);
        EXPECT_EQ(back->AsReal(), value) << Utf8(text);
    }
    EXPECT_EQ(RealText(3), L"3.0");
    EXPECT_EQ(RealText(1e30), L"1e+30");
}

TEST(Number, ExtentEndsWhereANumberCannotGoOn)
{
    EXPECT_EQ(NumberExtent(L"12,13"), 2u);
    EXPECT_EQ(NumberExtent(L"-1.5e+10)"), 8u);
    EXPECT_EQ(NumberExtent(L"5-3"), 1u);
    EXPECT_EQ(NumberExtent(L"0x1e+5"), 4u) << "an 'e' of a hexadecimal number is a digit";
    EXPECT_EQ(NumberExtent(L"12abc;"), 5u) << "what is written together is judged together";
    EXPECT_EQ(NumberExtent(L"-"), 1u);
    EXPECT_EQ(NumberExtent(L""), 0u);
}

TEST(Number, AMillionDigitsAreRefusedAtOnce)
{
    NumberFault fault = NumberFault::NotANumber;
    EXPECT_FALSE(ParseNumber(std::wstring(1000000, L'9'), IntegerForms::Plain, fault));
    EXPECT_EQ(fault, NumberFault::TooLarge);
    EXPECT_FALSE(ParseNumber(L"0." + std::wstring(1000000, L'9'), IntegerForms::Plain, fault));
    EXPECT_EQ(fault, NumberFault::NotANumber);
}

} // namespace
} // namespace wbem
