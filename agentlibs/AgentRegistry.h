// The agents' keys in the registry.
#pragma once

#include <string>

namespace orl
{

// The key of an agent below HKEY_LOCAL_MACHINE.
std::wstring AgentKey(const std::wstring& agent);

// A text value of an agent's key, read at the moment of the call; empty when key or value is missing.
std::wstring ReadAgentValue(const std::wstring& agent, const std::wstring& name);

} // namespace orl
