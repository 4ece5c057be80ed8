// CKfgSettingIntMgr: what is a number's own.

#include "settings/KfgSettingIntMgr.h"

#include "Common/Src/OrlDebug.h"
#include "settings/RequestedValue.h"

namespace
{

constexpr orl::ValueRules NumberRules{nullptr, true};

} // namespace

CKfgSettingIntMgr::~CKfgSettingIntMgr()
{
    const COrlTraceScope scope(L"CKfgSettingIntMgr::~CKfgSettingIntMgr");
}

bool CKfgSettingIntMgr::IsSettingOfMyType(const ORL_SETTING* setting)
{
    return setting->GetType() == ORL_SETTING::IntType;
}

HRESULT CKfgSettingIntMgr::PutDataIntoCimObject(CWomClassObject& instance, const ORL_SETTING* setting)
{
    const COrlTraceScope scope(L"CKfgSettingIntMgr::PutDataIntoCimObject");
    const auto& number = *static_cast<const ORL_SETTING_INT*>(setting);
    instance.SetPropertySint64(L"CurrentValue", number.Current);
    instance.SetPropertySint64(L"RegistryValue", number.Current);
    instance.SetProperty(L"DisplayValue", number.CurrentDisplayValue);
    instance.SetPropertySint64(L"min", number.Min);
    instance.SetPropertySint64(L"max", number.Max);
    instance.SetPropertySint64(L"step", number.Step);
    // Unsigned in the schema, signed in the record: a negative base shows as the 64 bits that it extends to.
    instance.SetPropertyUint64(L"base", static_cast<ULONGLONG>(static_cast<LONGLONG>(number.Base)));
    instance.SetPropertySint64(L"DefaultValue", number.Default);
    instance.SetPropertySint64(L"Scale", number.Scale);
    return WBEM_S_NO_ERROR;
}

HRESULT CKfgSettingIntMgr::GetDataFromCimObject(CWomClassObject& source, ORL_SETTING_VAL_INT** value,
                                                const ORL_SETTING* setting, int displayUnsupported)
{
    const COrlTraceScope scope(L"CKfgSettingIntMgr::GetDataFromCimObject");
    orl::KnownSetting known;
    if (setting != nullptr && IsSettingOfMyType(setting))
    {
        const auto& number = *static_cast<const ORL_SETTING_INT*>(setting);
        known = {setting, number.Current, &number.CurrentDisplayValue};
    }
    auto made = std::make_unique<ORL_SETTING_VAL_INT>();
    const HRESULT status = orl::ReadRequestedValue(source, known, NumberRules, displayUnsupported, *made);
    *value = made.release();
    return status;
}
