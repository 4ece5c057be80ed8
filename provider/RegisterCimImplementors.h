// RegisterCimImplementors: what the framework calls once to fill its table of class managers.
#pragma once

#include "agent/CResult.h"
#include "framework/include/ImplementorRegistry.h"

// Loads the agents, then hands the registry one manager for each CIM class, in a fixed order; the managers are the
// registry's from then on. `result` becomes (0, 0) on success. When an agent is missing nothing is registered, `result`
// is left as it was, and only the trace log tells why. Throws CAtlException with E_OUTOFMEMORY when a class name cannot
// be allocated; managers handed over before stay registered. `context` is not read.
extern "C" __declspec(dllexport) void RegisterCimImplementors(void* context, ImplementorRegistry* registry,
                                                              CResult* result);
