// CoreAgent: the operations on any back end's adapters.

#include "agentlibs/corelink/CoreAgent.h"

#include "agentlibs/AgentCall.h"
#include "agentlibs/settings/SettingMessages.h"
#include "agentlibs/settings/SettingRules.h"
#include "Common/Src/OrlDebug.h"

namespace orl
{

namespace
{

// Runs one operation; see CallBackend.
template <typename Call>
CResult Answer(const wchar_t* operation, std::vector<WarningMessageObj>* warnings, Call&& call)
{
    CResult result;
    COrlTraceScope scope(operation);
    scope.WatchRecord(&result);
    result.ulErrCode = CallBackend({L"Src\\CoreAgent", operation}, warnings, call);
    return result;
}

SettingDescription RequireSetting(const SettingAdapter& adapter, const COrlString& adapterId, const COrlString& name)
{
    const std::vector<SettingDescription> settings = adapter.Settings();
    if (const SettingDescription* setting = FindSetting(settings, name))
        return *setting;
    throw BackendError(ERROR_NOT_FOUND, TextOf(SettingMessage::UnknownSetting, {name, adapterId}));
}

const ORL_SETTING_VAL_INT& RequireGiven(const ORL_SETTING_VAL_INT* value)
{
    if (value == nullptr)
        throw BackendError(ERROR_INVALID_PARAMETER, L"no value was given");
    return *value;
}

// One change: what is asked of a setting, checked and then written.
class Change
{
public:
    Change(SettingBackend& backend, Operation operation, const COrlString& adapterId, const COrlString& name)
        : m_adapterId(adapterId), m_adapter(backend.Open(operation, adapterId)),
          m_setting(RequireSetting(*m_adapter, adapterId, name))
    {
    }

    void AskFor(const ORL_SETTING_VAL_INT& value)
    {
        RequireWritable(m_setting, m_adapterId);
        Ask(RequireValue(m_setting, value));
    }
    void AskForDefault()
    {
        RequireWritable(m_setting, m_adapterId);
        Ask(m_setting.defaultValue);
    }
    void Write() { m_adapter->Write(m_setting, m_value); }

    const std::vector<WarningMessageObj>& Advice() const { return m_advice; }
    // Of a change that has no list for it.
    void TraceAdvice() const
    {
        for (const WarningMessageObj& advice : m_advice)
            g_OrlDebug.Print(L"%s", advice.strMessage.c_str());
    }

private:
    void Ask(LONG value)
    {
        m_value = value;
        m_adapter->Check(m_setting, value, m_advice);
    }

    const COrlString& m_adapterId;
    const std::unique_ptr<SettingAdapter> m_adapter;
    const SettingDescription m_setting;
    LONG m_value = 0;
    std::vector<WarningMessageObj> m_advice;
};

} // namespace

CResult CoreAgent::GetSetting(const COrlString& adapterId, const COrlString& settingName, ORL_SETTING*& setting,
                              CResult&)
{
    setting = nullptr;
    return Answer(L"CoreAgent::GetSetting", nullptr,
                  [&]
                  {
                      const auto adapter = m_backend->Open(Operation::GetSetting, adapterId);
                      setting = MakeSetting(RequireSetting(*adapter, adapterId, settingName)).release();
                  });
}

CResult CoreAgent::SetSetting(const COrlString& adapterId, const COrlString& settingName, ORL_SETTING_VAL_INT* value,
                              CResult&)
{
    return Answer(L"CoreAgent::SetSetting", nullptr,
                  [&]
                  {
                      Change change(*m_backend, Operation::SetSetting, adapterId, settingName);
                      change.AskFor(RequireGiven(value));
                      change.Write();
                      change.TraceAdvice();
                  });
}

CResult CoreAgent::SetSettingToDefault(const COrlString& adapterId, const COrlString& settingName, CResult&)
{
    return Answer(L"CoreAgent::SetSettingToDefault", nullptr,
                  [&]
                  {
                      Change change(*m_backend, Operation::SetSettingToDefault, adapterId, settingName);
                      change.AskForDefault();
                      change.Write();
                      change.TraceAdvice();
                  });
}

CResult CoreAgent::GetAdapter(const COrlString& adapterId, ORL_ADAPTER& adapter, CResult&, bool)
{
    return Answer(L"CoreAgent::GetAdapter", nullptr,
                  [&] { adapter.Name = m_backend->Open(Operation::GetAdapter, adapterId)->Name(); });
}

// What is told of a change is made ready before it is written, so that want of memory undoes nothing.
CResult CoreAgent::ValidateSettingModification(const COrlString& adapterId, const COrlString& settingName,
                                               ORL_SETTING_VAL_INT* value, std::vector<WarningMessageObj>& warnings,
                                               CResult&, ULONG setValuesOnNoError)
{
    constexpr const wchar_t* operation = L"CoreAgent::ValidateSettingModification";
    return Answer(operation, &warnings,
                  [&]
                  {
                      Change change(*m_backend, Operation::ValidateSettingModification, adapterId, settingName);
                      std::vector<WarningMessageObj> told = warnings;
                      try
                      {
                          change.AskFor(RequireGiven(value));
                          told.insert(told.end(), change.Advice().begin(), change.Advice().end());
                          if (setValuesOnNoError != 0)
                              change.Write();
                          warnings.swap(told);
                      }
                      catch (const SettingRefusal& refusal)
                      {
                          g_OrlDebug.Print(L"%s refused: %s", operation, refusal.Text().c_str());
                          warnings.push_back(refusal.Warning());
                      }
                  });
}

CResult CoreAgent::EnumerateSettings(const COrlString& adapterId, COrlPointerArray<ORL_SETTING*>& settings, CResult&)
{
    return Answer(L"CoreAgent::EnumerateSettings", nullptr,
                  [&]
                  {
                      const auto adapter = m_backend->Open(Operation::EnumerateSettings, adapterId);
                      for (const SettingDescription& setting : adapter->Settings())
                          settings.Add(MakeSetting(setting));
                  });
}

} // namespace orl
