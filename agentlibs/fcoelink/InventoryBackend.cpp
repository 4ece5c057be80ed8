// The inventory back end: the agent's operations on a simulated SAN.

#include "agentlibs/fcoelink/Backend.h"

#include "agentlibs/inventory/ChangedSan.h"
#include "agentlibs/inventory/InventoryFile.h"
#include "agentlibs/inventory/StateFile.h"
#include "agentlibs/inventory/VirtualPortActions.h"
#include "agentlibs/inventory/VirtualPortState.h"
#include "agentlibs/fcoelink/WorldWideName.h"

namespace orl
{

namespace
{

// Of a warning about an action that was done.
constexpr ULONG KindAdvice = 2;

class InventoryBackend final : public FcoeBackend
{
public:
    explicit InventoryBackend(const std::wstring& path) : m_file(path), m_stateFile(path) {}

    BackendStatus Status() override;

    bool EnumerateHBAs(const COrlString& deviceId, std::vector<ORL_FCOE_HBA>& hbas, CResult&) override
    {
        return Enumerate(Operation::EnumerateHBAs, deviceId, hbas);
    }
    bool EnumerateFabrics(const COrlString& deviceId, std::vector<ORL_FCOE_FABRIC>& fabrics, CResult&) override
    {
        return Enumerate(Operation::EnumerateFabrics, deviceId, fabrics);
    }
    bool EnumeratePorts(const COrlString& deviceId, std::vector<ORL_FCOE_PORT>& ports, CResult&) override
    {
        return EnumerateChanged(Operation::EnumeratePorts, deviceId, ports);
    }
    bool EnumerateTargets(const COrlString& deviceId, std::vector<ORL_FCOE_TARGET>& targets, CResult&) override
    {
        return EnumerateChanged(Operation::EnumerateTargets, deviceId, targets);
    }
    bool EnumerateVLANs(const COrlString& deviceId, std::vector<ORL_FCOE_VLAN>& vlans, CResult&) override
    {
        return Enumerate(Operation::EnumerateVLANs, deviceId, vlans);
    }
    bool EnumerateLUNs(const COrlString& deviceId, std::vector<ORL_FCOE_LUN>& luns, CResult&) override
    {
        return EnumerateChanged(Operation::EnumerateLUNs, deviceId, luns);
    }
    bool EnumerateStatistics(const COrlString& deviceId, std::vector<ORL_FCOE_STATISTIC>& statistics, CResult&) override
    {
        const InventoryFile::Contents contents = Begin(Operation::EnumerateStatistics, deviceId);
        contents.inventory->AppendStatistics(deviceId, contents.age, statistics);
        return true;
    }

    bool Uninstall(CResult&) override;
    bool CreateVirtualPort(const COrlString& deviceId, COrlString& worldWidePortName,
                           std::vector<WarningMessageObj>& warnings, CResult& status) override;
    bool DeleteVirtualPort(const COrlString& deviceId, const COrlString& worldWidePortName,
                           std::vector<WarningMessageObj>& warnings, CResult& status) override;
    bool GenerateVirtualPortWWPN(const COrlString& deviceId, COrlString& worldWidePortName,
                                 std::vector<WarningMessageObj>& warnings, CResult& status) override;
    bool RefreshTargets(const COrlString& deviceId, CResult& status) override;

private:
    // What every operation starts with: the SAN as it is now, and what its faults have in store.
    InventoryFile::Contents Begin(Operation operation, const COrlString& deviceId)
    {
        InventoryFile::Contents contents = m_file.Read();
        contents.inventory->Faults().Apply(operation, deviceId);
        return contents;
    }

    template <typename Record>
    bool Enumerate(Operation operation, const COrlString& deviceId, std::vector<Record>& out)
    {
        Begin(operation, deviceId).inventory->Append(deviceId, out);
        return true;
    }

    // Of what clients can change.
    template <typename Record>
    bool EnumerateChanged(Operation operation, const COrlString& deviceId, std::vector<Record>& out)
    {
        const InventoryFile::Contents contents = Begin(operation, deviceId);
        ChangedSan(contents.inventory, ReadState()).Append(deviceId, out);
        return true;
    }
    std::shared_ptr<const VirtualPortState> ReadState()
    {
        return m_virtualPorts.Of(m_stateFile.Read(), &VirtualPortState::Read);
    }

