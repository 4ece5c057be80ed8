// ExecQueryAsync: which queries reach a manager.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

using QueryTest = ProviderTest;

TEST_F(QueryTest, HandsTheParsedQueryToTheManager)
{
    std::wstring restriction;
    manager->query = [&](CWomWQLParser& query, CWomContext&, ScriptedManager::Sink)
    {
        EXPECT_FALSE(query.Failed());
        restriction = query.GetAttributeRestriction(L"DeviceID")->Text();
        return WBEM_S_NO_ERROR;
    };
    EXPECT_EQ(Query(L"SELECT Name FROM Zarn_Thing WHERE DeviceID = 'X'", L"wql")->Final().result, WBEM_S_NO_ERROR);
    EXPECT_EQ(restriction, L"X");
}

TEST_F(QueryTest, SendsAllOfAManagerWithoutQueries)
{
    manager->enumerate = [&](CWomContext& context, ScriptedManager::Sink to)
    {
        manager->Send(context, to, {{L"DeviceID", L"X"}});
        manager->Send(context, to, {{L"DeviceID", L"Y"}});
        return WBEM_S_NO_ERROR;
    };
    const CComPtr<RecordingSink> told = Query(L"SELECT * FROM Zarn_Thing WHERE DeviceID = 'X'");
    EXPECT_EQ(told->Final().result, WBEM_S_NO_ERROR);
    EXPECT_EQ(told->Taken(), 2u) << "the service filters";
}

TEST_F(QueryTest, ReachesTheManagerAlsoWhenItCannotBeRead)
{
    bool failed = false;
    manager->query = [&](CWomWQLParser& query, CWomContext&, ScriptedManager::Sink)
    {
        failed = query.Failed();
        return WBEM_S_NO_ERROR;
    };
    EXPECT_EQ(Query(L"SELECT * FROM Zarn_Thing WHERE DeviceID BETWEEN 1")->Final().result, WBEM_S_NO_ERROR);
    EXPECT_TRUE(failed);
}

TEST_F(QueryTest, IsRefusedWhenItNamesNoClass)
{
    const CComPtr<RecordingSink> told = Query(L"SELECT *");
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_INVALID_QUERY});
    EXPECT_THAT(Narrow(told->Extended(L"Description")), ::testing::StartsWith("The query cannot be read: "));
    EXPECT_EQ(Hex{Query(L"ASSOCIATORS OF {Zarn_Thing.DeviceID=\"X\"}")->Final().result}, Hex{WBEM_E_INVALID_QUERY});
}

TEST_F(QueryTest, IsRefusedInAnotherLanguage)
{
    for (const wchar_t* language : {static_cast<const wchar_t*>(nullptr), L"", L"SQL", L"WQL2"})
    {
        const CComPtr<RecordingSink> told = Query(L"SELECT * FROM Zarn_Thing", language);
        EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_INVALID_QUERY_TYPE});
        EXPECT_EQ(told->Extended(L"Description"), L"The only query language here is WQL");
    }
}

} // namespace
} // namespace orl::test
