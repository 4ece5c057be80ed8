// What the agent asks of the kernel: the text that reaches the attribute, and what is told about a refusal.

#include "agentlibs/Text.h"
#include "tests/agentlibs/sysfs/TestTree.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace orl
{
namespace
{

const std::string Host = std::string(Net) + "eth0/ctlr_0/host0/";
const std::string Fc = Host + "fc_host/host0/";

class SysfsActions : public testing::Test
{
protected:
    SysfsActions()
    {
        AddHba(m_tree, "eth0", 0);
        AddHba(m_tree, "eth1", 1);
        m_backend = m_tree.Backend();
    }

    // Empty when the action succeeds, else "CODE: TEXT" of its error.
    template <class Action>
    std::string ErrorOf(Action action)
    {
        try
        {
            EXPECT_TRUE(action());
        }
        catch (const BackendError& error)
        {
            return std::to_string(error.Code()) + ": " + Narrow(error.Text());
        }
        return {};
    }
    std::string Create(const wchar_t* deviceId, COrlString& name)
    {
        return ErrorOf([&] { return m_backend->CreateVirtualPort(deviceId, name, m_warnings, m_status); });
    }
    std::string Create(const wchar_t* deviceId, const wchar_t* name)
    {
        COrlString text = name;
        return Create(deviceId, text);
    }
    std::string Delete(const wchar_t* deviceId, const wchar_t* name)
    {
        return ErrorOf([&] { return m_backend->DeleteVirtualPort(deviceId, name, m_warnings, m_status); });
    }
    std::string Generate(const wchar_t* deviceId, COrlString& name)
    {
        return ErrorOf([&] { return m_backend->GenerateVirtualPortWWPN(deviceId, name, m_warnings, m_status); });
    }
    std::string Refresh(const wchar_t* deviceId)
    {
        return ErrorOf([&] { return m_backend->RefreshTargets(deviceId, m_status); });
    }

    TestTree m_tree;
    std::unique_ptr<FcoeBackend> m_backend;
    std::vector<WarningMessageObj> m_warnings;
    CResult m_status;
};

TEST_F(SysfsActions, CreateGivesTheKernelThePortAndTheAdaptersNode)
{
    COrlString name = L"21:01:52:54:00:FC:00:00";
    EXPECT_EQ(Create(L"eth0", name), "");
    EXPECT_EQ(m_tree.Read(Fc + "vport_create"), "2101525400fc0000:1000525400fc00aa");
    EXPECT_EQ(name, L"2101525400fc0000") << "the name comes back as ports are listed";
    EXPECT_EQ(m_tree.Read(std::string(Net) + "eth1/ctlr_1/host1/fc_host/host1/vport_create"), "");
    EXPECT_EQ(m_status.ulErrCode, 0u);
}

TEST_F(SysfsActions, CreateTellsWhenNoPortShowsUp)
{
    EXPECT_EQ(Create(L"eth0", L"2101525400fc0000"), "");
    ASSERT_EQ(m_warnings.size(), 1u);
    EXPECT_NE(m_warnings[0].ulKind, WarningMessageObj::KindError);
    EXPECT_EQ(m_warnings[0].strMessage,
              L"CreateVirtualPort on eth0: the kernel took 2101525400fc0000, but shows no such port");
}

TEST_F(SysfsActions, CreateRefusesWhatIsNoName)
{
    COrlString name = L"fc0000";
    EXPECT_EQ(Create(L"eth0", name), "87: CreateVirtualPort: \"fc0000\" is no world wide port name, which is 16 "
                                     "hexadecimal digits, not all of them 0");
    EXPECT_EQ(name, L"fc0000");
    EXPECT_NE(Create(L"eth0", L""), "");
    EXPECT_NE(Create(L"eth0", L"0000000000000000"), "");
    EXPECT_EQ(m_tree.Read(Fc + "vport_create"), "");
}

TEST_F(SysfsActions, TheKernelsRefusalOfANameThatIsTakenIsExplained)
{
    AddVirtualPort(m_tree, "eth0", 0, 1, 7);
    // What is no regular file answers as the kernel does: invalid argument. A FIFO opens once it has a reader.
    m_tree.Remove(Fc + "vport_create");
    m_tree.Fifo(Fc + "vport_create");
    const int reader = open(m_tree.At(Fc + "vport_create").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    const std::string where = "CreateVirtualPort on eth0: the kernel refused ";
    EXPECT_EQ(Create(L"eth0", L"2000525400fc0000"),
              "183: " + where + "2000525400fc0000: Invalid argument: it is the name of the adapter's own port");
    EXPECT_EQ(Create(L"eth0", L"0x2101525400FC0000"),
              "183: " + where +
                  "2101525400fc0000: Invalid argument: it is the name of a virtual port that is there already");
    EXPECT_EQ(Create(L"eth0", L"2102525400fc0000"), "87: " + where + "2102525400fc0000: Invalid argument")
        << "a name that is free is refused for another reason";
    close(reader);
    EXPECT_TRUE(m_warnings.empty());
}

TEST_F(SysfsActions, ANameThatIsTakenIsLeftToTheKernel)
{
    AddVirtualPort(m_tree, "eth0", 0, 1, 7);
    EXPECT_EQ(Create(L"eth0", L"2101525400fc0000"), "");
    EXPECT_EQ(m_tree.Read(Fc + "vport_create"), "2101525400fc0000:1000525400fc00aa");
    ASSERT_EQ(m_warnings.size(), 1u);
    EXPECT_NE(m_warnings[0].ulKind, WarningMessageObj::KindError);
    EXPECT_EQ(m_warnings[0].strMessage, L"CreateVirtualPort on eth0: the kernel took 2101525400fc0000, which is the "
                                        L"name of a virtual port that is there already");
}

TEST_F(SysfsActions, AnActionNeedsAnHbaThatIsThere)
{
    EXPECT_EQ(Create(L"eth7", L"2101525400fc0000"), "55: CreateVirtualPort: there is no HBA \"eth7\"");
    EXPECT_EQ(Create(L"", L"2101525400fc0000"), "87: CreateVirtualPort: the DeviceID is empty and names no HBA");
    EXPECT_EQ(Delete(L"eth7", L"2101525400fc0000"), "55: DeleteVirtualPort: there is no HBA \"eth7\"");
    COrlString name;
    EXPECT_EQ(Generate(L"eth7", name), "55: GenerateVirtualPortWWPN: there is no HBA \"eth7\"");
    EXPECT_EQ(Refresh(L"eth7"), "55: RefreshTargets: there is no HBA \"eth7\"");
    EXPECT_EQ(name, L"");
}

TEST_F(SysfsActions, TheKernelsRefusalIsToldInItsWords)
{
    m_tree.Remove(Fc + "vport_create");
    EXPECT_EQ(Create(L"eth0", L"2101525400fc0000"),
              "55: CreateVirtualPort on eth0: the kernel refused 2101525400fc0000: No such file or directory");
    m_tree.Folder(Fc + "vport_create");
    EXPECT_EQ(Create(L"eth0", L"2101525400fc0000"),
              "31: CreateVirtualPort on eth0: the kernel refused 2101525400fc0000: Is a directory");
    m_tree.Remove(Fc + "node_name");
    EXPECT_EQ(Create(L"eth0", L"2101525400fc0000"),
              "13: CreateVirtualPort on eth0: the adapter tells no node name for the port");
    EXPECT_TRUE(m_warnings.empty());
}

TEST_F(SysfsActions, DeleteGivesTheKernelThePortAndItsOwnNode)
{
    AddVirtualPort(m_tree, "eth0", 0, 1, 7);
    m_tree.File(Host + "vport-0:0-1/fc_vports/vport-0:0-1/node_name", "0x2001525400fc0000\n");
    EXPECT_EQ(Delete(L"eth0", L"21:01:52:54:00:fc:00:00"), "");
    EXPECT_EQ(m_tree.Read(Fc + "vport_delete"), "2101525400fc0000:2001525400fc0000");
    ASSERT_EQ(m_warnings.size(), 1u) << "nobody took the port out of the tree";
    EXPECT_EQ(m_warnings[0].strMessage, L"DeleteVirtualPort on eth0: the kernel took the deletion of 2101525400fc0000, "
                                        L"but still shows the port");
}

TEST_F(SysfsActions, DeleteWorksOnAPortThatHasNoHost)
{
    AddVirtualPort(m_tree, "eth0", 0, 1, 7);
    m_tree.Remove(Host + "vport-0:0-1/host7");
    EXPECT_EQ(Delete(L"eth0", L"2101525400fc0000"), "");
    EXPECT_EQ(m_tree.Read(Fc + "vport_delete"), "2101525400fc0000:1000525400fc00aa");
}

TEST_F(SysfsActions, DeleteRefusesWhatIsNoVirtualPortOfTheHba)
{
    AddVirtualPort(m_tree, "eth0", 0, 1, 7);
    EXPECT_EQ(Delete(L"eth0", L"2000525400fc0000"),
              "5: DeleteVirtualPort on eth0: 2000525400fc0000 is the adapter's own port, which cannot be deleted");
    EXPECT_EQ(Delete(L"eth0", L"2102525400fc0000"),
              "55: DeleteVirtualPort on eth0: there is no virtual port 2102525400fc0000");
    EXPECT_EQ(Delete(L"eth1", L"2101525400fc0000"),
              "55: DeleteVirtualPort on eth1: there is no virtual port 2101525400fc0000");
    EXPECT_EQ(Delete(L"eth0", L"x"), "87: DeleteVirtualPort: \"x\" is no world wide port name, which is 16 hexadecimal "
                                     "digits, not all of them 0");
    EXPECT_EQ(m_tree.Read(Fc + "vport_delete"), "");
}

TEST_F(SysfsActions, AGeneratedNameIsMadeOfTheMacAddressAndFree)
{
    COrlString name;
    EXPECT_EQ(Generate(L"eth0", name), "");
    EXPECT_EQ(name, L"2101525400fc0000");
    AddVirtualPort(m_tree, "eth0", 0, 1, 7);
    EXPECT_EQ(Generate(L"eth0", name), "");
    EXPECT_EQ(name, L"2102525400fc0000");
    EXPECT_EQ(Generate(L"eth1", name), "");
    EXPECT_EQ(name, L"2101525400fc0001");
    EXPECT_EQ(m_tree.Read(Fc + "vport_create"), "") << "a name is no port yet";
}

TEST_F(SysfsActions, AGeneratedNameIsFreeOnEveryInterfaceOfTheMacAddress)
{
    m_tree.File(std::string(Net) + "eth1/address", "52:54:00:fc:00:00\n");
    AddVirtualPort(m_tree, "eth0", 0, 1, 7);
    COrlString name;
    EXPECT_EQ(Generate(L"eth1", name), "");
    EXPECT_EQ(name, L"2102525400fc0000");
}

TEST_F(SysfsActions, GeneratingEndsWithTheNames)
{
    for (int index = 1; index <= 0xFF; ++index)
    {
        const std::string port = Host + "vport-0:0-" + std::to_string(index);
        char name[32];
        std::snprintf(name, sizeof name, "0x21%02x525400fc0000\n", static_cast<unsigned>(index));
        m_tree.File(port + "/fc_vports/vport-0:0-" + std::to_string(index) + "/port_name", name);
    }
    COrlString name;
    EXPECT_EQ(Generate(L"eth0", name),
              "259: GenerateVirtualPortWWPN on eth0: every name that can be made from the MAC address is taken");
    m_tree.Remove(Host + "vport-0:0-254");
    EXPECT_EQ(Generate(L"eth0", name), "");
    EXPECT_EQ(name, L"21fe525400fc0000");
}

TEST_F(SysfsActions, GeneratingNeedsAMacAddress)
{
    COrlString name;
    for (const char* address : {"", "\n", "00:00:00:00:00:00\n", "52:54:00:fc:00\n", "52-54-00-fc-00-00\n",
                                "52:54:00:fc:00:0g\n", "52:54:00:fc:00:00:00\n"})
    {
        m_tree.File(std::string(Net) + "eth0/address", address);
        EXPECT_EQ(Generate(L"eth0", name), "13: GenerateVirtualPortWWPN on eth0: the interface has no MAC address")
            << address;
    }
    EXPECT_EQ(name, L"");
}

TEST_F(SysfsActions, RefreshScansEveryHostOfTheHba)
{
    AddVirtualPort(m_tree, "eth0", 0, 1, 7);
    EXPECT_EQ(Refresh(L"eth0"), "");
    EXPECT_EQ(m_tree.Read(Host + "scsi_host/host0/scan"), "- - -");
    EXPECT_EQ(m_tree.Read(Host + "vport-0:0-1/host7/scsi_host/host7/scan"), "- - -");
    EXPECT_EQ(m_tree.Read(std::string(Net) + "eth1/ctlr_1/host1/scsi_host/host1/scan"), "");
}

TEST_F(SysfsActions, RefreshTellsTheFirstRefusalAndScansTheRest)
{
    AddVirtualPort(m_tree, "eth0", 0, 1, 7);
    m_tree.Remove(Host + "scsi_host");
    EXPECT_EQ(Refresh(L"eth0"),
              "55: RefreshTargets on eth0: the kernel refused to scan host0: No such file or directory");
    EXPECT_EQ(m_tree.Read(Host + "vport-0:0-1/host7/scsi_host/host7/scan"), "- - -");
}

TEST_F(SysfsActions, UninstallDoesNothingAndSaysSo)
{
    EXPECT_EQ(ErrorOf([&] { return m_backend->Uninstall(m_status); }),
              "50: Uninstall: the FCoE stack is the kernel's own and stays where it is; nothing was done");
    EXPECT_TRUE(std::filesystem::exists(m_tree.At(Fc + "port_name")));
}

} // namespace
} // namespace orl
