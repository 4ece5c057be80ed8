// WQL that is none: the whole message for each.
#include "Shown.h"
#include "wbem/Wql.h"

#include <gtest/gtest.h>

#include <chrono>

namespace wbem
{
namespace
{

struct ErrorRow
{
    std::wstring text;
    std::string message;
};

std::wstring Repeat(std::wstring_view text, std::size_t times)
{
    std::wstring all;
    while (times-- > 0)
        all += text;
    return all;
}

TEST(WqlError, EveryMalformedQueryIsRefusedWithReasonAndPlace)
{
    const ErrorRow rows[] = {
        {L"", "the query is empty, at character 1"},
        {L"  ", "the query is empty, at character 3"},
        {L"UPDATE C", "SELECT, ASSOCIATORS OF or REFERENCES OF is expected, at character 1"},
        {L"'SELECT'", "SELECT, ASSOCIATORS OF or REFERENCES OF is expected, at character 1"},
        {L"SELECT", "a property name is expected, at character 7"},
        {L"SELECT FROM C", "a property name is expected, at character 8"},
        {L"SELECT * C", "FROM is expected, at character 10"},
        {L"SELECT *, a FROM C", "FROM is expected, at character 9"},
        {L"SELECT a b FROM C", "a ',' or FROM is expected, at character 10"},
        {L"SELECT a, FROM C", "a property name is expected, at character 11"},
        {L"SELECT a. FROM C", "a property name is expected, at character 11"},
        {L"SELECT 5 FROM C", "a property name is expected, at character 8"},
        {L"SELECT * FROM", "a class name is expected, at character 14"},
        {L"SELECT * FROM 5", "a class name is expected, at character 15"},
        {L"SELECT * FROM WHERE a = 1", "a class name is expected, at character 15"},
        {L"SELECT * FROM C D", "WHERE or the end of the query is expected, at character 17"},
        {L"SELECT * FROM C WITHIN 5", "WHERE or the end of the query is expected, at character 17"},
        {L"SELECT * FROM C;", "';' is no part of a query, at character 16"},
        {L"SELECT * FROM C WHERE", "a property or a value is expected, at character 22"},
        {L"SELECT * FROM C WHERE a", "an operator is expected, at character 24"},
        {L"SELECT * FROM C WHERE a 5", "an operator is expected, at character 25"},
        {L"SELECT * FROM C WHERE a ( 5", "an operator is expected, at character 25"},
        {L"SELECT * FROM C WHERE a =", "a property or a value is expected, at character 26"},
        {L"SELECT * FROM C WHERE = 5", "a property or a value is expected, at character 23"},
        {L"SELECT * FROM C WHERE a == 5", "a property or a value is expected, at character 26"},
        {L"SELECT * FROM C WHERE a = 5 b = 6", "the end of the query is expected, at character 29"},
        {L"SELECT * FROM C WHERE a = 5 AND", "a property or a value is expected, at character 32"},
        {L"SELECT * FROM C WHERE a = 5 OR OR b = 6", "a property or a value is expected, at character 32"},
        {L"SELECT * FROM C WHERE AND a = 5", "a property or a value is expected, at character 23"},
        {L"SELECT * FROM C WHERE NOT", "a property or a value is expected, at character 26"},
        {L"SELECT * FROM C WHERE ()", "a property or a value is expected, at character 24"},
        {L"SELECT * FROM C WHERE (a = 5", "a ')' is expected for the '(' at character 23, at character 29"},
        {L"SELECT * FROM C WHERE a = 5)", "the end of the query is expected, at character 28"},
        {L"SELECT * FROM C WHERE 5 = 6", "one side of a comparison must be a property, at character 23"},
        {L"SELECT * FROM C WHERE TRUE", "an operator is expected, at character 27"},
        {L"SELECT * FROM C WHERE a < NULL", "NULL is neither less nor greater than anything, at character 25"},
        {L"SELECT * FROM C WHERE a LIKE 5", "a quoted pattern is expected after LIKE, at character 30"},
        {L"SELECT * FROM C WHERE a LIKE b", "a quoted pattern is expected after LIKE, at character 30"},
        {L"SELECT * FROM C WHERE 'x' LIKE 'x'", "a property is expected on the left of LIKE, at character 23"},
        {L"SELECT * FROM C WHERE 5 is null", "a property is expected on the left of IS, at character 23"},
        {L"SELECT * FROM C WHERE a NOT = 5", "LIKE is expected, at character 29"},
        {L"SELECT * FROM C WHERE a IS 5", "NULL is expected, at character 28"},
        {L"SELECT * FROM C WHERE a IS NOT", "NULL is expected, at character 31"},
        {L"SELECT * FROM C WHERE a ISA 5", "a class name is expected after ISA, at character 29"},
        {L"SELECT * FROM C WHERE a ISA 'x y'", "a class name is expected after ISA, at character 29"},
        {L"SELECT * FROM C WHERE a = 'x", "the quoted text is not closed, at character 27"},
        {L"SELECT * FROM C WHERE a = \"x\\\"", "the quoted text is not closed, at character 27"},
        {L"SELECT * FROM C WHERE a = 12ab", "12ab is not a number, at character 27"},
        {L"SELECT * FROM C WHERE a = 0x", "0x is not a number, at character 27"},
        {L"SELECT * FROM C WHERE a = 1.2.3", "1.2.3 is not a number, at character 27"},
        {L"SELECT * FROM C WHERE a = -", "- is not a number, at character 27"},
        {L"SELECT * FROM C WHERE a = 18446744073709551616",
         "the number 18446744073709551616 does not fit 64 bits, at character 27"},
        {L"SELECT * FROM C WHERE a = 1e999", "the number 1e999 does not fit 64 bits, at character 27"},
        {L"SELECT * FROM C WHERE a = #", "'#' is no part of a query, at character 27"},
        {L"SELECT * FROM C WHERE a ! b", "'!' is no part of a query, at character 25"},
        {L"SELECT * FROM C WHERE a \x01 b", "a control character is no part of a query, at character 25"},
        {std::wstring(L"SELECT * FROM C\0", 16), "a null character is no part of a query, at character 16"},
        {L"ASSOCIATORS", "OF is expected, at character 12"},
        {L"ASSOCIATORS OF", "an object path in braces is expected, at character 15"},
        {L"ASSOCIATORS OF C", "an object path in braces is expected, at character 16"},
        {L"ASSOCIATORS OF {C", "a '}' is missing, at character 16"},
        {L"ASSOCIATORS OF {C='x}", "the quoted value is not closed, at character 19"},
        {L"ASSOCIATORS OF {}", "the path is empty, at character 17"},
        {L"ASSOCIATORS OF {  C.a= }", "a value is expected, at character 23"},
        {L"ASSOCIATORS OF {root\\KESTA}", "the path of a class or an instance is expected, at character 17"},
        {L"ASSOCIATORS OF {C} AssocClass=A", "WHERE or the end of the query is expected, at character 20"},
        {L"ASSOCIATORS OF {C} WHERE", "a keyword of an association query is expected, at character 25"},
        {L"ASSOCIATORS OF {C} WHERE a = 5", "a is not a keyword of an association query, at character 26"},
        {L"ASSOCIATORS OF {C} WHERE KeysOnly AND Role = r",
         "AND is not a keyword of an association query, at character 35"},
        {L"ASSOCIATORS OF {C} WHERE AssocClass A", "a '=' is expected after AssocClass, at character 37"},
        {L"ASSOCIATORS OF {C} WHERE AssocClass =", "a name is expected after AssocClass, at character 38"},
        {L"ASSOCIATORS OF {C} WHERE Role = 5", "a name is expected after Role, at character 33"},
        {L"ASSOCIATORS OF {C} WHERE Role = r role = s", "Role is given twice, at character 35"},
        {L"ASSOCIATORS OF {C} WHERE KeysOnly KeysOnly", "KeysOnly is given twice, at character 35"},
        {L"REFERENCES OF {C} WHERE AssocClass = A", "AssocClass does not belong to REFERENCES OF, at character 25"},
        {L"REFERENCES OF {C} WHERE ResultRole = r", "ResultRole does not belong to REFERENCES OF, at character 25"},
        {std::wstring(kMaxQueryLength + 1, L' '), "the query is longer than 262144 characters, at character 262145"},
        {L"SELECT * FROM C WHERE a LIKE '" + std::wstring(kMaxLikePattern + 1, L'%') + L"'",
         "the pattern is longer than 4096 characters, at character 30"},
        {L"SELECT * FROM C WHERE " + Repeat(L"(", 202) + L"a=1",
         "the WHERE clause is nested deeper than 200 levels, at character 224"},
        {L"SELECT * FROM C WHERE " + Repeat(L"NOT ", 202) + L"a=1",
         "the WHERE clause is nested deeper than 200 levels, at character 827"},
    };
    for (const ErrorRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.text.substr(0, 120)));
        const auto query = WqlQuery::Parse(row.text);
        ASSERT_FALSE(query) << Utf8(query->Text());
        EXPECT_EQ(Shown(query.Error()), row.message);
        EXPECT_LE(query.Error().position, row.text.size());
    }
}

