// Where the setting classes get their settings from.

#include "settings/SettingSource.h"

#include "Common/Src/OrlDebug.h"
#include "provider/Zarn_Fcoe.h"

namespace orl
{

void ForEachSetting(COrlFcoeAgentIntf& fcoeAgent, OrlAdapterAgent& adapterAgent, const CWomContext& context,
                    const SettingListing& listing,
                    const std::function<void(const COrlString& adapterId, const ORL_SETTING& setting)>& use)
{
    std::vector<ORL_FCOE_HBA> hbas;
    CResult hbaStatus = AgentStatus(context);
    if (!fcoeAgent.EnumerateHBAs(COrlString(), hbas, hbaStatus))
        RefuseEnumeration(context, listing.hbasFailed, listing.source);
    for (const ORL_FCOE_HBA& hba : hbas)
    {
        COrlPointerArray<ORL_SETTING*> settings;
        CResult status = AgentStatus(context);
        if (adapterAgent.EnumerateSettings(hba.deviceId, settings, status).ulErrCode != 0)
        {
            g_OrlDebug.Print(listing.settingsFailed, hba.deviceId.c_str());
            continue;
        }
        for (const ORL_SETTING* setting : settings)
        {
            if (setting != nullptr)
                use(hba.deviceId, *setting);
        }
    }
}

SettingAnswer AskForSetting(OrlAdapterAgent& adapterAgent, const CWomContext& context, const COrlString& adapterId,
                            const COrlString& settingName)
{
    ORL_SETTING* setting = nullptr;
    CResult status = AgentStatus(context);
    const CResult result = adapterAgent.GetSetting(adapterId, settingName, setting, status);
    return {result, std::unique_ptr<ORL_SETTING>(setting)};
}

std::unique_ptr<ORL_SETTING> RequireSetting(OrlAdapterAgent& adapterAgent, const CWomContext& context,
                                            const COrlString& adapterId, const COrlString& settingName,
                                            const SourceLine& source)
{
    SettingAnswer answer = AskForSetting(adapterAgent, context, adapterId, settingName);
    if (answer.result.ulErrCode != 0 || answer.setting == nullptr)
        RefuseForAgent(context, answer.result, L"OrlAdapterAgent::GetSetting", source);
    return std::move(answer.setting);
}

} // namespace orl
