// CKfgSettingIntMgr: Zarn_FCOESettingInt, the settings that are a number within limits.
#pragma once

#include "settings/KfgSettingMgrRoot.h"

class CKfgSettingIntMgr final : public CKfgSettingMgrRoot
{
public:
    using CKfgSettingMgrRoot::CKfgSettingMgrRoot;
    ~CKfgSettingIntMgr() override;

    const wchar_t* GetCimClassName() override { return orl::IntSettingClass; }
    bool IsSettingOfMyType(const ORL_SETTING* setting) override;
    HRESULT PutDataIntoCimObject(CWomClassObject& instance, const ORL_SETTING* setting) override;
    HRESULT GetDataFromCimObject(CWomClassObject& source, ORL_SETTING_VAL_INT** value, const ORL_SETTING* setting,
                                 int displayUnsupported) override;
};
