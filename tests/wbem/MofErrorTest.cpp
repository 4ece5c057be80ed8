// MOF that is none: file, line, column and the whole message for each.
#include "Shown.h"
#include "wbem/MofReader.h"

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

TEST(MofError, EveryMalformedTextIsRefusedWithFileLineAndColumn)
{
    const ErrorRow rows[] = {
        // Declarations.
        {L"x", "t.mof:1:1: a class, an instance, a qualifier declaration or a pragma is expected"},
        {L"class C {};;", "t.mof:1:12: a class, an instance, a qualifier declaration or a pragma is expected"},
        {L"[a] Qualifier Q : string;", "t.mof:1:5: a class or an instance is expected after the qualifiers"},
        {L"[a]", "t.mof:1:4: a class or an instance is expected after the qualifiers"},
        {L"class", "t.mof:1:6: the name of the class is expected"},
        {L"class 5 {};", "t.mof:1:7: the name of the class is expected"},
        {L"class C", "t.mof:1:8: a '{' is expected after the class \"C\""},
        {L"class C : {};", "t.mof:1:11: the name of the superclass is expected"},
        {L"class C as {};", "t.mof:1:12: an alias is expected after 'as'"},
        {L"class C as $ {};", "t.mof:1:12: an alias is expected after 'as'"},
        {L"class C as $A {}; class D as $a {};", "t.mof:1:30: the alias $a is declared twice"},
        {L"class C\n{", "t.mof:2:2: a '}' is expected at the end of the class \"C\""},
        {L"class C {}", "t.mof:1:11: a ';' is expected after the class \"C\""},
        {L"class C {}\nclass D {};", "t.mof:2:1: a ';' is expected after the class \"C\""},
        // Properties.
        {L"class C { ; };", "t.mof:1:11: a type is expected"},
        {L"class C { string; };", "t.mof:1:17: a name is expected after the type string"},
        {L"class C { string a };", "t.mof:1:20: a ';' is expected after the property \"a\""},
        {L"class C { string a b; };", "t.mof:1:20: a ';' is expected after the property \"a\""},
        {L"class C { void a; };", "t.mof:1:16: void is the result of a method and not the type of \"a\""},
        {L"class C { uint8 ref a; };", "t.mof:1:11: a reference leads to a class, not to uint8"},
        {L"class C { string a[x]; };", "t.mof:1:20: a ']' or the size of the array is expected"},
        {L"class C { string a[-1]; };", "t.mof:1:20: a ']' or the size of the array is expected"},
        {L"class C { string a[5; };", "t.mof:1:21: a ']' is expected after the size of the array"},
        {L"class C { uint8 a = ; };", "t.mof:1:21: a value is expected"},
        {L"class C { uint8 a = 256; };", "t.mof:1:21: 256 does not fit uint8"},
        {L"class C { uint8 a = \"x\"; };", "t.mof:1:21: \"x\" is not of type uint8"},
        {L"class C { uint8 a = {1}; };", "t.mof:1:21: an array of values is not of type uint8"},
        {L"class C { uint8 a[2] = {1,2,3}; };", "t.mof:1:24: 3 values do not fit an array of 2"},
        {L"class C { datetime a = \"now\"; };", "t.mof:1:24: \"now\" is not a datetime (yyyymmddhhmmss.mmmmmm+uuu)"},
        {L"class C { string a; uint8 A; };", "t.mof:1:27: the property \"A\" is given twice"},
        // Methods.
        {L"class C { void M(; };", "t.mof:1:18: a type is expected"},
        {L"class C { void M(uint8); };", "t.mof:1:23: a name is expected after the type uint8"},
        {L"class C { void M(uint8 a; };", "t.mof:1:25: a ')' is expected after the parameters of the method \"M\""},
        {L"class C { void M(uint8 a,); };", "t.mof:1:26: a type is expected"},
        {L"class C { void M() };", "t.mof:1:20: a ';' is expected after the method \"M\""},
        {L"class C { void M(void a); };", "t.mof:1:23: void is the result of a method and not the type of \"a\""},
        {L"class C { void M(); void m(); };", "t.mof:1:26: the method \"m\" is given twice"},
        {L"class C { void M(uint8 a, uint8 a); };", "t.mof:1:33: the parameter \"a\" is given twice"},
        // Qualifiers.
        {L"[] class C {};", "t.mof:1:2: the name of a qualifier is expected"},
        {L"[a,] class C {};", "t.mof:1:4: the name of a qualifier is expected"},
        {L"[a class C {};", "t.mof:1:4: a ',' or a ']' is expected after the qualifier \"a\""},
        {L"[a(] class C {};", "t.mof:1:4: a value is expected"},
        {L"[a(5] class C {};", "t.mof:1:5: a ')' is expected after the value of the qualifier \"a\""},
        {L"[a{5] class C {};", "t.mof:1:5: a ',' or a '}' is expected after a value of the array"},
        {L"[a:] class C {};", "t.mof:1:4: a flavor is expected"},
        {L"[a: Odd] class C {};", "t.mof:1:5: Odd is not a flavor"},
        {L"[a, A(5)] class C {};", "t.mof:1:5: the qualifier \"A\" is given twice"},
        {L"Qualifier", "t.mof:1:10: the name of the qualifier is expected"},
        {L"Qualifier Q;", "t.mof:1:12: a ':' is expected after the qualifier \"Q\""},
        {L"Qualifier Q : ;", "t.mof:1:15: the type of the qualifier \"Q\" is expected"},
        {L"Qualifier Q : object;", "t.mof:1:15: the type of the qualifier \"Q\" is expected"},
        {L"Qualifier Q : uint8 = 300;", "t.mof:1:23: 300 does not fit uint8"},
        {L"Qualifier Q : uint8, Odd(x);", "t.mof:1:22: Scope or Flavor is expected, once each"},
        {L"Qualifier Q : uint8, Scope(any), Scope(class);", "t.mof:1:34: Scope or Flavor is expected, once each"},
        {L"Qualifier Q : uint8, Scope any;", "t.mof:1:28: a '(' is expected"},
        {L"Qualifier Q : uint8, Scope(odd);", "t.mof:1:28: odd is not a scope"},
        {L"Qualifier Q : uint8, Flavor(Restricted ToInstance);", "t.mof:1:40: a ',' or a ')' is expected"},
        {L"Qualifier Q : uint8 Scope(any);", "t.mof:1:21: a ';' is expected after the qualifier \"Q\""},
        // Instances and values.
        {L"instance C {};", "t.mof:1:10: 'of' is expected after 'instance'"},
        {L"instance of {};", "t.mof:1:13: the class of the instance is expected"},
        {L"instance of C;", "t.mof:1:14: a '{' is expected after the instance of \"C\""},
        {L"instance of C {", "t.mof:1:16: a '}' is expected at the end of the instance of \"C\""},
        {L"instance of C {}", "t.mof:1:17: a ';' is expected after the instance of \"C\""},
        {L"instance of C { 5 = 6; };", "t.mof:1:17: the name of a property is expected"},
        {L"instance of C { a 5; };", "t.mof:1:19: a '=' is expected after the property \"a\""},
        {L"instance of C { a = ; };", "t.mof:1:21: a value is expected"},
        {L"instance of C { a = word; };", "t.mof:1:21: a value is expected"},
        {L"instance of C { a = 5 };", "t.mof:1:23: a ';' is expected after the value of the property \"a\""},
        {L"instance of C { a = 1; A = 2; };", "t.mof:1:24: the property \"A\" is given twice"},
        {L"instance of C { a = {1,}; };", "t.mof:1:24: a value is expected"},
        {L"instance of C { a = {1 2}; };", "t.mof:1:24: a ',' or a '}' is expected after a value of the array"},
        {L"instance of C { a = {{1}}; };", "t.mof:1:22: an array is no value of an array"},
        {L"instance of C { a = {1, \"x\"}; };",
         "t.mof:1:25: the values of the array are of types that do not go together"},
        {L"instance of C { a = {-1, 18446744073709551615}; };",
         "t.mof:1:26: the values of the array are of types that do not go together"},
        {L"instance of C { a = instance of D { b = 1; B = 2; }; };", "t.mof:1:44: the property \"B\" is given twice"},
        {L"instance of C { a = instance of D {", "t.mof:1:36: a '}' is expected at the end of the instance of \"D\""},
        {L"instance of C { a = $X; };", "t.mof:1:21: the alias $X is not declared"},
        {L"instance of C { a = 18446744073709551616; };",
         "t.mof:1:21: the number 18446744073709551616 does not fit 64 bits"},
        {L"instance of C { a = -9223372036854775809; };",
         "t.mof:1:21: the number -9223372036854775809 does not fit 64 bits"},
        {L"instance of C { a = 08; };", "t.mof:1:21: 08 is not a number"},
        {L"instance of C { a = 0x; };", "t.mof:1:21: 0x is not a number"},
        {L"instance of C { a = 12ab; };", "t.mof:1:21: 12ab is not a number"},
        {L"instance of C { a = 1.2.3; };", "t.mof:1:21: 1.2.3 is not a number"},
        {L"instance of C { a = -; };", "t.mof:1:21: - is not a number"},
        {L"instance of C { a = 1e999; };", "t.mof:1:21: the number 1e999 does not fit 64 bits"},
        {L"instance of C { a = ''; };", "t.mof:1:21: one character of 16 bits is expected between the quotes"},
        {L"instance of C { a = 'xy'; };", "t.mof:1:21: one character of 16 bits is expected between the quotes"},
        {L"instance of C { a = '\\xD83D\\xDE00'; };",
         "t.mof:1:21: one character of 16 bits is expected between the quotes"},
        {L"instance of C { a = \"x; };", "t.mof:1:21: the text is not closed on its line"},
        {L"instance of C { a = \"x\n\"; };", "t.mof:1:21: the text is not closed on its line"},
        {L"instance of C { a = \"x\\", "t.mof:1:21: the text is not closed on its line"},
        {L"instance of C { a = \"x\\\n\"; };", "t.mof:1:21: the text is not closed on its line"},
        {L"instance of C { a = 'x", "t.mof:1:21: the character is not closed on its line"},
        {L"instance of C { a = \"x\\q\"; };", "t.mof:1:23: '\\q' is no escape"},
        {L"instance of C { a = \"x\\xg\"; };", "t.mof:1:23: '\\x' is no escape"},
        {L"instance of C { a = \"one\"\n  \"x\\q\"; };", "t.mof:2:5: '\\q' is no escape"},
        {L"instance of C { a = " + Repeat(L"instance of D { b = ", 65) + L"1",
         "t.mof:1:1321: the value is nested deeper than 64 levels"},
        // Pragmas.
        {L"#define x", "t.mof:1:1: #define is no directive of MOF"},
        {L"# pragma x", "t.mof:1:1: # is no directive of MOF"},
        {L"#pragma", "t.mof:1:8: the name of the pragma is expected"},
        {L"#pragma x(", "t.mof:1:11: an argument of the pragma \"x\" is expected"},
        {L"#pragma x(1 2)", "t.mof:1:13: a ',' or a ')' is expected after the argument of the pragma \"x\""},
        {L"#pragma x(1,)", "t.mof:1:13: an argument of the pragma \"x\" is expected"},
        {L"#pragma namespace", "t.mof:1:1: the pragma namespace needs one namespace"},
        {L"#pragma namespace(\"a\", \"b\")", "t.mof:1:1: the pragma namespace needs one namespace"},
        {L"\n #pragma namespace(\"a b\")",
         "t.mof:2:20: \"a b\" is not a namespace: a slash or the end of the namespace is expected, at character 2"},
        {L"#pragma include", "t.mof:1:1: the pragma include needs the name of one file"},
        {L"#pragma include(\"\")", "t.mof:1:1: the pragma include needs the name of one file"},
        {L" #pragma include(\"x.mof\")", "t.mof:1:2: \"x.mof\" cannot be included here: the text has no folder"},
        // Characters.
        {L"/* never", "t.mof:1:1: the comment is not closed"},
        {L"\n  /* never *\n", "t.mof:2:3: the comment is not closed"},
        {L"/*/", "t.mof:1:1: the comment is not closed"},
        {L"class C { uint8 a @ };", "t.mof:1:19: '@' is no part of MOF"},
        {L"class / C", "t.mof:1:7: '/' is no part of MOF"},
        {L"class \x01 C", "t.mof:1:7: the control character U+0001 is no part of MOF"},
        {std::wstring(L"class \0 C", 9), "t.mof:1:7: the control character U+0000 is no part of MOF"},
        {L"class \xD83D C", "t.mof:1:7: the character U+D83D is half of a surrogate pair"},
        {L"class C\xDE00 C", "t.mof:1:8: the character U+DE00 is half of a surrogate pair"},
        {L"instance of C { a = \"\xD83D\"; };", "t.mof:1:22: the character U+D83D is half of a surrogate pair"},
    };
    for (const ErrorRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.text.substr(0, 120)));
        const auto result = ReadMofText(row.text, L"t.mof");
        ASSERT_FALSE(result);
        EXPECT_EQ(Utf8(result.Error().Text()), row.message);
    }
}

