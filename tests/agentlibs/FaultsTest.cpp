// Failures to order.

#include "Inventories.h"

#include "agentlibs/BackendError.h"

#include <chrono>
#include <thread>

namespace orl::test
{

namespace
{

std::shared_ptr<const Inventory> WithFaults(const std::string& faults)
{
    return ReadInventory("{\"faults\": [" + faults + "]}");
}

// What becomes of one call.
std::string Outcome(const Inventory& inventory, Operation operation, const wchar_t* deviceId = L"")
{
    try
    {
        inventory.Faults().Apply(operation, COrlString(deviceId));
    }
    catch (const BackendError& error)
    {
        return "fails with " + std::to_string(error.Code()) + ": " +
               std::string(error.Text().begin(), error.Text().end());
    }
    catch (const FaultException& error)
    {
        return std::string("throws: ") + error.what();
    }
    return "goes on";
}

} // namespace

TEST(Faults, AnOperationFailsWithTheCodeAndTextOfItsFault)
{
    const auto inventory =
        WithFaults(R"({"operation": "EnumerateLUNs", "effect": "fail", "code": 21, "text": "not ready"})");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateLUNs), "fails with 21: not ready");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateLUNs), "fails with 21: not ready");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateTargets), "goes on");
}

TEST(Faults, AFaultThatSaysNoMoreFailsAsADeviceThatDoesNotFunction)
{
    const auto inventory = WithFaults(R"({"operation": "EnumerateLUNs", "effect": "fail"})");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateLUNs), "fails with 31: the inventory's faults ask for it");
}

TEST(Faults, AnOperationThrowsTheTextOfItsFault)
{
    const auto inventory = WithFaults(R"({"operation": "RefreshTargets", "effect": "throw", "text": "boom"})");
    EXPECT_EQ(Outcome(*inventory, Operation::RefreshTargets), "throws: boom");
}

TEST(Faults, AnOperationWaitsAndGoesOn)
{
    const auto inventory = WithFaults(R"({"operation": "Uninstall", "effect": "wait", "milliseconds": 50})");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Outcome(*inventory, Operation::Uninstall), "goes on");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
}

TEST(Faults, AnAsteriskMeansEveryOperation)
{
    const auto inventory = WithFaults(R"({"operation": "*", "effect": "fail"})");
    for (std::size_t operation = 0; operation < OperationNames().size(); ++operation)
        EXPECT_NE(Outcome(*inventory, static_cast<Operation>(operation)), "goes on") << OperationNames()[operation];
}

TEST(Faults, EachOperationIsMeantByItsOwnName)
{
    for (std::size_t named = 0; named < OperationNames().size(); ++named)
    {
        const auto inventory =
            WithFaults(R"({"effect": "fail", "operation": ")" + std::string(OperationNames()[named]) + "\"}");
        for (std::size_t called = 0; called < OperationNames().size(); ++called)
            EXPECT_EQ(Outcome(*inventory, static_cast<Operation>(called)) != "goes on", named == called);
    }
}

TEST(Faults, AFaultOfOneHbaLeavesCallsForOthersAndForAllAlone)
{
    const auto inventory = WithFaults(R"({"operation": "EnumerateHBAs", "deviceId": "Eth0", "effect": "fail"})");
    EXPECT_NE(Outcome(*inventory, Operation::EnumerateHBAs, L"ETH0"), "goes on");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateHBAs, L"eth1"), "goes on");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateHBAs, L""), "goes on");
}

TEST(Faults, AFaultOfOneCallCountsOnlyTheCallsThatItIsAbout)
{
    const auto inventory =
        WithFaults(R"({"operation": "EnumerateHBAs", "deviceId": "eth0", "call": 2, "effect": "fail"})");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateHBAs, L"eth0"), "goes on");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateHBAs, L"eth1"), "goes on");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumeratePorts, L"eth0"), "goes on");
    EXPECT_NE(Outcome(*inventory, Operation::EnumerateHBAs, L"eth0"), "goes on");
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateHBAs, L"eth0"), "goes on");
}

TEST(Faults, SeveralFaultsTakeEffectInTheirOrderUntilOneEndsTheCall)
{
    const auto inventory = WithFaults(R"({"operation": "*", "effect": "wait", "milliseconds": 30},
        {"operation": "*", "effect": "throw", "text": "first"}, {"operation": "*", "effect": "fail"})");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Outcome(*inventory, Operation::EnumerateHBAs), "throws: first");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
}

TEST(Faults, OneOfManyConcurrentCallsIsTheOneThatIsCounted)
{
    const auto inventory = WithFaults(R"({"operation": "EnumerateHBAs", "call": 500, "effect": "fail"})");
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(
            [&]
            {
                for (int call = 0; call < 1000; ++call)
                    if (Outcome(*inventory, Operation::EnumerateHBAs) != "goes on")
                        ++failures;
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, 1);
}

} // namespace orl::test
