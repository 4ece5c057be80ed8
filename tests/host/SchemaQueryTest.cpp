// Queries about classes: meta_class, and associations with SchemaOnly.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"

#include <algorithm>

namespace orl::test
{
namespace
{

using Texts = std::vector<std::wstring>;

constexpr const wchar_t* kHubMof = LR"(
#pragma namespace("\\\\.\\root\\KESTA")

[abstract] class Test_Base { [key] string Name; };
[Powered] class Test_Hub : Test_Base { uint32 Ports; };
class Test_Port : Test_Base {};
class Test_BigPort : Test_Port { uint32 Size; };
class Test_Shelf { [key] string Name; };

[association, abstract] class Test_Link {};
[association, Wired] class Test_HubPort : Test_Link { [key] Test_Hub ref Antecedent; [key] Test_Port ref Dependent; };
[association] class Test_BigHubPort : Test_HubPort { uint32 Order; };
[association] class Test_Place { [key] Test_Base ref Thing; [key] Test_Shelf ref Place; };
[association] class Test_Three { [key] Test_Hub ref One; [key] Test_Port ref Two; [key] Test_Shelf ref Three; };
)";

class SchemaQuery : public HostTest
{
protected:
    SchemaQuery() { Use(kHubMof); }

    // The names of the classes, sorted, without the system's; of a failure its code.
    Texts Ask(const std::wstring& query)
    {
        CComPtr<IEnumWbemClassObject> found;
        const HRESULT code = Service().ExecQuery(CComBSTR(L"WQL"), CComBSTR(query.c_str()), 0, nullptr, &found);
        if (FAILED(code))
            return {HexText(code)};
        HRESULT end = WBEM_E_FAILED;
        Texts names = Drain(found, L"__CLASS", &end);
        EXPECT_EQ(HexText(WBEM_S_FALSE), HexText(end));
        std::erase_if(names, [](const std::wstring& name) { return name.starts_with(L"__"); });
        std::sort(names.begin(), names.end());
        return names;
    }
    CComPtr<IWbemClassObject> First(const std::wstring& query)
    {
        CComPtr<IEnumWbemClassObject> found;
        EXPECT_EQ(WBEM_S_NO_ERROR, Service().ExecQuery(CComBSTR(L"WQL"), CComBSTR(query.c_str()), 0, nullptr, &found))
            << TakeTold();
        CComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        if (found)
            found->Next(10000, 1, &object, &returned);
        return object;
    }
};

struct SchemaRow
{
    const wchar_t* text;
    Texts found;
};

TEST_F(SchemaQuery, MetaClassHoldsTheClassesOfTheNamespace)
{
    const SchemaRow rows[] = {
        {L"__THIS ISA 'Test_Base'", {L"Test_Base", L"Test_BigPort", L"Test_Hub", L"Test_Port"}},
        {L"__this isa test_port", {L"Test_BigPort", L"Test_Port"}},
        {L"__this ISA 'Test_Nothing'", {}},
        {L"__CLASS = 'TEST_HUB'", {L"Test_Hub"}},
        {L"__CLASS = 'Test_Nothing'", {}},
        {L"__CLASS LIKE 'Test[_]Big%'", {L"Test_BigHubPort", L"Test_BigPort"}},
        {L"__CLASS > 'Test_S' AND __CLASS < 'test_t'", {L"Test_Shelf"}},
        {L"__SUPERCLASS = 'test_base'", {L"Test_Hub", L"Test_Port"}},
        {L"__SUPERCLASS IS NULL", {L"Test_Base", L"Test_Link", L"Test_Place", L"Test_Shelf", L"Test_Three"}},
        {L"__DYNASTY = 'Test_Link'", {L"Test_BigHubPort", L"Test_HubPort", L"Test_Link"}},
        {L"__THIS ISA 'Test_Base' AND NOT __THIS ISA 'Test_Port'", {L"Test_Base", L"Test_Hub"}},
        {L"__THIS ISA 'Test_Base' AND __CLASS <> 'Test_Base' AND __PROPERTY_COUNT > 1", {L"Test_BigPort", L"Test_Hub"}},
        {L"__GENUS = 2", {}},
        {L"__GENUS = 1 AND __NAMESPACE = 'ROOT\\kesta' AND __CLASS = 'Test_Shelf'", {L"Test_Shelf"}},
        {L"__RELPATH = 'test_shelf'", {L"Test_Shelf"}},
        {L"__DERIVATION IS NULL", {}},
    };
    for (const SchemaRow& row : rows)
        EXPECT_EQ(Ask(std::wstring(L"SELECT * FROM meta_class WHERE ") + row.text), row.found)
            << ::testing::PrintToString(row.text);
    EXPECT_EQ(Ask(L"select * from META_CLASS").size(), 10U);
    EXPECT_EQ(0, m_loads) << "a class is asked about, no provider is needed";
}

TEST_F(SchemaQuery, MetaClassGivesClassesAsTheyAreDeclared)
{
    const CComPtr<IWbemClassObject> hub = First(L"SELECT * FROM meta_class WHERE __CLASS = 'Test_Hub'");
    ASSERT_NE(hub.p, nullptr);
    EXPECT_EQ(Show(hub, L"__GENUS"), L"1");
    EXPECT_EQ(Show(hub, L"__PROPERTY_COUNT"), L"2");
    const CComPtr<IWbemClassObject> named = First(L"SELECT __CLASS FROM meta_class WHERE __CLASS = 'Test_Hub'");
    ASSERT_NE(named.p, nullptr);
    EXPECT_EQ(Show(named, L"__CLASS"), L"Test_Hub");
    EXPECT_EQ(Show(named, L"__PROPERTY_COUNT"), L"0");
}

TEST_F(SchemaQuery, MetaClassKnowsNoPropertiesOfInstances)
{
    for (const wchar_t* query :
         {L"SELECT * FROM meta_class WHERE Ports = 5", L"SELECT * FROM meta_class WHERE __CLASS = 'x' OR Ports IS NULL",
          L"SELECT Ports FROM meta_class", L"SELECT __CLASS, Ports FROM meta_class"})
    {
        EXPECT_EQ(Ask(query), Texts{HexText(WBEM_E_INVALID_QUERY)}) << ::testing::PrintToString(query);
        EXPECT_EQ(TakeTold().description,
                  L"a query over classes knows system properties only: meta_class has no property Ports");
    }
}

TEST_F(SchemaQuery, SchemaOnlyFollowsTheDeclarationsOfAssociations)
{
    const SchemaRow rows[] = {
        {L"ASSOCIATORS OF {Test_Hub} WHERE SchemaOnly", {L"Test_Port", L"Test_Shelf"}},
        {L"ASSOCIATORS OF {Test_Port} WHERE SchemaOnly", {L"Test_Hub", L"Test_Shelf"}},
        {L"ASSOCIATORS OF {Test_Shelf} WHERE SchemaOnly", {L"Test_Base", L"Test_Hub", L"Test_Port"}},
        // A class has the associations of the classes above it, however its path is written.
        {L"associators of { test_BIGPORT } where schemaonly", {L"Test_Hub", L"Test_Shelf"}},
        {L"ASSOCIATORS OF {root\\KESTA:Test_BigPort} WHERE SchemaOnly", {L"Test_Hub", L"Test_Shelf"}},
        {L"ASSOCIATORS OF {//./ROOT/kesta:Test_BigPort} WHERE SchemaOnly", {L"Test_Hub", L"Test_Shelf"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE AssocClass = Test_Link SchemaOnly", {L"Test_Port"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE AssocClass = Test_BigHubPort SchemaOnly", {L"Test_Port"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE AssocClass = Test_Shelf SchemaOnly", {}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE ResultClass = Test_Shelf SchemaOnly", {L"Test_Shelf"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE ResultClass = Test_Base SchemaOnly", {L"Test_Port"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE Role = ANTECEDENT SchemaOnly", {L"Test_Port"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE Role = Dependent SchemaOnly", {}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE ResultRole = Three SchemaOnly", {L"Test_Shelf"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE Role = One ResultRole = two SchemaOnly", {L"Test_Port"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE Role = One ResultRole = One SchemaOnly", {}},
        {L"ASSOCIATORS OF {Test_Port} WHERE RequiredQualifier = Powered SchemaOnly", {L"Test_Hub"}},
        {L"ASSOCIATORS OF {Test_Port} WHERE RequiredQualifier = Nothing SchemaOnly", {}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE RequiredAssocQualifier = wired SchemaOnly", {L"Test_Port"}},
        {L"ASSOCIATORS OF {Test_Link} WHERE SchemaOnly", {}},
        {L"REFERENCES OF {Test_Hub} WHERE SchemaOnly",
         {L"Test_BigHubPort", L"Test_HubPort", L"Test_Place", L"Test_Three"}},
        {L"REFERENCES OF {Test_BigPort} WHERE SchemaOnly",
         {L"Test_BigHubPort", L"Test_HubPort", L"Test_Place", L"Test_Three"}},
        {L"REFERENCES OF {Test_Shelf} WHERE SchemaOnly", {L"Test_Place", L"Test_Three"}},
        {L"REFERENCES OF {Test_Hub} WHERE ResultClass = Test_Link SchemaOnly", {L"Test_BigHubPort", L"Test_HubPort"}},
        {L"REFERENCES OF {Test_Hub} WHERE Role = Thing SchemaOnly", {L"Test_Place"}},
        {L"REFERENCES OF {Test_Hub} WHERE Role = Place SchemaOnly", {}},
        {L"REFERENCES OF {Test_Hub} WHERE RequiredQualifier = Wired SchemaOnly", {L"Test_BigHubPort", L"Test_HubPort"}},
        {L"REFERENCES OF {Test_Hub} WHERE RequiredQualifier = Association Role = One SchemaOnly", {L"Test_Three"}},
    };
    for (const SchemaRow& row : rows)
        EXPECT_EQ(Ask(row.text), row.found) << ::testing::PrintToString(row.text);
    EXPECT_EQ(0, m_loads);
}

TEST_F(SchemaQuery, QueriesAboutClassesThatAreNotThereAreRefused)
{
    const struct
    {
        const wchar_t* query;
        HRESULT code;
        const wchar_t* description;
    } rows[] = {
        {L"ASSOCIATORS OF {Test_Nothing} WHERE SchemaOnly", WBEM_E_INVALID_CLASS,
         L"there is no class Test_Nothing in root\\KESTA"},
        {L"REFERENCES OF {Test_Nothing} WHERE SchemaOnly", WBEM_E_INVALID_CLASS,
         L"there is no class Test_Nothing in root\\KESTA"},
        {L"ASSOCIATORS OF {Test_Hub} WHERE ResultClass = Test_Nothing SchemaOnly", WBEM_E_INVALID_CLASS,
         L"there is no class Test_Nothing in root\\KESTA"},
        {L"ASSOCIATORS OF {root\\nowhere:Test_Hub} WHERE SchemaOnly", WBEM_E_INVALID_NAMESPACE,
         L"there is no namespace root\\nowhere"},
        {L"REFERENCES OF {Test_Hub.Name='x'} WHERE SchemaOnly", WBEM_E_INVALID_QUERY,
         L"SchemaOnly asks about a class; the path names an instance of Test_Hub"},
        {L"REFERENCES OF {Test_Hub}", WBEM_E_INVALID_QUERY,
         L"the path names the class Test_Hub; ask about an instance, or about the class with SchemaOnly"},
    };
    for (const auto& row : rows)
    {
        EXPECT_EQ(Ask(row.query), Texts{HexText(row.code)}) << ::testing::PrintToString(row.query);
        const Told told = TakeTold();
        EXPECT_EQ(told.description, row.description);
        EXPECT_EQ(told.parameter, row.query);
    }
}

} // namespace
} // namespace orl::test
