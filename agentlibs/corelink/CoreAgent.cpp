// CoreAgent: adapters without settings.

#include "agentlibs/corelink/CoreAgent.h"

#include "Common/Src/OrlDebug.h"

namespace orl
{

namespace
{

// Traces the operation and answers for it.
CResult Answer(const wchar_t* operation, ULONG code)
{
    const CResult result{code, 0};
    COrlTraceScope scope(operation);
    scope.WatchRecord(&result);
    return result;
}

} // namespace

CResult CoreAgent::GetSetting(const COrlString&, const COrlString&, ORL_SETTING*& setting, CResult&)
{
    setting = nullptr;
    return Answer(L"CoreAgent::GetSetting", NotFound);
}

CResult CoreAgent::SetSetting(const COrlString&, const COrlString&, ORL_SETTING_VAL_INT*, CResult&)
{
    return Answer(L"CoreAgent::SetSetting", NotFound);
}

CResult CoreAgent::SetSettingToDefault(const COrlString&, const COrlString&, CResult&)
{
    return Answer(L"CoreAgent::SetSettingToDefault", NotFound);
}

CResult CoreAgent::GetAdapter(const COrlString&, ORL_ADAPTER&, CResult&, bool)
{
    return Answer(L"CoreAgent::GetAdapter", NotFound);
}

CResult CoreAgent::ValidateSettingModification(const COrlString&, const COrlString&, ORL_SETTING_VAL_INT*,
                                               std::vector<WarningMessageObj>&, CResult&, ULONG)
{
    return Answer(L"CoreAgent::ValidateSettingModification", NotFound);
}

CResult CoreAgent::EnumerateSettings(const COrlString&, COrlPointerArray<ORL_SETTING*>&, CResult&)
{
    return Answer(L"CoreAgent::EnumerateSettings", 0);
}

} // namespace orl
