// WQL: what parses prints back to itself, evaluates over values of every type, and demands of an object only what every
// object has that its WHERE admits, also in the form in which managers learn it.
#include "Common/Src/ModuleTrace.h"
#include "framework/include/CWomWQLParser.h"
#include "fuzz/Require.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <cstddef>
#include <cstdint>
#include <limits>

ORL_MODULE_TRACE_OFF;

namespace
{

using wbem::CimType;
using wbem::CimValue;
using wbem::Truth;
using wbem::WqlCondition;
using wbem::WqlOperator;
using wbem::WqlQuery;

// What a property can hold: each type, its ends, NULLs, arrays and objects.
const std::vector<CimValue>& Kinds()
{
    static const std::vector<CimValue> kinds{
        {},
        CimValue::Null(CimType::String),
        CimValue::Null(CimType::UInt64, true),
        CimValue::String(L""),
        CimValue::String(L"eth0.1002"),
        CimValue::String(L"18446744073709551615"),
        CimValue::String(L"-9223372036854775808"),
        CimValue::String(L"0x1F"),
        CimValue::String(L"true"),
        CimValue::String(std::wstring(300, L'a') + L"%_[]^b"),
        CimValue::Bool(true),
        CimValue::Bool(false),
        CimValue::Signed(CimType::SInt8, -128),
        CimValue::Signed(CimType::SInt16, -1),
        CimValue::Signed(CimType::SInt32, 0),
        CimValue::Signed(CimType::SInt64, std::numeric_limits<std::int64_t>::min()),
        CimValue::Unsigned(CimType::UInt8, 255),
        CimValue::Unsigned(CimType::UInt16, 1),
        CimValue::Unsigned(CimType::UInt32, 4294967295u),
        CimValue::Unsigned(CimType::UInt64, std::numeric_limits<std::uint64_t>::max()),
        CimValue::Real(CimType::Real32, 0.5),
        CimValue::Real(CimType::Real64, -1e300),
        CimValue::Real(CimType::Real64, std::numeric_limits<double>::quiet_NaN()),
        CimValue::Real(CimType::Real64, std::numeric_limits<double>::infinity()),
        CimValue::Char16(u'x'),
        CimValue::DateTime(L"20260101120000.000000+060"),
        CimValue::DateTime(L"00000001****00.000000:000"),
        CimValue::DateTime(L"no moment"),
        CimValue::Reference(L"\\\\.\\root\\KESTA:C.b=2,a=\"x\""),
        CimValue::Reference(L"no path"),
        CimValue::Array(CimType::String, {CimValue::String(L"a"), CimValue::Null(CimType::String)}),
        CimValue::Array(CimType::UInt8, {}),
        CimValue::Object(wbem::CimObject{L"C", {{L"a", CimValue::String(L"x")}}}),
    };
    return kinds;
}

// The constants that each property is compared with, by its index.
using Constants = std::vector<std::vector<CimValue>>;

void Collect(const WqlCondition& condition, Constants& constants)
{
    if (condition.kind == WqlCondition::Kind::Test && !condition.test.value.IsNull())
        constants[condition.test.property.index].push_back(condition.test.value);
    for (const WqlCondition& operand : condition.operands)
        Collect(operand, constants);
}

// An object: the values of a property change from row to row, and so do the properties that share one.
class Row : public wbem::WqlSource
{
public:
    Row(std::size_t number, const Constants& constants) : m_number(number), m_constants(constants) {}

