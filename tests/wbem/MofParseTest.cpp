// MOF: what is read.
#include "Shown.h"
#include "wbem/MofReader.h"

#include <gtest/gtest.h>

namespace wbem
{
namespace
{

MofDocument Read(std::wstring_view text)
{
    auto result = ReadMofText(text);
    EXPECT_TRUE(result) << Utf8(result.Error().Text());
    return result ? *std::move(result) : MofDocument();
}

template <class Declaration>
const Declaration& At(const MofDocument& document, std::size_t index)
{
    return std::get<Declaration>(document.declarations.at(index));
}

// "Key(boolean TRUE) flavors 5" and so on, one after the other.
std::string Shown(const std::vector<MofQualifier>& qualifiers)
{
    std::string text;
    for (const MofQualifier& qualifier : qualifiers)
    {
        text += text.empty() ? "" : ", ";
        text += Utf8(qualifier.name) + "(" + Shown(qualifier.value) + ")";
        if (qualifier.flavors != 0)
            text += " flavors " + std::to_string(qualifier.flavors);
    }
    return text;
}

std::string Shown(const MofType& type)
{
    std::string text = type.type == CimType::Empty ? "void" : Utf8(CimTypeName(type.type));
    if (!type.className.empty())
        text += ":" + Utf8(type.className);
    if (type.isEmbeddedText)
        text += " as text";
    if (type.isArray)
        text += "[" + (type.arraySize ? std::to_string(*type.arraySize) : "") + "]";
    return text;
}

std::string Shown(const MofProperty& property)
{
    return Shown(property.type) + " " + Utf8(property.name) +
           (property.defaultValue ? " = " + Shown(*property.defaultValue) : "");
}

struct PropertyRow
{
    std::wstring_view text;
    std::string shown;
};

TEST(MofParse, PropertiesHaveTheirTypesAndDefaults)
{
    const PropertyRow rows[] = {
        {L"boolean a;", "boolean a"},
        {L"UINT32 a;", "uint32 a"},
        {L"string a[];", "string[] a"},
        {L"uint8 a[6];", "uint8[6] a"},
        {L"datetime a;", "datetime a"},
        {L"object a;", "object a"},
        {L"Zarn_WarningMessage a[];", "object:Zarn_WarningMessage[] a"},
        {L"Zarn_PhysicalEthernetAdapter ref a;", "ref:Zarn_PhysicalEthernetAdapter a"},
        {L"C REF a = NULL;", "ref:C a = ref NULL"},
        {L"object ref a;", "ref a"},
        {L"C ref;", "object:C ref"},
        {L"string ref;", "string ref"},
        {L"string class;", "string class"},
        {L"uint8 instance;", "uint8 instance"},
        {L"[EmbeddedInstance(\"X\")] string a;", "object:X as text a"},
        {L"[EmbeddedInstance(\"X\")] string a[];", "object:X as text[] a"},
        {L"[EmbeddedObject] string a;", "object as text a"},
        {L"[EmbeddedObject(FALSE)] string a;", "string a"},
        {L"[EmbeddedInstance(\"X\")] uint8 a;", "uint8 a"},
        // Defaults are of the declared type.
        {L"uint8 a = 255;", "uint8 a = uint8 255"},
        {L"sint8 a = -128;", "sint8 a = sint8 -128"},
        {L"uint64 a = 18446744073709551615;", "uint64 a = uint64 18446744073709551615"},
        {L"sint64 a = -9223372036854775808;", "sint64 a = sint64 -9223372036854775808"},
        {L"uint16 a = 0x1F;", "uint16 a = uint16 31"},
        {L"uint16 a = 0XFFff;", "uint16 a = uint16 65535"},
        {L"uint16 a = 017;", "uint16 a = uint16 15"},
        {L"uint16 a = 0;", "uint16 a = uint16 0"},
        {L"uint16 a = 101b;", "uint16 a = uint16 5"},
        {L"sint16 a = +5;", "sint16 a = sint16 5"},
        {L"real32 a = 1.5;", "real32 a = real32 1.5"},
        {L"real64 a = -1.5E-3;", "real64 a = real64 -0.0015"},
        {L"real64 a = 5;", "real64 a = real64 5.0"},
        {L"real64 a = .5;", "real64 a = real64 0.5"},
        {L"boolean a = TRUE;", "boolean a = boolean TRUE"},
        {L"boolean a = false;", "boolean a = boolean FALSE"},
        {L"string a = NULL;", "string a = string NULL"},
        {L"string a = \"\";", "string a = string \"\""},
        {L"string a = \"one \" \"two\" /* and */\n \"three\";", "string a = string \"one twothree\""},
        {L"char16 a = 'x';", "char16 a = char16 'x'"},
        {L"char16 a = '\\'';", "char16 a = char16 '\\''"},
        {L"char16 a = '\\x20AC';", "char16 a = char16 '€'"},
        {L"char16 a = 65;", "char16 a = char16 'A'"},
        {L"datetime a = \"20261231235959.000000+060\";", "datetime a = datetime \"20261231235959.000000+060\""},
        {L"uint8 a[] = {};", "uint8[] a = uint8[] {}"},
        {L"uint8 a[] = {1, 2, NULL};", "uint8[] a = uint8[] {1, 2, NULL}"},
        {L"uint8 a[] = 1;", "uint8[] a = uint8[] {1}"},
        {L"string a[2] = {\"x\", \"y\" \"z\"};", "string[2] a = string[] {\"x\", \"yz\"}"},
        {L"real64 a[] = {1, 2.5};", "real64[] a = real64[] {1.0, 2.5}"},
        {L"C ref a = \"C.k=\\\"v\\\"\";", "ref:C a = ref \"C.k=\\\"v\\\"\""},
        {L"D a = instance of D { x = 1; };", "object:D a = object instance of D\n{\n\tx = 1;\n}"},
        {L"string größe = \"ß\";", "string größe = string \"ß\""},
    };
    for (const PropertyRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.text));
        const MofDocument document = Read(L"class C { " + std::wstring(row.text) + L" };");
        ASSERT_EQ(document.declarations.size(), 1u);
        const MofClass& declaration = At<MofClass>(document, 0);
        ASSERT_EQ(declaration.properties.size(), 1u);
        EXPECT_EQ(Shown(declaration.properties[0]), row.shown);
        EXPECT_TRUE(declaration.methods.empty());
    }
}

