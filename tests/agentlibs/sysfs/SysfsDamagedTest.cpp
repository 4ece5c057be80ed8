// Trees that lack something, or hold what no kernel would put there: the rest of the records, exactly.

#include "agentlibs/fcoelink/sysfs/SysfsTree.h"
#include "tests/agentlibs/sysfs/RecordText.h"
#include "tests/agentlibs/sysfs/TestTree.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{
namespace
{

using namespace std::string_view_literals;
using Texts = std::vector<std::string>;

constexpr const char* Hba0 = "eth0|host0|fcoe v0.1 over host0|2000525400fc0000|1000525400fc00aa|10300||10 Gbit|Online|"
                             "virtual\\net\\eth0\\ctlr_0\\host0|";
constexpr const char* Hba1 = "eth1|host1|fcoe v0.1 over host1|2000525400fc0001|1000525400fc00aa|10300||10 Gbit|Online|"
                             "virtual\\net\\eth1\\ctlr_1\\host1|";
constexpr const char* Fabric0 =
    "eth0|10000000fc00000a|20000000fc00000a||52:54:00:fc:01:01|efc00|fcf_0|Fabric|1|128|1002";
constexpr const char* Port0 = "eth0|1000525400fc00aa|2000525400fc0000|5|NPort (fabric via point-to-point)|10300|"
                              "fcoe v0.1 over host0|20000000fc00000a|10000000fc00000a";
constexpr const char* Target0 = "eth0|1000525400fc2000|2000525400fc2000|0|0|10200|ACME|naa.600140500000000|"
                                "2000525400fc0000|FCP Target|10000000fc00000a|rport-0:0-1|0|1";
constexpr const char* Lun0 = "eth0|0|0|0|10200|/dev/sd0|1048576|512|2000525400fc2000|naa.600140500000000|"
                             "2000525400fc0000|10000000fc00000a|ACME DISK 1.0";
constexpr const char* Vlan0 = "eth0|eth0|0|1|Up|eth0";

const std::string Controller = std::string(Net) + "eth0/ctlr_0/";
const std::string Host = Controller + "host0/";
const std::string Fc = Host + "fc_host/host0/";
const std::string Rport = Host + "rport-0:0-1/";
const std::string Remote = Rport + "fc_remote_ports/rport-0:0-1/";
const std::string Target = Rport + "target0:0:0/";
const std::string Disk = Target + "0:0:0:0/";

class SysfsDamaged : public testing::Test
{
protected:
    SysfsDamaged()
    {
        AddHba(m_tree, "eth0", 0);
        m_backend = m_tree.Backend();
    }

