// OrlCom: the frame of an in-process COM server: objects, class factory, registration.
#pragma once

#include "com/OrlAtl.h"

#include <windows.h>
#include <unknwn.h>
#include <wbemcli.h>
#include <wbemprov.h>

#include <atomic>
#include <new>
#include <span>

namespace orl
{

// The id of an interface, by its type: compilers that ignore the SDK's own notation need one that all know.
template <typename Interface>
struct ComIid;

#define ORL_COM_IID(Interface)                                                                                         \
    template <>                                                                                                        \
    struct ComIid<Interface>                                                                                           \
    {                                                                                                                  \
        static const IID& Value() { return IID_##Interface; }                                                          \
    }

ORL_COM_IID(IUnknown);
ORL_COM_IID(IClassFactory);
ORL_COM_IID(IErrorInfo);
ORL_COM_IID(IWbemLocator);
ORL_COM_IID(IWbemServices);
ORL_COM_IID(IWbemClassObject);
ORL_COM_IID(IWbemQualifierSet);
ORL_COM_IID(IWbemObjectSink);
ORL_COM_IID(IEnumWbemClassObject);
ORL_COM_IID(IWbemCallResult);
ORL_COM_IID(IWbemContext);
ORL_COM_IID(IWbemProviderInit);
ORL_COM_IID(IWbemProviderInitSink);
ORL_COM_IID(IWbemShutdown);

#undef ORL_COM_IID

template <typename Interface>
const IID& IidOf()
{
    return ComIid<Interface>::Value();
}

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
    Object* made = new Object();
    const HRESULT hr = made->QueryInterface(iid, object);
    made->Release();
    return hr;
}

// What the four exports of a server do.
HRESULT GetClassObject(std::span<const ServerClass> classes, REFCLSID clsid, REFIID iid, void** object) noexcept;
HRESULT CanUnloadNow() noexcept;
// Writes and removes the classes' keys below HKEY_LOCAL_MACHINE\SOFTWARE\Classes\CLSID. The library is the one that
// this code is linked into. Both answer SELFREG_E_CLASS or the registry's error as HRESULT.
HRESULT RegisterServer(std::span<const ServerClass> classes) noexcept;
HRESULT UnregisterServer(std::span<const ServerClass> classes) noexcept;

} // namespace orl
