// CKfgSettingMgrRoot: the base of the managers that publish adapter settings: one manager a kind of setting.
#pragma once

#include "agent/OrlAdapterAgent.h"
#include "provider/Zarn_Fcoe.h"

// A setting is known by three keys: ParentType, which is "NIC" in every instance and not looked at in a request;
// ParentId, the DeviceID of the adapter; Caption, the setting's name.
class CKfgSettingMgrRoot : public CZarn_Fcoe
{
public:
    // Neither agent is owned.
    CKfgSettingMgrRoot(COrlFcoeAgentIntf* fcoeAgent, OrlAdapterAgent* adapterAgent);
    ~CKfgSettingMgrRoot() override;

    HRESULT GetObjectAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                           CComPtr<IWbemObjectSink> sink) override;
    // An adapter whose settings cannot be listed is left out and traced.
    HRESULT CreateInstanceEnumAsync(CWomContext& context, CComPtr<IWbemObjectSink> sink) override;
    // Sets what the instance asks for, see GetDataFromCimObject, whose failure it answers.
    HRESULT UpdateInstanceAsync(CWomClassObject& instance, CWomContext& context, ULONG_PTR reserved,
                                CComPtr<IWbemObjectSink> sink) override;
    // SetDefault and ValidateAndSetSetting, by name without regard to case.
    HRESULT ExecMethodAsync(COrlWmiAutoParsedObjectPath& path, const wchar_t* methodName, CWomContext& context,
                            CWomClassObject& inParameters, CWomClassObject& outParameters,
                            CComPtr<IWbemObjectSink> sink) override;

    virtual bool IsSettingOfMyType(const ORL_SETTING* setting) = 0;
    // The properties that only this kind of setting has. The setting is of the manager's kind.
    virtual HRESULT PutDataIntoCimObject(CWomClassObject& instance, const ORL_SETTING* setting) = 0;
    // Works out which value `source` asks for. A new value is always handed out unless there is no memory for it, and
    // is the caller's, see settings/LeftBehind.h; WBEM_E_FAILED when the wishes conflict or there are none. Without a
    // setting, as with one of another kind, nothing is known to compare with. With displayUnsupported not 0 only the
    // number counts.
    virtual HRESULT GetDataFromCimObject(CWomClassObject& source, ORL_SETTING_VAL_INT** value,
                                         const ORL_SETTING* setting, int displayUnsupported) = 0;

    // The keys of a setting's path, as text. One that the path lacks throws CWomProviderException with
    // WBEM_E_NOT_FOUND.
    static COrlString GetObjectIdFromPath(const CWomContext& context, const COrlWmiAutoParsedObjectPath& path);
    static COrlString GetObjectTypeFromPath(const CWomContext& context, const COrlWmiAutoParsedObjectPath& path);
    static COrlString GetSettingNameFromPath(const CWomContext& context, const COrlWmiAutoParsedObjectPath& path);

    // Frees what `path` holds and stores a new BSTR there, which is the caller's. Values are written as they are.
    // Throws CAtlException with E_OUTOFMEMORY.
    static void MakePath(const wchar_t* className, const COrlString& parentId, const COrlString& settingName,
                         const wchar_t* parentType, BSTR& path);

private:
    HRESULT SendInstance(CWomContext& context, CWomClassObject& classObject, const COrlString& parentId,
                         const ORL_SETTING& setting, CComPtr<IWbemObjectSink> sink);

    // A method answers 1, with no return value set, when the agent refuses.
    HRESULT SetDefault(COrlWmiAutoParsedObjectPath& path, const wchar_t* methodName, CWomContext& context,
                       CWomClassObject& inParameters, CWomClassObject& outParameters, CComPtr<IWbemObjectSink> sink);
    HRESULT ValidateAndSetSetting(COrlWmiAutoParsedObjectPath& path, const wchar_t* methodName, CWomContext& context,
                                  CWomClassObject& inParameters, CWomClassObject& outParameters,
                                  CComPtr<IWbemObjectSink> sink);

    OrlAdapterAgent* m_adapterAgent;
};

namespace orl
{

// The names by which paths, instances and the classes that refer to them know a setting.
constexpr wchar_t SettingCaption[] = L"Caption";
constexpr wchar_t SettingParentId[] = L"ParentId";
constexpr wchar_t SettingParentType[] = L"ParentType";
constexpr wchar_t NicParentType[] = L"NIC";
constexpr wchar_t EnumSettingClass[] = L"Zarn_FCOESettingEnum";
constexpr wchar_t IntSettingClass[] = L"Zarn_FCOESettingInt";

} // namespace orl
