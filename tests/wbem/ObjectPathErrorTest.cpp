// Object paths that are none: the whole message for each.
#include "Shown.h"
#include "wbem/ObjectPath.h"

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

TEST(ObjectPathError, EveryMalformedPathIsRefusedWithReasonAndPlace)
{
    const ErrorRow rows[] = {
        {L"", "the path is empty, at character 1"},
        {L"  ", "the path is empty, at character 1"},
        {LR"(\\)", "a server name is expected, at character 3"},
        {LR"(\\\root:C)", "a server name is expected, at character 3"},
        {LR"(\\host)", "a slash and a namespace are expected after the server, at character 7"},
        {LR"(\\ho st\root:C)", "a slash and a namespace are expected after the server, at character 5"},
        {LR"(\\host\)", "a namespace is expected, at character 8"},
        {LR"(\\host\:C)", "a namespace is expected, at character 8"},
        {LR"(\)", "a namespace is expected, at character 2"},
        {LR"(root\\KESTA:C)", "a namespace is expected, at character 6"},
        {LR"(root\KESTA:)", "a class name is expected, at character 12"},
        {LR"(root\KESTA:5)", "a class name is expected, at character 12"},
        {LR"(root\KE-STA:C)", "a slash, a ':' or the end of the path is expected, at character 8"},
        {LR"(root\KESTA.a=1)", "a slash, a ':' or the end of the path is expected, at character 11"},
        {LR"(:C)", "a namespace is expected, at character 1"},
        {LR"(5)", "a class name is expected, at character 1"},
        {LR"(.a=1)", "a class name is expected, at character 1"},
        {LR"("C")", "a class name is expected, at character 1"},
        {LR"(C D)", "a '.', a '=' or the end of the path is expected after the class, at character 3"},
        {LR"(C:D:E)", "a '.', a '=' or the end of the path is expected after the class, at character 4"},
        {LR"(C;)", "a '.', a '=' or the end of the path is expected after the class, at character 2"},
        {LR"(C.)", "a key name is expected, at character 3"},
        {LR"(C.=1)", "a key name is expected, at character 3"},
        {LR"(C."x")", "a key name is expected, at character 3"},
        {LR"(C.a)", "a '=' is expected after the key \"a\", at character 4"},
        {LR"(C.a b=1)", "a '=' is expected after the key \"a\", at character 5"},
        {LR"(C.a.b=1)", "a '=' is expected after the key \"a\", at character 4"},
        {LR"(C=)", "a value is expected, at character 3"},
        {LR"(C.a=)", "a value is expected, at character 5"},
        {LR"(C.a=,b=1)", "a value is expected, at character 5"},
        {LR"(C.a=1,)", "a key name is expected, at character 7"},
        {LR"(C.a=1,,b=2)", "a key name is expected, at character 7"},
        {LR"(C.a=1 b=2)", "a ',' or the end of the path is expected after the value, at character 7"},
        {LR"(C.a="x"y)", "a ',' or the end of the path is expected after the value, at character 8"},
        {LR"(C.a="x";)", "a ',' or the end of the path is expected after the value, at character 8"},
        {LR"(C="x",b=1)", "the end of the path is expected after the value, at character 6"},
        {LR"(C=1,2)", "the end of the path is expected after the value, at character 4"},
        {LR"(C=@@)", "the end of the path is expected after '=@', at character 4"},
        {LR"(C=@,a=1)", "the end of the path is expected after '=@', at character 4"},
        {LR"(C.a=@)", "the value @ is neither quoted nor an integer nor TRUE or FALSE, at character 5"},
        {LR"(C.a=word)", "the value word is neither quoted nor an integer nor TRUE or FALSE, at character 5"},
        {LR"(C.a=1.5)", "the value 1.5 is neither quoted nor an integer nor TRUE or FALSE, at character 5"},
        {LR"(C.a=0x)", "the value 0x is neither quoted nor an integer nor TRUE or FALSE, at character 5"},
        {LR"(C.a=NULL)", "the value NULL is neither quoted nor an integer nor TRUE or FALSE, at character 5"},
        {LR"(C.a=D.b="1")", "the value D.b=\"1\" is neither quoted nor an integer nor TRUE or FALSE, at character 5"},
        {LR"(C.a=18446744073709551616)", "the number 18446744073709551616 does not fit 64 bits, at character 5"},
        {LR"(C.a=-9223372036854775809)", "the number -9223372036854775809 does not fit 64 bits, at character 5"},
        {LR"(C.a="x)", "the quoted value is not closed, at character 5"},
        {LR"(C.a=")", "the quoted value is not closed, at character 5"},
        {LR"(C.a='x")", "the quoted value is not closed, at character 5"},
        {LR"(C.a="x\")", "the quoted value is not closed, at character 5"},
        {LR"(C.a="x\\\")", "the quoted value is not closed, at character 5"},
        {LR"(C.a=1,b=2,A=3)", "the key \"A\" is given twice, at character 11"},
        {std::wstring(L"C.a=\"x\0y\"", 9), "a null character is no part of a path, at character 7"},
        {std::wstring(L"C\0", 2), "a null character is no part of a path, at character 2"},
        {L"C.a=" + std::wstring(100, L'9'),
         "the number " + std::string(60, '9') + "... does not fit 64 bits, at character 5"},
        {std::wstring(kMaxPathLength + 1, L'C'), "the path is longer than 65536 characters, at character 65537"},
    };
    for (const ErrorRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.text.substr(0, 100)));
        const auto path = ObjectPath::Parse(row.text);
        ASSERT_FALSE(path) << Shown(*path);
        EXPECT_EQ(Shown(path.Error()), row.message);
        EXPECT_LE(path.Error().position, row.text.size());
    }
}

