// The kernel's settings of an FCoE adapter: what their attributes read, what reaches them, and what is told when they
// refuse.

#include "agentlibs/corelink/CoreAgent.h"
#include "agentlibs/fcoelink/sysfs/SysfsErrors.h"
#include "tests/agentlibs/SettingTests.h"
#include "tests/agentlibs/sysfs/TestTree.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace orl
{
namespace
{

using testing::ElementsAre;

const std::string Interface = std::string(Net) + "eth0/";
const std::string Controller = Interface + "ctlr_0/";
const std::string Fc = Controller + "host0/fc_host/host0/";

class SysfsSettings : public test::SettingFixture
{
protected:
    SysfsSettings()
    {
        AddHba(m_tree, "eth0", 0);
        AddHba(m_tree, "eth1", 1);
        m_tree.File(Controller + "fip_vlan_responder", "0\n");
        m_tree.File(Fc + "dev_loss_tmo", "60\n");
        m_tree.File(Interface + "mtu", "2500\n");
        m_tree.File(Interface + "tx_queue_len", "1000\n");
    }

    TestTree m_tree;
    CoreAgent m_agent{MakeSysfsSettings({L"sysfs", {}, m_tree.Root().wstring()})};
};

// Every file of the tree and its bytes.
std::map<std::string, std::string> FilesOf(const TestTree& tree)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(tree.Root()))
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(tree.Root()).string()] = test::BytesOfFile(entry.path());
    return files;
}

} // namespace

TEST_F(SysfsSettings, AreThoseOfTheKernelWithLimitsDefaultsAndHelp)
{
    const std::vector<std::string> lines = Lines(m_agent, L"eth0");
    EXPECT_THAT(
        lines,
        ElementsAre(
            "int FcfDevLossTimeout|FcfDevLossTimeout|Seconds after which a Fibre Channel forwarder that no longer "
            "advertises itself is removed. The value is passed on to the forwarders that are known.|-|0|How long a "
            "forwarder that has gone silent is remembered.|FCF device loss timeout "
            "(seconds)|fcf_dev_loss_tmo|writable|0|"
            "1800|1800|1800|0|2147483647|1|10|1",
            "int DevLossTimeout|DevLossTimeout|Seconds for which the I/O of a remote port that has gone is held back. "
            "After that it fails, and the port's SCSI devices are removed. Remote ports of this adapter start with "
            "this "
            "value.|-|0|How long a remote port may be away before its devices are removed.|Device loss timeout "
            "(seconds)|dev_loss_tmo|writable|0|60|60|60|1|600|1|10|1",
            "enum ControllerMode|ControllerMode|Fabric: the port logs in through a Fibre Channel forwarder. VN2VN: "
            "ports "
            "of one Ethernet network log in to each other. The mode can be changed while the controller is "
            "disabled.|-|0|"
            "Whether ports log in to a fabric or to each other.|Controller mode|mode|writable|0|1|Fabric|1|1=Fabric, "
            "2=VN2VN",
            "enum ControllerEnabled|ControllerEnabled|Disabling the controller logs its ports out; their devices are "
            "lost after the device loss timeout.|-|0|Whether the controller logs in and carries I/O.|Controller "
            "enabled|enabled|writable|0|1|Enabled|0|0=Disabled, 1=Enabled",
            "int Mtu|Mtu|A full FCoE frame needs 2158 bytes; with less the ports agree on smaller Fibre Channel "
            "frames. "
            "The interface below and the switch must carry such frames too.|-|0|The largest payload of an Ethernet "
            "frame.|Maximum transmission unit (bytes)|mtu|writable|0|2500|2500|2158|68|65535|1|10|1",
            "int TxQueueLength|TxQueueLength|Length of the interface's transmit queue in packets.|-|0|How many packets "
            "may wait to be sent.|Transmit queue length "
            "(packets)|tx_queue_len|writable|0|1000|1000|1000|0|1000000|1|10|1",
            "enum FipVlanResponder|FipVlanResponder|On: the controller answers FIP VLAN discovery requests with the "
            "VLAN "
            "that it is on. It takes effect in the mode VN2VN.|-|0|Whether FIP VLAN requests of other ports are "
            "answered.|FIP VLAN responder|fip_vlan_responder|writable|0|0|Off|0|0=Off, 1=On"));
}

