// What the host makes of MOF.
#include "host/Repository.h"

#include "host/ObjectNames.h"
#include "host/Qualifiers.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace orl::test
{
namespace
{

const Namespace& Kesta(const Repository& repository)
{
    return *repository.FindNamespace({L"root", L"KESTA"});
}

std::wstring ErrorOf(std::wstring_view mof)
{
    try
    {
        Repository::FromText(mof, L"a.mof");
        return L"no error";
    }
    catch (const RepositoryError& error)
    {
        return error.text;
    }
}

TEST(HostRepository, DefaultNamespaceAndTheOnesAboveItExistWithoutBeingDeclared)
{
    const auto repository = Repository::FromText(L"class A {};");
    EXPECT_NE(nullptr, repository->FindNamespace({L"ROOT"}));
    ASSERT_NE(nullptr, repository->FindNamespace({L"Root", L"kesta"}));
    EXPECT_EQ(L"root\\KESTA", Kesta(*repository).Name());
    EXPECT_NE(nullptr, Kesta(*repository).FindClass(L"a"));
    EXPECT_EQ(nullptr, repository->FindNamespace({L"root", L"CIMV2"}));
}

TEST(HostRepository, ANamespaceComesFromAPragmaOrFromAnInstance)
{
    const auto repository = Repository::FromText(LR"(
        #pragma namespace("\\\\.\\root\\CIMV2")
        class A {};
        #pragma namespace("\\\\.\\root")
        instance of __Namespace { Name = "default"; };
    )");
    ASSERT_NE(nullptr, repository->FindNamespace({L"root", L"cimv2"}));
    EXPECT_NE(nullptr, repository->FindNamespace({L"root", L"cimv2"})->FindClass(L"A"));
    EXPECT_NE(nullptr, repository->FindNamespace({L"root", L"default"}));
    EXPECT_EQ(nullptr, Kesta(*repository).FindClass(L"A"));
}

TEST(HostRepository, InheritedPropertiesKeepTheirPlaceInFrontOfOwnOnes)
{
    const auto repository = Repository::FromText(L"class B : A { uint8 Z; [Write] string X; };"
                                                 L"class A { [key] string X = \"x\"; uint8 Y = 5; };");
    const ClassDef& b = *Kesta(*repository).FindClass(L"B");
    ASSERT_EQ(3u, b.Properties().size());
    EXPECT_EQ(0u, b.FindProperty(L"x"));
    EXPECT_EQ(1u, b.FindProperty(L"Y"));
    EXPECT_EQ(2u, b.FindProperty(L"z"));
    EXPECT_EQ(ClassDef::kNotFound, b.FindProperty(L"W"));
    EXPECT_TRUE(b.Properties()[0].isKey);
    EXPECT_EQ(L"A", b.Properties()[0].origin->Name());
    EXPECT_EQ(L"B", b.Properties()[0].declaredBy->Name());
    EXPECT_EQ(L"x", (*b.Prototype())[0].AsText());
    EXPECT_EQ(5u, (*b.Prototype())[1].AsUnsigned());
    EXPECT_TRUE(b.DerivesFrom(L"a"));
    EXPECT_FALSE(b.DerivesFrom(L"c"));
}

TEST(HostRepository, OverriddenMethodsReplaceTheirSignatureAndKeepTheirOrigin)
{
    const auto repository = Repository::FromText(
        L"class A { uint32 M([in] string P); void N(); }; class B : A { uint32 M([out] string Q); };");
    const ClassDef& b = *Kesta(*repository).FindClass(L"B");
    ASSERT_EQ(2u, b.Methods().size());
    const MethodDef& m = *b.FindMethod(L"m");
    EXPECT_EQ(L"A", m.origin->Name());
    EXPECT_EQ(L"B", m.declaredBy->Name());
    EXPECT_EQ(nullptr, m.in);
    ASSERT_NE(nullptr, m.out);
    EXPECT_EQ(L"__PARAMETERS", m.out->Name());
    ASSERT_EQ(2u, m.out->Properties().size());
    EXPECT_EQ(L"Q", m.out->Properties()[0].Name());
    EXPECT_EQ(L"ReturnValue", m.out->Properties()[1].Name());
    EXPECT_EQ(nullptr, b.FindMethod(L"N")->out);
}

TEST(HostRepository, AParameterWithoutADirectionIsAnInParameter)
{
    const auto repository = Repository::FromText(L"class A { void M(string P, [in, out] string Q, [out] string R); };");
    const MethodDef& m = *Kesta(*repository).FindClass(L"A")->FindMethod(L"M");
    ASSERT_EQ(2u, m.in->Properties().size());
    EXPECT_EQ(L"P", m.in->Properties()[0].Name());
    EXPECT_EQ(L"Q", m.in->Properties()[1].Name());
    ASSERT_EQ(2u, m.out->Properties().size());
    EXPECT_EQ(L"Q", m.out->Properties()[0].Name());
    EXPECT_EQ(L"R", m.out->Properties()[1].Name());
}

TEST(HostRepository, QualifiersPassDownUnlessTheyAreRestricted)
{
    const auto repository = Repository::FromText(LR"(
        Qualifier Mood : string = "", Scope(any), Flavor(Restricted);
        [Description("top"), Mood("bad"), provider("P"), Local("x") : Restricted, Abstract]
        class A { [key, Units("m")] string X; };
        [Description("below")]
        class B : A { [Note("n")] string X; };
    )");
    const ClassDef& b = *Kesta(*repository).FindClass(L"B");
    const std::vector<Qualifier> ofClass = ClassQualifiers(b);
    ASSERT_EQ(1u, ofClass.size());
    EXPECT_EQ(L"below", ofClass[0].value.AsText());
    const std::vector<Qualifier> ofProperty = PropertyQualifiers(b, b.Properties()[0]);
    std::vector<std::wstring> names;
    for (const Qualifier& each : ofProperty)
        names.push_back(each.name);
    EXPECT_EQ((std::vector<std::wstring>{L"Note", L"key", L"Units", L"CIMTYPE"}), names);
    EXPECT_EQ(nullptr, FindClassQualifier(b, L"provider"));
    EXPECT_NE(nullptr, FindClassQualifier(*b.Superclass(), L"provider"));
}

TEST(HostRepository, DeclaredInstancesHaveDefaultsTypedValuesAndResolvedAliases)
{
    const auto repository = Repository::FromText(LR"(
        class Door { [key] string Name; Room ref To; Room ref Others[]; uint8 Locks[]; uint16 Height = 200; Sign Plate; };
        class Room { [key] string Name; };
        class Sign { string Text; uint8 Size; };
        instance of Door as $Front { Name = "front"; To = $Hall; Others = { $Hall, "Room.Name=\"x\"" };
            Locks = { 1, 2 }; Plate = instance of Sign { Text = "No"; Size = 3; }; };
        instance of Room as $Hall { Name = "the \"hall\""; };
    )");
    const Namespace& kesta = Kesta(*repository);
    const ClassDef& door = *kesta.FindClass(L"Door");
    ASSERT_EQ(1u, kesta.DeclaredInstances(door).size());
    const ObjectBody& front = *kesta.DeclaredInstances(door)[0];
    EXPECT_TRUE(front.IsInstance());
    EXPECT_EQ(L"Room.Name=\"the \\\"hall\\\"\"", front[door.FindProperty(L"To")].AsText());
    EXPECT_EQ(L"{Room.Name=\"the \\\"hall\\\"\", Room.Name=\"x\"}",
              wbem::PlainText(front[door.FindProperty(L"Others")]));
    EXPECT_EQ(wbem::CimType::UInt8, front[door.FindProperty(L"Locks")].Elements()[1].Type());
    EXPECT_EQ(200u, front[door.FindProperty(L"Height")].AsUnsigned());
    EXPECT_EQ(3u, front[door.FindProperty(L"Plate")].AsObject()->Find(L"size")->AsUnsigned());
    EXPECT_EQ(L"Door.Name=\"front\"", RelativePath(front));
    EXPECT_TRUE(kesta.DeclaredInstances(*kesta.FindClass(L"Sign")).empty());
}

TEST(HostRepository, AnAliasInAKeyIsResolvedFirst)
{
    const auto repository = Repository::FromText(LR"(
        class Link { [key] Link ref Next; string T; };
        class End { [key] string Name; };
        instance of Link as $A { Next = $B; };
        instance of Link as $B { Next = $C; };
        instance of End as $C { Name = "c"; };
    )");
    const Namespace& kesta = Kesta(*repository);
    const auto& links = kesta.DeclaredInstances(*kesta.FindClass(L"Link"));
    EXPECT_EQ(L"Link.Next=\"Link.Next=\\\"End.Name=\\\\\\\"c\\\\\\\"\\\"\"", RelativePath(*links[0]));
}

TEST(HostRepository, ADeepLineOfClassesIsNoTrouble)
{
    std::wstring mof;
    for (int i = 2000; i > 0; --i)
        mof += L"class C" + std::to_wstring(i) + L" : C" + std::to_wstring(i - 1) + L" {};\n";
    mof += L"class C0 { string X; };";
    const auto repository = Repository::FromText(mof);
    EXPECT_TRUE(Kesta(*repository).FindClass(L"C2000")->DerivesFrom(L"C0"));
}

TEST(HostRepository, EveryNamespaceHasTheSystemClasses)
{
    const auto repository = Repository::FromText(L"");
    for (const wchar_t* name : {L"__Win32Provider", L"__InstanceProviderRegistration", L"__MethodProviderRegistration",
                                L"__ExtendedStatus", L"__NAMESPACE"})
        EXPECT_NE(nullptr, Kesta(*repository).FindClass(name)) << ::testing::PrintToString(std::wstring(name));
}

struct BadMof
{
    const wchar_t* mof;
    const wchar_t* error;
};

void PrintTo(const BadMof& bad, std::ostream* stream)
{
    *stream << ::testing::PrintToString(std::wstring(bad.mof));
}

class HostRepositoryRefusal : public ::testing::TestWithParam<BadMof>
{
};

TEST(HostRepository, TakesAsManyPropertiesOfAClassAsThereMayBe)
{
    const auto mof = [](std::size_t count)
    {
        std::wstring text = L"class A {";
        for (std::size_t i = 0; i < count; ++i)
            text += L" string P" + std::to_wstring(i) + L";";
        return text + L" };";
    };
    EXPECT_EQ(ErrorOf(mof(1024)), L"no error");
    EXPECT_NE(ErrorOf(mof(1025)).find(L"1024 properties"), std::wstring::npos);
}

TEST_P(HostRepositoryRefusal, NamesPlaceAndReason)
{
    EXPECT_EQ(GetParam().error, ErrorOf(GetParam().mof));
}

INSTANTIATE_TEST_SUITE_P(
    All, HostRepositoryRefusal,
    ::testing::Values(
        BadMof{L"class A : B {};", L"a.mof:1:1: the superclass B of A does not exist in root\\KESTA"},
        BadMof{L"class A : B {};\nclass B : A {};", L"a.mof:1:1: the class A is its own superclass"},
        BadMof{L"class A {};\n  class a {};", L"a.mof:2:3: the class a is declared already, in a.mof line 1"},
        BadMof{L"class __Provider {};", L"a.mof:1:1: the class __Provider is one of the system's own"},
        BadMof{L"class A { string X; uint8 x; };", L"a.mof:1:27: the property \"x\" is given twice"},
        BadMof{L"class A { string X; };\nclass B : A { uint8 X; };",
               L"a.mof:2:21: the property X of B is string in A and cannot change its type"},
        BadMof{L"class A { void M(); void m(); };", L"a.mof:1:26: the method \"m\" is given twice"},
        BadMof{L"instance of A {};", L"a.mof:1:1: the class A of this instance does not exist in root\\KESTA"},
        BadMof{L"class A { string X; };\ninstance of A { Y = 1; };", L"a.mof:2:17: the class A has no property Y"},
        BadMof{L"class A { uint8 X; };\ninstance of A { X = 300; };",
               L"a.mof:2:17: the property X is uint8: 300 does not fit uint8"},
        BadMof{L"class A { [key] A ref X; };\ninstance of A as $a { X = $b; };\ninstance of A as $b { X = $a; };",
               L"a.mof:2:1: the keys of this instance refer to themselves"},
        BadMof{L"class A { string X; A ref Y; };\ninstance of A as $a { X = \"x\"; };\ninstance of A { Y = $a; };",
               L"a.mof:3:1: the instance $a has no path: a key is missing"}));

TEST(HostRepository, SyntaxErrorsNameFileLineAndColumn)
{
    const std::wstring error = ErrorOf(L"class A\n{\n    strin\n};");
    EXPECT_TRUE(error.starts_with(L"a.mof:")) << ::testing::PrintToString(error);
    EXPECT_NE(error.npos, error.find(L":4:")) << ::testing::PrintToString(error);
}

class HostSchemaFolder : public ::testing::Test
{
protected:
    void Write(const std::string& name, const std::string& text) { std::ofstream(m_folder / name) << text; }
    std::wstring Error() const
    {
        try
        {
            Repository::FromFolder(m_folder.Path());
            return L"no error";
        }
        catch (const RepositoryError& error)
        {
            return error.text;
        }
    }

    TestFolder m_folder;
};

TEST_F(HostSchemaFolder, AllMofFilesMakeOneSchemaInTheOrderOfTheirNames)
{
    Write("b.mof", "class B : A {};");
    Write("A.MOF", "class A {};");
    Write("c.mof", "class C : B {};");
    Write("readme.txt", "no MOF at all");
    const auto repository = Repository::FromFolder(m_folder.Path());
    std::vector<std::wstring> names;
    for (const auto& each : Kesta(*repository).Classes())
    {
        if (!each->IsSystem())
            names.push_back(each->Name());
    }
    EXPECT_EQ((std::vector<std::wstring>{L"A", L"B", L"C"}), names);
}

TEST_F(HostSchemaFolder, ABadFileIsNamed)
{
    Write("a.mof", "class A {};");
    Write("b.mof", "\nclass B : Missing {};");
    EXPECT_EQ((m_folder / "b.mof").wstring() + L":2:1: the superclass Missing of B does not exist in root\\KESTA",
              Error());
}

TEST_F(HostSchemaFolder, AFolderWithoutMofIsNamed)
{
    EXPECT_EQ(L"the schema folder " + m_folder.Path().wstring() + L" has no *.mof file", Error());
}

TEST(HostRepository, AMissingFolderIsNamed)
{
    const std::filesystem::path missing = UniquePath("no-schema");
    try
    {
        Repository::FromFolder(missing);
        FAIL() << "a folder that does not exist was read";
    }
    catch (const RepositoryError& error)
    {
        EXPECT_TRUE(error.text.starts_with(L"the schema folder " + missing.wstring() + L" cannot be read: error "))
            << ::testing::PrintToString(error.text);
    }
}

} // namespace
} // namespace orl::test
