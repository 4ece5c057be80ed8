// Which of an agent's records a get sends: by text without regard to case, by LUN id, by VLAN id.

#include "tests/provider/DeviceCases.h"

#include "classes/Zarn_FcoeFabric.h"
#include "classes/Zarn_FcoeLUN.h"
#include "classes/Zarn_FcoePort.h"
#include "classes/Zarn_FcoeStatistics.h"
#include "classes/Zarn_FcoeTarget.h"
#include "classes/Zarn_FcoeVLAN.h"

namespace orl::test
{
namespace
{

// The agent's records are told apart by their display names.
class DeviceFilter : public ManagerTest
{
protected:
    DeviceFilter()
    {
        for (const DeviceCase& c : DeviceCases())
            services->Add(MakeFakeClass(c.cimClass));
    }

    std::vector<std::wstring> NamesOf(const Outcome& outcome)
    {
        EXPECT_EQ(outcome.status, 0);
        std::vector<std::wstring> names;
        for (const auto& instance : outcome.instances)
            names.push_back(ValueOf(instance, L"Name"));
        return names;
    }
    template <typename Manager>
    std::vector<std::wstring> Found(const wchar_t* path)
    {
        Manager manager(&agent);
        return NamesOf(Get(manager, path));
    }

    using Names = std::vector<std::wstring>;
};

struct FilterRow
{
    const wchar_t* path;
    std::vector<std::wstring> found;
};

TEST_F(DeviceFilter, TextKeysCompareWithoutCaseAndFindEveryRecordThatHasThem)
{
    const auto named = [](auto record, auto key, const wchar_t* value, const wchar_t* name)
    {
        record.*key = value;
        record.name = name;
        return record;
    };
    agent.fabrics = {named(SampleFabric(L"X"), &ORL_FCOE_FABRIC::nodeWWN, L"20000000fc0000aa", L"fcf_0"),
                     named(SampleFabric(L"X"), &ORL_FCOE_FABRIC::nodeWWN, L"20000000fc0000bb", L"fcf_1"),
                     named(SampleFabric(L"X"), &ORL_FCOE_FABRIC::nodeWWN, L"20000000FC0000AA", L"fcf_2")};
    agent.ports = {named(SamplePort(L"X"), &ORL_FCOE_PORT::portWWN, L"200000000000000a", L"p0"),
                   named(SamplePort(L"X"), &ORL_FCOE_PORT::portWWN, L"200000000000000b", L"p1")};
    agent.targets = {named(SampleTarget(L"X"), &ORL_FCOE_TARGET::nodeWWN, L"100000000000000a", L"through one port"),
                     named(SampleTarget(L"X"), &ORL_FCOE_TARGET::nodeWWN, L"100000000000000a", L"through another")};
    agent.statistics = {named(SampleStatistic(L"X"), &ORL_FCOE_STATISTIC::statistic, L"tx_frames", L"sent"),
                        named(SampleStatistic(L"X"), &ORL_FCOE_STATISTIC::statistic, L"rx_frames", L"received")};

    const auto fabric = [this](const wchar_t* path) { return Found<CZarn_FcoeFabric>(path); };
    EXPECT_EQ(fabric(L"Zarn_FCoEFabric.DeviceID=\"X\",WorldWideNodeName=\"20000000fC0000Aa\""),
              (Names{L"fcf_0", L"fcf_2"}));
    EXPECT_EQ(fabric(L"Zarn_FCoEFabric.DeviceID=\"X\",WorldWideNodeName=\"20000000fc0000cc\""), Names{});
    // No text asks for all.
    EXPECT_EQ(fabric(L"Zarn_FCoEFabric.DeviceID=\"X\",WorldWideNodeName=\"\""), (Names{L"fcf_0", L"fcf_1", L"fcf_2"}));

    const auto port = [this](const wchar_t* path) { return Found<CZarn_FcoePort>(path); };
    EXPECT_EQ(port(L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"200000000000000B\""), Names{L"p1"});
    EXPECT_EQ(port(L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"200000000000000c\""), Names{});

    const auto target = [this](const wchar_t* path) { return Found<CZarn_FcoeTarget>(path); };
    EXPECT_EQ(target(L"Zarn_FcoeTarget.DeviceID=\"X\",WorldWideNodeName=\"100000000000000A\""),
              (Names{L"through one port", L"through another"}));

    const auto statistic = [this](const wchar_t* path) { return Found<CZarn_FcoeStatistics>(path); };
    EXPECT_EQ(statistic(L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"RX_frames\""), Names{L"received"});
    EXPECT_EQ(statistic(L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"rx_frame\""), Names{});
}

TEST_F(DeviceFilter, TargetsSeenThroughTwoPortsEachPointToTheirOwn)
{
    agent.targets = {SampleTarget(L"X"), SampleTarget(L"X")};
    agent.targets[1].localPortWWN = L"2101525400fc0001";
    CZarn_FcoeTarget manager(&agent);
    const Outcome outcome = Get(manager, L"Zarn_FcoeTarget.DeviceID=\"X\",WorldWideNodeName=\"1000525400fc2000\"");
    ASSERT_EQ(outcome.instances.size(), 2U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"Port"),
              L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2000525400fc0001\"");
    EXPECT_EQ(ValueOf(outcome.instances[1], L"Port"),
              L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2101525400fc0001\"");
}

// The path that other classes point to a target with carries the port's name, which this class does not read.
TEST_F(DeviceFilter, TargetIsNotFoundByThePathThatReferencesCarry)
{
    agent.targets = {SampleTarget(L"X")};
    const wchar_t* path = L"Zarn_FcoeTarget.DeviceID=\"X\",WorldWidePortName=\"2000525400fc2000\"";
    CZarn_FcoeTarget manager(&agent);
    ExpectRefusal([&] { Get(manager, path); }, {0x8004090F, path, 0x80041002, L"Src\\Zarn_FCOE", 288});
    EXPECT_TRUE(agent.calls.empty());
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_F(DeviceFilter, LunsAreFoundByNumberAndZeroOrTextFindsAllOfTheAdapter)
{
    for (const auto& [id, name] : {std::pair{1U, L"one"}, {3U, L"three"}, {3U, L"three again"}})
    {
        agent.luns.push_back(SampleLun(L"X"));
        agent.luns.back().lunId = id;
        agent.luns.back().name = name;
    }
    const Names all = {L"one", L"three", L"three again"};
    const FilterRow rows[] = {
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=3", {L"three", L"three again"}},
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=1", {L"one"}},
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=2", {}},
        // The number by which an enumeration asks is a number like any other in a path.
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=-1", {}},
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=0", all},
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=\"3\"", all},
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=TRUE", all},
        {L"Zarn_FCoeLUN.DeviceID=\"\",ID=2", all},
    };
    for (const FilterRow& row : rows)
        EXPECT_EQ(Found<CZarn_FcoeLUN>(row.path), row.found) << Narrow(row.path);
}

TEST_F(DeviceFilter, PathThatTheBaseMakesOfALunFindsAllOfTheAdapter)
{
    agent.luns = {SampleLun(L"X"), SampleLun(L"X")};
    agent.luns[1].lunId = 9;
    CZarn_FcoeLUN manager(&agent);
    CWomContext context(services);
    CComBSTR path;
    manager.MakeLUNPathFromID(context, L"X", 9, path.m_str);
    EXPECT_EQ(Get(manager, path).instances.size(), 2U);
}

TEST_F(DeviceFilter, EnumerationOfLunsSendsAllWhateverTheirNumbers)
{
    for (const ULONG id : {0U, 5U, 0xFFFFFFFFU, 0xFFFFFFFEU})
    {
        agent.luns.push_back(SampleLun(id == 5 ? L"X" : L"Y"));
        agent.luns.back().lunId = id;
    }
    CZarn_FcoeLUN manager(&agent);
    EXPECT_EQ(Enumerate(manager).instances.size(), 4U);
}

TEST_F(DeviceFilter, CapacityAndBlockSizeAreSentAsTheAgentWroteThem)
{
    agent.luns = {SampleLun(L"X")};
    agent.luns[0].capacity = L" 0x10 blocks ";
    agent.luns[0].blockSize = L"";
    CZarn_FcoeLUN manager(&agent);
    const Outcome outcome = Enumerate(manager);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"Capacity"), L" 0x10 blocks ");
    EXPECT_EQ(ValueOf(outcome.instances[0], L"BlockSize"), L"");
}

