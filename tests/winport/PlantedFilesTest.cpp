// What somebody has put where a file is going to be written.
#include "tests/support/TestFolder.h"

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

using orl::test::BytesOfFile;
using orl::test::TestFolder;

class PlantedFile : public ::testing::TestWithParam<const wchar_t*>
{
protected:
    FILE* Open() { return _wfopen((m_folder.Text() + L"/log.txt").c_str(), GetParam()); }

    const TestFolder m_folder;
    const std::filesystem::path m_log = m_folder / "log.txt";
    const std::filesystem::path m_precious = m_folder / "precious";
};

TEST_P(PlantedFile, IsNotWrittenThroughASymbolicLink)
{
    std::ofstream(m_precious) << "precious";
    std::filesystem::create_symlink(m_precious, m_log);
    EXPECT_EQ(Open(), nullptr);
    EXPECT_EQ(BytesOfFile(m_precious), "precious");

    std::filesystem::remove(m_log);
    std::filesystem::create_symlink(m_folder / "nowhere", m_log);
    EXPECT_EQ(Open(), nullptr);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "nowhere"));
}

TEST_P(PlantedFile, IsNotWrittenUnderASecondName)
{
    std::ofstream(m_precious) << "precious";
    std::filesystem::create_hard_link(m_precious, m_log);
    EXPECT_EQ(Open(), nullptr);
    EXPECT_EQ(BytesOfFile(m_precious), "precious");
}

TEST_P(PlantedFile, DoesNotWaitForTheOtherEndOfAPipe)
{
    ASSERT_EQ(mkfifo(m_log.c_str(), 0600), 0);
    EXPECT_EQ(Open(), nullptr);
}

TEST_P(PlantedFile, IsAnOrdinaryOneOtherwise)
{
    std::ofstream(m_log) << "before";
    FILE* file = Open();
    ASSERT_NE(file, nullptr);
    std::fputs("after", file);
    std::fclose(file);
    EXPECT_EQ(BytesOfFile(m_log), GetParam()[0] == L'w' ? "after" : "beforeafter");
}

INSTANTIATE_TEST_SUITE_P(Modes, PlantedFile, ::testing::Values(L"w", L"a+"),
                         [](const auto& instance) { return instance.param[0] == L'w' ? "Anew" : "Appending"; });

} // namespace
