// WQL: what is read, canonical text, and what a query demands.
#include "Shown.h"
#include "wbem/Wql.h"

#include <gtest/gtest.h>

namespace wbem
{
namespace
{

// The canonical text, or "! " and the error.
std::string Canonical(std::wstring_view text)
{
    const auto query = WqlQuery::Parse(text);
    return query ? Utf8(query->Text()) : "! " + Shown(query.Error());
}

WqlQuery Read(std::wstring_view text)
{
    auto query = WqlQuery::Parse(text);
    EXPECT_TRUE(query) << Shown(query.Error());
    return query ? *std::move(query) : WqlQuery();
}

struct QueryRow
{
    std::wstring_view text;
    std::string canonical;
};

TEST(WqlParse, DataQueriesAreReadAndPrinted)
{
    const QueryRow rows[] = {
        {LR"(SELECT * FROM Zarn_FCOEHBA)", R"(SELECT * FROM Zarn_FCOEHBA)"},
        {L"  select\t*\r\nfrom Zarn_FCOEHBA  ", R"(SELECT * FROM Zarn_FCOEHBA)"},
        {LR"(SELECT DeviceID,Name FROM C)", R"(SELECT DeviceID, Name FROM C)"},
        {LR"(SELECT Name, NAME, Id FROM C)", R"(SELECT Name, Id FROM C)"},
        {LR"(SELECT __PATH, a.b FROM C)", R"(SELECT __PATH, a.b FROM C)"},
        {LR"(SELECT * FROM meta_class WHERE __this ISA "Zarn_X")",
         R"(SELECT * FROM meta_class WHERE __this ISA "Zarn_X")"},
        {LR"(SELECT * FROM meta_class WHERE __Class = 'X')", R"(SELECT * FROM meta_class WHERE __Class = "X")"},
        {LR"(SELECT * FROM C WHERE a=1)", R"(SELECT * FROM C WHERE a = 1)"},
        {LR"(SELECT * FROM C WHERE a = "x")", R"(SELECT * FROM C WHERE a = "x")"},
        {LR"(SELECT * FROM C WHERE a = 'it"s')", R"(SELECT * FROM C WHERE a = "it\"s")"},
        {LR"(SELECT * FROM C WHERE a = "it's")", R"(SELECT * FROM C WHERE a = "it's")"},
        {LR"(SELECT * FROM C WHERE a <> 1 AND b != 2)", R"(SELECT * FROM C WHERE a <> 1 AND b <> 2)"},
        {LR"(SELECT * FROM C WHERE a<1 AND b<=2 AND c>3 AND d>=4)",
         R"(SELECT * FROM C WHERE a < 1 AND b <= 2 AND c > 3 AND d >= 4)"},
        {LR"(SELECT * FROM C WHERE 1<a AND 2<=b AND 3>c AND 4>=d AND 5=e AND 6<>f)",
         R"(SELECT * FROM C WHERE a > 1 AND b >= 2 AND c < 3 AND d <= 4 AND e = 5 AND f <> 6)"},
        {LR"(SELECT * FROM C WHERE a = b)", R"(SELECT * FROM C WHERE a = b)"},
        {LR"(SELECT * FROM C WHERE a = TRUE OR b = false)", R"(SELECT * FROM C WHERE a = TRUE OR b = FALSE)"},
        {LR"(SELECT * FROM C WHERE a = -5 OR a = +5 OR a = 0x1F)",
         R"(SELECT * FROM C WHERE a = -5 OR a = 5 OR a = 31)"},
        {LR"(SELECT * FROM C WHERE a = 18446744073709551615)", R"(SELECT * FROM C WHERE a = 18446744073709551615)"},
        {LR"(SELECT * FROM C WHERE a > 1.50 AND a < .5 AND a <> 1e3)",
         R"(SELECT * FROM C WHERE a > 1.5 AND a < 0.5 AND a <> 1000.0)"},
        {LR"(SELECT * FROM C WHERE a = NULL OR b <> NULL OR NULL = c)",
         R"(SELECT * FROM C WHERE a IS NULL OR b IS NOT NULL OR c IS NULL)"},
        {LR"(SELECT * FROM C WHERE a IS NULL AND b is not null)",
         R"(SELECT * FROM C WHERE a IS NULL AND b IS NOT NULL)"},
        {LR"(SELECT * FROM C WHERE a LIKE "eth%" AND b NOT LIKE '[a-c]_')",
         R"(SELECT * FROM C WHERE a LIKE "eth%" AND b NOT LIKE "[a-c]_")"},
        {LR"(SELECT * FROM C WHERE TargetInstance ISA Zarn_X AND TargetInstance.Name = "n")",
         R"(SELECT * FROM C WHERE TargetInstance ISA "Zarn_X" AND TargetInstance.Name = "n")"},
        {LR"(SELECT * FROM C WHERE Größe = "ß")", R"(SELECT * FROM C WHERE Größe = "ß")"},
        // Escapes as in object paths.
        {LR"(SELECT * FROM C WHERE a = "PCI\VEN" AND b = "a\\b" AND c = "\"")",
         R"(SELECT * FROM C WHERE a = "PCI\\VEN" AND b = "a\\b" AND c = "\"")"},
        {LR"(SELECT * FROM A WHERE Antecedent = "Zarn_FCOEHBA.DeviceID=\"eth0\"")",
         R"(SELECT * FROM A WHERE Antecedent = "Zarn_FCOEHBA.DeviceID=\"eth0\"")"},
        // What binds: NOT before AND before OR.
        {LR"(SELECT * FROM C WHERE a=1 OR b=2 AND c=3)", R"(SELECT * FROM C WHERE a = 1 OR b = 2 AND c = 3)"},
        {LR"(SELECT * FROM C WHERE (a=1 OR b=2) AND c=3)", R"(SELECT * FROM C WHERE (a = 1 OR b = 2) AND c = 3)"},
        {LR"(SELECT * FROM C WHERE a=1 AND (b=2 AND c=3))", R"(SELECT * FROM C WHERE a = 1 AND b = 2 AND c = 3)"},
        {LR"(SELECT * FROM C WHERE ((a=1) OR ((b=2 OR c=3))))", R"(SELECT * FROM C WHERE a = 1 OR b = 2 OR c = 3)"},
        {LR"(SELECT * FROM C WHERE NOT a=1 AND b=2)", R"(SELECT * FROM C WHERE NOT a = 1 AND b = 2)"},
        {LR"(SELECT * FROM C WHERE NOT (a=1 AND b=2))", R"(SELECT * FROM C WHERE NOT (a = 1 AND b = 2))"},
        {LR"(SELECT * FROM C WHERE NOT (a=1 OR b=2))", R"(SELECT * FROM C WHERE NOT (a = 1 OR b = 2))"},
        {LR"(SELECT * FROM C WHERE NOT NOT (a=1))", R"(SELECT * FROM C WHERE NOT NOT a = 1)"},
        {LR"(SELECT * FROM C WHERE NOT a LIKE "x")", R"(SELECT * FROM C WHERE NOT a LIKE "x")"},
    };
    for (const QueryRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.text));
        EXPECT_EQ(Canonical(row.text), row.canonical);
        EXPECT_EQ(Read(Read(row.text).Text()), Read(row.text)) << "the canonical text reads back to the same query";
    }
}

