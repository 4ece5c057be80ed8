// WQL: evaluation.
#include "Shown.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <gtest/gtest.h>

#include <limits>

namespace wbem
{
namespace
{

class Source : public WqlSource
{
public:
    explicit Source(NameMap<CimValue> values) : m_values(std::move(values)) {}

    CimValue Value(const WqlProperty& property) const override
    {
        const auto entry = m_values.find(property.name);
        return entry == m_values.end() ? CimValue() : entry->second;
    }

    Truth IsA(const WqlProperty& property, std::wstring_view className) const override
    {
        if (!EqualNoCase(property.name, L"__this"))
            return Truth::Unknown;
        return EqualNoCase(className, L"Zarn_FCOEHBA") || EqualNoCase(className, L"CIM_Base") ? Truth::True
                                                                                              : Truth::False;
    }

private:
    NameMap<CimValue> m_values;
};

Source Hba()
{
    return Source({
        {L"DeviceID", CimValue::String(L"Eth0.1002")},
        {L"Empty", CimValue::String(L"")},
        {L"Nothing", CimValue::Null(CimType::String)},
        {L"Path", CimValue::String(L"PCI\\VEN_1AF4")},
        {L"Small", CimValue::Unsigned(CimType::UInt8, 5)},
        {L"Minus", CimValue::Signed(CimType::SInt64, -9223372036854775807 - 1)},
        {L"Big", CimValue::Unsigned(CimType::UInt64, std::numeric_limits<std::uint64_t>::max())},
        {L"BigText", CimValue::String(L"18446744073709551615")},
        {L"Real", CimValue::Real(CimType::Real64, 1.5)},
        {L"NaN", CimValue::Real(CimType::Real64, std::numeric_limits<double>::quiet_NaN())},
        {L"Active", CimValue::Bool(true)},
        {L"Letter", CimValue::Char16(u'x')},
        {L"When", CimValue::DateTime(L"20260101120000.000000+060")},
        {L"Ref", CimValue::Reference(L"\\\\.\\root\\KESTA:C.b=2,a=\"x\"")},
        {L"List", CimValue::Array(CimType::String, {CimValue::String(L"a")})},
        {L"Object", CimValue::Object(CimObject{L"C", {}})},
    });
}

struct Row
{
    std::wstring_view where;
    Truth truth;
};

constexpr Row kRows[] = {
    // Texts without case.
    {LR"(DeviceID = "ETH0.1002")", Truth::True},
    {LR"(DeviceID <> "eth0.1002")", Truth::False},
    {LR"(DeviceID = "eth0")", Truth::False},
    {LR"(DeviceID > "eth0.1001")", Truth::True},
    {LR"(DeviceID < "ETH0.1003")", Truth::True},
    {LR"(DeviceID <= "eth0.1002" AND DeviceID >= "eth0.1002")", Truth::True},
    {LR"("eth0.1001" < DeviceID)", Truth::True},
    {LR"(Empty = "")", Truth::True},
    {LR"(Path = "PCI\VEN_1AF4" AND Path = "pci\\ven_1af4")", Truth::True},
    {LR"(DeviceID = DeviceID AND DeviceID <> Path)", Truth::True},
    // Numbers by value, exact over 64 bits.
    {LR"(Small = 5 AND Small = 0x5 AND Small = 5.0 AND Small = "5")", Truth::True},
    {LR"(Small < 6 AND Small > 4 AND Small > -1 AND Small >= 4.9)", Truth::True},
    {LR"(Small <> 5)", Truth::False},
    {LR"(Big = 18446744073709551615)", Truth::True},
    {LR"(Big = 18446744073709551614)", Truth::False},
    {LR"(Big > 18446744073709551614)", Truth::True},
    {LR"(Big = "18446744073709551615")", Truth::True},
    {LR"(Big < 18446744073709551616.0)", Truth::True},
    {LR"(Big > -1)", Truth::True},
    {LR"(BigText > 18446744073709551614)", Truth::True},
    {LR"(BigText = Big)", Truth::True},
    {LR"(BigText < 1e30)", Truth::True},
    {LR"(Minus < 0 AND Minus = -9223372036854775808 AND Minus < Big)", Truth::True},
    {LR"(Minus < -9223372036854775808.0)", Truth::False},
    {LR"(Minus >= -1e30)", Truth::True},
    {LR"(Real > 1 AND Real < 2 AND Real = 1.5 AND Real = "1.5")", Truth::True},
    {LR"(Small > Real)", Truth::True},
    {LR"(NaN = 1)", Truth::False},
    {LR"(NaN < 1)", Truth::Unknown},
    {LR"(NaN <> 1)", Truth::True},
    // What cannot be compared is unknown, either way.
    {LR"(DeviceID = 5)", Truth::Unknown},
    {LR"(NOT DeviceID = 5)", Truth::Unknown},
    {LR"(Small = "five")", Truth::Unknown},
    {LR"(Small <> "five")", Truth::Unknown},
    {LR"(List = "a")", Truth::Unknown},
    {LR"(Object = "a")", Truth::Unknown},
    {LR"(When = "noon")", Truth::Unknown},
    // Booleans.
    {LR"(Active = TRUE AND Active <> FALSE)", Truth::True},
    {LR"(Active = "true" AND Active = 1 AND Active = -1)", Truth::True},
    {LR"(Active = 0)", Truth::False},
    {LR"(Active = "yes")", Truth::Unknown},
    {LR"(Active > FALSE)", Truth::True},
    // Characters, moments, references.
    {LR"(Letter = "X" AND Letter LIKE "[w-z]")", Truth::True},
    {LR"(Letter = 5)", Truth::Unknown},
    {LR"(When = "20260101110000.000000+000")", Truth::True},
    {LR"(When < "20260101110000.000001+000")", Truth::True},
    {LR"(When = "2026****120000.000000+060")", Truth::False},
    {LR"(Ref = "c.A=\"X\",B=\"2\"")", Truth::True},
    {LR"(Ref = "\\\\.\\root\\other:C.a=\"x\",b=2")", Truth::False},
    {LR"(Ref <> "C.a=\"y\",b=2")", Truth::True},
    {LR"(Ref = "no path")", Truth::False},
    {LR"(Ref < "C")", Truth::Unknown},
    // NULL.
    {LR"(Nothing IS NULL AND Missing IS NULL AND Nothing = NULL)", Truth::True},
    {LR"(Nothing IS NOT NULL)", Truth::False},
    {LR"(DeviceID IS NOT NULL AND Empty IS NOT NULL AND DeviceID <> NULL)", Truth::True},
    {LR"(List IS NOT NULL)", Truth::True},
    {LR"(Nothing = "x")", Truth::Unknown},
    {LR"(Nothing <> "x")", Truth::Unknown},
    {LR"(Nothing = Nothing)", Truth::Unknown},
    {LR"(NOT Nothing = "x")", Truth::Unknown},
    {LR"(Nothing LIKE "%")", Truth::Unknown},
    {LR"(Nothing NOT LIKE "%")", Truth::Unknown},
    // Three values.
    {LR"(Small = 5 AND Nothing = 1)", Truth::Unknown},
    {LR"(Small = 6 AND Nothing = 1)", Truth::False},
    {LR"(Nothing = 1 AND Small = 6)", Truth::False},
    {LR"(Small = 5 OR Nothing = 1)", Truth::True},
    {LR"(Nothing = 1 OR Small = 5)", Truth::True},
    {LR"(Small = 6 OR Nothing = 1)", Truth::Unknown},
    {LR"(NOT (Small = 6 OR Small = 7))", Truth::True},
    {LR"(NOT (Small = 5 AND Nothing = 1))", Truth::Unknown},
    // LIKE.
    {LR"(DeviceID LIKE "eth%.1002")", Truth::True},
    {LR"(DeviceID NOT LIKE "eth%.1002")", Truth::False},
    {LR"(NOT DeviceID LIKE "fc%")", Truth::True},
    {LR"(DeviceID LIKE "eth[^1-9]%")", Truth::True},
    {LR"(Path LIKE "PCI\VEN%")", Truth::True},
    {LR"(Small LIKE "5")", Truth::Unknown},
    {LR"(List LIKE "%")", Truth::Unknown},
    // ISA.
    {LR"(__this ISA "cim_base")", Truth::True},
    {LR"(__this ISA Zarn_FCoEPort)", Truth::False},
    {LR"(NOT __this ISA Zarn_FCoEPort)", Truth::True},
    {LR"(DeviceID ISA "x")", Truth::Unknown},
};

TEST(WqlEvaluate, ConditionsHaveOneOfThreeTruths)
{
    const Source hba = Hba();
    for (const Row& row : kRows)
    {
        SCOPED_TRACE(Utf8(row.where));
        const auto query = WqlQuery::Parse(L"SELECT * FROM C WHERE " + std::wstring(row.where));
        ASSERT_TRUE(query) << Shown(query.Error());
        EXPECT_EQ(Evaluate(*query->where, hba), row.truth);
        EXPECT_EQ(query->Admits(hba), row.truth == Truth::True);
        const auto again = WqlQuery::Parse(query->Text());
        ASSERT_TRUE(again) << Shown(again.Error());
        EXPECT_EQ(Evaluate(*again->where, hba), row.truth) << "as printed";
    }
}

TEST(WqlEvaluate, AQueryWithoutWhereAdmitsEverything)
{
    EXPECT_TRUE(WqlQuery::Parse(L"SELECT * FROM C")->Admits(Hba()));
}

TEST(WqlEvaluate, EveryTestedPropertyHasItsIndex)
{
    // Values by index: what an evaluator does that looked the names up once.
    class Indexed : public WqlSource
    {
    public:
        CimValue Value(const WqlProperty& property) const override
        {
            return CimValue::Integer(static_cast<std::int64_t>(property.index));
        }
        Truth IsA(const WqlProperty&, std::wstring_view) const override { return Truth::Unknown; }
    };
    const auto query = WqlQuery::Parse(L"SELECT * FROM C WHERE a=0 AND b=1 AND A=0 AND c=2 AND b<c AND d=3");
    EXPECT_EQ(query->testedProperties, (std::vector<std::wstring>{L"a", L"b", L"c", L"d"}));
    EXPECT_TRUE(query->Admits(Indexed()));
}

TEST(WqlEvaluate, RealsCompareExactlyWithIntegersTheyCannotHold)
{
    const auto compare = [](std::uint64_t integer, WqlOperator op, double real)
    { return Compare(CimValue::Integer(integer), op, CimValue::Real(CimType::Real64, real)); };
    constexpr double kTwoTo53 = 9007199254740992.0;
    EXPECT_EQ(compare(9007199254740993u, WqlOperator::Greater, kTwoTo53), Truth::True);
    EXPECT_EQ(compare(9007199254740993u, WqlOperator::Equal, kTwoTo53), Truth::False);
    EXPECT_EQ(compare(18446744073709551615u, WqlOperator::Less, 18446744073709551616.0), Truth::True);
    EXPECT_EQ(compare(5, WqlOperator::Less, 5.5), Truth::True);
    EXPECT_EQ(compare(0, WqlOperator::Greater, -0.5), Truth::True);
    EXPECT_EQ(compare(0, WqlOperator::Equal, -0.0), Truth::True);
    EXPECT_EQ(compare(0, WqlOperator::Less, std::numeric_limits<double>::infinity()), Truth::True);
    EXPECT_EQ(Compare(CimValue::Integer(std::int64_t{-5}), WqlOperator::Less, CimValue::Real(CimType::Real64, -4.5)),
              Truth::True);
    EXPECT_EQ(Compare(CimValue::Integer(std::int64_t{-5}), WqlOperator::Greater, CimValue::Real(CimType::Real64, -5.5)),
              Truth::True);
}

} // namespace
} // namespace wbem
