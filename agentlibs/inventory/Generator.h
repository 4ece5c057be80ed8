// Generator: the `generate` block, a SAN of any size made from a few numbers.
#pragma once

#include "agentlibs/inventory/ObjectReader.h"
#include "agentlibs/inventory/PortIndex.h"
#include "agentlibs/settings/SettingDescription.h"
#include "agent/OrlFcoeRecords.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orl
{

// Nothing is kept: each record is made when it is asked for, from the seed, its adapter's number and its own. So a SAN
// of a million LUNs takes no memory until somebody enumerates it, one adapter's records cost nothing of the others',
// and the same block makes the same SAN everywhere.
class Generator
{
public:
    // Of one kind over all adapters, so that a slip of the finger does not fill the memory of whoever enumerates.
    static constexpr ULONGLONG MaxRecords = 10000000;

    explicit Generator(ObjectReader& block);

    ULONG HbaCount() const { return m_hbas; }

    // The number of the adapter with this device id, compared without regard to case.
    std::optional<ULONG> Find(std::wstring_view deviceId) const;

    // Append the records of one adapter, `hba` < HbaCount().
    void Append(ULONG hba, std::vector<ORL_FCOE_HBA>& out) const;
    void Append(ULONG hba, std::vector<ORL_FCOE_FABRIC>& out) const;
    void Append(ULONG hba, std::vector<ORL_FCOE_PORT>& out) const;
    void Append(ULONG hba, std::vector<ORL_FCOE_TARGET>& out) const;
    void Append(ULONG hba, std::vector<ORL_FCOE_LUN>& out) const;
    void Append(ULONG hba, std::vector<ORL_FCOE_VLAN>& out) const;
    void Append(ULONG hba, std::vector<ORL_FCOE_STATISTIC>& out) const;

    // How many records of the kind Append appends.
    ULONG CountPerHba(const ORL_FCOE_HBA*) const { return 1; }
    ULONG CountPerHba(const ORL_FCOE_FABRIC*) const { return m_fabrics; }
    ULONG CountPerHba(const ORL_FCOE_PORT*) const { return m_ports + m_virtualPorts; }
    ULONG CountPerHba(const ORL_FCOE_TARGET*) const { return m_targets; }
    ULONG CountPerHba(const ORL_FCOE_LUN*) const { return m_targets * m_luns; }
    ULONG CountPerHba(const ORL_FCOE_VLAN*) const { return m_vlans; }
    ULONG CountPerHba(const ORL_FCOE_STATISTIC*) const { return m_statistics; }

    // The settings of an adapter: the same ones for each.
    std::vector<SettingDescription> Settings() const;
    ULONG SettingsPerHba() const { return m_settings; }

    std::size_t PhysicalPortsPerHba() const { return m_ports; }

    // Names and addresses are made by formula, so whose they are is computed. What has this port name; a target is said
    // to be the first adapter's, though all of them see it.
    std::optional<PortSite> SiteOf(std::uint64_t portName) const;
    // The lowest address from `fcid` upwards that nothing here has.
    ULONG BehindFcids(ULONG fcid) const;

private:
    std::uint64_t AddressOf(ULONG hba) const;
    std::uint64_t Random(std::uint64_t hba, std::uint64_t kind, std::uint64_t number) const;
    std::uint64_t PortName(ULONG hba, ULONG extension) const;
    ULONG PortFcid(ULONG hba, ULONG port) const;
    // The names of the fabric of this number, counted round those that there are; none where there are none.
    void PutFabricNode(std::wstring& text, ULONG number) const;
    void PutFabric(std::wstring& text, ULONG number) const;

    ULONGLONG m_seed = 0;
    COrlString m_prefix;
    ULONG m_hbas = 0;
    ULONG m_fabrics = 1;
    ULONG m_ports = 1;
    ULONG m_virtualPorts = 0;
    ULONG m_targets = 2;
    ULONG m_luns = 4;
    ULONG m_vlans = 1;
    ULONG m_statistics = 8;
    ULONG m_settings = 0;
};

} // namespace orl
