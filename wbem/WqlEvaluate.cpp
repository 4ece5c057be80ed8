// WQL: evaluation in three-valued logic, and what a query demands of its objects.
#include "wbem/Wql.h"

#include "wbem/Number.h"
#include "wbem/Text.h"

#include <compare>
#include <optional>

namespace wbem
{

namespace
{

// Nothing: the two cannot be compared.
using Order = std::optional<std::partial_ordering>;

Truth Negate(Truth truth)
{
    if (truth == Truth::Unknown)
        return truth;
    return truth == Truth::True ? Truth::False : Truth::True;
}

Truth TruthOf(bool value)
{
    return value ? Truth::True : Truth::False;
}

bool IsNumber(const CimValue& value)
{
    return IsInteger(value.Type()) || IsReal(value.Type());
}

std::partial_ordering CompareIntegers(const CimValue& left, const CimValue& right)
{
    const bool leftNegative = IsSigned(left.Type()) && left.AsSigned() < 0;
    const bool rightNegative = IsSigned(right.Type()) && right.AsSigned() < 0;
    if (leftNegative != rightNegative)
        return leftNegative ? std::partial_ordering::less : std::partial_ordering::greater;
    if (leftNegative)
        return left.AsSigned() <=> right.AsSigned();
    const auto magnitude = [](const CimValue& value)
    { return IsSigned(value.Type()) ? static_cast<std::uint64_t>(value.AsSigned()) : value.AsUnsigned(); };
    return magnitude(left) <=> magnitude(right);
}

// Exact also where a real cannot hold the integer.
std::partial_ordering CompareIntegerToReal(const CimValue& integer, double real)
{
    constexpr double kTwoTo63 = 9223372036854775808.0;
    constexpr double kTwoTo64 = 18446744073709551616.0;
    if (real != real)
        return std::partial_ordering::unordered;
    if (real >= kTwoTo64)
        return std::partial_ordering::less;
    if (real < -kTwoTo63)
        return std::partial_ordering::greater;
    // The integer part fits 64 bits now; what it leaves decides between equals.
    const bool negative = real < 0;
    const CimValue whole = negative ? CimValue::Integer(static_cast<std::int64_t>(real))
                                    : CimValue::Integer(static_cast<std::uint64_t>(real));
    const auto order = CompareIntegers(integer, whole);
    if (order != std::partial_ordering::equivalent)
        return order;
    const double wholeReal = negative ? static_cast<double>(static_cast<std::int64_t>(real))
                                      : static_cast<double>(static_cast<std::uint64_t>(real));
    return wholeReal <=> real;
}

std::partial_ordering Reversed(std::partial_ordering order)
{
    return 0 <=> order;
}

std::partial_ordering CompareNumbers(const CimValue& left, const CimValue& right)
{
    if (IsReal(left.Type()) && IsReal(right.Type()))
        return left.AsReal() <=> right.AsReal();
    if (IsReal(left.Type()))
        return Reversed(CompareIntegerToReal(right, left.AsReal()));
    if (IsReal(right.Type()))
        return CompareIntegerToReal(left, right.AsReal());
    return CompareIntegers(left, right);
}

// A number, or a text that spells one.
std::optional<CimValue> NumberOf(const CimValue& value)
{
    if (IsNumber(value))
        return value;
    NumberFault fault = NumberFault::NotANumber;
    if (value.Type() == CimType::String)
        return ParseNumber(value.AsText(), IntegerForms::Plain, fault);
    return std::nullopt;
}

std::optional<bool> BooleanOf(const CimValue& value)
{
    if (value.Type() == CimType::Boolean)
        return value.AsBool();
    if (value.Type() == CimType::String && EqualNoCase(value.AsText(), L"TRUE"))
        return true;
    if (value.Type() == CimType::String && EqualNoCase(value.AsText(), L"FALSE"))
        return false;
    if (const auto number = NumberOf(value))
        return CompareNumbers(*number, CimValue::Integer(std::int64_t{0})) != std::partial_ordering::equivalent;
    return std::nullopt;
}

Order CompareTexts(const CimValue& left, const CimValue& right)
{
    return CompareNoCase(PlainText(left), PlainText(right)) <=> 0;
}

Order CompareMoments(const CimValue& left, const CimValue& right)
{
    if (!IsDateTime(left.AsText()) || !IsDateTime(right.AsText()))
        return std::nullopt;
    const auto a = DateTimeMicroseconds(left.AsText());
    const auto b = DateTimeMicroseconds(right.AsText());
    if (a && b)
        return *a <=> *b;
    return left.AsText() <=> right.AsText();
}

// References have no order: other than equal they are unordered.
Order CompareReferences(const CimValue& left, const CimValue& right)
{
    if (EqualNoCase(left.AsText(), right.AsText()))
        return std::partial_ordering::equivalent;
    const auto a = ObjectPath::Parse(left.AsText());
    const auto b = ObjectPath::Parse(right.AsText());
    const bool same = a && b && SameObject(*a, *b, {.quotedNumbers = true});
    return same ? std::partial_ordering::equivalent : std::partial_ordering::unordered;
}

bool IsTextOrCharacter(const CimValue& value)
{
    return IsText(value.Type()) || value.Type() == CimType::Char16;
}

Order CompareValues(const CimValue& left, const CimValue& right)
{
    const auto either = [&](CimType type) { return left.Type() == type || right.Type() == type; };
    if (left.IsArray() || right.IsArray() || either(CimType::Object))
        return std::nullopt;
    if (either(CimType::Boolean))
    {
        const auto a = BooleanOf(left);
        const auto b = BooleanOf(right);
        return a && b ? Order(static_cast<int>(*a) <=> static_cast<int>(*b)) : std::nullopt;
    }
    if (IsNumber(left) || IsNumber(right))
    {
        const auto a = NumberOf(left);
        const auto b = NumberOf(right);
        return a && b ? Order(CompareNumbers(*a, *b)) : std::nullopt;
    }
    if (!IsTextOrCharacter(left) || !IsTextOrCharacter(right))
        return std::nullopt;
    if (either(CimType::Char16))
        return CompareTexts(left, right);
    if (either(CimType::Reference))
        return CompareReferences(left, right);
    if (either(CimType::DateTime))
        return CompareMoments(left, right);
    return CompareNoCase(left.AsText(), right.AsText()) <=> 0;
}

Truth Like(const CimValue& value, const LikePattern& pattern)
{
    if (value.IsNull() || value.IsArray() || !IsTextOrCharacter(value))
        return Truth::Unknown;
    return TruthOf(value.Type() == CimType::Char16 ? pattern.Matches(PlainText(value))
                                                   : pattern.Matches(value.AsText()));
}

Truth EvaluateTest(const WqlTest& test, const WqlSource& source)
{
    if (test.op == WqlOperator::IsA)
        return source.IsA(test.property, test.value.AsText());
    const CimValue value = source.Value(test.property);
    switch (test.op)
    {
    case WqlOperator::IsNull:
        return TruthOf(value.IsNull());
    case WqlOperator::IsNotNull:
        return TruthOf(!value.IsNull());
    case WqlOperator::Like:
        return Like(value, *test.pattern);
    case WqlOperator::NotLike:
        return Negate(Like(value, *test.pattern));
    default:
        return Compare(value, test.op, test.other ? source.Value(*test.other) : test.value);
    }
}

// AND stops at the first false, OR at the first true; an unknown is what remains of neither.
Truth EvaluateList(const WqlCondition& condition, const WqlSource& source)
{
    const Truth decisive = condition.kind == WqlCondition::Kind::And ? Truth::False : Truth::True;
    Truth result = Negate(decisive);
    for (const WqlCondition& operand : condition.operands)
    {
        const Truth truth = Evaluate(operand, source);
        if (truth == decisive)
            return decisive;
        if (truth == Truth::Unknown)
            result = Truth::Unknown;
    }
    return result;
}

bool Demands(const WqlCondition& condition, std::wstring_view property)
{
    return condition.kind == WqlCondition::Kind::Test && condition.test.op == WqlOperator::Equal &&
           !condition.test.other && EqualNoCase(condition.test.property.name, property);
}

} // namespace

bool WqlTest::operator==(const WqlTest& that) const
{
    return property == that.property && op == that.op && value == that.value && other == that.other;
}

Truth Compare(const CimValue& left, WqlOperator op, const CimValue& right)
{
    if (left.IsNull() || right.IsNull())
        return Truth::Unknown;
    const Order order = CompareValues(left, right);
    if (!order)
        return Truth::Unknown;
    const bool unordered = *order == std::partial_ordering::unordered;
    switch (op)
    {
    case WqlOperator::Equal:
        return TruthOf(*order == 0);
    case WqlOperator::NotEqual:
        return TruthOf(*order != 0);
    case WqlOperator::Less:
        return unordered ? Truth::Unknown : TruthOf(*order < 0);
    case WqlOperator::LessOrEqual:
        return unordered ? Truth::Unknown : TruthOf(*order <= 0);
    case WqlOperator::Greater:
        return unordered ? Truth::Unknown : TruthOf(*order > 0);
    case WqlOperator::GreaterOrEqual:
        return unordered ? Truth::Unknown : TruthOf(*order >= 0);
    default:
        return Truth::Unknown;
    }
}

Truth Evaluate(const WqlCondition& condition, const WqlSource& source)
{
    switch (condition.kind)
    {
    case WqlCondition::Kind::Test:
        return EvaluateTest(condition.test, source);
    case WqlCondition::Kind::Not:
        return Negate(Evaluate(condition.operands.front(), source));
    default:
        return EvaluateList(condition, source);
    }
}

bool WqlQuery::IsSchemaQuery() const noexcept
{
    return kind == WqlKind::Select ? EqualNoCase(className, L"meta_class") : schemaOnly;
}

bool WqlQuery::Admits(const WqlSource& source) const
{
    return !where || Evaluate(*where, source) == Truth::True;
}

const CimValue* WqlQuery::RequiredValue(std::wstring_view property) const
{
    if (!where)
        return nullptr;
    if (Demands(*where, property))
        return &where->test.value;
    if (where->kind != WqlCondition::Kind::And)
        return nullptr;
    for (const WqlCondition& conjunct : where->operands)
    {
        if (Demands(conjunct, property))
            return &conjunct.test.value;
    }
    return nullptr;
}

} // namespace wbem
