// SettingDescription: its record, and the way between numbers and texts.

#include "agentlibs/settings/SettingDescription.h"

#include "agentlibs/Text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <utility>

namespace orl
{

namespace
{

// The record of any kind, with what it takes to read a client's text.
template <typename Record>
class DescribedSetting final : public Record
{
public:
    explicit DescribedSetting(const SettingDescription& description) : m_description(description) {}

    // A text that stands for nothing leaves the number; it is refused when the value comes back to be set.
    void ApplyDisplayValue(ORL_SETTING_VAL_INT* value) const override
    {
        if (value == nullptr)
            return;
        if (const auto number = NumberOf(m_description, value->DisplayValue))
            value->Value = *number;
    }

protected:
    const SettingDescription m_description;
};

class OtherRecord : public ORL_SETTING
{
public:
    ULONG GetType() const override { return typeCode; }

    ULONG typeCode = 0;
};

void PutKind(const SettingDescription& from, ORL_SETTING_ENUM& record)
{
    record.DefaultValue = from.defaultValue;
    record.CurrentValue = from.current;
    record.CurrentDisplayValue = TextOf(from, from.current);
    for (const SettingChoice& choice : from.choices)
    {
        record.PossibleValues.push_back(choice.value);
        record.DescriptionMap.push_back(choice.text);
    }
}

void PutKind(const SettingDescription& from, ORL_SETTING_INT& record)
{
    record.Base = from.base;
    record.Max = from.max;
    record.Min = from.min;
    record.Step = from.step;
    record.Default = from.defaultValue;
    record.Current = from.current;
    record.Scale = from.scale;
    record.CurrentDisplayValue = TextOf(from, from.current);
}

void PutKind(const SettingDescription& from, OtherRecord& record)
{
    record.typeCode = from.typeCode;
}

template <typename Record>
std::unique_ptr<ORL_SETTING> Make(const SettingDescription& from)
{
    auto setting = std::make_unique<DescribedSetting<Record>>(from);
    setting->Caption = from.caption;
    setting->Name = from.name;
    setting->Description = from.description;
    setting->Grouped = from.group ? TRUE : FALSE;
    setting->GroupId = from.group.value_or(0);
    setting->DetailId = from.detailId;
    setting->MiniHelp = from.miniHelp;
    setting->DisplayName = from.displayName;
    setting->RegistryKeyword = from.registryKeyword;
    setting->Writable = from.writable ? TRUE : FALSE;
    setting->ExposeLevel = from.exposeLevel;
    PutKind(from, static_cast<Record&>(*setting));
    return setting;
}

std::optional<LONG> ParseNumber(std::wstring_view text)
{
    constexpr std::wstring_view blanks = L" \t";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    text = text.substr(0, text.find_last_not_of(blanks) + 1);
    const bool negative = text.starts_with(L'-');
    if (negative)
        text.remove_prefix(1);
    const bool hexadecimal = text.starts_with(L"0x") || text.starts_with(L"0X");
    if (hexadecimal)
        text.remove_prefix(2);

    const std::string digits = Narrow(text);
    const char* const end = digits.data() + digits.size();
    ULONGLONG number = 0;
    const auto read = std::from_chars(digits.data(), end, number, hexadecimal ? 16 : 10);
    const ULONGLONG most = ULONGLONG{std::numeric_limits<LONG>::max()} + (negative ? 1 : 0);
    if (read.ec != std::errc() || read.ptr != end || number > most)
        return std::nullopt;
    const auto magnitude = static_cast<LONGLONG>(number);
    return static_cast<LONG>(negative ? -magnitude : magnitude);
}

std::wstring Hexadecimal(LONG value)
{
    char digits[16];
    const LONGLONG wide = value;
    const auto written = std::to_chars(std::begin(digits), std::end(digits), wide < 0 ? -wide : wide, 16);
    return (wide < 0 ? L"-0x" : L"0x") + std::wstring(std::begin(digits), written.ptr);
}

} // namespace

std::unique_ptr<ORL_SETTING> MakeSetting(const SettingDescription& description)
{
    switch (description.kind)
    {
    case SettingDescription::Kind::Enumeration:
        return Make<ORL_SETTING_ENUM>(description);
    case SettingDescription::Kind::Integer:
        return Make<ORL_SETTING_INT>(description);
    case SettingDescription::Kind::Other:
        break;
    }
    return Make<OtherRecord>(description);
}

const SettingDescription* FindSetting(const std::vector<SettingDescription>& settings, const COrlString& name)
{
    const std::wstring key = FoldCase(name);
    for (const COrlString SettingDescription::*field : {&SettingDescription::name, &SettingDescription::caption})
    {
        const auto found =
            std::find_if(settings.begin(), settings.end(),
                         [&](const SettingDescription& setting) { return FoldCase(setting.*field) == key; });
        if (found != settings.end())
            return &*found;
    }
    return nullptr;
}

COrlString TextOf(const SettingDescription& setting, LONG value)
{
    if (setting.kind == SettingDescription::Kind::Enumeration)
    {
        for (const SettingChoice& choice : setting.choices)
            if (choice.value == value)
                return choice.text;
    }
    return setting.base == 16 ? Hexadecimal(value) : std::to_wstring(value);
}

std::optional<LONG> NumberOf(const SettingDescription& setting, std::wstring_view text)
{
    if (setting.kind == SettingDescription::Kind::Integer)
        return ParseNumber(text);
    const std::wstring key = FoldCase(text);
    for (const SettingChoice& choice : setting.choices)
        if (FoldCase(choice.text) == key)
            return choice.value;
    return std::nullopt;
}

bool IsOnStep(const SettingDescription& setting, LONG value)
{
    return (LONGLONG{value} - setting.min) % setting.step == 0;
}

bool Admits(const SettingDescription& setting, LONG value)
{
    switch (setting.kind)
    {
    case SettingDescription::Kind::Enumeration:
        return std::any_of(setting.choices.begin(), setting.choices.end(),
                           [&](const SettingChoice& choice) { return choice.value == value; });
    case SettingDescription::Kind::Integer:
        return value >= setting.min && value <= setting.max && IsOnStep(setting, value);
    case SettingDescription::Kind::Other:
        break;
    }
    return false;
}

} // namespace orl
