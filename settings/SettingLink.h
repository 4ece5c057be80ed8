// CZarn_SettingLink: the classes that link an object to each of its adapter's settings. One piece of code; a class is a
// set of facts.
#pragma once

#include "agent/OrlAdapterAgent.h"
#include "Common/Src/OrlDebug.h"
#include "provider/Zarn_Fcoe.h"
#include "settings/SettingSource.h"

namespace orl
{

// What one of the classes says of itself.
struct SettingLinkFacts
{
    const wchar_t* cimClass;
    // What Element points to: one of the base's builders of paths from a DeviceID.
    void (CZarn_Fcoe::*makeElement)(CWomContext& context, COrlString deviceId, BSTR& path) const;

    // How the trace names the operations.
    const wchar_t* getScope;
    const wchar_t* enumerateScope;
    const wchar_t* sendScope;

    SettingListing listing;
    SourceLine keyMissing;
    SourceLine settingMissing;
    SourceLine kindUnknown;
};

// The work behind CZarn_SettingLink; `fcoeAgent` is asked for the adapters only.
class SettingLinkRequest
{
public:
    SettingLinkRequest(const SettingLinkFacts& facts, const CZarn_Fcoe& paths, OrlAdapterAgent& adapterAgent,
                       CWomContext& context, IWbemObjectSink* sink)
        : m_facts(facts), m_paths(paths), m_adapterAgent(adapterAgent), m_context(context), m_sink(sink)
    {
    }

    // Answered from the path of the setting alone; what Element names only has to be there.
    void Get(const COrlWmiAutoParsedObjectPath& path);
    // A setting of a kind that no class serves ends the enumeration with a refusal.
    void Enumerate(COrlFcoeAgentIntf& fcoeAgent);

private:
    void SendInstance(CWomClassObject& classObject, const COrlString& deviceId, const ORL_SETTING& setting);

    const SettingLinkFacts& m_facts;
    const CZarn_Fcoe& m_paths;
    OrlAdapterAgent& m_adapterAgent;
    CWomContext& m_context;
    IWbemObjectSink* m_sink;
};

} // namespace orl

template <const orl::SettingLinkFacts& Facts>
class CZarn_SettingLink : public CZarn_Fcoe
{
public:
    // Neither agent is owned.
    CZarn_SettingLink(COrlFcoeAgentIntf* fcoeAgent, OrlAdapterAgent* adapterAgent)
        : CZarn_Fcoe(fcoeAgent), m_adapterAgent(adapterAgent)
    {
    }

    const wchar_t* GetCimClassName() override { return Facts.cimClass; }

    HRESULT GetObjectAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                           CComPtr<IWbemObjectSink> sink) override
    {
        const COrlTraceScope scope(Facts.getScope);
        orl::SettingLinkRequest(Facts, *this, *m_adapterAgent, context, sink).Get(path);
        return WBEM_S_NO_ERROR;
    }

    HRESULT CreateInstanceEnumAsync(CWomContext& context, CComPtr<IWbemObjectSink> sink) override
    {
        const COrlTraceScope scope(Facts.enumerateScope);
        orl::SettingLinkRequest(Facts, *this, *m_adapterAgent, context, sink).Enumerate(*Agent());
        return WBEM_S_NO_ERROR;
    }

private:
    OrlAdapterAgent* m_adapterAgent;
};
