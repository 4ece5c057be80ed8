// The classes that link an object to each of its adapter's settings.

#include "settings/SettingLink.h"

#include "settings/KfgSettingMgrRoot.h"

namespace orl
{

namespace
{

constexpr wchar_t ElementReference[] = L"Element";
constexpr wchar_t SettingReference[] = L"Setting";

} // namespace

void SettingLinkRequest::Get(const COrlWmiAutoParsedObjectPath& path)
{
    RequireKey(path, ElementReference, m_context, m_facts.keyMissing);
    const COrlString settingText = RequireKey(path, SettingReference, m_context, m_facts.keyMissing).Text();

    // A text that is no path has no keys either, and is refused for the first of them.
    COrlWmiAutoParsedObjectPath settingPath;
    settingPath.Parse(settingText.c_str());
    const COrlString parentId = CKfgSettingMgrRoot::GetObjectIdFromPath(m_context, settingPath);
    CKfgSettingMgrRoot::GetObjectTypeFromPath(m_context, settingPath);
    const COrlString caption = CKfgSettingMgrRoot::GetSettingNameFromPath(m_context, settingPath);

    const auto setting = RequireSetting(m_adapterAgent, m_context, parentId, caption, m_facts.settingMissing);
    CWomClassObject classObject(m_context);
    classObject.CreateClass(CComBSTR(m_facts.cimClass));
    SendInstance(classObject, parentId, *setting);
}

void SettingLinkRequest::Enumerate(COrlFcoeAgentIntf& fcoeAgent)
{
    CWomClassObject classObject(m_context);
    classObject.CreateClass(CComBSTR(m_facts.cimClass));
    ForEachSetting(fcoeAgent, m_adapterAgent, m_context, m_facts.listing,
                   [&](const COrlString& deviceId, const ORL_SETTING& setting)
                   { SendInstance(classObject, deviceId, setting); });
}

void SettingLinkRequest::SendInstance(CWomClassObject& classObject, const COrlString& deviceId,
                                      const ORL_SETTING& setting)
{
    const COrlTraceScope scope(m_facts.sendScope);
    CWomClassObject instance(m_context);
    instance.SpawnInstanceFromClass(classObject);

    CComBSTR element;
    (m_paths.*m_facts.makeElement)(m_context, deviceId, element.m_str);
    instance.SetProperty(ElementReference, element);

    const ULONG type = setting.GetType();
    if (type != ORL_SETTING::EnumType && type != ORL_SETTING::IntType)
        RefuseKind(m_context, m_facts.kindUnknown);
    CComBSTR settingPath;
    CKfgSettingMgrRoot::MakePath(type == ORL_SETTING::EnumType ? EnumSettingClass : IntSettingClass, deviceId,
                                 setting.Name, NicParentType, settingPath.m_str);
    instance.SetProperty(SettingReference, settingPath);
    instance.Indicate(m_sink);
}

} // namespace orl
