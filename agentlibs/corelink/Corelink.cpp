// Corelink: the library's exports.

#include "agentlibs/AgentStatus.h"
#include "agentlibs/corelink/CoreAgent.h"
#include "Common/Src/ModuleTrace.h"

ORL_MODULE_TRACE(L"CORE_LINK_", L".\\Corelink.txt");

namespace
{

struct Module
{
    orl::BackendConfig config;
    orl::CoreAgent agent;
};

// Made at the first call and never destroyed: requests may still be in the agent while the process ends.
Module& TheModule()
{
    static Module* const module = []
    {
        const orl::BackendConfig config = orl::ReadBackendConfig(L"Corelink");
        return new Module{config, orl::CoreAgent(orl::MakeSettingBackend(config))};
    }();
    return *module;
}

} // namespace

extern "C" __declspec(dllexport) OrlAdapterAgent* GetCoreAgent()
{
    const COrlTraceScope scope(L"GetCoreAgent");
    try
    {
        Module& module = TheModule();
        if (const orl::BackendStatus status = module.agent.Status(); !status.ready)
            g_OrlDebug.Error(L"Src\\Corelink", __LINE__, L"%s", status.text.c_str());
        return &module.agent;
    }
    catch (const std::exception&)
    {
        g_OrlDebug.Error(L"Src\\Corelink", __LINE__, L"GetCoreAgent: out of memory");
        return nullptr;
    }
}

extern "C" __declspec(dllexport) ULONG OrlAgentStatus(wchar_t* text, ULONG capacity)
{
    return orl::AnswerAgentStatus(text, capacity,
                                  []
                                  {
                                      Module& module = TheModule();
                                      return orl::AgentState{module.config.backend, module.agent.Status()};
                                  });
}