TEST(MofError, NullCharactersInsideTextsAreKept)
{
    const auto result = ReadMofText(std::wstring(L"instance of C { a = \"x\0y\"; };", 29));
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    EXPECT_EQ(std::get<MofInstance>(result->declarations[0]).properties[0].value.AsText(), std::wstring(L"x\0y", 3));
}

TEST(MofError, BytesThatAreNotUtf8AreNamedWhereTheyMatter)
{
    const auto message = [](std::string_view bytes)
    {
        const auto result = ReadMofBytes(bytes, L"t.mof");
        return result ? "read" : Utf8(result.Error().Text());
    };
    EXPECT_EQ(message("// caf\xE9\nclass C {};"), "read") << "a comment may hold anything";
    EXPECT_EQ(message("/* caf\xE9 */ class C {};"), "read");
    EXPECT_EQ(message("class Caf\xE9 {};"), "t.mof:1:10: the byte 0xE9 is not UTF-8");
    EXPECT_EQ(message("\n[a(\"caf\xE9 x\")] class C {};"), "t.mof:2:8: the byte 0xE9 is not UTF-8");
    EXPECT_EQ(message("\xFF class C {};"), "t.mof:1:1: the byte 0xFF is not UTF-8");
    EXPECT_EQ(message("class \xC3\xA9t\xC3\xA9 {};"), "read");
}