TEST(MofParse, TextsHaveTheirEscapes)
{
    const std::pair<std::wstring_view, std::wstring_view> rows[] = {
        {LR"("\b\t\n\f\r")", L"\b\t\n\f\r"},
        {LR"("\"\'\\")", L"\"'\\"},
        {LR"("\x41\x0042\X43")", L"ABC"},
        {LR"("\x4")", L"\x4"},
        {LR"("\x00411")", L"A1"},
        {LR"("\x20ac.")", L"\x20AC."},
        {LR"("\xD83D\xDE00")", L"\U0001F600"},
        {LR"("\xD83D" "\xDE00")", L"\U0001F600"},
        {LR"("\\.\\root\\KESTA")", LR"(\.\root\KESTA)"},
        {LR"("/* text */ // text")", L"/* text */ // text"},
        {LR"("")", L""},
        {LR"("" "" "x")", L"x"},
    };
    for (const auto& [text, value] : rows)
    {
        SCOPED_TRACE(Utf8(text));
        const MofDocument document = Read(L"instance of C { a = " + std::wstring(text) + L"; };");
        EXPECT_EQ(At<MofInstance>(document, 0).properties.at(0).value.AsText(), value);
    }
}

TEST(MofParse, QualifiersHaveValuesAndFlavors)
{
    const PropertyRow rows[] = {
        {L"[key]", "key(boolean TRUE)"},
        {L"[Key, Read]", "Key(boolean TRUE), Read(boolean TRUE)"},
        {L"[Write(FALSE)]", "Write(boolean FALSE)"},
        {L"[MaxLen(256)]", "MaxLen(sint32 256)"},
        {L"[MaxValue(-0x10)]", "MaxValue(sint32 -16)"},
        {L"[Big(18446744073709551615)]", "Big(uint64 18446744073709551615)"},
        {L"[Ratio(1.5)]", "Ratio(real64 1.5)"},
        {L"[Override(\"Name\")]", "Override(string \"Name\")"},
        {L"[Description(\"a \" \"b\")]", "Description(string \"a b\")"},
        {L"[Alias(NULL)]", "Alias(NULL)"},
        {L"[Values{\"a\", \"b\"}]", "Values(string[] {\"a\", \"b\"})"},
        {L"[Values({\"a\"})]", "Values(string[] {\"a\"})"},
        {L"[ValueMap{}]", "ValueMap([] {})"},
        {L"[Bits{1, 2147483648}]", "Bits(sint64[] {1, 2147483648})"},
        {L"[key: ToInstance ToSubclass DisableOverride]", "key(boolean TRUE) flavors 7"},
        {L"[provider(\"X\"): toinstance, dynamic: ToInstance EnableOverride]",
         "provider(string \"X\") flavors 1, dynamic(boolean TRUE) flavors 9"},
        {L"[a:Restricted Translatable Amended NotToInstance NotToSubclass]", "a(boolean TRUE) flavors 496"},
        {L"[Values{\"a\"} : Amended]", "Values(string[] {\"a\"}) flavors 64"},
    };
    for (const PropertyRow& row : rows)
    {
        SCOPED_TRACE(Utf8(row.text));
        const MofDocument document =
            Read(std::wstring(row.text) + L" class C { " + std::wstring(row.text) + L" uint8 p; " +
                 std::wstring(row.text) + L" void M(" + std::wstring(row.text) + L" uint8 q); };");
        const MofClass& declaration = At<MofClass>(document, 0);
        EXPECT_EQ(Shown(declaration.qualifiers), row.shown);
        EXPECT_EQ(Shown(declaration.properties.at(0).qualifiers), row.shown);
        EXPECT_EQ(Shown(declaration.methods.at(0).qualifiers), row.shown);
        EXPECT_EQ(Shown(declaration.methods.at(0).parameters.at(0).qualifiers), row.shown);
    }
}

