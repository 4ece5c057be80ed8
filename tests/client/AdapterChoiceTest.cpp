// Naming adapters on the command line.
#include "tools/orlwmi/AdapterChoice.h"
#include "tools/orlwmi/Failure.h"

#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orl::client;
using namespace orl::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

TEST(AdapterNames, MatchWithoutCaseByTextOrPattern)
{
    struct Case
    {
        std::string pattern;
        std::string name;
        bool matches;
    };
    const Case cases[] = {
        {"eth0", "eth0", true},
        {"ETH0", "eth0", true},
        {"eth", "eth0", false},
        {"eth0", "eth", false},
        {"eth*", "eth0", true},
        {"*", "", true},
        {"?", "", false},
        {"eth?.1002", "ETH1.1002", true},
        {"*.10?2", "eth0.1002", true},
        {"*a*b", "xaayb", true},
        {"*a*b", "xaayc", false},
        {"a*", "b", false},
        {"**", "x", true},
        {"eth*0", "eth0", true},
        {"a*b*c", "abbc", true},
        {"a?c", "abbc", false},
        {"a*b", "a*b", true},
        {"[e]th0", "eth0", false},
        {"", "", true},
        {"", "a", false},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(NameMatches(c.pattern, c.name), c.matches) << c.pattern << " on " << c.name;
    }
}

TEST(AdapterNames, AreQuotedForQueries)
{
    EXPECT_EQ(WqlText("eth0.1002"), "'eth0.1002'");
    EXPECT_EQ(WqlText("a'b\\c\"d"), "'a\\'b\\\\c\"d'");
}

class AdapterChoices : public testing::Test
{
protected:
    FakeServices services;
    Deadline deadline{std::nullopt};
    MemoryOutput output;
    Timing timing;
    ErrorLines errors = [](const std::string& lines) { ADD_FAILURE() << lines; };
    Session session{services.Get(), deadline, output, timing, errors};

    static FakeAnswer Ids(const std::vector<std::wstring>& ids)
    {
        std::vector<FakeContent> hbas;
        for (const auto& id : ids)
        {
            hbas.push_back(Instance(L"Zarn_FCOEHBA", {{L"DeviceID", CComVariant(id.c_str())}}));
        }
        return Objects(hbas);
    }
};

TEST_F(AdapterChoices, AreAllWithoutAsking)
{
    const AdapterChoice choice({}, session);
    EXPECT_TRUE(choice.Has("anything"));
    EXPECT_EQ(choice.Condition(), "");
    EXPECT_THAT(services.Calls(), IsEmpty());
}

TEST_F(AdapterChoices, AskForWrittenNamesAlone)
{
    services.OnQuery(L"SELECT DeviceID FROM Zarn_FCOEHBA WHERE DeviceID = 'ETH0' OR DeviceID = 'eth1'",
                     Ids({L"eth0", L"eth1"}));
    const AdapterChoice choice({"ETH0", "eth1"}, session);
    EXPECT_TRUE(choice.Has("Eth0"));
    EXPECT_FALSE(choice.Has("eth2"));
    EXPECT_EQ(choice.Condition(), "DeviceID = 'eth0' OR DeviceID = 'eth1'");
    EXPECT_EQ(services.Calls().size(), 1U);
}

TEST_F(AdapterChoices, LookPatternsUp)
{
    services.OnQuery(L"SELECT DeviceID FROM Zarn_FCOEHBA", Ids({L"eth0", L"ens1", L"eth1"}));
    const AdapterChoice choice({"ETH*", "eth1"}, session);
    EXPECT_TRUE(choice.Has("eth1"));
    EXPECT_FALSE(choice.Has("ens1"));
    EXPECT_EQ(choice.Condition(), "DeviceID = 'eth0' OR DeviceID = 'eth1'") << "each once";
}

TEST_F(AdapterChoices, ListTheAdaptersWhenThereIsNoSuchOne)
{
    services.OnQuery(L"SELECT DeviceID FROM Zarn_FCOEHBA WHERE DeviceID = 'eth9'", Ids({}));
    services.OnQuery(L"SELECT DeviceID FROM Zarn_FCOEHBA", Ids({L"eth0", L"eth1"}));
    const Ran ran = RunOn(services, {"tree", "eth9"});
    EXPECT_EQ(ran.code, ExitCode::NotFound);
    EXPECT_EQ(ran.output, "");
    EXPECT_EQ(ran.errors, "orlwmi: there is no FCoE adapter eth9\n  Adapters: eth0, eth1\n");
}

TEST_F(AdapterChoices, ListSomeOfManyAdapters)
{
    std::vector<std::wstring> ids;
    for (int i = 0; i < 1000; ++i)
    {
        ids.push_back(L"sim" + std::to_wstring(i));
    }
    services.OnQuery(L"SELECT DeviceID FROM Zarn_FCOEHBA", Ids(ids));
    EXPECT_EQ(RunOn(services, {"stats", "x*"}).errors,
              "orlwmi: there is no FCoE adapter x*\n"
              "  Adapters: sim0, sim1, sim2, sim3, sim4, sim5, sim6, sim7, sim8, sim9, ... (1000 in all)\n");
    const AdapterChoice choice({"sim*"}, session);
    EXPECT_TRUE(choice.Has("sim999"));
    EXPECT_EQ(choice.Condition(), "") << "a condition of a thousand terms would be weighed for each object";
}

} // namespace
