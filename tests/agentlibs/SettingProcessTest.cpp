// Settings of one adapter under many hands: threads, processes, and processes that are killed.

#include "tests/support/ChildProcess.h"
#include "InventorySettings.h"

#include <chrono>
#include <map>
#include <thread>

namespace orl::test
{

namespace
{

constexpr const char* San = R"({"generate": {"hbas": 2, "settingsPerHba": 32}})";

class SharedSettings : public InventorySettingFixture
{
protected:
    std::unique_ptr<ChildProcess> Writer(int first, int threads, int rounds) const
    {
        return std::make_unique<ChildProcess>(
            BuiltProgram("setting_writer"), std::vector<std::string>{m_path.string(), "sim1", std::to_string(first),
                                                                     std::to_string(threads), std::to_string(rounds)});
    }
    // The last value that each setting was reported to have.
    static std::map<std::string, std::string> Reported(ChildProcess& child)
    {
        std::map<std::string, std::string> reported;
        for (std::string line; child.ReadLine(line);)
            reported[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
        return reported;
    }
};

} // namespace

TEST_F(SharedSettings, WrittenByEightThreadsOfTwoProcessesAreAllThere)
{
    const auto agent = Agent(San);
    const auto first = Writer(0, 4, 15);
    const auto second = Writer(8, 4, 15);
    std::map<std::string, std::string> reported = Reported(*first);
    reported.merge(Reported(*second));
    EXPECT_EQ(first->Wait(), 0);
    EXPECT_EQ(second->Wait(), 0);
    ASSERT_EQ(reported.size(), 8u);
    for (const auto& [name, value] : reported)
    {
        EXPECT_EQ(value, "15") << name;
        EXPECT_EQ(Current(*agent, L"sim1", FromUtf8(name).c_str()), "15") << name;
        EXPECT_EQ(Current(*agent, L"sim0", FromUtf8(name).c_str()), "100") << name;
    }
    EXPECT_EQ(Current(*agent, L"sim1", L"Limit16"), "100") << "what nobody wrote";
}

TEST_F(SharedSettings, ReportedByAProcessThatIsKilledAreThere)
{
    const auto agent = Agent(San);
    int killed = 0;
    for (int round = 0; round < 12; ++round)
    {
        const auto writer = Writer(0, 2, 900);
        std::string line;
        ASSERT_TRUE(writer->ReadLine(line));
        std::this_thread::sleep_for(std::chrono::milliseconds(round));
        writer->Kill();
        std::map<std::string, std::string> reported = Reported(*writer);
        reported.try_emplace(line.substr(0, line.find('=')), line.substr(line.find('=') + 1));
        if (writer->Wait() == -1)
            ++killed;
        for (const auto& [name, value] : reported)
        {
            const int there = std::stoi(Current(*agent, L"sim1", FromUtf8(name).c_str()));
            EXPECT_GE(there, std::stoi(value)) << name;
            EXPECT_LE(there, std::stoi(value) + 1) << name << ": no more than the one that was under way";
        }
    }
    EXPECT_GT(killed, 6) << "or the test shows nothing";
    EXPECT_EQ(Set(*agent, L"sim1", L"Limit0", 7), 0u) << "the lock of a killed process is free";
}

TEST_F(SharedSettings, OfOneAgentServeEightThreadsThatReadAndWrite)
{
    const auto agent = Agent(San);
    const auto other = Agent();
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number)
        threads.emplace_back(
            [&, number]
            {
                OrlAdapterAgent& mine = number % 2 == 0 ? *agent : *other;
                const std::wstring name = L"Limit" + std::to_wstring(2 * number);
                CResult status;
                for (LONG round = 1; round <= 12; ++round)
                {
                    ORL_SETTING_VAL_INT value = ValueOf(round);
                    EXPECT_EQ(mine.SetSetting(L"sim0", name, &value, status).ulErrCode, 0u);
                    COrlPointerArray<ORL_SETTING*> settings;
                    EXPECT_EQ(mine.EnumerateSettings(L"sim0", settings, status).ulErrCode, 0u);
                    ASSERT_EQ(settings.size(), 32u);
                    EXPECT_EQ(
                        static_cast<const ORL_SETTING_INT*>(settings[2 * static_cast<std::size_t>(number)])->Current,
                        round);
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    for (int number = 0; number < 8; ++number)
        EXPECT_EQ(Current(*agent, L"sim0", (L"Limit" + std::to_wstring(2 * number)).c_str()), "12");
}

} // namespace orl::test