TEST(MofParse, QualifiersAreFoundWithoutCase)
{
    const MofDocument document = Read(L"[Singleton, Abstract(FALSE)] class C {};");
    const auto& qualifiers = At<MofClass>(document, 0).qualifiers;
    ASSERT_NE(FindQualifier(qualifiers, L"SINGLETON"), nullptr);
    EXPECT_TRUE(FindQualifier(qualifiers, L"singleton")->value.AsBool());
    EXPECT_EQ(FindQualifier(qualifiers, L"key"), nullptr);
}

TEST(MofParse, ClassesHaveSuperclassAliasAndMethods)
{
    const MofDocument document = Read(LR"(
// A class in the style of the DMTF.
[Version ("2.8.0"), Description ("A base.")]
class CIM_Base as $Base {
   [Key] string Id;
};
class Zarn_X : CIM_Base
{
    uint32 Number = 5;
    [Implemented, static] uint32 Remove();
    uint32 Create([in, MaxLen(16)] string Name, [out] Zarn_Message Messages[], [in, out] CIM_Base ref Made,
                  [in] uint8 Bytes[6] = {1, 2});
    void Nothing();
    CIM_Base Copy();
};
)");
    ASSERT_EQ(document.declarations.size(), 2u);
    const MofClass& base = At<MofClass>(document, 0);
    EXPECT_EQ(base.name, L"CIM_Base");
    EXPECT_EQ(base.superclass, L"");
    EXPECT_EQ(base.alias, L"$Base");
    EXPECT_EQ(base.position, (MofPosition{0, 4, 1}));
    EXPECT_EQ(base.qualifiers.at(1).position, (MofPosition{0, 3, 21}));
    EXPECT_EQ(base.properties.at(0).position, (MofPosition{0, 5, 17}));

    const MofClass& derived = At<MofClass>(document, 1);
    EXPECT_EQ(derived.superclass, L"CIM_Base");
    EXPECT_EQ(derived.properties.size(), 1u);
    ASSERT_EQ(derived.methods.size(), 4u);
    EXPECT_EQ(derived.methods[0].name, L"Remove");
    EXPECT_EQ(Shown(derived.methods[0].result), "uint32");
    EXPECT_TRUE(derived.methods[0].parameters.empty());
    EXPECT_EQ(Shown(derived.methods[0].qualifiers), "Implemented(boolean TRUE), static(boolean TRUE)");
    const auto& parameters = derived.methods[1].parameters;
    ASSERT_EQ(parameters.size(), 4u);
    EXPECT_EQ(Shown(parameters[0]), "string Name");
    EXPECT_EQ(Shown(parameters[0].qualifiers), "in(boolean TRUE), MaxLen(sint32 16)");
    EXPECT_EQ(Shown(parameters[1]), "object:Zarn_Message[] Messages");
    EXPECT_EQ(Shown(parameters[2]), "ref:CIM_Base Made");
    EXPECT_EQ(Shown(parameters[3]), "uint8[6] Bytes = uint8[] {1, 2}");
    EXPECT_EQ(Shown(derived.methods[2].result), "void");
    EXPECT_EQ(Shown(derived.methods[3].result), "object:CIM_Base");
}

