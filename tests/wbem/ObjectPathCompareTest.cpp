// When two object paths name the same object.
#include "Shown.h"
#include "wbem/ObjectPath.h"

#include <gtest/gtest.h>

namespace wbem
{
namespace
{

constexpr PathComparison kExact{};
constexpr PathComparison kNumbers{.quotedNumbers = true};
constexpr PathComparison kByCase{.valuesByCase = true};
constexpr PathComparison kNested{.nestedPaths = true};

struct CompareRow
{
    std::wstring_view left;
    std::wstring_view right;
    PathComparison how;
    bool same;
};

constexpr CompareRow kRows[] = {
    {LR"(C.a="x",b=1)", LR"(c.B=1,A="X")", kExact, true},
    {LR"(C.a="x",b=1)", LR"(C.a="x")", kExact, false},
    {LR"(C.a="x")", LR"(C.a="y")", kExact, false},
    {LR"(C.a="x")", LR"(D.a="x")", kExact, false},
    {LR"(C.a="x")", LR"(C.b="x")", kExact, false},
    {LR"(C.a=1,b=2)", LR"(C.a=2,b=1)", kExact, false},
    {LR"(C)", LR"(c)", kExact, true},
    {LR"(C)", LR"(C=@)", kExact, false},
    {LR"(C=@)", LR"(c=@)", kExact, true},
    {LR"(C=@)", LR"(C="@")", kExact, false},
    // The single key without a name.
    {LR"(C="x")", LR"(C.Id="X")", kExact, true},
    {LR"(C="x")", LR"(C.Id="x",b=1)", kExact, false},
    {LR"(C="x")", LR"(C="x")", kExact, true},
    // Case of values.
    {LR"(C.a="x")", LR"(C.a="X")", kByCase, false},
    {LR"(C.a="x")", LR"(c.A="x")", kByCase, true},
    // Numbers.
    {LR"(C.a=5)", LR"(C.a=0x5)", kExact, true},
    {LR"(C.a=5)", LR"(C.a="5")", kExact, false},
    {LR"(C.a=5)", LR"(C.a="5")", kNumbers, true},
    {LR"(C.a=TRUE)", LR"(C.a="true")", kNumbers, true},
    {LR"(C.a=TRUE)", LR"(C.a="true")", kExact, false},
    {LR"(C.a="0010")", LR"(C.a="10")", kNumbers, false},
    {LR"(C.a=18446744073709551615)", LR"(C.a="18446744073709551615")", kNumbers, true},
    // Server and namespace, where both have them.
    {LR"(\\h\root\KESTA:C)", LR"(C)", kExact, true},
    {LR"(\\h\root\KESTA:C)", LR"(ROOT/kesta:C)", kExact, true},
    {LR"(\\h\root\KESTA:C)", LR"(\\H\root\KESTA:C)", kExact, true},
    {LR"(\\h\root\KESTA:C)", LR"(\\g\root\KESTA:C)", kExact, false},
    {LR"(\\h\root\KESTA:C)", LR"(\\.\root\KESTA:C)", kExact, true},
    {LR"(root\KESTA:C)", LR"(root:C)", kExact, false},
    // Paths inside values.
    {LR"(A.x="C.a=\"1\",b=2")", LR"(A.x="c.B=2,A=\"1\"")", kExact, false},
    {LR"(A.x="C.a=\"1\",b=2")", LR"(A.x="c.B=2,A=\"1\"")", kNested, true},
    {LR"(A.x="\\\\.\\root:C.a=\"1\"")", LR"(A.x='C.a="1"')", kNested, true},
    {LR"(A.x="C.a=\"1\"")", LR"(A.x="C.a=1")", kNested, false},
    {LR"(A.x="C.a=1")", LR"(A.x="C.a=2")", kNested, false},
    {LR"(A.x="no = path")", LR"(A.x="no = path")", kNested, true},
    // Values that could be taken for several keys are not.
    {LR"(C.a="1\",b=\"2")", LR"(C.a="1",b="2")", kExact, false},
};

TEST(ObjectPathCompare, SameObjectByTheRulesAsked)
{
    for (const CompareRow& row : kRows)
    {
        SCOPED_TRACE(Utf8(row.left) + " and " + Utf8(row.right));
        const auto left = ObjectPath::Parse(row.left);
        const auto right = ObjectPath::Parse(row.right);
        ASSERT_TRUE(left && right);
        EXPECT_EQ(SameObject(*left, *right, row.how), row.same);
        EXPECT_EQ(SameObject(*right, *left, row.how), row.same);
        EXPECT_TRUE(SameObject(*left, *left, row.how));
        const bool located = !left->namespaces.empty() && !right->namespaces.empty();
        const bool unnamed = left->FindKey(L"") || right->FindKey(L"");
        if (!located && !unnamed)
        {
            EXPECT_EQ(IdentityText(*left, row.how) == IdentityText(*right, row.how), row.same);
        }
    }
}

TEST(ObjectPathCompare, IdentityTextIsFoldedAndSorted)
{
    const auto path = ObjectPath::Parse(LR"(\\h\root:Class.b=0x10,A="Text")");
    EXPECT_EQ(Utf8(IdentityText(*path)), R"(class.a="text",b=16)");
    EXPECT_EQ(Utf8(IdentityText(*path, kNumbers)), R"(class.a="text",b="16")");
    EXPECT_EQ(Utf8(IdentityText(*path, kByCase)), R"(class.a="Text",b=16)");
    EXPECT_EQ(Utf8(IdentityText(*ObjectPath::Parse(L"Class=@"))), "class=@");
}

TEST(ObjectPathCompare, NestingOfPathsInPathsEnds)
{
    ObjectPath path = *ObjectPath::Parse(L"C.a=1");
    while (path.Text().size() < 20000)
    {
        ObjectPath outer;
        outer.className = L"A";
        outer.keys.push_back({L"x", CimValue::String(path.Text())});
        path = outer;
    }
    EXPECT_TRUE(SameObject(path, path, kNested));
}

TEST(ObjectPathCompare, NamespacesCompareWithoutCaseAndSlash)
{
    EXPECT_TRUE(SameNamespace(L"root/KESTA", L"ROOT\\kesta"));
    EXPECT_TRUE(SameNamespace(L"\\\\.\\root\\KESTA", L"root/KESTA"));
    EXPECT_TRUE(SameNamespace(L"root", L"\\root"));
    EXPECT_FALSE(SameNamespace(L"root", L"root/KESTA"));
    EXPECT_FALSE(SameNamespace(L"\\\\g\\root", L"\\\\h\\root"));
    EXPECT_FALSE(SameNamespace(L"", L""));
}

} // namespace
} // namespace wbem
