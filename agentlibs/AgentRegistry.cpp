// The agents' keys in the registry.

#include "agentlibs/AgentRegistry.h"

#include "Common/Src/OrlRegKey.h"

namespace orl
{

std::wstring AgentKey(const std::wstring& agent)
{
    return L"SOFTWARE\\KESTA\\Network_Services\\ORL2\\Agents\\" + agent;
}

std::wstring ReadAgentValue(const std::wstring& agent, const std::wstring& name)
{
    COrlRegKey key;
    COrlString value;
    if (key.Open(HKEY_LOCAL_MACHINE, AgentKey(agent)))
        key.GetValue(name, value);
    return value;
}

} // namespace orl