    CimValue Value(const wbem::WqlProperty& property) const override
    {
        const auto& constants = m_constants[property.index];
        const auto& kinds = Kinds();
        if (m_number < kinds.size() || constants.empty())
            return kinds[(m_number + property.index) % kinds.size()];
        const CimValue& constant = constants[m_number % constants.size()];
        return m_number % 2 == 0 ? constant : CimValue::String(wbem::PlainText(constant));
    }
    Truth IsA(const wbem::WqlProperty& property, std::wstring_view className) const override
    {
        return static_cast<Truth>((m_number + property.index + className.size()) % 3);
    }

private:
    const std::size_t m_number;
    const Constants& m_constants;
};

// What is not of the form is unknown either way round, and what is has its sides exchanged.
void CheckComparison(const CimValue& left, const CimValue& right)
{
    const auto compare = [&](WqlOperator op) { return wbem::Compare(left, op, right); };
    const auto mirrored = [&](WqlOperator op) { return wbem::Compare(right, op, left); };
    Require(compare(WqlOperator::Equal) == mirrored(WqlOperator::Equal));
    Require(compare(WqlOperator::Less) == mirrored(WqlOperator::Greater));
    Require(compare(WqlOperator::LessOrEqual) == mirrored(WqlOperator::GreaterOrEqual));
    const Truth equal = compare(WqlOperator::Equal);
    const Truth different = compare(WqlOperator::NotEqual);
    Require((equal == Truth::Unknown) == (different == Truth::Unknown));
    Require(equal == Truth::Unknown || (equal == Truth::True) != (different == Truth::True));
    Require(!(left.IsNull() || right.IsNull()) || equal == Truth::Unknown);
}

CimValue ValueOf(const VARIANT& value)
{
    switch (value.vt)
    {
    case VT_BSTR:
        return CimValue::String({value.bstrVal, SysStringLen(value.bstrVal)});
    case VT_I4:
        return CimValue::Signed(CimType::SInt32, value.lVal);
    case VT_BOOL:
        return CimValue::Bool(value.boolVal != VARIANT_FALSE);
    case VT_R8:
        return CimValue::Real(CimType::Real64, value.dblVal);
    default:
        std::abort();
    }
}

// The restrictions that a manager narrows its answer with are those of the query.
void CheckRestrictions(const WqlQuery& query, const std::wstring& text)
{
    CWomWQLParser parser;
    const bool isRead = SUCCEEDED(parser.Parse(text.c_str()));
    Require(isRead == (query.kind == wbem::WqlKind::Select && !query.IsSchemaQuery()));
    Require(isRead == (!parser.Failed() && parser.FailureCode() == 0));
    if (!isRead)
        return;
    Require(parser.ClassName() == query.className);
    for (const std::wstring& property : query.testedProperties)
    {
        const CimValue* required = query.RequiredValue(property);
        const COrlWmiNamedValue* restriction = parser.GetAttributeRestriction(property.c_str());
        Require((required != nullptr) == (restriction != nullptr));
        if (restriction)
        {
            Require(wbem::Compare(ValueOf(restriction->value), WqlOperator::Equal, *required) == Truth::True);
            Require(restriction->Text() == wbem::PlainText(*required));
        }
    }
}

void CheckRow(const WqlQuery& query, const WqlQuery* again, const Row& row)
{
    const bool isAdmitted = query.Admits(row);
    Require(!again || again->Admits(row) == isAdmitted);
    if (!query.where)
        return Require(isAdmitted);
    WqlCondition negation;
    negation.kind = WqlCondition::Kind::Not;
    negation.operands.push_back(*query.where);
    const Truth opposite = wbem::Evaluate(negation, row);
    Require(isAdmitted == (opposite == Truth::False));
    if (!isAdmitted)
        return;
    for (std::size_t i = 0; i < query.testedProperties.size(); ++i)
    {
        const CimValue* required = query.RequiredValue(query.testedProperties[i]);
        const CimValue value = row.Value({query.testedProperties[i], i});
        Require(!required || wbem::Compare(value, WqlOperator::Equal, *required) == Truth::True);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = wbem::FromUtf8({reinterpret_cast<const char*>(data), size});
    const auto query = WqlQuery::Parse(text);
    if (!query)
    {
        Require(query.Error().position <= text.size() && !query.Error().reason.empty());
        return 0;
    }
    const std::wstring printed = query->Text();
    const auto again = WqlQuery::Parse(printed);
    Require(again ? *again == *query : printed.size() > wbem::kMaxQueryLength);
    Require(!again || again->Text() == printed);
    CheckRestrictions(*query, text);

    Constants constants(query->testedProperties.size());
    if (query->where)
        Collect(*query->where, constants);
    for (const std::vector<CimValue>& compared : constants)
    {
        for (std::size_t i = 0; i < compared.size() && i < 4; ++i)
        {
            for (const CimValue& kind : Kinds())
                CheckComparison(kind, compared[i]);
        }
    }
    // All rows for short queries, a few for long ones: the time stays in proportion to the input.
    const std::size_t rows = Kinds().size() + 4;
    const std::size_t step = size > 2000 ? 7 : 1;
    for (std::size_t number = size % step; number < rows; number += step)
        CheckRow(*query, again ? &*again : nullptr, Row(number, constants));
    return 0;
}
