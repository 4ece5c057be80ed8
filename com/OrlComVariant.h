// CComVariant: an owned VARIANT. What cannot be copied throws.
#pragma once

#include "com/OrlComBstr.h"

class CComVariant : public VARIANT
{
public:
    CComVariant() noexcept { ::VariantInit(this); }
    CComVariant(const VARIANT& other) : CComVariant() { ThrowIf(Copy(&other)); }
    CComVariant(const CComVariant& other) : CComVariant() { ThrowIf(Copy(&other)); }
    CComVariant(CComVariant&& other) noexcept : CComVariant() { Take(other); }
    CComVariant(LPCOLESTR text) : CComVariant() { SetText(CComBSTR(text)); }
    CComVariant(const CComBSTR& text) : CComVariant() { SetText(CComBSTR(text)); }
    CComVariant(bool value) noexcept : CComVariant(VT_BOOL) { boolVal = value ? VARIANT_TRUE : VARIANT_FALSE; }
    CComVariant(char value) noexcept : CComVariant(VT_I1) { cVal = value; }
    CComVariant(BYTE value) noexcept : CComVariant(VT_UI1) { bVal = value; }
    CComVariant(short value) noexcept : CComVariant(VT_I2) { iVal = value; }
    CComVariant(unsigned short value) noexcept : CComVariant(VT_UI2) { uiVal = value; }
    // By the width that the type has on the platform.
    CComVariant(int value) noexcept : CComVariant(VT_I4) { lVal = value; }
    CComVariant(unsigned int value) noexcept : CComVariant(VT_UI4) { ulVal = value; }
    CComVariant(long value) noexcept : CComVariant(sizeof value == 4 ? VT_I4 : VT_I8) { llVal = value; }
    CComVariant(unsigned long value) noexcept : CComVariant(sizeof value == 4 ? VT_UI4 : VT_UI8) { ullVal = value; }
    CComVariant(long long value) noexcept : CComVariant(VT_I8) { llVal = value; }
    CComVariant(unsigned long long value) noexcept : CComVariant(VT_UI8) { ullVal = value; }
    CComVariant(float value) noexcept : CComVariant(VT_R4) { fltVal = value; }
    CComVariant(double value) noexcept : CComVariant(VT_R8) { dblVal = value; }
    CComVariant(IUnknown* object) noexcept : CComVariant(VT_UNKNOWN)
    {
        punkVal = object;
        if (object)
            object->AddRef();
    }
    // A copy of the array.
    CComVariant(const SAFEARRAY* array) : CComVariant()
    {
        VARTYPE type = VT_EMPTY;
        SAFEARRAY* copy = nullptr;
        SAFEARRAY* source = const_cast<SAFEARRAY*>(array);
        ThrowIf(::SafeArrayGetVartype(source, &type));
        ThrowIf(::SafeArrayCopy(source, &copy));
        vt = static_cast<VARTYPE>(type | VT_ARRAY);
        parray = copy;
    }
    ~CComVariant() { ::VariantClear(this); }

    CComVariant& operator=(const VARIANT& other)
    {
        ThrowIf(Copy(&other));
        return *this;
    }
    CComVariant& operator=(const CComVariant& other)
    {
        ThrowIf(Copy(&other));
        return *this;
    }
    CComVariant& operator=(CComVariant&& other) noexcept
    {
        if (this != &other)
        {
            ::VariantClear(this);
            Take(other);
        }
        return *this;
    }

    HRESULT Clear() noexcept { return ::VariantClear(this); }
    HRESULT Copy(const VARIANT* other) noexcept { return ::VariantCopy(this, const_cast<VARIANT*>(other)); }
    HRESULT CopyTo(VARIANT* other) const noexcept
    {
        return ::VariantCopy(other, const_cast<VARIANT*>(static_cast<const VARIANT*>(this)));
    }
    // Takes the other's content over and leaves it empty.
    HRESULT Attach(VARIANT* other) noexcept
    {
        if (!other)
            return E_INVALIDARG;
        const HRESULT cleared = Clear();
        if (SUCCEEDED(cleared))
            Take(*other);
        return cleared;
    }
    // Hands the content out into what the other held, which is cleared first.
    HRESULT Detach(VARIANT* other) noexcept
    {
        if (!other)
            return E_POINTER;
        const HRESULT cleared = ::VariantClear(other);
        if (SUCCEEDED(cleared))
        {
            *other = *this;
            vt = VT_EMPTY;
        }
        return cleared;
    }
    // Null converts the variant itself.
    HRESULT ChangeType(VARTYPE type, const VARIANT* source = nullptr) noexcept
    {
        return ::VariantChangeType(this, const_cast<VARIANT*>(source ? source : this), 0, type);
    }

private:
    explicit CComVariant(VARENUM type) noexcept
    {
        ::VariantInit(this);
        llVal = 0;
        vt = static_cast<VARTYPE>(type);
    }
    static void ThrowIf(HRESULT hr)
    {
        if (FAILED(hr))
            AtlThrow(hr);
    }
    void SetText(CComBSTR text) noexcept
    {
        vt = VT_BSTR;
        bstrVal = text.Detach();
    }
    void Take(VARIANT& other) noexcept
    {
        static_cast<VARIANT&>(*this) = other;
        other.vt = VT_EMPTY;
    }
};
