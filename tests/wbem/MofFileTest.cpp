// MOF from files: encodings, includes, several files in one document.
#include "Shown.h"
#include "wbem/MofReader.h"
#include "wbem/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace wbem
{
namespace
{

namespace fs = std::filesystem;

class MofFile : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::remove_all(m_folder);
        fs::create_directories(m_folder);
    }
    void TearDown() override { fs::remove_all(m_folder); }

    fs::path Write(const std::string& name, std::string_view bytes) const
    {
        const fs::path file = m_folder / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return file;
    }

    // The error of reading the file, with the folder as "*".
    std::string Error(const fs::path& file) const
    {
        const auto result = ReadMofFile(file);
        if (result)
            return "read";
        std::string text = Utf8(result.Error().Text());
        const std::string folder = m_folder.string();
        for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder))
            text.replace(at, folder.size(), "*");
        std::replace(text.begin(), text.end(), '\\', '/');
        return text;
    }

    const fs::path m_folder =
        fs::path(ORL_TEST_TMP) / (std::string("mof-") + testing::UnitTest::GetInstance()->current_test_info()->name());
};

std::string Utf16(std::wstring_view text, bool little)
{
    std::string bytes;
    for (const wchar_t c : text)
    {
        const auto low = static_cast<char>(c & 0xFF);
        const auto high = static_cast<char>((c >> 8) & 0xFF);
        bytes += little ? low : high;
        bytes += little ? high : low;
    }
    return bytes;
}

std::vector<std::wstring> ClassNames(const MofDocument& document)
{
    std::vector<std::wstring> names;
    for (const MofDeclaration& declaration : document.declarations)
        names.push_back(std::get<MofClass>(declaration).name);
    return names;
}

TEST_F(MofFile, EveryEncodingIsRead)
{
    const std::wstring text = L"class Gr\x00F6\x00DF"
                              L"e\x20AC {};";
    const std::wstring beyond = L"[d(\"\xD83D\xDE00\")] class C {};"; // UTF-16 for U+1F600
    const std::pair<const char*, std::string> files[] = {
        {"utf8", ToUtf8(text)},
        {"utf8mark", "\xEF\xBB\xBF" + ToUtf8(text)},
        {"little", "\xFF\xFE" + Utf16(text, true)},
        {"big", "\xFE\xFF" + Utf16(text, false)},
        {"littleplain", Utf16(text, true)},
        {"bigplain", Utf16(text, false)},
    };
    for (const auto& [name, bytes] : files)
    {
        SCOPED_TRACE(name);
        const auto result = ReadMofFile(Write(name, bytes));
        ASSERT_TRUE(result) << Utf8(result.Error().Text());
        EXPECT_EQ(ClassNames(*result), std::vector<std::wstring>{L"Gr\x00F6\x00DF"
                                                                 L"e\x20AC"});
    }
    for (const bool little : {true, false})
    {
        const auto result = ReadMofFile(Write("beyond", (little ? "\xFF\xFE" : "\xFE\xFF") + Utf16(beyond, little)));
        ASSERT_TRUE(result) << Utf8(result.Error().Text());
        EXPECT_EQ(std::get<MofClass>(result->declarations[0]).qualifiers[0].value.AsText(), L"\U0001F600");
    }
}

TEST_F(MofFile, DamagedEncodingsAreRefusedWithTheirPlace)
{
    EXPECT_EQ(Error(Write("a", "class C {};\n[d(\"\xE9\")] class D {};")), "*/a:2:5: the byte 0xE9 is not UTF-8");
    EXPECT_EQ(Error(Write("b", "\xFF\xFE" + Utf16(L"class C\xDC01 {};", true))),
              "*/b:1:8: the character U+DC01 is half of a surrogate pair");
    EXPECT_EQ(Error(Write("c", "\xFF\xFE" + Utf16(L"class C {};", true) + "x")),
              "*/c:1:12: the character U+DC78 is half of a surrogate pair");
    EXPECT_EQ(Error(Write("d", std::string("class C {};\0", 12))),
              "*/d:1:12: the control character U+0000 is no part of MOF");
    EXPECT_EQ(Error(Write("e", "")), "read");
}

TEST_F(MofFile, AFileThatCannotBeReadIsNamed)
{
    EXPECT_EQ(Error(m_folder / "none.mof"), "*/none.mof: there is no such file");
    EXPECT_EQ(Error(m_folder), "*: this is a folder, not a file");
    const auto result = ReadMofFile(m_folder / "none.mof");
    EXPECT_EQ(result.Error().line, 0u);
}

TEST_F(MofFile, IncludesAreRelativeToTheFileThatHasThem)
{
    Write("sub/deeper/c.mof", "class C {};");
    Write("sub/b.mof", "class B1 {};\n#pragma include(\"deeper\\\\c.mof\")\nclass B2 {};");
    const auto result = ReadMofFile(Write("a.mof", "class A1 {};\n#pragma include (\"sub/b.mof\")\nclass A2 {};"));
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    EXPECT_EQ(ClassNames(*result), (std::vector<std::wstring>{L"A1", L"B1", L"C", L"B2", L"A2"}));
    ASSERT_EQ(result->files.size(), 3u);
    const auto position = [&](std::size_t i) { return std::get<MofClass>(result->declarations[i]).position; };
    EXPECT_EQ(position(0).file, 0u);
    EXPECT_EQ(position(1).file, 1u);
    EXPECT_EQ(position(2).file, 2u);
    EXPECT_EQ(position(3), (MofPosition{1, 3, 1}));
    EXPECT_EQ(position(4).file, 0u);
    EXPECT_EQ(fs::path(ToUtf8(result->files[2].name)).filename(), "c.mof");
    EXPECT_EQ(result->files[2].root, 0u);
}

