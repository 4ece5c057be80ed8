// OrlAtl: ATL's smart pointers for COM, by their names. Microsoft's compiler has the real ones; elsewhere these stand
// in for the operations that this product uses, and mean the same.
#pragma once

#include "com/OrlBstr.h"

#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#ifdef _MSC_VER

#include <atlbase.h>
#include <atlcomcli.h>

#else

#include <memory>
#include <utility>

class CAtlException
{
public:
    HRESULT m_hr = E_FAIL;

    CAtlException() noexcept = default;
    explicit CAtlException(HRESULT hr) noexcept : m_hr(hr) {}
    operator HRESULT() const noexcept { return m_hr; } // NOLINT(google-explicit-constructor): as ATL's
};

[[noreturn]] inline void AtlThrow(HRESULT hr)
{
    throw CAtlException(hr);
}

// Owns one reference. A plain pointer put into it is given a reference of its own; Attach takes the caller's over.
template <typename T>
class CComPtr
{
public:
    T* p = nullptr;

    CComPtr() noexcept = default;
    CComPtr(std::nullptr_t) noexcept {}   // NOLINT(google-explicit-constructor): as ATL's
    CComPtr(T* other) noexcept : p(other) // NOLINT(google-explicit-constructor): as ATL's
    {
        if (p != nullptr)
            p->AddRef();
    }
    CComPtr(const CComPtr& other) noexcept : CComPtr(other.p) {}
    CComPtr(CComPtr&& other) noexcept : p(std::exchange(other.p, nullptr)) {}
    ~CComPtr() { Release(); }

    CComPtr& operator=(T* other) noexcept
    {
        CComPtr(other).Swap(*this);
        return *this;
    }
    CComPtr& operator=(const CComPtr& other) noexcept
    {
        CComPtr(other).Swap(*this);
        return *this;
    }
    CComPtr& operator=(CComPtr&& other) noexcept
    {
        CComPtr(std::move(other)).Swap(*this);
        return *this;
    }

    operator T*() const noexcept { return p; } // NOLINT(google-explicit-constructor): as ATL's
    T& operator*() const noexcept { return *p; }
    T* operator->() const noexcept { return p; }
    // For an out-parameter: what is held is let go first, so that it cannot leak.
    T** operator&() noexcept
    {
        Release();
        return &p;
    }
    bool operator!() const noexcept { return p == nullptr; }

    void Release() noexcept
    {
        if (T* held = std::exchange(p, nullptr))
            held->Release();
    }
    void Attach(T* other) noexcept
    {
        Release();
        p = other;
    }
    T* Detach() noexcept { return std::exchange(p, nullptr); }
    HRESULT CopyTo(T** other) const noexcept
    {
        if (other == nullptr)
            return E_POINTER;
        *other = p;
        if (p != nullptr)
            p->AddRef();
        return S_OK;
    }
    void Swap(CComPtr& other) noexcept { std::swap(p, other.p); }
};

// A BSTR and its owner. An allocation that fails throws CAtlException with E_OUTOFMEMORY.
class CComBSTR
{
public:
    BSTR m_str = nullptr;

    CComBSTR() noexcept = default;
    CComBSTR(const wchar_t* text) : m_str(Make(text)) {} // NOLINT(google-explicit-constructor): as ATL's
    CComBSTR(int length, const wchar_t* text) : m_str(Check(OrlAllocBstr(text, static_cast<std::size_t>(length)))) {}
    CComBSTR(const CComBSTR& other) : m_str(other.Copy()) {}
    CComBSTR(CComBSTR&& other) noexcept : m_str(std::exchange(other.m_str, nullptr)) {}
    ~CComBSTR() { SysFreeString(m_str); }

    CComBSTR& operator=(const CComBSTR& other)
    {
        if (this != std::addressof(other))
            Attach(other.Copy());
        return *this;
    }
    CComBSTR& operator=(CComBSTR&& other) noexcept
    {
        if (this != std::addressof(other))
            Attach(other.Detach());
        return *this;
    }
    CComBSTR& operator=(const wchar_t* text)
    {
        if (text != m_str)
            Attach(Make(text));
        return *this;
    }

