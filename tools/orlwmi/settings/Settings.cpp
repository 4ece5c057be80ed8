// Reading and finding settings, and their values in words.
#include "tools/orlwmi/settings/Settings.h"

#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Integer.h"
#include "tools/orlwmi/NearestName.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Text.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <unordered_map>

namespace orl::client
{
namespace
{

// The setting whose values go by names of their own beside those that it lists.
constexpr const char* ProfileSetting = "PerformanceProfile";

std::vector<std::string> TextsOf(const Record& record, const char* name)
{
    std::vector<std::string> texts;
    const Value* value = Find(record, name);
    const auto* items = value == nullptr ? nullptr : std::get_if<Array>(value);
    for (size_t i = 0; items != nullptr && i < items->size(); ++i)
    {
        const auto* number = std::get_if<Number>(&(*items)[i]);
        const auto* text = std::get_if<std::string>(&(*items)[i]);
        texts.push_back(number != nullptr ? number->literal : text != nullptr ? *text : std::string());
    }
    return texts;
}

bool FlagOf(const Record& record, const char* name)
{
    const Value* value = Find(record, name);
    const auto* flag = value == nullptr ? nullptr : std::get_if<bool>(value);
    return flag != nullptr && *flag;
}

void Append(std::vector<Setting>& settings, const char* className, const AdapterChoice& choice, Session& session)
{
    Results results = InstancesOf(className, choice, session, "ParentId");
    while (const auto object = results.Next(session.deadline, session.output))
    {
        session.timing.CountObject();
        Setting setting = ReadSetting(ReadText(object, L"__RELPATH"), ReadRecord(object));
        if (choice.Has(setting.adapter))
        {
            settings.push_back(std::move(setting));
        }
    }
}

void SortByAdapter(std::vector<Setting>& settings)
{
    std::unordered_map<std::string, size_t> places;
    for (const auto& setting : settings)
    {
        places.try_emplace(Lower(setting.adapter), places.size());
    }
    std::stable_sort(settings.begin(), settings.end(),
                     [&places](const Setting& left, const Setting& right)
                     { return places[Lower(left.adapter)] < places[Lower(right.adapter)]; });
}

std::vector<Setting> Matching(const std::vector<Setting>& settings, const std::string& name,
                              std::string Setting::*property)
{
    std::vector<Setting> found;
    std::copy_if(settings.begin(), settings.end(), std::back_inserter(found),
                 [&](const Setting& setting) { return SameName(setting.*property, name); });
    return found;
}

std::string InBase(const std::string& literal, const std::string& base)
{
    const auto number = ParseInteger(literal);
    if (base != "16" || !number || number->magnitude > std::numeric_limits<std::uint32_t>::max())
    {
        return literal;
    }
    return (number->isNegative ? "-0x" : "0x") + Hex(static_cast<std::uint32_t>(number->magnitude), 1);
}

// Values are 32 bits wide; the setting would take the lower bits of a wider one.
bool IsValue(const Integer& number)
{
    constexpr std::uint64_t Most = std::numeric_limits<std::int32_t>::max();
    return number.magnitude <= Most + (number.isNegative ? 1 : 0);
}

} // namespace

Setting ReadSetting(const std::string& path, const Record& record)
{
    Setting setting;
    setting.path = path;
    setting.adapter = TextOf(record, "ParentId");
    setting.name = TextOf(record, "Caption");
    setting.displayName = TextOf(record, "DisplayName");
    setting.description = TextOf(record, "Description");
    setting.help = TextOf(record, "MiniHelp");
    setting.value = TextOf(record, "CurrentValue");
    setting.text = TextOf(record, "DisplayValue");
    setting.defaultValue = TextOf(record, "DefaultValue");
    setting.isWritable = FlagOf(record, "Writable");
    setting.isEnumeration = Find(record, "PossibleValues") != nullptr;
    const auto values = TextsOf(record, "PossibleValues");
    const auto texts = TextsOf(record, "DescriptionMap");
    for (size_t i = 0; i < values.size(); ++i)
    {
        setting.choices.emplace_back(values[i], i < texts.size() ? texts[i] : std::string());
    }
    setting.min = TextOf(record, "min");
    setting.max = TextOf(record, "max");
    setting.step = TextOf(record, "step");
    setting.base = TextOf(record, "base");
    return setting;
}

std::vector<Setting> ReadSettings(const AdapterChoice& choice, Session& session)
{
    std::vector<Setting> settings;
    Append(settings, "Zarn_FCOESettingEnum", choice, session);
    Append(settings, "Zarn_FCOESettingInt", choice, session);
    SortByAdapter(settings);
    return settings;
}

std::vector<Setting> FindSettings(const std::vector<Setting>& settings, const std::string& name)
{
    auto found = Matching(settings, name, &Setting::name);
    found = found.empty() ? Matching(settings, name, &Setting::displayName) : found;
    if (found.empty())
    {
        std::vector<std::string> names;
        std::transform(settings.begin(), settings.end(), std::back_inserter(names),
                       [](const Setting& setting) { return setting.name; });
        throw Failure(ExitCode::NotFound, "there is no setting " + name +
                                              (names.empty() ? "; the adapter has none"
                                                             : "; the nearest one is " + NearestName(name, names)));
    }
    return found;
}

std::string ValueText(const Setting& setting, const std::string& value)
{
    const auto choice = std::find_if(setting.choices.begin(), setting.choices.end(),
                                     [&value](const auto& known) { return known.first == value; });
    if (choice != setting.choices.end() && !choice->second.empty())
    {
        return choice->second;
    }
    return value == setting.value && !setting.text.empty() ? setting.text : InBase(value, setting.base);
}

std::string AllowedText(const Setting& setting)
{
    if (!setting.isEnumeration)
    {
        const bool hasStep = !setting.step.empty() && setting.step != "0" && setting.step != "1";
        return InBase(setting.min, setting.base) + " to " + InBase(setting.max, setting.base) +
               (hasStep ? " by " + InBase(setting.step, setting.base) : "");
    }
    std::string list;
    for (const auto& [value, text] : setting.choices)
    {
        list += (list.empty() ? "" : ", ") + (text.empty() ? value : text);
    }
    return list;
}

std::pair<std::string, std::string> NewValue(const Setting& setting, const std::string& value)
{
    const auto choice = std::find_if(setting.choices.begin(), setting.choices.end(),
                                     [&value](const auto& known) { return SameName(known.second, value); });
    if (choice != setting.choices.end())
    {
        return {"CurrentValue", choice->first};
    }
    if (const auto number = ParseInteger(value))
    {
        if (!IsValue(*number))
        {
            throw Failure(ExitCode::Usage,
                          "a value of " + setting.name + " is from -2147483648 to 2147483647, not " + value);
        }
        return {"CurrentValue", (number->isNegative ? "-" : "") + std::to_string(number->magnitude)};
    }
    if (setting.isEnumeration && !SameName(setting.name, ProfileSetting))
    {
        throw Failure(ExitCode::Usage,
                      "the setting " + setting.name + " takes " + AllowedText(setting) + ", not " + value);
    }
    return {"DisplayValue", Quoted(value)};
}

} // namespace orl::client
