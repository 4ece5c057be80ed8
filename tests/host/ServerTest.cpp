// The library as COM finds it.
#include "tests/host/Fixture.h"

#include "tests/support/TestFolder.h"
#include "tests/support/TestRegistry.h"

#include <fstream>

namespace orl::test
{
namespace
{

// The built library, loaded like COM does it; what the module exports is all that is used of it.
class HostServer : public ::testing::Test
{
protected:
    HostServer()
    {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        m_module = LoadLibraryW(L"orlwmihost");
        std::ofstream(m_folder / "a.mof") << "class A { [key] string X; }; instance of A { X = \"one\"; };";
        m_registry.SetText(std::wstring(ProductKey) + L"\\Host", L"Schema", m_folder.Text());
    }
    ~HostServer() override { CoUninitialize(); }

    template <class Interface>
    CComPtr<Interface> Make(REFCLSID clsid)
    {
        using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
        const auto get = GetExport<GetClassObject>(m_module, "DllGetClassObject");
        CComPtr<IClassFactory> factory;
        EXPECT_EQ(S_OK, get(clsid, IID_IClassFactory, reinterpret_cast<void**>(&factory.p)));
        CComPtr<Interface> made;
        EXPECT_EQ(S_OK, factory->CreateInstance(nullptr, IidOf<Interface>(), reinterpret_cast<void**>(&made.p)));
        return made;
    }
    HRESULT CanUnload() { return GetExport<HRESULT(STDMETHODCALLTYPE*)()>(m_module, "DllCanUnloadNow")(); }

    TestRegistry m_registry;
    TestFolder m_folder;
    HMODULE m_module = nullptr;
};

TEST_F(HostServer, ServesLocatorsAndContextsAndCanBeUnloadedAfterThem)
{
    ASSERT_NE(nullptr, m_module);
    EXPECT_EQ(S_OK, CanUnload());
    {
        const CComPtr<IWbemLocator> locator = Make<IWbemLocator>(CLSID_WbemLocator);
        EXPECT_EQ(S_FALSE, CanUnload());
        CComPtr<IWbemServices> service;
        ASSERT_EQ(WBEM_S_NO_ERROR, locator->ConnectServer(CComBSTR(L"root\\KESTA"), nullptr, nullptr, nullptr, 0,
                                                          nullptr, nullptr, &service));
        CComPtr<IEnumWbemClassObject> found;
        ASSERT_EQ(WBEM_S_NO_ERROR,
                  service->ExecQuery(CComBSTR(L"WQL"), CComBSTR(L"SELECT * FROM A"), 0x30, nullptr, &found));
        EXPECT_EQ((std::vector<std::wstring>{L"one"}), Drain(found, L"X"));
        const CComPtr<IWbemContext> context = Make<IWbemContext>(CLSID_WbemContext);
        CComVariant value(1);
        EXPECT_EQ(WBEM_S_NO_ERROR, context->SetValue(L"X", 0, &value));
    }
    EXPECT_EQ(S_OK, CanUnload());
    CComPtr<IClassFactory> factory;
    using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, GetExport<GetClassObject>(m_module, "DllGetClassObject")(
                                             IID_IUnknown, IID_IClassFactory, reinterpret_cast<void**>(&factory.p)));
}

TEST_F(HostServer, RegistersItsClasses)
{
    ASSERT_NE(nullptr, m_module);
    const auto run = [&](const char* name) { return GetExport<HRESULT(STDMETHODCALLTYPE*)()>(m_module, name)(); };
    ASSERT_EQ(S_OK, run("DllRegisterServer"));
    for (const wchar_t* clsid : {L"{4590F811-1D3A-11D0-891F-00AA004B2E24}", L"{674B6698-EE92-11D0-AD71-00C04FD8FDFF}"})
    {
        HKEY key = nullptr;
        const std::wstring path = std::wstring(L"SOFTWARE\\Classes\\CLSID\\") + clsid + L"\\InprocServer32";
        ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key));
        wchar_t value[MAX_PATH] = {};
        DWORD size = sizeof value;
        EXPECT_EQ(ERROR_SUCCESS,
                  RegQueryValueExW(key, L"ThreadingModel", nullptr, nullptr, reinterpret_cast<BYTE*>(value), &size));
        EXPECT_STREQ(L"Both", value);
        RegCloseKey(key);
    }
    EXPECT_EQ(S_OK, run("DllUnregisterServer"));
}

} // namespace
} // namespace orl::test