    // Carries out `act(VirtualPortState&)` as one transaction.
    template <typename Act>
    void Change(Act&& act)
    {
        m_stateFile.Change(VirtualPortState::Section,
                           [&](const StateDocument& document, StateFile::Section& section)
                           {
                               VirtualPortState state = VirtualPortState::Read(document);
                               act(state);
                               if (!state.Empty())
                                   section = state.Text();
                               return true;
                           });
    }

    InventoryFile m_file;
    StateFile m_stateFile;
    StateSection<VirtualPortState> m_virtualPorts;
};

BackendStatus InventoryBackend::Status()
{
    BackendStatus status;
    status.source = m_file.Path();
    try
    {
        const std::size_t count = m_file.Read().inventory->HbaCount();
        ReadState();
        status.text = Counted(count, L"HBA");
        status.ready = true;
    }
    catch (const BackendError& error)
    {
        status.text = error.Text();
    }
    return status;
}

// What was created goes, what was deleted comes back: the SAN is again as its file says.
bool InventoryBackend::Uninstall(CResult&)
{
    Begin(Operation::Uninstall, {});
    if (!ReadState()->Empty())
        Change([](VirtualPortState& state) { state = VirtualPortState(); });
    return true;
}

// What is answered is made ready within the transaction, so that want of memory undoes it.
bool InventoryBackend::CreateVirtualPort(const COrlString& deviceId, COrlString& worldWidePortName,
                                         std::vector<WarningMessageObj>& warnings, CResult&)
{
    const auto contents = Begin(Operation::CreateVirtualPort, deviceId);
    const VirtualPortActions actions(m_file.Path(), *contents.inventory, deviceId);
    std::optional<std::uint64_t> given;
    if (!worldWidePortName.empty())
        given = actions.Parse(worldWidePortName);
    COrlString assigned;
    std::vector<WarningMessageObj> advice = warnings;
    Change(
        [&](VirtualPortState& state)
        {
            assigned = FormatWorldWideName(actions.Create(state, given));
            if (const ORL_FCOE_HBA& hba = actions.Hba(); IsLinkDown(hba))
                advice.push_back({KindAdvice, 0,
                                  assigned + L" is created, but cannot log in to a fabric: the link of \"" +
                                      hba.deviceId + L"\" is " + hba.linkStatus});
        });
    worldWidePortName.swap(assigned);
    warnings.swap(advice);
    return true;
}

bool InventoryBackend::DeleteVirtualPort(const COrlString& deviceId, const COrlString& worldWidePortName,
                                         std::vector<WarningMessageObj>&, CResult&)
{
    const auto contents = Begin(Operation::DeleteVirtualPort, deviceId);
    const VirtualPortActions actions(m_file.Path(), *contents.inventory, deviceId);
    const std::uint64_t name = actions.Parse(worldWidePortName);
    Change([&](VirtualPortState& state) { actions.Delete(state, name); });
    return true;
}

// The name is written down before it is answered, so that no two callers get the same one.
bool InventoryBackend::GenerateVirtualPortWWPN(const COrlString& deviceId, COrlString& worldWidePortName,
                                               std::vector<WarningMessageObj>&, CResult&)
{
    const auto contents = Begin(Operation::GenerateVirtualPortWWPN, deviceId);
    const VirtualPortActions actions(m_file.Path(), *contents.inventory, deviceId);
    COrlString generated;
    Change([&](VirtualPortState& state) { generated = FormatWorldWideName(actions.Generate(state)); });
    worldWidePortName.swap(generated);
    return true;
}

// Targets are what the file says at each call, so looking for new ones needs no more than the HBA.
bool InventoryBackend::RefreshTargets(const COrlString& deviceId, CResult&)
{
    const auto contents = Begin(Operation::RefreshTargets, deviceId);
    RequireHba(m_file.Path(), *contents.inventory, deviceId);
    return true;
}

} // namespace

std::unique_ptr<FcoeBackend> MakeInventoryBackend(const BackendConfig& config)
{
    return std::make_unique<InventoryBackend>(config.inventory);
}

} // namespace orl
