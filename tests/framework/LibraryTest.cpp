// Orl2InstUtility as a service meets it: loaded by name, reached through its exports and COM alone.
#include "com/OrlCom.h"
#include "Common/Src/ModuleTrace.h"
#include "tests/support/FakeWbemServices.h"
#include "tests/support/RecordingSink.h"
#include "tests/support/TestRegistry.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <thread>

ORL_MODULE_TRACE_OFF;

namespace orl::test
{
namespace
{

constexpr CLSID ProviderClass = {0x8D6C0A51, 0x3C5B, 0x4E0F, {0x9B, 0x1A, 0x57, 0xC1, 0xF0, 0xA4, 0xE2, 0xD3}};
constexpr wchar_t ServerKey[] = L"SOFTWARE\\Classes\\CLSID\\{8D6C0A51-3C5B-4E0F-9B1A-57C1F0A4E2D3}\\InprocServer32";
constexpr wchar_t FrameworkKey[] = L"SOFTWARE\\KESTA\\Network_Services\\ORL2\\Framework";

class InitSink final : public ComObject<IWbemProviderInitSink>
{
public:
    std::vector<LONG> statuses;
    HRESULT STDMETHODCALLTYPE SetStatus(LONG status, LONG) override
    {
        statuses.push_back(status);
        return WBEM_S_NO_ERROR;
    }
};

std::wstring LibraryPath(const char* folder, const char* name)
{
    return (std::filesystem::path(folder) / name).wstring();
}

// One test program, one loaded framework: the registry is written before anything is loaded, and the order of the tests
// does not matter.
class Library : public ::testing::Test
{
protected:
    using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
    using Export = HRESULT(STDMETHODCALLTYPE*)();

    static HMODULE Framework()
    {
        static const HMODULE loaded = LoadLibraryW(LibraryPath(ORL_BIN_DIR, "Orl2InstUtility").c_str());
        return loaded;
    }
    static HMODULE Implementor()
    {
        return LoadLibraryW(LibraryPath(ORL_TEST_IMPLEMENTORS, "implementor_good").c_str());
    }

    Library()
    {
        registry.CreateKey(FrameworkKey);
        registry.SetText(FrameworkKey, L"Implementors", LibraryPath(ORL_TEST_IMPLEMENTORS, "implementor_good"));
        services->Add(MakeFakeClass(L"Zarn_Thing", {{L"DeviceID", CIM_STRING}}));
        services->Add(FakeExtendedStatus());
    }

    static CComPtr<IWbemServices> MakeProvider()
    {
        CComPtr<IClassFactory> factory;
        CComPtr<IWbemServices> provider;
        const auto get = GetExport<GetClassObject>(Framework(), "DllGetClassObject");
        EXPECT_NE(get, nullptr);
        EXPECT_EQ(get(ProviderClass, IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IWbemServices, reinterpret_cast<void**>(&provider)), S_OK);
        return provider;
    }
    CComPtr<IWbemServices> MakeConnected()
    {
        CComPtr<IWbemServices> provider = MakeProvider();
        CComPtr<IWbemProviderInit> init;
        EXPECT_EQ(provider->QueryInterface(IID_IWbemProviderInit, reinterpret_cast<void**>(&init)), S_OK);
        const CComPtr<InitSink> told = MakeObject<InitSink>();
        EXPECT_EQ(init->Initialize(nullptr, 0, nullptr, nullptr, services, nullptr, told), WBEM_S_NO_ERROR);
        EXPECT_THAT(told->statuses, ::testing::ElementsAre(static_cast<LONG>(WBEM_S_INITIALIZED)));
        return provider;
    }