TEST(MofError, EveryBeginningOfATextIsReadOrRefused)
{
    const std::wstring text =
        LR"([a("x\x0041"):ToInstance, b{1,-0x2}] class C as $A : B { [k] D ref r[3] = {$A, "q"}; )"
        LR"(uint8 M([in] E e = instance of E { f = '\''; }); }; Qualifier Q : string = "a" "b", )"
        LR"(Scope(any), Flavor(Amended); #pragma x(1, "y"))";
    ASSERT_TRUE(ReadMofText(text));
    std::size_t read = 0;
    for (std::size_t length = 0; length <= text.size(); ++length)
        read += ReadMofText(text.substr(0, length)) ? 1u : 0u;
    EXPECT_EQ(read, 7u) << "nothing, the class, the qualifier and the space behind each, '#pragma x' and the whole";
}

TEST(MofError, EvilTextsTakeNoTime)
{
    const auto start = std::chrono::steady_clock::now();
    const std::wstring evil[] = {
        Repeat(L"[", 1000000),
        Repeat(L"{", 1000000),
        L"instance of C { a = " + Repeat(L"{", 1000000),
        L"instance of C { a = " + Repeat(L"instance of C { a = ", 50000),
        Repeat(L"/*", 500000),
        L"class C { uint8 a = " + std::wstring(1000000, L'9') + L"; };",
        L"instance of C { a = \"" + std::wstring(1000000, L'\\'),
        L"class " + std::wstring(1000000, L'c'),
        Repeat(L"#pragma x\n", 100000) + L"!",
    };
    for (const std::wstring& text : evil)
        EXPECT_FALSE(ReadMofText(text)) << Utf8(text.substr(0, 40));
    std::wstring wide = L"class C {";
    for (int i = 0; i < 50000; ++i)
        wide += L"uint8 p" + std::to_wstring(i) + L";";
    EXPECT_TRUE(ReadMofText(wide + L"};")) << "fifty thousand properties";
    EXPECT_TRUE(ReadMofText(L"instance of C { a = {1" + Repeat(L",1", 200000) + L"}; };"));
    EXPECT_TRUE(ReadMofText(L"instance of C { a = " + Repeat(L"\"x\" ", 200000) + L"; };"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4) * ORL_TEST_SLOWDOWN);
}

} // namespace
} // namespace wbem
