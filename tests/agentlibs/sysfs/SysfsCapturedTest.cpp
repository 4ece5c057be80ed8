// Every record of every captured tree, against what the tree's own files say when they are reached by other ways than
// the back end's: through /sys/class, by links.

#include "agentlibs/Text.h"
#include "tests/agentlibs/sysfs/RecordText.h"
#include "tests/agentlibs/sysfs/TestTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <arpa/inet.h>

namespace fs = std::filesystem;

namespace orl
{
namespace
{

using Texts = std::vector<std::string>;

constexpr const char* TreeNames[] = {
    "fabric-0-created", "fabric-1-no-fcf",           "fabric-2-up", "fabric-3-npiv", "fabric-5-io", "fabric-7-fcf-lost",
    "hbainfo-3-npiv",   "fabric-9-linkdown-devloss", "vn2vn-2-io"};

fs::path RootOf(const std::string& tree)
{
    return fs::path(ORL_SYSFS_TREES) / tree / "root";
}

std::unique_ptr<FcoeBackend> BackendOf(const std::string& tree)
{
    BackendConfig config;
    config.sysfsRoot = RootOf(tree).wstring();
    return MakeSysfsBackend(config);
}

// "0x2000525400fc0001" as the records have it.
std::string Name(const fs::path& file)
{
    const std::string text = ReadText(file);
    return text == "0x0" || text.empty() ? "" : text.substr(2);
}

std::string Hex(const fs::path& file)
{
    char text[32];
    std::snprintf(text, sizeof text, "%llx", std::stoull(ReadText(file), nullptr, 16));
    return text;
}

std::string Joined(std::initializer_list<std::string> fields)
{
    std::string line;
    for (const std::string& field : fields)
        line += (line.empty() ? "" : "|") + field;
    return line;
}

// A host of the tree: where its files are, and the controller that it is below.
struct HostFiles
{
    std::string name; // host0
    fs::path fc;      // /sys/class/fc_host/host0
    fs::path controller;
    std::string deviceId;
    bool npiv = false;
    int index = 0; // of the interface

    bool operator<(const HostFiles& other) const
    {
        return std::tie(index, npiv, name) < std::tie(other.index, other.npiv, other.name);
    }
};

class SysfsCaptured : public testing::TestWithParam<const char*>
{
protected:
    SysfsCaptured() : m_root(RootOf(GetParam())), m_backend(BackendOf(GetParam()))
    {
        for (const auto& entry : fs::directory_iterator(m_root / "sys/class/fc_host"))
        {
            HostFiles host;
            host.name = entry.path().filename();
            host.fc = entry.path();
            host.controller = fs::canonical(entry.path());
            while (!host.controller.filename().string().starts_with("ctlr_"))
                host.controller = host.controller.parent_path();
            host.deviceId = host.controller.parent_path().filename();
            host.npiv = host.fc.string() != "" && fs::canonical(host.fc).string().find("vport-") != std::string::npos;
            host.index = std::stoi(ReadText(host.controller.parent_path() / "ifindex"));
            m_hosts.insert(host);
        }
        EXPECT_GE(m_hosts.size(), 2u);
    }

    std::string SelectedSwitch(const HostFiles& host) const
    {
        for (const auto& entry : fs::directory_iterator(host.controller))
            if (ReadText(entry.path() / "selected") == "1")
                return Name(entry.path() / "switch_name");
        return {};
    }

    // The remote ports of a host that are SCSI targets.
    std::set<fs::path> TargetsOf(const HostFiles& host) const
    {
        std::set<fs::path> targets;
        const fs::path remote = m_root / "sys/class/fc_remote_ports";
        if (fs::exists(remote))
            for (const auto& entry : fs::directory_iterator(remote))
                if (entry.path().filename().string().starts_with("rport-" + host.name.substr(4) + ':') &&
                    ReadText(entry.path() / "scsi_target_id") != "-1")
                    targets.insert(entry.path());
        return targets;
    }

