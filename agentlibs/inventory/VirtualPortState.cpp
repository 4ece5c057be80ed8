// VirtualPortState: from and to JSON.

#include "agentlibs/inventory/VirtualPortState.h"

#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"
#include "agentlibs/inventory/ObjectReader.h"

#include <algorithm>
#include <unordered_map>

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

std::string Member(const char* key, const std::string& value)
{
    return '"' + std::string(key) + "\": " + value;
}

std::string Enclosed(char open, const std::vector<std::string>& parts, char close, const char* before)
{
    std::string text(1, open);
    for (const std::string& part : parts)
        text.append(text.size() == 1 ? "" : *before == '\0' ? ", " : ",").append(before).append(part);
    return text + close;
}

std::string ObjectText(const VirtualPortState::Port& port)
{
    std::string text = "{" + Member("worldWidePortName", NameString(port.portName));
    if (port.nodeName != 0)
        text += ", " + Member("worldWideNodeName", NameString(port.nodeName));
    return text + ", " + Member("fcid", std::to_string(port.fcid)) + "}";
}

// What must not stand twice in the section, and where it stands the first time.
class Places
{
public:
    void Put(ObjectReader& in, std::string_view key, const std::wstring& value, const char* what)
    {
        const auto [known, isNew] = m_places.emplace(value, std::string());
        if (!isNew)
            in.Refuse(key, std::string("another ") + what + ", at " + known->second);
        known->second = in.LineAndColumn(key);
    }

private:
    std::unordered_map<std::wstring, std::string> m_places;
};

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
    Places hbas;
    Places created;
    Places addresses;
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

// Lists and objects are put together by hand: the JSON library's own values need memory to be destroyed, and end the
// process when there is none.
std::string VirtualPortState::Text() const
{
    std::vector<std::string> hbas;
    for (const auto& [key, hba] : m_hbas)
    {
        std::vector<std::string> members = {Member("deviceId", JsonString(Narrow(hba.deviceId)))};
        std::vector<std::string> created;
        for (const Port& port : hba.created)
            created.push_back(ObjectText(port));
        if (!created.empty())
            members.push_back(Member("created", Enclosed('[', created, ']', "\n  ")));
        std::vector<std::string> deleted;
        for (const std::uint64_t name : hba.deleted)
            deleted.push_back("{" + Member("worldWidePortName", NameString(name)) + "}");
        if (!deleted.empty())
            members.push_back(Member("deleted", Enclosed('[', deleted, ']', "\n  ")));
        hbas.push_back(Enclosed('{', members, '}', ""));
    }
    std::vector<std::string> names;
    for (const auto& [address, extension] : m_lastExtension)
        names.push_back("{" +
                        Member("address", "\"0x" + Narrow(FormatWorldWideName(address | AddressTop)).substr(4) + '"') +
                        ", " + Member("lastExtension", std::to_string(extension)) + "}");
    std::vector<std::string> section;
    if (!hbas.empty())
        section.push_back(Member("hbas", Enclosed('[', hbas, ']', "\n ")));
    if (!names.empty())
        section.push_back(Member("generatedNames", Enclosed('[', names, ']', "\n ")));
    return Enclosed('{', section, '}', "");
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
