// LoadedServer: the product's servers and their classes.

#include "tests/com/conformance/LoadedServer.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace orl::test
{

std::wstring BuiltLibrary(const wchar_t* name)
{
    return (std::filesystem::path(ORL_BIN_DIR) / name).wstring();
}

LoadedServer::LoadedServer(const wchar_t* name) : m_module(LoadLibraryW(BuiltLibrary(name).c_str()))
{
    EXPECT_NE(m_module, nullptr) << "error " << GetLastError();
}

LoadedServer::~LoadedServer()
{
    if (m_module != nullptr)
        FreeLibrary(m_module);
}

HRESULT LoadedServer::GetClassObject(REFCLSID clsid, REFIID iid, void** object) const
{
    const auto get = GetExport<HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**)>(m_module, "DllGetClassObject");
    return get != nullptr ? get(clsid, iid, object) : E_NOTIMPL;
}

HRESULT LoadedServer::CanUnloadNow() const
{
    const auto can = GetExport<HRESULT(STDMETHODCALLTYPE*)()>(m_module, "DllCanUnloadNow");
    return can != nullptr ? can() : E_NOTIMPL;
}

CComPtr<IClassFactory> LoadedServer::Factory(REFCLSID clsid) const
{
    CComPtr<IClassFactory> factory;
    EXPECT_EQ(GetClassObject(clsid, IID_IClassFactory, reinterpret_cast<void**>(&factory.p)), S_OK);
    return factory;
}

const std::vector<ServedClass>& ServedClasses()
{
    static const std::vector<ServedClass> classes = {
        {"Provider",
         L"Orl2InstUtility",
         &ProviderClass,
         {{"IUnknown", &IID_IUnknown},
          {"IWbemServices", &IID_IWbemServices},
          {"IWbemProviderInit", &IID_IWbemProviderInit},
          {"IWbemShutdown", &IID_IWbemShutdown}},
         &IID_IWbemLocator},
        {"Locator",
         L"orlwmihost",
         &CLSID_WbemLocator,
         {{"IUnknown", &IID_IUnknown}, {"IWbemLocator", &IID_IWbemLocator}},
         &IID_IWbemServices},
        {"Context",
         L"orlwmihost",
         &CLSID_WbemContext,
         {{"IUnknown", &IID_IUnknown}, {"IWbemContext", &IID_IWbemContext}},
         &IID_IWbemLocator},
    };
    return classes;
}

std::ostream& operator<<(std::ostream& stream, const ServedClass& served)
{
    return stream << served.name;
}

ULONG References(IUnknown* object)
{
    object->AddRef();
    return object->Release();
}

} // namespace orl::test
