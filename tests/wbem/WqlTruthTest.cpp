// WQL: the three truths, NULLs of every type, and numbers that are written as texts.
#include "Shown.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <gtest/gtest.h>

namespace wbem
{
namespace
{

constexpr Truth F = Truth::False;
constexpr Truth T = Truth::True;
constexpr Truth U = Truth::Unknown;

// Holds a, b, ... as they stand in the list.
class Values : public WqlSource
{
public:
    explicit Values(std::vector<CimValue> values) : m_values(std::move(values)) {}

    CimValue Value(const WqlProperty& property) const override
    {
        return m_values.at(static_cast<std::size_t>(property.name[0] - L'a'));
    }
    Truth IsA(const WqlProperty&, std::wstring_view) const override { return U; }

private:
    const std::vector<CimValue> m_values;
};

Truth TruthOf(std::wstring_view where, const WqlSource& source)
{
    const auto query = WqlQuery::Parse(L"SELECT * FROM C WHERE " + std::wstring(where));
    EXPECT_TRUE(query) << Utf8(where) << ": " << Shown(query.Error());
    return query ? Evaluate(*query->where, source) : U;
}

// A property that "= 1" is true, false or unknown of.
CimValue Being(Truth truth)
{
    return truth == U ? CimValue::Null(CimType::UInt32) : CimValue::Unsigned(CimType::UInt32, truth == T ? 1 : 0);
}

TEST(WqlTruth, AndOrAndNotHaveTheTablesOfThreeTruths)
{
    const struct
    {
        Truth a, b, both, either, notA;
    } rows[] = {
        {T, T, T, T, F}, {T, F, F, T, F}, {T, U, U, T, F}, {F, T, F, T, T}, {F, F, F, F, T},
        {F, U, F, U, T}, {U, T, U, T, U}, {U, F, F, U, U}, {U, U, U, U, U},
    };
    for (const auto& row : rows)
    {
        const Values values({Being(row.a), Being(row.b)});
        SCOPED_TRACE(static_cast<int>(row.a) * 10 + static_cast<int>(row.b));
        EXPECT_EQ(TruthOf(L"a=1 AND b=1", values), row.both);
        EXPECT_EQ(TruthOf(L"a=1 OR b=1", values), row.either);
        EXPECT_EQ(TruthOf(L"NOT a=1", values), row.notA);
        EXPECT_EQ(TruthOf(L"NOT NOT a=1", values), row.a);
        EXPECT_EQ(TruthOf(L"NOT (NOT a=1 OR NOT b=1)", values), row.both);
        EXPECT_EQ(TruthOf(L"NOT (NOT a=1 AND NOT b=1)", values), row.either);
        EXPECT_EQ(TruthOf(L"a=1 AND NOT a=1", values), row.a == U ? U : F);
        EXPECT_EQ(TruthOf(L"a=1 OR NOT a=1", values), row.a == U ? U : T) << "an unknown is no third value to exclude";
    }
}

TEST(WqlTruth, NoComparisonWithNullIsTrueOrFalse)
{
    constexpr CimType types[] = {CimType::Empty,    CimType::String, CimType::Boolean,  CimType::UInt8,
                                 CimType::SInt64,   CimType::UInt64, CimType::Real64,   CimType::Char16,
                                 CimType::DateTime, CimType::Object, CimType::Reference};
    for (const CimType type : types)
    {
        for (const bool isArray : {false, true})
        {
            const Values values({CimValue::Null(type, isArray), CimValue::String(L"x"), CimValue::Null(type)});
            SCOPED_TRACE(Shown(CimValue::Null(type, isArray)));
            for (const wchar_t* op : {L"=", L"<>", L"!=", L"<", L"<=", L">", L">="})
            {
                for (const wchar_t* right : {L"\"\"", L"\"x\"", L"0", L"-1.5", L"TRUE", L"b", L"c"})
                {
                    const std::wstring test = L"a" + std::wstring(op) + right;
                    EXPECT_EQ(TruthOf(test, values), U) << Utf8(test);
                    EXPECT_EQ(TruthOf(L"NOT " + test, values), U) << Utf8(test);
                    EXPECT_EQ(TruthOf(std::wstring(right) + op + L"a", values), U) << Utf8(test);
                }
            }
            EXPECT_EQ(TruthOf(L"a LIKE '%'", values), U);
            EXPECT_EQ(TruthOf(L"a NOT LIKE '%'", values), U);
            EXPECT_EQ(TruthOf(L"a = a", values), U);
            EXPECT_EQ(TruthOf(L"a <> a", values), U);
            // What asks for NULL is answered.
            EXPECT_EQ(TruthOf(L"a IS NULL", values), T);
            EXPECT_EQ(TruthOf(L"a IS NOT NULL", values), F);
            EXPECT_EQ(TruthOf(L"NOT a IS NULL", values), F);
            EXPECT_EQ(TruthOf(L"a = NULL", values), T);
            EXPECT_EQ(TruthOf(L"NULL <> a", values), F);
            EXPECT_EQ(TruthOf(L"b IS NULL", values), F);
            EXPECT_EQ(TruthOf(L"b <> NULL", values), T);
        }
    }
}

TEST(WqlTruth, AnEmptyTextAndAnEmptyArrayAreNoNull)
{
    const Values values({CimValue::String(L""), CimValue::Array(CimType::String, {}), CimValue::Bool(false)});
    for (const wchar_t* name : {L"a", L"b", L"c"})
    {
        EXPECT_EQ(TruthOf(std::wstring(name) + L" IS NULL", values), F) << Utf8(name);
        EXPECT_EQ(TruthOf(std::wstring(name) + L" IS NOT NULL", values), T) << Utf8(name);
    }
}

struct NumberRow
{
    std::wstring_view text;   // the value of a
    std::wstring_view number; // what it is compared with
    Truth less, equal, greater;
};

// 64-bit integers travel as texts: their digits decide, not their letters.
constexpr NumberRow kNumbers[] = {
    {L"10", L"9", F, F, T},
    {L"007", L"7", F, T, F},
    {L"+7", L"7", F, T, F},
    {L"-0", L"0", F, T, F},
    {L"-10", L"-9", T, F, F},
    {L"-1", L"18446744073709551615", T, F, F},
    // Where reals no longer tell integers apart.
    {L"9007199254740992", L"9007199254740993", T, F, F},
    {L"9007199254740993", L"9007199254740993", F, T, F},
    {L"9007199254740993", L"9007199254740992", F, F, T},
    {L"9007199254740993", L"9007199254740992.0", F, F, T},
    {L"-9007199254740993", L"-9007199254740992", T, F, F},
    {L"9223372036854775807", L"9223372036854775808", T, F, F},
    {L"-9223372036854775808", L"-9223372036854775807", T, F, F},
    {L"-9223372036854775808", L"9223372036854775808", T, F, F},
    {L"18446744073709551615", L"18446744073709551614", F, F, T},
    {L"18446744073709551615", L"18446744073709551615", F, T, F},
    {L"18446744073709551615", L"18446744073709551616.0", T, F, F},
    // Hexadecimal, in the text and in the query.
    {L"0x1F", L"31", F, T, F},
    {L"31", L"0X1f", F, T, F},
    {L"0xFFFFFFFFFFFFFFFF", L"18446744073709551615", F, T, F},
    {L"-0x10", L"-16", F, T, F},
    {L"-0x8000000000000000", L"-9223372036854775808", F, T, F},
    {L"0x10000", L"0xFFFF", F, F, T},
    // Reals.
    {L"1.5", L"1", F, F, T},
    {L"1e3", L"1000", F, T, F},
    {L"-.5", L"0", T, F, F},
    // What spells no number of 64 bits compares with none.
    {L"", L"0", U, U, U},
    {L" 5", L"5", U, U, U},
    {L"5 ", L"5", U, U, U},
    {L"5x", L"5", U, U, U},
    {L"1F", L"31", U, U, U},
    {L"0x", L"0", U, U, U},
    {L"18446744073709551616", L"0", U, U, U},
    {L"-9223372036854775809", L"0", U, U, U},
    {L"1e999", L"0", U, U, U},
    {L"five", L"5", U, U, U},
};

TEST(WqlTruth, TextsOfNumbersCompareByTheirValue)
{
    for (const NumberRow& row : kNumbers)
    {
        const Values values({CimValue::String(row.text)});
        const std::wstring number(row.number);
        SCOPED_TRACE(Utf8(row.text) + " and " + Utf8(number));
        EXPECT_EQ(TruthOf(L"a < " + number, values), row.less);
        EXPECT_EQ(TruthOf(L"a = " + number, values), row.equal);
        EXPECT_EQ(TruthOf(L"a > " + number, values), row.greater);
        EXPECT_EQ(TruthOf(number + L" > a", values), row.less) << "the sides exchanged";
        EXPECT_EQ(TruthOf(number + L" < a", values), row.greater);
        const auto orEqual = [&](Truth strict) { return row.equal == T ? T : strict; };
        EXPECT_EQ(TruthOf(L"a <= " + number, values), orEqual(row.less));
        EXPECT_EQ(TruthOf(L"a >= " + number, values), orEqual(row.greater));
        EXPECT_EQ(TruthOf(L"NOT a <> " + number, values), row.equal);
    }
}

TEST(WqlTruth, A64BitPropertyComparesWithItsTextAsWithItsNumber)
{
    const Values values({CimValue::Unsigned(CimType::UInt64, 18446744073709551615u),
                         CimValue::Signed(CimType::SInt64, -9223372036854775807 - 1),
                         CimValue::Unsigned(CimType::UInt64, 9007199254740993u)});
    for (const wchar_t* where :
         {L"a = '18446744073709551615'", L"a > '18446744073709551614'", L"a = '0xFFFFFFFFFFFFFFFF'", L"a > '9'",
          L"b = '-9223372036854775808'", L"b < '-9223372036854775807'", L"b < '0'", L"b < a", L"'-1' > b",
          L"c > '9007199254740992'", L"c < '9007199254740994'", L"c <> '9007199254740992'", L"c > 9007199254740992"})
        EXPECT_EQ(TruthOf(where, values), T) << Utf8(where);
}

TEST(WqlTruth, TwoTextsCompareAsTexts)
{
    const Values values({CimValue::String(L"10"), CimValue::String(L"9"), CimValue::String(L"ÄRGER")});
    EXPECT_EQ(TruthOf(L"a < '9'", values), T);
    EXPECT_EQ(TruthOf(L"a < b", values), T);
    EXPECT_EQ(TruthOf(L"a = '0xA'", values), F);
    EXPECT_EQ(TruthOf(L"c = 'ärger'", values), T);
    EXPECT_EQ(TruthOf(L"c <> 'Ärger'", values), F);
    EXPECT_EQ(TruthOf(L"c >= 'ärge' AND c <= 'ÄRGERX'", values), T);
}

TEST(WqlTruth, NamesOfPropertiesHaveNoCase)
{
    const auto query =
        WqlQuery::Parse(L"SELECT Größe FROM C WHERE Größe = 1 AND GRÖSSE = 1 AND gröSSe = 1 AND grÖße = 1");
    ASSERT_TRUE(query);
    EXPECT_EQ(query->testedProperties, (std::vector<std::wstring>{L"Größe", L"GRÖSSE"})) << "ß is no ss";
    EXPECT_NE(query->RequiredValue(L"GRÖße"), nullptr);
    EXPECT_NE(query->RequiredValue(L"grösse"), nullptr);
    EXPECT_EQ(query->RequiredValue(L"Grosse"), nullptr);
}

} // namespace
} // namespace wbem
