// Which new values a setting takes.

#include "agentlibs/settings/SettingRules.h"

#include "agentlibs/settings/SettingMessages.h"

#include <string>

namespace orl
{

namespace
{

[[noreturn]] void RefuseValue(SettingMessage message, const std::vector<std::wstring>& inserts)
{
    throw SettingRefusal(ERROR_INVALID_PARAMETER, message, inserts);
}

// "Disabled (0), Enabled (1)"
std::wstring AllChoices(const SettingDescription& setting)
{
    std::wstring list;
    for (const SettingChoice& choice : setting.choices)
        list += (list.empty() ? L"" : L", ") + choice.text + L" (" + std::to_wstring(choice.value) + L")";
    return list;
}

[[noreturn]] void RefuseChoice(const SettingDescription& setting, const std::wstring& asked)
{
    RefuseValue(SettingMessage::UnknownChoice, {setting.name, asked, AllChoices(setting)});
}

LONG RequireText(const SettingDescription& setting, const COrlString& text)
{
    if (const auto number = NumberOf(setting, text))
        return *number;
    if (setting.kind == SettingDescription::Kind::Enumeration)
        RefuseChoice(setting, text);
    RefuseValue(SettingMessage::NoNumber, {setting.name, text});
}

} // namespace

void RequireWritable(const SettingDescription& setting, const COrlString& adapterId)
{
    if (!setting.writable || setting.kind == SettingDescription::Kind::Other)
        throw SettingRefusal(ERROR_ACCESS_DENIED, SettingMessage::ReadOnly, {setting.name, adapterId});
}

LONG RequireValue(const SettingDescription& setting, const ORL_SETTING_VAL_INT& value)
{
    const bool hasText = !value.DisplayValue.empty() && value.DisplayValue != ORL_SETTING_VAL_INT::NoDisplayValue;
    const LONG number = hasText ? RequireText(setting, value.DisplayValue) : value.Value;
    if (Admits(setting, number))
        return number;
    const std::wstring asked = TextOf(setting, number);
    const std::wstring lowest = TextOf(setting, setting.min);
    if (setting.kind == SettingDescription::Kind::Enumeration)
        RefuseChoice(setting, asked);
    if (number < setting.min || number > setting.max)
        RefuseValue(SettingMessage::OutOfRange, {setting.name, asked, lowest, TextOf(setting, setting.max)});
    RefuseValue(SettingMessage::NotAStep, {setting.name, asked, lowest, TextOf(setting, setting.step)});
}

} // namespace orl
