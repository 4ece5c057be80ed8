// The sysfs back end: the kernel's FCoE stack as the FCoE agent's data. Keeps nothing between calls, so any number of
// threads may be inside, and every answer is what the kernel says at that moment.

#include "agentlibs/fcoelink/Backend.h"

#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/sysfs/SysfsActions.h"
#include "agentlibs/fcoelink/sysfs/SysfsRecords.h"
#include "agentlibs/fcoelink/sysfs/SysfsText.h"
#include "agentlibs/fcoelink/sysfs/SysfsTree.h"

#include <utility>

namespace orl
{
namespace
{

using namespace sysfs;

// A device that vanished while its record was read leaves no record.
template <class Record>
void AppendIfPresent(std::vector<Record>& records, Record record, const Dir& device)
{
    if (device.Present())
        records.push_back(std::move(record));
}

class SysfsBackend final : public FcoeBackend
{
public:
    explicit SysfsBackend(const std::wstring& root) : m_root(root.empty() ? "/" : Narrow(root)) {}

    BackendStatus Status() override;

    bool EnumerateHBAs(const COrlString& deviceId, std::vector<ORL_FCOE_HBA>& hbas, CResult& status) override;
    bool EnumerateFabrics(const COrlString& deviceId, std::vector<ORL_FCOE_FABRIC>& fabrics, CResult& status) override;
    bool EnumeratePorts(const COrlString& deviceId, std::vector<ORL_FCOE_PORT>& ports, CResult& status) override;
    bool EnumerateTargets(const COrlString& deviceId, std::vector<ORL_FCOE_TARGET>& targets, CResult& status) override;
    bool EnumerateVLANs(const COrlString& deviceId, std::vector<ORL_FCOE_VLAN>& vlans, CResult& status) override;
    bool EnumerateLUNs(const COrlString& deviceId, std::vector<ORL_FCOE_LUN>& luns, CResult& status) override;
    bool EnumerateStatistics(const COrlString& deviceId, std::vector<ORL_FCOE_STATISTIC>& statistics,
                             CResult& status) override;

