// CKfgSettingMgrRoot: listing, reading and updating settings; their paths.

#include "settings/KfgSettingMgrRoot.h"

#include "Common/Src/OrlDebug.h"
#include "provider/PathText.h"
#include "settings/LeftBehind.h"
#include "settings/SettingSource.h"

namespace
{

constexpr orl::SourceLine RootSource(int line)
{
    return {L"Src\\KfgSettingMgrRoot", line};
}

constexpr orl::SettingListing RootListing{L"OrlFcoeAgent::EnumerateHBAs", RootSource(219),
                                          L"EnumerateFCOESettings failed for %s"};

// A text of the instance; one that is absent, null or no text reads as empty, which names no setting.
COrlString TextOf(const CWomClassObject& instance, const wchar_t* property)
{
    CComBSTR text;
    instance.GetProperty(property, text);
    return COrlString(static_cast<const wchar_t*>(text.m_str));
}

} // namespace

CKfgSettingMgrRoot::CKfgSettingMgrRoot(COrlFcoeAgentIntf* fcoeAgent, OrlAdapterAgent* adapterAgent)
    : CZarn_Fcoe(fcoeAgent), m_adapterAgent(adapterAgent)
{
    const COrlTraceScope scope(L"CKfgSettingMgrRoot::CKfgSettingMgrRoot");
}

CKfgSettingMgrRoot::~CKfgSettingMgrRoot()
{
    const COrlTraceScope scope(L"CKfgSettingMgrRoot::~CKfgSettingMgrRoot");
}

HRESULT CKfgSettingMgrRoot::CreateInstanceEnumAsync(CWomContext& context, CComPtr<IWbemObjectSink> sink)
{
    const COrlTraceScope scope(L"CKfgSettingMgrRoot::CreateInstanceEnumAsync");
    CWomClassObject classObject(context);
    classObject.CreateClass(CComBSTR(GetCimClassName()));
    orl::ForEachSetting(*Agent(), *m_adapterAgent, context, RootListing,
                        [&](const COrlString& adapterId, const ORL_SETTING& setting)
                        {
                            if (IsSettingOfMyType(&setting))
                                SendInstance(context, classObject, adapterId, setting, sink);
                        });
    return WBEM_S_NO_ERROR;
}

HRESULT CKfgSettingMgrRoot::GetObjectAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                                           CComPtr<IWbemObjectSink> sink)
{
    const COrlTraceScope scope(L"CKfgSettingMgrRoot::GetObjectAsync");
    orl::RequireKey(path, orl::SettingParentType, context, RootSource(106));
    const COrlString parentId = orl::RequireKey(path, orl::SettingParentId, context, RootSource(106)).Text();
    const COrlString caption = orl::RequireKey(path, orl::SettingCaption, context, RootSource(106)).Text();
    CWomClassObject classObject(context);
    classObject.CreateClass(CComBSTR(GetCimClassName()));
    const auto setting = orl::RequireSetting(*m_adapterAgent, context, parentId, caption, RootSource(127));
    if (!IsSettingOfMyType(setting.get()))
        orl::RefuseKind(context, RootSource(138));
    SendInstance(context, classObject, parentId, *setting, sink);
    return WBEM_S_NO_ERROR;
}