    TestTree m_tree;
    std::unique_ptr<FcoeBackend> m_backend;
};

TEST_F(SysfsDamaged, TheUndamagedTreeIsWhole)
{
    EXPECT_EQ(Hbas(*m_backend), Texts{Hba0});
    EXPECT_EQ(Ports(*m_backend), Texts{Port0});
    EXPECT_EQ(Fabrics(*m_backend), Texts{Fabric0});
    EXPECT_EQ(Targets(*m_backend), Texts{Target0});
    EXPECT_EQ(Luns(*m_backend), Texts{Lun0});
    EXPECT_EQ(Vlans(*m_backend), Texts{Vlan0});
    EXPECT_EQ(Statistics(*m_backend), (Texts{"eth0|Tx frames|tx_frames|16", "eth0|Lesb link fail|lesb_link_fail|1",
                                             "eth0|Npiv vports inuse|npiv_vports_inuse|0"}));
}

// A root that cannot be the right one is an error, which names it; a machine without FCoE is none.

TEST_F(SysfsDamaged, ARootThatIsNotThereIsAnError)
{
    BackendConfig config;
    config.sysfsRoot = m_tree.At("nowhere").wstring();
    const auto backend = MakeSysfsBackend(config);
    const std::string path = m_tree.At("nowhere");
    const Texts error{"error 3: SysfsRoot \"" + path + "\": No such file or directory"};
    EXPECT_EQ(Hbas(*backend), error);
    EXPECT_EQ(Ports(*backend), error);
    EXPECT_EQ(Fabrics(*backend), error);
    EXPECT_EQ(Targets(*backend), error);
    EXPECT_EQ(Luns(*backend), error);
    EXPECT_EQ(Vlans(*backend), error);
    EXPECT_EQ(Statistics(*backend), error);
    const BackendStatus status = backend->Status();
    EXPECT_FALSE(status.ready);
    EXPECT_EQ(status.source, config.sysfsRoot);
    EXPECT_EQ(status.text, L"SysfsRoot \"" + config.sysfsRoot + L"\": No such file or directory");
}

TEST_F(SysfsDamaged, ARootThatIsAFileIsAnError)
{
    m_tree.File("file", "");
    BackendConfig config;
    config.sysfsRoot = m_tree.At("file").wstring();
    EXPECT_EQ(Hbas(*MakeSysfsBackend(config)),
              Texts{"error 3: SysfsRoot \"" + m_tree.At("file").string() + "\": Not a directory"});
}

TEST_F(SysfsDamaged, ARootWithoutASysfsIsAnError)
{
    m_tree.Remove("sys/devices");
    const std::string root = m_tree.Root();
    EXPECT_EQ(Hbas(*m_backend), Texts{"error 3: SysfsRoot \"" + root + "\" holds no folder \"sys/devices\""});
    EXPECT_FALSE(m_backend->Status().ready);
}

TEST_F(SysfsDamaged, TheBackEndRecoversWithItsRoot)
{
    m_tree.Remove("sys/devices");
    EXPECT_EQ(Hbas(*m_backend).at(0).substr(0, 5), "error");
    AddHba(m_tree, "eth0", 0);
    EXPECT_EQ(Hbas(*m_backend), Texts{Hba0});
}

TEST_F(SysfsDamaged, AMachineWithoutFcoeHasNoHbas)
{
    m_tree.Remove("sys/bus");
    EXPECT_EQ(Hbas(*m_backend), Texts{});
    EXPECT_EQ(Statistics(*m_backend), Texts{});
    const BackendStatus status = m_backend->Status();
    EXPECT_FALSE(status.ready);
    EXPECT_EQ(status.text, L"there is no sys/bus/fcoe: the kernel's FCoE stack is not loaded (modprobe fcoe)");
}

TEST_F(SysfsDamaged, AnIdleFcoeBusIsReady)
{
    m_tree.Remove("sys/bus/fcoe/devices/ctlr_0");
    const BackendStatus status = m_backend->Status();
    EXPECT_TRUE(status.ready);
    EXPECT_EQ(status.text, L"0 HBAs");
}

struct HbaCase
{
    const char* name;
    std::function<void(TestTree&)> damage; // to eth0; eth1 beside it stays whole
    Texts hbas;
};

class SysfsDamagedHba : public testing::TestWithParam<HbaCase>
{
};

const std::string EmptyHba0 = "eth0|host0||||0||||virtual\\net\\eth0\\ctlr_0\\host0|";

TEST_P(SysfsDamagedHba, LeavesTheRest)
{
    TestTree tree;
    AddHba(tree, "eth0", 0);
    AddHba(tree, "eth1", 1);
    GetParam().damage(tree);
    EXPECT_EQ(Hbas(*tree.Backend()), GetParam().hbas);
}

const HbaCase HbaCases[] = {
    {"ControllerLinkDangles",
     [](TestTree& tree) { tree.Link("sys/bus/fcoe/devices/ctlr_0", "../../../devices/virtual/net/eth7/ctlr_0"); },
     {Hba1}},
    {"ControllerLinkIsAbsolute",
     [](TestTree& tree) { tree.Link("sys/bus/fcoe/devices/ctlr_0", tree.At("sys/devices/virtual/net/eth0/ctlr_0")); },
     {Hba1}},
    {"ControllerLinkLeavesTheTree",
     [](TestTree& tree)
     { tree.Link("sys/bus/fcoe/devices/ctlr_0", "../../../../../sys/devices/virtual/net/eth0/ctlr_0"); },
     {Hba1}},
    {"ControllerLinkIsARing", [](TestTree& tree) { tree.Link("sys/bus/fcoe/devices/ctlr_0", "ctlr_0"); }, {Hba1}},
    {"ControllerLinkNamesAnother",
     [](TestTree& tree) { tree.Link("sys/bus/fcoe/devices/ctlr_5", "../../../devices/virtual/net/eth0/ctlr_0"); },
     {Hba0, Hba1}},
    {"ControllerIsAFile",
     [](TestTree& tree)
     {
         tree.Remove("sys/bus/fcoe/devices/ctlr_0");
         tree.File("sys/bus/fcoe/devices/ctlr_0", "x");
     },
     {Hba1}},
    {"ControllerIsAFolder",
     [](TestTree& tree)
     {
         tree.Remove("sys/bus/fcoe/devices/ctlr_0");
         tree.Folder("sys/bus/fcoe/devices/ctlr_0/host0/fc_host/host0");
     },
     {Hba1}},
    {"ControllerIsOfNoInterface",
     [](TestTree& tree)
     {
         tree.Folder("sys/devices/platform/eth0/ctlr_0/host0/fc_host/host0");
         tree.Link("sys/bus/fcoe/devices/ctlr_0", "../../../devices/platform/eth0/ctlr_0");
     },
     {Hba1}},
    {"InterfaceIsALink",
     [](TestTree& tree)
     {
         std::filesystem::rename(tree.At("sys/devices/virtual/net/eth0"), tree.At("sys/devices/virtual/net/moved"));
         tree.Link("sys/devices/virtual/net/eth0", "moved");
     },
     {Hba1}},
    {"InterfaceIsAFile",
     [](TestTree& tree)
     {
         tree.Remove("sys/devices/virtual/net/eth0");
         tree.File("sys/devices/virtual/net/eth0", "x");
     },
     {Hba1}},
    {"InterfaceIndexIsMissing",
     [](TestTree& tree) { tree.Remove("sys/devices/virtual/net/eth1/ifindex"); },
     {Hba1, Hba0}},
    {"InterfaceIndexIsGarbage",
     [](TestTree& tree) { tree.File("sys/devices/virtual/net/eth1/ifindex", "first\n"); },
     {Hba1, Hba0}},
    {"InterfaceIndexesAreEqual",
     [](TestTree& tree) { tree.File("sys/devices/virtual/net/eth1/ifindex", "2\n"); },
     {Hba0, Hba1}},
    {"HostIsMissing", [](TestTree& tree) { tree.Remove(Host); }, {Hba1}},
    {"HostIsAFile",
     [](TestTree& tree)
     {
         tree.Remove(Host.substr(0, Host.size() - 1));
         tree.File(Host.substr(0, Host.size() - 1), "x");
     },
     {Hba1}},
    {"HostIsALink",
     [](TestTree& tree) { tree.Link(Host.substr(0, Host.size() - 1), "../../eth1/ctlr_1/host1"); },
     {Hba1}},
    {"HostHasNoNumber",
     [](TestTree& tree) { std::filesystem::rename(tree.At(Controller + "host0"), tree.At(Controller + "hosts")); },
     {Hba1}},
    {"HostIsNoFibreChannelHost", [](TestTree& tree) { tree.Remove(Host + "fc_host"); }, {Hba1}},
    {"HostHasTwoNames",
     [](TestTree& tree)
     {
         tree.Folder(Controller + "host10/fc_host/host10");
         tree.Folder(Controller + "host_busy");
     },
     {Hba0, Hba1}},
    {"NoAttributes",
     [](TestTree& tree)
     {
         tree.Remove(Fc.substr(0, Fc.size() - 1));
         tree.Folder(Fc);
     },
     {EmptyHba0, Hba1}},
    {"EmptyAttributes",
     [](TestTree& tree)
     {
         for (const char* name : {"symbolic_name", "port_name", "node_name", "port_id", "speed", "port_state"})
             tree.File(Fc + name, "\n");
     },
     {EmptyHba0, Hba1}},
    {"AttributesAreFolders",
     [](TestTree& tree)
     {
         for (const char* name : {"symbolic_name", "port_name", "node_name", "port_id", "speed", "port_state", "model"})
         {
             tree.Remove(Fc + name);
             tree.Folder(Fc + name);
         }
     },
     {EmptyHba0, Hba1}},
    {"AttributesAreFifos",
     [](TestTree& tree)
     {
         for (const char* name : {"symbolic_name", "port_name", "node_name", "port_id", "speed", "port_state", "model"})
             tree.Fifo(Fc + name);
     },
     {EmptyHba0, Hba1}},
    {"AttributesAreLinks",
     [](TestTree& tree)
     {
         for (const char* name : {"symbolic_name", "port_name", "node_name", "port_id", "speed", "port_state", "model"})
             tree.Link(Fc + name, "../../../../../eth1/ctlr_1/host1/fc_host/host1/" + std::string(name));
     },
     {EmptyHba0, Hba1}},
    {"AttributesAreHuge",
     [](TestTree& tree)
     {
         for (const char* name : {"symbolic_name", "port_name", "node_name", "port_id", "speed", "port_state", "model"})
             tree.File(Fc + name, std::string(70000, '1'));
     },
     {EmptyHba0, Hba1}},
    {"NamesAndNumbersAreGarbage",
     [](TestTree& tree)
     {
         tree.File(Fc + "port_name", "20:00:52:54:00:fc:00:00\n");
         tree.File(Fc + "node_name", "0x12345678123456789\n");
         tree.File(Fc + "port_id", "0x1234567890\n");
     },
     {"eth0|host0|fcoe v0.1 over host0|||0||10 Gbit|Online|virtual\\net\\eth0\\ctlr_0\\host0|", Hba1}},
    {"TextsAreBinary",
     [](TestTree& tree)
     {
         tree.File(Fc + "symbolic_name", "a\xC0\x80"
                                         "b\0c"sv);
         tree.File(Fc + "speed", "\x1B[2J\x07\n");
         tree.File(Fc + "model", "\xF0\x9F\x98\x80");
     },
     {"eth0|host0|a\xEF\xBF\xBD\xEF\xBF\xBD"
      "b|2000525400fc0000|1000525400fc00aa|10300|| [2J |Online|virtual\\net\\eth0\\ctlr_0\\host0|\xF0\x9F\x98\x80",
      Hba1}},
    {"FcidsOfEveryState",
     [](TestTree& tree) { tree.File(Fc + "port_id", "0xffffffff\n"); },
     {"eth0|host0|fcoe v0.1 over host0|2000525400fc0000|1000525400fc00aa|ffffffff||10 "
      "Gbit|Online|virtual\\net\\eth0\\ctlr_0\\host0|",
      Hba1}},
};

INSTANTIATE_TEST_SUITE_P(Table, SysfsDamagedHba, testing::ValuesIn(HbaCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(SysfsDamaged, PortTypesHaveTheirNumbers)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Unknown", "1|Unknown"},
        {"Other", "2|Other"},
        {"Not Present", "3|Not Present"},
        {"NPort (fabric via point-to-point)", "5|NPort (fabric via point-to-point)"},
        {"NLPort (fabric via loop)", "6|NLPort (fabric via loop)"},
        {"LPort (private loop)", "20|LPort (private loop)"},
        {"Point-To-Point (direct nport connection)", "21|Point-To-Point (direct nport connection)"},
        {"Something new", "1|Something new"},
        {"", "0|"},
    };
    for (const auto& [text, fields] : cases)
    {
        m_tree.File(Fc + "port_type", std::string(text) + "\n");
        EXPECT_EQ(Ports(*m_backend), Texts{"eth0|1000525400fc00aa|2000525400fc0000|" + std::string(fields) +
                                           "|10300|fcoe v0.1 over host0|20000000fc00000a|10000000fc00000a"});
    }
}

TEST_F(SysfsDamaged, VirtualPortsFollowInTheOrderOfTheirNumbers)
{
    for (const int index : {9, 2})
        AddVirtualPort(m_tree, "eth0", 0, index, 20 - index);
    m_tree.Folder(Host + "vport-0:0-3/fc_vports/vport-0:0-3"); // has no host yet
    m_tree.Link(Host + "vport-0:0-4", "vport-0:0-2");
    EXPECT_EQ(Ports(*m_backend),
              (Texts{Port0,
                     "eth0|1000525400fc00aa|2102525400fc0000|2|NPIV VPORT|10300|fcoe v0.1 over host18|20000000fc00000a|"
                     "10000000fc00000a",
                     "eth0|1000525400fc00aa|2109525400fc0000|2|NPIV VPORT|10300|fcoe v0.1 over host11|20000000fc00000a|"
                     "10000000fc00000a"}));
    EXPECT_EQ(Hbas(*m_backend), Texts{Hba0}) << "a virtual port is no HBA";
}

TEST_F(SysfsDamaged, ThePortsFabricIsTheSelectedForwarder)
{
    m_tree.File(Controller + "fcf_10/selected", "1\n");
    m_tree.File(Controller + "fcf_10/switch_name", "0x20000000fc000010\n");
    m_tree.File(Controller + "fcf_2/selected", "1\n");
    m_tree.File(Controller + "fcf_2/switch_name", "0x20000000fc000002\n");
    m_tree.File(Controller + "fcf_0/selected", "0\n");
    const auto fabricOf = [&]
    {
        const std::string line = Ports(*m_backend).at(0);
        return line.substr(line.find("host0|") + 6, 17);
    };
    EXPECT_EQ(fabricOf(), "20000000fc000002|") << "the first of two that say so";
    m_tree.File(Controller + "fcf_2/selected", "\n");
    EXPECT_EQ(fabricOf(), "20000000fc000010|");
    m_tree.File(Controller + "fcf_10/selected", "yes\n");
    EXPECT_EQ(fabricOf(), "|10000000fc00000a");
}

TEST_F(SysfsDamaged, ForwardersFollowInTheOrderOfTheirNumbers)
{
    m_tree.Folder(Controller + "fcf_10");
    m_tree.File(Controller + "fcf_9/fc_map", "everything\n");
    m_tree.File(Controller + "fcf_9/vlan_id", "-1\n");
    m_tree.File(Controller + "fcf_11", "a file\n");
    m_tree.Link(Controller + "fcf_12", "fcf_0");
    m_tree.Folder(Controller + "fcf_x");
    EXPECT_EQ(Fabrics(*m_backend), (Texts{Fabric0, "eth0|||||0|fcf_9|Fabric|1|0|0", "eth0|||||0|fcf_10|Fabric|1|0|0"}));
}

TEST_F(SysfsDamaged, FabricTypesHaveTheirNumbers)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Fabric\n", "Fabric|1"}, {"VN2VN\n", "VN2VN|2"}, {"unset\n", "unset|0"}, {"", "|0"}};
    for (const auto& [mode, fields] : cases)
    {
        m_tree.File(Controller + "mode", mode);
        EXPECT_EQ(Fabrics(*m_backend), Texts{"eth0|10000000fc00000a|20000000fc00000a||52:54:00:fc:01:01|efc00|fcf_0|" +
                                             std::string(fields) + "|128|1002"});
    }
}

