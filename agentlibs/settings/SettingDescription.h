// SettingDescription: all that an agent knows of one adapter setting.
#pragma once

#include "agent/OrlSettings.h"
#include "Common/Src/OrlString.h"

#include <windows.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace orl
{

struct SettingChoice
{
    LONG value = 0;
    COrlString text; // differs from the others' by more than case
};

// What the fields of ORL_SETTING and its kinds hold, as a value that can be copied and changed.
struct SettingDescription
{
    enum class Kind
    {
        Enumeration,
        Integer,
        Other // of a type code that the provider serves nowhere
    };

    Kind kind = Kind::Integer;
    COrlString name;
    COrlString caption;
    COrlString description;
    COrlString displayName;
    COrlString miniHelp;
    COrlString registryKeyword;
    std::optional<USHORT> group;
    ULONGLONG detailId = 0;
    bool writable = true;
    ULONG exposeLevel = 0;

    LONG defaultValue = 0;
    LONG current = 0;

    std::vector<SettingChoice> choices; // of an enumeration, at least one

    LONG min = 0; // these of an integer
    LONG max = 0;
    LONG step = 1;  // at least 1; values are `min` and a multiple of it
    LONG base = 10; // of the notation: 10 or 16
    LONG scale = 1;

    ULONG typeCode = 1; // of another kind
};

// The record for the provider, which the caller owns.
std::unique_ptr<ORL_SETTING> MakeSetting(const SettingDescription& description);

// By name, or where none has it by caption, whatever the case; null when there is none.
const SettingDescription* FindSetting(const std::vector<SettingDescription>& settings, const COrlString& name);

// The number as clients see it: a choice's text; a number in the setting's notation, hexadecimal ones behind 0x.
COrlString TextOf(const SettingDescription& setting, LONG value);
// What a client's text stands for: a choice, whatever the case; a whole number in decimal or, behind 0x, hexadecimal,
// with or without a minus sign and blanks around it. Whether the setting can have the number is not looked at.
std::optional<LONG> NumberOf(const SettingDescription& setting, std::wstring_view text);

// Whether the setting can have the number.
bool Admits(const SettingDescription& setting, LONG value);
// Whether min and a multiple of the step is the number.
bool IsOnStep(const SettingDescription& setting, LONG value);

} // namespace orl
