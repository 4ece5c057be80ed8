// Object paths: what is read, and what is printed.
#include "Shown.h"
#include "wbem/ObjectPath.h"

#include <gtest/gtest.h>

namespace wbem
{
namespace
{

std::string Read(std::wstring_view text)
{
    const auto path = ObjectPath::Parse(text);
    return path ? Shown(*path) : "! " + Shown(path.Error());
}

struct ReadRow
{
    std::wstring_view text;
    std::string parts;
};

TEST(ObjectPath, AllFormsAreRead)
{
    const ReadRow rows[] = {
        // Where: server and namespace, slashes of either kind.
        {LR"(Zarn_FCOEHBA)", R"(Zarn_FCOEHBA)"},
        {LR"(root\KESTA:Zarn_FCOEHBA)", R"(root\KESTA:Zarn_FCOEHBA)"},
        {LR"(root/KESTA:Zarn_FCOEHBA)", R"(root\KESTA:Zarn_FCOEHBA)"},
        {LR"(root:C)", R"(root:C)"},
        {LR"(\root\KESTA:C)", R"(root\KESTA:C)"},
        {LR"(\\.\root\KESTA:C)", R"(\\.\root\KESTA:C)"},
        {LR"(//HOST-7/root/KESTA:C)", R"(\\HOST-7\root\KESTA:C)"},
        {LR"(\/h\root/KESTA:C)", R"(\\h\root\KESTA:C)"},
        {LR"(//[fe80::1]/root:C)", R"(\\[fe80::1]\root:C)"},
        {LR"(\\h.example.org\root)", R"(\\h.example.org\root:)"},
        {LR"(root\KESTA)", R"(root\KESTA:)"},
        {LR"(\root)", R"(root:)"},
        // Keys.
        {LR"(C=@)", R"(C | @)"},
        {LR"(\\.\root:C=@)", R"(\\.\root:C | @)"},
        {LR"(C="x")", R"(C | =string "x")"},
        {LR"(C=5)", R"(C | =sint32 5)"},
        {LR"(C='x')", R"(C | =string "x")"},
        {LR"(C.Id="x")", R"(C | Id=string "x")"},
        {LR"(C.Id='x "y"')", R"(C | Id=string "x \"y\"")"},
        {LR"(C.Id="it's")", R"(C | Id=string "it's")"},
        {LR"(C.B=2,A="1")", R"(C | B=sint32 2 | A=string "1")"},
        {LR"( C . Id = 5 )", R"(C | Id=sint32 5)"},
        {LR"(  C.Id = "x" , Nr = 5  )", R"(C | Id=string "x" | Nr=sint32 5)"},
        {LR"(C.Id="",B=1)", R"(C | Id=string "" | B=sint32 1)"},
        {LR"(__Namespace.Name="KESTA")", R"(__Namespace | Name=string "KESTA")"},
        {LR"(Größe.Schlüssel="ß")", R"(Größe | Schlüssel=string "ß")"},
        // Bare values.
        {LR"(C.a=-5,b=+6)", R"(C | a=sint32 -5 | b=sint32 6)"},
        {LR"(C.a=0x1F)", R"(C | a=sint32 31)"},
        {LR"(C.a=007)", R"(C | a=sint32 7)"},
        {LR"(C.a=2147483648)", R"(C | a=sint64 2147483648)"},
        {LR"(C.a=-9223372036854775808)", R"(C | a=sint64 -9223372036854775808)"},
        {LR"(C.a=18446744073709551615)", R"(C | a=uint64 18446744073709551615)"},
        {LR"(C.a=TRUE,b=false,c=True)", R"(C | a=boolean TRUE | b=boolean FALSE | c=boolean TRUE)"},
        {LR"(C.a="5",b="TRUE")", R"(C | a=string "5" | b=string "TRUE")"},
        // Escapes: only \" and \\ (and \' between single quotes).
        {LR"(C.a="say \"hi\"")", R"(C | a=string "say \"hi\"")"},
        {LR"(C.a="a\\b")", R"(C | a=string "a\\b")"},
        {LR"(C.a="PCI\VEN_1AF4&DEV_1000\4&1")", R"(C | a=string "PCI\\VEN_1AF4&DEV_1000\\4&1")"},
        {LR"(C.a="\n\t\x")", R"(C | a=string "\\n\\t\\x")"},
        {LR"(C.a="\\\\?\\d")", R"(C | a=string "\\\\?\\d")"},
        {LR"(C.a="\'")", R"(C | a=string "\\'")"},
        {LR"(C.a='\'')", R"(C | a=string "'")"},
        {LR"(C.a='\"')", R"(C | a=string "\"")"},
        {LR"(C.a="end\\")", R"(C | a=string "end\\")"},
        // A path inside a value.
        {LR"(A.Antecedent="Zarn_FCOEHBA.DeviceID=\"eth0\"",Dependent="\\\\.\\root\\KESTA:P.Id=\"1\"")",
         R"(A | Antecedent=string "Zarn_FCOEHBA.DeviceID=\"eth0\"" | Dependent=string "\\\\.\\root\\KESTA:P.Id=\"1\"")"},
        {LR"(A.x='C.a="1",b=2')", R"(A | x=string "C.a=\"1\",b=2")"},
    };
    for (const ReadRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.text));
        EXPECT_EQ(Read(row.text), row.parts);
    }
}