TEST(MofParse, InstancesKeepTheirValuesAsWritten)
{
    const MofDocument document = Read(LR"(
instance of __Win32Provider as $P
{
    Name = "Orl2InstUtility";
    ImpersonationLevel = 1;
    Small = -2147483649;
    Ratio = 0.5;
    Nothing = NULL;
    Letter = 'x';
    Levels = { "WQL:UnarySelect", "other" };
    Mixed = { 1, NULL, 2147483648 };
    Reals = { 1, 2.5 };
    [Amended] Flag = TRUE;
};
[locale(1033)]
instance of __InstanceProviderRegistration
{
    Provider = $P;
    Twice = { $P, $p };
    Paths = { "C.k=1", $P };
    Nested = instance of Inner { a = 1; b = { instance of Leaf {}, instance of Leaf { c = $P; } }; };
};
)");
    ASSERT_EQ(document.declarations.size(), 2u);
    const MofInstance& provider = At<MofInstance>(document, 0);
    EXPECT_EQ(provider.className, L"__Win32Provider");
    EXPECT_EQ(provider.alias, L"$P");
    const std::vector<std::string> expected = {
        "Name=string \"Orl2InstUtility\"",
        "ImpersonationLevel=sint32 1",
        "Small=sint64 -2147483649",
        "Ratio=real64 0.5",
        "Nothing=NULL",
        "Letter=char16 'x'",
        "Levels=string[] {\"WQL:UnarySelect\", \"other\"}",
        "Mixed=sint64[] {1, NULL, 2147483648}",
        "Reals=real64[] {1.0, 2.5}",
        "Flag=boolean TRUE",
    };
    std::vector<std::string> found;
    for (const auto& property : provider.properties)
        found.push_back(Utf8(property.name) + "=" + Shown(property.value));
    EXPECT_EQ(found, expected);
    EXPECT_EQ(Shown(provider.properties.back().qualifiers), "Amended(boolean TRUE)");
    EXPECT_EQ(provider.properties.at(1).position, (MofPosition{0, 5, 5}));

    const MofInstance& registration = At<MofInstance>(document, 1);
    EXPECT_EQ(Shown(registration.qualifiers), "locale(sint32 1033)");
    EXPECT_EQ(Shown(registration.properties.at(0).value), "ref $P");
    EXPECT_EQ(Shown(registration.properties.at(1).value), "ref[] {$P, $p}");
    EXPECT_EQ(Shown(registration.properties.at(2).value), "ref[] {\"C.k=1\", $P}");
    const CimValue& nested = registration.properties.at(3).value;
    ASSERT_NE(nested.AsObject(), nullptr);
    EXPECT_EQ(nested.AsObject()->className, L"Inner");
    ASSERT_NE(nested.AsObject()->Find(L"B"), nullptr);
    EXPECT_EQ(nested.AsObject()->Find(L"B")->Elements().size(), 2u);

    const MofDeclaration* target = document.FindAlias(L"$p", registration.position);
    ASSERT_NE(target, nullptr);
    EXPECT_EQ(std::get<MofInstance>(*target).className, L"__Win32Provider");
    EXPECT_EQ(document.FindAlias(L"$Q", registration.position), nullptr);
    EXPECT_EQ(document.FindAlias(L"$P", MofPosition{7, 1, 1}), nullptr);
}

TEST(MofParse, AnAliasMayBeUsedBeforeItIsDeclared)
{
    const MofDocument document = Read(L"instance of A { p = $X; }; instance of B as $X {};");
    const MofDeclaration* target = document.FindAlias(L"$X", At<MofInstance>(document, 0).position);
    ASSERT_NE(target, nullptr);
    EXPECT_EQ(std::get<MofInstance>(*target).className, L"B");
}

