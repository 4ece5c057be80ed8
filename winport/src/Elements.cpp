// Owned values in memory.
#include "winport/src/Elements.h"

#include <cstring>

namespace winport
{

ULONG ElementSize(VARTYPE type)
{
    switch (type)
    {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_DATE:
        return 8;
    case VT_BSTR:
    case VT_UNKNOWN:
        return sizeof(void*);
    case VT_VARIANT:
        return sizeof(VARIANT);
    default:
        return 0;
    }
}

void ClearElement(VARTYPE type, void* element)
{
    if (type == VT_BSTR)
        SysFreeString(*static_cast<BSTR*>(element));
    else if (type == VT_UNKNOWN)
    {
        if (IUnknown* object = *static_cast<IUnknown**>(element))
            object->Release();
    }
    else if (type == VT_VARIANT)
        VariantClear(static_cast<VARIANT*>(element));
    std::memset(element, 0, ElementSize(type));
}

HRESULT CopyElement(VARTYPE type, void* destination, const void* source)
{
    if (type == VT_VARIANT)
        return VariantCopy(static_cast<VARIANT*>(destination), static_cast<const VARIANT*>(source));
    if (type == VT_BSTR)
    {
        BSTR text = *static_cast<const BSTR*>(source);
        BSTR copy = text ? SysAllocStringByteLen(reinterpret_cast<LPCSTR>(text), SysStringByteLen(text)) : nullptr;
        *static_cast<BSTR*>(destination) = copy;
        return text && !copy ? E_OUTOFMEMORY : S_OK;
    }
    std::memcpy(destination, source, ElementSize(type));
    if (type == VT_UNKNOWN)
    {
        if (IUnknown* object = *static_cast<IUnknown**>(destination))
            object->AddRef();
    }
    return S_OK;
}

} // namespace winport
