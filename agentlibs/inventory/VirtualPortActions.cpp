// VirtualPortActions: creating, deleting and naming virtual ports.

#include "agentlibs/inventory/VirtualPortActions.h"

#include "agentlibs/BackendError.h"
#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"
#include "agentlibs/inventory/ChangedSan.h"

#include <algorithm>
#include <unordered_set>

namespace orl
{

namespace
{

// World wide names begin with 4 bits that say how the rest is made up (FC-FS). Format 2: 12 bits as the vendor likes,
// then a MAC address; format 1: the same with 12 bits of no meaning.
constexpr int FormatShift = 60;
constexpr std::uint64_t PortFormat = 2;
constexpr std::uint64_t NodeFormat = 1;
constexpr int ExtensionShift = 48;
constexpr std::uint64_t AddressMask = 0xFFFFFFFFFFFF;
constexpr ULONG LastExtension = 0xFFF;
// The extensions up to this are those of physical ports, by custom; the first name generated has the next one.
constexpr ULONG LastPhysicalExtension = 0x100;

constexpr ULONG AreaMask = 0xFFFF00;
constexpr ULONG LowestFcid = 0x010001;

std::wstring InQuotes(const COrlString& text)
{
    return Widen(Quoted(Narrow(text)));
}

bool Holds(const std::vector<std::uint64_t>& names, std::uint64_t name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<VirtualPortState::Port>::const_iterator FindCreated(const VirtualPortState::Hba& hba, std::uint64_t name)
{
    return std::find_if(hba.created.begin(), hba.created.end(),
                        [&](const VirtualPortState::Port& port) { return port.portName == name; });
}

} // namespace

std::size_t RequireHba(const std::wstring& file, const Inventory& inventory, const COrlString& deviceId)
{
    if (const auto number = inventory.Find(deviceId))
        return *number;
    throw BackendError(ERROR_DEV_NOT_EXIST, file + L": there is no HBA with the device id \"" + deviceId + L"\"");
}

VirtualPortActions::VirtualPortActions(const std::wstring& file, const Inventory& inventory, const COrlString& deviceId)
    : m_file(file), m_inventory(inventory)
{
    const std::size_t number = RequireHba(file, inventory, deviceId);
    std::vector<ORL_FCOE_HBA> hbas;
    inventory.AppendOf(number, hbas);
    m_hba = hbas.front();
    inventory.AppendOf(number, m_ports);
    m_physical = inventory.PhysicalPorts(number);
}

void VirtualPortActions::Refuse(ULONG code, const std::wstring& reason) const
{
    throw BackendError(code, m_file + L": " + reason);
}

std::uint64_t VirtualPortActions::Parse(const COrlString& portName) const
{
    const auto name = ParseWorldWideName(portName);
    if (!name)
        Refuse(ERROR_INVALID_NAME, InQuotes(portName) +
                                       L" is no world wide port name: expected 16 hexadecimal digits, bare, behind 0x, "
                                       L"or in pairs with colons between, and not all of them 0");
    return *name;
}

std::uint64_t VirtualPortActions::Create(VirtualPortState& state, std::optional<std::uint64_t> portName) const
{
    if (CountVirtual(state) >= VirtualPortState::MaxPerHba)
        Refuse(ERROR_NO_MORE_ITEMS, InQuotes(m_hba.deviceId) + L" has " + std::to_wstring(CountVirtual(state)) +
                                        L" virtual ports; no more than " +
                                        std::to_wstring(VirtualPortState::MaxPerHba) + L" can be on one HBA");
    if (portName)
    {
        const std::wstring owner = OwnerOf(state, *portName);
        if (!owner.empty())
            Refuse(ERROR_ALREADY_EXISTS, FormatWorldWideName(*portName) + L" is already " + owner);
    }
    VirtualPortState::Port port;
    port.fcid = AllocateFcid(state);
    port.portName = portName ? *portName : Generate(state);
    port.nodeName = NodeNameOf(port.portName);
    VirtualPortState::Hba& changes = state.Of(m_hba.deviceId);
    if (IsListedVirtual(port.portName)) // and deleted, for nothing has the name
        std::erase(changes.deleted, port.portName);
    else
        changes.created.push_back(port);
    state.Tidy(m_hba.deviceId);
    return port.portName;
}

void VirtualPortActions::Delete(VirtualPortState& state, std::uint64_t portName) const
{
    if (IsPhysical(portName))
        Refuse(ERROR_ACCESS_DENIED, FormatWorldWideName(portName) + L" is a physical port of " +
                                        InQuotes(m_hba.deviceId) + L"; only virtual ports can be deleted");
    const VirtualPortState::Hba* known = state.Find(m_hba.deviceId);
    const bool isListed = IsListedVirtual(portName) && (known == nullptr || !Holds(known->deleted, portName));
    const bool isCreated = known != nullptr && FindCreated(*known, portName) != known->created.end() &&
                           !ListedSiteOf(m_inventory, state, portName);
    if (!isListed && !isCreated)
        Refuse(ERROR_NOT_FOUND, InQuotes(m_hba.deviceId) + L" has no virtual port " + FormatWorldWideName(portName));
    VirtualPortState::Hba& changes = state.Of(m_hba.deviceId);
    if (isListed)
        changes.deleted.push_back(portName);
    else
        changes.created.erase(FindCreated(changes, portName));
    state.Tidy(m_hba.deviceId);
}

std::uint64_t VirtualPortActions::Generate(VirtualPortState& state) const
{
    const std::uint64_t address = Address();
    ULONG extension = state.LastExtension(address, LastPhysicalExtension);
    for (ULONG tries = 0; tries < LastExtension; ++tries)
    {
        extension = extension % LastExtension + 1;
        const std::uint64_t name = PortFormat << FormatShift | std::uint64_t{extension} << ExtensionShift | address;
        if (!OwnerOf(state, name).empty())
            continue;
        state.SetLastExtension(address, extension);
        return name;
    }
    Refuse(ERROR_NO_MORE_ITEMS, L"every name that could be generated for " + InQuotes(m_hba.deviceId) + L" is taken");
}

std::wstring VirtualPortActions::OwnerOf(const VirtualPortState& state, std::uint64_t portName) const
{
    if (const auto site = ListedSiteOf(m_inventory, state, portName))
    {
        const std::wstring hba = InQuotes(m_inventory.DeviceIdOf(site->hba));
        switch (site->kind)
        {
        case PortSite::Kind::Port:
            return L"a physical port of " + hba;
        case PortSite::Kind::VirtualPort:
            return L"a virtual port of " + hba;
        case PortSite::Kind::Target:
            return L"a port of a target that " + hba + L" sees";
        }
    }
    const VirtualPortState::Hba* creator = state.CreatorOf(portName);
    return creator == nullptr ? std::wstring() : L"a virtual port of " + InQuotes(creator->deviceId);
}

bool VirtualPortActions::IsPhysical(std::uint64_t portName) const
{
    const std::wstring text = FormatWorldWideName(portName);
    const auto end = m_ports.begin() + static_cast<std::ptrdiff_t>(m_physical);
    return m_hba.worldWidePortName == text ||
           std::any_of(m_ports.begin(), end, [&](const ORL_FCOE_PORT& port) { return port.portWWN == text; });
}

bool VirtualPortActions::IsListedVirtual(std::uint64_t portName) const
{
    const std::wstring text = FormatWorldWideName(portName);
    return std::any_of(m_ports.begin() + static_cast<std::ptrdiff_t>(m_physical), m_ports.end(),
                       [&](const ORL_FCOE_PORT& port) { return port.portWWN == text; });
}

std::size_t VirtualPortActions::CountVirtual(const VirtualPortState& state) const
{
    const std::size_t listed = m_ports.size() - m_physical;
    const VirtualPortState::Hba* changes = state.Find(m_hba.deviceId);
    if (changes == nullptr)
        return listed;
    const auto deleted = std::count_if(changes->deleted.begin(), changes->deleted.end(),
                                       [this](std::uint64_t name) { return IsListedVirtual(name); });
    return listed - std::min(listed, static_cast<std::size_t>(deleted)) + changes->created.size();
}

// The adapter's own; where it has none, a locally administered one of its device id.
std::uint64_t VirtualPortActions::Address() const
{
    std::optional<std::uint64_t> name = ParseWorldWideName(m_hba.worldWidePortName);
    if (!name && m_physical != 0)
        name = ParseWorldWideName(m_ports.front().portWWN);
    if (name)
        return *name & AddressMask;
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const wchar_t c : FoldCase(m_hba.deviceId))
        hash = (hash ^ static_cast<std::uint64_t>(c)) * 0x100000001B3;
    return std::uint64_t{0x02} << 40 | hash >> 24;
}

// The fabric gives a virtual port an address of the area of the port that it logs in through, as long as there is one.
// An adapter without an address is in no fabric that could give one.
ULONG VirtualPortActions::AllocateFcid(const VirtualPortState& state) const
{
    const ULONG own = m_hba.fcid != 0 || m_physical == 0 ? m_hba.fcid : m_ports.front().fcid;
    if (own == 0)
        return 0;
    std::unordered_set<ULONG> taken;
    for (const auto& [key, hba] : state.Hbas())
        for (const VirtualPortState::Port& port : hba.created)
            taken.insert(port.fcid);
    for (ULONG from : {(own & AreaMask) + 1, LowestFcid})
    {
        ULONG fcid = m_inventory.FreeFcid(from);
        while (fcid != 0 && taken.contains(fcid))
            fcid = m_inventory.FreeFcid(fcid + 1);
        if (fcid != 0)
            return fcid;
    }
    Refuse(ERROR_NO_MORE_ITEMS, L"no Fibre Channel address is free");
}

std::uint64_t VirtualPortActions::NodeNameOf(std::uint64_t portName) const
{
    if (portName >> FormatShift == PortFormat)
        return portName ^ (PortFormat ^ NodeFormat) << FormatShift;
    return ParseWorldWideName(m_hba.worldWideNodeName).value_or(0);
}

} // namespace orl