TEST(WqlError, NestingUpToTheLimitIsRead)
{
    const std::wstring start = L"SELECT * FROM C WHERE ";
    EXPECT_TRUE(WqlQuery::Parse(start + Repeat(L"(", kMaxQueryNesting) + L"a=1" + Repeat(L")", kMaxQueryNesting)));
    EXPECT_TRUE(WqlQuery::Parse(start + Repeat(L"NOT ", kMaxQueryNesting) + L"a=1"));
    const auto deep = WqlQuery::Parse(start + Repeat(L"(a=1 OR b=2 AND NOT ", 90) + L"a=1" + Repeat(L")", 90));
    ASSERT_TRUE(deep) << Shown(deep.Error());
    EXPECT_EQ(*WqlQuery::Parse(deep->Text()), *deep);
}

TEST(WqlError, LengthsUpToTheLimitAreRead)
{
    std::wstring longest = L"SELECT * FROM C WHERE a = ''";
    longest.insert(longest.size() - 1, kMaxQueryLength - longest.size(), L'x');
    EXPECT_TRUE(WqlQuery::Parse(longest));
    EXPECT_FALSE(WqlQuery::Parse(longest + L" "));
    const std::wstring like = L"SELECT * FROM C WHERE a LIKE '";
    EXPECT_TRUE(WqlQuery::Parse(like + std::wstring(kMaxLikePattern, L'%') + L"'"));
    EXPECT_FALSE(WqlQuery::Parse(like + std::wstring(kMaxLikePattern + 1, L'%') + L"'"));
    // An association query's path has its own limit.
    const std::wstring of = L"ASSOCIATORS OF {C.a='";
    const std::wstring value(kMaxPathLength - std::wstring_view(L"C.a=''").size(), L'x');
    EXPECT_TRUE(WqlQuery::Parse(of + value + L"'}"));
    EXPECT_FALSE(WqlQuery::Parse(of + value + L"x'}"));
}

