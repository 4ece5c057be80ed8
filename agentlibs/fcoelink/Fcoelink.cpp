// Fcoelink: the library's exports.

#include "agentlibs/AgentStatus.h"
#include "agentlibs/fcoelink/FcoeAgent.h"
#include "Common/Src/ModuleTrace.h"

ORL_MODULE_TRACE(L"FCOE_LINK_", L".\\Fcoelink.txt");

namespace
{

struct Module
{
    orl::BackendConfig config;
    orl::FcoeAgent agent;
};

// Made at the first call and never destroyed: requests may still be in the agent while the process ends.
Module& TheModule()
{
    static Module* const module = []
    {
        const orl::BackendConfig config = orl::ReadBackendConfig(L"Fcoelink");
        return new Module{config, orl::FcoeAgent(orl::MakeBackend(config))};
    }();
    return *module;
}

} // namespace

extern "C" __declspec(dllexport) COrlFcoeAgentIntf* GetFcoeAgent()
{
    const COrlTraceScope scope(L"GetFcoeAgent");
    try
    {
        Module& module = TheModule();
        if (const orl::BackendStatus status = module.agent.Status(); !status.ready)
            g_OrlDebug.Error(L"Src\\Fcoelink", __LINE__, L"%s", status.text.c_str());
        return &module.agent;
    }
    catch (const std::exception&)
    {
        g_OrlDebug.Error(L"Src\\Fcoelink", __LINE__, L"GetFcoeAgent: out of memory");
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
