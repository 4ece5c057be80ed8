// What tests of settings ask of an adapter agent, and how they write down its answers.
#pragma once

#include "agent/OrlAdapterAgent.h"
#include "tests/support/TestRegistry.h"
#include "winport/portable/Utf8.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orl::test
{

inline ORL_SETTING_VAL_INT ValueOf(LONG number, const wchar_t* text = L"")
{
    ORL_SETTING_VAL_INT value;
    value.Value = number;
    value.DisplayValue = text;
    return value;
}

// Every field on one line: "int Mtu|caption|description|group|detail|help|display name|keyword|writable|level|" and
// then what the kind has. A group of 7 is "7", none "-".
inline std::string LineOf(const ORL_SETTING& setting)
{
    const auto list = [](std::initializer_list<std::wstring> fields)
    {
        std::wstring line;
        for (const std::wstring& field : fields)
            line += (line.empty() ? L"" : L"|") + field;
        return line;
    };
    const auto number = [](auto value) { return std::to_wstring(value); };
    std::wstring line = list({setting.Name, setting.Caption, setting.Description,
                              setting.Grouped != FALSE ? number(setting.GroupId) : L"-", number(setting.DetailId),
                              setting.MiniHelp, setting.DisplayName, setting.RegistryKeyword,
                              setting.Writable != FALSE ? L"writable" : L"fixed", number(setting.ExposeLevel)});
    if (const auto* record = dynamic_cast<const ORL_SETTING_INT*>(&setting))
    {
        EXPECT_EQ(setting.GetType(), 2u);
        line = L"int " + line + L"|" +
               list({number(record->Current), record->CurrentDisplayValue, number(record->Default), number(record->Min),
                     number(record->Max), number(record->Step), number(record->Base), number(record->Scale)});
    }
    else if (const auto* choice = dynamic_cast<const ORL_SETTING_ENUM*>(&setting))
    {
        EXPECT_EQ(setting.GetType(), 0u);
        line = L"enum " + line + L"|" +
               list({number(choice->CurrentValue), choice->CurrentDisplayValue, number(choice->DefaultValue)}) + L"|";
        EXPECT_EQ(choice->PossibleValues.size(), choice->DescriptionMap.size());
        for (std::size_t i = 0; i < choice->PossibleValues.size(); ++i)
            line += (i == 0 ? L"" : L", ") + number(choice->PossibleValues[i]) + L"=" + choice->DescriptionMap[i];
    }
    else
        line = L"type " + number(setting.GetType()) + L" " + line;
    return ToUtf8(line);
}

class SettingFixture : public testing::Test
{
protected:
    SettingFixture() { m_registry.SetText(ProductKey, L"ResourcePath", FromUtf8(ORL_BIN_DIR)); }

    // The setting, null when it is not found; the code is kept.
    std::unique_ptr<ORL_SETTING> Get(OrlAdapterAgent& agent, const wchar_t* adapter, const wchar_t* name)
    {
        ORL_SETTING* setting = reinterpret_cast<ORL_SETTING*>(&m_status);
        m_code = agent.GetSetting(adapter, name, setting, m_status).ulErrCode;
        EXPECT_EQ(setting == nullptr, m_code != 0);
        return std::unique_ptr<ORL_SETTING>(setting);
    }
    // Its current text, or the code.
    std::string Current(OrlAdapterAgent& agent, const wchar_t* adapter, const wchar_t* name)
    {
        const auto setting = Get(agent, adapter, name);
        if (const auto* record = dynamic_cast<const ORL_SETTING_INT*>(setting.get()))
            return ToUtf8(record->CurrentDisplayValue);
        if (const auto* record = dynamic_cast<const ORL_SETTING_ENUM*>(setting.get()))
            return ToUtf8(record->CurrentDisplayValue);
        return std::to_string(m_code);
    }
    std::vector<std::string> Lines(OrlAdapterAgent& agent, const wchar_t* adapter)
    {
        COrlPointerArray<ORL_SETTING*> settings;
        m_code = agent.EnumerateSettings(adapter, settings, m_status).ulErrCode;
        std::vector<std::string> lines;
        for (const ORL_SETTING* setting : settings)
            lines.push_back(LineOf(*setting));
        return lines;
    }
    ULONG Set(OrlAdapterAgent& agent, const wchar_t* adapter, const wchar_t* name, LONG number,
              const wchar_t* text = L"")
    {
        ORL_SETTING_VAL_INT value = ValueOf(number, text);
        return agent.SetSetting(adapter, name, &value, m_status).ulErrCode;
    }
    ULONG Reset(OrlAdapterAgent& agent, const wchar_t* adapter, const wchar_t* name)
    {
        return agent.SetSettingToDefault(adapter, name, m_status).ulErrCode;
    }
    // "CODE" and the warnings behind it, each as "; error NUMBER: TEXT" or "; advice ...".
    std::string Ask(OrlAdapterAgent& agent, const wchar_t* adapter, const wchar_t* name, LONG number,
                    const wchar_t* text = L"", bool set = false)
    {
        ORL_SETTING_VAL_INT value = ValueOf(number, text);
        std::vector<WarningMessageObj> warnings;
        const CResult result =
            agent.ValidateSettingModification(adapter, name, &value, warnings, m_status, set ? 1 : 0);
        std::string answer = std::to_string(result.ulErrCode);
        for (const WarningMessageObj& warning : warnings)
            answer += (warning.ulKind == WarningMessageObj::KindError ? "; error " : "; advice ") +
                      std::to_string(warning.ulMessageId) + ": " + ToUtf8(warning.strMessage);
        return answer;
    }

    TestRegistry m_registry;
    CResult m_status{77, 88};
    ULONG m_code = 0; // of the last GetSetting or EnumerateSettings
};

} // namespace orl::test