TEST_F(SysfsSettings, OfAnAttributeThatIsMissingOrMakesNoSenseAreLeftOut)
{
    const struct
    {
        const wchar_t* setting;
        std::string file;
        std::vector<std::string> contents;
    } cases[] = {
        {L"FcfDevLossTimeout", Controller + "fcf_dev_loss_tmo", {"", "\n", "off\n", "-1\n", "2147483648\n"}},
        {L"DevLossTimeout", Fc + "dev_loss_tmo", {"", "x\n"}},
        {L"ControllerMode", Controller + "mode", {"", "\n", "Unknown\n"}},
        {L"ControllerEnabled", Controller + "enabled", {"", "Unused\n", "2\n"}},
        {L"Mtu", Interface + "mtu", {"", "9 9\n"}},
        {L"TxQueueLength", Interface + "tx_queue_len", {"", "1e3\n"}},
        {L"FipVlanResponder", Controller + "fip_vlan_responder", {"", "01\n"}},
    };
    for (const auto& odd : cases)
    {
        const std::string good = m_tree.Read(odd.file);
        const auto isLeftOut = [&](const std::string& what)
        {
            EXPECT_EQ(Lines(m_agent, L"eth0").size(), 6u) << odd.file << what;
            EXPECT_EQ(Get(m_agent, L"eth0", odd.setting), nullptr) << odd.file << what;
            EXPECT_EQ(m_code, 1168u);
            EXPECT_EQ(Set(m_agent, L"eth0", odd.setting, 1), 1168u);
        };
        for (const std::string& bytes : odd.contents)
        {
            m_tree.File(odd.file, bytes);
            isLeftOut(": " + bytes);
        }
        m_tree.Remove(odd.file);
        isLeftOut(" removed");
        EXPECT_FALSE(fs::exists(m_tree.At(odd.file))) << "nothing makes it";
        m_tree.Folder(odd.file);
        isLeftOut(" a folder");
        m_tree.Fifo(odd.file);
        isLeftOut(" a fifo");
        m_tree.Remove(odd.file);
        m_tree.File(odd.file, good);
    }
    EXPECT_EQ(Lines(m_agent, L"eth0").size(), 7u);
    EXPECT_EQ(Lines(m_agent, L"eth1").size(), 3u);
}

TEST_F(SysfsSettings, AreWrittenToTheirAttributeAlone)
{
    const struct
    {
        const wchar_t* setting;
        std::string file;
        LONG number;
        const wchar_t* text;
        const char* written;
        const char* read;
    } cases[] = {
        {L"FcfDevLossTimeout", Controller + "fcf_dev_loss_tmo", 30, L"", "30", "30"},
        {L"FcfDevLossTimeout", Controller + "fcf_dev_loss_tmo", 0, L"", "0", "0"},
        {L"FcfDevLossTimeout", Controller + "fcf_dev_loss_tmo", 2147483647, L"", "2147483647", "2147483647"},
        {L"DevLossTimeout", Fc + "dev_loss_tmo", 0, L"0x14", "20", "20"},
        {L"DevLossTimeout", Fc + "dev_loss_tmo", 600, L"", "600", "600"},
        {L"ControllerEnabled", Controller + "enabled", 0, L"", "0", "Disabled"},
        {L"ControllerMode", Controller + "mode", 0, L"vn2VN", "vn2vn", "VN2VN"},
        {L"ControllerMode", Controller + "mode", 1, L"", "fabric", "Fabric"},
        {L"ControllerEnabled", Controller + "enabled", 0, L"enabled", "1", "Enabled"},
        {L"Mtu", Interface + "mtu", 65535, L"", "65535", "65535"},
        {L"TxQueueLength", Interface + "tx_queue_len", 1000000, L"", "1000000", "1000000"},
        {L"FipVlanResponder", Controller + "fip_vlan_responder", 1, L"", "1", "On"},
    };
    for (const auto& change : cases)
    {
        std::map<std::string, std::string> expected = FilesOf(m_tree);
        expected[change.file] = change.written;
        EXPECT_EQ(Set(m_agent, L"eth0", change.setting, change.number, change.text), 0u) << change.file;
        EXPECT_EQ(FilesOf(m_tree), expected) << change.file;
        EXPECT_EQ(Current(m_agent, L"ETH0", change.setting), change.read);
    }
}

