// OrlCom: the frame of an in-process COM server: objects, class factory, registration.
#pragma once

#include "com/OrlAtl.h"

#include <atomic>
#include <new>
#include <span>
#include <utility>

namespace orl
{

// What keeps this module in memory: its living objects and the locks on its class factories.
void AddModuleReference() noexcept;
void ReleaseModuleReference() noexcept;
ULONG ModuleReferences() noexcept;

// An object with the given interfaces. It is made with one reference, which is its maker's, and deletes itself with its
// last. The first interface answers for IUnknown, so that the object has one identity.
template <typename First, typename... More>
class ComObject : public First, public More...
{
public:
    ComObject() noexcept { AddModuleReference(); }
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = IsEqualIID(iid, IID_IUnknown) ? static_cast<First*>(this) : Find<First, More...>(iid);
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return m_references.fetch_add(1, std::memory_order_relaxed) + 1; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = m_references.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~ComObject() { ReleaseModuleReference(); }

private:
    template <typename Interface, typename... Others>
    void* Find(REFIID iid)
    {
        if (IsEqualIID(iid, IidOf<Interface>()))
            return static_cast<Interface*>(this);
        if constexpr (sizeof...(Others) > 0)
            return Find<Others...>(iid);
        else
            return nullptr;
    }

    std::atomic<ULONG> m_references{1};
};

// A new object, with the reference that its maker has.
template <typename Object, typename... Arguments>
CComPtr<Object> MakeObject(Arguments&&... arguments)
{
    CComPtr<Object> made;
    made.Attach(new Object(std::forward<Arguments>(arguments)...));
    return made;
}

// The HRESULT for the exception that is being handled, for the catch of a COM method: an ATL exception's own code,
// E_OUTOFMEMORY for std::bad_alloc, E_FAIL for any other.
HRESULT ResultOfCurrentException() noexcept;

// A class that the module serves. `create` makes an object and answers the interface asked for; it may throw.
struct ServerClass
{
    const CLSID* clsid;
    const wchar_t* name; // for people who read the registry
    HRESULT (*create)(REFIID iid, void** object);
};

// A `create` for an object without constructor arguments.
template <typename Object>
HRESULT CreateObject(REFIID iid, void** object)
{
    return MakeObject<Object>()->QueryInterface(iid, object);
}

// What the four exports of a server do.
HRESULT GetClassObject(std::span<const ServerClass> classes, REFCLSID clsid, REFIID iid, void** object) noexcept;
HRESULT CanUnloadNow() noexcept;
// Writes and removes the classes' keys below HKEY_LOCAL_MACHINE\SOFTWARE\Classes\CLSID. The library is the one that
// this code is linked into. Both answer the registry's error as an HRESULT.
HRESULT RegisterServer(std::span<const ServerClass> classes) noexcept;
HRESULT UnregisterServer(std::span<const ServerClass> classes) noexcept;

// A library's export as the function that it is; null when it has none of that name.
template <typename Function>
Function GetExport(HMODULE module, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
}

} // namespace orl
