// Bounded copying, case and numbers of wide text, as the Microsoft C runtime does them.
#include <windows.h>

#include "winport/src/InvalidParameter.h"

#include <algorithm>
#include <cwchar>
#include <limits>

namespace
{

using winport::Refuse;

wchar_t ToLower(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

wchar_t ToUpper(wchar_t c)
{
    return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
}

// Reads white space, a sign and digits; what follows is left. Saturates at the limits of Number.
template <class Number>
Number ReadNumber(const wchar_t* text)
{
    using Limits = std::numeric_limits<Number>;
    if (!text)
        return 0;
    while (*text == L' ' || (*text >= L'\t' && *text <= L'\r'))
        ++text;
    const bool negative = *text == L'-';
    if (*text == L'-' || *text == L'+')
        ++text;
    Number value = 0;
    for (; *text >= L'0' && *text <= L'9'; ++text)
    {
        const Number digit = static_cast<Number>(*text - L'0');
        if (negative ? value < (Limits::min() + digit) / 10 : value > (Limits::max() - digit) / 10)
            return negative ? Limits::min() : Limits::max();
        value = static_cast<Number>(negative ? value * 10 - digit : value * 10 + digit);
    }
    return value;
}

} // namespace

errno_t wcscpy_s(wchar_t* destination, size_t capacity, const wchar_t* source)
{
    if (!destination || !capacity || !source)
        return Refuse(destination, capacity, EINVAL);
    const size_t length = std::wcslen(source);
    if (length >= capacity)
        return Refuse(destination, capacity, ERANGE);
    std::wmemmove(destination, source, length + 1);
    return 0;
}

errno_t wcscat_s(wchar_t* destination, size_t capacity, const wchar_t* source)
{
    if (!destination || !capacity || !source)
        return Refuse(destination, capacity, EINVAL);
    const size_t held = wcsnlen(destination, capacity);
    if (held == capacity)
        return Refuse(destination, capacity, EINVAL);
    const size_t length = std::wcslen(source);
    if (length >= capacity - held)
        return Refuse(destination, capacity, ERANGE);
    std::wmemmove(destination + held, source, length + 1);
    return 0;
}

errno_t _itow_s(int value, wchar_t* destination, size_t capacity, int radix)
{
    if (!destination || !capacity || radix < 2 || radix > 36)
        return Refuse(destination, capacity, EINVAL);
    // Only radix 10 knows a sign; 32 binary digits are the longest text.
    const bool negative = radix == 10 && value < 0;
    unsigned int rest = negative ? 0u - static_cast<unsigned int>(value) : static_cast<unsigned int>(value);
    const unsigned int base = static_cast<unsigned int>(radix);
    wchar_t digits[33];
    size_t count = 0;
    do
        digits[count++] = L"0123456789abcdefghijklmnopqrstuvwxyz"[rest % base];
    while ((rest /= base) != 0);
    if (negative)
        digits[count++] = L'-';
    if (count >= capacity)
        return Refuse(destination, capacity, ERANGE);
    std::reverse_copy(digits, digits + count, destination);
    destination[count] = L'\0';
    return 0;
}

wchar_t* _wcslwr(wchar_t* text)
{
    for (wchar_t* c = text; *c; ++c)
        *c = ToLower(*c);
    return text;
}

wchar_t* _wcsupr(wchar_t* text)
{
    for (wchar_t* c = text; *c; ++c)
        *c = ToUpper(*c);
    return text;
}

int _wcsicmp(const wchar_t* left, const wchar_t* right)
{
    return _wcsnicmp(left, right, std::numeric_limits<size_t>::max());
}

int _wcsnicmp(const wchar_t* left, const wchar_t* right, size_t count)
{
    for (; count > 0; --count, ++left, ++right)
    {
        const wchar_t a = ToLower(*left);
        const wchar_t b = ToLower(*right);
        if (a != b)
            return a < b ? -1 : 1;
        if (a == L'\0')
            return 0;
    }
    return 0;
}

int _wtoi(const wchar_t* text)
{
    return ReadNumber<int>(text);
}

LONGLONG _wtoi64(const wchar_t* text)
{
    return ReadNumber<LONGLONG>(text);
}
