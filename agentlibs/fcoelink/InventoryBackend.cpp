// The inventory back end: the agent's operations on a simulated SAN.

#include "agentlibs/fcoelink/Backend.h"

#include "agentlibs/inventory/InventoryFile.h"

namespace orl
{

namespace
{

class InventoryBackend final : public FcoeBackend
{
public:
    explicit InventoryBackend(const std::wstring& path) : m_file(path) {}

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
        return Enumerate(Operation::EnumeratePorts, deviceId, ports);
    }
    bool EnumerateTargets(const COrlString& deviceId, std::vector<ORL_FCOE_TARGET>& targets, CResult&) override
    {
        return Enumerate(Operation::EnumerateTargets, deviceId, targets);
    }
    bool EnumerateVLANs(const COrlString& deviceId, std::vector<ORL_FCOE_VLAN>& vlans, CResult&) override
    {
        return Enumerate(Operation::EnumerateVLANs, deviceId, vlans);
    }
    bool EnumerateLUNs(const COrlString& deviceId, std::vector<ORL_FCOE_LUN>& luns, CResult&) override
    {
        return Enumerate(Operation::EnumerateLUNs, deviceId, luns);
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

    // What every action on one HBA starts with.
    void BeginAction(Operation operation, const COrlString& deviceId)
    {
        if (!Begin(operation, deviceId).inventory->Knows(deviceId))
            throw BackendError(ERROR_DEV_NOT_EXIST,
                               m_file.Path() + L": there is no HBA with the device id \"" + deviceId + L"\"");
    }
    [[noreturn]] void RefuseChange() const
    {
        throw BackendError(ERROR_NOT_SUPPORTED,
                           m_file.Path() + L": the inventory is only read; change the file to change the SAN");
    }

    InventoryFile m_file;
};

BackendStatus InventoryBackend::Status()
{
    BackendStatus status;
    status.source = m_file.Path();
    try
    {
        const std::size_t count = m_file.Read().inventory->HbaCount();
        status.text = std::to_wstring(count) + (count == 1 ? L" HBA" : L" HBAs");
        status.ready = true;
    }
    catch (const BackendError& error)
    {
        status.text = error.Text();
    }
    return status;
}

bool InventoryBackend::Uninstall(CResult&)
{
    Begin(Operation::Uninstall, {});
    RefuseChange();
}

bool InventoryBackend::CreateVirtualPort(const COrlString& deviceId, COrlString&, std::vector<WarningMessageObj>&,
                                         CResult&)
{
    BeginAction(Operation::CreateVirtualPort, deviceId);
    RefuseChange();
}

bool InventoryBackend::DeleteVirtualPort(const COrlString& deviceId, const COrlString&, std::vector<WarningMessageObj>&,
                                         CResult&)
{
    BeginAction(Operation::DeleteVirtualPort, deviceId);
    RefuseChange();
}

bool InventoryBackend::GenerateVirtualPortWWPN(const COrlString& deviceId, COrlString&, std::vector<WarningMessageObj>&,
                                               CResult&)
{
    BeginAction(Operation::GenerateVirtualPortWWPN, deviceId);
    RefuseChange();
}

// Targets are what the file says at each call, so looking for new ones needs no more than the HBA.
bool InventoryBackend::RefreshTargets(const COrlString& deviceId, CResult&)
{
    BeginAction(Operation::RefreshTargets, deviceId);
    return true;
}

} // namespace

std::unique_ptr<FcoeBackend> MakeInventoryBackend(const BackendConfig& config)
{
    return std::make_unique<InventoryBackend>(config.inventory);
}

} // namespace orl