TEST(WqlParse, AssociationQueriesAreReadAndPrinted)
{
    const QueryRow rows[] = {
        {LR"(ASSOCIATORS OF {Zarn_FCOEHBA.DeviceID="eth0"})", R"(ASSOCIATORS OF {Zarn_FCOEHBA.DeviceID="eth0"})"},
        {LR"(associators of { C.a="1" } where classdefsonly)", R"(ASSOCIATORS OF {C.a="1"} WHERE ClassDefsOnly)"},
        {LR"(ASSOCIATORS OF {C.a="}"} WHERE ResultClass = D)", R"(ASSOCIATORS OF {C.a="}"} WHERE ResultClass = D)"},
        {LR"(ASSOCIATORS OF {C.a="x\"}"})", R"(ASSOCIATORS OF {C.a="x\"}"})"},
        {LR"(ASSOCIATORS OF {//h/root/KESTA:C=@})", R"(ASSOCIATORS OF {//h/root/KESTA:C=@})"},
        {LR"(ASSOCIATORS OF {C} WHERE SchemaOnly)", R"(ASSOCIATORS OF {C} WHERE SchemaOnly)"},
        {LR"(ASSOCIATORS OF {C=1} WHERE KeysOnly Role=r ResultRole=s AssocClass="A" ResultClass='B' RequiredQualifier=q RequiredAssocQualifier=p)",
         R"(ASSOCIATORS OF {C=1} WHERE AssocClass = A ResultClass = B ResultRole = s Role = r RequiredQualifier = q RequiredAssocQualifier = p KeysOnly)"},
        {LR"(REFERENCES OF {C=1})", R"(REFERENCES OF {C=1})"},
        {LR"(references of {C=1} WHERE ResultClass=A Role=r RequiredQualifier=q ClassDefsOnly KeysOnly)",
         R"(REFERENCES OF {C=1} WHERE ResultClass = A Role = r RequiredQualifier = q ClassDefsOnly KeysOnly)"},
    };
    for (const QueryRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.text));
        EXPECT_EQ(Canonical(row.text), row.canonical);
        EXPECT_EQ(Read(Read(row.text).Text()), Read(row.text));
    }
}