TEST_F(SysfsDamaged, OnlyScsiTargetsAreTargets)
{
    const auto add = [&](const std::string& name, const char* id)
    { m_tree.File(Host + name + "/fc_remote_ports/" + name + "/scsi_target_id", id); };
    add("rport-0:0-2", "-1\n");
    add("rport-0:0-3", "\n");
    add("rport-0:0-4", "zero\n");
    add("rport-0:0-5", "4294967296\n");
    add("rport-0:0", "0\n");
    add("rport-a:b-c", "0\n");
    m_tree.Folder(Host + "rport-0:0-6");
    m_tree.Link(Host + "rport-0:0-7", "rport-0:0-1");
    add("rport-0:1-10", "7\n");
    add("rport-0:1-9", "8\n");
    EXPECT_EQ(Targets(*m_backend), (Texts{Target0, "eth0|||1|8|0|||2000525400fc0000||10000000fc00000a|rport-0:1-9|0|0",
                                          "eth0|||1|7|0|||2000525400fc0000||10000000fc00000a|rport-0:1-10|0|0"}));
    EXPECT_EQ(Luns(*m_backend), Texts{Lun0});
}

TEST_F(SysfsDamaged, TargetStatesHaveTheirNumbers)
{
    const std::pair<const char*, const char*> cases[] = {{"Online", "1"},   {"Blocked", "2"}, {"Not Present", "3"},
                                                         {"Marginal", "0"}, {"Unknown", "0"}, {"", "0"}};
    for (const auto& [state, number] : cases)
    {
        m_tree.File(Remote + "port_state", std::string(state) + "\n");
        const std::string line = Targets(*m_backend).at(0);
        EXPECT_EQ(line.substr(line.rfind('|') + 1), number) << state;
    }
}

