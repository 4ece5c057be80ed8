// Virtual ports of one inventory under many hands: threads, processes, and processes that are killed.

#include "tests/support/ChildProcess.h"
#include "VirtualPorts.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <random>
#include <thread>

namespace orl::test
{

namespace
{

class SharedVirtualPorts : public VirtualPortFixture
{
protected:
    std::unique_ptr<ChildProcess> Writer(const std::string& hba, int count) const
    {
        return std::make_unique<ChildProcess>(BuiltProgram("port_writer"),
                                              std::vector<std::string>{m_path.string(), hba, std::to_string(count)});
    }
    static std::vector<std::string> Lines(ChildProcess& child)
    {
        std::vector<std::string> lines;
        for (std::string line; child.ReadLine(line);)
            lines.push_back(line);
        return lines;
    }
};

} // namespace

TEST_F(SharedVirtualPorts, CreatedByFourProcessesAtOnceAreAllThere)
{
    const auto backend = Backend(R"({"generate": {"hbas": 2}})");
    std::vector<std::unique_ptr<ChildProcess>> writers;
    for (int i = 0; i < 4; ++i)
        writers.push_back(Writer("sim1", 20));
    std::set<std::string> reported;
    for (const auto& writer : writers)
    {
        for (const std::string& name : Lines(*writer))
            EXPECT_TRUE(reported.insert(name).second) << name << " was given twice";
        EXPECT_EQ(writer->Wait(), 0);
    }
    EXPECT_EQ(reported.size(), 80u);
    const std::vector<std::string> there = Names(*backend, L"sim1");
    EXPECT_EQ(there.size(), 81u);
    for (const std::string& name : reported)
        EXPECT_EQ(std::count(there.begin(), there.end(), name), 1) << name;
    EXPECT_EQ(Names(*backend, L"sim0").size(), 1u);
}

TEST_F(SharedVirtualPorts, ReportedByAProcessThatIsKilledAreThere)
{
    constexpr std::size_t rounds = 60;
    const auto backend = Backend(R"({"generate": {"hbas": 100}})");
    std::mt19937 random(20240229);
    std::vector<std::vector<std::string>> reported(rounds);
    std::size_t killed = 0;
    for (std::size_t round = 0; round < rounds; ++round)
    {
        const std::string hba = "sim" + std::to_string(round);
        const auto writer = Writer(hba, 200);
        std::string first;
        ASSERT_TRUE(writer->ReadLine(first));
        reported[round].push_back(first);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        writer->Kill();
        for (const std::string& line : Lines(*writer))
            reported[round].push_back(line);
        if (writer->Wait() == -1)
            ++killed;

        const std::vector<std::string> there = Names(*backend, std::wstring(hba.begin(), hba.end()).c_str());
        for (const std::string& name : reported[round])
            EXPECT_EQ(std::count(there.begin(), there.end(), name), 1) << "round " << round << ": " << name;
        EXPECT_LE(there.size(), reported[round].size() + 2) << "no more than the one that was under way";
    }
    EXPECT_GT(killed, rounds / 2) << "or the test shows nothing";

    std::size_t count = 0;
    const std::vector<std::string> there = Names(*Backend());
    const std::set<std::string> all(there.begin(), there.end());
    EXPECT_EQ(all.size(), there.size());
    for (const auto& names : reported)
        for (const std::string& name : names)
        {
            EXPECT_TRUE(all.contains(name)) << name;
            ++count;
        }
    EXPECT_GE(count, rounds);
    EXPECT_EQ(Create(*backend, L"sim99").size(), 16u) << "the lock of a killed process is free";
    EXPECT_EQ(Beside(), (std::set<std::string>{"san.json", "san.json.state", "san.json.state.lock"}));
}

TEST_F(SharedVirtualPorts, OfOneBackEndServeEightThreads)
{
    constexpr int threadCount = 8;
    constexpr int rounds = 12;
    const auto backend = Backend(R"({"generate": {"hbas": 4, "virtualPortsPerHba": 1}})");
    const auto other = Backend();
    std::atomic<int> wrong = 0;
    const auto work = [&](int number)
    {
        FcoeBackend& mine = number % 2 == 0 ? *backend : *other;
        const std::wstring hba = L"sim" + std::to_wstring(number % 4);
        for (int i = 0; i < rounds; ++i)
        {
            CResult status;
            std::vector<WarningMessageObj> warnings;
            COrlString created;
            COrlString kept;
            if (!mine.CreateVirtualPort(COrlString(hba.c_str()), created, warnings, status))
                ++wrong;
            if (!mine.GenerateVirtualPortWWPN(COrlString(hba.c_str()), kept, warnings, status) || kept == created)
                ++wrong;
            if (!mine.CreateVirtualPort(COrlString(hba.c_str()), kept, warnings, status))
                ++wrong;
            std::vector<ORL_FCOE_PORT> ports;
            if (!mine.EnumeratePorts(COrlString(hba.c_str()), ports, status) ||
                std::none_of(ports.begin(), ports.end(), [&](const auto& port) { return port.portWWN == created; }))
                ++wrong;
            std::vector<ORL_FCOE_LUN> luns;
            if (!mine.EnumerateLUNs(COrlString(), luns, status) || luns.size() != 32)
                ++wrong;
            if (!mine.DeleteVirtualPort(COrlString(hba.c_str()), created, warnings, status))
                ++wrong;
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back(
            [&, i]
            {
                try
                {
                    work(i);
                }
                catch (const BackendError& error)
                {
                    ADD_FAILURE() << ToUtf8(error.Text());
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(Names(*backend).size(), 4u * 2 + threadCount * rounds);
}

} // namespace orl::test