TEST(ObjectPath, NamespacesAreReadFromAWordAlone)
{
    const ReadRow rows[] = {
        {LR"(root)", R"(root:)"},
        {LR"(root/KESTA)", R"(root\KESTA:)"},
        {LR"(\\.\root\KESTA)", R"(\\.\root\KESTA:)"},
        {LR"(\root)", R"(root:)"},
        {LR"( root\a\b )", R"(root\a\b:)"},
        {LR"(root:C)", R"(! a slash or the end of the namespace is expected, at character 5)"},
        {LR"(root\)", R"(! a namespace is expected, at character 6)"},
        {LR"()", R"(! the path is empty, at character 1)"},
    };
    for (const ReadRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.text));
        const auto path = ObjectPath::ParseNamespace(row.text);
        EXPECT_EQ(path ? Shown(*path) : "! " + Shown(path.Error()), row.parts);
    }
}

TEST(ObjectPath, PrintedPathsParseBackToTheSamePath)
{
    const std::pair<std::wstring_view, std::wstring_view> rows[] = {
        {LR"(C)", LR"(C)"},
        {LR"(C=@)", LR"(C=@)"},
        {LR"(C='x')", LR"(C="x")"},
        {LR"(C=0x10)", LR"(C=16)"},
        {LR"( C.b = true , a = 'say "hi"' )", LR"(C.b=TRUE,a="say \"hi\"")"},
        {LR"(//h/root/KESTA:C.a="PCI\VEN")", LR"(\\h\root\KESTA:C.a="PCI\\VEN")"},
        {LR"(root/KESTA:C)", LR"(root\KESTA:C)"},
        {LR"(root/KESTA)", LR"(root\KESTA)"},
        {LR"(\root)", LR"(\root)"},
        {LR"(//./root)", LR"(\\.\root)"},
        {LR"(C.n=18446744073709551615,m=-9223372036854775808)", LR"(C.n=18446744073709551615,m=-9223372036854775808)"},
        {LR"(A.x="C.a=\"q\\\"q\"")", LR"(A.x="C.a=\"q\\\"q\"")"},
    };
    for (const auto& [text, printed] : rows)
    {
        SCOPED_TRACE(Utf8(text));
        const auto path = ObjectPath::Parse(text);
        ASSERT_TRUE(path) << Shown(path.Error());
        EXPECT_EQ(Utf8(path->Text()), Utf8(printed));
        const auto again = ObjectPath::Parse(path->Text());
        ASSERT_TRUE(again) << Shown(again.Error());
        EXPECT_EQ(*again, *path);
        EXPECT_EQ(again->Text(), path->Text());
    }
}

