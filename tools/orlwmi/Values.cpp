// VARIANTs as values: the conventions by which CIM types travel in them.
#include "tools/orlwmi/Objects.h"

#include "tools/orlwmi/ErrorInfo.h"
#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/Wmi.h"
#include "winport/portable/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace orl::client
{
namespace
{

// What is nested deeper than any real object is damaged, and is shown as being there without being read.
constexpr int DeepestObject = 32;

Value ReadScalar(const VARIANT& variant, LONG cimType, int depth);

template <typename T>
Number Decimal(T value)
{
    std::array<char, 40> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {std::string(digits.data(), result.ptr)};
}

Value Real(double value, bool isSingle)
{
    if (std::isnan(value))
    {
        return "NaN";
    }
    if (std::isinf(value))
    {
        return value < 0 ? "-Infinity" : "Infinity";
    }
    return isSingle ? Decimal(static_cast<float>(value)) : Decimal(value);
}

// An integer's bits, cut to the CIM type: a uint32 of 4294967295 arrives as the LONG -1.
Value Integer(LONGLONG value, LONG cimType)
{
    switch (cimType)
    {
    case CIM_UINT8:
        return Decimal(static_cast<unsigned>(static_cast<BYTE>(value)));
    case CIM_UINT16:
        return Decimal(static_cast<unsigned>(static_cast<USHORT>(value)));
    case CIM_UINT32:
        return Decimal(static_cast<ULONG>(value));
    case CIM_UINT64:
        return Decimal(static_cast<ULONGLONG>(value));
    case CIM_BOOLEAN:
        return value != 0;
    case CIM_CHAR16:
    {
        std::string text;
        AppendUtf8(text, static_cast<char32_t>(static_cast<USHORT>(value)));
        return text;
    }
    default:
        return Decimal(value);
    }
}

bool IsDecimal(const std::string& text)
{
    const size_t sign = !text.empty() && text[0] == '-' ? 1 : 0;
    return text.size() > sign && std::all_of(text.begin() + static_cast<std::ptrdiff_t>(sign), text.end(),
                                             [](char c) { return c >= '0' && c <= '9'; });
}

// A number of 64 bits travels as its decimal text. A text that is none is shown as it came.
Value Text(BSTR bstr, LONG cimType)
{
    std::string text = bstr == nullptr ? std::string() : ToUtf8({bstr, SysStringLen(bstr)});
    if ((cimType != CIM_UINT64 && cimType != CIM_SINT64) || !IsDecimal(text))
    {
        return text;
    }
    if (cimType == CIM_SINT64)
    {
        LONGLONG value = 0;
        const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
        return result.ec == std::errc() ? Value(Decimal(value)) : Value(text);
    }
    ULONGLONG value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() ? Value(Decimal(value)) : Value(text);
}

Value Object(IUnknown* unknown, int depth)
{
    CComPtr<IWbemClassObject> object;
    if (unknown == nullptr ||
        FAILED(unknown->QueryInterface(IID_IWbemClassObject, reinterpret_cast<void**>(&object))) || !object)
    {
        return {};
    }
    if (depth >= DeepestObject)
    {
        return "(object)";
    }
    return std::make_shared<const Record>(ReadRecord(object, depth + 1));
}

Value ReadArray(SAFEARRAY* array, VARTYPE elementType, LONG cimType, int depth)
{
    Array items;
    LONG first = 0;
    LONG last = -1;
    if (array != nullptr)
    {
        Check(SafeArrayGetLBound(array, 1, &first), "cannot read an array");
        Check(SafeArrayGetUBound(array, 1, &last), "cannot read an array");
    }
    for (LONG i = first; i <= last; ++i)
    {
        CComVariant element;
        if (elementType == VT_VARIANT)
        {
            Check(SafeArrayGetElement(array, &i, static_cast<VARIANT*>(&element)), "cannot read an array");
        }
        else
        {
            // All scalars of a VARIANT begin at the same place.
            Check(SafeArrayGetElement(array, &i, &element.llVal), "cannot read an array");
            element.vt = elementType;
        }
        items.push_back(ReadScalar(element, cimType, depth));
    }
    return items;
}

Value ReadScalar(const VARIANT& variant, LONG cimType, int depth)
{
    switch (variant.vt)
    {
    case VT_EMPTY:
    case VT_NULL:
        return {};
    case VT_BOOL:
        return variant.boolVal != VARIANT_FALSE;
    case VT_I1:
        return Integer(variant.cVal, cimType);
    case VT_UI1:
        return Integer(variant.bVal, cimType);
    case VT_I2:
        return Integer(variant.iVal, cimType);
    case VT_UI2:
        return Integer(variant.uiVal, cimType);
    case VT_I4:
    case VT_INT:
        return Integer(variant.lVal, cimType);
    case VT_UI4:
    case VT_UINT:
        return Integer(variant.ulVal, cimType);
    case VT_I8:
        return Integer(variant.llVal, cimType);
    case VT_UI8:
        return Decimal(variant.ullVal);
    case VT_R4:
        return Real(static_cast<double>(variant.fltVal), true);
    case VT_R8:
        return Real(variant.dblVal, cimType == CIM_REAL32);
    case VT_BSTR:
        return Text(variant.bstrVal, cimType);
    case VT_UNKNOWN:
        return Object(variant.punkVal, depth);
    default:
        throw Failure(ExitCode::Failed,
                      "a value has the VARIANT type " + std::to_string(variant.vt) + ", which no CIM type travels in");
    }
}

} // namespace

Value ReadValue(const VARIANT& variant, LONG cimType, int depth)
{
    const LONG elementType = cimType & ~static_cast<LONG>(CIM_FLAG_ARRAY);
    if ((variant.vt & VT_ARRAY) != 0)
    {
        return ReadArray(variant.parray, static_cast<VARTYPE>(variant.vt & ~VT_ARRAY), elementType, depth);
    }
    return ReadScalar(variant, elementType, depth);
}

} // namespace orl::client
