// ScriptedAdapterAgent: an adapter agent that answers what a test wrote down and remembers how it was asked.
#pragma once

#include "agent/OrlAdapterAgent.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// What the settings of a test have in common: how many live, and what they were told.
struct SettingLog
{
    int live = 0;
    // What ApplyDisplayValue makes of every text, and the texts that it was given.
    LONG appliedNumber = 50;
    std::vector<std::wstring> applied;
};

// A setting of the record's kind. `Type` is what it says of itself.
template <typename Record>
class TestSetting final : public Record
{
public:
    explicit TestSetting(SettingLog& log) : m_log(log) { ++m_log.live; }
    TestSetting(const TestSetting&) = delete;
    TestSetting& operator=(const TestSetting&) = delete;
    ~TestSetting() override { --m_log.live; }

    void ApplyDisplayValue(ORL_SETTING_VAL_INT* value) const override
    {
        m_log.applied.push_back(value->DisplayValue);
        value->Value = m_log.appliedNumber;
    }

private:
    SettingLog& m_log;
};

// A setting of a kind that the provider does not know.
class OtherSetting : public ORL_SETTING
{
public:
    ULONG GetType() const override { return 1; }
};

using TestEnumSetting = TestSetting<ORL_SETTING_ENUM>;
using TestIntSetting = TestSetting<ORL_SETTING_INT>;
using TestOtherSetting = TestSetting<OtherSetting>;

// For one thread at a time.
class ScriptedAdapterAgent final : public OrlAdapterAgent
{
public:
    using MakeSetting = std::function<std::unique_ptr<ORL_SETTING>()>;

    SettingLog log;

    // The settings by adapter, made anew for every call; a null function stands for a null pointer in the list.
    // GetSetting finds them by Name. What it does not find it answers with `unknown`, handing out nothing.
    std::map<std::wstring, std::vector<MakeSetting>> settings;
    CResult unknown{1168, 5};
    // The name that GetAdapter fills in, also when it fails.
    COrlString adapterName = L"Adapter One";
    // What ValidateSettingModification tells.
    std::vector<WarningMessageObj> warnings;
    // What the operations answer, by name; success where nothing is written. EnumerateSettings may fail for one adapter
    // alone, under "EnumerateSettings(id)".
    std::map<std::wstring, CResult> answers;
    // Runs inside every operation, after the call was noted: throw from here.
    std::function<void()> inside;

    // The calls in order, each as "Operation(adapter id[, setting][, what else])"; a value as number/text.
    std::vector<std::wstring> calls;
    // The status record of each as it was received.
    std::vector<CResult> statuses;

    CResult GetSetting(const COrlString& id, const COrlString& name, ORL_SETTING*& setting, CResult& status) override
    {
        setting = nullptr;
        const CResult answer = Act(L"GetSetting", id, L", " + name, status);
        std::unique_ptr<ORL_SETTING> found = Find(id, name);
        if (found == nullptr && answer.ulErrCode == 0)
            return unknown;
        setting = found.release();
        return answer;
    }
    CResult SetSetting(const COrlString& id, const COrlString& name, ORL_SETTING_VAL_INT* value,
                       CResult& status) override
    {
        return Act(L"SetSetting", id, L", " + name + L", " + Shown(value), status);
    }
    CResult SetSettingToDefault(const COrlString& id, const COrlString& name, CResult& status) override
    {
        return Act(L"SetSettingToDefault", id, L", " + name, status);
    }
    CResult GetAdapter(const COrlString& id, ORL_ADAPTER& adapter, CResult& status, bool reserved) override
    {
        adapter.Name = adapterName;
        adapter.Capabilities.push_back(new ORL_ADAPTER_CAP{1, L"a capability"});
        return Act(L"GetAdapter", id, reserved ? L", true" : L", false", status);
    }
    CResult ValidateSettingModification(const COrlString& id, const COrlString& name, ORL_SETTING_VAL_INT* value,
                                        std::vector<WarningMessageObj>& told, CResult& status, ULONG set) override
    {
        told = warnings;
        return Act(L"ValidateSettingModification", id,
                   L", " + name + L", " + Shown(value) + L", " + std::to_wstring(set), status);
    }
    CResult EnumerateSettings(const COrlString& id, COrlPointerArray<ORL_SETTING*>& list, CResult& status) override
    {
        const CResult answer = Act(L"EnumerateSettings", id, L"", status);
        for (const MakeSetting& make : settings[id])
            list.Add(make ? make() : nullptr);
        const auto own = answers.find(L"EnumerateSettings(" + id + L")");
        return own != answers.end() ? own->second : answer;
    }

private:
    static std::wstring Shown(const ORL_SETTING_VAL_INT* value)
    {
        return value == nullptr ? L"null" : std::to_wstring(value->Value) + L"/" + value->DisplayValue;
    }

    std::unique_ptr<ORL_SETTING> Find(const std::wstring& id, const COrlString& name)
    {
        for (const MakeSetting& make : settings[id])
        {
            std::unique_ptr<ORL_SETTING> made = make ? make() : nullptr;
            if (made != nullptr && made->Name == name)
                return made;
        }
        return nullptr;
    }

    CResult Act(const std::wstring& operation, const std::wstring& id, const std::wstring& rest, CResult& status)
    {
        calls.push_back(operation + L"(" + id + rest + L")");
        statuses.push_back(status);
        // An agent may fill the record; nobody looks at it afterwards.
        status = {0xDEAD, 0xBEEF};
        if (inside)
            inside();
        const auto answer = answers.find(operation);
        return answer != answers.end() ? answer->second : CResult{0, 0};
    }
};