TEST_F(SysfsDamaged, ATargetIsDescribedByItsFirstDisk)
{
    const auto add = [&](const std::string& name, const char* type, const char* vendor)
    {
        m_tree.File(Target + name + "/type", type);
        m_tree.File(Target + name + "/vendor", vendor);
    };
    m_tree.Remove(Disk);
    add("0:0:0:0", "13\n", "ENCLOSED");
    add("0:0:0:10", "0\n", "TEN");
    add("0:0:0:9", "0\n", "NINE");
    EXPECT_EQ(Targets(*m_backend), Texts{"eth0|1000525400fc2000|2000525400fc2000|0|0|10200|NINE||2000525400fc0000|"
                                         "FCP Target|10000000fc00000a|rport-0:0-1|0|1"});
}

TEST_F(SysfsDamaged, OnlyDisksAreLuns)
{
    const auto add = [&](const std::string& name, const char* type) { m_tree.File(Target + name + "/type", type); };
    add("0:0:0:1", "5\n");
    add("0:0:0:2", "\n");
    add("0:0:0", "0\n");
    add("0:0:0:0:0", "0\n");
    add("power", "0\n");
    m_tree.Link(Target + "0:0:0:3", "0:0:0:0");
    m_tree.File(Target + "0:0:0:4", "0\n");
    EXPECT_EQ(Luns(*m_backend), Texts{Lun0});
}

