// The provider's trace log, configured while the library is being loaded.

#include "Common/Src/ModuleTrace.h"

ORL_MODULE_TRACE(L"FCOE_PROV_", L".\\FcoeProv.txt");
