// The trace log of this test program: a test that wants to read it opens it.
#include "Common/Src/ModuleTrace.h"

ORL_MODULE_TRACE_OFF;
