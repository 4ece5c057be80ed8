// Loading the agents: each comes from a library of its own, through a factory without arguments.

#include "provider/Agents.h"

#include "Common/Src/Helper.h"
#include "Common/Src/OrlDebug.h"

namespace orl
{

COrlFcoeAgentIntf* g_fcoeAgent = nullptr;
OrlAdapterAgent* g_adapterAgent = nullptr;

namespace
{

constexpr ULONG Failed = 0xFFFFFFFF;

// How one agent is found, and what the trace says when it is not. The texts are known to support tools, which is why
// the two agents' differ in form and one of them names its factory by another name.
struct AgentSource
{
    const wchar_t* library;
    const char* factory;
    const wchar_t* libraryFailed;
    const wchar_t* factoryMissing;
    const wchar_t* factoryFailed;
    ULONG reservedOnSuccess;
};

constexpr AgentSource FcoeAgent{L"Fcoelink",
                                "GetFcoeAgent",
                                L"LoadLibrary {Fcoelink.dll} Failed!",
                                L"GetProcAddress {GetFcoeAgent} Failed!",
                                L"GetFcoeAgent Failed! Returned NULL",
                                Failed};

constexpr AgentSource AdapterAgent{L"Corelink",
                                   "GetCoreAgent",
                                   L"loadAdapterAgent : Load Library Failed ORL_CORE_AGENT_NAME",
                                   L"loadAdapterAgent:: GetProcAddress Failed!",
                                   L"loadAdapterAgent:: getAdapterAgent Failed!",
                                   0};

CResult Fail(const wchar_t* text)
{
    g_OrlDebug.Print(L"%s", text);
    return CResult{Failed, Failed};
}

template <typename Agent>
CResult LoadAgent(const AgentSource& source, Agent*& agent)
{
    const HMODULE library = CHelper::QvLoadLibrary(source.library);
    if (library == nullptr)
        return Fail(source.libraryFailed);
    using Factory = Agent* (*)();
    // The platform hands functions out without their type; the void (*)() between says that this is meant.
    const auto factory =
        reinterpret_cast<Factory>(reinterpret_cast<void (*)()>(GetProcAddress(library, source.factory)));
    if (factory == nullptr)
        return Fail(source.factoryMissing);
    agent = factory();
    if (agent == nullptr)
        return Fail(source.factoryFailed);
    return CResult{0, source.reservedOnSuccess};
}

} // namespace

CResult loadFcoeAgent()
{
    return LoadAgent(FcoeAgent, g_fcoeAgent);
}

CResult loadAdapterAgent()
{
    g_OrlDebug.Print(L"loadAdapterAgent");
    return LoadAgent(AdapterAgent, g_adapterAgent);
}

} // namespace orl