TEST(MofParse, QualifiersAreDeclaredWithTypeScopeAndFlavor)
{
    const MofDocument document = Read(LR"(
Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);
Qualifier Description : string = null, Scope(any), Flavor(Translatable);
Qualifier ValueMap : string[], Scope(property, method, parameter);
Qualifier Counts : uint32[4] = {1, 2}, Flavor(ToInstance), Scope(class, association, indication, qualifier, schema);
Qualifier Plain : sint8;
)");
    ASSERT_EQ(document.declarations.size(), 5u);
    const auto& key = At<MofQualifierDeclaration>(document, 0);
    EXPECT_EQ(key.name, L"Key");
    EXPECT_EQ(Shown(key.type), "boolean");
    EXPECT_EQ(Shown(*key.defaultValue), "boolean FALSE");
    EXPECT_EQ(key.scopes, kScopeProperty | kScopeReference);
    EXPECT_EQ(key.flavors, kFlavorDisableOverride | kFlavorToSubclass);
    const auto& description = At<MofQualifierDeclaration>(document, 1);
    EXPECT_EQ(Shown(*description.defaultValue), "string NULL");
    EXPECT_EQ(description.scopes, kScopeAny);
    const auto& map = At<MofQualifierDeclaration>(document, 2);
    EXPECT_EQ(Shown(map.type), "string[]");
    EXPECT_FALSE(map.defaultValue);
    EXPECT_EQ(map.flavors, 0);
    const auto& counts = At<MofQualifierDeclaration>(document, 3);
    EXPECT_EQ(Shown(*counts.defaultValue), "uint32[] {1, 2}");
    EXPECT_EQ(counts.scopes, kScopeClass | kScopeAssociation | kScopeIndication | kScopeQualifier | kScopeSchema);
    EXPECT_EQ(At<MofQualifierDeclaration>(document, 4).scopes, 0);
}

TEST(MofParse, NamespacePragmasHoldFromWhereTheyStand)
{
    const MofDocument document = Read(LR"(
class A {};
#pragma namespace("\\\\.\\root\\KESTA")
class B {};
instance of B {};
#PRAGMA Namespace ( "root/other" )
class C {};
Qualifier Q : string;
)");
    ASSERT_EQ(document.declarations.size(), 5u);
    EXPECT_EQ(At<MofClass>(document, 0).nameSpace, L"");
    EXPECT_EQ(At<MofClass>(document, 1).nameSpace, LR"(\\.\root\KESTA)");
    EXPECT_EQ(At<MofInstance>(document, 2).nameSpace, LR"(\\.\root\KESTA)");
    EXPECT_EQ(At<MofClass>(document, 3).nameSpace, L"root/other");
    EXPECT_EQ(At<MofQualifierDeclaration>(document, 4).nameSpace, L"root/other");
}

TEST(MofParse, OtherPragmasAreKeptWithTheirArguments)
{
    const MofDocument document = Read(LR"(
#pragma autorecover
#pragma classflags("updateonly", "forceupdate")
#pragma deleteclass("Zarn_Old", NOFAIL)
#pragma locale ("en_US")
#pragma vendor_thing(5, word, "a" "b")
#pragma empty()
class C {};
)");
    const std::pair<std::wstring, std::vector<std::wstring>> expected[] = {
        {L"autorecover", {}},
        {L"classflags", {L"updateonly", L"forceupdate"}},
        {L"deleteclass", {L"Zarn_Old", L"NOFAIL"}},
        {L"locale", {L"en_US"}},
        {L"vendor_thing", {L"5", L"word", L"ab"}},
        {L"empty", {}},
    };
    ASSERT_EQ(document.declarations.size(), std::size(expected) + 1);
    for (std::size_t i = 0; i < std::size(expected); ++i)
    {
        EXPECT_EQ(At<MofPragma>(document, i).name, expected[i].first);
        EXPECT_EQ(At<MofPragma>(document, i).arguments, expected[i].second);
    }
}

TEST(MofParse, CommentsMayStandAnywhereBetweenWords)
{
    const MofDocument document = Read(L"/**/class/* a\n*b/ */C//\r\n:/*x*/D{/***/uint8//\n a/**/;}//;\n;// end");
    EXPECT_EQ(At<MofClass>(document, 0).superclass, L"D");
    EXPECT_EQ(At<MofClass>(document, 0).properties.at(0).position, (MofPosition{0, 4, 2}));
}

TEST(MofParse, LinesEndWithAnyLineEnd)
{
    const MofDocument document = Read(L"\n\r\n\r/*\r\n\n\r*/class C{};");
    EXPECT_EQ(At<MofClass>(document, 0).position, (MofPosition{0, 7, 3}));
}

TEST(MofParse, AnEmptyTextDeclaresNothing)
{
    EXPECT_TRUE(Read(L"").declarations.empty());
    EXPECT_TRUE(Read(L" // nothing").declarations.empty());
    EXPECT_EQ(Read(L"").files.at(0).name, L"text");
}

} // namespace
} // namespace wbem