    TestRegistry registry;
    CComPtr<FakeWbemServices> services = MakeObject<FakeWbemServices>();
};

TEST_F(Library, ServesTheImplementorsManagers)
{
    const CComPtr<IWbemServices> provider = MakeConnected();
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    EXPECT_EQ(provider->GetObjectAsync(CComBSTR(L"Zarn_Thing.DeviceID=\"X\""), 0, nullptr, sink), WBEM_S_NO_ERROR);
    EXPECT_EQ(sink->Final().result, WBEM_S_NO_ERROR);
    ASSERT_EQ(sink->Taken(), 1u);
    EXPECT_EQ(sink->Fake(0)->Value(L"DeviceID"), L"X");
}

TEST_F(Library, TranslatesExceptionsThatAnotherLibraryThrew)
{
    struct Case
    {
        const wchar_t* kind;
        HRESULT status;
        const wchar_t* description;
    };
    const CComPtr<IWbemServices> provider = MakeConnected();
    for (const Case& row :
         {Case{L"provider", WBEM_E_ACCESS_DENIED,
               L"Zarn_Thing.Kind=\"provider\": extra [insert] (code 0x8004090F, status 0x80041003, Src\\Test line 1)"},
          Case{L"atl", E_OUTOFMEMORY, L"There is not enough memory"},
          Case{L"alloc", WBEM_E_OUT_OF_MEMORY, L"There is not enough memory"},
          Case{L"std", WBEM_E_FAILED, L"The provider failed: thrown by an implementor"},
          Case{L"int", WBEM_E_FAILED, L"The provider failed without saying why"}})
    {
        const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
        const std::wstring path = L"Zarn_Thing.Kind=\"" + std::wstring(row.kind) + L"\"";
        provider->GetObjectAsync(CComBSTR(path.c_str()), 0, nullptr, sink);
        EXPECT_EQ(sink->Final().result, row.status);
        EXPECT_EQ(sink->Extended(L"Description"), row.description);
    }
}

TEST_F(Library, RegistersOnceForAllConnections)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] { MakeConnected(); });
    for (std::thread& thread : threads)
        thread.join();
    MakeConnected();
    const auto registrations = GetExport<LONG (*)()>(Implementor(), "TestRegistrations");
    const auto managers = GetExport<LONG (*)()>(Implementor(), "TestManagers");
    EXPECT_EQ(registrations(), 1);
    EXPECT_EQ(managers(), 1);
}

TEST_F(Library, MayBeUnloadedWhenNoProviderIsLeft)
{
    const auto canUnload = GetExport<Export>(Framework(), "DllCanUnloadNow");
    ASSERT_NE(canUnload, nullptr);
    EXPECT_EQ(canUnload(), S_OK);
    {
        const CComPtr<IWbemServices> provider = MakeConnected();
        EXPECT_EQ(canUnload(), S_FALSE);
    }
    EXPECT_EQ(canUnload(), S_OK);
}

TEST_F(Library, KnowsItsOwnClassOnly)
{
    const auto get = GetExport<GetClassObject>(Framework(), "DllGetClassObject");
    CComPtr<IClassFactory> factory;
    EXPECT_EQ(get(CLSID_WbemLocator, IID_IClassFactory, reinterpret_cast<void**>(&factory)), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(factory.p, nullptr);
}

TEST_F(Library, RegistersItselfForItsClassAndTakesItBack)
{
    const auto registerServer = GetExport<Export>(Framework(), "DllRegisterServer");
    const auto unregisterServer = GetExport<Export>(Framework(), "DllUnregisterServer");
    ASSERT_NE(registerServer, nullptr);
    ASSERT_NE(unregisterServer, nullptr);
    EXPECT_EQ(registerServer(), S_OK);
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, ServerKey, 0, KEY_READ, &key), ERROR_SUCCESS);
    wchar_t model[16]{};
    DWORD size = sizeof model;
    EXPECT_EQ(RegQueryValueExW(key, L"ThreadingModel", nullptr, nullptr, reinterpret_cast<BYTE*>(model), &size),
              ERROR_SUCCESS);
    EXPECT_STREQ(model, L"Both");
    RegCloseKey(key);
    EXPECT_EQ(unregisterServer(), S_OK);
    EXPECT_NE(RegOpenKeyExW(HKEY_LOCAL_MACHINE, ServerKey, 0, KEY_READ, &key), ERROR_SUCCESS);
    EXPECT_EQ(unregisterServer(), S_OK) << "what is not there need not be removed";
}

} // namespace
} // namespace orl::test
