// The topology as a graph: names of objects, edges along links, labels.
#include "tools/orlwmi/topology/TopologyGraph.h"

#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orl::client;
using namespace orl::test;
using testing::HasSubstr;
using testing::Not;

namespace
{

TEST(TopologyLinks, NameWhatAPathMeans)
{
    struct Case
    {
        const char* path;
        std::string id;
    };
    const Case cases[] = {
        {"Zarn_FCOEHBA.DeviceID=\"Eth0\"", AdapterId("eth0")},
        {"\\\\HOST\\root\\KESTA:zarn_fcoehba.DeviceID=\"eth0\"", AdapterId("eth0")},
        {"Zarn_PhysicalEthernetAdapter.DeviceID=\"eth0\",SystemName=\"x\"", EthernetId("eth0")},
        {"Zarn_FCoEFabric.DeviceID=\"eth0\",WorldWideNodeName=\"10AB\"", ForwarderId("eth0", "10ab")},
        {"Zarn_FCoEPort.DeviceID=\"eth0\",WorldWidePortName=\"20ab\"", PortId("eth0", "20ab")},
        {"Zarn_FCoEVLAN.DeviceID=\"eth0\",VlanID=\"1002\"", VlanId("eth0", "1002")},
        {"Zarn_FCoeVLAN.VlanID=1002,DeviceID=\"eth0\"", VlanId("eth0", "1002")},
        {"Zarn_FcoeTarget.DeviceID=\"eth0\",WorldWidePortName=\"20ab\"", ""},
        {"", ""},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(EndOfPath(c.path).id, c.id) << c.path;
    }
}

Adapter MakeAdapter()
{
    Adapter adapter;
    adapter.deviceId = "eth0";
    adapter.name = "a \"b\" \\ c\x1B";
    adapter.vlans = {{"1002", "", "eth0", "Up", false}};
    adapter.fabrics = {{"1000000000000001", {{"fcf_0", "2000000000000001", "", "", "", "", 0}}}};
    Port port;
    port.portName = "2000000000000002";
    port.fcid = "0x1";
    port.targets = {Target{}};
    port.targets[0].portName = "2000000000000003";
    port.targets[0].luns = {{"7", "", "/dev/sda", "1024", ""}};
    adapter.ports = {port};
    return adapter;
}

Links LinksOf(const std::vector<std::pair<std::string, std::string>>& ids)
{
    Links links;
    for (const auto& [from, to] : ids)
    {
        links.emplace_back(LinkEnd{from, {}, {}}, LinkEnd{to, {}, {}});
    }
    return links;
}

TEST(TopologyGraph, FollowsLinksAndReferences)
{
    const Links links = LinksOf({{EthernetId("ETH0"), AdapterId("eth0")},
                                 {AdapterId("eth0"), VlanId("eth0", "1002")},
                                 {AdapterId("eth0"), ForwarderId("eth0", "2000000000000001")},
                                 {ForwarderId("eth0", "2000000000000001"), PortId("eth0", "2000000000000002")},
                                 {ForwarderId("eth0", "2000000000000001"), PortId("eth0", "2000000000000002")},
                                 {AdapterId("eth0"), VlanId("eth0", "7")},
                                 {"", ""}});
    EXPECT_EQ(DotOf({MakeAdapter()}, links), R"(digraph FCoE {
    rankdir=LR;
    node [fontname="sans-serif"];
    n1 [label="Ethernet adapter eth0", shape=component];
    n2 [label="FCoE adapter eth0\na \"b\" \\ c\\x1B", shape=box3d];
    n3 [label="VLAN 1002 on eth0\nup", shape=ellipse];
    n4 [label="fabric 10:00:00:00:00:00:00:01\nforwarder fcf_0\n20:00:00:00:00:00:00:01", shape=hexagon];
    n5 [label="port 20:00:00:00:00:00:00:02\n0x1", shape=box];
    n6 [label="target 20:00:00:00:00:00:00:03\nunknown", shape=box];
    n7 [label="LUN 7\n1 KiB\n/dev/sda", shape=cylinder];
    n5 -> n6;
    n6 -> n7;
    n1 -> n2;
    n2 -> n3;
    n2 -> n4;
    n4 -> n5;
}
)");
}

TEST(TopologyGraph, HangsAPortWithoutFabricAtItsAdapter)
{
    const std::string dot = DotOf({MakeAdapter()}, {});
    EXPECT_THAT(dot, HasSubstr("    n2 -> n5 [style=dashed];\n"));
    EXPECT_THAT(dot, Not(HasSubstr("n4 -> n5")));
}

TEST(ClientGraph, OfNoAdapterIsEmptyAndAsksForNoAssociation)
{
    FakeServices services;
    const Ran ran = RunOn(services, {"graph"});
    EXPECT_EQ(ran.code, ExitCode::Done);
    EXPECT_EQ(ran.output, "digraph FCoE {\n    rankdir=LR;\n    node [fontname=\"sans-serif\"];\n}\n");
    EXPECT_THAT(services.Calls(), Not(testing::Contains(HasSubstr(L"_Assoc"))));
}

} // namespace
