// VirtualPortState: from and to JSON.

#include "agentlibs/inventory/VirtualPortState.h"

#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"
#include "agentlibs/inventory/FirstPlaces.h"
#include "agentlibs/inventory/JsonParts.h"
#include "agentlibs/inventory/ObjectReader.h"

#include <algorithm>

namespace orl
{

namespace
{

constexpr ULONGLONG LastAddress = 0xFFFFFFFFFFFF;
constexpr ULONG LastExtensionThereIs = 0xFFF;

// 0 only for a key that is not there, which is refused elsewhere when it has to be.
std::uint64_t ReadName(ObjectReader& in, std::string_view key)
{
    COrlString text;
    in.WorldWideName(key, text);
    if (in.Has(key) && text.empty())
        in.Refuse(key, "the name is empty");
    return ParseWorldWideName(text).value_or(0);
}

constexpr std::uint64_t AddressTop = std::uint64_t{1} << 60; // makes room for the zeros that an address begins with

std::string NameString(std::uint64_t name)
{
    return '"' + Narrow(FormatWorldWideName(name)) + '"';
}

std::string ObjectText(const VirtualPortState::Port& port)
{
    std::string text = "{" + JsonMemberText("worldWidePortName", NameString(port.portName));
    if (port.nodeName != 0)
        text += ", " + JsonMemberText("worldWideNodeName", NameString(port.nodeName));
    return text + ", " + JsonMemberText("fcid", std::to_string(port.fcid)) + "}";
}

} // namespace

VirtualPortState VirtualPortState::Read(const StateDocument& document)
{
    VirtualPortState state;
    const JsonValue* section = document.Section(Section);
    if (section == nullptr)
        return state;
    const JsonPlace root;
    const JsonPlace place{&root, Section, 0};
    ObjectReader in(document.Source(), place, *section);
    FirstPlaces hbas;
    FirstPlaces created;
    FirstPlaces addresses;
    in.ForEach("hbas",
               [&](ObjectReader& element)
               {
                   COrlString deviceId;
                   element.Text("deviceId", deviceId);
                   element.Require("deviceId");
                   if (element.Has("deviceId"))
                       hbas.Put(element, "deviceId", FoldCase(deviceId), "entry is of this device id");
                   Hba& hba = state.Of(deviceId);
                   element.ForEach("created",
                                   [&](ObjectReader& item)
                                   {
                                       Port port;
                                       port.portName = ReadName(item, "worldWidePortName");
                                       item.Require("worldWidePortName");
                                       if (item.Has("worldWidePortName"))
                                           created.Put(item, "worldWidePortName", FormatWorldWideName(port.portName),
                                                       "virtual port has this name");
                                       port.nodeName = ReadName(item, "worldWideNodeName");
                                       item.Number("fcid", port.fcid, 0, 0xFFFFFF);
                                       if (hba.created.size() == MaxPerHba)
                                           item.Refuse({}, "an HBA has at most " + std::to_string(MaxPerHba) +
                                                               " virtual ports");
                                       hba.created.push_back(port);
                                   });
                   element.ForEach("deleted",
                                   [&](ObjectReader& item)
                                   {
                                       hba.deleted.push_back(ReadName(item, "worldWidePortName"));
                                       item.Require("worldWidePortName");
                                   });
               });
    in.ForEach("generatedNames",
               [&](ObjectReader& element)
               {
                   ULONGLONG address = 0;
                   element.Number("address", address);
                   element.Require("address");
                   if (address > LastAddress)
                       element.Refuse("address", "a MAC address has 48 bits");
                   ULONG extension = 0;
                   element.Number("lastExtension", extension, 0, LastExtensionThereIs);
                   element.Require("lastExtension");
                   if (element.Has("address"))
                       addresses.Put(element, "address", std::to_wstring(address), "entry is of this address");
                   state.SetLastExtension(address, extension);
               });
    in.Finish();
    return state;
}

std::string VirtualPortState::Text() const
{
    std::vector<std::string> hbas;
    for (const auto& [key, hba] : m_hbas)
    {
        std::vector<std::string> members = {JsonMemberText("deviceId", JsonString(Narrow(hba.deviceId)))};
        std::vector<std::string> created;
        for (const Port& port : hba.created)
            created.push_back(ObjectText(port));
        if (!created.empty())
            members.push_back(JsonMemberText("created", JsonEnclosed('[', created, ']', "\n  ")));
        std::vector<std::string> deleted;
        for (const std::uint64_t name : hba.deleted)
            deleted.push_back("{" + JsonMemberText("worldWidePortName", NameString(name)) + "}");
        if (!deleted.empty())
            members.push_back(JsonMemberText("deleted", JsonEnclosed('[', deleted, ']', "\n  ")));
        hbas.push_back(JsonEnclosed('{', members, '}', ""));
    }
    std::vector<std::string> names;
    for (const auto& [address, extension] : m_lastExtension)
        names.push_back(
            "{" +
            JsonMemberText("address", "\"0x" + Narrow(FormatWorldWideName(address | AddressTop)).substr(4) + '"') +
            ", " + JsonMemberText("lastExtension", std::to_string(extension)) + "}");
    std::vector<std::string> section;
    if (!hbas.empty())
        section.push_back(JsonMemberText("hbas", JsonEnclosed('[', hbas, ']', "\n ")));
    if (!names.empty())
        section.push_back(JsonMemberText("generatedNames", JsonEnclosed('[', names, ']', "\n ")));
    return JsonEnclosed('{', section, '}', "");
}

const VirtualPortState::Hba* VirtualPortState::Find(const COrlString& deviceId) const
{
    if (m_hbas.empty())
        return nullptr;
    const auto hba = m_hbas.find(FoldCase(deviceId));
    return hba == m_hbas.end() ? nullptr : &hba->second;
}

const VirtualPortState::Hba* VirtualPortState::CreatorOf(std::uint64_t portName) const
{
    for (const auto& [key, hba] : m_hbas)
        if (std::any_of(hba.created.begin(), hba.created.end(),
                        [&](const Port& port) { return port.portName == portName; }))
            return &hba;
    return nullptr;
}

VirtualPortState::Hba& VirtualPortState::Of(const COrlString& deviceId)
{
    Hba& hba = m_hbas[FoldCase(deviceId)];
    if (hba.deviceId.empty())
        hba.deviceId = deviceId;
    return hba;
}

void VirtualPortState::Tidy(const COrlString& deviceId)
{
    const auto hba = m_hbas.find(FoldCase(deviceId));
    if (hba != m_hbas.end() && hba->second.created.empty() && hba->second.deleted.empty())
        m_hbas.erase(hba);
}

ULONG VirtualPortState::LastExtension(std::uint64_t address, ULONG first) const
{
    const auto known = m_lastExtension.find(address);
    return known == m_lastExtension.end() ? first : known->second;
}

} // namespace orl