HRESULT CKfgSettingMgrRoot::SendInstance(CWomContext& context, CWomClassObject& classObject, const COrlString& parentId,
                                         const ORL_SETTING& setting, CComPtr<IWbemObjectSink> sink)
{
    const COrlTraceScope scope(L"CKfgSettingMgrRoot::SendInstance");
    CWomClassObject instance(context);
    instance.SpawnInstanceFromClass(classObject);
    // An adapter that the agent does not know leaves the name empty; its settings tell enough without.
    ORL_ADAPTER adapter;
    CResult status = AgentStatus(context);
    m_adapterAgent->GetAdapter(parentId, adapter, status, false);

    instance.SetProperty(orl::SettingParentType, orl::NicParentType);
    instance.SetProperty(orl::SettingParentId, parentId);
    instance.SetProperty(orl::SettingCaption, setting.Caption);
    instance.SetProperty(L"RegistryKeyword", setting.RegistryKeyword);
    instance.SetProperty(L"Name", adapter.Name);
    if (context.ulSuppressProperties == 0)
    {
        instance.SetProperty(L"Description", setting.Description);
        instance.SetProperty(L"DisplayName", setting.DisplayName);
        instance.SetPropertyUint32(L"ExposeLevel", setting.ExposeLevel);
        instance.SetPropertyBool(L"Writable", setting.Writable != FALSE);
        instance.SetProperty(L"MiniHelp", setting.MiniHelp);
        if (setting.Grouped != FALSE)
            instance.SetPropertyUint16(L"GroupId", setting.GroupId);
        instance.SetPropertyBool(L"Grouped", setting.Grouped != FALSE);
        instance.SetPropertyUint64(L"DetailId", setting.DetailId);
        PutDataIntoCimObject(instance, &setting);
    }
    instance.Indicate(sink);
    g_OrlDebug.Print(L"KfgSettingMgrRoot::SendInstance Exited");
    return WBEM_S_NO_ERROR;
}

HRESULT CKfgSettingMgrRoot::UpdateInstanceAsync(CWomClassObject& instance, CWomContext& context, ULONG_PTR,
                                                CComPtr<IWbemObjectSink>)
{
    const COrlTraceScope scope(L"CKfgSettingMgrRoot::UpdateInstanceAsync");
    // Tools know both failures, of the reading and of the writing, by the text of the writing.
    constexpr const wchar_t* failed = L"OrlAdapterAgent::SetSetting";
    const COrlString parentId = TextOf(instance, orl::SettingParentId);
    const COrlString caption = TextOf(instance, orl::SettingCaption);

    orl::SettingAnswer answer = orl::AskForSetting(*m_adapterAgent, context, parentId, caption);
    const ORL_SETTING* setting = answer.setting.release();
    orl::LeaveSettingBehind(setting);
    if (answer.result.ulErrCode != 0)
        orl::RefuseForAgent(context, answer.result, failed, RootSource(313));

    ORL_SETTING_VAL_INT* made = nullptr;
    const HRESULT status =
        GetDataFromCimObject(instance, &made, setting, static_cast<int>(context.ulDisplayValueUnsupported));
    const orl::SettingValuePtr value(made);
    if (FAILED(status))
        return status;
    CResult record = AgentStatus(context);
    const CResult written = m_adapterAgent->SetSetting(parentId, caption, value.get(), record);
    if (written.ulErrCode != 0)
        orl::RefuseForAgent(context, written, failed, RootSource(330));
    return status;
}

COrlString CKfgSettingMgrRoot::GetObjectIdFromPath(const CWomContext& context, const COrlWmiAutoParsedObjectPath& path)
{
    g_OrlDebug.Print(L"KfgSettingMgrRoot::GetObjectIdFromPath");
    return orl::RequireKey(path, orl::SettingParentId, context, RootSource(490)).Text();
}

COrlString CKfgSettingMgrRoot::GetObjectTypeFromPath(const CWomContext& context,
                                                     const COrlWmiAutoParsedObjectPath& path)
{
    g_OrlDebug.Print(L"KfgSettingMgrRoot::GetObjectTypeFromPath");
    return orl::RequireKey(path, orl::SettingParentType, context, RootSource(529)).Text();
}

COrlString CKfgSettingMgrRoot::GetSettingNameFromPath(const CWomContext& context,
                                                      const COrlWmiAutoParsedObjectPath& path)
{
    g_OrlDebug.Print(L"KfgSettingMgrRoot::GetSettingNameFromPath");
    return orl::RequireKey(path, orl::SettingCaption, context, RootSource(567)).Text();
}

void CKfgSettingMgrRoot::MakePath(const wchar_t* className, const COrlString& parentId, const COrlString& settingName,
                                  const wchar_t* parentType, BSTR& path)
{
    g_OrlDebug.Print(L"KfgSettingMgrRoot::MakePath");
    orl::StoreFormattedPath(path, L"%s.%s=\"%s\",%s=\"%s\",%s=\"%s\"", className, orl::SettingCaption,
                            settingName.c_str(), orl::SettingParentId, parentId.c_str(), orl::SettingParentType,
                            parentType);
}