    // The disks below a remote port, by H:C:T:L.
    std::set<fs::path> DisksOf(const fs::path& target) const
    {
        std::set<fs::path> disks;
        const fs::path devices = m_root / "sys/class/scsi_device";
        const std::string below = fs::canonical(target / "device").string() + '/';
        if (fs::exists(devices))
            for (const auto& entry : fs::directory_iterator(devices))
                if (fs::canonical(entry.path()).string().starts_with(below) &&
                    ReadText(entry.path() / "device/type") == "0")
                    disks.insert(entry.path());
        return disks;
    }

    fs::path m_root;
    std::set<HostFiles> m_hosts;
    std::unique_ptr<FcoeBackend> m_backend;
};

TEST_P(SysfsCaptured, HbasAreWhatTheFilesSay)
{
    const std::map<std::string, std::string> buses{
        {"eth0.1002", "0000:00:03.0"}, {"eth1.1002", "0000:00:04.0"}, {"veth0", ""}, {"veth1", ""}};
    Texts expected;
    for (const HostFiles& host : m_hosts)
    {
        if (host.npiv)
            continue;
        std::string path = fs::relative(fs::canonical(host.fc / "device"), m_root / "sys/devices");
        std::replace(path.begin(), path.end(), '/', '\\');
        expected.push_back(
            Joined({host.deviceId, host.name, ReadText(host.fc / "symbolic_name"), Name(host.fc / "port_name"),
                    Name(host.fc / "node_name"), Hex(host.fc / "port_id"), buses.at(host.deviceId),
                    ReadText(host.fc / "speed"), ReadText(host.fc / "port_state"), path, ReadText(host.fc / "model")}));
    }
    EXPECT_EQ(Hbas(*m_backend), expected);
}

TEST_P(SysfsCaptured, PortsAreWhatTheFilesSay)
{
    Texts expected;
    for (const HostFiles& host : m_hosts)
        expected.push_back(
            Joined({host.deviceId, Name(host.fc / "node_name"), Name(host.fc / "port_name"), host.npiv ? "2" : "5",
                    host.npiv ? "NPIV VPORT" : ReadText(host.fc / "port_type"), Hex(host.fc / "port_id"),
                    ReadText(host.fc / "symbolic_name"), SelectedSwitch(host), Name(host.fc / "fabric_name")}));
    EXPECT_EQ(Ports(*m_backend), expected);
}

TEST_P(SysfsCaptured, FabricsAreWhatTheFilesSay)
{
    Texts expected;
    for (const HostFiles& host : m_hosts)
    {
        if (host.npiv)
            continue;
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(m_root / "sys/bus/fcoe/devices"))
            if (entry.path().filename().string().starts_with("fcf_") &&
                fs::canonical(entry.path()).parent_path() == host.controller)
                names.insert(entry.path().filename());
        for (const std::string& name : names)
        {
            const fs::path fcf = m_root / "sys/bus/fcoe/devices" / name;
            expected.push_back(Joined({host.deviceId, Name(fcf / "fabric_name"), Name(fcf / "switch_name"), "",
                                       ReadText(fcf / "mac"), Hex(fcf / "fc_map"), name, "Fabric", "1",
                                       ReadText(fcf / "priority"), ReadText(fcf / "vlan_id")}));
        }
    }
    EXPECT_EQ(Fabrics(*m_backend), expected);
}

TEST_P(SysfsCaptured, TargetsAreWhatTheFilesSay)
{
    const std::map<std::string, std::string> types{{"Online", "1"}, {"Blocked", "2"}, {"Not Present", "3"}};
    Texts expected;
    for (const HostFiles& host : m_hosts)
        for (const fs::path& target : TargetsOf(host))
        {
            const auto disks = DisksOf(target);
            const fs::path first = disks.empty() ? fs::path("/nonexistent") : *disks.begin() / "device";
            expected.push_back(Joined(
                {host.deviceId, Name(target / "node_name"), Name(target / "port_name"), "0",
                 ReadText(target / "scsi_target_id"), Hex(target / "port_id"), ReadText(first / "vendor"),
                 ReadText(first / "wwid"), Name(host.fc / "port_name"), ReadText(target / "roles"),
                 Name(host.fc / "fabric_name"), target.filename(), "0", types.at(ReadText(target / "port_state"))}));
        }
    EXPECT_EQ(Targets(*m_backend), expected);
}

TEST_P(SysfsCaptured, LunsAreWhatTheFilesSay)
{
    Texts expected;
    for (const HostFiles& host : m_hosts)
        for (const fs::path& target : TargetsOf(host))
            for (const fs::path& disk : DisksOf(target))
            {
                const std::string address = disk.filename();
                fs::path block;
                for (const auto& entry : fs::directory_iterator(m_root / "sys/class/block"))
                    if (fs::canonical(entry.path() / "device").filename() == address)
                        block = entry.path();
                const auto bytes = std::stoull(ReadText(block / "size")) * 512;
                const auto part = [&](const char* name) { return ReadText(disk / "device" / name); };
                expected.push_back(Joined({host.deviceId, address.substr(address.rfind(':') + 1), "0",
                                           ReadText(target / "scsi_target_id"), Hex(target / "port_id"),
                                           "/dev/" + block.filename().string(), std::to_string(bytes),
                                           ReadText(block / "queue/logical_block_size"), Name(target / "port_name"),
                                           part("wwid"), Name(host.fc / "port_name"), Name(host.fc / "fabric_name"),
                                           part("vendor") + ' ' + part("model") + ' ' + part("rev")}));
            }
    EXPECT_EQ(Luns(*m_backend), expected);
}

TEST_P(SysfsCaptured, VlansAreWhatTheFilesSay)
{
    Texts expected;
    for (const HostFiles& host : m_hosts)
    {
        if (host.npiv)
            continue;
        const bool tagged = host.deviceId.ends_with(".1002");
        const bool up = ReadText(host.controller.parent_path() / "operstate") == "up";
        const bool enabled = ReadText(host.controller / "enabled") == "1";
        expected.push_back(Joined({host.deviceId, host.deviceId, tagged ? "1002" : "0",
                                   !enabled ? "3"
                                   : up     ? "1"
                                            : "2",
                                   !enabled ? "Disabled"
                                   : up     ? "Up"
                                            : "Down",
                                   tagged ? "VLAN 1002" : host.deviceId}));
    }
    EXPECT_EQ(Vlans(*m_backend), expected);
}

TEST_P(SysfsCaptured, StatisticsAreWhatTheFilesSay)
{
    Texts expected;
    const auto add = [&](const std::string& deviceId, const std::string& name, unsigned long long value)
    {
        std::string words = name;
        std::replace(words.begin(), words.end(), '_', ' ');
        words[0] = static_cast<char>(std::toupper(words[0]));
        expected.push_back(Joined({deviceId, words, name, std::to_string(value)}));
    };
    for (const HostFiles& host : m_hosts)
    {
        if (host.npiv)
            continue;
        std::set<fs::path> counters(fs::directory_iterator(host.fc / "statistics"), fs::directory_iterator{});
        for (const fs::path& file : counters)
            if (const std::string text = ReadText(file); !text.empty() && text != "0xffffffffffffffff")
                add(host.deviceId, file.filename(), std::stoull(text, nullptr, 16));
        std::set<fs::path> errors(fs::directory_iterator(host.controller / "lesb"), fs::directory_iterator{});
        for (const fs::path& file : errors)
            add(host.deviceId, "lesb_" + file.filename().string(),
                ntohl(static_cast<std::uint32_t>(std::stoul(ReadText(file)))));
        add(host.deviceId, "npiv_vports_inuse", std::stoull(ReadText(host.fc / "npiv_vports_inuse")));
    }
    EXPECT_GT(expected.size(), 80u);
    EXPECT_EQ(Statistics(*m_backend), expected);
}

// What one HBA is asked for is its part of what all are asked for, in the same order.
TEST_P(SysfsCaptured, OneHbaIsItsPartOfAll)
{
    using Enumeration = Texts (*)(FcoeBackend&, const wchar_t*);
    for (const Enumeration enumerate : {&Hbas, &Ports, &Fabrics, &Targets, &Luns, &Vlans, &Statistics})
    {
        Texts parts;
        std::set<std::pair<int, std::string>> ids;
        for (const HostFiles& host : m_hosts)
            ids.emplace(host.index, host.deviceId);
        for (const auto& [index, id] : ids)
            for (const std::string& line : enumerate(*m_backend, Widen(id).c_str()))
            {
                EXPECT_TRUE(line.starts_with(id + '|')) << line;
                parts.push_back(line);
            }
        EXPECT_EQ(parts, enumerate(*m_backend, L""));
        EXPECT_EQ(enumerate(*m_backend, L"eth9"), Texts{});
    }
}

TEST_P(SysfsCaptured, StatusCountsTheHbas)
{
    const BackendStatus status = m_backend->Status();
    EXPECT_TRUE(status.ready);
    EXPECT_EQ(status.text, L"2 HBAs");
    EXPECT_EQ(status.source, m_root.wstring());
}

INSTANTIATE_TEST_SUITE_P(Trees, SysfsCaptured, testing::ValuesIn(TreeNames),
                         [](const auto& tree)
                         {
                             std::string name = tree.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

// The same, with the values written out: what a reader of the mapping expects to see.

TEST(SysfsPinned, AnNpivPortAndTwoFabrics)
{
    const auto backend = BackendOf("fabric-3-npiv");
    EXPECT_EQ(Hbas(*backend),
              (Texts{"eth0.1002|host0|fcoe v0.1 over eth0.1002|2000525400fc0001|1000525400fc0001|10300|0000:00:03.0|"
                     "1 Gbit|Online|virtual\\net\\eth0.1002\\ctlr_0\\host0|",
                     "eth1.1002|host1|fcoe v0.1 over eth1.1002|2000525400fc0002|1000525400fc0002|10300|0000:00:04.0|"
                     "10 Gbit|Online|virtual\\net\\eth1.1002\\ctlr_1\\host1|"}));
    EXPECT_EQ(Ports(*backend),
              (Texts{"eth0.1002|1000525400fc0001|2000525400fc0001|5|NPort (fabric via point-to-point)|10300|"
                     "fcoe v0.1 over eth0.1002|20000000fc00000a|10000000fc00000a",
                     "eth0.1002|2001525400fc0001|2101525400fc0001|2|NPIV VPORT|10301|"
                     "fcoe v0.1 over eth0.1002 : lab vport|20000000fc00000a|10000000fc00000a",
                     "eth1.1002|1000525400fc0002|2000525400fc0002|5|NPort (fabric via point-to-point)|10300|"
                     "fcoe v0.1 over eth1.1002|20000000fc00000b|10000000fc00000b"}));
    EXPECT_EQ(Fabrics(*backend),
              (Texts{"eth0.1002|10000000fc00000a|20000000fc0000aa||52:54:00:fc:01:11|efc00|fcf_0|Fabric|1|200|1002",
                     "eth0.1002|10000000fc00000a|20000000fc00000a||52:54:00:fc:01:01|efc00|fcf_1|Fabric|1|100|1002",
                     "eth1.1002|10000000fc00000b|20000000fc00000b||52:54:00:fc:01:02|efc01|fcf_2|Fabric|1|128|1002"}));
    EXPECT_EQ(Targets(*backend),
              (Texts{"eth0.1002|1000525400fc2000|2000525400fc2000|0|0|10200|LIO-ORG|"
                     "naa.6001405abd0000000000000000000000|2000525400fc0001|FCP Target, FCP Initiator|10000000fc00000a|"
                     "rport-0:0-1|0|1",
                     "eth0.1002|1000525400fc2000|2000525400fc2000|0|0|10200|LIO-ORG|"
                     "naa.6001405abd0000000000000000000000|2101525400fc0001|FCP Target, FCP Initiator|10000000fc00000a|"
                     "rport-2:0-1|0|1",
                     "eth1.1002|1000525400fc2001|2000525400fc2001|0|0|10200|LIO-ORG|"
                     "naa.6001405abd0000000000000000000000|2000525400fc0002|FCP Target, FCP Initiator|10000000fc00000b|"
                     "rport-1:0-1|0|1"}));
    const Texts luns = Luns(*backend);
    ASSERT_EQ(luns.size(), 8u);
    EXPECT_EQ(luns[0], "eth0.1002|0|0|0|10200|/dev/sda|67108864|512|2000525400fc2000|"
                       "naa.6001405abd0000000000000000000000|2000525400fc0001|10000000fc00000a|LIO-ORG FILEIO 4.0");
    EXPECT_EQ(luns[2], "eth0.1002|2|0|0|10200|/dev/sdc|1073741824|4096|2000525400fc2000|"
                       "naa.6001405abd2000000000000000000000|2000525400fc0001|10000000fc00000a|LIO-ORG FILEIO 4.0");
    EXPECT_EQ(luns[4], "eth0.1002|1|0|0|10200|/dev/sdh|134217728|512|2000525400fc2000|"
                       "naa.6001405abd1000000000000000000000|2101525400fc0001|10000000fc00000a|LIO-ORG FILEIO 4.0");
    EXPECT_EQ(Vlans(*backend),
              (Texts{"eth0.1002|eth0.1002|1002|1|Up|VLAN 1002", "eth1.1002|eth1.1002|1002|1|Up|VLAN 1002"}));
    const Texts statistics = Statistics(*backend, L"eth0.1002");
    for (const char* line :
         {"eth0.1002|Tx frames|tx_frames|135", "eth0.1002|Fcp input requests|fcp_input_requests|103",
          "eth0.1002|Lesb link fail|lesb_link_fail|0", "eth0.1002|Npiv vports inuse|npiv_vports_inuse|1"})
        EXPECT_EQ(std::count(statistics.begin(), statistics.end(), line), 1) << line;
    for (const char* name : {"lip_count", "nos_count", "dumped_frames", "reset_statistics"})
        for (const std::string& line : statistics)
            EXPECT_EQ(line.find(name), std::string::npos) << "not counted, so not told: " << line;
}

TEST(SysfsPinned, BeforeTheFirstLogin)
{
    const auto backend = BackendOf("fabric-0-created");
    EXPECT_EQ(Ports(*backend, L"eth0.1002"),
              (Texts{"eth0.1002|1000525400fc0001|2000525400fc0001|5|NPort (fabric via point-to-point)|ffffffff|"
                     "fcoe v0.1 over eth0.1002||"}));
    EXPECT_EQ(Fabrics(*backend), Texts{});
    EXPECT_EQ(Targets(*backend), Texts{});
    EXPECT_EQ(Luns(*backend), Texts{});
    EXPECT_EQ(Vlans(*backend, L"eth0.1002"), (Texts{"eth0.1002|eth0.1002|1002|3|Disabled|VLAN 1002"}));
}

TEST(SysfsPinned, AForwarderThatIsSilent)
{
    const auto backend = BackendOf("fabric-7-fcf-lost");
    const Texts hbas = Hbas(*backend);
    ASSERT_EQ(hbas.size(), 2u);
    EXPECT_NE(hbas[0].find("|0|0000:00:03.0|1 Gbit|Offline|"), std::string::npos) << hbas[0];
    EXPECT_NE(hbas[1].find("|Online|"), std::string::npos) << hbas[1];
    const Texts ports = Ports(*backend, L"eth0.1002");
    ASSERT_EQ(ports.size(), 1u);
    EXPECT_TRUE(ports[0].ends_with("||")) << "logged in to no fabric: " << ports[0];
    EXPECT_EQ(Fabrics(*backend, L"eth0.1002").size(), 2u) << "a lost forwarder stays for its dev_loss_tmo";
    const Texts targets = Targets(*backend, L"eth0.1002");
    ASSERT_EQ(targets.size(), 1u);
    EXPECT_TRUE(targets[0].ends_with("|2")) << "blocked: " << targets[0];
    EXPECT_EQ(Luns(*backend, L"eth0.1002").size(), 3u) << "disks stay while their port is blocked";
    EXPECT_EQ(Vlans(*backend, L"eth0.1002"), (Texts{"eth0.1002|eth0.1002|1002|1|Up|VLAN 1002"}));
}

TEST(SysfsPinned, CablesOutAndTargetsGivenUp)
{
    const auto backend = BackendOf("fabric-9-linkdown-devloss");
    EXPECT_EQ(Targets(*backend),
              (Texts{"eth0.1002|ffffffffffffffff|2000525400fc2000|0|0|ffffffff|||2000525400fc0001|unknown||"
                     "rport-0:0-1|0|3",
                     "eth1.1002|ffffffffffffffff|2000525400fc2001|0|0|ffffffff|||2000525400fc0002|unknown||"
                     "rport-1:0-1|0|3"}));
    EXPECT_EQ(Luns(*backend), Texts{});
    EXPECT_EQ(Vlans(*backend),
              (Texts{"eth0.1002|eth0.1002|1002|2|Down|VLAN 1002", "eth1.1002|eth1.1002|1002|2|Down|VLAN 1002"}));
    const Texts statistics = Statistics(*backend, L"eth0.1002");
    for (const char* line : {"eth0.1002|Lesb link fail|lesb_link_fail|1", "eth0.1002|Lesb vlink fail|lesb_vlink_fail|2",
                             "eth0.1002|Lesb miss fka|lesb_miss_fka|3"})
        EXPECT_EQ(std::count(statistics.begin(), statistics.end(), line), 1) << line;
}

TEST(SysfsPinned, TwoPortsWithoutASwitch)
{
    const auto backend = BackendOf("vn2vn-2-io");
    EXPECT_EQ(Hbas(*backend),
              (Texts{"veth1|host0|fcoe v0.1 over veth1|2000525400fc1001|1000525400fc1001|1001||10 Gbit|Online|"
                     "virtual\\net\\veth1\\ctlr_0\\host0|",
                     "veth0|host1|fcoe v0.1 over veth0|2000525400fc1000|1000525400fc1000|1000||10 Gbit|Online|"
                     "virtual\\net\\veth0\\ctlr_1\\host1|"}))
        << "in the order of the interfaces' indexes";
    EXPECT_EQ(Fabrics(*backend), Texts{});
    EXPECT_EQ(Vlans(*backend), (Texts{"veth1|veth1|0|1|Up|veth1", "veth0|veth0|0|1|Up|veth0"}));
    EXPECT_EQ(Targets(*backend, L"veth1"), Texts{}) << "its peer is an initiator";
    EXPECT_EQ(Luns(*backend, L"veth0").size(), 3u);
}

TEST(SysfsPinned, AnAdapterThatTellsItsModel)
{
    const auto backend = BackendOf("hbainfo-3-npiv");
    const Texts hbas = Hbas(*backend);
    ASSERT_EQ(hbas.size(), 2u);
    EXPECT_TRUE(hbas[0].ends_with("|EN-10G2P")) << hbas[0];
    EXPECT_TRUE(hbas[1].ends_with("host1|")) << hbas[1];
    EXPECT_EQ(Targets(*backend).size(), 3u) << "name and management servers are no targets";
}

} // namespace
} // namespace orl
