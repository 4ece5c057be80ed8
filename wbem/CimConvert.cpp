// CIM values: conversions, datetimes, plain text.
#include "wbem/CimValue.h"

#include "wbem/Number.h"
#include "wbem/Text.h"

#include <cfloat>
#include <cmath>
#include <limits>
#include <utility>

namespace wbem
{

namespace
{

std::wstring Shown(const CimValue& value)
{
    const std::wstring text = Excerpt(PlainText(value));
    const bool quoted =
        !value.IsArray() && (IsText(value.Type()) || value.Type() == CimType::Char16) && !value.IsNull();
    return quoted ? L'"' + text + L'"' : text;
}

std::wstring NotOfType(const CimValue& value, CimType type)
{
    return Shown(value) + L" is not of type " + std::wstring(CimTypeName(type));
}

std::wstring DoesNotFit(const CimValue& value, CimType type)
{
    return Shown(value) + L" does not fit " + std::wstring(CimTypeName(type));
}

struct IntegerRange
{
    std::int64_t least;
    std::uint64_t most;
};

template <class T>
constexpr IntegerRange RangeOf()
{
    return {static_cast<std::int64_t>(std::numeric_limits<T>::min()),
            static_cast<std::uint64_t>(std::numeric_limits<T>::max())};
}

IntegerRange RangeOf(CimType type)
{
    switch (type)
    {
    case CimType::SInt8:
        return RangeOf<std::int8_t>();
    case CimType::UInt8:
        return RangeOf<std::uint8_t>();
    case CimType::SInt16:
        return RangeOf<std::int16_t>();
    case CimType::UInt16:
        return RangeOf<std::uint16_t>();
    case CimType::SInt32:
        return RangeOf<std::int32_t>();
    case CimType::UInt32:
        return RangeOf<std::uint32_t>();
    case CimType::SInt64:
        return RangeOf<std::int64_t>();
    default:
        return RangeOf<std::uint64_t>();
    }
}

// An integer of any type in any integer type, when it fits.
std::optional<CimValue> FitInteger(const CimValue& value, CimType type)
{
    const IntegerRange range = RangeOf(type);
    if (IsSigned(value.Type()) && value.AsSigned() < 0)
    {
        if (value.AsSigned() < range.least)
            return std::nullopt;
        return CimValue::Signed(type, value.AsSigned());
    }
    const std::uint64_t magnitude =
        IsSigned(value.Type()) ? static_cast<std::uint64_t>(value.AsSigned()) : value.AsUnsigned();
    if (magnitude > range.most)
        return std::nullopt;
    return IsSigned(type) ? CimValue::Signed(type, static_cast<std::int64_t>(magnitude))
                          : CimValue::Unsigned(type, magnitude);
}

// A real without a fraction as an integer; beyond 2^53 a real stands for more than one.
std::optional<CimValue> WholeNumber(const CimValue& value)
{
    constexpr double kExact = 9007199254740992.0;
    const double real = value.AsReal();
    if (!(std::fabs(real) <= kExact) || std::trunc(real) != real)
        return std::nullopt;
    return CimValue::Integer(static_cast<std::int64_t>(real));
}

double RealOf(const CimValue& value)
{
    if (IsReal(value.Type()))
        return value.AsReal();
    return IsSigned(value.Type()) ? static_cast<double>(value.AsSigned()) : static_cast<double>(value.AsUnsigned());
}

std::optional<CimValue> ToInteger(const CimValue& value, CimType type, std::wstring& reason)
{
    std::optional<CimValue> number;
    NumberFault fault = NumberFault::NotANumber;
    if (IsInteger(value.Type()))
        number = value;
    else if (value.Type() == CimType::String)
        number = ParseInteger(value.AsText(), IntegerForms::Plain, fault);
    else if (IsReal(value.Type()))
        number = WholeNumber(value);
    if (!number)
    {
        reason = fault == NumberFault::TooLarge ? DoesNotFit(value, type) : NotOfType(value, type);
        return std::nullopt;
    }
    auto fitting = FitInteger(*number, type);
    if (!fitting)
        reason = DoesNotFit(value, type);
    return fitting;
}

std::optional<CimValue> ToReal(const CimValue& value, CimType type, std::wstring& reason)
{
    std::optional<double> number;
    NumberFault fault = NumberFault::NotANumber;
    if (IsInteger(value.Type()) || IsReal(value.Type()))
        number = RealOf(value);
    else if (value.Type() == CimType::String)
        number = ParseReal(value.AsText(), fault);
    if (!number)
    {
        reason = fault == NumberFault::TooLarge ? DoesNotFit(value, type) : NotOfType(value, type);
        return std::nullopt;
    }
    if (type == CimType::Real64)
        return CimValue::Real(type, *number);
    if (std::fabs(*number) > static_cast<double>(FLT_MAX) && std::isfinite(*number))
    {
        reason = DoesNotFit(value, type);
        return std::nullopt;
    }
    return CimValue::Real(type, static_cast<double>(static_cast<float>(*number)));
}

std::optional<CimValue> ToChar16(const CimValue& value, std::wstring& reason)
{
    if (value.Type() == CimType::Char16)
        return value;
    if (value.Type() == CimType::String && value.AsText().size() == 1)
        return CimValue::Char16(static_cast<char16_t>(value.AsText()[0]));
    if (IsInteger(value.Type()))
    {
        if (const auto code = FitInteger(value, CimType::UInt16))
            return CimValue::Char16(static_cast<char16_t>(code->AsUnsigned()));
        reason = DoesNotFit(value, CimType::Char16);
        return std::nullopt;
    }
    reason = NotOfType(value, CimType::Char16);
    return std::nullopt;
}

std::optional<CimValue> ToBoolean(const CimValue& value, std::wstring& reason)
{
    if (value.Type() == CimType::Boolean)
        return value;
    if (value.Type() == CimType::String && EqualNoCase(value.AsText(), L"TRUE"))
        return CimValue::Bool(true);
    if (value.Type() == CimType::String && EqualNoCase(value.AsText(), L"FALSE"))
        return CimValue::Bool(false);
    reason = NotOfType(value, CimType::Boolean);
    return std::nullopt;
}

std::optional<CimValue> ToText(const CimValue& value, CimType type, std::wstring& reason)
{
    if (!IsText(value.Type()))
    {
        reason = NotOfType(value, type);
        return std::nullopt;
    }
    if (type == CimType::DateTime && !IsDateTime(value.AsText()))
    {
        reason = Shown(value) + L" is not a datetime (yyyymmddhhmmss.mmmmmm+uuu)";
        return std::nullopt;
    }
    return value.Type() == type ? value : CimValue::Text(type, value.AsText());
}

std::optional<CimValue> ConvertSingle(const CimValue& value, CimType type, std::wstring& reason)
{
    if (value.IsNull())
        return CimValue::Null(type);
    if (value.IsArray())
    {
        reason = L"an array of values is not of type " + std::wstring(CimTypeName(type));
        return std::nullopt;
    }
    if (IsInteger(type))
        return ToInteger(value, type, reason);
    if (IsReal(type))
        return ToReal(value, type, reason);
    if (IsText(type))
        return ToText(value, type, reason);
    if (type == CimType::Char16)
        return ToChar16(value, reason);
    if (type == CimType::Boolean)
        return ToBoolean(value, reason);
    if (type == CimType::Object && value.Type() == CimType::Object)
        return value;
    reason = NotOfType(value, type);
    return std::nullopt;
}

bool IsDigitOrAsterisk(wchar_t c)
{
    return c == L'*' || (c >= L'0' && c <= L'9');
}

constexpr std::size_t kDateTimeLength = 25;
constexpr std::size_t kPointAt = 14;
constexpr std::size_t kSignAt = 21;

// A field of digits.
std::int64_t Field(std::wstring_view text, std::size_t at, std::size_t length)
{
    std::int64_t value = 0;
    for (const wchar_t c : text.substr(at, length))
        value = value * 10 + (c - L'0');
    return value;
}

// Days since 0001-01-01 of the proleptic Gregorian calendar.
std::int64_t DayNumber(std::int64_t year, std::int64_t month, std::int64_t day)
{
    // Years that begin in March put the leap day last.
    const std::int64_t y = month <= 2 ? year - 1 : year;
    const std::int64_t monthFromMarch = (month + 9) % 12;
    return 365 * y + y / 4 - y / 100 + y / 400 + (153 * monthFromMarch + 2) / 5 + day - 1 - 306;
}

} // namespace

std::optional<CimValue> ConvertTo(const CimValue& value, CimType type, bool isArray, std::wstring& reason)
{
    if (value.IsNull())
        return CimValue::Null(type, isArray);
    if (!isArray)
        return ConvertSingle(value, type, reason);
    std::vector<CimValue> elements;
    if (!value.IsArray())
    {
        auto single = ConvertSingle(value, type, reason);
        if (!single)
            return std::nullopt;
        elements.push_back(*std::move(single));
        return CimValue::Array(type, std::move(elements));
    }
    elements.reserve(value.Elements().size());
    for (const CimValue& element : value.Elements())
    {
        auto converted = ConvertSingle(element, type, reason);
        if (!converted)
            return std::nullopt;
        elements.push_back(*std::move(converted));
    }
    return CimValue::Array(type, std::move(elements));
}

std::wstring PlainText(const CimValue& value)
{
    if (value.IsNull())
        return L"NULL";
    if (value.IsArray())
    {
        std::wstring text = L"{";
        for (const CimValue& element : value.Elements())
        {
            text += text.size() > 1 ? L", " : L"";
            text += PlainText(element);
        }
        return text + L"}";
    }
    if (IsText(value.Type()))
        return std::wstring(value.AsText());
    if (IsSigned(value.Type()))
        return std::to_wstring(value.AsSigned());
    if (IsUnsigned(value.Type()))
        return std::to_wstring(value.AsUnsigned());
    if (IsReal(value.Type()))
        return RealText(value.AsReal());
    switch (value.Type())
    {
    case CimType::Boolean:
        return value.AsBool() ? L"TRUE" : L"FALSE";
    case CimType::Char16:
        return std::wstring(1, static_cast<wchar_t>(value.AsUnsigned()));
    case CimType::Object:
        return L"instance of " + value.AsObject()->className;
    default:
        return L"NULL";
    }
}

bool IsDateTime(std::wstring_view text) noexcept
{
    if (text.size() != kDateTimeLength || text[kPointAt] != L'.')
        return false;
    if (text[kSignAt] != L'+' && text[kSignAt] != L'-' && text[kSignAt] != L':')
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (i != kPointAt && i != kSignAt && !IsDigitOrAsterisk(text[i]))
            return false;
    }
    return true;
}

std::optional<std::int64_t> DateTimeMicroseconds(std::wstring_view text) noexcept
{
    if (!IsDateTime(text) || text.find(L'*') != std::wstring_view::npos)
        return std::nullopt;
    std::int64_t days = 0;
    std::int64_t offsetMinutes = 0;
    if (text[kSignAt] == L':')
    {
        days = Field(text, 0, 8);
    }
    else
    {
        days = DayNumber(Field(text, 0, 4), Field(text, 4, 2), Field(text, 6, 2));
        offsetMinutes = Field(text, kSignAt + 1, 3) * (text[kSignAt] == L'-' ? -1 : 1);
    }
    const std::int64_t minutes = (days * 24 + Field(text, 8, 2)) * 60 + Field(text, 10, 2) - offsetMinutes;
    return (minutes * 60 + Field(text, 12, 2)) * 1'000'000 + Field(text, 15, 6);
}

} // namespace wbem