TEST_F(SysfsDamaged, ADiskMayLackAnything)
{
    m_tree.Remove(Disk);
    m_tree.File(Disk + "type", "0\n");
    const std::string tail = "|2000525400fc2000||2000525400fc0000|10000000fc00000a|";
    EXPECT_EQ(Luns(*m_backend), Texts{"eth0|0|0|0|10200|||" + tail}) << "no disk yet";
    m_tree.Folder(Disk + "block");
    EXPECT_EQ(Luns(*m_backend), Texts{"eth0|0|0|0|10200|||" + tail});
    m_tree.Folder(Disk + "block/sdz");
    EXPECT_EQ(Luns(*m_backend), Texts{"eth0|0|0|0|10200|/dev/sdz||" + tail});
    m_tree.File(Disk + "block/sdz/size", "big\n");
    m_tree.File(Disk + "block/sdz/queue/logical_block_size", "-512\n");
    m_tree.File(Disk + "vendor", "ACME\n");
    m_tree.File(Disk + "rev", "2.0\n");
    EXPECT_EQ(Luns(*m_backend), Texts{"eth0|0|0|0|10200|/dev/sdz||" + tail + "ACME 2.0"});
}

TEST_F(SysfsDamaged, ACapacityIsCountedInBytesWhateverTheBlockSize)
{
    const std::pair<const char*, const char*> cases[] = {
        {"0\n", "0"},
        {"2097152\n", "1073741824"},
        {"36028797018963967\n", "18446744073709551104"}, // the last that fits
        {"36028797018963968\n", ""},
        {"18446744073709551615\n", ""},
    };
    m_tree.File(Disk + "block/sd0/queue/logical_block_size", "4096\n");
    for (const auto& [size, capacity] : cases)
    {
        m_tree.File(Disk + "block/sd0/size", size);
        EXPECT_NE(Luns(*m_backend).at(0).find("|/dev/sd0|" + std::string(capacity) + "|4096|"), std::string::npos)
            << size;
    }
}

