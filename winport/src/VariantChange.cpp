// Changing the type of a VARIANT: numbers, booleans and texts.
#include <oleauto.h>

#include "winport/src/Elements.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace
{

// What a value is before it takes its new type. A Boolean is a number that has words of its own.
struct Boolean
{
    bool value;
};
using Value = std::variant<LONGLONG, ULONGLONG, double, Boolean, std::wstring_view>;

struct Failure
{
    HRESULT hr;
};

Value Read(const VARIANT& source)
{
    switch (source.vt)
    {
    case VT_EMPTY:
        return LONGLONG{0};
    case VT_I1:
        return LONGLONG{static_cast<signed char>(source.cVal)};
    case VT_UI1:
        return LONGLONG{source.bVal};
    case VT_I2:
        return LONGLONG{source.iVal};
    case VT_UI2:
        return LONGLONG{source.uiVal};
    case VT_I4:
    case VT_INT:
        return LONGLONG{source.lVal};
    case VT_UI4:
    case VT_UINT:
        return LONGLONG{source.ulVal};
    case VT_I8:
        return source.llVal;
    case VT_UI8:
        return source.ullVal;
    case VT_R4:
        return double{source.fltVal};
    case VT_R8:
        return source.dblVal;
    case VT_BOOL:
        return Boolean{source.boolVal != VARIANT_FALSE};
    case VT_BSTR:
        return std::wstring_view(source.bstrVal ? source.bstrVal : L"", SysStringLen(source.bstrVal));
    default:
        throw Failure{DISP_E_TYPEMISMATCH};
    }
}

std::string_view Trim(std::string_view text)
{
    const size_t begin = text.find_first_not_of(" \t");
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

// A decimal number, whole or real, with blanks around it.
Value Parse(std::wstring_view text)
{
    std::string bytes;
    for (const wchar_t c : text)
        bytes += c < 0x80 ? static_cast<char>(c) : '?';
    std::string_view number = Trim(bytes);
    if (number.starts_with('+') && number.size() > 1 && number[1] != '-')
        number.remove_prefix(1);
    const char* end = number.data() + number.size();
    LONGLONG whole = 0;
    ULONGLONG large = 0;
    double real = 0;
    const auto readAll = [&](auto& result)
    {
        const auto read = std::from_chars(number.data(), end, result);
        return read.ec == std::errc() && read.ptr == end && !number.empty();
    };
    if (readAll(whole))
        return whole;
    if (readAll(large))
        return large;
    // The names of what is no number are no numbers here.
    if (number.find_first_not_of("+-.0123456789eE") != std::string_view::npos || !readAll(real))
        throw Failure{DISP_E_TYPEMISMATCH};
    return real;
}

// Halves go to the even neighbour.
double RoundHalfToEven(double value)
{
    const double floor = std::floor(value);
    const double rest = value - floor;
    if (rest != 0.5)
        return rest < 0.5 ? floor : floor + 1;
    return std::fmod(floor, 2) == 0 ? floor : floor + 1;
}

template <class Number>
Number ToWhole(const Value& value)
{
    using Limits = std::numeric_limits<Number>;
    if (const auto* text = std::get_if<std::wstring_view>(&value))
        return ToWhole<Number>(Parse(*text));
    if (const auto* boolean = std::get_if<Boolean>(&value))
        return boolean->value ? static_cast<Number>(-1) : Number{0};
    if (const auto* real = std::get_if<double>(&value))
    {
        const double rounded = RoundHalfToEven(*real);
        // The limits as powers of two, which a double holds exactly.
        const double limit = std::ldexp(1.0, Limits::digits);
        if (!(rounded < limit && rounded >= (Limits::is_signed ? -limit : 0)))
            throw Failure{DISP_E_OVERFLOW};
        return static_cast<Number>(rounded);
    }
    const auto fits = [](auto whole) { return std::in_range<Number>(whole); };
    const auto* whole = std::get_if<LONGLONG>(&value);
    if (whole ? !fits(*whole) : !fits(std::get<ULONGLONG>(value)))
        throw Failure{DISP_E_OVERFLOW};
    return whole ? static_cast<Number>(*whole) : static_cast<Number>(std::get<ULONGLONG>(value));
}

double ToReal(const Value& value)
{
    if (const auto* text = std::get_if<std::wstring_view>(&value))
        return ToReal(Parse(*text));
    if (const auto* boolean = std::get_if<Boolean>(&value))
        return boolean->value ? -1 : 0;
    if (const auto* real = std::get_if<double>(&value))
        return *real;
    const auto* whole = std::get_if<LONGLONG>(&value);
    return whole ? static_cast<double>(*whole) : static_cast<double>(std::get<ULONGLONG>(value));
}

bool EqualWords(std::wstring_view text, const wchar_t* word)
{
    return text.size() == std::wcslen(word) && _wcsnicmp(text.data(), word, text.size()) == 0;
}

bool ToBoolean(const Value& value)
{
    const auto* text = std::get_if<std::wstring_view>(&value);
    if (text && (EqualWords(*text, L"true") || EqualWords(*text, L"#TRUE#")))
        return true;
    if (text && (EqualWords(*text, L"false") || EqualWords(*text, L"#FALSE#")))
        return false;
    return ToReal(value) != 0;
}

std::wstring RealText(double value, int digits)
{
    wchar_t text[64];
    _snwprintf(text, 64, L"%.*G", digits, value);
    std::wstring result(text);
    // Exponents are written with two digits here, unlike in the C runtime.
    const size_t e = result.find(L'E');
    if (e != std::wstring::npos && result.size() == e + 5 && result[e + 2] == L'0')
        result.erase(e + 2, 1);
    return result;
}

std::wstring ToText(const VARIANT& source, const Value& value, USHORT flags)
{
    if (source.vt == VT_EMPTY)
        return {};
    if (const auto* text = std::get_if<std::wstring_view>(&value))
        return std::wstring(*text);
    if (const auto* boolean = std::get_if<Boolean>(&value))
    {
        if (flags & VARIANT_ALPHABOOL)
            return boolean->value ? L"True" : L"False";
        return boolean->value ? L"-1" : L"0";
    }
    if (const auto* real = std::get_if<double>(&value))
        return RealText(*real, source.vt == VT_R4 ? 7 : 15);
    const auto* whole = std::get_if<LONGLONG>(&value);
    return whole ? std::to_wstring(*whole) : std::to_wstring(std::get<ULONGLONG>(value));
}

bool IsSigned(VARTYPE type)
{
    return type == VT_I1 || type == VT_I2 || type == VT_I4 || type == VT_INT || type == VT_I8;
}

bool IsUnsigned(VARTYPE type)
{
    return type == VT_UI1 || type == VT_UI2 || type == VT_UI4 || type == VT_UINT || type == VT_UI8;
}

// A signed number keeps its bits in the unsigned type of its own width: -1 becomes the largest one.
Value Reinterpreted(const Value& value, VARTYPE from, VARTYPE to)
{
    const ULONG width = winport::ElementSize(to);
    if (!IsSigned(from) || !IsUnsigned(to) || winport::ElementSize(from) != width)
        return value;
    const ULONGLONG mask = ~ULONGLONG{0} >> (64 - 8 * width);
    return static_cast<ULONGLONG>(std::get<LONGLONG>(value)) & mask;
}

void Write(VARIANT& result, const VARIANT& source, const Value& value, USHORT flags, VARTYPE type)
{
    switch (type)
    {
    case VT_I1:
        result.cVal = static_cast<CHAR>(ToWhole<signed char>(value));
        break;
    case VT_UI1:
        result.bVal = ToWhole<BYTE>(value);
        break;
    case VT_I2:
        result.iVal = ToWhole<SHORT>(value);
        break;
    case VT_UI2:
        result.uiVal = ToWhole<USHORT>(value);
        break;
    case VT_I4:
    case VT_INT:
        result.lVal = ToWhole<LONG>(value);
        break;
    case VT_UI4:
    case VT_UINT:
        result.ulVal = ToWhole<ULONG>(value);
        break;
    case VT_I8:
        result.llVal = ToWhole<LONGLONG>(value);
        break;
    case VT_UI8:
        result.ullVal = ToWhole<ULONGLONG>(value);
        break;
    case VT_R4:
    {
        const double real = ToReal(value);
        if (std::fabs(real) > std::numeric_limits<float>::max())
            throw Failure{DISP_E_OVERFLOW};
        result.fltVal = static_cast<float>(real);
        break;
    }
    case VT_R8:
        result.dblVal = ToReal(value);
        break;
    case VT_BOOL:
        result.boolVal = ToBoolean(value) ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case VT_BSTR:
    {
        const std::wstring text = ToText(source, value, flags);
        result.bstrVal = SysAllocStringLen(text.c_str(), static_cast<UINT>(text.size()));
        if (!result.bstrVal)
            throw Failure{E_OUTOFMEMORY};
        break;
    }
    default:
        throw Failure{DISP_E_BADVARTYPE};
    }
    result.vt = type;
}

} // namespace

HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, USHORT flags, VARTYPE type)
{
    if (!destination || !source)
        return E_INVALIDARG;
    if (source->vt == type)
        return VariantCopy(destination, source);
    try
    {
        VARIANT result;
        VariantInit(&result);
        Write(result, *source, Reinterpreted(Read(*source), source->vt, type), flags, type);
        const HRESULT hr = VariantClear(destination);
        if (FAILED(hr))
            VariantClear(&result);
        else
            *destination = result;
        return hr;
    }
    catch (const Failure& failure)
    {
        return failure.hr;
    }
    catch (const std::bad_alloc&)
    {
        return E_OUTOFMEMORY;
    }
}
