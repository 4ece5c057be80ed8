// What the tests of the setting classes share: settings written out in full, and both agents.
#pragma once

#include "tests/provider/Fixture.h"
#include "tests/support/ScriptedAdapterAgent.h"

#include "settings/KfgSettingEnumMgr.h"
#include "settings/KfgSettingIntMgr.h"

namespace orl::test
{

// The fields that every setting has, with values that tell them apart.
void FillCommon(ORL_SETTING& setting, const std::wstring& name);

// Settings of a list. The choice is 3, "three", of 2, 3 and 5; the number 3, "three packets", from 1 to 600. Names and
// captions differ: "name" and "caption of name".
ScriptedAdapterAgent::MakeSetting Choice(ScriptedAdapterAgent& agent, const std::wstring& name);
ScriptedAdapterAgent::MakeSetting Number(ScriptedAdapterAgent& agent, const std::wstring& name);
ScriptedAdapterAgent::MakeSetting Other(ScriptedAdapterAgent& agent, const std::wstring& name);

// A manager of a kind of its own, which makes the value 7 of every request and answers what the test says.
class AnsweringManager final : public CKfgSettingMgrRoot
{
public:
    using CKfgSettingMgrRoot::CKfgSettingMgrRoot;

    HRESULT answer = WBEM_S_NO_ERROR;

    const wchar_t* GetCimClassName() override { return EnumSettingClass; }
    bool IsSettingOfMyType(const ORL_SETTING*) override { return true; }
    HRESULT PutDataIntoCimObject(CWomClassObject&, const ORL_SETTING*) override { return WBEM_S_NO_ERROR; }
    HRESULT GetDataFromCimObject(CWomClassObject&, ORL_SETTING_VAL_INT** value, const ORL_SETTING*, int) override
    {
        *value = new ORL_SETTING_VAL_INT;
        (*value)->Value = 7;
        return answer;
    }
};

class SettingTest : public ManagerTest
{
protected:
    SettingTest();

    // An adapter that the FCoE agent lists.
    void AddAdapter(const wchar_t* deviceId);
    // The status word of the request, and nothing else yet, in every call of the adapter agent.
    void ExpectStatusInEveryCall(ULONG word) const;

    // Runs what must throw for want of memory when the first BSTR cannot be made.
    static void ExpectLackOfMemory(const std::function<void()>& request);

    // An object of a class of its own, with these values and no other property.
    using Values = std::vector<std::pair<std::wstring, CComVariant>>;
    static CComPtr<FakeClassObject> Object(const Values& values);
    // An instance as a client writes it: the keys of eth0's setting "Mode", and these values.
    static CComPtr<FakeClassObject> Written(const Values& values);

    ScriptedAdapterAgent adapterAgent;
    FakeClassPtr enumClass = MakeFakeClass(L"Zarn_FCOESettingEnum");
    FakeClassPtr intClass = MakeFakeClass(L"Zarn_FCOESettingInt");
    CKfgSettingEnumMgr enumManager{&agent, &adapterAgent};
    CKfgSettingIntMgr intManager{&agent, &adapterAgent};
};

} // namespace orl::test
