// Joining what is told into one topology, and showing it.
#include "tools/orlwmi/topology/TopologyBuilder.h"
#include "tools/orlwmi/topology/TopologyLinks.h"
#include "tools/orlwmi/topology/TopologyViews.h"
#include "tools/orlwmi/topology/TopologyWords.h"

#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

using namespace orl::client;
using namespace orl::test;
using testing::HasSubstr;

namespace
{

Adapter MakeAdapter(const std::string& id, const std::string& status = "Online")
{
    Adapter adapter;
    adapter.deviceId = id;
    adapter.name = id;
    adapter.status = status;
    return adapter;
}

Port MakePort(const std::string& portName, const std::string& switchName = "", const std::string& fabric = "")
{
    Port port;
    port.portName = portName;
    port.switchName = switchName;
    port.fabric = fabric;
    return port;
}

Target MakeTarget(const std::string& portName)
{
    Target target;
    target.portName = portName;
    target.state = TargetState::Online;
    return target;
}

Forwarder MakeForwarder(const std::string& name, const std::string& nodeName)
{
    Forwarder forwarder;
    forwarder.name = name;
    forwarder.nodeName = nodeName;
    forwarder.priority = "128";
    forwarder.vlanId = "1002";
    forwarder.fcMap = "0xEFC00";
    return forwarder;
}

TEST(TopologyBuilder, PutsEachBelowItsParentWithoutRegardToCase)
{
    TopologyBuilder builder;
    builder.Add(MakeAdapter("eth0"));
    builder.Add(MakeAdapter("eth1"));
    builder.Add("ETH1", MakePort("AB"));
    builder.Add("eth1", MakePort("cd"));
    builder.Add("eth1", "ab", MakeTarget("t1"));
    builder.Add("eth1", "CD", MakeTarget("t1"));
    builder.Add("Eth1", "cd", "T1", Lun{"5", "", "", "", ""});
    const Topology topology = builder.Take();
    ASSERT_EQ(topology.size(), 2U);
    EXPECT_TRUE(topology[0].ports.empty());
    ASSERT_EQ(topology[1].ports.size(), 2U);
    ASSERT_EQ(topology[1].ports[0].targets.size(), 1U);
    EXPECT_TRUE(topology[1].ports[0].targets[0].luns.empty()) << "the same target behind another port";
    ASSERT_EQ(topology[1].ports[1].targets.size(), 1U);
    ASSERT_EQ(topology[1].ports[1].targets[0].luns.size(), 1U);
    EXPECT_EQ(topology[1].ports[1].targets[0].luns[0].id, "5");
    EXPECT_TRUE(builder.Take().empty());
}

TEST(TopologyBuilder, LeavesOutWhatBelongsToNoAdapter)
{
    TopologyBuilder builder;
    builder.Add(MakeAdapter("eth0"));
    builder.Add("eth9", Vlan{});
    builder.Add("eth9", "f", MakeForwarder("fcf_0", "1"));
    builder.Add("eth9", MakePort("1"));
    builder.Add("eth9", "1", MakeTarget("2"));
    builder.Add("eth9", "1", "2", Lun{});
    const Topology topology = builder.Take();
    ASSERT_EQ(topology.size(), 1U);
    EXPECT_TRUE(topology[0].vlans.empty());
    EXPECT_TRUE(topology[0].fabrics.empty());
    EXPECT_TRUE(topology[0].ports.empty());
}

TEST(TopologyBuilder, StandsInForParentsThatWereNotTold)
{
    TopologyBuilder builder;
    builder.Add(MakeAdapter("eth0"));
    builder.Add("eth0", "p", "t", Lun{"1", "", "", "", ""});
    builder.Add("eth0", "p", "t", Lun{"2", "", "", "", ""});
    builder.Add("eth0", "q", MakeTarget("u"));
    const Topology topology = builder.Take();
    ASSERT_EQ(topology[0].ports.size(), 2U);
    EXPECT_FALSE(topology[0].ports[0].isListed);
    ASSERT_EQ(topology[0].ports[0].targets.size(), 1U);
    EXPECT_FALSE(topology[0].ports[0].targets[0].isListed);
    EXPECT_EQ(topology[0].ports[0].targets[0].luns.size(), 2U);
    EXPECT_FALSE(topology[0].ports[1].isListed);
    EXPECT_TRUE(topology[0].ports[1].targets[0].isListed);
}

TEST(TopologyBuilder, GroupsForwardersByFabricAndCountsTheirLogins)
{
    TopologyBuilder builder;
    builder.Add(MakeAdapter("eth0"));
    builder.Add("eth0", "f1", MakeForwarder("fcf_0", "AA"));
    builder.Add("eth0", "f2", MakeForwarder("fcf_1", "bb"));
    builder.Add("eth0", "f1", MakeForwarder("fcf_2", "cc"));
    builder.Add("eth0", MakePort("1", "aa", "f1"));
    builder.Add("eth0", MakePort("2", "AA", "f1"));
    builder.Add("eth0", MakePort("3"));
    const Topology topology = builder.Take();
    ASSERT_EQ(topology[0].fabrics.size(), 2U);
    EXPECT_EQ(topology[0].fabrics[0].name, "f1");
    ASSERT_EQ(topology[0].fabrics[0].forwarders.size(), 2U);
    EXPECT_EQ(topology[0].fabrics[0].forwarders[0].logins, 2U);
    EXPECT_EQ(topology[0].fabrics[0].forwarders[1].logins, 0U);
    EXPECT_EQ(topology[0].fabrics[1].forwarders[0].logins, 0U);
}

// The builder's time for that many LUNs behind that many targets: the processor's, where the runtime tells it, for
// other programs may keep the clock on the wall going.
double SecondsFor(size_t luns)
{
    TopologyBuilder builder;
    builder.Add(MakeAdapter("eth0"));
    builder.Add("eth0", MakePort("p"));
    const std::clock_t start = std::clock();
    for (size_t i = 0; i < luns / 2; ++i)
    {
        builder.Add("eth0", "p", MakeTarget("t" + std::to_string(i)));
    }
    for (size_t i = 0; i < luns; ++i)
    {
        builder.Add("eth0", "p", "t" + std::to_string(i / 2), Lun{std::to_string(i), "", "", "", ""});
    }
    EXPECT_EQ(builder.Take()[0].ports[0].targets.size(), luns / 2);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

TEST(TopologyBuilder, TakesTimeInProportionToTheNumberOfObjects)
{
    // Sixteen times as many may take sixteen times as long, and some more for a machine that is busy; each looking at
    // all others would take 256 times as long.
    const auto best = [](size_t count) { return std::min({SecondsFor(count), SecondsFor(count), SecondsFor(count)}); };
    EXPECT_LT(best(64000), 100 * std::max(best(4000), 0.001));
}

TEST(TopologyWords, SayWhatIsWrongWithAnAdapter)
{
    struct Case
    {
        const char* about;
        std::string status;
        size_t forwarders;
        std::vector<bool> disabledVlans;
        std::string problem;
    };
    const Case cases[] = {
        {"online", "Online", 1, {false}, ""},
        {"another state", "Unknown", 1, {}, ""},
        {"no cable", "Linkdown", 1, {false}, "the link is down: no cable, or the interface is switched off"},
        {"no VLAN known", "Linkdown", 0, {}, "the link is down: no cable, or the interface is switched off"},
        {"disabled", "Linkdown", 0, {true, true}, "FCoE is disabled on this adapter"},
        {"one VLAN disabled",
         "Linkdown",
         0,
         {true, false},
         "the link is down: no cable, or the interface is switched off"},
        {"no forwarder", "offline", 0, {false}, "no forwarder found: the link is up, but nothing offers a fabric"},
        {"one lost",
         "Offline",
         1,
         {false},
         "forwarder lost: the link is up, but no port is logged in through the one that is known"},
        {"two lost",
         "Offline",
         2,
         {false},
         "forwarder lost: the link is up, but no port is logged in through the 2 that are known"},
    };
    for (const auto& c : cases)
    {
        Adapter adapter = MakeAdapter("eth0", c.status);
        for (const bool disabled : c.disabledVlans)
        {
            adapter.vlans.push_back({"1", "", "", "", disabled});
        }
        if (c.forwarders != 0)
        {
            adapter.fabrics.push_back({"f", std::vector<Forwarder>(c.forwarders)});
        }
        EXPECT_EQ(ProblemOf(adapter), c.problem) << c.about;
    }
}

TEST(TopologyWords, SayWhatAForwarderIsToAnAdapter)
{
    Forwarder forwarder = MakeForwarder("fcf_0", "1");
    EXPECT_EQ(UseOf(forwarder, MakeAdapter("a", "Online")), "standby, no port logged in");
    EXPECT_EQ(UseOf(forwarder, MakeAdapter("a", "Offline")), "lost, no port logged in");
    EXPECT_EQ(UseOf(forwarder, MakeAdapter("a", "Linkdown")), "out of reach, the link is down");
    forwarder.logins = 1;
    EXPECT_EQ(UseOf(forwarder, MakeAdapter("a", "Online")), "selected, 1 port logged in");
    forwarder.logins = 2;
    EXPECT_EQ(UseOf(forwarder, MakeAdapter("a", "Online")), "selected, 2 ports logged in");
}

TEST(TopologyWords, SayWhereAPortIsLoggedIn)
{
    Adapter adapter = MakeAdapter("a");
    adapter.fabrics = {{"10000000fc00000a", {MakeForwarder("fcf_1", "ab")}}};
    struct Case
    {
        std::string fabric;
        std::string switchName;
        std::string fcid;
        std::string login;
    };
    const Case cases[] = {
        {"10000000fc00000a", "AB", "0x10300", "10:00:00:00:fc:00:00:0a through fcf_1"},
        {"10000000fc00000a", "cd", "0x10300", "10:00:00:00:fc:00:00:0a"},
        {"10000000fc00000a", "", "0x10300", "10:00:00:00:fc:00:00:0a"},
        {"", "", "0x0", "not logged in"},
        {"", "", "0xFFFFFFFF", "not logged in"},
        {"", "", "", "not logged in"},
        {"", "", "0x1001", "none, point to point"},
    };
    for (const auto& c : cases)
    {
        Port port = MakePort("1", c.switchName, c.fabric);
        port.fcid = c.fcid;
        EXPECT_EQ(LoginOf(port, adapter), c.login);
    }
}

TEST(TopologyWords, GiveSizesAUnit)
{
    struct Case
    {
        std::string bytes;
        std::string shown;
    };
    const Case cases[] = {
        {"0", "0 B"},
        {"1023", "1023 B"},
        {"1024", "1 KiB"},
        {"1536", "1.5 KiB"},
        {"67108864", "64 MiB"},
        {"1073741823", "1023.9 MiB"},
        {"1073741824", "1 GiB"},
        {"1099511627776", "1 TiB"},
        {"18446744073709551615", "15.9 EiB"},
        {"18446744073709551616", "18446744073709551616"},
        {"-1", "-1"},
        {"10 GB", "10 GB"},
        {"", ""},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(SizeText(c.bytes), c.shown) << c.bytes;
    }
}

TEST(TopologyWords, FindKeysInThePathsThatTheProviderWrites)
{
    const std::string path = "Zarn_FCoEFabric.DeviceID=\"eth0\",WorldWideNodeName=\"20ab\"";
    EXPECT_EQ(TextKeyOf(path, "WorldWideNodeName"), "20ab");
    EXPECT_EQ(TextKeyOf(path, "DeviceID"), "eth0");
    EXPECT_EQ(TextKeyOf(path, "Other"), "");
    EXPECT_EQ(TextKeyOf("A.DeviceID=\"x\",WorldWideNodeName=\"\"", "WorldWideNodeName"), "");
    EXPECT_EQ(TextKeyOf("A.DeviceID=\"WorldWideNodeName=\"1\",WorldWideNodeName=\"2\"", "WorldWideNodeName"), "2");
    EXPECT_EQ(TextKeyOf("A.B=\"cut", "B"), "cut");
    EXPECT_EQ(TextKeyOf("", "B"), "");
}

std::string Drawn(const Adapter& adapter)
{
    MemoryOutput output;
    DrawTree(output, TreeOf(adapter));
    output.Flush();
    return output.Text();
}

TEST(TopologyTree, AlignsLunsAndTellsWhatIsUnusual)
{
    Adapter adapter = MakeAdapter("eth0");
    adapter.ports = {MakePort("2000525400fc0001")};
    adapter.ports[0].targets = {MakeTarget("2000525400fc2000")};
    adapter.ports[0].targets[0].luns = {{"0", "DISK", "/dev/sda", "67108864", "512"},
                                        {"10", "DISK", "/dev/sdab", "1073741824", "4096"},
                                        {"11", "", "", "huge", ""}};
    EXPECT_EQ(Drawn(adapter), "FCoE adapter eth0\n"
                              "│   state  Online\n"
                              "└── port 20:00:52:54:00:fc:00:01\n"
                              "    │   fabric  not logged in\n"
                              "    └── target 20:00:52:54:00:fc:20:00  online, 3 LUNs\n"
                              "        ├── LUN 0   64 MiB  /dev/sda   DISK\n"
                              "        ├── LUN 10   1 GiB  /dev/sdab  DISK  4096-byte blocks\n"
                              "        └── LUN 11    huge  no disk\n");
}

TEST(TopologyTree, SaysWhichParentsAreMissing)
{
    TopologyBuilder builder;
    builder.Add(MakeAdapter("eth0"));
    builder.Add("eth0", "2000525400fc0009", "2000525400fc2000", Lun{"1", "", "/dev/sda", "512", "512"});
    EXPECT_EQ(Drawn(builder.Take()[0]), "FCoE adapter eth0\n"
                                        "│   state  Online\n"
                                        "└── port 20:00:52:54:00:fc:00:09  not among the adapter's ports\n"
                                        "    └── target 20:00:52:54:00:fc:20:00  not among the adapter's targets\n"
                                        "        └── LUN 1  512 B  /dev/sda\n");
}

TEST(TopologyTree, CannotSteerATerminal)
{
    Adapter adapter = MakeAdapter("eth0\x1B[2J");
    adapter.fabrics = {{"f\n", {MakeForwarder("fcf\r", "1")}}};
    adapter.ports = {MakePort("p\x07")};
    adapter.ports[0].targets = {MakeTarget("t\x1B")};
    adapter.ports[0].targets[0].luns = {{"0", "n\x1B", "/dev/\n", "\x1B", "\x08"}};
    const std::string drawn = Drawn(adapter);
    for (const char c : {'\x1B', '\r', '\x07', '\x08'})
    {
        EXPECT_EQ(drawn.find(c), std::string::npos);
    }
    EXPECT_THAT(drawn, HasSubstr("fabric f\\n\n"));
    EXPECT_THAT(drawn, HasSubstr("/dev/\\n  n\\x1B  \\x08-byte blocks\n"));
}

TEST(TopologyRecord, HoldsNumbersAsNumbers)
{
    Adapter adapter = MakeAdapter("eth0", "Offline");
    adapter.vlans = {{"1002", "VLAN 1002", "eth0.1002", "Up", false}};
    adapter.fabrics = {{"f", {MakeForwarder("fcf_0", "1")}}};
    adapter.ports = {MakePort("p")};
    adapter.ports[0].targets = {MakeTarget("t")};
    adapter.ports[0].targets[0].luns = {{"7", "DISK", "/dev/sda", "67108864", "512"}, {"8", "", "", "10 GB", ""}};
    std::string json;
    AppendJson(json, RecordOf(adapter), OneLine);
    EXPECT_THAT(json, HasSubstr(R"("VLANs": [{"VlanID": 1002, "Name": "VLAN 1002", "VLANName": "eth0.1002", )"
                                R"("Status": "Up"}])"));
    EXPECT_THAT(json, HasSubstr(R"("Priority": 128, "VlanID": 1002, "Selected": false, )"
                                R"("Use": "lost, no port logged in"})"));
    EXPECT_THAT(json, HasSubstr(R"("LUNs": [{"ID": 7, "Name": "DISK", "OSDeviceName": "/dev/sda", )"
                                R"("Capacity": 67108864, "BlockSize": 512}, )"
                                R"({"ID": 8, "Name": "", "OSDeviceName": "", "Capacity": "10 GB", )"
                                R"("BlockSize": null}])"));
    EXPECT_THAT(json, HasSubstr(R"("Problem": "forwarder lost: )"));
}

} // namespace