TEST_F(SysfsDamaged, TheKernelsLunNumbersKeepTheirLower32Bits)
{
    std::filesystem::rename(m_tree.At(Target + "0:0:0:0"), m_tree.At(Target + "0:0:0:4611686018444165120"));
    EXPECT_EQ(Luns(*m_backend).at(0).substr(0, 14), "eth0|16777216|");
}

TEST_F(SysfsDamaged, AVlanIsUpDownOrDisabled)
{
    struct
    {
        const char* enabled;
        const char* operstate;
        const char* fields;
    } const cases[] = {
        {"1\n", "up\n", "1|Up"},        {"1\n", "unknown\n", "1|Up"},
        {"1\n", "down\n", "2|Down"},    {"1\n", "lowerlayerdown\n", "2|Down"},
        {"1\n", "dormant\n", "2|Down"}, {"1\n", "", "2|Down"},
        {"0\n", "up\n", "3|Disabled"},  {"0\n", "down\n", "3|Disabled"},
        {"", "up\n", "3|Disabled"},
    };
    for (const auto& test : cases)
    {
        m_tree.File(Controller + "enabled", test.enabled);
        m_tree.File(std::string(Net) + "eth0/operstate", test.operstate);
        EXPECT_EQ(Vlans(*m_backend), Texts{"eth0|eth0|0|" + std::string(test.fields) + "|eth0"})
            << test.enabled << test.operstate;
    }
}