TEST(ObjectPath, APathTellsWhatItNames)
{
    const auto kinds = [](std::wstring_view text)
    {
        const auto path = ObjectPath::Parse(text);
        return std::string(path->IsNamespace() ? "namespace " : "") + (path->IsClass() ? "class " : "") +
               (path->IsInstance() ? "instance " : "");
    };
    EXPECT_EQ(kinds(L"root\\KESTA"), "namespace ");
    EXPECT_EQ(kinds(L"C"), "class ");
    EXPECT_EQ(kinds(L"root\\KESTA:C"), "class ");
    EXPECT_EQ(kinds(L"C=@"), "instance ");
    EXPECT_EQ(kinds(L"C=1"), "instance ");
    EXPECT_EQ(kinds(L"C.a=1"), "instance ");
}

TEST(ObjectPath, KeysAreFoundWithoutCase)
{
    const auto path = ObjectPath::Parse(LR"(C.DeviceID="eth0",ID=5)");
    ASSERT_NE(path->FindKey(L"DEVICEID"), nullptr);
    EXPECT_EQ(path->FindKey(L"DEVICEID")->value, CimValue::String(L"eth0"));
    EXPECT_EQ(path->FindKey(L"id")->value, CimValue::Integer(std::int64_t{5}));
    EXPECT_EQ(path->FindKey(L"Name"), nullptr);
    EXPECT_EQ(path->FindKey(L""), nullptr);
    EXPECT_NE(ObjectPath::Parse(L"C=5")->FindKey(L""), nullptr);
}

TEST(ObjectPath, TextInParts)
{
    const auto path = ObjectPath::Parse(LR"(//h/root/KESTA:C.a="x")");
    EXPECT_EQ(path->RelativeText(), LR"(C.a="x")");
    EXPECT_EQ(path->NamespaceText(), LR"(root\KESTA)");
    EXPECT_EQ(path->NamespaceText(L'/'), L"root/KESTA");
    EXPECT_EQ(Quoted(LR"(a"b\c)"), LR"("a\"b\\c")");
    EXPECT_EQ(PathValueText(CimValue::Integer(std::int64_t{-5})), L"-5");
    EXPECT_EQ(PathValueText(CimValue::Bool(true)), L"TRUE");
    EXPECT_EQ(PathValueText(CimValue::Char16(u'x')), L"\"x\"");
    EXPECT_EQ(PathValueText(CimValue::Null(CimType::String)), L"\"\"");
}

TEST(ObjectPath, EveryCharacterOfAValueSurvivesPrintingAndParsing)
{
    std::wstring value;
    for (unsigned c = 1; c < 0x300; ++c)
        value += static_cast<wchar_t>(c);
    ObjectPath path;
    path.className = L"C";
    path.keys.push_back({L"a", CimValue::String(value)});
    path.keys.push_back({L"b", CimValue::String(L"\\\"\\\\\"\"")});
    const auto again = ObjectPath::Parse(path.Text());
    ASSERT_TRUE(again) << Shown(again.Error());
    EXPECT_EQ(*again, path);
}

TEST(ObjectPath, PathsOfTheProvidersBuildersAreRead)
{
    // As they are formatted: values stand between the quotes as they are.
    EXPECT_EQ(Read(LR"(Zarn_FCoeLUN.DeviceID="PCI\VEN_1AF4&DEV_1041\3&13C0B0C5&0&18",ID="5")"),
              R"(Zarn_FCoeLUN | DeviceID=string "PCI\\VEN_1AF4&DEV_1041\\3&13C0B0C5&0&18" | ID=string "5")");
    EXPECT_EQ(Read(LR"(Zarn_PhysicalEthernetAdapter.DeviceID="X",CreationClassName="Zarn_PhysicalEthernetAdapter",)"
                   LR"(SystemCreationClassName="CIM_ComputerSystem",SystemName="h")"),
              R"(Zarn_PhysicalEthernetAdapter | DeviceID=string "X" | )"
              R"(CreationClassName=string "Zarn_PhysicalEthernetAdapter" | )"
              R"(SystemCreationClassName=string "CIM_ComputerSystem" | SystemName=string "h")");
}

} // namespace
} // namespace wbem
