// CKfgSettingMgrRoot: the methods of a setting.

#include "settings/KfgSettingMgrRoot.h"

#include "Common/Src/OrlDebug.h"
#include "framework/include/CWomProviderException.h"
#include "settings/LeftBehind.h"
#include "settings/SettingSource.h"

namespace
{

constexpr wchar_t MethodsSource[] = L"Src\\KfgSettingMgrRoot";
// Tools know the failures of ValidateAndSetSetting under the name of another class.
constexpr wchar_t ValidateReportedAs[] = L"CZarn_TeamOfAdaptersMgr::ValidateAndSetSetting()";

constexpr ULONG InParameterCode = 0x80040908;
constexpr ULONG OutParameterRefusedCode = 0x80040901;

// What a method answers when the agent refused: a success to the framework, with no return value for the client.
constexpr HRESULT AgentRefused = 1;

void RequireMethodStatus(HRESULT status, const CWomContext& context, ULONG code, int line)
{
    if (FAILED(status))
        throw CWomProviderException(context, code, CComBSTR(ValidateReportedAs), status, MethodsSource, line);
}

// The keys of the setting that a method is called on.
struct SettingKeys
{
    SettingKeys(const CWomContext& context, const COrlWmiAutoParsedObjectPath& path)
        : parentType(CKfgSettingMgrRoot::GetObjectTypeFromPath(context, path)),
          parentId(CKfgSettingMgrRoot::GetObjectIdFromPath(context, path)),
          caption(CKfgSettingMgrRoot::GetSettingNameFromPath(context, path))
    {
    }
    COrlString parentType; // only has to be there
    COrlString parentId;
    COrlString caption;
};

HRESULT ReportSuccess(CWomClassObject& out, const wchar_t* failedText)
{
    const HRESULT status = out.SetPropertyUint32(L"ReturnValue", 0);
    if (FAILED(status))
        g_OrlDebug.Print(L"%s", failedText);
    return status;
}

} // namespace

HRESULT CKfgSettingMgrRoot::ExecMethodAsync(COrlWmiAutoParsedObjectPath& path, const wchar_t* methodName,
                                            CWomContext& context, CWomClassObject& inParameters,
                                            CWomClassObject& outParameters, CComPtr<IWbemObjectSink> sink)
{
    g_OrlDebug.Print(L"CKfgSettingMgrRoot::ExecMethodAsync");
    const COrlString name(methodName);
    if (name.CompareI(L"SetDefault"))
        return SetDefault(path, methodName, context, inParameters, outParameters, sink);
    if (name.CompareI(L"ValidateAndSetSetting"))
        return ValidateAndSetSetting(path, methodName, context, inParameters, outParameters, sink);
    return static_cast<HRESULT>(WBEM_E_METHOD_NOT_IMPLEMENTED);
}

HRESULT CKfgSettingMgrRoot::SetDefault(COrlWmiAutoParsedObjectPath& path, const wchar_t*, CWomContext& context,
                                       CWomClassObject&, CWomClassObject& outParameters, CComPtr<IWbemObjectSink>)
{
    const COrlTraceScope scope(L"CKfgSettingMgrRoot::SetDefault");
    const SettingKeys keys(context, path);
    CResult record = AgentStatus(context);
    if (m_adapterAgent->SetSettingToDefault(keys.parentId, keys.caption, record).ulErrCode != 0)
    {
        g_OrlDebug.Print(L"SetToDefault() - call to SetSettingToDefault() failed.");
        return AgentRefused;
    }
    return ReportSuccess(outParameters, L"SetToDefault() - failed to set the return value.");
}

HRESULT CKfgSettingMgrRoot::ValidateAndSetSetting(COrlWmiAutoParsedObjectPath& path, const wchar_t*,
                                                  CWomContext& context, CWomClassObject& inParameters,
                                                  CWomClassObject& outParameters, CComPtr<IWbemObjectSink>)
{
    const COrlTraceScope scope(L"CKfgSettingMgrRoot::ValidateAndSetSetting");
    const SettingKeys keys(context, path);
    const orl::SettingAnswer answer = orl::AskForSetting(*m_adapterAgent, context, keys.parentId, keys.caption);
    if (answer.result.ulErrCode != 0)
    {
        g_OrlDebug.Print(L"ValidateAndSetSetting() - call to GetSetting() failed");
        return AgentRefused;
    }

    ORL_SETTING_VAL_INT* made = nullptr;
    const HRESULT read = GetDataFromCimObject(inParameters, &made, answer.setting.get(), 0);
    const orl::SettingValuePtr value(made);
    if (FAILED(read))
        g_OrlDebug.Print(L"GetDataFromCimObject failed");
    RequireMethodStatus(read, context, InParameterCode, 719);

    // Absent, null or no number: validate only.
    ULONG setValues = 0;
    bool isNull = false;
    if (FAILED(inParameters.GetPropertyUint32(L"SetValuesOnNoError", setValues, isNull)) || isNull)
        setValues = 0;

    std::vector<WarningMessageObj> warnings;
    CResult record = AgentStatus(context);
    if (m_adapterAgent
            ->ValidateSettingModification(keys.parentId, keys.caption, value.get(), warnings, record, setValues)
            .ulErrCode != 0)
    {
        g_OrlDebug.Print(L"ValidateAndSetSetting() - call to ValidateSettingModification() failed.");
        return AgentRefused;
    }
    RequireMethodStatus(outParameters.SetProperty(L"WarningMessages", warnings), context, OutParameterRefusedCode, 751);
    return ReportSuccess(outParameters, L"ValidateAndSetSetting() - failed to set the return value.");
}