TEST_F(SysfsSettings, AreWrittenOnlyWhenTheValueIsAnotherOne)
{
    const auto before = FilesOf(m_tree);
    EXPECT_EQ(Set(m_agent, L"eth0", L"ControllerMode", 1), 0u) << "it has it already, enabled or not";
    EXPECT_EQ(Set(m_agent, L"eth0", L"Mtu", 2500), 0u);
    EXPECT_EQ(Ask(m_agent, L"eth0", L"ControllerEnabled", 1, L"", true), "0");
    EXPECT_EQ(FilesOf(m_tree), before);
}

TEST_F(SysfsSettings, GoToTheirDefault)
{
    EXPECT_EQ(Set(m_agent, L"eth0", L"DevLossTimeout", 5), 0u);
    EXPECT_EQ(Reset(m_agent, L"eth0", L"DevLossTimeout"), 0u);
    EXPECT_EQ(m_tree.Read(Fc + "dev_loss_tmo"), "60");
    EXPECT_EQ(Reset(m_agent, L"eth0", L"ControllerEnabled"), 0u);
    EXPECT_EQ(m_tree.Read(Controller + "enabled"), "0");
    EXPECT_EQ(Reset(m_agent, L"eth0", L"Mtu"), 0u);
    EXPECT_EQ(m_tree.Read(Interface + "mtu"), "2158");
}

TEST_F(SysfsSettings, RefuseWhatLiesOutsideTheirLimitsBeforeTheKernelIsAsked)
{
    const struct
    {
        const wchar_t* setting;
        LONG number;
        const wchar_t* text;
        const char* answer;
    } cases[] = {
        {L"FcfDevLossTimeout", -1, L"",
         "0; error 3002: FcfDevLossTimeout cannot be set to -1: the value must lie between 0 and 2147483647."},
        {L"DevLossTimeout", 0, L"",
         "0; error 3002: DevLossTimeout cannot be set to 0: the value must lie between 1 and 600."},
        {L"DevLossTimeout", 601, L"",
         "0; error 3002: DevLossTimeout cannot be set to 601: the value must lie between 1 and 600."},
        {L"DevLossTimeout", 20, L"20 s",
         "0; error 3010: DevLossTimeout cannot be set to \"20 s\": expected a whole number, in decimal or behind 0x."},
        {L"ControllerMode", 3, L"",
         "0; error 3004: ControllerMode cannot be set to \"3\": its values are Fabric (1), VN2VN (2)."},
        {L"ControllerEnabled", 0, L"on",
         "0; error 3004: ControllerEnabled cannot be set to \"on\": its values are Disabled (0), Enabled (1)."},
        {L"Mtu", 67, L"", "0; error 3002: Mtu cannot be set to 67: the value must lie between 68 and 65535."},
        {L"TxQueueLength", 1000001, L"",
         "0; error 3002: TxQueueLength cannot be set to 1000001: the value must lie between 0 and 1000000."},
        {L"FipVlanResponder", 2, L"",
         "0; error 3004: FipVlanResponder cannot be set to \"2\": its values are Off (0), On (1)."},
    };
    const auto before = FilesOf(m_tree);
    for (const auto& wrong : cases)
    {
        EXPECT_EQ(Ask(m_agent, L"eth0", wrong.setting, wrong.number, wrong.text, true), wrong.answer);
        EXPECT_EQ(Set(m_agent, L"eth0", wrong.setting, wrong.number, wrong.text), 87u) << wrong.answer;
    }
    EXPECT_EQ(FilesOf(m_tree), before);
}

