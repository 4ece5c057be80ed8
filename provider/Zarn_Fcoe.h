// CZarn_Fcoe: the provider's base of every class manager: reads keys out of object paths and writes paths.
#pragma once

#include "agent/OrlFcoeAgentIntf.h"
#include "Common/Src/OrlString.h"
#include "framework/include/COrlWmiAutoParsedObjectPath.h"
#include "framework/include/CWomClassManagerRoot.h"
#include "framework/include/CWomClassObject.h"
#include "framework/include/CWomContext.h"

// Managers hold no state beside the agent pointers, so any number of threads may be inside one at once.
class CZarn_Fcoe : public CWomClassManagerRoot
{
public:
    // The agent is not owned.
    explicit CZarn_Fcoe(COrlFcoeAgentIntf* agent);

    // Both refuse: what the agent reports is read-only unless a class says otherwise.
    HRESULT UpdateInstanceAsync(CWomClassObject& instance, CWomContext& context, ULONG_PTR reserved,
                                CComPtr<IWbemObjectSink> sink) override;
    HRESULT DeleteInstanceAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                                CComPtr<IWbemObjectSink> sink) override;

    // Key readers. A key that the path lacks throws CWomProviderException with WBEM_E_NOT_FOUND.

    // The DeviceID key as text, however it is written: a bare integer reads as its digits.
    COrlString GetDeviceIdFromPath(COrlWmiAutoParsedObjectPath& path, CWomContext& context) const;
    // A key of text; a value written without quotes reads as empty.
    COrlString GetKeyFromPath(COrlWmiAutoParsedObjectPath& path, const wchar_t* key, CWomContext& context) const;
    // A key written as a bare integer; any other value, also an integer in quotes, reads as 0.
    LONG GetIntKeyFromPath(COrlWmiAutoParsedObjectPath& path, const wchar_t* key, CWomContext& context) const;

    // Path builders. Each frees what `path` holds and stores a new BSTR there, which is the caller's. Values are
    // written as they are, so a value that holds a quote makes a path that does not parse. An allocation failure throws
    // CAtlException with E_OUTOFMEMORY and leaves `path` alone.

    // Points into another provider's class, so it carries the system keys unless the context asks for paths without.
    void MakeDevicePathFromDeviceID(CWomContext& context, COrlString deviceId, BSTR& path) const;
    void MakeHBAPathFromDeviceID(CWomContext& context, COrlString deviceId, BSTR& path) const;
    void MakeFabricPathFromDeviceIDWWN(CWomContext& context, COrlString deviceId, COrlString nodeWWN, BSTR& path) const;
    void MakePortPathFromWWN(CWomContext& context, COrlString deviceId, COrlString portWWN, BSTR& path) const;
    void MakeTargetPathFromWWPN(CWomContext& context, COrlString deviceId, COrlString portWWN, BSTR& path) const;
    // Numbers stand in quotes too, which is how the readers of these paths know them.
    void MakeLUNPathFromID(CWomContext& context, COrlString deviceId, LONG lunId, BSTR& path) const;
    void MakeVLANPathFromID(CWomContext& context, COrlString deviceId, LONG vlanId, BSTR& path) const;
    void MakeStatisticPath(CWomContext& context, COrlString deviceId, COrlString statistic, BSTR& path) const;

protected:
    COrlFcoeAgentIntf* Agent() const { return m_agent; }

private:
    COrlFcoeAgentIntf* m_agent;
};

// The status record of an agent call: the request's status word, and nothing else yet.
inline CResult AgentStatus(const CWomContext& context)
{
    return CResult{context.ulStatus, 0};
}
