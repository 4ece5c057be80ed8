// CKfgSettingEnumMgr: Zarn_FCOESettingEnum, the settings that are a choice among listed values.
#pragma once

#include "settings/KfgSettingMgrRoot.h"

class CKfgSettingEnumMgr final : public CKfgSettingMgrRoot
{
public:
    using CKfgSettingMgrRoot::CKfgSettingMgrRoot;

    const wchar_t* GetCimClassName() override { return orl::EnumSettingClass; }
    bool IsSettingOfMyType(const ORL_SETTING* setting) override;
    HRESULT PutDataIntoCimObject(CWomClassObject& instance, const ORL_SETTING* setting) override;
    HRESULT GetDataFromCimObject(CWomClassObject& source, ORL_SETTING_VAL_INT** value, const ORL_SETTING* setting,
                                 int displayUnsupported) override;
};
