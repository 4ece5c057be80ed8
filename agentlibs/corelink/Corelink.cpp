// Corelink: the library's exports.

#include "agentlibs/AgentStatus.h"
#include "agentlibs/corelink/CoreAgent.h"
#include "Common/Src/ModuleTrace.h"

#include <exception>

ORL_MODULE_TRACE(L"CORE_LINK_", L".\\Corelink.txt");

extern "C" __declspec(dllexport) OrlAdapterAgent* GetCoreAgent()
{
    const COrlTraceScope scope(L"GetCoreAgent");
    try
    {
        // Never destroyed: requests may still be in the agent while the process ends.
        static orl::CoreAgent* const agent = new orl::CoreAgent;
        return agent;
    }
    catch (const std::exception&)
    {
        g_OrlDebug.Error(L"Src\\Corelink", __LINE__, L"GetCoreAgent: out of memory");
        return nullptr;
    }
}

extern "C" __declspec(dllexport) ULONG OrlAgentStatus(wchar_t* text, ULONG capacity)
{
    try
    {
        orl::PutAgentStatus(orl::AgentStatusText({}, {}, L"ready, adapters have no settings"), text, capacity);
        return 0;
    }
    catch (const std::exception&)
    {
        orl::PutAgentStatus({}, text, capacity);
        return 1;
    }
}
