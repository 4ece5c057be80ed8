// Resource scripts: what is understood, and how the rest is refused.
#include "tests/support/TestFolder.h"
#include "winport/tools/RcFile.h"

#include <fstream>
#include <gtest/gtest.h>

namespace
{

class RcFile : public ::testing::Test
{
protected:
    RcTexts Read(const std::string& script)
    {
        std::ofstream(m_script, std::ios::binary) << script;
        return ReadRcFile(m_script);
    }
    // The message without the folder.
    std::string Refusal(const std::string& script)
    {
        try
        {
            Read(script);
            return "(read)";
        }
        catch (const std::exception& refusal)
        {
            return std::string(refusal.what()).substr(m_folder.Path().string().size() + 1);
        }
    }

    orl::test::TestFolder m_folder;
    std::filesystem::path m_script = m_folder / "t.rc";
};

TEST_F(RcFile, TablesAreReadTogether)
{
    EXPECT_EQ(Read("STRINGTABLE BEGIN 7 \"seven\" END\nSTRINGTABLE { 0x10, \"sixteen\" }"),
              (RcTexts{{7, "seven"}, {16, "sixteen"}}));
}

TEST_F(RcFile, NumbersHaveNamesFromTheScriptAndItsHeaders)
{
    std::ofstream(m_folder / "ids.h") << "#pragma once\n#ifndef X\n#define IDS_A 1\n#define NOT_A_NUMBER x\n#endif\n";
    EXPECT_EQ(Read("#include \"ids.h\"\n#include <windows.h>\n#define IDS_B 0x2L\nSTRINGTABLE BEGIN\nIDS_A \"a\"\n"
                   "IDS_B \"b\"\nEND\n"),
              (RcTexts{{1, "a"}, {2, "b"}}));
}

TEST_F(RcFile, EscapesAndDoubledQuotesAreOneCharacter)
{
    EXPECT_EQ(Read("STRINGTABLE BEGIN 1 \"a\\n\\t\\\\\\\"\"\"b\" 2 L\"x\" \"y\" END"),
              (RcTexts{{1, "a\n\t\\\"\"b"}, {2, "xy"}}));
}

TEST_F(RcFile, CommentsLanguagesAndVersionsArePassedOver)
{
    EXPECT_EQ(Read("\xEF\xBB\xBF// one\n/* two\n*/ LANGUAGE 0x09, 0x01\n#pragma code_page(65001)\n"
                   "1 VERSIONINFO FILEVERSION 1,0,0,0 BEGIN BLOCK \"x\" BEGIN VALUE \"a\", \"b\" END END\n"
                   "STRINGTABLE LANGUAGE 9, 1 BEGIN 1 \"// no comment\" END"),
              (RcTexts{{1, "// no comment"}}));
}

TEST_F(RcFile, AnythingElseIsRefusedWithItsPlace)
{
    const std::pair<const char*, const char*> cases[] = {
        {"\nICON x", "t.rc:2: only STRINGTABLE, LANGUAGE and VERSIONINFO are understood here, not 'ICON'"},
        {"100 DIALOG", "t.rc:1: only VERSIONINFO is understood behind a number, not 'DIALOG'"},
        {"STRINGTABLE\n1 \"x\"", "t.rc:2: STRINGTABLE is followed by BEGIN"},
        {"STRINGTABLE BEGIN\nIDS_X \"x\" END", "t.rc:2: a text's number is expected, not 'IDS_X'"},
        {"STRINGTABLE BEGIN 1 2 END", "t.rc:1: text 1 has no text in quotes"},
        {"STRINGTABLE BEGIN 65536 \"x\" END", "t.rc:1: a text's number is at most 65535"},
        {"STRINGTABLE BEGIN 99999999999 \"x\" END", "t.rc:1: the number is too large"},
        {"STRINGTABLE BEGIN\n1 \"x\"\n1 \"y\"\nEND", "t.rc:4: text 1 is there twice"},
        {"STRINGTABLE BEGIN 1 \"x", "t.rc:1: the text has no closing quote"},
        {"STRINGTABLE BEGIN 1 \"x\ny\" END", "t.rc:1: the text has no closing quote"},
        {"STRINGTABLE BEGIN 1 \"\\q\" END", "t.rc:1: the escape '\\q' is not understood here"},
        {"STRINGTABLE BEGIN 1 \"x\"", "t.rc:1: a text's number is expected, not ''"},
        {"/* x", "t.rc:1: the comment has no end"},
        {"#if X\n", "t.rc:1: #if is not understood here"},
        {"LANGUAGE 9 1", "t.rc:1: LANGUAGE takes two values with a comma between them"},
        {"1 VERSIONINFO BEGIN", "t.rc:1: VERSIONINFO has no END"},
        {"#include \"none.h\"\n", "none.h: cannot be opened"},
    };
    for (const auto& [script, message] : cases)
        EXPECT_EQ(Refusal(script), message) << script;
}

TEST_F(RcFile, AMissingScriptIsNamed)
{
    EXPECT_THROW(ReadRcFile(m_folder / "none.rc"), std::runtime_error);
}

} // namespace
