// A library with a trace log of its own, as the product's modules have.

#include "Common/Src/ModuleTrace.h"

ORL_MODULE_TRACE(L"FCOE_PROV_", L".\\FcoeProv.txt");

extern "C" __declspec(dllexport) int TracedModuleConfigured()
{
    return g_OrlDebugConfigured;
}

extern "C" __declspec(dllexport) void TracedModuleTrace()
{
    COrlTraceScope scope(L"TracedModuleTrace");
}

extern "C" __declspec(dllexport) void TracedModuleFail()
{
    COrlTraceScope scope(L"TracedModuleFail");
    g_OrlDebug.Error(L"file", 7, L"bad");
}
