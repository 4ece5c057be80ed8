// VARIANTs: clearing and copying.
#include <oleauto.h>

#include "winport/src/Elements.h"

namespace
{

bool IsOwner(const VARIANT& value)
{
    return !V_ISBYREF(&value) && (V_ISARRAY(&value) || value.vt == VT_BSTR || value.vt == VT_UNKNOWN);
}

bool IsKnownType(VARTYPE type)
{
    const VARTYPE base = type & VT_TYPEMASK;
    const bool isPlain = (type & (VT_ARRAY | VT_BYREF)) == 0;
    return (isPlain && (base == VT_EMPTY || base == VT_NULL)) ||
           (winport::ElementSize(base) != 0 && (base != VT_VARIANT || !isPlain));
}

} // namespace

void VariantInit(VARIANT* value)
{
    value->vt = VT_EMPTY;
    value->wReserved1 = 0;
    value->wReserved2 = 0;
    value->wReserved3 = 0;
    value->reserved[0] = nullptr;
    value->reserved[1] = nullptr;
}

HRESULT VariantClear(VARIANT* value)
{
    if (!value)
        return E_INVALIDARG;
    if (!IsKnownType(value->vt))
        return DISP_E_BADVARTYPE;
    if (IsOwner(*value))
    {
        const HRESULT hr = V_ISARRAY(value) ? SafeArrayDestroy(value->parray) : S_OK;
        if (FAILED(hr))
            return hr;
        if (!V_ISARRAY(value))
            winport::ClearElement(value->vt, &value->llVal);
    }
    value->vt = VT_EMPTY;
    return S_OK;
}

HRESULT VariantCopy(VARIANT* destination, const VARIANT* source)
{
    if (!destination || !source)
        return E_INVALIDARG;
    if (!IsKnownType(source->vt))
        return DISP_E_BADVARTYPE;
    if (destination == source)
        return S_OK;
    VARIANT copy = *source;
    HRESULT hr = S_OK;
    if (IsOwner(*source))
    {
        copy.llVal = 0;
        hr = V_ISARRAY(source) ? SafeArrayCopy(source->parray, &copy.parray)
                               : winport::CopyElement(source->vt, &copy.llVal, &source->llVal);
    }
    if (SUCCEEDED(hr))
        hr = VariantClear(destination);
    if (SUCCEEDED(hr))
        *destination = copy;
    else if (IsOwner(copy))
        VariantClear(&copy);
    return hr;
}
