// Class factories, registration, and making objects of a server library by class id.
#include "tests/com/TestObjects.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestRegistry.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace
{

std::exception_ptr g_toThrow;

class Thrower final : public orl::ComObject<IWbemShutdown>
{
public:
    Thrower() { std::rethrow_exception(g_toThrow); }
    HRESULT STDMETHODCALLTYPE Shutdown(LONG, ULONG, IWbemContext*) override { return S_OK; }
};

const orl::ServerClass Classes[] = {
    {&CLSID_Counter, L"Test counter", orl::CreateObject<Counter>},
    {&CLSID_Thrower, L"Test thrower", orl::CreateObject<Thrower>},
};

CComPtr<IClassFactory> FactoryOf(REFCLSID clsid)
{
    CComPtr<IClassFactory> factory;
    EXPECT_EQ(orl::GetClassObject(Classes, clsid, IID_IClassFactory, reinterpret_cast<void**>(&factory.p)), S_OK);
    return factory;
}

TEST(Server, AClassHasAFactory)
{
    void* object = nullptr;
    ASSERT_EQ(orl::GetClassObject(Classes, CLSID_Counter, IID_IUnknown, &object), S_OK);
    CComPtr<IUnknown> unknown;
    unknown.Attach(static_cast<IUnknown*>(object));
    const CComQIPtr<IClassFactory> factory(unknown);
    EXPECT_NE(factory.p, nullptr);
}

TEST(Server, AClassThatItDoesNotServeIsNotAvailable)
{
    void* object = &object;
    EXPECT_EQ(orl::GetClassObject(Classes, CLSID_Nobody, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
}

TEST(Server, AFactoryIsNoOtherInterface)
{
    void* object = &object;
    EXPECT_EQ(orl::GetClassObject(Classes, CLSID_Counter, IID_IWbemServices, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST(Server, ANullPlaceForTheAnswerIsRefused)
{
    EXPECT_EQ(orl::GetClassObject(Classes, CLSID_Counter, IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_EQ(FactoryOf(CLSID_Counter)->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST(Server, AFactoryMakesObjects)
{
    const CComPtr<IClassFactory> factory = FactoryOf(CLSID_Counter);
    void* object = nullptr;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IWbemShutdown, &object), S_OK);
    CComPtr<IWbemShutdown> shutdown;
    shutdown.Attach(static_cast<IWbemShutdown*>(object));
    EXPECT_EQ(shutdown->Shutdown(0, 0, nullptr), 0);
}

TEST(Server, AnObjectWithoutTheInterfaceIsNotLeft)
{
    const CComPtr<IClassFactory> factory = FactoryOf(CLSID_Counter);
    const ULONG before = orl::ModuleReferences();
    void* object = &object;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IWbemServices, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(orl::ModuleReferences(), before);
}

TEST(Server, NoObjectBecomesAPartOfAnother)
{
    const CComPtr<IClassFactory> factory = FactoryOf(CLSID_Counter);
    const CComPtr<Counter> outer = orl::MakeObject<Counter>();
    void* object = &object;
    EXPECT_EQ(factory->CreateInstance(static_cast<IWbemObjectSink*>(outer.p), IID_IUnknown, &object),
              CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
}

TEST(Server, NoExceptionLeavesAFactory)
{
    const std::pair<std::exception_ptr, HRESULT> cases[] = {
        {std::make_exception_ptr(std::bad_alloc()), E_OUTOFMEMORY},
        {std::make_exception_ptr(CAtlException(WBEM_E_NOT_FOUND)), WBEM_E_NOT_FOUND},
        {std::make_exception_ptr(std::runtime_error("x")), E_FAIL},
        {std::make_exception_ptr(5), E_FAIL},
    };
    const CComPtr<IClassFactory> factory = FactoryOf(CLSID_Thrower);
    const ULONG before = orl::ModuleReferences();
    for (const auto& [exception, result] : cases)
    {
        g_toThrow = exception;
        void* object = &object;
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, &object), result);
        EXPECT_EQ(object, nullptr);
    }
    EXPECT_EQ(orl::ModuleReferences(), before);
    g_toThrow = nullptr;
}

TEST(Server, ALockKeepsTheModule)
{
    EXPECT_EQ(orl::CanUnloadNow(), S_OK);
    CComPtr<IClassFactory> factory = FactoryOf(CLSID_Counter);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory.Release();
    EXPECT_EQ(orl::CanUnloadNow(), S_FALSE);
    factory = FactoryOf(CLSID_Counter);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    factory.Release();
    EXPECT_EQ(orl::CanUnloadNow(), S_OK);
}

std::wstring ValueOf(const std::wstring& path, const wchar_t* name)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return L"(no key)";
    wchar_t text[1024] = L"(no value)";
    DWORD size = sizeof text;
    RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
    RegCloseKey(key);
    return text;
}

TEST(Registration, ItWritesTheKeysThatComLooksFor)
{
    orl::test::TestRegistry registry;
    EXPECT_EQ(orl::RegisterServer(Classes), S_OK);
    const std::wstring key = L"SOFTWARE\\Classes\\CLSID\\{5B0C71E4-93A6-4C1D-8F02-6A1D3E9754B8}";
    EXPECT_EQ(ValueOf(key, nullptr), L"Test counter");
    EXPECT_EQ(ValueOf(key + L"\\InprocServer32", L"ThreadingModel"), L"Both");
    wchar_t program[1024];
    GetModuleFileNameW(nullptr, program, 1024);
    EXPECT_EQ(ValueOf(key + L"\\InprocServer32", nullptr), program);
    EXPECT_EQ(ValueOf(L"SOFTWARE\\Classes\\CLSID\\{5B0C71E5-93A6-4C1D-8F02-6A1D3E9754B8}", nullptr), L"Test thrower");
    EXPECT_EQ(orl::RegisterServer(Classes), S_OK) << "twice does no harm";
}

TEST(Registration, ItIsUndoneWhole)
{
    orl::test::TestRegistry registry;
    EXPECT_EQ(orl::UnregisterServer(Classes), S_OK) << "nothing to undo is no error";
    orl::RegisterServer(Classes);
    EXPECT_EQ(orl::UnregisterServer(Classes), S_OK);
    EXPECT_EQ(ValueOf(L"SOFTWARE\\Classes\\CLSID\\{5B0C71E4-93A6-4C1D-8F02-6A1D3E9754B8}", nullptr), L"(no key)");
    EXPECT_EQ(ValueOf(L"SOFTWARE\\Classes\\CLSID\\{5B0C71E5-93A6-4C1D-8F02-6A1D3E9754B8}", nullptr), L"(no key)");
}

// One test for all of it: on Windows it needs the one registry that COM looks into.
TEST(Activation, AnObjectIsMadeByItsClassIdFromTheLibraryThatRegisteredIt)
{
    const orl::test::TestFolder folder;
    const orl::test::EnvironmentSetting setting(L"ORL2_REGISTRY", (folder.Text() + L"/registry.reg").c_str());
    HMODULE library = LoadLibraryW(L"TestComServer");
    ASSERT_NE(library, nullptr);
    const auto registerServer = orl::GetExport<HRESULT(STDMETHODCALLTYPE*)()>(library, "DllRegisterServer");
    const auto unregisterServer = orl::GetExport<HRESULT(STDMETHODCALLTYPE*)()>(library, "DllUnregisterServer");
    const auto canUnload = orl::GetExport<HRESULT(STDMETHODCALLTYPE*)()>(library, "DllCanUnloadNow");
    ASSERT_TRUE(registerServer && unregisterServer && canUnload);
    EXPECT_EQ(orl::GetExport<HRESULT (*)()>(library, "NoSuchExport"), nullptr);
    ASSERT_EQ(registerServer(), S_OK);
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);

    CComPtr<IWbemObjectSink> sink;
    EXPECT_EQ(sink.CoCreateInstance(CLSID_Counter, nullptr, CLSCTX_INPROC_SERVER), S_OK);
    ASSERT_NE(sink.p, nullptr);
    sink->Indicate(3, nullptr);
    EXPECT_EQ(CComQIPtr<IWbemShutdown>(sink)->Shutdown(0, 0, nullptr), 3);
    EXPECT_EQ(canUnload(), S_FALSE);
    sink.Release();

    CComPtr<IWbemServices> services;
    EXPECT_EQ(services.CoCreateInstance(CLSID_Counter, nullptr, CLSCTX_INPROC_SERVER), E_NOINTERFACE);
    EXPECT_EQ(services.p, nullptr);

    EXPECT_EQ(unregisterServer(), S_OK);
    EXPECT_EQ(sink.CoCreateInstance(CLSID_Counter, nullptr, CLSCTX_INPROC_SERVER), REGDB_E_CLASSNOTREG);
    CoUninitialize();
    FreeLibrary(library);
}

} // namespace
