// The records in which the adapter agent describes settings and adapters, and in which it is told new values.
//
// The order and the width of the fields and of the virtual operations are shared with agents that are built apart from
// the provider: append, never reorder.
#pragma once

#include "agent/OrlPointerArray.h"
#include "Common/Src/OrlString.h"

#include <windows.h>

#include <vector>

class ORL_SETTING_VAL_INT;

// One setting of an adapter, made by the agent and deleted by the provider through the virtual destructor.
class ORL_SETTING
{
public:
    // What GetType answers; an agent may have further kinds, which the provider lists nowhere.
    static constexpr ULONG EnumType = 0;
    static constexpr ULONG IntType = 2;

    ORL_SETTING() = default;
    ORL_SETTING(const ORL_SETTING&) = delete;
    ORL_SETTING& operator=(const ORL_SETTING&) = delete;

    virtual ULONG GetType() const = 0; // 0
    virtual ~ORL_SETTING() = default;  // 1

    // The agent's own; the provider does not call them.
    virtual void Reserved2() {}
    virtual void Reserved3() {}
    virtual void Reserved4() {}

    // Makes the value's number match its DisplayValue. A text that stands for no number is the agent's to refuse, here
    // by leaving the number or later when it is told to set it.
    virtual void ApplyDisplayValue(ORL_SETTING_VAL_INT* value) const = 0; // 5

    COrlString Caption; // what instances show as their name
    COrlString Name;    // what paths to the setting carry; GetSetting accepts it
    COrlString Description;
    BOOL Grouped = FALSE;
    USHORT GroupId = 0; // means something when Grouped is not 0
    ULONGLONG DetailId = 0;
    COrlString MiniHelp;
    COrlString DisplayName;
    COrlString RegistryKeyword; // the driver's
    BOOL Writable = FALSE;
    ULONG ExposeLevel = 0;
};

// A choice among listed values.
class ORL_SETTING_ENUM : public ORL_SETTING
{
public:
    ULONG GetType() const override { return EnumType; }

    LONG DefaultValue = 0;
    LONG CurrentValue = 0;
    COrlString CurrentDisplayValue;
    std::vector<LONG> PossibleValues;
    std::vector<COrlString> DescriptionMap; // the texts of PossibleValues, in the same order
};

// A number within limits. All numbers are in the setting's own unit.
class ORL_SETTING_INT : public ORL_SETTING
{
public:
    ULONG GetType() const override { return IntType; }

    LONG Base = 0; // of the number's notation: 10, 16
    LONG Max = 0;
    LONG Min = 0;
    LONG Step = 0;
    LONG Default = 0;
    LONG Current = 0;
    LONG Scale = 0;
    COrlString CurrentDisplayValue;
};

// A new value for a setting. Made and freed by the provider; the agent takes no ownership. There is no virtual
// destructor, and GetType is the table's only operation: agents have it so.
class ORL_SETTING_VAL
{
public:
    virtual ULONG GetType() const = 0;
};

// The value of a setting of either kind.
class ORL_SETTING_VAL_INT final : public ORL_SETTING_VAL
{
public:
    // Stands in DisplayValue when only the number counts.
    static constexpr const wchar_t* NoDisplayValue = L"TheDisplayValueIsNotSupportedForThisSetting";

    ULONG GetType() const override { return ORL_SETTING::IntType; }

    LONG Value = 0;
    COrlString DisplayValue;
};

struct ORL_ADAPTER_CAP
{
    ULONGLONG reservedNumber = 0; // carried, not published
    COrlString Name;
};

// One adapter. Only the name is published; the other texts are the agent's own.
struct ORL_ADAPTER
{
    COrlString reservedText1;
    COrlString Name;
    COrlString reservedText3;
    COrlString reservedText4;
    COrlString reservedText5;
    COrlString reservedText6;
    COrlPointerArray<ORL_ADAPTER_CAP*> Capabilities;
    COrlString reservedText8;
    COrlString reservedText9;
    COrlString reservedText10;
    COrlString reservedText11;
    COrlString reservedText12;
};
