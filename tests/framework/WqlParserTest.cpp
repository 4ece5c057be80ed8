// CWomWQLParser: what every match of a query has in common.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

TEST(CWomWQLParser, HasFailedBeforeItsFirstQuery)
{
    const CWomWQLParser parser;
    EXPECT_TRUE(parser.Failed());
    EXPECT_EQ(parser.FailureCode(), static_cast<ULONG>(WBEM_E_INVALID_QUERY));
    EXPECT_EQ(parser.GetAttributeRestriction(L"A"), nullptr);
}

TEST(CWomWQLParser, GivesTheValueThatAnAttributeMustHave)
{
    // The restriction on Antecedent, or null for none.
    struct Case
    {
        const wchar_t* where;
        const wchar_t* expected;
    };
    const Case cases[] = {
        {L"", nullptr},
        {L" WHERE Antecedent = \"x\"", L"x"},
        {L" WHERE ANTECEDENT = 'x'", L"x"},
        {L" WHERE \"x\" = Antecedent", L"x"},
        {L" WHERE Antecedent = \"x\" AND Dependent = \"y\"", L"x"},
        {L" WHERE (Dependent = \"y\" AND (Antecedent = \"x\"))", L"x"},
        {L" WHERE Antecedent = \"x\" AND (Dependent = \"y\" OR Dependent = \"z\")", L"x"},
        {L" WHERE Antecedent = \"x\" OR Dependent = \"y\"", nullptr},
        {L" WHERE NOT Antecedent = \"x\"", nullptr},
        {L" WHERE NOT (Antecedent = \"x\" AND Dependent = \"y\")", nullptr},
        {L" WHERE Antecedent <> \"x\"", nullptr},
        {L" WHERE Antecedent > \"x\"", nullptr},
        {L" WHERE Antecedent LIKE \"x\"", nullptr},
        {L" WHERE Antecedent IS NULL", nullptr},
        {L" WHERE Antecedent = NULL", nullptr},
        {L" WHERE Dependent = \"y\"", nullptr},
        {L" WHERE Antecedent = 5", L"5"},
        {L" WHERE Antecedent = TRUE", L"TRUE"},
        {L" WHERE Antecedent = \"Zarn_FCOEHBA.DeviceID=\\\"X\\\"\"", L"Zarn_FCOEHBA.DeviceID=\"X\""},
    };
    for (const Case& row : cases)
    {
        const std::wstring query = std::wstring(L"SELECT * FROM Zarn_Assoc") + row.where;
        SCOPED_TRACE(Narrow(query));
        CWomWQLParser parser;
        EXPECT_EQ(Hex{parser.Parse(query.c_str())}, Hex{WBEM_S_NO_ERROR});
        EXPECT_FALSE(parser.Failed());
        EXPECT_EQ(parser.FailureCode(), 0u);
        EXPECT_EQ(parser.ClassName(), L"Zarn_Assoc");
        EXPECT_EQ(parser.Text(), query);
        const COrlWmiNamedValue* restriction = parser.GetAttributeRestriction(L"Antecedent");
        ASSERT_EQ(restriction != nullptr, row.expected != nullptr);
        if (restriction != nullptr)
        {
            EXPECT_EQ(restriction->Text(), row.expected);
        }
    }
}

TEST(CWomWQLParser, TypesRestrictionsAsPathsDo)
{
    CWomWQLParser parser;
    ASSERT_EQ(parser.Parse(L"SELECT * FROM C WHERE A = 5 AND B = 'x' AND D = FALSE AND E = 1.5 AND F = 4294967296"),
              WBEM_S_NO_ERROR);
    EXPECT_EQ(parser.GetAttributeRestriction(L"A")->value.vt, VT_I4);
    EXPECT_EQ(parser.GetAttributeRestriction(L"B")->value.vt, VT_BSTR);
    EXPECT_EQ(parser.GetAttributeRestriction(L"D")->value.vt, VT_BOOL);
    EXPECT_EQ(parser.GetAttributeRestriction(L"E")->value.vt, VT_R8);
    EXPECT_EQ(parser.GetAttributeRestriction(L"E")->Text(), L"1.5");
    EXPECT_EQ(parser.GetAttributeRestriction(L"F")->value.vt, VT_BSTR);
}

TEST(CWomWQLParser, SaysWhyAndWhereAQueryCannotBeRead)
{
    CWomWQLParser parser;
    parser.Parse(L"SELECT * FROM Zarn_Assoc WHERE Antecedent = \"x\"");
    EXPECT_EQ(Hex{parser.Parse(L"SELECT * FROM Zarn_Assoc WHERE Antecedent ==")}, Hex{WBEM_E_INVALID_QUERY});
    EXPECT_TRUE(parser.Failed());
    EXPECT_EQ(parser.FailureCode(), static_cast<ULONG>(WBEM_E_INVALID_QUERY));
    EXPECT_NE(parser.FailureText().find(L"at character"), std::wstring::npos);
    EXPECT_EQ(parser.GetAttributeRestriction(L"Antecedent"), nullptr);
}

TEST(CWomWQLParser, StillFindsTheClassOfAQueryThatItCannotRead)
{
    struct Case
    {
        const wchar_t* query;
        const wchar_t* className;
    };
    for (const Case& row :
         {Case{L"SELECT * FROM Zarn_Assoc WHERE", L"Zarn_Assoc"},
          Case{L"select a from\tZarn_Assoc  group within 5", L"Zarn_Assoc"}, Case{L"SELECT * FROM", L""},
          Case{L"SELECT * FROM 5 WHERE x", L""}, Case{L"", L""}, Case{L"nonsense", L""}})
    {
        CWomWQLParser parser;
        EXPECT_EQ(Hex{parser.Parse(row.query)}, Hex{WBEM_E_INVALID_QUERY}) << Narrow(row.query);
        EXPECT_EQ(parser.ClassName(), row.className) << Narrow(row.query);
    }
}

TEST(CWomWQLParser, RefusesQueriesThatDoNotSelectInstances)
{
    for (const wchar_t* query :
         {L"ASSOCIATORS OF {C.A=\"1\"}", L"REFERENCES OF {C.A=\"1\"}", L"SELECT * FROM meta_class"})
    {
        CWomWQLParser parser;
        EXPECT_EQ(Hex{parser.Parse(query)}, Hex{WBEM_E_INVALID_QUERY}) << Narrow(query);
        EXPECT_EQ(parser.FailureText(), L"only the instances of a class can be queried here");
        EXPECT_EQ(parser.ClassName(), L"");
    }
}

TEST(CWomWQLParser, RefusesANullQuery)
{
    CWomWQLParser parser;
    EXPECT_EQ(Hex{parser.Parse(nullptr)}, Hex{WBEM_E_INVALID_QUERY});
}

} // namespace
} // namespace orl::test
