// Counters, their rates, and the samples that stats prints.
#include "tools/orlwmi/stats/CounterViews.h"
#include "tools/orlwmi/stats/Counters.h"

#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orl::client;
using namespace orl::test;
using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

namespace
{

constexpr std::uint64_t Most = 18446744073709551615U;

TEST(CounterRates, AreWhatWasAddedBySecond)
{
    struct Case
    {
        const char* about;
        std::uint64_t before;
        std::uint64_t after;
        milliseconds passed;
        std::optional<double> rate;
    };
    const Case cases[] = {
        {"up", 100, 150, seconds(2), 25.0},
        {"still", 7, 7, seconds(1), 0.0},
        {"slow", 0, 1, seconds(10), 0.1},
        {"short time", 0, 5, milliseconds(500), 10.0},
        {"beyond 2^53", Most - 4, Most, seconds(1), 4.0},
        {"reset", 100, 3, seconds(1), std::nullopt},
        {"begun again", Most, 0, seconds(1), std::nullopt},
        {"no time", 1, 2, seconds(0), std::nullopt},
    };
    for (const auto& c : cases)
    {
        CounterRates rates;
        const auto start = CounterRates::Clock::now();
        Counters first = {{"eth0", "tx", "Tx", c.before, {}}};
        rates.Add(first, start);
        EXPECT_FALSE(first[0].perSecond) << c.about << ": nothing to compare with";
        Counters second = {{"eth0", "tx", "Tx", c.after, {}}};
        rates.Add(second, start + c.passed);
        ASSERT_EQ(second[0].perSecond.has_value(), c.rate.has_value()) << c.about;
        EXPECT_DOUBLE_EQ(second[0].perSecond.value_or(0), c.rate.value_or(0)) << c.about;
    }
}

TEST(CounterRates, CompareACounterWithItselfAlone)
{
    CounterRates rates;
    const auto start = CounterRates::Clock::now();
    Counters first = {{"eth0", "tx", "", 10, {}}, {"eth1", "tx", "", 1000, {}}, {"eth0", "gone", "", 5, {}}};
    rates.Add(first, start);
    Counters second = {{"eth1", "tx", "", 1001, {}}, {"eth0", "rx", "", 3, {}}, {"eth0", "tx", "", 12, {}}};
    rates.Add(second, start + seconds(1));
    EXPECT_EQ(second[0].perSecond, 1.0);
    EXPECT_FALSE(second[1].perSecond) << "it was not there before";
    EXPECT_EQ(second[2].perSecond, 2.0);
    Counters third = {{"eth0", "gone", "", 9, {}}};
    rates.Add(third, start + seconds(2));
    EXPECT_FALSE(third[0].perSecond) << "it was not there the last time";
}

class ClientStats : public testing::Test
{
protected:
    FakeServices services;

    static FakeContent CounterOf(const std::wstring& id, const std::wstring& statistic, const wchar_t* value)
    {
        FakeContent counter =
            Instance(L"Zarn_FCoEStatistics", {{L"DeviceID", CComVariant(id.c_str())},
                                              {L"Name", CComVariant((L"Words of " + statistic).c_str())},
                                              {L"Statistic", CComVariant(statistic.c_str())}});
        counter.properties.push_back({L"Value", CComVariant(value), CIM_UINT64, {}});
        return counter;
    }

