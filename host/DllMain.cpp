// The exports of the library: an in-process COM server for the locator and for contexts.
#include "com/OrlCom.h"
#include "host/Context.h"
#include "host/Host.h"
#include "host/Locator.h"

namespace
{

constexpr orl::ServerClass kServed[] = {
    {&CLSID_WbemLocator, L"WBEM Locator", &orl::CreateObject<orl::Locator>},
    {&CLSID_WbemContext, L"WBEM Call Context", &orl::CreateObject<orl::Context>},
};

} // namespace

// The system's headers declare only the first two.
extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllRegisterServer();
extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllUnregisterServer();

HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID clsid, REFIID iid, void** object)
{
    return orl::GetClassObject(kServed, clsid, iid, object);
}

HRESULT STDMETHODCALLTYPE DllCanUnloadNow()
{
    orl::Host::OfProcess().ReleaseUnused();
    return orl::CanUnloadNow();
}

HRESULT STDMETHODCALLTYPE DllRegisterServer()
{
    return orl::RegisterServer(kServed);
}

HRESULT STDMETHODCALLTYPE DllUnregisterServer()
{
    return orl::UnregisterServer(kServed);
}
