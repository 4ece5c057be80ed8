// One directive of a wide printf format.
#include "winport/src/FormatDirective.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <limits>

namespace winport
{

namespace
{

// Longer paddings than any text has: keeps a bad format from running for ever.
constexpr size_t MaxWidth = 1'000'000;

bool ReadFlag(wchar_t c, Directive& d)
{
    switch (c)
    {
    case L'-':
        return d.left = true;
    case L'+':
        return d.plus = true;
    case L' ':
        return d.space = true;
    case L'#':
        return d.alternate = true;
    case L'0':
        return d.zero = true;
    default:
        return false;
    }
}

size_t ReadCount(const wchar_t*& format)
{
    size_t count = 0;
    for (; *format >= L'0' && *format <= L'9'; ++format)
        count = std::min(count * 10 + static_cast<size_t>(*format - L'0'), MaxWidth);
    return count;
}

void ReadWidth(const wchar_t*& format, Directive& d, const std::function<int()>& nextInt)
{
    if (*format != L'*')
    {
        d.width = ReadCount(format);
        return;
    }
    ++format;
    const int width = nextInt();
    d.left = d.left || width < 0;
    d.width = std::min(static_cast<size_t>(std::abs(static_cast<long long>(width))), MaxWidth);
}

void ReadPrecision(const wchar_t*& format, Directive& d, const std::function<int()>& nextInt)
{
    if (*format != L'.')
        return;
    if (*++format != L'*')
    {
        d.precision = ReadCount(format);
        return;
    }
    ++format;
    const int precision = nextInt();
    d.precision = precision < 0 ? Directive::NoPrecision : std::min(static_cast<size_t>(precision), MaxWidth);
}

Size ReadSize(const wchar_t*& format)
{
    static constexpr struct
    {
        std::wstring_view text;
        Size size;
    } sizes[] = {{L"I64", Size::Long64}, {L"I32", Size::Long}, {L"I", Size::Long64},
                 {L"ll", Size::Long64},  {L"l", Size::Long},   {L"w", Size::Long},
                 {L"hh", Size::Short},   {L"h", Size::Short},  {L"L", Size::Default}};
    // Most directives have none; every path and trace line asks.
    if (std::wcschr(L"IlwhL", *format) == nullptr || *format == L'\0')
        return Size::Default;
    for (const auto& [text, size] : sizes)
    {
        if (std::wcsncmp(format, text.data(), text.size()) == 0)
        {
            format += text.size();
            return size;
        }
    }
    return Size::Default;
}

// This runtime writes at least three digits of an exponent.
void WidenExponent(std::string& text)
{
    const size_t e = text.find_first_of("eE");
    if (e == std::string::npos)
        return;
    const size_t digits = text.size() - (e + 2);
    if (digits < 3)
        text.insert(e + 2, 3 - digits, '0');
}

} // namespace

Directive ReadDirective(const wchar_t*& format, const std::function<int()>& nextInt)
{
    Directive d;
    while (ReadFlag(*format, d))
        ++format;
    ReadWidth(format, d, nextInt);
    ReadPrecision(format, d, nextInt);
    d.size = ReadSize(format);
    d.conversion = *format;
    if (*format)
        ++format;
    return d;
}

std::wstring_view DigitsOf(uint64_t value, const Directive& directive, wchar_t (&buffer)[24])
{
    const bool upper = directive.conversion == L'X';
    const uint64_t radix = upper || directive.conversion == L'x' ? 16 : directive.conversion == L'o' ? 8 : 10;
    const wchar_t* digits = upper ? L"0123456789ABCDEF" : L"0123456789abcdef";
    wchar_t* const end = buffer + 24;
    wchar_t* begin = end;
    for (; value != 0; value /= radix)
        *--begin = digits[value % radix];
    if (begin == end && directive.precision != 0)
        *--begin = L'0';
    return {begin, static_cast<size_t>(end - begin)};
}

std::string FormatReal(const Directive& directive, double value)
{
    const wchar_t kind = static_cast<wchar_t>(directive.conversion | 0x20);
    const std::chars_format format = kind == L'e'   ? std::chars_format::scientific
                                     : kind == L'f' ? std::chars_format::fixed
                                                    : std::chars_format::general;
    constexpr size_t DefaultPrecision = 6;
    constexpr size_t LongestWhole = std::numeric_limits<double>::max_exponent10 + 16;
    const size_t precision = directive.HasPrecision() ? directive.precision : DefaultPrecision;
    std::string text(LongestWhole + precision, '\0');
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), std::fabs(value), format, static_cast<int>(precision));
    text.resize(static_cast<size_t>(end.ptr - text.data()));
    WidenExponent(text);
    if (directive.conversion == L'E' || directive.conversion == L'G')
        std::replace(text.begin(), text.end(), 'e', 'E');
    const char* sign = std::signbit(value) ? "-" : directive.plus ? "+" : directive.space ? " " : "";
    return sign + text;
}

} // namespace winport
