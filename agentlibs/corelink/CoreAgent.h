// CoreAgent: the adapter agent that the provider gets.
#pragma once

#include "agent/OrlAdapterAgent.h"

namespace orl
{

// Every adapter is empty: it has no settings, so the list of them is filled with nothing, and what names a setting
// finds none. The status records are left alone; what an operation answers says how it went.
class CoreAgent final : public OrlAdapterAgent
{
public:
    // What an operation answers that names an adapter or a setting that there is not (the system's "element not
    // found").
    static constexpr ULONG NotFound = ERROR_NOT_FOUND;

    CResult GetSetting(const COrlString& adapterId, const COrlString& settingName, ORL_SETTING*& setting,
                       CResult& status) override;
    CResult SetSetting(const COrlString& adapterId, const COrlString& settingName, ORL_SETTING_VAL_INT* value,
                       CResult& status) override;
    CResult SetSettingToDefault(const COrlString& adapterId, const COrlString& settingName, CResult& status) override;
    CResult GetAdapter(const COrlString& adapterId, ORL_ADAPTER& adapter, CResult& status, bool reserved) override;
    CResult ValidateSettingModification(const COrlString& adapterId, const COrlString& settingName,
                                        ORL_SETTING_VAL_INT* value, std::vector<WarningMessageObj>& warnings,
                                        CResult& status, ULONG setValuesOnNoError) override;
    CResult EnumerateSettings(const COrlString& adapterId, COrlPointerArray<ORL_SETTING*>& settings,
                              CResult& status) override;
};

} // namespace orl