TEST_F(SysfsSettings, KeepTheModeOfAnEnabledController)
{
    const auto before = FilesOf(m_tree);
    const std::string reason =
        "0; error 3006: ControllerMode of eth0 cannot be changed while its controller is enabled.";
    EXPECT_EQ(Ask(m_agent, L"eth0", L"ControllerMode", 2), reason) << "also to who only asks";
    EXPECT_EQ(Ask(m_agent, L"eth0", L"ControllerMode", 2, L"", true), reason);
    EXPECT_EQ(Set(m_agent, L"eth0", L"ControllerMode", 2), 170u);
    EXPECT_EQ(FilesOf(m_tree), before);
    EXPECT_EQ(Set(m_agent, L"eth0", L"ControllerEnabled", 0), 0u);
    EXPECT_EQ(Ask(m_agent, L"eth0", L"ControllerMode", 2, L"", true),
              "0; advice 3008: ControllerMode of eth0 takes effect when its controller is enabled again.");
    EXPECT_EQ(m_tree.Read(Controller + "mode"), "vn2vn");
}

TEST_F(SysfsSettings, AdviseAgainstAnMtuThatAFullFrameDoesNotFit)
{
    EXPECT_EQ(Ask(m_agent, L"eth0", L"Mtu", 2158), "0");
    EXPECT_EQ(Ask(m_agent, L"eth0", L"Mtu", 2157),
              "0; advice 3001: The MTU of eth0 is set to 2157 bytes; a full FCoE frame needs 2158.");
    EXPECT_EQ(m_tree.Read(Interface + "mtu"), "2500\n");
    EXPECT_EQ(Ask(m_agent, L"eth0", L"Mtu", 1500, L"", true),
              "0; advice 3001: The MTU of eth0 is set to 1500 bytes; a full FCoE frame needs 2158.");
    EXPECT_EQ(m_tree.Read(Interface + "mtu"), "1500");
}

