// The two agents that the provider stands on, and how they are loaded.
#pragma once

#include "agent/CResult.h"
#include "agent/OrlAdapterAgent.h"
#include "agent/OrlFcoeAgentIntf.h"

namespace orl
{

// Set once at registration and never cleared: agents and their libraries live until the process ends.
extern COrlFcoeAgentIntf* g_fcoeAgent;
extern OrlAdapterAgent* g_adapterAgent;

// Load the agent library and store its agent. The trace log is the only record of why one failed.
CResult loadFcoeAgent();
CResult loadAdapterAgent();

} // namespace orl
