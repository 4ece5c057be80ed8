// The framework's trace log, configured while the library is being loaded.

#include "Common/Src/ModuleTrace.h"

ORL_MODULE_TRACE(L"INST_UTIL_", L".\\InstUtil.txt");