TEST_F(SysfsSettings, TellTheKernelsRefusalInItsWords)
{
    // A process that may write no byte stands for a kernel that refuses the write.
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit none = {0, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
    const std::string asked = Ask(m_agent, L"eth0", L"DevLossTimeout", 20, L"", true);
    setrlimit(RLIMIT_FSIZE, &before);
    m_tree.File(Fc + "dev_loss_tmo", "60\n");
    setrlimit(RLIMIT_FSIZE, &none);
    const ULONG set = Set(m_agent, L"eth0", L"DevLossTimeout", 20);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(asked, "0; error 3007: The kernel refused to set DevLossTimeout of eth0: File too large.");
    EXPECT_EQ(set, 31u);
}

TEST_F(SysfsSettings, TellThatTheUserMayNotChangeThem)
{
    // Root may write to anything, so it becomes somebody else for the moment; so may the test's folder be whose it
    // likes.
    const bool isRoot = geteuid() == 0;
    constexpr uid_t nobody = 65534;
    chmod(m_tree.At(Fc + "dev_loss_tmo").c_str(), 0444);
    ASSERT_TRUE(!isRoot || seteuid(nobody) == 0);
    const std::string asked = Ask(m_agent, L"eth0", L"DevLossTimeout", 20, L"", true);
    const ULONG set = Set(m_agent, L"eth0", L"DevLossTimeout", 20);
    ASSERT_TRUE(!isRoot || seteuid(0) == 0);
    EXPECT_EQ(asked, "0; error 3007: The kernel refused to set DevLossTimeout of eth0: Permission denied.");
    EXPECT_EQ(set, 5u);
    EXPECT_EQ(m_tree.Read(Fc + "dev_loss_tmo"), "60\n");
}

TEST(SysfsErrors, HaveTheCodesAndTextsOfTheirErrnos)
{
    const struct
    {
        int error;
        ULONG code;
        const wchar_t* text;
    } cases[] = {
        {EBUSY, 170, L"Device or resource busy"},       {EACCES, 5, L"Permission denied"},
        {EPERM, 5, L"Operation not permitted"},         {EINVAL, 87, L"Invalid argument"},
        {ERANGE, 87, L"Numerical result out of range"}, {ENODEV, 55, L"No such device"},
        {ENOENT, 55, L"No such file or directory"},     {ENXIO, 55, L"No such device or address"},
        {EROFS, 19, L"Read-only file system"},          {EIO, 31, L"Input/output error"},
    };
    for (const auto& known : cases)
    {
        EXPECT_EQ(sysfs::ErrorCode(known.error), known.code) << known.error;
        EXPECT_EQ(sysfs::ErrorText(known.error), known.text) << known.error;
    }
}

TEST_F(SysfsSettings, BelongToAnAdapterThatIsThere)
{
    for (const wchar_t* unknown : {L"eth7", L"", L"lo"})
    {
        EXPECT_TRUE(Lines(m_agent, unknown).empty());
        EXPECT_EQ(m_code, 55u);
    }
    EXPECT_EQ(Ask(m_agent, L"eth7", L"Mtu", 1500), "55; error 0: there is no HBA \"eth7\"");
    ORL_ADAPTER adapter;
    EXPECT_EQ(m_agent.GetAdapter(L"eth0", adapter, m_status, false).ulErrCode, 0u);
    EXPECT_EQ(adapter.Name, L"fcoe v0.1 over host0");
    EXPECT_EQ(m_agent.Status().text, L"10 settings of 2 HBAs");
    EXPECT_EQ(m_agent.Status().source, m_tree.Root().wstring());

    CoreAgent nowhere(MakeSysfsSettings({L"sysfs", {}, L"/no/such/folder"}));
    EXPECT_FALSE(nowhere.Status().ready);
    EXPECT_TRUE(Lines(nowhere, L"eth0").empty());
    EXPECT_NE(m_code, 0u);
    m_tree.Remove("sys/bus/fcoe");
    EXPECT_EQ(m_agent.Status().text,
              L"there is no sys/bus/fcoe: the kernel's FCoE stack is not loaded (modprobe fcoe)");
}

TEST_F(SysfsSettings, OfEveryCapturedTreeReadAsTheirFilesSay)
{
    std::size_t adapters = 0;
    for (const auto& folder : fs::directory_iterator(ORL_SYSFS_TREES))
    {
        const fs::path root = folder.path() / "root";
        if (!fs::exists(root))
            continue;
        CoreAgent agent(MakeSysfsSettings({L"sysfs", {}, root.wstring()}));
        for (const auto& link : fs::directory_iterator(root / "sys/class/fc_host"))
        {
            // Through the links of /sys/class, which the back end does not use.
            const fs::path fc = fs::canonical(link.path());
            const fs::path controller = fc.parent_path().parent_path().parent_path();
            if (!controller.filename().string().starts_with("ctlr_"))
                continue; // a virtual port's
            const fs::path interface = controller.parent_path();
            const std::wstring id = interface.filename().wstring();
            const auto isOn = [](const std::string& text, const char* off, const char* on)
            { return text == "1" ? on : off; };
            const std::map<std::string, std::string> expected = {
                {"FcfDevLossTimeout", ReadText(controller / "fcf_dev_loss_tmo")},
                {"DevLossTimeout", ReadText(fc / "dev_loss_tmo")},
                {"ControllerMode", ReadText(controller / "mode")},
                {"ControllerEnabled", isOn(ReadText(controller / "enabled"), "Disabled", "Enabled")},
                {"Mtu", ReadText(interface / "mtu")},
                {"TxQueueLength", ReadText(interface / "tx_queue_len")},
                {"FipVlanResponder", isOn(ReadText(controller / "fip_vlan_responder"), "Off", "On")}};
            EXPECT_EQ(Lines(agent, id.c_str()).size(), expected.size()) << root;
            for (const auto& [name, text] : expected)
            {
                EXPECT_NE(text, "") << root << name;
                EXPECT_EQ(Current(agent, id.c_str(), FromUtf8(name).c_str()), text) << root << name;
            }
            ++adapters;
        }
    }
    EXPECT_EQ(adapters, 18u) << "two of each tree";
}

} // namespace orl
