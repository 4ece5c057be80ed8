// When an inventory's file is read, and what is said when it cannot be.

#include "Inventories.h"

#include "agentlibs/BackendError.h"
#include "agentlibs/inventory/InventoryFile.h"
#include "tests/support/TestFolder.h"
#include "winport/portable/Utf8.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <thread>

namespace orl::test
{

namespace
{

using namespace std::chrono_literals;

class InventoryFiles : public testing::Test
{
protected:
    void Write(const std::string& text, InventoryFile::Clock::duration age = 1h)
    {
        std::ofstream(m_path, std::ios::binary | std::ios::trunc) << text;
        std::filesystem::last_write_time(m_path, m_now - age);
    }
    std::size_t HbasNow() { return m_file.Read().inventory->HbaCount(); }
    std::string ErrorNow(ULONG code)
    {
        try
        {
            m_file.Read();
        }
        catch (const BackendError& error)
        {
            EXPECT_EQ(error.Code(), code);
            const std::string text = ToUtf8(error.Text());
            const std::string name = ToUtf8(m_file.Path());
            EXPECT_EQ(text.substr(0, name.size()), name);
            return text.substr(name.size());
        }
        return " is read";
    }

    TestFolder m_folder;
    const std::filesystem::path m_path = m_folder / "san.json";
    InventoryFile::Clock::time_point m_now = InventoryFile::Clock::now();
    InventoryFile m_file{m_path.wstring(), [this] { return m_now; }};
};

const std::string Zero = R"({"hbas": []}                    )";
const std::string One = R"({"hbas": [{"deviceId": "eth0"}]})";
const std::string Bad = R"({"hbas": [{"deviceId": "eth0"}],)";

} // namespace

TEST_F(InventoryFiles, AreReadOnceWhileTheyStayAsTheyAre)
{
    Write(One);
    const auto first = m_file.Read().inventory;
    EXPECT_EQ(m_file.Read().inventory, first);
    EXPECT_EQ(first->HbaCount(), 1u);
}

TEST_F(InventoryFiles, AreReadAgainWhenTheyAreOlderThanTheyWere)
{
    Write(Zero, 1h);
    EXPECT_EQ(HbasNow(), 0u);
    Write(One, 2h);
    EXPECT_EQ(HbasNow(), 1u);
}

TEST_F(InventoryFiles, AreReadAgainWhenTheirLengthHasChanged)
{
    Write(Zero);
    EXPECT_EQ(HbasNow(), 0u);
    Write(One + "\n");
    EXPECT_EQ(HbasNow(), 1u);
}

TEST_F(InventoryFiles, AreReadAgainWhenTheyWereWrittenTwiceWithinOneStepOfTheirClock)
{
    ASSERT_EQ(Zero.size(), One.size());
    Write(Zero, 1s);
    EXPECT_EQ(HbasNow(), 0u);
    Write(One, 1s);
    EXPECT_EQ(HbasNow(), 1u);
}

TEST_F(InventoryFiles, KeepTheirInventoryWhenTheyAreWrittenAgainWithTheSameText)
{
    Write(One, 1s);
    const auto first = m_file.Read().inventory;
    Write(One, 0s);
    EXPECT_EQ(m_file.Read().inventory, first) << "calls that faults have counted stay counted";
}

TEST_F(InventoryFiles, LeaveAnInventoryToThoseWhoHaveIt)
{
    Write(One);
    const auto before = m_file.Read().inventory;
    Write(Zero, 2h);
    EXPECT_EQ(HbasNow(), 0u);
    EXPECT_EQ(before->HbaCount(), 1u);
}

TEST_F(InventoryFiles, AreRefusedWhileTheyAreBadAndServedWhenTheyArePutRight)
{
    Write(One);
    EXPECT_EQ(HbasNow(), 1u);
    Write(Bad, 2h);
    const std::string error =
        ":1:33: not JSON: syntax error while parsing object key - unexpected end of input; expected string literal";
    EXPECT_EQ(ErrorNow(ERROR_INVALID_DATA), error);
    EXPECT_EQ(ErrorNow(ERROR_INVALID_DATA), error) << "also when it is not read again";
    Write(One, 3h);
    EXPECT_EQ(HbasNow(), 1u);
}

TEST_F(InventoryFiles, MayAppearLater)
{
    EXPECT_EQ(ErrorNow(ERROR_FILE_NOT_FOUND), ": does not exist");
    Write(One);
    EXPECT_EQ(HbasNow(), 1u);
}

TEST_F(InventoryFiles, MayGoAndComeBack)
{
    Write(One);
    EXPECT_EQ(HbasNow(), 1u);
    std::filesystem::remove(m_path);
    EXPECT_EQ(ErrorNow(ERROR_FILE_NOT_FOUND), ": does not exist");
    Write(One);
    EXPECT_EQ(HbasNow(), 1u);
}

TEST_F(InventoryFiles, ThatAreFoldersAreRefused)
{
    std::filesystem::create_directory(m_path);
    EXPECT_EQ(ErrorNow(ERROR_INVALID_DATA), ": is no regular file");
}

TEST_F(InventoryFiles, BelowWhatIsNoFolderDoNotExist)
{
    Write(One);
    InventoryFile below((m_path / "san.json").wstring());
    EXPECT_THROW(below.Read(), BackendError);
}

TEST_F(InventoryFiles, OfTheLongestLengthAreReadAndLongerOnesRefused)
{
    Write(One + std::string(InventoryFile::MaxBytes - One.size(), ' '));
    EXPECT_EQ(HbasNow(), 1u);
    Write(One + std::string(InventoryFile::MaxBytes - One.size() + 1, ' '), 2h);
    EXPECT_EQ(ErrorNow(ERROR_INVALID_DATA), ": is longer than 16777216 bytes");
}

TEST_F(InventoryFiles, AreAsOldAsTheTimeSinceTheyWereWritten)
{
    Write(One, 10s);
    EXPECT_NEAR(m_file.Read().age, 10, 1);
    m_now += 5s;
    EXPECT_NEAR(m_file.Read().age, 15, 1);
}

TEST_F(InventoryFiles, FromTheFutureAreNew)
{
    Write(One, -1h);
    EXPECT_EQ(m_file.Read().age, 0);
}

TEST_F(InventoryFiles, AreFoundWithEitherSeparatorInTheirPath)
{
    Write(One);
    std::wstring path = m_path.wstring();
    for (const wchar_t separator : {L'/', L'\\'})
    {
        std::replace_if(
            path.begin(), path.end(), [](wchar_t c) { return c == L'/' || c == L'\\'; }, separator);
        EXPECT_EQ(InventoryFile(path).Read().inventory->HbaCount(), 1u) << ToUtf8(path);
    }
}

TEST_F(InventoryFiles, MayHaveNamesOfAnyLetters)
{
    const std::filesystem::path path = m_folder.Path() / NativePath(L"\u00E4\u65E5.json");
    std::ofstream(path, std::ios::binary) << One;
    EXPECT_EQ(InventoryFile(PathText(path)).Read().inventory->HbaCount(), 1u);
}

TEST_F(InventoryFiles, AreServedToManyThreadsWhileTheyChange)
{
    InventoryFile file(m_path.wstring());
    Write(Zero, 1h);
    std::atomic<bool> stop = false;
    std::atomic<int> read = 0;
    std::atomic<int> wrong = 0;
    const auto readOnce = [&]
    {
        try
        {
            if (file.Read().inventory->HbaCount() > 1)
                ++wrong;
            ++read;
        }
        catch (const BackendError& error)
        {
            // Where a file cannot be opened while it is exchanged, that is said; half a file is never read.
            if (error.Code() == ERROR_INVALID_DATA)
                ++wrong;
        }
    };
    std::vector<std::thread> readers;
    for (int i = 0; i < 8; ++i)
        readers.emplace_back(
            [&]
            {
                while (!stop)
                    readOnce();
            });
    // A change as an editor makes one: the new text beside the old one, then renamed over it.
    for (int i = 0; i < 50; ++i)
    {
        const std::filesystem::path next = m_folder / "next.json";
        std::ofstream(next, std::ios::binary) << (i % 2 == 0 ? One : Zero);
        std::error_code error;
        std::filesystem::rename(next, m_path, error); // Windows refuses while a reader has it open; the next may do
        std::this_thread::sleep_for(1ms);
    }
    stop = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(read, 0);
}

} // namespace orl::test
