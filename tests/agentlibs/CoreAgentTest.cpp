// Adapters without settings.

#include "agentlibs/corelink/CoreAgent.h"

#include <gtest/gtest.h>

namespace orl::test
{

namespace
{

// The agent says nothing about these but by name, and so it must not touch them.
template <typename Type>
Type& Untouchable()
{
    alignas(std::max_align_t) static unsigned char nothing[1024];
    return reinterpret_cast<Type&>(nothing);
}

bool IsUntouched(const void* place)
{
    const auto* bytes = static_cast<const unsigned char*>(place);
    return std::all_of(bytes, bytes + 1024, [](unsigned char byte) { return byte == 0; });
}

} // namespace

TEST(CoreAgent, ListsNoSettings)
{
    CoreAgent agent;
    CResult status{77, 88};
    auto& settings = Untouchable<COrlPointerArray<ORL_SETTING*>>();
    const CResult result = agent.EnumerateSettings(L"eth0", settings, status);
    EXPECT_EQ(result.ulErrCode, 0u);
    EXPECT_EQ(result.ulReserved, 0u);
    EXPECT_TRUE(IsUntouched(&settings));
    EXPECT_EQ(status.ulErrCode, 77u);
    EXPECT_EQ(status.ulReserved, 88u);
}

TEST(CoreAgent, FindsNoSettingAndHandsNoneOut)
{
    CoreAgent agent;
    CResult status{77, 88};
    ORL_SETTING* setting = reinterpret_cast<ORL_SETTING*>(&status);
    EXPECT_EQ(agent.GetSetting(L"eth0", L"Mtu", setting, status).ulErrCode, 1168u);
    EXPECT_EQ(setting, nullptr);
    EXPECT_EQ(status.ulErrCode, 77u);
}

TEST(CoreAgent, ChangesNoSetting)
{
    CoreAgent agent;
    CResult status{77, 88};
    std::vector<WarningMessageObj> warnings;
    EXPECT_EQ(agent.SetSetting(L"eth0", L"Mtu", nullptr, status).ulErrCode, 1168u);
    EXPECT_EQ(agent.SetSettingToDefault(L"eth0", L"Mtu", status).ulErrCode, 1168u);
    EXPECT_EQ(agent.ValidateSettingModification(L"eth0", L"Mtu", nullptr, warnings, status, 1).ulErrCode, 1168u);
    EXPECT_TRUE(warnings.empty());
    EXPECT_EQ(status.ulErrCode, 77u);
}

TEST(CoreAgent, KnowsNoAdapterAndLeavesTheRecordAlone)
{
    CoreAgent agent;
    CResult status{77, 88};
    auto& adapter = Untouchable<ORL_ADAPTER>();
    EXPECT_EQ(agent.GetAdapter(L"eth0", adapter, status, false).ulErrCode, 1168u);
    EXPECT_TRUE(IsUntouched(&adapter));
}

TEST(CoreAgent, RefusesWhatItsTableReserves)
{
    CoreAgent agent;
    OrlAdapterAgent& seen = agent;
    EXPECT_EQ(seen.Reserved4().ulErrCode, OrlAdapterAgent::NotSupported);
    EXPECT_EQ(seen.Reserved51().ulErrCode, OrlAdapterAgent::NotSupported);
}

} // namespace orl::test
