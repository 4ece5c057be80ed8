// Where the trace log lies, and what the registry says about it.

#include "tests/common/TraceTest.h"

#include <gmock/gmock.h>

#include <cwchar>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace orl::test
{

namespace
{

class OrlDebugConfigure : public TraceTest
{
protected:
    OrlDebugConfigure() : m_tempSetting(L"Temp", m_temp.Text().c_str()) {}

    // As a module does at its load.
    int Configure(ULONG level, const wchar_t* logFileName = L".\\Test.txt", const wchar_t* tag = L"TEST_")
    {
        return g_OrlDebug.Configure(tag, logFileName, level, 0, 0, nullptr);
    }

    // Names the folder of the fallback in that many characters.
    std::wstring TempIn(size_t length) const
    {
        std::wstring name = m_temp.Text();
        if ((length - name.size()) % 2 != 0)
            name += L'/';
        while (name.size() < length)
            name += L"/.";
        return name;
    }

    void ExpectNoLogAnywhere() const
    {
        EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
        EXPECT_TRUE(std::filesystem::is_empty(m_temp.Path()));
    }

    void ExpectUnconfigured() const
    {
        EXPECT_FALSE(g_OrlDebug.IsConfigured());
        EXPECT_EQ(0u, g_OrlDebug.GetCurrentLogLevel());
        g_OrlDebug.Print(L"nothing");
        g_OrlDebug.Error(L"file", 1, L"nothing");
        ExpectNoLogAnywhere();
    }

    TestFolder m_temp;

private:
    EnvironmentSetting m_tempSetting;
};

#ifdef __SANITIZE_ADDRESS__
using LeaksAllowed = __lsan::ScopedDisabler;
#else
struct [[maybe_unused]] LeaksAllowed
{
};
#endif

std::vector<std::string> NamesIn(const std::filesystem::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    return names;
}

} // namespace

TEST_F(OrlDebugConfigure, WritesWhenTheRegistryIsSilent)
{
    ASSERT_EQ(0, Configure(1));
    EXPECT_TRUE(g_OrlDebug.IsConfigured());
    EXPECT_EQ(1u, g_OrlDebug.GetCurrentLogLevel());
    g_OrlDebug.Print(L"plain");
    EXPECT_THAT(Messages(), ElementsAre("plain"));
    EXPECT_TRUE(std::filesystem::is_empty(m_temp.Path()));
}

TEST_F(OrlDebugConfigure, TakesTheLevelFromTheRegistry)
{
    for (const ULONG wished : {1u, 2u})
    {
        for (const ULONG level : {1u, 2u, 3u, 4u, 9u, 0xFFFFFFFFu})
        {
            RestartLog();
            m_registry.SetNumber(ProductKey, L"TRACE", level);
            EXPECT_EQ(0, Configure(wished));
            EXPECT_EQ(level, g_OrlDebug.GetCurrentLogLevel());
        }
    }
}

TEST_F(OrlDebugConfigure, KeepsTheWishedLevelWithoutAValueOfTheRightType)
{
    ASSERT_EQ(0, Configure(2));
    EXPECT_EQ(2u, g_OrlDebug.GetCurrentLogLevel());

    const struct
    {
        DWORD type;
        std::vector<BYTE> data;
    } cases[] = {
        {REG_SZ, BytesOf(L"0", true)}, {REG_BINARY, std::vector<BYTE>(4, 0)}, {REG_QWORD, std::vector<BYTE>(8, 0)}};
    for (const auto& [type, data] : cases)
    {
        RestartLog();
        m_registry.SetBytes(ProductKey, L"TRACE", type, data);
        EXPECT_EQ(0, Configure(1)) << type;
        EXPECT_EQ(1u, g_OrlDebug.GetCurrentLogLevel()) << type;
    }
}

TEST_F(OrlDebugConfigure, IsSwitchedOffByTheRegistry)
{
    m_registry.SetNumber(ProductKey, L"TRACE", 0);
    EXPECT_EQ(-1, Configure(1));
    EXPECT_EQ(-1, Configure(2));
    ExpectUnconfigured();
}

TEST_F(OrlDebugConfigure, WritesErrorsOnlyWhenTheRegistrySaysSo)
{
    m_registry.SetNumber(ProductKey, L"TRACE", 2);
    ASSERT_EQ(0, Configure(1));
    g_OrlDebug.Print(L"plain");
    g_OrlDebug.Error(L"file", 5, L"bad");
    EXPECT_THAT(Messages(), ElementsAre("file (5): bad"));
    EXPECT_EQ(2u, g_OrlDebug.GetCurrentLogLevel());
}

TEST_F(OrlDebugConfigure, FailsAtLevelsOneAndTwoWithoutTheProductsKey)
{
    m_registry.DeleteKey(L"SOFTWARE\\KESTA");
    EXPECT_EQ(-1, Configure(1));
    EXPECT_EQ(-1, Configure(2));
    ExpectUnconfigured();
}

TEST_F(OrlDebugConfigure, DoesNotAskTheRegistryForHigherLevels)
{
    m_registry.SetNumber(ProductKey, L"TRACE", 0);
    for (const ULONG level : {3u, 4u, 5u, 0xFFFFFFFFu})
    {
        RestartLog();
        EXPECT_EQ(0, Configure(level));
        EXPECT_EQ(level, g_OrlDebug.GetCurrentLogLevel());
    }
}

TEST_F(OrlDebugConfigure, LogsInTheTempDirectoryAtHigherLevelsWithoutTheProductsKey)
{
    m_registry.DeleteKey(L"SOFTWARE\\KESTA");
    ASSERT_EQ(0, Configure(3));
    g_OrlDebug.Print(L"here");
    EXPECT_THAT(NamesIn(m_temp.Path()), ElementsAre("Test.txt"));
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
    EXPECT_EQ(HeadOf("TEST_", 0) + "here" + LineEnd(), BytesOfFile(m_temp / "Test.txt"));
}

TEST_F(OrlDebugConfigure, SwitchesOffAtLevelZero)
{
    EXPECT_EQ(-1, Configure(0));
    ExpectUnconfigured();

    ASSERT_EQ(0, Configure(1));
    EXPECT_EQ(-1, Configure(0));
    EXPECT_EQ(0u, g_OrlDebug.GetCurrentLogLevel());
    g_OrlDebug.Print(L"nothing");
    g_OrlDebug.Error(L"file", 1, L"nothing");
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(OrlDebugConfigure, AcceptsAFileNameOf245Characters)
{
    std::string name(239, 'n');
    name += ".txt";
    ASSERT_EQ(0, Configure(1, (L".\\" + std::wstring(name.begin(), name.end())).c_str()));
    g_OrlDebug.Print(L"here");
    EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre(name));
}

TEST_F(OrlDebugConfigure, RefusesOtherFileNames)
{
    const std::wstring tooLong = L".\\" + std::wstring(240, L'n') + L".txt";
    ASSERT_EQ(246u, tooLong.size());
    EXPECT_EQ(-1, Configure(1, tooLong.c_str()));
    EXPECT_EQ(-1, Configure(1, (tooLong + std::wstring(5000, L'n')).c_str()));
    EXPECT_EQ(-1, Configure(1, L""));
    EXPECT_EQ(-1, Configure(1, nullptr));
    EXPECT_EQ(-1, Configure(3, tooLong.c_str()));
    ExpectUnconfigured();
}

TEST_F(OrlDebugConfigure, RefusesAMissingTag)
{
    EXPECT_EQ(-1, Configure(1, L".\\Test.txt", nullptr));
    ExpectUnconfigured();
}

TEST_F(OrlDebugConfigure, AcceptsAnEmptyTag)
{
    ASSERT_EQ(0, Configure(1, L".\\Test.txt", L""));
    g_OrlDebug.Print(L"here");
    EXPECT_EQ(HeadOf("", 0) + "here" + LineEnd(), BytesOfFile(LogFile()));
}

TEST_F(OrlDebugConfigure, KeepsACopyOfTheTag)
{
    std::wstring tag = L"MINE_";
    ASSERT_EQ(0, Configure(1, L".\\Test.txt", tag.c_str()));
    tag.assign(5, L'x');
    g_OrlDebug.Print(L"here");
    EXPECT_EQ(HeadOf("MINE_", 0) + "here" + LineEnd(), BytesOfFile(LogFile()));
}

TEST_F(OrlDebugConfigure, TruncatesUnlessToldToAppend)
{
    for (int run = 1; run <= 2; ++run)
    {
        RestartLog();
        ASSERT_EQ(0, g_OrlDebug.Configure(L"TEST_", L".\\Test.txt", 1, 0, 0, nullptr));
        g_OrlDebug.Print(L"run %d", run);
    }
    EXPECT_THAT(Messages(), ElementsAre("run 2"));
    RestartLog();
    ASSERT_EQ(0, g_OrlDebug.Configure(L"TEST_", L".\\Test.txt", 1, 1, 0, nullptr));
    g_OrlDebug.Print(L"run 3");
    EXPECT_THAT(Messages(), ElementsAre("run 2", "run 3"));
}

TEST_F(OrlDebugConfigure, CountsWhatAnAppendedFileHolds)
{
    StartLog();
    g_OrlDebug.Print(L"before");
    RestartLog();
    ASSERT_EQ(0, g_OrlDebug.Configure(L"TEST_", L".\\Test.txt", 3, 1, 10, nullptr));
    g_OrlDebug.Print(L"after");
    EXPECT_THAT(Messages(), ElementsAre("before"));
}

TEST_F(OrlDebugConfigure, DoesNotUseItsLastArgument)
{
    ASSERT_EQ(0, g_OrlDebug.Configure(L"TEST_", L".\\Test.txt", 1, 0, 0, L"anything"));
    g_OrlDebug.Print(L"here");
    EXPECT_THAT(Messages(), ElementsAre("here"));
}

TEST_F(OrlDebugConfigure, AcceptsADirectoryThatEndsInABackslash)
{
    m_registry.SetText(ProductKey, L"InstalledDir", m_folder.Text() + L"\\");
    ASSERT_EQ(0, Configure(1));
    EXPECT_TRUE(std::filesystem::exists(LogFile()));
}

TEST_F(OrlDebugConfigure, AcceptsADirectoryOutsideAscii)
{
    const std::filesystem::path folder = m_folder.Path() / std::filesystem::path(u8"\u00E4\u65E5");
    std::filesystem::create_directory(folder);
    m_registry.SetText(ProductKey, L"InstalledDir", m_folder.Text() + L"\\\u00E4\u65E5");
    ASSERT_EQ(0, Configure(1));
    EXPECT_TRUE(std::filesystem::exists(folder / "Test.txt"));
}

TEST_F(OrlDebugConfigure, AcceptsAStoredDirectoryWithoutTerminator)
{
    m_registry.SetBytes(ProductKey, L"InstalledDir", REG_SZ, BytesOf(m_folder.Text(), false));
    ASSERT_EQ(0, Configure(1));
    EXPECT_TRUE(std::filesystem::exists(LogFile()));
}

TEST_F(OrlDebugConfigure, LogsInTheTempDirectoryWhenTheInstallationDirectoryCannotBeWritten)
{
    m_registry.SetText(ProductKey, L"InstalledDir", (m_folder / "missing").wstring());
    ASSERT_EQ(0, Configure(1, L".\\FcoeProv.txt"));
    g_OrlDebug.Print(L"here");
    EXPECT_THAT(NamesIn(m_temp.Path()), ElementsAre("FcoeProv.txt"));
    EXPECT_EQ(HeadOf("TEST_", 0) + "here" + LineEnd(), BytesOfFile(m_temp / "FcoeProv.txt"));
}

TEST_F(OrlDebugConfigure, AppendsInTheTempDirectoryToo)
{
    m_registry.SetText(ProductKey, L"InstalledDir", (m_folder / "missing").wstring());
    for (int run = 1; run <= 2; ++run)
    {
        RestartLog();
        ASSERT_EQ(0, g_OrlDebug.Configure(L"TEST_", L".\\Test.txt", 1, 1, 0, nullptr));
        g_OrlDebug.Print(L"here");
    }
    EXPECT_EQ(2u, SplitLines(BytesOfFile(m_temp / "Test.txt")).size());
}

TEST_F(OrlDebugConfigure, FailsWhenTheTempDirectoryCannotBeWrittenEither)
{
    m_registry.SetText(ProductKey, L"InstalledDir", (m_folder / "missing").wstring());
    const EnvironmentSetting temp(L"Temp", (m_temp / "missing").wstring().c_str());
    EXPECT_EQ(-1, Configure(1));
    ExpectUnconfigured();
}

TEST_F(OrlDebugConfigure, TakesATempDirectoryOf259Characters)
{
    m_registry.DeleteKey(L"SOFTWARE\\KESTA");
    const EnvironmentSetting temp(L"Temp", TempIn(259).c_str());
    ASSERT_EQ(0, Configure(3));
    EXPECT_THAT(NamesIn(m_temp.Path()), ElementsAre("Test.txt"));
}

TEST_F(OrlDebugConfigure, TakesNoTempDirectoryOfMoreThan259Characters)
{
    m_registry.SetText(ProductKey, L"InstalledDir", (m_folder / "missing").wstring());
    for (const size_t length : {260u, 261u, 5000u})
    {
        const EnvironmentSetting temp(L"Temp", TempIn(length).c_str());
        EXPECT_EQ(-1, Configure(1)) << length;
        ExpectUnconfigured();
        RestartLog();
    }
}

// The same holds for the folder and the file's name together, which is never cut to another file's.
TEST_F(OrlDebugConfigure, FailsWhenTheFileInTheTempDirectoryHasTooLongAPath)
{
    m_registry.SetText(ProductKey, L"InstalledDir", (m_folder / "missing").wstring());
    const size_t name = std::wcslen(L"\\Test.txt");
    {
        const EnvironmentSetting temp(L"Temp", TempIn(260 - name).c_str());
        EXPECT_EQ(-1, Configure(1));
        ExpectUnconfigured();
    }
    RestartLog();
    const EnvironmentSetting temp(L"Temp", TempIn(259 - name).c_str());
    EXPECT_EQ(0, Configure(1));
    EXPECT_THAT(NamesIn(m_temp.Path()), ElementsAre("Test.txt"));
}

TEST_F(OrlDebugConfigure, LogsBelowTheRootWithoutAnInstallationDirectory)
{
    m_registry.DeleteValue(ProductKey, L"InstalledDir");
    const std::string name = UniquePath("OrlRoot-").filename().string() + ".txt";
    ASSERT_EQ(0, Configure(1, (L".\\" + std::wstring(name.begin(), name.end())).c_str()));
    g_OrlDebug.Print(L"here");
    const std::string due = HeadOf("TEST_", 0) + "here" + LineEnd();
    // Who may not write there finds the log in the Temp directory.
    const std::filesystem::path atRoot = std::filesystem::path("/") / name;
    EXPECT_EQ(due, BytesOfFile(std::filesystem::exists(atRoot) ? atRoot : m_temp / name));
    EXPECT_FALSE(std::filesystem::exists(atRoot) && std::filesystem::exists(m_temp / name));
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
    RestartLog();
    std::filesystem::remove(atRoot);
}

// Under the name behind the last backslash, whatever folders stand before it.
TEST_F(OrlDebugConfigure, LogsInTheTempDirectoryWhenItCannotBelowTheRoot)
{
    m_registry.DeleteValue(ProductKey, L"InstalledDir");
    ASSERT_EQ(0, Configure(1, L"no such folder\\nor this\\Test.txt"));
    g_OrlDebug.Print(L"here");
    EXPECT_THAT(NamesIn(m_temp.Path()), ElementsAre("Test.txt"));
    EXPECT_EQ(HeadOf("TEST_", 0) + "here" + LineEnd(), BytesOfFile(m_temp / "Test.txt"));
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
}

TEST_F(OrlDebugConfigure, LogsBelowTheRootWhenTheInstallationDirectoryIsTooLong)
{
    m_registry.SetText(ProductKey, L"InstalledDir", std::wstring(1024, L'd'));
    const std::string name = UniquePath("OrlRoot-").filename().string() + ".txt";
    ASSERT_EQ(0, Configure(1, (L".\\" + std::wstring(name.begin(), name.end())).c_str()));
    const std::filesystem::path atRoot = std::filesystem::path("/") / name;
    EXPECT_TRUE(std::filesystem::exists(atRoot) || std::filesystem::exists(m_temp / name));
    RestartLog();
    std::filesystem::remove(atRoot);
}

TEST_F(OrlDebugConfigure, TakesTheFileNameAloneForSetup)
{
    for (const wchar_t* tag : {L"QvSetup", L"QVSETUP", L"qvsetup"})
    {
        RestartLog();
        const std::wstring file = (m_temp / "Setup.txt").wstring();
        ASSERT_EQ(0, Configure(1, file.c_str(), tag));
        EXPECT_THAT(NamesIn(m_temp.Path()), ElementsAre("Setup.txt"));
        EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
        RestartLog();
        std::filesystem::remove(m_temp / "Setup.txt");
    }
}

TEST_F(OrlDebugConfigure, HasNoFallbackForASetupFileWithoutAFolder)
{
    EXPECT_EQ(-1, Configure(1, L"missing-folder/Setup.txt", L"QvSetup"));
    ExpectUnconfigured();
}

TEST_F(OrlDebugConfigure, TakesTheTempDirectoryForTheSecondSetup)
{
    for (const wchar_t* tag : {L"Orl2Setp", L"ORL2SETP"})
    {
        RestartLog();
        ASSERT_EQ(0, Configure(1, L".\\Test.txt", tag));
        EXPECT_THAT(NamesIn(m_temp.Path()), ElementsAre("Test.txt"));
        EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
    }
}

TEST_F(OrlDebugConfigure, ThatFailsLeavesAnOpenLogAlone)
{
    ASSERT_EQ(0, Configure(1));
    EXPECT_EQ(-1, Configure(1, L""));
    EXPECT_TRUE(g_OrlDebug.IsConfigured());
    g_OrlDebug.Print(L"still here");
    EXPECT_THAT(Messages(), ElementsAre("still here"));
}

TEST_F(OrlDebugConfigure, ThatSucceedsAgainWritesToTheNewFileAndLeavesTheEarlierOneOpen)
{
    // What the first call opened and copied is nobody's afterwards.
    const LeaksAllowed leaks;
    ASSERT_EQ(0, Configure(1));
    g_OrlDebug.Print(L"first");
    ASSERT_EQ(0, g_OrlDebug.Configure(L"OTHER_", L".\\Other.txt", 1, 0, 0, nullptr));
    g_OrlDebug.Print(L"second");
    EXPECT_THAT(Messages(), ElementsAre("first"));
    EXPECT_EQ(HeadOf("OTHER_", 0) + "second" + LineEnd(), BytesOfFile(m_folder / "Other.txt"));
}

} // namespace orl::test
