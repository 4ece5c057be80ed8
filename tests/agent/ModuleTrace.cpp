// The test program's own trace log, off.
#include "Common/Src/ModuleTrace.h"

ORL_MODULE_TRACE_OFF;