TEST(ObjectPathError, MoreKeysThanAPathMayHaveAreRefused)
{
    std::wstring text = L"C";
    for (std::size_t i = 0; i < kMaxPathKeys; ++i)
        text += (i == 0 ? L"." : L",") + (L"k" + std::to_wstring(i)) + L"=1";
    EXPECT_TRUE(ObjectPath::Parse(text));
    const auto path = ObjectPath::Parse(text + L",more=1");
    ASSERT_FALSE(path);
    EXPECT_EQ(Utf8(path.Error().reason), "the path has more than 256 keys");
    EXPECT_EQ(path.Error().position, text.size() + 1);
}

TEST(ObjectPathError, EveryBeginningOfAPathIsReadOrRefused)
{
    const std::wstring text = LR"(\\host\root\KESTA:A.x="C.a=\"q\\\"q\"",b=-0x1F,c=TRUE,d='\'')";
    std::size_t read = 0;
    for (std::size_t length = 0; length <= text.size(); ++length)
    {
        const auto path = ObjectPath::Parse(text.substr(0, length));
        if (path)
            ++read;
        else
            EXPECT_LE(path.Error().position, length);
    }
    EXPECT_GT(read, 10u);
    EXPECT_LT(read, text.size() - 10);
}

TEST(ObjectPathError, TheLongestPathsTakeNoTime)
{
    const auto start = std::chrono::steady_clock::now();
    const std::wstring evil[] = {
        L"C.a=\"" + std::wstring(65000, L'\\'), std::wstring(65000, L'\\'),       std::wstring(65000, L'/') + L"C",
        L"C.a=" + std::wstring(65000, L'"'),    L"C" + std::wstring(65000, L'.'), std::wstring(65000, L'\''),
        L"C.a=" + std::wstring(65000, L'-'),
    };
    for (const std::wstring& text : evil)
        EXPECT_FALSE(ObjectPath::Parse(text)) << Utf8(text.substr(0, 20));
    EXPECT_TRUE(ObjectPath::Parse(L"a" + std::wstring(65000, L'b')));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1) * ORL_TEST_SLOWDOWN);
}

} // namespace
} // namespace wbem
