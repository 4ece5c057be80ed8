// SettingState: from and to JSON, and into descriptions.

#include "agentlibs/inventory/SettingState.h"

#include "agentlibs/Text.h"
#include "agentlibs/inventory/FirstPlaces.h"
#include "agentlibs/inventory/JsonParts.h"
#include "agentlibs/inventory/ObjectReader.h"

#include <limits>

namespace orl
{

namespace
{

void ReadKey(ObjectReader& in, std::string_view key, COrlString& text, FirstPlaces& places, const char* what)
{
    in.Text(key, text);
    in.Require(key);
    if (in.Has(key))
        places.Put(in, key, FoldCase(text), what);
}

} // namespace

SettingState SettingState::Read(const StateDocument& document)
{
    SettingState state;
    const JsonValue* section = document.Section(Section);
    if (section == nullptr)
        return state;
    const JsonPlace root;
    const JsonPlace place{&root, Section, 0};
    ObjectReader in(document.Source(), place, *section);
    FirstPlaces hbas;
    in.ForEach("hbas",
               [&](ObjectReader& element)
               {
                   COrlString deviceId;
                   ReadKey(element, "deviceId", deviceId, hbas, "entry is of this device id");
                   FirstPlaces names;
                   element.ForEach("values",
                                   [&](ObjectReader& item)
                                   {
                                       COrlString name;
                                       ReadKey(item, "name", name, names, "value is of this setting");
                                       LONG value = 0;
                                       item.Signed("value", value, std::numeric_limits<LONG>::min(),
                                                   std::numeric_limits<LONG>::max());
                                       item.Require("value");
                                       state.Set(deviceId, name, value);
                                   });
               });
    in.Finish();
    return state;
}

std::string SettingState::Text() const
{
    std::vector<std::string> hbas;
    for (const auto& [key, hba] : m_hbas)
    {
        std::vector<std::string> values;
        for (const auto& [name, value] : hba.values)
            values.push_back("{" + JsonMemberText("name", JsonString(Narrow(value.name))) + ", " +
                             JsonMemberText("value", std::to_string(value.value)) + "}");
        hbas.push_back("{" + JsonMemberText("deviceId", JsonString(Narrow(hba.deviceId))) + ", " +
                       JsonMemberText("values", JsonEnclosed('[', values, ']', "\n  ")) + "}");
    }
    if (hbas.empty())
        return "{}";
    return "{" + JsonMemberText("hbas", JsonEnclosed('[', hbas, ']', "\n ")) + "}";
}

void SettingState::ApplyTo(const COrlString& deviceId, std::vector<SettingDescription>& settings) const
{
    const auto hba = m_hbas.find(FoldCase(deviceId));
    if (hba == m_hbas.end())
        return;
    for (SettingDescription& setting : settings)
    {
        const auto changed = hba->second.values.find(FoldCase(setting.name));
        if (changed != hba->second.values.end() && Admits(setting, changed->second.value))
            setting.current = changed->second.value;
    }
}

bool SettingState::Set(const COrlString& deviceId, const COrlString& name, std::optional<LONG> value)
{
    const std::wstring hbaKey = FoldCase(deviceId);
    const std::wstring key = FoldCase(name);
    const auto hba = m_hbas.find(hbaKey);
    const bool isKnown = hba != m_hbas.end() && hba->second.values.contains(key);
    if (!value)
    {
        if (!isKnown)
            return false;
        hba->second.values.erase(key);
        if (hba->second.values.empty())
            m_hbas.erase(hba);
        return true;
    }
    if (isKnown && hba->second.values.at(key).value == *value)
        return false;
    Hba& changed = m_hbas[hbaKey];
    if (changed.deviceId.empty())
        changed.deviceId = deviceId;
    changed.values[key] = {name, *value};
    return true;
}

} // namespace orl