TEST_F(MofFile, ANamespaceGoesIntoIncludesAndEndsWithItsFile)
{
    Write("b.mof", "class B1 {};\n#pragma namespace(\"root/b\")\nclass B2 {};");
    const auto result =
        ReadMofFile(Write("a.mof", "#pragma namespace(\"root/a\")\n#pragma include(\"b.mof\")\nclass A {};"));
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    std::vector<std::wstring> spaces;
    for (const MofDeclaration& declaration : result->declarations)
        spaces.push_back(std::get<MofClass>(declaration).nameSpace);
    EXPECT_EQ(spaces, (std::vector<std::wstring>{L"root/a", L"root/b", L"root/a"}));
}

TEST_F(MofFile, AnErrorNamesTheFileItIsIn)
{
    Write("b.mof", "class B {};\nclass B {}");
    EXPECT_EQ(Error(Write("a.mof", "#pragma include(\"b.mof\")")),
              "*/b.mof:2:11: a ';' is expected after the class \"B\"");
    EXPECT_EQ(Error(Write("c.mof", "\n #pragma include(\"none.mof\")")),
              "*/c.mof:2:2: \"*/none.mof\" cannot be included: there is no such file");
    EXPECT_EQ(Error(Write("d.mof", "#pragma include(\".\")")),
              "*/d.mof:1:1: \"*/.\" cannot be included: this is a folder, not a file");
    Write("f.mof", "instance of X { a = $Missing; };");
    EXPECT_EQ(Error(Write("e.mof", "#pragma include(\"f.mof\")")), "*/f.mof:1:21: the alias $Missing is not declared");
}

TEST_F(MofFile, CirclesOfIncludesAreRefused)
{
    Write("b.mof", "#pragma include(\"c.mof\")");
    Write("c.mof", "class C {};\n#pragma include(\"./a.mof\")");
    EXPECT_EQ(Error(Write("a.mof", "#pragma include(\"b.mof\")")), "*/c.mof:2:1: \"*/./a.mof\" includes itself");
    EXPECT_EQ(Error(Write("self.mof", "#pragma include(\"self.mof\")")),
              "*/self.mof:1:1: \"*/self.mof\" includes itself");
}

TEST_F(MofFile, ChainsAndTreesOfIncludesAreBounded)
{
    for (int i = 0; i < 40; ++i)
        Write("chain" + std::to_string(i), "#pragma include(\"chain" + std::to_string(i + 1) + "\")");
    EXPECT_EQ(Error(m_folder / "chain0"), "*/chain32:1:1: \"*/chain33\" is included deeper than 32 levels");

    Write("tree20", "class C {};");
    for (int i = 0; i < 20; ++i)
    {
        const std::string next = "#pragma include(\"tree" + std::to_string(i + 1) + "\")\n";
        Write("tree" + std::to_string(i), next + next);
    }
    const std::string error = Error(m_folder / "tree0");
    EXPECT_NE(error.find("cannot be included: more than 5000 files"), std::string::npos) << error;
}

TEST_F(MofFile, SeveralFilesMakeOneDocumentAndKeepTheirAliasesApart)
{
    const std::vector<fs::path> files = {
        Write("one.mof", "instance of P as $P { n = 1; }; instance of R { p = $P; };\n#pragma namespace(\"root/one\")"),
        Write("two.mof", "instance of R { p = $p; }; instance of P as $P { n = 2; };"),
    };
    const auto result = ReadMofFiles(files);
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    ASSERT_EQ(result->declarations.size(), 4u);
    const auto target = [&](std::size_t user)
    {
        const auto& instance = std::get<MofInstance>(result->declarations[user]);
        const auto* found = result->FindAlias(instance.properties[0].value.AsText(), instance.properties[0].position);
        return found ? Shown(std::get<MofInstance>(*found).properties[0].value) : "none";
    };
    EXPECT_EQ(target(1), "sint32 1");
    EXPECT_EQ(target(2), "sint32 2");
    EXPECT_EQ(std::get<MofInstance>(result->declarations[2]).nameSpace, L"") << "a namespace ends with its file";

    const std::vector<fs::path> apart = {Write("three.mof", "instance of P as $Q {};"),
                                         Write("four.mof", "instance of R { p = $Q; };")};
    const auto refused = ReadMofFiles(apart);
    ASSERT_FALSE(refused);
    EXPECT_EQ(Utf8(refused.Error().reason), "the alias $Q is not declared");
}

TEST_F(MofFile, ATextInMemoryIncludesFromItsFolder)
{
    Write("b.mof", "class B {};");
    const auto result = ReadMofText(L"#pragma include(\"b.mof\")\nclass A {};", L"memory", m_folder);
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    EXPECT_EQ(ClassNames(*result), (std::vector<std::wstring>{L"B", L"A"}));
    EXPECT_EQ(result->files[0].name, L"memory");
}

TEST_F(MofFile, NamesOfFilesMayHoldAnyLetter)
{
    const fs::path file = m_folder / fs::path(std::u8string(u8"größe€.mof"));
    std::ofstream(file) << "class C {};";
    const auto result = ReadMofText(L"#pragma include(\"größe€.mof\")", L"memory", m_folder);
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    EXPECT_TRUE(ToUtf8(result->files[1].name).ends_with("größe€.mof")) << Utf8(result->files[1].name);
}

} // namespace
} // namespace wbem
