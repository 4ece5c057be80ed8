// The registry file on disk: seen when it changes, replaced as a whole, never written over damage.
#include "tests/support/TestFolder.h"
#include "winport/src/RegStore.h"

#include <windows.h>

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using orl::test::BytesOfFile;
using orl::test::EnvironmentSetting;
using orl::test::TestFolder;

constexpr char Header[] = "Windows Registry Editor Version 5.00\n";

class RegStore : public ::testing::Test
{
protected:
    void Write(const std::string& text) { std::ofstream(m_file, std::ios::binary) << text; }
    LSTATUS SetNumber(const wchar_t* name, DWORD number)
    {
        HKEY key = nullptr;
        LSTATUS status =
            RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\T", 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
        if (status == ERROR_SUCCESS)
            status = RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
        if (key)
            RegCloseKey(key);
        return status;
    }
    // -1 when there is none.
    LONGLONG Number(const wchar_t* name)
    {
        HKEY key = nullptr;
        DWORD number = 0;
        DWORD size = sizeof number;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\T", 0, KEY_READ, &key) != ERROR_SUCCESS)
            return -1;
        const LSTATUS status = RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &size);
        RegCloseKey(key);
        return status == ERROR_SUCCESS ? LONGLONG{number} : -1;
    }

    TestFolder m_folder;
    std::filesystem::path m_file = m_folder / "registry.reg";
    EnvironmentSetting m_setting{L"ORL2_REGISTRY", (m_folder.Text() + L"/registry.reg").c_str()};
};

TEST_F(RegStore, WithoutAFileThereIsNothingAndNoComplaint)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(Number(L"A"), -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(std::filesystem::exists(m_file));
}

TEST_F(RegStore, AFileIsMadeByTheFirstChange)
{
    EXPECT_EQ(SetNumber(L"A", 5), ERROR_SUCCESS);
    EXPECT_EQ(BytesOfFile(m_file), std::string(Header) + "\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\n\"A\"=dword:00000005\n");
}

TEST_F(RegStore, AFileThatAnotherProgramWritesIsReadAgain)
{
    for (int i = 0; i < 10; ++i)
    {
        Write(std::string(Header) + "[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\n\"A\"=dword:" + std::to_string(i) + "\n");
        EXPECT_EQ(Number(L"A"), i);
    }
    std::filesystem::remove(m_file);
    EXPECT_EQ(Number(L"A"), -1);
}

TEST_F(RegStore, DamageIsReportedOnceWithFileLineAndReason)
{
    Write(std::string(Header) + "[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\nbad\n\"A\"=dword:1\n");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Number(L"A"), 1);
    EXPECT_EQ(Number(L"A"), 1);
    std::filesystem::last_write_time(m_file, std::filesystem::last_write_time(m_file) - std::chrono::hours(1));
    EXPECT_EQ(Number(L"A"), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "registry file " + m_file.string() +
                                                          ", line 3: it is neither a key nor a value nor a comment; "
                                                          "left out\n");
}

TEST_F(RegStore, ADamagedFileIsNotWrittenOver)
{
    const std::string text = std::string(Header) + "[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\n\"A\"=dword:1\nprecious\n";
    Write(text);
    testing::internal::CaptureStderr();
    EXPECT_EQ(SetNumber(L"A", 2), ERROR_BADDB);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "registry file " + m_file.string() +
                                                          ", line 4: it is neither a key nor a value nor a comment; "
                                                          "left out\n");
    EXPECT_EQ(BytesOfFile(m_file), text);
    EXPECT_EQ(Number(L"A"), 1);
}

TEST_F(RegStore, WhatIsNoFileIsReported)
{
    std::filesystem::create_directory(m_file);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Number(L"A"), -1);
    EXPECT_EQ(SetNumber(L"A", 2), ERROR_BADDB);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "registry file " + m_file.string() + ": it is no regular file; left out\n");
}

TEST_F(RegStore, APipeDoesNotMakeItWait)
{
    ASSERT_EQ(mkfifo(m_file.c_str(), 0600), 0);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Number(L"A"), -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "registry file " + m_file.string() + ": it is no regular file; left out\n");
}

TEST_F(RegStore, AMissingFolderIsAnErrorOfTheWriter)
{
    const EnvironmentSetting elsewhere(L"ORL2_REGISTRY", (m_folder.Text() + L"/none/registry.reg").c_str());
    EXPECT_EQ(Number(L"A"), -1);
    EXPECT_EQ(SetNumber(L"A", 2), ERROR_PATH_NOT_FOUND);
}

