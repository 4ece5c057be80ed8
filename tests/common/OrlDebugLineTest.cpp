// Lines of the trace log, to the byte.

#include "tests/common/TraceTest.h"
#include "tests/support/DebugOutput.h"
#include "tests/support/ProcessCounters.h"

#include <gmock/gmock.h>

#include <new>
#include <thread>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace orl::test
{

namespace
{

class OrlDebugLine : public TraceTest
{
};

// The tag with which the head has the given length.
std::wstring TagForHead(size_t length)
{
    return std::wstring(length - HeadOf("", 0).size(), L'T');
}

TraceTime s_time = {};
TraceTime SetClock()
{
    return s_time;
}

int s_failures = 0;
TraceTime FailingClock()
{
    if (s_failures-- > 0)
        throw std::bad_alloc();
    return StoppedClock();
}

constexpr char FailureNotice[] = "COrlDebug::Error - EXCEPTION DURING DEBUG PRINT.";

} // namespace

TEST_F(OrlDebugLine, HoldsTagIdsTimeCounterTierAndMessage)
{
    StartLog(3, L"FCOE_PROV_");
    g_OrlDebug.Print(L"SendInstance failed for %s, %d", L"eth0", -5);
    EXPECT_EQ(HeadOf("FCOE_PROV_", 0) + "SendInstance failed for eth0, -5" + LineEnd(), BytesOfFile(LogFile()));
}

TEST_F(OrlDebugLine, PadsTheTimeAndNotTheCounter)
{
    StartLog();
    ReplaceTraceClock(SetClock);
    s_time = {};
    g_OrlDebug.Print(L"midnight");
    s_time.local.wHour = 23;
    s_time.local.wMinute = 59;
    s_time.local.wSecond = 58;
    s_time.local.wMilliseconds = 999;
    s_time.counter.QuadPart = -2;
    g_OrlDebug.Print(L"late");
    const std::string ids = "TEST_\tPID:" + Hex(GetCurrentProcessId()) + "\tTID:" + Hex(GetCurrentThreadId());
    EXPECT_THAT(Lines(), ElementsAre(ids + "\t00:00:00.000\t(0)\tTIER 0\t\tmidnight",
                                     ids + "\t23:59:58.999\t(FFFFFFFFFFFFFFFE)\tTIER 0\t\tlate"));
}

TEST_F(OrlDebugLine, TakesItsTimeFromTheSystem)
{
    SYSTEMTIME before;
    GetLocalTime(&before);
    const TraceTime first = ReadSystemClock();
    const TraceTime second = ReadSystemClock();
    EXPECT_GE(second.counter.QuadPart, first.counter.QuadPart);
    EXPECT_GT(second.counter.QuadPart, 0);
    EXPECT_EQ(before.wYear, first.local.wYear);
    EXPECT_LT(first.local.wMilliseconds, 1000);
}

TEST_F(OrlDebugLine, IsInTheFileWhenPrintReturns)
{
    StartLog();
    g_OrlDebug.Print(L"one");
    EXPECT_THAT(Messages(), ElementsAre("one"));
    g_OrlDebug.Print(L"two");
    EXPECT_THAT(Messages(), ElementsAre("one", "two"));
}

TEST_F(OrlDebugLine, KeepsLineFeedsOfTheMessage)
{
    StartLog();
    g_OrlDebug.Print(L"two\nlines");
    EXPECT_EQ(HeadOf("TEST_", 0) + "two" + LineEnd() + "lines" + LineEnd(), BytesOfFile(LogFile()));
}

TEST_F(OrlDebugLine, IsUtf8WhateverTheLocale)
{
    StartLog(3, L"T\u00E4g_");
    g_OrlDebug.Print(L"%s \u65E5\u672C \U0001F600", L"\u00E9");
    EXPECT_EQ(HeadOf("T\xC3\xA4g_", 0) + "\xC3\xA9 \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80" + LineEnd(),
              BytesOfFile(LogFile()));
}

TEST_F(OrlDebugLine, ShowsAHalfCharacterAsTheReplacementCharacter)
{
    StartLog();
    const wchar_t half[] = {0xD83D, L'!', 0};
    g_OrlDebug.Print(L"%s", half);
    EXPECT_THAT(Messages(), ElementsAre("\xEF\xBF\xBD!"));
}

TEST_F(OrlDebugLine, HoldsAMessageOf1023Characters)
{
    StartLog();
    g_OrlDebug.Print(L"%s", std::wstring(1023, L'm').c_str());
    EXPECT_THAT(Messages(), ElementsAre(std::string(1023, 'm')));
}

TEST_F(OrlDebugLine, CutsALongerMessageTo1023Characters)
{
    StartLog();
    for (const size_t length : {1024u, 1025u, 5000u})
        g_OrlDebug.Print(L"%s", std::wstring(length, L'm').c_str());
    EXPECT_THAT(Messages(), ElementsAre(std::string(1023, 'm'), std::string(1023, 'm'), std::string(1023, 'm')));
}

TEST_F(OrlDebugLine, NeverExceeds1150CharactersAndItsLineFeed)
{
    const struct
    {
        size_t head;
        size_t message;
        size_t line;
    } cases[] = {
        {127, 1022, 1149}, {127, 1023, 1150}, {128, 1022, 1150}, {128, 1023, 1150},
        {128, 1024, 1150}, {500, 1023, 1150}, {500, 650, 1150},  {500, 651, 1150},
        {1149, 1, 1150},   {1150, 1, 1150},   {1150, 0, 1150},   {1151, 0, 1150},
    };
    for (const auto& [head, message, line] : cases)
    {
        SCOPED_TRACE(std::to_string(head) + " + " + std::to_string(message));
        const std::wstring tag = TagForHead(head);
        StartLog(3, tag.c_str());
        g_OrlDebug.Print(L"%s", std::wstring(message, L'm').c_str());
        const std::string whole = HeadOf(std::string(tag.size(), 'T'), 0) + std::string(message, 'm');
        EXPECT_EQ(whole.substr(0, line) + LineEnd(), BytesOfFile(LogFile()));
    }
}

TEST_F(OrlDebugLine, IsDroppedWhenItsHeadDoesNotFit)
{
    for (const size_t head : {1152u, 1153u, 3000u})
    {
        StartLog(3, TagForHead(head).c_str());
        g_OrlDebug.Print(L"message");
        EXPECT_EQ("", BytesOfFile(LogFile())) << head;
    }
}

TEST_F(OrlDebugLine, LeavesNothingOfALongerOneBefore)
{
    StartLog();
    g_OrlDebug.Print(L"%s", std::wstring(1023, L'm').c_str());
    g_OrlDebug.Print(L"");
    g_OrlDebug.Print(L"short");
    EXPECT_THAT(Messages(), ElementsAre(std::string(1023, 'm'), "", "short"));
}

TEST_F(OrlDebugLine, HasNoMessageWhenThereIsNoFormat)
{
    StartLog();
    const wchar_t* none = nullptr;
    g_OrlDebug.Print(L"%s", std::wstring(50, L'm').c_str());
    g_OrlDebug.Print(none);
    EXPECT_THAT(Messages(), ElementsAre(std::string(50, 'm'), ""));
}

TEST_F(OrlDebugLine, IsDroppedOnceTheFileHasReachedItsSize)
{
    const ULONG oneLine = static_cast<ULONG>(HeadOf("TEST_", 0).size() + 5 + LineEnd().size());
    const struct
    {
        ULONG maxFileSize;
        size_t lines;
    } cases[] = {{0, 4}, {1, 1}, {oneLine - 1, 1}, {oneLine, 1}, {oneLine + 1, 2}, {2 * oneLine, 2}, {4 * oneLine, 4}};
    for (const auto& [maxFileSize, lines] : cases)
    {
        SCOPED_TRACE(maxFileSize);
        StartLog(3, L"TEST_", maxFileSize);
        for (int line = 0; line < 4; ++line)
            g_OrlDebug.Print(L"12345");
        EXPECT_EQ(std::vector<std::string>(lines, "12345"), Messages());
    }
}

TEST_F(OrlDebugLine, ErrorIsDroppedToo_OnceTheFileHasReachedItsSize)
{
    StartLog(3, L"TEST_", 1);
    g_OrlDebug.Print(L"first");
    g_OrlDebug.Error(L"file", 1, L"second");
    EXPECT_THAT(Messages(), ElementsAre("first"));
}

TEST_F(OrlDebugLine, OfAnErrorNamesItsSourceAndLine)
{
    StartLog();
    g_OrlDebug.Error(L"..\\..\\Common\\Src\\Helper", 767, L"no %s at %d", L"path", 3);
    EXPECT_EQ(HeadOf("TEST_", 0) + "..\\..\\Common\\Src\\Helper (767): no path at 3" + LineEnd(),
              BytesOfFile(LogFile()));
}

TEST_F(OrlDebugLine, OfAnErrorDoesNotFormatItsMessageTwice)
{
    StartLog();
    g_OrlDebug.Error(L"a", 1, L"%s", L"100%s %d%%");
    EXPECT_THAT(Messages(), ElementsAre("a (1): 100%s %d%%"));
}

TEST_F(OrlDebugLine, OfAnErrorCutsItsMessageAndThenTheLine)
{
    StartLog();
    g_OrlDebug.Error(L"", 1, L"%s", std::wstring(1023, L'm').c_str());
    g_OrlDebug.Error(L"a", 1, L"%s", std::wstring(1020, L'm').c_str());
    g_OrlDebug.Error(L"a", 1, L"%s", std::wstring(5000, L'm').c_str());
    EXPECT_THAT(Messages(), ElementsAre(" (1): " + std::string(1017, 'm'), "a (1): " + std::string(1016, 'm'),
                                        "a (1): " + std::string(1016, 'm')));
}

TEST_F(OrlDebugLine, IsAdmittedByItsLevel)
{
    const struct
    {
        ULONG level;
        bool print;
        bool debugger;
    } cases[] = {{1, true, false}, {2, false, false}, {3, true, false},          {4, true, true},
                 {5, true, false}, {6, true, false},  {8, true, false},          {0x102, true, false},
                 {7, true, false}, {44, true, false}, {0x80000000, true, false}, {0xFFFFFFFF, true, false}};
    for (const auto& [level, print, debugger] : cases)
    {
        SCOPED_TRACE(level);
        m_registry.SetNumber(ProductKey, L"TRACE", level);
        StartLog(1);
        const DebugOutput output;
        g_OrlDebug.Print(L"plain");
        g_OrlDebug.Error(L"file", 9, L"bad");
        g_OrlDebug.Print(L"again");
        EXPECT_EQ(level, g_OrlDebug.GetCurrentLogLevel());

        std::vector<std::string> due;
        if (print)
            due = {"plain", "file (9): bad", "again"};
        else
            due = {"file (9): bad"};
        EXPECT_EQ(due, Messages());
        if (debugger)
        {
            EXPECT_THAT(output.Texts(),
                        ElementsAre(HeadOf("TEST_", 0) + "plain\n", HeadOf("TEST_", 0) + "file (9): bad\n",
                                    HeadOf("TEST_", 0) + "again\n"));
        }
        else
        {
            EXPECT_THAT(output.Texts(), IsEmpty());
        }
    }
}

TEST_F(OrlDebugLine, IsNotWrittenBeforeConfigure)
{
    g_OrlDebug.Print(L"plain");
    g_OrlDebug.Error(L"file", 1, L"bad");
    EXPECT_EQ(0u, g_OrlDebug.GetCurrentLogLevel());
    EXPECT_FALSE(g_OrlDebug.IsConfigured());
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
}

TEST_F(OrlDebugLine, ThatFailsIsReplacedByANotice)
{
    StartLog();
    ReplaceTraceClock(FailingClock);
    s_failures = 1;
    g_OrlDebug.Print(L"lost");
    g_OrlDebug.Print(L"kept");
    EXPECT_THAT(Messages(), ElementsAre(FailureNotice, "kept"));
}

TEST_F(OrlDebugLine, ThatFailsInAnErrorIsReplacedByANoticeAndTheLevelIsRestored)
{
    m_registry.SetNumber(ProductKey, L"TRACE", 2);
    StartLog(1);
    ReplaceTraceClock(FailingClock);
    s_failures = 1;
    g_OrlDebug.Error(L"file", 1, L"lost");
    g_OrlDebug.Print(L"suppressed");
    EXPECT_EQ(2u, g_OrlDebug.GetCurrentLogLevel());
    EXPECT_THAT(Messages(), ElementsAre(FailureNotice));
}

TEST_F(OrlDebugLine, ThatKeepsFailingIsGivenUpAndTheNextOneIsWritten)
{
    StartLog();
    ReplaceTraceClock(FailingClock);
    s_failures = 2;
    g_OrlDebug.Print(L"lost");
    EXPECT_THAT(Messages(), IsEmpty());
    s_failures = 1;
    g_OrlDebug.Print(L"lost too");
    // The lock is free again, for other threads as well.
    std::thread([] { g_OrlDebug.Print(L"kept"); }).join();
    EXPECT_THAT(Messages(), ElementsAre(FailureNotice, "kept"));
}

TEST_F(OrlDebugLine, IsNotWrittenAfterTheLogIsDestroyed)
{
    StartLog();
    g_OrlDebug.Print(L"before");
    RestartLog();
    g_OrlDebug.Print(L"after");
    g_OrlDebug.Error(L"file", 1, L"after");
    EXPECT_THAT(Messages(), ElementsAre("before"));
    // The file is closed: nobody minds when it goes.
    EXPECT_TRUE(std::filesystem::remove(LogFile()));
}

TEST_F(OrlDebugLine, HoldsItsFileOpenNoLongerThanItsLogLives)
{
    constexpr std::size_t logs = 20;
    StartLog();
    RestartLog();
    const std::size_t before = CountProcess().handles;
    for (std::size_t log = 0; log < logs; ++log)
        StartLog();
    RestartLog();
    EXPECT_LT(CountProcess().handles, before + logs);
}

} // namespace orl::test
