// CComPtr and CComQIPtr: owners of one reference to an interface.
#pragma once

#include "com/OrlIid.h"

#include <utility>

template <class T>
class CComPtr
{
public:
    // The reference held, or null. Whoever writes to it answers for the count.
    T* p = nullptr;

    CComPtr() noexcept = default;
    CComPtr(std::nullptr_t) noexcept {}
    CComPtr(T* other) noexcept : p(other) { AddRef(); }
    CComPtr(const CComPtr& other) noexcept : p(other.p) { AddRef(); }
    CComPtr(CComPtr&& other) noexcept : p(other.Detach()) {}
    ~CComPtr() { Release(); }

    T* operator=(T* other) noexcept
    {
        CComPtr(other).Swap(*this);
        return p;
    }
    T* operator=(std::nullptr_t) noexcept
    {
        Release();
        return nullptr;
    }
    T* operator=(const CComPtr& other) noexcept { return *this = other.p; }
    T* operator=(CComPtr&& other) noexcept
    {
        CComPtr(std::move(other)).Swap(*this);
        return p;
    }
    // Asks the other's object for this interface; null when it has none.
    template <class Q>
    T* operator=(const CComPtr<Q>& other) noexcept
    {
        CComPtr asked;
        if (other.p)
            other.p->QueryInterface(orl::IidOf<T>(), reinterpret_cast<void**>(&asked.p));
        asked.Swap(*this);
        return p;
    }

    operator T*() const noexcept { return p; }
    T& operator*() const noexcept { return *p; }
    T* operator->() const noexcept { return p; }
    // For an out-parameter: what is held is let go first, so that it cannot leak.
    T** operator&() noexcept
    {
        Release();
        return &p;
    }
    bool operator!() const noexcept { return !p; }
    bool operator<(T* other) const noexcept { return p < other; }
    bool operator==(T* other) const noexcept { return p == other; }
    bool operator!=(T* other) const noexcept { return p != other; }
    bool operator==(std::nullptr_t) const noexcept { return !p; }
    bool operator==(const CComPtr& other) const noexcept { return p == other.p; }

    void Release() noexcept
    {
        if (T* held = std::exchange(p, nullptr))
            held->Release();
    }
    // Takes the reference over.
    void Attach(T* other) noexcept
    {
        Release();
        p = other;
    }
    // Hands the reference out.
    T* Detach() noexcept { return std::exchange(p, nullptr); }
    HRESULT CopyTo(T** other) const noexcept
    {
        if (!other)
            return E_POINTER;
        *other = p;
        AddRef();
        return S_OK;
    }
    template <class Q>
    HRESULT QueryInterface(Q** other) const noexcept
    {
        return p->QueryInterface(orl::IidOf<Q>(), reinterpret_cast<void**>(other));
    }
    // Whether both are interfaces of one object.
    bool IsEqualObject(IUnknown* other) const noexcept
    {
        if (!p || !other)
            return !p && !other;
        CComPtr<IUnknown> mine;
        CComPtr<IUnknown> theirs;
        QueryInterface(&mine.p);
        other->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&theirs.p));
        return mine.p == theirs.p;
    }
    HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer = nullptr, DWORD context = CLSCTX_ALL) noexcept
    {
        Release();
        return ::CoCreateInstance(clsid, outer, context, orl::IidOf<T>(), reinterpret_cast<void**>(&p));
    }

private:
    void AddRef() const noexcept
    {
        if (p)
            p->AddRef();
    }
    void Swap(CComPtr& other) noexcept { std::swap(p, other.p); }
};

// As CComPtr, and made from any interface by asking its object; null when it has not got this one.
template <class T>
class CComQIPtr : public CComPtr<T>
{
public:
    using CComPtr<T>::CComPtr;

    CComQIPtr() noexcept = default;
    CComQIPtr(T* other) noexcept : CComPtr<T>(other) {}
    template <class Q>
    CComQIPtr(Q* other) noexcept
    {
        Ask(other);
    }
    template <class Q>
    CComQIPtr(const CComPtr<Q>& other) noexcept
    {
        Ask(other.p);
    }
    template <class Q>
    T* operator=(const CComPtr<Q>& other) noexcept
    {
        CComQIPtr asked(other);
        return CComPtr<T>::operator=(std::move(asked));
    }
    T* operator=(T* other) noexcept { return CComPtr<T>::operator=(other); }

private:
    template <class Q>
    void Ask(Q* other) noexcept
    {
        if (other)
            other->QueryInterface(orl::IidOf<T>(), reinterpret_cast<void**>(&this->p));
    }
};
