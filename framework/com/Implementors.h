// Implementors: the libraries that bring class managers.
#pragma once

#include "Common/Src/OrlString.h"
#include "framework/com/ManagerTable.h"

#include <windows.h>

namespace orl
{

// Loads the libraries that the registry names (HKEY_LOCAL_MACHINE, SOFTWARE\KESTA\Network_Services\ORL2\Framework,
// value "Implementors": names separated by semicolons, ORL2FCOE when there are none) and lets each register its
// managers. A name without a folder is looked for beside the module that this code is linked into. The libraries stay
// loaded.
//
// Every library is tried. When one fails the answer is the first failure's status and `reason` names the library and
// what is wrong with it; each failure is traced.
HRESULT LoadImplementors(ManagerTable& managers, COrlString& reason) noexcept;

} // namespace orl
