// OrlAdapterAgent: the provider's only view of adapter settings.
#pragma once

#include "agent/CResult.h"
#include "agent/OrlSettings.h"
#include "agent/WarningMessageObj.h"
#include "Common/Src/OrlString.h"

#include <vector>

// The adapter agent. An agent library's export "GetCoreAgent" hands one out; it lives until the process ends and nobody
// deletes it.
//
// The agent is called by position in its table of operations: counting the destructor as 0, the provider uses 1, 2, 3,
// 14, 41 and 52. The positions between belong to other users of the agent; here they answer failure.
//
// Every operation answers a CResult whose ulErrCode is 0 on success; that answer is what the provider tests. The status
// record passed in is a copy of the request's status word, which the agent may fill. An adapter id is the DeviceID key
// of the adapter. Any number of threads may be inside the agent at once.
class OrlAdapterAgent
{
public:
    // What an operation answers that the agent does not carry out.
    static constexpr ULONG NotSupported = 0xFFFFFFFF;

    virtual ~OrlAdapterAgent() = default; // 0

    // The setting is the caller's, who deletes it through its virtual destructor.
    virtual CResult GetSetting(const COrlString& adapterId, const COrlString& settingName, ORL_SETTING*& setting,
                               CResult& status) = 0; // 1

    // The value stays the caller's.
    virtual CResult SetSetting(const COrlString& adapterId, const COrlString& settingName, ORL_SETTING_VAL_INT* value,
                               CResult& status) = 0; // 2

    virtual CResult SetSettingToDefault(const COrlString& adapterId, const COrlString& settingName,
                                        CResult& status) = 0; // 3

    virtual CResult Reserved4() { return {NotSupported, 0}; }
    virtual CResult Reserved5() { return {NotSupported, 0}; }
    virtual CResult Reserved6() { return {NotSupported, 0}; }
    virtual CResult Reserved7() { return {NotSupported, 0}; }
    virtual CResult Reserved8() { return {NotSupported, 0}; }
    virtual CResult Reserved9() { return {NotSupported, 0}; }
    virtual CResult Reserved10() { return {NotSupported, 0}; }
    virtual CResult Reserved11() { return {NotSupported, 0}; }
    virtual CResult Reserved12() { return {NotSupported, 0}; }
    virtual CResult Reserved13() { return {NotSupported, 0}; }

    // `reserved` is passed as false.
    virtual CResult GetAdapter(const COrlString& adapterId, ORL_ADAPTER& adapter, CResult& status,
                               bool reserved) = 0; // 14

    virtual CResult Reserved15() { return {NotSupported, 0}; }
    virtual CResult Reserved16() { return {NotSupported, 0}; }
    virtual CResult Reserved17() { return {NotSupported, 0}; }
    virtual CResult Reserved18() { return {NotSupported, 0}; }
    virtual CResult Reserved19() { return {NotSupported, 0}; }
    virtual CResult Reserved20() { return {NotSupported, 0}; }
    virtual CResult Reserved21() { return {NotSupported, 0}; }
    virtual CResult Reserved22() { return {NotSupported, 0}; }
    virtual CResult Reserved23() { return {NotSupported, 0}; }
    virtual CResult Reserved24() { return {NotSupported, 0}; }
    virtual CResult Reserved25() { return {NotSupported, 0}; }
    virtual CResult Reserved26() { return {NotSupported, 0}; }
    virtual CResult Reserved27() { return {NotSupported, 0}; }
    virtual CResult Reserved28() { return {NotSupported, 0}; }
    virtual CResult Reserved29() { return {NotSupported, 0}; }
    virtual CResult Reserved30() { return {NotSupported, 0}; }
    virtual CResult Reserved31() { return {NotSupported, 0}; }
    virtual CResult Reserved32() { return {NotSupported, 0}; }
    virtual CResult Reserved33() { return {NotSupported, 0}; }
    virtual CResult Reserved34() { return {NotSupported, 0}; }
    virtual CResult Reserved35() { return {NotSupported, 0}; }
    virtual CResult Reserved36() { return {NotSupported, 0}; }
    virtual CResult Reserved37() { return {NotSupported, 0}; }
    virtual CResult Reserved38() { return {NotSupported, 0}; }
    virtual CResult Reserved39() { return {NotSupported, 0}; }
    virtual CResult Reserved40() { return {NotSupported, 0}; }

    // With setValuesOnNoError not 0 a value that passes is also set.
    virtual CResult ValidateSettingModification(const COrlString& adapterId, const COrlString& settingName,
                                                ORL_SETTING_VAL_INT* value, std::vector<WarningMessageObj>& warnings,
                                                CResult& status, ULONG setValuesOnNoError) = 0; // 41

    virtual CResult Reserved42() { return {NotSupported, 0}; }
    virtual CResult Reserved43() { return {NotSupported, 0}; }
    virtual CResult Reserved44() { return {NotSupported, 0}; }
    virtual CResult Reserved45() { return {NotSupported, 0}; }
    virtual CResult Reserved46() { return {NotSupported, 0}; }
    virtual CResult Reserved47() { return {NotSupported, 0}; }
    virtual CResult Reserved48() { return {NotSupported, 0}; }
    virtual CResult Reserved49() { return {NotSupported, 0}; }
    virtual CResult Reserved50() { return {NotSupported, 0}; }
    virtual CResult Reserved51() { return {NotSupported, 0}; }

    // The array owns the settings put into it.
    virtual CResult EnumerateSettings(const COrlString& adapterId, COrlPointerArray<ORL_SETTING*>& settings,
                                      CResult& status) = 0; // 52
};

// What an agent library exports under the name "GetCoreAgent".
using GetCoreAgentFunction = OrlAdapterAgent* (*)();
