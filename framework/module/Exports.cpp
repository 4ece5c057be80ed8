// The exports of the COM server.

#include "framework/module/Exports.h"

#include "framework/module/ModuleManagers.h"

namespace
{

// {8D6C0A51-3C5B-4E0F-9B1A-57C1F0A4E2D3}: what the provider's registration in the schema names.
constexpr CLSID ProviderClass = {0x8D6C0A51, 0x3C5B, 0x4E0F, {0x9B, 0x1A, 0x57, 0xC1, 0xF0, 0xA4, 0xE2, 0xD3}};

HRESULT CreateProvider(REFIID iid, void** object)
{
    return orl::MakeObject<orl::OrlInstProvider>(orl::TheModuleManagers())->QueryInterface(iid, object);
}

constexpr orl::ServerClass Classes[] = {{&ProviderClass, L"ORL2 instance provider", &CreateProvider}};

} // namespace

HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID clsid, REFIID iid, void** object)
{
    return orl::GetClassObject(Classes, clsid, iid, object);
}

HRESULT STDMETHODCALLTYPE DllCanUnloadNow()
{
    return orl::CanUnloadNow();
}

HRESULT STDMETHODCALLTYPE DllRegisterServer()
{
    return orl::RegisterServer(Classes);
}

HRESULT STDMETHODCALLTYPE DllUnregisterServer()
{
    return orl::UnregisterServer(Classes);
}
