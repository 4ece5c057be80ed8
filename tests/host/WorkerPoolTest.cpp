// Tasks get a thread each, as many as there may be.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"
#include "host/WorkerPool.h"

#include <atomic>

namespace orl::test
{
namespace
{

TEST(WorkerPool, RunsAsManyTasksAtOnceAsItsLimitSaysAndRefusesTheNext)
{
    WorkerPool pool;
    Gate done;
    std::atomic<std::size_t> running{0};
    for (std::size_t i = 0; i < WorkerPool::kMostTasks; ++i)
        pool.Run(
            [&]
            {
                ++running;
                done.Pass();
            });
    try
    {
        pool.Run([&] { ADD_FAILURE() << "what is refused does not run"; });
        ADD_FAILURE() << "one too many was taken";
    }
    catch (const CallFailure& refused)
    {
        EXPECT_EQ(HexText(WBEM_E_SERVER_TOO_BUSY), HexText(refused.status.code));
        EXPECT_EQ(L"512 calls are under way; no more are taken until one ends", refused.status.description);
    }
    EXPECT_FALSE(pool.StopIfIdle());
    done.Open();
    pool.Stop();
    EXPECT_EQ(WorkerPool::kMostTasks, running) << "each had a thread, none waited for another one's end";

    bool hasRun = false;
    pool.Run([&] { hasRun = true; });
    pool.Stop();
    EXPECT_TRUE(hasRun) << "and there is room again";
}

class HostBusy : public HostTest
{
};

TEST_F(HostBusy, ACallTooManyIsToldSoAndTheOthersAreAnswered)
{
    ServeLamps({L"a"});
    Service();
    Gate done;
    const std::size_t free = 1;
    for (std::size_t i = free; i < WorkerPool::kMostTasks; ++i)
        Own().Workers().Run([&] { done.Pass(); });
    Gate entered;
    Gate woken;
    Provider().enumerate = [&](const std::wstring&, IWbemObjectSink* sink)
    {
        entered.Open();
        woken.Pass();
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    const CComPtr<Collector> taken = MakeObject<Collector>();
    const CComPtr<Collector> refused = MakeObject<Collector>();
    const auto enumerate = [&](const CComPtr<Collector>& sink)
    { return Service().CreateInstanceEnumAsync(CComBSTR(L"Test_Bulb"), 0, nullptr, sink); };
    ASSERT_EQ(WBEM_S_NO_ERROR, enumerate(taken));
    entered.Pass();
    EXPECT_EQ(HexText(WBEM_E_SERVER_TOO_BUSY), HexText(enumerate(refused)));
    EXPECT_EQ(L"512 calls are under way; no more are taken until one ends", TakeTold().description);
    CComPtr<IWbemCallResult> result;
    EXPECT_EQ(HexText(WBEM_E_SERVER_TOO_BUSY),
              HexText(Service().GetObject(CComBSTR(L"Test_Lamp.Name=\"a\""), WBEM_FLAG_RETURN_IMMEDIATELY, nullptr,
                                          nullptr, &result)));
    EXPECT_EQ(nullptr, result.p);
    // A call that uses its client's own thread needs none.
    CComPtr<IWbemClassObject> lamp;
    EXPECT_EQ(WBEM_S_NO_ERROR, Service().GetObject(CComBSTR(L"Test_Lamp.Name=\"a\""), 0, nullptr, &lamp, nullptr));
    // There is no thread to tell the provider, and the client has its answer all the same.
    EXPECT_EQ(WBEM_S_NO_ERROR, Service().CancelAsyncCall(taken));
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(taken->Await().code));
    EXPECT_EQ(WBEM_E_NOT_FOUND, Service().CancelAsyncCall(refused));
    woken.Open();
    done.Open();
    Own().Workers().Stop();
    EXPECT_FALSE(refused->HasStatus()) << "a call that was not accepted owes no status";
    EXPECT_EQ(1u, taken->Statuses());
}

} // namespace
} // namespace orl::test
