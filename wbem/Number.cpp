// Numbers as the three languages write them.
#include "wbem/Number.h"

#include "wbem/Text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace wbem
{

namespace
{

bool IsSign(wchar_t c)
{
    return c == L'+' || c == L'-';
}

bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

bool IsLetter(wchar_t c)
{
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
}

unsigned DigitValue(wchar_t c)
{
    if (IsDigit(c))
        return static_cast<unsigned>(c - L'0');
    const wchar_t small = FoldCase(c);
    return small >= L'a' && small <= L'f' ? static_cast<unsigned>(small - L'a') + 10 : 99;
}

std::optional<std::uint64_t> ParseMagnitude(std::wstring_view digits, unsigned base, NumberFault& fault)
{
    fault = NumberFault::NotANumber;
    if (digits.empty())
        return std::nullopt;
    std::uint64_t magnitude = 0;
    bool tooLarge = false;
    for (const wchar_t c : digits)
    {
        const unsigned digit = DigitValue(c);
        if (digit >= base)
            return std::nullopt;
        tooLarge = tooLarge || magnitude > (std::numeric_limits<std::uint64_t>::max() - digit) / base;
        magnitude = magnitude * base + digit;
    }
    if (tooLarge)
    {
        fault = NumberFault::TooLarge;
        return std::nullopt;
    }
    return magnitude;
}

} // namespace

std::optional<CimValue> ParseInteger(std::wstring_view text, IntegerForms forms, NumberFault& fault)
{
    const bool negative = !text.empty() && text.front() == L'-';
    if (!text.empty() && IsSign(text.front()))
        text.remove_prefix(1);
    unsigned base = 10;
    if (text.size() > 2 && text[0] == L'0' && FoldCase(text[1]) == L'x')
    {
        base = 16;
        text.remove_prefix(2);
    }
    else if (forms == IntegerForms::Mof && text.size() > 1 && FoldCase(text.back()) == L'b')
    {
        base = 2;
        text.remove_suffix(1);
    }
    else if (forms == IntegerForms::Mof && text.size() > 1 && text[0] == L'0')
    {
        base = 8;
        text.remove_prefix(1);
    }
    const auto magnitude = ParseMagnitude(text, base, fault);
    if (!magnitude)
        return std::nullopt;
    if (!negative)
        return CimValue::Integer(*magnitude);
    constexpr std::uint64_t kMostNegative = std::uint64_t{1} << 63;
    if (*magnitude > kMostNegative)
    {
        fault = NumberFault::TooLarge;
        return std::nullopt;
    }
    return CimValue::Integer(static_cast<std::int64_t>(0 - *magnitude));
}

std::optional<double> ParseReal(std::wstring_view text, NumberFault& fault)
{
    fault = NumberFault::NotANumber;
    if (text.size() > 1 && text[0] == L'+' && !IsSign(text[1]))
        text.remove_prefix(1);
    if (text.empty() || text.size() > kMaxNumberLength)
        return std::nullopt;
    // from_chars would read "inf" and "nan" too.
    std::string narrow;
    for (const wchar_t c : text)
    {
        if (!IsDigit(c) && !IsSign(c) && c != L'.' && c != L'e' && c != L'E')
            return std::nullopt;
        narrow.push_back(static_cast<char>(c));
    }
    double value = 0;
    const char* const end = narrow.data() + narrow.size();
    const auto [stop, error] = std::from_chars(narrow.data(), end, value);
    if (error == std::errc::result_out_of_range && stop == end)
        fault = NumberFault::TooLarge;
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

std::optional<CimValue> ParseNumber(std::wstring_view text, IntegerForms forms, NumberFault& fault)
{
    if (auto integer = ParseInteger(text, forms, fault))
        return integer;
    if (fault == NumberFault::TooLarge)
        return std::nullopt;
    const bool realForm = text.find_first_of(L".eE") != std::wstring_view::npos;
    if (!realForm)
        return std::nullopt;
    if (const auto real = ParseReal(text, fault))
        return CimValue::Real(CimType::Real64, *real);
    return std::nullopt;
}

std::size_t NumberExtent(std::wstring_view text) noexcept
{
    std::size_t i = !text.empty() && IsSign(text[0]) ? 1 : 0;
    const bool hexadecimal = text.size() > i + 1 && text[i] == L'0' && FoldCase(text[i + 1]) == L'x';
    while (i < text.size())
    {
        const bool exponentSign = IsSign(text[i]) && !hexadecimal && i > 1 && FoldCase(text[i - 1]) == L'e' &&
                                  (IsDigit(text[i - 2]) || text[i - 2] == L'.');
        if (!IsDigit(text[i]) && !IsLetter(text[i]) && text[i] != L'.' && text[i] != L'_' && !exponentSign)
            break;
        ++i;
    }
    return i;
}

std::wstring RealText(double value)
{
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    std::string narrow(buffer, error == std::errc() ? end : buffer);
    if (std::isfinite(value) && narrow.find_first_of(".e") == std::string::npos)
        narrow += ".0";
    return std::wstring(narrow.begin(), narrow.end());
}

} // namespace wbem
