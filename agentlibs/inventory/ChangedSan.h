// ChangedSan: an inventory with the virtual ports as clients have left them.
#pragma once

#include "agentlibs/inventory/Inventory.h"
#include "agentlibs/inventory/VirtualPortState.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace orl
{

// What the state says and the inventory does not bear is left out: ports of an adapter that there is no more, and ports
// of a name that the inventory has come to use itself.
//
// Created ports follow the adapter's own. They are named after the adapter, are in the fabric of its first port, and
// see no targets. While the adapter's link is down they have neither fabric nor address.
class ChangedSan
{
public:
    ChangedSan(std::shared_ptr<const Inventory> inventory, std::shared_ptr<const VirtualPortState> state)
        : m_inventory(std::move(inventory)), m_state(std::move(state))
    {
    }

    // As Inventory::Append does, without walking adapters that are not asked for.
    void Append(const COrlString& deviceId, std::vector<ORL_FCOE_PORT>& out) const { AppendTo(deviceId, out); }
    void Append(const COrlString& deviceId, std::vector<ORL_FCOE_TARGET>& out) const { AppendTo(deviceId, out); }
    void Append(const COrlString& deviceId, std::vector<ORL_FCOE_LUN>& out) const { AppendTo(deviceId, out); }

private:
    template <typename Record>
    void AppendTo(const COrlString& deviceId, std::vector<Record>& out) const;
    template <typename Record>
    void AppendSeen(std::size_t hba, const VirtualPortState::Hba& changes, std::vector<Record>& out) const;
    void AppendChanged(std::size_t hba, const VirtualPortState::Hba& changes, std::vector<ORL_FCOE_PORT>& out) const;
    void AppendChanged(std::size_t hba, const VirtualPortState::Hba& changes, std::vector<ORL_FCOE_TARGET>& out) const
    {
        AppendSeen(hba, changes, out);
    }
    void AppendChanged(std::size_t hba, const VirtualPortState::Hba& changes, std::vector<ORL_FCOE_LUN>& out) const
    {
        AppendSeen(hba, changes, out);
    }

    const std::shared_ptr<const Inventory> m_inventory;
    const std::shared_ptr<const VirtualPortState> m_state;
};

// Whether the adapter says that it has no link, so that none of its ports can be in a fabric.
bool IsLinkDown(const ORL_FCOE_HBA& hba);

// What of the inventory has this name and is not deleted.
std::optional<PortSite> ListedSiteOf(const Inventory& inventory, const VirtualPortState& state, std::uint64_t portName);

} // namespace orl
