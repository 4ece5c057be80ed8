// In-parameters from the texts of a command line.
#include "tools/orlwmi/ParameterValue.h"
#include "tools/orlwmi/Failure.h"

#include "tests/client/FakeWmi.h"

#include <gtest/gtest.h>

using namespace orl::client;
using orl::test::NotedValue;

namespace
{

constexpr LONG ArrayOf(LONG type)
{
    return type | CIM_FLAG_ARRAY;
}

TEST(ParameterValues, TravelAsTheirTypeDoes)
{
    struct Case
    {
        LONG type;
        std::vector<std::string> texts;
        std::wstring value;
    };
    const Case cases[] = {
        {CIM_STRING, {"a b"}, L"BSTR a b"},
        {CIM_STRING, {""}, L"BSTR "},
        {CIM_STRING, {"[a,b]"}, L"BSTR [a,b]"},
        {CIM_STRING, {"\"NULL\""}, L"BSTR NULL"},
        {CIM_STRING, {R"("a\"b\\c\d")"}, L"BSTR a\"b\\c\\d"},
        {CIM_STRING, {"\""}, L"BSTR \""},
        {CIM_STRING, {"null"}, L"BSTR null"},
        {CIM_STRING, {"NULL"}, L"NULL"},
        {CIM_STRING, {"\xC3\xA9"}, L"BSTR \u00e9"},
        {CIM_DATETIME, {"20260101000000.000000+000"}, L"BSTR 20260101000000.000000+000"},
        {CIM_REFERENCE, {"A.B=\"c\""}, L"BSTR A.B=\"c\""},
        {CIM_CHAR16, {"x"}, L"I2 120"},
        {CIM_CHAR16, {"\xEF\xBC\xA1"}, L"I2 -223"},
        {CIM_BOOLEAN, {"true"}, L"BOOL true"},
        {CIM_BOOLEAN, {"FALSE"}, L"BOOL false"},
        {CIM_BOOLEAN, {"NULL"}, L"NULL"},
        {CIM_SINT8, {"-128"}, L"I2 -128"},
        {CIM_UINT8, {"0xFF"}, L"UI1 255"},
        {CIM_SINT16, {"-0x8000"}, L"I2 -32768"},
        {CIM_UINT16, {"65535"}, L"I4 65535"},
        {CIM_SINT32, {"-2147483648"}, L"I4 -2147483648"},
        {CIM_UINT32, {"4294967295"}, L"I4 -1"},
        {CIM_UINT32, {"0X10"}, L"I4 16"},
        {CIM_UINT32, {"+7"}, L"I4 7"},
        {CIM_UINT32, {"-0"}, L"I4 0"},
        {CIM_SINT64, {"-9223372036854775808"}, L"BSTR -9223372036854775808"},
        {CIM_UINT64, {"0xFFFFFFFFFFFFFFFF"}, L"BSTR 18446744073709551615"},
        {CIM_REAL32, {"1.5"}, L"R4 1.500000"},
        {CIM_REAL64, {"-2e3"}, L"R8 -2000.000000"},
        {ArrayOf(CIM_STRING), {"a", "b"}, L"BSTR[] {a, b}"},
        {ArrayOf(CIM_STRING), {"[a, b]"}, L"BSTR[] {a, b}"},
        {ArrayOf(CIM_STRING), {R"(["a,b","c\"]"])"}, L"BSTR[] {a,b, c\"]}"},
        {ArrayOf(CIM_STRING), {"a"}, L"BSTR[] {a}"},
        {ArrayOf(CIM_STRING), {"[a", "b]"}, L"BSTR[] {[a, b]}"},
        {ArrayOf(CIM_STRING), {"[]"}, L"BSTR[] {}"},
        {ArrayOf(CIM_STRING), {"[,]"}, L"BSTR[] {, }"},
        {ArrayOf(CIM_STRING), {"NULL"}, L"NULL"},
        {ArrayOf(CIM_UINT8), {"[1,2,0xff]"}, L"UI1[] {1, 2, 255}"},
        {ArrayOf(CIM_SINT8), {"-1"}, L"I2[] {-1}"},
        {ArrayOf(CIM_UINT32), {"1", "4294967295"}, L"I4[] {1, -1}"},
        {ArrayOf(CIM_UINT64), {"[18446744073709551615]"}, L"BSTR[] {18446744073709551615}"},
        {ArrayOf(CIM_BOOLEAN), {"[true,FALSE]"}, L"BOOL[] {true, false}"},
        {ArrayOf(CIM_REAL32), {"[1,2.5]"}, L"R4[] {1.000000, 2.500000}"},
        {ArrayOf(CIM_REAL64), {"0.5"}, L"R8[] {0.500000}"},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(NotedValue(MakeParameterValue("the parameter P", c.type, c.texts)), c.value)
            << c.type << " of " << testing::PrintToString(c.texts);
    }
}

TEST(ParameterValues, AreRefusedWhenTheyAreNoneOfTheType)
{
    struct Case
    {
        LONG type;
        std::vector<std::string> texts;
        std::string message;
    };
    const std::string wants = "the parameter P wants ";
    const Case cases[] = {
        {CIM_BOOLEAN, {"1"}, wants + "TRUE or FALSE, not 1"},
        {CIM_BOOLEAN, {""}, wants + "TRUE or FALSE, not "},
        {CIM_SINT8, {"-129"}, wants + "a whole number from -128 to 127, not -129"},
        {CIM_SINT8, {"128"}, wants + "a whole number from -128 to 127, not 128"},
        {CIM_UINT8, {"256"}, wants + "a whole number from 0 to 255, not 256"},
        {CIM_UINT16, {"-1"}, wants + "a whole number from 0 to 65535, not -1"},
        {CIM_UINT32, {"4294967296"}, wants + "a whole number from 0 to 4294967295, not 4294967296"},
        {CIM_UINT32, {"five"}, wants + "a whole number from 0 to 4294967295, not five"},
        {CIM_UINT32, {"5x"}, wants + "a whole number from 0 to 4294967295, not 5x"},
        {CIM_UINT32, {"0x"}, wants + "a whole number from 0 to 4294967295, not 0x"},
        {CIM_UINT32, {""}, wants + "a whole number from 0 to 4294967295, not "},
        {CIM_UINT32, {"--1"}, wants + "a whole number from 0 to 4294967295, not --1"},
        {CIM_UINT64,
         {"18446744073709551616"},
         wants + "a whole number from 0 to 18446744073709551615, not 18446744073709551616"},
        {CIM_SINT64,
         {"-9223372036854775809"},
         wants + "a whole number from -9223372036854775808 to 9223372036854775807, not -9223372036854775809"},
        {CIM_REAL64, {"1,5"}, wants + "a number, not 1,5"},
        {CIM_CHAR16, {"xy"}, wants + "one character, not xy"},
        {CIM_CHAR16, {"\xF0\x9F\x98\x80"}, wants + "one character, not \xF0\x9F\x98\x80"},
        {CIM_OBJECT, {"A"}, "the parameter P is of the type object, which a command line cannot say"},
        {CIM_STRING, {"a", "b"}, "the parameter P is given 2 times and takes one value"},
        {ArrayOf(CIM_UINT8), {"[1,x]"}, wants + "a whole number from 0 to 255, not x"},
        {ArrayOf(CIM_UINT8), {"[1,]"}, wants + "a whole number from 0 to 255, not "},
        {ArrayOf(CIM_STRING), {"[a,NULL]"}, "the elements of the parameter P cannot be NULL"},
    };
    for (const auto& c : cases)
    {
        try
        {
            static_cast<void>(MakeParameterValue("the parameter P", c.type, c.texts));
            ADD_FAILURE() << c.message;
        }
        catch (const Failure& failure)
        {
            EXPECT_EQ(failure.what(), c.message);
            EXPECT_EQ(failure.Code(), ExitCode::Usage) << c.message;
        }
    }
}

} // namespace