    operator BSTR() const noexcept { return m_str; } // NOLINT(google-explicit-constructor): as ATL's
    // For an out-parameter: what is held is freed first, so that it cannot leak.
    BSTR* operator&() noexcept
    {
        Empty();
        return &m_str;
    }
    bool operator!() const noexcept { return m_str == nullptr; }

    unsigned int Length() const noexcept { return SysStringLen(m_str); }
    BSTR Copy() const { return m_str == nullptr ? nullptr : Check(OrlAllocBstr(m_str, Length())); }
    void Empty() noexcept { SysFreeString(std::exchange(m_str, nullptr)); }
    void Attach(BSTR text) noexcept
    {
        if (text != m_str)
            SysFreeString(std::exchange(m_str, text));
    }
    BSTR Detach() noexcept { return std::exchange(m_str, nullptr); }

private:
    static BSTR Check(BSTR made)
    {
        if (made == nullptr)
            AtlThrow(E_OUTOFMEMORY);
        return made;
    }
    static BSTR Make(const wchar_t* text) { return text == nullptr ? nullptr : Check(OrlAllocBstr(text)); }
};

// A VARIANT and the owner of what is in it.
class CComVariant : public VARIANT
{
public:
    CComVariant() noexcept { VariantInit(this); }
    CComVariant(const VARIANT& other) : CComVariant() { CopyFrom(other); } // NOLINT(google-explicit-constructor)
    CComVariant(const CComVariant& other) : CComVariant() { CopyFrom(other); }
    CComVariant(CComVariant&& other) noexcept : CComVariant() { Swap(other); }
    CComVariant(const wchar_t* text) : CComVariant() // NOLINT(google-explicit-constructor): as ATL's
    {
        bstrVal = CComBSTR(text).Detach();
        vt = VT_BSTR;
    }
    CComVariant(LONG value) noexcept : CComVariant() // NOLINT(google-explicit-constructor): as ATL's
    {
        vt = VT_I4;
        lVal = value;
    }
    CComVariant(bool value) noexcept : CComVariant() // NOLINT(google-explicit-constructor): as ATL's
    {
        vt = VT_BOOL;
        boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    CComVariant(IUnknown* object) noexcept : CComVariant() // NOLINT(google-explicit-constructor): as ATL's
    {
        vt = VT_UNKNOWN;
        punkVal = object;
        if (object != nullptr)
            object->AddRef();
    }
    ~CComVariant() { VariantClear(this); }

    CComVariant& operator=(const CComVariant& other)
    {
        CComVariant copy(other);
        Swap(copy);
        return *this;
    }
    CComVariant& operator=(CComVariant&& other) noexcept
    {
        Swap(other);
        return *this;
    }

    HRESULT Clear() noexcept { return VariantClear(this); }
    HRESULT ChangeType(VARTYPE type) { return VariantChangeType(this, this, 0, type); }
    // Hands the value to `other`, which must hold nothing, and is empty afterwards.
    HRESULT Detach(VARIANT* other) noexcept
    {
        if (other == nullptr)
            return E_POINTER;
        *other = *this;
        vt = VT_EMPTY;
        return S_OK;
    }
    // Takes over what `other` holds.
    HRESULT Attach(VARIANT* other) noexcept
    {
        if (other == nullptr)
            return E_POINTER;
        Clear();
        static_cast<VARIANT&>(*this) = *other;
        other->vt = VT_EMPTY;
        return S_OK;
    }

private:
    void CopyFrom(const VARIANT& other)
    {
        const HRESULT hr = VariantCopy(this, const_cast<VARIANT*>(&other));
        if (FAILED(hr))
            AtlThrow(hr);
    }
    void Swap(CComVariant& other) noexcept { std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other)); }
};

#endif
