// Values on their way in and out of COM.
#include "host/VariantValue.h"

#include "com/OrlBstr.h"
#include "host/ClassObject.h"
#include "host/Repository.h"

#include <cmath>
#include <limits>
#include <memory>
#include <new>
#include <vector>

namespace orl
{
namespace
{

using wbem::CimType;
using wbem::CimValue;

struct ArrayDeleter
{
    void operator()(SAFEARRAY* array) const noexcept { SafeArrayDestroy(array); }
};
using ArrayHolder = std::unique_ptr<SAFEARRAY, ArrayDeleter>;

VARTYPE VariantTypeOf(CimType type) noexcept
{
    switch (type)
    {
    case CimType::UInt8:
        return VT_UI1;
    case CimType::SInt8:
    case CimType::SInt16:
    case CimType::Char16:
        return VT_I2;
    case CimType::UInt16:
    case CimType::SInt32:
    case CimType::UInt32:
        return VT_I4;
    case CimType::Real32:
        return VT_R4;
    case CimType::Real64:
        return VT_R8;
    case CimType::Boolean:
        return VT_BOOL;
    case CimType::Object:
        return VT_UNKNOWN;
    default:
        return VT_BSTR; // texts and 64-bit integers
    }
}

// Out --------------------------------------------------------------------------------------------------------------

std::int64_t IntegerOf(const CimValue& value) noexcept
{
    return wbem::IsSigned(value.Type()) ? value.AsSigned() : static_cast<std::int64_t>(value.AsUnsigned());
}

void ScalarToVariant(const CimValue& value, const Namespace& nameSpace, VARIANT& variant)
{
    variant.vt = VT_NULL;
    if (value.IsNull())
        return;
    const VARTYPE type = VariantTypeOf(value.Type());
    switch (type)
    {
    case VT_UI1:
        V_UI1(&variant) = static_cast<BYTE>(value.AsUnsigned());
        break;
    case VT_I2:
        V_I2(&variant) = static_cast<SHORT>(IntegerOf(value));
        break;
    case VT_I4:
        V_I4(&variant) = static_cast<LONG>(IntegerOf(value));
        break;
    case VT_R4:
        V_R4(&variant) = static_cast<FLOAT>(value.AsReal());
        break;
    case VT_R8:
        V_R8(&variant) = value.AsReal();
        break;
    case VT_BOOL:
        V_BOOL(&variant) = value.AsBool() ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case VT_UNKNOWN:
        V_UNKNOWN(&variant) = ClassObject::FromEmbedded(*value.AsObject(), nameSpace).Detach();
        break;
    default:
        V_BSTR(&variant) =
            MakeBstr(wbem::IsText(value.Type()) ? value.AsText() : std::wstring_view(wbem::PlainText(value)));
        break;
    }
    variant.vt = type;
}

// Where SafeArrayPutElement reads the element from: pointers are passed as they are, all others by address.
void* ElementOf(VARIANT& variant) noexcept
{
    return variant.vt == VT_BSTR || variant.vt == VT_UNKNOWN ? static_cast<void*>(V_BSTR(&variant)) : &V_UI1(&variant);
}

void ArrayToVariant(const CimValue& value, const Namespace& nameSpace, VARIANT& variant)
{
    const std::vector<CimValue>& elements = value.Elements();
    const VARTYPE type = VariantTypeOf(value.Type());
    ArrayHolder array(SafeArrayCreateVector(type, 0, static_cast<ULONG>(elements.size())));
    if (!array)
        throw std::bad_alloc();
    for (std::size_t i = 0; i < elements.size(); ++i)
    {
        if (elements[i].IsNull()) // the array's own zero, or empty text
            continue;
        VARIANT element;
        ScalarToVariant(elements[i], nameSpace, element);
        LONG index = static_cast<LONG>(i);
        const HRESULT put = SafeArrayPutElement(array.get(), &index, ElementOf(element));
        VariantClear(&element);
        if (FAILED(put))
            throw std::bad_alloc();
    }
    variant.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    V_ARRAY(&variant) = array.release();
}

// In ---------------------------------------------------------------------------------------------------------------

CimValue SignedFrom(std::int64_t number, CimType wanted) noexcept
{
    // A negative one is the bits of a large uint32.
    if (wanted == CimType::UInt32 && number >= std::numeric_limits<std::int32_t>::min() &&
        number <= std::int64_t{std::numeric_limits<std::uint32_t>::max()})
        return CimValue::Unsigned(CimType::UInt32, static_cast<std::uint32_t>(number));
    if (wanted == CimType::Char16 && number >= std::numeric_limits<std::int16_t>::min() && number <= 0xffff)
        return CimValue::Char16(static_cast<char16_t>(number));
    return CimValue::Integer(number);
}

CimValue RealFrom(double number, CimType wanted) noexcept
{
    constexpr double limit = 9007199254740992.0; // beyond 2^53 a double does not say which integer it means
    if (wbem::IsInteger(wanted) && std::fabs(number) <= limit && std::trunc(number) == number)
        return CimValue::Integer(static_cast<std::int64_t>(number));
    return CimValue::Real(wanted == CimType::Real32 ? CimType::Real32 : CimType::Real64, number);
}

CimValue TextFrom(BSTR text, CimType wanted)
{
    return CimValue::Text(wanted == CimType::Reference ? CimType::Reference : CimType::String, ViewOf(text));
}

// One value, typed as near to `wanted` as its own form allows; ConvertTo judges the rest.
std::optional<CimValue> ScalarFrom(const VARIANT& variant, CimType wanted, std::wstring& reason)
{
    switch (variant.vt)
    {
    case VT_EMPTY:
    case VT_NULL:
        return CimValue();
    case VT_I1:
        return SignedFrom(static_cast<signed char>(V_I1(&variant)), wanted);
    case VT_I2:
        return SignedFrom(V_I2(&variant), wanted);
    case VT_I4:
    case VT_INT:
        return SignedFrom(V_I4(&variant), wanted);
    case VT_I8:
        return SignedFrom(V_I8(&variant), wanted);
    case VT_UI1:
        return CimValue::Integer(std::uint64_t{V_UI1(&variant)});
    case VT_UI2:
        return wanted == CimType::Char16 ? CimValue::Char16(static_cast<char16_t>(V_UI2(&variant)))
                                         : CimValue::Integer(std::uint64_t{V_UI2(&variant)});
    case VT_UI4:
    case VT_UINT:
        return CimValue::Integer(std::uint64_t{V_UI4(&variant)});
    case VT_UI8:
        return CimValue::Integer(std::uint64_t{V_UI8(&variant)});
    case VT_R4:
        return RealFrom(static_cast<double>(V_R4(&variant)), wanted);
    case VT_R8:
        return RealFrom(V_R8(&variant), wanted);
    case VT_BOOL:
        return CimValue::Bool(V_BOOL(&variant) != VARIANT_FALSE);
    case VT_BSTR:
        return TextFrom(V_BSTR(&variant), wanted);
    case VT_UNKNOWN:
    case VT_DISPATCH:
        return ClassObject::ToEmbedded(V_UNKNOWN(&variant), reason);
    default:
        reason = L"a VARIANT of type " + std::to_wstring(variant.vt) + L" holds no CIM value";
        return std::nullopt;
    }
}

std::optional<CimValue> Converted(CimValue value, CimType type, bool isArray, std::wstring& reason)
{
    if (value.Type() == type && value.IsArray() == isArray)
        return value;
    return wbem::ConvertTo(value, type, isArray, reason);
}

// One element of an array as a VARIANT of the array's element type.
bool ElementAt(SAFEARRAY* array, VARTYPE type, LONG index, VARIANT& element) noexcept
{
    VariantInit(&element);
    if (type == VT_VARIANT)
        return SUCCEEDED(SafeArrayGetElement(array, &index, &element));
    if (FAILED(SafeArrayGetElement(array, &index, &V_UI1(&element))))
        return false;
    element.vt = type;
    return true;
}

std::optional<CimValue> ArrayFrom(SAFEARRAY* array, VARTYPE type, CimType wanted, std::wstring& reason)
{
    LONG first = 0;
    LONG last = -1;
    if (array && (SafeArrayGetDim(array) != 1 || FAILED(SafeArrayGetLBound(array, 1, &first)) ||
                  FAILED(SafeArrayGetUBound(array, 1, &last))))
    {
        reason = L"an array has one dimension";
        return std::nullopt;
    }
    std::vector<CimValue> elements;
    for (LONG i = first; i <= last; ++i)
    {
        CComVariant element;
        if (!ElementAt(array, type, i, element))
        {
            reason = L"element " + std::to_wstring(i) + L" cannot be read";
            return std::nullopt;
        }
        std::optional<CimValue> value = FromVariant(element, wanted, false, reason);
        if (!value)
            return std::nullopt;
        elements.push_back(*std::move(value));
    }
    return CimValue::Array(wanted, std::move(elements));
}

// The VARIANT that one by reference stands for; not to be cleared. False when it has no value to look at.
bool Dereference(const VARIANT& variant, VARIANT& target) noexcept
{
    if (!variant.byref)
        return false;
    target = VARIANT{};
    target.vt = static_cast<VARTYPE>(variant.vt & ~VT_BYREF);
    switch (target.vt & VT_ARRAY ? VARTYPE{VT_ARRAY} : target.vt)
    {
    case VT_VARIANT:
        target = *static_cast<const VARIANT*>(variant.byref);
        return !(target.vt & VT_BYREF); // a chain of references is nobody's value
    case VT_I1:
    case VT_UI1:
        V_UI1(&target) = *static_cast<const BYTE*>(variant.byref);
        return true;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        V_UI2(&target) = *static_cast<const USHORT*>(variant.byref);
        return true;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
        V_UI4(&target) = *static_cast<const ULONG*>(variant.byref);
        return true;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
        V_UI8(&target) = *static_cast<const ULONGLONG*>(variant.byref);
        return true;
    case VT_BSTR:
    case VT_UNKNOWN:
    case VT_DISPATCH:
    case VT_ARRAY:
        target.byref = *static_cast<void* const*>(variant.byref);
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<CimValue> FromVariant(const VARIANT& variant, CimType type, bool isArray, std::wstring& reason)
{
    if (variant.vt & VT_BYREF)
    {
        VARIANT target;
        if (Dereference(variant, target))
            return FromVariant(target, type, isArray, reason);
        reason = L"a VARIANT of type " + std::to_wstring(variant.vt) + L" refers to no value";
        return std::nullopt;
    }
    if (variant.vt & VT_ARRAY)
    {
        if (!isArray)
        {
            reason = L"an array is no single " + std::wstring(wbem::CimTypeName(type));
            return std::nullopt;
        }
        const auto elementType = static_cast<VARTYPE>(variant.vt & VT_TYPEMASK);
        return ArrayFrom(V_ARRAY(&variant), elementType, type, reason);
    }
    std::optional<CimValue> scalar = ScalarFrom(variant, type, reason);
    return scalar ? Converted(*std::move(scalar), type, isArray, reason) : std::nullopt;
}

void ToVariant(const CimValue& value, const Namespace& nameSpace, VARIANT& variant)
{
    if (value.IsArray() && !value.IsNull())
        ArrayToVariant(value, nameSpace, variant);
    else
        ScalarToVariant(value, nameSpace, variant);
}

BSTR MakeBstr(std::wstring_view text)
{
    BSTR made = OrlAllocBstr(text.data(), text.size());
    if (!made)
        throw std::bad_alloc();
    return made;
}

SAFEARRAY* MakeBstrArray(const std::vector<std::wstring>& texts)
{
    ArrayHolder array(SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(texts.size())));
    if (!array)
        throw std::bad_alloc();
    for (std::size_t i = 0; i < texts.size(); ++i)
    {
        BSTR text = MakeBstr(texts[i]);
        LONG index = static_cast<LONG>(i);
        const HRESULT put = SafeArrayPutElement(array.get(), &index, text);
        SysFreeString(text);
        if (FAILED(put))
            throw std::bad_alloc();
    }
    return array.release();
}

std::wstring_view ViewOf(BSTR text) noexcept
{
    return text ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
}

} // namespace orl
