// CoreAgent: the adapter agent that the provider gets, around one back end.
#pragma once

#include "agent/OrlAdapterAgent.h"
#include "agentlibs/corelink/SettingBackend.h"

#include <memory>

namespace orl
{

// Traces every operation and turns what a back end throws into what the provider understands: the code in the answer
// and an Error line with the text in the trace. The status records are left alone. Only a FaultException leaves it.
//
// A setting is found by its name or its caption, whatever the case. Its new value is checked before it is written:
//
// - SetSetting and SetSettingToDefault answer the code of the refusal. They have no place for a text: the trace has it.
// - ValidateSettingModification answers 0 and adds the refusal as a warning of the error kind, so that the user reads
//   it. With setValuesOnNoError not 0 it writes a value that passes; a write that is then refused is told in the same
//   way. Exactly when the answer is 0 and no warning is of the error kind, the setting has the value.
//
// As safe for concurrent calls as the back end is.
class CoreAgent final : public OrlAdapterAgent
{
public:
    explicit CoreAgent(std::unique_ptr<SettingBackend> backend) : m_backend(std::move(backend)) {}

    BackendStatus Status() { return m_backend->Status(); }

    // Null when there is no such setting.
    CResult GetSetting(const COrlString& adapterId, const COrlString& settingName, ORL_SETTING*& setting,
                       CResult& status) override;
    CResult SetSetting(const COrlString& adapterId, const COrlString& settingName, ORL_SETTING_VAL_INT* value,
                       CResult& status) override;
    CResult SetSettingToDefault(const COrlString& adapterId, const COrlString& settingName, CResult& status) override;
    // Fills in the name alone.
    CResult GetAdapter(const COrlString& adapterId, ORL_ADAPTER& adapter, CResult& status, bool reserved) override;
    CResult ValidateSettingModification(const COrlString& adapterId, const COrlString& settingName,
                                        ORL_SETTING_VAL_INT* value, std::vector<WarningMessageObj>& warnings,
                                        CResult& status, ULONG setValuesOnNoError) override;
    CResult EnumerateSettings(const COrlString& adapterId, COrlPointerArray<ORL_SETTING*>& settings,
                              CResult& status) override;

private:
    const std::unique_ptr<SettingBackend> m_backend;
};

} // namespace orl
