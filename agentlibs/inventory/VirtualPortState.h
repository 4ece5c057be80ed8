// VirtualPortState: the section of a state file that says which virtual ports clients created and deleted.
#pragma once

#include "agentlibs/inventory/StateFile.h"
#include "Common/Src/OrlString.h"

#include <windows.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{

// World wide names are numbers here. A value like any other; const calls may run in any number of threads.
class VirtualPortState
{
public:
    static constexpr std::string_view Section = "virtualPorts";
    // Of one HBA, those that the inventory lists included.
    static constexpr std::size_t MaxPerHba = 255;

    struct Port
    {
        std::uint64_t portName = 0;
        std::uint64_t nodeName = 0; // 0: none
        ULONG fcid = 0;
    };
    struct Hba
    {
        COrlString deviceId; // in the spelling of the inventory at the time
        std::vector<Port> created;
        std::vector<std::uint64_t> deleted; // of those that the inventory lists
    };

    // Nothing is changed in a document without the section. Throws BackendError with the place of what is wrong.
    static VirtualPortState Read(const StateDocument& document);
    // The section's JSON.
    std::string Text() const;

    bool Empty() const { return m_hbas.empty() && m_lastExtension.empty(); }

    // Null when nothing of this HBA was changed. The device id's case does not matter.
    const Hba* Find(const COrlString& deviceId) const;
    // By folded device id, in its order.
    const std::map<std::wstring, Hba>& Hbas() const { return m_hbas; }
    // The HBA that the created port of this name belongs to, null when there is none.
    const Hba* CreatorOf(std::uint64_t portName) const;

    // Makes the HBA known when it is not.
    Hba& Of(const COrlString& deviceId);
    // Forgets an HBA of which nothing is changed any more.
    void Tidy(const COrlString& deviceId);

    // The vendor extension, 12 bits, of the name that was generated last for this MAC address; `first` when none was.
    ULONG LastExtension(std::uint64_t address, ULONG first) const;
    void SetLastExtension(std::uint64_t address, ULONG extension) { m_lastExtension[address] = extension; }

private:
    std::map<std::wstring, Hba> m_hbas;
    std::map<std::uint64_t, ULONG> m_lastExtension;
};

} // namespace orl
