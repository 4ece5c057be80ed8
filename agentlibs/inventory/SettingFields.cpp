// The list `settings` of an adapter.

#include "agentlibs/inventory/SettingFields.h"

#include "agentlibs/Text.h"
#include "agentlibs/inventory/FirstPlaces.h"

#include <limits>
#include <string>

namespace orl
{

namespace
{

constexpr LONG Lowest = std::numeric_limits<LONG>::min();
constexpr LONG Highest = std::numeric_limits<LONG>::max();

void RequireText(ObjectReader& in, std::string_view key, COrlString& text, const char* what)
{
    in.Text(key, text);
    in.Require(key);
    if (in.Has(key) && text.empty())
        in.Refuse(key, std::string(what) + " is empty");
}

void ReadChoices(ObjectReader& in, SettingDescription& setting)
{
    FirstPlaces values;
    FirstPlaces texts;
    in.ForEach("values",
               [&](ObjectReader& element)
               {
                   SettingChoice& choice = setting.choices.emplace_back();
                   element.Signed("value", choice.value, Lowest, Highest);
                   element.Require("value");
                   RequireText(element, "text", choice.text, "the text");
                   if (element.Has("value"))
                       values.Put(element, "value", std::to_wstring(choice.value), "choice has this value");
                   if (element.Has("text"))
                       texts.Put(element, "text", FoldCase(choice.text), "choice has this text");
               });
    in.Require("values");
    if (in.Has("values") && setting.choices.empty())
        in.Refuse("values", "a setting has at least one value");
}

void ReadLimits(ObjectReader& in, SettingDescription& setting)
{
    in.Signed("min", setting.min, Lowest, Highest);
    in.Require("min");
    in.Signed("max", setting.max, Lowest, Highest);
    in.Require("max");
    if (in.Has("min") && in.Has("max") && setting.max < setting.min)
        in.Refuse("max", "the highest value is below the lowest");
    in.Signed("step", setting.step, 1, Highest);
    in.Signed("base", setting.base, Lowest, Highest);
    if (setting.base != 10 && setting.base != 16)
        in.Refuse("base", "expected 10 or 16, found " + std::to_string(setting.base));
    in.Signed("scale", setting.scale, Lowest, Highest);
    COrlString unit;
    in.Text("unit", unit);
    if (!unit.empty())
        setting.displayName += L" (" + unit + L")";
}

void ReadValue(ObjectReader& in, std::string_view key, const SettingDescription& setting, LONG& value)
{
    in.Signed(key, value, Lowest, Highest);
    // Without its limits, the setting is refused for lack of them.
    const bool isLimited = in.Has("values") || (in.Has("min") && in.Has("max"));
    if (!in.Has(key) || !isLimited || Admits(setting, value))
        return;
    if (setting.kind == SettingDescription::Kind::Enumeration)
        in.Refuse(key, std::to_string(value) + " is none of the setting's values");
    if (value < setting.min || value > setting.max)
        in.Refuse(key, std::to_string(value) + " does not lie between " + std::to_string(setting.min) + " and " +
                           std::to_string(setting.max));
    in.Refuse(key, std::to_string(value) + " is not " + std::to_string(setting.min) + " plus a multiple of " +
                       std::to_string(setting.step));
}

void ReadTypeCode(ObjectReader& in, SettingDescription& setting)
{
    in.Number("typeCode", setting.typeCode);
    if (setting.typeCode == ORL_SETTING::EnumType || setting.typeCode == ORL_SETTING::IntType)
        in.Refuse("typeCode", "a setting of another kind has neither type code 0 nor 2");
}

void ReadGroup(ObjectReader& in, SettingDescription& setting)
{
    ULONG group = 0;
    in.Number("group", group, 0, 0xFFFF);
    if (in.Has("group"))
        setting.group = static_cast<USHORT>(group);
}

void ReadKind(ObjectReader& in, SettingDescription& setting)
{
    std::size_t kind = 0;
    in.Choice("kind", kind, {"enumeration", "integer", "other"});
    if (!in.Has("kind"))
        in.Refuse({}, "the key \"kind\" is missing; it decides which others there may be");
    setting.kind = static_cast<SettingDescription::Kind>(kind);
    if (setting.kind == SettingDescription::Kind::Other)
    {
        ReadTypeCode(in, setting);
        return;
    }
    if (setting.kind == SettingDescription::Kind::Enumeration)
        ReadChoices(in, setting);
    else
        ReadLimits(in, setting);
    ReadValue(in, "default", setting, setting.defaultValue);
    in.Require("default");
    setting.current = setting.defaultValue;
    ReadValue(in, "current", setting, setting.current);
}

void ReadSetting(ObjectReader& in, SettingDescription& setting)
{
    RequireText(in, "name", setting.name, "the name");
    setting.caption = setting.name;
    in.Text("caption", setting.caption);
    if (setting.caption.empty() && in.Has("caption"))
        in.Refuse("caption", "the caption is empty");
    setting.displayName = setting.caption;
    in.Text("displayName", setting.displayName);
    in.Text("description", setting.description);
    in.Text("miniHelp", setting.miniHelp);
    in.Text("registryKeyword", setting.registryKeyword);
    ReadGroup(in, setting);
    in.Number("detailId", setting.detailId);
    in.Boolean("writable", setting.writable);
    in.Number("exposeLevel", setting.exposeLevel);
    ReadKind(in, setting);
}

} // namespace

void ReadSettings(ObjectReader& hba, std::vector<SettingDescription>& settings)
{
    // A setting is found by either, so no two may share one.
    FirstPlaces names;
    hba.ForEach("settings",
                [&](ObjectReader& in)
                {
                    SettingDescription& setting = settings.emplace_back();
                    ReadSetting(in, setting);
                    const std::wstring name = FoldCase(setting.name);
                    const std::wstring caption = FoldCase(setting.caption);
                    if (in.Has("name"))
                        names.Put(in, "name", name, "setting has this name or caption");
                    if (in.Has("caption") && caption != name)
                        names.Put(in, "caption", caption, "setting has this name or caption");
                });
}

} // namespace orl