TEST(WqlError, AMillionParenthesesAreRefusedAtOnce)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(WqlQuery::Parse(L"SELECT * FROM C WHERE " + Repeat(L"(", 1000000)));
    EXPECT_FALSE(WqlQuery::Parse(L"SELECT * FROM C WHERE " + Repeat(L"(", 200000)));
    EXPECT_FALSE(WqlQuery::Parse(L"SELECT * FROM C WHERE " + Repeat(L"NOT ", 50000)));
    EXPECT_FALSE(WqlQuery::Parse(L"ASSOCIATORS OF {" + Repeat(L"{", 200000)));
    EXPECT_FALSE(WqlQuery::Parse(L"ASSOCIATORS OF {C.a=" + Repeat(L"'", 50001)));
    EXPECT_FALSE(WqlQuery::Parse(L"SELECT " + Repeat(L"a.", 100000) + L" FROM C"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1) * ORL_TEST_SLOWDOWN);
}

TEST(WqlError, LongFlatQueriesAreReadInNoTime)
{
    const auto start = std::chrono::steady_clock::now();
    const auto alternatives = WqlQuery::Parse(L"SELECT * FROM C WHERE a=1" + Repeat(L" OR b=22", 30000));
    ASSERT_TRUE(alternatives);
    EXPECT_EQ(alternatives->where->operands.size(), 30001u);
    std::wstring names = L"a0";
    for (int i = 1; i < 20000; ++i)
        names += L",a" + std::to_wstring(i);
    const auto list = WqlQuery::Parse(L"SELECT " + names + L" FROM C");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->selected.size(), 20000u);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2) * ORL_TEST_SLOWDOWN);
}

TEST(WqlError, EveryBeginningOfAQueryIsReadOrRefused)
{
    const std::wstring text =
        LR"(SELECT a.b, c FROM C WHERE (a <> 0x1F OR NOT b NOT LIKE "[^a-c]%\"") AND c IS NOT NULL AND 1.5e3 >= d)";
    std::size_t read = 0;
    for (std::size_t length = 0; length <= text.size(); ++length)
    {
        const auto query = WqlQuery::Parse(text.substr(0, length));
        if (query)
            ++read;
        else
            EXPECT_LE(query.Error().position, length);
    }
    EXPECT_EQ(read, 7u) << "up to C, to the ), to the NULL, each with and without the space behind, and the whole";
}

} // namespace
} // namespace wbem
