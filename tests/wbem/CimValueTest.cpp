// CIM values and their conversions.
#include "Shown.h"
#include "wbem/CimValue.h"

#include <gtest/gtest.h>

#include <limits>

namespace wbem
{
namespace
{

TEST(CimValue, TypesHaveTheNumbersOfCimtype)
{
    const std::pair<CimType, int> numbers[] = {
        {CimType::Empty, 0},    {CimType::SInt16, 2},  {CimType::SInt32, 3},     {CimType::Real32, 4},
        {CimType::Real64, 5},   {CimType::String, 8},  {CimType::Boolean, 11},   {CimType::Object, 13},
        {CimType::SInt8, 16},   {CimType::UInt8, 17},  {CimType::UInt16, 18},    {CimType::UInt32, 19},
        {CimType::SInt64, 20},  {CimType::UInt64, 21}, {CimType::DateTime, 101}, {CimType::Reference, 102},
        {CimType::Char16, 103},
    };
    for (const auto& [type, number] : numbers)
        EXPECT_EQ(static_cast<int>(type), number) << Utf8(CimTypeName(type));
    EXPECT_EQ(kCimFlagArray, 0x2000);
}

TEST(CimValue, TypeNamesGoBothWaysWithoutCase)
{
    for (const std::wstring_view name :
         {L"boolean", L"sint8", L"uint8", L"sint16", L"uint16", L"sint32", L"uint32", L"sint64", L"uint64", L"real32",
          L"real64", L"char16", L"string", L"datetime", L"object"})
    {
        const auto type = CimTypeFromName(name);
        ASSERT_TRUE(type) << Utf8(name);
        EXPECT_EQ(CimTypeName(*type), name);
    }
    EXPECT_EQ(CimTypeFromName(L"UInt32"), CimType::UInt32);
    EXPECT_EQ(CimTypeFromName(L"ref"), std::nullopt);
    EXPECT_EQ(CimTypeFromName(L"int"), std::nullopt);
    EXPECT_EQ(CimTypeFromName(L""), std::nullopt);
}

TEST(CimValue, EachKindHoldsItsValueAndAnswersNothingElse)
{
    EXPECT_TRUE(CimValue().IsNull());
    EXPECT_EQ(CimValue().Type(), CimType::Empty);
    EXPECT_TRUE(CimValue::Null(CimType::UInt32, true).IsArray());

    const CimValue number = CimValue::Unsigned(CimType::UInt64, std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(number.AsUnsigned(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(number.AsSigned(), 0);
    EXPECT_EQ(number.AsText(), L"");
    EXPECT_FALSE(number.AsBool());
    EXPECT_EQ(number.AsObject(), nullptr);
    EXPECT_TRUE(number.Elements().empty());

    const CimValue text = CimValue::String(L"some text");
    EXPECT_EQ(text.AsText(), L"some text");
    EXPECT_EQ(text.AsText().data()[text.AsText().size()], L'\0');
    EXPECT_EQ(CimValue::String({}).AsText().data()[0], L'\0');
    EXPECT_EQ(CimValue::String(std::wstring(L"a\0b", 3)).AsText().size(), 3u);
}

TEST(CimValue, CopiesShareTheirText)
{
    const CimValue one = CimValue::String(std::wstring(100, L'x'));
    const CimValue two = one;
    EXPECT_EQ(one.AsText().data(), two.AsText().data());
    EXPECT_EQ(one, two);
}

TEST(CimValue, EqualityIsOfTypeAndValue)
{
    EXPECT_EQ(CimValue::Integer(std::int64_t{5}), CimValue::Signed(CimType::SInt32, 5));
    EXPECT_NE(CimValue::Signed(CimType::SInt32, 5), CimValue::Signed(CimType::SInt64, 5));
    EXPECT_NE(CimValue::String(L"a"), CimValue::String(L"A"));
    EXPECT_NE(CimValue::String(L"a"), CimValue::Reference(L"a"));
    EXPECT_NE(CimValue::Null(CimType::String), CimValue::String(L""));
    EXPECT_NE(CimValue::Bool(true), CimValue::Bool(false));
    const auto array = [](std::int64_t last) {
        return CimValue::Array(CimType::SInt32, {CimValue::Integer(std::int64_t{1}), CimValue::Integer(last)});
    };
    EXPECT_EQ(array(2), array(2));
    EXPECT_NE(array(2), array(3));
    const auto object = [](const wchar_t* name) {
        return CimValue::Object(CimObject{L"C", {{name, CimValue::Bool(true)}}});
    };
    EXPECT_EQ(object(L"p"), object(L"p"));
    EXPECT_NE(object(L"p"), object(L"q"));
    EXPECT_EQ(CimValue::Object(std::shared_ptr<const CimObject>()), CimValue::Null(CimType::Object));
}

TEST(CimValue, ObjectsFindTheirPropertiesWithoutCase)
{
    const CimObject object{L"Zarn_WarningMessage", {{L"Message", CimValue::String(L"m")}}};
    ASSERT_NE(object.Find(L"MESSAGE"), nullptr);
    EXPECT_EQ(object.Find(L"MESSAGE")->AsText(), L"m");
    EXPECT_EQ(object.Find(L"Kind"), nullptr);
}

struct ConversionRow
{
    CimValue value;
    CimType type;
    bool isArray;
    std::string expected; // the converted value, or "! " and the reason
};

CimValue S(std::wstring_view text)
{
    return CimValue::String(text);
}

CimValue I(std::int64_t value)
{
    return CimValue::Integer(value);
}

CimValue U(std::uint64_t value)
{
    return CimValue::Integer(value);
}

CimValue R(double value)
{
    return CimValue::Real(CimType::Real64, value);
}

TEST(CimValue, ConversionsLoseNothingOrSayWhy)
{
    const ConversionRow rows[] = {
        {{}, CimType::UInt8, false, "uint8 NULL"},
        {{}, CimType::UInt8, true, "uint8[] NULL"},
        {I(255), CimType::UInt8, false, "uint8 255"},
        {I(256), CimType::UInt8, false, "! 256 does not fit uint8"},
        {I(-1), CimType::UInt8, false, "! -1 does not fit uint8"},
        {I(-128), CimType::SInt8, false, "sint8 -128"},
        {I(-129), CimType::SInt8, false, "! -129 does not fit sint8"},
        {I(128), CimType::SInt8, false, "! 128 does not fit sint8"},
        {I(65535), CimType::UInt16, false, "uint16 65535"},
        {I(32768), CimType::SInt16, false, "! 32768 does not fit sint16"},
        {I(4294967295), CimType::UInt32, false, "uint32 4294967295"},
        {I(4294967296), CimType::UInt32, false, "! 4294967296 does not fit uint32"},
        {I(2147483648), CimType::SInt32, false, "! 2147483648 does not fit sint32"},
        {U(18446744073709551615u), CimType::UInt64, false, "uint64 18446744073709551615"},
        {U(18446744073709551615u), CimType::SInt64, false, "! 18446744073709551615 does not fit sint64"},
        {S(L"18446744073709551615"), CimType::UInt64, false, "uint64 18446744073709551615"},
        {S(L"18446744073709551616"), CimType::UInt64, false, "! \"18446744073709551616\" does not fit uint64"},
        {S(L"0x10"), CimType::UInt8, false, "uint8 16"},
        {S(L"010"), CimType::UInt8, false, "uint8 10"},
        {S(L"ten"), CimType::UInt8, false, "! \"ten\" is not of type uint8"},
        {S(L""), CimType::UInt8, false, "! \"\" is not of type uint8"},
        {CimValue::Bool(true), CimType::UInt8, false, "! TRUE is not of type uint8"},
        {R(5), CimType::UInt8, false, "uint8 5"},
        {R(5.5), CimType::UInt8, false, "! 5.5 is not of type uint8"},
        {R(1e30), CimType::UInt64, false, "! 1e+30 is not of type uint64"},
        {I(5), CimType::Real32, false, "real32 5.0"},
        {R(0.5), CimType::Real32, false, "real32 0.5"},
        {R(1e300), CimType::Real32, false, "! 1e+300 does not fit real32"},
        {S(L"1.5"), CimType::Real64, false, "real64 1.5"},
        {S(L"1e999"), CimType::Real64, false, "! \"1e999\" does not fit real64"},
        {S(L"x"), CimType::Real64, false, "! \"x\" is not of type real64"},
        {CimValue::Bool(true), CimType::Boolean, false, "boolean TRUE"},
        {S(L"false"), CimType::Boolean, false, "boolean FALSE"},
        {I(1), CimType::Boolean, false, "! 1 is not of type boolean"},
        {S(L"x"), CimType::Char16, false, "char16 'x'"},
        {S(L"xy"), CimType::Char16, false, "! \"xy\" is not of type char16"},
        {I(65), CimType::Char16, false, "char16 'A'"},
        {I(65536), CimType::Char16, false, "! 65536 does not fit char16"},
        {S(L"x"), CimType::String, false, "string \"x\""},
        {I(5), CimType::String, false, "! 5 is not of type string"},
        {CimValue::Char16(u'c'), CimType::String, false, "! \"c\" is not of type string"},
        {S(L"C.K=1"), CimType::Reference, false, "ref \"C.K=1\""},
        {CimValue::Reference(L"$A"), CimType::Reference, false, "ref $A"},
        {S(L"20261231235959.000000+060"), CimType::DateTime, false, "datetime \"20261231235959.000000+060\""},
        {S(L"yesterday"), CimType::DateTime, false, "! \"yesterday\" is not a datetime (yyyymmddhhmmss.mmmmmm+uuu)"},
        {S(L"x"), CimType::Object, false, "! \"x\" is not of type object"},
        {I(1), CimType::UInt8, true, "uint8[] {1}"},
        {CimValue::Array(CimType::SInt32, {I(1), {}, I(2)}), CimType::UInt8, true, "uint8[] {1, NULL, 2}"},
        {CimValue::Array(CimType::SInt32, {I(1), I(300)}), CimType::UInt8, true, "! 300 does not fit uint8"},
        {CimValue::Array(CimType::SInt32, {I(1)}), CimType::UInt8, false, "! an array of values is not of type uint8"},
        {CimValue::Array(CimType::Empty, {}), CimType::String, true, "string[] {}"},
        {S(std::wstring(100, L'y')), CimType::UInt8, false,
         "! \"" + std::string(60, 'y') + "...\" is not of type uint8"},
    };
    for (const ConversionRow& row : rows)
    {
        SCOPED_TRACE(Shown(row.value) + " to " + Utf8(CimTypeName(row.type)) + (row.isArray ? "[]" : ""));
        std::wstring reason;
        const auto converted = ConvertTo(row.value, row.type, row.isArray, reason);
        EXPECT_EQ(converted ? Shown(*converted) : "! " + Utf8(reason), row.expected);
    }
}

TEST(CimValue, DatetimesAreComparedByTheMomentTheyMean)
{
    EXPECT_EQ(DateTimeMicroseconds(L"00010101000000.000000+000"), 0);
    EXPECT_EQ(DateTimeMicroseconds(L"00010102000000.000001+000"), 86400000001);
    EXPECT_EQ(DateTimeMicroseconds(L"20000301000000.000000+000").value() -
                  DateTimeMicroseconds(L"20000228000000.000000+000").value(),
              2 * 86400000000)
        << "2000 had a 29th of February";
    EXPECT_EQ(DateTimeMicroseconds(L"19000301000000.000000+000").value() -
                  DateTimeMicroseconds(L"19000228000000.000000+000").value(),
              86400000000)
        << "1900 had none";
    EXPECT_EQ(DateTimeMicroseconds(L"20260101120000.000000+060"), DateTimeMicroseconds(L"20260101110000.000000+000"));
    EXPECT_EQ(DateTimeMicroseconds(L"20260101120000.000000-060"), DateTimeMicroseconds(L"20260101130000.000000+000"));
    EXPECT_EQ(DateTimeMicroseconds(L"00000001010000.000000:000"), 90000000000);
    EXPECT_EQ(DateTimeMicroseconds(L"99999999235959.999999:000"), 8639999999999999999);
    EXPECT_EQ(DateTimeMicroseconds(L"2026****120000.000000+000"), std::nullopt);
    EXPECT_EQ(DateTimeMicroseconds(L"2026-01-01"), std::nullopt);
}

TEST(CimValue, DatetimesHaveTwentyFiveCharactersInTheirPlaces)
{
    EXPECT_TRUE(IsDateTime(L"20261231235959.000000+060"));
    EXPECT_TRUE(IsDateTime(L"2026****235959.******-060"));
    EXPECT_TRUE(IsDateTime(L"00000010000000.000000:000"));
    EXPECT_FALSE(IsDateTime(L"20261231235959.000000+06"));
    EXPECT_FALSE(IsDateTime(L"20261231235959.000000+0600"));
    EXPECT_FALSE(IsDateTime(L"20261231235959,000000+060"));
    EXPECT_FALSE(IsDateTime(L"20261231235959.000000 060"));
    EXPECT_FALSE(IsDateTime(L"2026123123595x.000000+060"));
}

TEST(CimValue, PlainTextIsWhatADecimalBstrHolds)
{
    EXPECT_EQ(PlainText(U(18446744073709551615u)), L"18446744073709551615");
    EXPECT_EQ(PlainText(I(-5)), L"-5");
    EXPECT_EQ(PlainText(CimValue::Bool(false)), L"FALSE");
    EXPECT_EQ(PlainText(S(L"a \"b\"")), L"a \"b\"");
    EXPECT_EQ(PlainText(CimValue::Array(CimType::SInt32, {I(1), I(2)})), L"{1, 2}");
    EXPECT_EQ(PlainText(CimValue::Null(CimType::String)), L"NULL");
    EXPECT_EQ(PlainText(CimValue::Object(CimObject{L"C", {}})), L"instance of C");
}

} // namespace
} // namespace wbem
