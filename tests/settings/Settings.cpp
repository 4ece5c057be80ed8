#include "tests/settings/Settings.h"

#include "com/OrlBstr.h"

namespace orl::test
{

void FillCommon(ORL_SETTING& setting, const std::wstring& name)
{
    setting.Caption = COrlString(L"caption of " + name);
    setting.Name = COrlString(name);
    setting.Description = L"What it does";
    setting.Grouped = TRUE;
    setting.GroupId = 65535;
    setting.DetailId = 0xFFFFFFFFFFFFFFFF;
    setting.MiniHelp = L"A short help";
    setting.DisplayName = L"For display";
    setting.RegistryKeyword = L"*Keyword";
    setting.Writable = TRUE;
    setting.ExposeLevel = 0xFFFFFFFE;
}

ScriptedAdapterAgent::MakeSetting Choice(ScriptedAdapterAgent& agent, const std::wstring& name)
{
    return [&agent, name]
    {
        auto setting = std::make_unique<TestEnumSetting>(agent.log);
        FillCommon(*setting, name);
        setting->DefaultValue = 2;
        setting->CurrentValue = 3;
        setting->CurrentDisplayValue = L"three";
        setting->PossibleValues = {2, 3, 5};
        setting->DescriptionMap = {L"two", L"three", L"five"};
        return setting;
    };
}

ScriptedAdapterAgent::MakeSetting Number(ScriptedAdapterAgent& agent, const std::wstring& name)
{
    return [&agent, name]
    {
        auto setting = std::make_unique<TestIntSetting>(agent.log);
        FillCommon(*setting, name);
        setting->Base = 10;
        setting->Max = 600;
        setting->Min = 1;
        setting->Step = 2;
        setting->Default = 60;
        setting->Current = 3;
        setting->Scale = 4;
        setting->CurrentDisplayValue = L"three packets";
        return setting;
    };
}

ScriptedAdapterAgent::MakeSetting Other(ScriptedAdapterAgent& agent, const std::wstring& name)
{
    return [&agent, name]
    {
        auto setting = std::make_unique<TestOtherSetting>(agent.log);
        FillCommon(*setting, name);
        return setting;
    };
}

SettingTest::SettingTest()
{
    services->Add(enumClass);
    services->Add(intClass);
}

void SettingTest::AddAdapter(const wchar_t* deviceId)
{
    ORL_FCOE_HBA hba;
    hba.deviceId = deviceId;
    agent.hbas.push_back(hba);
}

void SettingTest::ExpectStatusInEveryCall(ULONG word) const
{
    EXPECT_EQ(adapterAgent.statuses.size(), adapterAgent.calls.size());
    for (const CResult& seen : adapterAgent.statuses)
    {
        EXPECT_EQ(seen.ulErrCode, word);
        EXPECT_EQ(seen.ulReserved, 0U);
    }
}

void SettingTest::ExpectLackOfMemory(const std::function<void()>& request)
{
    HRESULT code = S_OK;
    OrlFailBstrAllocation(1);
    try
    {
        request();
    }
    catch (const CAtlException& failure)
    {
        code = failure.m_hr;
    }
    OrlFailBstrAllocation(0);
    EXPECT_EQ(code, E_OUTOFMEMORY);
}

CComPtr<FakeClassObject> SettingTest::Object(const Values& values)
{
    CComPtr<FakeClassObject> object;
    object.Attach(new FakeClassObject(MakeFakeClass(L"Written")));
    for (const auto& [name, value] : values)
        object->Preset(name, value);
    return object;
}

CComPtr<FakeClassObject> SettingTest::Written(const Values& values)
{
    CComPtr<FakeClassObject> object = Object(values);
    object->Preset(L"ParentType", CComVariant(L"NIC"));
    object->Preset(L"ParentId", CComVariant(L"eth0"));
    object->Preset(L"Caption", CComVariant(L"Mode"));
    return object;
}

} // namespace orl::test
