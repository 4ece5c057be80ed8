// Connecting, and the values that go with calls.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"
#include "host/Context.h"
#include "host/Locator.h"
#include "host/ObjectNames.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestRegistry.h"

#include <fstream>

namespace orl::test
{
namespace
{

class HostLocator : public HostTest
{
protected:
    HRESULT ConnectTo(const std::wstring& resource, const wchar_t* user = nullptr)
    {
        const CComPtr<Locator> locator = MakeObject<Locator>(Own());
        m_connection = nullptr;
        return locator->ConnectServer(CComBSTR(resource.c_str()), CComBSTR(user), nullptr, nullptr, 0, nullptr, nullptr,
                                      &m_connection);
    }

    CComPtr<IWbemServices> m_connection;
};

TEST_F(HostLocator, TakesANamespaceInAnyForm)
{
    for (const std::wstring& resource : std::vector<std::wstring>{
             L"root\\KESTA", L"ROOT/kesta", L"\\\\.\\root\\KESTA", L"//./root/KESTA", L"\\\\localhost\\root\\KESTA",
             L"\\\\" + ServerName() + L"\\root\\KESTA", L"", L"root"})
    {
        EXPECT_EQ(HexText(WBEM_S_NO_ERROR), HexText(ConnectTo(resource))) << ::testing::PrintToString(resource);
        EXPECT_NE(nullptr, m_connection.p);
    }
}

TEST_F(HostLocator, AnEmptyResourceIsTheDefaultNamespace)
{
    ASSERT_EQ(WBEM_S_NO_ERROR, ConnectTo(L""));
    CComPtr<IWbemClassObject> found;
    EXPECT_EQ(WBEM_S_NO_ERROR, m_connection->GetObject(CComBSTR(L"Test_Lamp"), 0, nullptr, &found, nullptr));
}

TEST_F(HostLocator, AnUnknownNamespaceIsRefusedByName)
{
    EXPECT_EQ(HexText(WBEM_E_INVALID_NAMESPACE), HexText(ConnectTo(L"root\\KESTA\\Deep")));
    EXPECT_EQ(nullptr, m_connection.p);
    EXPECT_EQ(
        (Told{L"0x8004100E", L"there is no namespace root\\KESTA\\Deep", L"ConnectServer", L"root\\KESTA\\Deep", L""}),
        TakeTold());
    EXPECT_EQ(HexText(WBEM_E_INVALID_NAMESPACE), HexText(ConnectTo(L"root\\\\KESTA")));
    EXPECT_TRUE(TakeTold().description.starts_with(L"the namespace is malformed: "));
}

TEST_F(HostLocator, AnotherMachineIsOutOfReach)
{
    EXPECT_EQ(HexText(WBEM_E_TRANSPORT_FAILURE), HexText(ConnectTo(L"\\\\elsewhere.invalid\\root\\KESTA")));
    EXPECT_EQ(L"this service is on " + ServerName() + L" and reaches no other machine: elsewhere.invalid",
              TakeTold().description);
}

TEST_F(HostLocator, ALocalConnectionTakesNoUser)
{
    EXPECT_EQ(HexText(WBEM_E_LOCAL_CREDENTIALS), HexText(ConnectTo(L"root\\KESTA", L"somebody")));
    EXPECT_EQ(L"a local connection takes no user", TakeTold().description);
    EXPECT_EQ(WBEM_S_NO_ERROR, ConnectTo(L"root\\KESTA", L""));
}

TEST_F(HostLocator, ABadSchemaIsRefusedWithPlaceAndReasonAtEveryConnection)
{
    Use(L"class A : Missing {};");
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(HexText(WBEM_E_FAILED), HexText(ConnectTo(L"root\\KESTA")));
        EXPECT_EQ((Told{L"0x80041001", L"lamps.mof:1:1: the superclass Missing of A does not exist in root\\KESTA",
                        L"ConnectServer", L"root\\KESTA", L""}),
                  TakeTold());
    }
    Use(L"class A {};");
    EXPECT_EQ(WBEM_S_NO_ERROR, ConnectTo(L"root\\KESTA")) << "a schema that was mended is read again";
}

TEST_F(HostLocator, OpenNamespaceLeadsFromOneNamespaceToOneInIt)
{
    ASSERT_EQ(WBEM_S_NO_ERROR, ConnectTo(L"root"));
    CComPtr<IWbemServices> inner;
    ASSERT_EQ(WBEM_S_NO_ERROR, m_connection->OpenNamespace(CComBSTR(L"kesta"), 0, nullptr, &inner, nullptr));
    CComPtr<IWbemClassObject> found;
    EXPECT_EQ(WBEM_S_NO_ERROR, inner->GetObject(CComBSTR(L"Test_Lamp"), 0, nullptr, &found, nullptr));
    CComPtr<IWbemCallResult> result;
    ASSERT_EQ(WBEM_S_NO_ERROR,
              m_connection->OpenNamespace(CComBSTR(L"kesta"), WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, nullptr, &result));
    CComPtr<IWbemServices> opened;
    EXPECT_EQ(WBEM_S_NO_ERROR, result->GetResultServices(0, &opened));
    EXPECT_NE(nullptr, opened.p);
    inner = nullptr;
    EXPECT_EQ(WBEM_E_INVALID_NAMESPACE, m_connection->OpenNamespace(CComBSTR(L"nowhere"), 0, nullptr, &inner, nullptr));
    EXPECT_EQ(L"there is no namespace root\\nowhere", TakeTold().description);
}

TEST_F(HostLocator, TheRegistryNamesTheSchemaOfTheProcess)
{
    TestRegistry registry;
    CComPtr<IWbemServices> service;
    const auto connect = [&]
    {
        return MakeObject<Locator>()->ConnectServer(CComBSTR(L"root\\KESTA"), nullptr, nullptr, nullptr, 0, nullptr,
                                                    nullptr, &service);
    };
    EXPECT_EQ(HexText(WBEM_E_FAILED), HexText(connect()));
    EXPECT_EQ(L"the registry does not name the folder of the schema: "
              L"HKEY_LOCAL_MACHINE\\SOFTWARE\\KESTA\\Network_Services\\ORL2\\Host, value Schema",
              TakeTold().description);
    TestFolder folder;
    std::ofstream(folder / "a.mof") << "class A {};";
    registry.SetText(std::wstring(ProductKey) + L"\\Host", L"Schema", folder.Text());
    ASSERT_EQ(HexText(WBEM_S_NO_ERROR), HexText(connect())) << TakeTold();
    CComPtr<IWbemClassObject> found;
    EXPECT_EQ(WBEM_S_NO_ERROR, service->GetObject(CComBSTR(L"A"), 0, nullptr, &found, nullptr));
}

// Contexts
// --------------------------------------------------------------------------------------------------------------

TEST(HostContext, KeepsValuesByNameWithoutCase)
{
    const CComPtr<Context> context = MakeObject<Context>();
    CComVariant five(5);
    CComVariant text(L"x");
    ASSERT_EQ(WBEM_S_NO_ERROR, context->SetValue(L"Alpha", 0, &text));
    ASSERT_EQ(WBEM_S_NO_ERROR, context->SetValue(L"Beta", 0, &text));
    ASSERT_EQ(WBEM_S_NO_ERROR, context->SetValue(L"ALPHA", 0, &five));
    CComVariant value;
    ASSERT_EQ(WBEM_S_NO_ERROR, context->GetValue(L"alpha", 0, &value));
    EXPECT_EQ(L"5", Shown(value));
    SAFEARRAY* names = nullptr;
    ASSERT_EQ(WBEM_S_NO_ERROR, context->GetNames(0, &names));
    EXPECT_EQ((std::vector<std::wstring>{L"Alpha", L"Beta"}), NamesIn(names));

    CComPtr<IWbemContext> copy;
    ASSERT_EQ(WBEM_S_NO_ERROR, context->Clone(&copy));
    EXPECT_EQ(WBEM_S_NO_ERROR, context->DeleteValue(L"alpha", 0));
    EXPECT_EQ(WBEM_E_NOT_FOUND, context->DeleteValue(L"alpha", 0));
    CComVariant gone;
    EXPECT_EQ(WBEM_E_NOT_FOUND, context->GetValue(L"alpha", 0, &gone));
    CComVariant kept;
    EXPECT_EQ(WBEM_S_NO_ERROR, copy->GetValue(L"alpha", 0, &kept));
    EXPECT_EQ(WBEM_S_NO_ERROR, context->DeleteAll());
    ASSERT_EQ(WBEM_S_NO_ERROR, context->GetNames(0, &names));
    EXPECT_TRUE(NamesIn(names).empty());
}

TEST(HostContext, EnumeratesInTheOrderOfSetting)
{
    const CComPtr<Context> context = MakeObject<Context>();
    CComVariant value(1);
    context->SetValue(L"B", 0, &value);
    context->SetValue(L"A", 0, &value);
    CComBSTR name;
    CComVariant found;
    EXPECT_EQ(WBEM_E_UNEXPECTED, context->Next(0, &name, &found));
    context->BeginEnumeration(0);
    ASSERT_EQ(WBEM_S_NO_ERROR, context->Next(0, &name, &found));
    EXPECT_EQ(L"B", TextOf(name));
    name.Empty();
    ASSERT_EQ(WBEM_S_NO_ERROR, context->Next(0, &name, &found));
    EXPECT_EQ(L"A", TextOf(name));
    name.Empty();
    EXPECT_EQ(WBEM_S_NO_MORE_DATA, context->Next(0, &name, &found));
    EXPECT_EQ(WBEM_S_NO_ERROR, context->EndEnumeration());
    EXPECT_EQ(WBEM_E_INVALID_PARAMETER, context->SetValue(nullptr, 0, &value));
    EXPECT_EQ(WBEM_E_INVALID_PARAMETER, context->GetValue(L"A", 0, nullptr));
}

} // namespace
} // namespace orl::test
