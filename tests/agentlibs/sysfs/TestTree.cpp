// A small sysfs tree that a test writes and damages.

#include "tests/agentlibs/sysfs/TestTree.h"

#include <fstream>
#include <stdexcept>

#include <sys/stat.h>

namespace fs = std::filesystem;

namespace orl
{

TestTree::TestTree()
{
    Folder("sys/devices");
    Folder("sys/bus/fcoe/devices");
}

void TestTree::File(std::string_view path, std::string_view bytes)
{
    fs::create_directories(At(path).parent_path());
    std::ofstream file(At(path), std::ios::binary);
    file << bytes;
    if (!file.flush())
        throw std::runtime_error("cannot write " + At(path).string());
}

void TestTree::Folder(std::string_view path)
{
    fs::create_directories(At(path));
}

void TestTree::Link(std::string_view path, const std::string& target)
{
    Remove(path);
    fs::create_directories(At(path).parent_path());
    fs::create_symlink(target, At(path));
}

void TestTree::Fifo(std::string_view path)
{
    Remove(path);
    if (mkfifo(At(path).c_str(), 0600) != 0)
        throw std::runtime_error("no fifo " + At(path).string());
}

void TestTree::Remove(std::string_view path)
{
    fs::remove_all(At(path));
}

std::unique_ptr<FcoeBackend> TestTree::Backend() const
{
    BackendConfig config;
    config.backend = L"sysfs";
    config.sysfsRoot = m_folder.Text();
    return MakeSysfsBackend(config);
}

std::string ReadText(const fs::path& file)
{
    std::string text = test::BytesOfFile(file);
    text.erase(text.find_last_not_of(" \n") + 1);
    return text;
}

namespace
{

void AddHost(TestTree& tree, const std::string& path, const std::string& name, const std::string& portName)
{
    const std::string fc = path + "/fc_host/" + name + '/';
    tree.File(fc + "node_name", "0x1000525400fc00aa\n");
    tree.File(fc + "port_name", "0x" + portName + "\n");
    tree.File(fc + "port_id", "0x010300\n");
    tree.File(fc + "port_type", "NPort (fabric via point-to-point)\n");
    tree.File(fc + "port_state", "Online\n");
    tree.File(fc + "speed", "10 Gbit\n");
    tree.File(fc + "fabric_name", "0x10000000fc00000a\n");
    tree.File(fc + "symbolic_name", "fcoe v0.1 over " + name + "\n");
    tree.File(fc + "model", "\n");
    tree.File(path + "/scsi_host/" + name + "/scan", "");
}

} // namespace

void AddHba(TestTree& tree, const std::string& interfaceName, int number)
{
    const std::string n = std::to_string(number);
    const std::string interfacePath = std::string(Net) + interfaceName;
    const std::string controller = interfacePath + "/ctlr_" + n;
    tree.File(interfacePath + "/ifindex", std::to_string(number + 2) + "\n");
    tree.File(interfacePath + "/address", "52:54:00:fc:00:0" + n + "\n");
    tree.File(interfacePath + "/operstate", "up\n");
    tree.Link("sys/bus/fcoe/devices/ctlr_" + n, "../../../devices/virtual/net/" + interfaceName + "/ctlr_" + n);

    tree.File(controller + "/mode", "Fabric\n");
    tree.File(controller + "/enabled", "1\n");
    tree.File(controller + "/fcf_dev_loss_tmo", "1800\n");
    tree.File(controller + "/lesb/link_fail", "16777216\n");
    const std::string forwarder = controller + "/fcf_" + n + '/';
    tree.File(forwarder + "fabric_name", "0x10000000fc00000a\n");
    tree.File(forwarder + "switch_name", "0x20000000fc00000a\n");
    tree.File(forwarder + "fc_map", "0xefc00\n");
    tree.File(forwarder + "priority", "128\n");
    tree.File(forwarder + "vlan_id", "1002\n");
    tree.File(forwarder + "mac", "52:54:00:fc:01:01\n");
    tree.File(forwarder + "selected", "1\n");

    const std::string host = controller + "/host" + n;
    AddHost(tree, host, "host" + n, "2000525400fc000" + n);
    tree.File(host + "/fc_host/host" + n + "/vport_create", "");
    tree.File(host + "/fc_host/host" + n + "/vport_delete", "");
    tree.File(host + "/fc_host/host" + n + "/npiv_vports_inuse", "0\n");
    tree.File(host + "/fc_host/host" + n + "/statistics/tx_frames", "0x10\n");
    tree.File(host + "/fc_host/host" + n + "/statistics/lip_count", "0xffffffffffffffff\n");

    const std::string rport = "rport-" + n + ":0-1";
    const std::string remote = host + '/' + rport + "/fc_remote_ports/" + rport + '/';
    tree.File(remote + "node_name", "0x1000525400fc2000\n");
    tree.File(remote + "port_name", "0x2000525400fc2000\n");
    tree.File(remote + "port_id", "0x010200\n");
    tree.File(remote + "port_state", "Online\n");
    tree.File(remote + "roles", "FCP Target\n");
    tree.File(remote + "scsi_target_id", "0\n");
    const std::string disk = host + '/' + rport + "/target" + n + ":0:0/" + n + ":0:0:0/";
    tree.File(disk + "type", "0\n");
    tree.File(disk + "vendor", "ACME    \n");
    tree.File(disk + "model", "DISK            \n");
    tree.File(disk + "rev", "1.0 \n");
    tree.File(disk + "wwid", "naa.600140500000000\n");
    tree.File(disk + "block/sd" + n + "/size", "2048\n");
    tree.File(disk + "block/sd" + n + "/queue/logical_block_size", "512\n");
}

void AddVirtualPort(TestTree& tree, const std::string& interfaceName, int number, int index, int host)
{
    const std::string n = std::to_string(number);
    const std::string i = std::to_string(index);
    const std::string name = "vport-" + n + ":0-" + i;
    const std::string port = std::string(Net) + interfaceName + "/ctlr_" + n + "/host" + n + '/' + name;
    const std::string portName = "210" + i + "525400fc000" + n;
    tree.File(port + "/fc_vports/" + name + "/port_name", "0x" + portName + "\n");
    tree.File(port + "/fc_vports/" + name + "/node_name", "0x1000525400fc00aa\n");
    const std::string hostName = "host" + std::to_string(host);
    AddHost(tree, port + '/' + hostName, hostName, portName);
}

} // namespace orl