TEST_F(DeviceFilter, VlansAreFoundByQuotedNumberAndAnythingElseFindsAllOfTheAdapter)
{
    for (const auto& [id, name] :
         {std::pair{0U, L"untagged"}, {100U, L"hundred"}, {0x7FFFFFFFU, L"largest"}, {0xFFFFFFFFU, L"all ones"}})
    {
        agent.vlans.push_back(SampleVlan(L"X"));
        agent.vlans.back().vlanId = id;
        agent.vlans.back().name = name;
    }
    const Names all = {L"untagged", L"hundred", L"largest", L"all ones"};
    const FilterRow rows[] = {
        {L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"100\"", {L"hundred"}},
        {L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"0\"", {L"untagged"}},
        {L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"7\"", {}},
        {L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"abc\"", all},
        {L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"\"", all},
        {L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=100", all},
        // Too large a number reads as the largest there is.
        {L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"99999999999\"", {L"largest"}},
        {L"Zarn_FCoeVLAN.DeviceID=\"\",VlanID=\"100\"", all},
    };
    for (const FilterRow& row : rows)
        EXPECT_EQ(Found<CZarn_FcoeVLAN>(row.path), row.found) << Narrow(row.path);
}

TEST_F(DeviceFilter, EmptyDeviceIdFindsAllOfEveryAdapterWhateverTheNumber)
{
    agent.luns = {SampleLun(L"X"), SampleLun(L"Y")};
    agent.luns[1].lunId = 6;
    agent.vlans = {SampleVlan(L"X"), SampleVlan(L"Y")};
    agent.vlans[1].vlanId = 6;
    CZarn_FcoeLUN luns(&agent);
    CZarn_FcoeVLAN vlans(&agent);
    for (const Outcome& outcome :
         {Get(luns, L"Zarn_FCoeLUN.DeviceID=\"\",ID=5"), Get(vlans, L"Zarn_FCoeVLAN.DeviceID=\"\",VlanID=\"1002\"")})
    {
        EXPECT_EQ(outcome.status, 0);
        ASSERT_EQ(outcome.instances.size(), 2U);
        EXPECT_EQ(ValueOf(outcome.instances[0], L"DeviceID"), L"X");
        EXPECT_EQ(ValueOf(outcome.instances[1], L"DeviceID"), L"Y");
    }
    EXPECT_EQ(agent.calls, (std::vector<std::wstring>{L"EnumerateLUNs()", L"EnumerateVLANs()"}));
}

TEST_F(DeviceFilter, AddressesAreHexadecimalWithoutLeadingZeros)
{
    const struct
    {
        ULONG number;
        const wchar_t* text;
    } cases[] = {{0x010200, L"0x10200"}, {0x0A1B2C, L"0xA1B2C"}, {0, L"0x0"}, {0xFFFFFFFF, L"0xFFFFFFFF"}};
    for (const auto& row : cases)
    {
        agent.ports = {SamplePort(L"X")};
        agent.ports[0].fcid = row.number;
        agent.targets = {SampleTarget(L"X")};
        agent.targets[0].fcid = row.number;
        agent.luns = {SampleLun(L"X")};
        agent.luns[0].fcid = row.number;
        agent.fabrics = {SampleFabric(L"X")};
        agent.fabrics[0].fcMap = row.number;
        CZarn_FcoePort ports(&agent);
        CZarn_FcoeTarget targets(&agent);
        CZarn_FcoeLUN luns(&agent);
        CZarn_FcoeFabric fabrics(&agent);
        EXPECT_EQ(ValueOf(Enumerate(ports).instances.at(0), L"FCID"), row.text);
        EXPECT_EQ(ValueOf(Enumerate(targets).instances.at(0), L"FCID"), row.text);
        EXPECT_EQ(ValueOf(Enumerate(luns).instances.at(0), L"FCID"), row.text);
        EXPECT_EQ(ValueOf(Enumerate(fabrics).instances.at(0), L"FCMap"), row.text);
    }
}

TEST_F(DeviceFilter, CounterIsSentWhole)
{
    for (const ULONGLONG value : {0ULL, 4294967296ULL, 9223372036854775808ULL, 18446744073709551615ULL})
    {
        agent.statistics = {SampleStatistic(L"X")};
        agent.statistics[0].value = value;
        CZarn_FcoeStatistics manager(&agent);
        EXPECT_EQ(ValueOf(Enumerate(manager).instances.at(0), L"Value"), std::to_wstring(value));
    }
}

} // namespace
} // namespace orl::test
