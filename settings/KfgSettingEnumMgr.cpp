// CKfgSettingEnumMgr: what is a choice's own.

#include "settings/KfgSettingEnumMgr.h"

#include "Common/Src/OrlDebug.h"
#include "settings/RequestedValue.h"

namespace
{

// The names of the performance profiles. They are the same in every language and are not the texts that the agent
// shows, so the agent cannot resolve them.
struct Profile
{
    const wchar_t* name;
    LONG code;
};
constexpr Profile Profiles[] = {
    {L"StandardServer", 2},
    {L"WebServer", 3},
    {L"VirtualizationServer", 5},
    {L"StorageServer", 4},
    {L"Storage+VirtualizationServer", 7},
    {L"LowLatency", 6},
};

bool NumberOfProfile(const ORL_SETTING& setting, const COrlString& text, LONG& number)
{
    if (!setting.Caption.CompareI(L"PerformanceProfile"))
        return false;
    for (const Profile& profile : Profiles)
    {
        if (text == profile.name)
        {
            number = profile.code;
            return true;
        }
    }
    return false;
}

constexpr orl::ValueRules ChoiceRules{&NumberOfProfile, false};

} // namespace

bool CKfgSettingEnumMgr::IsSettingOfMyType(const ORL_SETTING* setting)
{
    return setting->GetType() == ORL_SETTING::EnumType;
}

HRESULT CKfgSettingEnumMgr::PutDataIntoCimObject(CWomClassObject& instance, const ORL_SETTING* setting)
{
    const COrlTraceScope scope(L"CKfgSettingEnumMgr::PutDataIntoCimObject");
    const auto& choice = *static_cast<const ORL_SETTING_ENUM*>(setting);
    instance.SetPropertySint64(L"CurrentValue", choice.CurrentValue);
    instance.SetPropertySint64(L"RegistryValue", choice.CurrentValue);
    instance.SetProperty(L"DisplayValue", choice.CurrentDisplayValue);
    instance.SetPropertySint64(L"DefaultValue", choice.DefaultValue);
    instance.SetProperty(L"PossibleValues", choice.PossibleValues);
    instance.SetProperty(L"DescriptionMap", choice.DescriptionMap);
    return WBEM_S_NO_ERROR;
}

HRESULT CKfgSettingEnumMgr::GetDataFromCimObject(CWomClassObject& source, ORL_SETTING_VAL_INT** value,
                                                 const ORL_SETTING* setting, int displayUnsupported)
{
    const COrlTraceScope scope(L"CKfgSettingEnumMgr::GetDataFromCimObject");
    orl::KnownSetting known;
    if (setting != nullptr && IsSettingOfMyType(setting))
    {
        const auto& choice = *static_cast<const ORL_SETTING_ENUM*>(setting);
        known = {setting, choice.CurrentValue, &choice.CurrentDisplayValue};
    }
    auto made = std::make_unique<ORL_SETTING_VAL_INT>();
    const HRESULT status = orl::ReadRequestedValue(source, known, ChoiceRules, displayUnsupported, *made);
    *value = made.release();
    return status;
}
