// Initialize and Shutdown: the beginning and the end of a connection.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

using ::testing::ElementsAre;

class InitializeTest : public ::testing::Test
{
protected:
    HRESULT Initialize(IWbemServices* given)
    {
        return provider->Initialize(nullptr, 0, nullptr, nullptr, given, nullptr, told);
    }

    CComPtr<FakeWbemServices> services = MakeObject<FakeWbemServices>();
    CComPtr<RecordingInitSink> told = MakeObject<RecordingInitSink>();
    GivenManagers managers;
    CComPtr<OrlInstProvider> provider = MakeObject<OrlInstProvider>(managers);
    CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
};

TEST_F(InitializeTest, TellsTheSinkOnceThatAllIsWell)
{
    EXPECT_EQ(Hex{Initialize(services)}, Hex{WBEM_S_NO_ERROR});
    EXPECT_THAT(told->statuses, ElementsAre(static_cast<LONG>(WBEM_S_INITIALIZED)));
    EXPECT_EQ(managers.asked, 1);
}

TEST_F(InitializeTest, TellsTheSinkAndTheCallerWhyThereAreNoManagers)
{
    managers.status = WBEM_E_FAILED;
    managers.reason = L"The implementor library X cannot be loaded: error 126";
    EXPECT_EQ(Hex{Initialize(services)}, Hex{WBEM_E_FAILED});
    EXPECT_THAT(told->statuses, ElementsAre(WBEM_E_FAILED));
    CComPtr<IErrorInfo> error;
    ASSERT_EQ(GetErrorInfo(0, &error), S_OK);
    CComBSTR text;
    EXPECT_EQ(error->GetDescription(&text), S_OK);
    EXPECT_STREQ(text.m_str, L"The implementor library X cannot be loaded: error 126");
    EXPECT_EQ(error->GetSource(&text), S_OK);
    EXPECT_STREQ(text.m_str, L"Orl2InstUtility");
    EXPECT_EQ(error->GetHelpFile(&text), S_OK);
    EXPECT_EQ(text.m_str, nullptr);
    DWORD help = 5;
    GUID guid{1, 2, 3, {4}};
    EXPECT_EQ(error->GetHelpContext(&help), S_OK);
    EXPECT_EQ(error->GetGUID(&guid), S_OK);
    EXPECT_EQ(help, 0u);
    EXPECT_TRUE(IsEqualGUID(guid, GUID{}));
}

TEST_F(InitializeTest, NeedsAServiceAndASink)
{
    EXPECT_EQ(Hex{Initialize(nullptr)}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_THAT(told->statuses, ElementsAre(WBEM_E_INVALID_PARAMETER));
    EXPECT_EQ(Hex{provider->Initialize(nullptr, 0, nullptr, nullptr, services, nullptr, nullptr)},
              Hex{WBEM_E_INVALID_PARAMETER});
}

TEST_F(InitializeTest, ComesBeforeEveryRequest)
{
    EXPECT_EQ(provider->CreateInstanceEnumAsync(CComBSTR(L"Zarn_Thing"), 0, nullptr, sink), WBEM_S_NO_ERROR);
    EXPECT_EQ(Hex{sink->Final().result}, Hex{WBEM_E_PROVIDER_LOAD_FAILURE});
    EXPECT_EQ(sink->References(), 1u);
}

TEST_F(InitializeTest, EndsWithShutdownWhichLetsGoOfTheService)
{
    Initialize(services);
    const ULONG held = services->AddRef() - 2;
    services->Release();
    EXPECT_GT(held, 0u);
    CComPtr<IWbemShutdown> shutdown;
    ASSERT_EQ(
        static_cast<IWbemServices*>(provider)->QueryInterface(IID_IWbemShutdown, reinterpret_cast<void**>(&shutdown)),
        S_OK);
    EXPECT_EQ(shutdown->Shutdown(WBEM_SHUTDOWN_UNLOAD_COMPONENT, 0, nullptr), WBEM_S_NO_ERROR);
    EXPECT_EQ(services->AddRef(), 2u);
    services->Release();
    provider->CreateInstanceEnumAsync(CComBSTR(L"Zarn_Thing"), 0, nullptr, sink);
    EXPECT_EQ(Hex{sink->Final().result}, Hex{WBEM_E_PROVIDER_LOAD_FAILURE});
}

TEST_F(InitializeTest, OffersTheInterfacesOfAProvider)
{
    IWbemServices* unknown = provider;
    for (const IID* iid : {&IID_IUnknown, &IID_IWbemServices, &IID_IWbemProviderInit, &IID_IWbemShutdown})
    {
        CComPtr<IUnknown> found;
        EXPECT_EQ(unknown->QueryInterface(*iid, reinterpret_cast<void**>(&found)), S_OK);
    }
    void* none = this;
    EXPECT_EQ(Hex{unknown->QueryInterface(IID_IWbemLocator, &none)}, Hex{E_NOINTERFACE});
    EXPECT_EQ(none, nullptr);
}

} // namespace
} // namespace orl::test
