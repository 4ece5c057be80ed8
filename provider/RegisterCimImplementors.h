// RegisterCimImplementors: what the framework calls once to fill its table of class managers.
#pragma once

#include "agent/CResult.h"
#include "agent/OrlAdapterAgent.h"
#include "agent/OrlFcoeAgentIntf.h"
#include "framework/include/ImplementorRegistry.h"

namespace orl
{

// One manager for each CIM class, in a fixed order, on these agents, which must outlive the registry. Throws
// CAtlException with E_OUTOFMEMORY when a class name cannot be allocated; managers handed over before stay registered.
void AddClassManagers(ImplementorRegistry& registry, COrlFcoeAgentIntf* fcoe, OrlAdapterAgent* adapter);

} // namespace orl

// Loads the agents, then hands the registry one manager for each CIM class, in a fixed order; the managers are the
// registry's from then on. `result` becomes (0, 0) on success. When an agent is missing nothing is registered, `result`
// is left as it was, and only the trace log tells why. Throws CAtlException with E_OUTOFMEMORY when a class name cannot
// be allocated; managers handed over before stay registered. `context` is not read.
extern "C" __declspec(dllexport) void RegisterCimImplementors(void* context, ImplementorRegistry* registry,
                                                              CResult* result);