    void SetUp() override
    {
        services.OnEnumerate(L"Zarn_FCoEStatistics",
                             Objects({CounterOf(L"eth0", L"tx", L"18446744073709551615"),
                                      CounterOf(L"eth0", L"rx", L"0"), CounterOf(L"eth1", L"tx", L"7")}));
    }
};

TEST_F(ClientStats, ShowsCountersThatCount)
{
    const Ran ran = RunOn(services, {"stats"});
    EXPECT_EQ(ran.errors, "");
    EXPECT_EQ(ran.output, "Adapter  Counter                     Value  Statistic\n"
                          "-------  -----------  --------------------  ---------\n"
                          "eth0     Words of tx  18446744073709551615  tx\n"
                          "eth1     Words of tx                     7  tx\n"
                          "\n"
                          "1 counter stands at 0; --all shows them\n");
}

TEST_F(ClientStats, ShowsAllCountersWhenAsked)
{
    const Ran ran = RunOn(services, {"stats", "--all"});
    EXPECT_THAT(ran.output, HasSubstr("eth0     Words of rx                     0  rx\n"));
    EXPECT_THAT(ran.output, Not(HasSubstr("--all")));
}

TEST_F(ClientStats, GivesProgramsEveryCounter)
{
    EXPECT_EQ(RunOn(services, {"stats", "--format", "json"}).output,
              R"({"DeviceID": "eth0", "Statistic": "tx", "Name": "Words of tx", "Value": 18446744073709551615}
{"DeviceID": "eth0", "Statistic": "rx", "Name": "Words of rx", "Value": 0}
{"DeviceID": "eth1", "Statistic": "tx", "Name": "Words of tx", "Value": 7}
)");
    EXPECT_EQ(RunOn(services, {"stats", "--format", "csv"}).output,
              "DeviceID,Statistic,Name,Value\r\neth0,tx,Words of tx,18446744073709551615\r\n"
              "eth0,rx,Words of rx,0\r\neth1,tx,Words of tx,7\r\n");
}

TEST_F(ClientStats, AsksForTheChosenAdapterAlone)
{
    services.OnQuery(L"SELECT DeviceID FROM Zarn_FCOEHBA WHERE DeviceID = 'ETH1'",
                     Objects({Instance(L"Zarn_FCOEHBA", {{L"DeviceID", CComVariant(L"eth1")}})}));
    services.OnQuery(L"SELECT * FROM Zarn_FCoEStatistics WHERE DeviceID = 'eth1'",
                     Objects({CounterOf(L"eth1", L"tx", L"7")}));
    EXPECT_EQ(RunOn(services, {"stats", "ETH1", "--format", "csv"}).output,
              "DeviceID,Statistic,Name,Value\r\neth1,tx,Words of tx,7\r\n");
}

TEST_F(ClientStats, WatchesSoManySamplesWithTheirTimes)
{
    const Ran ran = RunOn(services, {"stats", "--watch", "0.01", "--count", "2", "--format", "json"});
    EXPECT_EQ(ran.errors, "");
    std::vector<std::string> lines;
    for (size_t begin = 0; begin < ran.output.size();)
    {
        const size_t end = ran.output.find('\n', begin);
        lines.push_back(ran.output.substr(begin, end - begin));
        begin = end + 1;
    }
    ASSERT_EQ(lines.size(), 6U);
    const std::string time = R"(\{"Time": "20..-..-..T..:..:..Z", )";
    EXPECT_THAT(lines[2], MatchesRegex(time + R"("DeviceID": "eth1", .*"Value": 7, "PerSecond": null\})"));
    EXPECT_THAT(lines[5], MatchesRegex(time + R"("DeviceID": "eth1", .*"Value": 7, "PerSecond": 0.00\})"));
    EXPECT_THAT(services.Calls(),
                ElementsAre(L"CreateInstanceEnum(Zarn_FCoEStatistics)", L"CreateInstanceEnum(Zarn_FCoEStatistics)"));
}

TEST_F(ClientStats, WatchWaitsBetweenSamplesAndNotAfterTheLast)
{
    const auto start = std::chrono::steady_clock::now();
    RunOn(services, {"stats", "--watch", "0.1", "--count", "3"});
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(200));
    const auto one = std::chrono::steady_clock::now();
    RunOn(services, {"stats", "--watch", "100", "--count", "1"});
    EXPECT_LT(std::chrono::steady_clock::now() - one, seconds(50));
}

TEST_F(ClientStats, ATimeoutIsThatOfEachSample)
{
    EXPECT_EQ(RunOn(services, {"stats", "--watch", "0.2", "--count", "3", "--timeout", "0.25"}).code, ExitCode::Done);
    FakeAnswer never;
    never.never = true;
    services.OnEnumerate(L"Zarn_FCoEStatistics", never);
    EXPECT_EQ(RunOn(services, {"stats", "--watch", "0.1", "--timeout", "0.1"}).code, ExitCode::TimedOut);
}

TEST(CounterTable, HasRatesFromTheSecondSampleOn)
{
    MemoryOutput output;
    const auto view = MakeCounterView({Format::Table, true, false}, output);
    const std::chrono::system_clock::time_point time{seconds(1767225600)};
    view->Write({{"eth0", "tx", "Tx frames", 10, {}}}, time);
    view->Write({{"eth0", "tx", "Tx frames", 15, 2.5}, {"eth0", "rx", "Rx frames", 1, {}}}, time + milliseconds(2900));
    view->Write({{"eth0", "tx", "Tx frames", 0, 0.0}}, time + seconds(4));
    output.Flush();
    EXPECT_EQ(output.Text(), "2026-01-01T00:00:00Z\n"
                             "Adapter  Counter    Value  Statistic\n"
                             "-------  ---------  -----  ---------\n"
                             "eth0     Tx frames     10  tx\n"
                             "\n"
                             "2026-01-01T00:00:02Z\n"
                             "Adapter  Counter    Value  Per second  Statistic\n"
                             "-------  ---------  -----  ----------  ---------\n"
                             "eth0     Tx frames     15        2.50  tx\n"
                             "eth0     Rx frames      1           -  rx\n"
                             "\n"
                             "2026-01-01T00:00:04Z\n"
                             "1 counter stands at 0; --all shows them\n");
}

} // namespace
