// The trace log under concurrent writers.

#include "tests/common/TraceTest.h"

#include <gmock/gmock.h>

#include <map>
#include <sstream>
#include <thread>

namespace orl::test
{

namespace
{

class OrlDebugThread : public TraceTest
{
};

constexpr int Threads = 8;
constexpr int Rounds = 100;

std::vector<std::string> FieldsOf(const std::string& line)
{
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');)
        fields.push_back(field);
    return fields;
}

template <class Work>
void RunInThreads(const Work& work)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < Threads; ++number)
        threads.emplace_back(work, number);
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

TEST_F(OrlDebugThread, WritesEveryLineWholeAndEachThreadsLinesInOrder)
{
    StartLog();
    ReplaceTraceClock(ReadSystemClock);
    RunInThreads(
        [](int number)
        {
            for (int round = 0; round < Rounds; ++round)
            {
                int result = 0;
                COrlTraceScope scope(L"Thread", &result);
                g_OrlDebug.Print(L"thread %d round %d", number, round);
                g_OrlDebug.Error(L"file", number, L"round %d", round);
                result = number;
            }
        });

    std::map<std::string, std::vector<std::string>> messagesOfThread;
    for (const std::string& line : Lines())
    {
        const std::vector<std::string> fields = FieldsOf(line);
        ASSERT_EQ(8u, fields.size()) << line;
        EXPECT_EQ("TEST_", fields[0]) << line;
        EXPECT_EQ("PID:" + Hex(GetCurrentProcessId()), fields[1]) << line;
        EXPECT_EQ(12u, fields[3].size()) << line;
        EXPECT_TRUE(fields[4].starts_with('(') && fields[4].ends_with(')')) << line;
        EXPECT_TRUE(fields[5].starts_with("TIER ")) << line;
        EXPECT_EQ("", fields[6]) << line;
        messagesOfThread[fields[2]].push_back(fields[7]);
    }
    ASSERT_EQ(static_cast<size_t>(Threads), messagesOfThread.size());
    for (const auto& [thread, messages] : messagesOfThread)
    {
        ASSERT_EQ(static_cast<size_t>(Rounds) * 4, messages.size());
        const std::string number = messages[1].substr(7, messages[1].find(" round") - 7);
        for (int round = 0; round < Rounds; ++round)
        {
            const size_t first = static_cast<size_t>(round) * 4;
            EXPECT_EQ("ENTRY:  Thread", messages[first]);
            EXPECT_EQ("thread " + number + " round " + std::to_string(round), messages[first + 1]);
            EXPECT_EQ("file (" + number + "): round " + std::to_string(round), messages[first + 2]);
            EXPECT_EQ("EXIT:  Thread, nReturn=" + number, messages[first + 3]);
        }
    }
}

TEST_F(OrlDebugThread, ComesBackToTierZero)
{
    StartLog();
    RunInThreads(
        [](int)
        {
            for (int round = 0; round < Rounds; ++round)
                COrlTraceScope scope(L"Thread");
        });
    g_OrlDebug.Print(L"after");
    EXPECT_EQ("0 after", TiersAndMessages().back());
}

TEST_F(OrlDebugThread, AnErrorLetsNoPlainLineOfAnotherThreadThrough)
{
    m_registry.SetNumber(ProductKey, L"TRACE", 2);
    StartLog(1);
    RunInThreads(
        [](int number)
        {
            for (int round = 0; round < Rounds; ++round)
            {
                COrlTraceScope scope(L"Thread");
                if (number % 2 == 0)
                    g_OrlDebug.Error(L"file", 1, L"bad");
                else
                    g_OrlDebug.Print(L"plain");
            }
        });
    EXPECT_EQ(2u, g_OrlDebug.GetCurrentLogLevel());
    EXPECT_EQ(std::vector<std::string>(Threads / 2 * Rounds, "file (1): bad"), Messages());
}

TEST_F(OrlDebugThread, WritesNothingInManyThreadsWhileItIsOff)
{
    RunInThreads(
        [](int)
        {
            for (int round = 0; round < Rounds; ++round)
            {
                COrlTraceScope scope(L"Thread");
                g_OrlDebug.Print(L"plain");
            }
        });
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
}

} // namespace orl::test
