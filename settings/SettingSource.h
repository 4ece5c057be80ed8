// Where the setting classes get their settings from: adapters from the FCoE agent, their settings from the other one.
#pragma once

#include "agent/OrlAdapterAgent.h"
#include "agent/OrlFcoeAgentIntf.h"
#include "framework/include/CWomContext.h"
#include "provider/Refusals.h"

#include <functional>
#include <memory>

namespace orl
{

// The words in which a class tells that a listing failed.
struct SettingListing
{
    const wchar_t* hbasFailed; // the refusal's text
    SourceLine source;
    const wchar_t* settingsFailed; // the trace's, with the adapter's id for its %s
};

// Calls `use` for every setting of every adapter, in the agents' order; an exception of it ends the walk. An adapter
// whose settings cannot be listed is traced and passed over. Throws CWomProviderException when the adapters cannot be
// listed.
void ForEachSetting(COrlFcoeAgentIntf& fcoeAgent, OrlAdapterAgent& adapterAgent, const CWomContext& context,
                    const SettingListing& listing,
                    const std::function<void(const COrlString& adapterId, const ORL_SETTING& setting)>& use);

// The setting, never null. Throws CWomProviderException when the agent does not hand it out.
std::unique_ptr<ORL_SETTING> RequireSetting(OrlAdapterAgent& adapterAgent, const CWomContext& context,
                                            const COrlString& adapterId, const COrlString& settingName,
                                            const SourceLine& source);

// What the agent answered, and the setting if it handed one out.
struct SettingAnswer
{
    CResult result;
    std::unique_ptr<ORL_SETTING> setting;
};
SettingAnswer AskForSetting(OrlAdapterAgent& adapterAgent, const CWomContext& context, const COrlString& adapterId,
                            const COrlString& settingName);

} // namespace orl
