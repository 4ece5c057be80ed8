// Wide file names, UTF-8, and writing wide text whatever the locale.
#include "tests/support/TestFolder.h"
#include "winport/portable/Utf8.h"

#include <windows.h>
#include <io.h>

#include <clocale>
#include <cstdio>
#include <gtest/gtest.h>

namespace
{

using orl::test::BytesOfFile;
using orl::test::TestFolder;

TEST(Utf8, TextsGoThereAndBack)
{
    const std::pair<const wchar_t*, const char*> texts[] = {{L"", ""},
                                                            {L"plain", "plain"},
                                                            {L"\u00e4\u20ac\u4e2d", "\xC3\xA4\xE2\x82\xAC\xE4\xB8\xAD"},
                                                            {L"\U0001F600", "\xF0\x9F\x98\x80"}};
    for (const auto& [wide, bytes] : texts)
    {
        EXPECT_EQ(orl::ToUtf8(wide), bytes);
        EXPECT_EQ(orl::FromUtf8(bytes), wide);
    }
    EXPECT_EQ(orl::FromUtf8("a\xFF"), L"a\ufffd");
    EXPECT_EQ(orl::ToUtf8(std::wstring(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(Paths, EitherSeparatorMeansAFolder)
{
    const std::filesystem::path path = orl::NativePath(L"some\\dir/\u00e4.txt");
    EXPECT_EQ(path.filename(), orl::NativePath(L"\u00e4.txt"));
    EXPECT_EQ(path.parent_path().filename().string(), "dir");
    EXPECT_EQ(orl::PathText(path.filename()), L"\u00e4.txt");
}

TEST(WideFiles, ANameMayUseEitherSeparatorAndAnyCharacter)
{
    const TestFolder folder;
    FILE* file = _wfopen((folder.Text() + L"\\.\\\u00e4\u4e2d.txt").c_str(), L"w");
    ASSERT_NE(file, nullptr);
    std::fputs("x", file);
    std::fclose(file);
    EXPECT_EQ(BytesOfFile(folder.Path() / orl::NativePath(L"\u00e4\u4e2d.txt")), "x");
    EXPECT_EQ(_wremove((folder.Text() + L"/\u00e4\u4e2d.txt").c_str()), 0);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / orl::NativePath(L"\u00e4\u4e2d.txt")));
}

TEST(WideFiles, AFileThatCannotBeOpenedIsNull)
{
    const TestFolder folder;
    EXPECT_EQ(_wfopen((folder.Text() + L"/none/x.txt").c_str(), L"w"), nullptr);
    EXPECT_EQ(_wfopen((folder.Text() + L"/none.txt").c_str(), L"r"), nullptr);
}

TEST(WideFiles, WAndAPlusBeginAndGoOn)
{
    const TestFolder folder;
    const std::wstring name = folder.Text() + L"/log.txt";
    const auto write = [&](const wchar_t* mode)
    {
        FILE* file = _wfopen(name.c_str(), mode);
        ASSERT_NE(file, nullptr);
        EXPECT_TRUE(orl::WriteUtf8(file, L"x"));
        std::fclose(file);
    };
    write(L"w");
    write(L"a+");
    EXPECT_EQ(BytesOfFile(folder / "log.txt"), "xx");
    write(L"w");
    EXPECT_EQ(BytesOfFile(folder / "log.txt"), "x");
}

TEST(WideFiles, TheLengthIsThatOfWhatWasFlushed)
{
    const TestFolder folder;
    FILE* file = _wfopen((folder.Text() + L"/log.txt").c_str(), L"wb");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(_filelength(_fileno(file)), 0);
    std::fputs("12345", file);
    std::fflush(file);
    EXPECT_EQ(_filelength(_fileno(file)), 5);
    std::fclose(file);
    EXPECT_EQ(_filelength(-1), -1);
}

TEST(WideFiles, TextIsWrittenAsUtf8InAnyLocale)
{
    const TestFolder folder;
    std::setlocale(LC_ALL, "C");
    FILE* file = _wfopen((folder.Text() + L"/log.txt").c_str(), L"wb");
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(orl::WriteUtf8(file, L"\u00e4\u4e2d\U0001F600\n"));
    EXPECT_TRUE(orl::WriteUtf8(file, L""));
    std::fclose(file);
    EXPECT_EQ(BytesOfFile(folder / "log.txt"), "\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80\n");
}

TEST(WideFiles, ALongTextIsWrittenWhole)
{
    const TestFolder folder;
    // Characters of four bytes across every end of a piece.
    for (const size_t before : {1020u, 1021u, 1022u, 1023u, 1024u})
    {
        std::wstring text(before, L'x');
        std::string bytes(before, 'x');
        for (int i = 0; i < 2000; ++i)
        {
            text += L"\U0001F600";
            bytes += "\xF0\x9F\x98\x80";
        }
        FILE* file = _wfopen((folder.Text() + L"/log.txt").c_str(), L"wb");
        ASSERT_NE(file, nullptr);
        EXPECT_TRUE(orl::WriteUtf8(file, text.c_str()));
        std::fclose(file);
        EXPECT_EQ(BytesOfFile(folder / "log.txt"), bytes);
    }
}

TEST(WideFiles, AFileThatRefusesIsToldToTheCaller)
{
    const TestFolder folder;
    std::fclose(_wfopen((folder.Text() + L"/log.txt").c_str(), L"w"));
    FILE* file = _wfopen((folder.Text() + L"/log.txt").c_str(), L"r");
    ASSERT_NE(file, nullptr);
    EXPECT_FALSE(orl::WriteUtf8(file, L"x"));
    std::fclose(file);
}

} // namespace