TEST_F(SysfsDamaged, TheVlanTableIsSearchedForTheWholeName)
{
    const std::string Line = "eth0           | 9  | a";
    const std::pair<std::string, const char*> cases[] = {
        {"VLAN Dev name\t | VLAN ID\nName-Type: X\neth0           | 1002  | eth7\n", "1002|1|Up|VLAN 1002"},
        {"eth0|1002|eth7\n", "0|1|Up|eth0"}, // a name may hold bars
        {"eth0.5         | 5  | eth0\n", "0|1|Up|eth0"},
        {"eth            | 5  | eth0\neth0           | 7  | eth\n", "7|1|Up|VLAN 7"},
        {"eth0           | 9  | a", "9|1|Up|VLAN 9"},
        {"eth0           | nine  | a\n", "0|1|Up|eth0"},
        {"eth0           ", "0|1|Up|eth0"},
        {"eth0", "0|1|Up|eth0"},
        {"eth0           |", "0|1|Up|eth0"},
        {"\n\n\n", "0|1|Up|eth0"},
        {std::string("\0\xFF\n\0", 4), "0|1|Up|eth0"},
        {std::string(sysfs::MaxVlanTableBytes - Line.size(), '\n') + Line, "9|1|Up|VLAN 9"},
        {std::string(sysfs::MaxVlanTableBytes + 1 - Line.size(), '\n') + Line,
         "0|1|Up|eth0"}, // too long: not read at all
    };
    for (const auto& [table, fields] : cases)
    {
        m_tree.File("proc/net/vlan/config", table);
        EXPECT_EQ(Vlans(*m_backend), Texts{"eth0|eth0|" + std::string(fields)}) << table.substr(0, 80);
    }
    m_tree.Fifo("proc/net/vlan/config");
    EXPECT_EQ(Vlans(*m_backend), Texts{Vlan0});
}

TEST_F(SysfsDamaged, TheVlanTableIsFoundThroughTheProcessesOwnView)
{
    m_tree.File("proc/self/net/vlan/config", "eth0           | 1002  | eth7\n");
    m_tree.Link("proc/net", "self/net");
    EXPECT_EQ(Vlans(*m_backend), Texts{"eth0|eth0|1002|1|Up|VLAN 1002"});
}

TEST_F(SysfsDamaged, OnlyReadableCountersAreCounted)
{
    const std::string statistics = Fc + "statistics/";
    m_tree.File(statistics + "rx_words", "0xfffffffffffffffe\n");
    m_tree.File(statistics + "reset_statistics", "");
    m_tree.File(statistics + "garbage", "many\n");
    m_tree.File(statistics + "negative", "-1\n");
    m_tree.Folder(statistics + "folder");
    m_tree.Fifo(statistics + "fifo");
    m_tree.Link(statistics + "link", "tx_frames");
    m_tree.File(Controller + "lesb/err_block", "4294967296\n");
    m_tree.File(Controller + "lesb/miss_fka", "50331648\n");
    m_tree.File(Fc + "npiv_vports_inuse", "\n");
    EXPECT_EQ(Statistics(*m_backend),
              (Texts{"eth0|Rx words|rx_words|18446744073709551614", "eth0|Tx frames|tx_frames|16",
                     "eth0|Lesb link fail|lesb_link_fail|1", "eth0|Lesb miss fka|lesb_miss_fka|3"}));
    m_tree.Remove(statistics);
    m_tree.Remove(Controller + "lesb");
    EXPECT_EQ(Statistics(*m_backend), Texts{});
}

