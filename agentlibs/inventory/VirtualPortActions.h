// VirtualPortActions: what clients may do to the virtual ports of one adapter of an inventory.
#pragma once

#include "agentlibs/inventory/Inventory.h"
#include "agentlibs/inventory/VirtualPortState.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orl
{

// The adapter's number in the inventory. Throws BackendError when there is no such adapter. `file` is the inventory's,
// for messages.
std::size_t RequireHba(const std::wstring& file, const Inventory& inventory, const COrlString& deviceId);

// The actions change `state` and nothing else, so that they can be done within a transaction. They throw BackendError
// without having changed anything. None of them walks the adapters that the inventory generates.
class VirtualPortActions
{
public:
    // As RequireHba. The file's name and the inventory are kept by reference.
    VirtualPortActions(const std::wstring& file, const Inventory& inventory, const COrlString& deviceId);

    // A name as a user wrote it. Throws BackendError when it is none.
    std::uint64_t Parse(const COrlString& portName) const;

    // Answers the name, which is a generated one where none is given. A port that the inventory lists for this adapter
    // and that was deleted comes back as it was.
    std::uint64_t Create(VirtualPortState& state, std::optional<std::uint64_t> portName) const;
    void Delete(VirtualPortState& state, std::uint64_t portName) const;
    // A name that nothing has. Names made for one MAC address differ until all the others have had their turn.
    std::uint64_t Generate(VirtualPortState& state) const;

    // The adapter as the inventory describes it.
    const ORL_FCOE_HBA& Hba() const { return m_hba; }

private:
    [[noreturn]] void Refuse(ULONG code, const std::wstring& reason) const;
    // What has the name, in words; empty when nothing has it.
    std::wstring OwnerOf(const VirtualPortState& state, std::uint64_t portName) const;
    bool IsPhysical(std::uint64_t portName) const;
    bool IsListedVirtual(std::uint64_t portName) const;
    std::size_t CountVirtual(const VirtualPortState& state) const;
    std::uint64_t Address() const;
    ULONG AllocateFcid(const VirtualPortState& state) const;
    std::uint64_t NodeNameOf(std::uint64_t portName) const;

    const std::wstring& m_file;
    const Inventory& m_inventory;
    ORL_FCOE_HBA m_hba;
    std::vector<ORL_FCOE_PORT> m_ports;
    std::size_t m_physical = 0; // the first so many of them
};

} // namespace orl
