// MOF: printing, and reading what was printed.
#include "Shown.h"
#include "wbem/MofReader.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace wbem
{
namespace
{

std::wstring Print(const MofDeclaration& declaration)
{
    if (const auto* asClass = std::get_if<MofClass>(&declaration))
        return PrintClass(*asClass);
    if (const auto* instance = std::get_if<MofInstance>(&declaration))
        return PrintInstance(*instance);
    if (const auto* qualifier = std::get_if<MofQualifierDeclaration>(&declaration))
        return PrintQualifierDeclaration(*qualifier);
    return {};
}

std::wstring PrintAll(const MofDocument& document)
{
    std::wstring text;
    for (const MofDeclaration& declaration : document.declarations)
        text += Print(declaration);
    return text;
}

TEST(MofPrint, AClassIsPrintedWithAllItsParts)
{
    const auto result = ReadMofText(LR"(
        [dynamic:ToInstance, provider("P"), Values{"a","b"}:Amended Translatable, Off(FALSE), Nr(-0x10), Nul(NULL), E{}]
        class Zarn_X as $A : Base {
            [key,read] string DeviceID; uint8 Bytes[6]={1,2}; C ref R; object ref O; D E[]; object F;
            [EmbeddedInstance("G")] string H; real64 I=5; char16 J='\''; datetime K=NULL; string L="a\"b\\c\n'\x0001€";
            [Implemented] uint32 M([in] string N,[out,in] D Os[]); void P();
        };)");
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    EXPECT_EQ(Utf8(PrintAll(*result)),
              "[dynamic : ToInstance, provider(\"P\"), Values{\"a\", \"b\"} : Translatable Amended, Off(FALSE), "
              "Nr(-16), Nul(NULL), E{}]\n"
              "class Zarn_X as $A : Base\n"
              "{\n"
              "\t[key, read] string DeviceID;\n"
              "\tuint8 Bytes[6] = {1, 2};\n"
              "\tC ref R;\n"
              "\tobject ref O;\n"
              "\tD E[];\n"
              "\tobject F;\n"
              "\t[EmbeddedInstance(\"G\")] string H;\n"
              "\treal64 I = 5.0;\n"
              "\tchar16 J = '\\'';\n"
              "\tdatetime K = NULL;\n"
              "\tstring L = \"a\\\"b\\\\c\\n'\\x0001\xE2\x82\xAC\";\n"
              "\t[Implemented] uint32 M([in] string N, [out, in] D Os[]);\n"
              "\tvoid P();\n"
              "};\n");
}

TEST(MofPrint, AnInstanceIsPrintedWithAllItsParts)
{
    const auto result = ReadMofText(LR"([q] instance of C as $A { a = 5; b = {$A}; [r(1.5)] c = "x" "y"; d = TRUE;
        e = instance of D { f = {instance of E {}, NULL}; g = 'x'; }; h = NULL; i = {}; };)");
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    EXPECT_EQ(Utf8(PrintAll(*result)), "[q]\n"
                                       "instance of C as $A\n"
                                       "{\n"
                                       "\ta = 5;\n"
                                       "\tb = {$A};\n"
                                       "\t[r(1.5)] c = \"xy\";\n"
                                       "\td = TRUE;\n"
                                       "\te = instance of D\n"
                                       "\t{\n"
                                       "\t\tf = {instance of E\n"
                                       "\t\t{\n"
                                       "\t\t}, NULL};\n"
                                       "\t\tg = 'x';\n"
                                       "\t};\n"
                                       "\th = NULL;\n"
                                       "\ti = {};\n"
                                       "};\n");
}

TEST(MofPrint, ADeclaredQualifierIsPrintedWithAllItsParts)
{
    const auto result = ReadMofText(LR"(qualifier A:string[4]={"x"},flavor(amended,toinstance),scope(method,class);
        qualifier B:boolean=false,scope(any); qualifier C:sint8;)");
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    EXPECT_EQ(Utf8(PrintAll(*result)),
              "Qualifier A : string[4] = {\"x\"}, Scope(class, method), Flavor(ToInstance, Amended);\n"
              "Qualifier B : boolean = FALSE, Scope(any);\n"
              "Qualifier C : sint8;\n");
}

TEST(MofPrint, PrintedTextPrintsAgainTheSame)
{
    std::wstring text = L"[d(\"";
    for (unsigned c = 1; c < 0x250; ++c)
    {
        const auto character = static_cast<wchar_t>(c);
        text += c == '\n' || c == '\r'
                    ? L""
                    : (c == '"' || c == '\\' ? std::wstring(L"\\") + character : std::wstring(1, character));
    }
    text += L"\\xD800 \\xDC00\\x0000\U0001F600\")] class C { char16 a = '\\x0000'; char16 b = '\\xD800'; };";
    const auto first = ReadMofText(text);
    ASSERT_TRUE(first) << Utf8(first.Error().Text());
    const std::wstring printed = PrintAll(*first);
    const auto second = ReadMofText(printed);
    ASSERT_TRUE(second) << Utf8(second.Error().Text());
    EXPECT_EQ(PrintAll(*second), printed);
    EXPECT_EQ(std::get<MofClass>(second->declarations[0]).qualifiers[0].value,
              std::get<MofClass>(first->declarations[0]).qualifiers[0].value);
}

TEST(MofPrint, TheProductsOwnSchemaReadsBackFromItsPrint)
{
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ORL_SOURCE_DIR "/schema"))
    {
        if (entry.path().extension() != ".mof")
            continue;
        ++files;
        SCOPED_TRACE(entry.path().string());
        const auto first = ReadMofFile(entry.path());
        ASSERT_TRUE(first) << Utf8(first.Error().Text());
        EXPECT_FALSE(first->declarations.empty());
        const std::wstring printed = PrintAll(*first);
        const auto second = ReadMofText(printed);
        ASSERT_TRUE(second) << Utf8(second.Error().Text());
        EXPECT_EQ(PrintAll(*second), printed);
    }
    EXPECT_GE(files, 4u);
}

TEST(MofPrint, ValuesAloneArePrintedAsMofWritesThem)
{
    EXPECT_EQ(PrintMofValue(CimValue::String(L"a\"b")), L"\"a\\\"b\"");
    EXPECT_EQ(PrintMofValue(CimValue()), L"NULL");
    EXPECT_EQ(PrintMofValue(CimValue::Reference(L"$A")), L"$A");
    EXPECT_EQ(PrintMofValue(CimValue::Reference(L"C.k=1")), L"\"C.k=1\"");
    EXPECT_EQ(PrintMofValue(CimValue::Unsigned(CimType::UInt64, 18446744073709551615u)), L"18446744073709551615");
    EXPECT_EQ(PrintMofValue(CimValue::Array(CimType::Boolean, {CimValue::Bool(true), CimValue()})), L"{TRUE, NULL}");
}

} // namespace
} // namespace wbem