TEST_F(SysfsDamaged, AnAdapterOfItsOwnNeedsNoLowerInterface)
{
    std::filesystem::create_directories(m_tree.At("sys/devices/pci0000:00/0000:00:1c.0/10000:03:00.1/net"));
    std::filesystem::rename(m_tree.At("sys/devices/virtual/net/eth0"),
                            m_tree.At("sys/devices/pci0000:00/0000:00:1c.0/10000:03:00.1/net/eth0"));
    m_tree.Link("sys/bus/fcoe/devices/ctlr_0",
                "../../../devices/pci0000:00/0000:00:1c.0/10000:03:00.1/net/eth0/ctlr_0");
    EXPECT_EQ(Hbas(*m_backend),
              Texts{"eth0|host0|fcoe v0.1 over host0|2000525400fc0000|1000525400fc00aa|10300|10000:03:00.1|10 Gbit|"
                    "Online|pci0000:00\\0000:00:1c.0\\10000:03:00.1\\net\\eth0\\ctlr_0\\host0|"});
}

TEST_F(SysfsDamaged, TheAdapterIsFoundBelowInterfacesOnInterfaces)
{
    const auto busOf = [&]
    {
        const std::string line = Hbas(*m_backend).at(0);
        const std::size_t begin = line.find("|10300|") + 7;
        return line.substr(begin, line.find('|', begin) - begin);
    };
    const std::string net(Net);
    m_tree.Link(net + "eth0/lower_bond0", "../bond0");
    EXPECT_EQ(busOf(), "") << "the link dangles";
    m_tree.Link(net + "bond0/lower_eth0", "../eth0");
    EXPECT_EQ(busOf(), "") << "a ring";
    m_tree.Link(net + "bond0/lower_ens10", "../../../pci0000:00/0000:00:0a.0/net/ens10");
    m_tree.Link(net + "bond0/lower_ens9", "../../../pci0000:00/0000:00:09.0/virtio1/net/ens9");
    EXPECT_EQ(busOf(), "0000:00:09.0") << "the first of the bond's two";
    m_tree.Link(net + "bond0/lower_ens9", "../../../../../etc");
    EXPECT_EQ(busOf(), "0000:00:0a.0");
    m_tree.Link(net + "bond0/lower_ens10", "../../../pci0000:00/0000:00:0a.8/net/ens10");
    EXPECT_EQ(busOf(), "0000:00:0a.8") << "the form is looked at, not the numbers";
    m_tree.Link(net + "bond0/lower_ens10", "../../../pci0000:00/000:00:0a.0/net/ens10");
    EXPECT_EQ(busOf(), "");
}

TEST_F(SysfsDamaged, ADeviceIdMatchesAsWrittenOrElseWithoutCase)
{
    AddHba(m_tree, "ETH0", 1);
    m_tree.File(Net.data() + std::string("ETH0/ifindex"), "1\n");
    const auto ids = [&](const wchar_t* id)
    {
        Texts names;
        for (const std::string& line : Hbas(*m_backend, id))
            names.push_back(line.substr(0, 4));
        return names;
    };
    EXPECT_EQ(ids(L"eth0"), Texts{"eth0"});
    EXPECT_EQ(ids(L"ETH0"), Texts{"ETH0"});
    EXPECT_EQ(ids(L"Eth0"), (Texts{"ETH0", "eth0"}));
    EXPECT_EQ(ids(L"eth"), Texts{});
    EXPECT_EQ(ids(L"eth0 "), Texts{});
    EXPECT_EQ(ids(L"../eth0"), Texts{});
    EXPECT_EQ(ids(L""), (Texts{"ETH0", "eth0"}));
}

} // namespace
} // namespace orl
