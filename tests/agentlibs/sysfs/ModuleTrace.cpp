// The tests' own trace log, which stays closed.

#include "Common/Src/ModuleTrace.h"

ORL_MODULE_TRACE_OFF;