TEST_F(RegStore, ChangesKeepCommentsAndTheFilesMode)
{
    Write(std::string(Header) + "; by hand\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\n; why\n\"A\"=dword:1\n");
    chmod(m_file.c_str(), 0640);
    EXPECT_EQ(SetNumber(L"B", 2), ERROR_SUCCESS);
    EXPECT_EQ(BytesOfFile(m_file), std::string(Header) + "\n; by hand\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\n; why\n"
                                                         "\"A\"=dword:00000001\n\"B\"=dword:00000002\n");
    struct stat status;
    ASSERT_EQ(stat(m_file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

TEST_F(RegStore, ALinkStaysALink)
{
    const std::filesystem::path real = m_folder / "real.reg";
    std::ofstream(real) << Header;
    std::filesystem::create_symlink(real, m_file);
    EXPECT_EQ(SetNumber(L"A", 1), ERROR_SUCCESS);
    EXPECT_TRUE(std::filesystem::is_symlink(m_file));
    EXPECT_NE(BytesOfFile(real).find("\"A\"=dword:00000001"), std::string::npos);
}

TEST_F(RegStore, ItsHelpersAreNeverFollowedThroughALink)
{
    const std::filesystem::path precious = m_folder / "precious";
    for (const char* name : {"registry.reg.lock", "registry.reg.new"})
    {
        Write(Header);
        std::ofstream(precious, std::ios::trunc) << "precious";
        std::filesystem::remove(m_folder / name);
        std::filesystem::create_symlink(precious, m_folder / name);
        const bool isLock = std::string(name) == "registry.reg.lock";
        EXPECT_EQ(SetNumber(L"A", 1), isLock ? ERROR_ACCESS_DENIED : ERROR_SUCCESS) << name;
        EXPECT_EQ(BytesOfFile(precious), "precious") << name;
        EXPECT_EQ(std::filesystem::is_symlink(m_folder / name), isLock) << "a planted leftover goes, like any other";
        std::filesystem::remove(m_folder / name);
    }
    std::filesystem::remove(m_folder / "registry.reg.lock");
    std::filesystem::create_symlink(m_folder / "nowhere", m_folder / "registry.reg.lock");
    EXPECT_EQ(SetNumber(L"A", 1), ERROR_ACCESS_DENIED);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "nowhere"));
}

TEST_F(RegStore, TheLockIsForThoseWhoMayWriteAlone)
{
    const mode_t before = umask(0);
    Write(Header);
    chmod(m_file.c_str(), 0644);
    EXPECT_EQ(SetNumber(L"A", 1), ERROR_SUCCESS);
    umask(before);
    struct stat status;
    ASSERT_EQ(stat((m_folder / "registry.reg.lock").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u) << "a reader could hold up every writer";
}

TEST_F(RegStore, AWriterThatHangsDoesNotHoldUpTheOthersForEver)
{
    Write(Header);
    const auto setNothing = [](winport::RegFile&) -> LSTATUS { return ERROR_SUCCESS; };
    ASSERT_EQ(winport::ChangeRegistry(setNothing), ERROR_SUCCESS);
    const int hung = open((m_folder / "registry.reg.lock").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(hung, 0);
    ASSERT_EQ(flock(hung, LOCK_EX), 0);
    EXPECT_EQ(winport::ChangeRegistry(setNothing, std::chrono::milliseconds(20)), ERROR_BUSY);
    EXPECT_EQ(Number(L"A"), -1) << "reading needs no lock";
    close(hung);
    EXPECT_EQ(winport::ChangeRegistry(setNothing, std::chrono::milliseconds(20)), ERROR_SUCCESS);
}

TEST_F(RegStore, AFailedChangeLeavesTheFileAsItWas)
{
    Write(Header);
    EXPECT_EQ(winport::ChangeRegistry(
                  [](winport::RegFile& file) -> LSTATUS
                  {
                      file.root.Make(L"HKEY_LOCAL_MACHINE\\X");
                      return ERROR_ACCESS_DENIED;
                  }),
              ERROR_ACCESS_DENIED);
    EXPECT_EQ(BytesOfFile(m_file), Header);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "registry.reg.new"));
}

TEST_F(RegStore, AReaderKeepsTheVersionThatItHolds)
{
    Write(Header);
    const auto before = winport::ReadRegistry();
    EXPECT_EQ(SetNumber(L"A", 1), ERROR_SUCCESS);
    EXPECT_TRUE(before->root.keys.empty());
    EXPECT_FALSE(winport::ReadRegistry()->root.keys.empty());
}

TEST_F(RegStore, ProcessesChangeItInTurnAndReadersSeeWholeFiles)
{
    constexpr int Processes = 4;
    constexpr int Changes = 25;
    Write(Header);
    std::vector<pid_t> children;
    for (int process = 0; process < Processes; ++process)
    {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0)
        {
            bool good = true;
            for (int change = 0; change < Changes; ++change)
                good = good && SetNumber((L"V" + std::to_wstring(process * Changes + change)).c_str(), 1) == 0 &&
                       winport::ReadRegistry()->damage.empty();
            _exit(good ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children)
    {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    for (int value = 0; value < Processes * Changes; ++value)
        EXPECT_EQ(Number((L"V" + std::to_wstring(value)).c_str()), 1) << value;
}

} // namespace
