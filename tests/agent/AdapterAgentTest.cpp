// OrlAdapterAgent: each operation at the index by which the provider calls it.

#include "agent/OrlAdapterAgent.h"

#include "tests/support/VirtualAt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orl::test
{
namespace
{

// Every operation of its own answers the index that it stands at, and notes that it was reached with its arguments.
class IndexedAgent final : public OrlAdapterAgent
{
public:
    CResult GetSetting(const COrlString& adapterId, const COrlString& name, ORL_SETTING*& setting,
                       CResult& status) override
    {
        setting = nullptr;
        return Note(1, adapterId, name, status);
    }
    CResult SetSetting(const COrlString& adapterId, const COrlString& name, ORL_SETTING_VAL_INT* given,
                       CResult& status) override
    {
        value = given;
        return Note(2, adapterId, name, status);
    }
    CResult SetSettingToDefault(const COrlString& adapterId, const COrlString& name, CResult& status) override
    {
        return Note(3, adapterId, name, status);
    }
    CResult GetAdapter(const COrlString& adapterId, ORL_ADAPTER& adapter, CResult& status, bool given) override
    {
        adapter.Name = L"the adapter";
        reserved = given;
        return Note(14, adapterId, L"", status);
    }
    CResult ValidateSettingModification(const COrlString& adapterId, const COrlString& name, ORL_SETTING_VAL_INT* given,
                                        std::vector<WarningMessageObj>& warnings, CResult& status, ULONG flag) override
    {
        value = given;
        warnings.push_back({1, flag, L"told"});
        return Note(41, adapterId, name, status);
    }
    CResult EnumerateSettings(const COrlString& adapterId, COrlPointerArray<ORL_SETTING*>& settings,
                              CResult& status) override
    {
        settings.push_back(nullptr);
        return Note(52, adapterId, L"", status);
    }

    COrlString asked;
    ORL_SETTING_VAL_INT* value = nullptr;
    bool reserved = true;

private:
    CResult Note(ULONG index, const COrlString& adapterId, const COrlString& name, CResult& status)
    {
        asked = adapterId + L"/" + name;
        status.ulReserved = index;
        return {index, 77};
    }
};

class AdapterAgentTable : public ::testing::Test
{
protected:
    // Calls the operation at the index, counted as the contract counts.
    template <typename... Parameters, typename... Arguments>
    CResult Call(std::size_t index, Arguments&&... arguments)
    {
        const auto operation = VirtualAt<CResult (OrlAdapterAgent::*)(Parameters...)>(EntryOf(index, 0));
        return (seen.*operation)(std::forward<Arguments>(arguments)...);
    }

    void ExpectReached(const CResult& answer, ULONG index, const wchar_t* asked)
    {
        EXPECT_EQ(answer.ulErrCode, index);
        EXPECT_EQ(answer.ulReserved, 77U);
        EXPECT_EQ(status.ulReserved, index);
        EXPECT_EQ(std::wstring(agent.asked), asked);
    }

    IndexedAgent agent;
    OrlAdapterAgent& seen = agent;
    CResult status;
    const COrlString adapterId = L"eth0";
    const COrlString name = L"Mtu";
    ORL_SETTING_VAL_INT value;
};

using Text = const COrlString&;

TEST_F(AdapterAgentTable, HasGetSettingAt1)
{
    ORL_SETTING* setting = reinterpret_cast<ORL_SETTING*>(this);
    ExpectReached(Call<Text, Text, ORL_SETTING*&, CResult&>(1, adapterId, name, setting, status), 1, L"eth0/Mtu");
    EXPECT_EQ(setting, nullptr);
}

TEST_F(AdapterAgentTable, HasSetSettingAt2)
{
    ExpectReached(Call<Text, Text, ORL_SETTING_VAL_INT*, CResult&>(2, adapterId, name, &value, status), 2, L"eth0/Mtu");
    EXPECT_EQ(agent.value, &value);
}

TEST_F(AdapterAgentTable, HasSetSettingToDefaultAt3)
{
    ExpectReached(Call<Text, Text, CResult&>(3, adapterId, name, status), 3, L"eth0/Mtu");
}

TEST_F(AdapterAgentTable, HasGetAdapterAt14)
{
    ORL_ADAPTER adapter;
    ExpectReached(Call<Text, ORL_ADAPTER&, CResult&, bool>(14, adapterId, adapter, status, false), 14, L"eth0/");
    EXPECT_EQ(std::wstring(adapter.Name), L"the adapter");
    EXPECT_FALSE(agent.reserved);
}

TEST_F(AdapterAgentTable, HasValidateSettingModificationAt41)
{
    std::vector<WarningMessageObj> warnings;
    ExpectReached(Call<Text, Text, ORL_SETTING_VAL_INT*, std::vector<WarningMessageObj>&, CResult&, ULONG>(
                      41, adapterId, name, &value, warnings, status, ULONG{5}),
                  41, L"eth0/Mtu");
    EXPECT_EQ(agent.value, &value);
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_EQ(warnings[0].ulMessageId, 5U);
}

TEST_F(AdapterAgentTable, HasEnumerateSettingsAt52)
{
    COrlPointerArray<ORL_SETTING*> settings;
    ExpectReached(Call<Text, COrlPointerArray<ORL_SETTING*>&, CResult&>(52, adapterId, settings, status), 52, L"eth0/");
    EXPECT_EQ(settings.size(), 1U);
}

TEST_F(AdapterAgentTable, AnswersFailureEverywhereElse)
{
    int reserved = 0;
    for (std::size_t index = 1; index <= 52; ++index)
    {
        if (index <= 3 || index == 14 || index == 41 || index == 52)
            continue;
        EXPECT_EQ(Call<>(index).ulErrCode, 0xFFFFFFFFU) << index;
        ++reserved;
    }
    EXPECT_EQ(reserved, 46);
    EXPECT_TRUE(agent.asked.empty());
}

} // namespace
} // namespace orl::test
