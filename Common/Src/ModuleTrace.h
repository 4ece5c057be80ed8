// The definition of a module's own trace log.
#pragma once

#include "Common/Src/OrlDebug.h"

// What Configure answered when the module was loaded.
extern int g_OrlDebugConfigured;

// To stand once, at namespace scope, in one source of each module that links the common library: the log is built and
// configured while the module is loaded, before any of its exports can run, and closed when it is unloaded.
#define ORL_MODULE_TRACE(processTag, logFileName)                                                                      \
    COrlDebug g_OrlDebug;                                                                                              \
    int g_OrlDebugConfigured = g_OrlDebug.Configure(processTag, logFileName, 1, 0, 0, nullptr)

// For tools and tests that want no log of their own.
#define ORL_MODULE_TRACE_OFF                                                                                           \
    COrlDebug g_OrlDebug;                                                                                              \
    int g_OrlDebugConfigured = -1
