// A server library with one class.
#include "tests/com/TestObjects.h"

namespace
{

const orl::ServerClass Classes[] = {{&CLSID_Counter, L"Test counter", orl::CreateObject<Counter>}};

} // namespace

extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID clsid, REFIID iid, void** object)
{
    return orl::GetClassObject(Classes, clsid, iid, object);
}

extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllCanUnloadNow()
{
    return orl::CanUnloadNow();
}

extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllRegisterServer()
{
    return orl::RegisterServer(Classes);
}

extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllUnregisterServer()
{
    return orl::UnregisterServer(Classes);
}
