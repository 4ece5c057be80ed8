// COrlFcoeAgentIntf: each operation at the place in the table by which the provider calls it.

#include "agent/OrlFcoeAgentIntf.h"

#include "tests/support/ScriptedAgent.h"
#include "tests/support/VirtualAt.h"

#include <gmock/gmock.h>

namespace orl::test
{
namespace
{

using Text = const COrlString&;
using Warnings = std::vector<WarningMessageObj>&;

class FcoeAgentTable : public ::testing::Test
{
protected:
    // Calls the operation at the index, counted as the contract counts: the destructor is 0.
    template <typename... Parameters, typename... Arguments>
    bool Call(std::size_t index, Arguments&&... arguments)
    {
        const auto operation = VirtualAt<bool (COrlFcoeAgentIntf::*)(Parameters...)>(EntryOf(index, 0));
        return (seen.*operation)(std::forward<Arguments>(arguments)...);
    }
    template <typename Record>
    void Enumerate(std::size_t index)
    {
        std::vector<Record> records;
        EXPECT_TRUE((Call<Text, std::vector<Record>&, CResult&>(index, deviceId, records, status)));
        EXPECT_EQ(records.size(), 1U);
    }

    ScriptedAgent agent;
    COrlFcoeAgentIntf& seen = agent;
    CResult status;
    COrlString deviceId = L"X";
    COrlString name = L"2101";
    std::vector<WarningMessageObj> warnings;
};

TEST_F(FcoeAgentTable, HasItsTwelveOperationsInTheirOrder)
{
    agent.hbas.resize(1);
    agent.fabrics.resize(1);
    agent.ports.resize(1);
    agent.targets.resize(1);
    agent.vlans.resize(1);
    agent.luns.resize(1);
    agent.statistics.resize(1);
    Enumerate<ORL_FCOE_HBA>(1);
    Enumerate<ORL_FCOE_FABRIC>(2);
    Enumerate<ORL_FCOE_PORT>(3);
    Enumerate<ORL_FCOE_TARGET>(4);
    Enumerate<ORL_FCOE_VLAN>(5);
    Enumerate<ORL_FCOE_LUN>(6);
    Enumerate<ORL_FCOE_STATISTIC>(7);
    EXPECT_TRUE((Call<CResult&>(8, status)));
    EXPECT_TRUE((Call<Text, COrlString&, Warnings, CResult&>(9, deviceId, name, warnings, status)));
    EXPECT_TRUE((Call<Text, Text, Warnings, CResult&>(10, deviceId, name, warnings, status)));
    EXPECT_TRUE((Call<Text, COrlString&, Warnings, CResult&>(11, deviceId, name, warnings, status)));
    EXPECT_TRUE((Call<Text, CResult&>(12, deviceId, status)));
    EXPECT_THAT(agent.calls, ::testing::ElementsAre(L"EnumerateHBAs(X)", L"EnumerateFabrics(X)", L"EnumeratePorts(X)",
                                                    L"EnumerateTargets(X)", L"EnumerateVLANs(X)", L"EnumerateLUNs(X)",
                                                    L"EnumerateStatistics(X)", L"Uninstall()",
                                                    L"CreateVirtualPort(X, 2101)", L"DeleteVirtualPort(X, 2101)",
                                                    L"GenerateVirtualPortWWPN(X)", L"RefreshTargets(X)"));
}

TEST(FcoeAgentIntf, IsItsTableAndNothingElse)
{
    EXPECT_EQ(sizeof(COrlFcoeAgentIntf), sizeof(void*));
    EXPECT_TRUE(std::is_abstract_v<COrlFcoeAgentIntf>);
    EXPECT_TRUE(std::has_virtual_destructor_v<COrlFcoeAgentIntf>);
}

TEST(FcoeAgentIntf, AssignmentCopiesNothingAndAnswersTheObject)
{
    ScriptedAgent one;
    ScriptedAgent other;
    one.answer = false;
    COrlFcoeAgentIntf& target = one;
    const COrlFcoeAgentIntf& source = other;
    EXPECT_EQ(&(target = source), &target);
    EXPECT_FALSE(one.answer);
}

} // namespace
} // namespace orl::test