TEST(WqlParse, AnAssociationQueryHasItsObjectParsed)
{
    const WqlQuery query = Read(LR"(ASSOCIATORS OF { root/KESTA:C.a="x\"}",b=5 } WHERE AssocClass=A KeysOnly)");
    EXPECT_EQ(query.kind, WqlKind::Associators);
    EXPECT_EQ(Shown(query.object), R"(root\KESTA:C | a=string "x\"}" | b=sint32 5)");
    EXPECT_EQ(query.objectText, LR"(root/KESTA:C.a="x\"}",b=5)");
    EXPECT_EQ(query.assocClass, L"A");
    EXPECT_EQ(query.resultClass, L"");
    EXPECT_TRUE(query.keysOnly);
    EXPECT_FALSE(query.classDefsOnly);
    EXPECT_FALSE(query.IsSchemaQuery());
    EXPECT_FALSE(query.SelectsAll());
    EXPECT_EQ(Read(L"REFERENCES OF {C=1}").kind, WqlKind::References);
    EXPECT_TRUE(Read(L"REFERENCES OF {C} WHERE SchemaOnly").IsSchemaQuery());
}

TEST(WqlParse, ASelectHasItsListItsClassAndItsTests)
{
    const WqlQuery query = Read(LR"(SELECT b, a FROM C WHERE Name LIKE "x%" OR 5 > id AND NAME <> "y" AND c = d)");
    EXPECT_EQ(query.selected, (std::vector<std::wstring>{L"b", L"a"}));
    EXPECT_EQ(query.className, L"C");
    EXPECT_EQ(query.testedProperties, (std::vector<std::wstring>{L"Name", L"id", L"c", L"d"}));
    EXPECT_FALSE(query.SelectsAll());
    EXPECT_FALSE(query.IsSchemaQuery());
    ASSERT_TRUE(query.where);
    ASSERT_EQ(query.where->kind, WqlCondition::Kind::Or);
    ASSERT_EQ(query.where->operands.size(), 2u);
    EXPECT_EQ(query.where->operands[0].test.op, WqlOperator::Like);
    const WqlCondition& conjunction = query.where->operands[1];
    ASSERT_EQ(conjunction.operands.size(), 3u);
    EXPECT_EQ(conjunction.operands[0].test.property, (WqlProperty{L"id", 1}));
    EXPECT_EQ(conjunction.operands[0].test.op, WqlOperator::Less);
    EXPECT_EQ(conjunction.operands[1].test.property, (WqlProperty{L"NAME", 0})) << "the same property as Name";
    EXPECT_EQ(conjunction.operands[2].test.other, (WqlProperty{L"d", 3}));

    EXPECT_TRUE(Read(L"SELECT * FROM C").SelectsAll());
    EXPECT_TRUE(Read(L"SELECT * FROM Meta_Class").IsSchemaQuery());
    EXPECT_FALSE(Read(L"SELECT * FROM C").where);
}

struct RequiredRow
{
    std::wstring_view where;
    std::string value; // of the property a; "" for none
};

TEST(WqlParse, RequiredValueIsThatOfAnUnconditionalConjunct)
{
    const RequiredRow rows[] = {
        {LR"(a = "x")", R"(string "x")"},
        {LR"(A = "x")", R"(string "x")"},
        {LR"("x" = a)", R"(string "x")"},
        {LR"(a = 5)", R"(sint32 5)"},
        {LR"(((a = "x")))", R"(string "x")"},
        {LR"(b = 1 AND a = "x")", R"(string "x")"},
        {LR"(b = 1 AND (c = 2 AND (a = "x")))", R"(string "x")"},
        {LR"(a = "x" AND (b = 1 OR c = 2))", R"(string "x")"},
        {LR"(a = "x" AND NOT b = 1)", R"(string "x")"},
        {LR"(a = "x" AND a = "y")", R"(string "x")"},
        {LR"(a LIKE "x" AND a = "y")", R"(string "y")"},
        {LR"(a = "x" OR b = 1)", ""},
        {LR"(a = "x" OR a = "x")", ""},
        {LR"(b = 1 AND (a = "x" OR c = 2))", ""},
        {LR"(NOT a = "x")", ""},
        {LR"(NOT NOT a = "x")", ""},
        {LR"(NOT (a = "x" AND b = 1))", ""},
        {LR"(a <> "x")", ""},
        {LR"(a >= "x" AND a <= "x")", ""},
        {LR"(a LIKE "x")", ""},
        {LR"(a = b)", ""},
        {LR"(a = NULL)", ""},
        {LR"(a IS NULL)", ""},
        {LR"(a ISA "x")", ""},
        {LR"(b = 1)", ""},
        {LR"(x.a = 1)", ""},
    };
    for (const RequiredRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.where));
        const WqlQuery query = Read(L"SELECT * FROM C WHERE " + std::wstring(row.where));
        const CimValue* value = query.RequiredValue(L"a");
        EXPECT_EQ(value ? Shown(*value) : "", row.value);
    }
    EXPECT_EQ(Read(L"SELECT * FROM C").RequiredValue(L"a"), nullptr);
}

} // namespace
} // namespace wbem
