// Property values.

#include "framework/src/PropertyValue.h"

#include "com/OrlBstr.h"

#include <limits>

namespace orl
{

namespace
{

// Owns an array while it is filled, so that a failure half way leaves nothing behind.
class ArrayBuilder
{
public:
    ArrayBuilder(VARTYPE type, size_t count)
    {
        if (count > static_cast<size_t>((std::numeric_limits<LONG>::max)()))
            AtlThrow(E_OUTOFMEMORY);
        SAFEARRAY* array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(count));
        if (array == nullptr)
            AtlThrow(E_OUTOFMEMORY);
        m_value.vt = static_cast<VARTYPE>(VT_ARRAY | type);
        m_value.parray = array;
    }

    // The elements start out empty and belong to the array as soon as they are stored.
    template <typename Element>
    Element* Elements()
    {
        return static_cast<Element*>(m_value.parray->pvData);
    }

    CComVariant Take()
    {
        CComVariant taken;
        taken.Attach(&m_value);
        return taken;
    }

private:
    CComVariant m_value;
};

bool ReadDecimal(const wchar_t* text, LONGLONG& number)
{
    if (text == nullptr)
        return false;
    const bool negative = *text == L'-';
    if (negative || *text == L'+')
        ++text;
    if (*text == L'\0')
        return false;
    const ULONGLONG limit = static_cast<ULONGLONG>((std::numeric_limits<LONGLONG>::max)()) + (negative ? 1 : 0);
    ULONGLONG magnitude = 0;
    for (; *text != L'\0'; ++text)
    {
        if (*text < L'0' || *text > L'9')
            return false;
        const ULONGLONG digit = static_cast<ULONGLONG>(*text - L'0');
        if (magnitude > (limit - digit) / 10)
            return false;
        magnitude = magnitude * 10 + digit;
    }
    number = static_cast<LONGLONG>(negative ? 0 - magnitude : magnitude);
    return true;
}

} // namespace

bool IsOutOfMemory(HRESULT status)
{
    return status == E_OUTOFMEMORY || status == WBEM_E_OUT_OF_MEMORY;
}

HRESULT ThrowIfOutOfMemory(HRESULT status)
{
    if (IsOutOfMemory(status))
        AtlThrow(E_OUTOFMEMORY);
    return status;
}

CComBSTR MakeBstr(const wchar_t* text, size_t length)
{
    CComBSTR made;
    if (text == nullptr && length == 0)
        return made;
    made.Attach(OrlAllocBstr(text, length));
    if (made.m_str == nullptr)
        AtlThrow(E_OUTOFMEMORY);
    return made;
}

CComBSTR MakeBstr(const std::wstring& text)
{
    return MakeBstr(text.c_str(), text.size());
}

CComVariant NumberArray(const std::vector<LONG>& numbers)
{
    ArrayBuilder array(VT_I4, numbers.size());
    LONG* element = array.Elements<LONG>();
    for (const LONG number : numbers)
        *element++ = number;
    return array.Take();
}

CComVariant TextArray(const std::vector<COrlString>& texts)
{
    ArrayBuilder array(VT_BSTR, texts.size());
    BSTR* element = array.Elements<BSTR>();
    for (const COrlString& text : texts)
        *element++ = MakeBstr(text).Detach();
    return array.Take();
}

CComVariant ObjectArray(const std::vector<CComPtr<IWbemClassObject>>& objects)
{
    ArrayBuilder array(VT_UNKNOWN, objects.size());
    IUnknown** element = array.Elements<IUnknown*>();
    for (const CComPtr<IWbemClassObject>& object : objects)
    {
        CComPtr<IUnknown> held(object);
        *element++ = held.Detach();
    }
    return array.Take();
}

bool ReadSint64(const VARIANT& value, CIMTYPE type, LONGLONG& number)
{
    switch (value.vt)
    {
    case VT_BSTR:
        return (type == CIM_SINT64 || type == CIM_UINT64 || type == CIM_STRING || type == CIM_EMPTY) &&
               ReadDecimal(value.bstrVal, number);
    case VT_I1:
        number = value.cVal;
        return true;
    case VT_UI1:
        number = value.bVal;
        return true;
    case VT_I2:
        number = value.iVal;
        return true;
    case VT_UI2:
        number = value.uiVal;
        return true;
    case VT_I4:
    case VT_INT:
        number = type == CIM_UINT32 ? static_cast<LONGLONG>(value.ulVal) : value.lVal;
        return true;
    case VT_UI4:
    case VT_UINT:
        number = value.ulVal;
        return true;
    case VT_I8:
        number = value.llVal;
        return true;
    case VT_UI8:
        number = static_cast<LONGLONG>(value.ullVal);
        return number >= 0;
    default:
        return false;
    }
}

bool ReadUint32(const VARIANT& value, CIMTYPE type, ULONG& number)
{
    LONGLONG wide = 0;
    if (!ReadSint64(value, type, wide) || wide < 0 || wide > (std::numeric_limits<ULONG>::max)())
        return false;
    number = static_cast<ULONG>(wide);
    return true;
}

} // namespace orl