    bool Uninstall(CResult& status) override;
    bool CreateVirtualPort(const COrlString& deviceId, COrlString& worldWidePortName,
                           std::vector<WarningMessageObj>& warnings, CResult& status) override;
    bool DeleteVirtualPort(const COrlString& deviceId, const COrlString& worldWidePortName,
                           std::vector<WarningMessageObj>& warnings, CResult& status) override;
    bool GenerateVirtualPortWWPN(const COrlString& deviceId, COrlString& worldWidePortName,
                                 std::vector<WarningMessageObj>& warnings, CResult& status) override;
    bool RefreshTargets(const COrlString& deviceId, CResult& status) override;

private:
    std::string m_root;
};

BackendStatus SysfsBackend::Status()
{
    BackendStatus status;
    status.source = Wide(m_root);
    try
    {
        const Tree tree(m_root);
        std::size_t count = 0;
        tree.ForEachController({}, [&](const Controller&) { ++count; });
        status.ready = tree.HasFcoeBus();
        status.text = status.ready ? Counted(count, L"HBA") : std::wstring(NoFcoeBus);
    }
    catch (const BackendError& error)
    {
        status.text = error.Text();
    }
    return status;
}

bool SysfsBackend::EnumerateHBAs(const COrlString& deviceId, std::vector<ORL_FCOE_HBA>& hbas, CResult&)
{
    const Tree tree(m_root);
    tree.ForEachController(deviceId, [&](const Controller& controller)
                           { AppendIfPresent(hbas, ReadHba(tree, controller), controller.host.fc); });
    return true;
}

bool SysfsBackend::EnumerateFabrics(const COrlString& deviceId, std::vector<ORL_FCOE_FABRIC>& fabrics, CResult&)
{
    const Tree tree(m_root);
    tree.ForEachController(deviceId, [&](const Controller& controller) { AppendFabrics(controller, fabrics); });
    return true;
}

bool SysfsBackend::EnumeratePorts(const COrlString& deviceId, std::vector<ORL_FCOE_PORT>& ports, CResult&)
{
    const Tree tree(m_root);
    tree.ForEachController(
        deviceId,
        [&](const Controller& controller)
        {
            const COrlString forwarder = SelectedForwarder(controller);
            ForEachHost(controller, [&](const Host& host)
                        { AppendIfPresent(ports, ReadPort(HostView(controller, host), host, forwarder), host.fc); });
        });
    return true;
}

bool SysfsBackend::EnumerateTargets(const COrlString& deviceId, std::vector<ORL_FCOE_TARGET>& targets, CResult&)
{
    const Tree tree(m_root);
    tree.ForEachController(deviceId,
                           [&](const Controller& controller)
                           {
                               ForEachHost(controller,
                                           [&](const Host& host)
                                           {
                                               const HostView view(controller, host);
                                               ForEachRemotePort(
                                                   host, [&](const RemotePort& port)
                                                   { AppendIfPresent(targets, ReadTarget(view, port), port.fc); });
                                           });
                           });
    return true;
}

bool SysfsBackend::EnumerateVLANs(const COrlString& deviceId, std::vector<ORL_FCOE_VLAN>& vlans, CResult&)
{
    const Tree tree(m_root);
    tree.ForEachController(deviceId, [&](const Controller& controller)
                           { AppendIfPresent(vlans, ReadVlan(tree, controller), controller.dir); });
    return true;
}

bool SysfsBackend::EnumerateLUNs(const COrlString& deviceId, std::vector<ORL_FCOE_LUN>& luns, CResult&)
{
    const Tree tree(m_root);
    tree.ForEachController(deviceId,
                           [&](const Controller& controller)
                           {
                               ForEachHost(controller,
                                           [&](const Host& host)
                                           {
                                               const HostView view(controller, host);
                                               ForEachRemotePort(host, [&](const RemotePort& port)
                                                                 { AppendLuns(view, port, luns); });
                                           });
                           });
    return true;
}

bool SysfsBackend::EnumerateStatistics(const COrlString& deviceId, std::vector<ORL_FCOE_STATISTIC>& statistics,
                                       CResult&)
{
    const Tree tree(m_root);
    tree.ForEachController(deviceId, [&](const Controller& controller) { AppendStatistics(controller, statistics); });
    return true;
}

bool SysfsBackend::Uninstall(CResult&)
{
    throw BackendError(ERROR_NOT_SUPPORTED,
                       L"Uninstall: the FCoE stack is the kernel's own and stays where it is; nothing was done");
}

bool SysfsBackend::CreateVirtualPort(const COrlString& deviceId, COrlString& worldWidePortName,
                                     std::vector<WarningMessageObj>& warnings, CResult&)
{
    sysfs::CreateVirtualPort(Tree(m_root), deviceId, worldWidePortName, warnings);
    return true;
}

bool SysfsBackend::DeleteVirtualPort(const COrlString& deviceId, const COrlString& worldWidePortName,
                                     std::vector<WarningMessageObj>& warnings, CResult&)
{
    sysfs::DeleteVirtualPort(Tree(m_root), deviceId, worldWidePortName, warnings);
    return true;
}

bool SysfsBackend::GenerateVirtualPortWWPN(const COrlString& deviceId, COrlString& worldWidePortName,
                                           std::vector<WarningMessageObj>&, CResult&)
{
    worldWidePortName = GenerateVirtualPortName(Tree(m_root), deviceId);
    return true;
}

bool SysfsBackend::RefreshTargets(const COrlString& deviceId, CResult&)
{
    sysfs::RefreshTargets(Tree(m_root), deviceId);
    return true;
}

} // namespace

std::unique_ptr<FcoeBackend> MakeSysfsBackend(const BackendConfig& config)
{
    return std::make_unique<SysfsBackend>(config.sysfsRoot);
}

} // namespace orl
