// Taking results while they are made: streaming, waiting, timeouts, failures on the way.
#include "tools/orlwmi/Results.h"

#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>

using namespace orl::client;
using namespace orl::test;
using std::chrono::milliseconds;

namespace
{

const Deadline NoDeadline(std::nullopt);

FakeAnswer Numbered(size_t count)
{
    FakeAnswer answer;
    answer.count = count;
    answer.make = [](size_t index) {
        return Instance(L"A", {{L"Index", CComVariant(std::to_wstring(index).c_str())}});
    };
    return answer;
}

size_t Drain(Results& results, const Deadline& deadline, Output& output)
{
    size_t count = 0;
    while (results.Next(deadline, output))
    {
        ++count;
    }
    return count;
}

TEST(ClientResults, HoldFewObjectsOfManyInMemory)
{
    FakeServices services;
    services.OnEnumerate(L"A", Numbered(20000));
    MemoryOutput output;
    ForgetMostLiveFakeObjects();
    Results results = Results::Instances(services.Get(), "A");
    EXPECT_EQ(Drain(results, NoDeadline, output), 20000U);
    EXPECT_LE(MostLiveFakeObjects(), 200);
    EXPECT_EQ(LiveFakeObjects(), 0);
}

TEST(ClientResults, EndWithAnExactBatch)
{
    for (const size_t count : {0U, 1U, 63U, 64U, 65U, 128U})
    {
        FakeServices services;
        services.OnEnumerate(L"A", Numbered(count));
        MemoryOutput output;
        Results results = Results::Instances(services.Get(), "A");
        EXPECT_EQ(Drain(results, NoDeadline, output), count);
        EXPECT_FALSE(results.Next(NoDeadline, output)) << "and stay at the end";
    }
}

TEST(ClientResults, FlushTheOutputBeforeTheyWait)
{
    FakeServices services;
    FakeAnswer slow = Numbered(100);
    slow.slices = 2;
    services.OnEnumerate(L"A", slow);
    MemoryOutput output;
    Results results = Results::Instances(services.Get(), "A");
    output.Write("before");
    ASSERT_TRUE(results.Next(NoDeadline, output));
    EXPECT_EQ(output.Text(), "before");
    EXPECT_EQ(Drain(results, NoDeadline, output), 99U);
}

TEST(ClientResults, GiveUpWhenTheDeadlinePasses)
{
    FakeServices services;
    FakeAnswer stuck = Numbered(1);
    stuck.never = true;
    services.OnEnumerate(L"A", stuck);
    services.OnGetObject(L"A.B=\"c\"", stuck);
    MemoryOutput output;
    const auto attempts = {
        std::function<void()>(
            [&]
            {
                Results results = Results::Instances(services.Get(), "A");
                results.Next(Deadline(milliseconds(50)), output);
            }),
        std::function<void()>(
            [&] { static_cast<void>(GetObjectAt(services.Get(), "A.B=\"c\"", Deadline(milliseconds(50)))); })};
    for (const auto& attempt : attempts)
    {
        try
        {
            attempt();
            ADD_FAILURE();
        }
        catch (const Failure& failure)
        {
            EXPECT_EQ(failure.Code(), ExitCode::TimedOut);
            EXPECT_STREQ(failure.what(), "no answer within 0.05 seconds");
        }
    }
    EXPECT_EQ(LiveFakeObjects(), 0);
}

TEST(ClientResults, HandOutWhatCameBeforeAFailure)
{
    FakeServices services;
    FakeAnswer answer = Numbered(70);
    answer.atEnd = WBEM_E_PROVIDER_FAILURE;
    answer.explanation = MakeExtendedStatus(L"The agent went away.", L"CreateInstanceEnum", L"A", L"P", WBEM_E_FAILED);
    services.OnEnumerate(L"A", answer);
    MemoryOutput output;
    Results results = Results::Instances(services.Get(), "A");
    for (int i = 0; i < 70; ++i)
    {
        ASSERT_TRUE(results.Next(NoDeadline, output)) << i;
    }
    for (int again = 0; again < 2; ++again)
    {
        try
        {
            results.Next(NoDeadline, output);
            ADD_FAILURE();
        }
        catch (const Failure& failure)
        {
            EXPECT_EQ(failure.Lines(),
                      "orlwmi: cannot enumerate A: WBEM_E_PROVIDER_FAILURE (0x80041004): The provider failed.\n"
                      "  Description: The agent went away.\n  Operation: CreateInstanceEnum\n  ParameterInfo: A\n"
                      "  ProviderName: P\n  StatusCode: WBEM_E_FAILED (0x80041001)\n");
        }
    }
}

TEST(ClientResults, DoNotTakeAnIncompleteResultForAWholeOne)
{
    FakeServices services;
    FakeAnswer answer = Numbered(2);
    answer.atEnd = WBEM_S_PARTIAL_RESULTS;
    services.OnQuery(L"SELECT * FROM A", answer);
    MemoryOutput output;
    Results results = Results::Query(services.Get(), "SELECT * FROM A");
    EXPECT_TRUE(results.Next(NoDeadline, output));
    EXPECT_TRUE(results.Next(NoDeadline, output));
    EXPECT_THROW(results.Next(NoDeadline, output), Failure);
}

TEST(ClientResults, WaitForASingleObject)
{
    FakeServices services;
    FakeAnswer slow = Numbered(1);
    slow.slices = 3;
    services.OnGetObject(L"A.B=\"c\"", slow);
    EXPECT_TRUE(GetObjectAt(services.Get(), "A.B=\"c\"", NoDeadline));
}

TEST(ClientDeadline, GivesSlicesUntilItPasses)
{
    const Deadline deadline(milliseconds(30));
    EXPECT_GT(deadline.Slice(), 0);
    EXPECT_LE(deadline.Slice(), 30);
    Sleep(40);
    EXPECT_THROW(static_cast<void>(deadline.Slice()), Failure);
    EXPECT_EQ(NoDeadline.Slice(), 100);
}

TEST(ClientDeadline, LeavesBehindWorkThatIsStuck)
{
    auto released = std::make_shared<std::atomic<bool>>(false);
    const Deadline deadline(milliseconds(20));
    EXPECT_THROW(deadline.Await(
                     [released]
                     {
                         while (!*released)
                         {
                             Sleep(1);
                         }
                     }),
                 Failure);
    *released = true;
}

TEST(ClientDeadline, PassesOnWhatTheWorkThrew)
{
    EXPECT_THROW(NoDeadline.Await([] { throw Failure(ExitCode::Failed, "x"); }), Failure);
    bool done = false;
    NoDeadline.Await([&done] { done = true; });
    EXPECT_TRUE(done);
}

} // namespace
